#include "screens/table/table_menus.h"

#include <QActionGroup>
#include <QMenuBar>
#include <array>

#include "autobet/checker.h"
#include "bets/bankroll.h"
#include "bets/chips.h"
#include "bets/make_bet.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/presets.h"
#include "rules/validators.h"
#include "screens/frame/guard.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/game_commands.h"
#include "screens/table/table_commands.h"

namespace {

constexpr int kFelts = 9;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList Numbered(const QString& caption, int count) {
  QStringList captions;
  for (int i = 1; i <= count; ++i) captions << caption.arg(i);
  return captions;
}

void SeedNow() {
  if (!SeedRng(FindSeed)) return;
  ShowMessage("The random number generator has now been seeded.", "RNG Seeded", kTopicGenerators,
              OkTick);
}

void LoadFieldPreset(int preset) {
  SetFieldPreset(preset);
  DeriveFieldPer();
  TheHost.RedrawLayout();
}

/// A sound set as a list shows it: the file name up to its first point.
QString SoundName(const std::string& file) {
  return file.empty() ? QString("none") : Text(file).section('.', 0, 0);
}

}  // namespace

TableMenus::TableMenus(QMainWindow* table, TableActions actions)
    : table_(table), actions_(std::move(actions)) {
  MakeGameMenu();
  MakeActionMenu();
  MakeAutoBetMenu();
  MakeViewMenu();
  MakeOptionsMenu();
  Refresh();
}

// ---- The pieces ----

QMenu* TableMenus::Menu(QWidget* parent, const char* name, const QString& caption) {
  QMenu* menu = new QMenu(caption, parent);
  menu->setObjectName(name);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [this] { Refresh(); });
  if (QMenu* above = qobject_cast<QMenu*>(parent)) {
    above->addMenu(menu);
  } else {
    table_->menuBar()->addMenu(menu);
  }
  return menu;
}

TableMenus::Item& TableMenus::Command(QMenu* menu, const char* name, const QString& caption,
                                      Needs when, std::function<void()> act) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(name);
  QObject::connect(action, &QAction::triggered, table_, [this, when, act = std::move(act)] {
    if (when == Needs::TableAtRest && !TableAtRest()) {
      Refresh();
      return;
    }
    Guarded("Table Menu", act);
    TheHost.RedrawBets();
    Refresh();
  });
  items_.push_back({action, when, {}, {}});
  return items_.back();
}

void TableMenus::Toggle(QMenu* menu, const char* name, const QString& caption, Needs when,
                        bool& field, std::function<void()> after) {
  Item& item = Command(menu, name, caption, when, [&field, after = std::move(after)] {
    field = !field;
    if (after) after();
  });
  item.Action->setCheckable(true);
  item.Checked = [&field] { return field; };
}

void TableMenus::Choice(QMenu* menu, const QString& name, const QString& caption, Needs when,
                        std::function<bool()> chosen, std::function<void()> choose) {
  Item& item = Command(menu, name.toUtf8().constData(), caption, when, std::move(choose));
  item.Action->setCheckable(true);
  item.Checked = std::move(chosen);
}

void TableMenus::MakeExclusive(QMenu* menu) {
  auto* group = new QActionGroup(menu);
  group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
  for (QAction* action : menu->actions()) group->addAction(action);
}

void TableMenus::Choices(QMenu* menu, const char* name, const QStringList& captions, Needs when,
                         int& field, int first, std::function<void()> after) {
  for (int i = 0; i < captions.size(); ++i) {
    const int value = first + i;
    Choice(
        menu, QString("%1_%2").arg(name).arg(i), captions[i], when,
        [&field, value] { return field == value; },
        [&field, value, after] {
          field = value;
          if (after) after();
        });
  }
  MakeExclusive(menu);
}

void TableMenus::NoticeChoice(QMenu* menu, const QString& name, const QString& caption, Needs when,
                              int bit) {
  Choice(
      menu, name, caption, when, [bit] { return (Game.Notify & bit) != 0; },
      [bit] { Game.Notify ^= bit; });
}

void TableMenus::Refresh() {
  const bool atRest = TableAtRest();
  for (Item& item : items_) {
    item.Action->setEnabled(item.When == Needs::Nothing || atRest);
    if (item.Checked) item.Action->setChecked(item.Checked());
    if (item.Caption) item.Action->setText(item.Caption());
  }
}

// ---- The menus ----

