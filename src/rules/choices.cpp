#include "rules/choices.h"

#include "core/game_state.h"

Currency FractionOfPercent(Currency percent) {
  return Currency::FromDouble(percent / Currency(100));
}

Currency PercentOfFraction(Currency fraction) { return fraction * 100; }

int StepStyle(int style, int by, int count) {
  const int place = (style - 1 + by) % count;
  return (place < 0 ? place + count : place) + 1;
}

void CorrectDiceStyle() {
  if (Game.DiceStyle < 1 || Game.DiceStyle > kDiceStyles) Game.DiceStyle = 1;
}

std::array<bool, kNoticeBoxes> NoticeBoxes() {
  std::array<bool, kNoticeBoxes> boxes{};
  for (unsigned box = 0; box < kNoticeBoxes; ++box) {
    boxes[box] = (static_cast<unsigned>(Game.Notify) >> box & 1U) != 0;
  }
  return boxes;
}

void StoreNoticeBoxes(const std::array<bool, kNoticeBoxes>& boxes) {
  Game.Notify = 0;
  for (unsigned box = 0; box < kNoticeBoxes; ++box) {
    if (boxes[box]) Game.Notify |= static_cast<int>(1U << box);
  }
}

std::string_view WonLostCaption(Currency net) {
  if (net == Currency()) return "Won/Lost:";
  return net > Currency() ? "Won:" : "Lost:";
}
