#include "autobet/compose.h"
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

// --- The tables ---

TEST(Language, ListsHoldTheirCodesOnceInOrder) {
  const std::pair<std::span<const ListItem>, std::size_t> lists[] = {
      // clang-format off
      {ConditionList(), 35 + 27 + 5 + 83 + 88}, {CompareList(), 5 + 27 + 5 + 83},
      {SourceList(), 31 + 5 + 83}, {TargetList(TargetUse::Bets), 13 + 5 + 83},
      {TargetList(TargetUse::BetsOnly), 98}, {TargetList(TargetUse::Events), 89},
      {TargetList(TargetUse::WinningChoice), 6}, {TargetList(TargetUse::LosingChoice), 6},
      {TargetList(TargetUse::None), 0}, {ActionList(), 93}};
  // clang-format on
  for (const auto& [list, size] : lists) {
    const std::vector<int> codes = CodesOf(list);
    EXPECT_EQ(codes.size(), size);
    EXPECT_EQ(std::set<int>(codes.begin(), codes.end()).size(), size);
    for (std::size_t i = 1; i < list.size(); ++i)
      EXPECT_FALSE(list[i].Text == kSeparatorText && list[i - 1].Text == kSeparatorText);
  }
}

TEST(Language, EventsAndGroupsReadAsTold) {
  const std::tuple<int, const char*, const char*> events[] = {
      {2003, "Number 3 (1-2) or (2-1)", "number 3 (1-2) and (2-1)"},
      {2013, "Hard 4 (2-2)", "hard 4 (2-2)"},
      {2034, "Number 6 ((5-1)", "number 6 ((5-1)"},
      {2020, "Number 2,3,or 12", "number group 2,3,12"}};
  for (const auto& [code, condition, action] : events) {
    EXPECT_EQ(TextOf(ConditionList(), code), condition);
    EXPECT_EQ(TextOf(TargetList(TargetUse::Events), code), action);
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

TEST(Composition, WhatItCannotWriteIsNoLine) {
  for (const char* text :
       {"", "Pass Line", "Bet $ 5", "Bet 5 on Pass Line", "When", "Return 5", "Flag \"a\" are True",
        "Bankroll is equal to $ x", "Label Loop", "Any 7 has rolled 2 rolls",
        "bankroll is equal to $ 5", "Pass Line has won 0 times in a row",
        "Bet $ 1,000 on Pass Line", "Bet $ 05 on Pass Line", "Bet  $ 5 on Pass Line",
        "Chip-Stack # 1 is named \"Bank\";"})
    EXPECT_EQ(ReadLineText(text), std::nullopt) << text;
  const ReadText read = ReadScriptText("When . . .\r\n\n  On each rol \nthen . . .");
  EXPECT_EQ(std::tuple(read.NotUnderstood, read.Row), std::tuple("On each rol", 3));
  EXPECT_TRUE(read.Lines.empty());
}

}  // namespace
