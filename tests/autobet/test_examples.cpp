// The systems that ship with the program.

#include "autobet/checker.h"
#include "autobet/script_reader.h"
#include "autoplay/hyper_drive.h"
#include "dice/generators.h"
#include "support/table_fixture.h"

namespace {

const fs::path kProject = KELVANOR_PROJECT;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  contents << file.rdbuf();
  return contents.str();
}

class Examples : public TableTest, public ::testing::WithParamInterface<const char*> {
 protected:
  static fs::path Script() { return kProject / "examples" / (std::string(GetParam()) + ".bet"); }
  static fs::path Text() {
    return kProject / "tests/autobet/examples" / (std::string(GetParam()) + ".txt");
  }
};

/// The shipped file is what its readable text composes to; with KELVANOR_WRITE_EXAMPLES set it is
/// written first.
TEST_P(Examples, AreTheirReadableScripts) {
  LoadScript(Contents(Text()));
  if (std::getenv("KELVANOR_WRITE_EXAMPLES") != nullptr) SaveScript(Script().string());
  const std::vector<ScriptLine> lines = Game.Script;
  ClearScript();
  OpenScript(Script().string());
  EXPECT_EQ(Game.Script, lines);
  EXPECT_TRUE(TakeShown().empty());
  CheckScript();
  EXPECT_EQ(Game.MsgText, "");
  const fs::path saved = fs::path(::testing::TempDir()) / "example.bet";
  SaveScript(saved.string());
  EXPECT_EQ(Contents(saved), Contents(Script()));
  fs::remove(saved);
}

/// Each bets on most rolls, loses no money but at the table, and tells nothing but its own
/// messages.
TEST_P(Examples, PlayUnattended) {
  OpenScript(Script().string());
  init_genrand(4711);
  Game.AutoBetActive = 1;
  Game.BankrollInitAmt = Game.Bets[BankrollIndex] = 100'000;
  Game.NumAutoRolls = Game.AutoRollsLeft = 20'000;
  Answers = {kYes};
  ToggleHyperDrive();
  EXPECT_EQ(TakeShown().front().Title, "Auto-Bet");
  EXPECT_EQ(FirstInconsistency(), "");
  EXPECT_EQ(Game.LastErrorText, "");
  Currency decided;
  for (int id = Lay4; id <= LastBet; ++id) decided += Game.BetWagers[Actual][id][StatCount];
  EXPECT_GT(decided, Currency(Game.RollCount[0] / 4));
  EXPECT_NE(Bankroll(), 100'000);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Examples,
                         ::testing::Values("pass-line-and-odds", "three-point-molly", "iron-cross",
                                           "dont-pass-and-odds", "martingale", "dalembert",
                                           "fibonacci", "press-and-regress"));

}  // namespace
