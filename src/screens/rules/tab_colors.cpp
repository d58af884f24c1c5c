// The colours of the table, and its felt.
#include <QColorDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/game_state.h"
#include "core/host.h"
#include "rules/presets.h"
#include "screens/art/felt_art.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/rules/config_page.h"
#include "screens/rules/picture_chooser.h"

namespace {

constexpr int kFeltColumns = 3;
constexpr QSize kFeltSize(84, 52);
constexpr QSize kSwatchSize(40, 18);

void RedrawTable() { TheHost.RedrawLayout(); }

std::uint32_t& SlotColor(int slot) { return Game.TableColor[static_cast<unsigned>(slot)]; }

QColor ColorOf(std::uint32_t rgb) { return QColor::fromRgb(rgb); }

std::uint32_t RgbOf(const QColor& color) { return color.rgb() & 0xFFFFFF; }

/// The colours to choose from: a row of greys above twelve hues from light to dark. Arrow keys move
/// over them, the space bar and Enter choose.
class ColorPalette : public QWidget {
 public:
  explicit ColorPalette(std::function<void(const QColor&)> choose) : choose_(std::move(choose)) {
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(kColumns * 16, kRows * 16);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setToolTip(QObject::tr("Click a color"));
    setAccessibleName(QObject::tr("Colors"));
  }

  QSize sizeHint() const override { return {kColumns * 26, kRows * 22}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    for (int cell = 0; cell < kColumns * kRows; ++cell)
      painter.fillRect(AreaOf(cell), ColorAt(cell));
    if (!hasFocus()) return;
    painter.setPen(QPen(Qt::black, 3));
    painter.drawRect(AreaOf(cell_).adjusted(1, 1, -2, -2));
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(AreaOf(cell_).adjusted(1, 1, -2, -2));
  }

  void mousePressEvent(QMouseEvent* event) override {
    const QPoint at = event->position().toPoint();
    for (int cell = 0; cell < kColumns * kRows; ++cell) {
      if (AreaOf(cell).contains(at)) Choose(cell);
    }
  }

  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Left: return MoveTo(cell_ - 1);
      case Qt::Key_Right: return MoveTo(cell_ + 1);
      case Qt::Key_Up: return MoveTo(cell_ - kColumns);
      case Qt::Key_Down: return MoveTo(cell_ + kColumns);
      case Qt::Key_Space:
      case Qt::Key_Return:
      case Qt::Key_Enter: return Choose(cell_);
      default: QWidget::keyPressEvent(event);
    }
  }

 private:
  static constexpr int kColumns = 12;
  static constexpr int kRows = 8;

  static QColor ColorAt(int cell) {
    const int column = cell % kColumns;
    const int row = cell / kColumns;
    constexpr int kAngle = 360 / kColumns;
    constexpr int kFull = 255;
    if (row == 0) {
      const int grey = kFull * column / (kColumns - 1);
      return {grey, grey, grey};
    }
    constexpr int kPureRow = 4;  // lighter above, darker below
    const int step = kFull / kPureRow;
    const int saturation = row < kPureRow ? step * row : kFull;
    const int value = row > kPureRow ? kFull - step * (row - kPureRow) : kFull;
    return QColor::fromHsv(kAngle * column, saturation, value);
  }

  QRect AreaOf(int cell) const {
    const int column = cell % kColumns;
    const int row = cell / kColumns;
    const QPoint from(width() * column / kColumns, height() * row / kRows);
    const QPoint to(width() * (column + 1) / kColumns, height() * (row + 1) / kRows);
    return {from, to - QPoint(1, 1)};
  }

  void MoveTo(int cell) {
    cell_ = std::clamp(cell, 0, kColumns * kRows - 1);
    update();
  }

  void Choose(int cell) {
    MoveTo(cell);
    choose_(ColorAt(cell));
  }

  std::function<void(const QColor&)> choose_;
  int cell_ = 0;
};

class ColorsPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(ColorsPage)

 public:
  ColorsPage() {
    QGridLayout* grid = new QGridLayout(this);
    grid->addWidget(MakeSlots(), 0, 0, 2, 1);
    auto* palette =
        New<ColorPalette>("picColorpal", [this](const QColor& color) { SetColor(color); });
    auto* more = New<QPushButton>("cmdMoreColors", tr("Mor&e colors..."));
    connect(more, &QPushButton::clicked, this, [this] { AskForColor(); });
    grid->addWidget(palette, 0, 1);
    grid->addWidget(more, 1, 1, Qt::AlignLeft);
    grid->addWidget(MakeFelts(), 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
  }

  std::vector<TabMenu> MenusOfTab() override {
    std::vector<MenuRow> rows;
    for (int i = 0; i < kColorPresets; ++i) {
      const ColorPreset& preset = kColorPresetTable[static_cast<unsigned>(i)];
      MenuRow row = Check(
          QString("mnuSetColors_%1").arg(i), Text(preset.Name),
          [&preset] {
            return Game.TableColor == preset.Colors && Game.TableFeltPattern == preset.Pattern;
          },
          [i] {
            ChangeByPlayer([i] {
              SetColorPreset(i);
              RedrawTable();
            });
          });
      row.OneOfSeveral = true;
      rows.push_back(std::move(row));
    }
    return {{"mnuOptionsColors", tr("&Options"), {ColorsTab}, std::move(rows)}};
  }

 private:
  QGroupBox* MakeSlots() {
    const QStringList captions = {tr(" Felt "),
                                  tr(" Lines"),
                                  tr(" Text (Passline, Come, C)"),
                                  tr(" Text (Don't Pass, Don't Come)"),
                                  tr(" Text (Place, Big 6/8, Props, E)"),
                                  tr(" Text (Field)"),
                                  tr(" Dice"),
                                  tr(" Dice pips")};
    QGroupBox* group = new QGroupBox(tr("Color of"));
    QGridLayout* grid = new QGridLayout(group);
    for (int slot = 0; slot < captions.size(); ++slot) {
      auto* option = New<QRadioButton>(QString("optTableColors_%1").arg(slot), captions[slot]);
      option->setChecked(slot == slot_);
      connect(option, &QRadioButton::clicked, this, [this, slot] { slot_ = slot; });
      grid->addWidget(option, slot, 0);
      grid->addWidget(
          MakePicture(QString("picSlotColor_%1").arg(slot), captions[slot].trimmed(), kSwatchSize,
                      [slot](QPainter& painter, const QRectF& area) {
                        painter.setPen(Qt::gray);
                        painter.setBrush(ColorOf(SlotColor(slot)));
                        painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
                      }),
          slot, 1);
    }
    return group;
  }

  /// The felt pattern is kept as a number that could have a fraction.
  static RecordField<int> Felt() {
    return {[] { return static_cast<int>(Game.TableFeltPattern); },
            [](int pattern) {
              Game.TableFeltPattern = static_cast<float>(pattern);
              RedrawTable();
            }};
  }

  static QGroupBox* MakeFelts() {
    QGroupBox* group = new QGroupBox(tr("Felt"));
    QVBoxLayout* column = new QVBoxLayout(group);
    const PictureGrid felts{"picTableColors",
                            tr("Felt %1"),
                            kFeltPatterns,
                            kFeltColumns,
                            kFeltSize,
                            [](QPainter& painter, const QRectF& area, int pattern) {
                              painter.save();
                              painter.setClipRect(area);
                              PaintFelt(painter, area, ColorOf(SlotColor(ColorFelt)), pattern);
                              painter.restore();
                            }};
    column->addWidget(MakePictureChooser(felts, Felt(), 0));
    return group;
  }

  void SetColor(const QColor& color) {
    ChangeByPlayer([slot = slot_, rgb = RgbOf(color)] {
      SlotColor(slot) = rgb;
      RedrawTable();
    });
  }

  void AskForColor() {
    const QColor color =
        QColorDialog::getColor(ColorOf(SlotColor(slot_)), window(), tr("Color of the table"));
    if (color.isValid()) SetColor(color);
  }

  int slot_ = ColorFelt;
};

}  // namespace

ConfigPage* MakeColorsPage() { return new ColorsPage; }
