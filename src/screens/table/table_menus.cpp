#include "screens/table/table_menus.h"

#include <QCoreApplication>
#include <array>

#include "autobet/checker.h"
#include "bets/bankroll.h"
#include "bets/make_bet.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/payoff_cells.h"
#include "rules/presets.h"
#include "screens/frame/controls.h"
#include "screens/frame/menus.h"
#include "screens/frame/player_change.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/game_commands.h"
#include "screens/table/screens.h"
#include "screens/table/table_commands.h"

namespace {

constexpr int kFelts = 9;

/// The texts of this menu bar.
struct Menu {
  Q_DECLARE_TR_FUNCTIONS(TableMenus)
};

QString tr(const char* text) { return Menu::tr(text); }

QStringList Numbered(const QString& caption, int count) {
  QStringList captions;
  for (int i = 1; i <= count; ++i) captions << caption.arg(i);
  return captions;
}

/// The entry that shows a screen.
MenuRow ShowRow(WindowId id) {
  for (const ScreenRow& row : AllScreens()) {
    if (row.Id != id) continue;
    MenuRow entry = Command(row.Command, QCoreApplication::translate("Screens", row.Caption),
                            [id] { ShowScreen(id); });
    return row.Key == 0 ? entry : std::move(entry).On(QKeySequence(row.Key)).Everywhere();
  }
  return {};
}

void SeedNow() {
  if (!SeedRng(FindSeed)) return;
  ShowMessage("The random number generator has now been seeded.", "RNG Seeded", kTopicGenerators,
              OkTick);
}

void RedrawTable() { TheHost.RedrawLayout(); }

/// A sound set as a list shows it: the file name up to its first point.
QString SoundName(const std::string& file) {
  return file.empty() ? tr("none") : Text(file).section('.', 0, 0);
}

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
      row("mnuRollDice", tr("&Roll Dice"), Qt::Key_F5,
          [table] {
            if (ClickMayAct() && RightClick()) table->Roll();
          }),
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
  return {
      Command("mnuOpenAutoBet", tr("&Open Auto-Bet File..."),
              [table] { OpenAutoBetFileCommand(table); })
          .AtRest(),
      Command("mnuSaveAutoBetAs", tr("&Save Auto-Bet File As..."),
              [table] { SaveAutoBetFileAsCommand(table); })
          .AtRest(),
      Command("mnuNewAutoBet", tr("C&lear Auto-Bets..."), [table] { ClearScriptCommand(table); })
          .AtRest(),
      Separator(),
      Check(
          "mnuAutoBetActive", tr("&Activated"), [] { return Game.AutoBetActive != 0; },
          [] { ChangeByPlayer(ToggleAutoBetCommand); })
          .AtRest(),
      Command("mnuCheckBets", tr("&Check Structure"), CheckScriptCommand).AtRest(),
      ShowRow(FlagsWindow),
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
          Separator(),
          ShowRow(BankrollWindow),
          ShowRow(StackValuesWindow),
          ShowRow(EventsLogWindow)};
}

std::vector<MenuRow> ColorRows() {
  std::vector<MenuRow> rows;
  for (int i = 0; i < kColorPresets; ++i) {
    const ColorPreset& preset = kColorPresetTable[static_cast<unsigned>(i)];
    MenuRow row = Check(
        QString("mnuSetColor_%1").arg(i), Text(preset.Name),
        [&preset] {
          return Game.TableColor == preset.Colors && Game.TableFeltPattern == preset.Pattern;
        },
        [i] {
          ChangeByPlayer([i] {
            SetColorPreset(i);
            RedrawTable();
          });
        });
    row.OneOfSeveral = true;
    rows.push_back(std::move(row));
  }
  return rows;
}

/// The felt as the whole number that it is.
RecordField<int> Felt() {
  return RecordField<int>([] { return static_cast<int>(Game.TableFeltPattern); },
                          [](int pattern) { Game.TableFeltPattern = static_cast<float>(pattern); })
      .Then(RedrawTable);
}

std::vector<MenuRow> FieldPayoffRows() {
  std::vector<MenuRow> rows;
  for (int i = 0; i < kFieldPresets; ++i) {
    rows.push_back(Command(QString("mnuSetField_%1").arg(i),
                           Text(kFieldPresetNames[static_cast<unsigned>(i)]), [i] {
                             ChangeByPlayer([i] {
                               SetFieldPreset(i);
                               DeriveFieldPer();
                               RedrawTable();
                             });
                           }));
  }
  return rows;
}

std::vector<MenuRow> GeneratorRows() {
  std::vector<MenuRow> rows = Choices(
      "mnuRngChoice",
      {tr("RNG #&1"), tr("RNG #&2"), tr("RNG #&3"), tr("RNG #&4"), tr("RNG #&5"),
       tr("RNG #&6 (#1 and #5)"), tr("RNG #&7 (#2 and #4)"), tr("RNG #&8 (#1 single call)")},
      RecordField(Game.RngChoice).Then(CorrectRngChoice), Rng1Mt);
  for (MenuRow& generator : rows)
    generator.Tip =
        tr("Judge a betting system with #1, #2, #4, #7 or #8.\n"
           "#3 is too even, #5 is uneven by its formula, and #6 takes every other roll from #5.");
  rows.push_back(Separator());
  rows.push_back(Toggle("mnuUserSeed", tr("&User seed"), Game.UserSeed));
  rows.push_back(Toggle("mnuReSeed", tr("&Re-seed new games"), Game.ReSeed));
  rows.push_back(Command("mnuSeedRng", tr("&Seed RNG now"), SeedNow).AtRest());
  return rows;
}

