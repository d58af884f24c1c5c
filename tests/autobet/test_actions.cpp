// What action lines do.
#include "autobet/actions.h"

#include <climits>

#include "autobet/output_file.h"
#include "autobet/script_reader.h"
#include "autobet/values.h"
#include "bets/bankroll.h"
#include "bets/ledger.h"
#include "dice/probability_file.h"

// After the operators that print money.
#include "support/file_size_limit.h"
#include "support/table_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSource = 7;  // the Chip-Stack that lines take their values from
constexpr int kSourceId = ChipStackBase + kSource;

PlannedAnswer Press(int button, const char* input = "") { return {button, false, "", input}; }

Currency Cents(int count) { return Currency::FromRaw(count * 100); }

/// An action line that no list need offer; its value comes from the source stack.
ScriptLine Act(int code, Currency amount, int target, int stack = 0, const char* name = "") {
  return {"", ActionLine, code, name, amount, ChipStackSubject, kSource, 0, target, stack};
}

/// The numbers of a text in rows of `N`.
template <std::size_t N>
std::vector<std::array<int, N>> Rows(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::array<int, N>> rows;
  for (std::array<int, N> row; true; rows.push_back(row))
    for (int& number : row)
      if (!(in >> number)) return rows;
}

/// The numbers from 0 to `last` for which something holds, as "2-4,7"; "none" without any.
template <typename Test>
std::string Ranges(int last, Test holds) {
  std::string text;
  for (int i = 0; i <= last; ++i) {
    if (!holds(static_cast<unsigned>(i))) continue;
    const int first = i;
    while (i < last && holds(static_cast<unsigned>(i + 1))) ++i;
    if (!text.empty()) text += ",";
    text += std::to_string(first);
    if (i > first) text += "-" + std::to_string(i);
  }
  return text.empty() ? "none" : text;
}

class ActionsTest : public FolderTest {
 protected:
  ActionsTest() {
    Game.AutoAdjust = AdjustManual;
    Game.Notify = NoticeAutoBet;
    Game.Bets[kSourceId] = 8;
    Game.BetsAtRoll[kSourceId] = 12;
  }

  static void PerformLine(int number, ActionRun& run) {
    Game.ScrLine = number;
    PerformAction(number, PlanAction(number), run);
  }

  /// Performs the lines in memory one after the other, as one run; the number of the fault that
  /// ends it, or 0. The source stack takes a value before each line, as far as there are any.
  static int Play(const std::vector<Currency>& values = {}) {
    ActionRun run;
    int fault = 0;
    try {
      for (unsigned i = 0; i < static_cast<unsigned>(Game.ScrCount); ++i) {
        if (i < values.size()) Game.Bets[kSourceId] = values[i];
        PerformLine(static_cast<int>(i) + 1, run);
      }
    } catch (const RunTimeFault& raised) {
      fault = raised.Number;
    }
    EXPECT_EQ(FirstInconsistency(), "");
    return fault;
  }
  static void Load(const std::vector<ScriptLine>& lines) { LoadLines(lines); }
  static int Do(const std::vector<ScriptLine>& lines) { return Load(lines), Play(); }
  static int Do(const std::string& script) { return LoadScript(script), Play(); }

  /// Each row is a script, its lines parted by "|", then "=>", a source and its value afterwards.
  static void Check(const std::string& rows) {
    std::istringstream in(rows);
    for (std::string row; std::getline(in, row);) {
      const std::size_t arrow = row.find("=>");
      ASSERT_NE(arrow, std::string::npos) << row;
      std::string script = row.substr(0, arrow);
      std::replace(script.begin(), script.end(), '|', '\n');
      Do(script);
      const std::size_t at = row.rfind(' ');
      const auto of = ReadLine("Show message: Value of" + row.substr(arrow + 2, at - arrow - 2));
      EXPECT_EQ(ValueOf(of.OfSubject, of.OfStackNum), ParseAmount(row.substr(at))) << row;
    }
  }
};

