#include "screens/table/table_panel.h"

#include <QAction>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "core/text.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/screen_table.h"
#include "screens/table/band_elements.h"
#include "screens/table/bet_card_view.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_layer.h"
#include "screens/table/table_settings.h"
#include "screens/table/table_text.h"

namespace {

constexpr int kNarrowest = 240;
constexpr int kWidest = 360;
constexpr int kMargin = 8;
constexpr double kPadding = 14;
constexpr double kRowHeight = 21;
constexpr double kHead = 34;
constexpr int kRunHeight = 206;
constexpr int kFoldsBelow = 640;     // of the panel's height: the run shows its head alone
constexpr int kCardOnlyBelow = 460;  // and here only the card is left
constexpr std::array<int, 3> kPaces = {0, 600, 1200};

/// A chosen button stands out by the accent of the colors in force.
void ShowChosen(QPushButton* button, const CardColors& colors) {
  QPalette look;
  if (button->isChecked()) {
    look.setColor(QPalette::Button, colors.Accent);
    look.setColor(QPalette::ButtonText, colors.Window);
  }
  if (button->testAttribute(Qt::WA_SetPalette) || button->isChecked()) button->setPalette(look);
}

QFont Sized(QFont font, int pixels, bool bold = false) {
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

Currency ToCents(Currency amount) {
  return Currency::FromDouble(std::round(amount.ToDouble() * 100) / 100);
}

}  // namespace

TablePanel::TablePanel(frmCrapTable* table) : QWidget(table), table_(table), bet_(PassLine) {
  setObjectName("tablePanel");
  setAutoFillBackground(true);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
  MakeRunControls();
  Refresh();
}

int TablePanel::WidthFor(QSize room) {
  if (TheTable.Panel == PanelNever) return 0;
  const double scale = room.height() / kTableHeight;
  const int spare = room.width() - static_cast<int>(std::ceil(kTableWidth * scale));
  if (spare >= kNarrowest) return std::min(spare, kWidest);
  const bool fits = room.width() - kNarrowest >= static_cast<int>(kTableWidth);
  return TheTable.Panel == PanelAlways && fits ? kNarrowest : 0;
}

void TablePanel::SetWidth(int width) {
  width_ = width;
  updateGeometry();
}

QPushButton* TablePanel::AddButton(const char* name, const QString& caption) {
  QPushButton* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setFocusPolicy(Qt::TabFocus);  // a click must not take the focus from the keyed-bet box
  return button;
}

void TablePanel::MakeRunControls() {
  const QString captions[] = {tr("0 s"), tr("0.6 s"), tr("1.2 s")};
  for (std::size_t i = 0; i < kPaces.size(); ++i) {
    const QByteArray name = "cmdPace_" + QByteArray::number(static_cast<int>(i));
    cmdPace_[i] = AddButton(name, captions[i]);
    cmdPace_[i]->setCheckable(true);
    cmdPace_[i]->setToolTip(tr("The pause in which the result of a roll is seen"));
    connect(cmdPace_[i], &QPushButton::clicked, this, [this, i] {
      TheTable.Pace = kPaces[i];
      UseTableSettings();
      Refresh();
    });
  }
  const auto asks = [this](QPushButton* button, const char* action) {
    button->setFlat(true);
    connect(button, &QPushButton::clicked, this, [this, action] {
      if (auto* command = table_->findChild<QAction*>(action)) command->trigger();
      Refresh();
    });
  };
  asks(cmdStopLoss_ = AddButton("cmdStopLoss", {}), "mnuTableStopLoss");
  asks(cmdWinGoal_ = AddButton("cmdWinGoal", {}), "mnuTableWinGoal");
  cmdStopLoss_->setToolTip(tr("The loss at which a run of rolls ends"));
  cmdWinGoal_->setToolTip(tr("The win at which a run of rolls ends"));
  cmdRollByItself_ = AddButton("cmdRollByItself", {});
  cmdRollByItself_->setToolTip(tr("Throw again and again, until something stops the run (A)"));
  connect(cmdRollByItself_, &QPushButton::clicked, this, [this] { table_->RollByItself(); });
  cmdMoreStops_ = AddButton("cmdMoreStops", tr("More stops in Auto-Play..."));
  cmdMoreStops_->setFlat(true);
  connect(cmdMoreStops_, &QPushButton::clicked, this, [] { ShowScreen(AutoPlayWindow); });
}

void TablePanel::ShowBet(int betId) {
  if (!IsBet(betId) || betId == bet_) return;
  bet_ = betId;
  Refresh();
}

void TablePanel::Refresh() {
  Guarded("Bet Card", [this] { card_ = CardOf(bet_, AmountOfSelection()); });
  for (std::size_t i = 0; i < kPaces.size(); ++i)
    cmdPace_[i]->setChecked(TheTable.Pace == kPaces[i]);
  const auto limit = [](const QString& set, const QString& none, Currency amount) {
    return amount > Currency() ? set.arg(PlainMoney(amount)) : none;
  };
  cmdStopLoss_->setText(limit(tr("Stop at \u2212%1"), tr("No loss limit"), TheTable.StopLoss));
  cmdWinGoal_->setText(limit(tr("or at +%1"), tr("No win goal"), TheTable.WinGoal));
  cmdRollByItself_->setText(Game.KeepRolling ? tr("Stop") : tr("Roll by itself (A)"));
  Arrange();
  update();
}

void TablePanel::Arrange() {
  const double width = this->width() - 2 * kMargin;
  const CardColors colors = CardColorsNow();
  double top = kMargin;
  const auto take = [&](double height) {
    const QRectF box(kMargin, top, width, height);
    top += height + kMargin;
    return box;
  };
  const double cardHeight =
      PaintCard(nullptr, {kMargin, top, width, 0}, card_, CardKeys(), colors, font());
  cardBox_ = TheTable.BetCard ? take(cardHeight) : QRectF();
  const bool more = height() >= kCardOnlyBelow;
  runFolded_ = height() < kFoldsBelow;
  const double run = !more ? 0 : runFolded_ ? kHead : kRunHeight;
  const double rest = height() - top - (run > 0 ? run + kMargin : 0) - kMargin;
  const double rows = static_cast<double>(table_->Layer().Forecast().size());
  forecastBox_ = more && TheTable.Forecast && rest > 3 * kRowHeight
                     ? take(std::min(kHead + rows * kRowHeight + 8, rest))
                     : QRectF();
  runBox_ = run > 0 ? take(run) : QRectF();
  const QRectF inner = runBox_.adjusted(kPadding, kHead, -kPadding, -8);
  const bool shown = run > 0 && !runFolded_;
  const double third = std::min(56.0, inner.width() / 5);
  for (std::size_t i = 0; i < cmdPace_.size(); ++i)
    cmdPace_[i]->setGeometry(
        QRectF(inner.right() - third * static_cast<double>(3 - i), inner.top(), third, 24)
            .toRect());
  const double half = inner.width() / 2;
  cmdStopLoss_->setGeometry(QRectF(inner.left() - 4, inner.top() + 30, half + 4, 24).toRect());
  cmdWinGoal_->setGeometry(QRectF(inner.left() + half, inner.top() + 30, half + 4, 24).toRect());
  cmdRollByItself_->setGeometry(QRectF(inner.left(), inner.top() + 96, inner.width(), 30).toRect());
  cmdMoreStops_->setGeometry(QRectF(inner.left(), inner.top() + 132, inner.width(), 24).toRect());
  for (QPushButton* button : findChildren<QPushButton*>()) {
    button->setFont(Sized(font(), 13, button == cmdRollByItself_ || button->isChecked()));
    button->setVisible(shown);
    ShowChosen(button, colors);
  }
}

void TablePanel::resizeEvent(QResizeEvent*) { Arrange(); }

/// Beside its controls the panel is table: a right click rolls.
void TablePanel::mouseReleaseEvent(QMouseEvent* event) {
  table_->Layer().JumpToEnd();
  if (event->button() == Qt::RightButton)
    Guarded("Crap Table", [this] { table_->RollByCommand(); });
}

void TablePanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const CardColors colors = CardColorsNow();
  painter.setPen(QPen(colors.Border, 1));
  painter.drawLine(QPointF(0.5, 0), QPointF(0.5, height()));
  if (Game.HyperDriveOn) painter.setOpacity(kRestingUnderHyperDrive);
  if (!cardBox_.isEmpty()) {
    PaintBox(painter, cardBox_, colors);
    PaintCard(&painter, cardBox_, card_, CardKeys(), colors, font());
  }
  if (!forecastBox_.isEmpty()) PaintForecast(painter);
  if (!runBox_.isEmpty()) PaintRun(painter);
}

