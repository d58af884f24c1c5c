#include "core/sounds.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>

#include "core/error_report.h"
#include "core/host.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kStickSuffix = 6;  // two digits and the extension

std::string Extension(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return extension;
}

/// The names of the files in `folder` with an extension, in order.
std::vector<std::string> FilesWith(const std::string& folder, const std::string& extension) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_regular_file(ignored) && Extension(entry->path()) == extension) {
      names.push_back(entry->path().filename().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> WithNone(std::vector<std::string> names) {
  names.insert(names.begin(), std::string());
  return names;
}

std::vector<std::string> StickPersonsOf(const std::vector<std::string>& files) {
  std::set<std::string> persons;
  for (const std::string& file : files) {
    if (file.size() > kStickSuffix) persons.insert(file.substr(0, file.size() - kStickSuffix));
  }
  return {persons.begin(), persons.end()};
}

/// The default choice in a list: the first of a few, or a later one of many.
int DefaultChoice(const std::vector<std::string>& list, std::size_t few, int ofMany) {
  const std::size_t count = list.size() - 1;
  if (count == 0) return 0;
  return count <= few ? 1 : ofMany;
}

void FindSounds(const std::string& folder) {
  Game.StickPersons = WithNone(StickPersonsOf(FilesWith(folder, ".stk")));
  Game.DiceSounds = WithNone(FilesWith(folder, ".dce"));
  Game.WinSounds = WithNone(FilesWith(folder, ".win"));
  Game.ChipSounds = WithNone(FilesWith(folder, ".chp"));
}

/// The chosen entry of a list; empty for none and for an index outside it.
std::string Chosen(const std::vector<std::string>& list, int choice) {
  const bool inList = choice > 0 && choice < static_cast<int>(list.size());
  return inList ? list[static_cast<unsigned>(choice)] : std::string();
}

void PlayChosen(const std::vector<std::string>& list, int choice, SoundMode mode) {
  if (Game.DisableAllSound) return;
  const std::string name = Chosen(list, choice);
  if (!name.empty()) TheHost.PlaySound(Game.AppPath + name, mode);
}

}  // namespace

void ScanSounds(const std::string& folder) {
  try {
    FindSounds(folder);
  } catch (...) {
    ReportError("Find Sounds");
  }
  Game.StickPerson = DefaultChoice(Game.StickPersons, Game.StickPersons.size(), 1);
  Game.DiceSound = DefaultChoice(Game.DiceSounds, 3, 4);
  Game.ChipSound = DefaultChoice(Game.ChipSounds, 3, 4);
  Game.WinSound = DefaultChoice(Game.WinSounds, 1, 2);
  LoadStickPerson();
}

void LoadStickPerson() {
  const std::string person = Chosen(Game.StickPersons, Game.StickPerson);
  for (unsigned call = 1; call < kStickCalls; ++call) {
    const std::string number = (call < 10 ? "0" : "") + std::to_string(call);
    Game.StickSounds[call] = person.empty() ? person : Game.AppPath + person + number + ".stk";
  }
}

void PlayStickCall(int call, bool toItsEnd) {
  if (Game.DisableAllSound || Game.StickPerson < 1 || call < 1 || call >= kStickCalls) return;
  const std::string& path = Game.StickSounds[static_cast<unsigned>(call)];
  if (!path.empty()) TheHost.PlaySound(path, toItsEnd ? SoundMode::PlayToEnd : SoundMode::Start);
}

void PlayChipSound() { PlayChosen(Game.ChipSounds, Game.ChipSound, SoundMode::Start); }

void PlayDiceSound() { PlayChosen(Game.DiceSounds, Game.DiceSound, SoundMode::Start); }

void PlayWinSound(bool toItsEnd) {
  PlayChosen(Game.WinSounds, Game.WinSound, toItsEnd ? SoundMode::PlayToEnd : SoundMode::Start);
}
