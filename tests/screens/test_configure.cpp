// The configuration, clicked through: what is set is kept, what can't stand is refused.
#include <QHeaderView>
#include <random>

#include "bets/settle.h"
#include "persistence/game_file.h"
#include "persistence/game_file_table.h"
#include "rules/advantage_table.h"
#include "screens/frame/guard.h"
#include "screens/rules/frmConfigure.h"
#include "screens/rules/probability_picture.h"
#include "screens/screen_driver.h"

namespace {

/// The fields that are set on this screen.
const QStringList kFieldsOfScreen =
    QString(
        "ConfigTab ChipStyle DiceStyle DiceAction SimRollsPerHour UseCentsSymbol StickPerson "
        "DiceSound ChipSound WinSound AutoBetSounds DisableAllSound CompBetMask BaseComps "
        "CompsUseTrueProbs CompRate Notify SnapMouse RngChoice UserSeed ReSeed MinPlacard "
        "MaxPlacard OddsAllowed410 OddsAllowed59 OddsAllowed68 OddsCalcMethod BarDont LayVigPct "
        "RoundLayVig LayVigUpFront BuyVigPct RoundBuyVig BuyVigUpFront AllowPutBets "
        "UseSkewedProbability ProbabilityView RollsOutOf IncludeZeroOutcomes ShowMiscData "
        "AdvantageScroll PayoffsScroll NegBankroll BankrollInitType BankrollInitAmt AtmAmount "
        "MaxPropPayoff MaxOddsBet TableColor TableFeltPattern PayoffCellLeft PayoffCellTop "
        "ColorPrint Bets(0-199) Payoff FieldPayoff")
        .split(' ');

/// What a game file would keep of them now.
std::map<std::string_view, std::vector<Record>> KeptNow() {
  std::map<std::string_view, std::vector<Record>> kept;
  for (const FieldRow& row : GameFields()) {
    if (!kFieldsOfScreen.contains(std::string(row.Name).c_str())) continue;
    kept[row.Name].resize(kFixedRecords);
    PutFields(std::span(&row, 1), Game, kept[row.Name]);
  }
  return kept;
}

}  // namespace

