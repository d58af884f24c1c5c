// What the file screen does, command by command.
#include "persistence/file_commands.h"

#include "autobet/language.h"
#include "autobet/script.h"
#include "core/record_file.h"
#include "dice/tape_file.h"
#include "support/table_fixture.h"

namespace {

using enum FileCommand;

class FileCommands : public FolderTest {
 protected:
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

  bool Run(FileCommand what, const std::string& at) { return RunFileCommand(what, folder_ / at); }
};

TEST_F(FileCommands, NamesAreCompletedByThePattern) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      // clang-format off
      {"  my game ", "*.crp", "my game.crp"}, {"x.txt", "*.bet", "x.txt.bet"},
      {"x.", "*.bet", "x.bet"}, {"x.BET", "*.bet", "x.BET"}, {"bet", "*.bet", "bet.bet"},
      {"Größe.ñ", "*.txt", "Größe.ñ.txt"}, {"notes", "*.*", "notes"}, {"notes.", "*.*", "notes."},
      {".bet", "*.bet", ".bet"}};
  // clang-format on
  for (const auto& [typed, pattern, name] : cases)
    for (const std::string at : {"/a b", "/a b/"})
      EXPECT_EQ(CompletePath(typed, at, pattern), "/a b/" + std::string(name)) << typed;
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
      {SaveProbabilityAs, "Save Probability File As"}};
  const std::map<FileCommand, std::string> contents = {{CopyDiceRollsToText, "(2-2)\r\n(3-3)\r\n"},
                                                       {CopyToDiceRolls, "\x48\x6c"},
                                                       {CopyScriptToText,
                                                        "' Gr\xf6\xdf"
                                                        "e 2\r\n"}};
  PutScript(3);
  folder_.Write("tape.rol", "\x24\x48\x6c");
  folder_.Write("Events Log.txt", "a line\r\n");
  folder_.Write("default.glg", std::string(256, 'g'));
  Game.DiceRollFile = folder_ / "tape.rol";
  Game.DiceFilePos = 3;
  Game.DiceFileEnd = 2;
  EXPECT_FALSE(Run(CopyDiceRollsToText, "none.x"));
  EXPECT_TRUE(TakeOnlyMessage().Text.starts_with("You must check at least one of the following"));
  Game.ShowDieNumbers = true;
  for (const auto& [command, title] : titles) {
    const char* question = command == CopyToDiceRolls ? "Do you want to copy over it?"
                                                      : "Do you want to overwrite it?";
    folder_.Write("Ziel ñ.x", "old");
    for (const int button : {2, 1}) {
      Press(button);
      EXPECT_EQ(Run(command, "Ziel ñ.x"), button == 1) << title;
      const ShownMessage message = TakeOnlyMessage();
      EXPECT_EQ(message.Text, "Ziel ñ.x\n\nis already on file.\n" + std::string(question));
      EXPECT_EQ(message.Title, title);
      EXPECT_EQ(folder_.Read("Ziel ñ.x") == "old", button == 2) << title;
    }
    if (command == SaveEventsLogAs) folder_.Write("Ziel ñ.x", "a line\r\n");  // the log itself now
    folder_.Write("empty.x", "");
    EXPECT_TRUE(Run(command, "empty.x")) << title;
    EXPECT_TRUE(TakeShown().empty()) << title;
    const auto made = contents.find(command);
    EXPECT_TRUE(made == contents.end() || folder_.Read("empty.x") == made->second) << title;
  }
  EXPECT_EQ(Game.GamesLogFile, folder_ / "empty.x");
  EXPECT_EQ(Game.EventsLogFile, folder_ / "empty.x");
}

