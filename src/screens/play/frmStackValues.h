// The Chip-Stacks: numbers, names and values of all hundred.
#pragma once

#include <QFrame>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableWidget>
#include <array>

class frmStackValues : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmStackValues(QWidget* parent);

  /// Shows names and values as they stand now.
  void RefreshStackView();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int kShownStacks = 4;

  void MakeList();
  void MakeSetStacksPanel();
  void MakeMenus();
  void OpenCell(int row, int column);
  void CommitCell();
  void CloseCell();
  QString CellText(int row, int column) const;
  void StoreCell(int row, int column, const QString& text);
  bool HasCell() const;
  void CutCell();
  void CopyCell();
  void PasteCell();
  void DeleteCell();
  void DeleteAllOnAsking(const char* question, const char* title, bool values, bool names);
  void PrintList();
  void OpenSetStacks();
  void TakeSetStacks();

  QTableWidget* picChipStacks_ = nullptr;
  QLineEdit* txtChipStackInput_ = nullptr;
  QFrame* picSetStacks_ = nullptr;
  std::array<QLineEdit*, kShownStacks> txtStackNum_{};
  QAction* mnuDisplayZero_ = nullptr;
  int editedRow_ = -1;
  int editedColumn_ = -1;
};
