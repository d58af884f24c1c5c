#include "persistence/game_file.h"

#include <gmock/gmock.h>

#include <bit>
#include <chrono>
#include <map>
#include <memory>
#include <random>
#include <set>

#include "autobet/script.h"
#include "autobet/script_file.h"
#include "autobet/script_reader.h"
#include "core/bankroll.h"
#include "core/chips.h"
#include "core/consistency.h"
#include "core/new_game.h"
#include "core/roll_cycle.h"
#include "core/start_up.h"
#include "dice/generators.h"
#include "dice/probability_file.h"
#include "persistence/game_file_table.h"
#include "persistence/session.h"
#include "rules/defaults.h"
#include "support/file_size_limit.h"
#include "support/same_game.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kScriptText =
    "When . . .\nNext roll is a come-out roll\nFlag \"Hot\" is True\nthen . . .\n"
    "Set flag \"Hot\" to False\nSet flag \"Cold\" to True\n";

std::string BytesOf(const std::vector<Record>& records) {
  return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
}

/// The fields of the record as bytes of a file.
std::string FieldsAsBytes() {
  std::vector<Record> records(kFixedRecords);
  PutFields(GameFields(), Game, records);
  PutFields(WindowFields(), Game, records);
  return BytesOf(records);
}

class GameFile : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.DataPath = Game.AppPath = folder_ / "";
    Game.GamesLogFile = folder_ / "default.glg";
    Game.EventsLogFile = folder_ / "Events Log.txt";
  }

  /// A fresh program in the same folder.
  void Restart() {
    ClearScript();
    LayDownDefaults();
    Shown.clear();
  }

  static void Seed(int seed) {
    Game.ChangeRequest = seed;
    SeedRng(SeedInChangeRequest);
  }

  /// Rolls with random bets on the table.
  static void Play(int rolls, unsigned seed) {
    std::mt19937 chance(seed);
    Game.Notify = 0;
    Game.HandleWinningBets = WinSameBet;
    for (int roll = 0; roll < rolls; ++roll) {
      for (int bets = 0; bets < 3; ++bets)
        Put(static_cast<int>(chance() % LastBet) + 1, static_cast<int>(chance() % 40));
      if (FreeMoney() < 50) AtmTransaction(AtmWithdrawal, 500);
      RollDice();
    }
  }

  /// A game with something everywhere, saved; its bytes.
  std::string SaveBusyGame(int rolls) {
    LoadScript(kScriptText);
    SaveScript(folder_ / "my.bet");
    Game.Flags[1].FlagValue = 7;
    Seed(4711);
    Play(rolls, 1);
    Game.ChipStackName[99] = "last \u00E9";
    Put(FirstChipStack, 33);
    SaveGame(folder_ / "a.crp");
    EXPECT_EQ(Game.LastFileResult, static_cast<int>(folder_.Read("a.crp").size()));
    return folder_.Read("a.crp");
  }

  ScratchFolder folder_{"game_file"};
};

// --- The table ---

/// A number that a row allows, unlike most others.
std::int64_t Sample(const SlotLimits& limits, std::int64_t n) {
  const std::int64_t low = std::max(limits.Low / Currency::kScale, std::int64_t{-30'000'000});
  const std::int64_t high = std::min(limits.High / Currency::kScale, std::int64_t{90'000'000});
  return low + n * 7'919 % (high - low + 1);
}

struct Fill {
  const FieldRow& Row;
  std::int64_t N;

