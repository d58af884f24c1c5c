#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "stats/log_files.h"
#include "support/table_fixture.h"

namespace {

class EventsLog : public FolderTest {
 protected:
  std::vector<int> Index() const {
    const std::string bytes = folder_.Read("Events Log.ref");
    std::vector<int> positions;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) {
      const auto byte = [&](int i) { return int{static_cast<unsigned char>(bytes[at + i])}; };
      positions.push_back(byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24);
    }
    return positions;
  }
};

/// A run is under way.
class HyperDrive {
 public:
  HyperDrive() { Game.HyperDriveOn = Game.RollInProgress = true; }
  ~HyperDrive() { Game.HyperDriveOn = Game.RollInProgress = false; }
  HyperDrive(const HyperDrive&) = delete;
  HyperDrive& operator=(const HyperDrive&) = delete;
};

TEST_F(EventsLog, IndexHoldsTheFirstByteOfEachLine) {
  EXPECT_FALSE(EventsLogExists());
  WriteLogLine("New game started");
  WriteLogLine("");
  WriteLogLine(std::string(300, 'x'));
  WriteLogLine(" Roll #1:  7 (3.4)");
  EXPECT_TRUE(EventsLogExists());
  EXPECT_EQ(folder_.Read("Events Log.txt"),
            "New game started\r\n\r\n" + std::string(300, 'x') + "\r\n Roll #1:  7 (3.4)\r\n");
  EXPECT_EQ(Index(), (std::vector{1, 19, 21, 323}));
}

TEST_F(EventsLog, BrokenLastRecordIsWrittenOver) {
  WriteLogLine("one");
  std::ofstream(EventsLogIndexPath(), std::ios::binary | std::ios::app) << "ab";
  WriteLogLine("two");
  EXPECT_EQ(Index(), (std::vector{1, 6}));
}

TEST_F(EventsLog, UnderHyperDriveLinesWaitAndKeepTheirOrder) {
  Game.HyperDriveOn = true;
  WriteLogLine("of a script between two runs");
  EXPECT_TRUE(fs::exists(Game.EventsLogFile)) << "no roll is under way";
  ClearEventsLog();
  const HyperDrive run;
  Game.KeepLatestRollOnTop = true;
  for (const char* line : {" Roll #1:  7 (3.4)", "one", " Roll #2:  4 (2.2)", "two"})
    WriteLogLine(line);
  EXPECT_FALSE(fs::exists(Game.EventsLogFile));
  FlushEventsLog();
  const std::string lines = " Roll #1:  7 (3.4)\r\none\r\n Roll #2:  4 (2.2)\r\ntwo\r\n";
  EXPECT_EQ(folder_.Read("Events Log.txt"), lines);
  EXPECT_EQ(std::pair(Index(), Game.LogTopLine), std::pair((std::vector{1, 21, 26, 46}), 3));
  // Whoever looks at the log finds it written, and memory has its bounds.
  WriteLogLine("three");
  EXPECT_EQ(LogLineCount(), 5);
  ClearEventsLog();
  WriteLogLine("four");
  EXPECT_TRUE(EventsLogExists());
  WriteLogLine(std::string(1'100'000, 'x'));
  EXPECT_EQ(folder_.Read("Events Log.txt").size(), 1'100'008U);
  WriteLogLine("five");
  ASSERT_TRUE(MoveEventsLog(Game.DataPath + "moved.txt"));
  EXPECT_EQ(Index().size(), 3U);
  EXPECT_EQ(folder_.Read("moved.txt").substr(1'100'008), "five\r\n");
}

TEST_F(EventsLog, ALineIsOneLineInTheFilesCodePage) {
  const HyperDrive run;
  std::string written;
  for (std::size_t place = 0; place < 20; ++place)
    for (const auto& [strange, ansi] : {std::pair{"\n", " "},
                                        {"\r", " "},
                                        {"\u00FC", "\xFC"},
                                        {"\u20AC", "\x80"},
                                        {"\u4E00", "?"}}) {
      const std::string same(place, 'x');
      WriteLogLine(same, strange, same);
      written += same + ansi + same + "\r\n";
    }
  FlushEventsLog();
  EXPECT_EQ(folder_.Read("Events Log.txt"), written);
}

TEST_F(EventsLog, TheIndexOfAnotherLogIsNotGoneOnWith) {
  for (const char* line : {"one", "two", "three"}) WriteLogLine(line);
  Game.EventsLogFile = Game.DataPath + "other.txt";
  std::ofstream(Game.EventsLogFile, std::ios::binary) << "open line";
  WriteLogLine("next");
  EXPECT_EQ(folder_.Read("other.txt"), "open line\r\nnext\r\n");
  EXPECT_EQ(Index(), (std::vector{1, 12}));
  fs::remove(Game.EventsLogFile);
  WriteLogLine("new");
  EXPECT_EQ(Index(), std::vector{1});
}

TEST_F(EventsLog, LinesBeyondTheReachOfTheIndexAreWrittenAllTheSame) {
  WriteLogLine("one");
  fs::resize_file(Game.EventsLogFile, INT32_MAX - 7U);  // a hole in the file
  std::ofstream(EventsLogIndexPath(), std::ios::binary).write("\1\0\0\0\6\0\0\0", 8);
  fs::last_write_time(EventsLogIndexPath(), fs::last_write_time(Game.EventsLogFile));
  WriteLogLine("two");
  EXPECT_EQ(Index(), (std::vector{1, 6, INT32_MAX - 4}));
  WriteLogLine("three");
  EXPECT_NE(Game.LastErrorText.find("too long"), std::string::npos);
  Game.LastErrorText.clear();
  WriteLogLine("four");
  EXPECT_EQ(Game.LastErrorText, "") << "it is said once";
  EXPECT_EQ(Index().size(), 3U);
  EXPECT_EQ(fs::file_size(Game.EventsLogFile), INT32_MAX - 7U + 2 + 5 + 7 + 6);
  EXPECT_EQ(ReadLogLines(3, 9), std::vector<std::string>{"two"});

  fs::resize_file(Game.EventsLogFile, 0);
  fs::resize_file(Game.EventsLogFile, 20'000'000'000);  // without a line end
  EXPECT_EQ(FollowEventsLog(), 1);
  EXPECT_EQ(ReadLogLines(1, 9), std::vector{std::string(kLongestLine, '\0')});
  EXPECT_FALSE(FindInLog("x", true));
  WriteLogLine("more");
  EXPECT_EQ(FollowEventsLog(), 1);
}

}  // namespace
