// Laws that hold for every script: thousands of random ones, well formed and not, drive the table.

#include "autobet/checker.h"
#include "autobet/compose.h"
#include "autobet/engine.h"
#include "autobet/script_reader.h"
#include "stats/events_log.h"
#include "support/random_rules.h"
#include "support/same_game.h"
#include "support/table_fixture.h"

namespace {

/// Writes scripts by chance, from the lists that a player chooses from.
class Writer : public Chance {
 public:
  using Chance::Chance;
  int CodeOf(std::span<const ListItem> list) {
    int code = 0;
    while (!list.empty() && code == 0) code = list[Below(static_cast<int>(list.size()))].Code;
    return code;
  }

  Currency Amount() { return Of<Currency>({0, 1, 2, 3, 5, 10, 30, 100, 250, -5, Hundredths(50)}); }

  ScriptLine Condition() {
    ScriptLine line;
    line.LineKind = ConditionLine;
    line.OfSubject = CodeOf(ConditionList());
    line.OfStackNum = Below(9);
    line.LineCode = CodeOf(OperatorList(line.OfSubject));
    const ConditionForm form = FormOfCondition(line.OfSubject);
    line.LineAmount = form.Truth ? Of<Currency>({kTrue, kFalse}) : Amount();
    line.LineName = form.FlagName ? FlagName() : "name";
    if (OperatorComparesSubjects(line.LineCode)) line.ToSubject = CodeOf(CompareList());
    line.ToStackNum = Below(9);
    return line;
  }

  ScriptLine Action(const std::set<int>& leftOut) {
    const ActionForm* form = nullptr;
    do {
      form = &kActionForms[Below(static_cast<int>(kActionForms.size()))];
      // Half of the actions change bets.
      if (Below(2) == 0) form = FindAction(Of({10, 11, 13, 17, 20, 23, 30, 40, 53}));
    } while (leftOut.contains(form->Code));
    ScriptLine line;
    line.LineKind = ActionLine;
    line.LineCode = form->Code;
    line.LineAmount = form->Truth ? Of<Currency>({kTrue, kFalse}) : Amount();
    line.OfSubject = form->Code == RoundBet ? CodeOf(kRoundingWays) : CodeOf(SourceList());
    line.OfStackNum = Below(9);
    line.ToSubject = CodeOf(TargetList(form->To));
    line.ToStackNum = Below(9);
    line.LineName = form->Name == NameUse::Flag ? FlagName() : "nowhere/name.txt";
    return line;
  }

  /// A script that the checker passes, without jumps.
  std::vector<ScriptLine> Script(const std::set<int>& leftOut) {
    std::vector<ScriptLine> lines;
    for (int statements = 2 + Below(6); statements > 0; --statements) {
      if (Below(6) == 0) {
        AddActions(lines, DoThisLine, leftOut);
        continue;
      }
      AddConditions(lines, Of({WhenLine, WhileLine, WhileLine}));
      for (int blocks = Below(3); blocks > 0; --blocks)
        AddConditions(lines, AndWhenLine + Below(XorWhileLine - AndWhenLine + 1));
      AddActions(lines, ThenLine, leftOut);
      if (Below(2) == 0) AddActions(lines, ElseLine, leftOut);
    }
    return lines;
  }

  /// Labels before statements, and jumps to them in the place of actions.
  void AddJumps(std::vector<ScriptLine>& lines) {
    int labels = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const int kind = lines[i].LineKind;
      const bool opens = kind == WhenLine || kind == WhileLine || kind == DoThisLine;
      if (!opens || (labels > 0 && Below(2) == 0)) continue;
      ScriptLine label;
      label.LineKind = LabelLine;
      label.LineName = "Label " + std::to_string(labels++);
      lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(i++), label);
    }
    for (ScriptLine& line : lines) {
      if (line.LineKind != ActionLine || Below(4) != 0) continue;
      line.LineCode = Of({GoTo, Gosub, ReturnAction});
      line.LineName = "label " + std::to_string(Below(labels));
    }
  }

  /// Lines of any numbers at all.
  ScriptLine Rubbish() {
    ScriptLine line = Below(2) == 0 ? Condition() : Action({});
    if (Below(3) == 0) line.LineKind = Of({0, 1, 3, 5, 7, 8, 9, 11, 12, 13, 20, 30, 90, 99, -7});
    for (int* field :
         {&line.LineCode, &line.OfSubject, &line.OfStackNum, &line.ToSubject, &line.ToStackNum})
      if (Below(4) == 0)
        *field = Of({Below(130), 1000 + Below(900), 2000 + Below(100), -1, INT32_MIN, INT32_MAX});
    if (Below(6) == 0)
      line.LineAmount = Currency::FromRaw(Of<std::int64_t>({INT64_MIN, INT64_MAX, -1, 1LL << 52}));
    if (Below(4) == 0) line.LineName = Of<const char*>({"", " ", ";", "label 0", "\xFF\x80"});
    return line;
  }

 private:
  std::string FlagName() { return "Flag " + std::to_string(Below(4)); }

  void AddConditions(std::vector<ScriptLine>& lines, int kind) {
    lines.emplace_back().LineKind = kind;
    for (int count = 1 + Below(2); count > 0; --count) lines.push_back(Condition());
  }

  void AddActions(std::vector<ScriptLine>& lines, int kind, const std::set<int>& leftOut) {
    lines.emplace_back().LineKind = kind;
    for (int count = 1 + Below(3); count > 0; --count) lines.push_back(Action(leftOut));
  }
};

