// The chips as the record tells them, without piling them up.
#include <QPainterPath>
#include <algorithm>
#include <span>

#include "core/game_state.h"
#include "core/text.h"
#include "screens/art/chip_art.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_layout.h"

namespace {

constexpr double kRackBottom = 28;
constexpr double kStackColumn = 16;  // the x that all Chip-Stacks carry in the chip list
constexpr double kListStep = 3;      // from a chip of the list to the next on the same spot

std::span<const Chip> ListedChips() {
  const auto count = static_cast<std::size_t>(std::clamp(Game.ChipCount, 0, kMaxChips));
  return std::span(Game.ChipList).first(count);
}

QPointF PlaceOf(const Chip& chip) {
  const QPointF told(chip.X, chip.Y);
  if (VisibleStackPlace(chip.BetId) < 0 || told.y() <= kRackBottom) return told;
  const double height = (told.x() - kStackColumn) / kListStep;
  return ChipPosition(chip.BetId) + QPointF(0.15, -0.5) * height;
}

/// How far above the first chip the amount begins: the chips of one column lie close together, and
/// so do their amounts.
double RiseOf(int betId) {
  if (IsDontComeOdds(betId) || IsComeOnNumber(betId)) return 3;
  return IsChipStack(betId) ? -3 : 12;
}

AmountTag TagOf(int betId, QPointF foot) {
  constexpr double kHigh = 8.6;
  constexpr double kCapital = 5.4;
  constexpr double kWidest = 60;
  constexpr double kLeft = 10;
  const Currency amount = Game.Bets[static_cast<unsigned>(betId)];
  const QString text = QString::fromStdString(MoneyText(amount));
  const double width =
      TextOutline(text, Lettering::Plain, kCapital, kWidest).boundingRect().width() + kTagPadding;
  return {text,
          {foot - QPointF(kLeft, RiseOf(betId)), QSizeF(width, kHigh)},
          amount < Currency(),
          kCapital};
}

}  // namespace

TablePiles LayOutPilesAsTold() {
  TablePiles piles;
  std::array<bool, kSlots> hasFoot{};
  const auto stand = [&](int id, QPointF place) {
    const auto slot = static_cast<unsigned>(id);
    if (!hasFoot[slot]) piles.Foot[slot] = place;
    hasFoot[slot] = true;
  };
  for (const Chip& chip : ListedChips()) {
    if (chip.BetId <= 0 || chip.BetId >= kSlots || !IsShownOnTable(chip.BetId)) continue;
    piles.Chips.push_back({chip.BetId, chip.Picture, PlaceOf(chip)});
    stand(chip.BetId, piles.Chips.back().Centre);
  }
  const auto tell = [&](int id) {
    if (!IsShownOnTable(id)) return;
    stand(id, ChipPosition(id));
    if (Game.Bets[static_cast<unsigned>(id)] != Currency())
      piles.Tags.push_back(TagOf(id, piles.Foot[static_cast<unsigned>(id)]));
  };
  for (int bet = Lay4; bet <= LastBet; ++bet) tell(bet);
  for (const int stack : Game.VisibleStacks) tell(stack);
  return piles;
}
