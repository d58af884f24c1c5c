// The configuration: house rules and settings of the program, on ten tabs.
#pragma once

#include <array>
#include <vector>

#include "screens/frame/screen.h"
#include "screens/rules/config_page.h"

class QAbstractButton;
class QGridLayout;
class QMenu;
class QStackedWidget;

class frmConfigure : public Screen {
  Q_OBJECT

 public:
  static constexpr int kTabs = 10;

  explicit frmConfigure(QWidget* table);

  /// True when all entries are valid. Else the tab of the fault is in front, its box has the focus,
  /// and the player has been told.
  bool CheckLimitsOK();

 protected:
  void ShowRecord() override;
  void Opened() override;
  bool MayClose() override;
  bool TakeKey(QKeyEvent& event) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QWidget* MakeStrip();
  void MakePages();
  void MakeMenus();
  void PlaceTabs(int front);
  void ChooseTab(int tab);
  void ShowTab(int tab);
  ConfigEntries Entries() const;
  bool EntriesAreValid();
  void BringUp(const CheckResult& fault);
  ConfigPage& Page(int tab) { return *pages_[static_cast<unsigned>(tab)]; }

  struct MenuOfTabs {
    QMenu* Menu;
    std::vector<int> Tabs;
  };

  int tab_ = -1;
  bool placed_ = false;
  QGridLayout* strip_ = nullptr;
  std::array<QAbstractButton*, kTabs> cmdAltKeys_{};
  std::array<ConfigPage*, kTabs> pages_{};
  QStackedWidget* stack_ = nullptr;
  std::vector<MenuOfTabs> menusOfTabs_;
};
