#include "screens/frame/screen.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "core/help_topics.h"
#include "core/messages.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/player_change.h"

namespace {

/// The error that was caught last, for whoever looks into a fault.
void ShowLastError() {
  if (!Game.LastErrorText.empty())
    ShowMessage(Game.LastErrorText, "Last Error", kTopicLastError, OkStop);
}

constexpr QSize kFrameOfDesktop(16, 48);   // what a desktop draws round a window
constexpr double kUsualLetterHeight = 16;  // of letters of 9 points at 96 dots an inch

}  // namespace

Screen::Screen(QWidget* table, const char* name, const QString& caption, int helpTopic)
    : QMainWindow(table), place_(name), helpTopic_(helpTopic) {
  setObjectName(name);
  setWindowTitle(caption);
  menus_ = new Menus(this, place_.constData());
}

void Screen::SetSizes(QSize smallest, QSize atStart) {
  const double letters = std::max(1.0, fontMetrics().height() / kUsualLetterHeight);
  setMinimumSize((smallest * letters).expandedTo(minimumSizeHint()));
  const QSize room = screen()->availableSize() - kFrameOfDesktop;
  resize((atStart * letters).expandedTo(sizeHint()).boundedTo(room));
}

void Screen::Refresh() {
  if (!isVisible() || isMinimized() || ChangesWait()) return;
  LoadBindings(this);
  Do([this] { ShowRecord(); });
  menus_->Refresh();
}

void Screen::Present() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void Screen::Do(const std::function<void()>& act) { Guarded(place_.constData(), act); }

QPushButton* Screen::AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                               const QString& tip, std::function<void()> act) {
  return ::AddButton(row, name, caption, tip, place_.constData(), std::move(act));
}

void Screen::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (event->spontaneous()) return;
  Do([this] { Opened(); });
  Refresh();
}

void Screen::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) Refresh();
}

void Screen::closeEvent(QCloseEvent* event) {
  TakeTyped(this);
  if (!MayClose()) return event->ignore();
  QMainWindow::closeEvent(event);
}

void Screen::keyPressEvent(QKeyEvent* event) {
  bool taken = false;
  Do([&] { taken = TakeKey(*event); });
  if (taken || TakeCommonKey(*event, helpTopic_)) return;
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (!Menus::TakeKeyOfAllWindows(*event)) {
    QMainWindow::keyPressEvent(event);
  }
}

bool TakeCommonKey(const QKeyEvent& event, int helpTopic) {
  if (event.key() == Qt::Key_F1 && event.modifiers() == Qt::NoModifier) {
    ShowHelp(helpTopic);
    return true;
  }
  if (event.key() == Qt::Key_E && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
    ShowLastError();
    return true;
  }
  return false;
}

QLabel* EmptyLabel(QWidget* list, const char* name, const QString& text) {
  QLabel* label = new QLabel(text);
  label->setObjectName(name);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setEnabled(false);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  (new QVBoxLayout(list))->addWidget(label);
  return label;
}
