// Whatever becomes of a command in its middle, nothing is lost: the system or the memory fails it,
// the program is killed, or the power goes.
#include <cstring>

#include "autobet/hot_keys.h"
#include "autobet/script_reader.h"
#include "core/ansi.h"
#include "core/raw_file.h"
#include "core/record_file.h"
#include "dice/tape.h"
#include "dice/tape_file.h"
#include "persistence/file_commands.h"
#include "persistence/game_file.h"
#include "persistence/game_file_table.h"
#include "persistence/session.h"
#include "play/start_up.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "stats/games_file.h"
#include "support/frail_disk.h"
#include "support/frail_memory.h"
#include "support/table_fixture.h"

namespace {

using Files = std::map<std::string, std::string>;

constexpr const char* kLog = "Events Log.txt";
constexpr const char* kIndex = "Events Log.ref";
constexpr const char* kTape = "tape.rol";
constexpr const char* kGames = "games.glg";
constexpr const char* kSession = "default.crp";

/// In memory where there is room for small files; each test writes many thousands.
fs::path QuickFolder() {
  const fs::path memory = "/dev/shm";
  std::error_code none;
  return fs::is_directory(memory, none) ? memory : fs::temp_directory_path();
}

struct Command {
  std::string Name;
  std::function<bool()> Run;  // whether the player was told of success
  bool IsForced = true;       // to the disk, before that
};

class Failures : public TableTest {
 protected:
  Failures() {
    Game.DataPath = Game.AppPath = folder_ / "";
    Game.GamesLogFile = folder_ / "default.glg";
    Game.EventsLogFile = folder_ / kLog;
    folder_.Write("default.glg", "Kelvanor Games File, Data Format 5.0" + std::string(56, ' ') +
                                     std::string(420, 'g'));
    folder_.Write("part.rol", std::string(900, '\x48'));
    folder_.Write("throws.txt", std::string(500, '3'));
    folder_.Write("HotKeys.dta", std::string(600, 'x'));
    folder_.Write("foreign.bet", ForeignScript());
    for (const char* name : {"old.x", "other.rol"}) folder_.Write(name, "old");
    for (const char* log : {kGames, "more.glg"})
      GamesLogWriter(folder_ / log).Append(std::vector<GameRecord>(3, {100, 7}));
    WriteLogLine("first line");
    OpenDiceRollFile(folder_.Write(kTape, std::string(3'000, '\x24')));
    SelectTape();
    LoadScript("' one\nFlag \"Hot\" is True\nLabel \"Loop\"\nGo to \"Loop\"\n");
    for (ScriptLine& line : Game.Script) line.LineSelected = true;
    Run(FileCommand::SaveScriptAs, "script.bet");
    Run(FileCommand::SaveProbabilityAs, "matrix.prb");
    Run(FileCommand::SaveGameAs, "game.crp");
    CloseSession();
    Put(Field, 25);
    Game.ShowDieNumbers = true;
    Game.HotKeysDamaged = true;
    Game.HotKeys = {{'a', "script.bet", "one"}};
    LoadScript("' two\n");
    Game.Script[0].LineSelected = true;
    Game.ProbabilityChanged = true;
    files_ = FilesNow();
    game_ = Game;
    fields_ = FieldsAsBytes();
  }
  void TearDown() override {
    CloseTape();
    ClearScript();
    Game.DataPath = Game.AppPath = "";
    TableTest::TearDown();
  }

  static void SelectTape() {
    Game.DiceFilePos = 1'001;
    Game.DiceFileEnd = 1'600;
  }

  static std::string ForeignScript() {
    std::vector<Record> records(3);
    records[0].PutText(0, 128, "Brindlemox AutoBets, Data Format 5.0");
    records[0].PutMoney(214, 2);
    return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
  }

  bool Run(FileCommand command, const std::string& name) const {
    return RunFileCommand(command, folder_ / name);
  }

  Files FilesNow() const {
    Files files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_ / ""))
      files[entry.path().filename().string()] = folder_.Read(entry.path().filename().string());
    return files;
  }

  /// All as at first.
  void Restore() {
    CloseTape();
    for (const auto& [name, bytes] : FilesNow())
      if (!files_.contains(name)) fs::remove(folder_ / name);
    for (const auto& [name, bytes] : files_)
      if (folder_.Read(name) != bytes) folder_.Write(name, bytes);
    Game = game_;
    ScriptEdited();
    Shown.clear();
    Answers.assign(6, kYes);
  }

  static std::string FieldsAsBytes() {
    std::vector<Record> records(kFixedRecords);
    PutFields(GameFields(), Game, records);
    return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
  }

  /// Runs a command; a fault that it lets through is one that the program's loop of events notes.
  static bool RunGuarded(const Command& command) {
    try {
      return command.Run();
    } catch (const std::exception&) {
      return false;
    }
  }

  /// As the next start and the next use of the tape and the log do.
  void StartAgain() const {
    SweepScratchFiles(folder_ / "", true);
    Game.DiceRollFile = folder_ / kTape;
    DiceRollCount();
    Game.EventsLogFile = folder_ / kLog;
    FollowEventsLog();
    fs::remove(folder_ / "cnvrtasc.xx~");  // the next conversion's own
  }

  /// What a file says: of the session's game not when its companions were written and the sum over
  /// that, of a Games Log only the games that count. A closing that isn't told as done keeps the
  /// game without the name of a script or matrix that it couldn't keep, too.
  static std::string Meaning(const std::string& name, std::string bytes, bool told) {
    if (name == kSession && bytes.size() >= kFixedRecords * kRecordSize) {
      for (std::size_t heading = 0; heading < 6; ++heading)
        std::memset(&bytes[heading * kRecordSize + 208], ' ', 40);
      for (const std::size_t heading : {0U, 2U})
        if (!told) std::memset(&bytes[heading * kRecordSize + 100], ' ', 108);
      bytes.replace((kOwnFieldsRecord - 1) * kRecordSize + 204, 4, 4, ' ');
    }
    if (name == kGames && bytes.size() >= kRecordSize)
      bytes.resize(
          std::min(bytes.size(), (1U + static_cast<unsigned char>(bytes[92])) * kRecordSize));
    return bytes;
  }

  /// Each file is the old one or the new one.
  void ExpectOldOrNew(const Files& made, bool allNew, bool mayCutLog) const {
    const Files now = FilesNow();
    std::set<std::string> names;
    for (const Files* files : {&now, &files_, &made})
      for (const auto& [name, bytes] : *files) names.insert(name);
    const auto in = [allNew](const Files& files, const std::string& name) -> std::string {
      const auto found = files.find(name);
      return found == files.end() ? "gone" : Meaning(name, found->second, allNew);
    };
    for (const std::string& name : names) {
      if (name == kIndex || name == "active.tmp") continue;  // made anew when they are needed
      const std::string is = in(now, name);
      // Lines of the log may be cut off.
      const bool isCutLog = mayCutLog && name == kLog && in(made, name).starts_with(is);
      EXPECT_TRUE(is == in(made, name) || (!allNew && (is == in(files_, name) || isCutLog)))
          << name << " has " << is.size() << " bytes";
    }
  }

  std::vector<Command> Commands();
  Files Made(const Command& command) {
    Restore();
    EXPECT_TRUE(RunGuarded(command)) << command.Name << Game.LastErrorText;
    StartAgain();
    return FilesNow();
  }

  const ScratchFolder folder_{"failures", QuickFolder()};
  Files files_;
  GameState game_;
  std::string fields_;
};

std::vector<Command> Failures::Commands() {
  using enum FileCommand;
  std::vector<Command> commands;
  const auto file = [&](FileCommand command, const char* name, bool isForced = true) {
    commands.push_back({std::string(RowOf(command).Title),
                        [this, command, name] { return Run(command, name); }, isForced});
  };
  for (const FileCommand command : {SaveGameAs, CopyDiceRollsToText, SaveScriptAs, CopyToScript,
                                    CopyScriptToText, SaveGamesLogAs, SaveProbabilityAs})
    file(command, "old.x");
  file(SaveGameAs, "new.crp");
  file(CopyToDiceRolls, "other.rol");
  file(OpenDiceRolls, "new.rol", false);
  file(PasteDiceRolls, "part.rol");
  file(PasteDiceRolls, kTape);
  file(PasteDiceRollsFromText, "throws.txt");
  file(SaveEventsLogAs, "moved.txt");
  using Row = std::pair<FileCommand, const char*>;
  // clang-format off
  for (const auto& [command, name] : std::initializer_list<Row>{
           {OpenGame, "game.crp"}, {OpenScript, "script.bet"}, {PasteScript, "script.bet"},
           {OpenScript, "foreign.bet"}, {OpenGamesLog, "default.glg"}, {OpenEventsLog, kLog},
           {OpenProbability, "matrix.prb"}})
    file(command, name);
  // clang-format on
  const auto tape = [&](const char* name, std::function<void()> edit) {
    const auto run = [edit] { return Game.LastFileResult = 0, edit(), Game.LastFileResult > 0; };
    commands.push_back({name, run});
  };
  tape("delete", [] { DeleteRollRange(700, 900); });
  tape("type over", [] { PutRolls(900, std::string(40, '\x6c'), true); });
  tape("type at the end", [] { PutRolls(3'001, "\x6c", false); });
  tape("insert", [] { PutRolls(5, "\x6c", false); });
  tape("make room", [] { MakeRoomForRolls(10, 2'000); });
  tape("copy up", [] { CopyRollRange(2'500, 1'000, 1'800); });
  tape("copy down", [] { CopyRollRange(2, 9, 2'000); });
  tape("save Hot-Keys", SaveHotKeys);
  const auto games = [&](const char* name, std::function<void()> write) {
    commands.push_back({name, [write] { return write(), true; }});
  };
  const std::string log = folder_ / kGames;
  games("append games", [log] { GamesLogWriter(log).Append(std::vector<GameRecord>(2, {50, 4})); });
  games("merge", [this, log] { GamesLogWriter(log).Append(GamesLogReader(folder_ / "more.glg")); });
  games("delete games", [log] { DeleteGames(log, 1, 1); });
  games("new log", [log] { WriteEmptyGamesLog(log); });
  commands.push_back({"close", CloseSession});
  const auto writeLine = [] { return WriteLogLine("second line"), LogWriteFailure().empty(); };
  commands.push_back({"write a line", writeLine, false});
  return commands;
}

TEST_F(Failures, OfAnyCallLeaveTheOldFileOrTheNew) {
  for (const Command& command : Commands()) {
    const Files made = Made(command);
    for (const DiskFault fault : kDiskFaults) {
      bool failed = true;
      for (int number = 1; failed; ++number) {
        SCOPED_TRACE(command.Name + ", call " + std::to_string(number) + ", fault " +
                     std::to_string(static_cast<int>(fault)));
        Restore();
        bool told = false;
        {
          FrailDisk disk(folder_ / "");
          disk.FailCall(number, fault);
          told = RunGuarded(command);
          failed = disk.HasFailed();
          EXPECT_TRUE(fault >= DiskFault::Kill || FirstInconsistency().empty());
          CloseTape();
        }
        const bool changed = !told && fault < DiskFault::Kill && FieldsAsBytes() != fields_;
        StartAgain();
        EXPECT_TRUE(!changed || FilesNow() == made) << "a failure changes nothing";
        ExpectOldOrNew(made, told && fault < DiskFault::Kill, fault >= DiskFault::Kill);
        if (HasFailure()) return;
      }
    }
  }
}

TEST_F(Failures, OfThePowerLeaveTheOldFileOrTheNew) {
  std::mt19937 chance(16);
  for (const Command& command : Commands()) {
    if (!command.IsForced) continue;
    const Files made = Made(command);
    for (int round = 0; round < 5; ++round) {
      bool failed = true;
      for (int number = 1; failed; ++number) {
        SCOPED_TRACE(command.Name + ", call " + std::to_string(number));
        Restore();
        FrailDisk disk(folder_ / "");
        disk.FailCall(number, DiskFault::Kill);
        RunGuarded(command);
        failed = disk.HasFailed();
        CloseTape();
        disk.FailCall(0, DiskFault::Error);
        disk.LosePower(chance);
        StartAgain();
        ExpectOldOrNew(made, !failed, false);
        if (HasFailure()) return;
      }
    }
  }
}

TEST_F(Failures, OfMemoryLeaveTheOldFileOrTheNew) {
  for (const Command& command : Commands()) {
    const Files made = Made(command);
    bool failed = true;
    for (long number = 1; failed; number += 1 + number / 100) {
      SCOPED_TRACE(command.Name + ", request " + std::to_string(number));
      Restore();
      bool told = false;
      {
        const FrailMemory memory(number);
        told = RunGuarded(command);
        failed = FrailMemory::HasFailed();
      }
      EXPECT_EQ(FirstInconsistency(), "");
      const bool changed = !told && FieldsAsBytes() != fields_;
      CloseTape();
      StartAgain();
      EXPECT_TRUE(!changed || FilesNow() == made) << "a failure changes nothing";
      ExpectOldOrNew(made, told, false);
      if (HasFailure()) return;
    }
  }
}

}  // namespace
