#include "screens/table/table_motion.h"

#include <QPainter>
#include <algorithm>

#include "bets/chips.h"
#include "core/game_state.h"
#include "screens/art/roles.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_text.h"

namespace {

// The time table at the slowest pace, in milliseconds after the dice lie.
constexpr double kSlowest = 1200;
constexpr double kLossBegins = 150;
constexpr double kLossEnds = 450;
constexpr double kPayEnds = 750;
constexpr double kPayGone = 1050;
constexpr double kEnd = 1300;

constexpr double kHouse = -14;     // where chips leave the table
constexpr double kBesideBet = 26;  // payouts, right of their bet
constexpr double kLabelRise = 14;
constexpr double kLabelFade = 600;
constexpr int kMostChips = 6;
constexpr double kRing = 11.4;

double ShareOf(double now, double from, double to) {
  return std::clamp((now - from) / (to - from), 0.0, 1.0);
}
double EaseIn(double share) { return share * share; }
double EaseOut(double share) { return 1 - (1 - share) * (1 - share); }

Currency Between(Currency from, Currency to, double share) {
  const Currency whole = RoundDownTo(Currency::FromDouble((to - from).ToDouble() * share), Unit());
  return share >= 1 ? to : from + whole;
}

}  // namespace

void TableMotion::BeginThrow() {
  End();
  before_ = MoneyNow();
  held_ = true;
}

void TableMotion::Add(int betId, Currency stake, Currency net) {
  Decided decided{betId, stake, net, {}, ChipPosition(betId)};
  if (net < Currency()) {
    const TablePiles piles = LayOutPiles();
    std::copy_if(piles.Chips.begin(), piles.Chips.end(), std::back_inserter(decided.Chips),
                 [betId](const DrawnChip& chip) { return chip.BetId == betId; });
  } else {
    decided.Chips = PayoutOf(decided);
  }
  if (IsShownOnTable(betId)) decided_.push_back(std::move(decided));
}

/// The payout as a pile beside its bet, the largest chips below.
std::vector<DrawnChip> TableMotion::PayoutOf(const Decided& decided) {
  std::vector<DrawnChip> chips;
  Currency rest = decided.Net;
  const auto add = [&](int picture) {
    const double rise = kChipRise * static_cast<double>(chips.size());
    chips.push_back({decided.BetId, picture, decided.Place + QPointF(kBesideBet, -rise)});
  };
  for (int picture = 5; picture >= 1 && chips.size() < kMostChips; --picture)
    for (const Currency value = ChipValue(picture);
         value > Currency() && rest >= value && chips.size() < kMostChips; rest -= value)
      add(picture);
  if (rest > Currency() && chips.empty()) add(1);
  return chips;
}

void TableMotion::Play(int pace, bool moves, bool ends) {
  scale_ = std::max(pace, 1) / kSlowest;
  moves_ = moves;
  ends_ = ends;
  playing_ = true;
  clock_.start();
}

double TableMotion::Now() const {
  if (resting_) return kPayEnds;
  return playing_ ? static_cast<double>(clock_.elapsed()) / scale_ : 0;
}

bool TableMotion::IsPaying() const { return playing_ && Now() < kPayEnds; }

bool TableMotion::GoOn() {
  if (!playing_) return false;
  if (Now() < (ends_ ? kEnd : kPayGone)) return true;
  if (ends_) {
    End();
  } else {
    decided_.clear();
    playing_ = false;
  }
  return false;
}

void TableMotion::Rest() {
  std::erase_if(decided_, [](const Decided& decided) { return decided.Net <= Currency(); });
  playing_ = false;
  held_ = false;
  resting_ = true;
}

void TableMotion::End() {
  decided_.clear();
  playing_ = false;
  resting_ = false;
  held_ = false;
}

ShownMoney TableMotion::Money() const {
  const ShownMoney now = MoneyNow();
  if (!held_) return now;
  if (!playing_ || !ends_) return before_;
  const double share = moves_ ? ShareOf(Now(), kPayGone, kEnd) : (Now() < kPayGone ? 0 : 1);
  return {Between(before_.Bankroll, now.Bankroll, share),
          Between(before_.AtRisk, now.AtRisk, share), Between(before_.Result, now.Result, share)};
}

