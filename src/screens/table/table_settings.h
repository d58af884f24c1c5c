// How the player wants the table to look and to behave. It belongs to the desktop, not to a game:
// it lies in the desktop's settings store.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "core/currency.h"
#include "screens/frame/menus.h"

enum PanelChoice : int { PanelWithRoom = 0, PanelAlways = 1, PanelNever = 2 };
enum MotionChoice : int { MotionAsSystem = 0, MotionFull = 1, MotionReduced = 2 };
enum NoticesChoice : int { NoticesInBox = 0, NoticesAsToast = 1 };
enum SettleChoice : int { SettleInDialog = 0, SettleBesideChip = 1 };
enum ChromeChoice : int { ChromeOfTable = 0, ChromeOfSystem = 1, ChromeHighContrast = 2 };
enum StickFrameChoice : int {
  StickFigure = 0,
  StickCallBoard = 1,
  StickEmpty = 2,
  StickAsTold = 3,
};
enum VolumeKind : int { StickVolume = 0, DiceVolume = 1, ChipVolume = 2, WinVolume = 3 };

struct TableSettings {
  bool Call = true;           // what was thrown, in the band of the house name
  bool Forecast = true;       // what each throw would bring
  bool History = true;        // the last rolls, in the rail
  bool RollButtons = true;    // ROLL, Repeat, Double, Undo and Clear
  bool Money = true;          // bankroll, money at risk and result, in the rail
  bool Highlight = true;      // the region under the mouse
  bool BetCard = true;        // what is to be known of a bet
  bool PilesUpward = true;    // with the amount at their foot
  bool PuckMakesRoom = true;  // for chips in its square
  bool ClearLettering = true;
  bool Hints = true;          // until they have been seen
  int Panel = PanelWithRoom;  // beside the table
  int Pace = 600;             // milliseconds that a result takes
  int Motion = MotionAsSystem;
  int Notices = NoticesInBox;
  bool ToastsOffered = false;  // in the first box that could have been one
  int Settle = SettleBesideChip;
  int Chrome = ChromeOfTable;
  int StickFrame = StickFigure;
  std::array<int, 4> Volume = {80, 80, 80, 80};  // 0 to 100, by `VolumeKind`
  Currency StopLoss;                             // where a run of rolls ends; 0 for nowhere
  Currency WinGoal;

  bool operator==(const TableSettings&) const = default;
};

/// The settings in force. Whoever changes them calls `UseTableSettings`.
extern TableSettings TheTable;

/// The plain table, without anything that was laid over it.
TableSettings AsTold();

/// Whether the plain table is in force; what can't be seen of a table doesn't count.
bool IsAsTold();

/// Brings the settings in force to where they have an effect, keeps them in the settings store once
/// they have been read from there, and calls what follows them.
void UseTableSettings();

/// Reads the settings from the store. What is no setting counts as its default.
void ReadTableSettings();

/// The last rolls outlive a session where the same game comes back: they are kept beside the
/// settings, and read again when as many rolls have been thrown. False when the store can't be
/// written, which the player is told.
bool KeepRolls();
void ReadRolls();

/// `follow` runs now and after each change of the settings. Nothing is followed once `with` is
/// gone.
void FollowTableSettings(QObject* with, std::function<void()> follow);

/// True where things on the table may move: the choice, or what the desktop wants.
bool MotionWanted();

/// The entries of the menu View, Table.
std::vector<MenuRow> TableSettingsRows();
