// How the engine walks a script: blocks, jumps, yields, tracing, the initializing cycle.

#include "autobet/engine.h"
#include "autobet/script_reader.h"
#include "support/table_fixture.h"

namespace {

constexpr int kTaken = ChipStackBase + 1, kElse = ChipStackBase + 2;  // what the scripts count in

class Engine : public TableTest {
 protected:
  Engine() {
    ClearScript();
    // A game under way in which a roll has just taken place.
    Game.RollCount[0] = 5;
    Game.RollsSince[0] = 4;
    Game.AutoBetActive = 1;
    TheHost.ShowStep = [this](int line, const std::string& text, const std::string& status) {
      EXPECT_EQ(text, line == 0 ? "" : Line(line).LineText);
      Steps.push_back(std::to_string(line) + ": " + status);
    };
  }

  static void Run(const std::string& script) {
    LoadScript(script);
    RunAutoBets();
  }

  /// The steps that were traced: lines, 0 for the end of a block, and what is told of them.
  void ExpectSteps(const std::vector<std::pair<int, std::string_view>>& steps) const {
    std::vector<std::string> expected;
    for (const auto& [line, told] : steps)
      expected.push_back(std::to_string(line) + ": " + std::string(told));
    EXPECT_EQ(Steps, expected);
  }

  static int Count(int id) { return static_cast<int>(Game.Bets[id].ToDouble()); }

