// Plays forty seeded games and folds everything that they leave behind into one number. A change of
// the engine that moves the number has changed the game.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>

#include "autoplay/hyper_drive.h"
#include "bets/bankroll.h"
#include "bets/headless_host.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "core/game_state.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "rules/presets.h"

namespace {

constexpr int kGames = 40;
constexpr int kSessions = 12;
constexpr int kRollsPerSession = 60;
constexpr int kRequestsPerSession = 15;

/// The choices of a game, apart from its dice.
class Picks {
 public:
  explicit Picks(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15U + 1) {}

  /// From 0 to `limit` - 1.
  int Below(int limit) {
    state_ ^= state_ << 13U;
    state_ ^= state_ >> 7U;
    state_ ^= state_ << 17U;
    return static_cast<int>((state_ >> 33U) % static_cast<std::uint64_t>(limit));
  }
  bool OneIn(int count) { return Below(count) == 0; }

 private:
  std::uint64_t state_;
};

/// Folds numbers into one, by the FNV-1a rule.
class Fold {
 public:
  void Add(Currency amount) { Word(static_cast<std::uint64_t>(amount.Raw())); }
  template <typename T>
  requires std::is_integral_v<T>
  void Add(T number) { Word(static_cast<std::uint64_t>(number)); }
  template <typename T, std::size_t count>
  void Add(const std::array<T, count>& items) {
    for (const T& item : items) Add(item);
  }
  std::uint64_t Value() const { return value_; }

