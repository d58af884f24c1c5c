#include "screens/files/frmFile.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QStringListModel>
#include <QStyle>
#include <filesystem>
#include <system_error>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/window_places.h"

namespace {

constexpr const char* kPlace = "File Screen";
constexpr QSize kAtStart(620, 420);
constexpr int kPathRole = Qt::UserRole;
constexpr int kLettersOfList = 24;  // of the narrowest list
constexpr int kLinesOfList = 6;
constexpr QSize kIconSize(16, 16);

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString CleanFolder(const QString& folder) {
  return QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
}

/// Fails with the system's reason when a folder can't be listed.
void CheckFolder(const QString& folder) {
  const auto path = PathOf(folder.toStdString());
  static_cast<void>(std::filesystem::directory_iterator(path));
}

QDir::SortFlags ByName() { return QDir::Name | QDir::IgnoreCase | QDir::LocaleAware; }

QString WithSlash(const QString& folder) { return folder.endsWith('/') ? folder : folder + '/'; }

struct Place {
  QString Caption;
  QString Folder;
};

/// Where files may lie: the game's own folders, the player's, and the roots.
QList<Place> Places() {
  QList<Place> places;
  const auto add = [&](const QString& caption, const QString& folder) {
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) return;
    const QString clean = CleanFolder(folder);
    for (const Place& place : places) {
      if (place.Folder == clean) return;
    }
    places.append({caption, clean});
  };
  add(QObject::tr("Kelvanor"), Text(Game.DataPath));
  add(QObject::tr("Examples"), Text(Game.AppPath) + "examples");
  add(QObject::tr("Documents"),
      QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  add(QObject::tr("Home"), QDir::homePath());
  for (const QFileInfo& root : QDir::drives())
    add(QDir::toNativeSeparators(root.absoluteFilePath()), root.absoluteFilePath());
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    const QString folder = volume.rootPath();
    const bool forPlayers = folder.startsWith("/media/") || folder.startsWith("/run/media/") ||
                            folder.startsWith("/Volumes/") || folder.startsWith("/mnt/");
    if (forPlayers && volume.isReady()) add(volume.displayName(), folder);
  }
  return places;
}

void AddRow(QListWidget* list, const QString& caption, const QString& path, const QIcon& icon) {
  QListWidgetItem* item = new QListWidgetItem(icon, caption, list);
  item->setData(kPathRole, path);
  item->setToolTip(QDir::toNativeSeparators(path));
}

}  // namespace

frmFile::frmFile(FileCommand command, QWidget* parent) : QDialog(parent), command_(command) {
  setObjectName("frmFile");
  setWindowTitle(Text(RowOf(command).Title));
  QHBoxLayout* row = new QHBoxLayout(this);
  QGridLayout* grid = new QGridLayout;
  row->addLayout(grid, 1);
  MakeNameBox(grid);
  MakeLists(grid);
  QVBoxLayout* buttons = new QVBoxLayout;
  row->addLayout(buttons);
  MakeButtons(buttons);
  resize(kAtStart.expandedTo(sizeHint()));
  setSizeGripEnabled(true);
  folder_ = QDir::rootPath();
  if (!GoTo(Text(Game.DataPath))) GoTo(QDir::homePath());
  StartWithOpenFile();
  FollowPlace(this, FileWindow);
}

// ---- The pieces ----

void frmFile::MakeNameBox(QGridLayout* grid) {
  txtFileName_ = new QLineEdit(this);
  txtFileName_->setObjectName("txtFileName");
  QLabel* label = new QLabel(tr("File &name:"), this);
  label->setBuddy(txtFileName_);
  completer_ = new QCompleter(new QStringListModel(this), this);
  completer_->setCaseSensitivity(Qt::CaseInsensitive);
  txtFileName_->setCompleter(completer_);
  // The list of completions takes the Enter key; with none of them chosen it is meant for OK.
  connect(txtFileName_, &QLineEdit::returnPressed, this, [this] {
    QAbstractItemView* list = completer_->popup();
    if (!list->isVisible() || list->currentIndex().isValid()) return;
    list->hide();
    QMetaObject::invokeMethod(this, &frmFile::Accept, Qt::QueuedConnection);
  });
  grid->addWidget(label, 0, 0);
  grid->addWidget(txtFileName_, 1, 0, 1, 2);
}

