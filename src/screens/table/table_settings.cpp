#include "screens/table/table_settings.h"

#include <QApplication>
#include <QPointer>
#include <QSettings>
#include <QStyle>
#include <algorithm>
#include <memory>

#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/frame/controls.h"

TableSettings TheTable;

namespace {

/// The texts of these menus.
struct Menu {
  Q_DECLARE_TR_FUNCTIONS(TableSettings)
};

constexpr const char* kGroup = "Table";
constexpr const char* kRollsKey = "Rolls/Last";
constexpr const char* kRollCountKey = "Rolls/Thrown";
constexpr const char* kToastsOfferedKey = "ToastsOffered";
constexpr int kMostPace = 1200;
constexpr int kMostVolume = 100;
constexpr int kVolumeStep = 20;
constexpr Currency kMostLimit = kBankLimit;

bool Stored = false;  // the settings have been read from the store, and go there again

/// A check mark of the menu.
struct Mark {
  const char* Name;  // in the store; behind "mnuTable" the action
  const char* Caption;
  const char* Tip;
  bool TableSettings::*Setting;
};
const Mark kMarks[] = {
    {"Call", QT_TRANSLATE_NOOP("TableSettings", "&Call on the Felt"),
     QT_TRANSLATE_NOOP("TableSettings", "What was thrown and what it brought, below the Pass Line"),
     &TableSettings::Call},
    {"Forecast", QT_TRANSLATE_NOOP("TableSettings", "&Forecast"),
     QT_TRANSLATE_NOOP("TableSettings", "What each throw would bring, with the bets as they stand"),
     &TableSettings::Forecast},
    {"History", QT_TRANSLATE_NOOP("TableSettings", "Histor&y"),
     QT_TRANSLATE_NOOP("TableSettings", "The last 20 rolls, in the left rail"),
     &TableSettings::History},
    {"RollButtons", QT_TRANSLATE_NOOP("TableSettings", "&ROLL and Buttons"),
     QT_TRANSLATE_NOOP("TableSettings", "ROLL, Repeat, Double, Undo and Clear, in the lower rail"),
     &TableSettings::RollButtons},
    {"Money", QT_TRANSLATE_NOOP("TableSettings", "&Money on the Table"),
     QT_TRANSLATE_NOOP("TableSettings", "Bankroll, money at risk and result, in the lower rail"),
     &TableSettings::Money},
    {"Highlight", QT_TRANSLATE_NOOP("TableSettings", "Li&ght on Bets"),
     QT_TRANSLATE_NOOP("TableSettings", "A bright edge round the bet under the mouse"),
     &TableSettings::Highlight},
    {"BetCard", QT_TRANSLATE_NOOP("TableSettings", "&Bet Card"),
     QT_TRANSLATE_NOOP("TableSettings",
                       "What is to be known of a bet: in the panel, else beside it"),
     &TableSettings::BetCard},
    {"PilesUpward", QT_TRANSLATE_NOOP("TableSettings", "Piles &Upward"),
     QT_TRANSLATE_NOOP("TableSettings", "Chips grow upward, with the amount at their foot"),
     &TableSettings::PilesUpward},
    {"PuckMakesRoom", QT_TRANSLATE_NOOP("TableSettings", "Puc&k Makes Room"),
     QT_TRANSLATE_NOOP("TableSettings", "The puck gives way to chips that lie in its square"),
     &TableSettings::PuckMakesRoom},
    {"ClearLettering", QT_TRANSLATE_NOOP("TableSettings", "Clear &Lettering"),
     QT_TRANSLATE_NOOP("TableSettings", "Letters stand out from every felt"),
     &TableSettings::ClearLettering},
    {"Hints", QT_TRANSLATE_NOOP("TableSettings", "H&ints"),
     QT_TRANSLATE_NOOP("TableSettings", "The first steps at the table, until they have been seen"),
     &TableSettings::Hints},
};

/// A setting with several values, each an entry of a submenu.
struct Several {
  const char* Name;
  const char* Caption;
  int TableSettings::*Setting;
  std::vector<std::pair<const char*, int>> Values;
};
const Several kSeverals[] = {
    {"Panel",
     QT_TRANSLATE_NOOP("TableSettings", "&Panel beside the Table"),
     &TableSettings::Panel,
     {{QT_TRANSLATE_NOOP("TableSettings", "Where There Is &Room"), PanelWithRoom},
      {QT_TRANSLATE_NOOP("TableSettings", "&Always"), PanelAlways},
      {QT_TRANSLATE_NOOP("TableSettings", "&Never"), PanelNever}}},
    {"Pace",
     QT_TRANSLATE_NOOP("TableSettings", "Pac&e between Rolls"),
     &TableSettings::Pace,
     {{QT_TRANSLATE_NOOP("TableSettings", "&0 s"), 0},
      {QT_TRANSLATE_NOOP("TableSettings", "0.&6 s"), 600},
      {QT_TRANSLATE_NOOP("TableSettings", "&1.2 s"), kMostPace}}},
    {"Motion",
     QT_TRANSLATE_NOOP("TableSettings", "M&otion"),
     &TableSettings::Motion,
     {{QT_TRANSLATE_NOOP("TableSettings", "As the &System"), MotionAsSystem},
      {QT_TRANSLATE_NOOP("TableSettings", "&Full"), MotionFull},
      {QT_TRANSLATE_NOOP("TableSettings", "&Reduced"), MotionReduced}}},
    {"Notices",
     QT_TRANSLATE_NOOP("TableSettings", "&Notices"),
     &TableSettings::Notices,
     {{QT_TRANSLATE_NOOP("TableSettings", "In a &Box That Waits"), NoticesInBox},
      {QT_TRANSLATE_NOOP("TableSettings", "On the &Table, for a While"), NoticesAsToast}}},
    {"Settle",
     QT_TRANSLATE_NOOP("TableSettings", "&Settling"),
     &TableSettings::Settle,
     {{QT_TRANSLATE_NOOP("TableSettings", "In a &Window"), SettleInDialog},
      {QT_TRANSLATE_NOOP("TableSettings", "Beside the &Chips"), SettleBesideChip}}},
    {"Chrome",
     QT_TRANSLATE_NOOP("TableSettings", "Colors of &Windows"),
     &TableSettings::Chrome,
     {{QT_TRANSLATE_NOOP("TableSettings", "Of the &Table"), ChromeOfTable},
      {QT_TRANSLATE_NOOP("TableSettings", "Of the &System"), ChromeOfSystem},
      {QT_TRANSLATE_NOOP("TableSettings", "&High Contrast"), ChromeHighContrast}}},
    {"StickFrame",
     QT_TRANSLATE_NOOP("TableSettings", "Stick Person's Fr&ame"),
     &TableSettings::StickFrame,
     {{QT_TRANSLATE_NOOP("TableSettings", "&Figure"), StickFigure},
      {QT_TRANSLATE_NOOP("TableSettings", "&Call Board"), StickCallBoard},
      {QT_TRANSLATE_NOOP("TableSettings", "&Empty"), StickEmpty},
      {QT_TRANSLATE_NOOP("TableSettings", "&Plain Figure"), StickAsTold}}},
};

/// The kinds of sound, in the order of `VolumeKind`.
struct Kind {
  const char* Name;
  const char* Caption;
};
constexpr Kind kVolumes[] = {
    {"StickVolume", QT_TRANSLATE_NOOP("TableSettings", "&Stick Person")},
    {"DiceVolume", QT_TRANSLATE_NOOP("TableSettings", "&Dice")},
    {"ChipVolume", QT_TRANSLATE_NOOP("TableSettings", "&Chips")},
    {"WinVolume", QT_TRANSLATE_NOOP("TableSettings", "&Wins")},
};

/// An amount at which runs of rolls end.
struct Limit {
  const char* Name;
  const char* Caption;
  const char* Question;
  Currency TableSettings::*Setting;
};
constexpr Limit kLimits[] = {
    {"StopLoss", QT_TRANSLATE_NOOP("TableSettings", "Stop at a Loss of"),
     QT_TRANSLATE_NOOP("TableSettings",
                       "A run of rolls ends when the game has lost this amount; 0 lets it go on."),
     &TableSettings::StopLoss},
    {"WinGoal", QT_TRANSLATE_NOOP("TableSettings", "Stop at a Win of"),
     QT_TRANSLATE_NOOP("TableSettings",
                       "A run of rolls ends when the game has won this amount; 0 lets it go on."),
     &TableSettings::WinGoal},
};

std::vector<std::function<void()>>& Followers() {
  static std::vector<std::function<void()>> followers;
  return followers;
}

QString ActionName(const char* setting) { return QString("mnuTable%1").arg(setting); }

// ---- The store ----

QSettings OpenStore() { return QSettings("kelvanor", "kelvanor"); }

/// A whole number of the store within its limits; what is none leaves the setting as it is.
void ReadNumber(const QSettings& store, const char* name, int most, int& setting) {
  bool isNumber = false;
  const int number = store.value(name).toInt(&isNumber);
  if (isNumber) setting = std::clamp(number, 0, most);
}

void ReadLimit(const QSettings& store, const Limit& limit) {
  bool isNumber = false;
  const qlonglong raw = store.value(limit.Name).toLongLong(&isNumber);
  if (isNumber)
    TheTable.*limit.Setting = std::clamp(Currency::FromRaw(raw), Currency(), kMostLimit);
}

int LargestValue(const Several& several) {
  return std::max_element(several.Values.begin(), several.Values.end(),
                          [](const auto& a, const auto& b) { return a.second < b.second; })
      ->second;
}

/// The value of a setting that is nearest to what was read.
void Settle(const Several& several) {
  int& setting = TheTable.*several.Setting;
  for (const auto& [caption, value] : several.Values)
    if (setting <= value) {
      setting = value;
      return;
    }
}

/// Whether the store has taken what was put there; the player is told why it hasn't.
bool IsKept(QSettings& store) {
  store.sync();
  if (store.status() == QSettings::NoError) return true;
  ShowMessage(FileText(store.fileName().toStdString(),
                       "can't be written: it is no settings file, or it or its folder is closed to "
                       "you, or the disk is full.\n\nThe settings of the table and its last rolls "
                       "are lost when Kelvanor ends. Please make room for the file; it is tried "
                       "again with the next setting that you change."),
              "Unable to Keep Settings", kTopicFiles, OkStop);
  return false;
}

void KeepSettings() {
  static bool told = false;  // not again with each setting
  QSettings store = OpenStore();
  store.beginGroup(kGroup);
  for (const Mark& mark : kMarks) store.setValue(mark.Name, TheTable.*mark.Setting);
  for (const Several& several : kSeverals) store.setValue(several.Name, TheTable.*several.Setting);
  for (std::size_t kind = 0; kind < std::size(kVolumes); ++kind)
    store.setValue(kVolumes[kind].Name, TheTable.Volume[kind]);
  store.setValue(kToastsOfferedKey, TheTable.ToastsOffered);
  for (const Limit& limit : kLimits)
    store.setValue(limit.Name, qlonglong{(TheTable.*limit.Setting).Raw()});
  store.endGroup();
  if (!told) told = !IsKept(store);
}

// ---- The menu ----

/// An entry that changes settings. The game isn't changed by it.
MenuRow SettingRow(const QString& name, const QString& caption, std::function<bool()> checked,
                   std::function<void()> change) {
  return Check(name, caption, std::move(checked), [change = std::move(change)] {
    change();
    UseTableSettings();
  });
}

MenuRow MarkRow(const Mark& mark) {
  const auto setting = mark.Setting;
  return SettingRow(
             ActionName(mark.Name), Menu::tr(mark.Caption), [setting] { return TheTable.*setting; },
             [setting] { TheTable.*setting = !(TheTable.*setting); })
      .Told(Menu::tr(mark.Tip));
}

/// The settings with what can't be seen as it is now.
TableSettings WithUnseen(TableSettings settings) {
  settings.Volume = TheTable.Volume;
  settings.ToastsOffered = TheTable.ToastsOffered;
  return settings;
}

/// One of several values of a setting.
MenuRow ValueRow(const QString& name, const QString& caption, std::function<int&()> setting,
                 int value) {
  MenuRow row = SettingRow(
      name, caption, [setting, value] { return setting() == value; },
      [setting, value] { setting() = value; });
  row.OneOfSeveral = true;
  return row;
}

MenuRow SeveralRow(const Several& several) {
  std::vector<MenuRow> rows;
  const QString name = ActionName(several.Name);
  for (const auto& [caption, value] : several.Values)
    rows.push_back(ValueRow(
        QString("%1_%2").arg(name).arg(rows.size()), Menu::tr(caption),
        [setting = several.Setting]() -> int& { return TheTable.*setting; }, value));
  return Submenu(name, Menu::tr(several.Caption), std::move(rows));
}

MenuRow VolumeRow(std::size_t kind) {
  std::vector<MenuRow> rows;
  const QString name = ActionName(kVolumes[kind].Name);
  for (int volume = 0; volume <= kMostVolume; volume += kVolumeStep)
    rows.push_back(ValueRow(
        QString("%1_%2").arg(name).arg(rows.size()), QString("%1").arg(volume),
        [kind]() -> int& { return TheTable.Volume[kind]; }, volume));
  return Submenu(name, Menu::tr(kVolumes[kind].Caption), std::move(rows));
}

MenuRow VolumesRow() {
  std::vector<MenuRow> rows;
  for (std::size_t kind = 0; kind < std::size(kVolumes); ++kind) rows.push_back(VolumeRow(kind));
  return Submenu("mnuTableVolume", Menu::tr("&Volume"), std::move(rows));
}

/// Asks for an amount at which runs end.
void AskLimit(const Limit& limit) {
  Currency& setting = TheTable.*limit.Setting;
  Game.MsgInput = {"", PlainText(setting)};
  ShowMessage(Menu::tr(limit.Question).toStdString(), Menu::tr(limit.Caption).toStdString(),
              kTopicTable, InputOkCancel);
  if (Game.MsgAnswer != AnswerOk) return;
  setting = std::clamp(ParseAmount(Game.MsgInput[1]), Currency(), kMostLimit);
  UseTableSettings();
}

MenuRow LimitRow(const Limit& limit) {
  const auto caption = [&limit] {
    const Currency setting = TheTable.*limit.Setting;
    const QString end = setting > 0 ? " $" + Text(MoneyText(setting)) : QString();
    return Menu::tr(limit.Caption) + end + "...";
  };
  return Check(
             ActionName(limit.Name), Menu::tr(limit.Caption),
             [&limit] { return TheTable.*limit.Setting > 0; }, [&limit] { AskLimit(limit); })
      .Named(caption);
}

/// The plain table, or from there the table as it comes. What can't be seen stays.
void TurnAsTold() { TheTable = WithUnseen(IsAsTold() ? TableSettings() : AsTold()); }

}  // namespace

