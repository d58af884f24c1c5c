// What lies on the table: puck, chips, markers, amounts, dice and the rack.
#include "screens/table/table_painter.h"

#include <QObject>
#include <QPaintDevice>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "bets/chips.h"
#include "core/game_state.h"
#include "core/text.h"
#include "screens/art/chip_art.h"
#include "screens/table/pile_layout.h"
#include "screens/table/stick_frame.h"
#include "screens/table/table_settings.h"

namespace {

constexpr QRectF kBareBand(119, 402.6, 384, 33);
constexpr QColor kSurround(0x12, 0x0A, 0x07);  // beyond the table in a window of another shape

/// A painting under way: the table's transform, and the pictures that it copies.
struct Stage {
  QPainter& Painter;
  TableCache& Cache;
  QTransform Outer;
  QTransform Table;
  double Ratio;
};

template <typename Value>
void Append(QByteArray& stamp, const Value& value) {
  stamp.append(reinterpret_cast<const char*>(&value), sizeof value);
}

double ScaleOf(const QTransform& table) { return table.m11(); }

/// The device coordinate nearest to a logical one, so that copied pictures stay sharp.
double Snapped(double value, double ratio) { return std::round(value * ratio) / ratio; }

QByteArray ChipStampOf(const Stage& stage) {
  QByteArray stamp;
  Append(stamp, Game.ChipStyle);
  Append(stamp, Game.UseCentsSymbol);
  for (int slot = SmallestChip; slot <= LargestChip; ++slot)
    Append(stamp, Game.Bets[static_cast<unsigned>(slot)].Raw());
  Append(stamp, ScaleOf(stage.Table));
  Append(stamp, stage.Ratio);
  return stamp;
}

QPixmap BlankPicture(const QSizeF& size, double ratio) {
  QPixmap picture((size * ratio).toSize().expandedTo(QSize(1, 1)));
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  return picture;
}

QString ChipText(int picture) {
  return picture == kOverflowPicture ? QString()
                                     : ChipLabel(ChipValue(picture), Game.UseCentsSymbol);
}

const QPixmap& ChipPicture(const Stage& stage, int picture) {
  QPixmap& pixmap = stage.Cache.Chips[static_cast<unsigned>(picture)];
  if (!pixmap.isNull()) return pixmap;
  const double scale = ScaleOf(stage.Table);
  const double side = std::ceil((kChipSize + 1.5) * scale * stage.Ratio) / stage.Ratio;
  pixmap = BlankPicture({side, side}, stage.Ratio);
  QPainter painter(&pixmap);
  DrawChip(painter, {side / 2, side / 2}, kChipSize * scale, picture, Game.ChipStyle,
           ChipText(picture));
  return pixmap;
}

void PlaceChip(const Stage& stage, QPointF centre, int picture) {
  const QPixmap& pixmap = ChipPicture(stage, std::clamp(picture, 1, kOverflowPicture));
  const QSizeF size = pixmap.deviceIndependentSize();
  const QPointF corner = stage.Table.map(centre) - QPointF(size.width(), size.height()) / 2;
  stage.Painter.setWorldTransform(stage.Outer);
  stage.Painter.drawPixmap(
      QPointF(Snapped(corner.x(), stage.Ratio), Snapped(corner.y(), stage.Ratio)), pixmap);
  stage.Painter.setWorldTransform(stage.Table * stage.Outer);
}

void PaintChips(const Stage& stage, const TablePiles& piles) {
  for (const DrawnChip& chip : piles.Chips) PlaceChip(stage, chip.Centre, chip.Picture);
}

void PaintPuck(QPainter& painter, const QRectF& place) {
  DrawPuck(painter, place.center(), place.width(), Game.Point != 0);
}

void PaintMarkersOf(QPainter& painter, int betId, QPointF chip) {
  const auto place = [&](double right) {
    if (!TheTable.PilesUpward) return chip + QPointF(right, -5);
    // Those of Lay make room for the puck above them.
    return InsideBox(betId, chip + QPointF(right, IsLay(betId) ? 1 : -5), kMarkerSize / 2);
  };
  if (IsBuy(betId)) DrawMarker(painter, place(14), kMarkerSize, Marker::Buy);
  if (IsLay(betId)) DrawMarker(painter, place(14), kMarkerSize, Marker::Lay);
  const int working = Game.BetWorking[static_cast<unsigned>(betId)];
  const QPointF call = place(IsBuy(betId) || IsLay(betId) ? 30 : 15);
  if (working == CalledOn) DrawMarker(painter, call, kMarkerSize, Marker::On);
  if (working == CalledOff) DrawMarker(painter, call, kMarkerSize, Marker::Off);
}

void PaintMarkers(QPainter& painter, const TablePiles& piles) {
  for (int bet = Lay4; bet <= LastBet; ++bet) {
    const auto slot = static_cast<unsigned>(bet);
    if (Game.Bets[slot] != Currency() && IsShownOnTable(bet))
      PaintMarkersOf(painter, bet, piles.Foot[slot]);
  }
}

void PaintAmounts(QPainter& painter, const TablePiles& piles) {
  if (!Game.DisplayBetAmounts) return;
  for (const AmountTag& tag : piles.Tags) {
    painter.setPen(QPen(QColor(0, 0, 0, 150), 0.5));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(tag.Rect, 1.6, 1.6);
    DrawLettering(painter, tag.Text, tag.Rect.center(), tag.Capital, tag.Rect.width() - kTagPadding,
                  tag.Negative ? QColor(0xC0, 0, 0) : QColor(0x10, 0x10, 0x14));
  }
}

void PaintDice(QPainter& painter, const TableView& view) {
  const int faces[] = {view.Faces[0] != 0 ? view.Faces[0] : Game.Die1,
                       view.Faces[1] != 0 ? view.Faces[1] : Game.Die2};
  const QColor body = QColor::fromRgb(Game.TableColor[ColorDice]);
  const QColor pips = QColor::fromRgb(Game.TableColor[ColorPips]);
  for (std::size_t i = 0; i < 2; ++i)
    DrawDie(painter, view.Dice[i], kDieSize, faces[i], Game.DiceStyle, body, pips, view.Turns[i]);
}

/// A ring of light around what is picked in the rack.
void PaintPicked(QPainter& painter, QPointF centre, double radius) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 214, 64, 70), 3.4));
  painter.drawEllipse(centre, radius, radius);
  painter.setPen(QPen(QColor(255, 226, 96), 1.5));
  painter.drawEllipse(centre, radius, radius);
}

