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
    TheHost.PlaySound = [this](const std::string& path, SoundMode mode) {
      played_.emplace_back(std::filesystem::path(path).filename().string(), mode);
    };
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
  using Played = std::vector<std::pair<std::string, SoundMode>>;
  Played played_;
};

TEST_F(Sounds, AFolderThatIsMissingIsSilent) {
  Add({"a.dce"});
  ScanSounds(Game.AppPath + "nowhere");
  EXPECT_EQ(Game.DiceSounds.size() + Game.StickPersons.size(), 2U) << "only the silent entries";
  EXPECT_EQ(Game.StickPerson + Game.DiceSound + Game.ChipSound + Game.WinSound, 0);
  PlayStickCall(StickPass, true);
  PlayDiceSound();
  PlayChipSound();
  PlayWinSound(false);
  EXPECT_TRUE(played_.empty());
}

TEST_F(Sounds, StickPersonIsCollectedOnceFromItsFiles) {
  Add({"Walter01.stk", "Walter02.stk", "Alma18.stk", "Alma02.stk", "notes.txt"});
  EXPECT_EQ(Game.StickPersons, (std::vector<std::string>{"", "Alma", "Walter"}));
  EXPECT_EQ(Game.StickPerson, 1);
  PlayStickCall(StickNewShooter, true);
  PlayStickCall(2, false);
  Game.StickPerson = 0;
  LoadStickPerson();
  PlayStickCall(2, false);
  EXPECT_EQ(played_,
            (Played{{"Alma18.stk", SoundMode::PlayToEnd}, {"Alma02.stk", SoundMode::Start}}));
}

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
