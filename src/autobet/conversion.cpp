#include "autobet/conversion.h"

#include <algorithm>
#include <array>
#include <vector>

#include "autobet/script.h"
#include "autobet/script_records.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/messages.h"

namespace {

constexpr const char* kTitle = "Convert Brindlemox to Kelvanor Auto-Bet File";
constexpr std::string_view kSuffix = "[kv].bet";
constexpr int kExtensionLength = 4;

constexpr int kConverted = 1;
constexpr int kDeclined = 0;

/// Old codes of bets that the table doesn't have.
struct CodeRange {
  int First;
  int Last;
};
constexpr std::array<CodeRange, 6> kDropped = {
    {{1, 2}, {10, 12}, {19, 22}, {29, 32}, {39, 42}, {49, 50}}};

/// Old codes that move. 9 is in neither table.
struct Renumbering {
  int First;
  int Last;
  int Shift;
};
constexpr std::array<Renumbering, 7> kRenumbered = {
    {{3, 8, -2}, {13, 18, 6}, {23, 28, 2}, {33, 38, -2}, {43, 48, -6}, {51, 53, -8}, {54, 88, -5}}};

template <class Range>
auto FindRange(const Range& ranges, int code) {
  return std::find_if(ranges.begin(), ranges.end(), [code](const auto& range) {
    return code >= range.First && code <= range.Last;
  });
}

bool IsDropped(const Record& record, std::size_t offset) {
  const std::optional<int> code = RoundedSubject(record.Single(offset));
  return code && FindRange(kDropped, *code) != kDropped.end();
}

/// Required: whatever the kind of the line, and whether or not the code is a bet there.
void Renumber(Record& record, std::size_t offset) {
  const std::optional<int> code = RoundedSubject(record.Single(offset));
  if (!code) return;
  const auto rule = FindRange(kRenumbered, *code);
  if (rule != kRenumbered.end()) record.PutSingle(offset, static_cast<float>(*code + rule->Shift));
}

std::vector<Record> Convert(const RecordFile& old, int count) {
  std::vector<Record> records(1);
  for (int number = 1; number <= count; ++number) {
    Record record = old.At(static_cast<std::size_t>(number) + 1);
    if (IsDropped(record, kLayout50.OfSubject) || IsDropped(record, kLayout50.ToSubject)) continue;
    Renumber(record, kLayout50.OfSubject);
    Renumber(record, kLayout50.ToSubject);
    records.push_back(record);
  }
  records[0] = MakeHeader(static_cast<int>(records.size()) - 1);
  return records;
}

bool BeginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

/// Beside the old file: its name less the last four characters, with the suffix.
std::string ConvertedName(const std::string& path) {
  std::string name = BareName(path);
  for (int letter = 0; letter < kExtensionLength && !name.empty(); ++letter) {
    while (name.size() > 1 && !BeginsCharacter(name.back())) name.pop_back();
    name.pop_back();
  }
  return TextOfPath(PathOf(path).parent_path() / PathOf(name + std::string(kSuffix)));
}

bool PlayerWantsConversion(const std::string& path) {
  return AskYesNo(
      BareName(path) +
          "\nwas created using Brindlemox (another program by Harrowmere Games.)\n\n"
          "You can run this file by converting it to Kelvanor format. If you choose to do this, "
          "the original file will remain intact and a new file will be created using the same name "
          "plus [kv] added to the end. Any lines containing references to Lay, Come, Come Odds, "
          "Place, and Buy bets on points 2, 3, 11, or 12 will be removed.  This could cause errors "
          "in the script which you'll need to resolve before you can run it.\n\n"
          "Would you like to convert this file to Kelvanor format now?\n\n",
      kTitle, kTopicScripts);
}

bool MayWrite(const std::string& path) {
  if (FileLength(path) == 0) return true;
  return AskYesNo(BareName(path) + "\nis already on file.\n\nDo you want to overwrite it?", kTitle,
                  kTopicScripts);
}

int ConvertFile(std::string& path) {
  if (!PlayerWantsConversion(path)) return kDeclined;
  const std::string newPath = ConvertedName(path);
  if (!MayWrite(newPath)) return kDeclined;
  const std::optional<int> count = HeaderLineCount(ReadRecords(path, 1).At(1), kLayout50);
  if (!count) {
    ShowMessage(BareName(path) + "\n" + std::string(kCorruptedText),
                std::string(kUnableToOpenTitle), kTopicScripts, OkStop);
    return kDeclined;
  }
  const RecordFile old = ReadRecords(path, static_cast<std::size_t>(*count) + 1);
  WriteRecords(newPath, Convert(old, *count));
  path = newPath;
  return kConverted;
}

}  // namespace

void ConvertForeignScript(std::string& path) {
  try {
    Game.LastFileResult = ConvertFile(path);
  } catch (const std::exception&) {
    FileFailed(path, "converted", "Convert Auto-Bet File", kTitle, kTopicScripts);
  }
}
