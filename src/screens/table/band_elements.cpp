#include "screens/table/band_elements.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>

#include "core/text.h"
#include "figures/call_text.h"
#include "screens/art/chip_art.h"
#include "screens/art/roles.h"
#include "screens/frame/controls.h"
#include "screens/table/table_text.h"

namespace {

struct Band {
  Q_DECLARE_TR_FUNCTIONS(BandElements)
};

constexpr QRectF kPill(133, 406.4, 354, 25.4);
constexpr int kCellsAbreast = 15;

void PaintPlate(QPainter& painter, const QRectF& rect, double radius) {
  painter.setPen(QPen(kMuted, 0.9));
  painter.setBrush(QColor(0x0D, 0x09, 0x07));
  painter.drawRoundedRect(rect, radius, radius);
}

CalledThrow Called(const RollNote& note) {
  return {note.Die1, note.Die2, note.PrevPoint, note.Point, note.Net};
}

QColor ColorOf(Currency net) {
  if (net > Currency()) return kGain;
  return net < Currency() ? kLoss : kInk;
}

/// As many rows as the strip has cells for: those of the totals, and of the others the first.
std::vector<ForecastRow> RowsAbreast(const std::vector<ForecastRow>& rows) {
  std::vector<ForecastRow> shown;
  auto room = static_cast<std::size_t>(kCellsAbreast - 11);
  for (const ForecastRow& row : rows) {
    if (row.Die1 != 0 && room == 0) continue;
    if (row.Die1 != 0) --room;
    shown.push_back(row);
  }
  return shown;
}

/// "+17": the dollar sign is left to the panel, where there is room.
QString StripMoney(Currency net) { return SignedMoney(net).remove('$'); }

}  // namespace

QString CallWords(const RollNote& note, int end) {
  if (end == GoalReached) return Band::tr("Win goal reached");
  if (end == LossReached) return Band::tr("Loss limit reached");
  return Text(PointWords(Called(note)));
}

QString ForecastName(const ForecastRow& row) {
  return row.Die1 == 0 ? QString::number(row.Total) : QString("%1-%2").arg(row.Die1).arg(row.Die2);
}

bool SaysSomething(const std::vector<ForecastRow>& rows) {
  return std::any_of(rows.begin(), rows.end(),
                     [](const ForecastRow& row) { return row.Net != Currency(); });
}

void PaintCall(QPainter& painter, const RollNote& note, int end, double opacity) {
  painter.save();
  painter.setOpacity(painter.opacity() * opacity);
  PaintPlate(painter, kPill, kPill.height() / 2);
  const double middle = kPill.center().y();
  const double die = 15.5;
  double left = kPill.left() + 11;
  for (const int face : {note.Die1, note.Die2}) {
    DrawPrintedDie(painter, {left + die / 2, middle}, die, face, QColor(0xFD, 0xFB, 0xF4),
                   QColor(0x17, 0x10, 0x0C));
    left += die;
  }
  left += 7;
  const QString net = SignedMoney(note.Net);
  const double netWidth = std::min(110.0, TextWidth(net, CapitalOf(17)));
  const double netLeft = kPill.right() - 14 - netWidth;
  WriteIn(painter, net, {netLeft, kPill.top(), netWidth, kPill.height()}, CapitalOf(17),
          ColorOf(note.Net), Side::Right);
  painter.setPen(QPen(kPlateEdge, 0.7));
  painter.drawLine(QPointF(netLeft - 10, kPill.top() + 6),
                   QPointF(netLeft - 10, kPill.bottom() - 6));
  const QString word = Text(TotalWord(note.Die1 + note.Die2)).toUpper();
  const double capital = CapitalOf(16.5);
  const double width = TextWidth(word, capital, Lettering::Serif);
  WriteIn(painter, word, {left, kPill.top(), width + 1, kPill.height()}, capital, Qt::white,
          Side::Left, Lettering::Serif);
  left += width + 12;
  WriteIn(painter, CallWords(note, end),
          {left, kPill.top() + 0.6, netLeft - 16 - left, kPill.height()}, CapitalOf(11.4), kInk);
  painter.restore();
}

void PaintForecastStrip(QPainter& painter, const std::vector<ForecastRow>& rows) {
  const std::vector<ForecastRow> shown = RowsAbreast(rows);
  painter.save();
  PaintPlate(painter, kBand, 4);
  const double width = (kBand.width() - 6) / static_cast<double>(shown.size());
  double left = kBand.left() + 3;
  for (const ForecastRow& row : shown) {
    const QRectF cell(left + 1.4, kBand.top(), width - 2.8, kBand.height());
    const QColor name = row.Total == 7 ? QColor(Qt::white) : kMuted;
    WriteIn(painter, ForecastName(row), {cell.left(), kBand.top() + 2.2, cell.width(), 9},
            CapitalOf(8), name, Side::Centre);
    const QColor color = row.Net == Currency() ? kMuted : ColorOf(row.Net);
    WriteIn(painter, StripMoney(row.Net), {cell.left(), kBand.top() + 11.6, cell.width(), 13},
            CapitalOf(12.2), color, Side::Centre);
    left += width;
    if (&row == &shown.back()) break;
    painter.setPen(QPen(QColor(0x5A, 0x48, 0x2C), 0.5));
    painter.drawLine(QPointF(left, kBand.top() + 4), QPointF(left, kBand.bottom() - 4));
  }
  painter.restore();
}

void PaintHyperBand(QPainter& painter, int rolls) {
  painter.save();
  PaintPlate(painter, kPill, kPill.height() / 2);
  WriteIn(painter, Band::tr("Hyper-Drive, %1 rolls").arg(Text(CountText(rolls))),
          kPill.adjusted(16, 0, -16, 0), CapitalOf(13), kInk, Side::Centre);
  painter.restore();
}
