#include "core/record_file.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstring>
#include <set>
#include <system_error>
#include <type_traits>

#include "core/ansi.h"
#include "core/file_calls.h"
#include "core/raw_file.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBitsPerByte = 8;
constexpr char kBlank = ' ';
constexpr std::size_t kGathered = 1 << 16;  // bytes written at a time

/// Sweeps a folder when it is written to for the first time.
void SweepOnce(const fs::path& folder) {
  static std::set<fs::path> swept;
  if (swept.insert(folder).second) SweepScratchFiles(folder, false);
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
  if (!FileExists(PathOf(path))) return result;
  const RawFile file(path, RawFile::Use::Read);
  result.Length = static_cast<std::uintmax_t>(file.Length());
  const std::size_t wanted = std::min<std::uintmax_t>(most * kRecordSize, result.Length);
  result.Records.resize((wanted + kRecordSize - 1) / kRecordSize);
  file.ReadAll(0, {reinterpret_cast<char*>(result.Records.data()), wanted});
  return result;
}

FileReplacement::FileReplacement(const std::string& path) : target_(PathOf(path)) {
  if (target_.filename().empty()) FailFor(std::errc::no_such_file_or_directory);
  replaces_ = FileExists(target_);
  if (replaces_ && IsReadOnly(target_)) FailFor(std::errc::permission_denied);
  if (replaces_) target_ = fs::canonical(target_);  // a link goes on pointing to the file
  SweepOnce(target_.parent_path());
  scratch_ = std::make_unique<ScratchFile>(target_.parent_path(),
                                           replaces_ ? RawFile::kThisUser : RawFile::kEverybody);
}

FileReplacement::~FileReplacement() = default;

void FileReplacement::Write(std::string_view bytes) {
  gathered_ += bytes;
  if (gathered_.size() >= kGathered) WriteGathered();
}

void FileReplacement::WriteGathered() {
  scratch_->File().Write(length_, gathered_);
  length_ += static_cast<std::int64_t>(gathered_.size());
  gathered_.clear();
}

/// By a second name, so that the file is never without its own; by a copy where a file has but one.
void FileReplacement::KeepFormer() const {
  fs::path kept = target_;
  kept += ".bak";
  const fs::path name = ScratchName(target_.parent_path());
  if (TheFileCalls.Link(target_.c_str(), name.c_str()) != 0)
    return CopyWholeFile(TextOfPath(target_), TextOfPath(kept));
  try {
    RenameFile(name, kept);
    RemoveFile(name);  // a rename between two names of one file leaves both
  } catch (const std::system_error&) {
    TheFileCalls.Remove(name.c_str());
    throw;
  }
}

void FileReplacement::Finish(Durability durability, Former former) {
  WriteGathered();
  std::error_code ignored;
  if (replaces_)
    fs::permissions(scratch_->File().Path(), fs::status(target_, ignored).permissions(), ignored);
  if (durability == Durability::Disk)
    scratch_->File().Sync();
  else
    scratch_->File().Close();  // some disks tell only here what they couldn't write
  if (replaces_ && former == Former::Kept) KeepFormer();
  scratch_->TakePlaceOf(target_);
  if (durability == Durability::Disk) SyncFolder(target_.parent_path());
}

void WriteRecords(const std::string& path, std::span<const Record> records, Durability durability,
                  Former former) {
  FileReplacement file(path);
  file.Write({reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize});
  file.Finish(durability, former);
}

void CopyWholeFile(const std::string& from, const std::string& to) {
  const RawFile source(from, RawFile::Use::Read);
  FileReplacement target(to);
  std::vector<char> block(kGathered);
  for (std::int64_t done = 0;;) {
    const std::size_t read = source.ReadSome(done, block);
    if (read == 0) break;
    target.Write({block.data(), read});
    done += static_cast<std::int64_t>(read);
  }
  target.Finish();
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
