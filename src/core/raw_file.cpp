#include "core/raw_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "core/file_calls.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kZeros = 30'000;  // written at a time

/// Nothing that isn't a file is waited for, should it take the place of one.
int FlagsOf(RawFile::Use use) {
  constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  switch (use) {
    case RawFile::Use::Read: return kAlways | O_RDONLY;
    case RawFile::Use::Change: return kAlways | O_RDWR;
    case RawFile::Use::Write: return kAlways | O_RDWR | O_CREAT;
    default: return kAlways | O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW;
  }
}

/// Calls again what a signal has broken off.
template <class Call>
auto Insist(Call call) {
  for (;;) {
    errno = 0;
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

void CheckSpace(const fs::path& path, std::int64_t wanted) {
  std::error_code unknown;
  const fs::space_info space = fs::space(path, unknown);
  if (!unknown && space.available < static_cast<std::uintmax_t>(wanted))
    FailFor(std::errc::no_space_on_device);
}

struct stat StatusOf(int file) {
  struct stat status {};
  errno = 0;
  if (fstat(file, &status) != 0) FailByErrno();
  return status;
}

/// Whether the system says that this kind of disk can't do what was asked.
bool IsUnknownHere() { return errno == EINVAL || errno == ENOTSUP || errno == ENOLCK; }

}  // namespace

void FailByErrno() { throw std::system_error(errno == 0 ? EIO : errno, std::generic_category()); }

void FailFor(std::errc reason) { throw std::system_error(std::make_error_code(reason)); }

bool FileExists(const fs::path& path) {
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::not_found) return false;
  if (failure) throw std::system_error(failure);
  if (fs::is_directory(status)) FailFor(std::errc::is_a_directory);
  if (!fs::is_regular_file(status)) FailFor(std::errc::not_supported);
  return true;
}

bool IsReadOnly(const fs::path& path) {
  constexpr fs::perms kAnyWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  return (fs::status(path).permissions() & kAnyWrite) == fs::perms::none;
}

RawFile::RawFile(const std::string& path, Use use) : RawFile(PathOf(path), use) {}

RawFile::RawFile(fs::path path, Use use, mode_t mode) : path_(std::move(path)) {
  if (use != Use::Create && FileExists(path_) && use != Use::Read && IsReadOnly(path_))
    FailFor(std::errc::permission_denied);
  file_ = Insist([&] { return TheFileCalls.Open(path_.c_str(), FlagsOf(use), mode); });
  if (file_ < 0) FailByErrno();
  // It may have changed since it was looked at.
  if (S_ISREG(StatusOf(file_).st_mode)) return;
  TheFileCalls.Close(std::exchange(file_, -1));
  FailFor(std::errc::not_supported);
}

RawFile::~RawFile() {
  if (file_ >= 0) TheFileCalls.Close(file_);
}

std::int64_t RawFile::Length() const { return StatusOf(file_).st_size; }
std::uint64_t RawFile::Number() const { return StatusOf(file_).st_ino; }
bool RawFile::HasName() const { return StatusOf(file_).st_nlink > 0; }

std::size_t RawFile::ReadSome(std::int64_t place, std::span<char> bytes) const {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::span<char> rest = bytes.subspan(done);
    const ssize_t read = Insist([&] {
      return TheFileCalls.Read(file_, rest.data(), rest.size(),
                               static_cast<off_t>(place + static_cast<std::int64_t>(done)));
    });
    if (read < 0) FailByErrno();
    if (read == 0) break;
    done += static_cast<std::size_t>(read);
  }
  return done;
}

void RawFile::ReadAll(std::int64_t place, std::span<char> bytes) const {
  if (ReadSome(place, bytes) != bytes.size()) FailFor(std::errc::io_error);
}

void RawFile::Write(std::int64_t place, std::span<const char> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Insist([&] {
      return TheFileCalls.Write(file_, bytes.data(), bytes.size(), static_cast<off_t>(place));
    });
    if (written <= 0) FailByErrno();
    place += written;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
}

void RawFile::Grow(std::int64_t count) {
  static constexpr std::array<char, kZeros> zeros{};
  CheckSpace(path_, count);
  const std::int64_t length = Length();
  try {
    for (std::int64_t done = 0; done < count; done += kZeros) {
      const auto size = static_cast<std::size_t>(std::min(kZeros, count - done));
      Write(length + done, std::span(zeros).first(size));
    }
  } catch (const std::system_error&) {
    TheFileCalls.Truncate(file_, static_cast<off_t>(length));
    throw;
  }
}

void RawFile::Cut(std::int64_t length) {
  if (Insist([&] { return TheFileCalls.Truncate(file_, static_cast<off_t>(length)); }) != 0)
    FailByErrno();
}

void RawFile::Sync() {
  if (Insist([&] { return TheFileCalls.Sync(file_); }) != 0) FailByErrno();
}

void RawFile::Lock() {
  if (Insist([&] { return TheFileCalls.Lock(file_, LOCK_EX); }) != 0 && !IsUnknownHere())
    FailByErrno();
}

bool RawFile::TryLock() {
  if (Insist([&] { return TheFileCalls.Lock(file_, LOCK_EX | LOCK_NB); }) == 0) return true;
  return errno != EWOULDBLOCK;
}

void RawFile::Close() {
  errno = 0;
  if (TheFileCalls.Close(std::exchange(file_, -1)) != 0 && errno != EINTR) FailByErrno();
}

void RenameFile(const fs::path& from, const fs::path& to) {
  errno = 0;
  if (TheFileCalls.Rename(from.c_str(), to.c_str()) != 0) FailByErrno();
}

bool RemoveFile(const fs::path& path) {
  errno = 0;
  if (TheFileCalls.Remove(path.c_str()) == 0) return true;
  if (errno != ENOENT) FailByErrno();
  return false;
}

void SyncFolder(const fs::path& folder) {
  const std::string name = folder.empty() ? "." : folder.string();
  const int file = Insist(
      [&] { return TheFileCalls.Open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
  if (file < 0 && errno == EACCES) return;  // a folder that may be written and not looked into
  if (file < 0) FailByErrno();
  const bool done = Insist([&] { return TheFileCalls.Sync(file); }) == 0 || IsUnknownHere();
  const int reason = errno;
  TheFileCalls.Close(file);
  errno = reason;
  if (!done) FailByErrno();
}
