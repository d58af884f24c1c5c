// A file of bytes that is read and written at places, without a buffer between.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>

/// A file, open while this lives. What is no regular file, nor a link to one, isn't opened, and
/// nothing waits for it. Every routine throws std::system_error when the system fails. Places count
/// from 0.
class RawFile {
 public:
  enum class Use {
    Read,
    Change,  // an existing file, which isn't marked as read only
    Write,   // the same, or a new one
    Create,  // a new one; a link isn't followed
  };
  /// `mode` is for a new file: everybody's, less what the user's mask takes, or this user's alone.
  RawFile(std::filesystem::path path, Use use, mode_t mode = kEverybody);
  RawFile(const std::string& path, Use use);
  ~RawFile();
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;

  static constexpr mode_t kEverybody = 0666;
  static constexpr mode_t kThisUser = 0600;

  const std::filesystem::path& Path() const { return path_; }

  std::int64_t Length() const;

  /// The number under which the disk knows the file, whatever its name.
  std::uint64_t Number() const;

  /// Whether the file still has a name.
  bool HasName() const;

  /// Reads what there is of `bytes` at a place; how many there were.
  std::size_t ReadSome(std::int64_t place, std::span<char> bytes) const;

  /// Reads all of `bytes`; a file that ends before is a failure.
  void ReadAll(std::int64_t place, std::span<char> bytes) const;

  void Write(std::int64_t place, std::span<const char> bytes);
  void Append(std::span<const char> bytes) { Write(Length(), bytes); }

  /// Makes the file longer by zeros that have their place on the disk, or leaves it as it was.
  void Grow(std::int64_t count);

  /// Cuts the file.
  void Cut(std::int64_t length);

  /// Forces what was written to the disk.
  void Sync();

  /// Keeps the file for this program until it is closed, or waits until it can. Where files can't
  /// be locked they aren't. `TryLock` is false when another program has it.
  void Lock();
  bool TryLock();

  /// Closes the file before its time; what the system couldn't write is a failure.
  void Close();

 private:
  std::filesystem::path path_;
  int file_ = -1;
};

/// Gives a file another name, in the place of what has that name.
void RenameFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Takes a file away; false when there is none.
bool RemoveFile(const std::filesystem::path& path);

/// Forces the names in a folder to the disk, where the system can.
void SyncFolder(const std::filesystem::path& folder);

/// Throws what stands in `errno`; some failures of the system leave nothing there.
[[noreturn]] void FailByErrno();
[[noreturn]] void FailFor(std::errc reason);

/// Whether there is a file; what is no regular file, such as a folder, is a failure.
bool FileExists(const std::filesystem::path& path);

/// Whether an existing file is marked as read only, for everybody.
bool IsReadOnly(const std::filesystem::path& path);
