// A report as it will be printed, and the ways to print it.
#pragma once

#include "screens/frame/dialog.h"
#include "screens/frame/report.h"

class QLabel;
class QPrinter;
class QPrintPreviewWidget;

class frmPrint : public Dialog {
  Q_OBJECT

 public:
  frmPrint(const Report& report, QWidget* parent);

 private:
  void Paint(QPrinter* printer);
  void ToPdf();
  void Write(const QString& pdf);
  void ShowPage();

  const Report& report_;
  QPrintPreviewWidget* picPages_ = nullptr;
  QLabel* lblPage_ = nullptr;
};
