#include "bets/rule_changes.h"

#include <algorithm>

#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/make_bet.h"
#include "bets/vig_and_odds.h"
#include "core/sounds.h"
#include "core/text.h"

namespace {

CheckResult Refusal(int tab, const std::string& title, const std::string& text) {
  return {false, tab, ConfigBox::None, 0, title, text};
}

CheckResult VigRefusal(const std::string& title) {
  return Refusal(BetsTab, title,
                 "You're not allowed to change this setting at this time since the added up-front "
                 "vig will cause the amount of your current bets to exceed your current bankroll.\n"
                 "You can remedy this by doing one or more of the following:\n"
                 " -- Check " +
                     Quoted("Allow negative bankroll amounts") +
                     ", or\n"
                     " -- Make a withdrawal from the ATM, or\n"
                     " -- Win some more money, or\n"
                     " -- Reduce the amount of your current bets.");
}

bool BetsExceedBankroll() { return Game.TotalOnTable > Bankroll(); }

template <class Value>
CheckResult ChangeVigSetting(Value& setting, Value wanted, const std::string& title) {
  const Value former = setting;
  setting = wanted;
  RefigureHeldVig();
  if (Game.NegBankroll || !BetsExceedBankroll()) return {};
  setting = former;
  RefigureHeldVig();
  return VigRefusal(title);
}

void FollowBankroll() {
  const bool noRollYet = Game.RollCount[0] == 0;
  Game.BankrollHigh = noRollYet ? Bankroll() : std::max(Game.BankrollHigh, Bankroll());
  Game.BankrollLow = noRollYet ? Bankroll() : std::min(Game.BankrollLow, Bankroll());
}

}  // namespace

CheckResult SetBuyVigUpFront(bool upFront) {
  return ChangeVigSetting(Game.BuyVigUpFront, upFront, "Buy Bet Vig");
}

CheckResult SetLayVigUpFront(bool upFront) {
  return ChangeVigSetting(Game.LayVigUpFront, upFront, "Lay Bet Vig");
}

CheckResult SetRoundBuyVig(int rounding) {
  return ChangeVigSetting(Game.RoundBuyVig, rounding, "Buy Bet Vig");
}

CheckResult SetRoundLayVig(int rounding) {
  return ChangeVigSetting(Game.RoundLayVig, rounding, "Lay Bet Vig");
}

CheckResult SetBuyVigPct(Currency fraction) {
  return ChangeVigSetting(Game.BuyVigPct, fraction, "Buy Bet Vig");
}

CheckResult SetLayVigPct(Currency fraction) {
  return ChangeVigSetting(Game.LayVigPct, fraction, "Lay Bet Vig");
}

CheckResult SetNegBankroll(bool allowed) {
  const std::string title = "Bankroll";
  if (!allowed && Bankroll() < Currency()) {
    return Refusal(BankrollTab, title,
                   "Before you can un-check this box you must first establish a non-negative "
                   "bankroll by either:\n"
                   " -- Winning some more money, or\n"
                   " -- Making a withdrawal from the ATM.");
  }
  if (!allowed && BetsExceedBankroll()) {
    return Refusal(BankrollTab, title,
                   "The amount of your current bets exceeds your current bankroll.  Therefore, "
                   "before you can un-check this box you must either:\n"
                   " -- Reduce the amount of your current bets, or \n"
                   " -- Make at least a $" +
                       MoneyText(Game.TotalOnTable - Bankroll()) + " withdrawal from the ATM.");
  }
  Game.NegBankroll = allowed;
  return {};
}

void CloseConfiguration(const std::array<bool, kNoticeBoxes>& noticeBoxes) {
  FollowBankroll();
  DeriveFieldPer();
  RefigureHeldVig();
  ReAdjustAllBets();
  for (const int stack : Game.VisibleStacks) ArrangeChips(stack);
  StoreNoticeBoxes(noticeBoxes);
  LoadStickPerson();
}
