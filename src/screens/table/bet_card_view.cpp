#include "screens/table/bet_card_view.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_settings.h"
#include "screens/table/table_text.h"

namespace {

struct Card {
  Q_DECLARE_TR_FUNCTIONS(BetCardView)
};

constexpr double kPadding = 14;
constexpr double kRowGap = 6;
constexpr int kFloatingWidth = 268;
constexpr int kRest = 500;
constexpr int kBeside = 8;

QFont Sized(QFont font, int pixels, bool bold = false) {
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

/// Writes text into a width and returns how high it is.
double Write(QPainter* painter, const QRectF& rect, const QString& text, const QFont& font,
             QColor color, int flags) {
  const QRectF bounds = QFontMetricsF(font).boundingRect(rect, flags, text);
  if (painter) {
    painter->setFont(font);
    painter->setPen(color);
    painter->drawText(QRectF(rect.topLeft(), QSizeF(rect.width(), bounds.height() + 1)), flags,
                      text);
  }
  return bounds.height();
}

double PaintHead(QPainter* painter, const QRectF& inner, const BetCard& card,
                 const CardColors& colors, const QFont& font, double scale) {
  double right = inner.right();
  const QString stake = Text(card.Stake);
  if (!stake.isEmpty()) {
    const QFont bold = Sized(font, qRound(14 * scale), true);
    const double width = QFontMetricsF(bold).horizontalAdvance(stake) + 22;
    const QRectF pill(inner.right() - width, inner.top(), width, 22 * scale);
    if (painter) {
      painter->setPen(QPen(colors.Accent, 1));
      painter->setBrush(Qt::NoBrush);
      painter->drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
      painter->setFont(bold);
      painter->setPen(colors.Text);
      painter->drawText(pill, Qt::AlignCenter, stake);
    }
    right = pill.left() - 8;
  }
  const QRectF name(inner.left(), inner.top() - 1, right - inner.left(), 1000);
  return Write(painter, name, Text(card.Name), Sized(font, qRound(20 * scale), true), colors.Text,
               Qt::AlignLeft | Qt::TextWordWrap);
}

double PaintRow(QPainter* painter, const QRectF& inner, double top, const CardRow& row,
                const CardColors& colors, const QFont& font, double scale) {
  const QFont plain = Sized(font, qRound(13 * scale));
  const QFont bold = Sized(font, qRound(13 * scale), true);
  if (painter) {
    painter->setPen(QPen(colors.Border, 1));
    painter->drawLine(QPointF(inner.left(), top), QPointF(inner.right(), top));
  }
  const QString label = Text(row.Label);
  const double labelWidth = QFontMetricsF(plain).horizontalAdvance(label) + 12;
  const double y = top + kRowGap - 1;
  Write(painter, {inner.left(), y, labelWidth, 1000}, label, plain, colors.Muted, Qt::AlignLeft);
  const double height =
      Write(painter, {inner.left() + labelWidth, y, inner.width() - labelWidth, 1000},
            Text(row.Value), bold, colors.Text, Qt::AlignRight | Qt::TextWordWrap);
  return height + 2 * kRowGap - 2;
}

/// The place of a card beside the region of a bet, on the side with room, inside the table's
/// widget.
QRect PlaceBeside(const QRect& region, const QSize& size, const QRect& within) {
  int left = region.right() + kBeside;
  if (left + size.width() > within.right()) left = region.left() - kBeside - size.width();
  int top = region.center().y() - size.height() / 2;
  if (left < within.left()) {
    // Neither side has room: below it or above it.
    left = std::clamp(region.center().x() - size.width() / 2, within.left(),
                      std::max(within.left(), within.right() - size.width()));
    top = region.bottom() + kBeside;
    if (top + size.height() > within.bottom()) top = region.top() - kBeside - size.height();
  }
  top = std::clamp(top, within.top(), std::max(within.top(), within.bottom() - size.height()));
  return {QPoint(left, top), size};
}

}  // namespace

double LetterScale(const QFont& font) {
  constexpr double kUsualHeight = 15;
  return std::clamp(QFontMetricsF(font).height() / kUsualHeight, 1.0, 2.0);
}

CardColors CardColorsNow() {
  const ChromeColors& now = ColorsOfWindows();
  return {now.Base, now.Raised, now.Border, now.Text, now.Muted, now.Accent, now.Gain, now.Loss};
}

void PaintBox(QPainter& painter, const QRectF& rect, const CardColors& colors) {
  painter.setPen(QPen(colors.Border, 1));
  painter.setBrush(colors.Window);
  painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 7, 7);
}

