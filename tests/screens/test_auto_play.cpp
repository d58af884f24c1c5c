// The Auto-Play screen: every control clicked for real, and what it does to the table.

#include "autoplay/auto_play.h"
#include "screens/play/frmAutoPlay.h"
#include "screens/screen_driver.h"

class TestAutoPlay : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuAutoPlay", screen_);
    working_ = Get<QListView>("lstWorkOnComeOut");
    stops_ = Get<QListView>("listAutoStop");
  }

  void modesActAtOnceOnWhatStands() {
    Press("optAutoAdjustBetAmounts_0");
    PutBet(Place6, 7);
    for (int i = 0; i < 6; ++i) PutBet(Field, 1);
    const int chips = Game.ChipCount;
    Press("chkAutoArrangeChips");
    QCOMPARE(Game.ChipCount, chips - 4);  // the six on the Field became a 5 and a 1
    QCOMPARE(Game.Bets[Place6], Currency(7));
    Press("optAutoAdjustBetAmounts_1");
    QCOMPARE(Game.Bets[Place6], Currency(12));  // Place bets start with the bias to increase
    Press("chkAutoRemovePlaceBets");
    QVERIFY(Game.AutoRemovePlace && Game.AutoArrangeChips);
  }

  void asksForOddsOnBetsThatStand() {
    const std::tuple<int, int, const char*, std::string, const char*> sides[] = {
        {PassLine, PassLineOdds, "chkAutoTakeFullOdds", "Auto-Take Full Odds", "take"},
        {DontPass, DontPassOdds, "chkAutoLayFullOdds", "Auto-Lay Full Odds", "lay"}};
    for (const auto& [bet, odds, box, name, does] : sides) {
      Game.Point = 0;
      PutBet(bet, 10);
      Game.Point = 6;
      const Currency& held = Game.Bets[odds];
      PlannedMessages = {true, {{AnswerNo}, {AnswerYes}}};
      Press(box);
      QCOMPARE(held, Currency());
      ExpectMessage(name + " is now active.\n\nDo you also want to " + does +
                        " full odds on any bets that are already on the table?",
                    name);
      Press(box);
      QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));  // turning it off asks nothing
      Press(box);
      QVERIFY(held > 0);
    }
    QVERIFY(Game.AutoTakeFullOdds && Game.AutoLayFullOdds);
  }

  void setsWhatWorksOnTheComeOut() {
    QCOMPARE(working_->model()->rowCount(), int(LastBet));
    QCOMPARE(Line(Lay4) + Line(Place6), "Lay 4 - YesPlace 6 - No");
    Game.BetWorking[Place8] = CalledOff;
    for (const int bet : {Place6, Place8, Buy10}) ClickRow(working_, bet - 1, Qt::ControlModifier);
    Click("cmdYes");
    QCOMPARE(Line(Place6), "Place 6 - Yes");
    QCOMPARE(Game.ComeOutWorking[Buy10] + Game.BetWorking[Place6], 2 * Working);
    QCOMPARE(Game.BetWorking[Place8], int(CalledOff));
    QCOMPARE(Game.ComeOutWorking[Place5], int(NotWorking));
    QTest::mouseDClick(working_->viewport(), Qt::LeftButton, {}, ClickRow(working_, Place6 - 1));
    QCOMPARE(Line(Place6), "Place 6 - No");
    Click("cmdSelectAll");
    Click("cmdNo");
    for (int id = Lay4; id <= LastBet; ++id) QCOMPARE(Game.ComeOutWorking[id], int(NotWorking));
    Click("cmdDefault");
    QCOMPARE(Line(Lay4) + Line(Place6), "Lay 4 - YesPlace 6 - No");
    QCOMPARE(Game.BetWorking[Lay4], int(Working));
  }

  void stopListStopsAutoRolling() {
    QCOMPARE(stops_->model()->rowCount(), int(kAutoStops));
    QCOMPARE(RowText(stops_, StopOnTwelve), "A 12");
    for (const bool on : {true, false})
      for (int entry = 0; entry < kAutoStops; ++entry) {
        ClickRow(stops_, entry);
        QCOMPARE(Game.AutoStopOn[entry], on);
      }
    ClickRow(stops_, StopOnSeven);
    Press("chkAutoRollDice");
    RollByClick();
    QCOMPARE(Game.RollTotal, 7);
    QVERIFY(!Game.RollInProgress);
  }

  void resumesOrRestartsTheCount() {
    Type("txtNumAutoRolls", "1000");
    Game.AutoRollsLeft = 5;
    for (const char* box : {"txtNumAutoRolls", "txtDelayRoll"}) Get<QLineEdit>(box)->setFocus();
    QCOMPARE(Game.AutoRollsLeft, 5);  // a visit changes nothing
    for (const bool resume : {true, false}) {
      Game.AutoRollDice = false;
      Game.AutoRollsLeft = 5;
      TheHost.RefreshViews();
      PlannedMessages.Answers = {{resume ? AnswerYes : AnswerNo}};
      Press("chkAutoRollDice");
      ExpectMessage(
          "Would you like to resume the current roll count at 5\n\nIf not, then the count "
          "will be reset to 1,000",
          "Auto-Roll");
      QCOMPARE(Game.AutoRollsLeft, resume ? 5 : 1000);
    }
  }

  void runsTheCountAndShowsWhatRemains() {
    Type("txtNumAutoRolls", "40");
    Press("chkAutoRollDice");
    QVERIFY(PlannedMessages.Shown.empty());
    QStringList seen;
    QTimer watch;
    watch.callOnTimeout([&] { seen << Remaining(); });
    watch.start(0);
    RollByClick();
    QVERIFY(seen.contains("3"));
    QCOMPARE(Game.RollCount[0], 40);
    QCOMPARE(Remaining(), "40");
    QTimer act;
    connect(&act, &QTimer::timeout, this, [&] {  // acts on the run from the next roll on
      if (Game.RollCount[0] < 43) return;
      act.stop();
      Press("optHandleLosingBets_5");
      Press("chkAutoRollDice");
    });
    act.start(0);
    Type("txtNumAutoRolls", "0");
    RollByClick();
    QCOMPARE(Game.HandleLosingBets, int(LossDoubleBet));
    QVERIFY(Game.RollCount[0] > 41 && !Game.KeepRolling && !Game.RollInProgress);
  }

 private:
  QString Remaining() { return Label("lblAutoRollsRemaining"); }
  QString Line(int betId) { return RowText(working_, betId - 1); }

  /// Types over what a box holds and leaves it.
  void Type(const QString& name, const QString& text) {
    ScreenTest::Type(name, text);
    QTest::keyClick(Get<QLineEdit>(name), Qt::Key_Tab);
  }

  void RollByClick() { ClickPlace(*table_, {300, 210}, {}, Qt::RightButton); }

  frmAutoPlay* screen_ = nullptr;
  QListView* working_ = nullptr;
  QListView* stops_ = nullptr;
};

SCREEN_TEST(TestAutoPlay)
#include "test_auto_play.moc"
