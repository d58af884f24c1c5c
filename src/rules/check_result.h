// What a check of the configuration found.
#pragma once

#include <string>

/// Tabs of the configuration screen.
enum ConfigTabId : int {
  ChecksTab = 0,
  SoundTab = 1,
  CompsTab = 2,
  ColorsTab = 3,
  MiscTab = 4,
  BankrollTab = 5,
  BetsTab = 6,
  PayoffsTab = 7,
  ProbabilityTab = 8,
  AdvantageTab = 9,
};

/// The box that a check complains about.
enum class ConfigBox {
  None,
  Denomination,
  MinPlacard,
  MaxPlacard,
  RollRate,
  BetPayoff,
  FieldPayoff,
  LayVigPct,
  BuyVigPct
};

/// What a check found. When it isn't `Ok`, the screen goes to `Tab`, to number `Index` (from 0) of
/// the boxes or grid rows named by `Box`, and shows the message.
struct CheckResult {
  bool Ok = true;
  int Tab = 0;
  ConfigBox Box = ConfigBox::None;
  int Index = 0;
  std::string Title;
  std::string Text;
};
