#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

#include "bets/headless_host.h"
#include "core/sounds.h"
#include "rules/defaults.h"
#include "support/scratch_folder.h"

namespace {

class Sounds : public ::testing::Test {
 protected:
  void SetUp() override {
    LayDownDefaults();
    Game.AppPath = folder_ / "";
    TheHost = HeadlessHost();
    TheHost.PlaySound = [this](const std::string& path, SoundMode) { played_.push_back(path); };
  }
  void TearDown() override {
    Game.AppPath.clear();
    TheHost = HeadlessHost();
  }

  void Add(const std::vector<std::string>& names) {
    for (const std::string& name : names) folder_.Write(name, "x");
    ScanSounds(Game.AppPath);
  }

  const ScratchFolder folder_{"sounds"};
  std::vector<std::string> played_;
};

TEST_F(Sounds, DefaultChoicesFollowTheLengthOfTheLists) {
  const auto choices = [] { return std::array{Game.DiceSound, Game.ChipSound, Game.WinSound}; };
  Add({"1.dce", "2.dce", "3.dce", "1.chp", "1.win"});
  EXPECT_EQ(choices(), (std::array{1, 1, 1}));
  Add({"4.dce", "2.chp", "3.chp", "4.chp", "2.win"});
  EXPECT_EQ(choices(), (std::array{4, 4, 2}));
}

TEST_F(Sounds, DisabledSoundAndOutsideChoicesPlayNothing) {
  Add({"a.dce", "a.chp", "Alma13.stk"});
  Game.ChipSound = 7;
  PlayChipSound();
  Game.DisableAllSound = true;
  PlayDiceSound();
  PlayStickCall(StickPass, true);
  EXPECT_TRUE(played_.empty());
  Game.DisableAllSound = false;
  PlayDiceSound();
  EXPECT_EQ(played_.size(), 1U);
}

}  // namespace
