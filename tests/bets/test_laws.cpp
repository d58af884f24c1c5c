// Laws of the table, over long random play: whatever the rules and whatever is asked for, money is
// neither made nor lost on the way.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

#include "bets/bankroll.h"
#include "bets/bet_history.h"
#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/consistency.h"
#include "bets/forecast.h"
#include "bets/headless_host.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "bets/settle.h"
#include "bets/vig.h"
#include "core/game_state.h"
#include "core/text.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "support/random_rules.h"
#include "support/same_game.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

/// What closing the configuration screen does.
void ApplyRules() {
  RefigureHeldVig();
  ReAdjustAllBets();
  if (Game.HyperDriveOn) return;
  ArrangeAllChips();
}

/// A new game under new rules, down to the chip values.
void BeginGame(unsigned seed) {
  Chance chance(seed);
  DrawChips(chance);
  DrawRules(chance);
  Game.NegBankroll = chance.OneIn(4);
  Game.BankrollInitAmt = Unit() * chance.Of({3, 60, 500, 500, 3000, 50'000});
  Game.BankrollAverageSpan = chance.Of({120, 30, 0});
  Game.UseSkewedProbability = chance.OneIn(4);
  Game.RngChoice = static_cast<int>(seed) % kGenerators;
  NewGame(false);
  SeedDice(chance.Between(1, 900'000));
}

// --- Random requests ---

Currency DrawAmount(Chance& chance) {
  const Currency unit = Unit();
  switch (chance.Below(12)) {
    case 0: return Hundredths(chance.Between(-5000, 5000));
    case 1: return Currency::FromRaw(chance.Between(-3, 3));
    case 2: return chance.Of({Currency(9'999'999), Currency(-9'999'999), Hundredths(-1)});
    case 3:
      // The most that a box of amounts takes, either way.
      return chance.Of({Currency::FromRaw(999'999'999'999'999'900),
                        Currency::FromRaw(-999'999'999'999'999'900)});
    case 4: return -(unit * chance.Between(1, 30));
    case 5: return unit * chance.Of({100, 250, 1000, 5000});
    default: return unit * chance.Of({1, 2, 3, 5, 6, 10, 12, 25, 30});
  }
}

/// Most play is on the bets that a player would make now.
int DrawBet(Chance& chance) {
  if (chance.OneIn(3)) return chance.Between(Lay4, LastBet);
  if (Game.Point == 0) return chance.Of({+PassLine, +PassLine, +DontPass, +Field, +Hard6});
  return chance.Of({+Come, +DontCome, +PassLineOdds, +DontPassOdds, chance.Between(Place4, Buy10),
                    chance.Between(Lay4, Lay10), chance.Between(Come4, Come10Odds),
                    chance.Between(DontCome4, DontCome10Odds)});
}

struct Request {
  std::string Name;
  bool OddsFollow = false;  // odds above what the flat bet now allows come down with it
};

void KeyIn(int betId, Currency amount) {
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = betId;
  Game.KeyedBetText = PlainText(amount);
  EnterKeyedBet();
  Game.KeyedBoxOpen = false;
}

Request AskForChange(Chance& chance) {
  const int betId = DrawBet(chance);
  const int kind = chance.Below(8);
  Currency amount = DrawAmount(chance);
  if (kind == 1) amount = chance.OneIn(5) ? Currency(0) : Abs(amount);
  if (kind == 2) amount = ChipValue(Game.ChipColor = chance.Between(1, 5));
  Game.ChangeRequest = amount;
  if (kind == 0) RemoveBet(betId);
  if (kind == 1) KeyIn(betId, amount);
  if (kind > 1) MakeBet(betId);
  return {BetName(betId) + " changed by " + MoneyText(amount) + ", kind " + std::to_string(kind),
          true};
}

Request AskForOther(Chance& chance) {
  const int betId = DrawBet(chance);
  const int kind = chance.Below(10);
  switch (kind) {
    case 0: BuyPlaceBet(betId); break;
    case 1: CallBet(betId, chance.Of({CallCodeOn, CallCodeOff})); break;
    case 2: TakeAllFullOdds(); break;
    case 3: LayAllFullOdds(); break;
    case 4: CallAllBets(chance.Of({CallCodeOn, CallCodeOff})); break;
    case 5:
      if (chance.OneIn(5)) RemoveAllBets();
      break;
    case 6:
      Game.ChangeRequest = DrawAmount(chance);
      MakeBet(chance.Between(FirstChipStack, LastSlot));
      break;
    case 7: AtmTransaction(AtmDeposit, Unit() * chance.Of({1, 20, 400, 40'000})); break;
    default:
      // Kept poor, so that the bankroll binds, but rarely broke.
      if (FreeMoney() < Unit() * 20) AtmTransaction(AtmWithdrawal, Unit() * chance.Of({50, 400}));
  }
  return {BetName(betId) + ", other request " + std::to_string(kind)};
}

Request AskForSomething(Chance& chance) {
  return chance.OneIn(4) ? AskForOther(chance) : AskForChange(chance);
}

// --- The laws ---

/// Wins less losses of all bets that had money.
Currency NetOfBetTables() {
  Currency net;
  for (int id = Lay4; id <= LastBet; ++id)
    net += Game.BetWins[Actual][id][StatSum] - Game.BetLosses[Actual][id][StatSum];
  return net;
}

int OddsOf(int betId) {
  if (betId == PassLine) return PassLineOdds;
  if (betId == DontPass) return DontPassOdds;
  return IsComeOnNumber(betId) || IsDontComeOnNumber(betId) ? betId + kOddsOffset : 0;
}

/// The largest amount that a bet may have now; leaves the record as it was.
Currency LargestBet(int betId) {
  const auto kept = std::pair(Game.MaxHere, Game.OddsMultiple);
  FigureMaxBet(betId);
  const Currency largest = Game.MaxHere;
  std::tie(Game.MaxHere, Game.OddsMultiple) = kept;
  return largest;
}

/// What the placards say in plain words, whatever the routines make of them.
bool IsWithinPlacard(int betId) {
  const double bet = Game.Bets[betId].ToDouble();
  const double wins = bet * (Game.Payoff[betId].Win / Game.Payoff[betId].Per);
  const bool dontOdds = betId == DontPassOdds || IsDontComeOdds(betId);
  const bool odds = dontOdds || betId == PassLineOdds || IsComeOdds(betId);
  // The ratio of a combination bet is that of its parts.
  if (betId == CAndE || betId == Horn || betId == World) return true;
  const bool byWin = dontOdds || IsLay(betId) || betId >= Hard4;
  const Currency limit = odds             ? Game.MaxOddsBet
                         : betId >= Hard4 ? Game.MaxPropPayoff
                                          : Game.MaxPlacard;
  return (byWin ? wins : bet) < limit.ToDouble() + 0.001;
}

bool IsWithinMaximum(int betId) {
  const Currency bet = Game.Bets[betId];
  if (IsContractBet(betId) && bet <= Game.ContractBets[betId]) return true;
  if (!IsWithinPlacard(betId)) return false;
  // On a point of 8 the multiple is that of the odds last figured, whichever they were.
  if ((betId == PassLineOdds || betId == DontPassOdds) && Game.Point == 8) return true;
  return bet <= LargestBet(betId);
}

/// The table and bankroll before a request or a roll, and what must hold after it. Each check gives
/// the law that was broken, or an empty text.
class Before {
 public:
  std::string AfterRequest(const Request& request) const {
    for (int id = Lay4; id <= LastBet; ++id) {
      if (Game.Bets[id] == bets_[id]) continue;
      if (!IsWithinMaximum(id)) return BetName(id) + " is above its maximum";
      const int odds = OddsOf(id);
      const bool follow = request.OddsFollow && odds != 0 && (IsOnNumber(id) || Game.Point != 0);
      if (follow && !IsWithinMaximum(odds)) return BetName(odds) + " is above its maximum";
    }
    if (Game.TotalOnTable > total_ && !IsCovered()) return "the bankroll doesn't cover a raise";
    return AfterAll();
  }

  std::string AfterRoll() const {
    Currency moved;
    for (int id = Lay4; id <= LastBet; ++id) {
      if (Game.BetWagers[Actual][id][StatCount] > decisions_[id] + 1)
        return BetName(id) + " was decided twice";
      const bool decided = Game.BetWagers[Actual][id][StatCount] != decisions_[id];
      if (decided != (Game.BetWagers[Actual][id][StatRollCount] == 1))
        return BetName(id) + ": the tables disagree about this roll";
      const Currency net =
          Game.BetWins[Actual][id][StatRollAmount] - Game.BetLosses[Actual][id][StatRollAmount];
      if (!IsWhole(net / Unit())) return BetName(id) + " wasn't paid in whole Units";
      moved += net;
    }
    if (Bankroll() != bets_[BankrollIndex] + moved) return "the bankroll moved by itself";
    return AfterAll();
  }

 private:
  static bool IsOnNumber(int id) { return IsComeOnNumber(id) || IsDontComeOnNumber(id); }
  static bool IsCovered() { return Game.NegBankroll || Game.TotalOnTable <= Bankroll(); }

  std::string AfterAll() const {
    if (covered_ && !IsCovered()) return "the money on the table exceeds the bankroll";
    if (Bankroll() - Game.InvestedBankroll != NetOfBetTables())
      return "the bankroll isn't what was brought and won";
    return {};
  }

  static std::array<Currency, kBetSlots> Decisions() {
    std::array<Currency, kBetSlots> decisions{};
    for (int id = Lay4; id <= LastBet; ++id) decisions[id] = Game.BetWagers[Actual][id][StatCount];
    return decisions;
  }

  std::array<Currency, kSlots> bets_ = Game.Bets;
  std::array<Currency, kBetSlots> decisions_ = Decisions();
  Currency total_ = Game.TotalOnTable;
  bool covered_ = IsCovered();
};

/// All that a player's commands may change, and their undoing must bring back.
auto BetsNow() {
  std::array<int, LastBet + 1> working{};
  for (int id = Lay4; id <= LastBet; ++id)
    if (Game.Bets[id] != 0) working[id] = Game.BetWorking[id];
  return std::tuple(Game.Bets, Game.BuyVigHeld, Game.LayVigHeld, Game.TotalOnTable, working);
}

/// A command that has a way back; money through the ATM and Chip-Stacks have none.
void GiveCommand(Chance& chance) {
  const int betId = DrawBet(chance);
  switch (chance.Below(16)) {
    case 0: BuyPlaceBet(betId); break;
    case 1: CallBet(betId, chance.Of({CallCodeOn, CallCodeOff})); break;
    case 2: TakeAllFullOdds(); break;
    case 3: LayAllFullOdds(); break;
    case 4: RepeatBets(); break;
    case 5: DoubleBets(); break;
    case 6: ClearBets(); break;
    case 7: CallAllBets(CallCodeOff); break;
    default: AskForChange(chance);
  }
  NoteCommand();
}

// --- Games ---

constexpr int kRollsPerGame = 250;
constexpr int kRollsPerRules = 50;

/// What a game left behind: the table after every run of rolls, and the counters at its end.
struct GameRecord {
  std::vector<TableState> Runs;
  Tallies Counters;
  GraphState Graph;
  int RngState = 0;
  std::string Log;
};

void ExpectSameGame(const GameRecord& a, const GameRecord& b) {
  ASSERT_EQ(a.Runs.size(), b.Runs.size());
  for (std::size_t run = 0; run < a.Runs.size(); ++run)
    ASSERT_TRUE(FieldsOf(a.Runs[run]) == FieldsOf(b.Runs[run])) << "after run " << run + 1;
  ASSERT_TRUE(FieldsOf(a.Counters) == FieldsOf(b.Counters));
  ASSERT_TRUE(FieldsOf(a.Graph) == FieldsOf(b.Graph));
  ASSERT_EQ(a.RngState, b.RngState);
  ASSERT_EQ(a.Log, b.Log);
}

class Laws : public ::testing::Test {
 protected:
  void SetUp() override {
    LayDownDefaults();
    TheHost = HeadlessHost();
    Game.DataPath = folder_ / "";
    Game.EventsLogFile = folder_ / "log.txt";
  }
  void TearDown() override {
    TheHost = HeadlessHost();
    Game.DataPath.clear();
    LayDownDefaults();
  }

  /// Plays one game and holds every request and roll against the laws. Someone presses the buttons
  /// of the settle screen as they come.
  void PlayUnderLaws(unsigned seed) {
    Chance chance(seed + 1000);
    TheHost.ShowSettleScreen = [&chance] { PressSettleButton(chance.Below(7)); };
    BeginGame(seed);
    for (int roll = 1; roll <= kRollsPerGame && !IsBankBroken(); ++roll) {
      SCOPED_TRACE("game " + std::to_string(seed) + ", roll " + std::to_string(roll));
      if (roll % kRollsPerRules == 0) {
        DrawRules(chance);
        ApplyRules();
      }
      for (int requests = chance.Below(8); requests > 0; --requests) {
        const Before before;
        const Request request = AskForSomething(chance);
        ASSERT_EQ(before.AfterRequest(request), "") << request.Name;
      }
      if (IsBankBroken()) break;
      const Before before;
      RollDice();
      ASSERT_EQ(Game.LastErrorText, "");
      ASSERT_EQ(Game.RollCount[0], roll);
      ASSERT_EQ(before.AfterRoll(), "") << "by " << Game.Die1 << "-" << Game.Die2;
      const unsigned noted =
          Game.HyperDriveOn ? 0 : std::min(static_cast<unsigned>(roll), kRollNotes);
      ASSERT_EQ(Game.LastRolls.size(), noted);
      ASSERT_EQ(roll % 16 == 0 ? FirstInconsistency() : std::string(), "");
    }
    for (int id = Lay4; id <= LastBet; ++id) {
      if (Game.BetWins[Actual][id][StatCount] > 0) won_.insert(id);
      if (Game.BetLosses[Actual][id][StatCount] > 0) lost_.insert(id);
    }
  }

  /// Calls `look` at `tables` tables of random games, a few rolls apart.
  template <typename Look>
  void LookAtTables(int tables, unsigned seed, Look look) {
    constexpr int kTablesOfAGame = 25;
    Chance chance(seed + 1000);
    TheHost.ShowSettleScreen = [&chance] { PressSettleButton(chance.Below(7)); };
    for (int table = 0; table < tables; ++table) {
      SCOPED_TRACE("table " + std::to_string(table));
      if (table % kTablesOfAGame == 0 || IsBankBroken()) BeginGame(seed++);
      if (FreeMoney() < Unit() * 20) AtmTransaction(AtmWithdrawal, Unit() * 400);
      RollForAWhile(chance.Between(1, 3));
      for (int requests = chance.Below(30); requests > 0; --requests) AskForChange(chance);
      if (chance.OneIn(3)) CallBet(DrawBet(chance), CallCodeOff);
      ForgetCommands();
      if (!IsBankBroken()) {
        ASSERT_NO_FATAL_FAILURE(look(chance));
      }
    }
  }

  /// Beyond the bank limit no dice are thrown.
  static bool IsBankBroken() { return Abs(Bankroll()) > kRollingLimit; }

  /// Plays one game, in runs of one roll or of many; `seed` tells rules, requests and dice.
  GameRecord Play(unsigned seed) const {
    constexpr int kRuns = 60;
    Chance chance(seed + 1000);
    Game.RngState = 0;  // the log tells what it was when it is seeded
    BeginGame(seed);
    GameRecord record;
    for (int run = 1; run <= kRuns; ++run) {
      if (run % 12 == 0) {
        DrawRules(chance);
        ApplyRules();
      }
      // Low limits keep the bank from being broken, which stops only Hyper-Drive at once.
      Game.MaxPlacard = std::min(Game.MaxPlacard, Unit() * 1000);
      for (int requests = chance.Below(8); requests > 0; --requests) AskForSomething(chance);
      RollForAWhile(chance.Of({1, 1, 1, 5, 40}));
      EXPECT_FALSE(IsBankBroken());
      EXPECT_EQ(Game.LastErrorText, "");
      record.Runs.push_back(Game);
    }
    record.Counters = Game;
    record.Graph = Game;
    record.RngState = Game.RngState;
    if (Game.EventsLogActive) record.Log = folder_.Read("log.txt");
    return record;
  }

  /// Plays one game under Hyper-Drive in long runs, in whose turns the rules may change.
  static GameRecord PlayLong(unsigned seed) {
    Chance chance(seed + 1000);
    BeginGame(seed);
    Game.LastTurnAt = Game.TurnOffers = 0;
    GameRecord record;
    TheHost.Milliseconds = [now = 0U]() mutable { return now += 10; };
    TheHost.Yield = [&] {
      EXPECT_EQ(FirstInconsistency(), "");
      record.Runs.push_back(Game);
      if (!chance.OneIn(6)) return;
      DrawRules(chance);
      ApplyRules();
      Game.HyperThrottle = 0;
    };
    for (int run = 0; run < 16; ++run) {
      Game.HandleWinningBets = chance.Of({1, 2, 2, 2, 3, 4, 5, 6, 7});
      Game.HandleLosingBets = chance.Of({1, 3, 3, 3, 2, 4, 5, 6, 7});
      Game.HyperThrottle = 0;
      Game.MaxPlacard = std::min(Game.MaxPlacard, Unit() * 1000);
      for (int requests = chance.Below(12); requests > 0; --requests) AskForSomething(chance);
      RollForAWhile(chance.Of({1, 40, 300, 1500, 6000}));
      EXPECT_EQ(Game.LastErrorText, "");
      record.Runs.push_back(Game);
    }
    record.Counters = Game;
    record.Graph = Game;
    TheHost = HeadlessHost();
    return record;
  }

  static void RollForAWhile(int rolls) {
    Game.AutoRollDice = true;
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    Game.KeepRolling = true;
    RollDice();
  }

  std::set<int> won_;
  std::set<int> lost_;
  const ScratchFolder folder_{"laws"};
};

TEST_F(Laws, HoldAtTheTableAndUnderHyperDrive) {
  for (const bool hyperDrive : {false, true}) {
    won_.clear();
    lost_.clear();
    Game.HyperDriveOn = hyperDrive;
    for (unsigned seed = 0; seed < 64; ++seed)
      ASSERT_NO_FATAL_FAILURE(PlayUnderLaws(seed + (hyperDrive ? 100 : 0)));
    // A law that nothing was held against is no law.
    EXPECT_EQ(lost_.size(), static_cast<std::size_t>(LastBet));
    EXPECT_GT(won_.size(), 75U);  // a hop may have no luck
  }
}

TEST_F(Laws, HyperDrivePlaysTheSameGameAndANewGameRemembersNothing) {
  for (unsigned seed = 200; seed < 216; ++seed) {
    SCOPED_TRACE("game " + std::to_string(seed));
    Game.HyperDriveOn = false;
    LogEverything();
    Game.ClearLogOnNew = true;
    Game.ReSeed = false;
    Game.EventsLogActive = seed % 8 == 0;
    const GameRecord atTheTable = Play(seed);
    ASSERT_EQ(atTheTable.Log.empty(), !Game.EventsLogActive);
    Play(seed + 100);
    ASSERT_NO_FATAL_FAILURE(ExpectSameGame(atTheTable, Play(seed)));
    Game.HyperDriveOn = true;
    for (const bool known : {false, true}) {
      Game.KnownRollsOn = known;
      ASSERT_NO_FATAL_FAILURE(ExpectSameGame(atTheTable, Play(seed)));
    }
  }
}

TEST_F(Laws, KnownRollsAreTheRollsThatTheyStandFor) {
  Game.HyperDriveOn = true;
  Game.ReSeed = false;
  for (unsigned seed = 300; seed < 364; ++seed) {
    SCOPED_TRACE("game " + std::to_string(seed));
    Game.KnownRollsOn = false;
    const GameRecord inFull = PlayLong(seed);
    Game.KnownRollsOn = true;
    ASSERT_NO_FATAL_FAILURE(ExpectSameGame(inFull, PlayLong(seed)));
  }
}

TEST_F(Laws, ACalledBetIsNoLongerCalledOnceAKnownDecisionHasTakenItDown) {
  Game.HyperDriveOn = true;
  Game.HandleLosingBets = LossNoBet;
  for (int loss = 0; loss < 4; ++loss) {  // the first is learnt
    RequestChange(Place6, Unit() * 12);
    Game.BetWorking[Place6] = CalledOn;
    RollNamedDice(3, 4);
    ASSERT_EQ(Game.Bets[Place6], 0);
    ASSERT_EQ(Game.BetWorking[Place6], Game.ComeOutWorking[Place6]) << loss;
  }
}

TEST_F(Laws, PartsOfTheTableSeeWhatTheOthersLeave) {
  Game.HyperDriveOn = Game.AllowPutBets = Game.AutoTakeFullOdds = Game.AutoLayFullOdds = true;
  std::tie(Game.OddsAllowed410, Game.OddsAllowed59, Game.OddsAllowed68) = std::tuple(3, 4, 5);
  Game.ReSeed = false;
  Game.HandleWinningBets = WinSameBet;
  for (const auto& [removePlace, mayBeShort] :
       {std::pair(false, false), {true, false}, {false, true}}) {
    Game.AutoRemovePlace = removePlace;
    Game.NegBankroll = !mayBeShort;
    Game.HandleLosingBets = mayBeShort ? LossDoubleBet : LossNoBet;
    std::vector<std::vector<TableState>> games;
    for (const bool known : {false, true}) {
      Game.KnownRollsOn = known;
      Chance chance(7);
      NewGame(false);
      SeedDice(7);
      auto& runs = games.emplace_back();
      for (int run = 0; run < 1500; ++run) {
        if (mayBeShort) Game.Bets[BankrollIndex] = Unit() * chance.Of({200, 300, 500, 50'000});
        for (const int bet : {+PassLine, +DontPass, +Come, +DontCome, +Place6, +Place8, +Buy5})
          RequestChange(bet, Unit() * (bet >= PassLine || chance.OneIn(2) ? 20 : -20));
        TakeAllFullOdds();
        LayAllFullOdds();
        // Line odds that are off look at two of the Buy bets.
        for (const int odds : {PassLineOdds, DontPassOdds}) Game.BetWorking[odds] = CalledOff;
        RollForAWhile(chance.Between(3, 30));
        runs.push_back(Game);
      }
    }
    for (std::size_t run = 0; run < games[0].size(); ++run)
      ASSERT_EQ(FieldsOf(games[0][run]), FieldsOf(games[1][run])) << run << removePlace;
  }
}

/// The row of a forecast that a throw belongs to.
const ForecastRow& RowOf(const std::vector<ForecastRow>& rows, int die1, int die2) {
  const ForecastRow* found = nullptr;
  for (const ForecastRow& row : rows) {
    if (row.Total != die1 + die2) continue;
    const bool named = row.Die1 == die1 && row.Die2 == die2;
    if (named || found == nullptr) found = &row;
    if (named) break;
  }
  return *found;
}

TEST_F(Laws, WhatAThrowWouldBringIsWhatItBrings) {
  Currency decided;
  TheHost.BetDecided = [&](int, Currency, Currency net) { decided += net; };
  LookAtTables(500, 700, [&](Chance&) {
    std::vector<char> bytes(sizeof Game);
    std::memcpy(bytes.data(), static_cast<const void*>(&Game), sizeof Game);
    const std::vector<ForecastRow> rows = ForecastRolls();
    ASSERT_EQ(std::memcmp(bytes.data(), static_cast<const void*>(&Game), sizeof Game), 0);
    const auto before = std::make_unique<GameState>(Game);
    int ways = 0;
    Currency mean;
    for (const ForecastRow& row : rows) {
      ways += row.Ways;
      mean += row.Net * row.Ways;
    }
    ASSERT_EQ(ways, 36);
    ASSERT_NEAR(MeanOfForecast(rows).ToDouble(), mean.ToDouble() / 36, 0.0001);
    for (int low = 1; low <= 6; ++low)
      for (int high = low; high <= 6; ++high) {
        const Currency net = NetIfRolled(low, high);
        decided = 0;
        RollNamedDice(high, low);
        ASSERT_EQ(net, decided) << low << "-" << high;
        ASSERT_EQ(net, Bankroll() - before->Bets[BankrollIndex]);
        ASSERT_EQ(Game.LastRolls.front(), (RollNote{high, low, before->Point, Game.Point, net}));
        Game = *before;
        const ForecastRow& row = RowOf(rows, low, high);
        const bool ofTotal = row.Die1 == 0 || (row.Die1 == low && row.Die2 == high);
        ASSERT_TRUE(ofTotal || net == row.Net) << low << "-" << high;
        if (rows.size() == 11) {
          ASSERT_EQ(row.Net, net);
        }
      }
  });
}

/// The bet that can't go back to what a roll left there, or 0: a contract bet below its contract, a
/// bet of the dark side above it, or else odds without their flat bet or point.
int BetThatStays(const BetStep& step) {
  int odds = 0;
  for (int id = Lay4; id <= LastBet; ++id) {
    const Currency former = step.Before.Bets[id];
    const Currency now = step.After.Bets[id];
    const bool late = (id == DontPass && Game.Point != 0) || IsDontComeOnNumber(id);
    if (IsContractBet(id) && former < now && former < Game.ContractBets[id]) return id;
    if (late && former > now && former > Game.ContractBets[id]) return id;
    if (!IsOddsBet(id) || former <= now || odds != 0) continue;
    const bool line = id == PassLineOdds || id == DontPassOdds;
    const int flat = !line ? id - kOddsOffset : id == PassLineOdds ? +PassLine : +DontPass;
    if (step.Before.Bets[flat] == 0 || (line && Game.Point == 0)) odds = id;
  }
  return odds;
}

TEST_F(Laws, CommandsSinceTheThrowAreUndoneAndComeBack) {
  int steps = 0;
  LookAtTables(700, 800, [&](Chance& chance) {
    const auto atThrow = BetsNow();
    for (int commands = chance.Below(12); commands > 0; --commands) GiveCommand(chance);
    const auto now = BetsNow();
    int undone = 0;
    for (; CanUndo(); ++undone) {
      const int refused = BetThatStays(Game.UndoSteps.back());
      ASSERT_EQ(UndoCommand(), refused);
      ASSERT_EQ(FirstInconsistency(), "");
      if (refused != 0) return;
    }
    ASSERT_TRUE(BetsNow() == atThrow) << undone << " steps";
    for (int redone = 0; redone < undone; ++redone) {
      ASSERT_TRUE(CanRedo());
      ASSERT_EQ(RedoCommand(), 0);
    }
    ASSERT_TRUE(BetsNow() == now);
    ASSERT_FALSE(CanRedo());
    ASSERT_EQ(FirstInconsistency(), "");
    steps += undone;
    RollDice();
    ASSERT_FALSE(CanUndo());
  });
  EXPECT_GT(steps, 1000);
}

TEST_F(Laws, RepeatAsksForWhatLayThereAndNothingIsTold) {
  int repeated = 0;
  LookAtTables(200, 900, [&](Chance& chance) {
    RollDice();
    if (IsBankBroken()) return;
    if (chance.OneIn(2)) ClearBets();
    ForgetCommands();
    TheHost.ShowMessage = [](bool) { FAIL() << Game.MsgText; };
    const auto before = Game.Bets;
    const bool can = CanRepeat();
    RepeatBets();
    for (int id = Lay4; id <= LastBet; ++id)
      ASSERT_LE(Game.Bets[id], std::max(before[id], Game.BetsAtRoll[id])) << BetName(id);
    if (!can) {
      ASSERT_FALSE(CanUndo());
    }
    ASSERT_LE(Game.UndoSteps.size(), 1U);
    repeated += CanUndo();
    const auto doubled = Game.Bets;
    DoubleBets();
    for (int id = Lay4; id <= LastBet; ++id) {
      ASSERT_GE(Game.Bets[id], doubled[id]);
      if (Game.Bets[id] > doubled[id]) {
        ASSERT_TRUE(IsWithinMaximum(id)) << BetName(id);
      }
    }
    ASSERT_LE(Game.UndoSteps.size(), 2U);
    TheHost.ShowMessage = HeadlessHost().ShowMessage;
  });
  EXPECT_GT(repeated, 50);
}

TEST_F(Laws, ARunEndsAtThePlayersLimits) {
  Game.AutoRollDice = true;
  Game.Pace = 600;
  const auto resultNow = [] { return Bankroll() - Game.InvestedBankroll; };
  std::set<int> ends;
  for (unsigned seed = 1; seed <= 24; ++seed) {
    Game.HyperDriveOn = false;
    Game.StopLoss = 100;
    Game.WinGoal = 150;
    NewGame(false);
    SeedDice(static_cast<int>(seed));
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
    Game.HyperDriveOn = seed % 2 == 0;
    Game.ChangeRequest = 20;
    MakeBet(Field);
    std::vector<Currency> results = {0};
    std::uint32_t began = TheHost.Milliseconds();
    TheHost.RefreshViews = [&] {
      results.push_back(resultNow());
      if (results.size() > 2) {
        EXPECT_GE(TheHost.Milliseconds() - began, 600U);
      }
      began = TheHost.Milliseconds();
    };
    Game.KeepRolling = true;
    RollDice();
    ASSERT_FALSE(Game.KeepRolling);
    ASSERT_TRUE(resultNow() <= -100 || resultNow() >= 150) << resultNow().ToDouble();
    ASSERT_EQ(Game.RunEnd, resultNow() > 0 ? GoalReached : LossReached);
    ASSERT_EQ(Game.StopMessage.empty(), !Game.HyperDriveOn);
    ends.insert(Game.RunEnd);
    for (std::size_t roll = 0; roll + 1 < results.size(); ++roll)
      ASSERT_TRUE(results[roll] > -100 && results[roll] < 150);
  }
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(Laws, AveragesMeetTheExactOdds) {
  // The results of one decision of a bet, each with the number of ways to it.
  const std::map<int, std::vector<std::pair<double, double>>> bets = {
      {PassLine, {{1, 244}, {-1, 251}}},     {DontPass, {{1, 949}, {-1, 976}}},
      {Field, {{1, 14}, {2, 2}, {-1, 20}}},  {Seven, {{4, 1}, {-1, 5}}},
      {Place6, {{1.1667, 5}, {-1, 6}}},      {Hard8, {{9, 1}, {-1, 10}}},
      {Buy10, {{1.95, 3}, {-1.05, 6}}},      {Lay4, {{0.475, 6}, {-1.025, 3}}},
      {Hop13, {{15, 1}, {-1, 17}}},          {Under7, {{1, 15}, {-1, 21}}},
      {Horn, {{6.75, 2}, {3, 4}, {-1, 30}}}, {CAndE, {{3, 4}, {7, 2}, {-1, 30}}},
  };
  constexpr int kRolls = 40'000;
  Game.HyperDriveOn = true;
  for (int generator = 0; generator < kGenerators; ++generator) {
    Game.RngChoice = generator;
    NewGame(false);
    SeedDice(4711 + generator);
    RollForAWhile(kRolls);
    ASSERT_EQ(Game.RollCount[0], kRolls);
    for (const auto& [bet, results] : bets) {
      double allWays = 0;
      double sum = 0;
      double squares = 0;
      for (const auto& [net, ways] : results) {
        allWays += ways;
        sum += ways * net;
        squares += ways * net * net;
      }
      const double mean = sum / allWays;
      const double decisions = Game.BetWagers[Phantom][bet][StatCount].ToDouble();
      ASSERT_GT(decisions, 0);
      const Currency net =
          Game.BetWins[Phantom][bet][StatSum] - Game.BetLosses[Phantom][bet][StatSum];
      EXPECT_NEAR(net.ToDouble() / decisions, mean,
                  5 * std::sqrt((squares / allWays - mean * mean) / decisions))
          << BetName(bet) << " with generator " << generator + 1;
    }
  }
}

}  // namespace
