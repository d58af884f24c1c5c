// What the file screen does, command by command.
#include "persistence/file_commands.h"

#include <filesystem>
#include <functional>
#include <map>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "core/record_file.h"
#include "dice/tape_file.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

using enum FileCommand;

class FileCommands : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.DataPath = folder / "";
    Game.EventsLogFile = folder / "Events Log.txt";
    Game.GamesLogFile = folder / "default.glg";
  }

  static void PutScript(int lines) {
    ClearScript();
    for (int number = 1; number <= lines; ++number) {
      ScriptLine line;
      line.LineKind = RemarkLine;
      line.LineName = line.LineText = "' Größe " + std::to_string(number);
      line.LineSelected = number % 2 == 0;
      InsertLine(number, line);
    }
  }

  /// The answer to the next question: 1 Yes, 2 No.
  void Press(int button) { Answers = {{button, false, "", ""}}; }

  bool Run(FileCommand command, const std::string& name) {
    return RunFileCommand(command, folder / name);
  }

  const ScratchFolder folder{"file commands ñ"};
};

TEST_F(FileCommands, NamesAreCompletedByThePattern) {
  const struct {
    const char* Typed;
    const char* Pattern;
    const char* Name;
  } cases[] = {
      {"  my game ", "*.crp", "my game.crp"},
      {"x.txt", "*.bet", "x.txt.bet"},
      {"x.", "*.bet", "x.bet"},
      {"x.BET", "*.bet", "x.BET"},
      {"bet", "*.bet", "bet.bet"},
      {"Größe.ñ", "*.txt", "Größe.ñ.txt"},
      {"notes", "*.*", "notes"},
      {"notes.", "*.*", "notes."},
      {".bet", "*.bet", ".bet"},
  };
  for (const auto& [typed, pattern, name] : cases) {
    for (const std::string at : {"/a b", "/a b/"})
      EXPECT_EQ(CompletePath(typed, at, pattern), "/a b/" + std::string(name)) << typed;
  }
  EXPECT_EQ(CompletePath("  ", "/a", "*.crp"), "");
  EXPECT_EQ(CompletePath("/b/x", "/a", "*.crp"), "/b/x.crp");
  EXPECT_EQ(CompletePath("b/x", "/a", "*.crp"), "/a/b/x.crp");
  EXPECT_EQ(CompletePath("../x", "/a b/c/", "*.crp"), "/a b/x.crp");
  for (int command = 0; command < kFileCommands; ++command)
    EXPECT_EQ(static_cast<int>(RowOf(static_cast<FileCommand>(command)).Command), command);
}

TEST_F(FileCommands, NothingIsWrittenOverUnasked) {
  const std::map<FileCommand, const char*> titles = {
      {SaveGameAs, "Save Game File As"},
      {CopyToDiceRolls, "Copy to Dice Roll File"},
      {CopyDiceRollsToText, "Copy Dice Rolls To Text File"},
      {SaveScriptAs, "Save Auto-Bet File As"},
      {CopyToScript, "Copy to Auto-Bet File"},
      {CopyScriptToText, "Copy To Text File"},
      {SaveGamesLogAs, "Save Games Log As"},
      {SaveEventsLogAs, "Save Events Log As"},
      {SaveProbabilityAs, "Save Probability File As"},
  };
  PutScript(3);
  folder.Write("tape.rol", "\x24\x48\x6c");
  folder.Write("Events Log.txt", "a line\r\n");
  folder.Write("default.glg", std::string(256, 'g'));
  Game.DiceRollFile = folder / "tape.rol";
  Game.DiceFilePos = 3;
  Game.DiceFileEnd = 2;
  EXPECT_FALSE(Run(CopyDiceRollsToText, "none.x"));
  EXPECT_TRUE(TakeOnlyMessage().Text.starts_with("You must check at least one of the following"));
  Game.ShowDieNumbers = true;
  for (const auto& [command, title] : titles) {
    const char* question = command == CopyToDiceRolls ? "Do you want to copy over it?"
                                                      : "Do you want to overwrite it?";
    folder.Write("Ziel ñ.x", "old");
    for (const int button : {2, 1}) {
      Press(button);
      EXPECT_EQ(Run(command, "Ziel ñ.x"), button == 1) << title;
      const ShownMessage message = TakeOnlyMessage();
      EXPECT_EQ(message.Text, "Ziel ñ.x\n\nis already on file.\n" + std::string(question));
      EXPECT_EQ(message.Title, title);
      EXPECT_EQ(folder.Read("Ziel ñ.x") == "old", button == 2) << title;
    }
    if (command == SaveEventsLogAs) folder.Write("Ziel ñ.x", "a line\r\n");  // the log itself now
    folder.Write("empty.x", "");
    EXPECT_TRUE(Run(command, "empty.x")) << title;
    EXPECT_TRUE(TakeShown().empty()) << title;
    if (command == CopyDiceRollsToText) {
      EXPECT_EQ(folder.Read("empty.x"), "(2-2)\r\n(3-3)\r\n");
    }
    if (command == CopyToDiceRolls) {
      EXPECT_EQ(folder.Read("empty.x"), "\x48\x6c");
    }
    if (command == CopyScriptToText) {
      EXPECT_EQ(folder.Read("empty.x"),
                "' Gr\xf6\xdf"
                "e 2\r\n");
    }
  }
  EXPECT_EQ(Game.GamesLogFile, folder / "empty.x");
  EXPECT_EQ(Game.EventsLogFile, folder / "empty.x");
}

