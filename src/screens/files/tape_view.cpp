#include "screens/files/tape_view.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <climits>
#include <cmath>

#include "core/file_failure.h"
#include "core/game_state.h"
#include "dice/tape.h"
#include "dice/tape_edit.h"
#include "dice/tape_file.h"
#include "screens/art/chip_art.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"

namespace {

constexpr QRgb kInk = 0xFF000000;
constexpr QRgb kPale = 0xFF66707C;
constexpr QRgb kBand = 0xFFF3F6FA;       // every second five of a row
constexpr QRgb kHighlight = 0xFFFFD75E;  // what is highlighted
constexpr QRgb kSelected = 0x553A7DE0;   // over what is selected
constexpr QRgb kBad = 0xFFC01818;        // what is no throw
constexpr double kMargin = 5;
constexpr int kDragPace = 40;    // milliseconds a row
constexpr double kWidest = 1.6;  // of what a roll needs
constexpr int kFives = 5;

QFont TapeFont() {
  QFont font = QApplication::font();
  font.setPointSize(std::clamp(Game.DiceFontSize, 1, 199));
  return font;
}

int RowsOf(std::int64_t places, int perRow) {
  return static_cast<int>(std::min<std::int64_t>((places + perRow - 1) / perRow, INT_MAX));
}

QColor BandColor() { return HasOwnChrome() ? ColorsOfWindows().Window : QColor::fromRgb(kBand); }

/// Totals stand on it, too.
QColor HighlightColor() {
  const bool dark = PaperColor().lightness() < 128;
  return dark ? QColor(0x6B, 0x4E, 0x0A) : QColor::fromRgb(kHighlight);
}

}  // namespace

picDiceRollsBox::picDiceRollsBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picDiceRolls");
  setAccessibleName(tr("Dice rolls"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(fontMetrics().averageCharWidth() * 34, fontMetrics().height() * 8);
}

// ---- Reading ----

void picDiceRollsBox::Load() {
  failure_.clear();
  length_ = DiceRollCount();
  if (!Game.DiceRollFile.empty()) {
    static_cast<void>(ReadRolls(1, 1));
    if (Game.LastFileResult < 0) failure_ = FileFailureText(Game.DiceRollFile, "read");
  }
  Measure();
  ScrollTo(top_);
}

void picDiceRollsBox::ReadView() {
  inView_ = ReadRolls(FirstInView(), static_cast<std::int64_t>(WholeRows() + 1) * perRow_);
  update();
}

/// Rows of whole fives where there is room, so that numbers of rolls are round.
void picDiceRollsBox::Measure() {
  const QFontMetricsF metrics(TapeFont());
  if (const double die = std::round(metrics.height() * 0.92); die != die_) {
    die_ = die;
    dice_.fill({});
  }
  cell_ = QSizeF(2 * die_ + metrics.horizontalAdvance("12") + 4 * kMargin,
                 metrics.height() + 2 * kMargin);
  gutter_ =
      metrics.horizontalAdvance(Count(std::max<std::int64_t>(length_ + 1, 1000))) + 3 * kMargin;
  const int fit = std::max(1, static_cast<int>((width() - gutter_) / cell_.width()));
  perRow_ = fit >= kFives ? fit - fit % kFives : fit;
  const double stretched = (width() - gutter_) / perRow_;
  cell_.setWidth(std::clamp(stretched, cell_.width(), cell_.width() * kWidest));
}

// ---- Places ----

int picDiceRollsBox::Rows() const { return RowsOf(length_ + 1, perRow_); }

int picDiceRollsBox::WholeRows() const {
  return std::max(1, static_cast<int>(height() / cell_.height()));
}

int picDiceRollsBox::RowOf(std::int64_t record) const {
  return static_cast<int>(std::min<std::int64_t>((record - 1) / perRow_, INT_MAX));
}

std::int64_t picDiceRollsBox::FirstInView() const {
  return static_cast<std::int64_t>(top_) * perRow_ + 1;
}

QRectF picDiceRollsBox::CellOf(std::int64_t record) const {
  const std::int64_t column = (record - 1) % perRow_;
  return {{gutter_ + static_cast<double>(column) * cell_.width(),
           (RowOf(record) - top_) * cell_.height()},
          cell_};
}

std::int64_t picDiceRollsBox::RecordAt(QPointF place) const {
  const auto row = static_cast<std::int64_t>(std::floor(place.y() / cell_.height())) + top_;
  const double column = std::floor((place.x() - gutter_) / cell_.width());
  const auto within = static_cast<std::int64_t>(std::clamp(column, 0.0, perRow_ - 1.0));
  return std::clamp<std::int64_t>(row * perRow_ + within + 1, 1, length_ + 1);
}

void picDiceRollsBox::ScrollTo(int row) {
  top_ = std::clamp(row, 0, std::max(0, Rows() - WholeRows()));
  ReadView();
  emit Scrolled();
}

void picDiceRollsBox::BringIntoView(std::int64_t record) {
  const int row = RowOf(record);
  if (row < top_) {
    ScrollTo(row);
  } else if (row >= top_ + WholeRows()) {
    ScrollTo(row - WholeRows() + 1);
  }
}

void picDiceRollsBox::BringToMiddle(std::int64_t record) {
  ScrollTo(RowOf(record) - WholeRows() / 2);
}

// ---- Painting ----

const QPixmap& picDiceRollsBox::Die(int face) {
  QPixmap& die = dice_[static_cast<unsigned>(face)];
  const double ratio = devicePixelRatioF();
  if (!die.isNull() && die.devicePixelRatio() == ratio) return die;
  die = QPixmap((QSizeF(die_, die_) * ratio).toSize());
  die.setDevicePixelRatio(ratio);
  die.fill(Qt::transparent);
  QPainter painter(&die);
  DrawPrintedDie(painter, {die_ / 2, die_ / 2}, die_, face, Qt::white, QColor(0x30, 0x34, 0x3A));
  return die;
}

void picDiceRollsBox::PaintRowNumbers(QPainter& painter) const {
  painter.setPen(InkOnPaper(QColor::fromRgb(kPale)));
  for (int row = 0; row <= WholeRows() && top_ + row < Rows(); ++row) {
    const std::int64_t first = FirstInView() + static_cast<std::int64_t>(row) * perRow_;
    painter.drawText(QRectF(0, row * cell_.height(), gutter_ - 2 * kMargin, cell_.height()),
                     Qt::AlignRight | Qt::AlignVCenter, Count(first));
  }
}

/// Both dice and what they make; a byte that is no throw by its value.
void picDiceRollsBox::PaintRoll(QPainter& painter, const QRectF& cell, char throwByte) {
  if (IsHighlighted(throwByte)) painter.fillRect(cell.adjusted(1, 1, -1, -1), HighlightColor());
  if (!IsThrow(throwByte)) {
    painter.setPen(InkOnPaper(QColor::fromRgb(kBad)));
    painter.drawText(cell, Qt::AlignCenter,
                     tr("byte %1").arg(static_cast<unsigned char>(throwByte)));
    return;
  }
  const QPointF place(cell.left() + kMargin, cell.center().y() - die_ / 2);
  painter.drawPixmap(place, Die(FirstDie(throwByte)));
  painter.drawPixmap(place + QPointF(die_ + 1, 0), Die(SecondDie(throwByte)));
  painter.setPen(InkOnPaper(QColor::fromRgb(kInk)));
  const double width = painter.fontMetrics().horizontalAdvance("12");
  painter.drawText(QRectF(place.x() + 2 * die_ + kMargin, cell.top(), width, cell.height()),
                   Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(FirstDie(throwByte) + SecondDie(throwByte)));
}

/// Where the next roll goes: a bar before it, or a frame around what it will replace.
void picDiceRollsBox::PaintPosition(QPainter& painter) const {
  const std::int64_t position = Game.DiceFilePos;
  if (position < FirstInView() || position > length_ + 1) return;
  const QRectF cell = CellOf(position);
  const QColor color = InkOnPaper(QColor::fromRgb(hasFocus() ? kBad : kPale));
  const bool over = Game.InsertRolls == TypeOverRolls && position <= length_;
  if (over) {
    painter.setPen(QPen(color, 2));
    painter.drawRect(cell.adjusted(1, 1, -1, -1));
  } else {
    painter.fillRect(QRectF(cell.left() - 1, cell.top() + 1, 3, cell.height() - 2), color);
  }
}

void picDiceRollsBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), PaperColor());
  if (Game.DiceRollFile.empty() || !failure_.empty()) return;
  painter.setFont(TapeFont());
  for (int five = 1; five * kFives < perRow_; five += 2) {
    const double left = gutter_ + five * kFives * cell_.width();
    painter.fillRect(QRectF(left, 0, kFives * cell_.width(), height()), BandColor());
  }
  PaintRowNumbers(painter);
  const RollSelection selected = SelectedRolls();
  std::int64_t record = FirstInView();
  for (const char throwByte : inView_) {
    const QRectF cell = CellOf(record);
    PaintRoll(painter, cell, throwByte);
    if (record >= selected.From && record < selected.From + selected.Count)
      painter.fillRect(cell, QColor::fromRgba(kSelected));
    ++record;
  }
  PaintPosition(painter);
}