std::vector<MenuRow> ProbabilityRows(frmCrapTable* table) {
  return {Command("mnuOpenProbability", tr("&Open Probability File..."),
                  [table] { OpenProbabilityCommand(table); })
              .AtRest(),
          Command("mnuSaveProbabilityAs", tr("&Save Probability File As..."),
                  [table] { SaveProbabilityAsCommand(table); })
              .AtRest(),
          Separator(),
          Toggle("mnuUseSkewedProbability", tr("&Use Skewed Dice"), Game.UseSkewedProbability)};
}

std::vector<MenuRow> TapeRows(frmCrapTable* table) {
  std::vector<MenuRow> rows = {
      Command("mnuNewOpen", tr("&New or Open..."), [table] { OpenDiceRollsCommand(table); })
          .AtRest(),
      Command("mnuCloseRolls", tr("&Close"), CloseDiceRollsCommand).AtRest(), Separator()};
  for (MenuRow& row : Choices("mnuRecorder", {tr("Recorder &Off"), tr("&Record"), tr("&Playback")},
                              RecordField(Game.RecorderStatus).Through(SetRecorderCommand)))
    rows.push_back(std::move(row));
  rows.push_back(Separator());
  rows.push_back(
      Command("mnuFirstRoll", tr("Go to the &First Roll"), RewindDiceRollsCommand).AtRest());
  rows.push_back(
      Command("mnuBehindLastRoll", tr("Go behind the &Last Roll"), ToEndOfDiceRollsCommand)
          .AtRest());
  return rows;
}

MenuRow SoundChoices(const QString& name, const QString& caption,
                     const std::vector<std::string>& list, RecordField<int> field) {
  QStringList captions;
  for (const std::string& file : list) captions << SoundName(file);
  return Submenu(name, caption, Choices(name, captions, field));
}

std::vector<MenuRow> SoundRows() {
  return {SoundChoices("mnuStickPerson", tr("&Stick Person"), Game.StickPersons,
                       RecordField(Game.StickPerson).Then([] {
                         LoadStickPerson();
                         PlayStickCall(StickPass, false);
                       })),
          SoundChoices("mnuDiceSound", tr("&Dice"), Game.DiceSounds,
                       RecordField(Game.DiceSound).Then(PlayDiceSound)),
          SoundChoices("mnuChipSound", tr("&Chips"), Game.ChipSounds,
                       RecordField(Game.ChipSound).Then(PlayChipSound)),
          SoundChoices("mnuWinSound", tr("&Wins"), Game.WinSounds,
                       RecordField(Game.WinSound).Then([] { PlayWinSound(false); })),
          Separator(),
          Toggle("mnuDisableAllSound", tr("Disable &all game sounds"),
                 RecordField(Game.DisableAllSound).Then([] { TheHost.StopSound(); }))};
}

std::vector<MenuRow> NoticeRows() {
  const QStringList captions = {tr("&Actions not allowed"), tr("&Betting limits reached"),
                                tr("&Charges and/or change"), tr("Auto-Bet messages &normal play"),
                                tr("Auto-Bet messages &Hyper-Drive")};
  std::vector<MenuRow> rows;
  for (int i = 0; i < captions.size(); ++i)
    rows.push_back(Toggle(QString("mnuNotify_%1").arg(i), captions[i], BitOf(Game.Notify, 1 << i)));
  rows.push_back(Separator());
  rows.push_back(Toggle("mnuSnapMouse", tr("&Snap mouse-pointer"), Game.SnapMouse));
  return rows;
}

std::vector<MenuRow> OptionRows(frmCrapTable* table) {
  const auto sendHome = [] {
    if (Game.DiceAction != DiceRemainOnTable) TheHost.SendDiceHome();
  };
  return {Submenu("mnuOptionsColors", tr("Table &Colors"), ColorRows()),
          Submenu("mnuFeltPattern", tr("&Felt Pattern"),
                  Choices("mnuFeltPattern", Numbered(tr("Felt &%1"), kFelts), Felt())),
          Submenu("mnuChipStyle", tr("C&hip Set"),
                  Choices("mnuChipStyle", Numbered(tr("Chip set &%1"), kChipStyles),
                          RecordField(Game.ChipStyle).Then(RedrawTable), 1)),
          Submenu("mnuDiceStyle", tr("&Dice Set"),
                  Choices("mnuDiceStyle", Numbered(tr("Dice set &%1"), kDiceStyles),
                          RecordField(Game.DiceStyle).Then(RedrawTable), 1)),
          Submenu("mnuDiceAction", tr("D&ice Action"),
                  Choices("mnuDiceAction",
                          {tr("&Stationary"), tr("&Return after thrown"), tr("Return on &decision"),
                           tr("Remain on &table")},
                          RecordField(Game.DiceAction).Then(sendHome), DiceStationary)),
          Submenu("mnuOptionsPayoffs", tr("&Set Field payoffs to"), FieldPayoffRows()),
          Separator(),
          ShowRow(AutoPlayWindow),
          Separator(),
          Submenu("mnuRng", tr("&Random Numbers"), GeneratorRows()),
          Submenu("mnuProbability", tr("&Probabilities"), ProbabilityRows(table)),
          Submenu("mnuDiceRollFiles", tr("Dice Ro&ll Files"), TapeRows(table)),
          Submenu("mnuSound", tr("S&ound"), SoundRows()),
          Submenu("mnuNotices", tr("&Notices"), NoticeRows())};
}

}  // namespace

void MakeTableMenus(frmCrapTable* table, Menus& menus) {
  menus.Add("mnuGame", tr("&Game"), GameRows(table));
  menus.Add("mnuAction", tr("&Action"), ActionRows(table));
  menus.Add("mnuAutoBet", tr("Auto-&Bet"), AutoBetRows(table));
  menus.Add("mnuView", tr("&View"), ViewRows());
  menus.Add("mnuOptions", tr("&Options"), OptionRows(table));
}
