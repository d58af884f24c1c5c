// One program at a time on a folder of saved games.
#pragma once

#include <QLockFile>
#include <QString>

/// Holds a folder for this program while it lives. The lock of a program that was killed is taken
/// over.
class FolderLock {
 public:
  explicit FolderLock(const QString& folder);

  /// False when another program that runs has the folder. A folder that can't be written needs no
  /// lock: nothing of it can be lost.
  bool Take();

  /// What a player is told who can't have the folder.
  QString Refusal() const;

 private:
  QString folder_;
  QLockFile lock_;
};
