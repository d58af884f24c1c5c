#include "screens/frame/chrome.h"
#include "screens/frame/sound_player.h"
#include "screens/screen_driver.h"
#include "screens/statistics/figure_view.h"
#include "screens/table/lettering.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_painter.h"

namespace {

QImage Painted(QSize size) {
  TableCache cache;
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  PaintTable(painter, size, TableView(), cache);
  return image;
}

void LayBet(int betId, Currency amount) {
  Game.Bets[betId] = amount;
  ArrangeChips(betId);
}

QColor SlotColor(int slot) { return QColor::fromRgb(Game.TableColor[slot]); }

constexpr int kScale = 4;  // pixels of a unit

constexpr QRect kWritten(121, 50, 170, 344);
/// Where in it letters of every colour and height stand.
constexpr QRect kLetters[] = {{121, 53, 164, 124}, {190, 270, 100, 34}, {200, 348, 90, 46}};

QImage PaintedLetters() {
  QImage image(kWritten.size() * kScale, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(kScale, kScale);
  painter.translate(-kWritten.topLeft());
  QRegion letters;
  for (const QRect& part : kLetters) letters += part;
  painter.setClipRegion(letters);
  PaintLayout(painter);
  return image;
}

/// The luminances beside the painted pixels of an ink, by the ink. Beside is past the soft border
/// of a letter, where nothing of the ink is nearer.
std::map<QRgb, std::vector<double>> BesideInks(const QImage& image, const std::vector<QRgb>& inks) {
  constexpr int kBeside = 3;
  std::map<QRgb, std::vector<double>> beside;
  const auto at = [&image](int x, int y) {
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
  };
  const auto isAlone = [&at](int x, int y, QRgb ink) {
    for (int down = 1 - kBeside; down < kBeside; ++down)
      for (int right = 1 - kBeside; right < kBeside; ++right)
        if (at(x + right, y + down) == ink) return false;
    return true;
  };
  const auto look = [&](int x, int y, QRgb ink) {
    for (const auto& [right, down] : {std::pair(3, 0), {-3, 0}, {0, 3}, {0, -3}})
      if (isAlone(x + right, y + down, ink))
        beside[ink].push_back(Luminance(QColor::fromRgb(at(x + right, y + down))));
  };
  for (const QRect& part : kLetters) {
    const QPoint corner = (part.topLeft() - kWritten.topLeft()) * kScale;
    const QSize size = part.size() * kScale;
    for (int y = corner.y() + 2 * kBeside; y < corner.y() + size.height() - 2 * kBeside; y += 2)
      for (int x = corner.x() + 2 * kBeside; x < corner.x() + size.width() - 2 * kBeside; ++x) {
        const QRgb ink = at(x, y);
        if (std::ranges::find(inks, ink) != inks.end()) look(x, y, ink);
      }
  }
  return beside;
}

/// What the letters of the layout are painted in, but for inks that can't be told from an edge.
std::vector<QRgb> InksOfLetters() {
  std::vector<QRgb> inks;
  std::vector<QColor> edges;
  for (const int slot : {ColorPassText, ColorDontText, ColorPlaceText, ColorFieldText})
    for (const double capital : {5.0, 9.0}) {
      const FeltInk ink = LetterInk(SlotColor(slot), capital);
      inks.push_back(ink.Ink.rgb());
      if (ink.Edge) edges.push_back(*ink.Edge);
    }
  std::erase_if(inks, [&edges](QRgb ink) {
    return std::ranges::any_of(
        edges, [ink](QColor edge) { return Contrast(edge, QColor::fromRgb(ink)) < 1.1; });
  });
  return inks;
}

}  // namespace

class TestTableLook : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    LayDownDefaults();
    TheTable = {};
  }

  void lettersStandOutFromEveryFelt() {
    for (int preset = 0; preset < kColorPresets; ++preset)
      for (int felt = 0; felt < 9; ++felt) {
        SetColorPreset(preset);
        Game.TableFeltPattern = static_cast<float>(felt);
        // Edges are black and white: inks are told from them.
        for (int slot = ColorLines; slot <= ColorFieldText; ++slot)
          Game.TableColor[slot] ^= 1 << (slot - ColorLines);
        const QString where = QString(" of preset %1 on felt %2").arg(preset).arg(felt);
        const std::vector<QRgb> inks = InksOfLetters();
        auto beside = BesideInks(PaintedLetters(), inks);
        for (const QRgb ink : inks) {
          std::vector<double>& lights = beside[ink];
          QVERIFY(lights.size() > 80);
          std::ranges::sort(lights);
          for (const std::size_t end : {lights.size() / 10, lights.size() * 9 / 10}) {
            const double contrast = Contrast(QColor::fromRgb(ink), {lights[end], lights[end]});
            QVERIFY2(contrast >= kTextContrast, qPrintable(QColor(ink).name() + where));
          }
        }
        const FeltInk line = LineInk(SlotColor(ColorLines), 1);
        QVERIFY(line.Edge ? Contrast(line.Ink, *line.Edge) >= kLineContrast
                          : Contrast(line.Ink, GroundOfFelt()) >= kLineContrast);
      }
  }

  void everySwitchLeadsBackToTheToldDrawing() {
    const auto all = {
        +[] { TheTable.PilesUpward = false; }, +[] { TheTable.PuckMakesRoom = false; },
        +[] { TheTable.ClearLettering = false; }, +[] { TheTable.StickFrame = StickAsTold; }};
    for (int preset = 0; preset < kColorPresets; ++preset)
      for (const QSize size : {preset % 2 == 0 ? QSize(640, 480) : QSize(1003, 740)}) {
        SetColorPreset(preset);
        Game.Point = 8;
        for (const int bet : {Lay4 + 3, +PassLine, +Hard4}) LayBet(bet, 137);
        TheTable = AsTold();
        const QImage told = Painted(size);
        TheTable = {};
        QImage before = Painted(size);
        for (const auto& turnOff : all) {
          turnOff();
          const QImage after = Painted(size);
          QVERIFY(after != before);
          before = after;
        }
        QVERIFY(before == told);
      }
  }

  void toldChipsLieWhereTheRecordHasThem() {
    for (const int bet : {Come4 + 2, +DontPassOdds, +Hop24, +Hard8}) LayBet(bet, 137);
    const TablePiles piles = LayOutPilesAsTold();
    std::size_t chip = 0;
    for (int i = 0; i < Game.ChipCount; ++i) {
      const Chip& listed = Game.ChipList[i];
      if (!IsShownOnTable(listed.BetId)) continue;
      QCOMPARE(piles.Chips.at(chip).Centre, QPointF(listed.X, listed.Y));
      QCOMPARE(piles.Chips.at(chip++).Picture, listed.Picture);
    }
    QCOMPARE(chip, piles.Chips.size());
    QCOMPARE(piles.Tags.size(), 3U);
  }

  void anyPileAndItsAmountKeepToTheBox() {
    for (int bet = Lay4; bet <= LastBet; ++bet)
      for (int chips = 1; chips <= 13; ++chips) {
        LayDownDefaults();
        Game.DisplayHopBets = IsOnHopPanelOnly(bet);
        LayBet(bet, chips == 13 ? Currency::FromRaw(999'995'000)
                                : Currency(chips == 1 ? 1 : 500 * chips));
        const TablePiles piles = LayOutPiles();
        QVERIFY(!piles.Chips.empty());
        QCOMPARE(piles.Tags.size(), 1U);
        const auto within = [](int id, const QRectF& part) {
          return std::ranges::any_of(ChipBoxes(id), [&part](const QPolygonF& box) {
            return box.boundingRect().adjusted(-0.1, -0.1, 0.1, 0.1).contains(part);
          });
        };
        // The amount of odds on a number stands in the box of their flat bet.
        const bool odds = IsComeOdds(bet) || IsDontComeOdds(bet);
        const auto inBox = [&](const QRectF& part) {
          return within(bet, part) || (odds && within(bet - kOddsOffset, part));
        };
        QVERIFY2(inBox(piles.Tags[0].Rect), qPrintable(QString("amount of %1").arg(bet)));
        for (const DrawnChip& chip : piles.Chips)
          QVERIFY2(inBox({chip.Centre.x() - kChipRadius, chip.Centre.y() - kChipRadius,
                          2 * kChipRadius, 2 * kChipRadius}),
                   qPrintable(QString("%1 chips on %2").arg(chips).arg(bet)));
        QVERIFY(piles.Tags[0].Text.startsWith('$'));
      }
  }

  void theCallBoardFollowsTheThrow() {
    TheTable.StickFrame = StickCallBoard;
    Game.LastRolls.clear();
    const QImage empty = Painted({640, 480});
    Game.LastRolls = {{6, 3, 8, 8, 4}};
    const QImage nine = Painted({640, 480});
    Game.LastRolls[0].Net = -99'999'999;
    const QImage lost = Painted({640, 480});
    Game.LastRolls.clear();
    QVERIFY(empty != nine && nine != lost);
    const QRect frame(505, 4, 131, 93);
    for (QImage image : {nine, lost}) {
      QImage rest = empty;
      QPainter(&rest).fillRect(frame, Qt::black);
      QPainter(&image).fillRect(frame, Qt::black);
      QVERIFY(rest == image);
    }
  }

  void windowsTakeTheFeltsColours() {
    static constexpr QRgb kWindows[] = {0xFF0E2015, 0xFF241623, 0xFF1D1D0B,
                                        0xFFF8EADE, 0xFFF9E9DF, 0xFF101D2A};
    for (int preset = 0; preset <= kColorPresets; ++preset) {
      SetColorPreset(preset);
      const bool contrast = preset == kColorPresets;
      UseChrome(contrast ? Chrome::HighContrast : Chrome::OfTable, SlotColor(ColorFelt),
                SlotColor(ColorLines));
      const ChromeColors& colors = ColorsOfWindows();
      if (!contrast) {
        const QColor wanted = QColor::fromRgb(kWindows[preset]);
        for (const auto part : {&QColor::red, &QColor::green, &QColor::blue})
          QVERIFY2(std::abs((colors.Window.*part)() - (wanted.*part)()) <= 2,
                   qPrintable(QString("%1 of %2").arg(colors.Window.name()).arg(preset)));
      }
      QCOMPARE(QApplication::palette().color(QPalette::Window), colors.Window);
      for (const QColor& ground : {colors.Base, colors.Window, colors.Raised}) {
        for (const QColor& ink :
             {colors.Text, colors.Muted, colors.Accent, colors.Gain, colors.Loss, WarningInk()})
          QVERIFY(Contrast(ink, ground) >= kTextContrast);
        QVERIFY(Contrast(colors.Border, ground) >= 2.7);
      }
      QVERIFY(Contrast(colors.OnAccent, colors.Accent) >= kTextContrast);
      for (const int figure : {PaletteBlack, PaletteDarkBlue, PaletteBlue, PaletteRed})
        QVERIFY(Contrast(FigureInk(figure), PaperColor()) >= kTextContrast);
      QVERIFY(FigureInk(PaletteRed) != FigureInk(PaletteBlue));
    }
    UseChrome(Chrome::OfSystem, {}, {});
    QCOMPARE(FigureInk(PaletteRed), PaletteInk(PaletteRed));
    QCOMPARE(PaperColor(), QColor(Qt::white));
  }

  void aSoundsVolumeIsThatOfItsKind() {
    SetSoundVolume(0.5);
    SetSoundVolumes({0.2, 0.4, 0.6, 0.8});
    const std::pair<const char*, double> files[] = {
        {"/a/Ruby01.stk", 0.1}, {"Felt Roll.DCE", 0.2}, {"Clay Chip.chp", 0.3}, {"Bell.win", 0.4},
        {"/x/Chips.wav", 0.4},  {"mine.wav", 0.5},      {"none", 0.5}};
    for (const auto& [file, volume] : files) QCOMPARE(VolumeOfSound(file), volume);
    SetSoundVolume(1);
    SetSoundVolumes({1, 1, 1, 1});
  }
};

SCREEN_TEST(TestTableLook)
#include "test_table_look.moc"
