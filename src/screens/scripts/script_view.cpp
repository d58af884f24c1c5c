#include "screens/scripts/script_view.h"

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "autobet/script.h"
#include "autobet/script_edit.h"
#include "screens/frame/controls.h"
#include "screens/scripts/script_model.h"

namespace {

constexpr int kRoomAbove = 3;  // and below a line's letters
constexpr int kStripe = 3;     // at the edge of a block
constexpr int kRoomBehind = 24;
constexpr int kCaret = 2;
constexpr int kScrollPause = 40;
constexpr double kStatementTint = 0.04;
constexpr double kFaultTint = 0.16;
constexpr double kDimmed = 0.55;

QColor Mixed(const QColor& base, const QColor& other, double share) {
  const auto mix = [share](int one, int two) { return one + qRound((two - one) * share); };
  return {mix(base.red(), other.red()), mix(base.green(), other.green()),
          mix(base.blue(), other.blue())};
}

/// Two tones of a colour, of which one can be read on the desktop's paper.
QColor Readable(const QPalette& palette, const QColor& onLight, const QColor& onDark) {
  return palette.color(QPalette::Base).lightness() > 127 ? onLight : onDark;
}

QColor FaultInk(const QPalette& palette) {
  return Readable(palette, QColor(190, 20, 30), QColor(255, 130, 130));
}
QColor BreakpointInk() { return {214, 40, 40}; }

QColor InkOf(int mark, const QPalette& palette) {
  switch (mark) {
    case FaultMark: return FaultInk(palette);
    case LabelMark: return Readable(palette, QColor(140, 70, 0), QColor(255, 190, 110));
    case RemarkMark: return Readable(palette, QColor(30, 110, 50), QColor(140, 210, 150));
    case StartMark: return Readable(palette, QColor(20, 70, 160), QColor(130, 180, 255));
    default: return palette.color(QPalette::Text);
  }
}

QColor StripeOf(BlockRole role, const QPalette& palette) {
  if (role == BlockRole::Conditions)
    return Readable(palette, QColor(90, 140, 220), QColor(90, 140, 220));
  return Readable(palette, QColor(90, 170, 100), QColor(90, 170, 100));
}

class LineDelegate : public QStyledItemDelegate {
 public:
  LineDelegate(ScriptModel* model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const QPalette& palette = option.palette;
    const int row = index.row();
    painter->save();
    if (model_->IsLine(row)) {
      const bool selected = option.state & QStyle::State_Selected;
      painter->fillRect(option.rect,
                        selected ? palette.color(QPalette::Highlight) : PaperOf(row, palette));
      if (index.column() == ScriptModel::MarginColumn) {
        PaintMargin(*painter, option, row);
      } else {
        PaintText(*painter, option, index, selected);
      }
    }
    if (row == Game.ScriptInsertLine - 1) PaintCaret(*painter, option, index.column());
    painter->restore();
  }

 private:
  QColor PaperOf(int row, const QPalette& palette) const {
    const QColor base = palette.color(QPalette::Base);
    if (model_->IsFault(row)) return Mixed(base, FaultInk(palette), kFaultTint);
    const bool tinted = model_->BlockOf(row).Statement % 2 == 1;
    return tinted ? Mixed(base, palette.color(QPalette::Text), kStatementTint) : base;
  }

  void PaintMargin(QPainter& painter, const QStyleOptionViewItem& option, int row) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const int size = option.fontMetrics.height() * 2 / 3;
    const QRectF dot(option.rect.x() + 3, option.rect.center().y() - size / 2.0 + 0.5, size, size);
    if (Line(row + 1).Breakpoint) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(BreakpointInk());
      painter.drawEllipse(dot);
    }
    if (!Game.ShowLineNumbers) return;
    const QColor ink = option.palette.color(
        option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text);
    painter.setPen(Mixed(option.palette.color(QPalette::Base), ink, kDimmed));
    if (option.state & QStyle::State_Selected) painter.setPen(ink);
    painter.drawText(option.rect.adjusted(0, 0, -6, 0), Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(row + 1));
  }

  void PaintText(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                 bool selected) const {
    const int row = index.row();
    const bool text = index.column() == ScriptModel::TextColumn;
    const LineBlock block = model_->BlockOf(row);
    QRect rect = option.rect;
    if (text && block.Role != BlockRole::None) {
      painter.fillRect(QRect(rect.x(), rect.y(), kStripe, rect.height()),
                       StripeOf(block.Role, option.palette));
    }
    QColor ink =
        text ? InkOf(Line(row + 1).LineMark, option.palette) : option.palette.color(QPalette::Text);
    if (selected) ink = option.palette.color(QPalette::HighlightedText);
    if (model_->NeverFired(row) && !selected)
      ink = Mixed(option.palette.color(QPalette::Base), ink, kDimmed * 0.75);
    painter.setPen(ink);
    rect.adjust(text ? kStripe + 3 : 0, 0, text ? 0 : -6, 0);
    const Qt::Alignment side = text ? Qt::AlignLeft : Qt::AlignRight;
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     index.data().toString());
  }

  /// New lines go in here.
  static void PaintCaret(QPainter& painter, const QStyleOptionViewItem& option, int column) {
    const QColor ink = Readable(option.palette, QColor(0, 90, 200), QColor(120, 180, 255));
    const QRect rect = option.rect;
    painter.fillRect(QRect(rect.x(), rect.y(), rect.width(), kCaret), ink);
    if (column != ScriptModel::MarginColumn) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(
        QPolygon({rect.topLeft(), rect.topLeft() + QPoint(7, 0), rect.topLeft() + QPoint(0, 7)}));
  }

  ScriptModel* model_;
};

}  // namespace

