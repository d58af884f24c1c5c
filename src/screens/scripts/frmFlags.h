// The flags of the script: names and values, set by hand.
#pragma once

#include "screens/frame/record_model.h"
#include "screens/frame/report.h"
#include "screens/frame/screen.h"

class QLabel;
class QListView;

class frmFlags : public Screen {
  Q_OBJECT

 public:
  explicit frmFlags(QWidget* table);

  /// What is printed.
  static Report FlagsReport();

 protected:
  void ShowRecord() override;

 private:
  QWidget* MakeButtons();
  void SetSelected(int truth);

  RecordModel* flags_ = nullptr;
  QListView* lstShowflags_ = nullptr;
  QLabel* lblNoFlags_ = nullptr;
};