 private:
  void Word(std::uint64_t word) {
    for (int byte = 0; byte < 8; ++byte, word >>= 8U) {
      value_ ^= word & 0xFFU;
      value_ *= 0x100000001B3U;
    }
  }
  std::uint64_t value_ = 0xCBF29CE484222325U;
};

void ChooseLimits(Picks& picks) {
  if (picks.OneIn(3))
    for (int chip = SmallestChip; chip <= LargestChip; ++chip)
      Game.Bets[static_cast<unsigned>(chip)] = Game.Bets[static_cast<unsigned>(chip)] * 5;
  Game.MinPlacard = Unit() * (1 + picks.Below(3));
  Game.MaxPlacard = Unit() * (200 + picks.Below(2000));
  Game.MaxPropPayoff = 500 + picks.Below(5000);
  Game.MaxOddsBet = 200 + picks.Below(5000);
  Game.OddsAllowed410 = 1 + picks.Below(4);
  Game.OddsAllowed59 = 1 + picks.Below(5);
  Game.OddsAllowed68 = Currency::FromRaw(5'000) * (2 + picks.Below(10));
  Game.OddsCalcMethod = picks.Below(6);
}

void ChooseRules(Picks& picks) {
  Game.BarDont = picks.OneIn(2) ? 2 : 12;
  Game.AllowPutBets = picks.OneIn(2);
  Game.LayVigUpFront = picks.OneIn(2);
  Game.BuyVigUpFront = picks.OneIn(2);
  Game.RoundLayVig = picks.Below(3);
  Game.RoundBuyVig = picks.Below(3);
  Game.NegBankroll = picks.OneIn(3);
  SetFieldPreset(picks.Below(kFieldPresets));
  if (picks.OneIn(3)) Game.Payoff[Place6] = {9, true, 7};
  if (picks.OneIn(3)) Game.Payoff[Hop44] = {31, false, 2};
  if (picks.OneIn(4)) Game.Payoff[Come] = {6, true, 5};
}

void ChooseAutoPlay(Picks& picks, int game) {
  Game.HandleWinningBets = game % 8;
  Game.HandleLosingBets = (game * 3 + game / 8) % 8;
  for (unsigned slot = AutoWinSameBet; slot < kModifySlots; ++slot) {
    Game.ModifyAmount[slot] = 1 + picks.Below(4);
    Game.ModifyOperator[slot] = picks.Below(4);
    Game.ModifyUnit[slot] = picks.Below(7);
  }
  Game.AutoAdjust = picks.Below(3);
  Game.LayBias = picks.Below(3);
  Game.PlaceBias = picks.Below(3);
  Game.DoBias = picks.Below(3);
  Game.DontBias = picks.Below(3);
  Game.AutoTakeFullOdds = picks.OneIn(2);
  Game.AutoLayFullOdds = picks.OneIn(2);
  Game.AutoRemovePlace = picks.OneIn(2);
  Game.AutoArrangeChips = picks.OneIn(2);
  for (unsigned id = Lay4; id <= LastBet; ++id)
    if (picks.OneIn(4)) Game.ComeOutWorking[id] = picks.Below(2);
  for (bool& stop : Game.AutoStopOn) stop = picks.OneIn(6);
  Game.BankrollAutoAdjustType = picks.Below(3);
  Game.BankrollAverageSpan = picks.Below(3) * 60;
}

void Start(int game, Picks& picks) {
  LayDownDefaults();
  ChooseLimits(picks);
  ChooseRules(picks);
  ChooseAutoPlay(picks, game);
  Game.BankrollInitAmt = 5000;
  Game.ReSeed = false;
  NewGame(false);
  Game.RngChoice = game % kGenerators;
  Game.UseSkewedProbability = picks.OneIn(5);
  Game.ChangeRequest = 1000 + game;
  SeedRng(SeedInChangeRequest);
}

void LayBets(Picks& picks) {
  for (int request = 0; request < kRequestsPerSession; ++request) {
    const int bet = 1 + picks.Below(LastBet);
    Game.ChangeRequest = Unit() * (picks.Below(60) - 15);
    MakeBet(bet);
    if (picks.OneIn(6)) {
      // Compilers draw for arguments in orders of their own.
      const auto call = picks.OneIn(2) ? CallCodeOn : CallCodeOff;
      CallBet(1 + picks.Below(LastBet), call);
    }
  }
  if (Bankroll() < 500) AtmTransaction(AtmWithdrawal, 4000);
}

/// By Hyper-Drive, at full speed or with a turn of the event loop after each roll, by auto-roll up
/// to a stop or the count, or roll by roll.
void PlaySession(int game) {
  Game.NumAutoRolls = Game.AutoRollsLeft = kRollsPerSession;
  Game.HyperThrottle = game % 2;
  switch (game % 4) {
    case 0:
    case 1: return ToggleHyperDrive();
    case 2:
      Game.AutoRollDice = Game.KeepRolling = true;
      RollDice();
      Game.AutoRollDice = Game.KeepRolling = false;
      return;
    default:
      for (int roll = 0; roll < kRollsPerSession; ++roll) RollDice();
  }
}

void AddTable(Fold& fold) {
  fold.Add(Game.Bets);
  fold.Add(Game.BetsAtRoll);
  fold.Add(Game.BetsAfterRoll);
  fold.Add(Game.ContractBets);
  fold.Add(Game.BuyVigHeld);
  fold.Add(Game.LayVigHeld);
  fold.Add(Game.TotalOnTable);
  fold.Add(Game.BankrollHigh);
  fold.Add(Game.BankrollLow);
  fold.Add(Game.BankrollSum);
  fold.Add(Game.BetWorking);
  fold.Add(Game.BetWorkingPrev);
  fold.Add(Game.BetOutcome);
  fold.Add(Game.ShooterStats);
  for (const int value : {Game.Die1, Game.Die2, Game.PrevDie1, Game.PrevDie2, Game.RollTotal,
                          Game.Point, Game.PrevPoint, Game.PrevPrevPoint})
    fold.Add(value);
}

void AddTallies(Fold& fold) {
  fold.Add(Game.RollCount);
  fold.Add(Game.RollsSince);
  fold.Add(Game.ShooterEvent);
  fold.Add(Game.ShooterEventPrev);
  fold.Add(Game.ShooterSince);
  fold.Add(Game.ShooterSincePrev);
  fold.Add(Game.RollGapTally);
  fold.Add(Game.BetWagers);
  fold.Add(Game.BetWins);
  fold.Add(Game.BetLosses);
  fold.Add(Game.BankrollHistory);
  fold.Add(Game.BankrollAverage);
  fold.Add(Game.BankrollHistoryCount);
  fold.Add(Game.GraphPeriodHigh);
  fold.Add(Game.GraphPeriodLow);
  fold.Add(Game.GraphScale);
  fold.Add(Game.GraphTop);
}

std::uint64_t PlayAll() {
  Fold fold;
  for (int game = 0; game < kGames; ++game) {
    Picks picks(static_cast<std::uint64_t>(game) + 1);
    Start(game, picks);
    for (int session = 0; session < kSessions; ++session) {
      LayBets(picks);
      PlaySession(game);
    }
    AddTable(fold);
    AddTallies(fold);
  }
  return fold.Value();
}

}  // namespace

/// With an argument the number must be that one: the exit code tells.
int main(int count, char** arguments) {
  TheHost = HeadlessHost();
  const std::uint64_t signature = PlayAll();
  std::printf("%016llx\n", static_cast<unsigned long long>(signature));
  if (count < 2) return EXIT_SUCCESS;
  const bool same = std::strtoull(arguments[1], nullptr, 16) == signature;
  if (!same) std::printf("The kept signature is %s: the game has changed.\n", arguments[1]);
  return same ? EXIT_SUCCESS : EXIT_FAILURE;
}
