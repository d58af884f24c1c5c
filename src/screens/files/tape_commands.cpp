#include "screens/files/tape_commands.h"

#include <algorithm>
#include <climits>
#include <memory>

#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "dice/tape_edit.h"
#include "dice/tape_file.h"
#include "screens/files/frmFile.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"

namespace {

constexpr const char* kNeedsFile = "You need to open a file first.";
constexpr const char* kEditTitle = "Record Dice Rolls";
constexpr const char* kPrintTitle = "Print Dice Rolls";
constexpr int kRollsOfRow = 10;         // of a printed page
constexpr std::int64_t kRead = 30'000;  // rolls at a time

void ShowAll() {
  TheHost.RedrawLayout();
  TheHost.RefreshViews();
}

void Tell(const std::string& text, const char* title) {
  ShowMessage(text, title, kTopicDiceRolls, OkStop);
}

/// The throws of a stretch, asked for one after the other.
class RollReader {
 public:
  char At(std::int64_t record) {
    if (record < first_ || record >= first_ + static_cast<std::int64_t>(read_.size())) {
      first_ = record;
      read_ = ReadRolls(record, kRead);
    }
    return read_.empty() ? '\0' : read_[static_cast<std::size_t>(record - first_)];
  }

 private:
  std::int64_t first_ = 0;
  std::string read_;
};

Report ReportOf(const RollSelection& rolls) {
  Report report;
  report.Title = QObject::tr("Kelvanor Dice Rolls");
  report.Heading = GameHeading(QObject::tr("Dice Rolls"));
  report.Heading
      << QObject::tr("Rolls %1 to %2").arg(Count(rolls.From), Count(rolls.From + rolls.Count - 1));
  report.Align = [](int) { return Qt::Alignment(Qt::AlignRight); };
  report.TextSize = 9;
  report.Rows = static_cast<int>(
      std::min<std::int64_t>((rolls.Count + kRollsOfRow - 1) / kRollsOfRow, INT_MAX));
  const RollTextOptions options = {false, Game.ShowDieNumbers, Game.ShowNumbersCalled};
  report.Row = [rolls, options, numbers = Game.ShowRollNumbers,
                reader = std::make_shared<RollReader>()](int row) {
    const std::int64_t first = rolls.From + static_cast<std::int64_t>(row) * kRollsOfRow;
    const std::int64_t end = std::min(first + kRollsOfRow, rolls.From + rolls.Count);
    QStringList cells;
    if (numbers) cells << Count(first);
    for (std::int64_t record = first; record < end; ++record)
      cells << Text(RollText(reader->At(record), options));
    return cells;
  };
  return report;
}

}  // namespace

void OpenDiceRollsCommand(QWidget* parent) {
  RunFileScreen(parent, FileCommand::OpenDiceRolls);
  ShowAll();
}

void CloseDiceRollsCommand() {
  if (Game.DiceRollFile.empty()) return;
  CloseDiceRollFile();
  Game.GameChanged = true;
  ShowAll();
}

void SetRecorderCommand(int status) {
  if (status != RecorderOff && Game.DiceRollFile.empty()) {
    Tell(kNeedsFile, status == Recording ? "Record Dice Rolls During Game Play"
                                         : "Playback Dice Rolls During Game Play");
    return;
  }
  Game.RecorderStatus = status;
  Game.GameChanged = true;
  ShowAll();
}

void EditTape(std::string_view done, const std::function<void()>& edit,
              std::function<std::string()> path) {
  if (Game.DiceRollFile.empty()) return Tell(kNeedsFile, kEditTitle);
  ChangeByPlayer([done, edit, path] {
    edit();
    if (Game.LastFileResult < 0)
      Tell(FileFailureText(path ? path() : Game.DiceRollFile, done), kEditTitle);
  });
}

void EnterRollsCommand(std::string_view throws) {
  EditTape("written", [throws = std::string(throws)] { EnterRolls(throws); });
}

void CopyRollsCommand() { EditTape("written", CopySelectedRolls, CopiedRollsFile); }
void CutRollsCommand() { EditTape("changed", CutSelectedRolls); }
void PasteRollsCommand() { EditTape("changed", PasteCopiedRolls); }
void DeleteRollsCommand() { EditTape("changed", DeleteSelectedRolls); }

void PrintRollsCommand(QWidget* parent) {
  const RollSelection rolls =
      Game.PrintSelectedRolls ? SelectedRolls() : RollSelection{1, DiceRollCount()};
  if (rolls.Count == 0) {
    Tell(Game.PrintSelectedRolls ? "There are no dice rolls selected."
                                 : "There are no dice rolls to print.",
         kPrintTitle);
  } else if (!Game.ShowDieNumbers && !Game.ShowNumbersCalled) {
    Tell(kNoOutputChosen, kPrintTitle);
  } else {
    PrintReport(parent, ReportOf(rolls));
  }
}