void picDiceRollsBox::resizeEvent(QResizeEvent*) {
  const std::int64_t first = FirstInView();
  Measure();
  ScrollTo(RowOf(first));
}

// ---- The mouse ----

void picDiceRollsBox::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const std::int64_t record = RecordAt(event->position());
  const bool extends = event->modifiers() & Qt::ShiftModifier;
  anchor_ = extends ? std::max(Game.DiceFilePos, 1) : record;
  emit Selected(anchor_, record);
}

void picDiceRollsBox::DragTo(QPointF place) {
  const std::int64_t record = RecordAt(place);
  BringIntoView(record);
  if (record != Game.DiceFileEnd) emit Selected(anchor_, record);
}

void picDiceRollsBox::mouseMoveEvent(QMouseEvent* event) {
  if (anchor_ == 0) return;
  mouse_ = event->position();
  DragTo(mouse_);
  if (rect().contains(mouse_.toPoint())) {
    drag_.stop();
  } else if (!drag_.isActive()) {
    drag_.start(kDragPace, this);
  }
}

void picDiceRollsBox::mouseReleaseEvent(QMouseEvent*) {
  anchor_ = 0;
  drag_.stop();
}

void picDiceRollsBox::timerEvent(QTimerEvent*) {
  if (anchor_ != 0) DragTo(mouse_);
}

bool picDiceRollsBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const std::int64_t record = RecordAt(help->pos());
  const std::int64_t at = record - FirstInView();
  if (at < 0 || at >= static_cast<std::int64_t>(inView_.size()) ||
      !CellOf(record).contains(help->pos())) {
    QToolTip::hideText();
    return true;
  }
  const char throwByte = inView_[static_cast<std::size_t>(at)];
  QToolTip::showText(
      help->globalPos(),
      IsThrow(throwByte)
          ? tr("Roll #%1:  %2").arg(Count(record), Text(RollText(throwByte, {false, true, true})))
          : tr("Roll #%1:  the byte %2 is out of limits, and no throw. Playback stops here.")
                .arg(Count(record))
                .arg(static_cast<unsigned char>(throwByte)),
      this);
  return true;
}