double PaintCard(QPainter* painter, const QRectF& box, const BetCard& card, const QString& keys,
                 const CardColors& colors, const QFont& font) {
  const double scale = LetterScale(font);
  const QRectF inner = box.adjusted(kPadding, 12, -kPadding, 0);
  double top = inner.top();
  top += std::max(PaintHead(painter, inner, card, colors, font, scale), 22 * scale) + 2;
  top += Write(painter, {inner.left(), top, inner.width(), 1000}, Text(card.Says),
               Sized(font, qRound(12 * scale)), colors.Muted, Qt::AlignLeft | Qt::TextWordWrap) +
         8;
  for (const CardRow& row : card.Rows)
    top += PaintRow(painter, inner, top, row, colors, font, scale);
  const double footTop = top + 2;
  const double footHeight = 24 * scale;
  if (painter) {
    QPainterPath foot;
    foot.addRoundedRect(box.adjusted(1, 1, -1, 0), 7, 7);
    QPainterPath strip;
    strip.addRect(QRectF(box.left(), footTop, box.width(), footHeight));
    QPainterPath whole;
    whole.addRoundedRect(
        QRectF(box.left() + 1, box.top(), box.width() - 2, footTop + footHeight - box.top() - 1), 6,
        6);
    painter->fillPath(strip & whole, colors.Raised);
    painter->setFont(Sized(font, qRound(12 * scale)));
    painter->setPen(colors.Muted);
    painter->drawText(QRectF(box.left(), footTop, box.width(), footHeight), Qt::AlignCenter, keys);
  }
  return footTop + footHeight - box.top();
}

QString CardKeys() {
  const Currency chip = AmountOfSelection();
  if (chip <= Currency()) return Card::tr("Shift click takes all");
  const QString amount = PlainMoney(chip);
  return Card::tr("Click +%1 \u00B7 Ctrl \u2212%1 \u00B7 Shift all").arg(amount);
}

FloatingCard::FloatingCard(frmCrapTable* table) : QWidget(table->Layout()), table_(table) {
  setObjectName("floatingCard");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  rest_.setSingleShot(true);
  rest_.setInterval(kRest);
  connect(&rest_, &QTimer::timeout, this, [this] { Guarded("Bet Card", [this] { Appear(); }); });
  hide();
}

void FloatingCard::Follow(int spot) {
  const bool wanted =
      TheTable.BetCard && !table_->ShowsPanel() && IsBet(spot) && !Game.HyperDriveOn;
  spot_ = wanted ? spot : 0;
  hide();
  if (wanted)
    rest_.start();
  else
    rest_.stop();
}

void FloatingCard::Appear() {
  if (spot_ == 0 || table_->View().Dragging) return;
  card_ = CardOf(spot_, AmountOfSelection());
  const QRectF wide(0, 0, std::min(kFloatingWidth, table_->Layout()->width() - 8), 0);
  const double height = PaintCard(nullptr, wide, card_, CardKeys(), CardColorsNow(), font());
  QRectF region;
  for (const QPolygonF& box : ChipBoxes(spot_)) region |= box.boundingRect();
  // A band round the table leaves no side free: the card then keeps clear of its chips.
  const QRectF outline = SpotOutline(spot_).boundingRect();
  if (!outline.isEmpty() && outline.width() < kTableWidth / 2) region |= outline;
  if (region.isEmpty() || region.width() > kTableWidth / 2) {
    constexpr double kChips = 24;
    region = QRectF(ChipPosition(spot_) - QPointF(kChips, kChips), QSizeF(2 * kChips, 2 * kChips));
  }
  setGeometry(PlaceBeside(table_->Layout()->FromTable(region),
                          QSizeF(wide.width(), height).toSize() + QSize(0, 1),
                          table_->Layout()->rect().adjusted(4, 4, -4, -4)));
  raise();
  show();
}

void FloatingCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const CardColors colors = CardColorsNow();
  PaintBox(painter, rect(), colors);
  PaintCard(&painter, rect(), card_, CardKeys(), colors, font());
}
