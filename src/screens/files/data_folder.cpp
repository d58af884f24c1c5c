#include "screens/files/data_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

constexpr const char* kSharedFolder = "/share/kelvanor";  // of an installed program

/// A build leaves its cache in the folder that it was begun in.
bool IsBuildTree(QDir folder) {
  do {
    if (folder.exists("CMakeCache.txt")) return true;
  } while (folder.cdUp());
  return false;
}

}  // namespace

QString ProgramFolder() {
  const QDir binaries(QCoreApplication::applicationDirPath());
  const QDir shared(binaries.path() + "/.." + kSharedFolder);
  return shared.exists() ? shared.canonicalPath() : binaries.path();
}

QString DataFolder(const QString& programFolder) {
  const bool installed = programFolder.endsWith(kSharedFolder);
  if (!installed && QFileInfo(programFolder).isWritable() && !IsBuildTree(programFolder))
    return programFolder;
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  QDir().mkpath(folder);
  return folder;
}