void TablePanel::PaintForecast(QPainter& painter) const {
  const CardColors colors = CardColorsNow();
  PaintBox(painter, forecastBox_, colors);
  const auto& rows = table_->Layer().Forecast();
  const QRectF inner = forecastBox_.adjusted(kPadding, 0, -kPadding, -4);
  painter.setFont(Sized(font(), 15, true));
  painter.setPen(colors.Text);
  const QRectF head(inner.left(), inner.top() + 2, inner.width(), kHead - 2);
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, tr("If it rolls"));
  painter.setFont(Sized(font(), 13));
  painter.setPen(colors.Muted);
  painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter,
                   tr("on average %1").arg(SignedMoney(ToCents(MeanOfForecast(rows)))));
  if (rows.empty()) return;
  const double height =
      std::min(kRowHeight, (inner.height() - kHead) / static_cast<double>(rows.size()));
  const QFont bold =
      Sized(font(), std::max(8, static_cast<int>(std::min(14.0, height * 0.72))), true);
  double most = 0;
  double widest = 0;
  double least = 0;
  for (const ForecastRow& row : rows) {
    most = std::max(most, row.Net.ToDouble());
    least = std::min(least, row.Net.ToDouble());
    widest = std::max(widest, QFontMetricsF(bold).horizontalAdvance(SignedMoney(row.Net)));
  }
  widest = std::min(widest, inner.width() * 0.45);
  const double bars = inner.left() + 86;
  const double room = std::max(10.0, inner.right() - widest - 10 - bars);
  const double span = std::max(most - least, 1.0);
  const double zero = bars + room * (-least / span);
  double top = inner.top() + kHead;
  for (const ForecastRow& row : rows) {
    const QRectF line(inner.left(), top, inner.width(), height);
    if (row.Total == 7) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(colors.Raised);
      painter.drawRoundedRect(line.adjusted(-8, 0, 8, 0), 4, 4);
    }
    painter.setFont(bold);
    painter.setPen(colors.Text);
    painter.drawText(QRectF(line.left(), top, 26, height), Qt::AlignRight | Qt::AlignVCenter,
                     ForecastName(row));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.Muted);
    for (int dot = 0; dot < row.Ways; ++dot)
      painter.drawEllipse(QPointF(line.left() + 35 + 7.0 * dot, line.center().y()), 1.9, 1.9);
    const QColor color = row.Net > Currency()   ? colors.Gain
                         : row.Net < Currency() ? colors.Loss
                                                : colors.Muted;
    const double length = room * row.Net.ToDouble() / span;
    painter.setBrush(row.Net == Currency() ? colors.Border : color);
    const double bar = std::max(2.0, height - 9);
    painter.drawRect(QRectF(std::min(zero, zero + length) - 0.5, line.center().y() - bar / 2,
                            std::max(1.5, std::abs(length)), bar));
    painter.setPen(color);
    painter.drawText(QRectF(inner.right() - widest - 4, top, widest + 4, height),
                     Qt::AlignRight | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(SignedMoney(row.Net), Qt::ElideRight,
                                                      static_cast<int>(widest) + 4));
    top += height;
  }
  painter.setPen(QPen(colors.Border, 1));
  painter.drawLine(QPointF(zero, inner.top() + kHead), QPointF(zero, top));
}