TEST_F(FileCommands, WhatCannotBeDoneIsToldAndChangesNothing) {
  PutScript(3);
  folder.Write("rubbish.x", std::string(700, 'x'));
  std::filesystem::create_directory(folder / "folder.x");
  const GameState before = Game;
  const auto untouched = [&] {
    return Game.GameFileName == before.GameFileName && Game.AutoBetFile == before.AutoBetFile &&
           Game.PrbFileName == before.PrbFileName && Game.DiceRollFile == before.DiceRollFile &&
           Game.GamesLogFile == before.GamesLogFile && Game.Script == before.Script &&
           Game.EventsLogFile == before.EventsLogFile && Game.ProbMatrix == before.ProbMatrix &&
           Game.Bets == before.Bets && !Game.ScriptCopyMode;
  };
  const std::vector<std::pair<FileCommand, const char*>> cases = {
      {OpenGame, "missing.x"},
      {PasteDiceRolls, "missing.x"},
      {OpenScript, "missing.x"},
      {PasteDiceRollsFromText, "missing.x"},
      {PasteScript, "missing.x"},
      {SelectHotKeyScript, "missing.x"},
      {OpenGamesLog, "missing.x"},
      {OpenEventsLog, "missing.x"},
      {OpenProbability, "missing.x"},
      {OpenGame, "rubbish.x"},
      {OpenScript, "rubbish.x"},
      {PasteScript, "rubbish.x"},
      {OpenGamesLog, "rubbish.x"},
      {OpenProbability, "rubbish.x"},
      {SaveGameAs, "gone/x.crp"},
      {SaveScriptAs, "gone/x.bet"},
      {CopyToScript, "gone/x.bet"},
      {CopyScriptToText, "gone/x.txt"},
      {OpenDiceRolls, "gone/x.rol"},
      {SaveProbabilityAs, "gone/x.prb"},
      {OpenGame, "gone/x.crp"},
      {OpenProbability, "folder.x"},
      {SaveGameAs, "folder.x"},
      {SaveScriptAs, "folder.x"},
      {OpenDiceRolls, "folder.x"},
      {CopyScriptToText, "folder.x"},
      {OpenEventsLog, "folder.x"},
      {OpenGamesLog, "folder.x"},
      {SaveGamesLogAs, "x.glg"},
      {SaveEventsLogAs, "x.txt"},
      {CopyToDiceRolls, "x.rol"},
      {CopyDiceRollsToText, "x.txt"},
      {SelectGamesLogToMerge, "missing.x"},
      {SelectGamesLogToCompare, "missing.x"},
  };
  const std::vector<std::pair<const char*, const char*>> reasons = {
      {"missing", ": there's no such file."},
      {"gone/", ": there's no such folder."},
      {"folder", ": it's a folder."}};
  for (const auto& [command, name] : cases) {
    SCOPED_TRACE(std::string(RowOf(command).Title) + " " + name);
    EXPECT_FALSE(Run(command, name));
    const std::string text = TakeOnlyMessage().Text;
    EXPECT_TRUE(text.starts_with(BareName(name))) << text;
    for (const auto& [begins, reason] : reasons) {
      if (!std::string(name).starts_with(begins)) continue;
      EXPECT_TRUE(text.find("can't be ") < text.find(reason)) << text;
      EXPECT_TRUE(text.ends_with("\n\nFolder:  " + TextOfPath(PathOf(folder / name).parent_path())))
          << text;
    }
    EXPECT_TRUE(untouched());
  }
  for (ScriptLine& line : Game.Script) line.LineSelected = false;
  EXPECT_FALSE(Run(CopyToScript, "x.bet") || Run(CopyScriptToText, "x.txt"));
  EXPECT_EQ(folder.Count(), 2U);
}

