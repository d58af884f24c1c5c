#include "bets/make_bet.h"

#include "bets/bet_history.h"
#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/held.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"
#include "stats/events_log.h"

namespace {

constexpr Currency kAnyAmount = 9'999'999;

int PlaceX(int betId) { return static_cast<int>(Game.BetChipX[betId]); }
int PlaceY(int betId) { return static_cast<int>(Game.BetChipY[betId]); }

/// True when the chip of a click can be laid on top of the bet's chips as it is.
bool OneChipWillDo(int betId) {
  return !Game.KeyInBetAmounts && !Game.KeyedBoxOpen && !Game.AutoArrangeChips &&
         Game.ChangeRequest >= 0 && Game.Change == Game.ChangeRequest && betId < SmallestChip &&
         betId > Buy10 && Game.ChipColor >= 1 && Game.ChipColor <= 5 &&
         (Game.Change == 0 || Game.Change == ChipValue(Game.ChipColor));
}

void ShowChange(int betId, int x, int y) {
  if (Game.Change > 0 && !Game.KeyInBetAmounts) PlayChipSound();
  if (Game.DisplayBetAmounts) Game.NeedRepaint = true;
  if (OneChipWillDo(betId)) {
    if (Game.Change > 0) {
      AddChip(betId, x, y);
      Game.NeedRepaint = true;
    }
  } else if (betId == DontPass || betId == DontPassOdds) {
    // The odds lie on the flat bet's pile.
    ArrangeChips(DontPass);
    ArrangeChips(DontPassOdds);
  } else {
    ArrangeChips(betId);
  }
  if (betId >= ChipStackBase && Game.StackScreenOpen) TheHost.RefreshViews();
}

/// The odds bet that follows a flat bet now; 0 for none.
int OddsThatFollow(int betId) {
  if (betId == PassLine && Game.Point != 0) return PassLineOdds;
  if (betId == DontPass && Game.Point != 0) return DontPassOdds;
  if (IsComeOnNumber(betId) || IsDontComeOnNumber(betId)) return betId + kOddsOffset;
  return 0;
}

bool TakesOdds(int betId) { return betId == PassLine || IsComeOnNumber(betId); }

void TakeOff(int betId) {
  RequestChange(betId, -Game.Bets[betId]);
  ArrangeChips(betId);
}

void TellNotAllowed(const std::string& text, const std::string& title, int topic) {
  if (!NoticeWanted(NoticeActions)) return;
  Game.MsgText = text;
  ShowNotice(NoticeActions, title, topic);
}

bool IsNeverCalled(int betId) {
  return betId == PassLine || betId == DontPass || betId == Come || betId == DontCome ||
         IsComeOnNumber(betId) || IsDontComeOnNumber(betId);
}

/// The command of the click mode that acts on `betId`, or on the bet of the open box; without
/// either the mode waits for a click.
void CallOrWait(int betId, CallCode code, ClickModeKind mode) {
  if (betId == 0 && Game.KeyedBoxOpen) betId = Game.KeyedBetId;
  if (betId == 0) {
    Game.ClickMode = mode;
  } else {
    CallBet(betId, code);
  }
  TheHost.RedrawBets();
}

}  // namespace

void LetOddsFollow(int betId) {
  const int odds = OddsThatFollow(betId);
  if (odds == 0) return;
  const Currency change = Game.Change;
  const Currency request = Game.ChangeRequest;
  FigureMaxBet(odds);
  if (Game.Bets[odds] > Game.MaxHere ||
      (TakesOdds(betId) ? Game.AutoTakeFullOdds : Game.AutoLayFullOdds)) {
    const std::string text = Game.HyperDriveOn ? std::string() : Game.MsgText;
    SetFullOdds(odds);
    if (!Game.HyperDriveOn) Game.MsgText = text;
  }
  // The caller reads the flat bet's change.
  Game.Change = change;
  Game.ChangeRequest = request;
}

void MakeBet(int betId, int x, int y) {
  ChangeBet(betId);
  if (!Game.HyperDriveOn) ShowChange(betId, x, y);
  if (Game.Change != 0) LetOddsFollow(betId);
  Game.ClickMode = NoClickMode;
}

void MakeBet(int betId) { MakeBet(betId, PlaceX(betId), PlaceY(betId)); }

void RemoveBet(int betId) {
  Game.ChangeRequest = -Game.Bets[betId];
  MakeBet(betId);
}

void MoveBet(int fromId, int toId) {
  const Currency amount = Game.Bets[fromId];
  if (amount <= 0) return;
  const Held silent(Game.DisableAllSound, true);
  TakeOff(fromId);
  {
    const Held moving(Game.MovingBet, true);
    Game.ChangeRequest = amount;
    MakeBet(toId);
  }
  Game.ContractBets[toId] = amount;
  Touch(toId);
  if (LogWants(Game.LogBetChanges))
    WriteLogLine("      $", amount, " ", Game.BetNames[static_cast<unsigned>(fromId)],
                 " bet moved to ", Game.BetNames[static_cast<unsigned>(toId)]);
  if (Game.AutoRemovePlace && IsComeOnNumber(toId)) {
    constexpr int kPlaceAboveCome = Place4 - Come4;
    RemoveBet(toId + kPlaceAboveCome);
    RemoveBet(toId + kPlaceAboveCome + kBuyOffset);
  }
}

