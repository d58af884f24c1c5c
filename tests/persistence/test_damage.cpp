// Damaged files of every format: one is refused with a word and changes nothing, or it gives a game
// that agrees with itself and plays on.

#include "autobet/script_reader.h"
#include "autobet/script_records.h"
#include "bets/bankroll.h"
#include "dice/probability_file.h"
#include "persistence/game_file.h"
#include "persistence/game_file_table.h"
#include "support/table_fixture.h"

namespace {

struct Format {
  const char* Name;
  void (*Save)(const std::string& path);
  void (*Open)(const std::string& path);
  std::size_t Step;   // from one damaged byte to the next
  std::size_t Mark;   // bytes at the front that must be right
  std::size_t Head;   // behind these nothing is refused
  std::size_t Least;  // a shorter file is refused, any other is read
};

void OpenNamedGame(const std::string& path) { OpenGame(path, true); }

/// As before there was a checksum.
void SaveOldGame(const std::string& path) {
  SaveGame(path);
  RecordFile file = ReadRecords(path, 10'000);
  for (const std::size_t offset : {200, 204}) file.Records[kOwnFieldsRecord - 1].PutLong(offset, 0);
  WriteRecords(path, file.Records);
}

constexpr std::size_t kAnywhere = SIZE_MAX;
const Format kFormats[] = {
    {"game.crp", SaveGame, OpenNamedGame, 61, 0, 92, kFixedRecords* kRecordSize},
    {"old.crp", SaveOldGame, OpenNamedGame, 61, 0, 92, kFixedRecords* kRecordSize},
    {"script.bet", SaveScript, OpenScript, 1, 17, kAnywhere, 0},
    {"matrix.prb", SaveProbabilityFile, LoadProbabilityFile, 1, 42, kAnywhere, 1152}};

std::string FieldsAsBytes(GameState& game) {
  std::vector<Record> records(kFixedRecords);
  PutFields(GameFields(), game, records);
  return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
}

class Damage : public FolderTest, public ::testing::WithParamInterface<Format> {
 protected:
  /// The file of a game with something everywhere.
  Damage() {
    LoadScript("When . . .\nFlag \"Hot\" is True\nLabel \"Loop\"\nthen . . .\nBet $ 5 on Field\n");
    SaveScript(folder_ / "in force.bet");
    SeedDice(4711);
    Game.Notify = 0;
    Game.HandleWinningBets = WinSameBet;
    for (int roll = 0; roll < 700; ++roll) {
      for (const int bet : {roll % LastBet + 1, roll * 7 % LastBet + 1}) Put(bet, roll % 40);
      if (FreeMoney() < 50) AtmTransaction(AtmWithdrawal, 500);
      RollDice();
    }
    GetParam().Save(folder_ / GetParam().Name);
    bytes_ = folder_.Read(GetParam().Name);
    Shown.clear();
  }

  /// True when the bytes were read.
  bool Open(const std::string& bytes) {
    const auto before = std::make_unique<GameState>(Game);
    Answers = {kYes};  // yes, though it is damaged
    GetParam().Open(folder_.Write(std::string("damaged ") + GetParam().Name, bytes));
    Answers.clear();
    if (GetParam().Save == SaveGame && Game.LastFileResult > 0) {
      EXPECT_EQ(Shown.empty() ? "" : Shown.front().Title, "Damaged Game File");
      EXPECT_EQ(Game.GameFileName, "");
    }
    if (Game.LastFileResult <= 0) {
      if (Shown.size() > 1) Shown.erase(Shown.begin());
      EXPECT_TRUE(TakeOnlyMessage().Title.starts_with("Unable to Open "));
      EXPECT_TRUE(FieldsAsBytes(Game) == FieldsAsBytes(*before)) << "a refusal changes nothing";
      EXPECT_EQ(Game.Script, before->Script);
      return false;
    }
    Shown.clear();  // companions that are named otherwise now
    EXPECT_EQ(FirstInconsistency(), "");
    for (const auto& line : Game.Script) EXPECT_EQ(ReadLine(MakeLineRecord(line), kLayout50), line);
    PlayOn();
    return true;
  }

  std::string bytes_;

 private:
  void PlayOn() {
    Game.NumAutoRolls = Game.AutoRollsLeft = 0;
    Game.AutoRollDice = false;
    Game.AutoBetActive = 0;
    Game.LastErrorText.clear();
    const int rolls = Game.RollCount[0];
    for (int roll = 0; roll < 10; ++roll) RollDice();
    Shown.clear();
    if (Abs(Bankroll()) >= kRollingLimit || !Game.LastErrorText.empty()) return;
    EXPECT_EQ(Game.RollCount[0], rolls + 10);
    EXPECT_EQ(FirstInconsistency(), "") << "after ten rolls";
  }
};

TEST_P(Damage, OfAnyByteIsRefusedOrMended) {
  const Format& format = GetParam();
  // Settings densely, the long arrays here and there.
  constexpr std::size_t kArrays = 59 * kRecordSize;
  for (std::size_t at = 0; at < bytes_.size(); at += at < kArrays ? format.Step : 1201) {
    std::string damaged = bytes_;
    damaged[at] = static_cast<char>(damaged[at] ^ (at % 2 == 0 ? 0xFF : 0x81));
    const bool read = Open(damaged);
    EXPECT_FALSE(read && at < format.Mark);
    EXPECT_TRUE(read || at < format.Head);
    if (HasFailure()) FAIL() << "byte " << at % 256 << " of record " << at / 256 + 1;
  }
}

TEST_P(Damage, ByACutOrSomethingAtTheEnd) {
  const std::size_t least = GetParam().Least;
  for (std::size_t cut = 0; cut < bytes_.size(); cut += cut % 256 == 0 ? 37 : 219) {
    const bool read = Open(bytes_.substr(0, cut));
    EXPECT_TRUE(least == 0 || read == (cut >= least)) << cut;
  }
  for (const std::size_t more : {1, 256, 256 * 9, 256 * 12'000})
    EXPECT_TRUE(Open(bytes_ + std::string(more, '\xAB'))) << more;
}

INSTANTIATE_TEST_SUITE_P(Formats, Damage, ::testing::ValuesIn(kFormats), [](const auto& format) {
  return std::string(format.param.Name).substr(0, std::string(format.param.Name).find('.'));
});

}  // namespace
