#include "bets/decision_table.h"

#include <array>
#include <vector>

#include "bets/decide_bet.h"
#include "core/bets.h"

namespace {

/// Writes the steps of one throw.
class Writer {
 public:
  Writer(int prevPoint, int die1, int die2, int barDont)
      : point_(prevPoint), die1_(die1), die2_(die2), total_(die1 + die2), barDont_(barDont) {}

  std::vector<DecisionStep> Steps() {
    if (total_ == point_) MadePoint();
    RowOfTotal();
    EveryRoll();
    return std::move(steps_);
  }

 private:
  void Add(StepKind kind) { steps_.push_back({kind}); }
  void Decide(int bet, DecisionCode code) {
    steps_.push_back(
        {StepKind::Decide, static_cast<unsigned char>(bet), 0, static_cast<signed char>(code)});
  }
  void Win(int bet) {
    if (IsHop(bet)) wonHop_ = bet;
    Decide(bet, FlatWins);
  }
  void Lose(int bet) { Decide(bet, FlatLoses); }
  void WinAll(std::initializer_list<int> bets) {
    for (const int bet : bets) Win(bet);
  }
  void LoseRange(int first, int last) {
    for (int bet = first; bet <= last; ++bet) Lose(bet);
  }
  void Move(int from, int to) {
    steps_.push_back(
        {StepKind::Move, static_cast<unsigned char>(from), static_cast<unsigned char>(to)});
  }

  bool ComeOut() const { return point_ == 0; }
  bool Shows(int face) const { return die1_ == face || die2_ == face; }
  bool IsPair() const { return die1_ == die2_; }

  void MadePoint() {
    Add(StepKind::Pass);
    Win(PassLine);
    Decide(PassLineOdds, OddsWin);
    Lose(DontPass);
    Decide(DontPassOdds, OddsLose);
  }

  void NumberRow() {
    Lose(BetOnNumber(LayFamily, total_));
    Lose(BetOnNumber(DontComeFamily, total_));
    Decide(BetOnNumber(DontComeOddsFamily, total_), OddsLose);
    Win(BetOnNumber(ComeFamily, total_));
    Decide(BetOnNumber(ComeOddsFamily, total_), OddsWin);
    Win(BetOnNumber(PlaceFamily, total_));
    Win(BetOnNumber(BuyFamily, total_));
  }

  void MoveLineBets() {
    Move(DontCome, BetOnNumber(DontComeFamily, total_));
    Move(Come, BetOnNumber(ComeFamily, total_));
  }

  /// The come-out 2 or 12: the don't side wins when the other one is barred.
  void CrapsOut(int barredElsewhere) {
    Lose(Come);
    if (!ComeOut()) return;
    Lose(PassLine);
    if (barDont_ == barredElsewhere) {
      Add(StepKind::Miss);
      Win(DontPass);
    } else {
      Add(StepKind::Bar);
    }
  }

  void RowOfTwo() {
    CrapsOut(12);
    WinAll({Two, Craps, CAndE, Horn, World});
    if (barDont_ == 12) Win(DontCome);
  }

  void RowOfThree() {
    Lose(Come);
    if (ComeOut()) {
      Add(StepKind::Miss);
      Lose(PassLine);
      Win(DontPass);
    }
    WinAll({Three, Craps, CAndE, DontCome, Horn, World});
  }

  void RowOfHardWay(int hardBet, int hardHop, int easyHop) {
    NumberRow();
    if (IsPair()) {
      WinAll({hardBet, hardHop});
    } else {
      Lose(hardBet);
      Win(easyHop);
    }
    MoveLineBets();
  }

  void RowOfFive() {
    NumberRow();
    Win(Shows(1) ? Hop14 : Hop23);
    MoveLineBets();
  }

  void RowOfSix() {
    NumberRow();
    Win(Big6);
    if (IsPair())
      WinAll({Hard6, Hop33});
    else
      Lose(Hard6);
    if (Shows(1)) Win(Hop15);
    if (Shows(2)) Win(Hop24);
    MoveLineBets();
  }

  void RowOfSeven() {
    Add(ComeOut() ? StepKind::Pass : StepKind::Miss);
    Lose(DontCome);
    LoseRange(Big6, Big8);
    LoseRange(Hard4, Hard10);
    LoseRange(Place4, Buy10);
    for (int come = Come4; come <= Come10; ++come) {
      Lose(come);
      Decide(come + kOddsOffset, OddsLose);
    }
    LineBetsOnSeven();
    for (int lay = Lay4; lay <= Lay10; ++lay) Win(lay);
    for (int dontCome = DontCome4; dontCome <= DontCome10; ++dontCome) {
      Win(dontCome);
      Decide(dontCome + kOddsOffset, OddsWin);
    }
    WinAll({Come, Seven, World});
    if (Shows(1)) Win(Hop16);
    if (Shows(2)) Win(Hop25);
    if (Shows(3)) Win(Hop34);
  }

  void LineBetsOnSeven() {
    if (ComeOut()) {
      Lose(DontPass);
      Win(PassLine);
      return;
    }
    Lose(PassLine);
    Decide(PassLineOdds, OddsLose);
    Win(DontPass);
    Decide(DontPassOdds, OddsWin);
  }

  void RowOfEight() {
    NumberRow();
    Win(Big8);
    if (IsPair())
      WinAll({Hard8, Hop44});
    else
      Lose(Hard8);
    if (Shows(2)) Win(Hop26);
    if (Shows(3)) Win(Hop35);
    MoveLineBets();
  }

