#include "screens/table/table_access.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <map>
#include <utility>

#include "bets/bankroll.h"
#include "core/game_state.h"
#include "core/text.h"
#include "figures/bet_card.h"
#include "figures/call_text.h"
#include "screens/frame/controls.h"
#include "screens/table/bet_focus.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_elements.h"
#include "screens/table/table_keyboard.h"

namespace {

enum class Part { Bet, Button, Money, Call, History, Roll };

QString LastAnnounced;
std::function<void(QAccessibleEvent&)> Hearer;

QString Translated(const char* text) { return QCoreApplication::translate("TableAccess", text); }

QString Nothing() { return Translated(QT_TRANSLATE_NOOP("TableAccess", "nothing")); }

/// "Bankroll 536 dollars. At risk 70 dollars. You've won 36 dollars."
QString MoneySentence() {
  const auto spoken = [](Currency amount) { return Text(SpokenMoney(amount)); };
  const Currency result = Bankroll() - Game.InvestedBankroll;
  const char* won = result > 0   ? QT_TRANSLATE_NOOP("TableAccess", "You've won %1.")
                    : result < 0 ? QT_TRANSLATE_NOOP("TableAccess", "You've lost %1.")
                                 : QT_TRANSLATE_NOOP("TableAccess", "You're even.");
  const QString end = result == 0 ? Translated(won) : Translated(won).arg(spoken(Abs(result)));
  return Translated(QT_TRANSLATE_NOOP("TableAccess", "Bankroll %1. At risk %2. %3"))
      .arg(spoken(Bankroll()), spoken(Game.TotalOnTable), end);
}

QString RollSentence(const RollNote& note) {
  return Text(SpokenCall({note.Die1, note.Die2, note.PrevPoint, note.Point, note.Net}));
}

class TableWidgetAccess;

/// A child of the table, or of its list of rolls.
class PartAccess : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  PartAccess(TableWidgetAccess* table, Part part, int at) : table_(table), part_(part), at_(at) {}

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override;
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType kind) override {
    const bool acts = part_ == Part::Bet || part_ == Part::Button;
    return acts && kind == QAccessible::ActionInterface
               ? static_cast<QAccessibleActionInterface*>(this)
               : nullptr;
  }

  QStringList actionNames() const override;
  void doAction(const QString& action) override;
  QStringList keyBindingsForAction(const QString& action) const override;

 private:
  TableButton Button() const;
  QString Name() const;
  QString Value() const;
  TableKeyboard& Keyboard() const;

  TableWidgetAccess* table_;
  Part part_;
  int at_;  // the bet's id, or the place among the buttons or the rolls
};

/// The widget of the table. Its children are made as they are asked for, and stay.
class TableWidgetAccess : public QAccessibleWidget {
 public:
  explicit TableWidgetAccess(picLayoutBox* layout)
      : QAccessibleWidget(layout, QAccessible::Grouping) {}
  ~TableWidgetAccess() override {
    for (const auto& [part, id] : made_) QAccessible::deleteAccessibleInterface(id);
  }

  picLayoutBox* Layout() const { return static_cast<picLayoutBox*>(widget()); }

  int childCount() const override { return static_cast<int>(Parts().size()); }
  QAccessibleInterface* child(int index) const override {
    const auto parts = Parts();
    if (index < 0 || index >= static_cast<int>(parts.size())) return nullptr;
    const auto& [part, at] = parts[static_cast<unsigned>(index)];
    return Of(part, at);
  }
  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i) == wanted) return i;
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i)->rect().contains(x, y)) return child(i);
    return nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    const TableKeyboard& keyboard = Layout()->Keyboard();
    if (!Layout()->hasFocus()) return nullptr;
    if (keyboard.FocusedBet() != 0) return Of(Part::Bet, keyboard.FocusedBet());
    return keyboard.FocusedButton() >= 0 ? Of(Part::Button, keyboard.FocusedButton()) : nullptr;
  }

  QAccessibleInterface* Of(Part part, int at) const {
    QAccessible::Id& id = made_[{part, at}];
    if (id == 0)
      id = QAccessible::registerAccessibleInterface(
          new PartAccess(const_cast<TableWidgetAccess*>(this), part, at));
    return QAccessible::accessibleInterface(id);
  }

 private:
  static std::vector<std::pair<Part, int>> Parts() {
    std::vector<std::pair<Part, int>> parts;
    for (const int bet : BetsInReach()) parts.emplace_back(Part::Bet, bet);
    for (int i = 0; i < static_cast<int>(TableButtons().size()); ++i)
      parts.emplace_back(Part::Button, i);
    for (const Part part : {Part::Money, Part::Call, Part::History}) parts.emplace_back(part, 0);
    return parts;
  }

  mutable std::map<std::pair<Part, int>, QAccessible::Id> made_;
};

