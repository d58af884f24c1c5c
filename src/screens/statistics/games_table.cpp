#include "screens/statistics/games_table.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <climits>

#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "stats/events_log_view.h"

namespace {

constexpr const char* kPlace = "Games Log";
constexpr std::int64_t kBlock = 512;  // records read at a time
constexpr int kColumns = 5;
constexpr int kValueColumn = 2;
constexpr int kLetters = 16;  // of a column
constexpr int kLettersOfValue = 26;

}  // namespace

GamesTable::GamesTable(const GamesRead& log, const GameChoice& choice)
    : log_(log),
      choice_(choice),
      tblRaw_(New<QTableView>("tblRaw")),
      vscrRaw_(New<QScrollBar>("vscrRaw", Qt::Vertical)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(tblRaw_, 1);
  row->addWidget(vscrRaw_);
  tblRaw_->setAccessibleName(tr("Games"));
  tblRaw_->setSelectionBehavior(QAbstractItemView::SelectRows);
  tblRaw_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  tblRaw_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  tblRaw_->setTabKeyNavigation(false);
  tblRaw_->setAlternatingRowColors(true);
  tblRaw_->verticalHeader()->hide();
  tblRaw_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  tblRaw_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  tblRaw_->installEventFilter(this);
  connect(tblRaw_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { ShowBar(); });
  connect(vscrRaw_, &QScrollBar::actionTriggered, this,
          [this](int action) { Guarded(kPlace, [this, action] { BarActed(action); }); });
}

void GamesTable::ShowColumn(int column) {
  delete rows_;
  rows_ = new RecordModel(
      this,
      [this] { return static_cast<int>(std::min<std::size_t>(log_.Games.Values.size(), INT_MAX)); },
      {{tr("Game #"), [](int row) { return Count(row + 1LL); }, Qt::AlignRight},
       {tr("# Rolls"), [this](int row) { return Money(RollsAt(row)); }, Qt::AlignRight},
       {Text(GameColumnName(column)), [this](int row) { return Money(ValueAt(row)); },
        Qt::AlignRight},
       {tr("Outcome"),
        [this](int row) {
          return Text(ClassLabels(choice_.Break)[static_cast<std::size_t>(ClassAt(row))]);
        }},
       {tr("Include"),
        [this](int row) { return choice_.Counts(ValueAt(row)) ? tr("Yes") : tr("No"); }}});
  tblRaw_->setModel(rows_);
  tblRaw_->horizontalHeader()->setStretchLastSection(true);
  for (int at = 0; at + 1 < kColumns; ++at)
    tblRaw_->setColumnWidth(
        at, fontMetrics().averageCharWidth() * (at == kValueColumn ? kLettersOfValue : kLetters));
}

void GamesTable::Refresh() {
  block_.clear();
  rows_->Refresh();
  ShowBar();
}

std::int64_t GamesTable::TopGame() const { return tblRaw_->verticalScrollBar()->value() + 1; }

void GamesTable::GoTo(std::int64_t game) {
  tblRaw_->verticalScrollBar()->setValue(static_cast<int>(game - 1));
}

void GamesTable::Select(std::int64_t game) {
  tblRaw_->setCurrentIndex(rows_->index(static_cast<int>(game - 1), 0));
}

/// A row may be painted before the list knows that its game is gone.
Currency GamesTable::ValueAt(int row) const {
  const auto at = static_cast<std::size_t>(row);
  return at < log_.Games.Values.size() ? log_.Games.Values[at] : Currency();
}

GameClass GamesTable::ClassAt(int row) const { return ClassOf(ValueAt(row), choice_.Break); }

/// Read from the file, a stretch at a time.
Currency GamesTable::RollsAt(int row) const {
  const std::int64_t game = row + 1LL;
  if (game < blockAt_ || game >= blockAt_ + static_cast<std::int64_t>(block_.size())) {
    blockAt_ = std::max<std::int64_t>(1, game - kBlock / 2);
    block_.clear();
    Guarded(kPlace, [this] { block_ = GamesLogReader(log_.Path).Read(blockAt_, kBlock); });
  }
  const auto at = static_cast<std::size_t>(game - blockAt_);
  return at < block_.size() ? block_[at][RollsColumn] : Currency();
}

/// The bar has been clicked or dragged: it follows the game at the top, not the other way round.
void GamesTable::BarActed(int action) {
  const int games = rows_->rowCount();
  const int top = static_cast<int>(TopGame());
  const auto by = [&](int change) { GoTo(TopLineAfterClick(top, games, change)); };
  switch (action) {
    case QScrollBar::SliderSingleStepAdd: by(1); break;
    case QScrollBar::SliderSingleStepSub: by(-1); break;
    case QScrollBar::SliderPageStepAdd: by(vscrRaw_->pageStep()); break;
    case QScrollBar::SliderPageStepSub: by(-vscrRaw_->pageStep()); break;
    case QScrollBar::SliderMove:
      GoTo(TopLineAfterDrag(vscrRaw_->sliderPosition(), games));
      return;  // the thumb stays where it is held
    default: break;
  }
  vscrRaw_->setSliderPosition(LogBarValue(static_cast<int>(TopGame()), games));
}

void GamesTable::ShowBar() {
  const int games = rows_->rowCount();
  vscrRaw_->setRange(1, LogBarMaximum(games));
  vscrRaw_->setPageStep(std::max(1, tblRaw_->verticalScrollBar()->pageStep() - 1));
  if (!vscrRaw_->isSliderDown())
    vscrRaw_->setValue(LogBarValue(static_cast<int>(TopGame()), games));
}

bool GamesTable::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tblRaw_ && event->type() == QEvent::Resize)
    QMetaObject::invokeMethod(
        this, [this] { ShowBar(); }, Qt::QueuedConnection);
  return QWidget::eventFilter(watched, event);
}
