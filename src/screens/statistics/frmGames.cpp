#include "screens/statistics/frmGames.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <utility>

#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "figures/games_log.h"
#include "screens/files/frmFile.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"
#include "screens/statistics/figure_view.h"
#include "screens/statistics/games_export.h"

namespace {

constexpr QSize kSmallest(640, 440);
constexpr QSize kAtStart(860, 720);
constexpr QSizeF kPrinted(540, 260);  // points
constexpr int kDecimals = 4;
constexpr qint64 kRest = 10;  // times as long as reading took, while dice roll
constexpr std::size_t kGivenLines = 14;
constexpr std::size_t kOddsLines = 9;

/// What the game keeps of the screen.
int& DisplayField() { return Game.GamesView[0]; }   // 0 the histogram, 1 the data
int& BarWidthField() { return Game.GamesView[1]; }  // 0 fine to 3 extra wide

bool ShowsData() { return DisplayField() == 1; }

int BarWidth() {
  const auto last = static_cast<int>(kGraphBarWidths.size()) - 1;
  return kGraphBarWidths[static_cast<std::size_t>(std::clamp(BarWidthField(), 0, last))];
}

QString LogName(const std::string& path) { return Text(BareName(path)); }

/// A red that can be read on a desktop of these colours.
QColor RedOn(const QPalette& palette) {
  constexpr int kDark = 128;
  return palette.color(QPalette::Window).lightness() < kDark ? QColor(0xFF8080) : QColor(Qt::red);
}

/// A number that was typed into a box of decimals.
double Typed(const QLineEdit* box) { return ParseAmount(box->text().toStdString()).ToDouble(); }

/// Writes a number into a box, unless the player is at work in it.
void ShowTyped(QLineEdit* box, double value) {
  const QString text = Text(PlainText(Currency::FromDouble(std::clamp(value, 0.0, 9e13))));
  if (!box->hasFocus() && box->text() != text) box->setText(text);
}

}  // namespace

// ---- frmGames ----

frmGames::frmGames(QWidget* table) : Screen(table, "frmGames", tr("Games Log"), kTopicGamesLog) {
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  MakeHead(column);
  MakeViews(column);
  MakeFigures(column);
  setCentralWidget(content);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
}

void frmGames::MakeHead(QBoxLayout* column) {
  auto* row = new QHBoxLayout;
  cmbView_ = New<QComboBox>("cmbView");
  for (int i = 0; i < kGameColumns; ++i) cmbView_->addItem(Text(GameColumnName(i)));
  cmbView_->setCurrentIndex(DollarsNetColumn);
  cmbView_->setMaxVisibleItems(kGameColumns);
  connect(cmbView_, &QComboBox::currentIndexChanged, this, [this] { Do([this] { Refresh(); }); });
  row->addWidget(Caption(tr("&View:"), cmbView_));
  row->addWidget(cmbView_);
  row->addSpacing(16);
  row->addWidget(Option("optDisplay_0", tr(" Display &Histogram"), DisplayField(), 0));
  row->addWidget(Option("optDisplay_1", tr(" Display &Data"), DisplayField(), 1));
  row->addStretch(1);
  lblStatus_ = New<QLabel>("lblStatus");
  lblStatus_->setTextFormat(Qt::PlainText);
  row->addWidget(lblStatus_);
  column->addLayout(row);
  lblLegend_ = New<QLabel>("lblLegend");
  lblLegend_->setTextFormat(Qt::RichText);
  column->addWidget(lblLegend_);
}

void frmGames::MakeViews(QBoxLayout* column) {
  picHistogram_ = new picHistogramBox(this);
  connect(picHistogram_, &picHistogramBox::Pointed, this, [this] { ShowPointed(); });
  lblEmpty_ = EmptyLabel(picHistogram_, "lblEmpty", {});
  lblEmpty_->setStyleSheet("color: dimgray");  // on the paper, whatever the desktop's colors
  table_ = new GamesTable(log_, choice_);
  table_->ShowColumn(Column());
  lblPointer_ = New<QLabel>("lblPointer");
  lblPointer_->setTextFormat(Qt::PlainText);
  lblPointer_->setAlignment(Qt::AlignCenter);
  lblPointer_->setMinimumWidth(1);
  column->addWidget(picHistogram_, 1);
  column->addWidget(table_, 1);
  column->addWidget(lblPointer_);
}

