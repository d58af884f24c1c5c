#include "persistence/session.h"

#include <filesystem>

#include "autobet/hot_keys.h"
#include "core/game_state.h"
#include "core/record_file.h"
#include "persistence/companions.h"
#include "persistence/game_file.h"
#include "persistence/kept_game.h"
#include "play/start_up.h"

namespace {

std::string SessionFile() { return Game.DataPath + "default.crp"; }

}  // namespace

void OpenLastSession() {
  std::error_code none;
  const bool kept = std::filesystem::exists(PathOf(SessionFile()), none);
  if (kept) OpenGame(SessionFile(), false);
  if (!kept || Game.LastFileResult <= 0) KeepActiveScript();
  Game.BetWorkingPrev = Game.BetWorking;
}

bool CloseSession() {
  if (Game.HotKeysUnsaved) SaveHotKeys();
  SaveGame(SessionFile());
  if (Game.LastFileResult <= 0 || Game.HotKeysUnsaved) return false;
  RemoveKeptGame();
  CloseGame();
  return true;
}

void EndSession() {
  KeepGame();
  SaveGame(SessionFile());
  CloseGame();
}
