#include "screens/rules/picture_chooser.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <vector>

#include "rules/choices.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"

namespace {

constexpr int kMargin = 5;
constexpr double kFrame = 3;

/// One picture of a grid.
class PictureButton : public QAbstractButton {
 public:
  PictureButton(const QString& caption, QSize size, std::function<void(QPainter&, QRectF)> paint)
      : size_(size), paint_(std::move(paint)) {
    setCheckable(true);
    setAutoExclusive(true);
    setToolTip(caption);
    setAccessibleName(caption);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override { return size_ + QSize(2 * kMargin, 2 * kMargin); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    paint_(painter, area);
    painter.setBrush(Qt::NoBrush);
    const double half = kFrame / 2;
    if (isChecked()) {
      painter.setPen(QPen(palette().color(QPalette::Highlight), kFrame));
      painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), kFrame, kFrame);
    }
    if (!hasFocus()) return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }

  void keyPressEvent(QKeyEvent* event) override {
    const auto all = parentWidget()->findChildren<PictureButton*>(Qt::FindDirectChildrenOnly);
    const auto by = [&] {
      switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up: return -1;
        case Qt::Key_Right:
        case Qt::Key_Down: return 1;
        default: return 0;
      }
    }();
    if (by == 0) return QAbstractButton::keyPressEvent(event);
    const int count = static_cast<int>(all.size());
    PictureButton* next = all[StepStyle(static_cast<int>(all.indexOf(this)) + 1, by, count) - 1];
    next->setFocus();
    next->click();
  }

 private:
  QSize size_;
  std::function<void(QPainter&, QRectF)> paint_;
};

class Picture : public QWidget {
 public:
  Picture(QSize size, std::function<void(QPainter&, const QRectF&)> paint)
      : paint_(std::move(paint)) {
    setFixedSize(size);
    new Binding(this, [this] { update(); });
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paint_(painter, rect());
  }

 private:
  std::function<void(QPainter&, const QRectF&)> paint_;
};

}  // namespace

QWidget* MakePictureChooser(const PictureGrid& grid, const RecordField<int>& field, int first) {
  auto* chooser = New<QWidget>(grid.Name);
  QGridLayout* layout = new QGridLayout(chooser);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  for (int i = 0; i < grid.Count; ++i) {
    const int value = first + i;
    auto* button =
        New<PictureButton>(QString("%1_%2").arg(grid.Name).arg(value), grid.Caption.arg(i + 1),
                           grid.Size, [paint = grid.Paint, value](QPainter& painter, QRectF area) {
                             paint(painter, area, value);
                           });
    Bind(button, field, value);
    layout->addWidget(button, i / grid.Columns, i % grid.Columns);
  }
  layout->setColumnStretch(grid.Columns, 1);
  new Binding(chooser, [chooser] {
    for (auto* button : chooser->findChildren<QAbstractButton*>()) button->update();
  });
  return chooser;
}

QWidget* MakePicture(const QString& name, const QString& caption, QSize size,
                     std::function<void(QPainter& painter, const QRectF& area)> paint) {
  auto* picture = New<Picture>(name, size, std::move(paint));
  picture->setAccessibleName(caption);
  return picture;
}