  void RowOfNine() {
    NumberRow();
    Win(Shows(3) ? Hop36 : Hop45);
    MoveLineBets();
  }

  void RowOfEleven() {
    Lose(DontCome);
    if (ComeOut()) {
      Add(StepKind::Pass);
      Add(StepKind::LogNatural);
      Win(PassLine);
      Lose(DontPass);
    }
    WinAll({Eleven, CAndE, Come, Horn, World});
  }

  void RowOfTwelve() {
    CrapsOut(2);
    WinAll({Twelve, Craps, CAndE, Horn, World});
    if (barDont_ == 2) Win(DontCome);
  }

  void RowOfTotal() {
    switch (total_) {
      case 2: return RowOfTwo();
      case 3: return RowOfThree();
      case 4: return RowOfHardWay(Hard4, Hop22, Hop13);
      case 5: return RowOfFive();
      case 6: return RowOfSix();
      case 7: return RowOfSeven();
      case 8: return RowOfEight();
      case 9: return RowOfNine();
      case 10: return RowOfHardWay(Hard10, Hop55, Hop46);
      case 11: return RowOfEleven();
      default: return RowOfTwelve();
    }
  }

  void EveryRoll() {
    Win(Field);
    constexpr std::array<std::array<int, 2>, 5> kOneTotal = {
        {{Two, 2}, {Three, 3}, {Seven, 7}, {Eleven, 11}, {Twelve, 12}}};
    for (const auto& [bet, total] : kOneTotal)
      if (total_ != total) Lose(bet);
    if (total_ >= 4 && total_ <= 11) Lose(Craps);
    if (total_ >= 4 && total_ <= 10) {
      Lose(CAndE);
      Lose(Horn);
    }
    if (IsPointNumber(total_)) Lose(World);
    if (total_ < 8) Lose(Over7);
    if (total_ > 7) Win(Over7);
    if (total_ > 6) Lose(Under7);
    if (total_ < 7) Win(Under7);
    for (int hop = Hop13; hop <= Hop55; ++hop)
      if (hop != wonHop_) Lose(hop);
  }

  int point_;
  int die1_;
  int die2_;
  int total_;
  int barDont_;
  int wonHop_ = 0;
  std::vector<DecisionStep> steps_;
};

bool IsOfShooter(const DecisionStep& step) {
  return step.Kind != StepKind::Decide && step.Kind != StepKind::Move;
}

/// The steps of every throw, one behind the other; the two orders of a pair of dice share theirs.
class Table {
 public:
  Table() {
    std::vector<std::size_t> starts;
    ForEachThrow([&](ThrowSteps& entry, const std::vector<DecisionStep>& steps) {
      starts.push_back(steps_.size());
      steps_.insert(steps_.end(), steps.begin(), steps.end());
      FindPlaces(entry, steps);
    });
    // Only now do the steps lie still.
    auto start = starts.begin();
    ForEachThrow([&](ThrowSteps& entry, const auto&) { entry.Steps = &steps_[*start++]; });
  }

  const ThrowSteps& Of(int prevPoint, int die1, int die2, int barDont) const {
    const auto point = static_cast<unsigned>(
        prevPoint == 0 ? 0 : BetOnNumber(PlaceFamily, prevPoint) - Place4 + 1);
    const auto throwIndex = static_cast<unsigned>(FieldCombination(die1, die2));
    return entries_[barDont == 2 ? 0 : 1][point][throwIndex];
  }

 private:
  template <typename Action>
  void ForEachThrow(Action action) {
    for (unsigned bar = 0; bar < 2; ++bar)
      for (unsigned point = 0; point < kPoints; ++point)
        for (int low = 1; low <= 6; ++low)
          for (int high = low; high <= 6; ++high) {
            const int prevPoint = point == 0 ? 0 : kPointNumbers[point - 1];
            action(entries_[bar][point][static_cast<unsigned>(FieldCombination(low, high))],
                   Writer(prevPoint, low, high, bar == 0 ? 2 : 12).Steps());
          }
  }

  static void FindPlaces(ThrowSteps& entry, const std::vector<DecisionStep>& steps) {
    entry.Count = static_cast<unsigned>(steps.size());
    for (unsigned place = 0; place < entry.Count; ++place) {
      const unsigned bet = steps[place].Bet;
      if (IsOfShooter(steps[place])) {
        entry.Shooter[place / 64] |= std::uint64_t{1} << place % 64;
      } else {
        entry.Bets[bet / 64] |= std::uint64_t{1} << bet % 64;
        entry.PlaceOf[bet] = static_cast<unsigned char>(place);
      }
    }
  }

  static constexpr unsigned kPoints = 7;
  static constexpr unsigned kThrows = 22;
  std::vector<DecisionStep> steps_;
  std::array<std::array<std::array<ThrowSteps, kThrows>, kPoints>, 2> entries_{};
};

const Table kAllSteps;

}  // namespace

std::span<const DecisionStep> DecisionsOf(int prevPoint, int die1, int die2, int barDont) {
  const ThrowSteps& steps = kAllSteps.Of(prevPoint, die1, die2, barDont);
  return {steps.Steps, steps.Count};
}

const ThrowSteps& StepsOfThrow(int prevPoint, int die1, int die2, int barDont) {
  return kAllSteps.Of(prevPoint, die1, die2, barDont);
}
