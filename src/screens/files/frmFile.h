// The file screen: the one chooser of files, which also does what the file is chosen for.
#pragma once

#include <QComboBox>
#include <QCompleter>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>

#include "persistence/file_commands.h"

class frmFile : public QDialog {
  Q_OBJECT

 public:
  frmFile(FileCommand command, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeLists(QGridLayout* grid);
  void MakeNameBox(QGridLayout* grid);
  void MakeButtons(QVBoxLayout* column);
  QListWidget* MakeList(const char* name, const QString& caption);

  /// Shows a folder. One that can't be read is told of, and the folder in force stays.
  bool GoTo(const QString& folder);
  void ShowFolder();
  void ShowPath();
  void ShowPlaces();
  void ShowFiles();
  void ChoosePlace(int index);
  void EnterFolder(const QListWidgetItem* item);
  void DeleteChosenFile();
  void StartWithOpenFile();
  bool EnteredFolder();
  void Accept();

  FileCommand command_;
  QString folder_;
  QLineEdit* txtFileName_ = nullptr;
  QCompleter* completer_ = nullptr;
  QListWidget* filFiles_ = nullptr;
  QListWidget* dirDirectory_ = nullptr;
  QComboBox* drvDrive_ = nullptr;
  QLabel* lblFolder_ = nullptr;
  QLabel* lblNoFiles_ = nullptr;
  QPushButton* cmdOK_ = nullptr;
};

/// Shows the file screen of a command over `parent` until the command has been done, or the player
/// gives up. True when it has been done.
bool RunFileScreen(QWidget* parent, FileCommand command);
