// What screens keep with the game: their windows, and how they show it.
#pragma once

#include <array>
#include <string>

/// The windows whose places are kept, in the order of the game file.
enum WindowId : int {
  TableWindow = 0,
  BankrollWindow,
  SummaryWindow,
  RollTotalsWindow,
  RollFreqsWindow,
  BetResultsWindow,
  BetTrendsWindow,
  StackValuesWindow,
  FlagsWindow,
  GamesWindow,
  AutoBetWindow,
  DiceRollFilesWindow,
  FileWindow,
  RollPadWindow,
  EventsLogWindow,
  AutoPlayWindow,
  ConfigureWindow,
  StepsWindow,
  HotKeysWindow,
  kWindows,
};

/// Where a window was left, in screen units. A place without a width was never filled in.
struct WindowPlace {
  int State = 0;  // -1 for a visible window; of the table its window state
  int Top = 0;
  int Left = 0;
  int Width = 0;  // width and height only of windows that can be resized
  int Height = 0;

  bool operator==(const WindowPlace&) const = default;
};

struct KeptViews {
  std::array<WindowPlace, kWindows> WindowPlaces{};

  // The table and its menus.
  bool RollYourOwnNumbers = false;  // mnuRollYourOwnNumbers

  // The script editor.
  bool ShowLineNumbers = false;

  // The bankroll graph.
  int BankrollGraphDisplay = 0;

  // Roll totals and frequencies.
  int RollTotalsDisplay = 0;
  int RollTotalsBackColor = 11;  // of the 16-colour palette
  int RollTotalsGraphColor = 0;
  std::array<int, 2> RollTotalsView{};
  bool ShowVsSkewed = false;
  int RollFreqChoice = 0;

  // Bet results: "S" or a blank for each bet, then "1" or "0" for the kind of data.
  std::string BetResultsChoice;

  // The editor of Dice Roll files.
  std::array<bool, 36> DicePairSelected{};  // (die 1 - 1) x 6 + (die 2 - 1)
  int InsertRolls = 0;                      // 0 insert, 1 type over
  bool ShowDieNumbers = false;
  bool ShowRollNumbers = false;
  bool ShowNumbersCalled = false;
  bool PrintSelectedRolls = false;
  int DiceFontSize = 9;

  // Chip-Stacks and the Games Log.
  std::array<int, 2> StackValuesView{};
  std::array<int, 2> GamesView{};

  // The manual roll pad.
  int PadDisplay = 0;
  int PadColor = 0;
  bool PadShowCounter = false;
  bool PadShowHyperDrive = false;
  bool PadShowRandom = false;
};
