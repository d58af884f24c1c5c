// What condition lines hold for, and when they have just now come to hold.
#include "autobet/conditions.h"

#include <cctype>

#include "autobet/script_reader.h"
#include "support/table_fixture.h"

namespace {

/// What stands between the semicolons of a table.
std::vector<std::string> List(const std::string& text) {
  std::vector<std::string> items;
  std::istringstream parts(text);
  for (std::string item; std::getline(parts, item, ';');)
    items.push_back(item.substr(item.find_first_not_of(" \n")));
  return items;
}

/// A row of a table: a verdict, numbers, and the words of a line. F is false, O true but nothing
/// new, N new. Of two letters the second is for a "while" block, which asks no more of a group than
/// one bet. In the table several verdicts with their numbers may stand before the same words:
/// "N+2-1 O+2+2 won".
struct Row {
  std::string Verdict, Words;
  std::vector<int> Numbers;
};

bool IsCase(const std::string& w) {
  return std::isalpha(w.front()) && std::isdigit(w.back()) && w.find_first_of("+-") != w.npos;
}

Row ReadCase(const std::string& text) {
  const std::size_t letters = std::min(text.find_first_of("+-"), text.size());
  Row row = {text.substr(0, letters), "", {}};
  std::istringstream numbers(text.substr(letters));
  for (int number = 0; numbers >> number;) row.Numbers.push_back(number);
  return row;
}

std::vector<Row> Rows(const std::string& text) {
  std::vector<Row> rows;
  for (const std::string& item : List(text)) {
    const std::size_t first = rows.size();
    std::istringstream words(item);
    std::string word;
    while (words >> word && (rows.size() == first || IsCase(word))) rows.push_back(ReadCase(word));
    std::string rest;
    std::getline(words, rest);
    for (std::size_t row = first; row < rows.size(); ++row) rows[row].Words = word + rest;
  }
  return rows;
}

class Conditions : public TableTest {
 protected:
  Conditions() {
    ClearScript();
    Game.RollCount[0] = 5;
    Game.Bets = {};
    SetDefaultDenominations();
    Game.BetsAfterRoll = Game.Bets;
  }

  static void Expect(const ScriptLine& line, const std::string& verdict) {
    LoadLines({line});
    for (const bool whileBlock : {false, true}) {
      const ConditionPlan plan = PlanCondition(1);
      const Verdict told = plan.Evaluate(plan, whileBlock);
      EXPECT_EQ("FFON"[2 * told.True + told.New], whileBlock ? verdict.back() : verdict[0])
          << line.LineText << (whileBlock ? " (while)" : "");
    }
  }
  static void Expect(const std::string& is, const std::string& told) { Expect(ReadLine(is), told); }
  /// A table without numbers.
  static void Expect(const std::string& rows) {
    for (const Row& row : Rows(rows)) Expect(row.Words, row.Verdict);
  }