class ScriptLaws : public TableTest {
 protected:
  ScriptLaws() { BeginGame(1); }

  void BeginGame(unsigned seed) const {
    LayDownDefaults();
    ClearScript();
    for (int rng = Rng5Ran1; rng >= Rng1Mt; --rng) {
      Game.RngChoice = rng;
      SeedDice(static_cast<int>(seed) + 1);
    }
    Chance chance(seed);
    DrawRules(chance);
    Game.HyperThrottle = 0;
    // A broken bank stops only Hyper-Drive at once.
    Game.MaxPlacard = std::min(Game.MaxPlacard, Unit() * 1000);
    Game.NegBankroll = seed % 3 == 0;
    Game.AutoBetActive = 1;
    Game.ReSeed = false;
    Game.Bets[BankrollIndex] = Game.BankrollInitAmt = 5'000;
    Game.HandleWinningBets = Game.HandleLosingBets = 2;
    Game.DataPath = Game.AppPath = folder_ / "";
    Game.EventsLogFile = folder_ / kLog;
  }

  static void TakeScript(std::vector<ScriptLine> lines) {
    for (ScriptLine& line : lines) LogLine(line);
    LoadLines(lines);
    for (const ScriptLine& line : lines) RegisterNames(line);
  }

  /// Faults that a script may run into, and be reported for.
  static bool IsForeseenFault() {
    const std::string& error = Game.LastErrorText;
    return error.empty() || error.starts_with("Bad file name or number, Error #52") ||
           error.starts_with("Path not found, Error #76") ||
           error.starts_with("Path/File access error, Error #75") ||
           error.starts_with("Overflow, Error #6") || error.starts_with("Out of memory, Error #7");
  }

  /// Rolls the dice and holds the table against the laws.
  void RollUnderLaws() {
    const Currency before = Bankroll();
    RollDice();
    ASSERT_TRUE(IsForeseenFault()) << Game.LastErrorText;
    ASSERT_EQ(FirstInconsistency(), "");
    ASSERT_FALSE(Game.RollInProgress || Game.AutoBetRunning);
    ASSERT_TRUE(Abs(before) > kRollingLimit || Game.RollsSince[0] == Game.RollCount[0]);
  }

  static constexpr const char* kLog = "log.txt";
  const ScratchFolder folder_{"script_laws"};
};

TEST_F(ScriptLaws, WellFormedScriptsKeepTheTableSound) {
  std::set<int> acted;
  for (unsigned seed = 0; seed < 150; ++seed) {
    SCOPED_TRACE(seed);
    BeginGame(seed);
    Writer writer(seed);
    std::vector<ScriptLine> lines = writer.Script({GoTo, Gosub});
    if (seed % 3 == 0) writer.AddJumps(lines);
    TakeScript(lines);
    CheckScript();
    ASSERT_EQ(Game.MsgText, "") << Game.MsgTitle;
    int turns = 0;
    bool interrupted = false;
    TheHost.Yield = [&] {
      if (!Game.AutoBetRunning || ++turns < 5) return;
      interrupted = true;
      Game.AutoBetRunning = false;
    };
    for (int roll = 0; roll < 60; ++roll) {
      turns = 0;
      ASSERT_NO_FATAL_FAILURE(RollUnderLaws());
    }
    // Only a jump can keep a sound script from coming to its end.
    EXPECT_FALSE(interrupted && seed % 3 != 0);
    for (const ScriptLine& line : lines)
      if (line.LineKind == ActionLine) acted.insert(line.LineCode);
  }
  EXPECT_EQ(acted.size(), kActionForms.size());
}