QListWidget* frmFile::MakeList(const char* name, const QString& caption) {
  QListWidget* list = new QListWidget(this);
  list->setObjectName(name);
  list->setAccessibleName(caption);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->setUniformItemSizes(true);
  list->setTextElideMode(Qt::ElideMiddle);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setIconSize(kIconSize);
  list->setMinimumSize(kLettersOfList * fontMetrics().averageCharWidth(),
                       kLinesOfList * fontMetrics().lineSpacing());
  list->installEventFilter(this);
  return list;
}

void frmFile::MakeLists(QGridLayout* grid) {
  const QString files = tr("F&iles (%1):").arg(Text(RowOf(command_).Pattern));
  filFiles_ = MakeList("filFiles", tr("Files"));
  connect(filFiles_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item) txtFileName_->setText(item->text());
  });
  connect(filFiles_, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { txtFileName_->setText(item->text()); });
  connect(filFiles_, &QListWidget::itemDoubleClicked, this, [this] { Accept(); });
  dirDirectory_ = MakeList("dirDirectory", tr("Folders"));
  connect(dirDirectory_, &QListWidget::itemDoubleClicked, this, &frmFile::EnterFolder);
  drvDrive_ = new QComboBox(this);
  drvDrive_->setObjectName("drvDrive");
  drvDrive_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(drvDrive_, &QComboBox::activated, this, &frmFile::ChoosePlace);

  lblNoFiles_ = new QLabel(tr("There are no such files in this folder."));
  lblNoFiles_->setObjectName("lblNoFiles");
  lblNoFiles_->setAlignment(Qt::AlignCenter);
  lblNoFiles_->setWordWrap(true);
  lblNoFiles_->setEnabled(false);
  (new QVBoxLayout(filFiles_->viewport()))->addWidget(lblNoFiles_);
  lblFolder_ = new QLabel(this);
  lblFolder_->setObjectName("lblFolder");
  lblFolder_->setTextFormat(Qt::PlainText);
  lblFolder_->setMinimumWidth(1);  // a long path is cut rather than widen the screen
  lblFolder_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

  const auto label = [&](const QString& caption, QWidget* buddy, int gridRow, int column) {
    QLabel* text = new QLabel(caption, this);
    text->setBuddy(buddy);
    grid->addWidget(text, gridRow, column);
  };
  grid->addWidget(lblFolder_, 2, 0, 1, 2);
  label(files, filFiles_, 3, 0);
  label(tr("&Folders:"), dirDirectory_, 3, 1);
  grid->addWidget(filFiles_, 4, 0, 3, 1);
  grid->addWidget(dirDirectory_, 4, 1);
  label(tr("&Places:"), drvDrive_, 5, 1);
  grid->addWidget(drvDrive_, 6, 1);
  grid->setRowStretch(4, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
}

void frmFile::MakeButtons(QVBoxLayout* column) {
  const auto add = [&](const char* name, const QString& caption, auto act) {
    QPushButton* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    column->addWidget(button);
    return button;
  };
  cmdOK_ = add("cmdOK", tr("&OK"), [this] { Accept(); });
  cmdOK_->setDefault(true);
  add("cmdCancel", tr("&Close"), [this] { reject(); });
  add("cmdHelp", tr("&Help"), [] { ShowHelp(kTopicFiles); });
  column->addStretch(1);
}

// ---- Folders and files ----

bool frmFile::GoTo(const QString& folder) {
  const QString target = CleanFolder(folder);
  try {
    CheckFolder(target);
  } catch (const std::filesystem::filesystem_error& failure) {
    ReportError(kPlace);
    ShowMessage(QDir::toNativeSeparators(target).toStdString() +
                    "\n\ncan't be opened:  " + failure.code().message(),
                std::string(RowOf(command_).Title), kTopicFiles, OkStop);
    ShowFolder();
    return false;
  }
  folder_ = target;
  ShowFolder();
  return true;
}

void frmFile::ShowFolder() {
  const QIcon icon = style()->standardIcon(QStyle::SP_DirIcon);
  const QDir dir(folder_);
  dirDirectory_->clear();
  if (!dir.isRoot()) {
    AddRow(dirDirectory_, "..", CleanFolder(dir.filePath("..")),
           style()->standardIcon(QStyle::SP_FileDialogToParent));
  }
  for (const QString& name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, ByName()))
    AddRow(dirDirectory_, name, dir.filePath(name), icon);
  ShowPath();
  ShowPlaces();
  ShowFiles();
}

