#include "screens/statistics/histogram_box.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

picHistogramBox::picHistogramBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picHistogram");
  setAccessibleName(tr("Histogram of the games"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(300, 140);
}

void picHistogramBox::Show(HistogramPicture picture) {
  const auto bars = static_cast<int>(picture.Bars.Bars.Bins.size());
  picture.Pointed = picture_.Pointed < bars ? picture_.Pointed : -1;
  picture_ = std::move(picture);
  update();
  emit Pointed();
}

void picHistogramBox::SetReach(double reach) {
  picture_.Reach = reach;
  update();
}

void picHistogramBox::PointAt(int bar) {
  if (picture_.Pointed == bar) return;
  picture_.Pointed = bar;
  update();
  emit Pointed();
}

HistogramFrame picHistogramBox::Frame() const {
  return {QRectF(rect()), font(), picture_, devicePixelRatioF()};
}

void picHistogramBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintHistogram(painter, rect(), picture_, false);
}

void picHistogramBox::mouseMoveEvent(QMouseEvent* event) {
  PointAt(Frame().BarAt(event->position()));
}

void picHistogramBox::leaveEvent(QEvent*) { PointAt(-1); }

void picHistogramBox::keyPressEvent(QKeyEvent* event) {
  const auto bars = static_cast<int>(picture_.Bars.Bars.Bins.size());
  const int by = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
  if (by == 0 || bars == 0) return QWidget::keyPressEvent(event);
  PointAt(std::clamp(picture_.Pointed + by, 0, bars - 1));
}
