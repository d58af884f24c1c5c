// The language of scripts: every code with its words, in the order of the lists from which a player
// chooses. Engine, checker, composition and editor all read these tables.
#pragma once

#include <span>
#include <string_view>

#include "core/bets.h"
#include "core/roll_events.h"

/// A row of a list; code 0 is a separator but in the choices of Auto-Handle. All codes stand in
/// files.
struct ListItem {
  int Code = 0;
  std::string_view Text;
};

/// Subjects of conditions. Bets stand by their ids, roll events as `EventSubject` + event.
enum Subject : int {
  InitializingSubject = 9999,
  EachRoll = 1300,
  NextIsComeOut = 1301,
  LastWasComeOut = 1302,
  PointEstablished = 1303,
  PointDecidedFor = 1304,
  PointDecidedAgainst = 1305,
  PointNotEstablished = 1306,
  AnswerWasYes = 1307,
  AnswerWasNo = 1308,
  NextIsNotComeOut = 1309,
  LastWasNotComeOut = 1310,
  GameRolls = 1311,
  ThisShooterRolls = 1312,
  EachPass = 1313,
  GamePasses = 1314,
  ThisShooterPasses = 1315,
  EachMiss = 1316,
  GameMisses = 1317,
  ThisShooterMisses = 1318,
  PointDecided = 1322,
  LastShooterRollsSubject = 1323,
  LastShooterPassesSubject = 1324,
  LastShooterMissesSubject = 1325,
  BankrollSubject = 1400,
  AverageBankroll = 1401,
  SimulatedHours = 1405,
  AvailableSubject = 1410,
  OneFlag = 1500,
  AnyFlag = 1501,
  AllFlags = 1502,
  TrueFlags = 1503,
  FalseFlags = 1504,
  ChipStackSubject = 1600,
  ChipStackRef = 1601,
  PointLay = 1800,
  PointCome = 1803,
  PointComeOdds = 1804,
  PointPlace = 1805,
  PointBuy = 1806,
  EventSubject = 2000,
};

/// The subject of a roll event.
constexpr int SubjectOf(RollEvent event) { return EventSubject + static_cast<int>(event); }

/// Sources ("of") that are no bets, beside the subjects with the same meaning.
enum Source : int {
  DiceTotalSource = 1300,
  Die1Source = 1301,
  Die2Source = 1302,
  GameRollsSource = 1311,
  ShooterRollsSource = 1312,
  GamePassesSource = 1314,
  ShooterPassesSource = 1315,
  GameMissesSource = 1317,
  ShooterMissesSource = 1318,
  HighestBankroll = 1402,
  LowestBankroll = 1403,
  DecidedWagersCount = 1700,
  DecidedWagersMoney = 1701,
  CurrentWagersCount = 1702,
  CurrentWagersMoney = 1703,
};

/// Targets ("to", "on") beside single bets and roll events, and sources for their totals.
enum Target : int {
  AllBets = 1000,
  AllLayBets = 1001,
  AllPlaceBets = 1006,
  InsidePlaceBets = 1007,
  OutsidePlaceBets = 1008,
  AllBuyBets = 1009,
  AllChipStacks = 1602,
  AllNumbers = 2001,
};

enum Operator : int {
  HasWon = 1,
  HasWonMore = 2,
  HasLost = 3,
  HasLostMore = 4,
  HasRolled = 5,
  HasRolledMore = 6,
  HasNotRolled = 7,
  HasRolledLess = 8,
  HasRolledInLast = 9,
  HasNotRolledInLast = 10,
  EqualTo = 11,
  NotEqualTo = 12,
  GreaterThan = 13,
  NotGreaterThan = 14,
  LessThan = 15,
  NotLessThan = 16,
  EqualToSubject = 17,
  NotEqualToSubject = 18,
  GreaterThanSubject = 19,
  NotGreaterThanSubject = 20,
  LessThanSubject = 21,
  NotLessThanSubject = 22,
  NumberIs = 23,
  NumberMoreThan = 24,
  NumberLessThan = 25,
  IsNamed = 26,
  IsNotNamed = 27,
  AnyNumber = 31,
  HasNotWon = 60,
  HasWonLess = 61,
  HasNotLost = 62,
  HasLostLess = 63,
};

