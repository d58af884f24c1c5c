// Looking at the Events Log: its index, its lines, finding, and the scroll bar over it.
#include "stats/events_log_view.h"

#include <chrono>

#include "stats/events_log.h"
#include "support/table_fixture.h"

namespace {

using Lines = std::vector<std::string>;

class EventsLogView : public FolderTest {
 protected:
  void WriteLog(const std::string& bytes) const { folder_.Write(kLog, bytes); }

  /// Puts an index beside the log that passes for its own.
  void WriteIndex(const std::vector<int>& entries, const std::string& rest = "") const {
    std::string bytes;
    for (const int entry : entries)
      for (const int shift : {0, 8, 16, 24}) bytes += static_cast<char>((entry >> shift) & 0xFF);
    folder_.Write(kIndex, bytes + rest);
    fs::last_write_time(folder_ / kIndex, fs::last_write_time(folder_ / kLog));
  }

  static Lines All() {
    EnsureLogIndex();
    return ReadLogLines(1, LogLineCount());
  }

  static constexpr const char* kLog = "Events Log.txt";
  static constexpr const char* kIndex = "Events Log.ref";
};

TEST_F(EventsLogView, AnIndexThatIsNotTheLogsIsBuiltAnew) {
  WriteLog("one\r\ntwo\r\nthree\r\n");
  WriteIndex({1, 6, 11});
  const std::string right = folder_.Read(kIndex);
  const std::pair<std::vector<int>, const char*> wrong[] = {
      {{}, ""},        {{1, 6, 11}, "x"}, {{1, 6}, ""},  {{1, 6, 11, 18}, ""},
      {{1, 6, 9}, ""}, {{1, 6, -5}, ""},  {{1, 17}, ""}, {{1, 6, 11, 11, 6}, ""}};
  for (const auto& [entries, rest] : wrong) {
    WriteIndex(entries, rest);
    EnsureLogIndex();
    EXPECT_EQ(folder_.Read(kIndex), right) << entries.size();
    EXPECT_EQ(fs::last_write_time(folder_ / kIndex), fs::last_write_time(folder_ / kLog));
  }
  WriteIndex({1, 5, 11});
  EnsureLogIndex();
  EXPECT_NE(folder_.Read(kIndex), right) << "what passes as valid isn't read through";
  fs::last_write_time(folder_ / kLog, fs::last_write_time(folder_ / kLog) - std::chrono::hours(1));
  EnsureLogIndex();
  EXPECT_EQ(folder_.Read(kIndex), right);
}

TEST_F(EventsLogView, LinesEndEitherWayAndAreReadOneByOne) {
  EXPECT_EQ(All(), Lines());  // no log
  EXPECT_FALSE(fs::exists(folder_ / kIndex));
  const std::string longLine(kLongestLine + 700, 'x');
  WriteLog("caf\xE9\r\n\n\r\n  b \n" + longLine + "\r\nlast");
  const std::string cut(kLongestLine, 'x');
  EXPECT_EQ(All(), (Lines{"caf\u00E9", "", "", "  b ", cut, "last"}));
  EXPECT_EQ(ReadLogLines(4, 2), (Lines{"  b ", cut}));
  EXPECT_EQ(ReadLogLines(6, 100), Lines{"last"});
  for (const auto& [first, count] : {std::pair{0, 1}, {7, 1}, {1, 0}, {1, -1}})
    EXPECT_EQ(ReadLogLines(first, count), Lines()) << first;
  WriteLog("");
  EXPECT_EQ(All(), Lines());
  WriteLog("\n");
  EXPECT_EQ(All(), Lines{""});
}

TEST_F(EventsLogView, WhatCannotBeReadIsNoLog) {
  fs::create_directory(folder_ / kLog);
  EXPECT_EQ(All(), Lines());
  EXPECT_FALSE(FindInLog("x", true));
  EXPECT_NE(Game.LastErrorText.find("Rebuild Log Index"), std::string::npos);
  for (const std::string& path : {std::string("/dev/zero"), folder_.Write(kIndex, "kept")}) {
    Game.EventsLogFile = path;
    WriteLogLine("lost");
    EXPECT_NE(Game.LastErrorText.find("Write Log Line"), std::string::npos);
    EnsureLogIndex();
    EXPECT_NE(Game.LastErrorText.find("Rebuild Log Index"), std::string::npos);
  }
  EXPECT_EQ(folder_.Read(kIndex), "kept");
}

TEST_F(EventsLogView, FindingGoesRoundAndLooksAtTheTopLineLast) {
  WriteLog("Hit\r\nb \xC4gg\r\nhit\r\nd\r\nA HIT\r\nb\r\nh\r\nit\r\n");
  // The text, forward, from, and to; 0 when it isn't found.
  const std::tuple<const char*, bool, int, int> finds[] = {
      {"hit", true, 1, 3},  {"HIT", true, 3, 5},      {"hit", true, 5, 1},
      {"hit", false, 5, 3}, {"hit", false, 1, 5},     {"d", true, 4, 4},
      {"d", false, 4, 4},   {"\u00E4GG", true, 7, 2}, {"it", true, 5, 8},
      {"b", false, 1, 6},   {"", true, 1, 0},         {"h\r\nit", true, 1, 0},
      {"hit", true, 99, 1}, {"hit", false, -3, 5},    {"a hit and much more", true, 1, 0}};
  for (const auto& [text, forward, from, to] : finds) {
    Game.LogTopLine = from;
    EXPECT_EQ(FindInLog(text, forward), to != 0) << text;
    EXPECT_EQ(Game.LogTopLine, to != 0 ? to : from) << text << from;
  }
}

TEST_F(EventsLogView, LinesAreColouredByHowTheyBegin) {
  const std::tuple<std::string, LogLineLook, const char*> lines[] = {
      {" New game started", LogLineLook::NewGame, ""},
      {"New game", LogLineLook::Plain, ""},
      {" Roll #1,234:  11 (5.6) from RNG #1", LogLineLook::Roll, "11"},
      {"Roll #2:7", LogLineLook::Roll, "7"},
      {"   Roll #3:   ", LogLineLook::Roll, ""},
      {"A Roll #5:  7", LogLineLook::Plain, "7"}};
  for (const auto& [line, look, told] : lines) {
    EXPECT_EQ(LookOfLogLine(line), look) << line;
    const LogLineResult result = ResultInLogLine(line);
    EXPECT_EQ(line.substr(result.Start, result.Length), told) << line;
  }
}

TEST_F(EventsLogView, TheScrollBarIsScaledBeyondThirtyThousandLines) {
  // The top line, the lines, the bar's value, and the top line after the thumb went to that value.
  // clang-format off
  const int bars[][4] = {
      {1, 0, 1, 1}, {7, 5, 5, 5}, {30'000, 30'000, 30'000, 30'000}, {1, 30'001, 1, 1},
      {30'000, 30'001, 29'999, 30'000}, {30'001, 30'001, 30'000, 30'001},
      {500, 10'000'000, 2, 667}, {5'000'000, 10'000'000, 15'000, 5'000'000},
      {9'999'999, 10'000'000, 29'999, 9'999'667}, {10'000'000, 10'000'000, 30'000, 10'000'000},
      {2'000'000'000, 2'147'483'646, 27'940, 2'000'023'102}};
  // clang-format on
  for (const auto& [top, lines, value, dragged] : bars) {
    EXPECT_EQ(LogBarMaximum(lines), std::clamp(lines, 1, 30'000));
    EXPECT_EQ(LogBarValue(top, lines), value) << top << " of " << lines;
    EXPECT_EQ(TopLineAfterDrag(value, lines), dragged) << top;
  }
  EXPECT_EQ(TopLineAfterClick(1, 30'001, 1), 2);
  EXPECT_EQ(TopLineAfterClick(30'001, 30'001, -19), 29'982);
  EXPECT_EQ(TopLineAfterClick(5, 30'001, -19), 1);
  EXPECT_EQ(TopLineAfterClick(INT32_MAX - 1, INT32_MAX - 1, 19), INT32_MAX - 1);
}

TEST_F(EventsLogView, ALogMovesWithItsName) {
  const std::string from = Game.EventsLogFile;
  EXPECT_FALSE(MoveEventsLog(folder_ / "kept.txt")) << "there is no log";
  WriteLogLine("one");
  folder_.Write("kept.txt", "old");
  for (const char* place : {"nowhere/kept.txt", kIndex})
    EXPECT_FALSE(MoveEventsLog(folder_ / place)) << place;
  EXPECT_EQ(Game.EventsLogFile, from);
  EXPECT_THAT(Game.LastErrorText, testing::HasSubstr("Move Events Log"));
  EXPECT_TRUE(MoveEventsLog(folder_ / "kept.txt"));
  EXPECT_EQ(Game.EventsLogFile, folder_ / "kept.txt");
  EXPECT_FALSE(fs::exists(from));
  EXPECT_TRUE(MoveEventsLog(folder_ / "kept.txt"));
  WriteLogLine("two");
  EXPECT_EQ(All(), (Lines{"one", "two"}));
}

// --- A log of ten million lines ---

/// Memory of this process that is in use, in bytes; 0 where the system doesn't tell.
std::int64_t MemoryInUse() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t all = 0, resident = 0;
  statm >> all >> resident;
  return resident * 4096;
}

constexpr int kLinesInBlock = 10'000;

/// Every block has the same lines but for its last one.
std::string NumberLine(int number) {
  const int place = number % kLinesInBlock;
  return place == 0 ? "block " + std::to_string(number / kLinesInBlock)
                    : "line " + std::to_string(place);
}

TEST_F(EventsLogView, TenMillionLinesNeedNoMemory) {
  constexpr int kLines = 10'000'000;
  {
    std::ofstream log(folder_ / kLog, std::ios::binary);
    std::string block;
    for (int line = 1; line < kLinesInBlock; ++line) block += NumberLine(line) + "\r\n";
    for (int last = kLinesInBlock; last <= kLines; last += kLinesInBlock)
      log << block << NumberLine(last) << "\r\n";
  }
  const std::int64_t before = MemoryInUse();
  EnsureLogIndex();
  EXPECT_EQ(LogLineCount(), kLines);
  for (const bool rebuilt : {false, true}) {
    if (rebuilt) RebuildLogIndex();
    for (const int line : {1, 2, 4'999'999, kLines - 1, kLines}) {
      const Lines lines = ReadLogLines(line, 2);
      ASSERT_EQ(lines.size(), line == kLines ? 1U : 2U);
      EXPECT_EQ(lines[0], NumberLine(line));
      EXPECT_EQ(lines.back(), NumberLine(std::min(line + 1, kLines)));
    }
  }
  for (const auto& [from, forward, text, to] : {std::tuple{4, true, "BLOCK 20", 200'000},
                                                {9'999'999, true, "line 7", 7},
                                                {3, false, "block 989", 9'890'000}}) {
    Game.LogTopLine = from;
    EXPECT_TRUE(FindInLog(text, forward));
    EXPECT_EQ(Game.LogTopLine, to);
  }
  WriteLogLine("more");
  EXPECT_EQ(ReadLogLines(kLines, 9), (Lines{NumberLine(kLines), "more"}));
  EXPECT_LT(MemoryInUse() - before, 16'000'000);
}

}  // namespace
