// The Chip-Stacks: numbers, names and values of all hundred.
#pragma once

#include <array>

#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"

class QFrame;
class QLineEdit;
class QTableView;

class frmStackValues : public Screen {
  Q_OBJECT

 public:
  explicit frmStackValues(QWidget* table);

 protected:
  void ShowRecord() override;
  void Opened() override;
  bool TakeKey(QKeyEvent& event) override;
  bool MayClose() override;

 private:
  static constexpr int kShownStacks = 4;

  void MakeList();
  void MakeSetStacksPanel();
  void MakeMenus();
  QModelIndex Cell() const;
  QLineEdit* OpenBox() const;
  void CopyCell();
  void SetCell(const QString& text);
  void PrintList();
  void OpenSetStacks();
  void TakeSetStacks();

  RecordModel* stacks_ = nullptr;
  QTableView* picChipStacks_ = nullptr;
  QFrame* picSetStacks_ = nullptr;
  std::array<QLineEdit*, kShownStacks> txtStackNum_{};
};
