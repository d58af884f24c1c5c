#include "dice/probability_file.h"

#include "core/file_failure.h"
#include "core/record_file.h"
#include "dice/matrix.h"
#include "support/table_fixture.h"

namespace {

constexpr const char* kTitle = "Unable to Open Kelvanor Probability File";
constexpr const char* kRefusal =
    "bad.prb\nis either from an older version, has been corrupted, or is not a true Kelvanor "
    "Probability File.";

class ProbabilityFile : public FolderTest {
 protected:
  /// A matrix with a different number in every place.
  static int ValueAt(std::size_t place) { return static_cast<int>(place) * 7 + 1; }

  static std::string FileOf(const std::function<int(std::size_t)>& value) {
    std::vector<Record> records(5);
    records[0].PutText(0, 92, "Kelvanor Probability File, Data Format 4.6");
    for (std::size_t place = 0; place < 224; ++place)
      records[1 + place / 64].PutLong(place % 64 * 4, value(place));
    return {reinterpret_cast<const char*>(records.data()), 5 * kRecordSize};
  }

  void ExpectRefused(const std::string& bytes) {
    const DiceState before = Game;
    Game.ProbabilityChanged = true;
    LoadProbabilityFile(folder_.Write("bad.prb", bytes));
    EXPECT_EQ(Game.LastFileResult, 0);
    EXPECT_EQ(TakeOnlyMessage().Text, kRefusal);
    EXPECT_EQ(Game.MsgTitle, kTitle);
    EXPECT_EQ(Game.ProbMatrix, before.ProbMatrix);
    EXPECT_TRUE(Game.ProbabilityChanged);
    EXPECT_EQ(Game.PrbFileName, "");
  }
};

TEST_F(ProbabilityFile, EveryValueHasItsPlace) {
  Game.ProbabilityChanged = true;
  const std::string path = folder_.Write("a.prb", FileOf(ValueAt));
  LoadProbabilityFile(path);
  EXPECT_EQ(std::pair(Game.LastFileResult, Game.PrbFileName), std::pair(1, path));
  EXPECT_FALSE(Game.ProbabilityChanged);
  std::size_t place = 0;
  for (const auto& layer : Game.ProbMatrix)
    for (const auto& column : layer)
      for (const int value : column) EXPECT_EQ(value, ValueAt(place++));
  EXPECT_TRUE(TakeShown().empty());
  // The last record may end with the last value.
  LoadProbabilityFile(folder_.Write("short.prb", FileOf(ValueAt).substr(0, 1152)));
  EXPECT_EQ(Game.LastFileResult, 1);
}

TEST_F(ProbabilityFile, WhatCannotBeThrownIsRefused) {
  // Layer 1 begins at place 112; the cell of two ones is column 2, row 1 of it.
  constexpr std::size_t kFirstCell = 112 + 2 * 14 + 1;
  ExpectRefused(FileOf([](std::size_t place) { return place == kFirstCell ? -1 : 2778; }));
  ExpectRefused(FileOf([](std::size_t place) { return place < 112 + 28 ? 5 : 0; }));
  const int faces = 12;  // rows 12 and 13 hold faces, not dice
  ExpectRefused(FileOf([](std::size_t place) { return place % 14 >= faces ? 16667 : 0; }));
  LoadProbabilityFile(
      folder_.Write("one.prb", FileOf([](auto place) { return place == kFirstCell; })));
  EXPECT_EQ(Game.LastFileResult, 1);
  DiceFromMatrix(1);
  EXPECT_EQ(Game.Die1 + Game.Die2, 2);
}

TEST_F(ProbabilityFile, AFileIsWrittenAsItIsRead) {
  LoadProbabilityFile(folder_.Write("a.prb", FileOf(ValueAt)));
  Game.ProbabilityChanged = true;
  SaveProbabilityFile(folder_ / "W\u00FCrfel \u65E5.prb");
  EXPECT_EQ(Game.LastFileResult, 1280);
  EXPECT_EQ(Game.PrbFileName, folder_ / "W\u00FCrfel \u65E5.prb");
  EXPECT_FALSE(Game.ProbabilityChanged);
  EXPECT_EQ(folder_.Read("W\u00FCrfel \u65E5.prb"), folder_.Read("a.prb"));
  EXPECT_TRUE(TakeShown().empty());

  Game.ProbabilityChanged = true;
  SaveProbabilityFile(folder_ / "gone/a.prb");
  EXPECT_EQ(Game.LastFileResult, -1);
  EXPECT_TRUE(Game.ProbabilityChanged);
  EXPECT_EQ(Game.PrbFileName, folder_ / "W\u00FCrfel \u65E5.prb");
  EXPECT_EQ(TakeOnlyMessage().Text, FileFailureText(folder_ / "gone/a.prb", "written"));
  EXPECT_EQ(Game.MsgTitle, "Unable to Save Kelvanor Probability File");
}

TEST_F(ProbabilityFile, ASystemFailureTells) {
  const auto before = Game.ProbMatrix;
  fs::create_directory(folder_ / "dir.prb");
  LoadProbabilityFile(folder_ / "dir.prb");
  EXPECT_EQ(Game.LastFileResult, -1);
  EXPECT_THAT(Game.LastErrorText, ::testing::EndsWith("occurred, at: Open Probability File\n"));
  EXPECT_EQ(TakeOnlyMessage().Text, FileFailureText(folder_ / "dir.prb", "read"));
  EXPECT_EQ(Game.ProbMatrix, before);

  // Under Hyper-Drive the run ends and tells why.
  Game.HyperDriveOn = Game.KeepRolling = true;
  LoadProbabilityFile(folder_ / "bad.prb");
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_EQ(Game.StopMessage, kRefusal);
  EXPECT_TRUE(TakeShown().empty());
  Game.HyperDriveOn = false;
}

}  // namespace
