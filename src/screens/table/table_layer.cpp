#include "screens/table/table_layer.h"

#include <QEventLoop>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <algorithm>
#include <utility>

#include "bets/bet_history.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "figures/call_text.h"
#include "play/roll_cycle.h"
#include "screens/art/roles.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/player_change.h"
#include "screens/table/band_elements.h"
#include "screens/table/bet_focus.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/pile_layout.h"
#include "screens/table/qt_host.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_elements.h"
#include "screens/table/table_settings.h"

namespace {

constexpr int kFrameTime = 16;
constexpr int kCallTime = 6000;
constexpr double kFadeIn = 120;
constexpr int kFadeOut = 80;
constexpr QRectF kToldCaption(196, 448, 228, 22);
constexpr QRectF kCaptionInBand(196, 408, 228, 22);

/// The region of the table that lights up for a spot.
QPainterPath RegionOf(int spot) {
  if (!HoldsMoney(spot)) return {};
  if (IsBet(spot)) return RegionOfBet(spot);
  QPainterPath path;
  for (const QPolygonF& box : ChipBoxes(spot)) {
    path.addPolygon(box);
    path.closeSubpath();
  }
  return path.simplified();
}

void PaintLight(QPainter& painter, int spot, double strength) {
  const QPainterPath region = RegionOf(spot);
  if (region.isEmpty()) return;
  painter.save();
  painter.setOpacity(strength);
  painter.fillPath(region, QColor(255, 255, 255, 33));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::black, 3.4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawPath(region);
  painter.setPen(QPen(kHighlight, 1.7, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawPath(region);
  painter.restore();
}

}  // namespace

TableLayer::TableLayer(frmCrapTable* table) : QObject(table), table_(table) {
  frames_.setInterval(kFrameTime);
  connect(&frames_, &QTimer::timeout, this, &TableLayer::Animate);
  callTime_.setSingleShot(true);
  connect(&callTime_, &QTimer::timeout, this, &TableLayer::EndCall);
  TellElements();
  fadeOut_.setSingleShot(true);
  fadeOut_.setInterval(kFadeOut);
  connect(&fadeOut_, &QTimer::timeout, this, [this] {
    const QRectF region = RegionOf(shownLit_).boundingRect().adjusted(-3, -3, 3, 3);
    shownLit_ = lit_;
    table_->Layout()->update(table_->Layout()->FromTable(region));
  });
}

/// Keyboard and screen reader go by these lists.
void TableLayer::TellElements() {
  const QPointer<TableLayer> self(this);
  SetTableButtons([self] {
    std::vector<TableButton> buttons;
    if (!self) return buttons;
    constexpr int kKeys[] = {Qt::Key_Space, Qt::Key_R, Qt::Key_D, Qt::Key_U, Qt::Key_C};
    for (int button = 0; TheTable.RollButtons && button < kRailButtons; ++button)
      buttons.push_back({RailButtonName(button),
                         RailButtonRect(button),
                         {},
                         [button] { return IsRailButtonOn(button); },
                         [self, button] { self->Give(button); },
                         kKeys[button]});
    if (TheTable.RollButtons) {
      const auto alsoHas = [&](const QString& name, int button, std::function<bool()> enabled,
                               std::function<void()> act, QKeyCombination key) {
        buttons.push_back({name,
                           RailButtonRect(button),
                           {},
                           std::move(enabled),
                           std::move(act),
                           key.toCombined()});
      };
      alsoHas(
          tr("Redo"), UndoButton, CanRedo, [self] { self->Redo(); }, Qt::SHIFT | Qt::Key_U);
      alsoHas(
          tr("Roll by itself"), RollButton, {}, [self] { self->table_->RollByItself(); },
          QKeyCombination(Qt::Key_A));
    }
    if (!TheTable.Money) return buttons;
    const ShownMoney money = MoneyNow();
    const auto add = [&](const QString& name, Currency amount) {
      buttons.push_back({name, kMoneyWell, name + " " + Text(SpokenMoney(amount))});
    };
    add(tr("Bankroll"), money.Bankroll);
    add(tr("At risk"), money.AtRisk);
    add(money.Result < Currency() ? tr("You've lost") : tr("You've won"), Abs(money.Result));
    return buttons;
  });
  const auto sentence = [](const RollNote& note) {
    return Text(SpokenCall({note.Die1, note.Die2, note.PrevPoint, note.Point, note.Net}));
  };
  SetTableSentences(
      {[sentence] {
         std::vector<QString> sentences;
         for (const RollNote& note : Game.LastRolls) sentences.push_back(sentence(note));
         return sentences;
       },
       [self, sentence] { return self && self->called_ ? sentence(*self->called_) : QString(); }});
}

// ---- Painting ----

/// Whether anything of the layer lies in the lower rail, so that the caption makes room.
bool TableLayer::TakesOver() const { return TheTable.RollButtons || TheTable.Money; }

/// History, money and buttons, as far as they are to be painted.
void TableLayer::PaintRail(QPainter& painter, const QRectF& exposed) const {
  const bool hyper = Game.HyperDriveOn;
  painter.save();
  if (hyper) painter.setOpacity(kRestingUnderHyperDrive);
  if (TheTable.History && exposed.intersects(kHistoryWell.adjusted(-1, -1, 1, 1))) {
    const double since = called_ ? static_cast<double>(calledSince_.elapsed()) : kFadeIn;
    PaintHistory(painter, motion_.IsPlaying() && MotionWanted() ? std::min(1.0, since / 160) : 1);
  }
  if (TheTable.Money && exposed.intersects(kMoneyWell.adjusted(-1, -1, 1, 1)))
    PaintMoney(painter, motion_.Money());
  if (TheTable.RollButtons) {
    RailLook look = rail_;
    look.Stops = Game.KeepRolling || Game.AutoBetRunning || hyper;
    PaintRailButtons(painter, look, exposed);
  }
  painter.restore();
}

/// Whether the call stands in the band. The call board leaves the band to the forecast, but it
/// doesn't tell why a run has ended.
bool TableLayer::ShowsCall() const {
  const bool onBoard = TheTable.StickFrame == StickCallBoard && callEnd_ == NoLimitReached;
  return TheTable.Call && called_ && !onBoard;
}

bool TableLayer::ShowsStrip() const {
  return TheTable.Forecast && !ShowsCall() && !table_->ShowsPanel() && SaysSomething(forecast_);
}

void TableLayer::PaintBand(QPainter& painter) const {
  if (Game.HyperDriveOn && (TheTable.Call || TheTable.Forecast)) {
    PaintHyperBand(painter, Game.RollCount[0]);
  } else if (ShowsCall()) {
    const double since = static_cast<double>(calledSince_.elapsed());
    const bool fades = frames_.isActive() && MotionWanted();
    PaintCall(painter, *called_, callEnd_, fades ? std::min(1.0, since / kFadeIn) : 1);
  } else if (ShowsStrip()) {
    PaintForecastStrip(painter, forecast_);
  }
}

void TableLayer::PaintBelow(QPainter& painter, const QRectF& exposed) const {
  PaintRail(painter, exposed);
  if (exposed.intersects(kBand.adjusted(-1, -1, 1, 1))) PaintBand(painter);
  if (!TheTable.Highlight || Game.HyperDriveOn) return;
  if (lit_ != 0)
    PaintLight(painter, lit_, 1);
  else if (shownLit_ != 0 && unlitSince_.isValid())
    PaintLight(painter, shownLit_,
               std::clamp(1 - static_cast<double>(unlitSince_.elapsed()) / kFadeOut, 0.0, 1.0));
}

void TableLayer::PaintAbove(QPainter& painter) const {
  if (Game.HyperDriveOn) return;
  motion_.PaintLabels(painter);
}

void TableLayer::UpdateBand() {
  table_->Layout()->update(table_->Layout()->FromTable(kBand.adjusted(-2, -2, 2, 2)));
}

// ---- What changes ----

void TableLayer::Follow() {
  table_->View().CaptionPlate = TakesOver() ? kCaptionInBand : kToldCaption;
  if (Game.HyperDriveOn) {
    if (!wasHyper_) {
      wasHyper_ = true;
      JumpToEnd();
      called_.reset();
      emit Changed();
    }
    return;
  }
  wasHyper_ = false;
  if (ChipPending == Currency()) NoteCommand();
  if (Game.UndoSteps.size() > steps_ && called_ && TableAtRest()) EndCall();
  steps_ = Game.UndoSteps.size();
  if (thrown_ && Game.RollsNoted != noted_) RollEnded();
  if (thrown_ && !Game.RollInProgress) thrown_ = false;
  if (!motion_.IsPlaying() && !thrown_) {
    Guarded("Forecast", [this] { forecast_ = ForecastRolls(); });
    emit Changed();
  }
}

void TableLayer::Tick() {
  if (!Game.HyperDriveOn || !(TheTable.Call || TheTable.Forecast)) return;
  if (std::exchange(shownRolls_, Game.RollCount[0]) != Game.RollCount[0]) UpdateBand();
}

void TableLayer::Call(const RollNote& note) {
  if (called_ != note) {
    called_ = note;
    calledSince_.start();
    frames_.start();
    callTime_.start(kCallTime);
  }
  callEnd_ = Game.RunEnd;
  UpdateBand();
  emit CallCame();
}

void TableLayer::EndCall() {
  if (motion_.IsPlaying()) {
    callTime_.start(kCallTime);
    return;
  }
  called_.reset();
  UpdateBand();
}

void TableLayer::Animate() {
  picLayoutBox* layout = table_->Layout();
  const bool plays = motion_.IsPlaying();
  const QRectF before = motion_.Moving();
  const bool goesOn = motion_.GoOn();
  table_->View().Flying = motion_.Chips();
  if (plays) {
    layout->update(layout->FromTable((before | motion_.Moving()).adjusted(-2, -2, 2, 2)));
    layout->update(layout->FromTable(kHistoryWell.adjusted(-1, -1, 1, 1)));
  }
  if (called_) UpdateBand();
  const bool fades = called_ && calledSince_.elapsed() < static_cast<int>(kFadeIn);
  if (goesOn || fades) return;
  frames_.stop();
  layout->update();
  Follow();
}

// ---- A roll ----

void TableLayer::DiceThrown() {
  JumpToEnd();
  called_.reset();
  callTime_.stop();
  thrown_ = true;
  noted_ = Game.RollsNoted;
  netOfThrow_ = 0;
  Guarded("Forecast", [this] { netOfThrow_ = NetIfRolled(Game.Die1, Game.Die2); });
  if (!HurryHost && TheTable.Pace > 0) motion_.BeginThrow();
  UpdateBand();
}

void TableLayer::BetDecided(int betId, Currency stake, Currency net) {
  if (thrown_ && !HurryHost && TheTable.Pace > 0) motion_.Add(betId, stake, net);
}

void TableLayer::ShowBeforeSettling() {
  if (!thrown_) return;
  Call({Game.Die1, Game.Die2, Game.PrevPoint, Game.Point, netOfThrow_});
  if (HurryHost || TheTable.Pace == 0) return;
  motion_.Play(TheTable.Pace, MotionWanted(), false);
  frames_.start();
  QEventLoop loop;
  QTimer watch;
  connect(&watch, &QTimer::timeout, &loop, [&] {
    if (!motion_.IsPaying()) loop.quit();
  });
  watch.start(kFrameTime);
  loop.exec();
  motion_.Rest();
  table_->View().Flying = motion_.Chips();
  table_->Layout()->update();
}

void TableLayer::Settled() {
  motion_.End();
  table_->View().Flying.clear();
  table_->Layout()->update();
}

void TableLayer::RollEnded() {
  if (!thrown_) return;
  thrown_ = false;
  if (Game.LastRolls.empty()) return;
  Call(Game.LastRolls.front());
  if (HurryHost || TheTable.Pace == 0) return;
  motion_.Play(TheTable.Pace, MotionWanted(), true);
  table_->View().Flying = motion_.Chips();
  frames_.start();
}

bool TableLayer::JumpToEnd() {
  const bool moved = motion_.IsPlaying();
  motion_.End();
  table_->View().Flying.clear();
  if (!moved) return false;
  table_->Layout()->update();
  Follow();
  return true;
}

// ---- The mouse ----

void TableLayer::MoveTo(QPointF place) {
  const int button = RailButtonAt(place);
  if (button != rail_.Hovered) {
    for (const int changed : {button, rail_.Hovered})
      if (changed != NoRailButton)
        table_->Layout()->update(
            table_->Layout()->FromTable(RailButtonRect(changed).adjusted(-3, -3, 3, 3)));
    rail_.Hovered = button;
  }
  const int spot = FindHotSpot(place.x(), place.y()).HotSpot;
  const int lit = HoldsMoney(spot) ? spot : 0;
  if (lit == lit_) return;
  const auto update = [this](int changed) {
    const QRectF region = RegionOf(changed).boundingRect().adjusted(-3, -3, 3, 3);
    table_->Layout()->update(table_->Layout()->FromTable(region));
  };
  if (TheTable.Highlight && !Game.HyperDriveOn) {
    if (shownLit_ != 0) update(shownLit_);
    if (lit_ != 0) update(lit_);
    if (lit != 0) update(lit);
  }
  shownLit_ = lit != 0 ? lit : lit_;
  lit_ = lit;
  if (lit_ == 0) {
    unlitSince_.start();
    fadeOut_.start();
  }
  emit Lit(lit_);
}

void TableLayer::Leave() { MoveTo({-1, -1}); }

bool TableLayer::Press(QPointF place) {
  JumpToEnd();
  rail_.Pressed = RailButtonAt(place);
  if (rail_.Pressed == NoRailButton) return false;
  table_->Layout()->update();
  return true;
}

bool TableLayer::Release(QPointF place) {
  const int pressed = std::exchange(rail_.Pressed, NoRailButton);
  const int button = RailButtonAt(place);
  if (pressed == NoRailButton) return button != NoRailButton;
  table_->Layout()->update();
  if (pressed == button) Give(button);
  return true;
}

void TableLayer::Give(int button) {
  JumpToEnd();
  if (!IsRailButtonOn(button) && !Game.AutoBetRunning) return;
  if (!ClickMayAct()) return;
  if (button == RollButton) {
    if (RightClick()) table_->Roll();
    return;
  }
  if (!TableAtRest()) return;
  switch (button) {
    case RepeatButton: RepeatBets(); break;
    case DoubleButton: DoubleBets(); break;
    case UndoButton: TellRefusal(UndoCommand()); break;
    case ClearButton: ClearBets(); break;
    default: return;
  }
  TheHost.RefreshViews();
}

void TableLayer::Redo() {
  JumpToEnd();
  if (!ClickMayAct() || !TableAtRest()) return;
  TellRefusal(RedoCommand());
  TheHost.RefreshViews();
}

void TableLayer::TellRefusal(int betId) {
  if (betId == 0 || !NoticeWanted(NoticeActions)) return;
  Game.MsgText = tr("The rules don't let this bet go back to what it was.").toStdString();
  ShowNotice(NoticeActions, BetName(betId) + " Bet", kTopicTable);
}

QString TableLayer::TipAt(QPointF place) const {
  if (const int button = RailButtonAt(place); button != NoRailButton) return RailButtonTip(button);
  const bool strip = ShowsStrip() && !Game.HyperDriveOn;
  if (const QString tip = strip ? ForecastTip(place, forecast_) : QString(); !tip.isEmpty())
    return tip;
  return HistoryTip(place);
}
