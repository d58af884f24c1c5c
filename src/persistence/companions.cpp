#include "persistence/companions.h"

#include <chrono>
#include <cstdio>
#include <system_error>

#include "autobet/output_file.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/error_report.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/strange_files.h"
#include "dice/matrix.h"
#include "dice/probability_file.h"
#include "persistence/kept_path.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kHeadingText = "Kelvanor Game File, Data Format 5.1";
constexpr std::string_view kFormatMark = "Data Format 5.1";
constexpr std::size_t kTextWidth = 92;
constexpr std::size_t kPathOffset = 100;
constexpr std::size_t kDateOffset = 208;
constexpr std::size_t kDateWidth = 40;

/// The records of the headings.
enum HeadingOf : std::size_t {
  ScriptHeading = 1,
  DiceHeading = 2,
  MatrixHeading = 3,
  OutputHeading = 4,
  GamesLogHeading = 5,
  EventsLogHeading = 6,
};

constexpr std::string_view kWhenSaved = " (that was in use when this game was saved) ";

std::string InData(const char* name) { return Game.DataPath + name; }

bool Exists(const std::string& path) {
  std::error_code none;
  return !path.empty() && fs::is_regular_file(PathOf(path), none);
}

// --- Writing ---

bool MatrixIsUnsaved() {
  return Game.ProbabilityChanged || (Game.PrbFileName.empty() && Game.ProbMatrix != FairMatrix());
}

std::string IfThere(const std::string& path) { return Exists(path) ? path : std::string(); }

std::string SessionBeside() { return InData("default"); }

/// The script without a name, or one that only the last session has named, goes on being kept. A
/// kept game has what was changed in a named one, too.
bool KeepsScript(const KeepUnsaved& unsaved) {
  const std::string own = SessionBeside() + ".bet";
  const bool unnamed = Game.AutoBetFile.empty() || Game.AutoBetFile == own;
  const bool changed = Game.ScriptUnsaved && unsaved.Beside != SessionBeside();
  return !unsaved.Beside.empty() && Game.ScrCount > 0 && (unnamed || changed);
}

bool KeepsMatrix(const KeepUnsaved& unsaved) {
  return !unsaved.Beside.empty() &&
         (MatrixIsUnsaved() || Game.PrbFileName == SessionBeside() + ".prb");
}

/// The path of a companion that has been written; empty when it couldn't be.
std::string Written(const std::string& path, bool (*write)(const std::string&)) {
  return write(path) ? path : std::string();
}

void PutHeading(Record& record, const std::string& path, const std::string& date) {
  record.PutText(0, kTextWidth, kHeadingText);
  record.PutText(kPathOffset, kKeptPathWidth, path);
  record.PutText(kDateOffset, kDateWidth, date);
}

// --- Reading ---

/// A companion as its heading tells it.
struct Companion {
  std::string Path;
  std::string Date;
};

Companion ReadHeading(const RecordFile& file, HeadingOf heading,
                      const std::vector<std::string>& known) {
  const Record record = file.At(heading);
  return {WholePath(record.Text(kPathOffset, kKeptPathWidth), known),
          record.Text(kDateOffset, kDateWidth)};
}

void Tell(const std::string& text, const std::string& title) {
  ShowMessage(text, title, kTopicFiles, OkStop);
}

/// Tells of a file that is missing or has changed. `kind` is "Auto-Bet file" and the like, `name`
/// how the titles name it.
void TellMissing(const std::string& kind, const std::string& name, const std::string& path) {
  Tell("The following " + kind + std::string(kWhenSaved) + "was not found:\n\n" + path,
       "Missing " + name);
}

void TellChanged(const std::string& kind, const std::string& title, const std::string& path) {
  Tell("The following " + kind + std::string(kWhenSaved) + "has been changed:\n\n" + path, title);
}

enum class Found { NoPath, Missing, Changed, Same };

Found LookFor(const Companion& companion) {
  if (companion.Path.empty()) return Found::NoPath;
  if (!Exists(companion.Path)) return Found::Missing;
  return DateTextOf(companion.Path) == companion.Date ? Found::Same : Found::Changed;
}

/// Looks for a companion and tells the player what has become of it.
Found LookAndTell(const Companion& companion, const std::string& kind, const std::string& name) {
  const Found found = LookFor(companion);
  if (found == Found::Missing) TellMissing(kind, name, companion.Path);
  if (found == Found::Changed) TellChanged(kind, "Altered " + name, companion.Path);
  return found;
}

bool IsThere(Found found) { return found == Found::Same || found == Found::Changed; }

void TakeScript(const Companion& companion) {
  const bool there = IsThere(LookAndTell(companion, "Auto-Bet file", "Auto-Bet File"));
  if (there) OpenWholeScript(companion.Path);
  if (!there || Game.LastFileResult <= 0) ClearScript();
  KeepActiveScript();
}

void TakeDiceFile(const Companion& companion) {
  const Found found = LookAndTell(companion, "Dice Roll file", "Dice Roll File");
  Game.DiceRollFile = IsThere(found) ? companion.Path : std::string();
  if (found == Found::Same) return;
  Game.RecorderStatus = RecorderOff;
  if (found == Found::NoPath) return;
  Game.DiceFilePos = 1;
  Game.DiceFileLast = 0;
}

