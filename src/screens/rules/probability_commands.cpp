#include "screens/rules/probability_commands.h"

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "dice/matrix_edit.h"
#include "dice/probability_file.h"
#include "persistence/file_commands.h"
#include "screens/files/frmFile.h"
#include "screens/frame/player_change.h"

bool MayLeaveProbability(QWidget* parent) {
  if (!Game.ProbabilityChanged) return true;
  ShowMessage(
      "Your current probabilities have not been saved.\n"
      "Do you want to save them now?",
      "Save Probabilities?", kTopicFiles, YesNoCancel);
  if (Game.MsgAnswer == AnswerYes) return SaveProbabilityCommand(parent);
  return Game.MsgAnswer == AnswerNo;
}

void NewProbabilityCommand(QWidget* parent) {
  if (MayLeaveProbability(parent)) ChangeByPlayer(NewProbabilities);
}

void OpenProbabilityCommand(QWidget* parent) {
  if (!MayLeaveProbability(parent)) return;
  if (RunFileScreen(parent, FileCommand::OpenProbability)) Game.GameChanged = true;
  TheHost.RefreshViews();
}

bool SaveProbabilityCommand(QWidget* parent) {
  if (Game.PrbFileName.empty()) return SaveProbabilityAsCommand(parent);
  SaveProbabilityFile(Game.PrbFileName);
  TheHost.RefreshViews();
  return Game.LastFileResult > 0;
}

bool SaveProbabilityAsCommand(QWidget* parent) {
  const bool saved = RunFileScreen(parent, FileCommand::SaveProbabilityAs);
  if (saved) Game.GameChanged = true;
  TheHost.RefreshViews();
  return saved;
}
