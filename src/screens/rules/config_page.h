// One tab of the configuration, and what it has to do with the others.
#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "rules/config_checks.h"
#include "screens/frame/field.h"
#include "screens/frame/menus.h"

/// A menu that is seen while one of some tabs is in front.
struct TabMenu {
  QString Name;
  QString Caption;
  std::vector<int> Tabs;
  std::vector<MenuRow> Rows;
};

/// A page of the configuration: it holds the controls of its tab, bound to the record.
class ConfigPage : public QWidget {
 public:
  virtual std::vector<TabMenu> MenusOfTab() { return {}; }

  /// What the title of the window says behind its name while the page is in front.
  virtual QString TitleOfTab() { return {}; }

  /// Shows what no binding shows; asked only while the page is in front.
  virtual void ShowRecord() {}

  /// Adds the entries that aren't in their fields yet.
  virtual void Gather(ConfigEntries&) const {}

  /// The box or grid that a check complains about, made ready to be corrected; none for a box of
  /// another page.
  virtual QWidget* BoxOf(ConfigBox, int) { return nullptr; }

  /// All entries have been found valid.
  virtual void Taken() {}

  /// The page is about to be left: what is open in it is taken, and its place is kept.
  virtual void Leave() {}
};

/// Tells why a change was refused or what a check found, if it did; true when all is well.
bool Tell(const CheckResult& result, int helpTopic);

/// An amount that stands in its field only together with others: it keeps what was typed until they
/// agree, or the field has become another.
class PendingEntry {
 public:
  explicit PendingEntry(Currency& field) : field_(field) {}

  Currency Get() const { return Waits() ? *typed_ : field_; }
  void Set(Currency value) {
    typed_ = value;
    base_ = field_;
  }
  void Drop() { typed_.reset(); }

 private:
  bool Waits() const { return typed_ && base_ == field_; }

  Currency& field_;
  std::optional<Currency> typed_;
  Currency base_;
};

inline constexpr int kMoneyDecimals = 2;
inline constexpr int kMoneyLength = 17;  // 14 digits, the point and its decimals

// The pages, in the order of their tabs.
ConfigPage* MakeChecksPage();
ConfigPage* MakeSoundPage();
ConfigPage* MakeCompsPage();
ConfigPage* MakeColorsPage();
ConfigPage* MakeMiscPage();
ConfigPage* MakeBankrollPage();
ConfigPage* MakeBetsPage();
ConfigPage* MakePayoffsPage();
ConfigPage* MakeProbabilityPage();
ConfigPage* MakeAdvantagePage();
