#include "bets/rule_changes.h"

#include <algorithm>
#include <numeric>

#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/make_bet.h"
#include "bets/vig.h"
#include "core/sounds.h"
#include "core/text.h"
#include "rules/config_checks.h"
#include "rules/payoff_cells.h"

namespace {

CheckResult Refusal(int tab, const std::string& title, const std::string& text) {
  return {false, tab, ConfigBox::None, 0, title, text};
}

constexpr const char* kBuyVigTitle = "Buy Bet Vig";
constexpr const char* kLayVigTitle = "Lay Bet Vig";

CheckResult VigRefusal(const std::string& title, ConfigBox box = ConfigBox::None) {
  CheckResult refusal =
      Refusal(BetsTab, title,
              "You're not allowed to change this setting at this time since the added up-front "
              "vig will cause the amount of your current bets to exceed your current bankroll.\n"
              "You can remedy this by doing one or more of the following:\n"
              " -- Check " +
                  Quoted("Allow negative bankroll amounts") +
                  ", or\n"
                  " -- Make a withdrawal from the ATM, or\n"
                  " -- Win some more money, or\n"
                  " -- Reduce the amount of your current bets.");
  refusal.Box = box;
  return refusal;
}

bool CanStand(Currency totalOnTable) { return Game.NegBankroll || totalOnTable <= Bankroll(); }

/// Whether the bets can stand under these terms.
bool CanCharge(VigTerms buy, VigTerms lay) {
  return CanStand(FigureHeldVig(buy, lay).TotalOnTable);
}

CheckResult ChangeBuyTerms(VigTerms terms) {
  if (!CanCharge(terms, LayVigTerms())) return VigRefusal(kBuyVigTitle);
  Game.BuyVigUpFront = terms.UpFront;
  Game.RoundBuyVig = terms.Rounding;
  RefigureHeldVig();
  return {};
}

CheckResult ChangeLayTerms(VigTerms terms) {
  if (!CanCharge(BuyVigTerms(), terms)) return VigRefusal(kLayVigTitle);
  Game.LayVigUpFront = terms.UpFront;
  Game.RoundLayVig = terms.Rounding;
  RefigureHeldVig();
  return {};
}

/// The vig of the rates and payoffs in force reaches the standing bets; the box of the bets whose
/// vig grows is named when the bankroll can't cover it.
CheckResult ChargeStandingBets() {
  const HeldVig held = FigureHeldVig(BuyVigTerms(), LayVigTerms());
  if (!CanStand(held.TotalOnTable)) {
    const Currency buy = std::accumulate(held.Buy.begin(), held.Buy.end(), Currency());
    const Currency before =
        std::accumulate(Game.BuyVigHeld.begin(), Game.BuyVigHeld.end(), Currency());
    if (Game.BuyVigUpFront && buy > before) return VigRefusal(kBuyVigTitle, ConfigBox::BuyVigPct);
    return VigRefusal(kLayVigTitle, ConfigBox::LayVigPct);
  }
  RefigureHeldVig();
  return {};
}

void FollowBankroll() {
  const bool noRollYet = Game.RollCount[0] == 0;
  Game.BankrollHigh = noRollYet ? Bankroll() : std::max(Game.BankrollHigh, Bankroll());
  Game.BankrollLow = noRollYet ? Bankroll() : std::min(Game.BankrollLow, Bankroll());
}

}  // namespace

CheckResult SetBuyVigUpFront(bool upFront) { return ChangeBuyTerms({upFront, Game.RoundBuyVig}); }

CheckResult SetLayVigUpFront(bool upFront) { return ChangeLayTerms({upFront, Game.RoundLayVig}); }

CheckResult SetRoundBuyVig(int rounding) { return ChangeBuyTerms({Game.BuyVigUpFront, rounding}); }

CheckResult SetRoundLayVig(int rounding) { return ChangeLayTerms({Game.LayVigUpFront, rounding}); }

CheckResult SetChipValues(const std::array<Currency, 5>& values) {
  CheckResult result = CheckDenominations(values);
  if (!result.Ok) return result;
  std::copy(values.begin(), values.end(), Game.Bets.begin() + SmallestChip);
  ArrangeAllChips();
  return result;
}

void FitBetsToRules() {
  RefigureHeldVig();
  ReAdjustAllBets();
  ArrangeAllChips();
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
  if (!allowed && Game.TotalOnTable > Bankroll()) {
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

CheckResult CloseConfiguration(const std::array<bool, kNoticeBoxes>& noticeBoxes) {
  const CheckResult charged = ChargeStandingBets();
  if (!charged.Ok) return charged;
  FollowBankroll();
  DeriveFieldPer();
  ReAdjustAllBets();
  for (const int stack : Game.VisibleStacks) ArrangeChips(stack);
  StoreNoticeBoxes(noticeBoxes);
  LoadStickPerson();
  return {};
}
