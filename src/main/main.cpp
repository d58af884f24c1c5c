// The program's entry: lays the game down, shows the table and runs until it is closed.
#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>

#include "core/error_report.h"
#include "core/game_state.h"
#include "core/host.h"
#include "main/command_line.h"
#include "main/end_signals.h"
#include "persistence/kept_game.h"
#include "persistence/session.h"
#include "play/start_up.h"
#include "screens/files/data_folder.h"
#include "screens/files/folder_lock.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/game_commands.h"
#include "screens/table/qt_host.h"
#include "screens/table/table_settings.h"

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

bool IsSaid(std::string_view word, int argc, char* argv[]) {
  return std::find(argv + 1, argv + argc, word) != argv + argc;
}

/// Whether the desktop, or somebody who starts the program without one, names a place for windows.
bool HasDisplay(int argc, char* argv[]) {
  const bool told = IsSaid("-platform", argc, argv) || IsSaid("--platform", argc, argv);
  return told || !qEnvironmentVariableIsEmpty("DISPLAY") ||
         !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// What is answered with words, also where there is no display.
int AnswerInWords(int argc, char* argv[]) {
  const QCoreApplication words(argc, argv);
  int exitCode = 0;
  if (ReadCommandLine(QCoreApplication::arguments(), exitCode)) {
    std::fputs("kelvanor: there is no display to open the table on.\n", stderr);
    exitCode = 1;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char* argv[]) {
  static constexpr std::string_view kWords[] = {"-h", "--help", "-v", "--version"};
  const bool asks = std::any_of(std::begin(kWords), std::end(kWords),
                                [&](std::string_view word) { return IsSaid(word, argc, argv); });
  if (asks || !HasDisplay(argc, argv)) return AnswerInWords(argc, argv);
  int exitCode = 0;
  GameApplication application(argc, argv);
  QApplication::setApplicationName("kelvanor");
  QApplication::setDesktopFileName("kelvanor");
  QApplication::setWindowIcon(QIcon::fromTheme("kelvanor"));
  const auto named = ReadCommandLine(QApplication::arguments(), exitCode);
  if (!named) return exitCode;
  const QString programFolder = ProgramFolder();
  const QString dataFolder = DataFolder(programFolder);
  FolderLock folder(dataFolder);
  if (!folder.Take()) {
    QMessageBox::information(nullptr, "Kelvanor", folder.Refusal());
    return 0;
  }
  const bool firstRun = QDir(dataFolder).entryList({"*.crp"}, QDir::Files).isEmpty();
  // The first game is seeded by the clock, before there is a table.
  TheHost.Milliseconds = SystemMilliseconds;
  StartUp(WithSeparator(programFolder), WithSeparator(dataFolder));
  const QSize screen = application.primaryScreen()->size();
  Game.ScreenWidth = screen.width();
  Game.ScreenHeight = screen.height();

  ReadTableSettings();
  frmCrapTable table;
  InstallQtHost(&table);
  Guarded("Sub Main", OpenLastSession);
  table.ShowAsLeft();
  const EndSignals endSignals([&table] { table.EndUnasked(); });
  QObject::connect(
      &application, &QGuiApplication::commitDataRequest, &table, [&table] { table.LoginEnds(); },
      Qt::DirectConnection);
  QApplication::processEvents();
  Guarded("Sub Main", OfferKeptGame);
  Guarded("Sub Main", AfterTableShown);
  if (!named->isEmpty()) Guarded("Sub Main", [&] { OpenNamedFile(&table, named->toStdString()); });
  // The first steps are told at the table, or else by the handbook.
  if (firstRun && named->isEmpty() && !TheTable.Hints) ShowHandbookPage(kFirstPage);
  return QApplication::exec();
}
