#include "core/strange_files.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostTrusted = 1000;

std::string ListPath() { return Game.DataPath + "trusted.txt"; }

/// The file that a name leads to, links followed.
fs::path Followed(const std::string& path) {
  std::error_code failure;
  const fs::path followed = fs::weakly_canonical(PathOf(path), failure);
  return failure ? PathOf(path) : followed;
}

bool LiesIn(const fs::path& file, const std::string& folder) {
  if (folder.empty()) return false;
  fs::path in = Followed(folder);
  if (!in.has_filename()) in = in.parent_path();
  return std::mismatch(in.begin(), in.end(), file.begin(), file.end()).first == in.end();
}

/// One name a line, the latest last.
std::vector<std::string> TrustedFiles() {
  std::vector<std::string> names;
  std::ifstream list(PathOf(ListPath()), std::ios::binary);
  for (std::string name; names.size() < kMostTrusted && std::getline(list, name);)
    names.push_back(name);
  return names;
}

void WriteTrusted(const std::vector<std::string>& names) {
  FileReplacement list(ListPath());
  for (const std::string& name : names) list.Write(name + "\n");
  list.Finish();
}

}  // namespace

void NoteFileOfGame(const std::string& path, const std::string& gameFolder) {
  if (path.empty()) return;
  const fs::path file = Followed(path);
  if (LiesIn(file, Game.DataPath) || LiesIn(file, gameFolder)) return;
  const std::vector<std::string> trusted = TrustedFiles();
  if (std::find(trusted.begin(), trusted.end(), TextOfPath(file)) == trusted.end())
    Game.StrangeFiles.push_back(path);
}

bool IsStrange(const std::string& path) {
  const auto& strange = Game.StrangeFiles;
  return std::find(strange.begin(), strange.end(), path) != strange.end();
}

void TrustFile(const std::string& path) {
  std::erase(Game.StrangeFiles, path);
  const fs::path file = Followed(path);
  if (LiesIn(file, Game.DataPath)) return;
  try {
    std::vector<std::string> names = TrustedFiles();
    const std::string name = TextOfPath(file);
    if (name.find('\n') != std::string::npos) return;
    if (std::find(names.begin(), names.end(), name) != names.end()) return;
    if (names.size() >= kMostTrusted) names.erase(names.begin());
    names.push_back(name);
    WriteTrusted(names);
  } catch (const std::exception&) {
    ReportError("Trust File");  // it will be asked for again
  }
}

bool MayWriteTo(const std::string& path, const std::string& use, const std::string& otherwise) {
  if (!IsStrange(path)) return true;
  const bool may =
      AskYesNo(FileText(path, "is " + use +
                                  ", says the game that you opened. It lies outside the folder of "
                                  "that game, and you haven't chosen it yourself.\n\nDo you want "
                                  "it to be written to?\n\nWith No, " +
                                  otherwise + "."),
               "File Outside the Folder of the Game", kTopicFiles);
  if (may) TrustFile(path);
  return may;
}