void TableMenus::MakeGameMenu() {
  QMenu* menu = Menu(table_, "mnuGame", "&Game");
  Command(menu, "mnuNew", "&New", Needs::TableAtRest, [this] {
    NewGameCommand(table_);
  }).Action->setShortcut(Qt::Key_F2);
  Command(menu, "mnuOpenGame", "&Open Game...", Needs::TableAtRest,
          [this] { OpenGameCommand(table_); });
  Command(menu, "mnuSaveGame", "&Save Game", Needs::TableAtRest, [this] {
    SaveGameCommand(table_);
  }).Action->setShortcut(Qt::SHIFT | Qt::Key_F12);
  Command(menu, "mnuSaveGameAs", "Save Game &As...", Needs::TableAtRest,
          [this] { SaveGameAsCommand(table_); });
  menu->addSeparator();
  const auto atm = [](AtmKind kind) {
    return [kind] {
      if (Game.AtmAmount > 0) AtmTransaction(kind, Game.AtmAmount);
    };
  };
  const auto caption = [](const char* words) {
    return [words] { return QString("%1 $%2").arg(words, Text(MoneyText(Game.AtmAmount))); };
  };
  Command(menu, "mnuAtmWithdraw", "ATM &Withdraw", Needs::TableAtRest, atm(AtmWithdrawal)).Caption =
      caption("ATM &Withdraw");
  Command(menu, "mnuAtmDeposit", "ATM &Deposit", Needs::TableAtRest, atm(AtmDeposit)).Caption =
      caption("ATM &Deposit");
  menu->addSeparator();
  Command(menu, "mnuExit", "E&xit", Needs::Nothing, [this] {
    table_->close();
  }).Action->setShortcut(Qt::ALT | Qt::Key_F4);
}

void TableMenus::MakeActionMenu() {
  QMenu* menu = Menu(table_, "mnuAction", "&Action");
  const auto add = [&](const char* name, const char* caption, QKeySequence key,
                       std::function<void()> act) {
    Command(menu, name, caption, Needs::TableAtRest, std::move(act)).Action->setShortcut(key);
  };
  add("mnuRollDice", "&Roll Dice", Qt::Key_F5, [this] {
    if (ClickMayAct() && RightClick()) actions_.Roll();
  });
  menu->addSeparator();
  add("mnuBuyPlaceBet", "&Buy Place Bet", Qt::Key_F6, BuyPlaceBetCommand);
  add("mnuCallBetOn", "Call Bet &ON", Qt::Key_F7, CallBetOnCommand);
  add("mnuCallBetOff", "Call Bet O&FF", Qt::Key_F8, CallBetOffCommand);
  add("mnuRemoveBet", "Re&move Bet", Qt::Key_Delete, RemoveBetCommand);
  menu->addSeparator();
  add("mnuCallAllBetsOn", "&Call All Bets ON", Qt::SHIFT | Qt::Key_F7,
      [] { CallAllBets(CallCodeOn); });
  add("mnuCallAllBetsOff", "Ca&ll All Bets OFF", Qt::SHIFT | Qt::Key_F8,
      [] { CallAllBets(CallCodeOff); });
  add("mnuRemoveAllBets", "Remove &All Bets", Qt::SHIFT | Qt::Key_Delete, RemoveAllBets);
  menu->addSeparator();
  Toggle(menu, "mnuKeyInBetAmounts", "&Key In Bet Amounts", Needs::TableAtRest,
         Game.KeyInBetAmounts, [] { CloseKeyedBox(); });
  items_.back().Action->setShortcut(Qt::Key_F9);
}

void TableMenus::MakeAutoBetMenu() {
  QMenu* menu = Menu(table_, "mnuAutoBet", "Auto-&Bet");
  const auto add = [&](const char* name, const char* caption, std::function<void()> act) {
    Command(menu, name, caption, Needs::TableAtRest, [act = std::move(act)] {
      act();
      TheHost.RefreshViews();
    });
  };
  add("mnuOpenAutoBet", "&Open Auto-Bet File...", [this] { OpenAutoBetFileCommand(table_); });
  add("mnuSaveAutoBetAs", "&Save Auto-Bet File As...",
      [this] { SaveAutoBetFileAsCommand(table_); });
  add("mnuNewAutoBet", "C&lear Auto-Bets...", [this] { ClearScriptCommand(table_); });
  menu->addSeparator();
  Choice(
      menu, "mnuAutoBetActive", "&Activated", Needs::TableAtRest,
      [] { return Game.AutoBetActive != 0; }, ToggleAutoBetCommand);
  add("mnuCheckBets", "&Check Structure", CheckScriptCommand);
  Command(menu, "mnuFlagValues", "&Flag Values...", Needs::Nothing, actions_.ShowFlags);
  menu->addSeparator();
  NoticeChoice(menu, "mnuShowLoggedMessagesNormal", "Show Logged Messages, &Normal Play",
               Needs::TableAtRest, NoticeAutoBet);
  NoticeChoice(menu, "mnuShowLoggedMessagesHyper", "Show Logged Messages, &Hyper-Drive",
               Needs::TableAtRest, NoticeAutoBetHyper);
}

