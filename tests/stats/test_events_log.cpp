#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "rules/defaults.h"
#include "stats/events_log.h"

namespace {

namespace fs = std::filesystem;

class EventsLog : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::path(::testing::TempDir()) / "kelvanor_events_log";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    Game.DataPath = folder_.string() + "/";
    LayDownDefaults();
  }
  void TearDown() override {
    fs::remove_all(folder_);
    Game.DataPath.clear();
    LayDownDefaults();
  }

  static std::string Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  static std::vector<int> Index() {
    const std::string bytes = Bytes(EventsLogIndexPath());
    std::vector<int> positions;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) {
      const auto byte = [&](std::size_t place) {
        return int{static_cast<unsigned char>(bytes[at + place])};
      };
      positions.push_back(byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24);
    }
    return positions;
  }

  fs::path folder_;
};

TEST_F(EventsLog, IndexHoldsTheFirstByteOfEachLine) {
  EXPECT_FALSE(EventsLogExists());
  WriteLogLine("New game started");
  WriteLogLine("");
  WriteLogLine(std::string(300, 'x'));
  WriteLogLine(" Roll #1:  7 (3.4)");
  EXPECT_TRUE(EventsLogExists());
  EXPECT_EQ(Bytes(Game.EventsLogFile),
            "New game started\r\n\r\n" + std::string(300, 'x') + "\r\n Roll #1:  7 (3.4)\r\n");
  EXPECT_EQ(Index(), (std::vector{1, 19, 21, 323}));
}

TEST_F(EventsLog, LatestRollGoesToTheTopWhenWanted) {
  WriteLogLine(" Roll #1:  4 (1.3)");
  EXPECT_EQ(Game.LogTopLine, 1);
  Game.KeepLatestRollOnTop = true;
  for (const char* line : {"  Roll #2:  7 (3.4)", "      Miss (seven-out)"}) {
    WriteLogLine(line);
    EXPECT_EQ(Game.LogTopLine, 2);
  }
}

TEST_F(EventsLog, BrokenLastRecordIsWrittenOver) {
  WriteLogLine("one");
  std::ofstream(EventsLogIndexPath(), std::ios::binary | std::ios::app) << "ab";
  WriteLogLine("two");
  EXPECT_EQ(Index(), (std::vector{1, 6}));
}

TEST_F(EventsLog, LogThatCannotBeWrittenIsPassedOver) {
  Game.EventsLogFile = Game.DataPath + "no such folder/Events Log.txt";
  WriteLogLine("lost");
  EXPECT_NE(Game.LastErrorText.find("Error #51 occurred, at: Write Log Line"), std::string::npos);
  EXPECT_FALSE(EventsLogExists());
}

TEST_F(EventsLog, ClearingRemovesBothFiles) {
  WriteLogLine("one");
  Game.LogTopLine = 9;
  ClearEventsLog();
  EXPECT_FALSE(EventsLogExists() || fs::exists(EventsLogIndexPath()));
  EXPECT_EQ(Game.LogTopLine, 1);
}

TEST_F(EventsLog, MasterSwitchAndClassAreBothNeeded) {
  EXPECT_FALSE(LogWants(true));
  Game.EventsLogActive = true;
  EXPECT_TRUE(LogWants(true));
  EXPECT_FALSE(LogWants(false));
}

}  // namespace
