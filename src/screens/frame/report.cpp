#include "screens/frame/report.h"

#include <QApplication>
#include <QClipboard>
#include <QDate>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <algorithm>
#include <stdexcept>
#include <vector>

#include "core/game_state.h"
#include "screens/frame/controls.h"
#include "screens/frame/frmPrint.h"
#include "screens/frame/report_pages.h"

QString PrintFile;

namespace {

constexpr int kResolution = 144;  // dots of an inch; lines one dot wide can still be seen
constexpr int kPointsPerInch = 72;
constexpr double kMargin = 36;        // points
constexpr double kLineSpacing = 1.3;  // of the size of the letters
constexpr double kColumnGap = 12;     // points
constexpr int kHeadingSize = 12;
constexpr int kRowsForWidths = 500;          // that the widths of the columns are taken from
constexpr int kRowsBetweenSteps = 250;       // of the progress
constexpr int kManyRows = 5'000;             // that are worth a progress
constexpr int kLookForPrinterAgain = 5'000;  // milliseconds

QStringList Texts(const std::vector<std::string>& texts) {
  QStringList all;
  for (const std::string& text : texts) all << Text(text);
  return all;
}

/// Lays lines one below the other, over as many pages as it takes.
class PageWriter {
 public:
  PageWriter(QPrinter& printer, const Report& report, int mostPages)
      : printer_(printer), report_(report), mostPages_(mostPages) {
    if (!painter_.begin(&printer)) throw std::runtime_error("The page could not be printed");
    painter_.scale(double(kResolution) / kPointsPerInch, double(kResolution) / kPointsPerInch);
    painter_.translate(kMargin, kMargin);
    page_ = printer.pageLayout().fullRectPoints().size() - QSizeF(kMargin, kMargin) * 2;
  }

  void Write(const std::function<bool(int)>& goOn) {
    WriteHeading();
    if (report_.Picture) WritePictures();
    MeasureColumns();
    WriteColumnHeadings();
    for (int row = 0; row < report_.Rows && !full_; ++row) {
      if (row % kRowsBetweenSteps == 0 && !goOn(row)) break;
      WriteCells(report_.Row(row), false);
    }
  }

 private:
  void NextPage() {
    if (++pages_ >= mostPages_) {
      full_ = true;
      return;
    }
    printer_.newPage();
    y_ = 0;
  }

  double Height(int size) const { return size * kLineSpacing; }

  void WriteHeading() {
    for (const QString& line : report_.Heading) {
      SetPrintFont(painter_, kHeadingSize, &line == &report_.Heading.front());
      painter_.drawText(QRectF(0, y_, page_.width(), Height(kHeadingSize)),
                        Qt::AlignLeft | Qt::AlignVCenter, line);
      y_ += Height(kHeadingSize);
    }
    y_ += Height(kHeadingSize);
  }

  void WritePictures() {
    for (int picture = 0; !full_; ++picture) {
      painter_.save();
      painter_.translate(0, y_);
      const bool more = report_.Picture(painter_, {page_.width(), page_.height() - y_}, picture);
      painter_.restore();
      if (more || report_.Rows > 0) NextPage();
      if (!more) break;
    }
  }

  /// As wide as the texts ask for, as far as the page goes.
  void MeasureColumns() {
    SetPrintFont(painter_, report_.TextSize, true);
    const QFontMetricsF metrics(painter_.font());
    const auto measure = [&](const QStringList& cells) {
      widths_.resize(std::max<std::size_t>(widths_.size(), static_cast<std::size_t>(cells.size())));
      for (int column = 0; column < cells.size(); ++column) {
        double& width = widths_[static_cast<unsigned>(column)];
        width = std::max(width, metrics.horizontalAdvance(cells[column]));
      }
    };
    measure(report_.Columns);
    for (int row = 0; row < std::min(report_.Rows, kRowsForWidths); ++row)
      measure(report_.Row(row));
    double all = -kColumnGap;
    for (const double width : widths_) all += width + kColumnGap;
    if (all > page_.width()) {
      for (double& width : widths_) width *= page_.width() / all;
    }
  }

  void WriteColumnHeadings() {
    if (!report_.Columns.isEmpty() && !full_) WriteCells(report_.Columns, true);
  }

