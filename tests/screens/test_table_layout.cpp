#include <QLineF>
#include <QRandomGenerator>
#include <cmath>

#include "core/help_topics.h"
#include "screens/art/chip_art.h"
#include "screens/screen_driver.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_painter.h"

namespace {

QImage Paint(TableCache& cache) {
  QImage image(640, 480, QImage::Format_RGB32);
  QPainter painter(&image);
  PaintTable(painter, image.size(), TableView(), cache);
  return image;
}

QImage PaintFresh() {
  TableCache cache;
  return Paint(cache);
}

bool Differs(const QImage& a, const QImage& b, QRect rect) { return a.copy(rect) != b.copy(rect); }

/// True when the pictures differ within `rect` and nowhere else.
bool DiffersOnlyIn(QImage a, QImage b, const QRect& rect) {
  if (!Differs(a, b, rect)) return false;
  for (QImage* image : {&a, &b}) QPainter(image).fillRect(rect, Qt::black);
  return a == b;
}

Currency& BetOf(int betId) { return Game.Bets[betId]; }

/// What a bet's chips may cover, by the lines of the layout.
QPainterPath BoxOf(int betId) {
  QPainterPath box;
  if (IsChipStack(betId)) {
    box.addRect(StackSpotRect(VisibleStackPlace(betId)).adjusted(0, -0.5, 0, 1.5));
  } else if (betId <= Buy10) {
    const QRectF number = NumberColumn((betId - 1) % 6);
    const double top = IsLay(betId) ? 52 : betId < Come4 ? 77 : betId < Place4 ? 114.5 : 152;
    const double bottom = IsLay(betId) ? 77 : betId < Come4 ? 115 : betId < Place4 ? 152 : 177;
    box.addRect(QRectF(number.left(), top, number.width(), bottom - top));
  } else if (betId == DontCome) {
    box.addRect(kDontComeBox);
  } else if (const QRectF cell = PanelCell(betId, Game.DisplayHopBets); !cell.isEmpty()) {
    box.addRect(cell);
  } else {
    box = SpotOutline(betId == DontPassOdds ? DontPass : betId);
  }
  return box;
}

/// A table that anything can lie on: amounts as piles, and chips where a hand has thrown them.
void LayRandomTable(QRandomGenerator& chance) {
  LayDownDefaults();
  Game.DisplayHopBets = chance.bounded(2) == 1;
  Game.Point = kPointNumbers[static_cast<unsigned>(chance.bounded(6))];
  const auto amount = [&chance](int digits) {
    return Currency(static_cast<int>(std::pow(10, chance.bounded(digits * 10) / 10.0)));
  };
  for (int bet = Lay4; bet <= LastBet; ++bet) {
    if (chance.bounded(2) == 0) continue;
    BetOf(bet) = amount(5);
    ArrangeChips(bet);
    if (bet <= Buy10 || chance.bounded(2) == 0) continue;
    const QRectF box = BoxOf(bet).boundingRect();
    QPoint place;
    for (int chip = chance.bounded(16); chip > 0; --chip) {
      if (place.isNull() || chance.bounded(4) == 0)
        place = QPoint(int(box.left()) + chance.bounded(int(box.width()) + 1),
                       int(box.top()) + chance.bounded(int(box.height()) + 1));
      Game.ChipColor = 1 + chance.bounded(5);
      AddChip(bet, place.x(), place.y());
    }
  }
  for (int stack : Game.VisibleStacks) {
    BetOf(stack) = amount(9) * (chance.bounded(3) - 1);
    ArrangeChips(stack);
  }
}

struct Place {
  double X, Y;
  bool Hops;
  int Hot, Picked = 0, Topic = -1;  // that of the spot
};

const Place kPlaces[] = {
    // clang-format off
    {10, 10, 0, RailSpot}, {365, 15, 0, RailSpot}, {300, 470, 0, RailSpot}, {245, 15, 0, RailSpot},
    {181, 3, 0, 101, 0, kTopicChipStacks}, {228.9, 27.9, 0, 101, 0, kTopicChipStacks},
    {229, 15, 0, RailSpot}, {28, 15, 0, 104, 0, kTopicChipStacks}, {40, 2.5, 0, RailSpot},
    {40, 28, 0, RailSpot}, {620, 18, 0, NoSpot, StickPersonSpot, StickPersonSpot},
    {617, 393, 0, NoSpot, StickPersonSpot, StickPersonSpot},
    {394, 15, 0, NoSpot, BuyMarkerSpot, BuyMarkerSpot},
    {432, 15, 0, NoSpot, OffMarkerSpot, OffMarkerSpot},
    {470, 15, 0, NoSpot, OnMarkerSpot, OnMarkerSpot}, {78, 150, 0, PassLine},
    {99, 338, 0, PassLine}, {48, 150, 0, PassLineOdds}, {200, 418, 0, NoBetSpot},
    {95, 52, 0, DontPass}, {119.9, 256.9, 0, DontPass}, {180, 316, 0, DontPass},
    {444.9, 340.9, 0, DontPass}, {122, 52, 0, DontCome}, {174.9, 176.9, 0, DontCome},
    {175.5, 100, 0, NoSpot}, {176, 52, 0, Lay4}, {200, 77, 0, DontCome4}, {200, 89.5, 0, DontCome4},
    {410, 90, 0, DontCome4Odds + 4}, {498.9, 139.5, 0, Come10Odds}, {460, 140, 0, Come10},
    {300, 152, 0, Place6}, {390.9, 176.9, 0, Place8}, {391.5, 100, 0, NoSpot}, {200, 240, 0, Come},
    {150, 270, 0, Field}, {125, 275, 0, Big6}, {160, 310, 0, Big8}, {490, 335, 0, CAndE},
    {600, 360, 0, Horn}, {515, 350, 0, World}, {511, 100, 1, Over7}, {574, 100, 1, Under7},
    {573.5, 110, 1, NoSpot}, {572.9, 371.9, 1, World}, {520, 372, 1, NoSpot},
    {634.9, 349.9, 1, Hop35}, {600, 350, 1, NoSpot}, {700, 100, 0, NoSpot}
    // clang-format on
};

}  // namespace

