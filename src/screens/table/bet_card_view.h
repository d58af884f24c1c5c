// The card of a bet, painted: in the panel, or beside the bet where there is no panel.
#pragma once

#include <QColor>
#include <QFont>
#include <QTimer>
#include <QWidget>

#include "figures/bet_card.h"

class QPainter;
class frmCrapTable;

/// Colours of cards and boxes by what they say.
struct CardColors {
  QColor Window;
  QColor Raised;
  QColor Border;
  QColor Text;
  QColor Muted;
  QColor Accent;
  QColor Gain;
  QColor Loss;
};
CardColors CardColorsNow();

/// Letters of card and panel grow with those of the desktop: 1 to 2.
double LetterScale(const QFont& font);

/// The box that cards and the parts of the panel stand in.
void PaintBox(QPainter& painter, const QRectF& rect, const CardColors& colors);

/// Paints a card into a box as wide as `box`, and returns how high it is; without a painter nothing
/// is painted. `keys` is the line at its foot.
double PaintCard(QPainter* painter, const QRectF& box, const BetCard& card, const QString& keys,
                 const CardColors& colors, const QFont& font);

/// What a click does with the chip in the hand: "Click +$5 · Ctrl −$5 · Shift all".
QString CardKeys();

/// The card beside the bet that the mouse rests on. No click ends on it.
class FloatingCard : public QWidget {
 public:
  explicit FloatingCard(frmCrapTable* table);

  /// The mouse has come to a spot; 0 puts the card away.
  void Follow(int spot);
  int Spot() const { return spot_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Appear();

  frmCrapTable* table_;
  QTimer rest_;
  int spot_ = 0;
  BetCard card_;
};
