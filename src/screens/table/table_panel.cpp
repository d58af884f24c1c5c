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
constexpr double kMostOfRun = 1.5;   // that the run grows with the letters
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

/// Letters of a size, or smaller ones in which the text fits into a width.
QFont Fitting(const QFont& font, double pixels, bool bold, const QString& text, double width) {
  const QFont wanted = Sized(font, qRound(pixels), bold);
  const double wide = QFontMetricsF(wanted).horizontalAdvance(text);
  return wide <= width ? wanted : Sized(font, std::max(8, int(pixels * width / wide)), bold);
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
  double top = kMargin;
  const auto take = [&](double height) {
    const QRectF box(kMargin, top, width, height);
    top += height + kMargin;
    return box;
  };
  letters_ = LetterScale(font());
  const double cardHeight =
      PaintCard(nullptr, {kMargin, top, width, 0}, card_, CardKeys(), CardColorsNow(), font());
  cardBox_ = TheTable.BetCard ? take(cardHeight) : QRectF();
  const bool more = height() >= kCardOnlyBelow;
  const double head = kHead * letters_;
  const double rows = static_cast<double>(table_->Layer().Forecast().size());
  const double wanted = head + rows * kRowHeight * letters_ + 8;
  // Larger letters of the forecast come before those of the run, and before the run itself.
  const double left = height() - top - wanted - 2 * kMargin;
  run_ = std::clamp(left / kRunHeight, 1.0, std::min(letters_, kMostOfRun));
  runFolded_ = height() < kFoldsBelow || (letters_ > 1 && left < kRunHeight);
  const double run = !more ? 0 : runFolded_ ? head : kRunHeight * run_;
  const double rest = height() - top - (run > 0 ? run + kMargin : 0) - kMargin;
  forecastBox_ =
      more && TheTable.Forecast && rest > 3 * kRowHeight ? take(std::min(wanted, rest)) : QRectF();
  runBox_ = run > 0 ? take(run) : QRectF();
  ArrangeRun();
}

void TablePanel::ArrangeRun() {
  const CardColors colors = CardColorsNow();
  const QRectF inner = runBox_.adjusted(kPadding, kHead * run_, -kPadding, -8);
  const auto place = [&](QPushButton* button, double left, double top, double width,
                         double height) {
    button->setGeometry(
        QRectF(inner.left() + left, inner.top() + top * run_, width, height * run_).toRect());
    button->setFont(Fitting(font(), 13 * run_, button == cmdRollByItself_ || button->isChecked(),
                            button->text(), width - 8));
    button->setVisible(runBox_.height() > 0 && !runFolded_);
    ShowChosen(button, colors);
  };
  const double third = std::min(56.0 * run_, inner.width() / 5);
  for (std::size_t i = 0; i < cmdPace_.size(); ++i)
    place(cmdPace_[i], inner.width() - third * static_cast<double>(3 - i), 0, third, 24);
  const double half = inner.width() / 2;
  place(cmdStopLoss_, -4, 30, half + 4, 24);
  place(cmdWinGoal_, half, 30, half + 4, 24);
  place(cmdRollByItself_, 0, 96, inner.width(), 30);
  place(cmdMoreStops_, 0, 132, inner.width(), 24);
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

/// The title of a box, and a note at its other end.
void TablePanel::PaintHead(QPainter& painter, const QRectF& head, const QString& title,
                           const QString& note) const {
  const CardColors colors = CardColorsNow();
  const QFont bold = Sized(font(), qRound(15 * letters_), true);
  painter.setFont(bold);
  painter.setPen(colors.Text);
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, title);
  const double left = head.width() - QFontMetricsF(bold).horizontalAdvance(title) - 10;
  painter.setFont(Fitting(font(), 13 * letters_, false, note, left));
  painter.setPen(colors.Muted);
  painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter, note);
}

