#include "screens/play/frmSettleBet.h"

#include <QCursor>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <algorithm>

#include "bets/settle.h"
#include "core/text.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/help.h"
#include "screens/frame/numeric_entry.h"
#include "screens/play/modify_amounts.h"

namespace {

constexpr int kMargin = 16;
constexpr int kLineGap = 4;
constexpr int kColumnGap = 24;
constexpr int kChoiceGap = 11;
constexpr int kChoiceHeight = 26;
constexpr int kModifyHeight = 26;
constexpr int kModifyChoiceWidth = 84;
constexpr int kOperatorWidth = 28;
constexpr int kAmountWidth = 96;
constexpr int kUnitWidth = 84;
constexpr int kModifyGap = 5;
constexpr int kPaddingOfCaption = 36;
constexpr double kFontHeightOfUnit = 15.0;
constexpr int kAmountDecimals = 2;

constexpr int kFirstModifyChoice = 5;  // " Same Bet:", and after it " Bet:"
enum ModifyRow : int { SameBetRow = 0, BetRow = 1 };

}  // namespace

frmSettleBet::frmSettleBet(QWidget* parent) : QDialog(parent) {
  setObjectName("frmSettleBet");
  setWindowTitle(Text(Game.Settle.Caption));
  setWindowFlag(Qt::WindowCloseButtonHint, false);
  scale_ = std::max(1.0, QFontMetrics(font()).height() / kFontHeightOfUnit);
  MakeLines();
  MakeChoices();
  Arrange();
  const int choice = Game.Settle.Lost ? Game.LastLossChoice : Game.LastWinChoice;
  const int focused = Game.Settle.OnlyTakeDown ? 0 : std::clamp(choice, 0, kChoices - 1);
  QPushButton* button = cmdHandle_[static_cast<unsigned>(focused)];
  button->setDefault(true);
  button->setFocus();
}

int frmSettleBet::Units(double count) const { return qRound(count * scale_); }

/// The slot of a row: the screen's own two for a win or push, the next two for a loss.
unsigned frmSettleBet::Slot(int row) const {
  return static_cast<unsigned>((Game.Settle.Lost ? ScreenLossSameBet : ScreenWinSameBet) + row);
}

void frmSettleBet::MakeLines() {
  for (std::size_t i = 0; i < Game.Settle.Lines.size(); ++i) {
    const SettleLine& line = Game.Settle.Lines[i];
    QLabel* type = new QLabel(Text(line.Label), this);
    QLabel* amount = new QLabel(Text(line.Amount), this);
    type->setObjectName(QString("lblWonBetType_%1").arg(i));
    amount->setObjectName(QString("lblWonBet_%1").arg(i));
    QFont lineFont = font();
    lineFont.setBold(line.Bold);
    for (QLabel* label : {type, amount}) {
      label->setTextFormat(Qt::PlainText);
      label->setFont(lineFont);
      label->adjustSize();
    }
    lblWonBetType_.push_back(type);
    lblWonBet_.push_back(amount);
  }
}

void frmSettleBet::MakeChoices() {
  for (int i = 0; i < kChoices; ++i) {
    QPushButton* button =
        new QPushButton(Text(Game.Settle.Buttons[static_cast<unsigned>(i)]), this);
    button->setObjectName(QString("cmdHandle_%1").arg(i));
    button->setEnabled(i == 0 || !Game.Settle.OnlyTakeDown);
    connect(button, &QPushButton::clicked, this, [this, i] { Press(i); });
    cmdHandle_[static_cast<unsigned>(i)] = button;
    if (i >= kFirstModifyChoice) MakeModifyRow(i - kFirstModifyChoice);
  }
  ShowCaptions();
}

