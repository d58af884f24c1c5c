#include "bets/change_bet.h"

#include <algorithm>

#include "bets/odds.h"
#include "bets/proper_odds.h"
#include "bets/vig.h"
#include "core/help_topics.h"
#include "core/limits.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

constexpr Currency kStackLimit = kMostMoney;

/// Any request can be told from a larger one up to here: it empties or fills a Chip-Stack.
constexpr Currency kMostRequest = kMostMoney * 2;

const char* const kPassLineContract =
    "You may not decrease or remove your Pass Line bet \nwhile a point is established.";
const char* const kPassLinePut =
    "You may not make or increase a Pass Line bet\nwhile a point is established.\n\n"
    "(Unless you check \"Allow Put Bets\" on\nthe Configuration screen.)";
const char* const kComeBelowContract = "You may not decrease or remove an established Come bet.";
const char* const kComeContract =
    "You may not decrease or remove a Come bet \nwhich is established on a point.";
const char* const kComePut =
    "You may not make or increase a Come bet\ndirectly on a point number.\n\n"
    "(Unless you check \"Allow Put Bets\" on\nthe Configuration screen.)";
const char* const kComeNeedsPoint = "You may not make a Come bet until \na point is established.";
const char* const kDontComeNeedsPoint =
    "You may not make a Don't Come bet until\na point is established.";
const char* const kDontPassLate =
    "You may not make or increase a Don't Pass bet\nwhile a point is established.";
const char* const kDontComeLate =
    "You may not make or increase a Don't Come bet\ndirectly on a point number.";
const char* const kPassOddsNeedFlat =
    "You may not make a Pass Line Odds Bet unless \nyou also have a Pass Line bet and \n"
    "a point is established.";
const char* const kDontOddsNeedFlat =
    "You may not make a Don't Pass Odds bet unless \nyou also have a Don't Pass bet and \n"
    "a point is established.";

void Tell(NoticeClass noticeClass, int betId, const char* text, int topic) {
  if (!NoticeWanted(noticeClass)) return;
  Game.MsgText = text;
  ShowNotice(noticeClass, BetName(betId) + " Bet", topic);
}

void TellRefusal(int betId, const char* text, int topic) {
  Tell(NoticeActions, betId, text, topic);
}

void AddLimitText(const char* text, Currency limit) {
  if (!Game.HyperDriveOn) Game.MsgText = text + MoneyText(limit);
}

// --- Contract and sequence rules. Each returns true when the change of the bet ends there. ---

enum class Verdict { GoOn, End };

Currency ToContract(int betId) { return Game.ContractBets[betId] - Game.Bets[betId]; }

void Restore(int betId, const char* text, int topic) {
  Game.Change = ToContract(betId);
  TellRefusal(betId, text, topic);
  // The change goes on through the limits: their notice must not repeat this text.
  if (!Game.HyperDriveOn) Game.MsgText.clear();
}

Verdict Refuse(int betId, const char* text, int topic) {
  Game.Change = 0;
  TellRefusal(betId, text, topic);
  return Verdict::End;
}

Verdict PassLineRules() {
  if (Game.Point == 0) return Verdict::GoOn;
  const Currency bet = Game.Bets[PassLine];
  const Currency contract = Game.ContractBets[PassLine];
  const Currency change = Game.Change;
  if (change == 0 && bet < contract) {
    Restore(PassLine, kPassLineContract, kTopicContract);
  } else if (change < 0) {
    if (bet == contract) return Refuse(PassLine, kPassLineContract, kTopicContract);
    if (bet > contract) Game.Change = std::max(change, contract - bet);
  } else if (change > 0) {
    if (bet + change < contract) {
      Restore(PassLine, kPassLineContract, kTopicContract);
    } else if (!Game.AllowPutBets) {
      Restore(PassLine, kPassLinePut, kTopicPutBets);
      if (Game.Change == 0) return Verdict::End;
    }
  }
  return Verdict::GoOn;
}

