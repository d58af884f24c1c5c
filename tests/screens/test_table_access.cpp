#include <QAccessible>
#include <QSet>

#include "screens/screen_driver.h"
#include "screens/table/bet_focus.h"
#include "screens/table/table_access.h"
#include "screens/table/table_elements.h"

namespace {

constexpr Way kWays[] = {Way::Left, Way::Right, Way::Up, Way::Down};

Currency& BetOf(int betId) { return Game.Bets[betId]; }

QSet<int> ReachableFrom(int betId) {
  QSet<int> seen{betId};
  QList<int> open{betId};
  while (!open.isEmpty()) {
    const int from = open.takeLast();
    for (const Way way : kWays)
      if (const int next = NextBet(from, way); !seen.contains(next)) {
        seen.insert(next);
        open << next;
      }
  }
  return seen;
}

/// What the screen reader was told.
struct Told {
  QAccessible::Event Kind;
  QString Name, Value;
};
QList<Told> Heard;

void Hear(QAccessibleEvent& event) {
  if (QAccessibleInterface* part = event.accessibleInterface())
    Heard << Told{event.type(), part->text(QAccessible::Name), part->text(QAccessible::Value)};
}

int HeardTimes(QAccessible::Event kind, const QString& name, const QString& value = {}) {
  return static_cast<int>(std::ranges::count_if(Heard, [&](const Told& told) {
    return told.Kind == kind && told.Name == name && (value.isNull() || told.Value == value);
  }));
}

}  // namespace

