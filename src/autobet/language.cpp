#include "autobet/language.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "core/script_state.h"

namespace {

constexpr ListItem kSeparator = {0, kSeparatorText};

template <std::size_t... Sizes>
constexpr auto Joined(const std::array<ListItem, Sizes>&... parts) {
  std::array<ListItem, (Sizes + ...)> all{};
  auto at = all.begin();
  ((at = std::copy(parts.begin(), parts.end(), at)), ...);
  return all;
}

/// Keeps a text that is made, not written in a table, for as long as the program runs.
std::string_view Kept(std::string text) {
  static std::deque<std::string> texts;
  return texts.emplace_back(std::move(text));
}

std::string WithFirstLetter(std::string_view text, int (*change)(int)) {
  std::string changed(text);
  if (!changed.empty()) {
    changed[0] = static_cast<char>(change(static_cast<unsigned char>(changed[0])));
  }
  return changed;
}

using List = std::vector<ListItem>;

void Append(List& list, std::span<const ListItem> items) {
  list.insert(list.end(), items.begin(), items.end());
}

// --- Start lines ---

constexpr ListItem kStartConditions[] = {
    {WhenLine, "When . . ."},        {WhileLine, "While . . ."},
    {AndWhenLine, "and when . . ."}, {AndWhileLine, "and while . . ."},
    {OrWhenLine, "or when . . ."},   {OrWhileLine, "or while . . ."},
    {XorWhenLine, "xor when . . ."}, {XorWhileLine, "xor while . . ."},
};

constexpr ListItem kStartActions[] = {
    {ThenLine, "then . . ."}, {ElseLine, "else . . ."}, {DoThisLine, "Do this . . ."}};

// --- Subjects ---

constexpr ListItem kSimpleSubjects[] = {
    {InitializingSubject, "Initializing Auto-Bet"},
    kSeparator,
    {EachRoll, "On each roll"},
    {GameRolls, "The # of rolls in the game"},
    {ThisShooterRolls, "The # of rolls for this shooter"},
    {LastShooterRollsSubject, "The # of rolls for the last shooter"},
    kSeparator,
    {NextIsComeOut, "Next roll is a come-out roll"},
    {NextIsNotComeOut, "Next roll is NOT a come-out roll"},
    {LastWasComeOut, "Last roll was a come-out roll"},
    {LastWasNotComeOut, "Last roll was NOT a come-out roll"},
    kSeparator,
    {PointEstablished, "A point is established on"},
    {PointNotEstablished, "A point is NOT established on"},
    {PointDecided, "A point is decided \"for\" or \"against\""},
    {PointDecidedFor, "A point is decided \"for\""},
    {PointDecidedAgainst, "A point is decided \"against\""},
    kSeparator,
    {EachPass, "On each pass"},
    {GamePasses, "The # of passes in the game"},
    {ThisShooterPasses, "The # of passes for this shooter"},
    {LastShooterPassesSubject, "The # of passes for the last shooter"},
    kSeparator,
    {EachMiss, "On each miss"},
    {GameMisses, "The # of misses in the game"},
    {ThisShooterMisses, "The # of misses for this shooter"},
    {LastShooterMissesSubject, "The # of misses for the last shooter"},
    kSeparator,
    {BankrollSubject, "Bankroll"},
    {AverageBankroll, "Average bankroll"},
    {AvailableSubject, "Available bankroll"},
    {SimulatedHours, "Simulated hours"},
    kSeparator,
    {AnswerWasYes, "Last answer was \"Yes\""},
    {AnswerWasNo, "Last answer was \"No\""},
    kSeparator,
    {OneFlag, "Flag"},
    {AnyFlag, "Any flag"},
    {AllFlags, "All flags"},
    {TrueFlags, "Total # of true flags"},
    {FalseFlags, "Total # of false flags"},
    kSeparator,
    {ChipStackSubject, "Chip-Stack #"},
    {ChipStackRef, "Chip-Stack ref #"},
};

constexpr ListItem kFirstCompared[] = {
    {BankrollSubject, "bankroll"},
    {AverageBankroll, "bankroll average"},
    {AvailableSubject, "bankroll available"},
    kSeparator,
    {ChipStackSubject, "Chip-Stack #"},
    {ChipStackRef, "Chip-Stack ref #"},
};

constexpr int kAnyStack = 1020;

constexpr BetGroup kGroups[] = {
    {kAnyStack, 1120, 1220, "Chip-Stack", {ChipStackBase, LastSlot - 1}},
    {1001, 1101, 1201, "bet", {Lay4, LastBet}},
    {1002, 1102, 1202, "Lay bet", {Lay4, Lay10}},
    {1003, 1103, 1203, "Don't Come bet", {DontCome4, DontCome10}},
    {1004, 1104, 1204, "Don't Come Odds bet", {DontCome4Odds, DontCome10Odds}},
    {1005, 1105, 1205, "Come bet", {Come4, Come10}},
    {1006, 1106, 1206, "Come Odds bet", {Come4Odds, Come10Odds}},
    {1007, 1107, 1207, "Place bet", {Place4, Place10}},
    {1008, 1108, 1208, "Buy bet", {Buy4, Buy10}},
};

constexpr ListItem kPointBets[] = {
    {PointLay, "Lay (shooter's point)"},
    {PointCome, "Come (shooter's point)"},
    {PointComeOdds, "Come Odds (shooter's point)"},
    {PointPlace, "Place (shooter's point)"},
    {PointBuy, "Buy (shooter's point)"},
};

constexpr ListItem kEvents[] = {
    {SubjectOf(Total2), "Number 2 (1-1)"},
    {SubjectOf(Throw12), "Number 3 (1-2)"},
    {SubjectOf(Throw21), "Number 3 (2-1)"},
    {SubjectOf(Total3), "Number 3 (1-2) or (2-1)"},
    {SubjectOf(Throw13), "Number 4 (1-3)"},
    {SubjectOf(Throw31), "Number 4 (3-1)"},
    {SubjectOf(Throw22), "Hard 4 (2-2)"},
    {SubjectOf(Either13), "Number 4 (1-3) or (3-1)"},
    {SubjectOf(Total4), "Any 4"},
    {SubjectOf(Throw14), "Number 5 (1-4)"},
    {SubjectOf(Throw41), "Number 5 (4-1)"},
    {SubjectOf(Throw23), "Number 5 (2-3)"},
    {SubjectOf(Throw32), "Number 5 (3-2)"},
    {SubjectOf(Either14), "Number 5 (1-4) or (4-1)"},
    {SubjectOf(Either23), "Number 5 (2-3) or (3-2)"},
    {SubjectOf(Total5), "Any 5"},
    {SubjectOf(Throw15), "Number 6 (1-5)"},
    {SubjectOf(Throw51), "Number 6 ((5-1)"},  // Required: the doubled bracket
    {SubjectOf(Throw24), "Number 6 (2-4)"},
    {SubjectOf(Throw42), "Number 6 (4-2)"},
    {SubjectOf(Throw33), "Hard 6 (3-3)"},
    {SubjectOf(Either15), "Number 6 (1-5) or (5-1)"},
    {SubjectOf(Either24), "Number 6 (2-4) or (4-2)"},
    {SubjectOf(Total6), "Any 6"},
    {SubjectOf(Throw16), "Number 7 (1-6)"},
    {SubjectOf(Throw61), "Number 7 (6-1)"},
    {SubjectOf(Throw25), "Number 7 (2-5)"},
    {SubjectOf(Throw52), "Number 7 (5-2)"},
    {SubjectOf(Throw34), "Number 7 (3-4)"},
    {SubjectOf(Throw43), "Number 7 (4-3)"},
    {SubjectOf(Either16), "Number 7 (1-6) or (6-1)"},
    {SubjectOf(Either25), "Number 7 (2-5) or (5-2)"},
    {SubjectOf(Either34), "Number 7 (3-4) or (4-3)"},
    {SubjectOf(Total7), "Any 7"},
    {SubjectOf(Throw26), "Number 8 (2-6)"},
    {SubjectOf(Throw62), "Number 8 (6-2)"},
    {SubjectOf(Throw35), "Number 8 (3-5)"},
    {SubjectOf(Throw53), "Number 8 (5-3)"},
    {SubjectOf(Throw44), "Hard 8 (4-4)"},
    {SubjectOf(Either26), "Number 8 (2-6) or (6-2)"},
    {SubjectOf(Either35), "Number 8 (3-5) or (5-3)"},
    {SubjectOf(Total8), "Any 8"},
    {SubjectOf(Throw36), "Number 9 (3-6)"},
    {SubjectOf(Throw63), "Number 9 (6-3)"},
    {SubjectOf(Throw45), "Number 9 (4-5)"},
    {SubjectOf(Throw54), "Number 9 (5-4)"},
    {SubjectOf(Either36), "Number 9 (3-6) or (6-3)"},
    {SubjectOf(Either45), "Number 9 (4-5) or (5-4)"},
    {SubjectOf(Total9), "Any 9"},
    {SubjectOf(Throw46), "Number 10 (4-6)"},
    {SubjectOf(Throw64), "Number 10 (6-4)"},
    {SubjectOf(Throw55), "Hard 10 (5-5)"},
    {SubjectOf(Either46), "Number 10 (4-6) or (6-4)"},
    {SubjectOf(Total10), "Any 10"},
    {SubjectOf(Throw56), "Number 11 (5-6)"},
    {SubjectOf(Throw65), "Number 11 (6-5)"},
    {SubjectOf(Total11), "Number 11 (5-6) or (6-5)"},
    {SubjectOf(Total12), "Number 12 (6-6)"},
    {SubjectOf(FieldNumbers), "Number 2,3,4,9,10,11,or 12"},
    {SubjectOf(PointNumbers), "Number 4,5,6,8,9,or 10"},
    {SubjectOf(ComeOutDecisions), "Number 2,3,7,11,or 12"},
    {SubjectOf(HornNumbers), "Number 2,3,11,or 12"},
    {SubjectOf(InsideNumbers), "Number 5,6,8,or 9"},
    {SubjectOf(OutsideNumbers), "Number 4,5,9,or 10"},
    {SubjectOf(CrapsNumbers), "Number 2,3,or 12"},
    {SubjectOf(LowPointNumbers), "Number 4,5,or 6"},
    {SubjectOf(HighPointNumbers), "Number 8,9,or 10"},
    {SubjectOf(TwoOrTwelve), "Number 2 or 12"},
    {SubjectOf(ThreeOrEleven), "Number 3 or 11"},
    {SubjectOf(FourOrTen), "Number 4 or 10"},
    {SubjectOf(FiveOrNine), "Number 5 or 9"},
    {SubjectOf(SixOrEight), "Number 6 or 8"},
    {SubjectOf(TwoOrThree), "Number 2 or 3"},
    {SubjectOf(ThreeOrTwelve), "Number 3 or 12"},
    {SubjectOf(SevenOrEleven), "Number 7 or 11"},
    {SubjectOf(ElevenOrTwelve), "Number 11 or 12"},
    {SubjectOf(FirstDie1), "Die 1, face 1"},
    {SubjectOf(FirstDie2), "Die 1, face 2"},
    {SubjectOf(FirstDie3), "Die 1, face 3"},
    {SubjectOf(FirstDie4), "Die 1, face 4"},
    {SubjectOf(FirstDie5), "Die 1, face 5"},
    {SubjectOf(FirstDie6), "Die 1, face 6"},
    {SubjectOf(SecondDie1), "Die 2, face 1"},
    {SubjectOf(SecondDie2), "Die 2, face 2"},
    {SubjectOf(SecondDie3), "Die 2, face 3"},
    {SubjectOf(SecondDie4), "Die 2, face 4"},
    {SubjectOf(SecondDie5), "Die 2, face 5"},
    {SubjectOf(SecondDie6), "Die 2, face 6"},
};

constexpr bool IsEvent(int subject) {
  return subject >= SubjectOf(Total2) && subject <= SubjectOf(SecondDie6);
}

void AppendGroup(List& list, const BetGroup& group, int (*firstLetter)(int)) {
  const std::string name(group.Name);
  list.push_back({group.Any, Kept(WithFirstLetter("any ", firstLetter) + name)});
  list.push_back({group.All, Kept(WithFirstLetter("all ", firstLetter) + name + "s")});
  list.push_back({group.Total, Kept(WithFirstLetter("total ", firstLetter) + name + "s")});
}

/// The bet groups, of which the Chip-Stacks follow directly on their single stacks.
void AppendGroups(List& list, int (*firstLetter)(int)) {
  for (const BetGroup& group : kGroups) {
    if (group.Any != kAnyStack) list.push_back(kSeparator);
    AppendGroup(list, group, firstLetter);
  }
}

void AppendPointAndSingleBets(List& list) {
  list.push_back(kSeparator);
  Append(list, kPointBets);
  list.push_back(kSeparator);
  for (int id = Lay4; id <= LastBet; ++id) {
    list.push_back({id, kBetNames[static_cast<unsigned>(id)]});
  }
}

List MakeConditionList() {
  List list;
  Append(list, kSimpleSubjects);
  AppendGroups(list, std::toupper);
  AppendPointAndSingleBets(list);
  list.push_back(kSeparator);
  Append(list, kEvents);
  return list;
}

List MakeCompareList() {
  List list;
  Append(list, kFirstCompared);
  AppendGroups(list, std::tolower);
  AppendPointAndSingleBets(list);
  return list;
}

// --- Operators ---

constexpr auto kHas = std::to_array<ListItem>({
    {HasWon, "has won"},
    {HasWonMore, "has won more than"},
    {HasNotWon, "has not won"},
    {HasWonLess, "has won less than"},
    {HasLost, "has lost"},
    {HasLostMore, "has lost more than"},
    {HasNotLost, "has not lost"},
    {HasLostLess, "has lost less than"},
});
constexpr auto kHave = std::to_array<ListItem>({
    {HasWon, "have won"},
    {HasWonMore, "have won more than"},
    {HasLost, "have lost"},
    {HasLostMore, "have lost more than"},
});
constexpr auto kRolled = std::to_array<ListItem>({
    {HasRolled, "has rolled"},
    {HasRolledMore, "has rolled more than"},
    {HasNotRolled, "has not rolled"},
    {HasRolledLess, "has rolled less than"},
    {HasRolledInLast, "has rolled in the last"},
    {HasNotRolledInLast, "has not rolled in the last"},
});
constexpr auto kIs = std::to_array<ListItem>({
    {EqualTo, "is equal to $"},
    {NotEqualTo, "is not equal to $"},
    {GreaterThan, "is greater than $"},
    {NotGreaterThan, "is not greater than $"},
    {LessThan, "is less than $"},
    {NotLessThan, "is not less than $"},
    {EqualToSubject, "is equal to"},
    {NotEqualToSubject, "is not equal to"},
    {GreaterThanSubject, "is greater than"},
    {NotGreaterThanSubject, "is not greater than"},
    {LessThanSubject, "is less than"},
    {NotLessThanSubject, "is not less than"},
});
constexpr auto kAreMoney = std::to_array<ListItem>({
    {EqualTo, "are equal to $"},
    {NotEqualTo, "are not equal to $"},
    {GreaterThan, "are greater than $"},
    {NotGreaterThan, "are not greater than $"},
    {LessThan, "are less than $"},
    {NotLessThan, "are not less than $"},
});
constexpr auto kAreCount = std::to_array<ListItem>({
    {EqualTo, "are equal to "},
    {NotEqualTo, "are not equal to "},
    {GreaterThan, "are greater than "},
    {NotGreaterThan, "are not greater than "},
    {LessThan, "are less than "},
    {NotLessThan, "are not less than "},
});
constexpr auto kAreSubject = std::to_array<ListItem>({
    {EqualToSubject, "are equal to"},
    {NotEqualToSubject, "are not equal to"},
    {GreaterThanSubject, "are greater than"},
    {NotGreaterThanSubject, "are not greater than"},
    {LessThanSubject, "are less than"},
    {NotLessThanSubject, "are not less than"},
});
constexpr auto kNumber = std::to_array<ListItem>({
    {NumberIs, "number"},
    {NumberMoreThan, "number more than"},
    {NumberLessThan, "number less than"},
});
constexpr auto kIsNamed =
    std::to_array<ListItem>({{IsNamed, "is named"}, {IsNotNamed, "is not named"}});
constexpr auto kAreNamed =
    std::to_array<ListItem>({{IsNamed, "are named"}, {IsNotNamed, "are not named"}});

constexpr auto kNumberChoices = std::to_array<ListItem>({
    {AnyNumber, "any number"},
    {34, "the number 4"},
    {35, "the number 5"},
    {36, "the number 6"},
    {38, "the number 8"},
    {39, "the number 9"},
    {40, "the number 10"},
    {41, "the number 5, 6, 8, or 9"},
    {42, "the number 4, 5, 9, or 10"},
    {43, "the number 4, 6, 8, or 10"},
    {44, "the number 4, 5, or 6"},
    {45, "the number 8, 9, or 10"},
    {46, "the number 4 or 10"},
    {47, "the number 5 or 9"},
    {48, "the number 6 or 8"},
});

constexpr std::uint16_t Numbers(std::initializer_list<int> numbers) {
  unsigned bits = 0;
  for (const int number : numbers) bits |= 1U << number;
  return static_cast<std::uint16_t>(bits);
}

/// The points of the number choices from `AnyNumber` on.
constexpr std::uint16_t kNumbersOfChoice[] = {
    Numbers({4, 5, 6, 8, 9, 10}),  // 31
    0,
    0,
    Numbers({4}),  // 34
    Numbers({5}),
    Numbers({6}),
    0,
    Numbers({8}),
    Numbers({9}),
    Numbers({10}),
    Numbers({5, 6, 8, 9}),  // 41
    Numbers({4, 5, 9, 10}),
    Numbers({4, 6, 8, 10}),
    Numbers({4, 5, 6}),
    Numbers({8, 9, 10}),
    Numbers({4, 10}),
    Numbers({5, 9}),
    Numbers({6, 8}),
};

constexpr auto kBetOperators = Joined(kHas, kIs);
constexpr auto kStackOperators = Joined(kIs, kIsNamed);
constexpr auto kAllBetsOperators = Joined(kHave, kAreMoney, kAreSubject);
constexpr auto kAllStacksOperators = Joined(kAllBetsOperators, kAreNamed);
constexpr auto kTotalOperators = Joined(kAllBetsOperators, kNumber);
constexpr auto kCountOperators = Joined(kAreCount, kAreSubject);

std::span<const ListItem> GroupOperators(const BetGroup& group, int subject) {
  const bool stacks = group.Any == kAnyStack;
  if (subject == group.Total) return kTotalOperators;
  if (subject == group.All && stacks) return kAllStacksOperators;
  if (subject == group.All) return kAllBetsOperators;
  if (stacks) return kStackOperators;
  return kBetOperators;
}

std::span<const ListItem> SimpleOperators(int subject) {
  switch (subject) {
    case PointEstablished:
    case PointNotEstablished:
    case PointDecided:
    case PointDecidedFor:
    case PointDecidedAgainst: return kNumberChoices;
    case BankrollSubject:
    case AverageBankroll:
    case AvailableSubject: return kIs;
    case SimulatedHours:
    case GameRolls:
    case ThisShooterRolls:
    case LastShooterRollsSubject:
    case GamePasses:
    case ThisShooterPasses:
    case LastShooterPassesSubject:
    case GameMisses:
    case ThisShooterMisses:
    case LastShooterMissesSubject: return kCountOperators;
    case TrueFlags:
    case FalseFlags: return kNumber;
    case ChipStackSubject:
    case ChipStackRef: return kStackOperators;
    default: return {};
  }
}

// --- Sources ---

constexpr ListItem kValueSources[] = {
    {DiceTotalSource, "dice total"},
    {Die1Source, "die 1"},
    {Die2Source, "die 2"},
    kSeparator,
    {GameRollsSource, "game rolls"},
    {ShooterRollsSource, "shooter rolls"},
    {GamePassesSource, "game passes"},
    {ShooterPassesSource, "shooter passes"},
    {GameMissesSource, "game misses"},
    {ShooterMissesSource, "shooter misses"},
    kSeparator,
    {HighestBankroll, "highest bankroll"},
    {BankrollSubject, "bankroll"},
    {LowestBankroll, "lowest bankroll"},
    {AverageBankroll, "average bankroll"},
    {AvailableSubject, "available bankroll"},
    kSeparator,
    {CurrentWagersCount, "total # of current wagers"},
    {CurrentWagersMoney, "total $ of current wagers"},
    {DecidedWagersCount, "total # of decided wagers"},
    {DecidedWagersMoney, "total $ of decided wagers"},
    kSeparator,
    {AllBets, "total bets"},
    {AllLayBets, "total Lay bets"},
    {1002, "total Don't Come bets"},
    {1003, "total Don't Come Odds bets"},
    {1004, "total Come bets"},
    {1005, "total Come Odds bets"},
    {AllPlaceBets, "total Place bets"},
    {InsidePlaceBets, "total inside Place bets"},
    {OutsidePlaceBets, "total outside Place bets"},
    {AllBuyBets, "total Buy bets"},
    kSeparator,
    {AllChipStacks, "total Chip-Stacks"},
    {ChipStackSubject, "Chip-Stack #"},
    {ChipStackRef, "Chip-Stack ref #"},
};

List MakeSourceList() {
  List list;
  Append(list, kValueSources);
  AppendPointAndSingleBets(list);
  return list;
}

// --- Targets ---

constexpr ListItem kBetTargets[] = {
    {AllBets, "all bets"},
    {AllLayBets, "all Lay bets"},
    {1002, "all Don't Come bets"},
    {1003, "all Don't Come Odds bets"},
    {1004, "all Come bets"},
    {1005, "all Come Odds bets"},
    {AllPlaceBets, "all Place bets"},
    {InsidePlaceBets, "all inside Place bets"},
    {OutsidePlaceBets, "all outside Place bets"},
    {AllBuyBets, "all Buy bets"},
};

constexpr ListItem kStackTargets[] = {
    kSeparator,
    {AllChipStacks, "all Chip-Stacks"},
    {ChipStackSubject, "Chip-Stack #"},
    {ChipStackRef, "Chip-Stack ref #"},
};

constexpr ListItem kWinningChoices[] = {
    {0, "Manual"},       {1, "Take Bet and Winnings"}, {2, "Same Bet - Take Winnings"},
    {3, "Press 1 Unit"}, {4, "Press Double"},          {5, "Parlay"},
};

constexpr ListItem kLosingChoices[] = {
    {0, "Manual"},   {1, "No Bet/Take Remainder (if any)"}, {2, "Bet Remainder (if any)"},
    {3, "Same Bet"}, {4, "Same Bet plus 1 Unit"},           {5, "Double Bet"},
};

List MakeBetTargets(bool withStacks) {
  List list;
  Append(list, kBetTargets);
  if (withStacks) Append(list, kStackTargets);
  AppendPointAndSingleBets(list);
  return list;
}

/// A roll event as something to act on: "number 3 (1-2) and (2-1)", "number group 4,5,6".
std::string EventAsTarget(std::string_view text) {
  constexpr std::string_view kNumberWord = "Number ";
  constexpr std::string_view kOr = "or ";
  const std::size_t at = text.find(kOr);
  std::string target = WithFirstLetter(text, std::tolower);
  if (at == std::string_view::npos) return target;
  if (text[at - 1] != ',') return target.replace(at, kOr.size(), "and ");
  target.erase(at, kOr.size());
  return target.insert(kNumberWord.size(), "group ");
}

List MakeEventTargets() {
  List list = {{AllNumbers, "all the numbers"}, kSeparator};
  for (const ListItem& event : kEvents) {
    list.push_back({event.Code, Kept(EventAsTarget(event.Text))});
  }
  return list;
}

// --- Actions ---

constexpr ActionForm Plain(int code, std::string_view text) {
  ActionForm form;
  form.Code = code;
  form.Text = form.Lead = text;
  return form;
}

/// Splits the list's "Bet % of" where a line has its amount: "Bet 50 % of bankroll".
constexpr void ReadAroundAmount(ActionForm& form) {
  const std::size_t percent = form.Text.find(" % of");
  if (percent == std::string_view::npos) return;
  form.Lead = form.Text.substr(0, percent);
  form.Operator = form.Text.substr(percent + 1);
}

/// One of the nine forms of a bet action.
constexpr ActionForm BetAction(int code, std::string_view text, std::string_view on) {
  ActionForm form = Plain(code, text);
  form.To = TargetUse::Bets;
  form.On = on;
  form.Amount = code % 10 <= FormPercentOfLast;
  form.Source = code % 10 != FormAmount;
  ReadAroundAmount(form);
  return form;
}

constexpr ActionForm OnTarget(int code, std::string_view text, std::string_view on, TargetUse to) {
  ActionForm form = Plain(code, text);
  form.On = on;
  form.To = to;
  return form;
}

constexpr ActionForm WithName(int code, std::string_view text, NameUse use) {
  ActionForm form = Plain(code, text);
  form.Name = use;
  return form;
}

constexpr ActionForm StackNamed(int code, std::string_view text) {
  ActionForm form = WithName(code, text, NameUse::StackName);
  form.StackNum = true;
  return form;
}

constexpr ActionForm WithTruth(int code, std::string_view text, NameUse use = NameUse::None) {
  ActionForm form = WithName(code, text, use);
  form.Truth = true;
  return form;
}

constexpr ActionForm WithAmount(int code, std::string_view text) {
  ActionForm form = Plain(code, text);
  form.Amount = true;
  return form;
}

constexpr ActionForm WithValue(int code, std::string_view text) {
  ActionForm form = Plain(code, text);
  form.Source = true;
  return form;
}

constexpr ActionForm WithPercent(int code, std::string_view text) {
  ActionForm form = Plain(code, text);
  form.Amount = form.Source = true;
  ReadAroundAmount(form);
  return form;
}

constexpr ActionForm Rounding(int code, std::string_view text) {
  ActionForm form = OnTarget(code, text, "", TargetUse::Bets);
  form.Amount = true;
  form.Source = true;
  return form;
}

constexpr ActionForm kForms[] = {
    BetAction(10, "Bet $", "on"),
    BetAction(11, "Bet % of", "on"),
    BetAction(12, "Bet % of the last", "on"),
    BetAction(13, "Bet the highest of:", "on"),
    BetAction(14, "Bet the highest of the last:", "on"),
    BetAction(15, "Bet the lowest of:", "on"),
    BetAction(16, "Bet the lowest of the last:", "on"),
    BetAction(17, "Bet the average of:", "on"),
    BetAction(18, "Bet the average of the last:", "on"),
    BetAction(20, "Add $", "to"),
    BetAction(21, "Add % of", "to"),
    BetAction(22, "Add % of the last", "to"),
    BetAction(23, "Add the highest of:", "to"),
    BetAction(24, "Add the highest of the last:", "to"),
    BetAction(25, "Add the lowest of:", "to"),
    BetAction(26, "Add the lowest of the last:", "to"),
    BetAction(27, "Add the average of:", "to"),
    BetAction(28, "Add the average of the last:", "to"),
    BetAction(30, "Subtract $", "from"),
    BetAction(31, "Subtract % of", "from"),
    BetAction(32, "Subtract % of the last", "from"),
    BetAction(33, "Subtract the highest of:", "from"),
    BetAction(34, "Subtract the highest of the last:", "from"),
    BetAction(35, "Subtract the lowest of:", "from"),
    BetAction(36, "Subtract the lowest of the last:", "from"),
    BetAction(37, "Subtract the average of:", "from"),
    BetAction(38, "Subtract the average of the last:", "from"),
    BetAction(40, "Multiply by", "on"),
    BetAction(41, "Multiply by % of", "on"),
    BetAction(42, "Multiply by % of the last", "on"),
    BetAction(43, "Multiply by the highest of:", "on"),
    BetAction(44, "Multiply by the highest of the last:", "on"),
    BetAction(45, "Multiply by the lowest of:", "on"),
    BetAction(46, "Multiply by the lowest of the last:", "on"),
    BetAction(47, "Multiply by the average of:", "on"),
    BetAction(48, "Multiply by the average of the last:", "on"),
    BetAction(50, "Divide by $", "on"),
    BetAction(51, "Divide by % of", "on"),
    BetAction(52, "Divide by % of the last", "on"),
    BetAction(53, "Divide by the highest of:", "on"),
    BetAction(54, "Divide by the highest of the last:", "on"),
    BetAction(55, "Divide by the lowest of:", "on"),
    BetAction(56, "Divide by the lowest of the last:", "on"),
    BetAction(57, "Divide by the average of:", "on"),
    BetAction(58, "Divide by the average of the last:", "on"),
    WithName(AskQuestion, "Yes/No question:", NameUse::Text),
    WithValue(AskQuestionValue, "Yes/No question: Value of"),
    WithName(ShowMessageText, "Show message:", NameUse::Text),
    WithValue(ShowMessageValue, "Show message: Value of"),
    OnTarget(GetInput, "Get input and bet it on", "", TargetUse::Bets),
    OnTarget(BuyThePlaceBet, "Buy the Place Bet", "on", TargetUse::BetsOnly),
    OnTarget(CallOff, "Call OFF", "", TargetUse::BetsOnly),
    OnTarget(CallOn, "Call ON", "", TargetUse::BetsOnly),
    OnTarget(ResetWinsLosses, "Reset wins / losses", "of", TargetUse::BetsOnly),
    OnTarget(ResetRolls, "Reset rolls", "of", TargetUse::Events),
    Plain(StopRolling, "Stop Auto-Rolling / Hyper-Drive"),
    WithName(GoTo, "Go to", NameUse::Label),
    WithName(Gosub, "Gosub", NameUse::Label),
    Plain(ReturnAction, "Return"),
    WithTruth(SetFlag, "Set flag", NameUse::Flag),
    WithTruth(SetAllFlags, "Set all flags"),
    Rounding(RoundBet, "Round"),
    StackNamed(NameChipStack, "Name Chip-Stack #"),
    StackNamed(NameChipStackRef, "Name Chip-Stack ref #"),
    Plain(ClearChipStackNames, "Clear all Chip-Stack names"),
    WithName(PlaySoundFile, "Play sound:", NameUse::File),
    WithName(ActivateProbability, "Activate Probability File:", NameUse::File),
    Plain(DeactivateProbability, "Deactivate Probability File"),
    Plain(InvokeShowSteps, "Invoke \"Show Steps\""),
    OnTarget(SetWinningBets, "Set Auto-Handle Winning Bets", "to", TargetUse::WinningChoice),
    OnTarget(SetLosingBets, "Set Auto-Handle Losing Bets", "to", TargetUse::LosingChoice),
    WithTruth(SetAutoTakeOdds, "Set Auto-Take Full Odds"),
    WithTruth(SetAutoLayOdds, "Set Auto-Lay Full Odds"),
    WithAmount(AtmWithdraw, "ATM - withdraw $"),
    WithPercent(AtmWithdrawPercent, "ATM - withdraw % of"),
    WithAmount(AtmDepositAction, "ATM - deposit $"),
    WithPercent(AtmDepositPercent, "ATM - deposit % of"),
    WithAmount(SelectRng, "Select RNG #"),
    WithValue(SelectRngValue, "Select RNG # as value of"),
    WithValue(SelectRngValueOfLast, "Select RNG # as value of the last"),
    Plain(SeedWithClock, "Seed RNG with date/time"),
    WithAmount(SeedWithNumber, "Seed RNG with #"),
    WithValue(SeedWithValue, "Seed RNG with value of"),
    WithValue(SeedWithValueOfLast, "Seed RNG with value of the last"),
    WithName(OpenOutput, "Open/clear file for output:", NameUse::File),
    WithName(AppendOutput, "Open/append file for output:", NameUse::File),
    WithName(OutputMessage, "Output to file. Message:", NameUse::Text),
    WithValue(OutputValue, "Output to file. Value of"),
    WithValue(OutputValueOfLast, "Output to file. Value of the last"),
    Plain(OutputNewLine, "Output to file. New line."),
    Plain(CloseOutput, "Close file"),
    Plain(ResetTable, "Reset table"),
    Plain(ResetTableKeepStacks, "Reset table (preserve Chip-Stacks)"),
};

/// The actions before which a separator stands in the list.
constexpr int kFirstOfGroup[] = {
    AddAmount,   SubtractAmount, MultiplyBy, DivideBy,      AskQuestion,   BuyThePlaceBet,
    GoTo,        SetFlag,        RoundBet,   NameChipStack, PlaySoundFile, SetWinningBets,
    AtmWithdraw, SelectRng,      OpenOutput, ResetTable,
};

List MakeActionList() {
  List list;
  for (const ActionForm& form : kForms) {
    if (std::ranges::find(kFirstOfGroup, form.Code) != std::end(kFirstOfGroup)) {
      list.push_back(kSeparator);
    }
    list.push_back({form.Code, form.Text});
  }
  return list;
}

constexpr ListItem kRoundings[] = {
    {RoundNearest, "to the nearest $"},
    {RoundDown, "down to a multiple of $"},
    {RoundUp, "up to a multiple of $"},
};

}  // namespace

