#include "autobet/script_file.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "autobet/conversion.h"
#include "autobet/language.h"
#include "autobet/profile.h"
#include "autobet/script.h"
#include "autobet/script_records.h"
#include "core/ansi.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

constexpr std::string_view kForeignMark = "Brindlemox AutoBets";
constexpr std::string_view kOwnMark = "Kelvanor AutoBets";
constexpr std::string_view kOldFormatText =
    "has either been corrupted or was written with an older format which is no longer in use.";
constexpr const char* kUnableToSaveTitle = "Unable to Save Auto-Bet File";

constexpr Currency kFormat50 = 5;
constexpr Currency kFormat39 = Currency::FromRaw(39'000);
constexpr std::size_t kVersionLetters = 4;

/// A script as read, before any of it reaches the game.
struct ReadScript {
  std::vector<ScriptLine> Lines;
  std::vector<bool> OffersNames;  // to the registers
};

void Tell(std::string_view title, const std::string& path, std::string_view text) {
  ShowMessage(BareName(path) + "\n" + std::string(text), std::string(title), kTopicScripts, OkStop);
}

void Refuse(const std::string& path, std::string_view text) {
  Game.LastFileResult = 0;
  Tell(kUnableToOpenTitle, path, text);
}

std::string HeaderText(const Record& header) { return header.Text(0, kLineTextWidth); }

/// The data format that a header tells, 0 when there is no number.
Currency FormatOf(const Record& header) {
  const std::string letters = ToAnsi(Trimmed(HeaderText(header)));
  return ParseAmount(letters.substr(letters.size() - std::min(letters.size(), kVersionLetters)));
}

/// The layout of a script file; nullptr once a file that can't be read has been refused.
const ScriptLayout* ChooseLayout(const std::string& path, const Record& header) {
  if (!HeaderText(header).starts_with(kOwnMark)) {
    Refuse(path, kCorruptedText);
    return nullptr;
  }
  const Currency format = FormatOf(header);
  if (format == kFormat50) return &kLayout50;
  if (format == kFormat39) return &kLayout39;
  if (format > kFormat50)
    Refuse(path, "requires Kelvanor version " + PlainText(format) + " or later to run.");
  else
    Refuse(path, kOldFormatText);
  return nullptr;
}

/// Required: only a subject that is exactly 1500 in the file names a flag, though others may round
/// to it.
bool OffersNames(const Record& record, const ScriptLayout& layout) {
  return record.Integer(kKindOffset) != ConditionLine ||
         record.Single(layout.OfSubject) == static_cast<float>(OneFlag);
}

/// Reads `count` lines; false when one of them can't be a line.
bool ReadLines(const RecordFile& file, const ScriptLayout& layout, int count, ReadScript& script) {
  script.Lines.reserve(static_cast<std::size_t>(count));
  script.OffersNames.reserve(static_cast<std::size_t>(count));
  for (int number = 1; number <= count; ++number) {
    const Record record = file.At(static_cast<std::size_t>(number) + 1);
    std::optional<ScriptLine> line = ReadLine(record, layout);
    if (!line) return false;
    script.Lines.push_back(std::move(*line));
    script.OffersNames.push_back(OffersNames(record, layout));
  }
  return true;
}

/// Reads a file whole, and leaves its length in `LastFileResult`; false once it has been refused.
bool ReadWhole(const std::string& path, ReadScript& script) {
  const Record header = ReadRecords(path, 1).At(1);
  const ScriptLayout* layout = ChooseLayout(path, header);
  if (layout == nullptr) return false;
  const std::optional<int> count = HeaderLineCount(header, *layout);
  const RecordFile file = ReadRecords(path, count ? static_cast<std::size_t>(*count) + 1 : 1);
  if (!count || !ReadLines(file, *layout, *count, script)) {
    Refuse(path, kCorruptedText);
    return false;
  }
  Game.LastFileResult = file.FileResult();
  return true;
}

void OfferNames(const ReadScript& script) {
  NameRegisters registers;
  for (std::size_t i = 0; i < script.Lines.size(); ++i) {
    if (script.OffersNames[i]) registers.Offer(script.Lines[i]);
  }
}

/// When the file was written last, and its length; empty for a file that isn't there.
std::string StampOf(const std::string& path) {
  std::error_code failure;
  const auto written = std::filesystem::last_write_time(PathOf(path), failure);
  if (failure) return {};
  return std::to_string(written.time_since_epoch().count()) + " " +
         std::to_string(FileLength(path));
}

void UseScriptFile(const std::string& path) {
  Game.AutoBetFile = path;
  Game.AutoBetFileStamp = StampOf(path);
}

void TakeOver(ReadScript& script, const std::string& path) {
  Game.Flags.clear();
  Game.ScriptLabels.clear();
  OfferNames(script);
  Game.Script = std::move(script.Lines);
  Game.ScrCount = static_cast<int>(Game.Script.size());
  Game.ScriptInsertLine = 1;
  UseScriptFile(path);
}

void LayOver(const ReadScript& script) {
  OfferNames(script);
  if (Game.Script.size() < script.Lines.size()) Game.Script.resize(script.Lines.size());
  std::copy(script.Lines.begin(), script.Lines.end(), Game.Script.begin());
  Game.ScrCount = static_cast<int>(script.Lines.size());
}

void Paste(const ReadScript& script) {
  OfferNames(script);
  const int place = std::clamp(Game.ScriptInsertLine, 1, Game.ScrCount + 1);
  Game.Script.reserve(Game.Script.size() + script.Lines.size());
  for (ScriptLine& line : Game.Script) {
    line.LineSelected = false;
    line.LineMark = 0;
  }
  const auto pasted = Game.Script.insert(Game.Script.begin() + (place - 1), script.Lines.begin(),
                                         script.Lines.end());
  std::for_each(pasted, pasted + static_cast<std::ptrdiff_t>(script.Lines.size()),
                [](ScriptLine& line) { line.LineSelected = true; });
  const int count = static_cast<int>(script.Lines.size());
  Game.ScrCount += count;
  SpliceProfile(place, 0, count);
}

/// Offers to convert a file of the older program and puts the converted one in its place; false
/// when there is none to open.
bool ConvertIfForeign(std::string& path) {
  if (!HeaderText(ReadRecords(path, 1).At(1)).starts_with(kForeignMark)) return true;
  ConvertForeignScript(path);
  return Game.LastFileResult > 0;
}

/// What becomes of the lines of a file.
enum class ReadInto { Whole, Insertion, HotKey };

void ReadIntoScript(std::string path, ReadInto use) {
  ReadScript script;
  if (!ConvertIfForeign(path) || !ReadWhole(path, script)) return;
  switch (use) {
    case ReadInto::HotKey: LayOver(script); break;
    case ReadInto::Insertion: Paste(script); break;
    case ReadInto::Whole: TakeOver(script, path); break;
  }
  if (use != ReadInto::HotKey) Game.ScriptChanged = true;
  if (use == ReadInto::Whole) return ScriptReplaced();
  if (use == ReadInto::HotKey) ++Game.ScriptLoads;
  Game.ScriptUnsaved = use == ReadInto::Insertion || path != Game.AutoBetFile;
  ScriptEdited();
}

void Open(const std::string& path, ReadInto use) {
  try {
    ReadIntoScript(path, use);
  } catch (const std::exception&) {
    FileFailed(path, "read", "Open Auto-Bet File", std::string(kUnableToOpenTitle), kTopicScripts);
  }
}

std::vector<Record> RecordsToSave(bool selectedOnly) {
  std::vector<Record> records(1);
  for (int number = 1; number <= Game.ScrCount; ++number) {
    const ScriptLine& line = Line(number);
    if (!selectedOnly || line.LineSelected) records.push_back(MakeLineRecord(line));
  }
  records[0] = MakeHeader(static_cast<int>(records.size()) - 1);
  return records;
}

/// Writes lines of the script; true on success.
bool WriteLines(const std::string& path, bool selectedOnly) {
  try {
    const std::vector<Record> records = RecordsToSave(selectedOnly);
    WriteRecords(path, records);
    Game.LastFileResult = static_cast<int>(records.size() * kRecordSize);
    return true;
  } catch (const std::exception&) {
    FileFailed(path, "written", "Save Auto-Bet File", kUnableToSaveTitle, kTopicScripts);
    return false;
  }
}

}  // namespace

bool ScriptFileChanged() {
  if (Game.AutoBetFile.empty() || Game.AutoBetFileStamp.empty()) return false;
  const std::string stamp = StampOf(Game.AutoBetFile);
  return !stamp.empty() && stamp != Game.AutoBetFileStamp;
}

void OpenScript(const std::string& path) {
  const ReadInto inserted = Game.ScriptCopyMode ? ReadInto::Insertion : ReadInto::Whole;
  Open(path, Game.HotKeyRunning ? ReadInto::HotKey : inserted);
}

void OpenWholeScript(const std::string& path) { Open(path, ReadInto::Whole); }

bool WriteScript(const std::string& path) { return WriteLines(path, false); }

bool StoreScript(const std::string& path) {
  WriteRecords(path, RecordsToSave(false));
  return true;
}

void SaveScript(const std::string& path) {
  const bool written = WriteLines(path, Game.ScriptCopyMode);
  if (!written || Game.ScriptCopyMode || Game.HotKeyRunning) return;
  UseScriptFile(path);
  Game.ScriptUnsaved = false;
}