// ---- A part ----

TableButton PartAccess::Button() const {
  const std::vector<TableButton> buttons = TableButtons();
  const bool stands = part_ == Part::Button && at_ < static_cast<int>(buttons.size());
  return stands ? buttons[static_cast<unsigned>(at_)] : TableButton();
}

TableKeyboard& PartAccess::Keyboard() const { return table_->Layout()->Keyboard(); }

bool PartAccess::isValid() const { return table_->isValid(); }

QAccessibleInterface* PartAccess::parent() const {
  return part_ == Part::Roll ? table_->Of(Part::History, 0) : table_;
}

int PartAccess::childCount() const {
  return part_ == Part::History ? static_cast<int>(Game.LastRolls.size()) : 0;
}

QAccessibleInterface* PartAccess::child(int index) const {
  return index >= 0 && index < childCount() ? table_->Of(Part::Roll, index) : nullptr;
}

int PartAccess::indexOfChild(const QAccessibleInterface* child) const {
  for (int i = 0; i < childCount(); ++i)
    if (table_->Of(Part::Roll, i) == child) return i;
  return -1;
}

QString PartAccess::Name() const {
  switch (part_) {
    case Part::Bet: return Text(BetName(at_));
    case Part::Button: return Button().Name;
    case Part::Money: return MoneySentence();
    case Part::Call: return LastAnnounced;
    case Part::History: return Translated(QT_TRANSLATE_NOOP("TableAccess", "Last rolls"));
    case Part::Roll: break;
  }
  const auto roll = static_cast<std::size_t>(at_);
  return roll < Game.LastRolls.size() ? RollSentence(Game.LastRolls[roll]) : QString();
}

QString PartAccess::Value() const {
  if (part_ == Part::Bet) return BetValueText(at_);
  return part_ == Part::Button ? Button().State : QString();
}

QString PartAccess::text(QAccessible::Text kind) const {
  switch (kind) {
    case QAccessible::Name: return Name();
    case QAccessible::Value: return Value();
    case QAccessible::Description: return part_ == Part::Bet ? BetSentence(at_) : QString();
    default: return {};
  }
}

QRect PartAccess::rect() const {
  picLayoutBox* layout = table_->Layout();
  const auto place = [&]() -> QRectF {
    if (part_ == Part::Bet) return RegionOfBet(at_).boundingRect();
    return part_ == Part::Button ? Button().Rect : QRectF(0, 0, kTableWidth, kTableHeight);
  };
  return layout->FromTable(place()).translated(layout->mapToGlobal(QPoint()));
}

QAccessible::Role PartAccess::role() const {
  switch (part_) {
    case Part::Bet: return QAccessible::Button;
    case Part::Button: return Button().Act ? QAccessible::Button : QAccessible::StaticText;
    case Part::History: return QAccessible::List;
    case Part::Roll: return QAccessible::ListItem;
    default: return QAccessible::StaticText;
  }
}

QAccessible::State PartAccess::state() const {
  QAccessible::State state;
  state.readOnly = part_ != Part::Bet && part_ != Part::Button;
  state.focusable = !state.readOnly;
  state.focused = state.focusable && table_->focusChild() == this;
  const TableButton button = Button();
  state.disabled = button.Enabled && !button.Enabled();
  state.invisible = !table_->Layout()->isVisible();
  return state;
}

QStringList PartAccess::actionNames() const {
  if (part_ == Part::Bet) return {pressAction(), decreaseAction(), setFocusAction()};
  if (part_ == Part::Button && Button().Act) return {pressAction(), setFocusAction()};
  return {};
}

void PartAccess::doAction(const QString& action) {
  const bool bet = part_ == Part::Bet;
  if (action == setFocusAction()) {
    bet ? Keyboard().GoToBet(at_) : Keyboard().GoToButton(at_);
  } else if (bet && action == pressAction()) {
    Keyboard().Click(at_);
  } else if (bet && action == decreaseAction()) {
    Keyboard().Click(at_, Qt::ControlModifier);
  } else if (const TableButton button = Button(); action == pressAction() && button.Act) {
    if (!button.Enabled || button.Enabled()) button.Act();
  }
}

