#include "core/sounds.h"
#include "support/table_fixture.h"

namespace {

class Sounds : public FolderTest {
 protected:
  void Add(const std::vector<std::string>& names) {
    for (const std::string& name : names) folder_.Write(name, "x");
    ScanSounds(Game.AppPath);
  }
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
  EXPECT_TRUE(SoundsPlayed.empty());
  Game.DisableAllSound = false;
  PlayDiceSound();
  EXPECT_EQ(SoundsPlayed.size(), 1U);
}

}  // namespace
