// Games played by mouse on the real table, with every amount counted by hand.
#include <span>

#include "screens/play/frmStackValues.h"
#include "screens/screen_driver.h"

namespace {

// Places of the rack.
constexpr QPointF kChip25{295, 16}, kChip5{320, 16}, kChip1{345, 16}, kSelectStack1{193, 16};

/// What the chips lying on a bet are worth.
Currency WorthOfChips(int betId) {
  Currency worth;
  for (const Chip& chip : std::span(Game.ChipList).first(static_cast<unsigned>(Game.ChipCount)))
    if (chip.BetId == betId) worth += ChipValue(chip.Picture);
  return worth;
}

/// A place of the stick person's spot, on the person or on the switch below.
QPointF StickPersonPlace(bool onSwitch) {
  for (double y = onSwitch ? kStickPersonBottom + 3 : 1; y < kTableHeight; ++y)
    for (double x = 500; x < kTableWidth; ++x)
      if (PickedSpotAt(x, y) == StickPersonSpot && PickedSpotAt(x + 2, y + 2) == StickPersonSpot)
        return {x + 1, y + 1};
  return {};
}

}  // namespace

class TestPlayByMouse : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    Game.AutoAdjust = AdjustManual;
    Game.HandleWinningBets = WinSameBet;
  }

  void playsAGameFromComeOutToSevenOut() {
    Click(kChip5);
    ClickBets({PassLine, PassLine});
    Roll(4, 2);  // the point is 6
    ExpectBet(PassLine, 10);

    ClickBet(Place8);
    Click(kChip1);
    ClickBet(Place8);
    ExpectChips(Place8, 6);
    Click(kChip5);
    ClickBets({Place10, Place10, Place10, Place10});
    Click(MarkerSpotRect(BuyMarkerSpot).center());
    QCOMPARE(Game.ChipColor, int(BuyMarkerSpot));
    ClickBet(Place10);
    ExpectBets({{Place10, 0}, {Buy10, 20}});
    QCOMPARE(Told(), "Total \"Vig\" charge $1");
    QCOMPARE(StatusOver(ChipPosition(Buy10)), "Buy 10 bet (working):  20  vig:  1");
    Click(kChip5);
    ClickBets({Lay4, Lay4, Lay4, Lay4, Hard6, Craps});
    PlannedMessages.Shown.clear();
    // 10 + 6 + 20 and 1 vig + 20 and 1 vig + 5 + 5
    ExpectStatus("Bankroll:  500  Available:  432  Total bets:  68  You're even:  0");

    Roll(5, 3);  // Place 8 wins 7, any craps loses 5
    ExpectStatus("Bankroll:  502  Available:  439  Total bets:  63  You've won:  2");
    Roll(6, 4);  // Buy 10 wins 40 less 1
    ExpectStatus("Bankroll:  541  Available:  478  Total bets:  63  You've won:  41");
    Roll(3, 3);  // the point and the hard way: 10 and 45
    QCOMPARE(Game.Point, 0);
    ExpectStatus("Bankroll:  596  Available:  533  Total bets:  63  You've won:  96");
    QCOMPARE(StatusOver(ChipPosition(Place8)), "Place 8 bet (not working):  6");
    Roll(2, 2);  // the point is 4: Lay 4 loses 20 and its vig
    ExpectBet(Lay4, 0);
    ExpectStatus("Bankroll:  575  Available:  533  Total bets:  42  You've won:  75");
    for (const int betId : {PassLine, Place8, Buy10, Hard6})
      QCOMPARE(WorthOfChips(betId), Game.Bets[betId]);
    Roll(3, 4);  // seven-out: 10, 6, 20 and its vig, 5
    QCOMPARE(Game.ChipCount, 0);
    ExpectStatus("Bankroll:  533  Available:  533  Total bets:  0  You've won:  33");
  }

  void opensTheHopPanelThroughTheStickPerson() {
    Click(kChip5);
    Click(StickPersonPlace(false));  // a call, no switch
    QVERIFY(!Game.DisplayHopBets);
    Click(StickPersonPlace(true));
    QVERIFY(Game.DisplayHopBets);
    ClickBets({Hop13, Under7, World});
    Roll(1, 3);  // 15 to 1, even, and the World loses
    ExpectStatus("Bankroll:  575  Available:  565  Total bets:  10  You've won:  75");
    Click(StickPersonPlace(true));
    QVERIFY(!Game.DisplayHopBets);
    ClickBets({Hard4, Horn, CAndE, Two});
    ExpectBets({{Hard4, 5}, {Hop13, 5}});
    ExpectStatus("Bankroll:  575  Available:  545  Total bets:  30  You've won:  75");
    // Two pays 150; the Horn 5/4 at 30 to 1 less 15/4, so 33.75 and 33 in whole dollars; C and E
    // 5/2 at 7 to 1 less 5/2, so 15; the hop loses 5, Under 7 wins 5.
    Roll(1, 1);
    ExpectStatus("Bankroll:  773  Available:  748  Total bets:  25  You've won:  273");
  }

  void takesChipsOffWithCtrlAndShift() {
    Click(kChip5);
    ClickBets({Field, Field, Field});
    ClickBet(Field, Qt::ControlModifier);
    ExpectBet(Field, 10);
    Click(kChip25);
    ClickBet(Field, Qt::ControlModifier);  // more than lies there takes it whole
    ExpectBet(Field, 0);
    ClickBet(Big6);
    ClickBet(Big6, Qt::ShiftModifier);
    ExpectBet(Big6, 0);
    QCOMPARE(Game.ChipCount, 0);

    ClickBet(DontPass);
    Roll(2, 2);
    ClickBet(DontPassOdds, Qt::ShiftModifier);  // no odds there: the flat bet comes off
    ExpectBet(DontPass, 0);
    ExpectStatus("Bankroll:  500  Available:  500  Total bets:  0  You're even:  0");
  }

  void dragsABetToAnotherPlaceWithAlt() {
    Click(kChip5);
    ClickBets({Big6, Big6});
    Drag(ChipPosition(Big6), ChipPosition(Big8));
    ExpectBet(Big6, 0);
    ExpectChips(Big8, 10);
    Drag(ChipPosition(Big8), {620, 470});  // dropped beside the bets it goes back
    ExpectBet(Big8, 10);

    ClickBet(PassLine);
    Roll(2, 2);
    PlannedMessages.Shown.clear();
    Drag(ChipPosition(PassLine), ChipPosition(Field));  // a contract stays where it is
    ExpectBets({{PassLine, 5}, {Field, 0}});
    QCOMPARE(Told(),
             "You may not decrease or remove your Pass Line bet \nwhile a point is established.");
  }

  void actsOnTheNextBetClickedInEachClickMode() {
    Click(kChip5);
    ClickBets({Hard8, Place6, Place9});
    // clang-format off
    const std::tuple<const char*, const char*, int, const char*> modes[] = {
        {"mnuCallBetOff", "Click on bet to call OFF", Hard8, "Hard 8 bet (called OFF):  5"},
        {"mnuCallBetOn", "Click on bet to call ON", Place6, "Place 6 bet (called ON):  5"},
        {"mnuBuyPlaceBet", "Click on bet to buy", Place9, "Buy 9 bet (not working):  5  vig:  1"},
        {"mnuRemoveBet", "Click on bet to remove", Place6, ""},
    };
    // clang-format on
    for (const auto& [command, caption, bet, status] : modes) {
      Command(*table_, command);
      QCOMPARE(TableCaption(), caption);
      ClickBet(bet);
      if (*status != 0) QCOMPARE(StatusOver(ChipPosition(bet)), status);
      QCOMPARE(Game.ClickMode, int(NoClickMode));
    }
    ExpectBets({{Place9, 0}, {Place6, 0}});

    Command(*table_, "mnuRemoveBet");
    Click({300, 470});  // nothing lies there
    QCOMPARE(Game.ClickMode, int(NoClickMode));
    Command(*table_, "mnuRemoveBet");
    Roll(1, 2);  // a right click ends the mode, and rolls
    QCOMPARE(Game.ClickMode, int(NoClickMode));
    QCOMPARE(Game.RollCount[0], 1);

    Command(*table_, "mnuCallAllBetsOn");
    QCOMPARE(Game.BetWorking[Hard8], int(Working));  // the call undoes the one before
    Command(*table_, "mnuCallAllBetsOff");
    QCOMPARE(Game.BetWorking[Hard8], int(CalledOff));
    Command(*table_, "mnuRemoveAllBets");
    ExpectStatus("Bankroll:  500  Available:  500  Total bets:  0  You're even:  0");
  }

  void takesKeyedAmounts() {
    Command(*table_, "mnuKeyInBetAmounts");
    Click(kChip5);  // the rack stays a rack
    ClickBet(Field);
    auto* box = table_->findChild<QLineEdit*>("txtEnterBet");
    QVERIFY(box->isVisible());
    const double scale = table_->Layout()->FromTable({0, 0, 100, 100}).width();
    const int letters = box->font().pixelSize();
    table_->resize(table_->size() * 2);
    QTRY_COMPARE(box->font().pixelSize(),
                 qRound(letters * table_->Layout()->FromTable({0, 0, 100, 100}).width() / scale));
    QTest::keyClicks(box, "1x2.5");
    QCOMPARE(box->text(), "12.5");
    QTest::keyClick(box, Qt::Key_Return);
    ExpectBet(Field, 13);  // whole Units
    QVERIFY(box->text() == "13" && box->selectedText() == "13");

    ClickBet(Place6);  // the click elsewhere closes one box and opens the next
    QVERIFY(box->isVisible() && Game.KeyedBetId == Place6);
    QTest::keyClicks(box, "30");
    Command(*table_, "mnuRemoveBet");  // acts on the open box's bet at once
    ExpectBet(Place6, 0);
    QVERIFY(box->isVisible());

    QTest::keyClicks(box, "2000");
    Click({300, 470});
    ExpectBet(Place6, 487);  // all that is free
    QVERIFY(!box->isVisible());
    ExpectStatus("Bankroll:  500  Available:  0  Total bets:  500  You're even:  0");

    PlannedMessages.Shown.clear();
    ClickBet(Come);
    QTest::keyClicks(box, "5");
    ClickBet(Field);  // a refusal holds the click up
    QCOMPARE(Told(), "You may not make a Come bet until \na point is established.");
    QVERIFY(box->isVisible() && Game.KeyedBetId == Come);
    Click({300, 470});
    QVERIFY(!box->isVisible());

    ClickBet(Field);
    QTest::keyClicks(box, "0");
    Roll(1, 1);  // the roll takes the amount first
    ExpectBet(Field, 0);
    QCOMPARE(Bankroll(), Currency(500));
  }

  void laysAChipStackAndStacksOnIt() {
    auto* stacks = ChipStacks();
    EnterCell(stacks, 0, 2, "37.25");
    EnterCell(stacks, 0, 1, "Reserve");
    QCOMPARE(StatusOver(ChipPosition(FirstChipStack)), "Chip-Stack # 1 (Reserve):  37.25");

    Click(kChip25);
    ClickBet(FirstChipStack);
    ExpectBet(FirstChipStack, Currency::FromRaw(622500));
    Click(kSelectStack1);
    QCOMPARE(Game.ChipColor, kFirstStackColor);
    ClickBet(Field);
    ExpectBet(Field, 63);  // whole Units, the stack stays
    ExpectStatus("Bankroll:  500  Available:  437  Total bets:  63  You're even:  0");
  }

  void editsTheChipStacksByMenu() {
    auto* stacks = ChipStacks();
    auto* list = stacks->findChild<QTableView*>("picChipStacks");
    list->setCurrentIndex(list->model()->index(2, 1));
    const auto type = [list](const char* text, Qt::Key key) {
      auto* box = Find<QLineEdit>(list->viewport(), "txtChipStackInput");
      TypeOver(box, text);
      QTest::keyClick(box, key);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    type("Third", Qt::Key_Tab);  // from a name to its value, and to the next stack
    type("33", Qt::Key_Tab);
    type("Fourth", Qt::Key_Backtab);
    type("34", Qt::Key_Escape);
    QCOMPARE(Game.ChipStackName[2] + Game.ChipStackName[3], std::string("ThirdFourth"));
    ExpectBet(FirstChipStack + 2, 33);
    EnterCell(stacks, 4, 2, "-12");
    EnterCell(stacks, 4, 1, "Debt");
    list->setCurrentIndex(list->model()->index(4, 2));
    Command(*stacks, "mnuCut");
    list->setCurrentIndex(list->model()->index(6, 2));
    Command(*stacks, "mnuPaste");
    ExpectBets({{FirstChipStack + 4, 0}, {FirstChipStack + 6, -12}});
    QCOMPARE(RowText(list, 0, 2), "0");
    Command(*stacks, "mnuDisplayZero");
    QCOMPARE(RowText(list, 0, 2) + RowText(list, 6, 2), "-12");

    SetStacks(stacks, {"7", "2", "7", "4"});
    QCOMPARE(Told(), "Each Chip-Stack entry should be a different number.");
    QCOMPARE(Game.VisibleStacks[0], 101);
    SetStacks(stacks, {"7", "2", "3", "4"});
    QCOMPARE(Game.VisibleStacks, (std::array<int, 4>{107, 102, 103, 104}));
    QCOMPARE(BetName(107), std::string("Chip-Stack # 7"));
    QCOMPARE(BetName(101), std::string("Chip-Stack #1"));
    PrintFile = Path("stacks.pdf");
    Command(*stacks, "mnuPrint");
    QVERIFY(Read("stacks.pdf").startsWith("%PDF"));

    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}, {AnswerYes}};
    Command(*stacks, "mnuDeleteAllValues");
    ExpectBet(FirstChipStack + 6, -12);
    Command(*stacks, "mnuDeleteAllValues");
    ExpectBet(FirstChipStack + 6, 0);
    QCOMPARE(Told(), "Are you sure you want to set all Chip-Stack values to zero?");
    QCOMPARE(Game.ChipStackName[4], std::string("Debt"));
    Command(*stacks, "mnuDeleteAllNames");
    QCOMPARE(Game.ChipStackName[4], std::string());
  }

  void togglesTheAutoRollByRightClicks() {
    Game.AutoRollDice = true;
    Game.NumAutoRolls = 3;
    Click({300, 210}, Qt::RightButton);
    QCOMPARE(Game.RollCount[0], 3);
    QVERIFY(!Game.KeepRolling && !Game.RollInProgress);

    Game.NumAutoRolls = Game.AutoRollsLeft = 0;  // no limit: a click during the run ends it
    QTimer::singleShot(0, this, [this] {
      QVERIFY(Game.RollInProgress);
      ClickBet(Field);  // only the right button acts now
      Click({300, 210}, Qt::RightButton);
    });
    Click({300, 210}, Qt::RightButton);
    ExpectBet(Field, 0);
    QVERIFY(!Game.RollInProgress && Game.RollCount[0] > 3);
  }

  void asksBeforeAClickInterruptsARun() {
    Game.AutoBetRunning = Game.KeepRolling = true;
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
    ClickBet(Field);
    QCOMPARE(Told(), "Do you want to interrupt Auto-Betting? ");
    QVERIFY(Game.AutoBetRunning && Game.KeepRolling);
    ClickBet(Field);
    QVERIFY(!Game.AutoBetRunning && !Game.KeepRolling);
    ExpectBet(Field, 0);
    ClickBet(Field);
    ExpectBet(Field, 1);
  }

  void startsANewGameAndMovesMoneyAtTheAtm() {
    Click(kChip5);
    ClickBet(Field);
    Command(*table_, "mnuAtmWithdraw");
    ExpectStatus("Bankroll:  1,000  Available:  995  Total bets:  5  You're even:  0");
    Roll(6, 5);
    ExpectStatus("Bankroll:  1,005  Available:  1,000  Total bets:  5  You've won:  5");
    PlannedMessages.Answers = {{AnswerNo}};  // the game needn't be saved
    Command(*table_, "mnuNew");
    QVERIFY(Game.ChipCount == 0 && Game.RollCount[0] == 0);
    QCOMPARE(table_->windowTitle(), "Kelvanor");
    ExpectStatus("Bankroll:  500  Available:  500  Total bets:  0  You're even:  0");
  }

 private:
  void Click(QPointF place, Qt::MouseButton button = Qt::LeftButton) {
    ClickPlace(*table_, place, {}, button);
  }
  void ClickBet(int betId, Qt::KeyboardModifiers keys = {}) { ::ClickBet(*table_, betId, keys); }
  void Roll(int die1, int die2) { RightClickRolls(*table_, die1, die2); }

  void Drag(QPointF from, QPointF to) {
    picLayoutBox* layout = table_->Layout();
    QTest::mousePress(layout, Qt::LeftButton, Qt::AltModifier, OnTable(*table_, from));
    QTest::mouseMove(layout, OnTable(*table_, (from + to) / 2));
    QTest::mouseRelease(layout, Qt::LeftButton, Qt::AltModifier, OnTable(*table_, to));
  }

  void ClickBets(std::initializer_list<int> bets) {
    for (const int bet : bets) ClickBet(bet);
  }

  static void ExpectBet(int betId, Currency amount) { QCOMPARE(Game.Bets[betId], amount); }
  static void ExpectBets(std::initializer_list<std::pair<int, int>> bets) {
    for (const auto& [betId, amount] : bets) ExpectBet(betId, amount);
  }
  /// The bet, and the chips that lie on it.
  static void ExpectChips(int betId, Currency amount) {
    ExpectBet(betId, amount);
    QCOMPARE(WorthOfChips(betId), amount);
  }

  QString StatusOver(QPointF place) {
    // The pointer doesn't follow clicks: a move to where it already is would be none.
    QTest::mouseMove(table_->Layout(), OnTable(*table_, place) + QPoint(1, 1));
    QTest::mouseMove(table_->Layout(), OnTable(*table_, place));
    QCoreApplication::processEvents();
    return table_->findChild<QLabel*>("lblQuickStats")->text();
  }

  void ExpectStatus(const char* text) { QCOMPARE(StatusOver({300, 470}), QString(text)); }

  /// Opens the window of the Chip-Stacks.
  frmStackValues* ChipStacks() {
    Command(*table_, "mnuChipStacks");
    auto* stacks = table_->findChild<frmStackValues*>();
    if (!QTest::qWaitForWindowExposed(stacks)) qFatal("no Chip-Stacks");
    return stacks;
  }

  static void EnterCell(frmStackValues* stacks, int row, int column, const char* text) {
    auto* list = stacks->findChild<QTableView*>("picChipStacks");
    const QPoint cell = list->visualRect(list->model()->index(row, column)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell);
    auto* box = Find<QLineEdit>(list->viewport(), "txtChipStackInput");
    TypeOver(box, text);
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_VERIFY(!list->viewport()->findChild<QLineEdit*>("txtChipStackInput"));
  }

  static void SetStacks(frmStackValues* stacks, const QStringList& numbers) {
    Command(*stacks, "mnuSetStacks");
    for (int i = 0; i < 4; ++i)
      TypeOver(Find<QLineEdit>(stacks, QString("txtStackNum_%1").arg(i)), numbers[i]);
    ClickButton(stacks, "cmdOK");
  }
};

SCREEN_TEST(TestPlayByMouse)
#include "test_play_by_mouse.moc"