void TablePanel::PaintForecast(QPainter& painter) const {
  const CardColors colors = CardColorsNow();
  PaintBox(painter, forecastBox_, colors);
  const auto& rows = table_->Layer().Forecast();
  const QRectF inner = forecastBox_.adjusted(kPadding, 0, -kPadding, -4);
  const double headHeight = kHead * letters_;
  PaintHead(painter, {inner.left(), inner.top() + 2, inner.width(), headHeight - 2},
            tr("If it rolls"), tr("on average %1").arg(SignedMoney(ToCents(MeanOfForecast(rows)))));
  if (rows.empty()) return;
  const double height = std::min(kRowHeight * letters_,
                                 (inner.height() - headHeight) / static_cast<double>(rows.size()));
  const QFont bold =
      Sized(font(), std::max(8, static_cast<int>(std::min(14 * letters_, height * 0.72))), true);
  const double size = std::max(1.0, bold.pixelSize() / 14.0);  // of the columns
  double most = 0;
  double widest = 0;
  double least = 0;
  for (const ForecastRow& row : rows) {
    most = std::max(most, row.Net.ToDouble());
    least = std::min(least, row.Net.ToDouble());
    widest = std::max(widest, QFontMetricsF(bold).horizontalAdvance(SignedMoney(row.Net)));
  }
  widest = std::min(widest, inner.width() * 0.45);
  const double bars = inner.left() + 86 * size;
  const double room = std::max(10.0, inner.right() - widest - 10 - bars);
  const double span = std::max(most - least, 1.0);
  const double zero = bars + room * (-least / span);
  double top = inner.top() + headHeight;
  for (const ForecastRow& row : rows) {
    const QRectF line(inner.left(), top, inner.width(), height);
    if (row.Total == 7) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(colors.Raised);
      painter.drawRoundedRect(line.adjusted(-8, 0, 8, 0), 4, 4);
    }
    painter.setFont(bold);
    painter.setPen(colors.Text);
    painter.drawText(QRectF(line.left(), top, 26 * size, height), Qt::AlignRight | Qt::AlignVCenter,
                     ForecastName(row));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.Muted);
    for (int dot = 0; dot < row.Ways; ++dot)
      painter.drawEllipse(QPointF(line.left() + (35 + 7.0 * dot) * size, line.center().y()),
                          1.9 * size, 1.9 * size);
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
  painter.drawLine(QPointF(zero, inner.top() + headHeight), QPointF(zero, top));
}

void TablePanel::PaintRun(QPainter& painter) const {
  const CardColors colors = CardColorsNow();
  PaintBox(painter, runBox_, colors);
  const QRectF inner = runBox_.adjusted(kPadding, 0, -kPadding, 0);
  const double head = kHead * (runFolded_ ? letters_ : run_);
  PaintHead(painter, {inner.left(), inner.top(), inner.width(), head}, tr("Run"),
            tr("rolls: %1").arg(Text(CountText(Game.RollCount[0]))));
  if (runFolded_) return;
  const QString pace = tr("Between rolls");
  const QRectF line(inner.left(), inner.top() + head, cmdPace_[0]->x() - 4 - inner.left(),
                    24 * run_);
  painter.setFont(Fitting(font(), 13 * run_, false, pace, line.width()));
  painter.setPen(colors.Muted);
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, pace);
  PaintGauge(painter, {inner.left(), inner.top() + head + 60 * run_, inner.width(), 10});
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
  painter.setFont(Sized(font(), qRound(13 * run_), true));
  painter.setPen(colors.Text);
  const QString text = SignedMoney(shown);
  const double width = painter.fontMetrics().horizontalAdvance(text) + 2;
  const double left =
      std::clamp(at(result) - width / 2, line.left(), std::max(line.left(), line.right() - width));
  const double height = painter.fontMetrics().height();
  painter.drawText(QRectF(left, line.bottom() + 3, width, height), Qt::AlignCenter, text);
}
