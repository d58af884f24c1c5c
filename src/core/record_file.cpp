#include "core/record_file.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

#if __has_include(<unistd.h>)
#include <unistd.h>
#endif

#include "core/ansi.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBitsPerByte = 8;
constexpr char kBlank = ' ';
constexpr int kScratchNames = 1000;

[[noreturn]] void Fail(std::errc reason) { throw std::system_error(std::make_error_code(reason)); }

/// The reason that the library left behind; some of its failures leave none.
[[noreturn]] void FailByErrno() {
  if (errno == 0) Fail(std::errc::io_error);
  throw std::system_error(errno, std::generic_category());
}

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

File Open(const fs::path& path, const char* mode) {
  errno = 0;
  return File(std::fopen(path.string().c_str(), mode));
}

/// Whether there is a file; what is no file at all, such as a folder, is a failure.
bool FileExists(const fs::path& path) {
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::not_found) return false;
  if (failure) throw std::system_error(failure);
  if (fs::is_directory(status)) Fail(std::errc::is_a_directory);
  if (!fs::is_regular_file(status)) Fail(std::errc::not_supported);
  return true;
}

}  // namespace

template <class Bits>
Bits Record::Get(std::size_t offset) const {
  static_assert(std::is_unsigned_v<Bits>);
  Bits bits = 0;
  for (std::size_t byte = sizeof(Bits); byte-- > 0;) {
    bits = static_cast<Bits>(static_cast<std::uint64_t>(bits) << kBitsPerByte |
                             bytes_.at(offset + byte));
  }
  return bits;
}

template <class Bits>
void Record::Put(std::size_t offset, Bits bits) {
  static_assert(std::is_unsigned_v<Bits>);
  for (std::size_t byte = 0; byte < sizeof(Bits); ++byte) {
    bytes_.at(offset + byte) =
        static_cast<unsigned char>(static_cast<std::uint64_t>(bits) >> (byte * kBitsPerByte));
  }
}

std::int16_t Record::Integer(std::size_t offset) const {
  return static_cast<std::int16_t>(Get<std::uint16_t>(offset));
}
std::int32_t Record::Long(std::size_t offset) const {
  return static_cast<std::int32_t>(Get<std::uint32_t>(offset));
}
double Record::Double(std::size_t offset) const {
  return std::bit_cast<double>(Get<std::uint64_t>(offset));
}
float Record::Single(std::size_t offset) const {
  return std::bit_cast<float>(Get<std::uint32_t>(offset));
}
Currency Record::Money(std::size_t offset) const {
  return Currency::FromRaw(static_cast<std::int64_t>(Get<std::uint64_t>(offset)));
}

std::string Record::Text(std::size_t offset, std::size_t width) const {
  std::string text(reinterpret_cast<const char*>(bytes_.data()) + offset, width);
  const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
  text.resize(last == std::string::npos ? 0 : last + 1);
  return FromAnsi(text);
}

void Record::PutInteger(std::size_t offset, std::int16_t value) {
  Put(offset, static_cast<std::uint16_t>(value));
}
void Record::PutLong(std::size_t offset, std::int32_t value) {
  Put(offset, static_cast<std::uint32_t>(value));
}
void Record::PutSingle(std::size_t offset, float value) {
  Put(offset, std::bit_cast<std::uint32_t>(value));
}
void Record::PutDouble(std::size_t offset, double value) {
  Put(offset, std::bit_cast<std::uint64_t>(value));
}
void Record::PutMoney(std::size_t offset, Currency value) {
  Put(offset, static_cast<std::uint64_t>(value.Raw()));
}

void Record::PutText(std::size_t offset, std::size_t width, std::string_view utf8) {
  std::string text = ToAnsi(utf8);
  text.resize(width, kBlank);
  std::memcpy(bytes_.data() + offset, text.data(), width);
}

Record RecordFile::At(std::size_t number) const {
  return number >= 1 && number <= Records.size() ? Records[number - 1] : Record();
}

int RecordFile::FileResult() const {
  return static_cast<int>(std::min<std::uintmax_t>(Length, INT_MAX));
}

RecordFile ReadRecords(const std::string& path, std::size_t most) {
  RecordFile result;
  const fs::path name = PathOf(path);
  if (!FileExists(name)) return result;
  result.Length = fs::file_size(name);
  const std::size_t wanted = std::min<std::uintmax_t>(most * kRecordSize, result.Length);
  result.Records.resize((wanted + kRecordSize - 1) / kRecordSize);
  const File file = Open(name, "rb");
  if (!file) FailByErrno();
  if (wanted > 0 && std::fread(result.Records.data(), 1, wanted, file.get()) != wanted)
    FailByErrno();
  return result;
}

FileReplacement::FileReplacement(const std::string& path) : target_(PathOf(path)) {
  if (target_.filename().empty()) Fail(std::errc::no_such_file_or_directory);
  replaces_ = FileExists(target_);
  if (replaces_ && IsReadOnly(target_)) Fail(std::errc::permission_denied);
  if (replaces_) target_ = fs::canonical(target_);  // a link goes on pointing to the file
  for (int number = 0; number < kScratchNames && file_ == nullptr; ++number) {
    scratch_ = target_.parent_path() / ("kelvanor" + std::to_string(number) + ".tmp");
    file_ = Open(scratch_, "wbx").release();
    if (file_ == nullptr && errno != EEXIST) FailByErrno();
  }
  if (file_ == nullptr) Fail(std::errc::file_exists);
}

FileReplacement::~FileReplacement() {
  if (file_ != nullptr) std::fclose(file_);
  std::error_code ignored;
  if (!scratch_.empty()) fs::remove(scratch_, ignored);
}

void FileReplacement::Write(std::string_view bytes) {
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) FailByErrno();
}

void FileReplacement::Finish(Durability durability) {
  errno = 0;
  if (std::fflush(file_) != 0) FailByErrno();
#if __has_include(<unistd.h>)
  if (durability == Durability::Disk && fsync(fileno(file_)) != 0) FailByErrno();
#endif
  if (std::fclose(std::exchange(file_, nullptr)) != 0) FailByErrno();
  std::error_code failure;
  if (replaces_) fs::permissions(scratch_, fs::status(target_, failure).permissions(), failure);
  fs::rename(scratch_, target_, failure);
  if (failure) throw std::system_error(failure);
  scratch_.clear();
}

void WriteRecords(const std::string& path, std::span<const Record> records, Durability durability) {
  FileReplacement file(path);
  file.Write({reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize});
  file.Finish(durability);
}

bool IsReadOnly(const fs::path& path) {
  constexpr fs::perms kAnyWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  return (fs::status(path).permissions() & kAnyWrite) == fs::perms::none;
}

std::uintmax_t FileLength(const std::string& path) {
  std::error_code none;
  const std::uintmax_t length = fs::file_size(PathOf(path), none);
  return none ? 0 : length;
}

fs::path PathOf(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string TextOfPath(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string BareName(const std::string& path) { return TextOfPath(PathOf(path).filename()); }
