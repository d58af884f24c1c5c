// A file of bytes that is read and written at places, without a buffer between.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

/// An existing file, open while this lives. What is no regular file isn't opened, nor one that
/// is marked as read only to be changed. Every routine throws std::system_error when the system
/// fails. Places count from 0.
class RawFile {
 public:
  enum class Use { Read, Change };
  RawFile(const std::string& path, Use use);

  std::int64_t Length();

  /// Reads what there is of `bytes` at a place; how many there were.
  std::size_t ReadSome(std::int64_t place, std::span<char> bytes);

  /// Reads all of `bytes`; a file that ends before is a failure.
  void ReadAll(std::int64_t place, std::span<char> bytes);

  void Write(std::int64_t place, std::span<const char> bytes);

  /// Makes the file longer by zeros that have their place on the disk, or leaves it as it was.
  void Grow(std::int64_t count);

  /// Cuts the file.
  void Cut(std::int64_t length);

 private:
  std::filesystem::path path_;
  std::fstream stream_;
};
