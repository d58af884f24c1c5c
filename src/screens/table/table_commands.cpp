#include "screens/table/table_commands.h"

#include <algorithm>
#include <array>

#include "autobet/script.h"
#include "bets/chips.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "bets/vig.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"
#include "dice/tape_file.h"
#include "figures/games_log.h"
#include "play/roll_cycle.h"
#include "screens/scripts/script_commands.h"
#include "screens/table/game_commands.h"

Currency ChipPending;
int ChipPendingFrom = 0;

namespace {

constexpr int kKeyedBoxOffset = 11;

bool IsMarker(int selection) { return selection >= BuyMarkerSpot && selection <= OnMarkerSpot; }

void CancelClickMode() {
  if (Game.ClickMode == NoClickMode) return;
  Game.ClickMode = NoClickMode;
  TheHost.RedrawBets();
}

/// A command acts at once on the bet of an open keyed-bet box, or waits for a click on a bet.
void ActOrSetMode(ClickModeKind mode, void (*act)(int)) {
  if (Game.KeyedBoxOpen) {
    act(Game.KeyedBetId);
    Game.KeyedBetText = PlainText(Game.Bets[static_cast<unsigned>(Game.KeyedBetId)]);
  } else {
    Game.ClickMode = mode;
  }
  TheHost.RedrawBets();
}

void ActByClickMode(int spot) {
  const int mode = Game.ClickMode;
  CancelClickMode();  // seen before a message is
  if (HoldsMoney(spot)) {
    switch (mode) {
      case CallOnMode: CallBet(spot, CallCodeOn); break;
      case CallOffMode: CallBet(spot, CallCodeOff); break;
      case BuyMode: BuyPlaceBet(spot); break;
      case RemoveMode: RemoveBet(spot); break;
      default: break;
    }
  }
  TheHost.RedrawBets();
}

/// The dice repaint the table, and come out if they lie there to be thrown. During a roll they only
/// end its run.
bool ClickDice(const TableClick& click) {
  TheHost.RedrawBets();
  if (kRecorderRect.contains(click.X, click.Y)) return false;
  if (Game.RollInProgress) Game.KeepRolling = false;
  return TableAtRest();
}

void ClickStickPerson(double y) {
  if (y <= kStickPersonBottom) {
    PlayStickCall(StickNextThrow, false);
    return;
  }
  ChangeByPlayer([] {
    Game.DisplayHopBets = !Game.DisplayHopBets;
    TheHost.RedrawLayout();
  });
}

void ActWithMarker(int marker, int betId) {
  if (marker == BuyMarkerSpot) {
    BuyPlaceBet(betId);
  } else {
    CallBet(betId, marker == OnMarkerSpot ? CallCodeOn : CallCodeOff);
  }
}

/// Shift takes a bet whole; on Don't Pass Odds that hold nothing it takes the Don't Pass bet.
int BetTakenBy(int spot) {
  return spot == DontPassOdds && Game.Bets[DontPassOdds] == 0 ? DontPass : spot;
}

void TakeWholeBet(int spot) {
  const int id = BetTakenBy(spot);
  Game.ChangeRequest = -Game.Bets[static_cast<unsigned>(id)];
  MakeBet(id);
}

void ClickOnMoney(const TableClick& click) {
  if (click.Shift) {
    TakeWholeBet(click.Spot);
  } else if (IsMarker(Game.ChipColor)) {
    if (!click.Ctrl) ActWithMarker(Game.ChipColor, click.Spot);
  } else {
    Game.ChangeRequest = click.Ctrl ? -AmountOfSelection() : AmountOfSelection();
    MakeBet(click.Spot, static_cast<int>(click.X), static_cast<int>(click.Y));
  }
}

void ClickWithChips(const TableClick& click) {
  if (click.Spot >= RailSpot) {
    if (const int selection = RackSlotAt(click.X, click.Y)) {
      Game.ChipColor = selection;
      TheHost.RedrawBets();
      return;
    }
  }
  if (IsMarker(click.Spot)) {
    Game.ChipColor = click.Spot;
  } else if (HoldsMoney(click.Spot)) {
    ClickOnMoney(click);
  }
  TheHost.RedrawBets();
}

std::string StateText(int betId) {
  switch (Game.BetWorking[static_cast<unsigned>(betId)]) {
    case CalledOn: return "(called ON):  ";
    case CalledOff: return "(called OFF):  ";
    case NotWorking: return "(not working):  ";
    default: return "(working):  ";
  }
}

std::string BetStatus(int betId) {
  std::string text = BetName(betId) + " bet " + StateText(betId) +
                     MoneyText(Game.Bets[static_cast<unsigned>(betId)]);
  const Currency vig = VigHeld(betId);
  if (vig != 0) text += "  vig:  " + MoneyText(vig);
  return text;
}

std::string StackStatus(int id) {
  const std::string& name = Game.ChipStackName[static_cast<unsigned>(id - FirstChipStack)];
  const std::string label = BetName(id) + (name.empty() ? name : " (" + name + ")");
  return label + ":  " + MoneyText(Game.Bets[static_cast<unsigned>(id)]);
}

std::string ResultText() {
  const Currency result = Bankroll() - Game.InvestedBankroll;
  const char* label = result > 0   ? "You've won:  "
                      : result < 0 ? "You've lost:  "
                                   : "You're even:  ";
  return label + MoneyText(Abs(result));
}

std::string BankrollStatus() {
  std::string text = "Bankroll:  " + MoneyText(Bankroll()) +
                     "  Available:  " + MoneyText(FreeMoney()) +
                     "  Total bets:  " + MoneyText(Game.TotalOnTable) + "  " + ResultText();
  if (Game.RecorderStatus != RecorderOff) {
    text += "  Dice Roll Recorder:   ";
    text += Game.RecorderStatus == Recording ? "Recording" : "Playback";
    text += "  Next roll is #" + CountText(Game.DiceFilePos);
  }
  return text;
}

}  // namespace

