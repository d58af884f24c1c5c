#include "screens/table/frmCrapTable.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QFileInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "autobet/hot_keys.h"
#include "autoplay/hyper_drive.h"
#include "bets/chips.h"
#include "bets/headless_host.h"
#include "bets/make_bet.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "persistence/file_commands.h"
#include "persistence/kept_game.h"
#include "persistence/session.h"
#include "play/roll_cycle.h"
#include "play/start_up.h"
#include "screens/art/chip_art.h"
#include "screens/frame/at_table.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/menus.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/frame/pointer.h"
#include "screens/frame/screen.h"
#include "screens/frame/screen_table.h"
#include "screens/frame/window_places.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/bet_card_view.h"
#include "screens/table/first_hints.h"
#include "screens/table/game_commands.h"
#include "screens/table/screens.h"
#include "screens/table/table_access.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_layer.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_look.h"
#include "screens/table/table_menus.h"
#include "screens/table/table_panel.h"
#include "screens/table/table_settings.h"
#include "screens/table/toasts.h"

namespace {

constexpr const char* kPlace = "Crap Table";
constexpr int kQuickStatsInterval = 500;
constexpr int kKeepInterval = 60'000;
constexpr int kEndStep = 20;
constexpr int kLoginEnds = 30'000;
constexpr double kShareOfScreen = 0.85;
constexpr double kWidestAtStart = 1280;
constexpr int kPanelAtStart = 277;
constexpr double kKeyedBoxWidth = 58;
constexpr double kKeyedBoxHeight = 20;
constexpr double kKeyedLetters = 0.6;  // of the height of the box
constexpr int kKeyedDecimals = 2;

/// The letter of a key pressed with Ctrl alone; 0 for any other key.
char LetterWithCtrl(const QKeyEvent& event) {
  if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier) return 0;
  const int key = event.key();
  return key >= Qt::Key_A && key <= Qt::Key_Z ? static_cast<char>(key) : 0;
}

/// Ctrl, Shift and the like only begin a combination of keys.
bool IsWholeKey(const QEvent& event) {
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key != Qt::Key_unknown && !(key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) &&
         key != Qt::Key_AltGr && !(key >= Qt::Key_Super_L && key <= Qt::Key_Hyper_R);
}

/// From now on questions are answered by rule.
void AskNobody() {
  const Host nobody = HeadlessHost();
  TheHost.ShowMessage = nobody.ShowMessage;
  TheHost.ShowSettleScreen = nobody.ShowSettleScreen;
  TheHost.ShowStep = nobody.ShowStep;
}

int SpotOf(const SpotHit& hit) { return hit.PickedSpot != NoSpot ? hit.PickedSpot : hit.HotSpot; }

/// Whether to end although something can't be kept. The last message has told which file can't be
/// written, and why.
bool EndsAnyway(const std::string& lost) {
  return AskYesNo(Game.MsgText + "\n\n" + lost + "\nDo you want to end anyway?",
                  "Unable to Keep the Session", kTopicFiles);
}

}  // namespace

// ---- picLayout ----

picLayoutBox::picLayoutBox(frmCrapTable* table) : QWidget(table), table_(table), keyboard_(table) {
  setObjectName("picLayout");
  setAccessibleName(tr("Craps table"));
  setMouseTracking(true);
  setFocusPolicy(Qt::TabFocus);  // a click must not take the focus from the keyed-bet box
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(static_cast<int>(kTableWidth), static_cast<int>(kTableHeight));
}

QPointF picLayoutBox::ToTable(QPointF place) const { return TablePoint(place, size()); }

QRect picLayoutBox::FromTable(QRectF place) const {
  return TableTransform(size()).mapRect(place).toRect();
}

