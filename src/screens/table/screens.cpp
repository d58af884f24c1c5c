#include "screens/table/screens.h"

#include <QCoreApplication>

#include "screens/files/frmDiceRollFiles.h"
#include "screens/play/frmAutoPlay.h"
#include "screens/play/frmRYON.h"
#include "screens/play/frmStackValues.h"
#include "screens/rules/frmConfigure.h"
#include "screens/scripts/frmAutoBet.h"
#include "screens/scripts/frmFlags.h"
#include "screens/scripts/frmHotKeys.h"
#include "screens/statistics/frmBankroll.h"
#include "screens/statistics/frmBetResults.h"
#include "screens/statistics/frmBetTrends.h"
#include "screens/statistics/frmEventsLog.h"
#include "screens/statistics/frmGames.h"
#include "screens/statistics/frmRollFreqs.h"
#include "screens/statistics/frmRollTotals.h"
#include "screens/statistics/frmSummary.h"

namespace {

constexpr int kShift = static_cast<int>(Qt::SHIFT);

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
      {GamesWindow, "mnuGamesLog", QT_TRANSLATE_NOOP("Screens", "&Games Log"), 0, Make<frmGames>},
      {SummaryWindow, "mnuSummary", QT_TRANSLATE_NOOP("Screens", "&Summary"), kShift + Qt::Key_F9,
       Make<frmSummary>},
      {RollTotalsWindow, "mnuRollTotals", QT_TRANSLATE_NOOP("Screens", "Roll &Totals"),
       kShift + Qt::Key_F3, Make<frmRollTotals>},
      {RollFreqsWindow, "mnuRollFreqs", QT_TRANSLATE_NOOP("Screens", "Roll &Frequencies"),
       kShift + Qt::Key_F4, Make<frmRollFreqs>},
      {BetResultsWindow, "mnuBetResults", QT_TRANSLATE_NOOP("Screens", "Bet Res&ults"),
       kShift + Qt::Key_F5, Make<frmBetResults>},
      {BetTrendsWindow, "mnuBetTrends", QT_TRANSLATE_NOOP("Screens", "Bet Tre&nds"),
       kShift + Qt::Key_F6, Make<frmBetTrends>},
      {AutoBetWindow, "mnuAutoBetScreen", QT_TRANSLATE_NOOP("Screens", "Script &Editor..."), 0,
       Make<frmAutoBet>},
      {FlagsWindow, "mnuFlagValues", QT_TRANSLATE_NOOP("Screens", "&Flag Values..."), 0,
       Make<frmFlags>},
      {HotKeysWindow, "mnuHotKeys", QT_TRANSLATE_NOOP("Screens", "Hot-&Keys..."), 0,
       Make<frmHotKeys>},
      {AutoPlayWindow, "mnuAutoPlay", QT_TRANSLATE_NOOP("Screens", "&Auto-Play"), 0,
       Make<frmAutoPlay>},
      {RollPadWindow, "mnuRollYourOwnNumbers",
       QT_TRANSLATE_NOOP("Screens", "&Roll Your Own Numbers"), 0, Make<frmRYON>},
      {ConfigureWindow, "mnuConfigure", QT_TRANSLATE_NOOP("Screens", "&Configuration..."), 0,
       Make<frmConfigure>},
      {DiceRollFilesWindow, "mnuDiceRollFiles", QT_TRANSLATE_NOOP("Screens", "Dice Ro&ll Files..."),
       0, Make<frmDiceRollFiles>},
  };
  return rows;
}
