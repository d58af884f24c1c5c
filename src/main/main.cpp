// The program's entry: lays the game down, shows the table and runs until it is closed.
#include <QApplication>
#include <QMessageBox>
#include <QScreen>
#include <exception>

#include "core/error_report.h"
#include "core/game_state.h"
#include "core/host.h"
#include "persistence/session.h"
#include "play/start_up.h"
#include "screens/files/data_folder.h"
#include "screens/files/folder_lock.h"
#include "screens/frame/guard.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/qt_host.h"

namespace {

/// A fault gives up the event that it arose in; the game goes on.
class GameApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception&) {
      ReportError("Crap Table");
      return false;
    }
  }
};

std::string WithSeparator(const QString& folder) { return (folder + "/").toStdString(); }

}  // namespace

int main(int argc, char* argv[]) {
  GameApplication application(argc, argv);
  QApplication::setApplicationName("kelvanor");
  const QString programFolder = QApplication::applicationDirPath();
  const QString dataFolder = DataFolder(programFolder);
  FolderLock folder(dataFolder);
  if (!folder.Take()) {
    QMessageBox::information(nullptr, "Kelvanor", folder.Refusal());
    return 0;
  }
  // The first game is seeded by the clock, before there is a table.
  TheHost.Milliseconds = SystemMilliseconds;
  StartUp(WithSeparator(programFolder), WithSeparator(dataFolder));
  const QSize screen = application.primaryScreen()->size();
  Game.ScreenWidth = screen.width();
  Game.ScreenHeight = screen.height();

  frmCrapTable table;
  InstallQtHost(&table);
  Guarded("Sub Main", OpenLastSession);
  table.ShowAsLeft();
  QApplication::processEvents();
  Guarded("Sub Main", AfterTableShown);
  return QApplication::exec();
}