void frmGames::MakeFigures(QBoxLayout* column) {
  auto* panel = new QWidget;
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(MakeClasses());
  row->addWidget(MakeLines(tr("Figures"), "lblFigure", kGivenLines), 2);
  row->addWidget(MakeLines(tr("Odds"), "lblOdds", kOddsLines), 3);
  figures_ = Scrolling(panel);
  figures_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  column->addWidget(figures_);
  lblComparison_ = New<QLabel>("lblComparison");
  lblComparison_->setTextFormat(Qt::PlainText);
  lblComparison_->setWordWrap(true);
  lblComparison_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(lblComparison_);
}

QWidget* frmGames::MakeClasses() {
  auto* box = new QGroupBox(tr("Included"));
  auto* grid = new QGridLayout(box);
  for (unsigned i = 0; i < kGameClasses; ++i) {
    chkInclude_[i] = New<QCheckBox>(QString("chkInclude_%1").arg(i));
    chkInclude_[i]->setChecked(true);
    connect(chkInclude_[i], &QCheckBox::toggled, this, [this, i](bool on) {
      choice_.Include[i] = on;
      stale_ = true;
      Do([this] { Refresh(); });
    });
    lblClass_[i] = NewFigureLabel(QString("lblClass_%1").arg(i), "100,000 games  (99.9%)");
    grid->addWidget(chkInclude_[i], static_cast<int>(i), 0);
    grid->addWidget(lblClass_[i], static_cast<int>(i), 1);
  }
  const auto add = [&](int at, const char* name, const QString& caption, const char* shareName,
                       QLabel*& share, bool ofValue) {
    auto* text = New<QLineEdit>(name);
    MakeNumericBox(text, kDecimals, false);
    text->setAlignment(Qt::AlignRight);
    connect(text, &QLineEdit::textEdited, this,
            [this, ofValue] { Do([this, ofValue] { TakeDeviation(ofValue); }); });
    share = NewFigureLabel(shareName, {});
    auto* line = new QHBoxLayout;
    line->addWidget(Caption(caption, text));
    line->addWidget(text, 1);
    grid->addLayout(line, at, 0, 1, 2);
    grid->addWidget(share, at + 1, 0, 1, 2);
    return text;
  };
  grid->setRowMinimumHeight(kGameClasses, fontMetrics().height() / 2);
  txtSDCount_ = add(kGameClasses + 1, "txtSDCount", tr("Within std de&viations:"), "lblSDShare",
                    lblSDShare_, false);
  txtValueCount_ = add(kGameClasses + 3, "txtValueCount", tr("&Within of the mean:"),
                       "lblValueShare", lblValueShare_, true);
  grid->setRowStretch(kGameClasses + 5, 1);
  return box;
}

/// A panel of figures; each line has room for the figure of a second log.
QWidget* frmGames::MakeLines(const QString& caption, const char* name, std::size_t count) {
  auto* box = new QGroupBox(caption);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(2);
  for (std::size_t i = 0; i < count; ++i) {
    const int row = static_cast<int>(i);
    const Line line = {New<QLabel>(QString("%1Caption_%2").arg(name).arg(i)),
                       NewFigureLabel(QString("%1_%2").arg(name).arg(i), {}),
                       NewFigureLabel(QString("%1Other_%2").arg(name).arg(i), {})};
    lines_.push_back(line);
    grid->addWidget(line.Caption, row, 0);
    grid->addWidget(line.Figure, row, 1);
    grid->addWidget(line.Other, row, 2);
  }
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(static_cast<int>(count), 1);
  return box;
}

