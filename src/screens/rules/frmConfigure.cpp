#include "screens/rules/frmConfigure.h"

#include <QAbstractButton>
#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyleOptionTab>
#include <QStylePainter>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "bets/rule_changes.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "rules/choices.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"

namespace {

constexpr int kTabsInRow = 5;
constexpr QSize kSmallest(0, 320);  // as wide as the tabs ask for
constexpr QSize kAtStart(800, 640);

int TopicOf(int tab) { return kTopicConfigureChecks + tab; }

/// A tab of the strip: a button that looks like one.
class TabButton : public QAbstractButton {
 public:
  explicit TabButton(const QString& caption) {
    setText(caption);
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override {
    const QFontMetrics letters = fontMetrics();
    return {letters.horizontalAdvance(text()) + 2 * letters.height(), letters.height() * 7 / 4};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionTab option;
    option.initFrom(this);
    option.text = text();
    option.shape = QTabBar::RoundedNorth;
    option.position = QStyleOptionTab::Middle;
    if (isChecked()) option.state |= QStyle::State_Selected;
    if (!hasFocus()) option.state &= ~QStyle::State_HasFocus;
    painter.drawControl(QStyle::CE_TabBarTab, option);
  }
};

}  // namespace

bool Tell(const CheckResult& result, int helpTopic) {
  if (!result.Ok) ShowMessage(result.Text, result.Title, helpTopic, OkStop);
  return result.Ok;
}

frmConfigure::frmConfigure(QWidget* table)
    : Screen(table, "frmConfigure", tr("Configuration"), kTopicConfiguration) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setSpacing(0);
  column->addWidget(MakeStrip());
  MakePages();
  column->addWidget(stack_, 1);
  setCentralWidget(content);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
}

// ---- Tabs ----

QWidget* frmConfigure::MakeStrip() {
  const std::array<QString, kTabs> captions = {
      tr("Checks/&Dice"), tr("&Sound"), tr("&Comps"),   tr("Co&lors"),      tr("&Misc."),
      tr("&Bankroll"),    tr("Be&ts"),  tr("&Payoffs"), tr("P&robability"), tr("&Advantage")};
  QWidget* strip = New<QWidget>("picTabs");
  strip_ = new QGridLayout(strip);
  strip_->setContentsMargins(0, 0, 0, 0);
  strip_->setSpacing(0);
  for (int tab = 0; tab < kTabs; ++tab) {
    auto* button =
        New<TabButton>(QString("cmdAltKeys_%1").arg(tab), captions[static_cast<unsigned>(tab)]);
    connect(button, &QAbstractButton::clicked, this, [this, tab] { Do([&] { ChooseTab(tab); }); });
    cmdAltKeys_[static_cast<unsigned>(tab)] = button;
  }
  for (int column = 0; column < kTabsInRow; ++column) strip_->setColumnStretch(column, 1);
  return strip;
}

/// The row that holds the tab in front is the lower one.
void frmConfigure::PlaceTabs(int front) {
  for (int tab = 0; tab < kTabs; ++tab) {
    QAbstractButton* button = cmdAltKeys_[static_cast<unsigned>(tab)];
    const bool lower = tab / kTabsInRow == front / kTabsInRow;
    strip_->addWidget(button, lower ? 1 : 0, tab % kTabsInRow);
    button->setChecked(tab == front);
  }
}

void frmConfigure::MakePages() {
  pages_ = {MakeChecksPage(),      MakeSoundPage(),    MakeCompsPage(), MakeColorsPage(),
            MakeMiscPage(),        MakeBankrollPage(), MakeBetsPage(),  MakePayoffsPage(),
            MakeProbabilityPage(), MakeAdvantagePage()};
  stack_ = New<QStackedWidget>("picPanel");
  for (ConfigPage* page : pages_) stack_->addWidget(Scrolling(page));
}

void frmConfigure::MakeMenus() {
  for (ConfigPage* page : pages_) {
    for (TabMenu& menu : page->MenusOfTab()) {
      menusOfTabs_.push_back(
          {MenuBar().Add(menu.Name, menu.Caption, std::move(menu.Rows)), std::move(menu.Tabs)});
    }
  }
}

/// What the player asks for; entries that aren't valid keep the tab in front.
void frmConfigure::ChooseTab(int tab) {
  if (tab != tab_ && CheckLimitsOK()) {
    Page(tab_).Leave();
    Game.ConfigTab = tab;
    ShowTab(tab);
  }
  PlaceTabs(tab_);
}