const std::span<const BetGroup> kBetGroups = kGroups;
const std::span<const ListItem> kStartConditionList = kStartConditions;
const std::span<const ListItem> kStartActionList = kStartActions;
const std::span<const ActionForm> kActionForms = kForms;
const std::span<const ListItem> kRoundingWays = kRoundings;

const BetGroup* FindBetGroup(int subject) {
  const auto* group = std::ranges::find_if(kGroups, [subject](const BetGroup& candidate) {
    return subject == candidate.Any || subject == candidate.All || subject == candidate.Total;
  });
  return group == std::end(kGroups) ? nullptr : group;
}

bool FindPointFamily(int subject, BetFamily& family) {
  switch (subject) {
    case PointLay: family = LayFamily; return true;
    case PointCome: family = ComeFamily; return true;
    case PointComeOdds: family = ComeOddsFamily; return true;
    case PointPlace: family = PlaceFamily; return true;
    case PointBuy: family = BuyFamily; return true;
    default: return false;
  }
}

IdRange IdsOfTarget(int target) {
  constexpr IdRange kRanges[] = {
      {Lay4, LastBet},  // from AllBets on
      {Lay4, Lay10},    {DontCome4, DontCome10}, {DontCome4Odds, DontCome10Odds},
      {Come4, Come10},  {Come4Odds, Come10Odds}, {Place4, Place10},
      {Place5, Place9}, {Place4, Place10},       {Buy4, Buy10},
  };
  if (IsBet(target)) return {target, target};
  if (target == AllChipStacks) return {ChipStackBase, LastSlot};
  if (target < AllBets || target > AllBuyBets) return {};
  return kRanges[target - AllBets];
}

