#include "bets/bankroll.h"

#include <algorithm>

#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

/// What was asked for and what is allowed, and why. Shown as a notice, but on the configuration
/// screen always.
void TellCut(AtmKind kind, Currency amount, Currency allowed, const std::string& why) {
  if (!Game.ConfigureActive && !NoticeWanted(NoticeActions)) return;
  Game.MsgText = "Requested amount:  $" + MoneyText(amount) + "\nAllowed amount:  $" +
                 MoneyText(allowed) + "\n\n" + why;
  const std::string title = kind == AtmWithdrawal ? "ATM Withdrawal" : "ATM Deposit";
  if (Game.ConfigureActive)
    ShowMessage(Game.MsgText, title, kTopicLimits, OkStop);
  else
    ShowNotice(NoticeActions, title, kTopicLimits);
}

const char* const kNotAllowed =
    "The full amount of this transaction was not allowed since it would have ";

Currency AllowedWithdrawal(Currency amount) {
  if (amount <= kBankLimit - Bankroll()) return amount;
  const Currency allowed = std::max(kBankLimit - Bankroll(), Currency(0));
  TellCut(AtmWithdrawal, amount, allowed,
          std::string(kNotAllowed) + "caused the current bankroll \nto exceed the bank limit of $" +
              MoneyText(kBankLimit));
  return allowed;
}

std::string FreeMoneyText() {
  const bool betsStand = Game.TotalOnTable > 0;
  std::string text = std::string(kNotAllowed) + "\n";
  text += betsStand ? "caused your current bankroll to drop below the amount of your current bets."
                    : "resulted in a negative current bankroll.";
  text += "\n\nYou can deposit more by checking the box marked, " +
          Quoted("Allow negative bankroll amounts");
  if (!Game.ConfigureActive) text += " on the Configuration screen";
  return text + (betsStand ? ", and/or by reducing the amount of your current bets." : ".");
}

Currency AllowedDeposit(Currency amount) {
  if (!Game.NegBankroll && amount > FreeMoney()) {
    const Currency allowed = std::max(FreeMoney(), Currency(0));
    TellCut(AtmDeposit, amount, allowed, FreeMoneyText());
    return allowed;
  }
  if (amount <= kBankLimit + Bankroll()) return amount;
  const Currency allowed = std::max(kBankLimit + Bankroll(), Currency(0));
  TellCut(AtmDeposit, amount, allowed,
          std::string(kNotAllowed) +
              "caused your current bankroll \nto exceed the bank limit of $" +
              MoneyText(-kBankLimit));
  return allowed;
}

}  // namespace

std::string SelectNewText() {
  return "Select " + Quoted("New") + " from the " + Quoted("Game") + " menu to reset the table.";
}

void AtmTransaction(AtmKind kind, Currency amount) {
  Currency& bankroll = Game.Bets[BankrollIndex];
  const Currency moved =
      kind == AtmWithdrawal ? AllowedWithdrawal(amount) : -AllowedDeposit(amount);
  Game.InvestedBankroll += moved;
  bankroll += moved;
  Touch(BankrollIndex);
  Game.GameChanged = true;
}

void CheckBankLimits() {
  const bool won = Bankroll() > 0;
  if (Game.HyperDriveOn) {
    Game.KeepRolling = false;
    Game.StopMessage = (won ? "Stopped by breaking the bank limit of $"
                            : "Stopped by exceeding the max loss limit of $") +
                       MoneyText(kBankLimit) + "\n\n" + SelectNewText();
    return;
  }
  if (won && Bankroll() != Game.BetsAfterRoll[BankrollIndex]) TheHost.CelebrateBank();
  const std::string text = won ? "Congratulations!\n\nYou broke the bank limit of $"
                               : "Sorry ... this wasn't your lucky day.\n\n"
                                 "You've exceeded the max loss limit of $";
  ShowMessage(text + MoneyText(kBankLimit) + "\n\n" + SelectNewText(), "Kelvanor", kTopicLimits,
              won ? OkTick : OkStop);
}
