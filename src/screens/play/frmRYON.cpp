#include "screens/play/frmRYON.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "screens/frame/at_table.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/play/pad_button.h"

namespace {

constexpr QSize kSmallest(360, 250);
constexpr QSize kAtStart(460, 330);
constexpr int kApart = 4;  // pixels between keys

/// What is to be done next.
QString Hint(int display, int first) {
  const auto tr = [](const char* text) { return frmRYON::tr(text); };
  if (display == PadTotals)
    return first == 0 ? tr("Click the number to throw, or type it.")
                      : tr("0, 1 or 2 makes it a 10, 11 or 12.");
  if (first != 0) return tr("Die 1 is a %1. Which is die 2?").arg(first);
  return display == PadFaces ? tr("Click or type die 1, then die 2.")
                             : tr("Click the dice to throw, or type die 1, then die 2.");
}

QString LastThrow() {
  if (Game.RollCount[0] == 0) return frmRYON::tr("Nothing has been thrown yet.");
  return frmRYON::tr("Last throw:  %1 (%2-%3)").arg(Game.RollTotal).arg(Game.Die1).arg(Game.Die2);
}

}  // namespace

frmRYON::frmRYON(QWidget* table) : Screen(table, "frmRYON", tr("Dice Rolls"), kTopicRollPad) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  setCentralWidget(content);
  MakeHead(column);
  MakeKeys(column);
  MakeButtons(column);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
}

void frmRYON::MakeHead(QBoxLayout* column) {
  QHBoxLayout* row = new QHBoxLayout;
  picChosen_ = new picChosenDice(this);
  row->addWidget(picChosen_);
  lblTyped_ = New<QLabel>("lblTyped");
  lblTyped_->setTextFormat(Qt::PlainText);
  lblTyped_->setMinimumWidth(1);
  row->addWidget(lblTyped_, 1);
  lblRollCounter_ = New<QLabel>("lblRollCounter");
  lblRollCounter_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->addWidget(lblRollCounter_);
  column->addLayout(row);
}

void frmRYON::MakeKeys(QBoxLayout* column) {
  picPad_ = New<QStackedWidget>("picPad");
  for (int display = 0; display < kPadDisplays; ++display) picPad_->addWidget(MakeDisplay(display));
  column->addWidget(picPad_, 1);
}

QWidget* frmRYON::MakeDisplay(int display) {
  static constexpr const char* kNames[kPadDisplays] = {"cmdTotal", "cmdTriangle", "cmdBox",
                                                       "cmdFace"};
  QWidget* page = new QWidget;
  QGridLayout* grid = new QGridLayout(page);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(kApart);
  for (const PadCell& cell : CellsOfPad(display)) {
    auto* key = new PadButton(QString("%1_%2").arg(kNames[display], Text(cell.Caption)), cell);
    connect(key, &PadButton::clicked, this,
            [this, cell] { Do([&] { Throw(entry_.TakeCell(cell)); }); });
    grid->addWidget(key, cell.Row, cell.Column, 1, cell.Width);
    grid->setRowStretch(cell.Row, 1);
    grid->setColumnStretch(cell.Column, 1);
    keys_.push_back(key);
  }
  return page;
}

void frmRYON::MakeButtons(QBoxLayout* column) {
  QHBoxLayout* row = new QHBoxLayout;
  cmdRandomRoll_ =
      AddButton(row, "cmdRandomRoll", tr("&Random Roll"), tr("Rolls the dice as the table does"),
                [] { AtTable.RollByCommand(); });
  cmdHyperDrive_ = AddButton(row, "cmdHyperDrive", tr("Start Hyper-&Drive"), {},
                             [] { AtTable.RunHyperDrive(); });
  column->addLayout(row);
}

void frmRYON::MakeMenus() {
  MenuBar().Add("mnuDisplay", tr("D&isplay"),
                Choices("mnuDisplayRYON",
                        {tr("&11 Standard Numbers"), tr("&36 Combos (triangle)"),
                         tr("36 Combos (&box)"), tr("&Individual Dice Faces")},
                        Game.PadDisplay));
  MenuBar().Add(
      "mnuColors", tr("&Color"),
      Choices("mnuColor", {tr("&Multi-color"), tr("&Red and Cyan"), tr("&Gray")}, Game.PadColor));
  MenuBar().Add("mnuOptions", tr("&Options"),
                {Toggle("mnuRollCounter", tr("Roll &Counter"), Game.PadShowCounter),
                 Toggle("mnuHyperDriveButton", tr("&Hyper-Drive Button"), Game.PadShowHyperDrive),
                 Toggle("mnuRandomButton", tr("&Random Button"), Game.PadShowRandom), Separator(),
                 Command("mnuHide", tr("H&ide"), [this] { close(); })});
}

// ---- Throws ----

void frmRYON::Throw(std::optional<NamedThrow> named) {
  ShowEntry();
  if (named && !AskToInterruptRun()) AtTable.RollNamed(named->Die1, named->Die2);
}

bool frmRYON::TakeKey(QKeyEvent& event) {
  const int digit = event.key() - Qt::Key_0;
  const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (plain && digit >= 0 && digit <= 9) {
    const int before = entry_.First();
    const std::optional<NamedThrow> named = entry_.TakeDigit(Game.PadDisplay, digit);
    if (!named && entry_.First() == before) QApplication::beep();  // it leads to no throw
    Throw(named);
    return true;
  }
  const bool undoes = event.key() == Qt::Key_Escape || event.key() == Qt::Key_Backspace;
  if (!undoes || entry_.First() == 0) return false;
  entry_.Clear();
  ShowEntry();
  return true;
}

// ---- What is shown ----

void frmRYON::ShowEntry() {
  const int first = entry_.First();
  const bool digit = Game.PadDisplay == PadTotals && first != 0;
  const bool thrown = Game.RollCount[0] > 0;
  picChosen_->Show(first != 0 ? NamedThrow{first, 0}
                              : (thrown ? NamedThrow{Game.Die1, Game.Die2} : NamedThrow{}),
                   digit ? first : 0);
  const QString hint = Hint(Game.PadDisplay, first);
  lblTyped_->setText(first != 0 ? hint : LastThrow() + "\n" + hint);
  for (PadButton* key : keys_) key->ShowColor(Game.PadColor, first != 0);
}

void frmRYON::ShowRecord() {
  if (display_ != Game.PadDisplay) entry_.Clear();
  display_ = Game.PadDisplay;
  picPad_->setCurrentIndex(display_);
  lblRollCounter_->setVisible(Game.PadShowCounter);
  lblRollCounter_->setText(tr("Rolls:  %1").arg(Count(Game.RollCount[0])));
  cmdRandomRoll_->setVisible(Game.PadShowRandom);
  cmdHyperDrive_->setVisible(Game.PadShowHyperDrive);
  const QString caption = Game.HyperDriveOn ? tr("Stop Hyper-&Drive") : tr("Start Hyper-&Drive");
  if (cmdHyperDrive_->text() != caption) cmdHyperDrive_->setText(caption);
  ShowEntry();
}

void frmRYON::Opened() {
  Game.RollYourOwnNumbers = true;
  entry_.Clear();
}

void frmRYON::hideEvent(QHideEvent* event) {
  Screen::hideEvent(event);
  if (!event->spontaneous()) Game.RollYourOwnNumbers = false;
}
