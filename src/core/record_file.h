// Files of 256-byte records: typed access to a record, reading, and writing that can't lose a file.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/currency.h"
#include "core/scratch_file.h"

inline constexpr std::size_t kRecordSize = 256;

/// What a file routine leaves in `LastFileResult` when the system failed.
inline constexpr int kSystemFailed = -1;

/// One record. Numbers are little endian; a field lies wholly inside the record. A fresh record
/// holds zeros.
class Record {
 public:
  std::int16_t Integer(std::size_t offset) const;
  std::int32_t Long(std::size_t offset) const;
  float Single(std::size_t offset) const;
  double Double(std::size_t offset) const;
  Currency Money(std::size_t offset) const;
  /// UTF-8 of the field, without the blanks and zero bytes that end it.
  std::string Text(std::size_t offset, std::size_t width) const;

  void PutInteger(std::size_t offset, std::int16_t value);
  void PutLong(std::size_t offset, std::int32_t value);
  void PutSingle(std::size_t offset, float value);
  void PutDouble(std::size_t offset, double value);
  void PutMoney(std::size_t offset, Currency value);
  /// One byte a character, cut at `width` and padded with blanks.
  void PutText(std::size_t offset, std::size_t width, std::string_view utf8);

  const unsigned char* Bytes() const { return bytes_.data(); }

  bool operator==(const Record&) const = default;

 private:
  template <class Bits>
  Bits Get(std::size_t offset) const;
  template <class Bits>
  void Put(std::size_t offset, Bits bits);

  std::array<unsigned char, kRecordSize> bytes_{};
};
static_assert(sizeof(Record) == kRecordSize);

/// What was read of a file.
struct RecordFile {
  std::uintmax_t Length = 0;    // of the whole file in bytes
  std::vector<Record> Records;  // a last one that is cut short ends in zeros

  /// Record `number` from 1; zeros behind the end of the file.
  Record At(std::size_t number) const;

  /// The length as `LastFileResult` tells it.
  int FileResult() const;
};

/// Reads up to `most` records. A missing file reads as an empty one and isn't created. Throws
/// std::system_error when there is something that can't be read, a folder or device among them.
RecordFile ReadRecords(const std::string& path, std::size_t most);

/// What a file that was written survives: the end of the program, or the end of the machine too.
enum class Durability { System, Disk };

/// What becomes of a file that is written anew: it is gone, or stays under its name with ".bak"
/// behind it.
enum class Former { Gone, Kept };

/// A file written anew piece by piece: beside the old one, and put in its place by `Finish`, forced
/// to disk with its name unless told otherwise. On any failure, and without `Finish`, the old file
/// stands untouched; only when the name can't be forced to disk the new one may be there. Each
/// routine throws std::system_error when it fails. A file that is marked as read only, a folder or
/// a device isn't replaced. What killed programs left beside the file is swept at the first time.
class FileReplacement {
 public:
  explicit FileReplacement(const std::string& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  void Write(std::string_view bytes);
  void Finish(Durability durability = Durability::Disk, Former former = Former::Gone);

 private:
  void WriteGathered();
  void KeepFormer() const;

  std::filesystem::path target_;
  std::unique_ptr<ScratchFile> scratch_;
  std::string gathered_;
  std::int64_t length_ = 0;
  bool replaces_ = false;
};

/// Writes a file of records anew, in the safe way of `FileReplacement`.
void WriteRecords(const std::string& path, std::span<const Record> records,
                  Durability durability = Durability::Disk, Former former = Former::Gone);

/// Copies a file over another, or to a new name, in the same way.
void CopyWholeFile(const std::string& from, const std::string& to);

/// The length of a file, 0 when there is none.
std::uintmax_t FileLength(const std::string& path);

/// The path of a name in UTF-8, as all names in `Game` are, and back.
std::filesystem::path PathOf(const std::string& utf8);
std::string TextOfPath(const std::filesystem::path& path);

/// The last component of a path.
std::string BareName(const std::string& path);
