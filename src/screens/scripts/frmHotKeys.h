// The table of Hot-Keys: which key runs which script file.
#pragma once

#include <functional>
#include <vector>

#include "core/script_state.h"
#include "screens/frame/record_model.h"
#include "screens/frame/report.h"
#include "screens/frame/screen.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QUndoStack;
class QVBoxLayout;

/// Hot-Keys belong to no game: what is changed here is saved at once and leaves the game as it is.
class frmHotKeys : public Screen {
  Q_OBJECT

 public:
  explicit frmHotKeys(QWidget* table);

  /// What is printed.
  static Report HotKeysReport();

 protected:
  void ShowRecord() override;
  void Opened() override;
  bool TakeKey(QKeyEvent& event) override;
  bool MayClose() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeBoxes(QVBoxLayout* column);
  void MakeList(QVBoxLayout* column);
  void MakeMenus();

  // What the boxes define.
  HotKey Boxes() const;
  void ShowInBoxes(const HotKey& row);
  void SelectFile();
  void Add();
  void Change();

  // The chosen rows.
  std::vector<std::size_t> Chosen() const;
  std::size_t PlaceToInsert() const;
  void Choose(std::size_t first, std::size_t count);
  void LoadBack(int row);
  void Copy();
  void Paste();
  void Delete();
  void OpenInEditor();
  bool TakeCell(int row, std::string HotKey::*text, const QString& typed);

  /// Makes a change that can be undone; `act` goes through the engine.
  void Edit(const QString& name, const std::function<void()>& act);
  void Step(void (QUndoStack::*direction)());

  QComboBox* cmbKey_ = nullptr;
  QLineEdit* txtAutoBetFile_ = nullptr;
  QLineEdit* txtDescription_ = nullptr;
  QPushButton* cmdChangeHotKey_ = nullptr;
  RecordModel* rows_ = nullptr;
  QTableView* picHotKeys_ = nullptr;
  QLabel* lblNoHotKeys_ = nullptr;
  QLabel* lblDamaged_ = nullptr;
  QUndoStack* undo_ = nullptr;
};
