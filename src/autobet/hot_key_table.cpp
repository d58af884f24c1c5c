#include "autobet/hot_key_table.h"

#include <algorithm>
#include <filesystem>

#include "autobet/hot_keys.h"
#include "autobet/script.h"
#include "core/ansi.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/text.h"

namespace {

constexpr const char* kTitle = "Hot-Key";
constexpr std::string_view kCaption = " Ctrl ";
constexpr std::string_view kNoFile = "Please enter an Auto-Bet filename to define this Hot-Key.";

std::string FaultOfText(const std::string& text) {
  const std::string ansi = ToAnsi(text);
  if (ansi.size() > kHotKeyTextWidth)
    return Quoted(text.substr(0, kHotKeyTextWidth)) + "...\n\nis too long: there's room for " +
           std::to_string(kHotKeyTextWidth) + " letters.";
  if (FromAnsi(ansi) != text)
    return Quoted(text) + "\n\nholds letters that can't be kept. Please use Western letters.";
  return {};
}

std::string FaultOf(const HotKey& row) {
  if (row.File.empty()) return std::string(kNoFile);
  if (!IsHotKey(row.Key)) return "Please choose the key of this Hot-Key.";
  const std::string fault = FaultOfText(row.File);
  return fault.empty() ? FaultOfText(row.Description) : fault;
}

HotKey Tidied(HotKey row) {
  const auto isControl = [](char letter) { return letter >= '\0' && letter < ' '; };
  for (std::string* text : {&row.File, &row.Description}) {
    std::ranges::replace_if(*text, isControl, ' ');
    *text = Trimmed(*text);
  }
  return row;
}

std::string_view TakeUntil(std::string_view& text, char end) {
  const std::size_t at = std::min(text.find(end), text.size());
  const std::string_view part = text.substr(0, at);
  text.remove_prefix(std::min(at + 1, text.size()));
  return part;
}

/// The row that a line of text is; one without a file when it is none.
HotKey RowOfText(std::string_view text) {
  HotKey row;
  const std::string_view caption = TakeUntil(text, '\t');
  if (caption.size() != kCaption.size() + 1 || !caption.starts_with(kCaption)) return row;
  row.Key = caption.back();
  row.File = TakeUntil(text, '\t');
  row.Description = text;
  return Tidied(row);
}

}  // namespace

std::string HotKeyCaption(const HotKey& row) { return std::string(kCaption) + row.Key; }

std::optional<HotKey> CheckedHotKey(HotKey row) {
  row = Tidied(std::move(row));
  const std::string fault = FaultOf(row);
  if (fault.empty()) return row;
  ShowMessage(fault, kTitle, kTopicHotKeys, OkStop);
  return {};
}

std::string TextOfHotKeys(const std::vector<HotKey>& rows) {
  std::string text;
  for (const HotKey& row : rows)
    text += HotKeyCaption(row) + "\t" + row.File + "\t" + row.Description + "\n";
  return text;
}

std::optional<std::vector<HotKey>> HotKeysToPaste(std::string_view text) {
  std::vector<HotKey> rows;
  while (!text.empty()) {
    const std::string line = Trimmed(std::string(TakeUntil(text, '\n')));
    if (line.empty() || line == "\r") continue;
    const HotKey row = RowOfText(" " + line);
    if (!FaultOf(row).empty()) {
      ShowMessage("Nothing has been pasted: this is no Hot-Key.\n\n" + line.substr(0, 200), kTitle,
                  kTopicHotKeys, OkStop);
      return {};
    }
    rows.push_back(row);
  }
  return rows;
}

void InsertHotKeys(std::size_t place, const std::vector<HotKey>& rows) {
  const std::size_t before = std::min(place, Game.HotKeys.size());
  Game.HotKeys.insert(Game.HotKeys.begin() + static_cast<std::ptrdiff_t>(before), rows.begin(),
                      rows.end());
  SaveHotKeys();
}

void ReplaceHotKey(std::size_t place, const HotKey& row) {
  if (place >= Game.HotKeys.size()) return;
  Game.HotKeys[place] = row;
  SaveHotKeys();
}

void DeleteHotKeys(const std::vector<std::size_t>& places) {
  std::vector<HotKey> left;
  for (std::size_t place = 0; place < Game.HotKeys.size(); ++place)
    if (std::ranges::find(places, place) == places.end()) left.push_back(Game.HotKeys[place]);
  Game.HotKeys = std::move(left);
  SaveHotKeys();
}

std::string FaultOfHotKey(std::size_t place) {
  const HotKey& row = Game.HotKeys.at(place);
  const auto first = FindHotKey(row.Key);
  if (first != place) return "Another row with this key stands before this one.";
  if (row.File.empty()) return "It has no file.";
  if (FileLength(HotKeyPath(row)) == 0) return BareName(row.File) + " isn't there.";
  return {};
}

std::string HotKeyHeading(const std::string& date) { return "Kelvanor Hot-Keys     " + date; }
