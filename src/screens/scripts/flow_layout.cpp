#include "screens/scripts/flow_layout.h"

#include <QWidget>
#include <algorithm>

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) { setContentsMargins(0, 0, 0, 0); }

FlowLayout::~FlowLayout() { qDeleteAll(items_); }

void FlowLayout::SetOrder(const QList<QWidget*>& widgets) {
  std::ranges::stable_sort(items_, [&widgets](QLayoutItem* one, QLayoutItem* other) {
    return widgets.indexOf(one->widget()) < widgets.indexOf(other->widget());
  });
  for (qsizetype i = 1; i < widgets.size(); ++i) QWidget::setTabOrder(widgets[i - 1], widgets[i]);
  invalidate();
}

void FlowLayout::addItem(QLayoutItem* item) { items_.append(item); }

int FlowLayout::count() const { return static_cast<int>(items_.size()); }

QLayoutItem* FlowLayout::itemAt(int index) const { return items_.value(index); }

QLayoutItem* FlowLayout::takeAt(int index) {
  return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

Qt::Orientations FlowLayout::expandingDirections() const { return {}; }

bool FlowLayout::hasHeightForWidth() const { return true; }

int FlowLayout::heightForWidth(int width) const { return Place({0, 0, width, 0}, false); }

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  Place(rect, true);
}

QSize FlowLayout::sizeHint() const { return minimumSize(); }

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const QLayoutItem* item : items_)
    if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
  return size;
}

/// Goes through the rows, and places what stands in them; returns their height.
int FlowLayout::Place(const QRect& rect, bool apply) const {
  QPoint at = rect.topLeft();
  QList<QLayoutItem*> row;
  int high = 0;
  const auto finishRow = [&] {
    int x = rect.x();
    for (QLayoutItem* item : row) {
      const int width = std::min(item->sizeHint().width(), rect.width());
      const int height = item->sizeHint().height();
      if (apply) item->setGeometry({x, at.y() + (high - height) / 2, width, height});
      x += width + spacing();
    }
    row.clear();
  };
  for (QLayoutItem* item : items_) {
    if (item->isEmpty()) continue;
    const QSize size = item->sizeHint();
    if (!row.isEmpty() && at.x() + size.width() > rect.x() + rect.width()) {
      finishRow();
      at = {rect.x(), at.y() + high + spacing()};
      high = 0;
    }
    row.append(item);
    high = std::max(high, size.height());
    at.rx() += size.width() + spacing();
  }
  finishRow();
  return at.y() + high - rect.y();
}