/// The token of a shown stack: a little pile with the stack's number.
void PaintStackToken(QPainter& painter, QPointF centre, int stack) {
  painter.setPen(QPen(QColor(0x14, 0x1C, 0x28), 0.6));
  for (int i = 0; i < 3; ++i) {
    painter.setBrush(QColor(0x4B, 0x5D, 0x78).lighter(92 + 14 * i));
    painter.drawEllipse(centre + QPointF(0, 2.6 - 2.0 * i), 9.2, 8.6);
  }
  painter.setBrush(Qt::NoBrush);
  QPen dashes(QColor(0xE8, 0xEE, 0xF6, 170), 1, Qt::CustomDashLine, Qt::FlatCap);
  dashes.setDashPattern({3, 3});
  painter.setPen(dashes);
  painter.drawEllipse(centre + QPointF(0, -1.4), 7.6, 7);
  DrawLettering(painter, QString::number(stack - ChipStackBase), centre + QPointF(0, -1.4), 5.8, 11,
                Qt::white);
}

void PaintRackPlaces(const Stage& stage) {
  for (int color = kFirstStackColor; color <= kLastStackColor; ++color) {
    const int stack = Game.VisibleStacks[static_cast<unsigned>(color - kFirstStackColor)];
    PaintStackToken(stage.Painter, RackSlotRect(color).center() + QPointF(0, -0.2), stack);
  }
  for (int color = 1; color <= 5; ++color) PlaceChip(stage, RackSlotRect(color).center(), color);
  constexpr std::pair<int, Marker> kTools[] = {
      {BuyMarkerSpot, Marker::Buy}, {OffMarkerSpot, Marker::Off}, {OnMarkerSpot, Marker::On}};
  for (const auto& [spot, marker] : kTools)
    DrawMarker(stage.Painter, MarkerSpotRect(spot).center(), kMarkerSize, marker);
}