void TablePanel::PaintRun(QPainter& painter) const {
  const CardColors colors = CardColorsNow();
  PaintBox(painter, runBox_, colors);
  const QRectF inner = runBox_.adjusted(kPadding, 0, -kPadding, 0);
  painter.setFont(Sized(font(), 15, true));
  painter.setPen(colors.Text);
  const QRectF head(inner.left(), inner.top(), inner.width(), kHead);
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, tr("Run"));
  painter.setFont(Sized(font(), 13));
  painter.setPen(colors.Muted);
  painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter,
                   tr("rolls: %1").arg(Text(CountText(Game.RollCount[0]))));
  if (runFolded_) return;
  painter.drawText(QRectF(inner.left(), inner.top() + kHead, inner.width() / 2, 24),
                   Qt::AlignLeft | Qt::AlignVCenter, tr("Between rolls"));
  PaintGauge(painter, {inner.left(), inner.top() + kHead + 60, inner.width(), 10});
}

/// The result of the game between the amounts at which a run ends.
void TablePanel::PaintGauge(QPainter& painter, const QRectF& line) const {
  const CardColors colors = CardColorsNow();
  const Currency shown = table_->Layer().Money().Result;
  const double result = shown.ToDouble();
  const double reach = std::max({std::abs(result), 1.0});
  const double low = TheTable.StopLoss > Currency() ? -TheTable.StopLoss.ToDouble() : -reach;
  const double high = TheTable.WinGoal > Currency() ? TheTable.WinGoal.ToDouble() : reach;
  const auto at = [&](double amount) {
    return line.left() + line.width() * std::clamp((amount - low) / (high - low), 0.0, 1.0);
  };
  painter.setPen(QPen(colors.Border, 1));
  painter.setBrush(colors.Raised);
  painter.drawRoundedRect(line, 5, 5);
  painter.setPen(Qt::NoPen);
  painter.setBrush(result < 0 ? colors.Loss : colors.Gain);
  painter.drawRect(QRectF(QPointF(std::min(at(0), at(result)), line.top() + 1),
                          QPointF(std::max(at(0), at(result)), line.bottom() - 1)));
  painter.setBrush(colors.Text);
  painter.drawEllipse(QPointF(at(result), line.center().y()), 6, 6);
  painter.setFont(Sized(font(), 13, true));
  painter.setPen(colors.Text);
  const QString text = SignedMoney(shown);
  const double width = painter.fontMetrics().horizontalAdvance(text) + 2;
  const double left =
      std::clamp(at(result) - width / 2, line.left(), std::max(line.left(), line.right() - width));
  painter.drawText(QRectF(left, line.bottom() + 3, width, 18), Qt::AlignCenter, text);
}