Verdict ComeOnNumberRules(int betId) {
  const Currency bet = Game.Bets[betId];
  const Currency contract = Game.ContractBets[betId];
  const Currency change = Game.Change;
  if (change == 0 && bet < contract) {
    Restore(betId, kComeBelowContract, kTopicContract);
  } else if (change < 0) {
    if (bet == contract) return Refuse(betId, kComeContract, kTopicContract);
    if (bet > contract) Game.Change = std::max(change, contract - bet);
  } else if (change > 0 && !Game.MovingBet) {
    if (bet + change < contract) {
      Restore(betId, kComeContract, kTopicContract);
    } else if (bet + change == contract) {
      Game.Change = ToContract(betId);
    } else if (!Game.AllowPutBets) {
      Restore(betId, kComePut, kTopicPutBets);
    }
  }
  return Verdict::GoOn;
}

Verdict OddsOnNumberRules(int betId, int topic) {
  const int flat = betId - kOddsOffset;
  if (Game.Bets[flat] != 0) return Verdict::GoOn;
  Game.Change = 0;
  if (NoticeWanted(NoticeActions)) {
    const std::string text =
        "You may not make an odds bet here until \nyou've established a " + BetName(flat) + " bet.";
    TellRefusal(betId, text.c_str(), topic);
  }
  return Verdict::End;
}

/// The rules of bets that can't be made or raised at any time. `Change` is above 0.
Verdict RulesForARaise(int betId) {
  const bool aboveContract =
      betId < kContractSlots && Game.Bets[betId] + Game.Change > Game.ContractBets[betId];
  if (betId == Come && Game.Point == 0) return Refuse(Come, kComeNeedsPoint, kTopicCome);
  if (betId == DontCome && Game.Point == 0)
    return Refuse(DontCome, kDontComeNeedsPoint, kTopicDontCome);
  if (betId == DontPass && Game.Point != 0 && aboveContract)
    Restore(DontPass, kDontPassLate, kTopicDontPass);
  if (IsDontComeOnNumber(betId) && !Game.MovingBet && aboveContract)
    Restore(betId, kDontComeLate, kTopicDontCome);
  if (betId == PassLineOdds && (Game.Bets[PassLine] == 0 || Game.Point == 0))
    return Refuse(PassLineOdds, kPassOddsNeedFlat, kTopicPassLine);
  if (betId == DontPassOdds && (Game.Bets[DontPass] == 0 || Game.Point == 0))
    return Refuse(DontPassOdds, kDontOddsNeedFlat, kTopicDontPass);
  if (IsComeOdds(betId)) return OddsOnNumberRules(betId, kTopicCome);
  if (IsDontComeOdds(betId)) return OddsOnNumberRules(betId, kTopicDontCome);
  return Verdict::GoOn;
}

Verdict ContractRules(int betId) {
  if (betId == PassLine) return PassLineRules();
  if (IsComeOnNumber(betId)) return ComeOnNumberRules(betId);
  return Game.Change > 0 ? RulesForARaise(betId) : Verdict::GoOn;
}

/// What the later limits can't do: take a contract bet below its contract.
void KeepContract(int betId) {
  if (IsContractBet(betId)) Game.Change = std::max(Game.Change, ToContract(betId));
}

// --- Rounding and limits ---

/// Whole Units, away from zero, and never below an empty bet.
void RoundToUnits(int betId) {
  const double units = Game.Change / Unit();
  if (!IsWhole(units)) {
    const double whole = Game.Change < 0 ? Int(units) : Int(units) + 1;
    Game.Change = WholeTimes(whole, Unit());
  }
  Game.Change = std::max(Game.Change, -Game.Bets[betId]);
}

Currency RoundUpToUnits(Currency amount) {
  const Currency down = RoundDownTo(amount, Unit());
  return down == amount ? amount : down + Unit();
}

void ApplyMinimum(int betId) {
  Game.MinHere = betId < Hard4 ? Game.MinPlacard : Unit();
  if (betId == PassLine || IsComeOnNumber(betId))
    Game.MinHere = std::max(Game.MinHere, Game.ContractBets[betId]);
  // Required: the test looks at the amount as first asked for, not at the rounded change.
  const Currency asked = Game.Bets[betId] + Game.ChangeRequest;
  if (asked <= 0 || asked >= Game.MinHere) return;
  if (Game.Change <= 0) {
    Game.Change = -Game.Bets[betId];
  } else {
    Game.Change = RoundUpToUnits(Game.MinHere) - Game.Bets[betId];
    AddLimitText("Minimum bet here is $", Game.MinHere);
  }
  KeepContract(betId);
}

