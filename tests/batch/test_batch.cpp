// The batch program, as its user meets it: a command line, and what becomes of files.
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <iomanip>
#include <thread>

#include "autobet/engine.h"
#include "autobet/script_reader.h"
#include "batch/batch.h"
#include "batch/details.h"
#include "batch/run_file.h"
#include "batch/stream.h"
#include "dice/probability_file.h"
#include "dice/tape_file.h"
#include "figures/games_log.h"
#include "figures/games_view.h"
#include "persistence/game_file.h"
#include "play/start_up.h"
#include "support/table_fixture.h"

namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Bets in many ways, remembers in all that outlives a roll (flags, stacks, their names, choices of
/// Auto-Play, skewed dice, working states), and ends games early by stopping and by a new game.
const char* const kBusyScript =
    "When . . .\nInitializing Auto-Bet\nthen . . .\nBet $ 12 on Place 6\n"
    "Bet $ 300 on Chip-Stack # 5\n"
    "While . . .\nFlag \"Pressed\" is False\nPlace 6 is less than $ 30\nthen . . .\n"
    "Add $ 6 to Place 6\nSet flag \"Pressed\" to True\n"
    "While . . .\nFlag \"Late\" is False\nChip-Stack # 5 is not named \"late\"\n"
    "then . . .\nBet $ 5 on Hard 6\n"
    "When . . .\nThe # of rolls in the game are equal to 30\nthen . . .\n"
    "Set flag \"Late\" to True\nName Chip-Stack # 5 \"late\"\n"
    "When . . .\nNext roll is a come-out roll\nthen . . .\nBet $ 10 on Pass Line\n"
    "Set flag \"Pressed\" to False\nSet Auto-Handle Winning Bets to Press 1 Unit\n"
    "When . . .\nA point is established on any number\nthen . . .\n"
    "Bet $ 20 on Pass Line Odds\nBet $ 20 on Field\nAdd $ 1 to Chip-Stack # 7\n"
    "Call OFF Place 6\n";

struct Outcome {
  int Status = 0;
  std::string Out, Err;
};

class Batch : public FolderTest {
 protected:
  Batch() {
    WriteScriptFile("busy.bet", kBusyScript);
    WriteGameFile("skewed.crp");
    StartAfresh();
  }

  std::string WriteScriptFile(const std::string& name, const std::string& text) {
    LoadScript(text);
    SaveScript(folder_ / name);
    EXPECT_GT(Game.LastFileResult, 0) << name;
    return folder_ / name;
  }

  /// A game in the middle of play, with dice, rules and a bankroll of its own.
  void WriteGameFile(const std::string& name) {
    Game.AutoBetFile.clear();
    Game.ProbMatrix[1][2][3] += 500;
    Game.ProbMatrix[1][3][2] -= 500;
    SaveProbabilityFile(folder_ / "skewed.prb");
    Game.UseSkewedProbability = true;
    Game.OddsAllowed68 = 5;
    Game.BankrollInitAmt = 700;
    NewGame(false);
    Given(PassLine, 10);
    for (int i = 0; i < 20; ++i) Roll(1 + i % 6, 1 + i % 5);
    Game.HyperThrottle = 3;
    Game.NumAutoRolls = 2;
    Game.EventsLogActive = true;
    Game.EventsLogFile = folder_ / "Events Log.txt";
    Game.GamesLogFile = folder_ / "player.glg";
    Game.RngChoice = Rng8SingleCall;
    SaveGame(folder_ / name);
  }

  /// Obeys a command line, in which "./" is the folder.
  Outcome Obey(const std::string& command) const {
    std::istringstream in(command);
    std::vector<std::string> words;
    for (std::string word; in >> std::quoted(word); words.push_back(word))
      if (word.starts_with("./")) word = folder_ / word.substr(2);
    std::ostringstream out, err;
    Console console{out, err, false};
    const int status = RunBatch(words, console);
    return {status, out.str(), err.str()};
  }

  static std::string PlayWords(const std::string& name, std::int64_t games) {
    return "play --script ./busy.bet --game ./skewed.crp --rolls 60 --seed 11 --games " +
           std::to_string(games) + " --out ./" + name + ".glg --details ./" + name + ".csv ";
  }

  /// Plays a population under a name; the log with its details.
  std::string Play(const std::string& name, std::int64_t games, const std::string& more = "") {
    const Outcome outcome = Obey(PlayWords(name, games) + more);
    EXPECT_EQ(std::pair(outcome.Status, outcome.Err), std::pair(0, std::string()));
    return BytesOf(name);
  }

  std::string BytesOf(const std::string& name) const {
    return folder_.Read(name + ".glg") + folder_.Read(name + ".csv");
  }

  /// Runs a command in a process of its own and ends it once its log has more than `games` games.
  int RunUntil(const std::string& words, const std::string& log, std::int64_t games, int signal) {
    const pid_t process = ::fork();
    if (process == 0) ::_exit(Obey(words).Status);
    for (int i = 0; i < 3000; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      if (FileLength(log) > 0 && CountGames(log) > games) break;
    }
    ::kill(process, signal);
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
};

TEST(BatchDice, StatesArePlacesOfOneSequenceAndAllDifferent) {
  // The published numbers of SplitMix64 from 1234567.
  EXPECT_EQ(SplitMix(1234567, 1), 6457827717110365317U);
  EXPECT_EQ(SplitMix(1234567, 5), 16408922859458223821U);
  Game = GameState();
  std::set<std::uint64_t> starts;
  for (const int rng : {Rng1Mt, Rng2Cokus})
    for (const std::uint64_t seed : {0U, 1U, 2U})
      for (std::uint64_t game = 0; game < 200; ++game) {
        Game.RngChoice = rng;
        SeedGameDice(seed, game);
        const auto draw = rng == Rng1Mt ? genrand_int32 : randomMT_int32;
        const std::uint64_t first = draw();
        starts.insert((first << 32U) + draw());
      }
  // Both Twisters go on from a state in the same way.
  EXPECT_EQ(starts.size(), 3U * 200U);
}

TEST_F(Batch, AnySplitGivesTheSameBytes) {
  const std::string whole = Play("whole", 60, "--jobs 1");
  EXPECT_TRUE(Play("jobs", 60, "--jobs 3") == whole);
  for (const std::string part : {"0", "1", "2"}) Play(part, 60, "--shard " + part + "/3");
  EXPECT_EQ(Obey("merge ./merged.glg ./0.glg ./1.glg ./2.glg").Status, 0);
  EXPECT_EQ(Obey("merge ./merged.csv ./0.csv ./1.csv ./2.csv").Status, 0);
  EXPECT_TRUE(BytesOf("merged") == whole);
  // Each game alone, in a program of its own, and the games are different ones.
  std::set<std::string> games;
  for (int game = 0; game < 60; game += 29) {
    const std::string part = std::to_string(game);
    const std::string alone = Play("alone", 60, "--force --shard " + part + "/60");
    const std::string record = alone.substr(kRecordSize, kRecordSize);
    EXPECT_EQ(record, whole.substr((static_cast<unsigned>(game) + 1) * kRecordSize, kRecordSize));
    games.insert(record);
  }
  EXPECT_EQ(games.size(), 3U);
  // Nothing was written beside what was asked for.
  EXPECT_EQ(folder_.Read("Events Log.txt") + folder_.Read("player.glg"), "");
}

/// What the details of a game must be, from throw to throw.
struct Watched {
  Currency High = Bankroll(), Low = Bankroll(), Peak = Bankroll(), Fall, Risk;
  int Streak = 0, Longest = 0;
  void AfterRoll(Currency before, Currency risk) {
    Risk = std::max(Risk, risk);
    High = std::max(High, Bankroll());
    Low = std::min(Low, Bankroll());
    Peak = std::max(Peak, Bankroll());
    Fall = std::max(Fall, Peak - Bankroll());
    if (Bankroll() != before) Streak = Bankroll() < before ? Streak + 1 : 0;
    Longest = std::max(Longest, Streak);
  }
};

TEST_F(Batch, TapeOfAGamePlaysTheSameGameAtTheTable) {
  constexpr int kTaped = 6;
  Play("all", kTaped);
  std::istringstream details(folder_.Read("all.csv"));
  std::string line;
  std::getline(details, line);
  for (int index = 0; index < kTaped; ++index) {
    const Outcome taped = Obey(
        "tape --script ./busy.bet --game ./skewed.crp --rolls 60 --seed 11 --out ./one.rol "
        "--force --index " +
        std::to_string(index));
    ASSERT_EQ(taped.Status, 0) << taped.Err;
    // At the table, roll by roll.
    Game.DataPath = folder_ / "";
    OpenGame(folder_ / "skewed.crp", true);
    Game.EventsLogActive = false;
    Game.GamesLogFile.clear();
    OpenScript(folder_ / "busy.bet");
    NewGame(false);
    OpenDiceRollFile(folder_ / "one.rol");
    Game.RecorderStatus = Playback;
    Game.AutoBetActive = 1;
    Game.AutoRollsLeft = 0;
    Answers.push_back(kYes);  // initialize
    Watched watched;
    if (Game.ScriptChanged) InitAutoBets();
    for (int left = static_cast<int>(FileLength(folder_ / "one.rol")); left > 0; --left) {
      const Currency before = Bankroll();
      const Currency risk = Game.InvestedBankroll - before + Game.TotalOnTable;
      RollDice();
      watched.AfterRoll(before, risk);
    }
    const GameRecord record = GamesLogReader(folder_ / "all.glg").Read(index + 1, 1).front();
    EXPECT_EQ(FinishedGame(), record) << index;
    std::getline(details, line);
    const GameDetails expected = {index,        EndReason::Rolls, watched.High,    watched.Low,
                                  watched.Fall, watched.Risk,     watched.Longest, 0};
    // How often the Field was refused is told by no figure of the table.
    const std::string wanted = DetailsLine(11, expected);
    EXPECT_THAT(line, StartsWith(wanted.substr(0, wanted.rfind(',') + 1)));
  }
}

TEST_F(Batch, TellsWhyAGameEnded) {
  const std::string play = "play --script ./ends.bet --games 3 --rolls 60 --seed=1 --out ./";
  const auto after = [](const char* rolls, const char* actions) {
    return std::string("When . . .\nThe # of rolls in the game are equal to ") + rolls +
           "\nthen . . .\n" + actions;
  };
  const std::tuple<std::string, std::string, int, int> cases[] = {
      {"Do this . . .\nATM - deposit $ 500\nBet $ 5 on Field", "rolls", 60, 61},
      {after("7", "Stop Auto-Rolling / Hyper-Drive"), "stopped", 7, 0},
      {after("9", "Reset table\nBet $ 5 on Chip-Stack # 1\nReset table (preserve Chip-Stacks)"),
       "new game", 9, 0},
      {after("4", "Yes/No question: \"On?\""), "question", 4, 0},
      {after("3", "ATM - withdraw $ 9999500"), "bank limit", 4, 0}};
  for (const auto& [script, ended, rolls, refused] : cases) {
    WriteScriptFile("ends.bet", script);
    const Outcome played = Obey(play + "ends.glg --details ./ends.csv --force");
    EXPECT_EQ(played.Status, 0) << played.Err;
    const GameRecord last = GamesLogReader(folder_ / "ends.glg").Read(3, 1).front();
    EXPECT_EQ(last[RollsColumn], rolls) << ended;
    EXPECT_EQ(last[FirstStackColumn + 1], 0) << "of the new game";
    EXPECT_THAT(folder_.Read("ends.csv"), AllOf(HasSubstr("\n1,2," + ended + ","),
                                                EndsWith("," + std::to_string(refused) + "\n")));
  }
  // A game without rolls isn't there, and a script can't touch dice or files of others.
  WriteScriptFile("ends.bet",
                  "Do this . . .\nSeed RNG with # 1\nOpen/clear file for output: \"x.txt\"\n"
                  "Output to file. Message: \"x\"\nStop Auto-Rolling / Hyper-Drive");
  const Outcome played = Obey(play + "none.glg");
  EXPECT_THAT(played.Err,
              AllOf(HasSubstr("line 2 passed over"), HasSubstr("lines 3, 4 passed over"),
                    HasSubstr("3 of 3 games ended before their first roll")));
  EXPECT_EQ(CountGames(folder_ / "none.glg"), 0);
}

TEST_F(Batch, GoesOnWhereItWasEnded) {
  const std::string endless = PlayWords("cut", 100'000'000) + "--jobs 2 ";  // never played out
  const std::string log = folder_ / "cut.glg";
  std::int64_t games = 0;
  for (const int signal : {SIGINT, SIGKILL, SIGTERM}) {
    const int status = RunUntil(endless + "--resume", log, games, signal);
    EXPECT_EQ(status, signal == SIGKILL ? -SIGKILL : 128 + signal);
    EXPECT_GT(CountGames(log), games);
    games = CountGames(log);
  }
  EXPECT_THAT(Obey(endless).Err, HasSubstr("--resume goes on with it"));
  EXPECT_THAT(Obey("merge ./m.glg ./cut.glg").Err, HasSubstr("isn't finished"));
  EXPECT_THAT(Obey(PlayWords("cut", 5) + "--resume").Err, HasSubstr("isn't \"games 5\""));
  // The same games as of an undisturbed run.
  const std::string whole = Play("whole", games);
  const std::size_t length = (static_cast<std::size_t>(games) + 1) * kRecordSize;
  EXPECT_TRUE(folder_.Read("cut.glg").substr(0, length) == whole.substr(0, length));
  EXPECT_TRUE(folder_.Read("cut.csv") == folder_.Read("whole.csv"));
  // A run that is complete isn't played again.
  EXPECT_THAT(Obey(PlayWords("whole", games) + "--resume").Err, HasSubstr("is complete"));
}

TEST_F(Batch, PlaysUntilTheIntervalIsNarrowEnough) {
  const std::string alone = Play("alone", 5000, "--until-within 60 --jobs 1");
  EXPECT_TRUE(Play("three", 5000, "--until-within 60 --jobs 3") == alone);
  const std::vector<int> columns = {DollarsNetColumn};
  const std::vector<Currency> results = ReadGameColumns(folder_ / "alone.glg", columns).front();
  const auto width = [&](std::size_t games) {
    double sum = 0, squares = 0;
    for (std::size_t i = 0; i < games; ++i) sum += results[i].ToDouble();
    const double mean = sum / static_cast<double>(games);
    for (std::size_t i = 0; i < games; ++i) squares += std::pow(results[i].ToDouble() - mean, 2);
    const auto count = static_cast<double>(games);
    return 2 * 1.959964 * std::sqrt(squares / (count - 1) / count);
  };
  ASSERT_GT(results.size(), 100U);
  EXPECT_LE(width(results.size()), 60);
  EXPECT_GT(width(results.size() - 1), 60);
}

TEST_F(Batch, FiguresAndComparisons) {
  Play("a", 40);
  Play("b", 40, "--rng 2");
  const GamePopulation population = LoadPopulation(folder_ / "a.glg", EndingBankrollColumn);
  const std::string json =
      Obey("figures ./a.glg --column \"ending BANKROLL\" --break-point 650:700 --json").Out;
  Currency sum;
  int won = 0;
  for (const Currency value : population.Values) {
    sum += value;
    won += value > 700 ? 1 : 0;
  }
  std::ostringstream mean;
  mean << "\"mean\": " << sum.ToDouble() / 40;
  EXPECT_THAT(json,
              AllOf(HasSubstr("\"column\": \"Ending bankroll\""), HasSubstr("\"games\": 40,"),
                    HasSubstr("\"won\": " + std::to_string(won) + ","),
                    HasSubstr(mean.str().substr(0, 12)), HasSubstr("\"break_point\": [650, 700]")));
  EXPECT_THAT(Obey("figures ./a.glg").Out,
              AllOf(HasSubstr("$ Bets Won/Lost (Net)"), HasSubstr("Lost  ")));
  const std::string compare = "compare ./a.glg ./b.glg ";
  EXPECT_THAT(Obey(compare).Out, HasSubstr("Game by game on the same dice"));
  EXPECT_THAT(Obey(compare + "--json").Out, HasSubstr("\"same_dice\": true"));
  fs::remove(folder_ / "b.csv");
  EXPECT_THAT(Obey(compare).Out, HasSubstr("don't tell that they were played"));
}

TEST_F(Batch, TellsWhatIsWrongWithACommandLine) {
  const std::string play = PlayWords("x", 5);
  const std::pair<std::string, const char*> cases[] = {
      {"", "say what to do"},
      {"roll", "not a command"},
      {"play", "--script is missing"},
      {play + "--shard 8/8", "parts count from 0 to 7"},
      {play + "--shard 8", "K/N"},
      {play + "--shard -1/8", "not a whole number from 0"},
      {play + "--shard 0/0", "not a whole number from 1"},
      {play + "--shard 1/4 --until-within 5", "leave --shard out"},
      {play + "--until-within 0", "above 0"},
      {play + "--jobs 1e3", "not a whole number"},
      {play + "--games 7", "said twice"},
      {play + "--json", "no option of this command"},
      {play + "--force --resume", "exclude each other"},
      {play + "--seed2", "no option of this command"},
      {play + "stray", "takes no names"},
      {play + "--jobs", "lacks its value"},
      {"merge a.glg", "needs the name"},
      {"figures a.glg --break-point five", "not a number"},
      {"figures a.glg --column Luck", "\"# Rolls\""}};
  for (const auto& [command, told] : cases) {
    const Outcome outcome = Obey(command);
    EXPECT_EQ(std::pair(outcome.Status, outcome.Out), std::pair(2, std::string())) << told;
    EXPECT_THAT(outcome.Err, AllOf(StartsWith("kelvanor-batch: "), HasSubstr(told)));
  }
  const Outcome help = Obey("play --help");
  EXPECT_EQ(help.Status, 0);
  std::istringstream lines(help.Out);
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) EXPECT_LE(line.size(), 80U) << line;
  EXPECT_LE(count, 24);
}

TEST_F(Batch, RefusesFilesThatItCantUse) {
  Play("good", 5);
  const std::string bytes = folder_.Read("good.glg");
  const auto play = [](const std::string& script, const std::string& game = "") {
    return "play --games 5 --rolls 9 --seed 1 --out ./new.glg --script ./" + script +
           (game.empty() ? "" : " --game ./" + game);
  };
  folder_.Write("text.txt", "no such thing");
  WriteScriptFile("faulty.bet", "Do this . . .\nGo to \"Nowhere\"");
  WriteScriptFile("none.bet", "");
  Game.UseSkewedProbability = false;
  Game.RngChoice = Rng4Ran2;
  SaveGame(folder_ / "rng4.crp");
  fs::remove(folder_ / "skewed.prb");
  std::string older = bytes;
  older[34] = '4';
  folder_.Write("older.glg", older);
  folder_.Write("cut.glg", bytes.substr(0, 5 * kRecordSize));
  folder_.Write("empty.glg", "");
  folder_.Write("cut.csv", "seed,index\n1,0\n");
  const std::pair<std::string, const char*> cases[] = {
      {play("gone.bet", "rng4.crp"), "has too few sequences"},
      {play("busy.bet", "skewed.crp"), "skewed dice can't be read"},
      {play("busy.bet", "text.txt"), "not a true Kelvanor game file"},
      {play("busy.bet", "gone.crp"), "no such game"},
      {play("gone.bet"), "no such script"},
      {play("text.txt"), "text.txt"},
      {play("faulty.bet"), "line 2: "},
      {play("none.bet"), "no lines"},
      {PlayWords("good", 5), "--force writes over it"},
      {"merge ./good.glg ./good.glg --force", "into itself"},
      {"merge ./good.glg ./gone.glg", "--force writes over it"},
      {"merge ./m.glg ./gone.glg", "no such file"},
      {"merge ./m.glg ./good.csv", "with each other"},
      {"merge ./m.csv ./cut.csv", "no details"},
      {"figures ./cut.glg", "holds 4"},
      {"figures ./older.glg", "from an older version"},
      {"figures ./empty.glg", "from an older version"},
      {"compare ./good.glg ./text.txt", "from an older version"}};
  for (const auto& [command, told] : cases) {
    const Outcome had = Obey(command);
    EXPECT_EQ(had.Status, 1) << told;
    EXPECT_THAT(had.Err, HasSubstr(told));
  }
  EXPECT_FALSE(fs::exists(folder_ / "new.glg"));
  EXPECT_EQ(folder_.Read("good.glg"), bytes);
  // Dead records behind the last game are passed over.
  folder_.Write("dead.glg", bytes + std::string(300, 'x'));
  EXPECT_EQ(Obey("merge ./live.glg ./dead.glg").Status, 0);
  EXPECT_EQ(folder_.Read("live.glg"), bytes);
}

}  // namespace
