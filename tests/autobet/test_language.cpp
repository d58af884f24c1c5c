#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/script_reader.h"
#include "support/table_fixture.h"

void PrintTo(const ScriptLine& line, std::ostream* out) {
  *out << line.LineText << " [" << line.LineKind << ' ' << line.LineCode << ' ' << line.LineName
       << ' ' << line.OfSubject << ' ' << line.OfStackNum << ' ' << line.ToSubject << ' '
       << line.ToStackNum << ' ' << line.LineAmount << ']';
}

namespace {

const Currency kTwelveAndAHalf = Currency::FromRaw(125'000);

/// The codes of a list without its separators.
std::vector<int> Codes(std::span<const ListItem> list) {
  std::vector<int> codes;
  for (const ListItem& item : list) {
    if (item.Text != kSeparatorText) codes.push_back(item.Code);
  }
  return codes;
}

std::vector<int> FirstCodes(std::span<const ListItem> list, std::size_t count) {
  std::vector<int> codes;
  for (const ListItem& item : list.first(count)) codes.push_back(item.Code);
  return codes;
}

/// A code of a list, round and round.
int Nth(const std::vector<int>& codes, std::size_t n) { return codes[n % codes.size()]; }

ScriptLine Condition(int subject, int op = 0, Currency amount = 0) {
  ScriptLine line;
  line.LineKind = ConditionLine;
  line.OfSubject = subject;
  line.LineCode = op;
  line.LineAmount = amount;
  return line;
}

ScriptLine Action(int code, int target = 0, int source = 0, Currency amount = 0) {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = code;
  line.ToSubject = target;
  line.OfSubject = source;
  line.LineAmount = amount;
  return line;
}

ScriptLine Named(ScriptLine line, const std::string& name) {
  line.LineName = name;
  return line;
}

ScriptLine Stacks(ScriptLine line, int ofStack, int toStack = 0) {
  line.OfStackNum = ofStack;
  line.ToStackNum = toStack;
  return line;
}

ScriptLine Against(ScriptLine line, int second) {
  line.ToSubject = second;
  return line;
}

ScriptLine OfKind(int kind, const std::string& name = {}) {
  ScriptLine line;
  line.LineKind = kind;
  return Named(line, name);
}

void ExpectReadBack(ScriptLine line) {
  LogLine(line);
  ASSERT_EQ(ReadLine(line.LineText), line);
}

// --- The tables ---

TEST(Language, ListsHoldTheirCodesOnceInOrder) {
  const std::pair<std::span<const ListItem>, std::size_t> lists[] = {
      {kStartConditionList, 8},
      {kStartActionList, 3},
      {ConditionList(), 35 + 27 + 5 + 83 + 88},
      {CompareList(), 5 + 27 + 5 + 83},
      {SourceList(), 31 + 5 + 83},
      {TargetList(TargetUse::Bets), 13 + 5 + 83},
      {TargetList(TargetUse::BetsOnly), 10 + 5 + 83},
      {TargetList(TargetUse::Events), 89},
      {TargetList(TargetUse::WinningChoice), 6},
      {TargetList(TargetUse::LosingChoice), 6},
      {TargetList(TargetUse::None), 0},
      {ActionList(), 93}};
  for (const auto& [list, size] : lists) {
    const std::vector<int> codes = Codes(list);
    EXPECT_EQ(codes.size(), size);
    EXPECT_EQ(std::set<int>(codes.begin(), codes.end()).size(), size);
    for (std::size_t i = 1; i < list.size(); ++i) {
      EXPECT_FALSE(list[i].Text == kSeparatorText && list[i - 1].Text == kSeparatorText);
    }
    if (size > 0) {
      EXPECT_NE(list.back().Text, kSeparatorText);
    }
  }
  EXPECT_EQ(FirstCodes(ConditionList(), 7), (std::vector{9999, 0, 1300, 1311, 1312, 1323, 0}));
  EXPECT_EQ(FirstCodes(CompareList(), 8),
            (std::vector{1400, 1401, 1410, 0, 1600, 1601, 1020, 1120}));
  EXPECT_EQ(FirstCodes(ActionList(), 11), (std::vector{10, 11, 12, 13, 14, 15, 16, 17, 18, 0, 20}));
}

TEST(Language, SubjectsOfferTheirOperators) {
  using Ops = std::vector<int>;
  const Ops values = {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22};
  const Ops streaks = {1, 2, 60, 61, 3, 4, 62, 63};
  const Ops have = {1, 2, 3, 4};
  const Ops numbers = {31, 34, 35, 36, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48};
  const auto join = [](Ops first, const Ops& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
  };
  const std::pair<std::vector<int>, Ops> cases[] = {
      {{9999, 1300, 1301, 1302, 1307, 1308, 1309, 1310, 1313, 1316, 1500, 1501, 1502, 0, 84, 2001,
        2090, 1801},
       {}},
      {{1303, 1304, 1305, 1306, 1322}, numbers},
      {{1400, 1401, 1410, 1405, 1311, 1312, 1323, 1314, 1315, 1324, 1317, 1318, 1325}, values},
      {{1503, 1504}, {23, 24, 25}},
      {{1600, 1601, 1020}, join(values, {26, 27})},
      {{1120}, join(join(have, values), {26, 27})},
      {{1220, 1201, 1208}, join(join(have, values), {23, 24, 25})},
      {{1101, 1108}, join(have, values)},
      {{1, 83, 1001, 1008, 1800, 1803, 1806}, join(streaks, values)},
      {{2002, 2089}, {5, 6, 7, 8, 9, 10}}};
  for (const auto& [subjects, operators] : cases) {
    for (const int subject : subjects) {
      EXPECT_EQ(Codes(OperatorList(subject)), operators) << subject;
    }
  }
  EXPECT_EQ(TextOf(OperatorList(1311), EqualTo), "are equal to ");
  EXPECT_EQ(TextOf(OperatorList(1120), EqualTo), "are equal to $");
}

TEST(Language, CodesStandForTheirBetsAndNumbers) {
  const std::pair<int, IdRange> targets[] = {
      {1000, {1, 83}},  {1001, {1, 6}},   {1002, {7, 12}},  {1003, {13, 18}},   {1004, {19, 24}},
      {1005, {25, 30}}, {1006, {31, 36}}, {1007, {32, 35}}, {1008, {31, 36}},   {1009, {37, 42}},
      {1, {1, 1}},      {83, {83, 83}},   {84, {0, -1}},    {1602, {100, 200}}, {1600, {0, -1}},
      {999, {0, -1}},   {1010, {0, -1}},  {0, {0, -1}}};
  for (const auto& [target, ids] : targets) {
    EXPECT_EQ(IdsOfTarget(target).First, ids.First) << target;
    EXPECT_EQ(IdsOfTarget(target).Last, ids.Last) << target;
  }
  const std::pair<int, IdRange> groups[] = {{1020, {100, 199}}, {1101, {1, 83}},  {1202, {1, 6}},
                                            {1003, {7, 12}},    {1104, {13, 18}}, {1205, {19, 24}},
                                            {1006, {25, 30}},   {1107, {31, 36}}, {1208, {37, 42}}};
  for (const auto& [subject, ids] : groups) {
    const BetGroup* group = FindBetGroup(subject);
    ASSERT_NE(group, nullptr) << subject;
    EXPECT_EQ(group->Ids.First, ids.First) << subject;
    EXPECT_EQ(group->Ids.Last, ids.Last) << subject;
  }
  for (const int other : {0, 1000, 1009, 1109, 1300}) EXPECT_EQ(FindBetGroup(other), nullptr);
  const std::pair<int, int> families[] = {
      {1800, 1}, {1803, 19}, {1804, 25}, {1805, 31}, {1806, 37}};
  BetFamily family{};
  for (const auto& [subject, first] : families) {
    ASSERT_TRUE(FindPointFamily(subject, family));
    EXPECT_EQ(BetOnNumber(family, 4), first);
  }
  EXPECT_FALSE(FindPointFamily(1801, family));

  const std::pair<int, std::set<int>> choices[] = {{31, {4, 5, 6, 8, 9, 10}},
                                                   {32, {}},
                                                   {34, {4}},
                                                   {37, {}},
                                                   {40, {10}},
                                                   {41, {5, 6, 8, 9}},
                                                   {42, {4, 5, 9, 10}},
                                                   {43, {4, 6, 8, 10}},
                                                   {44, {4, 5, 6}},
                                                   {45, {8, 9, 10}},
                                                   {46, {4, 10}},
                                                   {47, {5, 9}},
                                                   {48, {6, 8}},
                                                   {49, {}},
                                                   {0, {}},
                                                   {-9, {}}};
  for (const auto& [choice, points] : choices) {
    for (int point = -1; point <= 12; ++point) {
      EXPECT_EQ(IsInNumberChoice(choice, point), points.contains(point)) << choice << ' ' << point;
    }
  }
}

TEST(Language, EventsAndGroupsReadAsTold) {
  const std::pair<int, std::pair<const char*, const char*>> events[] = {
      {2002, {"Number 2 (1-1)", "number 2 (1-1)"}},
      {2003, {"Number 3 (1-2) or (2-1)", "number 3 (1-2) and (2-1)"}},
      {2013, {"Hard 4 (2-2)", "hard 4 (2-2)"}},
      {2034, {"Number 6 ((5-1)", "number 6 ((5-1)"}},
      {2007, {"Any 7", "any 7"}},
      {2021, {"Number 2,3,4,9,10,11,or 12", "number group 2,3,4,9,10,11,12"}},
      {2020, {"Number 2,3,or 12", "number group 2,3,12"}},
      {2076, {"Number 7 or 11", "number 7 and 11"}},
      {2089, {"Die 2, face 6", "die 2, face 6"}}};
  for (const auto& [code, texts] : events) {
    EXPECT_EQ(TextOf(ConditionList(), code), texts.first);
    EXPECT_EQ(TextOf(TargetList(TargetUse::Events), code), texts.second);
  }
  EXPECT_EQ(TextOf(ConditionList(), 1020), "Any Chip-Stack");
  EXPECT_EQ(TextOf(ConditionList(), 1104), "All Don't Come Odds bets");
  EXPECT_EQ(TextOf(CompareList(), 1201), "total bets");
  EXPECT_EQ(TextOf(TargetList(TargetUse::LosingChoice), 0), "Manual");
  EXPECT_EQ(TextOf(ConditionList(), 0), "");
}

// --- Composition ---

TEST(Composition, LinesReadAsTheyAreKnown) {
  const std::string ten(10, ' ');
  const std::pair<ScriptLine, std::string> cases[] = {
      {OfKind(1), " When . . ."},
      {OfKind(2), " While . . ."},
      {OfKind(3), "          and when . . ."},
      {OfKind(4), "          and while . . ."},
      {OfKind(5), "     or when . . ."},
      {OfKind(8), "     xor while . . ."},
      {OfKind(11), " then . . ."},
      {OfKind(12), "     else . . ."},
      {OfKind(13), " Do this . . ."},
      {OfKind(90, "Loop"), " Label \"Loop\""},
      {OfKind(99, "'  why"), " '  why"},
      {Condition(1300), ten + "On each roll"},
      {Condition(1303, 41), ten + "A point is established on the number 5, 6, 8, or 9"},
      {Condition(1322, 31), ten + "A point is decided \"for\" or \"against\" any number"},
      {Condition(1400, 13, 500), ten + "Bankroll is greater than $ 500"},
      {Stacks(Condition(1401, 13, 500), 50),
       ten + "Bankroll ( 50 roll average ) is greater than $ 500"},
      {Stacks(Against(Condition(1400, 21), 1401), 0, 20),
       ten + "Bankroll is less than bankroll average 20"},
      {Condition(1405, 16, kTwelveAndAHalf), ten + "Simulated hours are not less than 12.5"},
      {Condition(1311, 11, 0), ten + "The # of rolls in the game are equal to 0"},
      {Named(Condition(1500, 0, kTrue), "Hot"), ten + "Flag \"Hot\" is True"},
      {Condition(1501, 0, kFalse), ten + "Any flag is False"},
      {Condition(1502, 0, kTrue), ten + "All flags are True"},
      {Condition(1504, 24, 3), ten + "Total # of false flags number more than 3"},
      {Named(Stacks(Condition(1600, 27), 7), "Bank"), ten + "Chip-Stack # 7 is not named \"Bank\""},
      {Named(Condition(1120, 26), "x"), ten + "All Chip-Stacks are named \"x\""},
      {Condition(PassLine, 1, 0), ten + "Pass Line has won"},
      {Condition(PassLine, 1, 3), ten + "Pass Line has won 3 times in a row"},
      {Condition(1107, 4, 0), ten + "All Place bets have lost more than 0 times in a row"},
      {Stacks(Against(Condition(1805, 18), 1600), 0, 12),
       ten + "Place (shooter's point) is not equal to Chip-Stack # 12"},
      {Condition(2007, 5, 0), ten + "Any 7 has rolled"},
      {Condition(2020, 10, 5), ten + "Number 2,3,or 12 has not rolled in the last 5 rolls"},
      {Action(10, PassLine, 0, 10), ten + "Bet $ 10 on Pass Line"},
      {Stacks(Action(11, 1600, 1601, kTwelveAndAHalf), 4, 5),
       ten + "Bet 12.5 % of Chip-Stack ref # 4 on Chip-Stack # 5"},
      {Action(22, 1006, 1410, 50),
       ten + "Add 50 % of the last available bankroll to all Place bets"},
      {Stacks(Action(36, Come, 1401), 9),
       ten + "Subtract the lowest of the last: average bankroll 9 from Come"},
      {Action(40, 1805, 0, 2), ten + "Multiply by 2 on Place (shooter's point)"},
      {Action(50, InsidePlaceBets, 0, 2), ten + "Divide by $ 2 on all inside Place bets"},
      {Named(Action(79), "Hello;"), ten + "Show message: \"Hello\";"},
      {Action(85, 0, 1703), ten + "Yes/No question: Value of total $ of current wagers"},
      {Action(72, 1000), ten + "Call ON all bets"},
      {Action(74, 2001), ten + "Reset rolls of all the numbers"},
      {Named(Action(117), "Loop"), ten + "Go to \"Loop\""},
      {Named(Action(77, 0, 0, kFalse), "Hot"), ten + "Set flag \"Hot\" to False"},
      {Action(109, Place6, RoundDown, 6), ten + "Round Place 6 down to a multiple of $ 6"},
      {Stacks(Action(109, 1600, RoundNearest, 5), 0, 3),
       ten + "Round Chip-Stack # 3 to the nearest $ 5"},
      {Named(Stacks(Action(89), 5), "Bank"), ten + "Name Chip-Stack ref # 5 \"Bank\""},
      {Action(81), ten + "Invoke \"Show Steps\""},
      {Action(90, 2), ten + "Set Auto-Handle Winning Bets to Same Bet - Take Winnings"},
      {Action(110, 0), ten + "Set Auto-Handle Losing Bets to Manual"},
      {Action(91, 0, 0, kTrue), ten + "Set Auto-Take Full Odds to True"},
      {Action(96, 0, 1400, 10), ten + "ATM - deposit 10 % of bankroll"},
      {Action(104, 0, 1300), ten + "Select RNG # as value of dice total"},
      {Action(106, 0, 0, 99), ten + "Seed RNG with # 99"},
      {Named(Action(100), "Rolls"), ten + "Output to file. Message: \"Rolls\""}};
  for (const auto& [line, text] : cases) {
    EXPECT_EQ(ComposeLine(line), text);
    ExpectReadBack(line);
  }
}

TEST(Composition, WhatIsNoPartOfTheLanguageHasNoWords) {
  EXPECT_EQ(ComposeLine(OfKind(14)), "");
  EXPECT_EQ(ComposeLine(Action(60)), std::string(10, ' '));
  EXPECT_EQ(ComposeLine(Condition(1999, 11, 5)), std::string(10, ' '));
  EXPECT_EQ(ComposeLine(Condition(1400, 5, 5)), std::string(10, ' ') + "Bankroll");
  EXPECT_EQ(ComposeLine(Action(10, 99, 0, 5)), std::string(10, ' ') + "Bet $ 5 on");
}

TEST(Composition, TextsAreCutToTheirField) {
  const std::string letters(200, 'a');
  std::string accents;
  for (int i = 0; i < 200; ++i) accents += "\xC3\xA9";
  EXPECT_EQ(ComposeLine(OfKind(99, "'" + letters)), " '" + letters.substr(0, 126));
  EXPECT_EQ(ComposeLine(OfKind(99, "'" + accents)), " '" + accents.substr(0, 2 * 126));
}

TEST(Composition, LoggingNamesTheSourceOfARun) {
  const std::pair<ScriptLine, const char*> cases[] = {
      {Stacks(Action(13, PassLine, 1600), 5), "Chip-Stack # 5"},
      {Action(58, PassLine, 1403), "lowest bankroll"},
      {Action(12, PassLine, 1403), ""},
      {Named(Action(83, PassLine, 1403), "kept"), "kept"}};
  for (auto [line, name] : cases) {
    LogLine(line);
    EXPECT_EQ(line.LineName, name);
  }
  ScriptLine input = Action(GetInput, Place6);
  LogLine(input);
  EXPECT_EQ(input.LineText.substr(34), "Place 6");  // what its prompt shows
}

// --- Reading back ---

TEST(Composition, EveryConditionReadsBack) {
  const std::vector<int> seconds = Codes(CompareList());
  std::size_t second = 0;
  for (const int subject : Codes(ConditionList())) {
    const ConditionForm form = FormOfCondition(subject);
    std::vector<int> operators = Codes(OperatorList(subject));
    if (operators.empty()) operators = {0};
    for (const int op : operators) {
      ScriptLine line = Condition(subject, op);
      if (ShowsStackNum(subject)) line.OfStackNum = 42;
      if (form.FlagName || OperatorComparesNames(op)) line.LineName = "a \"b\" is True;";
      if (OperatorComparesSubjects(op)) {
        line.ToSubject = Nth(seconds, second++);
        if (ShowsStackNum(line.ToSubject)) line.ToStackNum = 7;
      }
      ExpectReadBack(line);
      const bool number =
          form.Amount && !OperatorComparesNames(op) && !OperatorComparesSubjects(op);
      line.LineAmount = number ? kTwelveAndAHalf : Currency(form.Truth ? kTrue : kFalse);
      ExpectReadBack(line);
    }
  }
}

TEST(Composition, EveryActionReadsBack) {
  const std::vector<int> sources = Codes(SourceList());
  for (const ActionForm& form : kActionForms) {
    std::vector<int> targets = Codes(TargetList(form.To));
    if (targets.empty()) targets = {0};
    std::vector<int> values = form.Code == RoundBet ? Codes(kRoundingWays) : sources;
    if (!form.Source) values = {0};
    for (std::size_t n = 0; n < std::max(targets.size(), values.size()); ++n) {
      ScriptLine line = Action(form.Code, Nth(targets, n), Nth(values, n));
      if (form.StackNum || ShowsStackNum(line.OfSubject)) line.OfStackNum = 3;
      if (ShowsStackNum(line.ToSubject)) line.ToStackNum = 100;
      if (form.Name != NameUse::None) line.LineName = n % 2 == 0 ? "say \"hi\";" : "";
      if (form.Truth) line.LineAmount = kTrue;
      if (form.Amount) line.LineAmount = -kTwelveAndAHalf;
      ExpectReadBack(line);
    }
  }
}

TEST(ScriptReader, RefusesWhatIsNoLine) {
  for (const char* text : {"", "Pass Line", "Bet $ 5", "Bet 5 on Pass Line", "When", "Return 5",
                           "Flag \"a\" are True", "Bankroll is equal to $ x", "Label Loop",
                           "Any 7 has rolled 2 rolls", "bankroll is equal to $ 5"}) {
    EXPECT_THROW(ReadLine(text), std::runtime_error) << text;
  }
}

class LoadedScript : public TableTest {};

TEST_F(LoadedScript, StandsInTheGameWithItsNames) {
  LoadScript(R"(
      # passed over
      ' kept
      When . . .
        Flag "Hot" is True
      then . . .
        Set flag "Cold" to True
        Go to "End"
      Label "End"
  )");
  ASSERT_EQ(Game.ScrCount, 7);
  EXPECT_EQ(Line(1).LineKind, RemarkLine);
  EXPECT_EQ(Line(3).LineText, "          Flag \"Hot\" is True");
  EXPECT_EQ(Game.ScriptLabels, std::vector<std::string>{"End"});
  ASSERT_EQ(Game.Flags.size(), 2U);
  EXPECT_EQ(Game.Flags[1].FlagName, "Cold");
  LoadScript("Do this . . .\nReturn");
  EXPECT_EQ(Game.ScrCount, 2);
  EXPECT_TRUE(Game.Flags.empty());
}

}  // namespace
