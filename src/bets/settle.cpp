#include "bets/settle.h"

#include <algorithm>
#include <cmath>

#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/vig.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/limits.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"

namespace {

// --- The lines of the settle screen ---

std::string Dollars(Currency amount) { return "$" + MoneyText(amount); }

Currency Share(Currency amount, double share) {
  return Currency::FromCount(static_cast<double>(amount.Raw()) * share);
}

void AddLine(const std::string& label, Currency amount, bool bold = false) {
  Game.Settle.Lines.push_back({label, Dollars(amount), bold});
}

/// "Payoff at 7 to 6:" by the record in force; a record that takes money reads "Loss at".
std::string RatioText() {
  const PayoffRecord& payoff = Game.Payoff[0];
  const bool pays = payoff.Win > 0 || Game.NetPayoff >= 0;
  const std::string start = pays ? "Payoff at " : "Loss at ";
  if (!payoff.ShownAsTo)
    return start + MoneyText(payoff.Win + payoff.Per) + " for " + MoneyText(payoff.Per) + ":";
  return start + MoneyText(pays ? payoff.Win : -payoff.Win) + " to " + MoneyText(payoff.Per) + ":";
}

/// How a combination bet shows the part that won and the parts that didn't.
struct PartWords {
  int BetId;
  const char* Won;
  const char* Rest;
  double WonShare;
  double RestShare;
};
constexpr PartWords kPartWords[] = {{CAndE, "1/2 of bet:", "Less 1/2 of bet:", 0.5, 0.5},
                                    {Horn, "1/4 of bet:", "Less 3/4 of bet:", 0.25, 0.75},
                                    {World, "1/5 of bet:", "Less 4/5 of bet:", 0.2, 0.8}};

const PartWords* PartWordsOf(int betId) {
  for (const PartWords& words : kPartWords)
    if (words.BetId == betId) return &words;
  return nullptr;
}

std::string BetLabel() { return BetName(Game.DecidedBet) + " bet:"; }

std::string VigLabel() {
  const Currency rate = IsLay(Game.DecidedBet) ? Game.LayVigPct : Game.BuyVigPct;
  return PlainText(-(rate * 100)) + "% vig:";
}

/// Vig is part of this decision: always up front, on the win only when the bet paid.
bool VigCharged() {
  const int betId = Game.DecidedBet;
  return (IsLay(betId) || IsBuy(betId)) && (VigIsUpFront(betId) || Game.Payoff[0].Win > 0);
}

/// The stake, the payoff and what goes off it, and the net line with the words given.
void FillAmounts(const std::string& vigLabel, const std::string& net, bool netAlways) {
  const int betId = Game.DecidedBet;
  const Currency bet = Game.Bets[betId];
  const Currency gross = Game.GrossPayoff;
  const PartWords* parts = PartWordsOf(betId);
  if (parts != nullptr) {
    AddLine(parts->Won, Share(bet, parts->WonShare));
    AddLine(RatioText(), gross + Share(bet, parts->RestShare));
    AddLine(parts->Rest, -Share(bet, parts->RestShare));
  } else if (VigCharged()) {
    AddLine(BetLabel(), bet);
    AddLine(RatioText(), gross + VigHeld(betId));
    AddLine(vigLabel, -VigHeld(betId));
  } else {
    AddLine(BetLabel(), bet);
    AddLine(RatioText(), gross);
    if (!netAlways && Game.NetPayoff == gross) return;
  }
  const std::string words = Game.NetPayoff != gross ? net + " (rounded): " : net + ": ";
  AddLine(words, Game.NetPayoff, true);
}

void BeginLines(const std::string& caption, int topic) {
  Game.Settle = SettleScreen{};
  Game.Settle.Caption = caption;
  Game.Settle.HelpTopic = topic;
}

// --- Showing the screen ---

std::string PressCaption() {
  return "Press 1 &Unit - Add $" + MoneyText(Game.PressUnit) + " to Bet";
}

void ShowScreen() {
  const bool lost = Game.NetPayoff < 0;
  Game.Settle.Lost = lost;
  Game.Settle.OnlyTakeDown = Game.BetComesDown;
  FigurePressUnit(Game.DecidedBet);
  if (lost)
    Game.Settle.Buttons = {"No Bet/Take Remainder",
                           "Bet Remainder",
                           "Same Bet",
                           PressCaption(),
                           "Double Bet",
                           "Sa&me Bet:",
                           "&Bet:"};
  else
    Game.Settle.Buttons = {"&Take Bet and Winnings",
                           "&Same Bet - Take Winnings",
                           PressCaption(),
                           "Press - Add Winnings to &Double Bet",
                           "Parlay - Add &All Winnings to Bet",
                           "Sa&me Bet:",
                           "&Bet:"};
  TheHost.ShowSettleScreen();
}

/// The dice go home on the first decision of a roll, when they are told to.
void LetDiceSettle() {
  if (!Game.BetDecidedThisRoll && Game.DiceAction == DiceReturnOnDecision) TheHost.SendDiceHome();
  Game.BetDecidedThisRoll = true;
}

void StopAutoRollOn(AutoStopEntry entry) {
  if (Game.AutoRollDice && Game.AutoStopOn[entry]) Game.KeepRolling = false;
}

/// The held vig of a decided bet has been paid, and is no longer held.
Currency ReleaseVig() {
  const int betId = Game.DecidedBet;
  if (!IsLay(betId) && !IsBuy(betId)) return 0;
  Currency& held = HeldVigOf(betId);
  const Currency released = held;
  if (VigIsUpFront(betId)) Game.TotalOnTable -= released;
  held = 0;
  return released;
}

// --- Adjusters ---

void TellChange(const std::string& what) {
  const int betId = Game.DecidedBet;
  if (!NoticeWanted(NoticeCharges)) return;
  const Currency difference = Game.Bets[betId] - Game.BetsAtRoll[betId];
  if (difference > 0)
    Game.MsgText = "Bet increased by: $" + MoneyText(difference);
  else if (difference < 0)
    Game.MsgText = "Bet decreased by: $" + MoneyText(-difference);
  else
    Game.MsgText = "No change in bet amount.";
  ShowNotice(NoticeCharges, what + BetName(betId), kTopicWin);
}

void Adjust(Currency request, const std::string& what) {
  RequestChange(Game.DecidedBet, request);
  ArrangeChips(Game.DecidedBet);
  if (!Game.HyperDriveOn) TellChange(what);
}

void TakeOffStake() { RequestChange(Game.DecidedBet, -Game.Bets[Game.DecidedBet]); }

/// The chip of a unit above percent, times the payoff's `Per`: what one such unit is worth.
Currency ChipUnits(int unit) {
  return Game.Bets[SmallestChip + (unit - ModifyFirstChip)] * Game.Payoff[Game.DecidedBet].Per;
}

/// A product as money; what is beyond all money stays at its end, where limits cut a request.
Currency RequestOf(Currency a, Currency b) {
  const double product = a.ToDouble() * b.ToDouble();
  if (std::abs(product) < kMostMoney.ToDouble()) return a * b;
  return product < 0 ? -kMostMoney : kMostMoney;
}

int UnitOf(int slot) { return static_cast<int>(Int(Game.ModifyUnit[slot] / Currency(1))); }

Currency ModifiedRequest(int slot) {
  const Currency amount = Game.ModifyAmount[slot];
  const Currency stake = Game.BetsAtRoll[Game.DecidedBet];
  const int unit = UnitOf(slot);
  const int operation = Game.ModifyOperator[slot];
  const bool percent = unit == ModifyPercent;
  Currency factor = unit >= ModifyFirstChip ? ChipUnits(unit) : Currency(1);
  if (operation == ModifyAdd || operation == ModifySubtract) {
    if (percent) factor = Currency::FromCount(stake / Currency(100) * Currency::kScale);
    const Currency change = RequestOf(amount, factor);
    return operation == ModifyAdd ? change : -change;
  }
  if (percent) factor = Currency::FromRaw(100);
  if (operation == ModifyTimes) return RequestOf(RequestOf(stake, amount), factor) - stake;
  const Currency divisor = RequestOf(amount, factor);
  if (divisor <= 0) return 0;
  const double quotient = std::min(stake / divisor, kMostMoney.ToDouble());
  return Currency::FromCount(quotient * Currency::kScale) - stake;
}

void ActOnWin(int choice, int sameSlot, int betSlot) {
  switch (choice) {
    case WinSameBet: return SameBet();
    case WinPressOneUnit: return PressUnit1();
    case WinPressDouble: return PressDouble();
    case WinParlay: return Parlay();
    case WinSameBetModified: return SameBetModified(sameSlot);
    case WinSetBet: return SetBetTo(betSlot);
    default: return TakeDownBet();
  }
}

void ActOnLoss(int choice, int sameSlot, int betSlot) {
  switch (choice) {
    case LossBetRemainder: return BetRemainder();
    case LossSameBet: return SameBet();
    case LossPlusOneUnit: return PressUnit1();
    case LossDoubleBet: return PressDouble();
    case LossSameBetModified: return SameBetModified(sameSlot);
    case LossSetBet: return SetBetTo(betSlot);
    default: return TakeDownBet();
  }
}

/// The choice that holds: under Hyper-Drive nobody is asked, and a bet that must come down does.
int ChoiceInForce(int choice) {
  constexpr int kTakeDown = 1;
  if (choice == 0 && !Game.HyperDriveOn) return 0;
  return choice == 0 || Game.BetComesDown ? kTakeDown : choice;
}

}  // namespace