void BuyPlaceBet(int betId) {
  if (Game.Bets[betId] == 0 || IsBuy(betId)) return;
  if (betId >= ChipStackBase)
    return TellNotAllowed("You may not buy Chip-Stacks.", BetName(betId), kTopicBuyBet);
  if (!IsPlace(betId))
    return TellNotAllowed("You may not buy this bet.", BetName(betId) + " Bet", kTopicBuyBet);
  const int buyId = betId + kBuyOffset;
  const Currency amount = Game.Bets[betId];
  const int working = Game.BetWorking[betId];
  if (working == CalledOn || working == CalledOff) Game.BetWorking[buyId] = working;
  TakeOff(betId);
  Game.ChangeRequest = amount - Game.Bets[buyId];
  MakeBet(buyId);
  if (Game.KeyedBoxOpen && Game.KeyedBetId == betId) Game.KeyedBetId = buyId;
}

void CallBet(int betId, CallCode onOrOff) {
  if (Game.Bets[betId] == 0) return;
  if (betId > LastBet)
    return TellNotAllowed("You may not call Chip-Stacks ON or OFF.", BetName(betId) + " Bet",
                          kTopicOnOff);
  if (IsNeverCalled(betId))
    return TellNotAllowed("You may not call this bet ON or OFF.", BetName(betId) + " Bet",
                          kTopicOnOff);
  // A call undoes the opposite one rather than reverse it.
  const int opposite = onOrOff == CallCodeOn ? CalledOff : CalledOn;
  if (Game.BetWorking[betId] == opposite)
    ResetBetWorking(betId);
  else
    Game.BetWorking[betId] = onOrOff == CallCodeOn ? CalledOn : CalledOff;
  Game.WorkingTouched = true;
  Game.GameChanged = true;
  Game.NeedRepaint = true;
}

void CallBetOn(int betId) { CallOrWait(betId, CallCodeOn, CallOnMode); }
void CallBetOff(int betId) { CallOrWait(betId, CallCodeOff, CallOffMode); }

void CallAllBets(CallCode onOrOff) {
  for (int id = Lay4; id <= LastBet; ++id)
    if (!IsNeverCalled(id)) CallBet(id, onOrOff);
}

void RemoveAllBets() {
  const Held silent(Game.Notify, 0);
  for (int id = Lay4; id <= LastBet; ++id)
    if (Game.Bets[id] != 0) RemoveBet(id);
}

void EnterKeyedBet() {
  const int betId = Game.KeyedBetId;
  const Currency amount = ParseAmount(Game.KeyedBetText);
  if (betId != 0 && amount != Game.Bets[betId]) {
    if (IsBet(betId)) Game.TotalOnTable -= Game.Bets[betId];
    Game.Bets[betId] = 0;
    Game.ChangeRequest = amount;
    MakeBet(betId, Game.KeyedX, Game.KeyedY);
    // The bet was emptied before the rules saw it: one that is keyed away made no change.
    if (Game.Change == 0) LetOddsFollow(betId);
  }
  Game.KeyedBetText = PlainText(Game.Bets[betId]);
}

void CloseKeyedBox() {
  Game.KeyedBoxOpen = false;
  TheHost.RedrawBets();
}

void SetFullOdds(int oddsBetId) {
  const Held silent(Game.Notify, 0);
  RequestChange(oddsBetId, -Game.Bets[oddsBetId]);
  RequestChange(oddsBetId, kAnyAmount);
  ArrangeChips(oddsBetId);
}

void TakeAllFullOdds() {
  if (Game.Bets[PassLine] > 0 && Game.Point != 0) SetFullOdds(PassLineOdds);
  for (int id = Come4Odds; id <= Come10Odds; ++id)
    if (Game.Bets[id - kOddsOffset] > 0) SetFullOdds(id);
}

void LayAllFullOdds() {
  if (Game.Bets[DontPass] > 0 && Game.Point != 0) {
    ArrangeChips(DontPass);
    SetFullOdds(DontPassOdds);
  }
  for (int id = DontCome4Odds; id <= DontCome10Odds; ++id)
    if (Game.Bets[id - kOddsOffset] > 0) SetFullOdds(id);
}

void ReAdjustAllBets() {
  const Held silent(Game.Notify, 0);
  for (int id = Lay4; id <= LastBet; ++id) {
    if (Game.Bets[id] == 0) continue;
    RequestChange(id, 0);
    if (Game.Change != 0) ArrangeChips(id);
  }
  ForgetCommands();
}
