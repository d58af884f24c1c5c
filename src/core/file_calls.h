// The system's calls under the files that the engine reads and writes.
#pragma once

#include <sys/types.h>

#include <functional>

/// Each member takes and returns what the system's call of that name does, and leaves its reason in
/// `errno`. All of them are always set, to the system's own at first; a test that lets one fail, or
/// takes down what has reached the disk, replaces members.
struct FileCalls {
  std::function<int(const char* path, int flags, mode_t mode)> Open;
  std::function<int(int file)> Close;
  std::function<ssize_t(int file, void* bytes, std::size_t count, off_t place)> Read;
  std::function<ssize_t(int file, const void* bytes, std::size_t count, off_t place)> Write;
  std::function<int(int file)> Sync;  // of a file, or of a folder with the names in it
  std::function<int(int file, off_t length)> Truncate;
  std::function<int(int file, int operation)> Lock;
  std::function<int(const char* from, const char* to)> Rename;
  std::function<int(const char* from, const char* to)> Link;
  std::function<int(const char* path)> Remove;
};

FileCalls SystemFileCalls();

/// The calls in force.
extern FileCalls TheFileCalls;