  /// Amounts and streaks by the bets, now and one roll ago.
  using Pasts = std::initializer_list<std::array<int, 3>>;
  static void Set(Pasts bets) {
    for (const auto& [id, now, before] : bets) Game.Bets[id] = now, Game.BetsAfterRoll[id] = before;
  }
  static void SetStreaks(Pasts bets) {
    for (const auto& [id, now, before] : bets) Game.BetOutcome[id] = {before, now};
  }
};

TEST_F(Conditions, FollowThePoint) {
  // Rolls, point now, one and two rolls ago, and the total: a fresh table, a craps on its come-out,
  // a 6 on its come-out, a 6 after an 8 was decided, no decision on the first and on a later roll
  // of a point, the point made, a seven-out.
  constexpr std::tuple<int, int, int, int, int> kStates[] = {
      {0, 0, 0, 0, 0}, {1, 0, 0, 0, 3}, {1, 6, 0, 0, 6}, {9, 6, 0, 8, 6},
      {9, 6, 6, 0, 5}, {9, 6, 6, 6, 5}, {9, 0, 6, 6, 6}, {9, 0, 6, 6, 7}};
  const auto rows = Rows(R"(
    NOFFFFNN Next roll is a come-out roll; FFNNOOFF Next roll is NOT a come-out roll;
    FOONFFFF Last roll was a come-out roll; FFFFNOOO Last roll was NOT a come-out roll;
    FFNNOOFF A point is established on any number;
    FFNNOOFF A point is established on the number 6 or 8;
    FFFFFFFF A point is established on the number 8, 9, or 10;
    OOFFFFNN A point is NOT established on any number;
    OOFFFFNN A point is NOT established on the number 6;
    OOOOOOOO A point is NOT established on the number 4;
    FFFFFFNF A point is decided "for" any number; FFFFFFFF A point is decided "for" the number 5;
    FFFFFFFN A point is decided "against" the number 4, 5, or 6;
    FFFFFFFF A point is decided "against" the number 5 or 9;
    FFFFFFNN A point is decided "for" or "against" the number 6;
    FFFFFFFF A point is decided "for" or "against" the number 8)");
  for (const Row& row : rows)
    for (std::size_t state = 0; state < std::size(kStates); ++state) {
      SCOPED_TRACE(state);
      std::tie(Game.RollCount[0], Game.Point, Game.PrevPoint, Game.PrevPrevPoint, Game.RollTotal) =
          kStates[state];
      Expect(row.Words, row.Verdict.substr(state, 1));
    }
  Game.PrevPoint = 0;
  for (const ListItem& choice : OperatorList(PointEstablished))
    for (const int point : kPointNumbers) {
      Game.Point = point;
      const std::string words(choice.Text);
      const bool in = choice.Code == AnyNumber || words.find(std::to_string(point)) != words.npos;
      Expect("A point is established on " + words, in ? "N" : "F");
    }
}

TEST_F(Conditions, TellPassesAndMissesOfThrownDice) {
  Game.RollCount[0] = 0;
  Expect("F On each pass; F On each miss");  // nothing has been thrown
  // Two dice, and whether they are a pass or a miss.
  for (const std::string thrown : {"12M", "34P", "56P", "11M", "66M", "22 ", "66 ", "12 ", "31P",
                                   "33 ", "56 ", "34M", "16P", "45 ", "63P"}) {
    Game.ScrCount = 0;
    Roll(thrown[0] - '0', thrown[1] - '0');
    SCOPED_TRACE("roll " + std::to_string(Game.RollCount[0]));
    Expect("On each pass", thrown[2] == 'P' ? "N" : "F");
    Expect("On each miss", thrown[2] == 'M' ? "N" : "F");
  }
}

TEST_F(Conditions, KnowTheRunTheAnswerAndTheMoney) {
  for (const int answer : {AnswerOk, AnswerYes, AnswerNo}) {
    Game.MsgAnswer = answer;
    Expect("Last answer was \"Yes\"", answer == 6 ? "N" : "F");
    Expect("Last answer was \"No\"", answer == 7 ? "N" : "F");
  }
  for (const bool changed : {false, true})
    for (const bool hotKey : {false, true}) {
      Game.ScriptChanged = changed;
      Game.HotKeyRunning = hotKey;
      Expect("Initializing Auto-Bet", changed || hotKey ? "N" : "F");
    }
  Game.RollsSince[0] = 5;
  Expect("F On each roll");
  Game.RollsSince[0] = 4;
  Expect("N On each roll");

  Set({{BankrollIndex, 100, 100}});
  Game.TotalOnTable = 40;
  Expect(R"(
    N Available bankroll is equal to $ 60; F Available bankroll is less than $ 60;
    N Available bankroll is less than bankroll; N Bankroll is greater than bankroll available)");
  Set({{Field, 40, 40}});
  Expect("O Bankroll is greater than bankroll available");
  Game.NegBankroll = true;
  Expect("N Available bankroll is equal to $ 100; O Bankroll is equal to bankroll available");
}

TEST_F(Conditions, TestRollEvents) {
  // How often for this shooter, now and a roll ago, and how long ago, now and a roll ago.
  const auto rows = Rows(R"(
    N+2+1+0+4 O+2+2+1+0 F+3+2+0+4 has rolled 2 times; N+3+2+0+4 F+3+3+1+0 has rolled;
    N+3+2+0+4 O+4+3+0+4 F+2+1+0+4 has rolled more than 2 times;
    N+0+0+3+2 has rolled more than -1 times;
    N+3+2+0+4 O+3+3+1+0 F+2+1+0+4 N+0+0+3+2 has not rolled 2 times;
    N+3+3+1+0 F+3+2+0+4 has not rolled;
    N+1+2+1+0 O+1+0+0+3 N+0+0+3+2 F+2+1+0+3 has rolled less than 2 times;
    N+1+0+0+2 N+2+1+0+5 O+2+2+2+1 F+2+2+3+2 F+0+0+1+0 has rolled in the last 3 rolls;
    N+3+3+3+2 O+3+3+4+3 F+2+2+3+2 F+9+9+2+1 has not rolled in the last 3 rolls)");
  for (const Row& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.Numbers));
    Game.ShooterEvent[31] = row.Numbers[0];
    Game.ShooterEventPrev[31] = row.Numbers[1];
    Game.ShooterSince[31] = row.Numbers[2];
    Game.ShooterSincePrev[31] = row.Numbers[3];
    Expect("Number 5 (1-4) or (4-1) " + row.Words, row.Verdict);
  }
  ScriptLine line = ReadLine("Number 5 (1-4) or (4-1) has rolled");
  for (int event = 2; event <= 89; ++event) {
    Game.ShooterEvent.fill(0);
    Game.ShooterEventPrev.fill(0);
    line.OfSubject = EventSubject + event;
    Expect(line, "F");
    Game.ShooterEvent[event] = 1;
    Expect(line, "N");
  }
}