void TableMenus::MakeViewMenu() {
  QMenu* menu = Menu(table_, "mnuView", "&View");
  Toggle(menu, "mnuDisplayBetAmounts", "Display &Bet Amounts", Needs::Nothing,
         Game.DisplayBetAmounts);
  items_.back().Action->setShortcut(Qt::Key_F3);
  Toggle(menu, "mnuDisplayHopBets", "Display &Hop Bets", Needs::Nothing, Game.DisplayHopBets,
         [] { TheHost.RedrawLayout(); });
  items_.back().Action->setShortcut(Qt::Key_F4);
  menu->addSeparator();
  Command(menu, "mnuBankroll", "&Bankroll", Needs::Nothing, actions_.ShowBankroll)
      .Action->setShortcut(Qt::Key_F12);
  Command(menu, "mnuChipStacks", "&Chip-Stacks...", Needs::Nothing, actions_.ShowStackValues)
      .Action->setShortcut(Qt::Key_F11);
  Command(menu, "mnuEventsLog", "&Events Log", Needs::Nothing, actions_.ShowEventsLog);
}

void TableMenus::MakeOptionsMenu() {
  QMenu* options = Menu(table_, "mnuOptions", "&Options");
  MakeLookMenus(options);
  MakePayoffMenu(options);
  options->addSeparator();
  Command(options, "mnuAutoPlay", "&Auto-Play", Needs::Nothing, actions_.ShowAutoPlay);
  options->addSeparator();
  MakeDiceMenu(options);
  MakeProbabilityMenu(options);
  MakeTapeMenu(options);
  MakeSoundMenu(options);
  MakeNoticesMenu(options);
}

void TableMenus::MakeLookMenus(QMenu* options) {
  QMenu* colors = Menu(options, "mnuOptionsColors", "Table &Colors");
  for (int i = 0; i < kColorPresets; ++i) {
    const ColorPreset& preset = kColorPresetTable[static_cast<unsigned>(i)];
    Choice(
        colors, QString("mnuSetColor_%1").arg(i), Text(preset.Name), Needs::Nothing,
        [&preset] {
          return Game.TableColor == preset.Colors && Game.TableFeltPattern == preset.Pattern;
        },
        [i] {
          SetColorPreset(i);
          TheHost.RedrawLayout();
        });
  }
  QMenu* felt = Menu(options, "mnuFeltPattern", "&Felt Pattern");
  for (int i = 0; i < kFelts; ++i) {
    const float pattern = static_cast<float>(i);
    Choice(
        felt, QString("mnuFeltPattern_%1").arg(i), QString("Felt &%1").arg(i + 1), Needs::Nothing,
        [pattern] { return Game.TableFeltPattern == pattern; },
        [pattern] {
          Game.TableFeltPattern = pattern;
          TheHost.RedrawLayout();
        });
  }
  MakeExclusive(colors);
  MakeExclusive(felt);
  const auto redraw = [] { TheHost.RedrawLayout(); };
  Choices(Menu(options, "mnuChipStyle", "C&hip Set"), "mnuChipStyle",
          Numbered("Chip set &%1", kChipStyles), Needs::Nothing, Game.ChipStyle, 1, redraw);
  Choices(Menu(options, "mnuDiceStyle", "&Dice Set"), "mnuDiceStyle",
          Numbered("Dice set &%1", kDiceStyles), Needs::Nothing, Game.DiceStyle, 1, redraw);
  Choices(Menu(options, "mnuDiceAction", "Dice &Action"), "mnuDiceAction",
          {"&Stationary", "&Return after thrown", "Return on &decision", "Remain on &table"},
          Needs::TableAtRest, Game.DiceAction, DiceStationary, [] {
            if (Game.DiceAction != DiceRemainOnTable) TheHost.SendDiceHome();
          });
}

void TableMenus::MakePayoffMenu(QMenu* options) {
  QMenu* field = Menu(options, "mnuOptionsPayoffs", "&Set Field payoffs to");
  for (int i = 0; i < kFieldPresets; ++i) {
    Command(field, QString("mnuSetField_%1").arg(i).toUtf8().constData(),
            Text(kFieldPresetNames[static_cast<unsigned>(i)]), Needs::TableAtRest,
            [i] { LoadFieldPreset(i); });
  }
}