void TellContractStands(int betId) {
  constexpr int kClasses = NoticeActions | NoticeLimits;
  if (NoticeWanted(kClasses)) {
    Game.MsgText += "\n\nHowever, because the " + BetName(betId) +
                    " is a contract bet and it \nwas established at $" +
                    MoneyText(Game.ContractBets[betId]) +
                    " before the maximum allowed was lowered \non the Configuration screen, it "
                    "must remain unchanged until it resolves.";
    ShowNotice(kClasses, BetName(betId) + " Bet", kTopicContract);
  }
  if (!Game.HyperDriveOn) Game.MsgText.clear();
}

Verdict ApplyMaximum(int betId) {
  FigureMaxBet(betId);
  const Currency bet = Game.Bets[betId];
  const bool contractStands = IsContractBet(betId) && Game.ContractBets[betId] > Game.MaxHere;
  // A change that the minimum has raised is held to the maximum too; one that the contract has
  // raised is not.
  const Currency tested =
      contractStands ? Game.ChangeRequest : std::max(Game.ChangeRequest, Game.Change);
  if (bet + tested <= Game.MaxHere) return Verdict::GoOn;
  AddLimitText("Maximum bet here is $", Game.MaxHere);
  if (contractStands) {
    Game.Change = ToContract(betId);
    TellContractStands(betId);
    return Game.Change == 0 ? Verdict::End : Verdict::GoOn;
  }
  Game.Change = std::min(Game.Change, Game.MaxHere - bet);
  return Verdict::GoOn;
}

// --- Bankroll ---

/// The vig that an amount would hold up front.
Currency VigUpFront(int betId, Currency amount) {
  if (!VigIsUpFront(betId)) return 0;
  return IsBuy(betId) ? FigureBuyVig(betId, amount) : FigureLayVig(betId, amount);
}

/// The money that the table would hold after a change of one bet.
Currency Needed(int betId, Currency change) {
  const Currency held = VigIsUpFront(betId) ? VigHeld(betId) : Currency(0);
  return Game.TotalOnTable + change + VigUpFront(betId, Game.Bets[betId] + change) - held;
}

/// The change lowered by `units` Units, but not below an empty bet.
Currency Lowered(int betId, std::int64_t units) {
  return std::max(Game.Change - Unit() * units, -Game.Bets[betId]);
}

/// Lowers `Change` by as few Units as the bankroll needs. The vig grows with the amount, so what is
/// needed falls with each Unit and the number of Units can be searched by halves.
void ShrinkToBankroll(int betId) {
  const Currency standing = Game.Bets[betId] + Game.Change;
  std::int64_t enough = (standing.Raw() + Unit().Raw() - 1) / Unit().Raw();
  std::int64_t tooFew = 0;
  while (enough - tooFew > 1) {
    const std::int64_t middle = tooFew + (enough - tooFew) / 2;
    (Needed(betId, Lowered(betId, middle)) > Bankroll() ? tooFew : enough) = middle;
  }
  Game.Change = Lowered(betId, enough);
}

void TellShortBankroll(int betId) {
  if (NoticeWanted(NoticeLimits)) {
    std::string& text = Game.MsgText;
    if (!text.empty()) text += "\n\n";
    text +=
        "You don't have enough bankroll remaining to bet the full amount requested.\n\n"
        "Your options are: ";
    if (Game.TotalOnTable - Game.Bets[betId] > 0) text += "\n      - Bet less on other bets.";
    text +=
        "\n      - Make a withdrawal from the ATM."
        "\n      - Allow negative bankroll amounts.";
    ShowNotice(NoticeLimits, BetName(betId) + " Bet", kTopicLimits);
  }
  if (!Game.HyperDriveOn) Game.MsgText.clear();
}

