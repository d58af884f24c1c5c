// Paints the table and the screens in all their looks into PNG files, to be looked at.
#include <QApplication>
#include <QDir>
#include <QFont>
#include <QImage>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <functional>

#include "autobet/script_file.h"
#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/new_game.h"
#include "core/game_state.h"
#include "core/host.h"
#include "dice/generators.h"
#include "figures/bet_sums.h"
#include "figures/bet_trends.h"
#include "figures/games_log.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "screens/files/frmFile.h"
#include "screens/frame/frmPrint.h"
#include "screens/frame/screen.h"
#include "screens/frame/screen_table.h"
#include "screens/play/frmMsg.h"
#include "screens/scripts/frmFlags.h"
#include "screens/scripts/frmSteps.h"
#include "screens/statistics/frmEventsLog.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/qt_host.h"
#include "screens/table/screens.h"
#include "screens/table/table_look.h"
#include "screens/table/table_painter.h"
#include "screens/table/table_settings.h"
#include "stats/events_log.h"

namespace {

constexpr QSize kSmall(640, 480);
constexpr QSize kMiddle(1280, 960);
constexpr QSize kLarge(1920, 1440);
constexpr QSize kHandbookTable(620, 500);
constexpr std::uint32_t kSeed = 20'240'601;
constexpr int kRollsForScreens = 20'000;
constexpr int kShortGames = 600;
constexpr int kRollsOfShortGame = 80;

QDir outputFolder;
int failures = 0;
int coloursInForce = 0;  // the preset that a fresh table has

QImage TablePicture(QSize size, const TableView& view = {}) {
  TableCache cache;
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  PaintTable(painter, size, view, cache);
  return image;
}

void Save(const QImage& image, const QString& name) {
  if (!image.save(outputFolder.filePath(name + QStringLiteral(".png")))) ++failures;
}

void Shoot(const QString& name, QSize size = kMiddle, const TableView& view = {}) {
  Save(TablePicture(size, view), name);
}

/// Several looks in one picture, `columns` side by side.
void ShootSheet(const QString& name, int count, int columns, QSize cell,
                const std::function<QImage(int)>& picture) {
  QImage sheet(cell.width() * columns, cell.height() * ((count + columns - 1) / columns),
               QImage::Format_RGB32);
  sheet.fill(Qt::black);
  QPainter painter(&sheet);
  for (int i = 0; i < count; ++i)
    painter.drawImage(QPoint(i % columns * cell.width(), i / columns * cell.height()), picture(i));
  painter.end();
  Save(sheet, name);
}

void Lay(int betId, Currency amount) {
  Currency& bet = Game.Bets[static_cast<unsigned>(betId)];
  if (betId <= LastBet) Game.TotalOnTable += amount - bet;
  bet = amount;
  ArrangeChips(betId);
}

void LayFewBets() {
  Game.Point = 6;
  Lay(PassLine, 10);
  Lay(PassLineOdds, 25);
  Lay(Place4 + 3, 12);
  Lay(Field, 5);
  Lay(Hard8, 1);
  Lay(ChipStackBase + 1, 137);
  Lay(Hop24, 2);
}

void LayEveryBet() {
  static constexpr int kAmounts[] = {5, 137, 25, 642, 10, 88, 1, 1250, 30, 6};
  for (int bet = Lay4; bet <= LastBet; ++bet) {
    const bool both = IsPlace(bet) && bet % 2 == 0;  // a number has a Place bet or a Buy bet
    const bool buyToo = IsBuy(bet) && bet % 2 != 0;
    if (!both && !buyToo) Lay(bet, kAmounts[bet % 10]);
  }
  for (int stack = FirstChipStack; stack < FirstChipStack + 4; ++stack)
    Lay(stack, 137 + 1000 * (stack - FirstChipStack));
}

void Fresh() {
  LayDownDefaults();
  SetColorPreset(coloursInForce);
  Game.DisplayBetAmounts = false;
}

/// A game under way, as the README shows it.
void ShootGame() {
  Fresh();
  LayFewBets();
  Game.Point = 8;
  Game.Die1 = 5;
  Game.Die2 = 3;
  Lay(Come, 15);
  Lay(Come4, 10);
  Lay(Come4Odds, 20);
  Lay(Buy10, 30);
  Lay(Place4 + 2, 30);
  Lay(DontPass, 25);
  Game.ChipColor = 2;
  Shoot(QStringLiteral("game"), kMiddle);
}

void ShootSizesAndPanels() {
  Fresh();
  Shoot(QStringLiteral("table_640x480"), kSmall);
  Shoot(QStringLiteral("table_1280x960"), kMiddle);
  Shoot(QStringLiteral("table_1920x1440"), kLarge);
  Shoot(QStringLiteral("table_letterbox"), QSize(1300, 700));
  Game.DisplayHopBets = true;
  Shoot(QStringLiteral("hop_panel_640x480"), kSmall);
  Shoot(QStringLiteral("hop_panel_1920x1440"), kLarge);
}

void ShootColours() {
  for (int preset = 0; preset < kColorPresets; ++preset) {
    Fresh();
    LayFewBets();
    SetColorPreset(preset);
    Shoot(QStringLiteral("preset_%1").arg(preset));
    Shoot(QStringLiteral("preset_%1_640x480").arg(preset), kSmall);
    ShootSheet(QStringLiteral("preset_%1_felts").arg(preset), 9, 3, kSmall, [](int pattern) {
      Game.TableFeltPattern = static_cast<float>(pattern);
      return TablePicture(kSmall);
    });
  }
}

void ShootChipsAndDice() {
  for (int style = 1; style <= 7; ++style) {
    Fresh();
    Game.ChipStyle = style;
    Game.DiceStyle = 1 + style % 5;
    LayFewBets();
    Lay(Come, 14'631);
    Lay(DontCome4, 631);
    Shoot(QStringLiteral("chips_%1").arg(style), kLarge);
  }
  for (int style = 1; style <= 5; ++style) {
    Fresh();
    Game.DiceStyle = style;
    ShootSheet(QStringLiteral("dice_%1").arg(style), 3, 3, QSize(400, 300), [](int pair) {
      Game.Die1 = 2 * pair + 1;
      Game.Die2 = 2 * pair + 2;
      return TablePicture(kLarge).copy(1440, 1020, 400, 300);
    });
  }
  Fresh();
  for (int chip = 0; chip < 5; ++chip)
    Game.Bets[static_cast<unsigned>(SmallestChip + chip)] =
        Currency::FromRaw(2'500) * (chip == 0 ? 1 : chip * chip * 2'000 - 1'990);
  Lay(Field, 7);
  Shoot(QStringLiteral("chips_cents"));
}

void ShootPlay() {
  for (int point : {0, 4, 5, 6, 8, 9, 10}) {
    Fresh();
    Game.Point = point;
    Shoot(QStringLiteral("puck_%1").arg(point), kSmall);
  }
  Fresh();
  LayEveryBet();
  Game.Point = 9;
  Shoot(QStringLiteral("full_table"), kLarge);
  Game.DisplayBetAmounts = true;
  for (int bet : {int(Lay4), int(Place4), int(Hard4), int(Field)})
    Game.BetWorking[static_cast<unsigned>(bet)] = CalledOff;
  for (int bet : {int(Buy10), int(Hard8), int(Come4)})
    Game.BetWorking[static_cast<unsigned>(bet)] = CalledOn;
  Game.ClickMode = CallOffMode;
  Game.RecorderStatus = Recording;
  Game.ChipColor = BuyMarkerSpot;
  Shoot(QStringLiteral("full_table_amounts"), kLarge);
  Shoot(QStringLiteral("full_table_amounts_640x480"), kSmall);
  Game.DisplayHopBets = true;
  Game.RecorderStatus = Playback;
  Game.ChipColor = kFirstStackColor;
  Shoot(QStringLiteral("full_table_hops"), kLarge);
}

/// Piles where they have the least room: rows as low as a chip, edges of boxes, the rack.
void ShootPiles() {
  const auto pile = [](int betId, Currency amount, int chips, int x, int y) {
    Game.Bets[static_cast<unsigned>(betId)] = amount;
    for (int i = 0; i < chips; ++i) {
      Game.ChipColor = 1 + i % 5;
      AddChip(betId, x, y);
    }
  };
  for (const int point : kPointNumbers) {
    Fresh();
    Game.DisplayBetAmounts = true;
    Game.Point = point;
    for (int bet = Lay4; bet <= Lay10; ++bet) Lay(bet, bet % 2 == 0 ? 36 : 12'499);
    Game.BetWorking[static_cast<unsigned>(BetOnNumber(LayFamily, point))] = CalledOff;
    for (int bet = Come4; bet <= Come10; ++bet) {
      Lay(bet, bet % 2 == 0 ? 10 : 641);
      Lay(bet + kOddsOffset, bet % 2 == 0 ? 1'137 : 20);
    }
    for (int bet = DontCome4; bet <= DontCome10; ++bet) {
      Lay(bet, bet % 2 == 0 ? 641 : 15);
      Lay(bet + kOddsOffset, 30);
    }
    Lay(DontPass, 10);
    Lay(DontPassOdds, 20);
    Lay(Place5, 55);
    Lay(Buy5, 20);
    Lay(Big6, 14'641);
    Lay(Big8, 14'641);
    pile(Field, 137, 14, 300, 262);
    pile(Come, 14, 14, 480, 180);
    pile(Come, 20, 3, 250, 230);
    pile(PassLine, 642, 14, 100, 345);
    pile(PassLineOdds, 99'999, 14, 60, 60);
    pile(DontCome, 12, 6, 174, 53);
    pile(Hard8, 14, 14, 634, 225);
    for (int stack = FirstChipStack; stack < FirstChipStack + 4; ++stack)
      Lay(stack, stack % 2 == 0 ? Currency(123'456'789) : -Currency(98'765'432'109'876));
    Shoot(QStringLiteral("piles_%1").arg(point));
    Shoot(QStringLiteral("piles_%1_640x480").arg(point), kSmall);
  }
}

void ShootFlight() {
  Fresh();
  LayFewBets();
  TableView view;
  view.Dice[0] = {210, 120};
  view.Dice[1] = {262, 158};
  view.Faces = {5, 3};
  view.Turns = {24, -37};
  view.Dragging = true;
  view.DraggedAmount = 137;
  view.DragPoint = {330, 230};
  Shoot(QStringLiteral("dice_in_flight"), kMiddle, view);
}

void ShootHouseRules() {
  for (int preset = 0; preset < kFieldPresets; ++preset) {
    Fresh();
    Game.BarDont = 2;
    SetFieldPreset(preset);
    Save(TablePicture(kMiddle).copy(180, 490, 840, 290), QStringLiteral("field_%1").arg(preset));
  }
}

void SaveScreen(QWidget& screen, const QString& name) {
  screen.show();
  QApplication::processEvents();
  Save(screen.grab().toImage(), name);
}

void ShootFlags(const QString& size) {
  for (const bool none : {true, false}) {
    Fresh();
    if (!none)
      Game.Flags = {{"Point is up", kTrue, kFalse},
                    {"Größer gewettet", kFalse, kFalse},
                    {"Progression was given up after seven losses in a row on the Don't Pass line",
                     kTrue, kTrue}};
    frmFlags screen(nullptr);
    screen.show();
    auto* list = screen.findChild<QListView*>("lstShowflags");
    if (!none) list->setCurrentIndex(list->model()->index(1, 0));
    SaveScreen(screen, (none ? "flags_none_" : "flags_") + size);
    screen.resize(screen.minimumSize());
    SaveScreen(screen, (none ? "flags_none_small_" : "flags_small_") + size);
  }
}

void ShootMessage(const QString& name, const std::string& text, int flags) {
  Game.MsgText = text;
  Game.MsgTitle = "Auto-Bet line # 12";
  Game.MsgFlags = flags;
  frmMsg screen(nullptr);
  SaveScreen(screen, name);
}

void ShootMessages(const QString& size) {
  std::string many;
  for (int i = 1; i <= 80; ++i) many += "Bet " + std::to_string(i) + ":  $25\n";
  const int notice = int(OkTick) | HideAutoBet;
  ShootMessage("message_short_" + size, "Bankroll:  $1,250\n", notice);
  ShootMessage("message_many_" + size, many, notice);
  ShootMessage("message_long_" + size,
               "The Place bets have been pressed, as the last three rolls had all hit inside "
               "numbers; the next seven takes them all down.\n/" +
                   std::string(70, 'x') + ".wav\n",
               notice);
  ShootMessage("message_question_" + size, "Bankroll:  $1,250\nShould the line bet be doubled?\n",
               YesNo);
}

void ShootScript() {
  Fresh();
  LayFewBets();
  Game.ScrCount = 12;
  Game.AutoBetActive = 1;
  Game.AutoBetFile = "/scripts/Three-point Come with odds.bet";
  Game.AutoBetStatus = "Auto-Betting";
  frmCrapTable table;
  for (const QSize size : {QSize(640, 530), kMiddle}) {
    table.resize(size);
    SaveScreen(table, QStringLiteral("script_%1x%2").arg(size.width()).arg(size.height()));
  }
  SaveScreen(*table.findChild<QMenu*>("mnuAutoBet"), QStringLiteral("script_menu"));
  Game.AutoBetStatus = "Hot-Key";
  Shoot(QStringLiteral("script_hot_key"), kSmall);
  static_cast<ScriptState&>(Game) = ScriptState();
}

/// A log of a few rolls among many, and a line that is wider than the screen.
void WriteLogOfRolls() {
  Game.DataPath = QDir::tempPath().toStdString() + "/kelvanor_pictures_";
  Game.EventsLogFile = Game.DataPath + "Events Log.txt";
  ClearEventsLog();
  for (const char* line :
       {"======================================", " New game started",
        "      Beginning bankroll: $1,000", "------New shooter coming out----------",
        "      Auto-Bets activated (Three-point Come with odds.bet)",
        "      Pass Line bet made for $10"})
    WriteLogLine(line);
  for (int roll = 1; roll <= 12'000; ++roll) {
    WriteLogLine("Roll #" + std::to_string(roll) + ": 8 (5-3)");
    WriteLogLine("      Place 8 bet won $14");
    WriteLogLine("      Come bet moved to Come 8");
    if (roll == 3) WriteLogLine("      Größe: " + std::string(120, '5') + " Chip-Stack changed");
  }
}

void ShootEventsLog(const QString& size) {
  Fresh();
  WriteLogOfRolls();
  frmEventsLog screen(nullptr);
  const auto shoot = [&](const QString& name, int topLine, int letters) {
    Game.LogTopLine = topLine;
    Game.LogFontSize = letters;
    screen.show();
    screen.Refresh();
    SaveScreen(screen, "events_log_" + name + '_' + size);
  };
  shoot("start", 1, 9);
  Game.EventsLogActive = true;
  shoot("middle", 20'000, 9);
  shoot("large", 8, 15);
  Game.LogFontBold = true;
  screen.resize(screen.minimumSizeHint());
  shoot("small", 36'007, 9);
  for (const char* menu : {"mnuFile", "mnuEdit", "mnuRecord", "mnuFont"})
    SaveScreen(*screen.findChild<QMenu*>(menu), QString(menu) + "_of_events_log_" + size);
  ClearEventsLog();
  shoot("empty", 1, 9);
}

void ShootFileScreen(const QString& size) {
  Fresh();
  QDir files(QDir::temp().filePath(QStringLiteral("kelvanor screenshots")));
  files.mkpath(QStringLiteral("Auto-Bets"));
  files.mkpath(QStringLiteral("Größere Spiele aus dem vergangenen Jahr, nach Tischen"));
  for (const QString& name : {QStringLiteral("Friday.crp"), QStringLiteral("Три семёрки.crp"),
                              QStringLiteral("A long evening at the table by the door, with all "
                                             "the odds that the house allows.crp")})
    QFile(files.filePath(name)).open(QIODevice::WriteOnly);
  Game.DataPath = (files.path() + '/').toStdString();
  Game.GameFileName = files.filePath(QStringLiteral("Friday.crp")).toStdString();
  frmFile screen(FileCommand::OpenGame, nullptr);
  SaveScreen(screen, "file_" + size);
  screen.resize(screen.minimumSize());
  SaveScreen(screen, "file_small_" + size);
  frmFile roll(FileCommand::OpenDiceRolls, nullptr);
  SaveScreen(roll, "file_empty_" + size);
  files.removeRecursively();
}

void ShootMenus() {
  Fresh();
  frmCrapTable table;
  for (const char* name : {"mnuGame", "mnuOptions", "mnuDiceRollFiles"})
    SaveScreen(*table.findChild<QMenu*>(name), QStringLiteral("menu_") + name);
}

/// A log of some hundred short games.
std::string GamesLogOfShortGames() {
  static const QTemporaryDir folder;
  const std::string path = folder.filePath("short games.glg").toStdString();
  if (CountGames(path) > 0) return path;
  Fresh();
  Game.ReSeed = false;
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  init_genrand(kSeed);
  std::vector<GameRecord> games;
  for (int game = 0; game < kShortGames; ++game) {
    NewGame(false);
    for (const BetId bet : {PassLine, Field}) RequestChange(bet, 5);
    Game.AutoRollsLeft = kRollsOfShortGame;
    Game.HyperDriveOn = Game.KeepRolling = true;
    RollDice();
    Game.HyperDriveOn = false;
    games.push_back(FinishedGame());
  }
  NewGame(false);
  GamesLogWriter(path).Append(games);
  return path;
}

/// A game with some rolls behind it, so that every screen has something to show.
void PlayForScreens() {
  const std::string gamesLog = GamesLogOfShortGames();
  Fresh();
  Game.GamesLogFile = gamesLog;
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  Game.AutoTakeFullOdds = true;
  for (const BetId bet : {PassLine, Place6, Place8, Field, Hard8}) RequestChange(bet, 12);
  init_genrand(kSeed);
  Game.NumAutoRolls = Game.AutoRollsLeft = kRollsForScreens;
  Game.HyperDriveOn = Game.KeepRolling = true;
  RollDice();
  Game.HyperDriveOn = false;
  BetSelection selection;
  for (const BetId bet : {PassLine, PassLineOdds, Place6}) selection.Selected[bet] = true;
  KeepSelection(selection);
  Game.Flags = {{"Point is up", kTrue, kFalse}, {"Größer gewettet", kFalse, kFalse}};
}

QPalette DarkPalette() {
  QPalette dark;
  for (const auto role : {QPalette::Window, QPalette::Button}) dark.setColor(role, 0x31363b);
  for (const auto role : {QPalette::Base, QPalette::ToolTipBase}) dark.setColor(role, 0x1b1e20);
  dark.setColor(QPalette::AlternateBase, 0x232629);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    dark.setColor(role, 0xfcfcfc);
  dark.setColor(QPalette::Highlight, 0x3daee9);
  dark.setColor(QPalette::PlaceholderText, 0x7f8487);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    dark.setColor(QPalette::Disabled, role, 0x7f8487);
  return dark;
}

/// Every modeless screen beside a game, in the smallest window and a large one.
void ShootScreens(const QString& look) {
  frmCrapTable table;
  for (const bool played : {false, true}) {
    if (played)
      PlayForScreens();
    else
      Fresh();
    UseTableLook();
    for (const ScreenRow& row : AllScreens()) {
      Screen* screen = ShowScreen(row.Id);
      const QSize atStart = screen->size();
      const QString name = screen->objectName() + (played ? "" : "_empty");
      if (played) {
        screen->resize(screen->minimumSizeHint().expandedTo(screen->minimumSize()));
        SaveScreen(*screen, name + "_small_" + look);
      }
      screen->resize(atStart);
      SaveScreen(*screen, name + '_' + look);
      screen->close();
    }
  }
}

/// In the colours of a dark table and of a light one, and in high contrast with letters of twice
/// the size.
void ShootScreensInColoursOfTables() {
  const QFont letters = QApplication::font();
  const std::tuple<const char*, int, ChromeChoice, double> looks[] = {
      {"green", 0, ChromeOfTable, 1.0},
      {"woodgrain", 3, ChromeOfTable, 1.0},
      {"black_light_200", 1, ChromeOfTable, 2.0},
      {"contrast_200", 0, ChromeHighContrast, 2.0}};
  for (const auto& [name, preset, chrome, scale] : looks) {
    QFont scaled = letters;
    scaled.setPointSizeF(letters.pointSizeF() * scale);
    QApplication::setFont(scaled);
    coloursInForce = preset;
    TheTable.Chrome = chrome;
    ShootScreens(name);
  }
  coloursInForce = 0;
  TheTable.Chrome = ChromeOfTable;
  QApplication::setFont(letters);
}

void ShootScreensInAllLooks() {
  const QFont letters = QApplication::font();
  const QPalette light = QApplication::palette();
  for (const double scale : {1.0, 1.5}) {
    QFont scaled = letters;
    scaled.setPointSizeF(letters.pointSizeF() * scale);
    QApplication::setFont(scaled);
    TheTable.Chrome = ChromeOfSystem;
    for (const bool dark : {false, true}) {
      QApplication::setPalette(dark ? DarkPalette() : light);
      ShootScreens(QStringLiteral("%1%2").arg(qRound(scale * 100)).arg(dark ? "_dark" : ""));
    }
  }
  QApplication::setFont(letters);
  QApplication::setPalette(light);
  ShootScreensInColoursOfTables();
}

/// The pictures of the handbook's pages: screens as they open beside a game, the table where bets
/// lie, and what waits for an answer.
void ShootHandbook() {
  frmCrapTable table;
  InstallQtHost(&table);
  PlannedMessages.Active = true;  // nobody answers
  table.resize(kHandbookTable);
  const auto shoot = [&table](const QString& name) {
    TheHost.RefreshViews();
    SaveScreen(table, name);
  };
  Fresh();
  Game.DisplayBetAmounts = true;
  shoot("table");
  Lay(PassLine, 5);
  Game.ChipColor = 2;
  shoot("start");
  Game.Point = 6;
  Lay(PassLine, 10);
  shoot("pass-line");
  Lay(PassLineOdds, 20);
  ResetBetWorking(PassLineOdds);
  shoot("odds");

  PlayForScreens();
  OpenScript("examples/three-point-molly.bet");
  Game.Flags = {{"Point is up", kTrue, kFalse}, {"Come bet is down", kFalse, kFalse}};
  Game.HotKeys = {{'M', "martingale.bet", "Double after each loss"},
                  {'I', "iron-cross.bet", "Every total but the seven"}};
  const std::pair<WindowId, const char*> pages[] = {{AutoBetWindow, "auto-bet"},
                                                    {AutoPlayWindow, "auto-play"},
                                                    {BankrollWindow, "bankroll-graph"},
                                                    {BankrollWindow, "hyper-drive"},
                                                    {BetResultsWindow, "bet-results"},
                                                    {BetTrendsWindow, "bet-trends"},
                                                    {StackValuesWindow, "chip-stacks"},
                                                    {DiceRollFilesWindow, "dice-rolls"},
                                                    {EventsLogWindow, "events-log"},
                                                    {FlagsWindow, "flags"},
                                                    {GamesWindow, "games-log"},
                                                    {HotKeysWindow, "hot-keys"},
                                                    {RollFreqsWindow, "roll-frequencies"},
                                                    {RollPadWindow, "roll-pad"},
                                                    {RollTotalsWindow, "roll-totals"},
                                                    {SummaryWindow, "summary"}};
  for (const auto& [id, name] : pages) {
    Screen* screen = ShowScreen(id);
    SaveScreen(*screen, name);
    screen->close();
  }
  Screen* configuration = ShowScreen(ConfigureWindow);
  for (const auto& [tab, name] :
       {std::pair(0, "configuration"), std::pair(8, "probability"), std::pair(9, "advantage")}) {
    configuration->findChild<QAbstractButton*>(QString("cmdAltKeys_%1").arg(tab))->click();
    SaveScreen(*configuration, name);
  }
  configuration->close();
  frmSteps steps(&table);
  QTimer::singleShot(0, &steps, [&steps] {
    SaveScreen(steps, "steps");
    steps.findChild<QPushButton*>("cmdNextAutoBet")->click();
  });
  steps.WaitAt(3, Game.Script[3].LineText, "Condition is true (just now occurred).");
  Report report;
  report.Title = "Bet Trends";
  report.Heading = {"Bet Trends"};
  report.Columns = {"Bet", "Trend"};
  const auto trends = FigureBetTrends();
  report.Rows = static_cast<int>(trends.size());
  report.Row = [&trends](int row) {
    const BetTrend& trend = trends[static_cast<unsigned>(row)];
    return QStringList{QString::fromStdString(trend.Name), QString::fromStdString(trend.Streak)};
  };
  frmPrint print(report, &table);
  SaveScreen(print, "printing");
}

/// The screens of scripts, in the letters of the system and in larger ones.
void ShootScreensOfScripts() {
  const QFont letters = QApplication::font();
  for (const double scale : {1.0, 1.6}) {
    QFont scaled = letters;
    scaled.setPointSizeF(letters.pointSizeF() * scale);
    QApplication::setFont(scaled);
    const QString size = QStringLiteral("%1").arg(qRound(scale * 100));
    ShootFlags(size);
    ShootFileScreen(size);
    ShootMessages(size);
    ShootEventsLog(size);
  }
  QApplication::setFont(letters);
  ShootScript();
  ShootMenus();
}

void ShootTable() {
  ShootGame();
  ShootSizesAndPanels();
  ShootColours();
  ShootChipsAndDice();
  ShootPlay();
  ShootPiles();
  ShootFlight();
  ShootHouseRules();
}

}  // namespace

// kelvanor_screenshots [FOLDER [table|screens|colours|scripts|handbook]]
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  outputFolder.setPath(arguments.size() > 1 ? arguments.at(1) : QStringLiteral("screenshots"));
  if (!outputFolder.mkpath(QStringLiteral("."))) return 1;
  const QString part = arguments.value(2);
  if (part.isEmpty() || part == "table") ShootTable();
  if (part.isEmpty() || part == "screens") ShootScreensInAllLooks();
  if (part.isEmpty() || part == "scripts") ShootScreensOfScripts();
  if (part == "colours") ShootScreensInColoursOfTables();
  if (part == "handbook") ShootHandbook();
  QTextStream(stdout) << outputFolder.entryList({QStringLiteral("*.png")}).size() << " pictures in "
                      << outputFolder.path() << '\n';
  return failures == 0 ? 0 : 1;
}