TEST_F(ActionsTest, EveryFormChangesABet) {
  for (const auto& [code, amount, leaves] :
       Rows<3>("10 15 15  11 50 4  12 50 6  13 0 8  14 0 12  15 0 8  16 0 12  17 0 8  18 0 12 "
               "20 15 35  21 50 24  22 50 26  23 0 28  24 0 32  25 0 28  26 0 32  27 0 28  28 0 32 "
               "30 15 5  31 50 16  32 50 14  33 0 12  34 0 8  35 0 12  36 0 8  37 0 12  38 0 8 "
               "40 3 60  41 50 80  42 50 120  43 0 160  44 0 240  45 0 160  46 0 240  47 0 160 "
               "48 0 240  50 4 5  51 50 5  52 50 3  53 0 2  54 0 1  55 0 2  56 0 1  57 0 2  58 0 1 "
               "10 0 0  50 0 20  51 0 20  51 -50 16  40 0 0  40 -1 0  19 5 20  29 5 20  59 5 20 "
               "60 5 20  0 5 20  9999 5 20")) {
    Given(Field, 20);
    Do({Act(code, amount, Field)});
    EXPECT_EQ(Bet(Field), Currency(leaves)) << code << " " << amount;
  }
}

TEST_F(ActionsTest, RunsHaveAHighestALowestAndAnAverage) {
  // The action, the bet, three values, and the bet afterwards; in dimes.
  for (const auto& [code, base, one, two, three, leaves] : Rows<6>(
           "13 50 100 300 200 300  13 50 0 -30 0 50  15 50 200 100 300 100  15 50 0 -30 0 50 "
           "17 50 100 200 0 150  17 50 100 0 200 150  17 50 100 200 -90 150  17 50 100 150 0 120 "
           "17 50 25 0 0 20  17 50 35 0 0 40  23 50 100 300 200 350  25 50 200 100 300 150 "
           "27 50 100 200 0 200  33 500 100 300 200 200  35 500 200 100 300 400 "
           "37 500 100 200 0 350  43 50 20 40 30 200  45 50 40 20 30 100  47 50 20 50 0 150 "
           "53 500 20 50 0 100  55 500 50 30 40 160  57 500 20 40 0 160  53 500 4 0 0 500")) {
    Given(Field, base / 10);
    Load(std::vector<ScriptLine>(3, Act(code, 0, Field)));
    Play({Cents(10 * one), Cents(10 * two), Cents(10 * three)});
    EXPECT_EQ(Bet(Field), Currency(leaves / 10)) << code << " " << one << " " << two;
  }
}

TEST_F(ActionsTest, ARunEndsWithAnotherActionOrTarget) {
  Given(Hard6, 3);
  Given(Hard8, 4);
  const std::string first = "Bet the highest of: Hard 8 on Field|";
  const std::string last = "|Bet the highest of: Hard 6 on Field => Field ";
  for (const char* between : {"' a remark", "Stop Auto-Rolling / Hyper-Drive",
                              "Bet the highest of: Chip-Stack # 1 on Big 6"})
    Check(first + between + last + "3");
  Check(first + last + "4\n" +
        // A second run begins with the bet as it stands then.
        "Add the average of: Hard 8 to Field|' a remark|Add the average of: Hard 8 to Field "
        "=> Field 12\n"
        // Required: of several bets only the first is set to a highest; all get an average.
        "Bet the highest of: Hard 8 on all Chip-Stacks => Chip-Stack # 0 4\n"
        "Add the average of: Hard 6 to all Chip-Stacks|Add the average of: Hard 6 to all "
        "Chip-Stacks => Chip-Stack # 0 7\n"
        "' the last of them => Chip-Stack # 100 3");
}