QStringList PartAccess::keyBindingsForAction(const QString& action) const {
  if (part_ == Part::Bet && action == pressAction()) return {"Return", "+"};
  if (part_ == Part::Bet && action == decreaseAction()) return {"-"};
  const int key = Button().Key;
  return key != 0 && action == pressAction() ? QStringList{QKeySequence(key).toString()}
                                             : QStringList();
}

// ---- News ----

TableWidgetAccess* AccessOf(picLayoutBox* layout) {
  return dynamic_cast<TableWidgetAccess*>(QAccessible::queryAccessibleInterface(layout));
}

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  auto* layout = qobject_cast<picLayoutBox*>(object);
  return layout ? new TableWidgetAccess(layout) : nullptr;
}

void Tell(QAccessibleEvent& event) {
  if (Hearer) return Hearer(event);
  QAccessible::updateAccessibility(&event);
}

void Tell(QAccessible::Event event, QAccessibleInterface* part) {
  QAccessibleEvent told(part, event);
  Tell(told);
}

bool IsHeard() { return Hearer || QAccessible::isActive(); }

picLayoutBox* ShownTable() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* table = qobject_cast<frmCrapTable*>(window)) return table->Layout();
  return nullptr;
}

}  // namespace

void InstallTableAccess() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeAccess);
    return true;
  }();
  Q_UNUSED(installed);
}

void HearTable(std::function<void(QAccessibleEvent&)> hear) { Hearer = std::move(hear); }

void Announce(const QString& sentence) {
  LastAnnounced = sentence;
  picLayoutBox* layout = IsHeard() ? ShownTable() : nullptr;
  TableWidgetAccess* access = layout ? AccessOf(layout) : nullptr;
  if (!access) return;
  QAccessibleInterface* call = access->Of(Part::Call, 0);
  Tell(QAccessible::NameChanged, call);
  Tell(QAccessible::Alert, call);
}

/// A roll that has ended is called once.
void TellRoll() {
  static int told = 0;
  const int rolls = Game.RollCount[0];
  if (std::exchange(told, rolls) == rolls || Game.LastRolls.empty()) return;
  if (rolls > 0) Announce(RollSentence(Game.LastRolls.front()));
}

void TellChanges(picLayoutBox* layout) {
  if (!IsHeard() || Game.HyperDriveOn) return;
  if (!Game.RollInProgress) TellRoll();
  TableWidgetAccess* access = AccessOf(layout);
  if (!access) return;
  static std::map<int, QString> told;
  for (const int bet : BetsInReach()) {
    const QString value = BetValueText(bet);
    QString& before = told.try_emplace(bet, Nothing()).first->second;
    if (std::exchange(before, value) == value) continue;
    QAccessibleValueChangeEvent change(access->Of(Part::Bet, bet), value);
    Tell(change);
  }
  static QString money;
  if (const QString now = MoneySentence(); now != std::exchange(money, now))
    Tell(QAccessible::NameChanged, access->Of(Part::Money, 0));
}

void TellFocus(picLayoutBox* layout) {
  if (!IsHeard()) return;
  TableWidgetAccess* access = AccessOf(layout);
  if (QAccessibleInterface* part = access ? access->focusChild() : nullptr)
    Tell(QAccessible::Focus, part);
}

QString BetValueText(int betId) {
  const auto slot = static_cast<unsigned>(betId);
  if (Game.Bets[slot] == Currency()) return Nothing();
  const char* state = QT_TRANSLATE_NOOP("TableAccess", "working");
  switch (Game.BetWorking[slot]) {
    case CalledOn: state = QT_TRANSLATE_NOOP("TableAccess", "called on"); break;
    case CalledOff: state = QT_TRANSLATE_NOOP("TableAccess", "called off"); break;
    case NotWorking: state = QT_TRANSLATE_NOOP("TableAccess", "not working"); break;
    default: break;
  }
  return QString("$%1, %2").arg(Text(MoneyText(Game.Bets[slot])), Translated(state));
}

QString BetSentence(int betId) {
  const BetCard card = CardOf(betId, AmountOfSelection());
  QString sentence = Text(card.Says);
  for (const CardRow& row : card.Rows)
    sentence += QString(" %1 %2.").arg(Text(row.Label), Text(row.Value));
  return sentence.simplified();
}
