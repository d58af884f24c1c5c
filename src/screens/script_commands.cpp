#include "screens/script_commands.h"

#include <QDir>
#include <QFileInfo>

#include "autobet/checker.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/messages.h"
#include "screens/choose_file.h"

namespace {

constexpr int kHelpAutoBet = 640;
constexpr const char* kOpenTitle = "Open Auto-Bet File";
constexpr const char* kSaveTitle = "Save Auto-Bet File As";
constexpr const char* kKind = "Auto-Bet files";
constexpr const char* kPattern = "*.bet";
const QString kExtension = ".bet";

bool IsUnsaved() { return Game.ScrCount > 0 && Game.AutoBetFile.empty(); }

/// Where a script is looked for first: beside the open one, else among the examples.
QString StartOfOpening() {
  if (!Game.AutoBetFile.empty()) return QString::fromStdString(Game.AutoBetFile);
  for (const std::string& folder : {Game.DataPath, Game.AppPath}) {
    const QString examples = QString::fromStdString(folder) + "examples";
    if (QFileInfo(examples).isDir()) return examples;
  }
  return QString::fromStdString(Game.DataPath);
}

QString StartOfSaving() {
  if (!Game.AutoBetFile.empty()) return QString::fromStdString(Game.AutoBetFile);
  return QString::fromStdString(Game.DataPath) + "default" + kExtension;
}

QString WithExtension(const QString& path) {
  if (path.endsWith(kExtension, Qt::CaseInsensitive)) return path;
  return path.endsWith('.') ? path + kExtension.mid(1) : path + kExtension;
}

bool MayWriteOver(const QString& path) {
  const QFileInfo file(path);
  if (file.size() == 0) return true;
  return AskYesNo(
      file.fileName().toStdString() + "\n\nis already on file.\nDo you want to overwrite it?",
      kSaveTitle, kHelpAutoBet);
}

/// Shows the first fault of the script's structure, if there is one.
bool IsWellFormed() {
  if (Game.ScrCount == 0) return true;
  CheckScript();
  return Game.MsgText.empty();
}

void ClearFlags() {
  for (Flag& flag : Game.Flags) flag.FlagValue = flag.FlagPrev = kFalse;
  Game.FlagsTouched = true;
}

}  // namespace

bool ScriptAtWork() {
  return Game.AutoBetRunning || Game.HotKeyRunning || !Game.AutoBetStatus.empty();
}

void OpenAutoBetFileCommand(QWidget* parent) {
  if (!MayLeaveScript(parent)) return;
  const QString path = ChooseFile(parent, {kOpenTitle, kKind, kPattern, StartOfOpening()});
  if (path.isEmpty()) return;
  OpenScript(path.toStdString());
  if (Game.LastFileResult <= 0) return;
  Game.GameChanged = true;
  if (Game.AutoBetActive != 0 && !IsWellFormed()) Game.AutoBetActive = 0;
}

bool SaveAutoBetFileAsCommand(QWidget* parent) {
  QString start = StartOfSaving();
  while (true) {
    const QString chosen = ChooseFile(parent, {kSaveTitle, kKind, kPattern, start, true});
    if (chosen.isEmpty()) return false;
    const QString path = WithExtension(chosen);
    if (MayWriteOver(path)) {
      SaveScript(path.toStdString());
      return Game.LastFileResult > 0;
    }
    start = path;
  }
}

void ToggleAutoBetCommand() {
  if (Game.AutoBetActive != 0) {
    Game.AutoBetActive = 0;
  } else {
    if (!IsWellFormed()) return;
    Game.AutoBetActive = 1;
    Game.ScriptChanged = true;
  }
  Game.GameChanged = true;
}

void ClearScriptCommand(QWidget* parent) {
  if (Game.ScrCount == 0 && Game.AutoBetFile.empty()) return;
  if (IsUnsaved()) {
    if (!MayLeaveScript(parent)) return;
  } else if (!AskYesNo("Do you want to clear the Auto-Bets from the table?\n\nTheir file, " +
                           ScriptName().toStdString() + ", stays as it is.",
                       "Clear Auto-Bets", kHelpAutoBet)) {
    return;
  }
  ClearScript();
  Game.GameChanged = true;
}

bool MayLeaveScript(QWidget* parent) {
  if (!IsUnsaved()) return true;
  ShowMessage("Your current logged bets have not been saved.\nDo you want to save them now?",
              "Save Auto-Bets?", kHelpAutoBet, YesNoCancel);
  if (Game.MsgAnswer == AnswerYes) return SaveAutoBetFileAsCommand(parent);
  return Game.MsgAnswer == AnswerNo;
}

void AskToKeepScript() {
  if (Game.ScrCount == 0) return;
  const std::string where = IsUnsaved() ? "Although you didn't save your Auto-Bets\n"
                                          "to disk, they're still listed on the\n"
                                          "Auto-Bet screen."
                                        : "Your Auto-Bets are still listed on\n"
                                          "the Auto-Bet screen.";
  if (!AskYesNo(where + "\nWould you like to keep them with\nyour new game?", "Auto-Bets Present",
                kHelpAutoBet)) {
    ClearScript();
  } else if (Game.AutoBetActive != 0) {
    Game.ScriptChanged = true;
    ClearFlags();
  }
}

QString ScriptName() {
  if (Game.AutoBetFile.empty()) return "untitled";
  return QFileInfo(QString::fromStdString(Game.AutoBetFile)).fileName();
}

QString ScriptCaption() {
  if (Game.ScrCount == 0 && Game.AutoBetFile.empty()) return {};
  return QString("Auto-Bet %1:  %2").arg(Game.AutoBetActive != 0 ? "on" : "off", ScriptName());
}
