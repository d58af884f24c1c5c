// The configuration, clicked through: what is set is kept, what can't stand is refused.
#include <QAbstractButton>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeView>
#include <random>
#include <set>

#include "bets/consistency.h"
#include "bets/make_bet.h"
#include "bets/settle.h"
#include "core/host.h"
#include "dice/matrix_edit.h"
#include "persistence/game_file.h"
#include "persistence/game_file_table.h"
#include "play/roll_cycle.h"
#include "rules/advantage_table.h"
#include "rules/presets.h"
#include "screens/frame/guard.h"
#include "screens/rules/frmConfigure.h"
#include "screens/rules/probability_picture.h"
#include "screens/screen_driver.h"
#include "screens/screen_tests.h"

namespace {

/// All that a game file keeps of a field, by its name.
std::vector<Record> Kept(const FieldRow& row) {
  std::vector<Record> records(kFixedRecords);
  PutFields(std::span(&row, 1), Game, records);
  return records;
}

/// The fields that are set on this screen.
const std::set<std::string_view> kFieldsOfScreen = {
    "ConfigTab",       "ChipStyle",        "DiceStyle",
    "DiceAction",      "SimRollsPerHour",  "UseCentsSymbol",
    "StickPerson",     "DiceSound",        "ChipSound",
    "WinSound",        "AutoBetSounds",    "DisableAllSound",
    "CompBetMask",     "BaseComps",        "CompsUseTrueProbs",
    "CompRate",        "Notify",           "SnapMouse",
    "RngChoice",       "UserSeed",         "ReSeed",
    "MinPlacard",      "MaxPlacard",       "OddsAllowed410",
    "OddsAllowed59",   "OddsAllowed68",    "OddsCalcMethod",
    "BarDont",         "LayVigPct",        "RoundLayVig",
    "LayVigUpFront",   "BuyVigPct",        "RoundBuyVig",
    "BuyVigUpFront",   "AllowPutBets",     "UseSkewedProbability",
    "ProbabilityView", "RollsOutOf",       "IncludeZeroOutcomes",
    "ShowMiscData",    "AdvantageScroll",  "PayoffsScroll",
    "NegBankroll",     "BankrollInitType", "BankrollInitAmt",
    "AtmAmount",       "MaxPropPayoff",    "MaxOddsBet",
    "TableColor",      "TableFeltPattern", "PayoffCellLeft",
    "PayoffCellTop",   "ColorPrint",       "Bets(0-199)",
    "Payoff",          "FieldPayoff"};

}  // namespace