void TakeMatrix(const Companion& companion) {
  const bool there = IsThere(LookAndTell(companion, "Probability file", "Probability File"));
  if (there) LoadProbabilityFile(companion.Path);
  if (there && Game.LastFileResult > 0) return;
  Game.PrbFileName.clear();
  Game.ProbabilityChanged = false;
  SetFairMatrix();
}

void TakeOutputFile(const Companion& companion) {
  try {
    UseOutputFile(companion.Path);
  } catch (const std::exception&) {
    ReportError("Open Game");  // of the file that was in use before
  }
}

/// A log that was never begun isn't missed.
void TakeGamesLog(const Companion& companion) {
  const std::string standard = InData("default.glg");
  Game.GamesLogFile = companion.Path.empty() ? standard : companion.Path;
  if (Exists(Game.GamesLogFile) || Game.GamesLogFile == standard) return;
  Tell("The following Games Log" + std::string(kWhenSaved) + "was not found:\n\n" + companion.Path +
           "\n\nThe default Games Log will be opened instead:\n\n" + standard,
       "Missing Games Log");
  Game.GamesLogFile = standard;
}

void TakeEventsLog(const Companion& companion) {
  const std::string standard = InData("Events Log.txt");
  const Found found = LookFor(companion);
  Game.EventsLogFile = IsThere(found) ? companion.Path : standard;
  const bool wasThere = !companion.Date.empty();
  if (found == Found::Missing && (wasThere || companion.Path != standard))
    Tell("The Events Log that was open when this game\nwas saved, was not found.",
         "Missing Events Log");
  if (found == Found::Changed && wasThere)
    TellChanged("Events Log", "Changed Events Log", companion.Path);
}

}  // namespace

bool IsGameHeading(const Record& heading) {
  return heading.Text(0, kTextWidth).find(kFormatMark) != std::string::npos;
}

std::string DateTextOf(const std::string& path) {
  if (!Exists(path)) return {};
  std::error_code failure;
  const fs::file_time_type written = fs::last_write_time(PathOf(path), failure);
  if (failure) return {};
  using namespace std::chrono;
  const auto time = floor<seconds>(file_clock::to_sys(written));
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  char text[kDateWidth];
  std::snprintf(text, sizeof(text), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text;
}

bool PutCompanions(std::vector<Record>& records, const KeepUnsaved& unsaved) {
  const bool keepsScript = KeepsScript(unsaved);
  const bool keepsMatrix = KeepsMatrix(unsaved);
  const std::string script =
      keepsScript ? Written(unsaved.Beside + ".bet", unsaved.Script) : IfThere(Game.AutoBetFile);
  std::string matrix = MatrixIsUnsaved() ? std::string() : IfThere(Game.PrbFileName);
  if (keepsMatrix) matrix = Written(unsaved.Beside + ".prb", unsaved.Matrix);
  const auto put = [&records](HeadingOf heading, const std::string& path, bool dated) {
    PutHeading(records.at(heading - 1), path, dated ? DateTextOf(path) : std::string());
  };
  put(ScriptHeading, script, true);
  put(DiceHeading, Game.DiceRollFile, true);
  put(MatrixHeading, matrix, true);
  put(OutputHeading, Game.AutoBetOutputFile, false);
  put(GamesLogHeading, Game.GamesLogFile, false);
  put(EventsLogHeading, Game.EventsLogFile, true);
  return !(keepsScript && script.empty()) && !(keepsMatrix && matrix.empty());
}

KeepUnsaved InSession() { return {SessionBeside(), WriteScript, WriteProbabilityFile}; }

void TakeCompanions(const RecordFile& file, const std::string& gameFolder) {
  Game.StrangeFiles.clear();
  TakeScript(ReadHeading(file, ScriptHeading, {InData("default.bet"), Game.AutoBetFile}));
  TakeDiceFile(ReadHeading(file, DiceHeading, {Game.DiceRollFile}));
  TakeMatrix(ReadHeading(file, MatrixHeading, {InData("default.prb"), Game.PrbFileName}));
  TakeOutputFile(ReadHeading(file, OutputHeading, {Game.AutoBetOutputFile}));
  TakeGamesLog(ReadHeading(file, GamesLogHeading, {InData("default.glg"), Game.GamesLogFile}));
  TakeEventsLog(
      ReadHeading(file, EventsLogHeading, {InData("Events Log.txt"), Game.EventsLogFile}));
  for (const std::string& path : {Game.DiceRollFile, Game.AutoBetOutputFile, Game.EventsLogFile})
    NoteFileOfGame(path, gameFolder);
}

void TakeMatrixAlone(const RecordFile& file) {
  TakeMatrix(ReadHeading(file, MatrixHeading, {InData("default.prb"), Game.PrbFileName}));
  ClearScript();
  Game.RecorderStatus = RecorderOff;
  Game.EventsLogActive = false;
  for (std::string* path :
       {&Game.DiceRollFile, &Game.AutoBetOutputFile, &Game.GamesLogFile, &Game.EventsLogFile})
    path->clear();
}

void KeepActiveScript() { WriteScript(InData("active.tmp")); }
