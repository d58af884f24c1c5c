// What the player's clicks and commands at the table do, apart from the widget that receives them.
#pragma once

#include <array>
#include <string>

#include "core/game_state.h"
#include "screens/frame/player_change.h"
#include "screens/table/table_layout.h"

class QWidget;

/// A mouse button at the table: what lies under it, where (in table units), and the keys held.
struct TableClick {
  int Spot = NoSpot;  // the marker or the stick person, else the hot spot
  double X = 0;
  double Y = 0;
  bool Ctrl = false;
  bool Shift = false;
};

/// The right button. True when the dice are to be thrown now.
bool RightClick();

/// The left button, in the order: dice, nothing, click mode, stick person, keyed-in bet, chips.
/// True when the dice are to be thrown now.
bool LeftClick(const TableClick& click);

/// True when a click may act on bets. While a run of Auto-Bet or Hyper-Drive goes on, the player is
/// asked whether to stop it, and the click does nothing else. An open keyed-bet box takes its
/// amount first; what that makes the game say holds the click up.
bool ClickMayAct();

/// Picks up what lies on a bet or Chip-Stack, to be dragged elsewhere. True when money came off.
bool PickUpChips(int id);

/// Lays the picked-up amount down on a bet or Chip-Stack; anywhere else it goes back.
void DropChips(int spot, int x, int y);

/// The amount picked up and not yet dropped, and where it came from.
extern Currency ChipPending;
extern int ChipPendingFrom;

/// Commands of the action menu: with the keyed-bet box open they act on its bet, else they set the
/// click mode.
void BuyPlaceBetCommand();
void CallBetOnCommand();
void CallBetOffCommand();
void RemoveBetCommand();

/// The menu's new game. A script that is in no file is offered for saving first, by way of
/// `parent`; going back there leaves the game as it is.
void NewGameCommand(QWidget* parent);

/// The amount that a click lays with the present `ChipColor`; 0 with a marker.
Currency AmountOfSelection();

/// Opens the keyed-bet box on a bet or Chip-Stack.
void OpenKeyedBox(int id);

/// The quick status line for what lies under the mouse.
std::string QuickStatusText(int spot);

/// True for a spot that holds money: a bet or a Chip-Stack.
inline bool HoldsMoney(int spot) { return IsBet(spot) || IsChipStack(spot); }
