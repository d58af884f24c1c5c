#include "screens/files/frmFile.h"

#include <QCompleter>
#include <QDir>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QStyle>
#include <filesystem>

#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"
#include "screens/frame/window_places.h"

namespace {

constexpr QSize kAtStart(640, 440);
constexpr int kLettersOfList = 22;  // of the narrowest list
constexpr int kLinesOfList = 4;

QString CleanFolder(const QString& folder) {
  return QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
}

QString WithSlash(const QString& folder) { return folder.endsWith('/') ? folder : folder + '/'; }

/// Names in a folder in the order of the player's language.
QStringList NamesIn(const QString& folder, const QString& pattern, QDir::Filters kind) {
  return QDir(folder).entryList({pattern}, kind | QDir::NoDotAndDotDot,
                                QDir::Name | QDir::IgnoreCase | QDir::LocaleAware);
}

bool IsForPlayers(const QStorageInfo& volume) {
  for (const char* at : {"/media/", "/run/media/", "/Volumes/", "/mnt/"})
    if (volume.rootPath().startsWith(at)) return volume.isReady();
  return false;
}

}  // namespace

frmFile::frmFile(FileCommand command, QWidget* parent)
    : Dialog(parent, "frmFile", Text(RowOf(command).Title), kTopicFiles), command_(command) {
  drvDrive_ = MakeList("drvDrive", tr("Places"), places_);
  dirDirectory_ = MakeList("dirDirectory", tr("Folders"), folders_);
  filFiles_ = MakeList("filFiles", tr("Files"), files_);
  lblNoFiles_ = EmptyLabel(filFiles_->viewport(), "lblNoFiles",
                           tr("There are no such files in this folder."));
  MakeNameBox();
  // It can be read and copied from end to end.
  txtFolder_ = New<QLineEdit>("txtFolder");
  txtFolder_->setAccessibleName(tr("Folder"));
  txtFolder_->setReadOnly(true);
  txtFolder_->setFrame(false);
  txtFolder_->setFocusPolicy(Qt::ClickFocus);
  txtFolder_->setBackgroundRole(QPalette::Window);

  QGridLayout* grid = new QGridLayout(this);
  grid->addWidget(Caption(tr("File &name:"), txtFileName_), 0, 0);
  grid->addWidget(txtFileName_, 1, 0, 1, 2);
  grid->addWidget(txtFolder_, 2, 0, 1, 2);
  grid->addWidget(Caption(tr("F&iles (%1):").arg(Text(RowOf(command).Pattern)), filFiles_), 3, 0);
  grid->addWidget(filFiles_, 4, 0, 3, 1);
  grid->addWidget(Caption(tr("&Folders:"), dirDirectory_), 3, 1);
  grid->addWidget(dirDirectory_, 4, 1);
  grid->addWidget(Caption(tr("&Places:"), drvDrive_), 5, 1);
  grid->addWidget(drvDrive_, 6, 1);
  grid->setRowStretch(4, 2);
  grid->setRowStretch(6, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  QVBoxLayout* buttons = new QVBoxLayout;
  AddButton(buttons, "cmdOK", tr("&OK"), [this] { Accept(); })->setDefault(true);
  AddButton(buttons, "cmdCancel", tr("&Close"), [this] { reject(); });
  AddButton(buttons, "cmdHelp", tr("&Help"), [] { ShowHelp(kTopicFiles); });
  buttons->addStretch(1);
  grid->addLayout(buttons, 0, 2, 7, 1);
  resize(kAtStart.expandedTo(sizeHint()));
  setSizeGripEnabled(true);

  ShowPlaces();
  folder_ = QDir::rootPath();
  if (!GoTo(Text(Game.DataPath))) GoTo(QDir::homePath());
  StartWithOpenFile();
  FollowPlace(this, FileWindow);
}

QListView* frmFile::MakeList(const char* name, const QString& caption, Entries& entries) {
  const QIcon icon =
      style()->standardIcon(&entries == &files_ ? QStyle::SP_FileIcon : QStyle::SP_DirIcon);
  QListView* list = New<QListView>(name);
  list->setModel(new RecordModel(
      list, [&entries] { return static_cast<int>(entries.size()); },
      {{.Text = [&entries](int row) { return entries[row].Caption; },
        .ToolTip = [&entries](int row) { return QDir::toNativeSeparators(entries[row].Path); },
        .Icon = [icon](int) { return icon; }}},
      [&entries](int row) { return entries[row].Path; }));
  list->setAccessibleName(caption);
  list->setUniformItemSizes(true);
  list->setTextElideMode(Qt::ElideMiddle);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setMinimumSize(kLettersOfList * fontMetrics().averageCharWidth(),
                       kLinesOfList * fontMetrics().lineSpacing());
  list->installEventFilter(this);
  list->viewport()->installEventFilter(this);
  connect(list, &QListView::clicked, this, [this, list] { Do([&] { Choose(list); }); });
  return list;
}

void frmFile::MakeNameBox() {
  txtFileName_ = New<QLineEdit>("txtFileName");
  QCompleter* completer = new QCompleter(filFiles_->model(), this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  txtFileName_->setCompleter(completer);
  // The list of completions takes the Enter key; with none of them chosen it is meant for OK.
  connect(txtFileName_, &QLineEdit::returnPressed, this, [this, completer] {
    QAbstractItemView* list = completer->popup();
    if (!list->isVisible() || list->currentIndex().isValid()) return;
    list->hide();
    QMetaObject::invokeMethod(this, &frmFile::Accept, Qt::QueuedConnection);
  });
  // A file that is walked to by keys is the one named.
  connect(filFiles_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& file) {
            if (file.isValid()) txtFileName_->setText(files_[file.row()].Caption);
          });
}

// ---- Folders and files ----

bool frmFile::GoTo(const QString& folder) {
  const QString target = CleanFolder(folder);
  try {
    static_cast<void>(std::filesystem::directory_iterator(PathOf(target.toStdString())));
  } catch (const std::filesystem::filesystem_error&) {
    ReportError("File Screen");
    ShowMessage(QDir::toNativeSeparators(target).toStdString() +
                    "\ncan't be opened: " + FailureReason(WithSlash(target).toStdString()) + ".",
                std::string(RowOf(command_).Title), kTopicFiles, OkStop);
    ShowFolder();
    return false;
  }
  folder_ = target;
  ShowFolder();
  return true;
}

/// Where files may lie: the game's own folders, the player's, and the roots.
void frmFile::ShowPlaces() {
  const auto add = [this](const QString& caption, const QString& folder) {
    const QString clean = CleanFolder(folder);
    const bool known = std::any_of(places_.begin(), places_.end(),
                                   [&](const Entry& place) { return place.Path == clean; });
    if (!folder.isEmpty() && QFileInfo(folder).isDir() && !known) places_.append({caption, clean});
  };
  add(tr("Kelvanor"), Text(Game.DataPath));
  add(tr("Examples"), Text(Game.AppPath) + "examples");
  add(tr("Documents"), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  add(tr("Home"), QDir::homePath());
  for (const QFileInfo& root : QDir::drives())
    add(QDir::toNativeSeparators(root.absoluteFilePath()), root.absoluteFilePath());
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
    if (IsForPlayers(volume)) add(volume.displayName(), volume.rootPath());
}

void frmFile::ShowFolder() {
  const QDir dir(folder_);
  folders_.clear();
  if (!dir.isRoot()) folders_.append({"..", CleanFolder(dir.filePath(".."))});
  for (const QString& name : NamesIn(folder_, "*", QDir::Dirs))
    folders_.append({name, dir.filePath(name)});
  files_.clear();
  const bool any =
      command_ == FileCommand::SelectOutput || command_ == FileCommand::PasteDiceRollsFromText;
  for (const QString& name :
       NamesIn(folder_, any ? QString("*") : Text(RowOf(command_).Pattern), QDir::Files))
    files_.append({name, dir.filePath(name)});
  for (const QListView* list : {drvDrive_, dirDirectory_, filFiles_})
    static_cast<RecordModel*>(list->model())->Refresh();
  lblNoFiles_->setVisible(files_.isEmpty());
  txtFolder_->setText(QDir::toNativeSeparators(folder_));  // of a long one the end is in sight

  // The place that the folder lies in most closely is the one chosen.
  int closest = -1;
  for (int at = 0; at < places_.size(); ++at) {
    if (!WithSlash(folder_).startsWith(WithSlash(places_[at].Path))) continue;
    if (closest < 0 || places_[at].Path.size() > places_[closest].Path.size()) closest = at;
  }
  drvDrive_->setCurrentIndex(drvDrive_->model()->index(closest, 0));
}

/// A file in another folder than the one shown stands in the box with its folder.
void frmFile::StartWithOpenFile() {
  const QString open = Text(OpenFileOf(command_));
  txtFileName_->setFocus();
  if (open.isEmpty()) return;
  const QFileInfo file(open);
  const bool here = CleanFolder(file.absolutePath()) == folder_;
  txtFileName_->setText(here ? file.fileName() : QDir::toNativeSeparators(open));
  txtFileName_->selectAll();
}

// ---- What the player does ----

/// A click shows a folder or a place, and names a file.
void frmFile::Choose(const QListView* list) {
  const int row = list->currentIndex().row();
  if (row < 0) return;
  if (list == filFiles_) return txtFileName_->setText(files_[row].Caption);
  GoTo(QString((list == drvDrive_ ? places_ : folders_)[row].Path));
}

void frmFile::DeleteChosenFile() {
  const int row = filFiles_->currentIndex().row();
  if (row < 0) return;
  const Entry file = files_[row];
  if (!DeleteFileByKey(file.Path.toStdString())) return;
  ShowFolder();
  if (txtFileName_->text() == file.Caption) txtFileName_->clear();
  const int next = std::min(row, static_cast<int>(files_.size()) - 1);
  filFiles_->setCurrentIndex(filFiles_->model()->index(next, 0));
}

/// The name of a folder in the box leads into it.
bool frmFile::EnteredFolder() {
  const QString folder = QDir(folder_).filePath(txtFileName_->text().trimmed());
  if (!QFileInfo(folder).isDir()) return false;
  if (GoTo(folder)) txtFileName_->clear();
  return true;
}

void frmFile::Accept() {
  const std::string path = CompletePath(txtFileName_->text().toStdString(), folder_.toStdString(),
                                        RowOf(command_).Pattern);
  bool done = false;
  if (path.empty()) {
    ShowMessage("Please enter a file name.", "Missing Filename", kTopicFiles, OkStop);
  } else {
    if (EnteredFolder()) return;
    Do([&] { done = RunFileCommand(command_, path); });
  }
  if (done) return accept();
  ShowFolder();
  txtFileName_->setFocus();
  txtFileName_->selectAll();
}

bool frmFile::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) {
    // The second click on a folder would hit one of the folders in it.
    const QPoint place = static_cast<QMouseEvent*>(event)->pos();
    if (watched == filFiles_->viewport() && filFiles_->indexAt(place).isValid()) Accept();
    return true;
  }
  const auto* list = qobject_cast<QListView*>(watched);
  if (!list || event->type() != QEvent::KeyPress) return Dialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (enter && list != filFiles_) {
    Do([&] { Choose(list); });
  } else if (key == Qt::Key_Delete && list == filFiles_) {
    Do([this] { DeleteChosenFile(); });
  } else {
    return false;
  }
  return true;
}

bool RunFileScreen(QWidget* parent, FileCommand command) {
  return frmFile(command, parent).exec() == QDialog::Accepted;
}