class TestTableLayout : public QObject {
  Q_OBJECT

 private slots:
  void init() { LayDownDefaults(); }

  void HitsByPlace() {
    for (const Place& place : kPlaces) {
      Game.DisplayHopBets = place.Hops;
      const SpotHit hit = FindHotSpot(place.X, place.Y);
      const int topic = place.Topic < 0 ? place.Hot : place.Topic;
      QVERIFY2(hit.HotSpot == place.Hot && hit.PickedSpot == place.Picked && hit.HelpTopic == topic,
               qPrintable(QString("%1, %2").arg(place.X).arg(place.Y)));
    }
  }

  void EveryChipPositionHitsItsBet() {
    for (int bet = Lay4; bet <= LastBet; ++bet) {
      LayDownDefaults();
      Game.DisplayHopBets = IsOnHopPanelOnly(bet);
      if (IsBuy(bet)) BetOf(bet) = 10;
      if (bet == DontPassOdds) BetOf(DontPass) = Game.Point = 6;
      const auto slot = static_cast<unsigned>(bet);
      // The Don't Come chips lie across the line to their odds, with the centre just past it.
      const float up = IsDontComeOnNumber(bet) ? 2 : 0;
      QCOMPARE(HotSpotAt(Game.BetChipX[slot], Game.BetChipY[slot] - up), bet);
    }
  }

  void SpotsFollowTheTable() {
    BetOf(Buy5) = 20;
    QCOMPARE(HotSpotAt(243, 165), int(Buy5));
    QCOMPARE(HotSpotAt(189, 165), int(Place4));
    // The don't bar is the odds once a point stands.
    for (const auto& [point, bet, spot] :
         {std::tuple{8, 0, DontPass}, {8, 10, DontPassOdds}, {0, 10, DontPass}}) {
      Game.Point = point;
      BetOf(DontPass) = bet;
      QCOMPARE(HotSpotAt(354, 329), int(spot));
      QCOMPARE(HotSpotAt(107, 100), int(spot));
    }
    QCOMPARE(HotSpotAt(470, 385), int(NoSpot));
    Game.RecorderStatus = Playback;
    QCOMPARE(HotSpotAt(470, 385), int(DiceSpot));
    QCOMPARE(FindHotSpot(470, 385).HelpTopic, kTopicDiceRolls);
    Game.VisibleStacks = {150, 102, 103, 177};
    QCOMPARE(std::pair(HotSpotAt(200, 15), HotSpotAt(50, 15)), std::pair(150, 177));
    QCOMPARE(VisibleStackPlace(101), -1);
  }

  void TheHopPanelHidesPropositionsAndBack() {
    for (const bool hops : {false, true}) {
      Game.DisplayHopBets = hops;
      for (double y = 100; y < 404; y += 2)
        for (double x = 500; x < 640; x += 2) {
          const int spot = HotSpotAt(x, y);
          QVERIFY2(!(hops ? IsOnPropPanelOnly(spot) : IsOnHopPanelOnly(spot)),
                   qPrintable(QString::number(spot)));
        }
    }
  }

