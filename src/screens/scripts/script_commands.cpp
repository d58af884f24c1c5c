#include "screens/scripts/script_commands.h"

#include <QFileInfo>

#include "autobet/checker.h"
#include "autobet/editor.h"
#include "autobet/script.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "screens/files/frmFile.h"

namespace {

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

void OpenAutoBetFileCommand(QWidget* parent) {
  if (!MayReplaceScript()) return;
  if (!RunFileScreen(parent, FileCommand::OpenScript)) return;
  if (Game.AutoBetActive != 0 && !IsWellFormed()) Game.AutoBetActive = 0;
}

bool SaveAutoBetFileAsCommand(QWidget* parent) {
  return RunFileScreen(parent, FileCommand::SaveScriptAs);
}

void ToggleAutoBetCommand() {
  if (Game.AutoBetActive != 0) {
    Game.AutoBetActive = 0;
  } else {
    if (!IsWellFormed()) return;
    ActivateAutoBets(true);
  }
  Game.GameChanged = true;
}

void ClearScriptCommand() {
  if (Game.ScrCount == 0 && Game.AutoBetFile.empty()) return;
  const bool may = Game.ScriptUnsaved ||
                   AskYesNo("Do you want to clear the Auto-Bets from the table?\n\nTheir file, " +
                                ScriptName().toStdString() + ", stays as it is.",
                            "Clear Auto-Bets", kTopicScripts);
  if (!may) return;
  NewScriptCommand();
  Game.GameChanged = true;
}

void AskToKeepScript() {
  if (Game.ScrCount == 0) return;
  const std::string where = Game.ScriptUnsaved ? "Although you didn't save your Auto-Bets\n"
                                                 "to disk, they're still listed on the\n"
                                                 "Auto-Bet screen."
                                               : "Your Auto-Bets are still listed on\n"
                                                 "the Auto-Bet screen.";
  if (!AskYesNo(where + "\nWould you like to keep them with\nyour new game?", "Auto-Bets Present",
                kTopicScripts)) {
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
  return (Game.AutoBetActive != 0 ? QObject::tr("Auto-Bet on:  %1")
                                  : QObject::tr("Auto-Bet off:  %1"))
      .arg(ScriptName());
}
