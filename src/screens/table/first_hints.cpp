#include "screens/table/first_hints.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "core/game_state.h"
#include "screens/art/roles.h"
#include "screens/table/bet_card_view.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/rail_elements.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_settings.h"
#include "screens/table/table_text.h"

namespace {

constexpr int kSteps = 4;
constexpr int kBalloonWidth = 330;
constexpr int kBalloonHeight = 206;
constexpr int kAway = 26;
constexpr int kDark = 143;  // 56 percent of black

QFont Sized(QFont font, int pixels, bool bold = false) {
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

/// The words of a hint, in a box with two buttons.
class Balloon : public QWidget {
 public:
  Balloon(QWidget* parent, const FirstHints* hints) : QWidget(parent), hints_(hints) {
    setObjectName("hintBalloon");
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kAccent, 1.4));
    painter.setBrush(kPlate);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 9, 9);
    const QRect inner = rect().adjusted(20, 16, -20, -56);
    painter.setPen(kInk);
    painter.setFont(Sized(font(), 20, true));
    QRect used;
    painter.drawText(inner, Qt::TextWordWrap, Title(), &used);
    painter.setFont(Sized(font(), 14));
    painter.drawText(inner.adjusted(0, used.height() + 8, 0, 10), Qt::TextWordWrap, Words());
    for (int step = 0; step < kSteps; ++step) {
      painter.setPen(QPen(kAccent, 1.4));
      painter.setBrush(step == hints_->Step() ? QBrush(kAccent) : QBrush(Qt::NoBrush));
      painter.drawEllipse(QPointF(26 + 16 * step, height() - 33), 5, 5);
    }
  }

 private:
  QString Title() const {
    switch (hints_->Step()) {
      case 0: return FirstHints::tr("Start on the Pass Line");
      case 1: return FirstHints::tr("Throw the dice");
      case 2: return FirstHints::tr("Take odds");
      default: return FirstHints::tr("Every bet explains itself");
    }
  }

  QString Words() const {
    switch (hints_->Step()) {
      case 0:
        if (Game.Point != 0)
          return FirstHints::tr(
              "A point stands now: throw the dice until it is made or a 7 comes. Then lay a chip "
              "here, before the next throw.");
        return FirstHints::tr(
                   "The chip in your hand is worth %1. Click here to lay it. On the first throw 7 "
                   "and 11 win, 2, 3 and 12 lose; any other number becomes the point.")
            .arg(PlainMoney(AmountOfSelection()));
      case 1:
        return FirstHints::tr(
            "Press ROLL, the space bar, or the right button of the mouse anywhere on the table.");
      case 2:
        return FirstHints::tr(
            "Once the white puck marks a point, chips laid here behind the line are paid at true "
            "odds: no other bet is without a cost.");
      default:
        return FirstHints::tr(
            "Let the mouse rest on a bet to see what wins, what it pays and what it costs, or "
            "press F1 for its page of the handbook.");
    }
  }

  const FirstHints* hints_;
};

}  // namespace

FirstHints::FirstHints(frmCrapTable* table) : QWidget(table->Layout()), table_(table) {
  setObjectName("firstHints");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  balloon_ = new Balloon(table->Layout(), this);
  cmdNoHints_ = new QPushButton(tr("No hints"), balloon_);
  cmdNoHints_->setObjectName("cmdNoHints");
  cmdNextHint_ = new QPushButton(tr("Next"), balloon_);
  cmdNextHint_->setObjectName("cmdNextHint");
  for (QPushButton* button : {cmdNoHints_, cmdNextHint_}) button->setFocusPolicy(Qt::TabFocus);
  connect(cmdNoHints_, &QPushButton::clicked, this, &FirstHints::End);
  connect(cmdNextHint_, &QPushButton::clicked, this, [this] { GoTo(step_ + 1); });
  table->Layout()->installEventFilter(this);
  hide();
  balloon_->hide();
}

void FirstHints::Begin() {
  show();
  balloon_->show();
  GoTo(0);
}

void FirstHints::GoTo(int step) {
  if (step >= kSteps) return End();
  step_ = step;
  rolls_ = Game.RollCount[0];
  cmdNextHint_->setText(step == kSteps - 1 ? tr("Done") : tr("Next"));
  Place();
}

void FirstHints::End() {
  hide();
  balloon_->hide();
  if (!TheTable.Hints) return;
  TheTable.Hints = false;
  UseTableSettings();
}

bool FirstHints::IsDone() const {
  switch (step_) {
    case 0: return Game.Bets[PassLine] > 0;
    case 1: return Game.RollCount[0] > rolls_;
    case 2: return Game.Bets[PassLineOdds] > 0;
    default: return false;
  }
}

void FirstHints::Follow() {
  if (!isVisible()) return;
  if (Game.HyperDriveOn || !TheTable.Hints) return End();
  if (IsDone()) GoTo(step_ + 1);
  balloon_->update();
}

/// What the hint speaks of, on the widget.
QRectF FirstHints::Region() const {
  const auto of = [&](const QPainterPath& path) {
    return QRectF(table_->Layout()->FromTable(path.boundingRect()));
  };
  switch (step_) {
    case 0: return of(SpotOutline(PassLine));
    case 1: return table_->Layout()->FromTable(RailButtonRect(RollButton));
    case 2: return of(SpotOutline(PassLineOdds));
    default: return of(SpotOutline(Field));
  }
}

void FirstHints::Place() {
  const QRect all = table_->Layout()->rect();
  setGeometry(all);
  const QSize size(std::min(kBalloonWidth, all.width() - 16), kBalloonHeight);
  // Above the middle of the table, where no hint points to.
  const QPoint middle =
      table_->Layout()->FromTable(QRectF(300, 200, 1, 1)).center() - QPoint(0, size.height() / 2);
  QPoint at(middle.x() - size.width() / 2, middle.y() - (step_ == 3 ? 70 : 30));
  at.setX(std::clamp(at.x(), 4, std::max(4, all.width() - size.width() - 4)));
  at.setY(std::clamp(at.y(), 4, std::max(4, all.height() - size.height() - 4)));
  balloon_->setGeometry(QRect(at, size));
  const QSize button(104, 32);
  cmdNextHint_->setGeometry(
      QRect(QPoint(size.width() - 20 - button.width(), size.height() - 48), button));
  cmdNoHints_->setGeometry(cmdNextHint_->geometry().translated(-button.width() - 10, 0));
  raise();
  balloon_->raise();
  balloon_->update();
  update();
}

void FirstHints::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath lit;
  if (step_ == 1) {
    lit.addEllipse(Region());
  } else {
    const int spots[] = {PassLine, NoSpot, PassLineOdds, Field};
    lit = TableTransform(table_->Layout()->size()).map(SpotOutline(spots[step_]));
  }
  QPainterPath rest;
  rest.addRect(rect());
  painter.fillPath(rest.subtracted(lit), QColor(0, 0, 0, kDark));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kHighlight, 2.4));
  painter.drawPath(lit);
}

bool FirstHints::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize && isVisible()) Place();
  return false;
}
