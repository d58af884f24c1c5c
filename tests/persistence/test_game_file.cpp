#include "persistence/game_file.h"

#include <sys/stat.h>

#include <chrono>
#include <cstring>

#include "autobet/hot_keys.h"
#include "autobet/output_file.h"
#include "autobet/script_reader.h"
#include "bets/bankroll.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/limits.h"
#include "dice/probability_file.h"
#include "persistence/game_file_table.h"
#include "persistence/kept_game.h"
#include "persistence/session.h"
#include "support/file_size_limit.h"
#include "support/same_game.h"
#include "support/table_fixture.h"

namespace {

constexpr const char* kScriptText =
    "When . . .\nNext roll is a come-out roll\nFlag \"Hot\" is True\nthen . . .\n"
    "Set flag \"Hot\" to False\nSet flag \"Cold\" to True\n";

/// Where a field stands in the bytes of a file.
std::size_t At(int record, int offset) { return (record - 1) * 256 + offset; }

/// A file of the game as it was before there was a checksum.
std::string WithoutChecksum(std::string bytes) {
  return bytes.replace(At(kOwnFieldsRecord, 200), 8, 8, '\0');
}

/// An amount up to `most`, small ones as likely as large ones.
Currency AnyAmount(std::mt19937_64& chance, Currency most) {
  if (chance() % 4 == 0) return most;
  const auto any = static_cast<std::int64_t>((chance() >> chance() % 64));
  return Currency::FromRaw(any % (most.Raw() / 2) * 2 % most.Raw());
}

/// Puts any value that its row allows into a slot of money.
void DrawSlot(const FieldRow& row, int index, std::mt19937_64& chance, std::string& bytes) {
  const bool below = row.Limits.Low < 0 && chance() % 4 == 0;
  const auto most = Currency::FromRaw(below ? -row.Limits.Low : row.Limits.High);
  const Currency amount = AnyAmount(chance, most);
  Record slot;
  slot.PutMoney(0, below ? -amount : amount);
  bytes.replace(At(row.Record + index / row.PerRecord, row.Offset + index % row.PerRecord * 8), 8,
                reinterpret_cast<const char*>(slot.Bytes()), 8);
}

/// The fields of a game as bytes of a file.
std::string FieldsAsBytes(GameState& game = Game) {
  std::vector<Record> records(kFixedRecords);
  for (const auto rows : {GameFields(), WindowFields()}) PutFields(rows, game, records);
  return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
}

class GameFile : public FolderTest {
 protected:
  /// A fresh program in the same folder.
  void Restart() {
    ClearScript();
    LayDownDefaults();
    Shown.clear();
  }

  void OpenSession() {
    Restart();
    OpenLastSession();
  }

  /// Saves the game and opens it in a fresh program.
  void SaveAndOpen() {
    SaveGame(folder_ / "a.crp");
    Restart();
    OpenGame(folder_ / "a.crp", true);
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
    SeedDice(4711);
    Play(rolls, 1);
    Game.ChipStackName[99] = "last \u00E9";
    Put(FirstChipStack, 33);
    SaveGame(folder_ / "a.crp");
    EXPECT_EQ(Game.LastFileResult, static_cast<int>(folder_.Read("a.crp").size()));
    return folder_.Read("a.crp");
  }
};

// --- The table ---

/// Gives a field a value that its row allows, unlike most others.
struct Fill {
  const FieldRow& Row;
  std::int64_t N;