void frmGames::MakeMenus() {
  const auto compares = [this] { return !otherPath_.empty(); };
  const auto hasGames = [this] { return !log_.Games.Values.empty(); };
  const QString noGames = tr("There are no games in this log.");
  MenuBar().Add(
      "mnuFile", tr("&File"),
      {Command("mnuNew", tr("&New"), [this] { NewLog(); }).On(QKeySequence::New),
       Command("mnuOpen", tr("&Open ..."),
               [this] { RunFileScreen(this, FileCommand::OpenGamesLog); })
           .On(QKeySequence::Open),
       Command("mnuSaveAs", tr("Save &As ..."),
               [this] { RunFileScreen(this, FileCommand::SaveGamesLogAs); })
           .On(QKeySequence::Save),
       Separator(), Command("mnuMerge", tr("&Merge ..."), [this] { Merge(); }),
       Command("mnuCompare", tr("&Compare ..."), [this] { Compare(); }),
       Command("mnuEndComparison", tr("&Stop Comparing"),
               [this] {
                 otherPath_.clear();
                 stale_ = true;
               })
           .When(compares, tr("Nothing is being compared.")),
       Command("mnuExport", tr("&Export ..."), [this] { Export(); }).When(hasGames, noGames),
       Separator(),
       Command("mnuPrint", tr("&Print"), [this] { Print(); }).On(QKeySequence::Print)});
  const auto searched = [this] { return !findText_.empty(); };
  const QString nothing = tr("Nothing has been looked for yet.");
  MenuBar().Add(
      "mnuEdit", tr("&Edit"),
      {Command("mnuCopy", tr("&Copy as Text"), [this] { CopyReport(FiguresReport()); })
           .On(QKeySequence::Copy)
           .Told(tr("Copies all figures, with tabs between the columns")),
       Separator(),
       Command("mnuFind", tr("&Find ..."), [this] { AskAndFind(); }).On(QKeySequence::Find),
       Command("mnuFindNext", tr("Find &Next"), [this] { FindAgain(true); })
           .On(Qt::Key_F3)
           .When(searched, nothing),
       Command("mnuFindPrevious", tr("Find Pre&vious"), [this] { FindAgain(false); })
           .On(Qt::SHIFT | Qt::Key_F3)
           .When(searched, nothing),
       Separator(),
       Command("mnuDelete", tr("&Delete ..."), AskAndDeleteGames).When(hasGames, noGames)});
  MenuBar().Add(
      "mnuOptions", tr("&Options"),
      {Command("mnuSetBreakPoint", tr("Set &Break-point ..."), [this] { SetBreakPoint(); }),
       Submenu(
           "mnuGraphBarWidth", tr("&Graph Bar Width"),
           Choices("mnuGraphBarWidth", {tr("&Fine"), tr("&Medium"), tr("&Wide"), tr("&Extra Wide")},
                   RecordField(BarWidthField())))});
}

// ---- Commands ----

void frmGames::NewLog() {
  if (IsDefaultGamesLog(Game.GamesLogFile)) {
    ShowMessage(
        "This log needs to be re-named \nif you want to save it.\n\n"
        "Do you want to re-name it now?",
        "Save Games Log?", kTopicGamesLog, YesNoCancel);
    if (Game.MsgAnswer != AnswerYes && Game.MsgAnswer != AnswerNo) return;
    // A log that was to be kept and wasn't stays.
    if (Game.MsgAnswer == AnswerYes && !RunFileScreen(this, FileCommand::SaveGamesLogAs)) return;
  }
  ChangeByPlayer([] { BeginNewGamesLog(); });
}

void frmGames::Merge() {
  if (RunFileScreen(this, FileCommand::SelectGamesLogToMerge)) MergeGamesLog(Game.SelectedFileName);
}