class TestConfigure : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuConfigure", screen_);
    Game.StickPersons = Game.DiceSounds = Game.ChipSounds = Game.WinSounds = {"", "One", "Two"};
    TheHost.ShowSettleScreen = [] { PressSettleButton(0); };
    TheHost.RefreshViews();
  }

  /// Every setting is changed by clicks and keys, and comes back with the game.
  void everySettingComesBackWithTheGame() {
    const auto before = KeptNow();
    QCOMPARE(qsizetype(before.size()), kFieldsOfScreen.size());
    for (const int tab : {6, 0, 1, 2, 3, 4, 5, 8, 7, 9}) {
      ClickTab(tab);
      ClickThrough(tab);
    }
    screen_->close();
    QVERIFY2(!screen_->isVisible(), qPrintable(Told()));
    const auto after = KeptNow();
    for (const auto& [name, records] : after) QVERIFY2(before.at(name) != records, name.data());
    QCOMPARE(FirstInconsistency(), std::string());
    const ProbabilityMatrix matrix = Game.ProbMatrix;
    Game.PrbFileName = Path("all.prb").toStdString();
    Menu("mnuSaveProbability");
    SaveGame(Path("all.crp").toStdString());
    LayDownDefaults();
    OpenGame(Path("all.crp").toStdString(), true);
    QVERIFY2(Game.LastFileResult > 0, qPrintable(Told()));
    for (const auto& [name, records] : KeptNow()) QVERIFY2(after.at(name) == records, name.data());
    QVERIFY(matrix == Game.ProbMatrix);
  }

  /// Whatever is typed and clicked, what a visit leaves behind is sound.
  void aThousandVisitsLeaveTheGameSound() {
    constexpr int kVisits = 1'000;
    std::mt19937 chance(7);
    const auto below = [&](std::size_t count) { return chance() % count; };
    const QStringList texts =
        QString(" 0 1 5 7.5 25 100 99999999999999 -12 .5 0.0 36000001 1e9 abc 12. 3000").split(' ');
    for (int visit = 0; visit < kVisits; ++visit) {
      PlannedMessages.Shown.clear();
      if (visit % 10 == 0) {
        // Odds beyond reckoning are a fault of the click that asks for them.
        for (const int betId : {+PassLine, +Buy4, +Lay10, +Place6, +Hard8})
          Guarded("Crap Table", [&] { PutBet(betId, static_cast<int>(below(40))); });
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
      QVERIFY2(!screen_->isVisible(), qPrintable(Told()));
      QCOMPARE(FirstInconsistency(), std::string());
    }
  }

  /// Each entry in its box, and what the check says of it on the way to another tab.
  void entriesAreChecked() {
    const char* checks = "Check Values";
    const char* limits = "Configuration Limits";
    const char* rate = "Sim Roll Rate Out Of Limits";
    // The tab, its box, what is typed, what stands then, and the title of the refusal, if any.
    const std::tuple<int, const char*, const char*, const char*, const char*> rows[] = {
        // clang-format off
        {0, "txtDenomination_0", "", "0", checks}, {0, "txtDenomination_0", "abc", "0", checks},
        {0, "txtDenomination_0", "-1", "1", ""}, {0, "txtDenomination_1", "1e0", "10", ""},
        {0, "txtDenomination_2", "7.50", "7.5", checks},
        {0, "txtDenomination_4", "123456789012345", "1000000", ""},
        {0, "txtRollsPerHour", "36000001", "36000001", rate}, {0, "txtRollsPerHour", "", "", rate},
        {0, "txtRollsPerHour", ".00001", ".0000", rate},
        {0, "txtRollsPerHour", "0.0001", "0.0001", ""}, {6, "txtMaxPlacardBet", "0", "0", limits},
        {6, "txtMaxPlacardBet", "1", "1", ""}, {6, "txtLayVigPct", "4.25", "4.2", ""},
        {5, "txtBankrollInitAmount", "-250.505", "-250.5", ""}, {5, "txtAddSub", "-2", "2", ""}};
    // clang-format on
    for (const auto& [tab, box, typed, stands, title] : rows) {
      Open("mnuConfigure", screen_);
      ClickTab(tab);
      Type(box, typed);
      ClickTab(tab == 0 ? 3 : 0);
      const bool refused = *title != 0;
      QVERIFY2((Game.ConfigTab == tab) == refused && PlannedMessages.Shown.empty() != refused, box);
      if (refused) {
        QCOMPARE(PlannedMessages.Shown.back().Title, title);
        QVERIFY(Get<QLineEdit>(box)->hasFocus() && !screen_->close());
        QTest::keyClick(screen_, Qt::Key_B, Qt::AltModifier);
        QCOMPARE(Game.ConfigTab, tab);
      }
      ClickTab(tab);
      QCOMPARE(Get<QLineEdit>(box)->text(), stands);
      QCOMPARE(FirstInconsistency(), std::string());
    }
  }

  void whatTheBankrollCannotBearIsRefused() {
    Game.Bets[BankrollIndex] = 102;
    Game.BuyVigUpFront = false;
    PutBet(Buy4, 100);
    ClickTab(BetsTab);
    Press("optBuyVig_0");
    QCOMPARE(PlannedMessages.Shown.back().Title, std::string("Buy Bet Vig"));
    QVERIFY(Get<QAbstractButton>("optBuyVig_1")->isChecked() && !Game.BuyVigUpFront);
    ClickTab(BankrollTab);
    auto* negative = Get<QCheckBox>("chkAllowNegBankroll");
    negative->click();
    QVERIFY(Game.NegBankroll);
    Game.Bets[BankrollIndex] = 40;
    negative->click();
    QVERIFY(negative->isChecked() && Told().endsWith("a $60 withdrawal from the ATM."));
    Type("txtAddSub", "60");
    Press("cmdAddSub_0");
    QCOMPARE(Label("lblCurrentBankroll"), QString("$100"));
    negative->click();
    QVERIFY(!negative->isChecked() && !Game.NegBankroll);
  }

  void payoffsAreEditedByKeyboardAlone() {
    ClickTab(PayoffsTab);
    auto* bets = Get<QTableView>("picPayoffs");
    bets->setFocus();
    bets->setCurrentIndex(bets->model()->index(30, 1));  // Place 4
    Keys(bets, "11\tx");
    QVERIFY(Game.Payoff[Place4].ShownAsTo);
    Keys(bets, "f");
    QCOMPARE(RowTexts(bets, 30), "Place 4 11for5");
    Keys(bets, "\t4\r");  // what was shown to the left has stayed
    QCOMPARE(Game.Payoff[Place4], (PayoffRecord{7, false, 4}));
    bets->setCurrentIndex(bets->model()->index(30, 1));
    Keys(bets, "4");
    QTest::keyClick(Box(bets), Qt::Key_Down);
    QCOMPARE(bets->currentIndex().row(), 31);
    ClickTab(BetsTab);
    ExpectMessage("The payoff on Place 4 must be a positive amount.", "Payoff ratio error");
    QCOMPARE(bets->currentIndex().row(), 30);
    PlannedMessages.Answers = {{AnswerYes}};
    Game.Point = 4;
    Menu("mnuRestorePayoffs");
    QCOMPARE(Game.Payoff[PassLineOdds], (PayoffRecord{2, true, 1}));
    Menu("mnuSetField_9");
    auto* field = Get<QTableView>("picFieldPayoffs");
    QVERIFY(RowTexts(field, 0).endsWith("31for4"));
    field->setFocus();
    field->setCurrentIndex(field->model()->index(5, 1));
    Keys(field, "-6\r");
    ClickTab(BetsTab);
    QCOMPARE(PlannedMessages.Shown.back().Title, "Payoff ratio error");
    Game.Point = 0;
  }

  void compsFollowTheirList() {
    ClickTab(CompsTab);
    auto* list = Get<QListView>("lstCompBets");
    ClickRow(list, CAndE - Lay4);
    Click("cmdYes");
    QCOMPARE(RowText(list, CAndE - Lay4), QString("C and E - No"));
    QCOMPARE(RowText(list, Horn - Lay4), QString("Horn - Yes"));
    Click("cmdNo");
    QCOMPARE(RowText(list, Horn - Lay4), QString("Horn - No"));
    Game.BetWagers[Actual][Place6] = {0, 10, 1200};
    for (const auto& [base, value] : {std::pair("0", "5.45"), {"1", "360.00"}}) {
      Press(QString("optBaseComps_") + base);
      QCOMPARE(Label("lblCompdata_5"), value);
    }
    QCOMPARE(Label("lblCompdata_1"), QString("1,200"));
  }

  void advantagesAreSortedAndCopied() {
    ClickTab(AdvantageTab);
    auto* view = Get<QTableView>("picAdvantage");
    const QString first = RowText(view, 0);
    QHeaderView* head = view->horizontalHeader();
    for (const int order : {1, -1, 0}) {  // rising, falling, as they stood
      QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                        {head->sectionViewportPosition(3) + 20, head->height() / 2});
      const double rise = RowText(view, 40, 3).toDouble() - RowText(view, 0, 3).toDouble();
      QVERIFY(order == 0 ? RowText(view, 0) == first : rise * order > 0);
      Menu("mnuCopyAdvantages");
      const QString copied = QApplication::clipboard()->text();
      QVERIFY(copied.count('\n') == 84 && copied.contains('\n' + RowText(view, 0) + '\t'));
    }
    const QString before = RowText(view, Place6 - Lay4, 3);
    Menu("mnuIncludeZeroOutcomes");
    QVERIFY(RowText(view, Place6 - Lay4, 3) != before);
    Menu("mnuShowMiscData");
    QCOMPARE(view->model()->headerData(5, Qt::Horizontal).toString(), QString("Time/Dec"));
  }

  void probabilitiesAreEditedUndoneAndKept() {
    ClickTab(ProbabilityTab);
    auto* picture = Get<picProbabilityBox>("picProbability");
    const auto type = [picture](MatrixPlace place, const char* share) {
      QTest::mouseClick(picture, Qt::LeftButton, {}, picture->AreaOf(place).center().toPoint());
      QTest::keyClick(picture, *share);  // opens the box
      QTest::keyClicks(Find<QLineEdit>(picture, "txtShare"), share + 1);
      QTest::keyClick(Find<QLineEdit>(picture, "txtShare"), Qt::Key_Return);
    };
    const auto shareOf = [](int a, int b) { return ShareOfThrow(Game.ProbMatrix, a, b); };
    type(PlaceOfThrow(6, 6), "5.5");
    QCOMPARE(shareOf(6, 6), 5500);
    QTest::keyClick(picture, Qt::Key_Up);
    QCOMPARE(shareOf(6, 6), 5600);
    QTest::keyClick(picture, 'l');
    QTest::keyClick(picture, Qt::Key_Down);
    QVERIFY(shareOf(6, 6) == 5600 && !Label("lblRefusal").isEmpty());
    QVERIFY(screen_->windowTitle().endsWith("Untitled *"));
    for (int undo = 0; undo < 3; ++undo) QTest::keySequence(picture, QKeySequence::Undo);
    QCOMPARE(shareOf(6, 6), 2778);
    QTest::keySequence(picture, QKeySequence::Redo);
    QCOMPARE(shareOf(6, 6), 5500);
    Menu("mnuAxis");
    Type("txtAxisShare", "80");
    Click("cmdAxisOK");
    QCOMPARE(Label("lblPercentageDice"), "Percentage Dice");
    QCOMPARE(shareOf(1, 6), 1000);
    type(PlaceOfThrow(1, 1), "9e9");
    ExpectMessage("\"9e9\" is no number.", "Probabilities");
    Game.PrbFileName = Path("axis.prb").toStdString();
    QTest::keySequence(picture, QKeySequence::Save);
    QVERIFY(screen_->windowTitle().endsWith("axis.prb") && !Game.ProbabilityChanged);
    Menu("mnuNewProbability");
    QCOMPARE(shareOf(1, 6), 2778);
    QVERIFY(!Get<QAction>("mnuUndo")->isEnabled());
  }

  void soundsAreGreyedWhereTheyAreOff() {
    ClickTab(SoundTab);
    std::vector<std::string> played;
    TheHost.PlaySound = [&](const std::string& path, SoundMode) { played.push_back(path); };
    QTest::keyClick(Get<QComboBox>("cmbWinSound"), Qt::Key_End);
    QCOMPARE(Game.WinSound, 2);
    Click("cmdTestWin");
    QVERIFY(played.size() == 1 && QString::fromStdString(played[0]).endsWith("Two"));
    Get<QCheckBox>("chkDisableAllSound")->click();
    for (const char* name :
         {"chkAutoBetSounds", "cmbStickPerson", "cmbDiceSound", "cmbChipSound", "cmbWinSound",
          "cmdTestChips", "cmdTestDice", "cmdTestWin", "cmdTestStickPerson"})
      QVERIFY2(!Get<QWidget>(name)->isEnabled(), name);
  }

 private:
  /// The words of a row of a grid.
  static QString RowTexts(const QTableView* g, int row) {
    return RowText(g, row) + " " + RowText(g, row, 1) + RowText(g, row, 2) + RowText(g, row, 3);
  }

  void ClickTab(int tab) {
    QTest::mouseClick(Get<QAbstractButton>(QString("cmdAltKeys_%1").arg(tab)), Qt::LeftButton);
  }

  /// The open box of a grid; keys go to the grid where none is open.
  static QWidget* Box(QTableView* view) {
    for (auto* box : view->findChildren<QLineEdit*>("txtPayoff"))
      if (box->isVisible()) return box;
    return view;
  }
  static void Keys(QTableView* view, const QString& keys) {
    for (const QChar key : keys) QTest::keyClick(Box(view), key.toLatin1());
  }

  static bool IsInput(QWidget* control) {
    static const QRegularExpression left("^$|^cmdAltKeys|^qt_|^cmdMoreColors$|^cmdSeedRNG$");
    if (left.match(control->objectName()).hasMatch()) return false;
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
    Menu("mnuRestoreDenominations");
    Menu("mnuRestorePayoffs");
    constexpr std::pair<const char*, const char*> kValid[] = {
        {"txtMinPlacardBet", "1"},      {"txtMaxPlacardBet", "1000"}, {"txtRollsPerHour", "1"},
        {"txtOddsAllowed410", "2"},     {"txtOddsAllowed59", "2"},    {"txtOddsAllowed68", "2"},
        {"txtBuyVigPct", "5"},          {"txtLayVigPct", "5"},        {"txtMaxOddsBet", "2000"},
        {"txtMaxPropBetPayoff", "3000"}};
    for (const auto& [box, text] : kValid) Type(box, text);
    PlannedMessages.Answers.clear();
  }

  /// Changes all that a tab holds.
  void ClickThrough(int tab) {
    QWidget* page = Get<QWidget>("picPanel");
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
      Click("cmdNo");
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
      Menu("mnuSetField_5");
    } else if (tab == AdvantageTab) {
      Menu("mnuIncludeZeroOutcomes");
      Menu("mnuShowMiscData");
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
    Type(name, value);
  }

  frmConfigure* screen_ = nullptr;
};

SCREEN_TEST(TestConfigure)
#include "test_configure.moc"
