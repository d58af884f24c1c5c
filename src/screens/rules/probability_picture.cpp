#include "screens/rules/probability_picture.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "core/game_state.h"
#include "screens/frame/controls.h"

namespace {

constexpr int kFaces = 6;
constexpr int kTotalRows = 11;
constexpr int kFaceRows = 2;
constexpr double kRows = 1 + kTotalRows + 0.5 + kFaceRows;  // the headings above, a gap between
constexpr double kHalfCells = 12;                           // across the diamond
constexpr double kGap = 2;
constexpr int kWheelNotch = 120;
constexpr int kPageSteps = 10;
constexpr int kTypedLetters = 12;

// Of the 16 colours: a lock, and what is open.
const QColor kLockedPaper(255, 255, 0);
const QColor kOpenPaper(255, 255, 255);

struct Throw {
  int Die1;
  int Die2;
};

/// The throw of a place in the diamond.
Throw ThrowAt(MatrixPlace place) {
  const auto [row, column] = place;
  if (row >= kFaces + 1) return {column + row - (kFaces + 1), kFaces + 2 - column};
  return {column - 1, row - column + 2};
}

/// The places as they are read: from above to below, from left to right.
const std::vector<MatrixPlace>& PlacesAsRead(const picProbabilityBox& picture) {
  static std::vector<MatrixPlace> places;
  if (places.empty()) {
    places = EditablePlaces();
    std::sort(places.begin(), places.end(), [&picture](MatrixPlace a, MatrixPlace b) {
      const QRectF first = picture.AreaOf(a);
      const QRectF second = picture.AreaOf(b);
      return std::abs(first.top() - second.top()) > 1 ? first.top() < second.top()
                                                      : first.left() < second.left();
    });
  }
  return places;
}

}  // namespace

picProbabilityBox::picProbabilityBox(PictureCalls calls) : calls_(std::move(calls)) {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Probabilities of the throws, the totals and the faces"));
  txtShare_ = New<QLineEdit>("txtShare", this);
  txtShare_->setMaxLength(kTypedLetters);
  txtShare_->setAlignment(Qt::AlignRight);
  txtShare_->setAccessibleName(tr("Share"));
  txtShare_->installEventFilter(this);
  txtShare_->hide();
}

// ---- Geometry ----

double picProbabilityBox::RowHeight() const { return height() / kRows; }

double picProbabilityBox::TotalsWidth() const {
  return fontMetrics().horizontalAdvance("Total 12  +000.000") + 8;
}

double picProbabilityBox::HalfCell() const { return (width() - TotalsWidth() - 8) / kHalfCells; }

QSize picProbabilityBox::minimumSizeHint() const {
  const QFontMetrics letters = fontMetrics();
  const double half = letters.horizontalAdvance("6-6 +00.000") / 2.0 + 5;
  return QSizeF(TotalsWidth() + 8 + kHalfCells * half, kRows * (letters.height() + 6)).toSize();
}

QRectF picProbabilityBox::AreaOf(MatrixPlace place) const {
  const double row = RowHeight();
  const double half = HalfCell();
  const double left = TotalsWidth() + 8;
  const auto area = [&](double x, double line, double width) {
    return QRectF(x, line * row, width, row).adjusted(kGap / 2, kGap / 2, -kGap / 2, -kGap / 2);
  };
  switch (KindOfPlace(place)) {
    case ShareOf::Throw: {
      const auto [die1, die2] = ThrowAt(place);
      return area(left + (die1 - die2 + kFaces - 1) * half, place.Row, 2 * half);
    }
    case ShareOf::Total: return area(0, place.Row, TotalsWidth());
    case ShareOf::Die1Face:
    case ShareOf::Die2Face:
      return area(left + (place.Column - 2) * 2 * half, place.Row + 0.5, 2 * half);
    default: return {};
  }
}

// ---- Painting ----

QString picProbabilityBox::LabelOf(MatrixPlace place) const {
  switch (KindOfPlace(place)) {
    case ShareOf::Throw: return Text(NameOfPlace(place));
    case ShareOf::Total: return tr("Total %1").arg(place.Row + 1);
    default: return QString::number(place.Column - 1);
  }
}

void picProbabilityBox::PaintPlace(QPainter& painter, MatrixPlace place) const {
  const QRectF area = AreaOf(place);
  const bool locked = IsLocked(Game.ProbMatrix, place);
  const bool chosen = place == chosen_;
  painter.setBrush(locked ? kLockedPaper : kOpenPaper);
  painter.setPen(locked ? QPen(QColor(0x80, 0x60, 0), 2) : QPen(Qt::gray, 1));
  painter.drawRect(area);
  if (chosen) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), hasFocus() ? 3 : 2));
    painter.drawRect(area.adjusted(1, 1, -1, -1));
  }
  const QRectF inner = area.adjusted(4, 0, -4, 0);
  painter.setPen(QColor(0x50, 0x50, 0x50));
  painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter, LabelOf(place));
  painter.setPen(Qt::black);
  painter.drawText(inner, Qt::AlignRight | Qt::AlignVCenter,
                   Text(ViewText(Game.ProbMatrix, place, Game.ProbabilityView, Game.RollsOutOf)));
}

