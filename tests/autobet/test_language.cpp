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
      {Of(5), "     or when . . ."},
      {Of(11), " then . . ."},
      {Of(12), "     else . . ."},
      {Of(13), " Do this . . ."},
      {Of(90, 0, 0, 0, 0, "Loop"), " Label \"Loop\""},
      {Of(99, 0, 0, 0, 0, "'  why"), " '  why"},
      {Of(20, 16, 1405, 0, kTwelveAndAHalf), "Simulated hours are not less than 12.5"},
      {Of(20, 11, 1311), "The # of rolls in the game are equal to 0"},
      {Of(20, 1, PassLine), "Pass Line has won"},
      {Of(30, 79, 0, 0, 0, "Hello;"), "Show message: \"Hello\";"},
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
