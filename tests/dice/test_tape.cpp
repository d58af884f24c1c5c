#include "dice/tape.h"

#include <sys/resource.h>

#include <climits>

#include "core/scratch_file.h"
#include "dice/tape_file.h"
#include "support/file_size_limit.h"
#include "support/frail_disk.h"
#include "support/random_rules.h"
#include "support/same_game.h"
#include "support/table_fixture.h"

namespace {

class DiceTape : public FolderTest {
 protected:
  static std::string Throw(int die1, int die2) { return {static_cast<char>(DiceByte(die1, die2))}; }

  void Use(const std::string& bytes) { OpenDiceRollFile(folder_.Write("tape.rol", bytes)); }

  std::string Tape() const { return folder_.Read("tape.rol"); }

  /// Rolls `count` times, or until the recorder stops; under Hyper-Drive in one run.
  static void RollOn(int count, bool hyperDrive) {
    Game.AutoRollDice = Game.HyperDriveOn = hyperDrive;
    Game.KeepRolling = hyperDrive;
    Game.NumAutoRolls = Game.AutoRollsLeft = count;
    const int status = Game.RecorderStatus;
    for (int i = 0; i < (hyperDrive ? 1 : count) && Game.RecorderStatus == status; ++i) RollDice();
    Game.HyperDriveOn = false;
  }

