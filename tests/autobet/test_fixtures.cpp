// Scripts end to end: each folder of fixtures/ holds a game that was worked out by hand.
//
//   start.txt   fields of the record before the game, the amounts of Chip-Stacks, and after how
//               many turns of the event loop the player stops a run of the script
//   script.txt  the script, in the words that script_reader.h reads
//   throws.txt  the dice of each throw, "3-4"
//   money.txt   a table with a row for each throw: what stands after it
//   log.txt     the Events Log of the game with every switch on
//
// A "#" at the beginning of a line, or with two blanks before it, begins a comment.

#include "autobet/checker.h"
#include "autobet/script_reader.h"
#include "support/table_fixture.h"

namespace {

using Texts = std::vector<std::string>;

const fs::path kFixtures = KELVANOR_FIXTURES;

std::set<std::string> FixturesFound() {
  std::set<std::string> names;
  std::error_code missing;
  for (const auto& entry : fs::directory_iterator(kFixtures, missing))
    if (entry.is_directory()) names.insert(entry.path().filename().string());
  return names;
}

Texts LinesOf(std::istream& text) {
  Texts lines;
  for (std::string line; std::getline(text, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

/// The lines of a file of a fixture; none, and a failure, when it can't be read.
Texts ReadLines(const std::string& fixture, const char* name) {
  std::ifstream file(kFixtures / fixture / name);
  EXPECT_TRUE(file.is_open()) << fixture << "/" << name;
  return LinesOf(file);
}

/// The lines without comments, blanks around them, and lines of which nothing is left.
Texts WithoutComments(Texts lines) {
  for (std::string& line : lines) {
    if (line.starts_with('#')) line.clear();
    line = Trimmed(line.substr(0, line.find("  #")));
  }
  std::erase(lines, "");
  return lines;
}

/// The cells of a row of a table, as they are without their padding.
Texts CellsOf(const std::string& row) {
  Texts cells;
  std::istringstream text(row);
  for (std::string cell; std::getline(text, cell, '|');) cells.push_back(Trimmed(cell));
  return cells;
}

std::string Joined(const Texts& cells) {
  std::string row;
  for (const std::string& cell : cells) row += (row.empty() ? "" : " | ") + cell;
  return row;
}

void ExpectSameLines(const std::string& file, const Texts& expected, const Texts& actual) {
  const auto [theirs, ours] = std::ranges::mismatch(expected, actual);
  if (theirs == expected.end() && ours == actual.end()) return;
  const std::string end = "(the end)";
  ADD_FAILURE() << file << ", line " << theirs - expected.begin() + 1
                << "\n  expected: " << (theirs == expected.end() ? end : *theirs)
                << "\n  played:   " << (ours == actual.end() ? end : *ours);
}

/// What a fixture's money table calls its columns.
constexpr std::string_view kStackColumn = "Stack ";
constexpr std::string_view kFlagColumn = "Flag ";

int NumberBehind(std::string_view words, const std::string& text) {
  return std::stoi(text.substr(words.size()));
}

/// What stands in a column of the money table now.
std::string ValueOfColumn(const std::string& column) {
  if (column == "Throw") return std::to_string(Game.Die1) + "-" + std::to_string(Game.Die2);
  if (column == "Bankroll") return MoneyText(Bankroll());
  if (column == "On table") return MoneyText(Game.TotalOnTable);
  if (column.starts_with(kStackColumn)) {
    const int stack = NumberBehind(kStackColumn, column);
    return MoneyText(Game.Bets[ChipStackBase + stack]);
  }
  if (column.starts_with(kFlagColumn)) {
    const int flag = FindFlag(column.substr(kFlagColumn.size()));
    if (flag < 0) return "no such flag";
    return Game.Flags[flag].FlagValue == kTrue ? "True" : "False";
  }
  const auto name = std::find(kBetNames.begin(), kBetNames.end(), column);
  if (name == kBetNames.end()) return "no such column";
  return MoneyText(Game.Bets[static_cast<unsigned>(name - kBetNames.begin())]);
}

class ScriptFixtures : public TableTest, public ::testing::WithParamInterface<std::string> {
 protected:
  /// Begins the game of a fixture: its script saved to a file, and opened.
  void Begin(const std::string& fixture) {
    fixture_ = fixture;
    Game.DataPath = scratch_ / "";
    Game.EventsLogFile = scratch_ / (fixture + ".log");
    LogEverything();
    Game.ReSeed = false;
    ReadStart();
    OpenItsScript();
    ReadThrows();
    StopRunsThatNeverEnd();
  }

  /// Throws the dice of the fixture by hand; the money table as it came out.
  Texts PlayByHand() {
    const Texts table = ReadLines(fixture_, "money.txt");
    const Texts columns = table.empty() ? Texts() : CellsOf(table.front());
    Texts rows = {Joined(columns)};
    for (const auto& [die1, die2] : throws_) {
      Roll(die1, die2);
      ExpectAFinishedRoll();
      Texts cells;
      for (const std::string& column : columns) cells.push_back(ValueOfColumn(column));
      rows.push_back(Joined(cells));
    }
    EXPECT_EQ(TakeOnlyMessage().Title, "Auto-Bet") << "the offer, and no bet refused";
    return rows;
  }

  /// The lines of the Events Log, files by their bare names.
  Texts Log() const {
    std::string text = scratch_.Read(fixture_ + ".log");
    const std::string folder = scratch_ / "";
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder))
      text.erase(at, folder.size());
    std::istringstream lines(text);
    return LinesOf(lines);
  }

 private:
  /// Sets one of the fields that fixtures need; false for any other.
  bool SetField(const std::string& name, Currency value) {
    const std::map<std::string, int*> fields = {{"HandleWinningBets", &Game.HandleWinningBets},
                                                {"HandleLosingBets", &Game.HandleLosingBets},
                                                {"AutoAdjust", &Game.AutoAdjust},
                                                {"InterruptAfterTurns", &interruptAfter_}};
    if (name == "BankrollInitAmt") return Game.BankrollInitAmt = value, true;
    const auto field = fields.find(name);
    if (field == fields.end()) return false;
    *field->second = static_cast<int>(value.ToDouble());
    return true;
  }

  void ReadStart() {
    std::vector<std::pair<int, Currency>> stacks;
    for (const std::string& line : WithoutComments(ReadLines(fixture_, "start.txt"))) {
      const std::size_t blank = line.rfind(' ');
      const std::string name = Trimmed(line.substr(0, blank));
      const Currency value = ParseAmount(line.substr(blank + 1));
      if (name.starts_with(kStackColumn))
        stacks.emplace_back(ChipStackBase + NumberBehind(kStackColumn, name), value);
      else
        EXPECT_TRUE(SetField(name, value)) << fixture_ << "/start.txt: " << line;
    }
    NewGame(false);
    for (const auto& [id, value] : stacks) Given(id, value);
  }

  void OpenItsScript() {
    std::string text;
    for (const std::string& line : ReadLines(fixture_, "script.txt")) text += line + "\n";
    LoadScript(text);
    CheckScript();
    EXPECT_EQ(Game.MsgText, "") << fixture_;
    const std::vector<ScriptLine> script = Game.Script;
    const std::string path = scratch_ / (fixture_ + ".bet");
    SaveScript(path);
    ClearScript();
    OpenScript(path);
    EXPECT_TRUE(Game.Script == script) << fixture_ << ": the file holds another script";
    Game.AutoBetActive = 1;
    Answers = {kYes};  // yes to the initializing cycle
  }

  void ReadThrows() {
    throws_.clear();
    for (const std::string& line : WithoutComments(ReadLines(fixture_, "throws.txt"))) {
      EXPECT_EQ(line.size(), 3U) << fixture_ << "/throws.txt: " << line;
      throws_.emplace_back(line.front() - '0', line.back() - '0');
    }
    EXPECT_GE(throws_.size(), 8U) << fixture_;
  }

  /// The player of a fixture that asks for it stops every run after some turns. The clock makes a
  /// turn due at each offer, whatever the pace.
  void StopRunsThatNeverEnd() {
    if (interruptAfter_ == 0) return;
    TheHost.Milliseconds = [time = std::uint32_t{0}]() mutable { return time += 1000; };
    TheHost.Yield = [this, roll = 0, turns = 0]() mutable {
      if (!Game.AutoBetRunning) return;
      if (roll != Game.RollCount[0]) turns = 0;
      roll = Game.RollCount[0];
      if (++turns == interruptAfter_) Game.AutoBetRunning = false;
    };
  }

  static void ExpectAFinishedRoll() {
    EXPECT_EQ(Game.RollsSince[0], Game.RollCount[0]);
    EXPECT_EQ(Game.BetsAfterRoll, Game.Bets);
    EXPECT_FALSE(Game.RollInProgress || Game.AutoBetRunning || Game.KeepRolling);
    EXPECT_EQ(FirstInconsistency(), "") << "roll " << Game.RollCount[0];
    EXPECT_EQ(Game.LastErrorText, "");
    ExpectBooksBalance();
  }

  ScratchFolder scratch_{"fixtures"};
  std::string fixture_;
  std::vector<std::pair<int, int>> throws_;
  int interruptAfter_ = 0;
};

TEST_P(ScriptFixtures, PlayAsWorkedOutByHand) {
  Begin(GetParam());
  Texts expected = ReadLines(GetParam(), "money.txt");
  for (std::string& row : expected) row = Joined(CellsOf(row));
  ExpectSameLines(GetParam() + "/money.txt", expected, PlayByHand());
  ExpectSameLines(GetParam() + "/log.txt", ReadLines(GetParam(), "log.txt"), Log());
}

INSTANTIATE_TEST_SUITE_P(Folders, ScriptFixtures, ::testing::ValuesIn(FixturesFound()),
                         [](const auto& folder) { return folder.param; });

}  // namespace
