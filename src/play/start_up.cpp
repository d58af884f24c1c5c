#include "play/start_up.h"

#include <filesystem>

#include "autobet/hot_keys.h"
#include "autobet/output_file.h"
#include "autobet/script.h"
#include "core/error_report.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/scratch_file.h"
#include "core/sounds.h"
#include "dice/generators.h"
#include "dice/tape.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "stats/events_log.h"
#include "stats/games_file.h"

namespace {

enum MissingFile : int { MissingMt = 1, MissingCokus = 2 };

void SeedAllGenerators() {
  for (const int choice : {Rng5Ran1, Rng4Ran2, Rng3Congruence, Rng2Cokus, Rng1Mt}) {
    Game.RngChoice = choice;
    SeedRng(FindSeed);
  }
}

std::string MissingFilesText() {
  std::string text;
  if (Game.MissingRngFiles & MissingMt)
    text +=
        "Unable to locate a support file called MT19937AR.DLL\n"
        "This file is needed to operate random number generators #1, #6, and #8.";
  if (Game.MissingRngFiles & MissingCokus) {
    if (!text.empty()) text += "\n\n";
    text +=
        "Unable to locate a support file called COKUS.DLL\n\n"
        "This file is needed to operate random number generators #2 and #7.";
  }
  return text +
         "\n\nThis happens when the program was built or copied without it.\n\n"
         "Don't worry, you can still play the game with one of the remaining random number "
         "generators.  ";
}

}  // namespace

void StartAfresh() {
  FlushEventsLog();
  FlushGamesLog();
  CloseTape();
  try {
    CloseOutputFile();
  } catch (const std::exception&) {
    ReportError("Sub Main");
  }
  ResetGenerators();
  Game = GameState();
}

void StartUp(const std::string& programFolder, const std::string& dataFolder) {
  try {
    StartAfresh();
    Game.AppPath = programFolder;
    Game.DataPath = dataFolder;
    SweepScratchFiles(PathOf(dataFolder), true);
    LayDownDefaults();
    Game.GamesLogFile = Game.DataPath + "default.glg";
    Game.EventsLogFile = Game.DataPath + "Events Log.txt";
    Game.MissingRngFiles = kGeneratorsLeftOut;
    SeedAllGenerators();
    ScanSounds(Game.AppPath);
    LoadStickPerson();
    LoadHotKeys();
    Game.BetWorkingPrev = Game.BetWorking;
  } catch (const std::exception&) {
    // The program goes on with what stands.
    ReportError("Sub Main");
  }
}

void AfterTableShown() {
  if (Game.MissingRngFiles != 0)
    ShowMessage(MissingFilesText(), "Missing Support File", kTopicGenerators, OkStop);
  if (Game.Point == 0) StickCall();
}

bool MayClose(const std::function<void()>& storeWindowPlaces) {
  if (Game.AutoBetRunning) {
    if (!AskYesNo("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active", kTopicScripts))
      return false;
    Game.AutoBetRunning = false;
    Game.KeepRolling = false;
  }
  TheHost.Yield();
  if (Game.HyperDriveOn) {
    if (!AskYesNo("Do you want to stop Hyper-Drive?", "Hyper-Drive Active", kTopicHyperDrive))
      return false;
    Game.KeepRolling = false;
  }
  TheHost.Yield();
  if (storeWindowPlaces) storeWindowPlaces();
  return true;
}

void CloseGame() {
  Game.HotKeysUnsaved = false;  // the player has been asked
  for (const char* scratch : {"copyfile.rll", "active.tmp"}) {
    std::error_code ignored;
    std::filesystem::remove(PathOf(Game.DataPath + scratch), ignored);
  }
}
