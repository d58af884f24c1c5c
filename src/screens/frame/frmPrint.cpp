#include "screens/frame/frmPrint.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "core/help_topics.h"
#include "core/messages.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/report_pages.h"

namespace {

constexpr int kPagesShown = 20;
constexpr QSize kAtStart(640, 720);

}  // namespace

frmPrint::frmPrint(const Report& report, QWidget* parent)
    : Dialog(parent, "frmPrint", tr("Print %1").arg(report.Title), kTopicFiles), report_(report) {
  QVBoxLayout* column = new QVBoxLayout(this);
  QPrinter* paper = new QPrinter;
  // Looking doesn't need a printer.
  PreparePrinter(*paper, report, "preview.pdf");
  picPages_ = new QPrintPreviewWidget(paper, this);
  picPages_->setObjectName("picPages");
  connect(picPages_, &QObject::destroyed, picPages_, [paper] { delete paper; });
  connect(picPages_, &QPrintPreviewWidget::paintRequested, this, &frmPrint::Paint);
  connect(picPages_, &QPrintPreviewWidget::previewChanged, this, &frmPrint::ShowPage);
  column->addWidget(picPages_, 1);

  QHBoxLayout* row = new QHBoxLayout;
  AddButton(row, "cmdPrevious", tr("P&revious"),
            [this] { picPages_->setCurrentPage(picPages_->currentPage() - 1); });
  AddButton(row, "cmdNext", tr("&Next"),
            [this] { picPages_->setCurrentPage(picPages_->currentPage() + 1); });
  lblPage_ = New<QLabel>("lblPage");
  row->addWidget(lblPage_, 1);
  QPushButton* print = AddButton(row, "cmdPrint", tr("&Print"), [this] { Write({}); });
  if (!CanPrint()) {
    print->setEnabled(false);
    print->setToolTip(tr("There is no printer."));
  }
  QPushButton* pdf = AddButton(row, "cmdPrintToPdf", tr("Print to P&DF ..."), [this] { ToPdf(); });
  (CanPrint() ? print : pdf)->setDefault(true);
  AddButton(row, "cmdCancel", tr("Cancel"), [this] { reject(); });
  column->addLayout(row);
  resize(kAtStart);
  picPages_->updatePreview();
}

void frmPrint::Paint(QPrinter* printer) {
  Guarded("Print Preview",
          [&] { PaintReport(*printer, report_, kPagesShown, [](int) { return true; }); });
}

void frmPrint::ShowPage() {
  const int pages = picPages_->pageCount();
  QString text = tr("Page %1 of %2").arg(picPages_->currentPage()).arg(pages);
  if (pages == kPagesShown) text += tr(" shown here; all are printed");
  lblPage_->setText(text);
}

void frmPrint::ToPdf() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  QString path = QFileDialog::getSaveFileName(
      this, tr("Print to PDF"), folder + '/' + report_.Title + ".pdf", tr("PDF files (*.pdf)"));
  if (path.isEmpty()) return;
  if (!path.endsWith(".pdf", Qt::CaseInsensitive)) path += ".pdf";
  Write(path);
}

/// What can't be printed leaves the screen open.
void frmPrint::Write(const QString& pdf) {
  try {
    if (WriteReport(this, report_, pdf)) accept();
  } catch (const std::exception&) {
    ReportError("Print");
    ShowMessage(
        pdf.isEmpty()
            ? "The printer took nothing.\n\nSee to the printer, or print to a PDF file."
            : pdf.toStdString() + "\n\ncan't be written.  Choose another folder or another name.",
        windowTitle().toStdString(), 0, OkStop);
  }
}