void picLayoutBox::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRectF exposed = TableTransform(size()).inverted().mapRect(QRectF(event->rect()));
  Guarded("DrawLayout", [&] { PaintTable(painter, size(), table_->View(), cache_, exposed); });
  if (!rain_.isNull()) painter.drawPixmap(0, 0, rain_);
  if (!hasFocus()) return;
  painter.setTransform(TableTransform(size()), true);
  keyboard_.PaintFocus(painter);
}

void picLayoutBox::RainChip(int picture, QPointF place) {
  const double ratio = devicePixelRatioF();
  if (rain_.size() != size() * ratio) {
    rain_ = QPixmap(size() * ratio);
    rain_.setDevicePixelRatio(ratio);
    rain_.fill(Qt::transparent);
  }
  QPainter painter(&rain_);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(TableTransform(size()), true);
  DrawChip(painter, place, kChipSize, picture, Game.ChipStyle,
           ChipLabel(ChipValue(picture), Game.UseCentsSymbol));
}

void picLayoutBox::ClearRain() {
  rain_ = QPixmap();
  update();
}

void picLayoutBox::mouseMoveEvent(QMouseEvent* event) {
  table_->MouseMoved(ToTable(event->position()));
}

void picLayoutBox::mousePressEvent(QMouseEvent* event) {
  keyboard_.Hide();
  Guarded(kPlace, [&] { table_->MousePressed(ToTable(event->position()), *event); });
}

void picLayoutBox::mouseReleaseEvent(QMouseEvent* event) {
  Guarded(kPlace, [&] { table_->MouseReleased(ToTable(event->position()), *event); });
}

void picLayoutBox::leaveEvent(QEvent*) { table_->MouseLeft(); }

/// What lies at a place of the layer says what it is.
void picLayoutBox::ShowTip(const QHelpEvent& event) {
  const QString tip = table_->Layer().TipAt(ToTable(event.pos()));
  if (tip.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(event.globalPos(), tip, this);
}

void picLayoutBox::resizeEvent(QResizeEvent*) { table_->PlaceKeyedBox(); }

bool picLayoutBox::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    ShowTip(*static_cast<QHelpEvent*>(event));
    return true;
  }
  if (event->type() == QEvent::ShortcutOverride && !Game.AutoBetRunning &&
      keyboard_.TakesBeforeMenus(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void picLayoutBox::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
    keyboard_.Enter(reason == Qt::TabFocusReason);
  update();
}

void picLayoutBox::focusOutEvent(QFocusEvent*) { update(); }

bool picLayoutBox::focusNextPrevChild(bool next) {
  return (!Game.AutoBetRunning && keyboard_.Step(next)) || QWidget::focusNextPrevChild(next);
}

// ---- frmCrapTable ----

frmCrapTable::frmCrapTable() {
  setObjectName("frmCrapTable");
  InstallTableAccess();
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);

  picLayout_ = new picLayoutBox(this);
  QHBoxLayout* row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(picLayout_, 1);
  column->addLayout(row, 1);
  MakeKeyedBox();
  MakeLayer();
  row->addWidget(panel_);

  MakeStatusRow(column);
  setCentralWidget(content);

  UseScreens(this, AllScreens());
  AtTable = {[this] { Roll(); }, [this] { RollByCommand(); },
             [this](int die1, int die2) { RollNamed(die1, die2); }, [this] { RunHyperDrive(); }};
  hintsWanted_ = TheTable.Hints;
  FollowTableSettings(this, [this] { FollowSettings(); });
  menus_ = new Menus(this, kPlace);
  MakeTableMenus(this, *menus_);
  timerQuickStats_ = new QTimer(this);
  timerQuickStats_->setObjectName("timerQuickStats");
  connect(timerQuickStats_, &QTimer::timeout, this, [this] {
    if (closeAfterRun_) EndRun();
    ShowQuickStatus();
    layer_->Tick();
  });
  timerQuickStats_->start(kQuickStatsInterval);
  auto* timerKeepGame = new QTimer(this);
  timerKeepGame->setObjectName("timerKeepGame");
  connect(timerKeepGame, &QTimer::timeout, this, [this] { KeepGameWhilePlaying(); });
  timerKeepGame->start(kKeepInterval);
  ShowCaption();
  ShowQuickStatus();
  PlaceOnScreen();
}