bool IsInNumberChoice(int choice, int point) {
  if (choice < AnyNumber || choice >= AnyNumber + std::ssize(kNumbersOfChoice)) return false;
  if (!IsPointNumber(point)) return false;
  return (kNumbersOfChoice[choice - AnyNumber] >> point & 1) != 0;
}

std::span<const ListItem> ConditionList() {
  static const List list = MakeConditionList();
  return list;
}

std::span<const ListItem> CompareList() {
  static const List list = MakeCompareList();
  return list;
}

std::span<const ListItem> OperatorList(int subject) {
  BetFamily family{};
  if (const BetGroup* group = FindBetGroup(subject)) return GroupOperators(*group, subject);
  if (IsBet(subject) || FindPointFamily(subject, family)) return kBetOperators;
  if (IsEvent(subject)) return kRolled;
  return SimpleOperators(subject);
}

std::span<const ListItem> ActionList() {
  static const List list = MakeActionList();
  return list;
}

std::span<const ListItem> SourceList() {
  static const List list = MakeSourceList();
  return list;
}

std::string_view TextOf(std::span<const ListItem> list, int code) {
  const auto item = std::ranges::find(list, code, &ListItem::Code);
  if (item == list.end() || item->Text == kSeparatorText) return {};
  return item->Text;
}

