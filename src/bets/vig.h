// Vig on Buy and Lay bets.
#pragma once

#include "core/game_state.h"

/// The vig on `amount` on a Buy bet: `BuyVigPct` of the amount, rounded by `RoundBuyVig` and at
/// least one Unit on any amount above 0. 0 for another bet or a zero rate.
Currency FigureBuyVig(int betId, Currency amount);

/// The vig on `amount` on a Lay bet: `LayVigPct` of what it would win, rounded by `RoundLayVig`
/// like the Buy vig. 0 for another bet, a zero rate or a negative win.
Currency FigureLayVig(int betId, Currency amount);

/// The held vig of a Buy or Lay bet; 0 for any other bet.
Currency VigHeld(int betId);

/// Where the held vig of a Buy or Lay bet is kept.
Currency& HeldVigOf(int betId);

/// True for a Buy or Lay bet whose vig is charged up front.
bool VigIsUpFront(int betId);

/// Every amount of vig held, by number, and with what is held up front the money on the table.
struct HeldVig {
  std::array<Currency, 6> Buy{};
  std::array<Currency, 6> Lay{};
  Currency TotalOnTable;
};

/// How vig is charged on Buy or Lay bets.
struct VigTerms {
  bool UpFront = true;
  int Rounding = RoundedNormally;
};

/// The vig that the standing bets would hold under these terms.
HeldVig FigureHeldVig(VigTerms buy, VigTerms lay);

/// The terms in force.
VigTerms BuyVigTerms();
VigTerms LayVigTerms();

/// Figures the held vig of every Buy and Lay bet again and brings `TotalOnTable` up to date. For a
/// change of rate, rounding, mode or payoff.
void RefigureHeldVig();