void frmSettleBet::MakeModifyRow(int row) {
  const unsigned at = static_cast<unsigned>(row);
  const unsigned slot = Slot(row);
  const bool enabled = !Game.Settle.OnlyTakeDown;
  // An operator joins the amount to the bet that stood; " Bet:" names the whole bet and needs none.
  if (row == SameBetRow) {
    operator_ = Game.ModifyOperator[slot];
    cmdMathOperator_ = new QPushButton(this);
    cmdMathOperator_->setObjectName(QString("cmdMathOperator_%1").arg(row));
    cmdMathOperator_->setToolTip(tr("Click for the next operator"));
    cmdMathOperator_->setEnabled(enabled);
    connect(cmdMathOperator_, &QPushButton::clicked, this, [this] { StepOperator(); });
  }
  QLineEdit* amount = new QLineEdit(this);
  amount->setObjectName(QString("txtModifyAmount_%1").arg(row));
  amount->setAccessibleName(cmdHandle_[at + kFirstModifyChoice]->text().remove('&'));
  MakeNumericBox(amount, kAmountDecimals, false);
  amount->setText(Text(PlainText(Game.ModifyAmount[slot])));
  amount->setEnabled(enabled);
  txtModifyAmount_[at] = amount;

  unit_[at] = static_cast<int>(Game.ModifyUnit[slot].ToDouble());
  QPushButton* unit = new QPushButton(this);
  unit->setObjectName(QString("cmdUnits_%1").arg(row));
  unit->setToolTip(tr("Click for the next unit"));
  unit->setEnabled(enabled);
  connect(unit, &QPushButton::clicked, this, [this, row] { StepUnit(row); });
  cmdUnits_[at] = unit;
  for (QPushButton* button : {cmdMathOperator_, unit}) button->setAutoDefault(false);
}

void frmSettleBet::StepOperator() {
  operator_ = NextOperator(operator_);
  ShowCaptions();
}

void frmSettleBet::StepUnit(int row) {
  int& unit = unit_[static_cast<unsigned>(row)];
  unit = NextUnit(unit);
  ShowCaptions();
}

void frmSettleBet::ShowCaptions() {
  cmdMathOperator_->setText(OperatorCaption(operator_));
  for (unsigned row = 0; row < kModifyRows; ++row) cmdUnits_[row]->setText(UnitCaption(unit_[row]));
}

void frmSettleBet::Arrange() {
  const int margin = Units(kMargin);
  const QFontMetrics metrics(font());
  int lines = 0;
  for (std::size_t i = 0; i < lblWonBet_.size(); ++i) {
    lines =
        std::max(lines, lblWonBetType_[i]->width() + Units(kColumnGap) + lblWonBet_[i]->width());
  }
  int choices =
      Units(kModifyChoiceWidth + kOperatorWidth + kAmountWidth + kUnitWidth + 3 * kModifyGap);
  for (const QPushButton* button : cmdHandle_) {
    choices =
        std::max(choices, metrics.horizontalAdvance(button->text()) + Units(kPaddingOfCaption));
  }
  const int inner =
      std::max({lines, choices, metrics.horizontalAdvance(windowTitle()) + Units(80)});

  int top = margin;
  for (std::size_t i = 0; i < lblWonBet_.size(); ++i) {
    lblWonBetType_[i]->move(margin, top);
    lblWonBet_[i]->move(margin + inner - lblWonBet_[i]->width(), top);
    top += lblWonBet_[i]->height() + Units(kLineGap);
  }
  top += Units(kChoiceGap);
  for (int i = 0; i < kChoices; ++i) {
    const bool modify = i >= kFirstModifyChoice;
    cmdHandle_[static_cast<unsigned>(i)]->setGeometry(
        margin, top, modify ? Units(kModifyChoiceWidth) : inner, Units(kChoiceHeight));
    if (modify) ArrangeModifyRow(i - kFirstModifyChoice, margin, top);
    top += Units(kChoiceHeight + kChoiceGap);
  }
  setFixedSize(inner + 2 * margin, top - Units(kChoiceGap) + margin);
}

void frmSettleBet::ArrangeModifyRow(int row, int left, int top) {
  const unsigned at = static_cast<unsigned>(row);
  const auto place = [&](QWidget* control, int width) {
    control->setGeometry(left, top, Units(width), Units(kModifyHeight));
    left += Units(width + kModifyGap);
  };
  left += Units(kModifyChoiceWidth + kModifyGap);
  if (row == SameBetRow) {
    place(cmdMathOperator_, kOperatorWidth);
  } else {
    left += Units(kOperatorWidth + kModifyGap);
  }
  place(txtModifyAmount_[at], kAmountWidth);
  place(cmdUnits_[at], kUnitWidth);
}

// ---- Beside the chips ----