void PaintChipRack(const Stage& stage) {
  PaintRackPlaces(stage);
  if (Game.ChipColor >= BuyMarkerSpot && Game.ChipColor <= OnMarkerSpot)
    PaintPicked(stage.Painter, MarkerSpotRect(Game.ChipColor).center(), 9.4);
  else if (const QRectF place = RackSlotRect(Game.ChipColor); !place.isEmpty())
    PaintPicked(stage.Painter, place.center(), 11.3);
}

void PaintCaption(QPainter& painter, const QRectF& plate) {
  const QString caption = TableCaption();
  if (caption.isEmpty()) return;
  painter.setPen(QPen(QColor(0x7A, 0x59, 0x1E), 0.8));
  painter.setBrush(QColor(0xFF, 0xE9, 0x9C));
  painter.drawRoundedRect(plate, 11, 11);
  DrawLettering(painter, caption, plate.center(), 8, 206, QColor(0x2B, 0x1A, 0x04));
}

void PaintRecorder(QPainter& painter) {
  if (Game.RecorderStatus < Recording) return;
  const bool recording = Game.RecorderStatus == Recording;
  const QRectF lamp = kRecorderRect.adjusted(2, 2, -3, -3);
  const QColor light = recording ? QColor(0xFF, 0x3B, 0x30) : QColor(0x3D, 0xDC, 0x84);
  painter.setPen(QPen(QColor(0, 0, 0, 180), 0.8));
  painter.setBrush(QColor(0x1B, 0x1B, 0x20));
  painter.drawRoundedRect(lamp, 4, 4);
  painter.setPen(Qt::NoPen);
  painter.setBrush(light);
  const QPointF eye(lamp.left() + 10, lamp.center().y());
  if (recording)
    painter.drawEllipse(eye, 4.4, 4.4);
  else
    painter.drawPolygon(
        QPolygonF({eye + QPointF(-3.6, -4.6), eye + QPointF(4.6, 0), eye + QPointF(-3.6, 4.6)}));
  DrawLettering(painter, recording ? QStringLiteral("REC") : QStringLiteral("PLAY"),
                {lamp.left() + 30, lamp.center().y()}, 6.6, 26, Qt::white);
}

/// The chips in the hand: the amount as a pile, the largest chips first.
void PaintDragged(const Stage& stage, const TableView& view) {
  if (!view.Dragging) return;
  Currency rest = view.DraggedAmount;
  int height = 0;
  constexpr int kMostChips = 13;
  constexpr double kAside = 3;
  const QPointF step = TheTable.PilesUpward ? QPointF(0, -kChipRise) : QPointF(kAside, 0);
  const auto place = [&](int picture) {
    PlaceChip(stage, view.DragPoint + QPointF(0, -2) + step * height++, picture);
  };
  for (int picture = 5; picture >= 1 && height < kMostChips; --picture) {
    const Currency value = ChipValue(picture);
    for (; value > Currency() && rest >= value && height < kMostChips; rest -= value)
      place(picture);
  }
  if (rest > Currency()) place(kOverflowPicture);
}