TEST_F(ActionsTest, RoundingGoesToWholeUnits) {
  // The way, the amount, the unit, and the amount afterwards; in dimes. Required: with a unit below
  // 0 up is down.
  for (const auto& [way, amount, unit, leaves] :
       Rows<4>("1101 170 50 150    1101 175 50 200    1101 180 50 200    1102 190 50 150 "
               "1103 160 50 200    0 160 50 200       1103 200 50 200    1101 170 0 170 "
               "1102 -170 50 -200  1103 -170 50 -150  1101 -175 50 -150  1101 170 -50 150 "
               "1101 175 -50 150   1102 170 -50 200   1103 170 -50 150   1103 -170 -50 -200")) {
    Game.Bets[kSourceId] = Cents(10 * amount);
    ScriptLine line = Act(RoundBet, Cents(10 * unit), ChipStackSubject, kSource);
    line.OfSubject = way;
    Do({line});
    EXPECT_EQ(Game.Bets[kSourceId], Cents(10 * leaves)) << way << " " << amount << " " << unit;
  }
}

/// Rows of a target, the value of stack 7, the number of the target's stack, and the ids that are
/// covered: those whose streak is reset, or the stacks that a bet of 3 is on.
void ExpectCovered(const std::string& rows) {
  std::istringstream in(rows);
  int target = 0, value = 0, stack = 0;
  for (std::string ids; in >> target >> value >> stack >> ids;) {
    for (auto& outcome : Game.BetOutcome) outcome = {1, 1};
    std::fill(Game.Bets.begin() + ChipStackBase, Game.Bets.end(), Currency(0));
    Game.Bets[kSourceId] = Cents(value);
    const bool stacks = target >= ChipStackSubject && target <= AllChipStacks;
    Game.Script = {Act(stacks ? BetAmount : ResetWinsLosses, 3, target, stack)};
    Game.ScrCount = 1;
    ActionRun run;
    PerformAction(1, PlanAction(1), run);
    const auto covered = [stacks](unsigned id) {
      return stacks ? id >= ChipStackBase && Game.Bets[id] == 3
                    : id <= LastBet && Game.BetOutcome[id] == std::array{0, 0};
    };
    EXPECT_EQ(Ranges(LastSlot, covered), ids) << target << " " << value << " " << stack;
  }
}

TEST_F(ActionsTest, ATargetCoversItsBets) {
  ExpectCovered(
      "1000 0 0 1-83  1001 0 0 1-6  1002 0 0 7-12  1003 0 0 13-18  1004 0 0 19-24  1005 0 0 25-30 "
      "1006 0 0 31-36  1007 0 0 32-35  1008 0 0 31-32,35-36  1009 0 0 37-42  1 0 0 1  83 0 0 83 "
      "1800 0 0 none  1805 0 0 none  84 0 0 none  0 0 0 none  1010 0 0 none  1801 0 0 none "
      "2004 0 0 none  -2147483648 0 0 none  2147483647 0 0 none  1602 800 0 100-200 "
      "1600 800 100 200  1600 800 0 100  1600 800 101 none  1600 800 -2147483648 none "
      "1600 800 2147483647 none  1601 800 101 none  1601 800 -2147483648 none  1601 800 7 108 "
      "1601 4250 7 142  1601 9900 7 199  1601 10000 7 none  1601 -100 7 none  1601 -50 7 none");
  SetPoint(6);
  ExpectCovered("1800 0 0 3  1803 0 0 21  1804 0 0 27  1805 0 0 33  1806 0 0 39");
  // Place bets that the rules would take down are left out.
  Establish(Come4, 10);
  for (const bool remove : {true, false}) {
    Game.AutoRemovePlace = remove;
    ExpectCovered("1006 0 0 31-36");
    Establish(PassLine, 10);
  }
  Game.AutoRemovePlace = true;
  ExpectCovered("1006 0 0 32,34-36  1007 0 0 32,34-35  1008 0 0 32,35-36  33 0 0 33");
}

