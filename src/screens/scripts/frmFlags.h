// The flags of the script: names and values, set by hand.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>
#include <array>

class frmFlags : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmFlags(QWidget* parent);

  /// Shows the flags as they stand now; rows that still show the same flag stay selected.
  void RefreshFlagsView();

  /// The lines above the flags on a printed page.
  static QStringList PrintHeading();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeButtons(QVBoxLayout* column);
  void MakeMenus();
  void ShowWhatCanBeDone();
  void SetSelected(int truth);
  void PrintList();

  QListWidget* lstShowflags_ = nullptr;
  QLabel* lblNoFlags_ = nullptr;
  std::array<QPushButton*, 2> cmdSetTruth_{};
  QPushButton* cmdSelectAll_ = nullptr;
};