  void WriteCells(const QStringList& cells, bool bold) {
    const double height = Height(report_.TextSize);
    if (y_ + height > page_.height()) {
      NextPage();
      if (full_) return;
      if (!bold) WriteColumnHeadings();
    }
    SetPrintFont(painter_, report_.TextSize, bold);
    double x = 0;
    for (int column = 0; column < cells.size(); ++column) {
      const bool last = column + 1 == cells.size();
      const double width =
          last && cells.size() == 1 ? page_.width() : widths_[static_cast<unsigned>(column)];
      const Qt::Alignment alignment = report_.Align ? report_.Align(column) : Qt::AlignLeft;
      painter_.drawText(QRectF(x, y_, width, height), alignment | Qt::AlignVCenter, cells[column]);
      x += width + kColumnGap;
    }
    y_ += height;
  }

  QPrinter& printer_;
  const Report& report_;
  int mostPages_;
  int pages_ = 0;
  bool full_ = false;
  QPainter painter_;
  QSizeF page_;
  double y_ = 0;
  std::vector<double> widths_;
};

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

void SetPrintFont(QPainter& painter, int size, bool bold) {
  QFont font = painter.font();
  font.setPixelSize(size);  // the painter counts in points of the paper
  font.setBold(bold);
  painter.setFont(font);
  painter.setPen(Qt::black);
}

void PreparePrinter(QPrinter& printer, const Report& report, const QString& pdf) {
  if (!pdf.isEmpty()) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
  }
  printer.setDocName(report.Title);
  printer.setColorMode(Game.ColorPrint ? QPrinter::Color : QPrinter::GrayScale);
  printer.setResolution(kResolution);
  printer.setFullPage(true);
}

void PaintReport(QPrinter& printer, const Report& report, int mostPages,
                 const std::function<bool(int)>& goOn) {
  PageWriter(printer, report, mostPages).Write(goOn);
}

bool WriteReport(QWidget* parent, const Report& report, const QString& pdf) {
  QPrinter printer;
  PreparePrinter(printer, report, pdf);
  const auto always = [](int) { return true; };
  if (report.Rows < kManyRows) {
    PaintReport(printer, report, kAllPages, always);
    return true;
  }
  QProgressDialog progress(QObject::tr("Printing ..."), QObject::tr("Cancel"), 0, report.Rows,
                           parent);
  progress.setWindowTitle(report.Title);
  progress.setWindowModality(Qt::ApplicationModal);
  PaintReport(printer, report, kAllPages, [&progress](int row) {
    progress.setValue(row);
    return !progress.wasCanceled();
  });
  return !progress.wasCanceled();
}

QStringList GameHeading(const QString& what) {
  const auto file = [](const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).fileName();
  };
  QStringList lines = {
      what,
      QObject::tr("Game File:  %1")
          .arg(Game.GameFileName.empty() ? QObject::tr("untitled game") : file(Game.GameFileName)),
      QLocale().toString(QDate::currentDate(), QLocale::LongFormat)};
  if (!Game.AutoBetFile.empty())
    lines << QObject::tr("Auto-Bet File:  %1").arg(file(Game.AutoBetFile));
  if (!Game.DiceRollFile.empty())
    lines << QObject::tr("Dice Roll File:  %1").arg(file(Game.DiceRollFile));
  return lines;
}

Report ReportOf(const TextTable& table) {
  Report report;
  report.Title = QObject::tr("Kelvanor %1").arg(Text(table.Title).section(':', 0, 0));
  report.Heading = GameHeading(Text(table.Title));
  if (!table.Note.empty()) report.Heading << Text(table.Note);
  report.Columns = Texts(table.Headings);
  report.Align = [](int column) {
    return Qt::Alignment(column == 0 ? Qt::AlignLeft : Qt::AlignRight);
  };
  report.Rows = static_cast<int>(table.Rows.size());
  report.Row = [rows = table.Rows](int row) { return Texts(rows[static_cast<unsigned>(row)]); };
  return report;
}

bool PrintReport(QWidget* parent, const Report& report) {
  if (!PrintFile.isEmpty()) return WriteReport(parent, report, PrintFile);
  return frmPrint(report, parent).exec() == QDialog::Accepted;
}

void PrintAtOnce(const Report& report) {
  if (CanPrint()) WriteReport(nullptr, report, PrintFile);
}

QString TextOf(const Report& report) {
  QStringList lines;
  if (!report.Columns.isEmpty()) lines << report.Columns.join('\t');
  for (int row = 0; row < report.Rows; ++row) lines << report.Row(row).join('\t');
  return lines.join('\n') + '\n';
}

void CopyReport(const Report& report) { QApplication::clipboard()->setText(TextOf(report)); }