  /// Bets that follow the table, changed every five rolls.
  static StateOfPlay PlayGame(bool hyperDrive) {
    for (int round = 0; round < 100; ++round) {
      const int before = Game.RollCount[0];
      Put(Game.Point == 0 ? PassLine : Place6, 5 + 5 * (round % 3));
      Put(round % 2 == 0 ? Field : Hard8, 5);
      RollOn(5, hyperDrive);
      EXPECT_EQ(Game.RollCount[0], before + 5);
    }
    return {};
  }
};

// --- Recording and playing ---

TEST_F(DiceTape, ARecordedGamePlaysBackTheSame) {
  for (const bool recordFast : {false, true})
    for (const bool playFast : {false, true}) {
      std::vector<StateOfPlay> games;
      for (const int status : {Recording, Playback}) {
        LayDownDefaults();
        Game.Notify = 0;
        Game.NegBankroll = true;
        if (status == Recording) Use("");
        OpenDiceRollFile(folder_ / "tape.rol");
        Game.RecorderStatus = status;
        games.push_back(PlayGame(status == Recording ? recordFast : playFast));
        EXPECT_EQ(std::pair(Game.RecorderStatus, Game.DiceFilePos), std::pair(status, 501));
      }
      EXPECT_EQ(Tape().size(), 500U);
      EXPECT_TRUE(games[0] == games[1]);
    }
}

TEST_F(DiceTape, EveryTurnFindsTheTapeAsItStands) {
  Use("");
  // So slow a clock that more than a block of throws waits for a turn.
  std::uint32_t looks = 0;
  TheHost.Milliseconds = [&looks] { return ++looks / 5; };
  int turns = 0;
  TheHost.Yield = [&] {
    ++turns;
    EXPECT_EQ(Tape().size(), static_cast<std::size_t>(Game.RollCount[0]));
  };
  Game.RecorderStatus = Recording;
  RollOn(70'000, true);
  EXPECT_TRUE(turns == 2 || turns == 3) << turns;
  EXPECT_EQ(Tape().size(), 70'000U);
  EXPECT_EQ(Game.DiceFileLast, 70'000);

  // An editor at work during playback.
  Use(std::string(70'000, Throw(1, 2)[0]));
  TheHost.Yield = [&] { folder_.Write("tape.rol", std::string(70'000, Throw(6, 5)[0])); };
  Game.RecorderStatus = Playback;
  RollOn(25'000, true);
  EXPECT_EQ(Game.RollTotal, 3);
  RollOn(25'000, true);
  EXPECT_EQ(Game.RollTotal, 11);
}

TEST_F(DiceTape, ATapeThatCannotBeWrittenStopsTheRecorder) {
  for (const bool fast : {false, true}) {
    Use("");
    Game.RecorderStatus = Recording;
    RollOn(10, fast);
    {
      const FileSizeLimit full(3000);
      RollOn(10'000, fast);
    }
    EXPECT_EQ(Game.RecorderStatus, RecorderOff);
    EXPECT_EQ(Game.LastErrorText, "The throw could not be written to " + Game.DiceRollFile + "\n");
    EXPECT_LE(Game.DiceFilePos, 3001);
    EXPECT_GE(Game.DiceFilePos, fast ? 11 : 3001);
    EXPECT_EQ(Game.DiceFileLast, Game.DiceFilePos - 1);
    EXPECT_LE(static_cast<std::size_t>(Game.DiceFileLast), Tape().size());

    fs::permissions(folder_ / "tape.rol", fs::perms::owner_read);
    for (const char* name : {"tape.rol", "gone/x.rol", ""}) {
      Game.DiceRollFile = folder_ / name;
      Game.RecorderStatus = Recording;
      RollOn(3, fast);
      EXPECT_EQ(Game.RecorderStatus, RecorderOff) << name;
    }
    fs::permissions(folder_ / "tape.rol", fs::perms::owner_all);
  }
}

TEST_F(DiceTape, AMissingTapeSaysSo) {
  Use(Throw(1, 2));
  fs::remove(Game.DiceRollFile);
  Game.RecorderStatus = Playback;
  RollDice();
  EXPECT_EQ(std::pair(Game.RollCount[0], Game.RecorderStatus), std::pair(0, +RecorderOff));
  EXPECT_THAT(Game.MsgText, testing::HasSubstr("tape.rol\ncan't be played back: "));
}

TEST_F(DiceTape, AnyTapeAndPositionPlaysItsThrowsAndNoMore) {
  Chance chance(7);
  const auto below = [&chance](int limit) { return chance.Below(limit); };
  const auto isThrow = [](char byte) {
    const int value = static_cast<unsigned char>(byte);
    const auto isFace = [](int face) { return face != 0 && face != 7; };
    return isFace(value >> 5) && isFace(value >> 2 & 7);
  };
  for (int round = 0; round < 150; ++round) {
    std::string tape(static_cast<std::size_t>(below(40)), ' ');
    // The two low bits of a throw may be anything.
    for (char& byte : tape)
      byte = static_cast<char>(below(9) > 0 ? DiceByte(1 + below(6), 1 + below(6)) + below(4)
                                            : below(256));
    Use(tape);
    const int length = static_cast<int>(tape.size());
    const int from = below(9) > 0 ? below(length + 6) - 3 : (below(2) > 0 ? INT_MAX : INT_MIN);
    Game.DiceFilePos = from;
    Game.RecorderStatus = Playback;
    int to = from;
    while (to >= 1 && to <= length && isThrow(tape[to - 1])) ++to;
    const bool atEnd = to < 1 || to > length;
    const int before = Game.RollCount[0];
    const bool fast = below(2) > 0;
    Game.MsgText.clear();
    RollOn(100, fast);
    EXPECT_EQ(Game.RecorderStatus, atEnd && fast ? Playback : RecorderOff);
    if (atEnd && !fast) {
      EXPECT_EQ(Game.MsgText, "The Dice Roll File has ended.");
      EXPECT_EQ(Game.MsgTitle, "Playback Dice Rolls During Game Play");
    }
    EXPECT_TRUE(to == from || Game.DiceFileEnd == to) << "nothing is selected by playing";
    EXPECT_EQ(Game.RollCount[0] - before, from < 1 ? 0 : to - from);
    EXPECT_EQ(Game.DiceFilePos, to);
    EXPECT_EQ(Tape(), tape);

    // Recording from there goes on at the end at the latest.
    Game.DiceFilePos = from;
    Game.RecorderStatus = Recording;
    RollOn(2, below(2) > 0);
    EXPECT_EQ(Game.RecorderStatus == Recording, from >= 1);
    const int at = std::min(from, length + 1);
    const int size = from < 1 ? length : std::max(length, at + 1);
    EXPECT_EQ(static_cast<int>(Tape().size()), size) << from;
  }
}

// --- The file as a whole ---

/// A tape in memory, with ranges that may lie anywhere.
struct ModelTape {
  std::string Bytes;

  std::string Range(std::int64_t from, std::int64_t count) const {
    const std::int64_t first = std::max<std::int64_t>(from, 1);
    const std::int64_t last = std::min(from + count - 1, Length());
    return first > last ? "" : Bytes.substr(PlaceOf(first), PlaceOf(last) - PlaceOf(first) + 1);
  }
  std::size_t PlaceOf(std::int64_t at) const {
    return static_cast<std::size_t>(std::clamp<std::int64_t>(at, 1, Length() + 1) - 1);
  }
  void Insert(std::int64_t at, const std::string& bytes) { Bytes.insert(PlaceOf(at), bytes); }
  void Overwrite(std::int64_t to, const std::string& bytes) {
    if (!bytes.empty()) Bytes.replace(PlaceOf(to), bytes.size(), bytes);
  }
  void Delete(std::int64_t from, std::int64_t count) {
    const std::size_t length = Range(from, count).size();
    if (length > 0) Bytes.erase(PlaceOf(from), length);
  }
  std::int64_t Length() const { return static_cast<std::int64_t>(Bytes.size()); }
};

TEST_F(DiceTape, RangesMoveAsInMemory) {
  std::mt19937 random(11);
  const auto upTo = [&random](std::int64_t limit) {
    return static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(limit + 1));
  };
  ModelTape model;
  for (int at = 0; at < 90'000; ++at) model.Bytes += static_cast<char>(upTo(255));
  Use(model.Bytes);
  for (int round = 0; round < 600; ++round) {
    // Counts about one block and two, and positions that may lie outside.
    const std::int64_t count = upTo(3) * 29'998 + upTo(6) - 1;
    const std::int64_t from = upTo(model.Length() + 4) - 2;
    const std::int64_t to = upTo(4) == 0 ? from + upTo(4) - 2 : upTo(model.Length() + 4) - 2;
    const std::int64_t kind = model.Length() > 90'000 ? 3 : upTo(4);
    const std::string range = model.Range(from, count);
    if (kind == 0) {
      fs::remove(folder_ / "part.rol");
      CopyRollsToFile(folder_ / "part.rol", from, count);
      EXPECT_EQ(folder_.Read("part.rol"), range);
      if (!range.empty()) {
        PasteRollsFromFile(folder_ / "part.rol", to);
        model.Insert(to, range);
      }
    } else if (kind == 1 && model.Length() < 50'000) {
      PasteRollsFromFile(Game.DiceRollFile, to);
      model.Insert(to, std::string(model.Bytes));
    } else if (kind <= 2) {
      MakeRoomForRolls(to, count);
      if (count > 0) model.Insert(to, std::string(static_cast<std::size_t>(count), '\0'));
    } else if (kind == 3) {
      DeleteRollRange(from, count);
      model.Delete(from, count);
    } else {
      CopyRollRange(to, from, count);
      model.Overwrite(to, range);
    }
    ASSERT_GE(Game.LastFileResult, 0) << Game.LastErrorText;
    ASSERT_TRUE(Tape() == model.Bytes) << "operation " << kind << " in round " << round;
    ASSERT_EQ(DiceRollCount(), model.Length());
    ASSERT_LE(Game.DiceFilePos, model.Length() + 1);
  }
}

TEST_F(DiceTape, PositionsFollowTheirThrows) {
  const std::string part = folder_.Write("part.rol", "123");
  // What is done, and where position, last and end stand then.
  const std::pair<std::function<void()>, std::array<std::int64_t, 3>> cases[] = {
      {[&] { PasteRollsFromFile(part, 6); }, {9, 5, 11}},  // at the position: behind what came in
      {[&] { PasteRollsFromFile(part, 5); }, {9, 8, 11}},
      {[&] { PasteRollsFromFile(part, 99); }, {6, 5, 8}},
      {[] { MakeRoomForRolls(7, 2); }, {6, 5, 10}},
      {[] { DeleteRollRange(1, 2); }, {4, 3, 6}},
      {[] { DeleteRollRange(4, 4); }, {4, 3, 4}},
      {[] { DeleteRollRange(-5, INT64_MAX); }, {1, 0, 1}},
      {[] { DeleteRollRange(INT64_MIN, 3); }, {6, 5, 8}},
      {[] { DeleteRollRange(9, INT64_MAX); }, {6, 5, 8}},
      {[] { CopyRollRange(10, 1, 5); }, {6, 5, 8}},
      {[] { CloseDiceRollFile(); }, {1, 0, 0}}};
  for (const auto& [work, then] : cases) {
    Use("abcdefghij");
    Game.DiceFilePos = 6;
    Game.DiceFileLast = 5;
    Game.DiceFileEnd = 8;
    work();
    EXPECT_THAT(then, testing::ElementsAre(Game.DiceFilePos, Game.DiceFileLast, Game.DiceFileEnd));
  }
  EXPECT_EQ(std::tuple(Game.DiceRollFile, DiceRollCount()), std::tuple("", 0));
  MakeRoomForRolls(1, 1);
  EXPECT_EQ(Game.LastFileResult, 0);
}

TEST_F(DiceTape, LongWorkCanBeEndedAtAnyMomentAndLeavesTheTapeWhole) {
  const std::string tape(100'000, Throw(3, 4)[0]);
  const std::string part = folder_.Write("part.rol", std::string(90'000, Throw(1, 1)[0]));
  const std::string text = folder_.Write("text.txt", std::string(100'000, '5'));
  const std::function<void()> works[] = {
      [&] { PasteRollsFromFile(part, 5); }, [&] { PasteRollsFromText(text, 90'000); },
      [&] { CopyRollsToFile(folder_ / "new.rol", 1, 100'000); },
      [&] {
        CopyRollsToText(folder_ / "new.txt", 1, 100'000, {true, true, true}, 1);
      }};
  std::uint32_t now = 0;
  TheHost.Milliseconds = [&now] { return now += 200; };
  for (const auto& work : works) {
    int ended = 0;
    for (int patience = 0; patience < 14; patience += 3) {
      Use(tape);
      int shown = 0;
      double last = 0;
      TheHost.ShowProgress = [&](const std::string&, double share) {
        last = share;
        return ++shown <= patience;
      };
      Game.MsgText.clear();
      work();
      EXPECT_EQ(last, 1) << "the progress is closed";
      if (Game.LastFileResult > 0) continue;
      ++ended;
      EXPECT_EQ(std::pair(Game.LastFileResult, Game.DiceFilePos), std::pair(0, 1));
      EXPECT_NE(Game.MsgText, "");
      ASSERT_TRUE(Tape() == tape);
      EXPECT_EQ(folder_.Count(), 3U) << "no scratch file stays";
    }
    EXPECT_TRUE(ended >= 1 && ended < 5) << ended;
    for (const char* name : {"new.rol", "new.txt"}) fs::remove(folder_ / name);
  }
}

TEST_F(DiceTape, TextComesAndGoes) {
  Use(Throw(6, 6));
  PasteRollsFromText(folder_.Write("a.txt", "1,2 (3-4) 7890 x5\r\n6 1"), 1);
  EXPECT_EQ(Game.LastFileResult, 3);
  EXPECT_EQ(Tape(), Throw(1, 2) + Throw(3, 4) + Throw(5, 6) + Throw(6, 6));
  EXPECT_EQ(Game.DiceFilePos, 4);
  PasteRollsFromText(folder_.Write("a.txt", "7 8 9 1"), 1);
  EXPECT_EQ(Game.LastFileResult, 0);
  folder_.Write("cnvrtasc.xx~", "12");
  PasteRollsFromText(folder_ / "cnvrtasc.xx~", 1);
  EXPECT_EQ(folder_.Read("cnvrtasc.xx~"), "12");
  // Each two digits, wherever a block ends.
  PasteRollsFromText(folder_.Write("a.txt", "x" + std::string(60'000, '3')), 99);
  EXPECT_EQ(Tape().size(), 30'004U);
  EXPECT_EQ(folder_.Count(), 2U);

  const std::pair<RollTextOptions, std::string> cases[] = {
      {{true, true, true}, "8 (3-4)- 7\r\n9 (5-6)- 11\r\n"},
      {{true, true, false}, "8 (3-4)\r\n9 (5-6)\r\n"},
      {{true, false, true}, "8 7\r\n9 11\r\n"},
      {{false, true, true}, "(3-4)- 7\r\n(5-6)- 11\r\n"},
      {{false, false, true}, "7\r\n11\r\n"}};
  for (const auto& [options, lines] : cases) {
    CopyRollsToText(folder_ / "b.txt", 2, 2, options, 8);
    EXPECT_EQ(std::tuple(folder_.Read("b.txt"), Game.LastFileResult), std::tuple(lines, 2));
  }
  CopyRollsToText(folder_ / "b.txt", 2, 2, {true, false, false}, 1);
  EXPECT_EQ(Game.LastFileResult, 0);
  const std::string foreign = "W\u00FCrfel \u65E5\u672C.rol";
  OpenDiceRollFile(folder_ / foreign);
  EXPECT_GT(Game.LastFileResult, 0);
  PasteRollsFromFile(folder_ / "tape.rol", 1);
  EXPECT_EQ(DiceRollCount(), 30'004);
}

/// Moves of many windows, stopped at any of their calls.
TEST_F(DiceTape, AKilledMoveOfManyWindowsIsFinishedOrTakenBack) {
  std::mt19937 random(3);
  std::string tape(9 << 19, ' ');
  for (char& byte : tape) byte = static_cast<char>(random());
  const std::string part = folder_.Write("part.rol", std::string(1'234, '\x48'));
  const std::pair<std::function<void()>, std::string> moves[] = {
      {[&] { PasteRollsFromFile(part, 6); }, std::string(tape).insert(5, 1'234, '\x48')},
      {[] { DeleteRollRange(100, 700); }, std::string(tape).erase(99, 700)}};
  for (const auto& [move, made] : moves)
    for (int number = 1; number < 90; number += 17) {
      Use(tape);
      {
        FrailDisk disk(folder_ / "");
        disk.FailCall(number, number % 2 == 1 ? DiskFault::Kill : DiskFault::HalfKill);
        move();
      }
      DiceRollCount();
      ASSERT_TRUE(Tape() == tape || Tape() == made) << number;
      SweepScratchFiles(folder_ / "", false);
      ASSERT_EQ(folder_.Count(), 2U) << number;
    }
}

TEST_F(DiceTape, ABillionThrowsNeedLittleMemory) {
  constexpr std::int64_t kLength = 1'000'000'000;
  Use(Throw(2, 3));
  fs::resize_file(Game.DiceRollFile, kLength);
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  PutRolls(kLength - 9'000'000, Throw(6, 6), false);
  CopyRollsToFile(folder_ / "front.rol", kLength - 9'000'001, 3);
  EXPECT_EQ(folder_.Read("front.rol"), '\0' + Throw(6, 6) + '\0');
  DeleteRollRange(kLength - 1'000, 2);
  EXPECT_EQ(DiceRollCount(), kLength - 1);
  MakeRoomForRolls(5, INT64_MAX);
  EXPECT_EQ(std::tuple(Game.LastFileResult, DiceRollCount()), std::tuple(-1, kLength - 1));
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 4096) << "kilobytes";
}

}  // namespace