void RenewLayout(Stage& stage, QSizeF size) {
  QByteArray stamp = LayoutStamp();
  const QSize pixels = (size * stage.Ratio).toSize();
  if (stage.Cache.LayoutStamp == stamp && stage.Cache.Layout.size() == pixels &&
      qFuzzyCompare(stage.Cache.Layout.devicePixelRatio(), stage.Ratio))
    return;
  stage.Cache.Layout = BlankPicture(size, stage.Ratio);
  stage.Cache.Layout.fill(kSurround);
  QPainter painter(&stage.Cache.Layout);
  painter.setWorldTransform(stage.Table);
  painter.setClipRect(QRectF(0, 0, kTableWidth, kTableHeight));
  PaintLayout(painter);
  stage.Cache.LayoutStamp = std::move(stamp);
}

void RenewChips(Stage& stage) {
  QByteArray stamp = ChipStampOf(stage);
  if (stage.Cache.ChipStamp == stamp) return;
  stage.Cache.Chips.fill({});
  stage.Cache.ChipStamp = std::move(stamp);
}

/// In the band of the house name nothing lies, but for what is in the hand or on its way, and the
/// caption.
bool IsBare(const QRectF& exposed, const TableView& view) {
  return TheTable.PilesUpward && kBareBand.contains(exposed) && view.Flying.empty() &&
         !view.Dragging && TableCaption().isEmpty();
}

/// What lies on the layout, from below to above.
void PaintThings(Stage& stage, const TableView& view, const QRectF& exposed) {
  QPainter& painter = stage.Painter;
  RenewChips(stage);
  const TablePiles piles = TheTable.PilesUpward ? LayOutPiles() : LayOutPilesAsTold();
  if (TheTable.StickFrame == StickCallBoard) PaintCallBoard(painter);
  PaintChipRack(stage);
  if (!TheTable.PuckMakesRoom) PaintPuck(painter, PuckRect(Game.Point));
  if (view.Below) view.Below(painter, exposed);
  PaintChips(stage, piles);
  if (TheTable.PuckMakesRoom) PaintPuck(painter, PuckPlace(piles.Chips));
  PaintMarkers(painter, piles);
  PaintAmounts(painter, piles);
  PaintRecorder(painter);
  PaintDice(painter, view);
  for (const DrawnChip& chip : view.Flying) PlaceChip(stage, chip.Centre, chip.Picture);
  if (view.Above) view.Above(painter);
  PaintCaption(painter, view.CaptionPlate);
  PaintDragged(stage, view);
}

}  // namespace

QTransform TableTransform(QSizeF size) {
  const double scale = std::min(size.width() / kTableWidth, size.height() / kTableHeight);
  QTransform transform;
  transform.translate((size.width() - kTableWidth * scale) / 2,
                      (size.height() - kTableHeight * scale) / 2);
  transform.scale(scale, scale);
  return transform;
}

QPointF TablePoint(QPointF widgetPoint, QSizeF size) {
  return TableTransform(size).inverted().map(widgetPoint);
}

QString TableCaption() {
  if (!Game.AutoBetStatus.empty()) return QString::fromStdString(Game.AutoBetStatus);
  switch (Game.ClickMode) {
    case CallOnMode: return QObject::tr("Click on bet to call ON");
    case CallOffMode: return QObject::tr("Click on bet to call OFF");
    case BuyMode: return QObject::tr("Click on bet to buy");
    case RemoveMode: return QObject::tr("Click on bet to remove");
    default: return {};
  }
}

void PaintTable(QPainter& painter, QSizeF size, const TableView& view, TableCache& cache,
                const QRectF& exposed) {
  if (size.width() < 1 || size.height() < 1) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  Stage stage{painter, cache, painter.worldTransform(), TableTransform(size),
              painter.device()->devicePixelRatioF()};
  RenewLayout(stage, size);
  painter.drawPixmap(QPointF(0, 0), cache.Layout);
  painter.setWorldTransform(stage.Table * stage.Outer);
  if (IsBare(exposed, view)) {
    if (view.Below) view.Below(painter, exposed);
  } else {
    PaintThings(stage, view, exposed);
  }
  painter.restore();
}
