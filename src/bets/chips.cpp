#include "bets/chips.h"

#include <algorithm>

namespace {

constexpr int kArrangeAbove = 900;   // chips in the list at which it is kept tidy by itself
constexpr int kLastChipOfPile = 12;  // a pile has one more chip than this

/// The offsets of a pile: to the right by a little, but for Don't Pass Odds, which lie beside or
/// against the Don't Pass pile.
class PileLayout {
 public:
  explicit PileLayout(int betId) : betId_(betId) {
    if (betId != DontPassOdds) return;
    const PayoffRecord& payoff = Game.Payoff[DontPassOdds];
    const auto per = static_cast<std::int64_t>(Int(payoff.Per / Currency(1)));
    const Currency wins = Game.Bets[DontPassOdds] * payoff.Win;
    const auto whole = static_cast<std::int64_t>(Int(wins / Currency(1)));
    heeled_ = per != 0 && Currency(whole / per) == Game.Bets[DontPass];
  }

  /// True when the odds win the flat bet exactly: they are heeled against its pile.
  bool Heeled() const { return heeled_; }

  /// The colour with which the pile starts.
  int FirstColor() const {
    int color = 5;
    if (heeled_)
      while (color > 1 && !IsWhole(Game.Bets[DontPass] / ChipValue(color))) --color;
    return color;
  }

  int Shift() const { return shift_; }
  int Rise() const { return rise_; }

  /// Moves on after a chip; `laid` is what the chips laid so far make up.
  void Next(Currency laid) {
    int step = 3;
    if (betId_ == DontPassOdds && !heeled_) {
      step = first_ ? -17 : -3;
    } else if (heeled_ && laid == Game.Bets[DontPass]) {
      step = 14;
      rise_ += 3;
    }
    first_ = false;
    shift_ += step;
  }

 private:
  int betId_;
  bool heeled_ = false;
  bool first_ = true;
  int shift_ = 0;
  int rise_ = 0;
};

bool IsShown(int betId) {
  return betId < ChipStackBase || std::find(Game.VisibleStacks.begin(), Game.VisibleStacks.end(),
                                            betId) != Game.VisibleStacks.end();
}

/// The place of a bet's first chip; a shown Chip-Stack stands at its place on the table.
std::pair<int, int> PlaceOf(int betId) {
  int place = betId;
  if (IsChipStack(betId)) {
    const auto shown = std::find(Game.VisibleStacks.begin(), Game.VisibleStacks.end(), betId);
    place = FirstChipStack + static_cast<int>(shown - Game.VisibleStacks.begin());
  }
  return {static_cast<int>(Game.BetChipX[place]), static_cast<int>(Game.BetChipY[place])};
}

void FreeChipsOf(int betId) {
  for (int i = 0; i < Game.ChipCount; ++i)
    if (Game.ChipList[i].BetId == betId) Game.ChipList[i].BetId = 0;
}

void LayPile(int betId) {
  if (Game.Bets[betId] <= 0) return;
  const auto [x, y] = PlaceOf(betId);
  PileLayout pile(betId);
  Currency remaining = Game.Bets[betId];
  int count = 0;
  for (Game.ChipColor = pile.FirstColor(); Game.ChipColor >= 1; --Game.ChipColor) {
    const Currency chip = ChipValue(Game.ChipColor);
    while (count <= kLastChipOfPile && remaining / chip >= 1) {
      AddChip(betId, x + pile.Shift(), y - pile.Rise());
      remaining -= chip;
      ++count;
      pile.Next(Game.Bets[betId] - remaining);
    }
    if (count > kLastChipOfPile) break;
  }
  if (remaining > 0) {
    Game.ChipColor = kOverflowPicture;
    AddChip(betId, x, y);
  }
}

}  // namespace

void AddChip(int betId, int x, int y) {
  if (Game.ChipCount > kArrangeAbove) Game.AutoArrangeChips = true;
  if (Game.ChipCount >= kMaxChips) CompactChips();
  if (Game.ChipCount >= kMaxChips) return;
  Game.ChipList[Game.ChipCount++] = {betId, Game.ChipColor, x, y};
}

void ArrangeChips(int betId) {
  if (Game.HyperDriveOn) return;
  Game.NeedRepaint = true;
  if (!IsShown(betId)) return;
  FreeChipsOf(betId);
  const int selected = Game.ChipColor;
  LayPile(betId);
  Game.ChipColor = selected;
  CompactChips();
}

void ArrangeAllChips() {
  for (int id = Lay4; id <= LastBet; ++id) ArrangeChips(id);
  for (const int id : Game.VisibleStacks) ArrangeChips(id);
}

void CompactChips() {
  const auto begin = Game.ChipList.begin();
  const auto end = std::remove_if(begin, begin + Game.ChipCount,
                                  [](const Chip& chip) { return chip.BetId == 0; });
  std::stable_sort(begin, end, [](const Chip& a, const Chip& b) { return a.BetId < b.BetId; });
  Game.ChipCount = static_cast<int>(end - begin);
}
