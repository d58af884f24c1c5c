#include "screens/files/folder_lock.h"

#include <QDir>
#include <QObject>

FolderLock::FolderLock(const QString& folder)
    : folder_(folder), lock_(QDir(folder).filePath("kelvanor.lock")) {
  lock_.setStaleLockTime(0);  // however long a program runs, the folder stays its own
}

bool FolderLock::Take() { return lock_.tryLock() || lock_.error() != QLockFile::LockFailedError; }

QString FolderLock::Refusal() const {
  return QObject::tr(
             "Kelvanor is already running, and keeps its games in the same folder:\n\n%1\n\n"
             "Please go on in the window that is open, or close it first.")
      .arg(QDir::toNativeSeparators(folder_));
}