class TestConfigure : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    table_ = std::make_unique<frmCrapTable>();
    OpenScreen(*table_, "mnuConfigure", screen_);
    Game.StickPersons = Game.DiceSounds = Game.ChipSounds = Game.WinSounds = {"", "One", "Two"};
    Game.DataPath = folder_.path().toStdString() + "/";
    TheHost.ShowSettleScreen = [] { PressSettleButton(0); };
    TheHost.RefreshViews();
  }
  void cleanup() {
    table_.reset();
    Game.AppPath.clear();
  }

  /// Every setting is changed by clicks and keys, and comes back with the game.
  void everySettingComesBackWithTheGame() {
    std::map<std::string_view, std::vector<Record>> before;
    for (const FieldRow& row : GameFields())
      if (kFieldsOfScreen.contains(row.Name)) before[row.Name] = Kept(row);
    QCOMPARE(before.size(), kFieldsOfScreen.size());
    for (const int tab : {6, 0, 1, 2, 3, 4, 5, 8, 7, 9}) {
      ClickTab(tab);
      ClickThrough(tab);
    }
    screen_->close();
    QVERIFY2(!screen_->isVisible(), qPrintable(LastMessage()));
    for (const FieldRow& row : GameFields())
      if (before.contains(row.Name)) QVERIFY2(before[row.Name] != Kept(row), row.Name.data());
    QCOMPARE(FirstInconsistency(), std::string());
    const Settings settings = Game;
    const ProbabilityMatrix matrix = Game.ProbMatrix;
    for (const FieldRow& row : GameFields())
      if (before.contains(row.Name)) before[row.Name] = Kept(row);
    const std::string path = folder_.filePath("all.crp").toStdString();
    Game.PrbFileName = folder_.filePath("all.prb").toStdString();
    Command(*screen_, "mnuSaveProbability");
    SaveGame(path);
    LayDownDefaults();
    OpenGame(path, true);
    QVERIFY2(Game.LastFileResult > 0, qPrintable(LastMessage()));
    for (const FieldRow& row : GameFields())
      if (before.contains(row.Name)) QVERIFY2(before[row.Name] == Kept(row), row.Name.data());
    QVERIFY(settings.Payoff == Game.Payoff && settings.FieldPayoff == Game.FieldPayoff);
    QVERIFY(matrix == Game.ProbMatrix);
  }

  /// Whatever is typed and clicked, what a visit leaves behind is sound.
  void aThousandVisitsLeaveTheGameSound() {
    constexpr int kVisits = 1'000;
    std::mt19937 chance(7);
    const auto below = [&](std::size_t count) { return chance() % count; };
    const QStringList texts = {
        "",    "0",  "1",   "5",        "7.5", "25",  "100", "99999999999999",
        "-12", ".5", "0.0", "36000001", "1e9", "abc", "12.", "3000"};
    for (int visit = 0; visit < kVisits; ++visit) {
      PlannedMessages.Shown.clear();
      if (visit % 10 == 0) {
        for (const int betId : {int(PassLine), int(Buy4), int(Lay10), int(Place6), int(Hard8)}) {
          // Odds beyond reckoning are a fault of the click that asks for them.
          Guarded("Crap Table", [&] {
            Game.ChangeRequest = static_cast<int>(below(40));
            MakeBet(betId);
          });
        }
        RollDice();
      }
      Command(*table_, "mnuConfigure");
      for (int act = 0; act < 4; ++act) {
        ClickTab(static_cast<int>(below(frmConfigure::kTabs)));
        std::vector<QWidget*> controls;
        for (QWidget* control : screen_->findChildren<QWidget*>())
          if (control->isVisible() && control->isEnabled() && IsInput(control))
            controls.push_back(control);
        Use(controls[below(controls.size())], texts[below(texts.size())]);
      }
      screen_->close();
      if (screen_->isVisible()) {
        QVERIFY(!PlannedMessages.Shown.empty());  // an invalid entry has been told
        Mend();
        screen_->close();
      }
      QVERIFY2(!screen_->isVisible(), qPrintable(LastMessage()));
      QCOMPARE(FirstInconsistency(), std::string());
    }
  }

  /// Each entry in its box, and what the check says of it on the way to another tab.
  void entriesAreChecked_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stands");
    QTest::addColumn<QString>("title");  // none when the entry passes
    const auto row = [](int tab, const char* box, const char* typed, const char* stands,
                        const char* title = "") {
      QTest::addRow("%s: %s", box, typed) << tab << box << typed << stands << title;
    };
    const char* checks = "Check Values";
    const char* limits = "Configuration Limits";
    const char* rate = "Sim Roll Rate Out Of Limits";
    row(0, "txtDenomination_0", "0", "0", checks);
    row(0, "txtDenomination_0", "", "0", checks);
    row(0, "txtDenomination_0", "abc", "0", checks);
    row(0, "txtDenomination_0", "-1", "1");
    row(0, "txtDenomination_1", "1e0", "10");
    row(0, "txtDenomination_2", "7.50", "7.5", checks);
    row(0, "txtDenomination_4", "123456789012345", "1000000");
    row(0, "txtDenomination_4", "25", "25", checks);
    row(0, "txtDenomination_3", "25", "25");
    row(0, "txtRollsPerHour", "36000000", "36000000");
    row(0, "txtRollsPerHour", "36000001", "36000001", rate);
    row(0, "txtRollsPerHour", "0", "0", rate);
    row(0, "txtRollsPerHour", "", "", rate);
    row(0, "txtRollsPerHour", ".00001", ".0000", rate);
    row(0, "txtRollsPerHour", "0.0001", "0.0001");
    row(6, "txtMinPlacardBet", "0.5", "0.5", limits);
    row(6, "txtMaxPlacardBet", "0", "0", limits);
    row(6, "txtMaxPlacardBet", "1", "1");
    row(6, "txtLayVigPct", "4.25", "4.2");
    row(5, "txtBankrollInitAmount", "-250.505", "-250.5");
    row(5, "txtAddSub", "-2", "2");
  }
  void entriesAreChecked() {
    QFETCH(int, tab);
    QFETCH(QString, box);
    QFETCH(QString, typed);
    QFETCH(QString, stands);
    QFETCH(QString, title);
    ClickTab(tab);
    TypeInto(box, typed);
    ClickTab(tab == 0 ? 3 : 0);
    if (title.isEmpty()) {
      QVERIFY2(PlannedMessages.Shown.empty(), qPrintable(LastMessage()));
      QVERIFY(Game.ConfigTab != tab);
      ClickTab(tab);
    } else {
      QCOMPARE(PlannedMessages.Shown.back().Title, title.toStdString());
      QCOMPARE(Game.ConfigTab, tab);
      QVERIFY(Find<QLineEdit>(screen_, box)->hasFocus());
      QVERIFY(!screen_->close());
      QTest::keyClick(screen_, Qt::Key_B, Qt::AltModifier);
      QCOMPARE(Game.ConfigTab, tab);
    }
    QCOMPARE(Find<QLineEdit>(screen_, box)->text(), stands);
    QCOMPARE(FirstInconsistency(), std::string());
  }

  void whatTheBankrollCannotBearIsRefused() {
    Game.Bets[BankrollIndex] = 102;
    Game.BuyVigUpFront = false;
    Game.ChangeRequest = 100;
    MakeBet(Buy4);
    ClickTab(BetsTab);
    Find<QAbstractButton>(screen_, "optBuyVig_0")->click();
    QCOMPARE(PlannedMessages.Shown.back().Title, std::string("Buy Bet Vig"));
    QVERIFY(Find<QAbstractButton>(screen_, "optBuyVig_1")->isChecked() && !Game.BuyVigUpFront);
    ClickTab(BankrollTab);
    auto* negative = Find<QCheckBox>(screen_, "chkAllowNegBankroll");
    negative->click();
    QVERIFY(Game.NegBankroll);
    Game.Bets[BankrollIndex] = 40;
    negative->click();
    ExpectMessage(
        "The amount of your current bets exceeds your current bankroll.  Therefore, before you can "
        "un-check this box you must either:\n -- Reduce the amount of your current bets, or \n"
        " -- Make at least a $60 withdrawal from the ATM.",
        "Bankroll");
    QVERIFY(negative->isChecked());
    TypeInto("txtAddSub", "60");
    Find<QAbstractButton>(screen_, "cmdAddSub_0")->click();
    QCOMPARE(Find<QLabel>(screen_, "lblCurrentBankroll")->text(), QString("$100"));
    negative->click();
    QVERIFY(!negative->isChecked() && !Game.NegBankroll);
  }

  void payoffsAreEditedByKeyboardAlone() {
    ClickTab(PayoffsTab);
    auto* bets = Find<QTableView>(screen_, "picPayoffs");
    bets->setFocus();
    bets->setCurrentIndex(bets->model()->index(30, 1));  // Place 4
    Keys(bets, "11\t");
    QCOMPARE(Game.Payoff[Place4].Win, Currency(11));
    QTest::keyClick(bets, 'x');
    QVERIFY(Game.Payoff[Place4].ShownAsTo);
    QTest::keyClick(bets, 'f');
    QCOMPARE(RowText(bets, 30, 1) + RowText(bets, 30, 2) + RowText(bets, 30, 3), QString("11for5"));
    QCOMPARE(Game.Payoff[Place4].Win, Currency(6));
    QTest::keyClick(bets, Qt::Key_Tab);
    Keys(bets, "4\r");
    QCOMPARE(Game.Payoff[Place4].Win, Currency(7));  // what was shown to the left has stayed
    bets->setCurrentIndex(bets->model()->index(30, 3));
    Keys(bets, "0\r");
    QCOMPARE(Game.Payoff[Place4].Per, Currency(4));
    bets->setCurrentIndex(bets->model()->index(30, 1));
    Keys(bets, "4");
    QTest::keyClick(Box(bets), Qt::Key_Down);
    QCOMPARE(bets->currentIndex().row(), 31);
    ClickTab(BetsTab);
    ExpectMessage("The payoff on Place 4 must be a positive amount.", "Payoff ratio error");
    QCOMPARE(bets->currentIndex().row(), 30);
    PlannedMessages.Answers = {{AnswerYes}};
    Game.Point = 4;
    Command(*screen_, "mnuRestorePayoffs");
    QCOMPARE(Game.Payoff[PassLineOdds], (PayoffRecord{2, true, 1}));
    Command(*screen_, "mnuSetField_9");
    auto* field = Find<QTableView>(screen_, "picFieldPayoffs");
    QCOMPARE(RowText(field, 0, 1) + RowText(field, 0, 2) + RowText(field, 0, 3), QString("31for4"));
    field->setFocus();
    field->setCurrentIndex(field->model()->index(5, 1));
    Keys(field, "-6\r");
    ClickTab(BetsTab);
    ExpectMessage("The loss on any Field payoff cannot \nexceed the amount wagered.",
                  "Payoff ratio error");
    Game.Point = 0;
  }

  void compsFollowTheirList() {
    ClickTab(CompsTab);
    auto* list = Find<QListView>(screen_, "lstCompBets");
    ClickRow(list, CAndE - Lay4);
    ClickButton(screen_, "cmdYes");
    QCOMPARE(RowText(list, CAndE - Lay4), QString("C and E - No"));
    QCOMPARE(RowText(list, Horn - Lay4), QString("Horn - Yes"));
    ClickButton(screen_, "cmdNo");
    QCOMPARE(RowText(list, Horn - Lay4), QString("Horn - No"));
    Game.BetWagers[Actual][Place6][StatCount] = 10;
    Game.BetWagers[Actual][Place6][StatSum] = 1200;
    const auto value = [this] { return Find<QLabel>(screen_, "lblCompdata_5")->text(); };
    const QString values[] = {"5.45", "360.00", "0.00"};
    for (int base = 0; base < 3; ++base) {
      Find<QAbstractButton>(screen_, QString("optBaseComps_%1").arg(base))->click();
      if (base < 2) QCOMPARE(value(), values[base]);
    }
    TypeInto("txtCompRate", "999999999");
    QCOMPARE(Find<QLabel>(screen_, "lblCompdata_1")->text(), QString("1,200"));
  }

  void advantagesAreSortedAndCopied() {
    ClickTab(AdvantageTab);
    auto* view = Find<QTableView>(screen_, "picAdvantage");
    const QString first = RowText(view, 0);
    const auto clickHead = [view](int column) {
      QHeaderView* head = view->horizontalHeader();
      QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                        {head->sectionViewportPosition(column) + 20, head->height() / 2});
    };
    clickHead(3);
    QVERIFY(RowText(view, 0, 3).toDouble() < RowText(view, 40, 3).toDouble());
    clickHead(3);
    QVERIFY(RowText(view, 0, 3).toDouble() > RowText(view, 40, 3).toDouble());
    Command(*screen_, "mnuCopyAdvantages");
    const QString copied = QApplication::clipboard()->text();
    QCOMPARE(copied.count('\n'), 84);
    QVERIFY(copied.section('\n', 1, 1).startsWith(RowText(view, 0) + '\t'));
    clickHead(3);
    QCOMPARE(RowText(view, 0), first);
    const QString before = RowText(view, Place6 - Lay4, 3);
    Command(*screen_, "mnuIncludeZeroOutcomes");
    QVERIFY(RowText(view, Place6 - Lay4, 3) != before);
    Command(*screen_, "mnuShowMiscData");
    QCOMPARE(view->model()->headerData(5, Qt::Horizontal).toString(), QString("Time/Dec"));
    QVERIFY(Find<QLabel>(screen_, "lblAdvantageNote")->text().isEmpty());
  }

  void probabilitiesAreEditedUndoneAndKept() {
    ClickTab(ProbabilityTab);
    auto* picture = Find<picProbabilityBox>(screen_, "picProbability");
    const auto choose = [picture](MatrixPlace place) {
      QTest::mouseClick(picture, Qt::LeftButton, {}, picture->AreaOf(place).center().toPoint());
    };
    const auto shareOf = [](int die1, int die2) {
      return ShareOfThrow(Game.ProbMatrix, die1, die2);
    };
    choose(PlaceOfThrow(6, 6));
    QTest::keyClick(picture, '5');
    QTest::keyClicks(Find<QLineEdit>(picture, "txtShare"), ".5");
    QTest::keyClick(Find<QLineEdit>(picture, "txtShare"), Qt::Key_Return);
    QCOMPARE(shareOf(6, 6), 5500);
    QTest::keyClick(picture, Qt::Key_Up);
    QCOMPARE(shareOf(6, 6), 5600);
    QTest::keyClick(picture, 'l');
    QTest::keyClick(picture, Qt::Key_Down);
    QCOMPARE(shareOf(6, 6), 5600);
    QVERIFY(!Find<QLabel>(screen_, "lblRefusal")->text().isEmpty());
    QVERIFY(screen_->windowTitle().endsWith("Untitled *"));
    for (int undo = 0; undo < 3; ++undo) QTest::keySequence(picture, QKeySequence::Undo);
    QCOMPARE(shareOf(6, 6), 2778);
    QTest::keySequence(picture, QKeySequence::Redo);
    QCOMPARE(shareOf(6, 6), 5500);
    Command(*screen_, "mnuAxis");
    TypeInto("txtAxisShare", "80");
    ClickButton(screen_, "cmdAxisOK");
    QCOMPARE(Find<QLabel>(screen_, "lblPercentageDice")->text(), QString("Percentage Dice"));
    QCOMPARE(shareOf(1, 6), 1000);
    choose(PlaceOfThrow(1, 1));
    QTest::keyClick(picture, '9');
    QTest::keyClicks(Find<QLineEdit>(picture, "txtShare"), "e9");
    QTest::keyClick(Find<QLineEdit>(picture, "txtShare"), Qt::Key_Return);
    ExpectMessage("\"9e9\" is no number.", "Probabilities");
    Game.PrbFileName = folder_.filePath("axis.prb").toStdString();
    QTest::keySequence(picture, QKeySequence::Save);
    QVERIFY(screen_->windowTitle().endsWith("axis.prb") && !Game.ProbabilityChanged);
    Command(*screen_, "mnuNewProbability");
    QCOMPARE(shareOf(1, 6), 2778);
    QVERIFY(!Find<QAction>(screen_, "mnuUndo")->isEnabled());
  }

  void soundsAreGreyedWhereTheyAreOff() {
    ClickTab(SoundTab);
    std::vector<std::string> played;
    TheHost.PlaySound = [&](const std::string& path, SoundMode) { played.push_back(path); };
    QTest::keyClick(Find<QComboBox>(screen_, "cmbWinSound"), Qt::Key_End);
    QCOMPARE(Game.WinSound, 2);
    ClickButton(screen_, "cmdTestWin");
    QVERIFY(played.size() == 1 && QString::fromStdString(played[0]).endsWith("Two"));
    Find<QCheckBox>(screen_, "chkDisableAllSound")->click();
    for (const char* name :
         {"chkAutoBetSounds", "cmbStickPerson", "cmbDiceSound", "cmbChipSound", "cmbWinSound",
          "cmdTestChips", "cmdTestDice", "cmdTestWin", "cmdTestStickPerson"})
      QVERIFY2(!Find<QWidget>(screen_, name)->isEnabled(), name);
  }

 private:
  static QString LastMessage() {
    return PlannedMessages.Shown.empty()
               ? QString()
               : QString::fromStdString(PlannedMessages.Shown.back().Text);
  }

  void ClickTab(int tab) {
    QTest::mouseClick(Find<QAbstractButton>(screen_, QString("cmdAltKeys_%1").arg(tab)),
                      Qt::LeftButton);
  }

  void TypeInto(const QString& name, const QString& text) {
    auto* box = Find<QLineEdit>(screen_, name);
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, text);
  }

  /// The open box of a grid; keys go to the grid where none is open.
  static QWidget* Box(QTableView* view) {
    for (auto* box : view->findChildren<QLineEdit*>("txtPayoff"))
      if (box->isVisible()) return box;
    return view;
  }
  static void Keys(QTableView* view, const QString& keys) {
    for (const QChar key : keys) {
      if (key == '\t' || key == '\r')
        QTest::keyClick(Box(view), key == '\t' ? Qt::Key_Tab : Qt::Key_Return);
      else
        QTest::keyClick(Box(view), key.toLatin1());
    }
  }

  static bool IsInput(QWidget* control) {
    const QString name = control->objectName();
    if (name.isEmpty() || name.startsWith("cmdAltKeys") || name.startsWith("qt_") ||
        name == "cmdMoreColors" || name == "cmdSeedRNG")
      return false;
    return qobject_cast<QLineEdit*>(control) || qobject_cast<QAbstractButton*>(control) ||
           qobject_cast<QComboBox*>(control) || qobject_cast<QTableView*>(control) ||
           qobject_cast<picProbabilityBox*>(control);
  }

  static void Use(QWidget* control, const QString& text) {
    if (auto* view = qobject_cast<QTableView*>(control)) {
      const int rows = view->model()->rowCount();
      if (view->objectName().endsWith("ayoffs"))
        view->setCurrentIndex(view->model()->index(static_cast<int>(text.size()) * 7 % rows,
                                                   1 + int(text.size()) % 3));
      Keys(view, text + "\r");
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
      button->click();
    } else if (qobject_cast<QComboBox*>(control)) {
      QTest::keyClick(control, text.size() % 2 ? Qt::Key_Down : Qt::Key_Up);
    } else {
      control->setFocus();
      if (auto* box = qobject_cast<QLineEdit*>(control)) box->selectAll();
      QTest::keyClicks(control, text);
    }
  }

  /// Makes valid what a visit has left invalid.
  void Mend() {
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}};
    Command(*screen_, "mnuRestoreDenominations");
    Command(*screen_, "mnuRestorePayoffs");
    TypeInto("txtMinPlacardBet", "1");
    TypeInto("txtMaxPlacardBet", "1000");
    TypeInto("txtRollsPerHour", "1");
    for (const char* multiple : {"txtOddsAllowed410", "txtOddsAllowed59", "txtOddsAllowed68"})
      TypeInto(multiple, "2");
    for (const char* vig : {"txtBuyVigPct", "txtLayVigPct"}) TypeInto(vig, "5");
    TypeInto("txtMaxOddsBet", "2000");
    TypeInto("txtMaxPropBetPayoff", "3000");
    PlannedMessages.Answers.clear();
  }

  /// Changes all that a tab holds.
  void ClickThrough(int tab) {
    QWidget* page = Find<QWidget>(screen_, "picPanel");
    const auto visible = [](const QWidget* control) {
      return control->isVisible() && control->isEnabled() && !control->objectName().isEmpty();
    };
    for (auto* box : page->findChildren<QLineEdit*>())
      if (visible(box) && box->objectName() != "txtShare") TypeNew(box);
    for (auto* list : page->findChildren<QComboBox*>())
      if (visible(list)) QTest::keyClick(list, Qt::Key_End);
    for (auto* box : page->findChildren<QCheckBox*>())
      if (visible(box) && box->objectName() != "chkDisableAllSound") box->click();
    for (const char* option :
         {"picChips_4", "picDice_3", "optDiceAction_2", "optBaseComps_1", "optSeedRNG_1",
          "optBankrollInitType_3", "optBarDont_0", "optLayVig_1", "optBuyVig_1", "picTableColors_5",
          "chkDisableAllSound"}) {
      auto* button = Find<QAbstractButton>(page, option);
      if (visible(button)) button->click();
    }
    if (tab == CompsTab) {
      ClickRow(Find<QListView>(page, "lstCompBets"), 70);
      ClickButton(screen_, "cmdNo");
    } else if (tab == ColorsTab) {
      for (int slot = 0; slot < kTableColors; ++slot) {
        Find<QAbstractButton>(page, QString("optTableColors_%1").arg(slot))->click();
        auto* colors = Find<QWidget>(page, "picColorpal");
        QTest::mouseClick(colors, Qt::LeftButton, {},
                          {colors->width() * (2 * slot + 3) / 24, colors->height() / 2});
      }
    } else if (tab == PayoffsTab) {
      auto* bets = Find<QTableView>(page, "picPayoffs");
      bets->setFocus();
      bets->scrollToBottom();
      bets->setCurrentIndex(bets->model()->index(60, 3));
      Keys(bets, "2\r");
      Command(*screen_, "mnuSetField_5");
    } else if (tab == AdvantageTab) {
      Command(*screen_, "mnuIncludeZeroOutcomes");
      Command(*screen_, "mnuShowMiscData");
      Find<QTableView>(page, "picAdvantage")->scrollToBottom();
    } else if (tab == ProbabilityTab) {
      QTest::keyClick(Find<QWidget>(page, "picProbability"), Qt::Key_Up);
    }
  }

  /// A value that is legal in any box: the checks stay multiples of the smallest.
  void TypeNew(QLineEdit* box) {
    const QString name = box->objectName();
    const int last = name.back().digitValue();
    const QString value = name.startsWith("txtDenomination") ? QString::number(2 << last)
                          : name == "txtMaxPlacardBet"       ? "5000"
                          : name.contains("Vig")             ? "4.5"
                                                             : "42";
    TypeInto(name, value);
  }

  QTemporaryDir folder_;
  std::unique_ptr<frmCrapTable> table_;
  frmConfigure* screen_ = nullptr;
};

SCREEN_TEST(TestConfigure)
#include "test_configure.moc"
