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
constexpr std::size_t kCellsAbreast = 15;

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

/// The rows of the strip: those of the totals, and of the others as many as there are cells for.
struct Strip {
  std::vector<ForecastRow> Shown;
  std::vector<ForecastRow> LeftOut;

  std::size_t Cells() const { return Shown.size() + (LeftOut.empty() ? 0 : 1); }
};

Strip StripOf(const std::vector<ForecastRow>& rows) {
  const std::size_t others = rows.size() <= kCellsAbreast ? rows.size() : kCellsAbreast - 12;
  Strip strip;
  std::size_t named = 0;
  for (const ForecastRow& row : rows) {
    const bool shown = row.Die1 == 0 || named++ < others;
    (shown ? strip.Shown : strip.LeftOut).push_back(row);
  }
  return strip;
}

QRectF CellOf(const Strip& strip, std::size_t cell) {
  const double width = (kBand.width() - 6) / static_cast<double>(strip.Cells());
  return {kBand.left() + 3 + width * static_cast<double>(cell), kBand.top(), width, kBand.height()};
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
  const Strip strip = StripOf(rows);
  painter.save();
  PaintPlate(painter, kBand, 4);
  const auto paint = [&](std::size_t index, const QString& name, QColor nameColor,
                         const QString& value, QColor color) {
    const QRectF whole = CellOf(strip, index);
    const QRectF cell = whole.adjusted(1.4, 0, -1.4, 0);
    WriteIn(painter, name, {cell.left(), cell.top() + 2.2, cell.width(), 9}, CapitalOf(8),
            nameColor, Side::Centre);
    WriteIn(painter, value, {cell.left(), cell.top() + 11.6, cell.width(), 13}, CapitalOf(12.2),
            color, Side::Centre);
    if (index == 0) return;
    painter.setPen(QPen(QColor(0x5A, 0x48, 0x2C), 0.5));
    painter.drawLine(QPointF(whole.left(), cell.top() + 4),
                     QPointF(whole.left(), cell.bottom() - 4));
  };
  std::size_t index = 0;
  for (const ForecastRow& row : strip.Shown)
    paint(index++, ForecastName(row), row.Total == 7 ? QColor(Qt::white) : kMuted,
          StripMoney(row.Net), row.Net == Currency() ? kMuted : ColorOf(row.Net));
  if (!strip.LeftOut.empty())
    paint(index, Band::tr("and %1").arg(strip.LeftOut.size()), kMuted, Band::tr("more"), kAccent);
  painter.restore();
}

QString ForecastTip(QPointF place, const std::vector<ForecastRow>& rows) {
  const Strip strip = StripOf(rows);
  const auto told = [](const ForecastRow& row) {
    return Band::tr("%1: %2 (%3 of 36 throws)")
        .arg(ForecastName(row), SignedMoney(row.Net))
        .arg(row.Ways);
  };
  for (std::size_t cell = 0; cell < strip.Cells(); ++cell) {
    if (!CellOf(strip, cell).contains(place)) continue;
    if (cell < strip.Shown.size()) return told(strip.Shown[cell]);
    QStringList lines;
    for (const ForecastRow& row : strip.LeftOut) lines << told(row);
    return lines.join('\n');
  }
  return {};
}

void PaintHyperBand(QPainter& painter, int rolls) {
  painter.save();
  PaintPlate(painter, kPill, kPill.height() / 2);
  WriteIn(painter, Band::tr("Hyper-Drive, %1 rolls").arg(Text(CountText(rolls))),
          kPill.adjusted(16, 0, -16, 0), CapitalOf(13), kInk, Side::Centre);
  painter.restore();
}