/// How far the chips of a decision are from where they lie.
QPointF TableMotion::Shift(const Decided& decided, double now) const {
  if (!moves_) return {};
  const double away = kHouse - decided.Place.y();
  if (decided.Net < Currency()) return {0, away * EaseIn(ShareOf(now, kLossBegins, kLossEnds))};
  if (now < kPayEnds) return {0, away * (1 - EaseOut(ShareOf(now, kLossEnds, kPayEnds)))};
  if (!ends_) return {};
  const double share = EaseOut(ShareOf(now, kPayEnds, kPayGone));
  const bool pressed = Game.Bets[static_cast<unsigned>(decided.BetId)] > decided.Stake;
  const QPointF place = decided.Place + QPointF(kBesideBet, 0);
  const QPointF goal = pressed ? decided.Place : kMoneyWell.center();
  return (goal - place) * share;
}

std::vector<DrawnChip> TableMotion::Chips() const {
  std::vector<DrawnChip> chips;
  const double now = Now();
  for (const Decided& decided : decided_) {
    const bool lost = decided.Net < Currency();
    const bool shown = playing_ || resting_;
    if (shown && now >= (lost ? kLossEnds : kPayGone)) continue;
    if (!lost && (!shown || now < kLossEnds)) continue;
    const QPointF shift = shown ? Shift(decided, now) : QPointF();
    for (DrawnChip chip : decided.Chips) {
      chip.Centre += shift;
      chips.push_back(chip);
    }
  }
  return chips;
}

QRectF TableMotion::Resting() const {
  QRectF all;
  constexpr QRectF kPayout(-13, -13, 26, 36);
  for (const Decided& decided : decided_)
    if (resting_) all |= kPayout.translated(decided.Place + QPointF(kBesideBet, 0));
  return all;
}

void TableMotion::PaintRings(QPainter& painter) const {
  painter.setBrush(Qt::NoBrush);
  for (const Decided& decided : decided_) {
    painter.setPen(QPen(kPlate, 3.2));
    painter.drawEllipse(decided.Place, kRing, kRing);
    painter.setPen(QPen(kGain, 1.6));
    painter.drawEllipse(decided.Place, kRing, kRing);
  }
}

void TableMotion::PaintLabels(QPainter& painter) const {
  if (!playing_ && !resting_) return;
  if (resting_) PaintRings(painter);
  const double now = Now();
  for (const Decided& decided : decided_) {
    if (decided.Net == Currency()) continue;
    const bool lost = decided.Net < Currency();
    const double begins = lost ? kLossBegins : kLossEnds;
    if (now < begins || now >= (lost ? kLossBegins + kLabelFade : kPayGone)) continue;
    const double share = ShareOf(now, begins, begins + kLabelFade);
    QPointF centre = decided.Place;
    if (lost)
      centre.ry() -= moves_ ? kLabelRise * share : 0;
    else
      centre += Shift(decided, now) + QPointF(kBesideBet, 15);
    const QString text = SignedMoney(decided.Net);
    const double width = std::min(60.0, TextWidth(text, CapitalOf(9)));
    const QRectF plate(centre.x() - width / 2 - 4, centre.y() - 6, width + 8, 12);
    painter.save();
    if (lost && moves_) painter.setOpacity(1 - share);
    painter.setPen(QPen(kPlateEdge, 0.6));
    painter.setBrush(kPlate);
    painter.drawRoundedRect(plate, 6, 6);
    WriteIn(painter, text, plate.adjusted(4, 0, -4, 0), CapitalOf(9), lost ? kLoss : kGain,
            Side::Centre);
    painter.restore();
  }
}

QRectF TableMotion::Moving() const {
  QRectF all;
  constexpr double kReach = 46;
  const double now = Now();
  for (const Decided& decided : decided_) {
    const QPointF at = decided.Place + Shift(decided, now);
    all |= QRectF(at - QPointF(kReach, kReach), QSizeF(2 * kReach + kBesideBet, 2 * kReach));
    all |= QRectF(decided.Place - QPointF(kReach, kReach), QSizeF(2 * kReach, 2 * kReach));
  }
  if (now >= kPayGone) all |= kMoneyWell;
  return all;
}
