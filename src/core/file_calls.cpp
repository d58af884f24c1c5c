#include "core/file_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>

FileCalls SystemFileCalls() {
  FileCalls calls;
  calls.Open = [](const char* path, int flags, mode_t mode) { return open(path, flags, mode); };
  calls.Close = close;
  calls.Read = pread;
  calls.Write = pwrite;
  calls.Sync = fsync;
  calls.Truncate = ftruncate;
  calls.Lock = flock;
  calls.Rename = std::rename;
  calls.Link = link;
  calls.Remove = unlink;
  return calls;
}

FileCalls TheFileCalls = SystemFileCalls();