namespace {

constexpr int kTail = 14;
constexpr int kRadius = 7;
constexpr int kBoxHeight = 26;
constexpr int kDigitSize = 18;
constexpr double kNetLetters = 1.4;
constexpr int kForTheDigit = 26;  // wider than without it

QIcon DigitIcon(int digit, const QPalette& palette, double ratio) {
  QPixmap picture(QSize(kDigitSize, kDigitSize) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette.color(QPalette::Base));
  painter.drawRoundedRect(QRectF(0, 0, kDigitSize, kDigitSize), 4, 4);
  QFont font;
  font.setPixelSize(12);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(palette.color(QPalette::Text));
  painter.drawText(QRect(0, 0, kDigitSize, kDigitSize), Qt::AlignCenter, QString::number(digit));
  return picture;
}

}  // namespace

/// What the frame said stands on the plate: the caption above, and a box below.
void frmSettleBet::MakePlate() {
  setWindowFlag(Qt::FramelessWindowHint);
  plate_ = true;
  for (int i = 0; i < kChoices; ++i) {
    QPushButton* button = cmdHandle_[static_cast<unsigned>(i)];
    button->setIcon(DigitIcon(i + 1, palette(), devicePixelRatioF()));
    button->setIconSize({kDigitSize, kDigitSize});
    button->setStyleSheet("text-align: left; padding-left: 6px;");
  }
  MakeRoomForDigits();
  QLabel* caption = new QLabel(windowTitle(), this);
  caption->setObjectName("lblSettleCaption");
  caption->setTextFormat(Qt::PlainText);
  caption->adjustSize();
  const int head = caption->height() + Units(kLineGap);
  ShiftControls({0, head});
  caption->move(Units(kMargin), Units(kMargin) - Units(kLineGap));
  for (std::size_t i = 0; i < lblWonBet_.size(); ++i) {
    if (!lblWonBet_[i]->font().bold()) continue;
    QPalette ink = lblWonBet_[i]->palette();
    const ChromeColors& colors = ColorsOfWindows();
    ink.setColor(QPalette::WindowText, Game.NetPayoff < Currency() ? colors.Loss : colors.Gain);
    lblWonBet_[i]->setPalette(ink);
    QFont letters = lblWonBet_[i]->font();
    letters.setPixelSize(qRound(QFontInfo(letters).pixelSize() * kNetLetters));
    lblWonBet_[i]->setFont(letters);
    const QPoint corner = lblWonBet_[i]->geometry().bottomRight();
    lblWonBet_[i]->adjustSize();
    lblWonBet_[i]->move(corner - QPoint(lblWonBet_[i]->width() - 1, lblWonBet_[i]->height() - 4));
  }
  chkForTheRest_ = new QCheckBox(tr("The same for the &rest of this roll"), this);
  chkForTheRest_->setObjectName("chkForTheRest");
  chkForTheRest_->setGeometry(Units(kMargin), height() + head - Units(kMargin) + 6,
                              width() - 2 * Units(kMargin), Units(kBoxHeight));
  setFixedSize(width(), height() + head + Units(kBoxHeight));
}

/// All grows as wide as the digit before each choice.
void frmSettleBet::MakeRoomForDigits() {
  const int digit = Units(kForTheDigit);
  for (int i = 0; i < kChoices; ++i) {
    QPushButton* button = cmdHandle_[static_cast<unsigned>(i)];
    button->resize(button->width() + digit, button->height());
    if (i < kFirstModifyChoice) continue;
    const auto row = static_cast<unsigned>(i - kFirstModifyChoice);
    for (QWidget* control :
         {static_cast<QWidget*>(txtModifyAmount_[row]), static_cast<QWidget*>(cmdUnits_[row]),
          static_cast<QWidget*>(row == 0 ? cmdMathOperator_ : nullptr)})
      if (control) control->move(control->x() + digit, control->y());
  }
  for (QLabel* amount : lblWonBet_) amount->move(amount->x() + digit, amount->y());
  setFixedSize(width() + digit, height());
}

void frmSettleBet::ShiftControls(QPoint by) {
  for (QObject* child : children())
    if (auto* control = qobject_cast<QWidget*>(child)) control->move(control->pos() + by);
}

