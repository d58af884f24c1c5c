#include "screens/table/table_menus.h"

#include <QCoreApplication>

#include "autobet/checker.h"
#include "bets/bankroll.h"
#include "bets/make_bet.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "play/roll_cycle.h"
#include "screens/files/tape_commands.h"
#include "screens/frame/controls.h"
#include "screens/frame/handbook.h"
#include "screens/frame/help.h"
#include "screens/frame/menus.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/about.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/game_commands.h"
#include "screens/table/screens.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_settings.h"

namespace {

/// The texts of this menu bar.
struct Menu {
  Q_DECLARE_TR_FUNCTIONS(TableMenus)
};

QString tr(const char* text) { return Menu::tr(text); }

QString CaptionOf(const ScreenRow& row) {
  return QCoreApplication::translate("Screens", row.Caption);
}

/// The manual roll pad is shown and hidden by a check mark.
MenuRow PadRow(const ScreenRow& row) {
  const auto isShown = [] {
    const Screen* pad = FindScreen(RollPadWindow);
    return pad && pad->isVisible();
  };
  return Check(row.Command, CaptionOf(row), isShown, [isShown] {
    ChangeByPlayer([isShown] {
      if (isShown())
        FindScreen(RollPadWindow)->close();
      else
        ShowScreen(RollPadWindow);
    });
  });
}

/// The entry that shows a screen.
MenuRow ShowRow(WindowId id) {
  for (const ScreenRow& row : AllScreens()) {
    if (row.Id != id) continue;
    MenuRow entry = id == RollPadWindow ? PadRow(row) : RowThatShows(id);
    return row.Key == 0 ? entry : std::move(entry).On(QKeySequence(row.Key)).Everywhere();
  }
  return {};
}

void RedrawTable() { TheHost.RedrawLayout(); }

// ---- The menus ----

std::vector<MenuRow> GameRows(frmCrapTable* table) {
  const auto atm = [](const char* name, const QString& caption, AtmKind kind) {
    return Command(name, caption,
                   [kind] {
                     if (Game.AtmAmount > 0) AtmTransaction(kind, Game.AtmAmount);
                   })
        .AtRest()
        .Named([caption] { return caption + " $" + Text(MoneyText(Game.AtmAmount)); });
  };
  return {Command("mnuNew", tr("&New"), [table] { NewGameCommand(table); })
              .AtRest()
              .On(Qt::Key_F2)
              .Everywhere(),
          Command("mnuOpenGame", tr("&Open Game..."), [table] { OpenGameCommand(table); }).AtRest(),
          Command("mnuSaveGame", tr("&Save Game"), [table] { SaveGameCommand(table); })
              .AtRest()
              .On(Qt::SHIFT | Qt::Key_F12)
              .Everywhere(),
          Command("mnuSaveGameAs", tr("Save Game &As..."), [table] { SaveGameAsCommand(table); })
              .AtRest(),
          Separator(),
          atm("mnuAtmWithdraw", tr("ATM &Withdraw"), AtmWithdrawal),
          atm("mnuAtmDeposit", tr("ATM &Deposit"), AtmDeposit),
          Separator(),
          Command("mnuExit", tr("E&xit"), [table] { table->close(); }).On(Qt::ALT | Qt::Key_F4)};
}

std::vector<MenuRow> ActionRows(frmCrapTable* table) {
  const auto row = [](const char* name, const QString& caption, QKeySequence key,
                      std::function<void()> act) {
    return Command(name, caption, std::move(act)).AtRest().On(key).Everywhere();
  };
  const auto here = [](const char* name, const QString& caption, QKeySequence key,
                       std::function<void()> act) {
    return Command(name, caption, std::move(act)).AtRest().On(key);
  };
  return {
      row("mnuRollDice", tr("&Roll Dice"), Qt::Key_F5, [table] { table->RollByCommand(); }),
      Separator(),
      row("mnuBuyPlaceBet", tr("&Buy Place Bet"), Qt::Key_F6, BuyPlaceBetCommand),
      row("mnuCallBetOn", tr("Call Bet &ON"), Qt::Key_F7, CallBetOnCommand),
      row("mnuCallBetOff", tr("Call Bet O&FF"), Qt::Key_F8, CallBetOffCommand),
      here("mnuRemoveBet", tr("Re&move Bet"), Qt::Key_Delete, RemoveBetCommand),
      Separator(),
      row("mnuCallAllBetsOn", tr("&Call All Bets ON"), Qt::SHIFT | Qt::Key_F7,
          [] { CallAllBets(CallCodeOn); }),
      row("mnuCallAllBetsOff", tr("Ca&ll All Bets OFF"), Qt::SHIFT | Qt::Key_F8,
          [] { CallAllBets(CallCodeOff); }),
      here("mnuRemoveAllBets", tr("Remove &All Bets"), Qt::SHIFT | Qt::Key_Delete, RemoveAllBets),
      Separator(),
      Toggle("mnuKeyInBetAmounts", tr("&Key In Bet Amounts"),
             RecordField(Game.KeyInBetAmounts).Then(CloseKeyedBox))
          .On(Qt::Key_F9)
          .Everywhere()};
}

std::vector<MenuRow> AutoBetRows(frmCrapTable* table) {
  return {ShowRow(AutoBetWindow),
          Command("mnuOpenAutoBet", tr("&Open Auto-Bet File..."),
                  [table] { OpenAutoBetFileCommand(table); })
              .AtRest(),
          Command("mnuSaveAutoBetAs", tr("&Save Auto-Bet File As..."),
                  [table] { SaveAutoBetFileAsCommand(table); })
              .AtRest(),
          Command("mnuNewAutoBet", tr("C&lear Auto-Bets..."), ClearScriptCommand)
              .When([] { return Game.ScrCount > 0 && !Game.RollInProgress; },
                    tr("There are no Auto-Bets to clear.")),
          Separator(),
          Check(
              "mnuAutoBetActive", tr("&Activated"), [] { return Game.AutoBetActive != 0; },
              [] { ChangeByPlayer(ToggleAutoBetCommand); })
              .AtRest(),
          Command("mnuCheckBets", tr("&Check Structure"), CheckScriptCommand).AtRest(),
          ShowRow(FlagsWindow),
          ShowRow(HotKeysWindow),
          Separator(),
          Toggle("mnuShowLoggedMessagesNormal", tr("Show Logged Messages, &Normal Play"),
                 BitOf(Game.Notify, NoticeAutoBet)),
          Toggle("mnuShowLoggedMessagesHyper", tr("Show Logged Messages, &Hyper-Drive"),
                 BitOf(Game.Notify, NoticeAutoBetHyper))};
}

std::vector<MenuRow> ViewRows() {
  return {Toggle("mnuDisplayBetAmounts", tr("Display &Bet Amounts"), Game.DisplayBetAmounts)
              .On(Qt::Key_F3)
              .Everywhere(),
          Toggle("mnuDisplayHopBets", tr("Display &Hop Bets"),
                 RecordField(Game.DisplayHopBets).Then(RedrawTable))
              .On(Qt::Key_F4)
              .Everywhere(),
          Submenu("mnuTable", tr("T&able"), TableSettingsRows()),
          Separator(),
          ShowRow(BankrollWindow),
          ShowRow(SummaryWindow),
          ShowRow(RollTotalsWindow),
          ShowRow(RollFreqsWindow),
          ShowRow(BetResultsWindow),
          ShowRow(BetTrendsWindow),
          Separator(),
          ShowRow(StackValuesWindow),
          ShowRow(EventsLogWindow),
          ShowRow(GamesWindow)};
}

std::vector<MenuRow> OptionRows() {
  return {ShowRow(ConfigureWindow),
          ShowRow(AutoPlayWindow),
          Separator(),
          ShowRow(RollPadWindow),
          ShowRow(DiceRollFilesWindow),
          Submenu("mnuRecorder", tr("Dice Roll R&ecorder"),
                  Choices("mnuRecorder", {tr("&Off"), tr("&Record"), tr("&Playback")},
                          RecordField(Game.RecorderStatus).Through(SetRecorderCommand)))};
}

std::vector<MenuRow> HelpRows() {
  return {Command("mnuHandbook", tr("&Handbook"), [] { ShowHandbookPage(kContentsPage); }),
          Command("mnuFirstSteps", tr("&First Steps"), [] { ShowHandbookPage(kFirstPage); }),
          Separator(), Command("mnuAbout", tr("&About Kelvanor"), ShowAbout)};
}

}  // namespace

void MakeTableMenus(frmCrapTable* table, Menus& menus) {
  menus.Add("mnuGame", tr("&Game"), GameRows(table));
  menus.Add("mnuAction", tr("&Action"), ActionRows(table));
  menus.Add("mnuAutoBet", tr("Auto-&Bet"), AutoBetRows(table));
  menus.Add("mnuView", tr("&View"), ViewRows());
  menus.Add("mnuOptions", tr("&Options"), OptionRows());
  menus.Add("mnuHelp", tr("&Help"), HelpRows());
}
