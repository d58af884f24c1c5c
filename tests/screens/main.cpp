// The screens' tests in one program: `screen_tests NAME [OPTION...]` runs the tests of one file,
// without a name all of them.
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "screens/screen_tests.h"

int main(int argc, char** argv) {
  QApplication::setAttribute(Qt::AA_Use96Dpi);
  QApplication application(argc, argv);
  const QTemporaryDir settings;  // not the settings of whoever runs the tests
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  QStringList arguments = application.arguments();
  const QString wanted = arguments.size() > 1 ? arguments[1] : QString();
  const bool named = ScreenTests().contains(wanted);
  if (named) arguments.removeAt(1);
  int failed = 0;
  for (const auto& [name, make] : ScreenTests().asKeyValueRange()) {
    if (named && name != wanted) continue;
    const std::unique_ptr<QObject> test = make();
    failed += QTest::qExec(test.get(), arguments);
  }
  return failed;
}
