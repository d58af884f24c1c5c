#include "stats/games_file.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/file_size_limit.h"
#include "support/random_rules.h"
#include "support/table_fixture.h"

namespace {

constexpr std::size_t kRecord = 256;

/// A game that is unlike any other.
GameRecord Numbered(std::int64_t number) {
  GameRecord game;
  for (std::size_t column = 0; column < game.size(); ++column)
    game[column] = Currency::FromRaw(number * 1000 + static_cast<std::int64_t>(column) - 5);
  return game;
}

std::vector<GameRecord> NumberedGames(std::int64_t first, std::int64_t last) {
  std::vector<GameRecord> games;
  for (std::int64_t number = first; number <= last; ++number) games.push_back(Numbered(number));
  return games;
}

class GamesFile : public TableTest {
 protected:
  std::vector<GameRecord> Games() const {
    const GamesLogReader log(path_);
    return log.Read(1, log.Count() + 7);
  }

  void Append(const std::vector<GameRecord>& games) const {
    GamesLogWriter(path_).Append(games, Durability::System);
  }

  const ScratchFolder folder_{"games_file"};
  const std::string path_ = folder_ / "a.glg";
};

TEST_F(GamesFile, BytesAreThoseOfTheFormatAndUnusedOnesStay) {
  Append({Numbered(1)});
  std::string bytes = folder_.Read("a.glg");
  ASSERT_EQ(bytes.size(), 2 * kRecord);
  EXPECT_EQ(bytes.substr(0, 92), "Kelvanor Games File, Data Format 5.0" + std::string(56, ' '));
  EXPECT_EQ(bytes.substr(92, 4), std::string("\1\0\0\0", 4));
  EXPECT_EQ(bytes.substr(kRecord, 8), std::string("\xE3\3\0\0\0\0\0\0", 8));  // 995
  EXPECT_EQ(bytes.substr(2 * kRecord - 8), std::string("\x02\4\0\0\0\0\0\0", 8));
  bytes.replace(96, 160, std::string(160, 'u'));
  folder_.Write("a.glg", bytes);
  Append({Numbered(2)});
  EXPECT_EQ(folder_.Read("a.glg").substr(96, 160), std::string(160, 'u'));
  EXPECT_EQ(Games(), NumberedGames(1, 2));
  const std::array<int, 2> columns = {HandleColumn, FirstStackColumn + 19};
  EXPECT_EQ(ReadGameColumns(path_, columns),
            (std::vector<std::vector<Currency>>{{Numbered(1)[5], Numbered(2)[5]},
                                                {Numbered(1)[31], Numbered(2)[31]}}));
}

TEST_F(GamesFile, NoCutAndNoDamagedByteIsTakenForAGame) {
  Append(NumberedGames(1, 2));
  const std::string whole = folder_.Read("a.glg");
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    fs::remove(path_);
    folder_.Write("a.glg", whole.substr(0, length));
    EXPECT_EQ(IsGamesLog(path_), length >= kRecord);
    if (length > 0 && length < kRecord) {
      EXPECT_THROW(Games(), NotAGamesLog);
      EXPECT_THROW(Append({Numbered(9)}), NotAGamesLog);
      EXPECT_EQ(FileLength(path_), length) << "a file that is no log is left alone";
      continue;
    }
    std::vector<GameRecord> left = NumberedGames(1, static_cast<int>(length / kRecord) - 1);
    EXPECT_EQ(Games(), left) << length;
    Append({Numbered(9)});
    left.push_back(Numbered(9));
    EXPECT_EQ(Games(), left) << length;
  }
  folder_.Write("a.glg", whole);
  std::fstream log(path_, std::ios::in | std::ios::out | std::ios::binary);
  for (std::size_t at = 0; at < whole.size(); ++at)
    for (const char byte : {'\0', '\x7F', '\xFF', whole[at]}) {
      log.seekp(static_cast<std::streamoff>(at)).put(byte).flush();
      const bool blank = byte == '\0' && at >= 36;  // the mark is compared without its end
      EXPECT_EQ(IsGamesLog(path_), byte == whole[at] || at >= 92 || blank) << at;
      if (!IsGamesLog(path_)) continue;
      const std::vector<GameRecord> games = Games();
      ASSERT_LE(games.size(), 2U);
      for (std::size_t game = 0; game < games.size(); ++game)
        EXPECT_EQ(games[game] == Numbered(static_cast<int>(game) + 1),
                  byte == whole[at] || at / kRecord != game + 1)
            << at;
    }
}