TEST_F(ActionsTest, BetsObeyTheRulesOfTheTable) {
  Roll(3, 3);
  Establish(Come4, 10);
  Establish(DontPass, 10);
  Game.TotalOnTable = MoneyOnTable();
  ArrangeAllChips();
  Given(DontPassOdds, 12);
  Given(Place5, 10);
  // Contract bets come back as they stood, odds fall with their flat bet, and held vig follows the
  // amount. Required: a part of the bet itself is reckoned when the bet has been emptied.
  Check(R"(Bet $ 0 on Come 4 => Come 4 10
           Bet $ 4 on Come 4 => Come 4 10
           Bet $ 30 on Come 4 => Come 4 10
           Bet $ -5 on Come 4 => Come 4 10
           Bet $ 0 on Don't Pass => Don't Pass 0
           ' and its odds => Don't Pass Odds 0
           Bet $ 100 on Buy 4|Bet $ 100 on Lay 10 => Lay 10 100
           Bet $ 40 on Buy 4|Bet $ 40 on Lay 10 => Lay 10 40
           Bet $ 0 on Lay 10 => Lay 10 0
           Bet 50 % of Place 5 on Place 5 => Place 5 0)");
  // A value that is no money leaves the bet as it was.
  Game.Bets[kSourceId] = Currency::FromRaw(INT64_MAX);
  EXPECT_EQ(Do("Bet 10000 % of Chip-Stack # 7 on Buy 4"), 6);
  EXPECT_EQ(Bet(Buy4), Currency(40));
  // Chips that lie there are no part of what is laid: a chip's worth alone makes a bet of one chip.
  Given(Field, 10);
  Game.ChipColor = 2;
  Check("Bet $ 5 on Field => Field 5");
  // A bet that stays as it is leaves the odds that the player has set.
  Roll(3, 4);
  Given(PassLine, 10);
  Roll(2, 2);
  Game.AutoTakeFullOdds = true;
  Check("Add the highest of: bankroll to Pass Line => Pass Line Odds 0");
}

TEST_F(ActionsTest, BetsAreBoughtAndCalled) {
  Given(Place4, 20);
  Given(Hard6, 5);
  Check("Buy the Place Bet on Place 4|Call OFF Hard 6 => Buy 4 20");
  EXPECT_EQ(Game.BetWorking[Hard6], CalledOff);
  Game.HyperDriveOn = true;
  TheHost.RedrawBets = [] { FAIL() << "drawn under Hyper-Drive"; };
  Do("Call ON Hard 6\n Call ON Hard 6");
  EXPECT_EQ(Game.BetWorking[Hard6], CalledOn);
}

TEST_F(ActionsTest, RollsOfEventsAreForgotten) {
  const auto forgotten = [](int target, const std::string& text) {
    const auto tallies = {&Game.ShooterEvent, &Game.ShooterEventPrev, &Game.ShooterSince,
                          &Game.ShooterSincePrev};
    for (auto* tally : tallies) tally->fill(5);
    ScriptLine line = Act(ResetRolls, 0, target);
    line.LineText = text;
    Load({line});
    ActionRun run;
    PerformLine(1, run);
    return Ranges(kRollEvents - 1, [&](unsigned event) {
      return std::ranges::all_of(tallies, [event](auto* tally) { return (*tally)[event] == 0; });
    });
  };
  EXPECT_EQ(forgotten(AllNumbers, ""), "2-89");
  EXPECT_EQ(forgotten(2017, "Reset rolls of all the numbers"), "2-89");
  EXPECT_EQ(forgotten(2017, "Reset rolls of"), "17");
  EXPECT_EQ(forgotten(2002, "all the numbers"), "2");
  EXPECT_EQ(forgotten(2089, ""), "89");
  for (const int of : {0, 7, 2000, 2090, INT_MIN, INT_MAX}) EXPECT_EQ(forgotten(of, ""), "none");
}

TEST_F(ActionsTest, MessagesInARowMakeOneBox) {
  Answers = {Press(0), Press(2), Press(1), Press(0), Press(1)};
  Do("Show message: \"One \";\nShow message: Value of bankroll\nShow message: \"Two  \"\n"
     "Show message: \"Three\"\nYes/No question: \"Why?\"\n"
     "Yes/No question: Value of Chip-Stack # 7\n"
     "' a remark\nYes/No question: \"More?\"\nShow message: \"End\";\n");
  const int notice = ButtonOk | HideAutoBet;
  EXPECT_THAT(TakeShown(),
              ElementsAre(ShownMessage{"One 500 Two\nThree\n", "Auto-Bet line # 4", 640, notice},
                          ShownMessage{"Why?\n8 ", "Auto-Bet line # 6", 640, YesNo},
                          ShownMessage{"More?\n", "Auto-Bet line # 8", 640, YesNo},
                          ShownMessage{"End", "Auto-Bet line # 9", 640, notice}));
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  LoadScript("Yes/No question: \"First\"\n Yes/No question: \"Last\"");
  ActionRun run;
  PerformLine(1, run);
  Game.MsgText = "of another box meanwhile";
  PerformLine(2, run);
  EXPECT_EQ(TakeOnlyMessage().Text, "First\nLast\n");
  EXPECT_EQ(Game.MsgAnswer, AnswerYes);
}

