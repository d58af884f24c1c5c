// What is laid over the plain table, and when: it holds nothing of the game, and with all of the
// player's switches off it paints nothing.
#pragma once

#include <QObject>
#include <QPointF>
#include <QTimer>
#include <optional>
#include <vector>

#include "bets/forecast.h"
#include "core/game_state.h"
#include "screens/table/rail_elements.h"
#include "screens/table/table_motion.h"

class QPainter;
class frmCrapTable;
struct TableView;

/// How much of the elements shows under Hyper-Drive, where they stand still.
inline constexpr double kRestingUnderHyperDrive = 0.4;

class TableLayer : public QObject {
  Q_OBJECT

 public:
  explicit TableLayer(frmCrapTable* table);

  // Painting, in table units: under the chips and over them. What lies outside `exposed` is left.
  void PaintBelow(QPainter& painter, const QRectF& exposed) const;
  void PaintAbove(QPainter& painter) const;

  /// The record may have changed: the forecast, the call and the motion follow.
  void Follow();

  /// Under Hyper-Drive, from the clock of the quick status: the band tells how far it has come.
  void Tick();

  // The mouse, in table units. True when an element has taken the button.
  void MoveTo(QPointF place);
  void Leave();
  bool Press(QPointF place);
  bool Release(QPointF place);

  /// The spot that is lit; a keyboard focus is lit by dashes.
  int LitSpot() const { return lit_; }

  /// What a button of the rail does.
  void Give(int button);
  void Redo();

  /// The tool tip at a place.
  QString TipAt(QPointF place) const;

  // A roll, as the host hears of it.
  void DiceThrown();
  void BetDecided(int betId, Currency stake, Currency net);

  /// Shows what has been decided so far, before a bet is settled by hand. Returns when payouts lie
  /// beside their bets, or after a click. There they stay until it has been settled.
  void ShowBeforeSettling();
  void Settled();

  /// Where payouts lie meanwhile, in table units; empty without any.
  QRectF PayoutPlace() const { return motion_.Resting(); }

  /// The roll has ended: it is called, and its result shown.
  void RollEnded();

  /// Whatever moves is at its end. True when something moved.
  bool JumpToEnd();
  bool IsMoving() const { return motion_.IsPlaying(); }

  /// The money as the player may see it: the totals of a throw change when its result is seen.
  ShownMoney Money() const { return motion_.Money(); }

  /// The roll whose call stands in the band; none without a call.
  const std::optional<RollNote>& Called() const { return called_; }

  const std::vector<ForecastRow>& Forecast() const { return forecast_; }

 signals:
  void Changed();      // forecast, history or money
  void CallCame();     // a roll has been called
  void Lit(int spot);  // the spot under the mouse, or none

 private:
  void TellElements();
  void PaintRail(QPainter& painter, const QRectF& exposed) const;
  void PaintBand(QPainter& painter) const;
  void Call(const RollNote& note);
  void EndCall();
  void Animate();
  void UpdateBand();
  void TellRefusal(int betId);
  bool TakesOver() const;
  bool ShowsCall() const;
  bool ShowsStrip() const;

  frmCrapTable* table_;
  TableMotion motion_;
  QTimer frames_;
  QTimer callTime_;
  QTimer fadeOut_;
  std::vector<ForecastRow> forecast_;
  std::optional<RollNote> called_;
  int callEnd_ = NoLimitReached;
  QElapsedTimer calledSince_;
  Currency netOfThrow_;  // of the dice that lie, as it was forecast
  bool thrown_ = false;  // a roll is under way
  int noted_ = 0;        // `RollsNoted` when it was thrown
  RailLook rail_;
  int lit_ = 0;
  int shownLit_ = 0;  // fading out
  QElapsedTimer unlitSince_;
  bool wasHyper_ = false;
  int shownRolls_ = -1;  // that the band tells of under Hyper-Drive
  std::size_t steps_ = 0;
};
