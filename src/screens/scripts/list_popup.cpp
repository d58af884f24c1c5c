#include "screens/scripts/list_popup.h"

#include <QAbstractListModel>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "autobet/language.h"
#include "screens/frame/controls.h"

namespace {

constexpr int kMostRowsShown = 16;
constexpr int kRoomAroundText = 32;

bool IsSeparator(const QString& row) { return row == Text(kSeparatorText); }

bool HoldsAll(const QString& row, const QStringList& words) {
  return std::ranges::all_of(
      words, [&row](const QString& word) { return row.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

/// The rows of a list that hold what is looked for.
class ChoiceModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void Show(const QStringList& rows) {
    rows_ = rows;
    Filter({});
  }

  void Filter(const QString& typed) {
    const QStringList words = typed.split(' ', Qt::SkipEmptyParts);
    beginResetModel();
    shown_.clear();
    for (int row = 0; row < rows_.size(); ++row) {
      if (words.isEmpty() || (!IsSeparator(rows_[row]) && HoldsAll(rows_[row], words)))
        shown_.append(row);
    }
    endResetModel();
  }

  int RowOf(const QModelIndex& index) const { return shown_.value(index.row(), -1); }
  QModelIndex IndexOf(int row) const { return index(static_cast<int>(shown_.indexOf(row)), 0); }

  /// The row that is typed whole, else one that begins with it, else the first.
  QModelIndex Best(const QString& typed) const {
    const auto find = [this](auto fits) {
      const auto at = std::ranges::find_if(
          shown_, [&](int row) { return !IsSeparator(rows_[row]) && fits(rows_[row]); });
      return index(at == shown_.end() ? -1 : static_cast<int>(at - shown_.begin()), 0);
    };
    QModelIndex best =
        find([&typed](const QString& row) { return row.compare(typed, Qt::CaseInsensitive) == 0; });
    if (!best.isValid())
      best = find([&](const QString& row) { return row.startsWith(typed, Qt::CaseInsensitive); });
    return best.isValid() ? best : find([](const QString&) { return true; });
  }
  const QStringList& Rows() const { return rows_; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? rows_.value(RowOf(index)) : QVariant();
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    if (IsSeparator(rows_.value(RowOf(index)))) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  }

 private:
  QStringList rows_;
  QList<int> shown_;  // in order
};

ListPopup::ListPopup(QWidget* parent, const QString& name, const QString& title)
    : QFrame(parent, Qt::Popup), model_(new ChoiceModel(this)) {
  setFrameShape(QFrame::StyledPanel);
  setAttribute(Qt::WA_NoMouseReplay);  // a click on the control closes it, and no more
  txtFilter_ = New<QLineEdit>("txtFilter");
  txtFilter_->setPlaceholderText(tr("Type to find"));
  txtFilter_->setClearButtonEnabled(true);
  txtFilter_->setAccessibleName(tr("Find in: %1").arg(title));
  txtFilter_->installEventFilter(this);
  list_ = New<QListView>(name);
  list_->setModel(model_);
  list_->setAccessibleName(title);
  list_->setUniformItemSizes(true);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFocusPolicy(Qt::NoFocus);
  QVBoxLayout* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 4);
  column->setSpacing(4);
  column->addWidget(txtFilter_);
  column->addWidget(list_, 1);
  setFocusProxy(txtFilter_);
  connect(txtFilter_, &QLineEdit::textChanged, this, &ListPopup::Filter);
  connect(list_, &QListView::clicked, this, [this](const QModelIndex& index) {
    if (index.flags() & Qt::ItemIsEnabled) Choose();
  });
}

void ListPopup::Open(QWidget* control, const QStringList& rows, int current,
                     std::function<void(int)> choose, const QString& typed) {
  choose_ = std::move(choose);
  model_->Show(rows);
  txtFilter_->clear();
  Place(control);
  list_->setCurrentIndex(model_->IndexOf(current));
  show();
  list_->scrollTo(list_->currentIndex(), QAbstractItemView::PositionAtCenter);
  txtFilter_->setFocus(Qt::PopupFocusReason);
  txtFilter_->setText(typed);
}

/// Below the control, or above it where there's more room.
void ListPopup::Place(QWidget* control) {
  int widest = 0;
  for (const QString& row : model_->Rows()) {
    if (!IsSeparator(row)) widest = std::max(widest, list_->fontMetrics().horizontalAdvance(row));
  }
  const int rows = std::clamp(static_cast<int>(model_->Rows().size()), 3, kMostRowsShown);
  const int rowHeight = std::max(list_->sizeHintForRow(0), list_->fontMetrics().height() + 2);
  const QSize wanted(
      std::max(widest + kRoomAroundText + list_->verticalScrollBar()->sizeHint().width(),
               control->width()),
      rows * rowHeight + txtFilter_->sizeHint().height() + 20);
  const QRect screen = control->screen()->availableGeometry();
  QRect place(control->mapToGlobal(QPoint(0, control->height())), wanted.boundedTo(screen.size()));
  if (place.bottom() > screen.bottom()) {
    const int above = control->mapToGlobal(QPoint(0, 0)).y();
    place.moveBottom(above - place.height() >= screen.top() ? above - 1 : screen.bottom());
  }
  place.moveLeft(std::max(std::min(place.left(), screen.right() - place.width()), screen.left()));
  setGeometry(place);
}

void ListPopup::Filter(const QString& typed) {
  const int before = model_->RowOf(list_->currentIndex());
  model_->Filter(typed);
  const QModelIndex kept = model_->IndexOf(before);
  list_->setCurrentIndex(typed.isEmpty() && kept.isValid() ? kept : model_->Best(typed));
}

void ListPopup::Choose() {
  const int row = model_->RowOf(list_->currentIndex());
  hide();
  if (row >= 0 && choose_) choose_(row);
}

/// The box has the focus; the keys that move in a list go to the list.
bool ListPopup::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
  const auto& key = static_cast<QKeyEvent&>(*event);
  switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: QCoreApplication::sendEvent(list_, event); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab: Choose(); return true;
    case Qt::Key_Escape: hide(); return true;
    default: return false;
  }
}