void FillWinLines() {
  BeginLines(Game.NetPayoff > 0 ? "* * * Winner * * *" : "Push", kTopicWin);
  FillAmounts(VigLabel(), "Net payoff", false);
}

void FillReturnedOddsLines() {
  BeginLines("Odds Bet Returned", kTopicWin);
  Game.Settle.Lines.push_back({BetLabel(), Dollars(Game.Bets[Game.DecidedBet])});
  Game.Settle.Lines.push_back({"wasn't working!", ""});
}

void FillLossLines() {
  BeginLines("Bet Lost", kTopicLoss);
  FillAmounts("& vig:", "Net loss", true);
}

void FigurePressUnit(int betId) {
  const Currency bet = Game.Bets[betId];
  for (int chip = LargestChip; chip >= SmallestChip; --chip) {
    Game.PressUnit = Game.Bets[chip] * Game.Payoff[betId].Per;
    if (Game.PressUnit < bet && IsWhole(bet / Game.PressUnit)) return;
  }
}

void HandleWonBet() {
  if (!Game.HyperDriveOn) {
    LetDiceSettle();
    StopAutoRollOn(StopOnWin);
    PlayWinSound(Game.HandleWinningBets == WinManual);
  }
  // What is pressed or parlayed is the payoff before vig.
  Game.NetPayoff += ReleaseVig();
  const int choice = ChoiceInForce(Game.HandleWinningBets);
  if (choice == WinManual)
    ShowScreen();
  else
    ActOnWin(choice, AutoWinSameBet, AutoWinBet);
  Game.BetComesDown = false;
}

