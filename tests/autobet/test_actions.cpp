// What action lines do.
#include "autobet/actions.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "autobet/language.h"
#include "autobet/output_file.h"
#include "autobet/script.h"
#include "core/bankroll.h"
#include "core/chips.h"
#include "core/consistency.h"
#include "core/ledger.h"
#include "core/make_bet.h"
#include "core/roll_cycle.h"
#include "dice/generators.h"
#include "dice/probability_file.h"

// After the operators that print money.
#include "support/table_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSource = 7;  // the Chip-Stack that lines take their values from
constexpr int kSourceId = ChipStackBase + kSource;
constexpr int kFold = 9;  // a Chip-Stack that rounding acts on

constexpr int kBetPercent = 11;
constexpr int kBetHighest = 13;
constexpr int kAddAverage = 27;

const PlannedAnswer kOk = {0, false, "", ""};
const PlannedAnswer kYes = {1, false, "", ""};
const PlannedAnswer kNo = {2, false, "", ""};

Currency Cents(int count) { return Currency::FromRaw(count * 100); }

/// An action line; its value comes from the source stack, its target is a bet.
ScriptLine Act(int code, Currency amount = 0, int target = Field) {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = code;
  line.LineAmount = amount;
  line.OfSubject = ChipStackSubject;
  line.OfStackNum = kSource;
  line.ToSubject = target;
  return line;
}

ScriptLine Named(int code, const std::string& name, Currency amount = 0) {
  ScriptLine line = Act(code, amount, 0);
  line.LineName = name;
  return line;
}

ScriptLine From(ScriptLine line, int source, int stack = 0) {
  line.OfSubject = source;
  line.OfStackNum = stack;
  return line;
}

ScriptLine OnStack(ScriptLine line, int stack, int target = ChipStackSubject) {
  line.ToSubject = target;
  line.ToStackNum = stack;
  return line;
}

class ActionsTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.AutoAdjust = AdjustManual;
    Game.Notify = NoticeAutoBet;
    Game.Bets[kSourceId] = 8;
    Game.BetsAtRoll[kSourceId] = 12;
    folder_ = std::filesystem::temp_directory_path() / "kelvanor_actions_test";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    Game.DataPath = Game.AppPath = folder_.string() + "/";
  }
  void TearDown() override {
    CloseOutputFile();
    std::filesystem::remove_all(folder_);
    TableTest::TearDown();
  }

  static void Load(const std::vector<ScriptLine>& lines) {
    Game.Script = lines;
    Game.ScrCount = static_cast<int>(lines.size());
    ScriptEdited();
  }

  static void PerformLine(int number, ActionRun& run) {
    Game.ScrLine = number;
    PerformAction(number, PlanAction(number), run);
  }

  /// Performs lines one after the other, as one run of the script.
  static void Do(const std::vector<ScriptLine>& lines) {
    Load(lines);
    ActionRun run;
    for (int number = 1; number <= Game.ScrCount; ++number) PerformLine(number, run);
    EXPECT_EQ(FirstInconsistency(), "");
  }

  /// Performs lines of one kind with these values in the source stack.
  static void DoWithValues(const ScriptLine& line, const std::vector<Currency>& values) {
    Load(std::vector<ScriptLine>(values.size(), line));
    ActionRun run;
    for (unsigned i = 0; i < values.size(); ++i) {
      Game.Bets[kSourceId] = values[i];
      PerformLine(static_cast<int>(i) + 1, run);
    }
    EXPECT_EQ(FirstInconsistency(), "");
  }

  static int FaultOf(const std::vector<ScriptLine>& lines) {
    try {
      Do(lines);
      return 0;
    } catch (const RunTimeFault& fault) {
      return fault.Number;
    }
  }

  std::string ReadFile(const std::string& name) const {
    std::ifstream in(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::filesystem::path folder_;
};

TEST_F(ActionsTest, EveryFormChangesABet) {
  struct Case {
    int Code;
    Currency Amount;
    int Leaves;
  };
  for (const Case& c :
       {Case{10, 15, 15}, {11, 50, 4},  {12, 50, 6},  {13, 0, 8},   {14, 0, 12},  {15, 0, 8},
        {16, 0, 12},      {17, 0, 8},   {18, 0, 12},  {20, 15, 35}, {21, 50, 24}, {22, 50, 26},
        {23, 0, 28},      {24, 0, 32},  {25, 0, 28},  {26, 0, 32},  {27, 0, 28},  {28, 0, 32},
        {30, 15, 5},      {31, 50, 16}, {32, 50, 14}, {33, 0, 12},  {34, 0, 8},   {35, 0, 12},
        {36, 0, 8},       {37, 0, 12},  {38, 0, 8},   {40, 3, 60},  {41, 50, 80}, {42, 50, 120},
        {43, 0, 160},     {44, 0, 240}, {45, 0, 160}, {46, 0, 240}, {47, 0, 160}, {48, 0, 240},
        {50, 4, 5},       {51, 50, 5},  {52, 50, 3},  {53, 0, 2},   {54, 0, 1},   {55, 0, 2},
        {56, 0, 1},       {57, 0, 2},   {58, 0, 1},   {10, 0, 0},   {50, 0, 20},  {51, 0, 20},
        {51, -50, 16},    {40, 0, 0},   {40, -1, 0},  {19, 5, 20},  {29, 5, 20},  {59, 5, 20},
        {60, 5, 20},      {0, 5, 20},   {9999, 5, 20}}) {
    Given(Field, 20);
    Do({Act(c.Code, c.Amount)});
    EXPECT_EQ(Bet(Field), Currency(c.Leaves)) << c.Code << " " << c.Amount;
  }
}

TEST_F(ActionsTest, RunsHaveAHighestALowestAndAnAverage) {
  struct Case {
    int Code, Base;
    std::vector<Currency> Values;
    int Leaves;
  };
  for (const Case& c :
       {Case{13, 5, {10, 30, 20}, 30}, {13, 5, {0, -3}, 5},        {15, 5, {20, 10, 30}, 10},
        {15, 5, {0, -3}, 5},           {17, 5, {10, 20}, 15},      {17, 5, {10, 0, 20, -9}, 15},
        {17, 5, {10, 15}, 12},         {17, 5, {Cents(250)}, 2},   {17, 5, {Cents(350)}, 4},
        {23, 5, {10, 30, 20}, 35},     {25, 5, {20, 10, 30}, 15},  {27, 5, {10, 20}, 20},
        {33, 50, {10, 30, 20}, 20},    {35, 50, {20, 10, 30}, 40}, {37, 50, {10, 20}, 35},
        {43, 5, {2, 4, 3}, 20},        {45, 5, {4, 2, 3}, 10},     {47, 5, {2, 5}, 15},
        {53, 50, {2, 5}, 10},          {55, 50, {5, 3, 4}, 16},    {57, 50, {2, 4}, 16},
        {53, 50, {Cents(40)}, 50}}) {
    Given(Field, c.Base);
    DoWithValues(Act(c.Code), c.Values);
    EXPECT_EQ(Bet(Field), Currency(c.Leaves)) << c.Code << " " << c.Values.size();
  }
}

TEST_F(ActionsTest, ARunEndsWithAnotherActionOrTarget) {
  const auto highest = [](int value) { return From(Act(kBetHighest), value); };
  ScriptLine remark;
  remark.LineKind = RemarkLine;
  const ScriptLine elsewhere = Act(kBetHighest, 0, Big6);
  Given(Hard6, 3);
  Given(Hard8, 4);
  for (const ScriptLine& between : {remark, elsewhere, Act(StopRolling, 0, Field)}) {
    Do({highest(Hard8), between, highest(Hard6)});
    EXPECT_EQ(Bet(Field), Currency(3));
  }
  Do({highest(Hard8), highest(Hard6)});
  EXPECT_EQ(Bet(Field), Currency(4));
  // A second run begins with the bet as it stands then.
  const ScriptLine add = From(Act(kAddAverage), Hard8);
  Do({add, remark, add});
  EXPECT_EQ(Bet(Field), Currency(12));
  // Required: of several bets only the first is set to a highest; all get an average.
  Do({From(Act(kBetHighest, 0, AllChipStacks), Hard8)});
  EXPECT_EQ(Game.Bets[ChipStackBase], Currency(4));
  EXPECT_EQ(Game.Bets[FirstChipStack], Currency(0));
  Do({From(Act(kAddAverage, 0, AllChipStacks), Hard6),
      From(Act(kAddAverage, 0, AllChipStacks), Hard6)});
  EXPECT_EQ(Game.Bets[ChipStackBase], Currency(7));
  EXPECT_EQ(Game.Bets[LastSlot], Currency(3));
}

TEST_F(ActionsTest, RoundingGoesToWholeUnits) {
  struct Case {
    int Way;
    Currency Amount, Unit, Leaves;
  };
  for (const Case& c : {Case{1101, 17, 5, 15},
                        {1101, Cents(1750), 5, 20},
                        {1101, 18, 5, 20},
                        {1102, 19, 5, 15},
                        {1103, 16, 5, 20},
                        {0, 16, 5, 20},
                        {1103, 20, 5, 20},
                        {1101, 17, 0, 17},
                        {1101, 17, -5, 17},
                        {1102, -17, 5, -20},
                        {1103, -17, 5, -15},
                        {1101, Cents(-1750), 5, -15}}) {
    Game.Bets[ChipStackBase + kFold] = c.Amount;
    Do({OnStack(From(Act(RoundBet, c.Unit), c.Way), kFold)});
    EXPECT_EQ(Game.Bets[ChipStackBase + kFold], c.Leaves) << c.Way << " " << c.Amount;
  }
}

/// The ids that a target covers: those whose streak it resets, or that a bet of 3 comes to.
std::vector<int> Covered(int target, int stack, int code) {
  for (auto& outcome : Game.BetOutcome) outcome = {1, 1};
  for (unsigned id = ChipStackBase; id <= LastSlot; ++id)
    if (id != kSourceId) Game.Bets[id] = 0;
  Game.Script = {OnStack(Act(code, 3), stack, target)};
  Game.ScrCount = 1;
  ActionRun run;
  PerformAction(1, PlanAction(1), run);
  std::vector<int> ids;
  for (int id = 0; id <= LastSlot; ++id) {
    const auto slot = static_cast<unsigned>(id);
    const bool reset = id <= 100 && Game.BetOutcome[slot] == std::array{0, 0};
    if (reset || (id >= ChipStackBase && Game.Bets[slot] == 3)) ids.push_back(id);
  }
  return ids;
}

std::vector<int> Range(int first, int last) {
  std::vector<int> ids;
  for (int id = first; id <= last; ++id) ids.push_back(id);
  return ids;
}

TEST_F(ActionsTest, ATargetCoversItsBets) {
  struct Case {
    int Target, First, Last;
  };
  for (const Case& c :
       {Case{1000, 1, 83}, {1001, 1, 6},   {1002, 7, 12},  {1003, 13, 18}, {1004, 19, 24},
        {1005, 25, 30},    {1006, 31, 36}, {1007, 32, 35}, {1009, 37, 42}, {1, 1, 1},
        {83, 83, 83},      {1800, 1, 0},   {1805, 1, 0},   {84, 1, 0},     {0, 1, 0},
        {-1, 1, 0},        {1010, 1, 0},   {1801, 1, 0},   {2004, 1, 0},   {1600, 1, 0},
        {1602, 1, 0}})
    EXPECT_EQ(Covered(c.Target, 0, ResetWinsLosses), Range(c.First, c.Last)) << c.Target;
  EXPECT_THAT(Covered(OutsidePlaceBets, 0, ResetWinsLosses), ElementsAre(31, 32, 35, 36));
  SetPoint(6);
  for (const auto& [target, id] : std::initializer_list<std::pair<int, int>>{
           {1800, 3}, {1803, 21}, {1804, 27}, {1805, 33}, {1806, 39}})
    EXPECT_THAT(Covered(target, 0, ResetWinsLosses), ElementsAre(id));
  // Place bets that the rules would take down are left out.
  Establish(PassLine, 10);
  Establish(Come4, 10);
  EXPECT_EQ(Covered(AllPlaceBets, 0, ResetWinsLosses), Range(31, 36));
  Game.AutoRemovePlace = true;
  EXPECT_THAT(Covered(AllPlaceBets, 0, ResetWinsLosses), ElementsAre(32, 34, 35, 36));
  EXPECT_THAT(Covered(InsidePlaceBets, 0, ResetWinsLosses), ElementsAre(32, 34, 35));
  EXPECT_THAT(Covered(OutsidePlaceBets, 0, ResetWinsLosses), ElementsAre(32, 35, 36));
  EXPECT_THAT(Covered(Place6, 0, ResetWinsLosses), ElementsAre(33));
  // Chip-Stacks, by number and by what a stack holds.
  EXPECT_EQ(Covered(AllChipStacks, 0, BetAmount), Range(100, 200));
  Game.Bets[kSourceId] = 8;
  EXPECT_THAT(Covered(ChipStackSubject, 100, BetAmount), ElementsAre(200));
  EXPECT_THAT(Covered(ChipStackSubject, 0, BetAmount), ElementsAre(100));
  EXPECT_THAT(Covered(ChipStackSubject, 101, BetAmount), IsEmpty());
  EXPECT_THAT(Covered(ChipStackSubject, -1, BetAmount), IsEmpty());
  EXPECT_THAT(Covered(ChipStackRef, 101, BetAmount), IsEmpty());
  const std::vector<std::pair<Currency, std::vector<int>>> named = {
      {Cents(4250), {142}}, {99, {199}}, {100, {}}, {-1, {}}, {Cents(-50), {}}};
  for (const auto& [value, ids] : named) {
    Game.Bets[kSourceId] = value;
    EXPECT_EQ(Covered(ChipStackRef, kSource, BetAmount), ids) << value;
  }
}

TEST_F(ActionsTest, BetsObeyTheRulesOfTheTable) {
  Roll(3, 3);
  // Contract bets come back as they stood; odds fall with their flat bet.
  for (const int amount : {0, 4, 30, -5}) {
    Establish(Come4, 10);
    Game.TotalOnTable = MoneyOnTable();
    ArrangeAllChips();
    Do({Act(BetAmount, amount, Come4)});
    EXPECT_EQ(Bet(Come4), Currency(10)) << amount;
  }
  Establish(DontPass, 10);
  Game.TotalOnTable = MoneyOnTable();
  ArrangeAllChips();
  Given(DontPassOdds, 12);
  Do({Act(BetAmount, 0, DontPass)});
  EXPECT_EQ(Bet(DontPass), Currency(0));
  EXPECT_EQ(Bet(DontPassOdds), Currency(0));
  // Held vig follows the amount, a smaller and an empty bet.
  for (const int amount : {100, 40, 0}) {
    Do({Act(BetAmount, amount, Buy4), Act(BetAmount, amount, Lay10)});
    EXPECT_EQ(Bet(Buy4), Currency(amount));
    EXPECT_EQ(Bet(Lay10), Currency(amount));
  }
  // Required: a part of the bet itself is reckoned when the bet has been emptied.
  Given(Place5, 10);
  Do({From(Act(kBetPercent, 50, Place5), Place5)});
  EXPECT_EQ(Bet(Place5), Currency(0));
  // A value that is no money leaves the bet as it was.
  Given(Buy4, 40);
  Game.Bets[kSourceId] = Currency::FromRaw(INT64_MAX);
  EXPECT_EQ(FaultOf({Act(kBetPercent, 10'000, Buy4)}), 6);
  EXPECT_EQ(Bet(Buy4), Currency(40));
  EXPECT_EQ(FirstInconsistency(), "");
  // Chips that lie there are no part of what is laid: a chip's worth alone makes a bet of one chip.
  Given(Field, 10);
  Game.ChipColor = 2;
  Do({Act(BetAmount, 5)});
  EXPECT_EQ(Bet(Field), Currency(5));
}

TEST_F(ActionsTest, BetsAreBoughtAndCalled) {
  Given(Place4, 20);
  Given(Hard6, 5);
  Do({Act(BuyThePlaceBet, 0, Place4), Act(CallOff, 0, Hard6)});
  EXPECT_EQ(Bet(Buy4), Currency(20));
  EXPECT_EQ(Game.BetWorking[Hard6], CalledOff);
  Game.HyperDriveOn = true;
  TheHost.RedrawBets = [] { FAIL() << "drawn under Hyper-Drive"; };
  Do({Act(CallOn, 0, Hard6), Act(CallOn, 0, Hard6)});
  EXPECT_EQ(Game.BetWorking[Hard6], CalledOn);
  Game.HyperDriveOn = false;
  Game.Notify = NoticeActions;
  for (const int code : {BuyThePlaceBet, CallOff, CallOn, ResetWinsLosses})
    Do({OnStack(Act(code), kSource)});
  EXPECT_THAT(TakeShown(), IsEmpty());
}

TEST_F(ActionsTest, RollsOfEventsAreForgotten) {
  const auto forgotten = [](int target, const std::string& text) {
    for (auto* tally :
         {&Game.ShooterEvent, &Game.ShooterEventPrev, &Game.ShooterSince, &Game.ShooterSincePrev})
      tally->fill(5);
    ScriptLine line = Act(ResetRolls, 0, target);
    line.LineText = text;
    Game.Script = {line};
    Game.ScrCount = 1;
    ActionRun run;
    PerformAction(1, PlanAction(1), run);
    std::vector<int> events;
    for (unsigned event = 0; event < kRollEvents; ++event)
      if (Game.ShooterEvent[event] + Game.ShooterEventPrev[event] + Game.ShooterSince[event] +
              Game.ShooterSincePrev[event] ==
          0)
        events.push_back(static_cast<int>(event));
    return events;
  };
  EXPECT_EQ(forgotten(AllNumbers, ""), Range(2, 89));
  EXPECT_EQ(forgotten(2017, "Reset rolls of all the numbers"), Range(2, 89));
  EXPECT_THAT(forgotten(2017, "Reset rolls of"), ElementsAre(17));
  EXPECT_THAT(forgotten(2002, "all the numbers"), ElementsAre(2));
  EXPECT_THAT(forgotten(2089, ""), ElementsAre(89));
  for (const int target : {0, 7, 2000, 2090, -4}) EXPECT_THAT(forgotten(target, ""), IsEmpty());
}

TEST_F(ActionsTest, MessagesInARowMakeOneBox) {
  ScriptLine other = Named(OutputMessage, "");
  other.LineKind = RemarkLine;
  Answers = {kOk, kNo, kYes, kOk};
  Do({Named(ShowMessageText, "One ;"), From(Act(ShowMessageValue), BankrollSubject),
      Named(ShowMessageText, "Two  "), Named(ShowMessageText, "Three"), Named(AskQuestion, "Why?"),
      Act(AskQuestionValue), other, Named(AskQuestion, "More?"), Named(ShowMessageText, "End;")});
  const int notice = ButtonOk | HideAutoBet;
  EXPECT_THAT(TakeShown(),
              ElementsAre(ShownMessage{"One 500 Two\nThree\n", "Auto-Bet line # 4", 640, notice},
                          ShownMessage{"Why?\n8 ", "Auto-Bet line # 6", 640, YesNo},
                          ShownMessage{"More?\n", "Auto-Bet line # 8", 640, YesNo},
                          ShownMessage{"End", "Auto-Bet line # 9", 640, notice}));
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  Answers = {kYes};
  Do({Named(AskQuestion, "Last")});
  EXPECT_EQ(Game.MsgAnswer, AnswerYes);
}

TEST_F(ActionsTest, MessagesAreSilencedAndBoxesEndARun) {
  struct Case {
    int Notify;
    bool Hyper;
    int Code;
    bool Shown;
  };
  for (const Case& c : {Case{8, false, 79, true},
                        {16, false, 79, false},
                        {8, true, 84, false},
                        {16, true, 84, true},
                        {0, false, 82, true},
                        {0, true, 85, true}}) {
    Game.Notify = c.Notify;
    Game.HyperDriveOn = Game.KeepRolling = c.Hyper;
    Game.SnapshotsDue = false;
    if (c.Hyper) OpenLedger();
    Do({Named(c.Code, "Hey")});
    EXPECT_EQ(TakeShown().size(), c.Shown ? 1U : 0U) << c.Code;
    EXPECT_EQ(Game.KeepRolling, c.Hyper && !c.Shown);
    EXPECT_EQ(Game.SnapshotsDue, c.Hyper && c.Shown);
    if (c.Hyper) CloseLedger();
  }
}

TEST_F(ActionsTest, InputIsBetOnEveryTarget) {
  ScriptLine input = OnStack(Act(GetInput), 11);
  input.LineText = "          Get input and bet it on Chip-Stack # 11";
  Answers = {{0, false, "", "25"}, kOk, {0, false, "", "30"}, {0, false, "", "3"}};
  Do({input});
  EXPECT_EQ(Game.Bets[111], Currency(25));
  EXPECT_THAT(TakeShown(),
              ElementsAre(ShownMessage{"Please enter a value to bet on:  Chip-Stack # 11",
                                       "Auto-Bet line # 1", 640, InputOk}));
  // A message before is the prompt, seen or not; one answer serves all bets.
  input.ToSubject = AllChipStacks;
  Do({Named(ShowMessageText, "How much?"), input});
  EXPECT_EQ(Game.Bets[100], Currency(30));
  EXPECT_EQ(Game.Bets[200], Currency(30));
  EXPECT_EQ(TakeShown().back().Text, "How much?\n");
  Game.Notify = 0;
  Game.HyperDriveOn = Game.KeepRolling = true;
  Do({Named(ShowMessageText, "Well?"), input});
  EXPECT_EQ(TakeOnlyMessage().Text, "Well?\n");
  EXPECT_EQ(Game.Bets[200], Currency(3));
  EXPECT_FALSE(Game.KeepRolling);
  // Nobody can answer, or there is no bet: nothing changes.
  Game.HyperDriveOn = false;
  for (const int target : {0, +PointPlace}) Do({Act(GetInput, 0, target)});
  Game.TableMinimised = Game.AutoBetRunning = true;
  Do({input});
  EXPECT_THAT(TakeShown(), IsEmpty());
  EXPECT_FALSE(Game.AutoBetRunning);
  EXPECT_EQ(Game.Bets[200], Currency(3));
}

TEST_F(ActionsTest, FlagsAndNamesAreSet) {
  Game.Flags = {{"Up", 0, 4}, {"Down", 0, 5}};
  Game.FlagsTouched = false;
  Do({Named(SetFlag, " Down ", -1), Named(SetFlag, "up", -1), Named(SetFlag, "Up", 40'000)});
  EXPECT_EQ(Game.Flags, (std::vector<Flag>{{"Up", 0, 4}, {"Down", -1, 5}}));
  EXPECT_TRUE(Game.FlagsTouched);
  Do({Named(SetAllFlags, "", -32'769), Named(SetAllFlags, "", 32'767)});
  EXPECT_EQ(Game.Flags[0].FlagValue, 32'767);
  Game.Bets[kSourceId] = 42;
  Game.Bets[ChipStackBase + 3] = 100;
  Do({From(Named(NameChipStack, "Press  "), 0, 99), From(Named(NameChipStack, "x"), 0, 100),
      From(Named(NameChipStack, "x"), 0, -1), Named(NameChipStackRef, "Named"),
      From(Named(NameChipStackRef, "x"), 0, 3), From(Named(NameChipStackRef, "x"), 0, 4),
      From(Named(NameChipStackRef, "x"), 0, 101)});
  EXPECT_EQ(Game.ChipStackName[99], "Press");
  EXPECT_EQ(Game.ChipStackName[42], "Named");
  EXPECT_EQ(std::count(Game.ChipStackName.begin(), Game.ChipStackName.end(), ""), 98);
  Do({Act(ClearChipStackNames)});
  EXPECT_EQ(std::count(Game.ChipStackName.begin(), Game.ChipStackName.end(), ""), 100);
}

TEST_F(ActionsTest, SettingsFollowTheScript) {
  Do({Act(SetWinningBets, 0, 5), Act(SetWinningBets, 0, 6), Act(SetLosingBets, 0, 4),
      Act(SetLosingBets, 0, -1), Act(InvokeShowSteps)});
  EXPECT_EQ(Game.HandleWinningBets, WinParlay);
  EXPECT_EQ(Game.HandleLosingBets, LossPlusOneUnit);
  EXPECT_EQ(Game.ShowStepsMode, -1);
  Given(PassLine, 10);
  Roll(2, 2);
  Do({Act(SetAutoTakeOdds, -1, 0)});
  EXPECT_EQ(Bet(PassLineOdds), Currency(20));
  Do({Act(SetAutoTakeOdds, 0, 0), Act(SetAutoLayOdds, -1, 0)});
  EXPECT_FALSE(Game.AutoTakeFullOdds);
  EXPECT_TRUE(Game.AutoLayFullOdds);
  Game.KeepRolling = true;
  Do({Act(StopRolling, 0, 0)});
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_EQ(Game.StopMessage, "");
  Game.HyperDriveOn = true;
  Do({Act(StopRolling, 0, 0)});
  EXPECT_EQ(Game.StopMessage, "Stopped by Auto-Bet command.");
}

TEST_F(ActionsTest, SoundsPlayUnlessSilenced) {
  Game.AutoBetStartTime = 100;
  Do({Named(PlaySoundFile, " horn.wav "), Named(PlaySoundFile, "/a/b.wav"),
      Named(PlaySoundFile, "")});
  EXPECT_THAT(SoundsPlayed, ElementsAre(Game.AppPath + "horn.wav", "/a/b.wav"));
  EXPECT_EQ(Game.AutoBetStartTime, 0U - 1700U);
  for (bool* silence : {&Game.DisableAllSound, &Game.AutoBetSounds, &Game.HyperDriveOn}) {
    *silence = true;
    Do({Named(PlaySoundFile, "horn.wav")});
    *silence = false;
  }
  EXPECT_EQ(SoundsPlayed.size(), 2U);
  EXPECT_EQ(Game.AutoBetStartTime, 0U - 3500U);
}

TEST_F(ActionsTest, TheAtmMovesMoney) {
  Do({Act(AtmWithdraw, 100), Act(AtmWithdrawPercent, 50), Act(AtmDepositAction, 30),
      Act(AtmDepositPercent, 25), Act(AtmWithdraw, 0), Act(AtmDepositAction, -5),
      Act(AtmWithdrawPercent, -5)});
  EXPECT_EQ(Bet(BankrollIndex), Currency(572));
  EXPECT_EQ(Game.InvestedBankroll, Currency(572));
}

TEST_F(ActionsTest, GeneratorsAreChosenAndSeeded) {
  struct Case {
    ScriptLine Line;
    int Choice;
  };
  for (const Case& c : {Case{Act(SelectRng, 5), 4},
                        {Act(SelectRng, 6), 7},
                        {Act(SelectRng, 0), 7},
                        {Act(SelectRng, Cents(99)), 7},
                        {Act(SelectRng, Cents(299)), 1},
                        {From(Act(SelectRngValue), Field), 1},
                        {From(Act(SelectRngValueOfLast), Field), 3}}) {
    Game.RngChoice = 7;
    Given(Field, 2);
    Game.BetsAtRoll[Field] = 4;
    Do({c.Line});
    EXPECT_EQ(Game.RngChoice, c.Choice);
  }
  Game.RngChoice = Rng4Ran2;
  const auto seedAfter = [](const ScriptLine& line) {
    Do({line});
    return Game.LastSeed;
  };
  EXPECT_EQ(seedAfter(Act(SeedWithNumber, 4711)), 4711);
  EXPECT_EQ(seedAfter(Act(SeedWithValue)), 8);
  EXPECT_EQ(seedAfter(Act(SeedWithValueOfLast)), 12);
  EXPECT_EQ(seedAfter(Act(SeedWithNumber, 0)), 12);
  // By the clock, without a question; a clock too young to seed leaves the parameter divided.
  Game.UserSeed = true;
  EXPECT_NE(seedAfter(Act(SeedWithClock)), 12);
  EXPECT_TRUE(Game.UserSeed);
  Game.RngChoice = Rng3Congruence;
  Game.RngState = 100;
  TheHost.Milliseconds = [] { return 5U; };
  Do({Act(SeedWithClock)});
  EXPECT_EQ(Game.RngState, 16);
  EXPECT_THAT(TakeShown(), IsEmpty());
}

TEST_F(ActionsTest, AProbabilityFileIsUsedWhenItCanBeRead) {
  const auto matrix = Game.ProbMatrix;
  Do({Named(ActivateProbability, "none.prb")});
  EXPECT_FALSE(Game.UseSkewedProbability);
  EXPECT_EQ(Game.ProbMatrix, matrix);
  EXPECT_EQ(TakeShown().size(), 1U);
  // All 36 cells but one are empty.
  std::string file = "Kelvanor Probability File, Data Format 4.6";
  file.resize(92, ' ');
  file.resize(1152, '\0');
  file[256 + 4 * (112 + 2 * 14 + 1)] = 1;
  std::ofstream(folder_ / "one.prb", std::ios::binary) << file;
  Do({Named(ActivateProbability, " one.prb ")});
  EXPECT_TRUE(Game.UseSkewedProbability);
  Do({Act(DeactivateProbability)});
  EXPECT_FALSE(Game.UseSkewedProbability);
}

TEST_F(ActionsTest, TheTableIsReset) {
  Given(Field, 20);
  Roll(1, 1);
  Game.Bets[kSourceId] = 8;
  Do({Act(ResetTableKeepStacks), Act(AddAmount, 5)});
  EXPECT_EQ(Game.RollCount[0], 0);
  EXPECT_EQ(Bet(BankrollIndex), Currency(500));
  EXPECT_EQ(Game.Bets[kSourceId], Currency(8));
  EXPECT_EQ(Bet(Field), Currency(5));
  Do({Act(ResetTable)});
  EXPECT_EQ(Game.Bets[kSourceId], Currency(0));
  EXPECT_EQ(Bet(Field), Currency(0));
}

TEST_F(ActionsTest, OutputGoesToTheFile) {
  Game.Bets[kSourceId] = Cents(123'450);
  Do({Named(OpenOutput, " out.txt "), Named(OutputMessage, "Caf\u00e9  "),
      Named(OutputMessage, "to;"), Act(OutputValue), Act(OutputValueOfLast), Act(OutputNewLine),
      Named(OutputMessage, ";")});
  EXPECT_EQ(Game.AutoBetOutputFile, (folder_ / "out.txt").string());
  FlushOutputFile();
  EXPECT_EQ(ReadFile("out.txt"), "Caf\xE9\tto1234.5\t12\t\r\n");
  Do({Named(AppendOutput, (folder_ / "out.txt").string()), Named(OutputMessage, "more;"),
      Act(CloseOutput), Act(CloseOutput)});
  EXPECT_EQ(ReadFile("out.txt"), "Caf\xE9\tto1234.5\t12\t\r\nmore");
  EXPECT_EQ(Game.AutoBetOutputFile, "");
  Do({Named(OpenOutput, "out.txt"), Act(CloseOutput)});
  EXPECT_EQ(ReadFile("out.txt"), "");
}

TEST_F(ActionsTest, OutputThatCantBeWrittenIsAFault) {
  for (const int code : {OutputMessage, OutputValue, OutputValueOfLast, OutputNewLine})
    EXPECT_EQ(FaultOf({Named(code, "text")}), 52) << code;
  for (const int code : {OpenOutput, AppendOutput}) {
    EXPECT_EQ(FaultOf({Named(OpenOutput, "ok.txt"), Named(code, "no/such/out.txt")}), 76);
    EXPECT_EQ(Game.AutoBetOutputFile, "");
    EXPECT_EQ(FaultOf({Named(code, "")}), 75);
    EXPECT_EQ(FaultOf({Act(OutputNewLine)}), 52) << "none is open";
  }
}

#ifdef __linux__
TEST_F(ActionsTest, AFullDiskIsAFault) {
  EXPECT_EQ(FaultOf({Named(OpenOutput, "/dev/full"), Named(OutputMessage, "text")}), 0);
  EXPECT_THROW(FlushOutputFile(), RunTimeFault);
  EXPECT_EQ(FaultOf({Act(CloseOutput)}), 0) << "it has been told";
  EXPECT_EQ(
      FaultOf({Named(OpenOutput, "/dev/full"), Named(OutputMessage, "text"), Act(CloseOutput)}),
      61);
  EXPECT_EQ(
      FaultOf({Named(OpenOutput, "/dev/full"), Named(OutputMessage, std::string(100'000, 'x'))}),
      61);
  EXPECT_EQ(FaultOf({Act(CloseOutput)}), 0) << "there is nothing left to write";
}
#endif

/// Random action lines, rubbish among them, on a live table.
class ActionLaw : public ActionsTest {
 protected:
  int Below(int limit) { return static_cast<int>(source_() % static_cast<unsigned>(limit)); }
  int Of(std::initializer_list<int> choices) {
    return choices.begin()[Below(static_cast<int>(choices.size()))];
  }
  int Code() {
    if (Below(50) == 0) return Of({998, 999, AtmWithdraw, AtmDepositPercent, 0, -7, 117, 86});
    return Below(4) == 0 ? 70 + Below(50) : 10 + Below(50);
  }
  int Subject() {
    return Of({Below(90), 1000 + Below(10), 1300 + Below(20), 1400 + Below(12), 1600 + Below(3),
               1700 + Below(4), 1800 + Below(8), 2000 + Below(92), Of({-1, 0, 1 << 30})});
  }
  Currency Amount() {
    if (Below(40) == 0) return Currency::FromRaw(Of({-1, 1}) * (INT64_MAX / (1 + Below(99))));
    return Below(3) == 0 ? Cents(Below(20'000) - 5'000) : Currency(Below(120));
  }
  ScriptLine Line() {
    ScriptLine line = Act(Code(), Amount(), Below(2) == 0 ? Below(84) : Subject());
    line.LineName = std::vector<std::string>{"", "out.txt", "no/such", "Up", "a;"}[Below(5)];
    if (Below(2) == 0) line = From(line, Subject(), Below(104) - 2);
    line.ToStackNum = Below(104) - 2;
    return line;
  }
  std::mt19937 source_{20'240};
};

bool MayMoveBankroll(int code) {
  return code == ResetTable || code == ResetTableKeepStacks ||
         (code >= AtmWithdraw && code <= AtmDepositPercent);
}

TEST_F(ActionLaw, NoLineUpsetsTheTable) {
  Game.Flags = {{"Up", 0, 0}};
  Game.Notify = NoticeActions | NoticeLimits | NoticeCharges | NoticeAutoBet;
  ActionRun run;
  int placed = 0;
  for (int step = 0; step < 20'000; ++step) {
    Game.AllowPutBets = Below(2) == 0;
    Game.AutoAdjust = Below(3);
    Load({Line(), Line(), Line()});
    if (Below(2) == 0) Game.Script[1] = Game.Script[0];
    Game.Bets[kSourceId] = Below(40);
    const int number = 1 + Below(3);
    const ScriptLine& line = Game.Script[static_cast<unsigned>(number - 1)];
    if (Bet(BankrollIndex) < 1000) AtmTransaction(AtmWithdrawal, 5000);
    const Currency bankroll = Bet(BankrollIndex);
    Game.HyperDriveOn = Below(2) == 0;
    try {
      PerformLine(number, run);
    } catch (const RunTimeFault&) {
    }
    if (Game.HyperDriveOn) {
      Game.HyperDriveOn = false;
      ArrangeAllChips();
    }
    placed += Game.TotalOnTable > 0 ? 1 : 0;
    ASSERT_EQ(Game.TotalOnTable, MoneyOnTable()) << step << ": action " << line.LineCode;
    if (!MayMoveBankroll(line.LineCode)) {
      ASSERT_EQ(Bet(BankrollIndex), bankroll) << line.LineCode;
    }
    if (Below(4) != 0) continue;
    ASSERT_EQ(FirstInconsistency(), "") << step << ": action " << line.LineCode;
    Game.RngChoice = 0;
    Game.HandleWinningBets = WinSameBet;
    Roll(1 + Below(6), 1 + Below(6));
    Shown.clear();
  }
  EXPECT_EQ(FirstInconsistency(), "");
  EXPECT_GT(placed, 5'000);
}

}  // namespace