/// `limitText` is the text that the minimum and maximum left: what an adjustment added to it is
/// told afresh for the amount that the bankroll allows.
void ApplyBankroll(int betId, const std::string& limitText) {
  if (Game.NegBankroll) return;
  const Currency left = Bankroll() - Needed(betId, Game.Change);
  Game.LeastFreeMoney = std::min(Game.LeastFreeMoney, left);
  if (left >= 0) return;
  ShrinkToBankroll(betId);
  Game.MaxHere = Game.Bets[betId] + Game.Change;
  if (!Game.HyperDriveOn) Game.MsgText = limitText;
  if (Game.AutoAdjust > AdjustManual) AdjustForProperOdds(betId);
  const Currency result = Game.Bets[betId] + Game.Change;
  if (result > 0 && result < Game.MinHere) {
    AddLimitText("Minimum bet here is $", Game.MinHere);
    Game.Change = -Game.Bets[betId];
  }
  TellShortBankroll(betId);
}

// --- Chip-Stacks ---

void LimitChipStack(int betId) {
  __extension__ using Wide = __int128;
  const std::int64_t stack = Game.Bets[betId].Raw();
  const Wide sum = static_cast<Wide>(stack) + Game.Change.Raw();
  const bool falling = Game.Change < 0;
  const std::int64_t limit = falling ? -kStackLimit.Raw() : kStackLimit.Raw();
  if (sum >= -static_cast<Wide>(kStackLimit.Raw()) && sum <= kStackLimit.Raw()) return;
  Game.Change = Currency::FromRaw(limit - stack);
  AddLimitText(falling ? "Minimum Chip-Stack value is: $" : "Maximum Chip-Stack value is: $",
               Currency::FromRaw(limit));
}

// --- Notices at the end ---

void TellLimit(int betId) {
  if (Game.HyperDriveOn) return;
  std::string& text = Game.MsgText;
  if (!text.empty() && NoticeWanted(NoticeLimits)) {
    const bool stack = betId > ChipStackBase;
    const bool extend = text.find("Unable") == std::string::npos;
    const std::string stackTitle = "Chip-Stack #" + std::to_string(betId - ChipStackBase);
    if (Game.Change == 0) {
      if (stack) {
        if (extend) text += "\nwhich is already stacked.";
        ShowNotice(NoticeLimits, stackTitle, kTopicLimits);
      }
      // Required: a Chip-Stack that stays as it is shows this second box too.
      if (extend) text += "\nwhich is already bet.";
      ShowNotice(NoticeLimits, BetName(betId) + " Bet", kTopicLimits);
    } else {
      if (extend) text += stack ? "\nwhich is being stacked." : "\nwhich is being bet.";
      ShowNotice(NoticeLimits, stack ? stackTitle : BetName(betId) + " Bet", kTopicLimits);
    }
  }
  text.clear();
}

void TellVig(int betId, Currency before, Currency now) {
  if (now == before || !NoticeWanted(NoticeCharges)) return;
  const bool upFront = VigIsUpFront(betId);
  const std::string vig = Quoted("Vig");
  std::string text;
  if (now == 0) {
    if (!upFront) return;
    text = vig + " charge returned $" + MoneyText(before);
  } else {
    if (before > 0)
      text = vig + (now > before ? " increased by $" : " decreased by $") +
             MoneyText(Abs(now - before)) + "\n\n";
    text += upFront ? "Total " + vig + " charge $" : "If you win, the " + vig + " charge will be $";
    text += MoneyText(now);
  }
  Game.MsgText = text;
  ShowNotice(NoticeCharges, BetName(betId) + " Bet", IsBuy(betId) ? kTopicBuyBet : kTopicLayBet);
}

void ChargeVig(int betId) {
  if (!IsBuy(betId) && !IsLay(betId)) return;
  Currency& held = HeldVigOf(betId);
  const Currency before = held;
  const Currency bet = Game.Bets[betId];
  held = IsBuy(betId) ? FigureBuyVig(betId, bet) : FigureLayVig(betId, bet);
  if (VigIsUpFront(betId)) Game.TotalOnTable += held - before;
  TellVig(betId, before, held);
}

void WriteChange(int betId) {
  if (betId < Lay4 || betId > LastSlot) return;
  if (Game.Change != 0) Game.GameChanged = true;
  Game.Bets[betId] += Game.Change;
  Touch(betId);
  if (IsBet(betId)) Game.TotalOnTable += Game.Change;
  if (Game.Bets[betId] == 0) ResetBetWorking(betId);
}