TEST_F(GamesFile, AppendingDeletingAndMergingFollowAListOfGames) {
  Chance chance(5);
  std::vector<GameRecord> games;
  std::uintmax_t longest = 0;
  std::int64_t number = 0;
  for (int turn = 0; turn < 100; ++turn) {
    const int count = static_cast<int>(games.size());
    if (chance.OneIn(2)) {
      const std::vector<GameRecord> more = NumberedGames(number + 1, number + chance.Below(9));
      number += static_cast<std::int64_t>(more.size());
      if (chance.OneIn(2)) {
        Append(more);
      } else {
        GamesLogWriter(folder_ / "b.glg").Append(more, Durability::System);
        GamesLogWriter(path_).Append(GamesLogReader(folder_ / "b.glg"));
        EXPECT_EQ(CountGames(folder_ / "b.glg"), static_cast<std::int64_t>(more.size()));
        WriteEmptyGamesLog(folder_ / "b.glg");
      }
      games.insert(games.end(), more.begin(), more.end());
    } else {
      const int first = chance.Below(count + 3);
      const int last = first + chance.Below(6) - 1;
      const bool there = first >= 1 && last >= first && last <= count;
      EXPECT_EQ(DeleteGames(path_, first, last), there);
      if (there) games.erase(games.begin() + (first - 1), games.begin() + last);
    }
    ASSERT_EQ(Games(), games) << turn;
    EXPECT_GE(FileLength(path_), longest) << "what was deleted stays as dead bytes";
    longest = FileLength(path_);
  }
  CopyGamesLog(path_, folder_ / "c.glg");
  EXPECT_EQ(folder_.Read("c.glg"), folder_.Read("a.glg"));
  // A count that can't be is cut to what is there.
  std::string bytes = folder_.Read("a.glg");
  for (const char* count : {"\xFF\xFF\xFF\x7F", "\xFF\xFF\xFF\xFF"}) {
    folder_.Write("a.glg", bytes.replace(92, 4, count, 4));
    EXPECT_EQ(CountGames(path_), count[3] > 0 ? static_cast<int>(longest / kRecord) - 1 : 0);
  }
  folder_.Write("a.glg", "of another program");
  WriteEmptyGamesLog(path_);
  EXPECT_TRUE(Games().empty());
  EXPECT_EQ(folder_.Read("a.bad"), "of another program");
}

TEST_F(GamesFile, AFullDiskOrAKillCostsTheGamesOfOneCallAtMost) {
  Append(NumberedGames(1, 4));
  const std::string before = folder_.Read("a.glg");
  {
    const FileSizeLimit full(8 * kRecord + 40);
    EXPECT_THROW(Append(NumberedGames(5, 20)), std::system_error);
  }
  EXPECT_THROW(GamesLogWriter(path_).Append(GamesLogReader(path_), [](double) { throw 1; }), int);
  EXPECT_EQ(folder_.Read("a.glg"), before);
  for (int kill = 0; kill < 5; ++kill) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (std::int64_t next = CountGames(path_) + 1;; next += 5000)
        GamesLogWriter(path_).Append(NumberedGames(next, next + 4999), Durability::System);
    }
    ::usleep(20'000);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const std::vector<GameRecord> games = Games();
    EXPECT_EQ(games, NumberedGames(1, static_cast<std::int64_t>(games.size())));
    EXPECT_GE(games.size(), 4U);
  }
}

TEST_F(GamesFile, ASecondWriterIsRefusedAndItsGamesWait) {
  Game.HyperDriveOn = Game.RollInProgress = true;
  GatherGameRecord(path_, Numbered(1));
  EXPECT_EQ(CountGames(path_), 0) << "games of a run are gathered";
  FlushGamesLog();
  Game.HyperDriveOn = Game.RollInProgress = false;
  {
    GamesLogWriter writer(path_);
    EXPECT_EQ(writer.Count(), 1);
    EXPECT_THROW(DeleteGames(path_, 1, 1), std::system_error);
    GatherGameRecord(path_, Numbered(2));
    EXPECT_EQ(GamesWriteFailure(path_), "another program is using it");
    EXPECT_EQ(GamesWriteFailure(folder_ / "other.glg"), "");
    EXPECT_EQ(CountGames(path_), 1);
  }
  GatherGameRecord(path_, Numbered(3));
  EXPECT_EQ(Games(), NumberedGames(1, 3));
  EXPECT_EQ(GamesWriteFailure(path_), "");
}

}  // namespace