/// What is still typed on a screen is taken as it goes out of sight, and may redraw all of them.
frmCrapTable::~frmCrapTable() {
  const auto screens = findChildren<Screen*>(QString(), Qt::FindDirectChildrenOnly);
  for (Screen* screen : screens) screen->hide();
  qDeleteAll(screens);
}

/// What is laid over the table paints itself under and over the chips.
void frmCrapTable::MakeLayer() {
  layer_ = new TableLayer(this);
  view_.Below = [this](QPainter& painter, const QRectF& exposed) {
    layer_->PaintBelow(painter, exposed);
  };
  view_.Above = [this](QPainter& painter) { layer_->PaintAbove(painter); };
  panel_ = new TablePanel(this);
  panel_->hide();
  card_ = new FloatingCard(this);
  hints_ = new FirstHints(this);
  connect(layer_, &TableLayer::Lit, this, [this](int spot) {
    card_->Follow(spot);
    panel_->ShowBet(spot);
  });
  connect(layer_, &TableLayer::Changed, this, [this] {
    if (ShowsPanel()) panel_->Refresh();
    ShowQuickStatus();
  });
}

/// Hints that the player asks for begin at once.
void frmCrapTable::FollowSettings() {
  UseTableLook();
  PlacePanel();
  RedrawBets();
  const bool asked = TheTable.Hints && !hintsWanted_;
  hintsWanted_ = TheTable.Hints;
  if (asked) hints_->Begin();
}

bool frmCrapTable::ShowsPanel() const { return !panel_->isHidden(); }

/// The panel takes the width that the table doesn't need.
void frmCrapTable::PlacePanel() {
  const QSize room(centralWidget()->width(),
                   centralWidget()->height() - lblQuickStats_->sizeHint().height());
  const int width = TablePanel::WidthFor(room);
  panel_->SetWidth(width);
  if (ShowsPanel() == (width > 0)) return;
  panel_->setVisible(width > 0);
  card_->Follow(0);
  panel_->Refresh();
  picLayout_->update();
}

void frmCrapTable::RollByItself() {
  if (running_ || !TableAtRest()) {
    layer_->Give(RollButton);
    return;
  }
  if (!ClickMayAct()) return;
  const bool stood = Game.AutoRollDice;
  Game.AutoRollDice = true;
  const bool roll = RightClick();
  const auto run = [stood] {
    RollDice();
    Game.AutoRollDice = stood;
  };
  if (roll)
    RunAtTable(run);
  else
    Game.AutoRollDice = stood;
}

/// A window in the middle of the screen, with a table as large as fits well.
void frmCrapTable::PlaceOnScreen() {
  const QRect available = screen()->availableGeometry();
  const double scale =
      std::min({available.width() * kShareOfScreen / kTableWidth,
                available.height() * kShareOfScreen / kTableHeight, kWidestAtStart / kTableWidth});
  const int bars = menuBar()->sizeHint().height() + lblQuickStats_->sizeHint().height();
  const int width = qRound(kTableWidth * scale);
  const bool panel = TheTable.Panel != PanelNever && width + kPanelAtStart <= available.width();
  resize(width + (panel ? kPanelAtStart : 0), qRound(kTableHeight * scale) + bars);
  move(available.center() - rect().center());
}

void frmCrapTable::MakeStatusRow(QVBoxLayout* column) {
  const auto add = [](QHBoxLayout* row, const char* name, int stretch) {
    QLabel* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setMargin(4);
    label->setMinimumWidth(1);  // a long line is cut rather than widen the window
    row->addWidget(label, stretch);
    return label;
  };
  QHBoxLayout* row = new QHBoxLayout;
  row->setSpacing(0);
  lblQuickStats_ = add(row, "lblQuickStats", 1);
  lblAutoBet_ = add(row, "lblAutoBet", 0);
  lblAutoBet_->hide();
  column->addLayout(row);
}