ScriptView::ScriptView(ScriptModel* model, QWidget* parent) : QTableView(parent), model_(model) {
  setObjectName("picLoggedBets");
  verticalScrollBar()->setObjectName("VScroll1");
  setAccessibleName(tr("Logged lines"));
  setModel(model);
  setItemDelegate(new LineDelegate(model, this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kRoomAbove);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setMinimumSectionSize(8);
  horizontalHeader()->moveSection(ScriptModel::TextColumn, ScriptModel::kColumns - 1);
}

// ---- Following the record ----

void ScriptView::ShowCursor() {
  following_ = true;
  QItemSelection chosen;
  for (int row = 0; row < Game.ScrCount; ++row) {
    if (!Line(row + 1).LineSelected) continue;
    const int first = row;
    while (row + 1 < Game.ScrCount && Line(row + 2).LineSelected) ++row;
    chosen.select(model_->index(first, 0), model_->index(row, ScriptModel::kColumns - 1));
  }
  if (selectionModel()->selection() != chosen)
    selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
  const QModelIndex current = model_->index(Game.ScriptInsertLine - 1, ScriptModel::TextColumn);
  if (current.row() != currentIndex().row()) {
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    scrollTo(current);
  }
  following_ = false;
  viewport()->update();
}

void ScriptView::selectionChanged(const QItemSelection& selected, const QItemSelection& left) {
  QTableView::selectionChanged(selected, left);
  if (following_) return;
  const auto mark = [this](const QItemSelection& ranges, bool chosen) {
    for (const QItemSelectionRange& range : ranges) {
      for (int row = range.top(); row <= range.bottom(); ++row)
        if (model_->IsLine(row)) Line(row + 1).LineSelected = chosen;
    }
  };
  mark(left, false);
  mark(selected, true);
  emit CursorMoved();
}

void ScriptView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (following_ || !current.isValid()) return;
  Game.ScriptInsertLine = std::clamp(current.row() + 1, 1, Game.ScrCount + 1);
  viewport()->update();
  emit CursorMoved();
}

void ScriptView::GoTo(int number) {
  const QModelIndex index =
      model_->index(std::clamp(number, 1, Game.ScrCount + 1) - 1, ScriptModel::TextColumn);
  selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
}

void ScriptView::MoveCurrent(int lines) { GoTo(Game.ScriptInsertLine + lines); }

void ScriptView::BringToTop(int number) {
  GoTo(number);
  scrollTo(model_->index(number - 1, ScriptModel::TextColumn), PositionAtTop);
  broughtUp_ = number;
  broughtUpAt_ = verticalScrollBar()->value();
  setFocus();
}

/// A line near the end counts as the top one though no further lines can follow it.
int ScriptView::TopLine() const {
  const bool stands = broughtUp_ > 0 && broughtUpAt_ == verticalScrollBar()->value();
  return stands ? broughtUp_ : std::max(rowAt(0), 0) + 1;
}

void ScriptView::scrollTo(const QModelIndex& index, ScrollHint hint) {
  const int across = horizontalScrollBar()->value();
  QTableView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(across);
}

