// Feeds a reader of files with whatever the fuzzer thinks of: "fuzz --reader=game corpus/game".
// What a reader takes must agree with itself and can be played with; anything else is refused.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "autobet/checker.h"
#include "autobet/compose.h"
#include "autobet/hot_keys.h"
#include "autobet/read_line.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "autobet/script_records.h"
#include "bets/consistency.h"
#include "bets/headless_host.h"
#include "bets/make_bet.h"
#include "core/file_calls.h"
#include "core/game_state.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "dice/generators.h"
#include "dice/probability_file.h"
#include "dice/tape.h"
#include "dice/tape_file.h"
#include "figures/games_log.h"
#include "figures/games_view.h"
#include "persistence/game_file.h"
#include "play/roll_cycle.h"
#include "play/start_up.h"
#include "rules/defaults.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "stats/games_file.h"

namespace {

namespace fs = std::filesystem;

std::string folder;  // of this run, with its separator

void Write(const std::string& name, std::string_view bytes) {
  std::ofstream(folder + name, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Broken: %s\n%s\n", what, Game.LastErrorText.c_str());
  std::abort();
}

void RequireConsistency() {
  const std::string fault = FirstInconsistency();
  Require(fault.empty(), fault.c_str());
}

void PlayOn() {
  Game.NumAutoRolls = Game.AutoRollsLeft = 0;
  Game.AutoRollDice = Game.EventsLogActive = false;
  Game.AutoBetActive = 0;
  Game.RecorderStatus = RecorderOff;
  Game.LastErrorText.clear();
  for (int roll = 0; roll < 4; ++roll) RollDice();
  if (Game.LastErrorText.empty()) RequireConsistency();
}

// --- The readers ---

/// A game in which something has happened, as bytes.
const std::string& PlayedGame() {
  static const std::string bytes = [] {
    for (int roll = 0; roll < 300; ++roll) {
      Game.ChangeRequest = roll % 40;
      MakeBet(roll % LastBet + 1);
      RollDice();
    }
    SaveGame(folder + "played.crp");
    std::ifstream file(folder + "played.crp", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  return bytes;
}

/// A game file is large and mostly numbers: the input is a list of changes to a sound one, of a
/// place (three bytes), and the byte that stands there.
void ReadGame(std::string_view input) {
  std::string bytes = PlayedGame();
  constexpr std::size_t kChange = 4;
  for (; input.size() >= kChange; input.remove_prefix(kChange)) {
    std::size_t place = 0;
    for (std::size_t digit = 0; digit + 1 < kChange; ++digit)
      place = place << 8 | static_cast<unsigned char>(input[digit]);
    bytes[place % bytes.size()] = input[kChange - 1];
  }
  bytes.resize(bytes.size() - input.size() * kRecordSize);
  Write("game.crp", bytes);
  OpenGame(folder + "game.crp", true);
  RequireConsistency();
  if (Game.LastFileResult > 0) PlayOn();
}

void ReadScript(std::string_view input) {
  Write("script.bet", input);
  OpenScript(folder + "script.bet");
  for (const ScriptLine& line : Game.Script)
    Require(ReadLine(MakeLineRecord(line), kLayout50) == line, "a line changes as it is written");
  CheckScript();
}

void ReadTape(std::string_view input) {
  const std::size_t half = input.size() / 2;
  Write("tape.rol", input.substr(0, half));
  Write("tape.rol.journal", input.substr(half));
  OpenDiceRollFile(folder + "tape.rol");
  Require(Game.LastFileResult > 0, "a tape of any bytes can be opened");
  PutRolls(3, "\x24", false);
  DeleteRollRange(2, 5);
  ForRolls(1, DiceRollCount(), [](std::string_view) {});
  Game.DiceFilePos = 1;
  Game.RecorderStatus = Playback;
  for (int roll = 0; roll < 20; ++roll) RollDice();
  RequireConsistency();
}

void ReadMatrix(std::string_view input) {
  Write("matrix.prb", input);
  LoadProbabilityFile(folder + "matrix.prb");
  Game.UseSkewedProbability = true;
  PlayOn();
}

/// The first bytes are the index.
void ReadLog(std::string_view input) {
  const std::size_t index = std::min<std::size_t>(input.size(), 12);
  Write("Events Log.ref", input.substr(0, index));
  Write("Events Log.txt", input.substr(index));
  fs::last_write_time(folder + "Events Log.ref", fs::last_write_time(folder + "Events Log.txt"));
  const int lines = FollowEventsLog();
  for (const std::string& line : ReadLogLines(1, lines)) ResultInLogLine(line);
  FindInLog("roll", true);
  WriteLogLine("more");
  Require(ReadLogLines(LogLineCount(), 1) == std::vector<std::string>{"more"}, "the last line");
}

void ReadHotKeys(std::string_view input) {
  Write("HotKeys.dta", input);
  LoadHotKeys();
  const auto keys = Game.HotKeys;
  for (const HotKey& row : keys) Require(IsHotKey(row.Key), "a key");
  SaveHotKeys();
  LoadHotKeys();
  Require(Game.HotKeys == keys && !Game.HotKeysDamaged, "Hot-Keys change as they are written");
}

void ReadThrows(std::string_view input) {
  Write("tape.rol", "");
  Write("throws.txt", input);
  OpenDiceRollFile(folder + "tape.rol");
  PasteRollsFromText(folder + "throws.txt", 1);
  Require(ReadRolls(1, DiceRollCount()) == ThrowsOfDigits(input), "throws of a text");
}

void ReadRows(std::string_view input) {
  const ReadText text = ReadScriptText(input);
  for (const ScriptLine& line : text.Lines) {
    const auto again = ReadLineText(ComposeLine(line));
    Require(again && *again == line, "a line's text is read as another line");
  }
}

void ReadGames(std::string_view input) {
  const std::string log = folder + "games.glg";
  Write("games.glg", input);
  if (!OpenGamesLog(log)) return;
  const std::int64_t games = CountGames(log);
  for (int column = 0; column < kGameColumns; ++column) {
    const GamePopulation population = LoadPopulation(log, column);
    const std::vector<Currency> values = CountedValues(population, {});
    const GameHistogram histogram = MakeHistogram(values, 1);
    std::int64_t drawn = 0;
    for (const GameBin& bin : histogram.Bins) drawn += bin.Count;
    Require(drawn == games, "every game stands in a bar");
    FigureGames(population, {}, values, histogram);
  }
  GamesLogWriter(log).Append(std::vector<GameRecord>(2), Durability::System);
  Require(DeleteGames(log, 1, 1) && CountGames(log) == games + 1, "games are counted");
}

struct Reader {
  std::string_view Name;
  void (*Read)(std::string_view input);
};

constexpr Reader kReaders[] = {
    {"game", ReadGame},     {"script", ReadScript}, {"foreign", ReadScript}, {"tape", ReadTape},
    {"matrix", ReadMatrix}, {"log", ReadLog},       {"keys", ReadHotKeys},   {"throws", ReadThrows},
    {"text", ReadRows},     {"games", ReadGames}};
const Reader* reader = nullptr;

// --- The ground ---

void TakeFolder() {
  std::string name = (fs::temp_directory_path() / "kelvanor_fuzz_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  folder = name + "/";
  std::atexit([] {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  });
}

const GameState& FreshGame() {
  static const std::unique_ptr<GameState> fresh = [] {
    StartAfresh();
    LayDownDefaults();
    Game.DataPath = Game.AppPath = folder;
    Game.GamesLogFile = folder + "default.glg";
    Game.EventsLogFile = folder + "Events Log.txt";
    Game.Notify = 0;
    return std::make_unique<GameState>(Game);
  }();
  return *fresh;
}

void BeginAnew() {
  CloseTape();
  FlushEventsLog();
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) fs::remove(entry);
  Game = FreshGame();
  ScriptEdited();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  constexpr std::string_view kFlag = "--reader=";
  for (int word = 1; word < *argc; ++word) {
    const std::string_view text = (*argv)[word];
    if (!text.starts_with(kFlag)) continue;
    for (const Reader& known : kReaders)
      if (known.Name == text.substr(kFlag.size())) reader = &known;
  }
  if (reader == nullptr) {
    std::fputs("fuzz --reader=", stderr);
    for (const Reader& known : kReaders) std::fprintf(stderr, "%s|", known.Name.data());
    std::fputs(" CORPUS...\n", stderr);
    std::exit(2);
  }
  TakeFolder();
  TheHost = HeadlessHost();
  TheHost.ShowMessage = [](bool) { PressMessageButton(1, false, "", ""); };
  TheFileCalls.Sync = [](int) { return 0; };
  FreshGame();
  PlayedGame();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  BeginAnew();
  reader->Read({reinterpret_cast<const char*>(data), size});
  return 0;
}