  void TheDiceAnswerWhereTheyStand() {
    QCOMPARE(HotSpotAt(539, 393), int(DiceSpot));
    QCOMPARE(HotSpotAt(579, 393), int(DiceSpot));
    const QPointF thrown[2] = {{470, 420}, {300, 210}};
    QCOMPARE(FindHotSpot(539, 393, thrown).HotSpot, int(NoSpot));
    // A die that lies on a bet doesn't hide it.
    QCOMPARE(FindHotSpot(300, 210, thrown).HotSpot, int(Come));
  }

  void PilesAndAmountsKeepToTheirBoxes() {
    for (std::uint32_t table = 1; table <= 60; ++table) {
      QRandomGenerator chance(table);
      LayRandomTable(chance);
      const TablePiles piles = LayOutPiles();
      std::map<int, QPointF> top;  // the last chip of each bet, which nothing covers
      for (const DrawnChip& chip : piles.Chips) {
        const QPainterPath box = BoxOf(chip.BetId);
        const QString at = QString("%1 on table %2").arg(chip.BetId).arg(table);
        for (int angle = 0; angle < 360; angle += 30)
          QVERIFY2(box.contains(chip.Centre + QLineF::fromPolar(10.4, angle).p2()), qPrintable(at));
        const auto below = top.find(chip.BetId);
        // A pile grows upward, and each of its chips can be seen.
        if (below != top.end() && below->second.x() == chip.Centre.x())
          QVERIFY2(below->second.y() - chip.Centre.y() > 0.7 || below->second.y() < chip.Centre.y(),
                   qPrintable(at));
        top[chip.BetId] = chip.Centre;
      }
      for (int flat = DontCome4; flat <= Come10; ++flat)
        if (top.contains(flat + kOddsOffset)) top.erase(flat);  // the odds lie on it
      qsizetype amounts = 0;
      for (std::size_t i = 0; i < piles.Tags.size(); ++i) {
        amounts += 1 + piles.Tags[i].Text.count('+');
        const QRectF& tag = piles.Tags[i].Rect;
        QVERIFY(tag.width() >= 6 && tag.left() >= 0 && tag.right() <= kTableWidth);
        for (std::size_t j = 0; j < i; ++j) QVERIFY(!tag.intersects(piles.Tags[j].Rect));
        for (const auto& [bet, centre] : top)
          QVERIFY2(!tag.intersects({centre.x() - 5.3, centre.y() - 2.6, 10.6, 5.2}),
                   qPrintable(QString("%1 over %2").arg(piles.Tags[i].Text).arg(bet)));
      }
      QCOMPARE(amounts, std::count_if(Game.Bets.begin(), Game.Bets.end(), [](const Currency& bet) {
                 return bet != 0 && IsShownOnTable(static_cast<int>(&bet - Game.Bets.data()));
               }));
    }
  }