enum Action : int {
  BetAmount = 10,  // the first of nine: $, % of, % of the last, then highest, lowest and
  AddAmount = 20,  // average, each of now and of the last
  SubtractAmount = 30,
  MultiplyBy = 40,
  DivideBy = 50,
  BuyThePlaceBet = 70,
  CallOff = 71,
  CallOn = 72,
  ResetWinsLosses = 73,
  ResetRolls = 74,
  StopRolling = 75,
  Gosub = 76,
  SetFlag = 77,
  SetAllFlags = 78,
  ShowMessageText = 79,
  PlaySoundFile = 80,
  InvokeShowSteps = 81,
  AskQuestion = 82,
  GetInput = 83,
  ShowMessageValue = 84,
  AskQuestionValue = 85,
  ReturnAction = 86,
  NameChipStack = 87,
  ClearChipStackNames = 88,
  NameChipStackRef = 89,
  SetWinningBets = 90,
  SetAutoTakeOdds = 91,
  SetAutoLayOdds = 92,
  AtmWithdraw = 93,
  AtmWithdrawPercent = 94,
  AtmDepositAction = 95,
  AtmDepositPercent = 96,
  ActivateProbability = 97,
  DeactivateProbability = 98,
  AppendOutput = 99,
  OutputMessage = 100,
  OutputValue = 101,
  OutputNewLine = 102,
  SelectRng = 103,
  SelectRngValue = 104,
  SeedWithClock = 105,
  SeedWithNumber = 106,
  SeedWithValue = 107,
  OutputValueOfLast = 108,
  RoundBet = 109,
  SetLosingBets = 110,
  SelectRngValueOfLast = 111,
  SeedWithValueOfLast = 112,
  OpenOutput = 113,
  CloseOutput = 114,
  GoTo = 117,
  ResetTableKeepStacks = 998,
  ResetTable = 999,
};

/// The nine forms of the bet actions, as the last digit of their codes.
enum BetForm : int {
  FormAmount = 0,
  FormPercent = 1,
  FormPercentOfLast = 2,
  FormHighest = 3,
  FormHighestOfLast = 4,
  FormLowest = 5,
  FormLowestOfLast = 6,
  FormAverage = 7,
  FormAverageOfLast = 8,
};

/// The ways of "Round", in `OfSubject`.
enum RoundingWay : int { RoundNearest = 1101, RoundDown = 1102, RoundUp = 1103 };

// --- Groups of bets ---

struct IdRange {
  int First = 0;
  int Last = -1;
};

/// A group of bets with the codes of its "any", "all" and "total" subjects.
struct BetGroup {
  int Any = 0;
  int All = 0;
  int Total = 0;
  std::string_view Name;  // "Lay bet"
  IdRange Ids;
};
extern const std::span<const BetGroup> kBetGroups;

/// The group of a subject code, nullptr for any other code. The code tells by equality with `Any`,
/// `All` and `Total` which of the three it is.
const BetGroup* FindBetGroup(int subject);

/// The family of a "(shooter's point)" subject; false for any other code.
bool FindPointFamily(int subject, BetFamily& family);

/// The ids of a target of all bets of a kind, of all Chip-Stacks, or of a single bet; an empty
/// range for any other code. The outside Place bets are the whole range: `IsPlaceSixOrEight`
/// tells the two that they leave out.
IdRange IdsOfTarget(int target);

/// Whether a Place bet is one of the two that the outside Place bets leave out (6 and 8).
constexpr bool IsPlaceSixOrEight(int id) { return id == Place6 || id == Place8; }

/// Whether `point` is in a number choice (`AnyNumber` and on); false for 0 and for unknown codes.
bool IsInNumberChoice(int choice, int point);

// --- Lists ---

extern const std::span<const ListItem> kStartConditionList;
extern const std::span<const ListItem> kStartActionList;

/// Subjects in list order: those of the first table, the groups, point bets, single bets, events.
std::span<const ListItem> ConditionList();
/// Second subjects in list order.
std::span<const ListItem> CompareList();
/// The operators and number choices that a subject offers, in list order; empty for none.
std::span<const ListItem> OperatorList(int subject);
std::span<const ListItem> ActionList();
/// Sources in list order.
std::span<const ListItem> SourceList();

/// The words of a code in a list; empty when it isn't there, and for separators.
std::string_view TextOf(std::span<const ListItem> list, int code);

/// Operators whose second side is `ToSubject`.
constexpr bool OperatorComparesSubjects(int op) {
  return op >= EqualToSubject && op <= NotLessThanSubject;
}

/// Operators whose second side is `LineName`.
constexpr bool OperatorComparesNames(int op) { return op == IsNamed || op == IsNotNamed; }

/// Operators that, with amount 0, ask for any such event: the line shows no amount then.
constexpr bool OperatorHidesZero(int op) {
  return op == HasWon || op == HasLost || op == HasRolled || op == HasNotRolled ||
         op == HasNotWon || op == HasNotLost;
}

/// The words behind the amount of a condition: "times in a row"; empty for most operators.
std::string_view TimesWords(int op);

/// Whether a stack number (of the average: its span) is shown behind a subject, source or target.
constexpr bool ShowsStackNum(int code) {
  return code == ChipStackSubject || code == ChipStackRef || code == AverageBankroll;
}

// --- What a line consists of ---

/// What else a condition line on a subject holds.
struct ConditionForm {
  bool StackNum = false;        // `OfStackNum` follows the subject
  bool Truth = false;           // `LineAmount` is a truth, shown as "is True" or "are True"
  bool FlagName = false;        // `LineName` is a flag
  bool Amount = false;          // `LineAmount` is a number, unless the operator compares otherwise
  std::string_view Caption;     // shown for the subject
  std::string_view AfterStack;  // words behind the stack number: "roll average )"
  std::string_view TruthVerb;   // "is" or "are"
};
ConditionForm FormOfCondition(int subject);