TEST_F(FileCommands, CompanionsAreOpenedAndNamed) {
  PutScript(4);
  EXPECT_TRUE(Run(CopyToScript, "half.bet") && Game.AutoBetFile.empty());
  EXPECT_TRUE(Run(SaveScriptAs, "whole.bet") && Run(PasteScript, "half.bet"));
  EXPECT_EQ(Game.ScrCount, 6);
  EXPECT_EQ(Game.AutoBetFile, folder / "whole.bet");
  EXPECT_TRUE(Run(OpenScript, "whole.bet") && Game.ScrCount == 4);
  EXPECT_TRUE(Run(OpenDiceRolls, "new.rol") && DiceRollCount() == 0);
  folder.Write("throws.txt", "1 2, (3-4) 5");
  EXPECT_TRUE(Run(PasteDiceRollsFromText, "throws.txt") && DiceRollCount() == 2);
  EXPECT_TRUE(Run(SaveProbabilityAs, "dice.prb"));
  Game.ProbMatrix[1][2][1] += 1;
  EXPECT_TRUE(Run(OpenProbability, "dice.prb") && Game.PrbFileName == folder / "dice.prb");
  EXPECT_EQ(Game.ProbMatrix[1][2][1], 2778);
  EXPECT_TRUE(Run(SelectWave, "any.wav") && Game.SelectedFileName == folder / "any.wav");
  EXPECT_TRUE(Run(SelectHotKeyScript, "half.bet") && Game.SelectedFileName == folder / "half.bet");
  folder.Write("old.txt", "one\r\ntwo\r\n");
  Game.LogTopLine = 9;
  EXPECT_TRUE(Run(OpenEventsLog, "old.txt") && Game.LogTopLine == 1);
  Press(1);
  EXPECT_TRUE(Run(SaveEventsLogAs, "old.txt"));  // onto itself
  EXPECT_EQ(folder.Read("old.txt"), "one\r\ntwo\r\n");
  EXPECT_TRUE(Run(SaveGameAs, "game.crp") && OpenFileOf(OpenGame) == folder / "game.crp");
  Game.Bets[BankrollIndex] = 1;
  EXPECT_TRUE(Run(OpenGame, "game.crp"));
  EXPECT_EQ(Bankroll(), 500);
}

TEST_F(FileCommands, DeleteKeyAsksAndSparesWhatIsInUse) {
  const std::map<std::string, std::string GameState::*> files = {
      {"Roll", &GameState::DiceRollFile},
      {"Auto-Bet", &GameState::AutoBetFile},
      {"Probability", &GameState::PrbFileName},
      {"Games", &GameState::GamesLogFile},
      {"Events", &GameState::EventsLogFile}};
  for (const auto& [kind, field] : files) {
    const std::string path = folder.Write("My " + kind, "x");
    Game.*field = folder / ("mY " + kind);
    EXPECT_EQ(KindInUse(path), kind);
    EXPECT_FALSE(DeleteFileByKey(path));
    EXPECT_NE(TakeOnlyMessage().Text.find(kind), std::string::npos);
    EXPECT_EQ(folder.Read("My " + kind), "x");
  }
  const std::string path = folder.Write("other.bet", "x");
  EXPECT_EQ(KindInUse(path), "");
  for (const int button : {2, 1}) {
    Press(button);
    EXPECT_EQ(DeleteFileByKey(path), button == 1);
    const ShownMessage message = TakeOnlyMessage();
    EXPECT_EQ(message.Text, "Are you sure you want to delete:\n\nother.bet");
    EXPECT_EQ(message.Title, "Delete File");
    EXPECT_EQ(folder.Count(), button == 1 ? 5U : 6U);
  }
  Press(1);
  EXPECT_FALSE(DeleteFileByKey(path));  // gone meanwhile
}

}  // namespace
