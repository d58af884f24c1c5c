// The script editor: lines are built from lists and logged; nobody types a statement.
#pragma once

#include <functional>
#include <optional>

#include "autobet/script_edit.h"
#include "screens/frame/report.h"
#include "screens/frame/screen.h"

class LineBuilder;
class QCheckBox;
class QLineEdit;
class QTimer;
class ScriptModel;
class ScriptUndo;
class ScriptView;

class frmAutoBet : public Screen {
  Q_OBJECT

 public:
  explicit frmAutoBet(QWidget* table);

  /// Scrolls so that a line stands at the top, and makes it the current one.
  void BringToTop(int number);

  /// What is printed.
  static Report ScriptReport();

 protected:
  void ShowRecord() override;
  bool TakeKey(QKeyEvent& event) override;
  bool MayClose() override;

 private:
  QWidget* MakeScriptSide();
  QLayout* MakeHeader();
  QLayout* MakeFooter();
  void MakeMenus();
  std::vector<MenuRow> FileRows();
  std::vector<MenuRow> EditRows();
  std::vector<MenuRow> LineRows();
  std::vector<MenuRow> FindRows();
  std::vector<MenuRow> ViewRows();
  std::vector<MenuRow> ScriptRows();

  /// Changes lines of the script, as far as that may be now; `make` tells how.
  void Edit(const QString& what, std::function<std::optional<ScriptEdit>()> make);
  void Step(bool back);
  void Log(const ScriptLine& line, int replaced);
  void Copy();
  void Paste();
  void PasteFrom();
  void FindTyped(bool forward, bool next);
  void LinesChanged();
  void CheckLines();
  void ShowCounts();
  void ShowFault();
  bool FindKey(const QKeyEvent& event);

  ScriptModel* model_;
  ScriptView* picLoggedBets_;
  LineBuilder* builder_;
  ScriptUndo* undo_;
  QTimer* idle_;
  QLineEdit* txtFind_ = nullptr;
  QCheckBox* chkAutoBetsActivated_ = nullptr;
  QLabel* lblAutoBetFilename_ = nullptr;
  QLabel* lblNumAutoBetLines_ = nullptr;
  QLabel* lblNumLinesSelected_ = nullptr;
  QLabel* lblFault_ = nullptr;
  QLabel* lblNoLines_ = nullptr;
  int loads_ = -1;  // of the script as shown
};

/// Brings a line to the top of the editor, which is shown for it.
void ShowLineInEditor(int number);
