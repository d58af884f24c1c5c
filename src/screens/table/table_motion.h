// The result of a roll, shown in its time: lost chips go to the house, payouts come from it, and
// the money follows. The game has ended the roll before; nothing here changes it.
#pragma once

#include <QElapsedTimer>
#include <QRectF>
#include <QString>
#include <vector>

#include "core/currency.h"
#include "screens/table/pile_layout.h"
#include "screens/table/rail_elements.h"

class QPainter;

class TableMotion {
 public:
  /// A throw begins: the money is shown as it stands now until its result has been seen.
  void BeginThrow();

  /// A bet of the throw has been decided; its chips still lie.
  void Add(int betId, Currency stake, Currency net);

  /// Whether anything waits to be shown.
  bool Waits() const { return !decided_.empty(); }

  /// Starts to show what waits, at a pace in milliseconds. `ends` when the roll has ended: the
  /// money then follows. Without `moves` nothing slides or counts.
  void Play(int pace, bool moves, bool ends);

  bool IsPlaying() const { return playing_; }

  /// True until payouts lie beside their bets.
  bool IsPaying() const;

  /// Ends the play when its time is over; true when it still goes on.
  bool GoOn();

  /// What was paid lies beside its bet, and that bet has a ring: it is settled now.
  void Rest();

  /// Everything is as the record has it.
  void End();

  ShownMoney Money() const;

  /// Chips on their way, with the amounts beside them.
  std::vector<DrawnChip> Chips() const;
  void PaintLabels(QPainter& painter) const;

  /// Where chips lie that rest beside their bet; empty without any.
  QRectF Resting() const;

  /// What has to be painted again now, in table units.
  QRectF Moving() const;

 private:
  struct Decided {
    int BetId = 0;
    Currency Stake;
    Currency Net;
    std::vector<DrawnChip> Chips;  // of a bet that was lost
    QPointF Place;
  };

  double Now() const;  // milliseconds of the time table
  void PaintRings(QPainter& painter) const;
  QPointF Shift(const Decided& decided, double now) const;
  static std::vector<DrawnChip> PayoutOf(const Decided& decided);

  std::vector<Decided> decided_;
  ShownMoney before_;
  bool held_ = false;  // the money is shown as it stood
  bool playing_ = false;
  bool resting_ = false;
  bool moves_ = true;
  bool ends_ = false;
  double scale_ = 1;
  QElapsedTimer clock_;
};
