// What the table's screen tells the engine, and what the engine leaves for the screen to draw.
#pragma once

#include <array>
#include <string>
#include <vector>

/// What a click on a bet does.
enum ClickModeKind : int {
  NoClickMode = 0,
  CallOnMode = 1,
  CallOffMode = 2,
  BuyMode = 3,
  RemoveMode = 4,
};

/// A line of the settle screen: a label and the amount behind it.
struct SettleLine {
  std::string Label;
  std::string Amount;
  bool Bold = false;
};

/// The settle screen as the engine fills it; the screen shows it and calls `PressSettleButton`.
struct SettleScreen {
  std::string Caption;
  int HelpTopic = 0;
  std::vector<SettleLine> Lines;
  std::array<std::string, 7> Buttons;
  bool OnlyTakeDown = false;  // only button 0 can be pressed
  bool Lost = false;          // which of the two sets of buttons and amounts is shown
};

struct ViewState {
  std::string AppPath;   // the program's folder, with a trailing separator
  std::string DataPath;  // the folder of saved state, with a trailing separator
  int ScreenWidth = 0;
  int ScreenHeight = 0;

  bool TableMinimised = false;
  bool HyperDriveStopped = false;  // a run ended while the table was minimised
  bool ConfigureActive = false;    // frmConfigure is the active screen
  bool StackScreenOpen = false;
  bool KeyInBetAmounts = false;   // mnuKeyInBetAmounts
  bool DisplayBetAmounts = true;  // mnuDisplayBetAmounts
  bool DisplayHopBets = false;    // mnuDisplayHopBets
  bool KeyedBoxOpen = false;      // txtEnterBet is visible
  int KeyedBetId = 0;             // its tag
  std::string KeyedBetText;       // its text
  int KeyedX = 0;
  int KeyedY = 0;
  int ClickMode = NoClickMode;
  bool NeedRepaint = false;
  bool BetDecidedThisRoll = false;  // the dice went home in this roll

  SettleScreen Settle;

  std::string SelectedFileName;  // the path that a command which only names a file has chosen
};