void frmGames::Compare() {
  if (!RunFileScreen(this, FileCommand::SelectGamesLogToCompare)) return;
  otherPath_ = Game.SelectedFileName;
  other_ = {};
  other_.Follow(otherPath_, Column());
  if (!other_.Failure.empty()) {
    ShowMessage(other_.Failure, "Compare With Games Log", kTopicGamesLog, OkStop);
    otherPath_.clear();
  }
  sameDice_ = !otherPath_.empty() && HaveEqualSeeds(log_.Path, otherPath_);
  stale_ = true;
  Refresh();
  MakeRoom();
}

/// Two columns of figures are wider than one: the window grows as far as the display goes.
void frmGames::MakeRoom() {
  figures_->widget()->layout()->activate();
  const int wanted =
      width() - figures_->viewport()->width() + figures_->widget()->minimumSizeHint().width();
  const int widest = screen()->availableGeometry().width();
  if (wanted > width() && !isMaximized()) resize(std::min(wanted, widest), height());
}

void frmGames::Export() {
  const std::vector<int> columns = AskForColumns(this, exported_);
  if (columns.empty()) return;
  exported_ = columns;
  if (RunFileScreen(this, FileCommand::SelectGamesLogExport))
    ExportGamesLog(Game.SelectedFileName, columns);
}

void frmGames::SetBreakPoint() {
  const auto asked = AskBreakPoint(choice_.Break);
  if (!asked) return;
  choice_.Break = *asked;
  stale_ = true;
}

void frmGames::AskAndFind() {
  const auto asked = AskValueToFind(Column(), findText_);
  if (!asked) return;
  findText_ = PlainText(*asked);
  FindAgain(true);
}

void frmGames::FindAgain(bool forward) {
  const std::int64_t game =
      FindGame(log_.Games.Values, ParseAmount(findText_), table_->TopGame(), forward);
  if (game == 0) {
    ShowMessage("Value not found.", "Search Results", kTopicGamesLog, OkStop);
    return;
  }
  if (!ShowsData()) ChangeByPlayer([] { DisplayField() = 1; });
  table_->Select(game);
  table_->GoTo(game);
}

// ---- Printing ----

void frmGames::Print() {
  if (summary_.Counted.empty()) {
    ShowMessage("There are no games selected for printing.", "Print Games Log", kTopicGamesLog,
                OkStop);
    return;
  }
  PrintReport(this, ShowsData() ? DataReport() : FiguresReport());
}

Report frmGames::FiguresReport() const {
  TextTable table;
  table.Title = "Kelvanor Games Log";
  table.Headings = {GameColumnName(Column()), BareName(log_.Path)};
  if (!otherPath_.empty()) table.Headings.push_back(BareName(otherPath_));
  for (const Line& line : lines_) {
    table.Rows.push_back(
        {line.Caption->text().trimmed().toStdString(), line.Figure->text().toStdString()});
    if (!otherPath_.empty()) table.Rows.back().push_back(line.Other->text().toStdString());
  }
  table.Note = lblComparison_->text().toStdString();
  Report report = ReportOf(table);
  report.Heading << tr("Games Log File:  %1").arg(LogName(log_.Path));
  report.Picture = [picture = picHistogram_->Picture()](QPainter& painter, QSizeF rest, int) {
    SetPrintFont(painter, 7, false);
    PaintHistogram(painter, QRectF(QPointF(), kPrinted.boundedTo(rest)), picture, !Game.ColorPrint);
    return false;
  };
  return report;
}

