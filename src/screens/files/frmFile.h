// The file screen: the one chooser of files, which also does what the file is chosen for.
#pragma once

#include "persistence/file_commands.h"
#include "screens/frame/dialog.h"

class QLabel;
class QLineEdit;
class QListView;

class frmFile : public Dialog {
  Q_OBJECT

 public:
  frmFile(FileCommand command, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Entry {
    QString Caption;
    QString Path;
  };
  using Entries = QList<Entry>;

  void MakeNameBox();
  QListView* MakeList(const char* name, const QString& caption, Entries& entries);

  /// Shows a folder. One that can't be read is told of, and the folder in force stays.
  bool GoTo(const QString& folder);
  void ShowFolder();
  void ShowPlaces();
  void Choose(const QListView* list);
  void StartWithOpenFile();
  void DeleteChosenFile();
  bool EnteredFolder();
  void Accept();

  FileCommand command_;
  QString folder_;
  Entries places_;
  Entries folders_;
  Entries files_;
  QLineEdit* txtFileName_ = nullptr;
  QLineEdit* txtFolder_ = nullptr;
  QListView* drvDrive_ = nullptr;
  QListView* dirDirectory_ = nullptr;
  QListView* filFiles_ = nullptr;
  QLabel* lblNoFiles_ = nullptr;
};

/// Shows the file screen of a command over `parent` until the command has been done, or the player
/// gives up. True when it has been done.
bool RunFileScreen(QWidget* parent, FileCommand command);