void frmCrapTable::MakeKeyedBox() {
  txtEnterBet_ = new QLineEdit(picLayout_);
  txtEnterBet_->setObjectName("txtEnterBet");
  txtEnterBet_->setAccessibleName(tr("Amount of the bet"));
  MakeNumericBox(txtEnterBet_, kKeyedDecimals, false);
  txtEnterBet_->hide();
  txtEnterBet_->installEventFilter(this);
  connect(txtEnterBet_, &QLineEdit::textChanged, this,
          [](const QString& text) { Game.KeyedBetText = text.toStdString(); });
  connect(txtEnterBet_, &QLineEdit::returnPressed, this, [this] { TakeKeyedAmount(); });
}

void frmCrapTable::RedrawBets() {
  Game.NeedRepaint = false;
  PlaceKeyedBox();
  ShowQuickStatus();
  layer_->Follow();
  hints_->Follow();
  // Under Hyper-Drive nothing of it moves: it is drawn once, and again when the run has ended.
  if (std::exchange(drawnForHyperDrive_, Game.HyperDriveOn) && Game.HyperDriveOn) return;
  picLayout_->update();
  TellChanges(picLayout_);
}

void frmCrapTable::RedrawLayout() {
  UseTableLook();
  picLayout_->update();
}

void frmCrapTable::RefreshViews() {
  UseTableLook();
  ShowCaption();
  RedrawBets();
  RefreshScreens();
  menus_->Refresh();
}

void frmCrapTable::ShowCaption() {
  if (Game.HyperDriveOn && Game.TableMinimised) {
    setWindowTitle(tr("Kelvanor Hyper-Drive Active"));
    return;
  }
  if (Game.HyperDriveStopped && Game.TableMinimised) {
    setWindowTitle(tr("Kelvanor Hyper-Drive Stopped"));
    return;
  }
  const QString name = QFileInfo(QString::fromStdString(Game.GameFileName)).fileName();
  setWindowTitle(name.isEmpty() ? QString("Kelvanor") : tr("Kelvanor (%1)").arg(name));
}

void frmCrapTable::Roll() {
  if (running_ || !TableAtRest()) return;
  RunAtTable(RollDice);
}

void frmCrapTable::RollNamed(int die1, int die2) {
  if (running_ || !TableAtRest()) return;
  RunAtTable([die1, die2] { RollNamedDice(die1, die2); });
}

void frmCrapTable::RollByCommand() {
  if (ClickMayAct() && RightClick()) Roll();
}

void frmCrapTable::RunHyperDrive() {
  if (!Game.KeepRolling && isVisible() && !isMinimized()) {
    activateWindow();
    setFocus();
  }
  if (running_) {
    // A script that never ends must be interrupted before the run can stop.
    if (Game.AutoBetRunning && !Game.KeepRolling) {
      AskToInterruptRun();
    } else if (Game.RollInProgress) {
      ToggleHyperDrive();
    }
    return;
  }
  KeepGameWhilePlaying();
  RunAtTable(ToggleHyperDrive);
}

void frmCrapTable::RunAtTable(const std::function<void()>& run) {
  running_ = true;
  Guarded(kPlace, run);
  running_ = false;
  if (keepDue_) KeepGameWhilePlaying();
  TheHost.RefreshViews();
  if (!closeAfterRun_) return;
  closeAfterRun_ = false;
  const bool rollOn = std::exchange(rollOnIfItStays_, false);
  // Required: a closing that is cancelled leaves the dice rolling.
  if (!close() && rollOn && !running_) QTimer::singleShot(0, this, [this] { RollOn(); });
}

void frmCrapTable::RollOn() {
  if (running_ || !Game.AutoRollDice) return;
  Game.KeepRolling = true;
  Roll();
}

