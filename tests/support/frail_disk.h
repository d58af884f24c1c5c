// A disk whose calls fail, and which forgets what it wasn't made to keep.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "core/file_calls.h"

/// What befalls a call of the system.
enum class DiskFault {
  Error,     // it fails once
  Short,     // it reads or writes half of what was asked, once
  Full,      // from it on nothing can be written but half of the first piece
  Kill,      // it and all that follow do nothing, as in a program that was killed
  HalfKill,  // the same, but half of what it was to write has been written
};
inline constexpr DiskFault kDiskFaults[] = {DiskFault::Error, DiskFault::Short, DiskFault::Full,
                                            DiskFault::Kill, DiskFault::HalfKill};

/// Stands under the engine's files while it lives, for those in one folder. What is in the folder
/// at first is on the disk for good; later a file's bytes are when the file is synced, and the
/// names when the folder is.
class FrailDisk {
 public:
  explicit FrailDisk(const std::string& folder);
  ~FrailDisk();
  FrailDisk(const FrailDisk&) = delete;
  FrailDisk& operator=(const FrailDisk&) = delete;

  /// The `number`-th call from now (from 1) fails.
  void FailCall(int number, DiskFault fault);

  /// Whether that call has come.
  bool HasFailed() const { return failed_; }

  /// Makes of the folder what may be found after the power was gone: of what wasn't synced any
  /// pieces are there or not, the last of them torn, and of the names only the first changes.
  void LosePower(std::mt19937& chance);

 private:
  struct Change {
    std::size_t Place = 0;
    std::string Bytes;
    bool IsCut = false;  // to the length `Place`
  };
  struct Inode {
    std::string Kept;
    std::vector<Change> Since;
  };
  using Names = std::map<std::string, std::size_t>;  // places in `inodes_`

  void WatchFiles();
  void WatchNames();
  bool Strikes();
  bool Fails(bool now) const { return IsDead() || (now && fault_ == DiskFault::Error); }
  bool IsDead() const { return failed_ && (fault_ >= DiskFault::Kill); }
  bool IsInside(const std::string& path) const { return path.starts_with(folder_ + "/"); }
  static void Make(const Change& change, std::string& bytes);
  ssize_t WriteNow(int file, const void* bytes, std::size_t count, off_t place);
  void Note(const Names& names) { since_.push_back(names); }
  static std::string Found(const Inode& inode, std::mt19937& chance);

  std::string folder_;
  FileCalls before_;
  FileCalls system_ = SystemFileCalls();
  std::vector<Inode> inodes_;
  std::vector<Names> since_;            // the names as they are on the disk, and after each change
  std::map<int, std::size_t> open_;     // of the files in the folder
  std::map<int, std::string> folders_;  // open folders
  int left_ = 0;
  DiskFault fault_ = DiskFault::Error;
  bool failed_ = false;
};