void TableMenus::MakeDiceMenu(QMenu* options) {
  QMenu* rng = Menu(options, "mnuRng", "&Random Numbers");
  Choices(rng, "mnuRngChoice",
          {"RNG #&1", "RNG #&2", "RNG #&3", "RNG #&4", "RNG #&5", "RNG #&6 (#1 and #5)",
           "RNG #&7 (#2 and #4)", "RNG #&8 (#1 single call)"},
          Needs::TableAtRest, Game.RngChoice, Rng1Mt, CorrectRngChoice);
  rng->addSeparator();
  Toggle(rng, "mnuUserSeed", "&User seed", Needs::TableAtRest, Game.UserSeed);
  Toggle(rng, "mnuReSeed", "&Re-seed new games", Needs::Nothing, Game.ReSeed);
  Command(rng, "mnuSeedRng", "&Seed RNG now", Needs::TableAtRest, SeedNow);
}

void TableMenus::MakeProbabilityMenu(QMenu* options) {
  QMenu* skewed = Menu(options, "mnuProbability", "&Probabilities");
  Command(skewed, "mnuOpenProbability", "&Open Probability File...", Needs::TableAtRest,
          [this] { OpenProbabilityCommand(table_); });
  Command(skewed, "mnuSaveProbabilityAs", "&Save Probability File As...", Needs::TableAtRest,
          [this] { SaveProbabilityAsCommand(table_); });
  skewed->addSeparator();
  Toggle(skewed, "mnuUseSkewedProbability", "&Use Skewed Dice", Needs::TableAtRest,
         Game.UseSkewedProbability, [] { Game.GameChanged = true; });
}

void TableMenus::MakeTapeMenu(QMenu* options) {
  QMenu* tape = Menu(options, "mnuDiceRollFiles", "Dice Ro&ll Files");
  Command(tape, "mnuNewOpen", "&New or Open...", Needs::TableAtRest,
          [this] { OpenDiceRollsCommand(table_); });
  Command(tape, "mnuCloseRolls", "&Close", Needs::TableAtRest, CloseDiceRollsCommand);
  tape->addSeparator();
  const std::array<const char*, 3> captions = {"Recorder &Off", "&Record", "&Playback"};
  for (int status = RecorderOff; status <= Playback; ++status) {
    Choice(
        tape, QString("mnuRecorder_%1").arg(status), captions[static_cast<unsigned>(status)],
        Needs::TableAtRest, [status] { return Game.RecorderStatus == status; },
        [status] { SetRecorderCommand(status); });
  }
  MakeExclusive(tape);
  tape->addSeparator();
  Command(tape, "mnuFirstRoll", "Go to the &First Roll", Needs::TableAtRest,
          RewindDiceRollsCommand);
  Command(tape, "mnuBehindLastRoll", "Go behind the &Last Roll", Needs::TableAtRest,
          ToEndOfDiceRollsCommand);
}

void TableMenus::SoundChoices(QMenu* menu, const char* name, const std::vector<std::string>& list,
                              int& field, std::function<void()> after) {
  QStringList captions;
  for (const std::string& file : list) captions << SoundName(file);
  Choices(menu, name, captions, Needs::Nothing, field, 0, std::move(after));
}

void TableMenus::MakeSoundMenu(QMenu* options) {
  QMenu* sound = Menu(options, "mnuSound", "S&ound");
  SoundChoices(Menu(sound, "mnuStickPerson", "&Stick Person"), "mnuStickPerson", Game.StickPersons,
               Game.StickPerson, [] {
                 LoadStickPerson();
                 PlayStickCall(StickPass, false);
               });
  SoundChoices(Menu(sound, "mnuDiceSound", "&Dice"), "mnuDiceSound", Game.DiceSounds,
               Game.DiceSound, PlayDiceSound);
  SoundChoices(Menu(sound, "mnuChipSound", "&Chips"), "mnuChipSound", Game.ChipSounds,
               Game.ChipSound, PlayChipSound);
  SoundChoices(Menu(sound, "mnuWinSound", "&Wins"), "mnuWinSound", Game.WinSounds, Game.WinSound,
               [] { PlayWinSound(false); });
  sound->addSeparator();
  Toggle(sound, "mnuDisableAllSound", "Disable &all game sounds", Needs::Nothing,
         Game.DisableAllSound, [] { TheHost.StopSound(); });
}

void TableMenus::MakeNoticesMenu(QMenu* options) {
  QMenu* notices = Menu(options, "mnuNotices", "&Notices");
  const std::array<const char*, 5> captions = {
      "&Actions not allowed", "&Betting limits reached", "&Charges and/or change",
      "Auto-Bet messages &normal play", "Auto-Bet messages &Hyper-Drive"};
  for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
    NoticeChoice(notices, QString("mnuNotify_%1").arg(i), captions[static_cast<unsigned>(i)],
                 Needs::Nothing, 1 << i);
  }
  notices->addSeparator();
  Toggle(notices, "mnuSnapMouse", "&Snap mouse-pointer", Needs::Nothing, Game.SnapMouse);
}
