#include "autobet/script.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

#include "autobet/language.h"
#include "autobet/profile.h"

namespace {

constexpr char kBlank = ' ';

/// The flags by their trimmed names, of equal ones the first, while a program is made.
std::optional<std::unordered_map<std::string, int>> flagPlaces;

/// Capital letters of file texts beyond a to z that aren't 32 above their small form.
struct LetterPair {
  const char* Capital;
  const char* Small;
};
constexpr std::array<LetterPair, 4> kSpecialLetters = {
    {{"\u0160", "\u0161"}, {"\u0152", "\u0153"}, {"\u017D", "\u017E"}, {"\u0178", "\u00FF"}}};

constexpr char kLatinLead = '\xC3';
constexpr char kFirstCapital = '\x80';  // A with grave accent, as the second byte
constexpr char kLastCapital = '\x9E';   // Thorn
constexpr char kTimesSign = '\x97';
constexpr char kToSmall = 32;

/// The small form of the character that begins at `at`, written over it; its length in bytes.
std::size_t LowerAt(std::string& text, std::size_t at) {
  if (text[at] >= 'A' && text[at] <= 'Z') text[at] = static_cast<char>(text[at] + kToSmall);
  if (at + 1 == text.size() || static_cast<unsigned char>(text[at]) < 0x80) return 1;
  char& second = text[at + 1];
  if (text[at] == kLatinLead) {
    if (second >= kFirstCapital && second <= kLastCapital && second != kTimesSign)
      second = static_cast<char>(second + kToSmall);
    return 2;
  }
  for (const LetterPair& pair : kSpecialLetters) {
    if (text.compare(at, 2, pair.Capital) != 0) continue;
    text.replace(at, 2, pair.Small);
    return 2;
  }
  return 1;
}

}  // namespace

int ActionOf(int number) {
  if (number < 1 || number > Game.ScrCount) return 0;
  const ScriptLine& line = Line(number);
  return line.LineKind == ActionLine ? line.LineCode : 0;
}

void ScriptEdited() {
  Game.ScriptStale = true;
  Game.FlagsTouched = true;
  ++Game.ScriptEdits;
}

NameRegisters::NameRegisters() {
  for (const std::string& label : Game.ScriptLabels) labels_.insert(TrimmedLower(label));
  for (const Flag& flag : Game.Flags) flags_.insert(TrimmedLower(flag.FlagName));
}

void NameRegisters::OfferLabel(const std::string& name) {
  if (labels_.insert(TrimmedLower(name)).second) Game.ScriptLabels.push_back(RightTrimmed(name));
}

void NameRegisters::OfferFlag(const std::string& name) {
  if (!flags_.insert(TrimmedLower(name)).second) return;
  Flag flag;
  flag.FlagName = RightTrimmed(name);
  Game.Flags.push_back(flag);
}

void NameRegisters::Offer(const ScriptLine& line) {
  if (line.LineKind == LabelLine) OfferLabel(line.LineName);
  if ((line.LineKind == ConditionLine && line.OfSubject == OneFlag) ||
      (line.LineKind == ActionLine && line.LineCode == SetFlag))
    OfferFlag(line.LineName);
}

void RegisterLabel(const std::string& name) {
  NameRegisters().OfferLabel(name);
  ScriptEdited();
}

void RegisterFlag(const std::string& name) {
  NameRegisters().OfferFlag(name);
  ScriptEdited();
}

void RegisterNames(const ScriptLine& line) {
  NameRegisters().Offer(line);
  ScriptEdited();
}

void InsertLine(int before, const ScriptLine& line) {
  const int place = std::clamp(before, 1, Game.ScrCount + 1);
  Game.Script.insert(Game.Script.begin() + (place - 1), line);
  ++Game.ScrCount;
  Game.ScriptChanged = Game.ScriptUnsaved = true;
  SpliceProfile(place, 0, 1);
  RegisterNames(line);
}

void ClearScript() {
  Game.Script.clear();
  Game.ScrCount = 0;
  Game.Flags.clear();
  Game.ScriptLabels.clear();
  Game.AutoBetFile.clear();
  Game.ScriptInsertLine = 1;
  Game.ScriptChanged = false;
  ScriptReplaced();
}

void ScriptReplaced() {
  ++Game.ScriptLoads;
  Game.ScriptUnsaved = false;
  ClearProfile();
  ScriptEdited();
}

FlagPlaces::FlagPlaces() {
  flagPlaces.emplace();
  for (std::size_t place = 0; place < Game.Flags.size(); ++place)
    flagPlaces->emplace(Trimmed(Game.Flags[place].FlagName), static_cast<int>(place));
}
FlagPlaces::~FlagPlaces() { flagPlaces.reset(); }

int FindFlag(const std::string& name) {
  const std::string wanted = Trimmed(name);
  if (flagPlaces) {
    const auto place = flagPlaces->find(wanted);
    return place == flagPlaces->end() ? -1 : place->second;
  }
  const auto found =
      std::find_if(Game.Flags.begin(), Game.Flags.end(),
                   [&wanted](const Flag& flag) { return Trimmed(flag.FlagName) == wanted; });
  return found == Game.Flags.end() ? -1 : static_cast<int>(found - Game.Flags.begin());
}

void TakeFlagSnapshot() {
  if (!Game.FlagsTouched) return;
  for (Flag& flag : Game.Flags) flag.FlagPrev = flag.FlagValue;
  Game.FlagsTouched = false;
}

std::string RightTrimmed(const std::string& name) {
  return name.substr(0, name.find_last_not_of(kBlank) + 1);
}

std::string Trimmed(const std::string& name) {
  const std::size_t first = name.find_first_not_of(kBlank);
  return first == std::string::npos ? std::string() : RightTrimmed(name.substr(first));
}

std::string LowerCase(std::string text) {
  for (std::size_t at = 0; at < text.size();) at += LowerAt(text, at);
  return text;
}

std::string TrimmedLower(const std::string& name) { return LowerCase(Trimmed(name)); }