/// The folder in force; of a long path the end stays in sight.
void frmFile::ShowPath() {
  const QString path = QDir::toNativeSeparators(folder_);
  lblFolder_->setText(
      lblFolder_->fontMetrics().elidedText(path, Qt::ElideLeft, lblFolder_->width()));
  lblFolder_->setToolTip(path);
}

void frmFile::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  ShowPath();
}

/// The place that the folder lies in most closely is the one shown.
void frmFile::ShowPlaces() {
  drvDrive_->clear();
  qsizetype closest = 0;
  for (const Place& place : Places()) {
    drvDrive_->addItem(place.Caption, place.Folder);
    drvDrive_->setItemData(drvDrive_->count() - 1, QDir::toNativeSeparators(place.Folder),
                           Qt::ToolTipRole);
    const bool within = WithSlash(folder_).startsWith(WithSlash(place.Folder));
    if (!within || place.Folder.size() < closest) continue;
    closest = place.Folder.size();
    drvDrive_->setCurrentIndex(drvDrive_->count() - 1);
  }
}

void frmFile::ShowFiles() {
  const QStringList patterns{command_ == FileCommand::SelectOutput ||
                                     command_ == FileCommand::PasteDiceRollsFromText
                                 ? QString("*")
                                 : Text(RowOf(command_).Pattern)};
  const QStringList names = QDir(folder_).entryList(patterns, QDir::Files, ByName());
  const QSignalBlocker quiet(filFiles_);
  filFiles_->clear();
  const QIcon icon = style()->standardIcon(QStyle::SP_FileIcon);
  for (const QString& name : names) AddRow(filFiles_, name, QDir(folder_).filePath(name), icon);
  static_cast<QStringListModel*>(completer_->model())->setStringList(names);
  lblNoFiles_->setVisible(names.isEmpty());
}

void frmFile::ChoosePlace(int index) { GoTo(drvDrive_->itemData(index).toString()); }

void frmFile::EnterFolder(const QListWidgetItem* item) {
  if (item) GoTo(QString(item->data(kPathRole).toString()));
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

void frmFile::DeleteChosenFile() {
  const QListWidgetItem* item = filFiles_->currentItem();
  if (!item) return;
  const int row = filFiles_->currentRow();
  const QString name = item->text();
  Guarded(kPlace, [&] {
    if (!DeleteFileByKey(item->data(kPathRole).toString().toStdString())) return;
    if (txtFileName_->text() == name) txtFileName_->clear();
    ShowFiles();
    filFiles_->setCurrentRow(qMin(row, filFiles_->count() - 1));
  });
}

/// The name of a folder in the box leads into it.
bool frmFile::EnteredFolder() {
  const QString folder = QDir(folder_).filePath(txtFileName_->text().trimmed());
  if (!QFileInfo(folder).isDir()) return false;
  if (GoTo(folder)) txtFileName_->clear();
  return true;
}

void frmFile::Accept() {
  const std::string title(RowOf(command_).Title);
  const std::string path = CompletePath(txtFileName_->text().toStdString(), folder_.toStdString(),
                                        RowOf(command_).Pattern);
  if (path.empty()) {
    ShowMessage("Please enter a file name.", "Missing Filename", kTopicFiles, OkStop);
    txtFileName_->setFocus();
    return;
  }
  if (EnteredFolder()) return;
  bool done = false;
  Guarded(title.c_str(), [&] { done = RunFileCommand(command_, path); });
  if (done) {
    accept();
    return;
  }
  ShowFiles();
  txtFileName_->setFocus();
  txtFileName_->selectAll();
}

bool frmFile::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (watched == dirDirectory_ && enter) {
    EnterFolder(dirDirectory_->currentItem());
    return true;
  }
  if (watched == filFiles_ && key == Qt::Key_Delete) {
    DeleteChosenFile();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void frmFile::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    ShowHelp(kTopicFiles);
  } else {
    QDialog::keyPressEvent(event);
  }
}

bool RunFileScreen(QWidget* parent, FileCommand command) {
  return frmFile(command, parent).exec() == QDialog::Accepted;
}