std::string_view TimesWords(int op) {
  switch (op) {
    case HasWon:
    case HasWonMore:
    case HasNotWon:
    case HasWonLess:
    case HasLost:
    case HasLostMore:
    case HasNotLost:
    case HasLostLess: return "times in a row";
    case HasRolled:
    case HasRolledMore:
    case HasNotRolled:
    case HasRolledLess: return "times";
    case HasRolledInLast:
    case HasNotRolledInLast: return "rolls";
    default: return {};
  }
}

ConditionForm FormOfCondition(int subject) {
  ConditionForm form;
  form.Caption = TextOf(ConditionList(), subject);
  if (subject == AverageBankroll) {
    form.Caption = "Bankroll (";
    form.AfterStack = "roll average )";
  }
  form.StackNum = ShowsStackNum(subject);
  form.Truth = subject == OneFlag || subject == AnyFlag || subject == AllFlags;
  form.FlagName = subject == OneFlag;
  if (form.Truth) form.TruthVerb = subject == AllFlags ? "are" : "is";
  const std::span<const ListItem> operators = OperatorList(subject);
  form.Amount = !operators.empty() && operators.data() != kNumberChoices.data();
  return form;
}

const ActionForm* FindAction(int code) {
  const auto* form = std::ranges::find(kForms, code, &ActionForm::Code);
  return form == std::end(kForms) ? nullptr : form;
}

std::span<const ListItem> TargetList(TargetUse use) {
  static const List bets = MakeBetTargets(true);
  static const List betsOnly = MakeBetTargets(false);
  static const List events = MakeEventTargets();
  switch (use) {
    case TargetUse::Bets: return bets;
    case TargetUse::BetsOnly: return betsOnly;
    case TargetUse::Events: return events;
    case TargetUse::WinningChoice: return kWinningChoices;
    case TargetUse::LosingChoice: return kLosingChoices;
    case TargetUse::None: break;
  }
  return {};
}
