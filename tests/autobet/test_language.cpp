#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "autobet/read_line.h"
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

/// A code of a list, round and round.
int Nth(const std::vector<int>& codes, std::size_t n) { return codes[n % codes.size()]; }

/// A line by its fields, in the order in which a test of words needs them.
ScriptLine Of(int kind, int code = 0, int of = 0, int to = 0, Currency amount = 0,
              const std::string& name = {}, int ofStack = 0, int toStack = 0) {
  ScriptLine line;
  std::tie(line.LineKind, line.LineCode, line.OfSubject, line.ToSubject, line.OfStackNum,
           line.ToStackNum) = std::tuple(kind, code, of, to, ofStack, toStack);
  line.LineAmount = amount;
  line.LineName = name;
  return line;
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
  const auto startsWith = [](std::span<const ListItem> list, const std::vector<int>& codes) {
    return std::ranges::equal(list.first(codes.size()), codes, {}, &ListItem::Code);
  };
  EXPECT_TRUE(startsWith(ConditionList(), {9999, 0, 1300, 1311, 1312, 1323, 0}));
  EXPECT_TRUE(startsWith(CompareList(), {1400, 1401, 1410, 0, 1600, 1601, 1020, 1120}));
  EXPECT_TRUE(startsWith(ActionList(), {10, 11, 12, 13, 14, 15, 16, 17, 18, 0, 20}));
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
  using Ids = std::pair<int, int>;
  const std::pair<int, Ids> targets[] = {
      {1000, {1, 83}},  {1001, {1, 6}},   {1002, {7, 12}},  {1003, {13, 18}},   {1004, {19, 24}},
      {1005, {25, 30}}, {1006, {31, 36}}, {1007, {32, 35}}, {1008, {31, 36}},   {1009, {37, 42}},
      {1, {1, 1}},      {83, {83, 83}},   {84, {0, -1}},    {1602, {100, 200}}, {1600, {0, -1}},
      {999, {0, -1}},   {1010, {0, -1}},  {0, {0, -1}}};
  for (const auto& [target, ids] : targets)
    EXPECT_EQ(Ids(IdsOfTarget(target).First, IdsOfTarget(target).Last), ids) << target;
  const std::pair<int, Ids> groups[] = {{1020, {100, 199}}, {1101, {1, 83}},  {1202, {1, 6}},
                                        {1003, {7, 12}},    {1104, {13, 18}}, {1205, {19, 24}},
                                        {1006, {25, 30}},   {1107, {31, 36}}, {1208, {37, 42}}};
  for (const auto& [subject, ids] : groups) {
    const BetGroup* group = FindBetGroup(subject);
    ASSERT_NE(group, nullptr) << subject;
    EXPECT_EQ(Ids(group->Ids.First, group->Ids.Last), ids) << subject;
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

  const std::set<int> choices[] = {{4, 5, 6, 8, 9, 10},
                                   {},
                                   {},
                                   {4},
                                   {5},
                                   {6},
                                   {},
                                   {8},
                                   {9},
                                   {10},
                                   {5, 6, 8, 9},
                                   {4, 5, 9, 10},
                                   {4, 6, 8, 10},
                                   {4, 5, 6},
                                   {8, 9, 10},
                                   {4, 10},
                                   {5, 9},
                                   {6, 8}};
  for (int choice = -9; choice < 60; ++choice) {
    for (int point = -1; point <= 12; ++point) {
      const bool known = choice >= 31 && choice <= 48;
      EXPECT_EQ(IsInNumberChoice(choice, point), known && choices[choice - 31].contains(point));
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
  const std::pair<ScriptLine, std::string> cases[] = {
      {Of(1), " When . . ."},
      {Of(3), "          and when . . ."},
      {Of(4), "          and while . . ."},
      {Of(5), "     or when . . ."},
      {Of(8), "     xor while . . ."},
      {Of(11), " then . . ."},
      {Of(12), "     else . . ."},
      {Of(13), " Do this . . ."},
      {Of(90, 0, 0, 0, 0, "Loop"), " Label \"Loop\""},
      {Of(99, 0, 0, 0, 0, "'  why"), " '  why"},
      {Of(20, 0, 1300), "On each roll"},
      {Of(20, 31, 1322), "A point is decided \"for\" or \"against\" any number"},
      {Of(20, 13, 1401, 0, 500, "", 50), "Bankroll ( 50 roll average ) is greater than $ 500"},
      {Of(20, 21, 1400, 1401, 0, "", 0, 20), "Bankroll is less than bankroll average 20"},
      {Of(20, 16, 1405, 0, kTwelveAndAHalf), "Simulated hours are not less than 12.5"},
      {Of(20, 11, 1311), "The # of rolls in the game are equal to 0"},
      {Of(20, 0, 1500, 0, kTrue, "Hot"), "Flag \"Hot\" is True"},
      {Of(20, 0, 1501), "Any flag is False"},
      {Of(20, 0, 1502, 0, kTrue), "All flags are True"},
      {Of(20, 24, 1504, 0, 3), "Total # of false flags number more than 3"},
      {Of(20, 27, 1600, 0, 0, "Bank;", 7), "Chip-Stack # 7 is not named \"Bank;\""},
      {Of(20, 1, PassLine), "Pass Line has won"},
      {Of(20, 1, PassLine, 0, 3), "Pass Line has won 3 times in a row"},
      {Of(20, 4, 1107), "All Place bets have lost more than 0 times in a row"},
      {Of(20, 18, 1805, 1600, 0, "", 0, 12),
       "Place (shooter's point) is not equal to Chip-Stack # 12"},
      {Of(20, 10, 2020, 0, 5), "Number 2,3,or 12 has not rolled in the last 5 rolls"},
      {Of(30, 10, 0, PassLine, 10), "Bet $ 10 on Pass Line"},
      {Of(30, 11, 1601, 1600, kTwelveAndAHalf, "", 4, 5),
       "Bet 12.5 % of Chip-Stack ref # 4 on Chip-Stack # 5"},
      {Of(30, 22, 1410, 1006, 50), "Add 50 % of the last available bankroll to all Place bets"},
      {Of(30, 36, 1401, Come, 0, "", 9),
       "Subtract the lowest of the last: average bankroll 9 from Come"},
      {Of(30, 79, 0, 0, 0, "Hello;"), "Show message: \"Hello\";"},
      {Of(30, 85, 1703), "Yes/No question: Value of total $ of current wagers"},
      {Of(30, 74, 0, 2001), "Reset rolls of all the numbers"},
      {Of(30, 117, 0, 0, 0, "Loop"), "Go to \"Loop\""},
      {Of(30, 77, 0, 0, kFalse, "Hot"), "Set flag \"Hot\" to False"},
      {Of(30, 109, RoundNearest, 1600, 5, "", 0, 3), "Round Chip-Stack # 3 to the nearest $ 5"},
      {Of(30, 89, 0, 0, 0, "Bank", 5), "Name Chip-Stack ref # 5 \"Bank\""},
      {Of(30, 110), "Set Auto-Handle Losing Bets to Manual"},
      {Of(30, 96, 1400, 0, 10), "ATM - deposit 10 % of bankroll"},
      {Of(30, 106, 0, 0, 99), "Seed RNG with # 99"},
      // What is no part of the language has no words.
      {Of(14), ""},
      {Of(30, 60), ""},
      {Of(20, 11, 1999, 0, 5), ""},
      {Of(20, 5, 1400, 0, 5), "Bankroll"},
      {Of(30, 10, 0, 99, 5), "Bet $ 5 on"}};
  for (const auto& [line, text] : cases) {
    const bool indented = line.LineKind == ConditionLine || line.LineKind == ActionLine;
    EXPECT_EQ(ComposeLine(line), std::string(indented ? 10 : 0, ' ') + text);
  }
}

TEST(Composition, TextsAreCutToTheirField) {
  const std::string letters(200, 'a');
  std::string accents;
  for (int i = 0; i < 200; ++i) accents += "\xC3\xA9";
  EXPECT_EQ(ComposeLine(Of(99, 0, 0, 0, 0, "'" + letters)), " '" + letters.substr(0, 126));
  EXPECT_EQ(ComposeLine(Of(99, 0, 0, 0, 0, "'" + accents)), " '" + accents.substr(0, 2 * 126));
}

TEST(Composition, LoggingNamesTheSourceOfARun) {
  const std::pair<ScriptLine, const char*> cases[] = {
      {Of(30, 13, 1600, PassLine, 0, "", 5), "Chip-Stack # 5"},
      {Of(30, 58, 1403, PassLine), "lowest bankroll"},
      {Of(30, 12, 1403, PassLine), ""},
      {Of(30, 83, 1403, PassLine, 0, "kept"), "kept"}};
  for (auto [line, name] : cases) {
    LogLine(line);
    EXPECT_EQ(line.LineName, name);
  }
  ScriptLine input = Of(30, GetInput, 0, Place6);
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
      ScriptLine line = Of(ConditionLine, op, subject);
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
      ScriptLine line = Of(ActionLine, form.Code, Nth(values, n), Nth(targets, n));
      if (form.StackNum || ShowsStackNum(line.OfSubject)) line.OfStackNum = 3;
      if (ShowsStackNum(line.ToSubject)) line.ToStackNum = 100;
      if (form.Name != NameUse::None) line.LineName = n % 2 == 0 ? "say \"hi\";" : "";
      if (form.Truth) line.LineAmount = kTrue;
      if (form.Amount) line.LineAmount = -kTwelveAndAHalf;
      ExpectReadBack(line);
    }
  }
}

TEST(Composition, WhatItCannotWriteIsNoLine) {
  for (const char* text :
       {"", "Pass Line", "Bet $ 5", "Bet 5 on Pass Line", "When", "Return 5", "Flag \"a\" are True",
        "Bankroll is equal to $ x", "Label Loop", "Any 7 has rolled 2 rolls",
        "bankroll is equal to $ 5", "Pass Line has won 0 times in a row",
        "Bet $ 1,000 on Pass Line", "Bet $ 05 on Pass Line", "Bet  $ 5 on Pass Line",
        "Chip-Stack # 1 is named \"Bank\";"}) {
    EXPECT_EQ(ReadLineText(text), std::nullopt) << text;
  }
  const ReadText read = ReadScriptText("When . . .\r\n\n  On each rol \nthen . . .");
  EXPECT_EQ(read.NotUnderstood, "On each rol");
  EXPECT_EQ(read.Row, 3);
  EXPECT_TRUE(read.Lines.empty());
}

TEST(Composed, ARoundOfAnUnknownWayReadsUpAsItIsDone) {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = RoundBet;
  line.OfSubject = 77;
  line.ToSubject = Field;
  line.LineAmount = 5;
  EXPECT_NE(ComposeLine(line).find("Round Field up to a multiple of $ 5"), std::string::npos);
}

}  // namespace