enum class NameUse { None, Label, Flag, Text, File, StackName };
enum class TargetUse { None, Bets, BetsOnly, Events, WinningChoice, LosingChoice };

/// What an action line holds and how it reads.
struct ActionForm {
  int Code = 0;
  std::string_view Text;      // in the list
  std::string_view Lead;      // the words of the line before its amount
  std::string_view Operator;  // between amount and source: "% of"
  std::string_view On;        // before the target: "on", "to"
  bool Amount = false;        // `LineAmount` is a number
  bool Truth = false;         // `LineAmount` is a truth, shown as "to True" or "to False"
  bool Source = false;        // `OfSubject` is a source, of "Round" its way
  bool StackNum = false;      // `OfStackNum` is shown without a source
  TargetUse To = TargetUse::None;
  NameUse Name = NameUse::None;
};
extern const std::span<const ActionForm> kActionForms;  // in list order, separators omitted
const ActionForm* FindAction(int code);                 // nullptr for an unknown code

/// The targets that an action offers, in list order; empty for none.
std::span<const ListItem> TargetList(TargetUse use);

/// The ways of "Round".
extern const std::span<const ListItem> kRoundingWays;

/// Whether an action gathers a run of like actions: the highest, lowest and average forms.
constexpr bool IsRunAction(int code) {
  return code >= BetAmount && code < DivideBy + 9 && code % 10 >= FormHighest && code % 10 != 9;
}

// --- Words of their own ---

inline constexpr std::string_view kLabelWord = "Label";
inline constexpr std::string_view kTrueWord = "True";
inline constexpr std::string_view kFalseWord = "False";
inline constexpr std::string_view kToWord = "to";  // before the truth that an action sets

inline constexpr std::string_view kSeparatorText =
    "-----------------------------------------------------";
inline constexpr std::string_view kNoLabelsText = "*** No labels in use ***";

/// The states of a run as tracing tells them.
namespace status {
inline constexpr std::string_view kWhenBlock =
    "This block of conditions will be true if each line is true and at least one has just "
    "occurred.";
inline constexpr std::string_view kWhileBlock =
    "This block of conditions will be true if each line is true.";
inline constexpr std::string_view kSkippedBlock =
    "Since some conditions are already false, this block will be skipped. ";
inline constexpr std::string_view kXorWhenBlock =
    "This block of conditions will be true if each line is true and at least one has just "
    "occurred.  The xor condition will be then be evaluated with it and the previous block. ";
inline constexpr std::string_view kXorWhileBlock =
    "This block of conditions will be true if each line is true. The xor condition will be then "
    "be evaluated with it and the previous block. ";
inline constexpr std::string_view kThenTaken =
    "Since the overall conditions were true, the next actions will be taken. ";
inline constexpr std::string_view kThenSkipped =
    "Since the overall conditions were false, the next actions will be skipped. ";
inline constexpr std::string_view kElseSkipped =
    "Since the previous actions were taken, the next actions will be skipped. ";
inline constexpr std::string_view kElseTaken =
    "Since the previous actions were skipped, the next actions will be taken. ";
inline constexpr std::string_view kDirectBlock =
    "This block of actions will be executed directly. ";
inline constexpr std::string_view kNoneNew =
    "All the conditions in the block were true, but none have just now occurred - so the block is "
    "false. ";
inline constexpr std::string_view kBlockTrue = "All the conditions in the block were true. ";
inline constexpr std::string_view kBlockFalse =
    "At least one condition was false, so the block is false. ";
inline constexpr std::string_view kXorPreviousTrue =
    "However, the previous block was true, therefore the xor condition is true. ";
inline constexpr std::string_view kXorBothFalse =
    "And since the previous block was also false, the xor condition is false. ";
inline constexpr std::string_view kXorBothTrue =
    "However, the previous block was also true, therefore the xor condition is false. ";
inline constexpr std::string_view kXorOnlyThis =
    "And since the previous block was false, the xor condition is also true. ";
inline constexpr std::string_view kConditionNew = "Condition is true (just now occurred). ";
inline constexpr std::string_view kConditionOld = "Condition is true (not a new occurrence). ";
inline constexpr std::string_view kConditionFalse = "Condition is false. ";
inline constexpr std::string_view kActionTaken = "Action taken.";
inline constexpr std::string_view kReturnIgnored =
    "This statement will be ignored since it was not encountered as a result of a \"GoSub\" "
    "statement.  Processing will resume with the next line in order.";
inline constexpr std::string_view kLabelReached =
    "A \"Go to\" or \"GoSub\" statement has caused a jump to this label.";
inline constexpr std::string_view kLabelPassed = "This label was encountered normally.";
inline constexpr std::string_view kReturned =
    "A \"Return\" statement has come back to this line.  Processing will resume with the next line "
    "in order.";
}  // namespace status