  void ThePuckIsSeenBesideALayBet() {
    for (const int point : kPointNumbers) {
      LayDownDefaults();
      const int lay = BetOnNumber(LayFamily, point);
      BetOf(lay) = 14'641;
      Game.BetWorking[lay] = CalledOff;
      ArrangeChips(lay);
      const QImage without = PaintFresh();
      Game.Point = point;
      const QImage with = PaintFresh();
      const QRectF puck = PuckPlace(LayOutPiles().Chips);
      QVERIFY(puck.width() < kPuckSize && PuckRect(point).adjusted(0, -1, 1, 0).contains(puck));
      int seen = 0, all = 0;
      for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 640; ++x) {
          if (QLineF(puck.center(), {x + 0.5, y + 0.5}).length() > puck.width() * 0.43) continue;
          ++all;
          seen += without.pixel(x, y) != with.pixel(x, y) ? 1 : 0;
        }
      QVERIFY2(seen > all * 0.95, qPrintable(QString("%1 of %2").arg(seen).arg(all)));
    }
  }

  void RackPlaces() {
    const std::tuple<double, double, int> places[] = {
        {234, 4, 5},    {270, 15, 4},  {300, 15, 3}, {320, 15, 2}, {357, 27, 1},
        {258.5, 15, 0}, {28, 15, 10},  {103, 15, 9}, {130, 15, 8}, {205, 15, 7},
        {217, 15, 0},   {245, 3.5, 0}, {245, 28, 0}};
    for (const auto& [x, y, color] : places) QCOMPARE(RackSlotAt(x, y), color);
  }

  void PuckStandsOverItsNumber() {
    const QImage without = PaintFresh();
    int left = 130;
    for (const int point : {0, 4, 5, 6, 8, 9, 10}) {
      QCOMPARE(PuckRect(point).left(), left);
      left += 54;
      Game.Point = point;
      for (const int place : {0, point})
        QCOMPARE(Differs(without, PaintFresh(), PuckRect(place).toAlignedRect()), point != 0);
    }
  }

  void ChipLabels() {
    const std::tuple<double, bool, QString> chips[] = {
        {0.25, true, u"25\u00A2"_qs}, {0.25, false, ".25"}, {1, true, "1"},
        {2.5, true, "2.50"},          {5000, true, "5K"},   {1.5e6, true, "1.5M"}};
    for (const auto& [value, cents, label] : chips)
      QCOMPARE(ChipLabel(Currency::FromDouble(value), cents), label);
  }

  void APayoffChangesItsCellOnly() {
    const std::tuple<int, bool, QRect> cells[] = {{Lay4 + 1, false, {230, 52, 53, 25}},
                                                  {Place4 + 4, false, {392, 152, 53, 26}},
                                                  {Hard8, false, {}},
                                                  {Seven, false, {}},
                                                  {Hop24, true, {}},
                                                  {Under7, true, {}}};
    for (const auto& [bet, hops, cell] : cells) {
      LayDownDefaults();
      Game.DisplayHopBets = hops;
      const QRect rect = cell.isNull() ? PanelCell(bet, hops).toAlignedRect() : cell;
      const QImage before = PaintFresh();
      PayoffRecord& payoff = Game.Payoff[bet];
      payoff.Win += 1;
      QVERIFY(DiffersOnlyIn(before, PaintFresh(), rect));
      payoff.Win -= 1;
      payoff.ShownAsTo = false;
      QVERIFY(DiffersOnlyIn(before, PaintFresh(), rect));
    }
  }

  void ABetLeavesTheLayoutAlone() {
    TableCache cache;
    const QImage before = Paint(cache);
    const qint64 picture = cache.Layout.cacheKey();
    BetOf(Field) = 30;
    ArrangeChips(Field);
    Game.Point = 6;
    Game.Payoff[PassLineOdds].Win = 6;  // the line odds take the ratio of the point
    const QImage after = Paint(cache);
    QVERIFY(Differs(before, after, QRect(343, 286, 25, 22)));
    QCOMPARE(cache.Layout.cacheKey(), picture);
  }

  void ANewChipStyleRenewsTheChips() {
    TableCache cache;
    const QImage before = Paint(cache);
    Game.ChipStyle = 4;
    QVERIFY(DiffersOnlyIn(before, Paint(cache), QRect(232, 2, 130, 28)));
  }

  void EveryLayoutSettingRenewsTheLayout() {
    const auto renews = [](auto change) {
      LayDownDefaults();
      const QByteArray before = LayoutStamp();
      const QImage picture = PaintFresh();
      change();
      return LayoutStamp() != before && PaintFresh() != picture;
    };
    QVERIFY(renews([] { Game.DisplayHopBets = true; }) && renews([] { Game.BarDont = 2; }));
    QVERIFY(renews([] { Game.TableFeltPattern = 4; }) && renews([] { Game.MaxPlacard = 5000; }));
    QVERIFY(renews([] { Game.OddsAllowed59 = 10; }) && renews([] { SetFieldPreset(1); }));
    for (std::size_t slot = 0; slot < kTableColors; ++slot)
      QVERIFY(renews([slot] { Game.TableColor[slot] ^= 0x808080; }));
  }

  void ChipsOfTheHiddenPanelAreNotDrawn() {
    for (const bool hops : {false, true}) {
      LayDownDefaults();
      Game.DisplayHopBets = hops;
      const QImage empty = PaintFresh();
      const int hidden = hops ? Hard8 : Hop24;
      const int shown = hops ? Hop24 : Hard8;
      BetOf(hidden) = 5;
      ArrangeChips(hidden);
      QVERIFY(PaintFresh() == empty);
      BetOf(shown) = 5;
      ArrangeChips(shown);
      QVERIFY(PaintFresh() != empty);
    }
  }

  void MarkersShowWorkingStates() {
    Game.DisplayBetAmounts = false;
    BetOf(Hard4) = 1;
    const QImage plain = PaintFresh();
    Game.BetWorking[Hard4] = CalledOff;
    const QImage off = PaintFresh();
    Game.BetWorking[Hard4] = CalledOn;
    const QImage on = PaintFresh();
    const QRect cell = PanelCell(Hard4, false).toAlignedRect();
    QVERIFY(DiffersOnlyIn(plain, off, cell) && DiffersOnlyIn(off, on, cell));
  }

  void AWindowOfAnotherShapeKeepsTheProportions() {
    const QSizeF wide(1000, 480);
    QCOMPARE(TablePoint({180, 0}, wide), QPointF(0, 0));
    QCOMPARE(TablePoint({820, 480}, wide), QPointF(640, 480));
    QCOMPARE(TablePoint({640, 590}, QSizeF(1280, 1500)), QPointF(320, 160));
  }
};

SCREEN_TEST(TestTableLayout)
#include "test_table_layout.moc"
