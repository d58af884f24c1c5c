#include "screens/frame/help.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "core/game_state.h"

void ShowHelp(int topic) {
  const QString path = QString::fromStdString(Game.AppPath) + "kelvanor.chm";
  if (!QFileInfo::exists(path)) return;
  QUrl url = QUrl::fromLocalFile(path);
  url.setFragment(QString::number(topic));
  QDesktopServices::openUrl(url);
}