/// Ends whatever runs. A roll that goes on may run the script again, so this is done repeatedly.
void frmCrapTable::EndRun() {
  Game.KeepRolling = false;
  Game.AutoBetRunning = false;
}

void frmCrapTable::ShowAsLeft() {
  Guarded("Crap Table Form_load", [this] { OpenAsLeft(); });
}

void frmCrapTable::OpenAsLeft() {
  FollowPlace(this, TableWindow);
  show();
  ShowScreensAsLeft();
  activateWindow();
  if (TheTable.Hints && Game.RollCount[0] == 0) hints_->Begin();
  ReadRolls();
  RedrawBets();
}

// ---- The mouse ----

int frmCrapTable::SpotUnderMouse() const { return FindHotSpot(mouse_.x(), mouse_.y()).HotSpot; }

void frmCrapTable::MouseMoved(QPointF place) {
  mouse_ = place;
  helpTopic_ = FindHotSpot(place.x(), place.y(), view_.Dice).HelpTopic;
  if (chipsInHand_) {
    view_.DragPoint = place;
    picLayout_->update();
  }
  layer_->MoveTo(place);
  ShowQuickStatus();
}

void frmCrapTable::PointAt(QPointF place) {
  mouse_ = place;
  helpTopic_ = FindHotSpot(place.x(), place.y(), view_.Dice).HelpTopic;
  ShowQuickStatus();
}

void frmCrapTable::MouseLeft() {
  mouse_ = {-1, -1};
  layer_->Leave();
  ShowQuickStatus();
}

void frmCrapTable::MousePressed(QPointF place, const QMouseEvent& event) {
  layer_->JumpToEnd();
  if (event.button() == Qt::LeftButton && layer_->Press(place)) return;
  const bool lifts = event.button() == Qt::LeftButton && (event.modifiers() & Qt::AltModifier);
  if (!lifts || !TableAtRest() || Game.ClickMode != NoClickMode) return;
  if (!ClickMayAct()) return;
  const int spot = SpotOf(FindHotSpot(place.x(), place.y(), view_.Dice));
  chipsInHand_ = PickUpChips(spot);
  if (!chipsInHand_) return;
  view_.Dragging = true;
  view_.DraggedAmount = ChipPending;
  view_.DragPoint = place;
  picLayout_->setCursor(Qt::ClosedHandCursor);
}

void frmCrapTable::MouseReleased(QPointF place, const QMouseEvent& event) {
  mouse_ = place;
  const int spot = SpotOf(FindHotSpot(place.x(), place.y(), view_.Dice));
  if (chipsInHand_) {
    if (event.button() != Qt::LeftButton) return;
    chipsInHand_ = false;
    view_.Dragging = false;
    picLayout_->unsetCursor();
    ChangeByPlayer([spot, x = qRound(place.x()), y = qRound(place.y())] { DropChips(spot, x, y); });
    return;
  }
  if (event.button() == Qt::LeftButton && layer_->Release(place)) return;
  if (!ClickMayAct()) return;
  bool roll = false;
  if (event.button() == Qt::RightButton) {
    roll = RightClick();
  } else if (event.button() == Qt::LeftButton &&
             (Game.ClickMode != NoClickMode || !(event.modifiers() & Qt::AltModifier))) {
    roll = LeftClick({spot, place.x(), place.y(), bool(event.modifiers() & Qt::ControlModifier),
                      bool(event.modifiers() & Qt::ShiftModifier)});
  }
  if (roll) Roll();
}

// ---- The keyed-bet box ----