// --- Maximum of a bet ---

/// A maximum of `count` ten-thousandths, as far as bets may go.
Currency UpToMostBet(double count) {
  return Currency::FromCount(std::min(count, static_cast<double>(kMostBet.Raw())));
}

/// The largest stake on which a proposition bet pays no more than `MaxPropPayoff` at `netRatio`.
void LimitByPayoff(double netRatio) {
  // A ratio that wins nothing sets no limit of its own: the placard's stands.
  if (!(netRatio > 0)) return;
  Game.MaxHere = UpToMostBet(static_cast<double>(Game.MaxPropPayoff.Raw()) / netRatio);
}

double HighestRatio(std::initializer_list<int> betIds) {
  double highest = 0;
  for (const int id : betIds)
    highest = std::max(highest, Game.Payoff[id].Win / Game.Payoff[id].Per);
  return highest;
}

/// `MaxHere` times `by` divided by `over`, rounded as money after each step.
void ScaleMaximum(Currency by, Currency over) {
  if (over <= 0) return;
  Game.MaxHere = UpToMostBet(Game.MaxHere * by / over * Currency::kScale);
}

}  // namespace

bool IsContractBet(int betId) {
  return (betId == PassLine && Game.Point != 0) || IsComeOnNumber(betId);
}

void ResetBetWorking(int betId) {
  if (!IsBet(betId)) return;
  Game.WorkingTouched = true;
  Game.BetWorking[betId] = Game.Point == 0 ? Game.ComeOutWorking[betId] : +Working;
}

void FigureMaxBet(int betId) {
  Game.MaxHere = RoundDownTo(Game.MaxPlacard, Unit());
  if (IsBet(betId)) {
    const PayoffRecord& payoff = Game.Payoff[betId];
    const int flat = betId - kOddsOffset;
    if (IsLay(betId)) {
      ScaleMaximum(payoff.Per, payoff.Win);
    } else if (betId == PassLineOdds) {
      FigureMaxOdds(betId, PassLine, payoff.Win, payoff.Per);
    } else if (IsComeOdds(betId)) {
      FigureMaxOdds(betId, flat, payoff.Win, payoff.Per);
    } else if (betId == DontPassOdds || IsDontComeOdds(betId)) {
      FigureMaxOdds(betId, betId == DontPassOdds ? +DontPass : flat, payoff.Per, payoff.Win);
      ScaleMaximum(payoff.Per, payoff.Win);
    } else if (betId == CAndE) {
      LimitByPayoff(HighestRatio({Craps, Eleven}) / 2 - 0.5);
    } else if (betId == Horn) {
      LimitByPayoff(HighestRatio({Two, Three, Eleven, Twelve}) / 4 - 0.75);
    } else if (betId == World) {
      LimitByPayoff(HighestRatio({Two, Three, Eleven, Twelve, Seven}) / 5 - 0.8);
    } else if (betId >= Hard4) {
      LimitByPayoff(payoff.Win / payoff.Per);
    }
  }
  Game.MaxHere = RoundDownTo(std::min(Game.MaxHere, kMostBet), Unit());
}

void ChangeBet(int betId) {
  if (!Game.HyperDriveOn) Game.MsgText.clear();
  Game.ChangeRequest = std::clamp(Game.ChangeRequest, -kMostRequest, kMostRequest);
  Game.Change = Game.ChangeRequest;
  if (betId >= ChipStackBase && betId <= LastSlot) {
    LimitChipStack(betId);
  } else {
    if (IsBet(betId)) RoundToUnits(betId);
    if (ContractRules(betId) == Verdict::End) return;
    ApplyMinimum(betId);
    if (ApplyMaximum(betId) == Verdict::End) return;
    const std::string limitText = Game.HyperDriveOn ? std::string() : Game.MsgText;
    if (Game.AutoAdjust > AdjustManual) {
      AdjustForProperOdds(betId);
      KeepContract(betId);
    }
    ApplyBankroll(betId, limitText);
  }
  TellLimit(betId);
  WriteChange(betId);
  ChargeVig(betId);
}

void RequestChange(int betId, Currency change) {
  Game.ChangeRequest = change;
  ChangeBet(betId);
}
