#include "screens/table/game_commands.h"

#include "autobet/editor.h"
#include "bets/make_bet.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "persistence/file_commands.h"
#include "persistence/game_file.h"
#include "screens/files/frmFile.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen_table.h"
#include "screens/rules/probability_commands.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/table_commands.h"

namespace {

enum class Offer { Save, LetGo, GoBack };

Offer OfferToSave(const std::string& question, const char* title) {
  ShowMessage(question, title, kTopicFiles, YesNoCancel);
  if (Game.MsgAnswer == AnswerYes) return Offer::Save;
  return Game.MsgAnswer == AnswerNo ? Offer::LetGo : Offer::GoBack;
}

bool MayLeaveTable(QWidget* parent, Leaving leaving) {
  if (!Game.GameChanged) return true;
  std::string question = "Your current game has not been saved.\nDo you want to save it now?";
  if (leaving == Leaving::Program)
    question += "\n\nWith No it goes on all the same when you start Kelvanor again.";
  switch (OfferToSave(question, "Save Game?")) {
    case Offer::Save: return SaveGameCommand(parent);
    case Offer::LetGo: return true;
    default: return false;
  }
}

void ShowAll() {
  TheHost.RedrawLayout();
  TheHost.RefreshViews();
}

}  // namespace

bool MayLeaveGame(QWidget* parent, Leaving leaving) {
  return MayReplaceScript() && MayLeaveProbability(parent) && MayLeaveTable(parent, leaving);
}

void OpenGameCommand(QWidget* parent) {
  if (!MayLeaveGame(parent)) return;
  CloseKeyedBox();
  Game.ClickMode = NoClickMode;
  RunFileScreen(parent, FileCommand::OpenGame);
  ShowAll();
}

void OpenNamedFile(QWidget* parent, const std::string& path) {
  const auto command = OpenCommandOf(path);
  if (!command || (*command == FileCommand::OpenGame && !MayLeaveGame(parent))) return;
  const bool opened = RunFileCommand(*command, path);
  ShowAll();
  if (opened && *command == FileCommand::OpenGamesLog) ShowScreen(GamesWindow);
}

bool SaveGameCommand(QWidget* parent) {
  if (Game.GameFileName.empty()) return SaveGameAsCommand(parent);
  SaveGame(Game.GameFileName);
  ShowAll();
  return Game.LastFileResult > 0;
}

bool SaveGameAsCommand(QWidget* parent) {
  const bool saved = RunFileScreen(parent, FileCommand::SaveGameAs);
  ShowAll();
  return saved;
}