void HandleLostBet() {
  const bool byHand = Game.HandleLosingBets == LossManual && !Game.HyperDriveOn;
  if (!Game.HyperDriveOn) {
    LetDiceSettle();
    StopAutoRollOn(StopOnLoss);
    if (byHand) FillLossLines();
  }
  ReleaseVig();
  const int choice = ChoiceInForce(Game.HandleLosingBets);
  if (choice == LossManual)
    ShowScreen();
  else
    ActOnLoss(choice, AutoLossSameBet, AutoLossBet);
  Game.BetComesDown = false;
}

void PressSettleButton(int button) {
  if (Game.Settle.OnlyTakeDown) button = 0;
  const int choice = button + 1;  // the choices number from 1, after the manual one
  if (Game.Settle.Lost) {
    Game.LastLossChoice = button;
    ActOnLoss(choice, ScreenLossSameBet, ScreenLossBet);
  } else {
    Game.LastWinChoice = button;
    ActOnWin(choice, ScreenWinSameBet, ScreenWinBet);
  }
  Game.Settle.Lines.clear();
}

void TakeDownBet() {
  TakeOffStake();
  ArrangeChips(Game.DecidedBet);
  Game.BetComesDown = false;
}

void BetRemainder() {
  TakeOffStake();
  RequestChange(Game.DecidedBet, Game.NetPayoff + Game.BetsAtRoll[Game.DecidedBet]);
  ArrangeChips(Game.DecidedBet);
}

void SameBet() {
  RequestChange(Game.DecidedBet, 0);
  if (Game.Change == 0) return;
  ArrangeChips(Game.DecidedBet);
  if (!Game.HyperDriveOn) TellChange("");
}

void PressUnit1() {
  FigurePressUnit(Game.DecidedBet);
  Adjust(Game.PressUnit, "Press 1 Unit ");
}

void PressDouble() { Adjust(Game.Bets[Game.DecidedBet], "Press Double "); }

void Parlay() {
  const auto biases = std::array{Game.LayBias, Game.PlaceBias, Game.DoBias, Game.DontBias};
  Game.LayBias = Game.PlaceBias = Game.DoBias = Game.DontBias = BiasDecrease;
  RequestChange(Game.DecidedBet, Game.NetPayoff);
  Game.LayBias = biases[0];
  Game.PlaceBias = biases[1];
  Game.DoBias = biases[2];
  Game.DontBias = biases[3];
  ArrangeChips(Game.DecidedBet);
  if (!Game.HyperDriveOn) TellChange("Parlay ");
}

void SetBetTo(int slot) {
  TakeOffStake();
  const int unit = UnitOf(slot);
  const Currency factor = unit >= ModifyFirstChip ? ChipUnits(unit) : Currency(1);
  Adjust(RequestOf(Game.ModifyAmount[slot], factor), "");
}

void SameBetModified(int slot) { Adjust(ModifiedRequest(slot), ""); }
