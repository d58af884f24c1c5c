#include "dice/raw_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kZeros = 30'000;  // written at a time

/// The reason that the system left behind; some failures of the library leave none.
[[noreturn]] void FailByErrno() {
  throw std::system_error(errno == 0 ? EIO : errno, std::generic_category());
}

void CheckSpace(const fs::path& path, std::int64_t wanted) {
  std::error_code unknown;
  const fs::space_info space = fs::space(path, unknown);
  if (!unknown && space.available < static_cast<std::uintmax_t>(wanted))
    throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
}

}  // namespace

RawFile::RawFile(const std::string& path, Use use) : path_(PathOf(path)) {
  const fs::file_status status = fs::status(path_);
  if (fs::exists(status) && !fs::is_regular_file(status))
    throw std::system_error(std::make_error_code(
        fs::is_directory(status) ? std::errc::is_a_directory : std::errc::not_supported));
  if (use == Use::Change && fs::exists(status) && IsReadOnly(path_))
    throw std::system_error(std::make_error_code(std::errc::permission_denied));
  std::ios::openmode mode = std::ios::binary | std::ios::in;
  if (use == Use::Change) mode |= std::ios::out;
  stream_.rdbuf()->pubsetbuf(nullptr, 0);
  errno = 0;
  stream_.open(path_, mode);
  if (!stream_) FailByErrno();
}

std::int64_t RawFile::Length() {
  errno = 0;
  stream_.clear();
  stream_.seekg(0, std::ios::end);
  const std::streamoff length = stream_.tellg();
  if (length < 0) FailByErrno();
  return length;
}

std::size_t RawFile::ReadSome(std::int64_t place, std::span<char> bytes) {
  errno = 0;
  stream_.clear();
  stream_.seekg(place);
  stream_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream_ && !stream_.eof()) FailByErrno();
  return static_cast<std::size_t>(stream_.gcount());
}

void RawFile::ReadAll(std::int64_t place, std::span<char> bytes) {
  if (ReadSome(place, bytes) == bytes.size()) return;
  throw std::system_error(std::make_error_code(std::errc::io_error));
}

void RawFile::Write(std::int64_t place, std::span<const char> bytes) {
  errno = 0;
  stream_.clear();
  stream_.seekp(place);
  stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream_.flush();
  if (!stream_) FailByErrno();
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
    std::error_code ignored;
    fs::resize_file(path_, static_cast<std::uintmax_t>(length), ignored);
    throw;
  }
}

void RawFile::Cut(std::int64_t length) {
  fs::resize_file(path_, static_cast<std::uintmax_t>(length));
}