  std::vector<std::string> Steps;
};

/// A statement in short: the start lines as they are, and N for a condition that is true and new, O
/// for one that is true and old, F for one that is false.
std::string Spelled(const std::string& statement) {
  std::istringstream words(statement);
  std::string script, start;
  for (std::string word; words >> word;) {
    if (word != "N" && word != "O" && word != "F") {
      start += (start.empty() ? "" : " ") + word;
      continue;
    }
    if (!start.empty()) script += start + " . . .\n";
    start.clear();
    script += word == "N"   ? "On each roll\n"
              : word == "O" ? "Chip-Stack # 50 is equal to $ 0\n"
                            : "Chip-Stack # 50 is equal to $ 1\n";
  }
  return script + "then . . .\nAdd $ 1 to Chip-Stack # 1\nelse . . .\nAdd $ 1 to Chip-Stack # 2\n";
}

TEST_F(Engine, CombinesBlocks) {
  // What holds, and what doesn't. "and": both blocks hold, and each "when" has news of its own; a
  // block may end early. "or": a true block settles the statement. "xor" is one of the two, in
  // chains through the result before; a right side that holds but isn't new counts as false.
  const char* const holding =
      "When N|When O N|When N O|While O|When N and when N|When N O and when N|When N and while O|"
      "While O and when N|When F or when N|When N or when F|When O or while O|"
      "When F or when F or while O|While O and while F or while O|While O xor while F|"
      "While F xor while O|While O xor when O|While F xor when N|When O xor while O|"
      "While O xor while O xor while O|While F xor while F xor while O|"
      "While O xor while F xor while O|While F xor while O and while O|"
      "While O xor while O and while F|While O xor when O and while O|"
      "While F xor while F or while O";
  const char* const failing =
      "When O|When N F|When F N|While O F|When N and when O|When O and when N|When O and while O|"
      "While F and while O|While O and while F|While F or when O|While O xor while O|"
      "While F xor while F|While F xor when O|While O xor when N|While O xor while O xor while F|"
      "While F xor while O and while F|While O xor when N O and while F|"
      "While F xor when O and while O";
  std::vector<std::pair<std::string, bool>> statements;
  for (const bool holds : {true, false}) {
    std::istringstream all(holds ? holding : failing);
    for (std::string each; std::getline(all, each, '|');) statements.emplace_back(each, holds);
  }
  for (const auto& [statement, holds] : statements) {
    SCOPED_TRACE(statement);
    Game.Bets[kTaken] = Game.Bets[kElse] = 0;
    Run(Spelled(statement));
    EXPECT_EQ(std::pair(Count(kTaken), Count(kElse)), std::pair(holds ? 1 : 0, holds ? 0 : 1));
    // A second statement stands for itself.
    Run(Spelled(statement) + Spelled("While F"));
    EXPECT_EQ(Count(kElse), holds ? 1 : 3);
  }
}

TEST_F(Engine, JumpsAndReturns) {
  // A subroutine below: back to the line after the "Gosub", whatever the block was.
  Run("' The main part\n"
      "While . . .\nChip-Stack # 50 is equal to $ 0\nthen . . .\nGosub \"Count\"\n"
      "Add $ 10 to Chip-Stack # 1\nGosub \" COUNT \"\nGo to \"End\"\n"
      "Label \"Count\"\nDo this . . .\nAdd $ 1 to Chip-Stack # 1\n"
      "While . . .\nChip-Stack # 50 is equal to $ 1\nthen . . .\n"
      "Add $ 100 to Chip-Stack # 1\nelse . . .\nReturn\n"
      "Label \"End\"\nelse . . .\nAdd $ 1 to Chip-Stack # 2\n");
  EXPECT_EQ(Count(kTaken), 12);
  EXPECT_EQ(Count(kElse), 0);  // "Return" made the conditions true

  // Without a "Gosub" in this run a "Return" does nothing, and a label is passed.
  Run("Label \"Here\"\nDo this . . .\nReturn\nAdd $ 1 to Chip-Stack # 2\n");
  EXPECT_EQ(Count(kElse), 1);

  // The first of two equal labels wins, and a jump into an "else" runs its lines.
  Run("While . . .\nChip-Stack # 50 is equal to $ 0\nthen . . .\nGo to \"x\"\nAdd $ 50 to "
      "Chip-Stack # 2\nelse . . .\nLabel \"X\"\nAdd $ 1 to Chip-Stack # 2\nLabel \"x\"\n");
  EXPECT_EQ(Count(kElse), 2);

  // A label that isn't there ends the run.
  Run("Do this . . .\nGo to \"nowhere\"\nAdd $ 1 to Chip-Stack # 2\n");
  EXPECT_EQ(Count(kElse), 2);

  // Subroutines within subroutines.
  Run("Do this . . .\nGosub \"a\"\nAdd $ 1 to Chip-Stack # 3\nGo to \"end\"\nLabel \"a\"\n"
      "Gosub \"b\"\nMultiply by 10 on Chip-Stack # 3\nReturn\nLabel \"b\"\nAdd $ 4 to Chip-Stack # "
      "3\nReturn\nLabel \"end\"\n");
  EXPECT_EQ(Count(ChipStackBase + 3), 41);

  // A jump that names no label goes on.
  for (const std::string jump : {"Go to", "Gosub"}) {
    Game.Bets[101] = 0;
    Run("Do this . . .\n" + jump + " \"\"\nAdd $ 1 to Chip-Stack # 1\n");
    EXPECT_EQ(Game.Bets[101], Currency(1)) << jump;
  }
}

TEST_F(Engine, StopsAScriptThatNeverEnds) {
  const std::string endless = "Label \"x\"\nDo this . . .\nAdd $ 1 to Chip-Stack # 1\nGo to \"x\"";
  int turns = 0;
  TheHost.Yield = [&turns] {
    EXPECT_TRUE(Game.AutoBetRunning && Game.RollInProgress);
    if (++turns == 3) Game.AutoBetRunning = false;
  };
  Run(endless);
  EXPECT_EQ(turns, 3);
  // Four lines a round: three that are played, and the label that the jump passes again.
  EXPECT_EQ(Count(kTaken), 3 * kLinesPerYield / 4);
  EXPECT_FALSE(Game.AutoBetRunning || Game.RollInProgress);

  // A "Gosub" that never returns runs out of room, and is reported.
  TheHost.Yield = [] {};
  LoadScript("Label \"again\"\nDo this . . .\nGosub \"again\"\n");
  Roll(1, 2);
  EXPECT_EQ(Game.LastErrorText, "Out of memory, Error #7 occurred, at: Run Auto-Bet\n");
  EXPECT_FALSE(Game.AutoBetRunning);
  EXPECT_EQ(Game.RollsSince[0], Game.RollCount[0]);
}

TEST_F(Engine, GivesATurnEvery500Lines) {
  int turns = 0;
  TheHost.Yield = [&turns] {
    ++turns;
    Game.MsgAnswer = AnswerNo;  // of a question that isn't the script's
  };
  std::string script = "Do this . . .\n";
  for (int line = 2; line < kLinesPerYield; ++line) script += "' remark\n";
  Run(script);
  EXPECT_EQ(turns, 0);
  Run(script + "' the last\n");
  EXPECT_EQ(std::pair(turns, Game.MsgAnswer), std::pair(1, +AnswerOk));
}

TEST_F(Engine, TracesEveryStep) {
  Game.ShowStepsMode = kTrue;
  Run("When . . .\nOn each roll\nand while . . .\nChip-Stack # 50 is equal to $ 0\n"
      "xor when . . .\nChip-Stack # 50 is equal to $ 0\nxor while . . .\n"
      "Chip-Stack # 50 is equal to $ 1\nor when . . .\nChip-Stack # 50 is equal to $ 1\n"
      "and when . . .\nOn each roll\nthen . . .\nAdd $ 1 to Chip-Stack # 1\nelse . . .\n"
      "Gosub \"sub\"\nDo this . . .\nGo to \"end\"\nLabel \"sub\"\n"
      "Do this . . .\nReturn\nLabel \"end\"\n"
      "Do this . . .\nReturn\n");
  // The "xor when" isn't new, so that the block before it settles the statement: the lines up to
  // "then" are passed over unseen. The last "and when" still ends that block.
  using namespace status;
  // clang-format off
  ExpectSteps({{1, kWhenBlock}, {2, kConditionNew}, {3, kWhileBlock}, {4, kConditionOld},
               {0, kBlockTrue}, {5, kXorWhenBlock}, {6, kConditionOld}, {0, kBlockFalse},
               {13, kThenTaken}, {14, kActionTaken}, {15, kElseSkipped}, {17, kDirectBlock},
               {18, kActionTaken}, {22, kLabelReached}, {23, kDirectBlock}, {24, kReturnIgnored}});
  // clang-format on
}

TEST_F(Engine, TracesBlocksThatFail) {
  Game.ShowStepsMode = kTrue;
  Run(Spelled("When O and while O or while F and when N xor while F xor while O xor while O"));
  using namespace status;
  const std::string xorFalse = std::string(kBlockFalse) + std::string(kXorBothFalse);
  // The third "xor" finds the statement settled.
  // clang-format off
  ExpectSteps({{1, kWhenBlock}, {2, kConditionOld}, {0, kNoneNew}, {3, kSkippedBlock},
               {0, kBlockFalse}, {5, kWhileBlock}, {6, kConditionFalse}, {7, kSkippedBlock},
               {0, kBlockFalse}, {9, kXorWhileBlock}, {10, kConditionFalse}, {0, xorFalse},
               {11, kXorWhileBlock}, {12, kConditionOld}, {0, kBlockTrue}, {15, kThenTaken},
               {16, kActionTaken}, {17, kElseSkipped}});
  // clang-format on
}

TEST_F(Engine, TracesFromTheLineAfterItIsInvoked) {
  const std::string script =
      "Do this . . .\nGosub \"a\"\nInvoke \"Show Steps\"\nGosub \"a\"\n"
      "Go to \"b\"\nLabel \"a\"\nReturn\nLabel \"b\"\n";
  Run(script);
  ASSERT_EQ(Steps.size(), 6U);
  EXPECT_EQ(Steps[0], "4: Action taken.");
  EXPECT_EQ(Steps[3].substr(0, 3), "4: ");  // back from the subroutine
  EXPECT_EQ(Steps[5].substr(0, 3), "8: ");
  Steps.clear();
  Game.HyperDriveOn = true;
  Run(script);
  EXPECT_TRUE(Steps.empty());
}

TEST_F(Engine, TellsItsStatusForLongEnoughToBeRead) {
  std::vector<std::string> seen;
  TheHost.RedrawBets = [&seen] { seen.push_back(Game.AutoBetStatus); };
  const std::uint32_t start = TheHost.Milliseconds();
  Run("Do this . . .\nAdd $ 1 to Chip-Stack # 1\n");
  EXPECT_EQ(seen, (std::vector<std::string>{"Auto-Betting", ""}));
  EXPECT_EQ(TheHost.Milliseconds() - start, 300U);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  // A sound needs no further pause; under Hyper-Drive there is neither status nor pause.
  Run("Do this . . .\nPlay sound: \"bell.wav\"\n");
  Game.HyperDriveOn = true;
  Run("Do this . . .\nAdd $ 1 to Chip-Stack # 1\n");
  EXPECT_EQ(TheHost.Milliseconds() - start, 300U);
  EXPECT_EQ(seen.size(), 4U);
}

TEST_F(Engine, OffersTheInitializingCycle) {
  const std::string script =
      "When . . .\nInitializing Auto-Bet\nthen . . .\nBet $ 10 on Pass Line\n"
      "Set flag \"begun\" to True\nWhen . . .\nFlag \"begun\" is True\nthen . . .\n"
      "Add $ 1 to Chip-Stack # 1\nWhen . . .\nOn each roll\nthen . . .\n"
      "Add $ 1 to Chip-Stack # 2\n";
  Game.RollsSince[0] = Game.RollCount[0];  // no roll since the script last ran
  LoadScript(script);
  Game.ScriptChanged = true;
  Answers = {kYes};
  Roll(1, 2);
  EXPECT_TRUE(TakeOnlyMessage().Text.ends_with("initialize your Auto-Bets?"));
  EXPECT_FALSE(Game.ScriptChanged);
  ExpectBets({{PassLine, 0}, {BankrollIndex, 490}});  // laid before the throw, lost to the 3
  EXPECT_EQ(std::pair(Count(kTaken), Count(kElse)), std::pair(1, 1));  // new within the cycle only
  EXPECT_EQ(Game.Flags[0].FlagPrev, kTrue);

  // Nothing is asked while Auto-Bet is off or the script is empty.
  Game.AutoBetActive = 0;
  Game.ScriptChanged = true;
  Roll(1, 2);
  ClearScript();
  Game.AutoBetActive = 1;
  Game.ScriptChanged = true;
  Roll(1, 2);
  EXPECT_TRUE(TakeShown().empty() && !Game.ScriptChanged);
}

TEST_F(Engine, ReportsAFaultAndFinishesTheRoll) {
  LoadScript(
      "Do this . . .\nAdd $ 1 to Chip-Stack # 1\nOutput to file. New line.\n"
      "Add $ 1 to Chip-Stack # 1\n");
  Roll(1, 2);
  EXPECT_EQ(Game.LastErrorText, "Bad file name or number, Error #52 occurred, at: Run Auto-Bet\n");
  EXPECT_EQ(Count(kTaken), 1);
  EXPECT_FALSE(Game.AutoBetRunning || Game.RollInProgress);
  EXPECT_EQ(Game.RollsSince[0], Game.RollCount[0]);
  EXPECT_EQ(Game.BetsAfterRoll[kTaken], 1);
}

}  // namespace