  int Number() const {
    const std::int64_t value = Sample(Row.Limits, N);
    return static_cast<int>(Row.Form == SlotForm::IntegerSlot ? value % 30'000 : value);
  }
  void operator()(Currency* f) const {
    *f = Row.Limits.High % Currency::kScale == 0 && Row.Limits.High < 100 * Currency::kScale
             ? Currency(Number())
             : Currency::FromRaw(Number() + 0);
  }
  void operator()(int* f) const { *f = Number(); }
  void operator()(std::uint32_t* f) const { *f = static_cast<std::uint32_t>(Number()); }
  void operator()(bool* f) const { *f = N % 3 == 0; }
  void operator()(float* f) const { *f = static_cast<float>(Number()); }
  void operator()(double* f) const { *f = static_cast<double>(N) + 0.0625; }
  void operator()(std::string* f) const { *f = "text " + std::to_string(N); }
  void operator()(DicePair f) const { *f.First = 2, *f.Second = static_cast<int>(N % 6 + 1); }
  void operator()(NumberText f) const { *f.Text = std::to_string(N) + ".5"; }
};

/// A field as text, to compare by.
std::string Told(const Currency* field) { return std::to_string(field->Raw()); }
std::string Told(const std::string* field) { return *field; }
std::string Told(NumberText field) { return *field.Text; }
std::string Told(DicePair dice) {
  return std::to_string(*dice.First) + std::to_string(*dice.Second);
}
template <class Number>
std::string Told(const Number* field) {
  return std::to_string(*field);
}
std::string Told(FieldPointer field) {
  return std::visit([](auto pointer) { return Told(pointer); }, field);
}

TEST_F(GameFile, EveryFieldHasAPlaceOfItsOwnAndComesBack) {
  const auto filled = std::make_unique<GameState>();
  std::vector<Record> records(kFixedRecords);
  std::int64_t n = 0;
  std::string used(kFixedRecords * kRecordSize, ' ');
  for (const auto rows : {WindowFields(), GameFields()}) {
    for (const FieldRow& row : rows) {
      for (int index = 0; index < row.Count; ++index) {
        std::visit(Fill{row, ++n}, row.Field(*filled, index));
        const int width = row.Form == SlotForm::TextSlot ? row.TextWidth : WidthOf(row.Form);
        const auto at = static_cast<unsigned>((row.Record + index / row.PerRecord - 1) * 256 +
                                              row.Offset + index % row.PerRecord * width);
        EXPECT_EQ(used.substr(at, static_cast<unsigned>(width)),
                  std::string(static_cast<unsigned>(width), ' '))
            << row.Name << " " << index;
        used.replace(at, static_cast<unsigned>(width), static_cast<unsigned>(width), '#');
        EXPECT_LE(at % 256 + static_cast<unsigned>(width), 256U) << row.Name;
      }
    }
    PutFields(rows, *filled, records);
  }
  EXPECT_EQ(used.find("#", 47 * 256), 47U * 256) << "payoffs begin with record 48";
  records[kOwnFieldsRecord - 1].PutText(kOwnFieldsOffset, 4, kOwnFieldsMarker);
  const RecordFile file{records.size() * kRecordSize, records};
  const auto read = std::make_unique<GameState>();
  std::vector<Record> again(kFixedRecords);
  for (const auto rows : {WindowFields(), GameFields()}) {
    TakeFields(rows, file, *read);
    PutFields(rows, *read, again);
    for (const FieldRow& row : rows) {
      for (int index = 0; index < row.Count; ++index)
        ASSERT_EQ(Told(row.Field(*read, index)), Told(row.Field(*filled, index)))
            << row.Name << " " << index;
    }
  }
  again[kOwnFieldsRecord - 1].PutText(kOwnFieldsOffset, 4, kOwnFieldsMarker);
  EXPECT_EQ(BytesOf(again), BytesOf(records));
}

TEST_F(GameFile, FieldsStandWhereOtherReadersLookForThem) {
  Game.ModifyOperator[5] = 3;
  Game.Bets[200] = 200;
  Game.Bets[26] = Currency::FromRaw(77);
  Game.ContractBets[46] = 46;
  Game.BuyVigHeld[0] = 9;
  Game.BetWorking[3] = CalledOff;
  Game.FieldPayoff[21].Per = 21;
  Game.BetWins[Actual][1][StatLast] = 5;
  Game.BetOutcome[2][1] = -4;
  Game.RollCount[64] = 64;
  Game.RollGapTally[90][200] = 12;
  Game.TableColor[6] = 0xFF8001;
  Game.DicePairSelected[35] = true;
  Game.WindowPlaces[FileWindow] = {9, 1, 2, 3, 4};
  Game.Die1 = 6;
  Game.Die2 = 5;
  Game.ChipStackName[4] = "four";
  const std::string bytes = FieldsAsBytes();
  struct Place {
    unsigned Record, Offset, Width;
    std::int64_t Value;
  };
  for (const Place& place : std::initializer_list<Place>{
           {13, 24, 8, 30'000},   {26, 200, 8, 2'000'000},  {20, 8, 8, 77},
           {44, 200, 8, 460'000}, {45, 56, 8, 90'000},      {47, 6, 2, 0xFFFF},
           {59, 240, 8, 210'000}, {135, 40, 8, 50'000},     {244, 2, 2, 0xFFFC},
           {246, 0, 4, 64},       {539, 164, 4, 12},        {18, 32, 4, 0x0180FF},
           {16, 70, 2, 0xFFFF},   {8, 220, 4, 1},           {8, 232, 4, 4},
           {14, 80, 8, 650'000},  {542, 80, 4, 0x72756F66}, {48, 0, 8, 5000 * 2},
           {51, 32, 8, -10'000},  {11, 56, 8, 500}}) {
    std::uint64_t value = 0;
    for (unsigned i = place.Width; i-- > 0;)
      value = value << 8 |
              static_cast<unsigned char>(bytes[(place.Record - 1) * 256 + place.Offset + i]);
    EXPECT_EQ(static_cast<std::int64_t>(value), place.Value)
        << "record " << place.Record << " offset " << place.Offset;
  }
}

// --- A game goes there and back ---

TEST_F(GameFile, AGameComesBackAndPlaysOnTheSame) {
  const std::string bytes = SaveBusyGame(3000);
  ASSERT_EQ(FirstInconsistency(), "");
  EXPECT_EQ(bytes.size(), 256 * (574 + static_cast<unsigned>((Game.ChipCount + 31) / 32) + 1));
  EXPECT_EQ(Game.GameFileName, folder_ / "a.crp");
  EXPECT_FALSE(Game.GameChanged);
  const int rngState = Game.RngState;
  Seed(99);
  Play(200, 2);
  const auto played = std::make_unique<GameState>(Game);

  Restart();
  Play(10, 3);
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
  EXPECT_EQ(Game.LastFileResult, static_cast<int>(bytes.size()));
  EXPECT_EQ(Game.RngState, rngState);
  EXPECT_EQ(Game.GameFileName, folder_ / "a.crp");
  EXPECT_EQ(Game.Flags[1].FlagValue, 7);
  EXPECT_EQ(Game.ChipStackName[99], "last \u00E9");
  EXPECT_FALSE(Game.ScriptChanged);
  EXPECT_FALSE(Game.GameChanged);
  EXPECT_EQ(folder_.Read("active.tmp"), folder_.Read("my.bet"));
  SaveGame(folder_ / "b.crp");
  EXPECT_TRUE(folder_.Read("b.crp") == bytes) << "saved again it is the same";

  Seed(99);
  Play(200, 2);
  EXPECT_TRUE(FieldsOf(static_cast<TableState&>(Game)) ==
              FieldsOf(static_cast<TableState&>(*played)));
  EXPECT_TRUE(FieldsOf(static_cast<Tallies&>(Game)) == FieldsOf(static_cast<Tallies&>(*played)));
  EXPECT_TRUE(FieldsOf(static_cast<GraphState&>(Game)) ==
              FieldsOf(static_cast<GraphState&>(*played)));
}

TEST_F(GameFile, WithoutOurMarkerOurFieldsTakeTheirDefaults) {
  Game.LogTopLine = 50;
  Game.ColorPrint = false;
  SaveGame(folder_ / "a.crp");
  std::string bytes = folder_.Read("a.crp");
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(Game.LogTopLine, 50);
  bytes[17 * 256 + 48] = 'x';
  OpenGame(folder_.Write("b.crp", bytes), true);
  EXPECT_EQ(Game.LogTopLine, 1);
  EXPECT_TRUE(Game.ColorPrint);
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68);
}

// --- Damage ---

/// Opens damaged bytes: a refusal leaves everything as it was, else the game agrees with itself and
/// ten rolls play. True for a game.
bool OpenDamaged(const ScratchFolder& folder, const std::string& bytes) {
  const std::string path = folder.Write("damaged.crp", bytes);
  const std::string before = FieldsAsBytes();
  OpenGame(path, true);
  if (Game.LastFileResult <= 0) {
    EXPECT_EQ(Game.MsgTitle, "Unable to Open Kelvanor Game File");
    EXPECT_TRUE(FieldsAsBytes() == before) << "a refusal changes nothing";
    return false;
  }
  EXPECT_EQ(FirstInconsistency(), "");
  Game.NumAutoRolls = Game.AutoRollsLeft = 0;
  Game.AutoRollDice = false;
  const int rolls = Game.RollCount[0];
  Game.LastErrorText.clear();
  for (int roll = 0; roll < 10; ++roll) RollDice();
  if (Abs(Bankroll()) < kRollingLimit && Game.LastErrorText.empty()) {
    EXPECT_EQ(Game.RollCount[0], rolls + 10);
    EXPECT_EQ(FirstInconsistency(), "") << "after ten rolls";
  }
  return true;
}

TEST_F(GameFile, EveryDamagedByteLeavesAGameOrARefusal) {
  const std::string bytes = SaveBusyGame(700);
  const auto headed = [](std::size_t at) { return at < 92; };
  // The records of settings densely, the long arrays here and there.
  constexpr std::size_t kArrays = 59 * kRecordSize;
  for (std::size_t at = 0; at < bytes.size(); at += at < kArrays ? 61 : 1201) {
    std::string damaged = bytes;
    damaged[at] = static_cast<char>(damaged[at] ^ (at % 2 == 0 ? 0xFF : 0x81));
    const bool game = OpenDamaged(folder_, damaged);
    EXPECT_TRUE(game || headed(at));
    if (HasFailure())
      FAIL() << "byte " << at % kRecordSize << " of record " << at / kRecordSize + 1;
  }
  std::mt19937 chance(5);
  for (int file = 0; file < 20; ++file) {
    std::string damaged = bytes;
    for (int byte = 0; byte < 200; ++byte)
      damaged[92 + chance() % (damaged.size() - 92)] = static_cast<char>(chance());
    OpenDamaged(folder_, damaged);
    if (HasFailure()) FAIL() << "file " << file;
  }
}

TEST_F(GameFile, OneDamagedCounterIsMendedByTheOthers) {
  const std::string bytes = SaveBusyGame(700);
  OpenGame(folder_ / "a.crp", true);
  const auto whole = std::make_unique<GameState>(Game);
  struct Damage {
    const char* What;
    unsigned Record, Offset;
  };
  for (const Damage& damage : std::initializer_list<Damage>{{"RollCount(0)", 245, 0},
                                                            {"RollCount(7)", 245, 28},
                                                            {"RollsSince(12)", 247, 48},
                                                            {"gap 3 of event 1", 257, 13},
                                                            {"gap 5 of event 7", 275, 218},
                                                            {"all passes", 540, 41},
                                                            {"come-out rolls", 540, 57},
                                                            {"TotalOnTable", 14, 98},
                                                            {"held vig", 45, 10},
                                                            {"the smallest chip", 22, 165},
                                                            {"decisions", 62, 8}}) {
    std::string damaged = bytes;
    char& byte = damaged[(damage.Record - 1) * 256 + damage.Offset];
    byte = static_cast<char>(byte ^ 0x11);
    OpenGame(folder_.Write("damaged.crp", damaged), true);
    EXPECT_TRUE(FieldsOf(static_cast<Tallies&>(Game)) == FieldsOf(static_cast<Tallies&>(*whole)))
        << damage.What;
    EXPECT_TRUE(FieldsOf(static_cast<TableState&>(Game)) ==
                FieldsOf(static_cast<TableState&>(*whole)))
        << damage.What;
  }
}

TEST_F(GameFile, CutAndLengthenedFiles) {
  const std::string bytes = SaveBusyGame(100);
  for (std::size_t cut = 0; cut <= bytes.size(); cut += cut % 5120 == 0 ? 37 : 219)
    EXPECT_EQ(OpenDamaged(folder_, bytes.substr(0, cut)), cut >= 574 * 256) << cut;
  for (const std::size_t more : {1, 256, 256 * 9, 256 * 12'000}) {
    EXPECT_TRUE(OpenDamaged(folder_, bytes + std::string(more, '\xAB')));
  }
  Shown.clear();
  OpenGame(folder_.Write("other.crp", std::string(200'000, 'x')), false);
  EXPECT_EQ(Game.LastFileResult, 0);
  EXPECT_TRUE(Shown.empty()) << "nobody asked for it";
  OpenGame(folder_ / "other.crp", true);
  EXPECT_EQ(TakeOnlyMessage().Text,
            "other.crp\n\nThis file is either from a different version, has been corrupted, or is "
            "not a true Kelvanor game file.");
  std::string other = bytes;
  other.replace(0, 92, "Some text with Data Format 5.1 in it" + std::string(56, ' '));
  OpenGame(folder_.Write("other.crp", other), true);
  EXPECT_GT(Game.LastFileResult, 0) << "the text is searched for, not compared";
  OpenGame(folder_ / "", true);
  EXPECT_EQ(Game.LastFileResult, -1);
}

// --- Companions ---

TEST_F(GameFile, TellsOfMissingAndChangedCompanions) {
  SaveBusyGame(5);
  const std::string tape = folder_.Write("t.rol", "abc");
  const std::string glg = folder_.Write("g.glg", "x");
  const std::string log = folder_.Write("l.txt", "x");
  SaveProbabilityFile(folder_ / "p.prb");
  const auto inUse = [&] {
    OpenScript(folder_ / "my.bet");
    Game.DiceRollFile = tape;
    Game.RecorderStatus = Playback;
    Game.DiceFilePos = 2;
    Game.GamesLogFile = glg;
    Game.EventsLogFile = log;
    LoadProbabilityFile(folder_ / "p.prb");
    Game.ProbMatrix[1][2][1] += 5;
  };
  inUse();
  SaveGame(folder_ / "a.crp");
  Restart();
  OpenGame(folder_ / "a.crp", true);
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_EQ(Game.RecorderStatus, Playback);
  EXPECT_EQ(Game.DiceFilePos, 2);
  EXPECT_EQ(Game.PrbFileName, folder_ / "p.prb");

  const std::string was = "(that was in use when this game was saved) ";
  const auto told = [&](const std::string& text, const std::string& title) {
    return ShownMessage{text, title, 0, OkStop};
  };
  for (const char* name : {"my.bet", "t.rol", "p.prb", "l.txt"}) {
    const fs::path path = folder_ / name;
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::hours(30));
  }
  OpenGame(folder_ / "a.crp", true);
  EXPECT_THAT(
      TakeShown(),
      ::testing::ElementsAre(
          told("The following Auto-Bet file " + was + "has been changed:\n\n" + folder_ / "my.bet",
               "Altered Auto-Bet File"),
          told("The following Dice Roll file " + was + "has been changed:\n\n" + tape,
               "Altered Dice Roll File"),
          told(
              "The following Probability file " + was + "has been changed:\n\n" + folder_ / "p.prb",
              "Altered Probability File"),
          told("The following Events Log " + was + "has been changed:\n\n" + log,
               "Changed Events Log")));
  EXPECT_EQ(Game.ScrCount, 6);
  EXPECT_EQ(Game.DiceRollFile, tape);
  EXPECT_EQ(Game.RecorderStatus, RecorderOff);
  EXPECT_EQ(Game.DiceFilePos, 1);

  for (const char* name : {"my.bet", "t.rol", "p.prb", "l.txt", "g.glg"})
    fs::remove(folder_ / name);
  OpenGame(folder_ / "a.crp", true);
  EXPECT_THAT(
      TakeShown(),
      ::testing::ElementsAre(
          told("The following Auto-Bet file " + was + "was not found:\n\n" + folder_ / "my.bet",
               "Missing Auto-Bet File"),
          told("The following Dice Roll file " + was + "was not found:\n\n" + tape,
               "Missing Dice Roll File"),
          told("The following Probability file " + was + "was not found:\n\n" + folder_ / "p.prb",
               "Missing Probability File"),
          told("The following Games Log " + was + "was not found:\n\n" + glg +
                   "\n\nThe default Games Log will be opened instead:\n\n" +
                   folder_ / "default.glg",
               "Missing Games Log"),
          told("The Events Log that was open when this game\nwas saved, was not found.",
               "Missing Events Log")));
  EXPECT_EQ(Game.ScrCount, 0);
  EXPECT_EQ(Game.DiceRollFile + Game.PrbFileName, "");
  EXPECT_EQ(Game.EventsLogFile, folder_ / "Events Log.txt");
  EXPECT_EQ(Game.GamesLogFile, folder_ / "default.glg");

  // Damaged ones are refused by their own routines, and a log that was never begun isn't missed.
  folder_.Write("my.bet", "no script");
  folder_.Write("p.prb", "no matrix");
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(Game.ScrCount, 0);
  EXPECT_EQ(Game.PrbFileName, "");
  SaveGame(folder_ / "b.crp");
  Shown.clear();
  OpenGame(folder_ / "b.crp", true);
  EXPECT_TRUE(Shown.empty());
}

TEST_F(GameFile, NamesThatTheFieldCannotHold) {
  const std::string name = folder_ / ("\u65E5\u672C " + std::string(110, 'n'));
  fs::create_directory(name);
  Game.DataPath = name + "/";
  Game.GamesLogFile = Game.DataPath + "default.glg";
  Game.EventsLogFile = Game.DataPath + "Events Log.txt";
  LoadScript(kScriptText);
  CloseSession();
  EXPECT_EQ(Game.LastFileResult, static_cast<int>(FileLength(Game.DataPath + "default.crp")));
  Restart();
  OpenLastSession();
  EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
  EXPECT_EQ(Game.ScrCount, 6);
  EXPECT_EQ(Game.GamesLogFile, name + "/default.glg");
}

// --- The last session ---

TEST_F(GameFile, TheLastSessionComesBackWithItsWindowsAndWhatWasNotSaved) {
  OpenLastSession();
  EXPECT_EQ(FileLength(folder_ / "active.tmp"), 256U) << "no script";
  LoadScript(kScriptText);
  Game.ProbMatrix[1][2][1] += 5;
  Game.ProbabilityChanged = true;
  const auto matrix = Game.ProbMatrix;
  Game.WindowPlaces[BankrollWindow] = {-1, 10, 20, 300, 200};
  Game.GameFileName = folder_ / "mine.crp";
  Put(Field, 25);
  SaveGame(folder_ / "mine.crp");
  EXPECT_FALSE(fs::exists(folder_ / "default.bet"));
  CloseSession();
  EXPECT_TRUE(Game.GameFileName.empty());
  EXPECT_TRUE(Game.AutoBetFile.empty() && Game.PrbFileName.empty() && Game.ProbabilityChanged);
  EXPECT_FALSE(fs::exists(folder_ / "active.tmp"));

  Restart();
  OpenGame(folder_ / "mine.crp", true);
  EXPECT_EQ(Game.WindowPlaces[BankrollWindow], WindowPlace()) << "only the last session's";
  EXPECT_EQ(Game.ScrCount, 0) << "nothing but that session keeps what isn't saved";
  Restart();
  OpenLastSession();
  EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
  EXPECT_EQ(Bet(Field), Currency(25));
  EXPECT_EQ(Game.ScrCount, 6);
  EXPECT_EQ(Game.AutoBetFile, folder_ / "default.bet");
  EXPECT_TRUE(Game.ProbMatrix == matrix);
  EXPECT_EQ(Game.WindowPlaces[BankrollWindow], (WindowPlace{-1, 10, 20, 300, 200}));
  EXPECT_EQ(folder_.Read("active.tmp"), folder_.Read("default.bet"));
  EXPECT_TRUE(Game.GameFileName.empty());

  // Changed again and never saved by the player, it is kept again.
  InsertLine(1, ReadLine("' a remark"));
  CloseSession();
  Restart();
  OpenLastSession();
  EXPECT_EQ(Game.ScrCount, 7);

  folder_.Write("default.crp", "of another program");
  Restart();
  OpenLastSession();
  EXPECT_TRUE(Shown.empty());
  EXPECT_EQ(Bankroll(), Currency(500));
}

TEST_F(GameFile, AScriptThatResetsTheTableKeepsTheGame) {
  TheHost.SaveGameToTemp = SaveGameToTemp;
  LoadScript("When . . .\nNext roll is a come-out roll\nthen . . .\nReset table\n");
  Game.AutoBetActive = 1;
  Game.GameFileName = "mine";
  RollNamedDice(3, 4);
  OpenGame(folder_ / "lastgame.crp", true);
  EXPECT_EQ(Game.RollCount[7], 1);
}

// --- Failures ---

TEST_F(GameFile, AFailedSaveTellsAndLeavesTheOldFileWhole) {
  const std::string bytes = SaveBusyGame(20);
  const std::string path = folder_ / "a.crp";
  fs::create_directory(folder_ / "sub.crp");
  Game.GameFileName = "before";
  Game.GameChanged = true;
  const auto fails = [&](const std::string& target) {
    Shown.clear();
    SaveGame(target);
    EXPECT_EQ(Game.LastFileResult, -1) << target;
    EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{BareName(target) + "\ncan't be written.",
                                               "Unable to Save Kelvanor Game File", 0, OkStop}));
    EXPECT_TRUE(Game.GameChanged);
    EXPECT_EQ(Game.GameFileName, "before");
    EXPECT_TRUE(folder_.Read("a.crp") == bytes);
  };
  fails(folder_ / "gone/a.crp");
  fails(folder_ / "sub.crp");
  {
    const FileSizeLimit full(20'000);
    fails(path);
  }
  fs::permissions(path, fs::perms::owner_read);
  fails(path);
  fs::permissions(path, fs::perms::owner_all);
  folder_.Write("kelvanor0.tmp", bytes.substr(0, 5000));  // what a killed program left
  SaveGame(path);
  EXPECT_EQ(Game.LastFileResult, static_cast<int>(bytes.size()));
}

}  // namespace