void frmCrapTable::PlaceKeyedBox() {
  if (!Game.KeyedBoxOpen) {
    if (txtEnterBet_->isVisible()) txtEnterBet_->hide();
    return;
  }
  QRect place =
      picLayout_->FromTable(QRectF(Game.KeyedX, Game.KeyedY, kKeyedBoxWidth, kKeyedBoxHeight));
  QFont letters = txtEnterBet_->font();
  letters.setPixelSize(std::max(1, qRound(place.height() * kKeyedLetters)));
  txtEnterBet_->setFont(letters);
  place.setSize(place.size().expandedTo(txtEnterBet_->minimumSizeHint()));
  txtEnterBet_->setGeometry(place);
  const bool opens = !txtEnterBet_->isVisible();
  const QString text = QString::fromStdString(Game.KeyedBetText);
  const bool changed = txtEnterBet_->text() != text;
  if (changed) txtEnterBet_->setText(text);
  if (opens) {
    txtEnterBet_->show();
    txtEnterBet_->setFocus();
  }
  if (opens || changed) txtEnterBet_->selectAll();
}

void frmCrapTable::TakeKeyedAmount() {
  // A message shown on the way takes the focus, and leaving the box must not enter it again.
  if (takingKeyedAmount_ || !Game.KeyedBoxOpen || !TableAtRest()) return;
  takingKeyedAmount_ = true;
  Guarded(kPlace, [] { EnterKeyedBet(); });
  takingKeyedAmount_ = false;
  RedrawBets();
  txtEnterBet_->selectAll();
}

bool frmCrapTable::eventFilter(QObject* watched, QEvent* event) {
  if (watched != txtEnterBet_) return QMainWindow::eventFilter(watched, event);
  if (Game.AutoBetRunning && event->type() == QEvent::KeyPress) {
    keyPressEvent(static_cast<QKeyEvent*>(event));
    return true;
  }
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
        reason == Qt::MouseFocusReason ||
        (reason == Qt::ActiveWindowFocusReason && !QApplication::activeModalWidget())) {
      TakeKeyedAmount();
    }
  }
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    CloseKeyedBox();
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

// ---- The window ----

void frmCrapTable::ShowQuickStatus() {
  const std::string text = QuickStatusText(SpotUnderMouse());
  // The totals wait with those of the rail until the result of a throw has been seen.
  const bool waits = layer_->Money() != MoneyNow() && text == QuickStatusText(NoSpot);
  if (!waits && lblQuickStats_->text() != Text(text)) lblQuickStats_->setText(Text(text));
  ShowScript();
}

/// The script's name at the end of the status row; a long one leaves room for the bankroll.
void frmCrapTable::ShowScript() {
  constexpr int kShareOfRow = 3;
  const QString whole = ScriptCaption();
  const QString text =
      lblAutoBet_->fontMetrics().elidedText(whole, Qt::ElideRight, width() / kShareOfRow);
  if (lblAutoBet_->text() == text) return;
  lblAutoBet_->setText(text);
  lblAutoBet_->setToolTip(QString::fromStdString(Game.AutoBetFile));
  lblAutoBet_->setVisible(!text.isEmpty());
}

bool frmCrapTable::event(QEvent* event) {
  // While a script runs every key asks, also those of the menus.
  if (event->type() == QEvent::ShortcutOverride && Game.AutoBetRunning && IsWholeKey(*event)) {
    event->accept();
    return true;
  }
  return QMainWindow::event(event);
}

bool frmCrapTable::TakeHotKey(const QKeyEvent& event) {
  const char letter = LetterWithCtrl(event);
  if (letter == 0 || running_ || !TableAtRest() || Game.HyperDriveOn) return false;
  if (!ClickMayAct()) return true;
  RunAtTable([letter] { RunHotKey(letter); });
  return true;
}

bool frmCrapTable::TakeTableKey(const QKeyEvent& event) {
  bool taken = false;
  Guarded(kPlace, [&] { taken = picLayout_->Keyboard().Take(event); });
  return taken;
}