TEST_F(Conditions, LookAtFlags) {
  const Flag hot = {"Hot", kTrue, kTrue};
  const Flag cold = {"Cold", kFalse, kFalse};
  const Flag lit = {" Lit ", kTrue, kFalse};
  Game.Flags = {hot, cold, lit};
  Expect(R"(
    O Flag "Hot" is True; F Flag "Hot" is False; N Flag " Lit" is True; O Flag "Cold" is False;
    F Flag "hot" is True; F Flag "None" is False; O Any flag is True; O Any flag is False;
    F All flags are True; N Total # of true flags number -1; F Total # of true flags number 2;
    N Total # of false flags number less than -1)");
  Game.Flags = {cold, lit, hot};
  Expect(R"(
    N Any flag is True; F Total # of true flags number 0;
    O Total # of false flags number more than -1)");
  Game.Flags = {lit, hot};
  Expect("N All flags are True; F Any flag is False");
  Game.Flags = {hot};
  Expect("O All flags are True");
  Game.Flags = {};
  Expect("F Any flag is False; F All flags are False; F Total # of true flags number 0");
  Game.Flags.assign(0x10000, cold);
  Game.Flags.push_back(hot);
  ScriptLine line = ReadLine("Flag \"Hot\" is True");
  line.LineCode = IsNamed;  // no operator of flags, and without a meaning there
  Expect(line, "O");
}

TEST_F(Conditions, FollowStreaks) {
  // The streak now and a roll ago.
  const auto rows = Rows(R"(
    N+1+0 N+1-3 F+1+1 F-1-2 won; N+2+1 O+2+2 F+3+2 F-2-1 won 2 times in a row;
    N+3+2 O+4+3 F+2+1 won more than 2 times in a row; O+2+1 won more than 0 times in a row;
    N+1+1 N-1+1 F+2+1 not won; N+3+2 O+1+1 F+2+1 not won 2 times in a row;
    N-1+2 O+1+0 F+2+1 won less than 2 times in a row; N-1+0 N-2-1 F-2-2 F+1+2 lost;
    N-2-1 O-2-2 F+2+1 lost 2 times in a row; N-3-2 O-4-3 F-2-1 lost more than 2 times in a row;
    N-1-1 N+1-1 F-2-1 not lost; N-3-2 O+1+1 F-2-1 not lost 2 times in a row;
    N+1-2 O-1+0 F-2-1 lost less than 2 times in a row)");
  Game.Point = 8;
  Set({{Place8, 5, 5}});
  for (const char* subject : {"Place 8 has ", "Place (shooter's point) has "})
    for (const Row& row : rows) {
      SCOPED_TRACE(::testing::PrintToString(row.Numbers));
      SetStreaks({{Place8, row.Numbers[0], row.Numbers[1]}});
      Expect(subject + row.Words, row.Verdict);
    }
  SetStreaks({{Place8, 2, 2}});
  Game.RollCount[0] = 0;  // before the first roll all that holds is new
  Expect("N Place 8 has won 2 times in a row");
}

/// Makes a subject 10 that was 9, and all that it may be held against the amount, now and before.
/// Counts are named by the shooter's statistic.
void SetSubject(const std::string& subject, int stat, Currency amount) {
  for (const int id : {+Come, +BankrollIndex, 109, Come4 + 3, 1, 2, 3, 4, 5, 6})
    Game.Bets[id] = Game.BetsAfterRoll[id] = amount;
  Game.Bets[Buy4] = amount - (Game.Bets[Buy10] = 1);
  Game.BetsAfterRoll[Buy4] = amount - (Game.BetsAfterRoll[Buy10] = 3);
  Game.BankrollHistory[1] = Game.BankrollHistory[2] = amount;
  for (const int id : {+Field, 107, +Place8, subject == "Bankroll is" ? 0 : 107})
    Game.Bets[id] = 10, Game.BetsAfterRoll[id] = 9;
  if (subject.ends_with("average ) is")) Game.BankrollHistory[1] = 9, Game.BankrollHistory[2] = 10;
  Game.RollCount[0] = 77;
  Game.ShooterStats.fill(77);
  (stat < 0 ? Game.RollCount[0] : Game.ShooterStats[stat]) = 10;
}

TEST_F(Conditions, CompareValues) {
  const auto rows = Rows(R"(
    N+10 F+9 equal to; N+9 O+7 F+10 not equal to; N+9 O+8 F+10 greater than;
    O+10 F+9 not greater than; O+11 F+10 less than; O+9 N+10 F+11 not less than)");
  // P is new when it didn't hold before, D so at a decision only, L when the shooter has changed.
  const auto subjects = Rows(R"(
    P-1 The # of rolls in the game are; P-1 Simulated hours are;
    P+0 The # of rolls for this shooter are; D+10 The # of passes in the game are;
    D+1 The # of passes for this shooter are; D+13 The # of misses in the game are;
    D+15 The # of misses for this shooter are; L+17 The # of rolls for the last shooter are;
    L+18 The # of passes for the last shooter are; L+19 The # of misses for the last shooter are;
    P-1 Field is; P-1 Bankroll is; P-1 Bankroll ( 1 roll average ) is; P-1 Chip-Stack # 7 is;
    P-1 Chip-Stack ref # 3 is; P-1 Place (shooter's point) is; P-1 Any Place bet is;
    P-1 All Place bets are; P-1 Total Place bets are)");
  const auto others = List(R"(
    $; Come; bankroll; bankroll average 1; Chip-Stack # 9; Chip-Stack ref # 4; any Lay bet;
    all Lay bets; total Buy bets; Come (shooter's point))");
  Game.BankrollHistoryCount = 2;
  Game.SimRollsPerHour = 1;
  Set({{103, 7, 7}, {104, 9, 9}});
  for (const auto& [rule, subject, stat] : subjects)
    for (const std::string& other : others)
      for (const auto& [verdict, words, amount] : rows) {
        if (subject.starts_with("Bankroll ") && other.starts_with("bankroll")) continue;
        const bool count = subject.starts_with("The") || subject.starts_with("Sim");
        const auto held = other != "$" ? other : (count ? "" : "$ ") + std::to_string(amount[0]);
        const std::string line = subject + " " + words + " " + held;
        SetSubject(subject, stat[0], amount[0]);
        Game.Point = 8;
        const bool holds = verdict != "F";
        Expect(line, !holds || rule == "P" ? verdict : "O");
        if (other == "Come (shooter's point)") continue;
        Game.Point = 0;
        if (rule == "L") Game.ShooterStats[0] = 0;
        if (count) Expect(line, holds && rule == "L" ? "N" : verdict);
      }
  Game.ShooterStats[0] = Game.ShooterStats[2] = 0;  // no shooter has finished
  Game.RollCount[0] = 6;
  Game.SimRollsPerHour = 60;
  Expect("O The # of rolls for the last shooter are equal to 77");
  Expect("N Simulated hours are equal to 0.1; F Simulated hours are less than 0.1");
  Game.SimRollsPerHour = 0;
  Expect("F Simulated hours are less than 5");
}

TEST_F(Conditions, TakeGroupsForOneOrForAllBets) {
  Set({{Place4, 10, 10}, {Place6, 20, 5}, {Place8, 30, 30}});
  Expect(R"(
    O Any Place bet is greater than $ 9; ON Any Place bet is greater than $ 15;
    N Any Place bet is equal to $ 20; F Any Place bet is less than $ 10;
    O Any Place bet is equal to $ 0; N Any bet is equal to $ 20; F Any Buy bet is less than $ 10;
    O All Place bets are greater than $ 4; N All Place bets are greater than $ 9;
    F All Place bets are greater than $ 15; O All Place bets are not less than $ 0;
    F All Place bets are equal to $ 0; F All Buy bets are less than $ 10;
    O All Buy bets are equal to $ 0; O All Place bets are greater than Buy 4;
    O Place 8 is greater than all Place bets; F Place 6 is equal to any Place bet;
    F Place 6 is not equal to Place 6; ON Place 6 is greater than any Place bet;
    F Place 6 is not greater than all Place bets; O Any Place bet is greater than all Place bets;
    F All Place bets are equal to any Place bet)");
  Set({{Buy4, 0, 8}});
  Expect("N All Buy bets are equal to $ 0");
  Set({{Place6, 20, 0}});  // a bet that was not there has no old truth
  Expect("N Any Place bet is equal to $ 20; O All Place bets are greater than $ 9");
  Game.RollCount[0] = 0;
  Expect("N Any Place bet is greater than $ 9; O All Place bets are greater than $ 9");

  // Each bet's old truth is of all it is held against.
  Game.RollCount[0] = 5;
  Game.Bets = Game.BetsAfterRoll = {};
  Set({{Place4, 10, 10}, {Place6, 30, 1}, {Buy4, 20, 5}, {Buy5, 5, 50}});
  Expect(R"(
    N Any Place bet is greater than all Buy bets; ON Place 4 is less than any Buy bet;
    ON Buy 4 is greater than any Place bet; F Place 4 is not greater than all Place bets;
    F Place 4 is greater than total Buy bets; N Place 6 is greater than total Buy bets)");

  // Streaks: with no number every bet counts, with one those that lie.
  SetStreaks({{Place10, 1, 0}, {Place4, -2, -1}});
  Expect(R"(
    N Any Place bet has won; F Any Place bet has won 1 times in a row;
    N Any Place bet has lost 2 times in a row; F All Place bets have won;
    F All Place bets have lost 2 times in a row)");
  SetStreaks({{Place6, -2, -2}});
  Expect("N All Place bets have lost 2 times in a row");
  SetStreaks({{Place4, -2, -2}});
  Expect("O All Place bets have lost 2 times in a row");
  for (int id = Place4; id <= Place10; ++id) SetStreaks({{id, 1, -1}});
  Expect("N All Place bets have won");
}

TEST_F(Conditions, AddUpTotals) {
  SetStreaks({{Place4, 2, 2}, {Place5, -1, -1}, {Place6, 1, 1}, {Place8, -3, -3}});
  for (const char* verdict : {"O", "N"}) {
    for (const char* words : {"won 3", "won more than 2", "lost 4", "lost more than 3"})
      Expect("Total Place bets have " + std::string(words) + " times in a row", verdict);
    for (const char* words : {"won 2 times in a row", "won more than 3 times in a row", "won",
                              "lost 3 times in a row", "lost more than 4 times in a row", "lost"})
      Expect("Total Place bets have " + std::string(words), "F");
    Expect("O Total Buy bets have won");
    Expect("F Total Buy bets have lost");
    SetStreaks({{Place8, -3, -2}});
  }
  Set({{Place4, 10, 4}, {Place9, 6, 0}, {103, 5, 5}, {Buy5, 3, 4}, {Buy9, 12, 12}});
  Expect(R"(
    N Total Place bets are equal to $ 16; O Total Place bets are greater than $ 3;
    N Total Place bets number 2; F Total Place bets number 1; O Total Place bets number more than 0;
    N Total Place bets number more than 1; O Total Place bets number less than 3;
    F Total Place bets number less than 2; O Total Buy bets number 2; O Total Chip-Stacks number 1;
    O Total Chip-Stacks are equal to $ 5; F Total Chip-Stacks have won;
    N Total bets are equal to $ 31; N Total Place bets are greater than total Buy bets;
    O Total Place bets are greater than any Buy bet;
    N Total Place bets are greater than all Buy bets; F Total Place bets are less than Buy 9)");
}

TEST_F(Conditions, KnowStacksByNumberReferenceAndName) {
  Game.ChipStackName[3] = " Step ";
  Set({{103, 5, 5}, {104, 3, 3}});
  Expect(R"(
    O Chip-Stack # 3 is named "Step"; F Chip-Stack # 3 is named "step";
    F Chip-Stack # 3 is not named "Step"; O Chip-Stack # 9 is not named "Step";
    O Chip-Stack ref # 4 is named " Step"; O Chip-Stack # 100 is not named "Step";
    O Any Chip-Stack is named "Step"; O Any Chip-Stack is equal to $ 5;
    F All Chip-Stacks are named "Step")");
  Set({{104, 0, 3}});  // empty stacks don't count, but what lay on them is remembered
  Expect("N All Chip-Stacks are named \"Step\"");
  Set({{104, 0, 0}});
  Expect("O All Chip-Stacks are named \"Step\"");
  Game.Bets[103] = 0;
  Expect("F Any Chip-Stack is named \"Step\"");
  Game.RollCount[0] = 0;
  Expect("N Chip-Stack # 3 is named \"Step\"");
  for (const Currency nowhere : {Currency(100), Currency(-1), Currency(1'000'000)}) {
    Game.Bets[104] = nowhere;
    Expect(R"(
    F Chip-Stack ref # 4 is equal to $ 0; F Chip-Stack ref # 4 is not equal to Field;
    F Field is equal to Chip-Stack ref # 4; F Chip-Stack ref # 4 is not named "x")");
  }
  Game.Bets[104] = 99;
  Expect("N Chip-Stack ref # 4 is equal to $ 0");
}

TEST_F(Conditions, AverageTheBankroll) {
  Game.BankrollHistoryCount = 3;
  Game.BankrollHistory = {0, 10, 20, 60};
  Game.RollCount[0] = 3;
  Game.BankrollSum = 90;
  Set({{BankrollIndex, 60, 20}});
  Expect(R"(
    O Bankroll ( 2 roll average ) is greater than $ 14;
    F Bankroll ( 3 roll average ) is not equal to bankroll average 3;
    F Bankroll ( 3 roll average ) is equal to bankroll average 3)");
}

TEST_F(Conditions, TellOfTheLastShooterOnceOneHasFinished) {
  Game.RollCount[0] = 0;
  const std::string line = "The # of rolls for the last shooter are equal to 2";
  Expect(line, "F");
  Roll(2, 2);
  Roll(3, 4);  // the first shooter sevens out
  Expect(line, "N");
  Roll(5, 6);
  Expect(line, "O");
}

}  // namespace