void picProbabilityBox::PaintHeadings(QPainter& painter) const {
  const double row = RowHeight();
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QRectF(0, 0, TotalsWidth(), row), Qt::AlignCenter, tr("Totals"));
  painter.drawText(QRectF(TotalsWidth(), 0, width() - TotalsWidth(), row), Qt::AlignCenter,
                   tr("Throws, die 1 - die 2"));
  for (int die = 0; die < kFaceRows; ++die) {
    painter.drawText(QRectF(0, (1 + kTotalRows + die + 0.5) * row, TotalsWidth() - 4, row),
                     Qt::AlignRight | Qt::AlignVCenter, tr("Faces of die %1").arg(die + 1));
  }
}

void picProbabilityBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintHeadings(painter);
  for (const MatrixPlace place : EditablePlaces()) PaintPlace(painter, place);
}

// ---- The place in hand ----

void picProbabilityBox::Choose(MatrixPlace place) {
  TakeOpenBox();
  chosen_ = place;
  setAccessibleDescription(Text(NameOfPlace(place)));
  update();
  calls_.Chosen();
}

void picProbabilityBox::MoveBy(int steps) {
  const std::vector<MatrixPlace>& places = PlacesAsRead(*this);
  const int count = static_cast<int>(places.size());
  const auto at = std::find(places.begin(), places.end(), chosen_);
  const int next = (static_cast<int>(at - places.begin()) + steps + count) % count;
  Choose(places[static_cast<unsigned>(next)]);
}

void picProbabilityBox::mousePressEvent(QMouseEvent* event) {
  setFocus();
  for (const MatrixPlace place : EditablePlaces()) {
    if (AreaOf(place).contains(event->position())) return Choose(place);
  }
}

void picProbabilityBox::mouseDoubleClickEvent(QMouseEvent* event) {
  if (AreaOf(chosen_).contains(event->position())) OpenBox({});
}

void picProbabilityBox::wheelEvent(QWheelEvent* event) {
  if (!hasFocus() || event->angleDelta().y() == 0) return event->ignore();
  wheel_ += event->angleDelta().y();
  const int steps = wheel_ / kWheelNotch;
  wheel_ -= steps * kWheelNotch;
  if (steps != 0) calls_.Step(chosen_, steps);
}

void picProbabilityBox::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  switch (event->key()) {
    case Qt::Key_Up: return calls_.Step(chosen_, 1);
    case Qt::Key_Down: return calls_.Step(chosen_, -1);
    case Qt::Key_Left: return MoveBy(-1);
    case Qt::Key_Right: return MoveBy(1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2: return OpenBox({});
    case Qt::Key_L:
      if (event->modifiers() == Qt::NoModifier) return calls_.Lock(chosen_);
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      if (event->modifiers() == Qt::NoModifier)
        return calls_.Step(chosen_, event->key() == Qt::Key_PageUp ? kPageSteps : -kPageSteps);
      break;
    default: break;
  }
  const bool number = !typed.isEmpty() && QString("0123456789.+-").contains(typed[0]);
  if (number && !(event->modifiers() & Qt::ControlModifier)) return OpenBox(typed);
  QWidget::keyPressEvent(event);
}

// ---- The box ----

/// With a text that has been typed already, or on what stands.
void picProbabilityBox::OpenBox(const QString& text) {
  boxOpen_ = true;
  txtShare_->setGeometry(AreaOf(chosen_).toRect());
  shown_ = Text(ViewText(Game.ProbMatrix, chosen_, Game.ProbabilityView, Game.RollsOutOf));
  txtShare_->setText(text.isEmpty() ? shown_ : text);
  txtShare_->show();
  txtShare_->setFocus();
  if (text.isEmpty()) txtShare_->selectAll();
}

void picProbabilityBox::CloseBox() {
  boxOpen_ = false;
  const bool focus = txtShare_->hasFocus();
  txtShare_->hide();
  if (focus) setFocus();
}

void picProbabilityBox::TakeOpenBox() {
  if (!boxOpen_) return;
  const QString text = txtShare_->text();
  CloseBox();
  if (text != shown_) calls_.Type(chosen_, text);
}

bool picProbabilityBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    TakeOpenBox();
  }
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Escape) {
    CloseBox();
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    TakeOpenBox();
  } else {
    return QWidget::eventFilter(watched, event);
  }
  return true;
}

void picProbabilityBox::resizeEvent(QResizeEvent*) {
  if (boxOpen_) txtShare_->setGeometry(AreaOf(chosen_).toRect());
}