TableSettings AsTold() {
  TableSettings told;
  for (const Mark& mark : kMarks) told.*mark.Setting = false;
  told.Panel = PanelNever;
  told.Pace = 0;
  told.Motion = MotionFull;
  told.Settle = SettleInDialog;
  told.Chrome = ChromeOfSystem;
  told.StickFrame = StickAsTold;
  return told;
}

bool IsAsTold() { return TheTable == WithUnseen(AsTold()); }

void UseTableSettings() {
  Game.Pace = TheTable.Pace;
  Game.StopLoss = TheTable.StopLoss;
  Game.WinGoal = TheTable.WinGoal;
  if (Stored) KeepSettings();
  const auto followers = Followers();  // one may add another
  for (const auto& follow : followers) follow();
}

void ReadTableSettings() {
  QSettings store = OpenStore();
  store.beginGroup(kGroup);
  TheTable = {};
  for (const Mark& mark : kMarks)
    TheTable.*mark.Setting = store.value(mark.Name, TheTable.*mark.Setting).toBool();
  for (const Several& several : kSeverals) {
    ReadNumber(store, several.Name, LargestValue(several), TheTable.*several.Setting);
    Settle(several);
  }
  for (std::size_t kind = 0; kind < std::size(kVolumes); ++kind)
    ReadNumber(store, kVolumes[kind].Name, kMostVolume, TheTable.Volume[kind]);
  TheTable.ToastsOffered = store.value(kToastsOfferedKey, false).toBool();
  for (const Limit& limit : kLimits) ReadLimit(store, limit);
  Stored = true;
  UseTableSettings();
}

