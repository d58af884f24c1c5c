// Widgets one after the other, as words on a page.
#pragma once

#include <QLayout>

/// Lays its widgets out in rows as wide as there is room, and is as high as that takes. Hidden ones
/// leave no gap.
class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent = nullptr);
  ~FlowLayout() override;

  /// Puts the widgets, which are all in the layout, in another order.
  void SetOrder(const QList<QWidget*>& widgets);

  void addItem(QLayoutItem* item) override;
  int count() const override;
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override;
  bool hasHeightForWidth() const override;
  int heightForWidth(int width) const override;
  void setGeometry(const QRect& rect) override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;

 private:
  int Place(const QRect& rect, bool apply) const;

  QList<QLayoutItem*> items_;
};