void frmCrapTable::keyPressEvent(QKeyEvent* event) {
  layer_->JumpToEnd();
  if (Game.AutoBetRunning) {
    if (IsWholeKey(*event)) Guarded(kPlace, AskToInterruptRun);
  } else if (TakeHotKey(*event)) {
    event->accept();
  } else if (TakeTableKey(*event)) {
    event->accept();
  } else if (TakeCommonKey(*event, helpTopic_)) {
    event->accept();
  } else if (event->key() == Qt::Key_Escape && Game.ClickMode != NoClickMode) {
    Game.ClickMode = NoClickMode;
    RedrawBets();
  } else if (event->key() == Qt::Key_Escape && (PutToastsAway(this) || hints_->isVisible())) {
    hints_->End();
  } else {
    QMainWindow::keyPressEvent(event);
  }
}

/// While a script runs Tab asks, as every key does.
bool frmCrapTable::focusNextPrevChild(bool next) {
  return !Game.AutoBetRunning && QMainWindow::focusNextPrevChild(next);
}

void frmCrapTable::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  PlacePanel();
  ShowScript();
}

void frmCrapTable::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  Game.TableMinimised = isMinimized();
  if (!Game.TableMinimised) Game.HyperDriveStopped = false;
  ShowCaption();
  if (!Game.TableMinimised) RedrawBets();
}

/// Minimised, the table could show none of the questions that closing may take.
void frmCrapTable::ShowToAsk() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  Game.TableMinimised = false;
}

/// Keeps the game for the next session; false when it can't be kept and the player wants to go on.
bool frmCrapTable::KeepSession() {
  const PointerLook busy(Qt::WaitCursor);
  if (!KeepRolls() && !EndsAnyway("The game itself isn't touched by that.")) return false;
  bool kept = false;
  Guarded(kPlace, [&] { kept = CloseSession(); });
  if (!kept) {
    if (!EndsAnyway("It can't be kept for the next session. With No you can save it in another "
                    "place first."))
      return false;
    CloseGame();
  }
  TheHost.PrintDuePage();
  return true;
}

void frmCrapTable::KeepGameWhilePlaying() {
  keepDue_ = !RecordAtRest();
  if (!keepDue_) Guarded(kPlace, KeepGame);
}

void frmCrapTable::CloseUnasked(QCloseEvent* event) {
  event->ignore();
  AskNobody();
  EndRun();
  closeAfterRun_ = running_;
  if (running_) return;
  KeepWindowPlaces();
  Guarded(kPlace, EndSession);
  CloseScreens();
  event->accept();
}

void frmCrapTable::EndUnasked() {
  if (std::exchange(ending_, true)) return;
  AskNobody();
  EndStep();
}

/// Closes what waits for an answer, one after the other: the routines that asked stand below.
void frmCrapTable::EndStep() {
  EndRun();
  QWidget* asking = QApplication::activePopupWidget();
  if (!asking) asking = QApplication::activeModalWidget();
  if (asking) {
    // A bet can't be left unsettled by closing its screen.
    if (auto* screen = qobject_cast<QDialog*>(asking); !asking->close() && screen)
      screen->done(QDialog::Rejected);
  } else if (!running_ && TableAtRest() && close()) {
    return;
  }
  QTimer::singleShot(kEndStep, this, &frmCrapTable::EndStep);
}

void frmCrapTable::LoginEnds() {
  KeepGameWhilePlaying();
  ending_ = true;
  QTimer::singleShot(kLoginEnds, this, [this] { ending_ = false; });
}

void frmCrapTable::closeEvent(QCloseEvent* event) {
  if (ending_) return CloseUnasked(event);
  event->ignore();
  if (isMinimized()) ShowToAsk();
  if (!MayClose(KeepWindowPlaces)) return;
  if (running_) {
    // The run ends first: its routines stand below this one.
    rollOnIfItStays_ = rollOnIfItStays_ || Game.KeepRolling;
    EndRun();
    closeAfterRun_ = true;
    return;
  }
  if (!MayLeaveGame(this, Leaving::Program)) return;
  if (!KeepSession()) return;
  CloseScreens();
  event->accept();
}