TEST_F(ActionsTest, MessagesAreSilencedAndBoxesEndARun) {
  for (const auto& [notify, hyper, code, shown] :
       Rows<4>("8 0 79 1  16 0 79 0  8 1 84 0  16 1 84 1  0 0 82 1  0 1 85 1")) {
    Game.Notify = notify;
    Game.HyperDriveOn = Game.KeepRolling = hyper != 0;
    Game.SnapshotsDue = false;
    if (Game.HyperDriveOn) OpenLedger();
    Do({Act(code, 0, 0)});
    EXPECT_EQ(TakeShown().size(), static_cast<unsigned>(shown)) << code;
    EXPECT_EQ(std::pair(Game.KeepRolling, Game.SnapshotsDue), std::pair(hyper > shown, shown != 0));
    if (Game.HyperDriveOn) CloseLedger();
  }
}

TEST_F(ActionsTest, InputIsBetOnEveryTarget) {
  Answers = {Press(0, "25"), Press(0), Press(0, "30"), Press(0, "3")};
  Do("Get input and bet it on Chip-Stack # 11");
  EXPECT_EQ(Game.Bets[111], Currency(25));
  EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{"Please enter a value to bet on:  Chip-Stack # 11",
                                             "Auto-Bet line # 1", 640, InputOk}));
  // Messages before are the prompt, seen or not; one answer serves all bets.
  const std::string script =
      "Show message: \"How\";\n Show message: \" much?\"\n Get input and bet it on all Chip-Stacks";
  Do(script);
  EXPECT_EQ(Game.Bets[100] + Game.Bets[200], Currency(60));
  EXPECT_EQ(TakeShown().back().Text, "How much?\n");
  Game.Notify = 0;
  Game.HyperDriveOn = Game.KeepRolling = true;
  Do(script);
  EXPECT_EQ(TakeOnlyMessage().Text, "How much?\n");
  EXPECT_EQ(Game.Bets[200], Currency(3));
  EXPECT_FALSE(Game.KeepRolling);
  // Nobody can answer, or there is no bet: nothing changes.
  Game.HyperDriveOn = false;
  for (const int target : {0, +PointPlace}) Do({Act(GetInput, 0, target)});
  Game.TableMinimised = Game.AutoBetRunning = true;
  Do(script);
  EXPECT_THAT(TakeShown(), IsEmpty());
  EXPECT_FALSE(Game.AutoBetRunning);
  EXPECT_EQ(Game.Bets[200], Currency(3));
}