/// The games that count, as the table has them.
Report frmGames::DataReport() const {
  auto games = std::make_shared<std::vector<int>>();
  for (int row = 0; row < table_->Rows().rowCount(); ++row)
    if (choice_.Counts(log_.Games.Values[static_cast<std::size_t>(row)])) games->push_back(row);
  Report report;
  report.Title = tr("Kelvanor Games Log");
  report.Heading = GameHeading(tr("Kelvanor Games Log"));
  report.Heading << tr("Games Log File:  %1").arg(LogName(log_.Path));
  constexpr int kPrintedColumns = 4;
  for (int column = 0; column < kPrintedColumns; ++column)
    report.Columns << table_->Rows().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  report.Align = [](int column) {
    return Qt::Alignment(column < 3 ? Qt::AlignRight : Qt::AlignLeft);
  };
  report.TextSize = 9;
  report.Rows = static_cast<int>(games->size());
  report.Row = [games, rows = &table_->Rows()](int at) {
    QStringList cells;
    for (int column = 0; column < kPrintedColumns; ++column)
      cells << rows->index((*games)[static_cast<std::size_t>(at)], column).data().toString();
    return cells;
  };
  return report;
}

// ---- What is shown ----

int frmGames::Column() const { return cmbView_->currentIndex(); }

/// Follows the logs; while dice roll, not so often that it would hold them up.
bool frmGames::ReadLogs() {
  const bool asIs = log_.Path == Game.GamesLogFile && log_.Column == Column();
  if (Game.RollInProgress && asIs && sinceRead_.isValid() &&
      sinceRead_.elapsed() < readTook_ * kRest)
    return false;
  QElapsedTimer took;
  took.start();
  FlushGamesLog();
  const bool columnChanged = log_.Column != Column();
  bool read = log_.Follow(Game.GamesLogFile, Column());
  if (read && columnChanged) table_->ShowColumn(Column());
  if (!otherPath_.empty()) read |= other_.Follow(otherPath_, Column());
  if (read) {
    sameDice_ = !otherPath_.empty() && HaveEqualSeeds(log_.Path, otherPath_);
    readTook_ = took.elapsed();
    sinceRead_.start();
  }
  return read;
}

void frmGames::Figure() {
  summary_ = SummarizeGames(log_.Games, choice_, BarWidth());
  otherSummary_ = {};
  pairs_.reset();
  if (otherPath_.empty()) return;
  otherSummary_ = SummarizeGames(other_.Games, choice_, BarWidth());
  if (sameDice_) pairs_ = ComparePairs(log_.Games, other_.Games, choice_);
}

void frmGames::ShowRecord() {
  setWindowTitle(IsDefaultGamesLog(Game.GamesLogFile)
                     ? tr("Games Log")
                     : tr("Games Log (%1)").arg(LogName(Game.GamesLogFile)));
  picHistogram_->setVisible(!ShowsData());
  lblPointer_->setVisible(!ShowsData());
  table_->setVisible(ShowsData());
  stale_ |= ReadLogs();
  stale_ |= std::exchange(barWidth_, BarWidth()) != BarWidth();
  if (std::exchange(stale_, false)) {
    Figure();
    table_->Refresh();
    ShowClasses();
    ShowLines();
    ShowPicture();
    ShowShares();
  }
  ShowHead();
}

void frmGames::ShowHead() {
  const std::string failure = GamesWriteFailure(Game.GamesLogFile);
  lblStatus_->setText(failure.empty() ? Text(CountText(summary_.Figures.Counted)) +
                                            tr(" of %1 games").arg(Count(summary_.Figures.Games))
                                      : tr("Finished games wait: %1.").arg(Text(failure)));
  lblLegend_->setVisible(!otherPath_.empty());
  const auto sample = [](QRgb ink, const std::string& path) {
    return QString("<span style='color:%1'>&#9632;</span> %2")
        .arg(QColor(ink).name(), LogName(path).toHtmlEscaped());
  };
  lblLegend_->setText(sample(kFirstLogInk, log_.Path) + "&nbsp;&nbsp;&nbsp;&nbsp;" +
                      sample(kSecondLogInk, otherPath_));
}

void frmGames::ShowClasses() {
  const auto labels = ClassLabels(choice_.Break);
  for (unsigned i = 0; i < kGameClasses; ++i) {
    chkInclude_[i]->setText(Text(labels[i]));
    lblClass_[i]->setText(Text(ShareOfGames(summary_.Figures.OfClass[i], summary_.Figures.Games)));
  }
}