TEST_F(ScriptLaws, ScriptsOfRubbishDoNoHarm) {
  TheHost.Yield = [] { Game.AutoBetRunning = false; };
  int refused = 0;
  for (unsigned seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    BeginGame(seed);
    Writer writer(seed);
    std::vector<ScriptLine> lines = writer.Script({});
    for (int count = 1 + writer.Below(12); count > 0; --count) {
      const auto place = writer.Below(static_cast<int>(lines.size()));
      if (writer.Below(3) == 0) lines.erase(lines.begin() + place);
      lines.insert(lines.begin() + std::min<long>(place, std::ssize(lines)), writer.Rubbish());
    }
    TakeScript(lines);
    CheckScript();
    refused += Game.MsgText.empty() ? 0 : 1;
    for (int roll = 0; roll < 4; ++roll) ASSERT_NO_FATAL_FAILURE(RollUnderLaws());
    RunAutoBets();
    ASSERT_EQ(FirstInconsistency(), "");
  }
  EXPECT_GT(refused, 300);
}

// --- Hyper-Drive ---

/// All that a game leaves behind.
struct Played : StateOfPlay {
  std::vector<Flag> Flags = Game.Flags;
  std::array<std::string, 100> Names = Game.ChipStackName;
  int LogTopLine = Game.LogTopLine;
  bool operator==(const Played&) const = default;
};

/// The game and script laid down, in runs of several lengths.
Played Play(bool hyperDrive) {
  Game.Notify = 0;
  Game.HyperDriveOn = hyperDrive;
  Game.ShowStepsMode = hyperDrive ? 0 : kTrue;  // a traced run passes no line over
  Game.AutoRollDice = true;
  for (const int rolls : {1, 40, 7, 150, 2, 300}) {
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    Game.KeepRolling = true;
    RollDice();
  }
  Game.HyperDriveOn = false;
  return {};
}

TEST_F(ScriptLaws, HyperDriveRunsScriptsTheSame) {
  // What speaks to the player ends a run under Hyper-Drive only; clocks differ; a new game at
  // every roll starts the count of rolls again; and a fault ends the script.
  const std::set<int> leftOut = {
      AskQuestion, AskQuestionValue,    GetInput, ActivateProbability, SeedWithClock, GoTo, Gosub,
      ResetTable,  ResetTableKeepStacks};
  int moved = 0, compared = 0;
  for (unsigned seed = 0; seed < 120; ++seed) {
    SCOPED_TRACE(seed);
    Writer writer(seed);
    std::vector<ScriptLine> lines = ReadScript("Do this . . .\nBet $ 10 on Pass Line\n");
    for (const ScriptLine& line : writer.Script(leftOut)) lines.push_back(line);
    if (seed % 3 == 0) {
      const std::string reset = seed % 2 ? "Reset table (preserve Chip-Stacks)" : "Reset table";
      for (const ScriptLine& line :
           ReadScript("When . . .\nThe # of rolls in the game are equal to 45\nthen . . .\n" +
                      reset + "\nStop Auto-Rolling / Hyper-Drive\n"))
        lines.push_back(line);
    }
    std::vector<Played> games;
    std::vector<std::string> logs;
    for (const auto& [hyperDrive, known] : {std::pair{false, false}, {true, false}, {true, true}}) {
      BeginGame(seed);
      Game.KnownRollsOn = known;
      ClearEventsLog();
      if (seed % 10 < 3) {
        LogEverything();
        Game.ClearLogOnNew = Game.KeepLatestRollOnTop = true;
      }
      TakeScript(lines);
      games.push_back(Play(hyperDrive));
      logs.push_back(folder_.Read(kLog));
    }
    // Breaking the bank speaks to the player, too.
    const auto broken = [](const Played& game) { return game.Table.BankrollHigh > kRollingLimit; };
    if (std::ranges::any_of(games, broken)) continue;
    ++compared;
    ASSERT_NE(logs[0].empty(), Game.EventsLogActive);
    for (const std::size_t other : {1U, 2U}) {
      ASSERT_TRUE(logs[0] == logs[other]);
      ASSERT_TRUE(games[0] == games[other]);
    }
    moved += games[0].Table.Bets[BankrollIndex] != 5'000;
  }
  EXPECT_GT(compared, 100);
  EXPECT_GT(moved, 60);
}

}  // namespace