  std::int64_t Sample(std::int64_t scale) const {
    const std::int64_t low = std::max(Row.Limits.Low / scale, std::int64_t{-30'000});
    const std::int64_t high = std::min(Row.Limits.High / scale, std::int64_t{32'000});
    return low + N * 7'919 % (high - low + 1);
  }
  int Number() const { return static_cast<int>(Sample(Currency::kScale)); }

  void operator()(Currency* f) const { *f = Currency::FromRaw(Sample(1)); }
  void operator()(int* f) const { *f = Number(); }
  void operator()(std::uint32_t* f) const { *f = static_cast<std::uint32_t>(Number()); }
  void operator()(bool* f) const { *f = N % 3 == 0; }
  void operator()(float* f) const { *f = static_cast<float>(Number()); }
  void operator()(double* f) const { *f = static_cast<double>(N) + 0.0625; }
  void operator()(std::string* f) const { *f = "text " + std::to_string(N); }
  void operator()(DicePair f) const { *f.First = 2, *f.Second = static_cast<int>(N % 6 + 1); }
  void operator()(NumberText f) const { *f.Text = std::to_string(N) + ".5"; }
};

struct Address {
  const void* operator()(DicePair dice) const { return dice.First; }
  const void* operator()(NumberText number) const { return number.Text; }
  const void* operator()(const void* single) const { return single; }
};

TEST_F(GameFile, EveryFieldHasAPlaceOfItsOwnAndComesBack) {
  const auto filled = std::make_unique<GameState>();
  std::vector<bool> used(kFixedRecords * kRecordSize);
  std::set<const void*> fields;
  std::int64_t n = 0;
  for (const auto rows : {WindowFields(), GameFields()})
    for (const FieldRow& row : rows) {
      const int width = row.Form == SlotForm::TextSlot ? row.TextWidth : WidthOf(row.Form);
      for (int index = 0; index < row.Count; ++index) {
        const FieldPointer field = row.Field(*filled, index);
        std::visit(Fill{row, ++n}, field);
        const std::string name = std::string(row.Name) + " " + std::to_string(index);
        const bool own = fields.insert(std::visit(Address(), field)).second;
        EXPECT_TRUE(own || row.Name == "EventsLogActive") << name;
        const int offset = row.Offset + index % row.PerRecord * width;
        const auto slot = used.begin() + At(row.Record + index / row.PerRecord, offset);
        EXPECT_TRUE(offset + width <= 256 && std::count(slot, slot + width, true) == 0) << name;
        std::fill_n(slot, width, true);
      }
    }
  std::string bytes = FieldsAsBytes(*filled);
  bytes.replace(At(kOwnFieldsRecord, kOwnFieldsOffset), kOwnFieldsMarker.size(), kOwnFieldsMarker);
  const RecordFile file = ReadRecords(folder_.Write("filled", bytes), kFixedRecords);
  const auto read = std::make_unique<GameState>();
  for (const auto rows : {WindowFields(), GameFields()}) TakeFields(rows, file, *read);
  EXPECT_TRUE(FieldsAsBytes(*read) == FieldsAsBytes(*filled));
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
  using Place = std::tuple<int, int, unsigned, std::int64_t>;
  for (const auto& [record, offset, width, expected] : std::initializer_list<Place>{
           {13, 24, 8, 30'000},   {26, 200, 8, 2'000'000},  {20, 8, 8, 77},
           {44, 200, 8, 460'000}, {45, 56, 8, 90'000},      {47, 6, 2, 0xFFFF},
           {59, 240, 8, 210'000}, {135, 40, 8, 50'000},     {244, 2, 2, 0xFFFC},
           {246, 0, 4, 64},       {539, 164, 4, 12},        {18, 32, 4, 0x0180FF},
           {16, 70, 2, 0xFFFF},   {8, 220, 4, 1},           {8, 232, 4, 4},
           {14, 80, 8, 650'000},  {542, 80, 4, 0x72756F66}, {48, 0, 8, 5000 * 2},
           {51, 32, 8, -10'000},  {11, 56, 8, 500}}) {
    std::int64_t value = 0;
    std::memcpy(&value, &bytes[At(record, offset)], width);
    EXPECT_EQ(value, expected) << "record " << record << " offset " << offset;
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
  SeedDice(99);
  Play(200, 2);
  const StateOfPlay played;

  Restart();
  Play(10, 3);
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
  EXPECT_EQ(Game.LastFileResult, static_cast<int>(bytes.size()));
  EXPECT_EQ(Game.RngState, rngState);
  EXPECT_EQ(Game.GameFileName, folder_ / "a.crp");
  EXPECT_EQ(Game.Flags[1].FlagValue, 7);
  EXPECT_EQ(Game.ChipStackName[99], "last \u00E9");
  EXPECT_TRUE(Game.ScriptChanged) << "as after any opening of a script";
  EXPECT_FALSE(Game.GameChanged);
  EXPECT_EQ(folder_.Read("active.tmp"), folder_.Read("my.bet"));
  SaveGame(folder_ / "b.crp");
  EXPECT_TRUE(folder_.Read("b.crp") == bytes) << "saved again it is the same";

  SeedDice(99);
  Play(200, 2);
  EXPECT_TRUE(StateOfPlay() == played);
}

TEST_F(GameFile, WithoutOurMarkerOurFieldsTakeTheirDefaults) {
  Game.LogTopLine = 50;
  Game.ColorPrint = false;
  SaveGame(folder_ / "a.crp");
  std::string bytes = WithoutChecksum(folder_.Read("a.crp"));
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(Game.LogTopLine, 50);
  bytes[17 * 256 + 48] = 'x';
  OpenGame(folder_.Write("b.crp", bytes), true);
  EXPECT_TRUE(Game.LogTopLine == 1 && Game.ColorPrint);
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68);
}

// --- Damage ---

TEST_F(GameFile, CountersThatContradictEachOtherBeginAnew) {
  std::string bytes = WithoutChecksum(SaveBusyGame(700));
  const auto whole = std::make_unique<GameState>(Game);
  bytes[244 * 256 + 28] ^= 0x11;  // how often a 7 was rolled
  OpenGame(folder_.Write("damaged.crp", bytes), true);
  EXPECT_EQ(TakeOnlyMessage().Title, "Counts Begin Anew");
  EXPECT_EQ(FirstInconsistency(), "");
  EXPECT_EQ(std::pair(Game.RollCount[0], Game.BankrollSum), std::pair(0, Currency(0)));
  EXPECT_TRUE(Game.Bets == whole->Bets && Game.Point == whole->Point);
}

TEST_F(GameFile, ADamagedFileIsOpenedOnlyWhenThePlayerWantsTo) {
  const std::string path = folder_.Write("a.crp", SaveBusyGame(20) + '\0');
  const Currency bankroll = Bankroll();
  NewGame(false);
  OpenGame(path, true);  // the answer by rule is No
  const ShownMessage question = TakeOnlyMessage();
  EXPECT_EQ(question.Title, "Damaged Game File");
  EXPECT_TRUE(question.Text.starts_with("a.crp\nis damaged"));
  EXPECT_EQ(std::pair(Game.LastFileResult, Game.RollCount[0]), std::pair(0, 0));
  Answers = {kYes};
  OpenGame(path, true);
  EXPECT_EQ(Bankroll(), bankroll);
  EXPECT_TRUE(Game.GameFileName.empty() && Game.GameChanged) << "never saved over the damaged one";
}

TEST_F(GameFile, TheFormerFileIsKeptBesideTheNewOne) {
  const std::string path = folder_ / "a.crp";
  const std::string first = SaveBusyGame(5);
  EXPECT_FALSE(fs::exists(path + ".bak"));
  Play(5, 9);
  SaveGame(path);
  EXPECT_TRUE(folder_.Read("a.crp.bak") == first && folder_.Read("a.crp") != first);
  Play(5, 9);
  SaveGame(path);
  EXPECT_TRUE(folder_.Read("a.crp.bak") != first);
  EXPECT_FALSE(fs::exists(path + ".bak.new"));
  OpenGame(path + ".bak", true);
  EXPECT_EQ(Game.RollCount[0], 10);
  EXPECT_TRUE(Game.GameFileName.empty() && Game.GameChanged);
}

/// Rates and amounts from the whole range of their rows: what is loaded can be played.
TEST_F(GameFile, NoRollOverflowsWithinTheLimits) {
  const std::string bytes = WithoutChecksum(SaveBusyGame(3));
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937_64 chance(seed);
    std::string drawn = bytes;
    for (const FieldRow& row : GameFields()) {
      const bool money = std::holds_alternative<Currency*>(row.Field(Game, 0));
      const bool sum = row.Limits.High == kMostSum.Raw();
      if (!money || sum || row.Record < 10 || row.Record > 59) continue;
      for (int index = 0; index < row.Count; ++index)
        if (chance() % 3 == 0) DrawSlot(row, index, chance, drawn);
    }
    Game.HyperDriveOn = false;
    OpenGame(folder_.Write("drawn.crp", drawn), true);
    ASSERT_GT(Game.LastFileResult, 0);
    ASSERT_EQ(FirstInconsistency(), "");
    Game.NegBankroll = chance() % 2 == 0;
    Game.Bets[BankrollIndex] = Game.NegBankroll && chance() % 2 == 0 ? -9'999'999 : 9'999'999;
    Game.HyperDriveOn = chance() % 2 == 0;
    Game.AutoTakeFullOdds = Game.AutoLayFullOdds = chance() % 2 == 0;
    Game.OddsCalcMethod = static_cast<int>(chance() % 6);
    Game.HandleWinningBets = static_cast<int>(chance() % 7) + 1;
    Game.HandleLosingBets = static_cast<int>(chance() % 7) + 1;
    Game.LastErrorText.clear();
    for (int roll = 0; roll < 12 && Abs(Bankroll()) <= kRollingLimit; ++roll) {
      for (int bet = 0; bet < 20; ++bet)
        Put(static_cast<int>(chance() % LastBet) + 1, AnyAmount(chance, kMostMoney));
      RollDice();
      ASSERT_EQ(Game.LastErrorText, "");
    }
    Game.HyperDriveOn = false;
    ArrangeAllChips();
    ASSERT_EQ(FirstInconsistency(), "");
    Game.NegBankroll = Game.NegBankroll || Bankroll() < 0;
    SaveGame(folder_ / "played.crp");
    const std::string played = FieldsAsBytes();
    OpenGame(folder_ / "played.crp", true);
    const std::string back = FieldsAsBytes();
    const auto at = std::mismatch(back.begin(), back.end(), played.begin()).first - back.begin();
    EXPECT_TRUE(back == played) << "record " << at / 256 + 1 << " offset " << at % 256;
    Shown.clear();
  }
}

TEST_F(GameFile, AnotherFileIsNoGame) {
  const std::string bytes = SaveBusyGame(5);
  Shown.clear();
  OpenGame(folder_.Write("other.crp", std::string(200'000, 'x')), false);
  EXPECT_EQ(Game.LastFileResult, 0);
  EXPECT_TRUE(Shown.empty()) << "nobody asked for it";
  OpenGame(folder_ / "other.crp", true);
  EXPECT_EQ(TakeOnlyMessage().Text,
            "other.crp\n\nThis file is either from a different version, has been corrupted, or is "
            "not a true Kelvanor game file.");
  std::string other = WithoutChecksum(bytes);
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
  OpenScript(folder_ / "my.bet");
  Game.DiceRollFile = tape;
  Game.RecorderStatus = Playback;
  Game.DiceFilePos = 2;
  Game.GamesLogFile = glg;
  Game.EventsLogFile = log;
  LoadProbabilityFile(folder_ / "p.prb");
  Game.ProbMatrix[1][2][1] += 5;
  SaveAndOpen();
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_EQ(std::pair(Game.RecorderStatus, Game.DiceFilePos), std::pair(+Playback, 2));
  EXPECT_EQ(Game.PrbFileName, folder_ / "p.prb");

  const auto told = [](const std::string& kind, const char* happened, const std::string& path,
                       const char* title) {
    const std::string which = kind + " (that was in use when this game was saved) ";
    return Stop(title, kTopicFiles, "The following " + which + happened + ":\n\n" + path);
  };
  const auto changed = "has been changed", gone = "was not found";
  const std::string script = folder_ / "my.bet", matrix = folder_ / "p.prb";
  for (const fs::path path : {script, tape, matrix, log})
    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::hours(30));
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(TakeShown(),
            (std::vector{told("Auto-Bet file", changed, script, "Altered Auto-Bet File"),
                         told("Dice Roll file", changed, tape, "Altered Dice Roll File"),
                         told("Probability file", changed, matrix, "Altered Probability File"),
                         told("Events Log", changed, log, "Changed Events Log")}));
  EXPECT_EQ(Game.ScrCount, 6);
  EXPECT_EQ(std::pair(Game.DiceRollFile, Game.DiceFilePos), std::pair(tape, 1));
  EXPECT_EQ(Game.RecorderStatus, RecorderOff);

  for (const std::string& path : {script, tape, matrix, log, glg}) fs::remove(path);
  OpenGame(folder_ / "a.crp", true);
  const std::string instead = "\n\nThe default Games Log will be opened instead:\n\n";
  EXPECT_EQ(
      TakeShown(),
      (std::vector{
          told("Auto-Bet file", gone, script, "Missing Auto-Bet File"),
          told("Dice Roll file", gone, tape, "Missing Dice Roll File"),
          told("Probability file", gone, matrix, "Missing Probability File"),
          told("Games Log", gone, glg + instead + folder_ / "default.glg", "Missing Games Log"),
          Stop("Missing Events Log", kTopicFiles,
               "The Events Log that was open when this game\nwas saved, was not found.")}));
  EXPECT_EQ(Game.ScrCount, 0);
  EXPECT_EQ(Game.DiceRollFile + Game.PrbFileName, "");
  EXPECT_EQ(Game.EventsLogFile, folder_ / "Events Log.txt");
  EXPECT_EQ(Game.GamesLogFile, folder_ / "default.glg");

  // Damaged ones are refused by their own routines, and a log that was never begun isn't missed.
  folder_.Write("my.bet", "no script");
  folder_.Write("p.prb", "no matrix");
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(std::pair(Game.ScrCount, Game.PrbFileName), std::pair(0, std::string()));
  SaveGame(folder_ / "b.crp");
  Shown.clear();
  OpenGame(folder_ / "b.crp", true);
  EXPECT_TRUE(Shown.empty());
}

TEST_F(GameFile, NothingElseBeginsWhileTheLoadTellsOfACompanion) {
  SaveBusyGame(5);
  const int rolls = Game.RollCount[0];
  const std::string before = FieldsAsBytes();
  fs::remove(folder_ / "my.bet");
  Game.AutoBetOutputFile.clear();
  int told = 0;
  TheHost.ShowMessage = [&](bool) {
    if (Game.MsgTitle != "Missing Auto-Bet File") return;
    ++told;
    RollDice();
    OpenGame(folder_ / "a.crp", true);
    const int opened = std::exchange(Game.LastFileResult, -1);
    SaveGame(folder_ / "a.crp");
    EXPECT_EQ(std::pair(opened, Game.LastFileResult), std::pair(0, 0));
  };
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(std::pair(told, Game.RollCount[0]), std::pair(1, rolls));
  EXPECT_GT(Game.LastFileResult, 0);

  // A screen that fails leaves the game that stood.
  TheHost.ShowMessage = [](bool) {
    if (Game.MsgTitle == "Missing Auto-Bet File") throw std::bad_alloc();
  };
  LoadScript(kScriptText);
  Game.Bets[FirstChipStack] += 5;
  const std::string stood = FieldsAsBytes();
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(std::pair(Game.LastFileResult, Game.ScrCount), std::pair(-1, 6));
  EXPECT_TRUE(FieldsAsBytes() == stood && stood != before && !Game.RollInProgress);
}

TEST_F(GameFile, WhatIsNoFileIsRefusedWithoutWaitingForIt) {
  const std::string pipe = folder_ / "default.crp";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  OpenLastSession();
  EXPECT_EQ(TakeOnlyMessage().Text, FileText(pipe, "can't be read: it isn't a file."));
  EXPECT_TRUE(!CloseSession() && fs::is_fifo(pipe));
  // The output file of a script, too.
  SaveGame(folder_ / "a.crp");
  std::string bytes = WithoutChecksum(folder_.Read("a.crp"));
  bytes.replace(3 * 256 + 100, pipe.size(), pipe);
  OpenGame(folder_.Write("a.crp", bytes), true);
  EXPECT_GT(Game.LastFileResult, 0);
  EXPECT_EQ(Game.AutoBetOutputFile, "");
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
  OpenSession();
  EXPECT_EQ(std::pair(TakeShown(), Game.ScrCount), std::pair(std::vector<ShownMessage>(), 6));
  EXPECT_EQ(Game.GamesLogFile, name + "/default.glg");

  // A file that nobody knows by name any more is looked for, unless two would be kept alike.
  const std::string folder = folder_ / "\u0438\u0433\u0440\u044B/";
  fs::create_directory(folder);
  for (const std::string& file :
       {folder + "\u0431\u0430\u043D\u043A.bet", folder + std::string(120, 's') + ".bet"}) {
    SaveScript(file);
    SaveAndOpen();
    EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
    EXPECT_EQ(Game.AutoBetFile, file);
  }
  SaveScript(folder + std::string(121, 's') + ".bet");
  Restart();
  OpenGame(folder_ / "a.crp", true);
  EXPECT_EQ(TakeOnlyMessage().Title, "Missing Auto-Bet File");
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
  EXPECT_EQ(Game.GameFileName + Game.AutoBetFile + Game.PrbFileName, "");
  EXPECT_TRUE(Game.ProbabilityChanged);
  EXPECT_FALSE(fs::exists(folder_ / "active.tmp"));

  Restart();
  OpenGame(folder_ / "mine.crp", true);
  EXPECT_EQ(Game.WindowPlaces[BankrollWindow], WindowPlace()) << "only the last session's";
  EXPECT_EQ(Game.ScrCount, 0) << "nothing but that session keeps what isn't saved";
  OpenSession();
  EXPECT_EQ(TakeShown(), std::vector<ShownMessage>());
  EXPECT_EQ(std::pair(Bet(Field), Game.ScrCount), std::pair(Currency(25), 6));
  EXPECT_EQ(Game.AutoBetFile, folder_ / "default.bet");
  EXPECT_TRUE(Game.ProbMatrix == matrix);
  EXPECT_EQ(Game.WindowPlaces[BankrollWindow], (WindowPlace{-1, 10, 20, 300, 200}));
  EXPECT_EQ(folder_.Read("active.tmp"), folder_.Read("default.bet"));
  EXPECT_TRUE(Game.GameFileName.empty());

  // Changed again and never saved by the player, it is kept again.
  InsertLine(1, ReadLine("' a remark"));
  CloseSession();
  OpenSession();
  EXPECT_EQ(Game.ScrCount, 7);

  folder_.Write("default.crp", "of another program");
  OpenSession();
  EXPECT_TRUE(Shown.empty());
  EXPECT_EQ(Bankroll(), Currency(500));
}

TEST_F(GameFile, ClosingTellsWhatItCannotKeep) {
  using Case = std::pair<std::string, void (*)()>;
  for (const auto& [file, change] :
       {Case{"default.bet", [] { LoadScript(kScriptText); }},
        Case{"default.prb", [] { Game.ProbabilityChanged = true; }},
        Case{"HotKeys.dta", [] { SaveHotKeys(); }}, Case{"default.crp", [] {}}}) {
    Restart();
    Game.ProbabilityChanged = false;
    fs::remove_all(folder_ / "default.crp");
    fs::create_directories(folder_ / file);
    change();
    Shown.clear();
    EXPECT_FALSE(CloseSession()) << file;
    EXPECT_TRUE(TakeOnlyMessage().Text.starts_with(file));
    EXPECT_EQ(fs::is_regular_file(folder_ / "default.crp"), file != "default.crp");
    fs::remove(folder_ / file);
    EXPECT_TRUE(CloseSession()) << file;
  }
}

TEST_F(GameFile, AGameThatWasNotClosedIsOffered) {
  const std::string saved = SaveBusyGame(5);
  OfferKeptGame();
  KeepGame();
  EXPECT_FALSE(fs::exists(folder_ / "kept1.crp")) << "nothing has changed";
  Play(5, 4);
  InsertLine(1, ReadLine("' not saved"));
  Game.ScriptUnsaved = true;
  Game.ProbMatrix[1][2][1] += 5;
  Game.ProbabilityChanged = true;
  KeepGame();
  const auto written = fs::last_write_time(folder_ / "kept1.crp");
  KeepGame();
  EXPECT_EQ(fs::last_write_time(folder_ / "kept1.crp"), written);
  EXPECT_TRUE(folder_.Read("a.crp") == saved);
  const auto kept = std::make_unique<GameState>(Game);

  // Declined it stays, and the next one has another name.
  Restart();
  OfferKeptGame();
  EXPECT_EQ(TakeOnlyMessage().Title, "Kelvanor Was Not Closed Properly");
  EXPECT_EQ(Game.RollCount[0], 0);
  Play(1, 4);
  KeepGame();
  EXPECT_TRUE(fs::exists(folder_ / "kept2.crp") && fs::exists(folder_ / "kept1-declined.crp"));
  fs::remove(folder_ / "kept2.crp");
  fs::rename(folder_ / "kept1-declined.crp", folder_ / "kept1.crp");

  Restart();
  Answers = {kYes};
  OfferKeptGame();
  EXPECT_EQ(TakeShown().size(), 1U);
  EXPECT_EQ(Game.Bets, kept->Bets);
  EXPECT_EQ(Game.RollCount, kept->RollCount);
  EXPECT_TRUE(Game.ScrCount == 7 && Game.ScriptUnsaved && Game.AutoBetFile.empty());
  EXPECT_TRUE(Game.ProbMatrix == kept->ProbMatrix && Game.PrbFileName.empty());
  EXPECT_TRUE(Game.GameChanged && Game.GameFileName.empty());
  EndSession();
  EXPECT_TRUE(fs::exists(folder_ / "kept1.crp") && fs::exists(folder_ / "default.crp"));
  EXPECT_TRUE(CloseSession());
  EXPECT_FALSE(fs::exists(folder_ / "kept1.crp") || fs::exists(folder_ / "kept1.bet"));
}

TEST_F(GameFile, NothingIsWrittenWhereThePlayerHasNotChosen) {
  for (const char* folder : {"data", "game", "elsewhere"}) fs::create_directory(folder_ / folder);
  Game.DataPath = folder_ / "data/";
  LoadScript("While . . .\nNext roll is a come-out roll\nthen . . .\nOutput to file. New line.\n");
  LogEverything();
  Game.EventsLogFile = folder_.Write("elsewhere/log.txt", "");
  Game.DiceRollFile = folder_.Write("elsewhere/t.rol", "\x24");
  Game.RecorderStatus = Recording;
  Game.DiceFilePos = 2;
  Game.AutoBetOutputFile = folder_ / "elsewhere/out.txt";
  SaveScript(folder_ / "game/s.bet");
  Game.AutoBetActive = 1;
  SaveGame(folder_ / "game/a.crp");
  const auto open = [&] {
    folder_.Write("elsewhere/log.txt", "");
    OpenGame(folder_ / "game/a.crp", true);
    Game.ClearLogOnNew = true;
    Shown.clear();
    Game.ScriptChanged = false;
  };
  open();
  NewGame(true);  // would clear the log
  Game.Point = 0;
  RollNamedDice(1, 2);
  const auto asked = TakeShown();
  EXPECT_EQ(asked.size(), 3U);
  for (const auto& ask : asked) EXPECT_EQ(ask.Title, "File Outside the Folder of the Game");
  EXPECT_EQ(Game.EventsLogFile, folder_ / "data/Events Log.txt");
  EXPECT_GT(FileLength(Game.EventsLogFile), 50U);
  EXPECT_EQ(folder_.Read("elsewhere/log.txt") + folder_.Read("elsewhere/t.rol"), "\x24");
  EXPECT_FALSE(fs::exists(folder_ / "elsewhere/out.txt"));

  open();
  Answers.assign(3, kYes);
  RollNamedDice(1, 2);
  EXPECT_EQ(TakeShown().size(), 3U);
  EXPECT_GT(FileLength(folder_ / "elsewhere/log.txt"), 50U);
  EXPECT_EQ(FileLength(folder_ / "elsewhere/t.rol"), 2U);
  EXPECT_TRUE(fs::exists(folder_ / "elsewhere/out.txt")) << Game.LastErrorText;
  open();
  RollNamedDice(1, 2);
  EXPECT_TRUE(TakeShown().empty()) << "what was allowed is remembered";
  CloseOutputFile();
}

TEST_F(GameFile, AScriptThatResetsTheTableKeepsTheGame) {
  TheHost.SaveGameToTemp = SaveGameToTemp;
  LoadScript("When . . .\nNext roll is a come-out roll\nthen . . .\nReset table\n");
  Game.AutoBetActive = 1;
  Game.GameFileName = "mine";
  RollNamedDice(3, 4);
  OpenGame(folder_ / "lastgame.crp", true);
  EXPECT_EQ(Game.RollCount[7], 1);
  // Under Hyper-Drive not more often than twice a second.
  std::uint32_t now = 50'000'000;
  TheHost.Milliseconds = [&now] { return now; };
  const auto keeps = [this](bool hyperDrive) {
    fs::remove(folder_ / "lastgame.crp");
    Game.HyperDriveOn = hyperDrive;
    SaveGameToTemp();
    Game.HyperDriveOn = false;
    return fs::exists(folder_ / "lastgame.crp");
  };
  EXPECT_TRUE(keeps(true));
  now += 499;
  EXPECT_FALSE(keeps(true));
  now += 1;
  EXPECT_TRUE(keeps(true) && keeps(false));
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
    EXPECT_EQ(TakeOnlyMessage(), Stop("Unable to Save Kelvanor Game File", kTopicFiles,
                                      FileFailureText(target, "written")));
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

TEST_F(GameFile, ALoadForgetsHalfDoneThrowsAndAllowsTheBankrollItFinds) {
  Game.Bets[BankrollIndex] = -50;  // as a damaged or foreign file may have it
  Game.NegBankroll = false;
  SaveGame(folder_ / "a.crp");
  Game.ManualRollPending = true;
  Game.PendingDie1 = Game.PendingDie2 = 6;
  OpenGame(folder_ / "a.crp", true);
  EXPECT_FALSE(Game.ManualRollPending);
  EXPECT_EQ(std::pair(Bankroll(), Game.NegBankroll), std::pair(Currency(-50), true));
}

}  // namespace