TEST_F(FileCommands, WhatCannotBeDoneIsToldAndChangesNothing) {
  PutScript(3);
  folder_.Write("rubbish.x", std::string(700, 'x'));
  fs::create_directory(folder_ / "folder.x");
  const GameState before = Game;
  const auto untouched = [&] {
    return Game.GameFileName == before.GameFileName && Game.AutoBetFile == before.AutoBetFile &&
           Game.PrbFileName == before.PrbFileName && Game.DiceRollFile == before.DiceRollFile &&
           Game.GamesLogFile == before.GamesLogFile && Game.Script == before.Script &&
           Game.EventsLogFile == before.EventsLogFile && Game.ProbMatrix == before.ProbMatrix &&
           Game.Bets == before.Bets && !Game.ScriptCopyMode;
  };
  const std::pair<const char*, std::vector<FileCommand>> cases[] = {
      {"missing.x",
       {OpenGame, PasteDiceRolls, OpenScript, PasteDiceRollsFromText, PasteScript,
        SelectHotKeyScript, OpenGamesLog, OpenEventsLog, OpenProbability, SelectGamesLogToMerge,
        SelectGamesLogToCompare}},
      {"rubbish.x", {OpenGame, OpenScript, PasteScript, OpenGamesLog, OpenProbability}},
      {"gone/x.crp",
       {SaveGameAs, SaveScriptAs, CopyToScript, CopyScriptToText, OpenDiceRolls, SaveProbabilityAs,
        OpenGame}},
      {"folder.x",
       {OpenProbability, SaveGameAs, SaveScriptAs, OpenDiceRolls, CopyScriptToText, OpenEventsLog,
        OpenGamesLog}},
      {"x.glg", {SaveGamesLogAs, SaveEventsLogAs, CopyToDiceRolls, CopyDiceRollsToText}}};
  // In which a name that begins so fails.
  // clang-format off
  const std::pair<const char*, const char*> reasons[] = {
      {"missing", ": there's no such file."}, {"gone/", ": there's no such folder."},
      {"folder", ": it's a folder."}};
  // clang-format on
  const auto fails = [&](FileCommand command, const char* name) {
    SCOPED_TRACE(std::string(RowOf(command).Title) + " " + name);
    EXPECT_FALSE(Run(command, name));
    const std::string text = TakeOnlyMessage().Text;
    EXPECT_TRUE(text.starts_with(BareName(name))) << text;
    for (const auto& [begins, reason] : reasons) {
      if (!std::string(name).starts_with(begins)) continue;
      EXPECT_TRUE(text.find("can't be ") < text.find(reason)) << text;
      const std::string at = TextOfPath(PathOf(folder_ / name).parent_path());
      EXPECT_TRUE(text.ends_with("\n\nFolder:  " + at)) << text;
    }
    EXPECT_TRUE(untouched());
  };
  for (const auto& [name, commands] : cases)
    for (const FileCommand command : commands) fails(command, name);
  for (ScriptLine& line : Game.Script) line.LineSelected = false;
  EXPECT_FALSE(Run(CopyToScript, "x.bet") || Run(CopyScriptToText, "x.txt"));
  EXPECT_EQ(folder_.Count(), 2U);
}

TEST_F(FileCommands, CompanionsAreOpenedAndNamed) {
  PutScript(4);
  EXPECT_TRUE(Run(CopyToScript, "half.bet") && Game.AutoBetFile.empty());
  EXPECT_TRUE(Run(SaveScriptAs, "whole.bet") && Run(PasteScript, "half.bet"));
  EXPECT_EQ(std::tuple(Game.ScrCount, Game.AutoBetFile), std::tuple(6, folder_ / "whole.bet"));
  EXPECT_TRUE(Run(OpenScript, "whole.bet") && Game.ScrCount == 4);
  EXPECT_TRUE(Run(OpenDiceRolls, "new.rol") && DiceRollCount() == 0);
  folder_.Write("throws.txt", "1 2, (3-4) 5");
  EXPECT_TRUE(Run(PasteDiceRollsFromText, "throws.txt") && DiceRollCount() == 2);
  EXPECT_TRUE(Run(SaveProbabilityAs, "dice.prb"));
  Game.ProbMatrix[1][2][1] += 1;
  EXPECT_TRUE(Run(OpenProbability, "dice.prb") && Game.PrbFileName == folder_ / "dice.prb");
  EXPECT_EQ(Game.ProbMatrix[1][2][1], 2778);
  EXPECT_TRUE(Run(SelectWave, "any.wav") && Game.SelectedFileName == folder_ / "any.wav");
  EXPECT_TRUE(Run(SelectHotKeyScript, "half.bet") && Game.SelectedFileName == folder_ / "half.bet");
  folder_.Write("old.txt", "one\r\ntwo\r\n");
  Game.LogTopLine = 9;
  EXPECT_TRUE(Run(OpenEventsLog, "old.txt") && Game.LogTopLine == 1);
  Press(1);
  EXPECT_TRUE(Run(SaveEventsLogAs, "old.txt"));  // onto itself
  EXPECT_EQ(folder_.Read("old.txt"), "one\r\ntwo\r\n");
  EXPECT_TRUE(Run(SaveGameAs, "game.crp") && OpenFileOf(OpenGame) == folder_ / "game.crp");
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
    const std::string path = folder_.Write("My " + kind, "x");
    Game.*field = folder_ / ("mY " + kind);
    EXPECT_EQ(KindInUse(path), kind);
    EXPECT_FALSE(DeleteFileByKey(path));
    EXPECT_NE(TakeOnlyMessage().Text.find(kind), std::string::npos);
    EXPECT_EQ(folder_.Read("My " + kind), "x");
  }
  const std::string path = folder_.Write("other.bet", "x");
  EXPECT_EQ(KindInUse(path), "");
  for (const int button : {2, 1}) {
    Press(button);
    EXPECT_EQ(DeleteFileByKey(path), button == 1);
    const ShownMessage message = TakeOnlyMessage();
    EXPECT_EQ(message.Text, "Are you sure you want to delete:\n\nother.bet");
    EXPECT_EQ(message.Title, "Delete File");
    EXPECT_EQ(folder_.Count(), button == 1 ? 5U : 6U);
  }
  Press(1);
  EXPECT_FALSE(DeleteFileByKey(path));  // gone meanwhile
}

}  // namespace
