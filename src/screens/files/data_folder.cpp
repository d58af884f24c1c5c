#include "screens/files/data_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// A build leaves its cache in the folder that it was begun in.
bool IsBuildTree(QDir folder) {
  do {
    if (folder.exists("CMakeCache.txt")) return true;
  } while (folder.cdUp());
  return false;
}

}  // namespace

QString DataFolder(const QString& programFolder) {
  if (QFileInfo(programFolder).isWritable() && !IsBuildTree(programFolder)) return programFolder;
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  QDir().mkpath(folder);
  return folder;
}