bool KeepRolls() {
  if (!Stored) return true;
  QStringList rolls;
  for (const RollNote& note : Game.LastRolls)
    rolls << QString("%1 %2 %3 %4 %5")
                 .arg(note.Die1)
                 .arg(note.Die2)
                 .arg(note.PrevPoint)
                 .arg(note.Point)
                 .arg(qlonglong{note.Net.Raw()});
  QSettings store = OpenStore();
  store.setValue(kRollsKey, rolls);
  store.setValue(kRollCountKey, Game.RollCount[0]);
  return IsKept(store);
}

void ReadRolls() {
  const QSettings store = OpenStore();
  if (!Stored || store.value(kRollCountKey, -1).toInt() != Game.RollCount[0]) return;
  Game.LastRolls.clear();
  for (const QString& line : store.value(kRollsKey).toStringList()) {
    const QStringList parts = line.split(' ');
    if (parts.size() != 5 || Game.LastRolls.size() == kRollNotes) continue;
    const RollNote note{parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt(),
                        Currency::FromRaw(parts[4].toLongLong())};
    const bool dice = note.Die1 >= 1 && note.Die1 <= 6 && note.Die2 >= 1 && note.Die2 <= 6;
    if (dice) Game.LastRolls.push_back(note);
  }
}

void FollowTableSettings(QObject* with, std::function<void()> follow) {
  follow();
  const auto key = std::make_shared<QPointer<QObject>>(with);
  Followers().push_back([key, follow = std::move(follow)] {
    if (*key) follow();
  });
}

bool MotionWanted() {
  if (TheTable.Motion != MotionAsSystem) return TheTable.Motion == MotionFull;
  return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

std::vector<MenuRow> TableSettingsRows() {
  std::vector<MenuRow> rows;
  for (const Mark& mark : kMarks) rows.push_back(MarkRow(mark));
  rows.push_back(Separator());
  for (const Several& several : kSeverals) rows.push_back(SeveralRow(several));
  rows.push_back(VolumesRow());
  rows.push_back(Separator());
  for (const Limit& limit : kLimits) rows.push_back(LimitRow(limit));
  rows.push_back(Separator());
  rows.push_back(SettingRow("mnuTableAsTold", Menu::tr("As Tol&d"), IsAsTold, TurnAsTold)
                     .Told(Menu::tr("The plain table, with everything of this menu off")));
  return rows;
}
