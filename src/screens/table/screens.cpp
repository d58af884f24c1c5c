#include "screens/table/screens.h"

#include <QCoreApplication>

#include "screens/play/frmAutoPlay.h"
#include "screens/play/frmStackValues.h"
#include "screens/rules/frmConfigure.h"
#include "screens/scripts/frmFlags.h"
#include "screens/statistics/frmBankroll.h"
#include "screens/statistics/frmEventsLog.h"

namespace {

template <class Window>
Screen* Make(QWidget* table) {
  return new Window(table);
}

}  // namespace

std::span<const ScreenRow> AllScreens() {
  static const ScreenRow rows[] = {
      {BankrollWindow, "mnuBankroll", QT_TRANSLATE_NOOP("Screens", "Bank&roll"), Qt::Key_F12,
       Make<frmBankroll>},
      {StackValuesWindow, "mnuChipStacks", QT_TRANSLATE_NOOP("Screens", "&Chip-Stacks..."),
       Qt::Key_F11, Make<frmStackValues>},
      {EventsLogWindow, "mnuEventsLog", QT_TRANSLATE_NOOP("Screens", "&Events Log"), 0,
       Make<frmEventsLog>},
      {FlagsWindow, "mnuFlagValues", QT_TRANSLATE_NOOP("Screens", "&Flag Values..."), 0,
       Make<frmFlags>},
      {AutoPlayWindow, "mnuAutoPlay", QT_TRANSLATE_NOOP("Screens", "&Auto-Play"), 0,
       Make<frmAutoPlay>},
      {ConfigureWindow, "mnuConfigure", QT_TRANSLATE_NOOP("Screens", "&Configuration..."), 0,
       Make<frmConfigure>},
  };
  return rows;
}