TEST_F(ActionsTest, FlagsAndNamesAreSet) {
  Game.Flags = {{"Up", 0, 4}, {"Down", 0, 5}};
  Game.FlagsTouched = false;
  Do({Act(SetFlag, -1, 0, 0, " Down "), Act(SetFlag, -1, 0, 0, "up"),
      Act(SetFlag, 40'000, 0, 0, "Up"), Act(SetAllFlags, -32'769, 0)});
  EXPECT_EQ(Game.Flags, (std::vector<Flag>{{"Up", 0, 4}, {"Down", -1, 5}}));
  EXPECT_TRUE(Game.FlagsTouched);
  Do({Act(SetAllFlags, 32'767, 0)});
  EXPECT_EQ(Game.Flags[0].FlagValue, 32'767);
  Game.Bets[kSourceId] = 42;
  Game.Bets[ChipStackBase + 3] = 100;
  Do("Name Chip-Stack # 99 \"Press  \"\n Name Chip-Stack # 100 \"x\"\n Name Chip-Stack # -1 \"x\"\n"
     "Name Chip-Stack ref # 7 \"Named\"\n Name Chip-Stack ref # 3 \"x\"\n"
     "Name Chip-Stack ref # 4 \"x\"\n Name Chip-Stack ref # 101 \"x\"");
  const auto named = [](unsigned i) { return !Game.ChipStackName[i].empty(); };
  EXPECT_EQ(Ranges(99, named), "42,99");
  EXPECT_EQ(Game.ChipStackName[42] + Game.ChipStackName[99], "NamedPress");
  Do("Clear all Chip-Stack names");
  EXPECT_EQ(Ranges(99, named), "none");
}

TEST_F(ActionsTest, SettingsFollowTheScript) {
  Given(PassLine, 10);
  Roll(2, 2);
  Do("Set Auto-Handle Winning Bets to Parlay\n Set Auto-Handle Losing Bets to Double Bet");
  Do({Act(SetWinningBets, 0, 6), Act(SetLosingBets, 0, -1), Act(InvokeShowSteps, 0, 0)});
  EXPECT_TRUE(Game.HandleWinningBets == WinParlay && Game.HandleLosingBets == LossDoubleBet);
  EXPECT_EQ(Game.ShowStepsMode, -1);
  Check("Set Auto-Take Full Odds to True => Pass Line Odds 20");
  Do("Set Auto-Take Full Odds to False\n Set Auto-Lay Full Odds to True");
  EXPECT_TRUE(!Game.AutoTakeFullOdds && Game.AutoLayFullOdds);
  for (const bool hyper : {false, true}) {
    Game.HyperDriveOn = hyper;
    Game.KeepRolling = true;
    Do("Stop Auto-Rolling / Hyper-Drive");
    EXPECT_FALSE(Game.KeepRolling);
    EXPECT_EQ(Game.StopMessage, hyper ? "Stopped by Auto-Bet command." : "");
  }
  Game.HyperDriveOn = false;
  Do("Play sound: \" horn.wav \"\n Play sound: \"/a/b.wav\"\n Play sound: \"\"");
  Game.AutoBetSounds = true;
  Do("Play sound: \"horn.wav\"");
  EXPECT_THAT(SoundsPlayed, ElementsAre(Game.AppPath + "horn.wav", "/a/b.wav"));
}

TEST_F(ActionsTest, GeneratorsAreChosenAndSeeded) {
  Game.Bets[kSourceId] = 2;
  Game.BetsAtRoll[kSourceId] = 4;
  std::vector<int> seen;
  for (const char* words : {"5", "6", "0", "0.99", "2.99", "as value of the last Chip-Stack # 7"}) {
    Do(std::string("Select RNG # ") + words);
    seen.push_back(Game.RngChoice);
  }
  for (const char* words :
       {"# 4711", "value of Chip-Stack # 7", "value of the last Chip-Stack # 7", "# 0"}) {
    Do(std::string("Seed RNG with ") + words);
    seen.push_back(Game.LastSeed);
  }
  Do("Select RNG # as value of Chip-Stack # 7");
  EXPECT_EQ(Game.RngChoice, 1);
  EXPECT_THAT(seen, ElementsAre(4, 4, 4, 4, 1, 3, 4711, 2, 4, 4));
  // By the clock, without a question; a clock too young to seed leaves the parameter divided.
  Game.UserSeed = true;
  Do("Seed RNG with date/time");
  EXPECT_TRUE(Game.UserSeed && Game.LastSeed != 4);
  Game.RngState = 100;
  TheHost.Milliseconds = [] { return 5U; };
  Do("Select RNG # 3\n Seed RNG with date/time");
  EXPECT_EQ(Game.RngState, 16);
  EXPECT_THAT(TakeShown(), IsEmpty());
}

TEST_F(ActionsTest, TheAtmMovesMoneyAndTheTableIsReset) {
  Check(
      "ATM - withdraw $ 100|ATM - withdraw 50 % of Chip-Stack # 7 => bankroll 604\n"
      "ATM - deposit $ 30|ATM - deposit 25 % of Chip-Stack # 7 => bankroll 572\n"
      "ATM - withdraw $ 0|ATM - deposit $ -5 => bankroll 572\n"
      "ATM - withdraw -5 % of Chip-Stack # 7 => bankroll 572");
  EXPECT_EQ(Game.InvestedBankroll, Currency(572));
  Given(Field, 20);
  Roll(1, 1);
  Check(
      "Reset table (preserve Chip-Stacks)|Add $ 5 to Field => Field 5\n"
      "' as at first => bankroll 500\n' with the stacks => Chip-Stack # 7 8");
  EXPECT_EQ(Game.RollCount[0], 0);
  Check("Reset table => Field 0\n' without them => Chip-Stack # 7 0");
}

TEST_F(ActionsTest, AProbabilityFileIsUsedWhenItCanBeRead) {
  const auto matrix = Game.ProbMatrix;
  Do("Activate Probability File: \"none.prb\"");
  EXPECT_TRUE(!Game.UseSkewedProbability && Game.ProbMatrix == matrix);
  EXPECT_EQ(TakeShown().size(), 1U);
  SaveProbabilityFile(folder_ / "one.prb");
  Do("Activate Probability File: \" one.prb \"");
  EXPECT_TRUE(Game.UseSkewedProbability);
  Do("Deactivate Probability File");
  EXPECT_FALSE(Game.UseSkewedProbability);
}

TEST_F(ActionsTest, OutputGoesToTheFileOrIsAFault) {
  Game.Bets[kSourceId] = Cents(123'450);
  Do("Open/clear file for output: \" out.txt \"\n Output to file. Message: \"Caf\u00e9  \"\n"
     "Output to file. Message: \"to\";\n Output to file. Value of Chip-Stack # 7\n"
     "Output to file. Value of the last Chip-Stack # 7\n Output to file. New line.\n"
     "Output to file. Message: \"\";");
  const std::string path = folder_ / "out.txt";
  EXPECT_EQ(Game.AutoBetOutputFile, path);
  FlushOutputFile();
  EXPECT_EQ(folder_.Read("out.txt"), "Caf\xE9\tto1234.5\t12\t\r\n");
  Do("Open/append file for output: \"" + path +
     "\"\n Output to file. Message: \"more\";\n Close file\n Close file");
  EXPECT_EQ(folder_.Read("out.txt"), "Caf\xE9\tto1234.5\t12\t\r\nmore");
  for (const int code : {OutputMessage, OutputValue, OutputValueOfLast, OutputNewLine})
    EXPECT_EQ(Do({Act(code, 0, 0)}), 52) << "none is open: " << code;
  for (const int code : {OpenOutput, AppendOutput}) {
    EXPECT_EQ(Do({Act(OpenOutput, 0, 0, 0, "out.txt"), Act(code, 0, 0, 0, "no/such/out.txt")}), 76);
    EXPECT_EQ(Game.AutoBetOutputFile, "");
    EXPECT_EQ(Do({Act(code, 0, 0)}), 75);
    EXPECT_EQ(Do("Output to file. New line."), 52);
  }
  EXPECT_EQ(folder_.Read("out.txt"), "");
}

TEST_F(ActionsTest, AFullDiskIsAFault) {
  const std::string open = "Open/clear file for output: \"out.txt\"\n";
  const std::string write = open + " Output to file. Message: \"text\"\n";
  const FileSizeLimit full(1);
  EXPECT_EQ(Do(write), 0);
  EXPECT_THROW(FlushOutputFile(), RunTimeFault);
  EXPECT_EQ(Do("Close file"), 0) << "it has been told";
  EXPECT_EQ(Do(write + "Close file"), 61);
  std::string many;
  for (int i = 0; i < 1'500; ++i)
    many += "Output to file. Message: \"" + std::string(70, 'x') + "\"\n";
  EXPECT_EQ(Do(write + many), 61);
  EXPECT_EQ(Do("Close file"), 0) << "there is nothing left to write";
  EXPECT_EQ(Do({Act(OpenOutput, 0, 0, 0, "/dev/null")}), 75) << "a device is no file";
}

}  // namespace