void frmConfigure::ShowTab(int tab) {
  tab_ = tab;
  PlaceTabs(tab);
  stack_->setCurrentIndex(tab);
  SetHelpTopic(TopicOf(tab));
  for (const MenuOfTabs& menu : menusOfTabs_) {
    const bool here = std::find(menu.Tabs.begin(), menu.Tabs.end(), tab) != menu.Tabs.end();
    menu.Menu->menuAction()->setVisible(here);
  }
  Refresh();
}

// ---- Checks ----

ConfigEntries frmConfigure::Entries() const {
  ConfigEntries entries = EntriesInForce();
  for (const ConfigPage* page : pages_) page->Gather(entries);
  return entries;
}

/// The tab and the box of a fault, with its message.
void frmConfigure::BringUp(const CheckResult& fault) {
  if (isMinimized()) Present();
  Game.ConfigTab = fault.Tab;
  ShowTab(fault.Tab);
  if (QWidget* box = Page(fault.Tab).BoxOf(fault.Box, fault.Index)) {
    box->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(box)) edit->selectAll();
  }
  Tell(fault, TopicOf(fault.Tab));
}

/// A rate that has been typed is stored on the way.
bool frmConfigure::EntriesAreValid() {
  const auto result = std::make_shared<CheckResult>();
  const ConfigEntries entries = Entries();
  const auto check = [entries, result] { *result = ::CheckLimitsOK(entries); };
  if (entries.RateChanged)
    ChangeByPlayer(check);
  else
    check();
  if (ChangesWait()) return false;
  if (!result->Ok) {
    BringUp(*result);
    return false;
  }
  for (ConfigPage* page : pages_) page->Taken();
  return true;
}

bool frmConfigure::CheckLimitsOK() {
  TakeTyped(this);
  Page(tab_).Leave();
  // What waits for the dice can't be checked yet.
  return !ChangesWait() && EntriesAreValid();
}

// ---- The window ----

void frmConfigure::ShowRecord() {
  const int kept = std::clamp(Game.ConfigTab, 0, kTabs - 1);
  if (kept != tab_) return ShowTab(kept);  // another game has come
  Page(tab_).ShowRecord();
  const QString of = Page(tab_).TitleOfTab();
  setWindowTitle(of.isEmpty() ? tr("Configuration") : tr("Configuration - %1").arg(of));
}

/// Over the middle of the table, unless the player has moved it.
void frmConfigure::Opened() {
  const WindowPlace& place = Game.WindowPlaces[ConfigureWindow];
  if (!placed_ && place.Width <= 0 && parentWidget())
    move(parentWidget()->frameGeometry().center() - rect().center());
  placed_ = true;
  ShowTab(std::clamp(Game.ConfigTab, 0, kTabs - 1));
}

/// New rules take hold for the bets on the table; where none is new, nothing is done.
bool frmConfigure::MayClose() {
  if (!isVisible()) return true;
  if (!CheckLimitsOK()) return false;
  const ConfigEntries entries = Entries();
  if (!Game.GameChanged && entries.Notices == NoticeBoxes()) return true;
  // What stands when a fault ends the closing.
  const auto result = std::make_shared<CheckResult>(
      CheckResult{false, BetsTab, ConfigBox::None, 0, "Configuration Limits",
                  "The bets on the table can't be figured by these limits, rates and payoffs.\n"
                  "Please lower what is very large, or remove the bets."});
  ChangeByPlayer([boxes = entries.Notices, result] { *result = CloseConfiguration(boxes); });
  if (ChangesWait()) return false;
  if (!result->Ok) BringUp(*result);
  return result->Ok;
}

bool frmConfigure::TakeKey(QKeyEvent& event) {
  if (!(event.modifiers() & Qt::ControlModifier)) return false;
  const int by = event.key() == Qt::Key_PageDown ? 1 : event.key() == Qt::Key_PageUp ? -1 : 0;
  if (by != 0) ChooseTab((tab_ + by + kTabs) % kTabs);
  return by != 0;
}

void frmConfigure::changeEvent(QEvent* event) {
  Screen::changeEvent(event);
  if (event->type() == QEvent::ActivationChange) Game.ConfigureActive = isActiveWindow();
}

void frmConfigure::hideEvent(QHideEvent* event) {
  Screen::hideEvent(event);
  Game.ConfigureActive = false;
}