void frmSettleBet::SitBeside(const QRect& pile, const QRect& within,
                             const std::function<double(const QRect&)>& cost) {
  MakePlate();
  struct Side {
    QPoint Step;
    QRect Place;
  };
  const QSize size = this->size();
  const QPoint centre = pile.center();
  const auto place = [&](QPoint step) {
    QPoint corner(centre.x() - size.width() / 2, centre.y() - size.height() / 2);
    if (step.x() > 0) corner.setX(pile.right() + kTail);
    if (step.x() < 0) corner.setX(pile.left() - kTail - size.width());
    if (step.y() > 0) corner.setY(pile.bottom() + kTail);
    if (step.y() < 0) corner.setY(pile.top() - kTail - size.height());
    corner.setX(std::clamp(corner.x(), within.left(),
                           std::max(within.left(), within.right() - size.width())));
    corner.setY(std::clamp(corner.y(), within.top(),
                           std::max(within.top(), within.bottom() - size.height())));
    return QRect(corner, size);
  };
  const QPoint steps[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
  const QPoint* best =
      std::min_element(std::begin(steps), std::end(steps),
                       [&](QPoint a, QPoint b) { return cost(place(a)) < cost(place(b)); });
  const QRect body = place(*best);
  const QPoint step = *best;
  const QPoint shift(step.x() > 0 ? kTail : 0, step.y() > 0 ? kTail : 0);
  ShiftControls(shift);
  setFixedSize(size + QSize(std::abs(step.x()), std::abs(step.y())) * kTail);
  move(body.topLeft() - shift);
  QPoint tip(centre - pos());
  if (step.x() != 0) tip.setX(step.x() > 0 ? 0 : width() - 1);
  if (step.y() != 0) tip.setY(step.y() > 0 ? 0 : height() - 1);
  CutOut(tip);
}

/// The outline of plate and tail.
void frmSettleBet::CutOut(const QPoint& tip) {
  QRectF plate = QRectF(rect()).adjusted(0, 0, -1, -1);
  QPointF along(0, 1);
  QPointF foot = tip;
  if (tip.x() == 0) {
    plate.setLeft(kTail);
    foot.setX(kTail + 1);
  } else if (tip.x() == width() - 1) {
    plate.setRight(width() - 1 - kTail);
    foot.setX(plate.right() - 1);
  } else if (tip.y() == 0) {
    plate.setTop(kTail);
    foot.setY(kTail + 1);
    along = {1, 0};
  } else {
    plate.setBottom(height() - 1 - kTail);
    foot.setY(plate.bottom() - 1);
    along = {1, 0};
  }
  QPainterPath path;
  path.addRoundedRect(plate, kRadius, kRadius);
  QPainterPath tail;
  const QPointF half = along * (kTail - 2);
  foot.setX(std::clamp(foot.x(), plate.left() + half.x(), plate.right() - half.x()));
  foot.setY(std::clamp(foot.y(), plate.top() + half.y(), plate.bottom() - half.y()));
  tail.addPolygon(QPolygonF({foot - half, QPointF(tip), foot + half}));
  tail.closeSubpath();
  outline_ = path.united(tail).toFillPolygon();
  setMask(QRegion(outline_.toPolygon()).united(QRegion(plate.adjusted(3, 3, -3, -3).toRect())));
}

void frmSettleBet::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  if (outline_.isEmpty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ColorsOfWindows().Accent, 3));
  painter.drawPolygon(outline_);
}

void frmSettleBet::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!Game.SnapMouse) return;
  QTimer::singleShot(0, this, [this] {
    const QWidget* button = focusWidget();
    if (button && isVisible()) QCursor::setPos(button->mapToGlobal(button->rect().center()));
  });
}

void frmSettleBet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    ShowHelp(Game.Settle.HelpTopic);
    return;
  }
  const int digit = event->key() - Qt::Key_1;
  if (plate_ && digit >= 0 && digit < kChoices && !event->isAutoRepeat()) {
    QPushButton* button = cmdHandle_[static_cast<unsigned>(digit)];
    if (button->isEnabled()) button->click();
    return;
  }
  QDialog::keyPressEvent(event);
}

void frmSettleBet::Store() {
  for (int row = 0; row < kModifyRows; ++row) {
    const unsigned at = static_cast<unsigned>(row);
    const unsigned slot = Slot(row);
    Game.ModifyAmount[slot] = ParseAmount(txtModifyAmount_[at]->text().toStdString());
    Game.ModifyUnit[slot] = unit_[at];
  }
  Game.ModifyOperator[Slot(SameBetRow)] = operator_;
}

void frmSettleBet::Press(int button) {
  hide();
  Store();
  choice_ = button;
  PressSettleButton(button);
  done(QDialog::Accepted);
}
