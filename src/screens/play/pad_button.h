// The keys of the manual roll pad.
#pragma once

#include <QPushButton>

#include "play/roll_pad.h"

/// What `PadColor` can be.
enum PadColorKind : int { PadMultiColor = 0, PadRedAndCyan = 1, PadGray = 2 };

/// A key with a number, a pair of dice or one face on it.
class PadButton : public QPushButton {
  Q_OBJECT

 public:
  PadButton(const QString& name, const PadCell& cell);

  /// The colours follow `PadColor`; the faces also tell by theirs which die they are for.
  void ShowColor(int color, bool secondDie);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintKey(QPainter& painter, const QRectF& key) const;
  void PaintTotal(QPainter& painter, const QRectF& key) const;
  void PaintPair(QPainter& painter, const QRectF& key) const;
  void PaintFace(QPainter& painter, const QRectF& key) const;
  QColor Ink() const;

  PadCell cell_;
  QColor body_;
};

/// The dice that the pad has chosen so far, or the last throw.
class picChosenDice : public QWidget {
  Q_OBJECT

 public:
  explicit picChosenDice(QWidget* parent);

  /// A die of 0 is still to be chosen; a digit stands alone.
  void Show(NamedThrow dice, int digit);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  NamedThrow dice_;
  int digit_ = 0;
};