bool ClickMayAct() {
  if (AskToInterruptRun()) return false;
  if (!Game.KeyedBoxOpen || !TableAtRest()) return true;
  Game.MsgText.clear();
  EnterKeyedBet();
  if (!Game.MsgText.empty()) return false;
  CloseKeyedBox();
  return true;
}

bool RightClick() {
  CancelClickMode();
  if (Game.AutoRollDice) {
    Game.KeepRolling = !Game.KeepRolling;
    if (Game.KeepRolling && Game.AutoRollsLeft == 0) Game.AutoRollsLeft = Game.NumAutoRolls;
  }
  return TableAtRest();
}

bool LeftClick(const TableClick& click) {
  if (click.Spot == DiceSpot) return ClickDice(click);
  if (!TableAtRest()) return false;
  if (click.Spot == NoSpot) {
    CancelClickMode();
  } else if (Game.ClickMode != NoClickMode) {
    ActByClickMode(click.Spot);
  } else if (click.Spot == StickPersonSpot) {
    ClickStickPerson(click.Y);
  } else if (Game.KeyInBetAmounts && HoldsMoney(click.Spot) && RackSlotAt(click.X, click.Y) == 0) {
    OpenKeyedBox(click.Spot);
  } else {
    ClickWithChips(click);
  }
  return false;
}

bool PickUpChips(int id) {
  if (!HoldsMoney(id)) return false;
  const int from = BetTakenBy(id);
  const Currency stood = Game.Bets[static_cast<unsigned>(from)];
  if (stood == 0) return false;
  TakeWholeBet(from);
  // What the rules keep on the bet, a contract, doesn't come along.
  ChipPending = stood - Game.Bets[static_cast<unsigned>(from)];
  ChipPendingFrom = from;
  TheHost.RedrawBets();
  return ChipPending != 0;
}

void DropChips(int spot, int x, int y) {
  if (ChipPending == 0) return;
  const bool elsewhere = HoldsMoney(spot) && spot != ChipPendingFrom;
  Game.ChangeRequest = ChipPending;
  ChipPending = 0;
  if (elsewhere) {
    MakeBet(spot, x, y);
  } else {
    MakeBet(ChipPendingFrom);
  }
  TheHost.RedrawBets();
}

void BuyPlaceBetCommand() { ActOrSetMode(BuyMode, BuyPlaceBet); }
void RemoveBetCommand() { ActOrSetMode(RemoveMode, RemoveBet); }
void CallBetOnCommand() { CallBetOn(0); }
void CallBetOffCommand() { CallBetOff(0); }

void NewGameCommand(QWidget* parent) {
  if (!MayLeaveGame(parent)) return;
  CloseKeyedBox();
  Game.ClickMode = NoClickMode;
  TheHost.PrintDuePage();
  AppendGameRecord(Game.GamesLogFile);
  NewGame(false);
  TheHost.RedrawLayout();
  if (!Game.DiceRollFile.empty() && Game.RecorderStatus == RecorderOff &&
      !AskYesNo("Although the dice roll recorder is turned off, would "
                "you like to keep the same Dice Roll File open?",
                "Dice Roll File Open", kTopicDiceRolls)) {
    CloseDiceRollFile();
  }
  AskToKeepScript();
  TheHost.RefreshViews();
  StickCall();
}

Currency AmountOfSelection() {
  const int selection = Game.ChipColor;
  if (selection >= kFirstStackColor && selection <= kLastStackColor) {
    const int stack = Game.VisibleStacks[static_cast<unsigned>(selection - kFirstStackColor)];
    return Game.Bets[static_cast<unsigned>(stack)];
  }
  if (selection < 1 || selection > kOverflowPicture - 1) return 0;
  return Game.Bets[static_cast<unsigned>(SmallestChip - 1 + selection)];
}

void OpenKeyedBox(int id) {
  const unsigned at = static_cast<unsigned>(id);
  Game.KeyedBetId = id;
  Game.KeyedBetText = PlainText(Game.Bets[at]);
  const QPointF place = ChipPosition(id);
  Game.KeyedX = static_cast<int>(place.x()) - kKeyedBoxOffset;
  Game.KeyedY = static_cast<int>(place.y()) - kKeyedBoxOffset;
  Game.KeyedBoxOpen = true;
  TheHost.RedrawBets();
}

std::string QuickStatusText(int spot) {
  if (IsBet(spot) && Game.Bets[static_cast<unsigned>(spot)] != 0) return BetStatus(spot);
  if (IsChipStack(spot) && Game.Bets[static_cast<unsigned>(spot)] != 0) return StackStatus(spot);
  return BankrollStatus();
}
