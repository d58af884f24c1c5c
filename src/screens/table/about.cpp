#include "screens/table/about.h"

#include <QObject>

#include "core/help_topics.h"
#include "core/messages.h"

void ShowAbout() {
  ShowMessage(
      QObject::tr("Kelvanor %1\n\nA craps table for practising the game and for testing betting "
                  "systems.\n\nCopyright (c) 2026 The Kelvanor developers\n\n"
                  "Free software under the MIT License: use it, change it and pass it on, with its "
                  "copyright notice and without any warranty.")
          .arg(KELVANOR_VERSION)
          .toStdString(),
      "About Kelvanor", kTopicAbout, OkTick);
}