void frmGames::ShowLines() {
  const auto linesOf = [](const GamesSummary& summary) {
    std::vector<FigureLine> lines = FigureLines(summary.Figures);
    for (FigureLine& line : OddsLines(summary.Odds)) lines.push_back(std::move(line));
    return lines;
  };
  const auto show = [](QLabel* label, const FigureLine& line) {
    label->setText(Text(line.Text));
    QPalette palette = QApplication::palette(label);
    if (line.Negative) palette.setColor(QPalette::WindowText, RedOn(palette));
    label->setPalette(palette);
  };
  const std::vector<FigureLine> mine = linesOf(summary_);
  const std::vector<FigureLine> others = linesOf(otherSummary_);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    lines_[i].Caption->setText(Text(mine[i].Label));
    show(lines_[i].Figure, mine[i]);
    show(lines_[i].Other, others[i]);
    lines_[i].Other->setVisible(!otherPath_.empty());
  }
  lblComparison_->setVisible(!otherPath_.empty());
  lblComparison_->setText(
      Text(ComparisonText(CompareMeans(summary_.Figures, otherSummary_.Figures), pairs_)));
}

void frmGames::ShowPicture() {
  HistogramPicture picture;
  picture.FirstGames = summary_.Figures.Counted;
  picture.Mean = summary_.Figures.Mean;
  if (otherPath_.empty()) {
    picture.Bars.Bars = summary_.Histogram;
    for (const GameBin& bin : summary_.Histogram.Bins) picture.Bars.First.push_back(bin.Count);
  } else {
    picture.Bars = ShareBars(summary_.Counted, otherSummary_.Counted, BarWidth());
    picture.SecondGames = otherSummary_.Figures.Counted;
    picture.SecondMean = otherSummary_.Figures.Mean;
  }
  const bool empty = picture.Bars.Bars.Bins.empty();
  picHistogram_->Show(std::move(picture));
  lblEmpty_->setVisible(empty);
  if (!log_.Failure.empty())
    lblEmpty_->setText(Text(log_.Failure));
  else if (log_.Games.Values.empty())
    lblEmpty_->setText(
        tr("There are no games in this log.\n\nA game joins it when you choose New, "
           "or when a script resets the table."));
  else
    lblEmpty_->setText(tr("None of the games is included."));
}

void frmGames::ShowShares() {
  const GameFigures& figures = summary_.Figures;
  const double reach = deviations_ * figures.StdDev;
  const double share = ShareWithin(summary_.Counted, figures.Mean, reach);
  const auto within = static_cast<std::int64_t>(share * static_cast<double>(figures.Counted) + 0.5);
  ShowTyped(txtSDCount_, deviations_);
  ShowTyped(txtValueCount_, reach);
  for (QLabel* label : {lblSDShare_, lblValueShare_})
    label->setText(Text(ShareOfGames(within, figures.Counted)));
  picHistogram_->SetReach(reach);
}

/// A box has been typed into: it drives the other.
void frmGames::TakeDeviation(bool ofValue) {
  const double typed = Typed(ofValue ? txtValueCount_ : txtSDCount_);
  const double unit = summary_.Figures.StdDev;
  deviations_ = !ofValue ? typed : unit > 0 ? typed / unit : 0;
  ShowShares();
}

void frmGames::ShowPointed() {
  const HistogramPicture& picture = picHistogram_->Picture();
  QString text;
  if (picture.Pointed >= 0) {
    const auto bar = static_cast<std::size_t>(picture.Pointed);
    GameBin bin = picture.Bars.Bars.Bins[bar];
    bin.Count = picture.Bars.First[bar];
    text = Text(BinText(bin, picture.FirstGames));
    if (!picture.Bars.Second.empty())
      text += tr("    %1:  %2")
                  .arg(LogName(otherPath_),
                       Text(ShareOfGames(picture.Bars.Second[bar], picture.SecondGames)));
  }
  lblPointer_->setText(text);
}
