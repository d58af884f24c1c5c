#include "screens/frame/paper.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <stdexcept>

#include "core/game_state.h"

QString PrintFile;

namespace {

constexpr int kResolution = 144;  // dots of an inch; lines one dot wide can still be seen
constexpr int kPointsPerInch = 72;
constexpr double kMargin = 36;               // points
constexpr double kLineSpacing = 1.3;         // of the size of the letters
constexpr int kLookForPrinterAgain = 5'000;  // milliseconds

}  // namespace

bool CanPrint() {
  static QElapsedTimer looked;
  static bool found = false;
  if (!PrintFile.isEmpty()) return true;
  if (!looked.isValid() || looked.hasExpired(kLookForPrinterAgain)) {
    found = !QPrinterInfo::defaultPrinter().isNull();
    looked.start();
  }
  return found;
}

void PrintOnPaper(const QString& name,
                  const std::function<void(QPainter&, QSizeF, std::function<void()>)>& paint) {
  QPrinter printer;
  if (!PrintFile.isEmpty()) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(PrintFile);
  }
  printer.setDocName(name);
  printer.setColorMode(Game.ColorPrint ? QPrinter::Color : QPrinter::GrayScale);
  printer.setResolution(kResolution);
  printer.setFullPage(true);
  QPainter painter;
  if (!painter.begin(&printer)) throw std::runtime_error("The page could not be printed");
  painter.scale(double(kResolution) / kPointsPerInch, double(kResolution) / kPointsPerInch);
  painter.translate(kMargin, kMargin);
  const QSizeF page = printer.pageLayout().fullRectPoints().size() - QSizeF(kMargin, kMargin) * 2;
  paint(painter, page, [&printer] { printer.newPage(); });
}

void SetPrintFont(QPainter& painter, int size, bool bold) {
  QFont font = painter.font();
  font.setPixelSize(size);  // the painter counts in points of the paper
  font.setBold(bold);
  painter.setFont(font);
  painter.setPen(Qt::black);
}

double PrintLine(QPainter& painter, double y, double width, const QString& text, int size,
                 bool bold) {
  SetPrintFont(painter, size, bold);
  const double height = size * kLineSpacing;
  painter.drawText(QRectF(0, y, width, height), Qt::AlignLeft | Qt::AlignVCenter, text);
  return y + height;
}
