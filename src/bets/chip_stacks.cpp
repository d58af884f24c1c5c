#include "bets/chip_stacks.h"

#include <string>

#include "bets/chips.h"
#include "bets/make_bet.h"
#include "core/host.h"

void SetChipStack(int id, Currency value) {
  const Currency stands = Game.Bets[static_cast<unsigned>(id)];
  if (value == stands) return;
  Game.ChangeRequest = value - stands;
  MakeBet(id);
}

void ShowStacksOnTable(const std::array<int, 4>& ids) {
  for (int i = 0; i < Game.ChipCount; ++i) {
    Chip& chip = Game.ChipList[static_cast<unsigned>(i)];
    if (IsChipStack(chip.BetId)) chip.BetId = 0;
  }
  CompactChips();
  Game.VisibleStacks = ids;
  for (unsigned i = 0; i < ids.size(); ++i) {
    Game.BetNames[FirstChipStack + i] = "Chip-Stack # " + std::to_string(ids[i] - ChipStackBase);
    ArrangeChips(ids[i]);
  }
  TheHost.RefreshViews();
}