class TestTableAccess : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { HearTable(Hear); }
  void cleanupTestCase() { HearTable({}); }

  void init() {
    BeginScreens(table_);
    PlannedMessages.Active = true;
    table_.activateWindow();
    QTRY_VERIFY(table_.isActiveWindow());
    SetTableButtons({});
    Heard.clear();
    focusOn(PassLine);
  }

  void cleanup() { SetTableButtons({}); }

  void everyBetIsReachedFromEveryOther() {
    for (const bool hops : {false, true})
      for (const bool odds : {false, true}) {
        LayDownDefaults();
        Game.DisplayHopBets = hops;
        Game.Point = odds ? 6 : 0;
        BetOf(DontPass) = odds ? 10 : 0;
        BetOf(Buy5) = odds ? 20 : 0;
        const std::vector<int> bets = BetsInReach();
        for (const int bet : bets) {
          const QSet<int> reached = ReachableFrom(bet);
          for (const int other : bets)
            QVERIFY2(reached.contains(other),
                     qPrintable(QString("%1 from %2, hops %3").arg(other).arg(bet).arg(hops)));
        }
      }
    // What is gone from under the keyboard is found beside it.
    Game.DisplayHopBets = true;
    QVERIFY(IsInReach(NextBet(Hard8, Way::Up)) && !IsInReach(Hard8));
  }

  void keysDoWhatClicksDo() {
    key(Qt::Key_2);
    QCOMPARE(Game.ChipColor, 2);
    key(Qt::Key_Return);
    QCOMPARE(BetOf(PassLine), Currency(5));
    QCOMPARE(Game.ChipList[0].BetId, int(PassLine));
    key(Qt::Key_Plus, Qt::ShiftModifier);
    QCOMPARE(BetOf(PassLine), Currency(10));
    key(Qt::Key_Minus);
    QCOMPARE(BetOf(PassLine), Currency(5));
    key(Qt::Key_Delete);  // not the menu's command, which waits for a click
    QCOMPARE(BetOf(PassLine), Currency());
    QCOMPARE(int(Game.ClickMode), int(NoClickMode));
    key(Qt::Key_Up);
    QCOMPARE(layout()->Keyboard().FocusedBet(), int(DontPass));
    key(Qt::Key_End);
    QCOMPARE(layout()->Keyboard().FocusedBet(), BetsInReach().back());
    key(Qt::Key_Home);
    QCOMPARE(layout()->Keyboard().FocusedBet(), int(Lay4));
    // clang-format off
    const std::pair<Qt::Key, int> colors[] = {
        {Qt::Key_6, BuyMarkerSpot}, {Qt::Key_8, OnMarkerSpot}, {Qt::Key_9, kFirstStackColor},
        {Qt::Key_9, kFirstStackColor + 1}, {Qt::Key_0, kFirstStackColor},
        {Qt::Key_0, kLastStackColor}, {Qt::Key_5, 5}};
    // clang-format on
    for (const auto& [digit, color] : colors) {
      key(digit);
      QCOMPARE(Game.ChipColor, color);
    }
    key(Qt::Key_H);
    QVERIFY(Game.DisplayHopBets);
    key(Qt::Key_I);
    QVERIFY(!TheTable.Forecast);
    const int rolls = Game.RollTotal;
    Game.ManualRollPending = true;
    Game.PendingDie1 = Game.PendingDie2 = rolls == 2 ? 6 : 1;
    key(Qt::Key_Space);
    QCOMPARE(Game.RollTotal, rolls == 2 ? 12 : 2);
  }

  void noKeyActsBesideTheKeyedBoxOrAScript() {
    BetOf(PassLine) = 25;
    ArrangeChips(PassLine);
    key(Qt::Key_E);
    QVERIFY(Game.KeyedBoxOpen && Find<QLineEdit>(&table_, "txtEnterBet")->isVisible());
    QCOMPARE(Game.KeyedBetId, int(PassLine));
    for (const Qt::Key plain : {Qt::Key_H, Qt::Key_3, Qt::Key_Down, Qt::Key_Plus})
      QTest::keyClick(&table_, plain);
    QVERIFY(!Game.DisplayHopBets && Game.ChipColor == 1 && BetOf(PassLine) == 25);
    QTest::keyClick(Find<QLineEdit>(&table_, "txtEnterBet"), Qt::Key_Escape);
    Game.AutoBetRunning = true;
    for (const Qt::Key plain : {Qt::Key_H, Qt::Key_Tab, Qt::Key_Delete, Qt::Key_Space}) {
      PlannedMessages.Shown.clear();
      PlannedMessages.Answers = {{AnswerNo}};
      key(plain);
      ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
    }
    Game.AutoBetRunning = false;
    QVERIFY(!Game.DisplayHopBets);
  }

  void tabGoesThroughTheButtons() {
    QStringList pressed;
    SetTableButtons([&pressed] {
      const auto button = [&pressed](const QString& name, int key) {
        return TableButton{name, {80, 446, 35, 29}, {}, {}, [&, name] { pressed << name; }, key};
      };
      std::vector<TableButton> buttons = {button("Roll", Qt::Key_Space), button("Undo", Qt::Key_U)};
      buttons.push_back(button("Redo", (Qt::SHIFT | Qt::Key_U).toCombined()));
      buttons[1].Enabled = [] { return false; };
      return buttons;
    });
    key(Qt::Key_Space);
    key(Qt::Key_U);  // grey
    key(Qt::Key_U, Qt::ShiftModifier);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    QCOMPARE(layout()->Keyboard().FocusedButton(), 1);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    key(Qt::Key_Return);
    QCOMPARE(pressed, QStringList({"Roll", "Redo", "Roll"}));
    QVERIFY(layout()->hasFocus());
    QTest::mouseClick(layout(), Qt::LeftButton, {}, OnTable(table_, {300, 210}));
    QCOMPARE(layout()->Keyboard().FocusedButton(), -1);  // the mouse hides the place
  }

  void theTreeTellsTheTable() {
    SetTableButtons([] {
      return std::vector<TableButton>{{"Roll", {5, 408, 65, 65}, {}, {}, [] {}, Qt::Key_Space}};
    });
    Game.LastRolls = {{6, 3, 8, 8, 4}, {2, 2, 8, 8, 0}};
    QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(layout());
    const std::vector<int> bets = BetsInReach();
    QCOMPARE(tree->childCount(), static_cast<int>(bets.size()) + 4);
    QSet<QString> names;
    for (std::size_t i = 0; i < bets.size(); ++i) {
      QAccessibleInterface* child = tree->child(static_cast<int>(i));
      QVERIFY(child->role() == QAccessible::Button && child->parent() == tree);
      QCOMPARE(child->text(QAccessible::Name), QString::fromStdString(BetName(bets[i])));
      QCOMPARE(child->text(QAccessible::Value), "nothing");
      QVERIFY(!child->text(QAccessible::Description).isEmpty());
      QVERIFY(QRect(layout()->mapToGlobal(QPoint()), layout()->size()).contains(child->rect()));
      names << child->text(QAccessible::Name);
    }
    QCOMPARE(names.size(), static_cast<qsizetype>(bets.size()));
    QAccessibleInterface* place6 =
        tree->child(static_cast<int>(std::ranges::find(bets, int(Place6)) - bets.begin()));
    Game.ChipColor = 2;
    place6->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(BetOf(Place6), Currency(6));
    QVERIFY(HeardTimes(QAccessible::ValueChanged, "Place 6", place6->text(QAccessible::Value)) > 0);
    QVERIFY(place6->text(QAccessible::Value).startsWith("$6, "));
    place6->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
    QCOMPARE(BetOf(Place6), Currency());
    place6->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(tree->focusChild(), place6);
    QVERIFY(HeardTimes(QAccessible::Focus, "Place 6") > 0);

    const int buttons = static_cast<int>(bets.size());
    QCOMPARE(tree->child(buttons)->text(QAccessible::Name), "Roll");
    QVERIFY(tree->child(buttons + 1)->text(QAccessible::Name).startsWith("Bankroll 500 dollars."));
    QAccessibleInterface* history = tree->child(buttons + 3);
    QVERIFY(history->role() == QAccessible::List && history->childCount() == 2);
    QCOMPARE(history->child(1)->text(QAccessible::Name), "Four, two two. Point is still 8.");
    Game.HandleWinningBets = WinSameBet;
    BetOf(Field) = 5;
    const QString three = "Three, one two. Pass Line loses. Won 5 dollars.";
    for (int roll = 1; roll <= 2; ++roll) {
      RightClickRolls(table_, 1, 2);
      table_.RedrawBets();
      QCOMPARE(HeardTimes(QAccessible::Alert, three), roll);  // each roll once
    }
    QCOMPARE(tree->child(buttons + 2)->text(QAccessible::Name), three);
    QCOMPARE(history->child(0)->text(QAccessible::Name), three);
  }

 private:
  picLayoutBox* layout() { return table_.Layout(); }
  void focusOn(int betId) { layout()->Keyboard().GoToBet(betId); }
  void key(Qt::Key k, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(layout(), k, keys); }

  frmCrapTable table_;
};

SCREEN_TEST(TestTableAccess)
#include "test_table_access.moc"