void ScriptView::FitColumns() {
  const QFontMetrics letters = fontMetrics();
  const int dot = letters.height();
  const int digits = letters.horizontalAdvance(QString::number(std::max(Game.ScrCount, 999)));
  setColumnWidth(ScriptModel::MarginColumn, dot + (Game.ShowLineNumbers ? digits + 8 : 0));
  const bool profile = Game.Profile.On;
  horizontalHeader()->setVisible(profile);
  int rest = viewport()->width() - columnWidth(ScriptModel::MarginColumn);
  for (const int column : {ScriptModel::ReachedColumn, ScriptModel::FiredColumn}) {
    setColumnHidden(column, !profile);
    const int width =
        std::max(letters.horizontalAdvance(Count(model_->MostReached())),
                 letters.horizontalAdvance(
                     model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString())) +
        kRoomBehind;
    setColumnWidth(column, width);
    if (profile) rest -= width;
  }
  const int needed = letters.horizontalAdvance(model_->Longest()) + kRoomBehind;
  setColumnWidth(ScriptModel::TextColumn, std::max(rest, needed));
}

void ScriptView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  FitColumns();
}

// ---- The mouse ----

int ScriptView::LineAt(const QPoint& place) const {
  const int row = rowAt(place.y());
  return model_->IsLine(row) ? row + 1 : 0;
}

/// The line before which a place is nearest.
int ScriptView::GapAt(const QPoint& place) const {
  const int row = rowAt(place.y());
  if (place.y() < 0) return TopLine();
  if (!model_->IsLine(row)) return Game.ScrCount + 1;
  const bool lower = place.y() > rowViewportPosition(row) + rowHeight(row) / 2;
  return row + (lower ? 2 : 1);
}

void ScriptView::mousePressEvent(QMouseEvent* event) {
  const int number = LineAt(event->pos());
  const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
  if (plain && number > 0 && columnAt(event->pos().x()) == ScriptModel::MarginColumn) {
    emit BreakpointWanted(number);
    return;
  }
  pressed_ = event->pos();
  mayMove_ = plain && number > 0 && Line(number).LineSelected;
  if (!mayMove_) QTableView::mousePressEvent(event);
}

void ScriptView::mouseMoveEvent(QMouseEvent* event) {
  if (!mayMove_) return QTableView::mouseMoveEvent(event);
  if (moveBefore_ == 0 &&
      (event->pos() - pressed_).manhattanLength() < QApplication::startDragDistance())
    return;
  if (moveBefore_ == 0) scroll_.start(kScrollPause, this);
  moveBefore_ = GapAt(event->pos());
  viewport()->setCursor(Qt::ClosedHandCursor);
  viewport()->update();
}

void ScriptView::mouseReleaseEvent(QMouseEvent* event) {
  if (!mayMove_) return QTableView::mouseReleaseEvent(event);
  const int before = moveBefore_;
  EndMove();
  if (before > 0) return emit MoveWanted(before);
  GoTo(LineAt(pressed_));  // a plain click after all
}

void ScriptView::EndMove() {
  mayMove_ = false;
  moveBefore_ = 0;
  scroll_.stop();
  viewport()->unsetCursor();
  viewport()->update();
}

/// Scrolls while lines are dragged beyond the edge.
void ScriptView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != scroll_.timerId()) return QTableView::timerEvent(event);
  const QPoint place = viewport()->mapFromGlobal(QCursor::pos());
  const int step = place.y() < 0 ? -1 : place.y() > viewport()->height() ? 1 : 0;
  if (step == 0 || moveBefore_ == 0) return;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
  moveBefore_ = GapAt(place);
  viewport()->update();
}

void ScriptView::mouseDoubleClickEvent(QMouseEvent* event) {
  const int number = LineAt(event->pos());
  if (number == 0 || columnAt(event->pos().x()) == ScriptModel::MarginColumn) return;
  GoTo(number);
  emit LineWanted(number);
}

void ScriptView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && mayMove_) return EndMove();
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (model_->IsLine(currentIndex().row())) emit LineWanted(currentIndex().row() + 1);
    return;
  }
  // Letters are for the boxes: no search by the beginning of lines, which are blanks.
  const QString typed = event->text();
  if (!typed.isEmpty() && typed[0].isPrint() && event->modifiers() == Qt::NoModifier)
    return event->ignore();
  QTableView::keyPressEvent(event);
}

int ScriptView::HeightAbove(int number) const {
  const int row = number - 1;
  return row < model_->rowCount() ? rowViewportPosition(row) : viewport()->height();
}

void ScriptView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (moveBefore_ == 0) return;
  QPainter painter(viewport());
  painter.fillRect(QRect(0, HeightAbove(moveBefore_) - 1, viewport()->width(), 3),
                   palette().color(QPalette::Highlight));
}
