#include "autobet/engine.h"

#include <algorithm>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "autobet/language.h"
#include "autobet/output_file.h"
#include "autobet/profile.h"
#include "autobet/program.h"
#include "autobet/script.h"
#include "bets/bet_history.h"
#include "bets/turns.h"
#include "core/error_report.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"

namespace {

constexpr std::uint32_t kShortestRun = 300;     // milliseconds
constexpr std::size_t kMostReturns = 16 << 20;  // beyond this a script has run away

bool NeedsNew(int blockStart) {
  return blockStart == WhenLine || blockStart == AndWhenLine || blockStart == OrWhenLine ||
         blockStart == XorWhenLine;
}

bool IsWhileBlock(int blockStart) {
  return blockStart == WhileLine || blockStart == AndWhileLine || blockStart == OrWhileLine ||
         blockStart == XorWhileLine;
}

bool IsXor(int kind) { return kind == XorWhenLine || kind == XorWhileLine; }
bool IsAnd(int kind) { return kind == AndWhenLine || kind == AndWhileLine; }

/// What is kept between runs, so that none of them allocates or clears what it doesn't use.
std::vector<int> ReturnStack;  // lines to come back to, newest last
ActionRun Actions;

/// One run of the script: all its state starts from nothing and ends with it. Lines are counted for
/// the profile where it is `Counting`, and looked at for breakpoints where it is `Breaking`: other
/// runs pay nothing for either.
template <bool Counting, bool Breaking>
class Run {
 public:
  Run() {
    ReturnStack.clear();
    Actions.RunValue = 0;
    Actions.RunCount = 0;
    Actions.HasBase.reset();
    if constexpr (Counting) {
      ReadyProfile();
      fired_ = Game.Profile.Fired.data();
    }
  }

  ~Run() {
    if (count_ > 0) EndWalk();
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  void Play() {
    int next = 1;
    while (next >= 1 && next <= count_) {
      Game.ScrLine = next;
      if (!CountLines(1)) return;
      const ProgramLine& line = lines_[static_cast<std::size_t>(next - 1)];
      if (Breaking && line.Breakpoint && !IsPassedOver(line)) Break();
      next = PlayLine(line);
    }
  }

 private:
  static constexpr int kStop = 0;

  // --- Profile and breakpoints ---

  /// The lines since the last jump have been walked through, up to the current one.
  void EndWalk() {
    if constexpr (Counting) CountWalk(walkFrom_, Game.ScrLine);
  }

  void Fired([[maybe_unused]] int line) {
    if constexpr (Counting) ++fired_[line];
  }

  /// Tracing starts here. Under Hyper-Drive, where there is none, the run of rolls ends instead.
  void Break() {
    if (!Game.HyperDriveOn) {
      if (!cancelled_) Game.ShowStepsMode = kTrue;
      return;
    }
    Game.KeepRolling = false;
    Game.StopMessage =
        "Stopped by the breakpoint at Auto-Bet line # " + std::to_string(Game.ScrLine) + ".";
  }

  // --- Lines ---

  /// Counts lines that have been passed, and now and then lets the interface breathe. False when
  /// the run has been stopped meanwhile.
  bool CountLines(int passed) {
    yieldCount_ += passed;
    while (yieldCount_ >= kLinesPerYield) {
      yieldCount_ -= kLinesPerYield;
      OfferTurn();
      if (!Game.AutoBetRunning) return false;
    }
    return true;
  }

  /// A condition that can't change its block any more, an action of the block that isn't taken.
  bool IsPassedOver(const ProgramLine& line) const {
    if (line.Kind == ConditionLine) return OverallTrue || !BlockTrue;
    if (line.Kind != ActionLine) return false;
    return (BlockStart == ThenLine && !OverallTrue) || (BlockStart == ElseLine && OverallTrue);
  }

  /// Does what a line says; the line that comes next, or `kStop`.
  int PlayLine(const ProgramLine& line) {
    switch (line.Kind) {
      case ConditionLine: return TestCondition(line);
      case ActionLine: return PlayAction(line);
      case LabelLine:
        Fired(Game.ScrLine);
        Trace(status::kLabelPassed);
        break;
      case WhenLine:
      case WhileLine: return StartStatement(line);
      case AndWhenLine:
      case AndWhileLine:
        // Required: the last line of the block counts, not the block.
        if (BlockTrue && !LineNew && NeedsNew(BlockStart)) {
          EndBlock(line.Kind);
        } else {
          if (BlockTrue) Fired(blockLine_);
          StartBlock(line.Kind);
        }
        break;
      case OrWhenLine:
      case OrWhileLine:
      case XorWhenLine:
      case XorWhileLine:
        if (OverallTrue) break;
        EndBlock(line.Kind);
        BlockTrue = true;
        break;
      case ThenLine: EndBlock(line.Kind); break;
      case ElseLine:
      case DoThisLine: StartBlock(line.Kind); break;
      default: break;
    }
    return Game.ScrLine + 1;
  }

  int StartStatement(const ProgramLine& line) {
    if (!Breaking && line.TestedAtOnce && XorPending == 0 && !Tracing())
      return TestStatements(Game.ScrLine);
    OpenStatement(Game.ScrLine);
    if (Tracing()) Trace(TextOfBlock(line.Kind));
    return Game.ScrLine + 1;
  }

  void OpenStatement(int start) {
    OverallTrue = false;
    PrevBlockTrue = false;
    BlockTrue = true;
    BlockStart = lines_[start - 1].Kind;
    blockLine_ = start;
    BlockHasNew = false;
  }

  /// Most of a script is statements that don't hold: goes from one to the next for as long as they
  /// don't, no other line lies between and no turn is near. The line that comes next.
  int TestStatements(int start) {
    while (yieldCount_ + 1 < kLinesPerYield) {
      const ProgramLine& line = lines_[start - 1];
      Game.ScrLine = start + 1;
      const ConditionPlan& plan = conditions_[line.Plan];
      const Verdict verdict = plan.Evaluate(plan, line.Kind == WhileLine);
      const int next = line.IfFalse;
      const int counted = yieldCount_ + next - start;
      const bool goesOn = !verdict.True && next > 0 && next <= count_ &&
                          lines_[next - 1].TestedAtOnce && counted < kLinesPerYield;
      if (!goesOn) {
        OpenStatement(start);
        ++yieldCount_;
        return FollowCondition(verdict, next);
      }
      yieldCount_ = counted;
      start = next;
    }
    OpenStatement(start);
    return start + 1;
  }

  int TestCondition(const ProgramLine& line) {
    if (IsPassedOver(line)) return Game.ScrLine + 1;
    const ConditionPlan& plan = conditions_[line.Plan];
    return FollowCondition(plan.Evaluate(plan, IsWhileBlock(BlockStart)), line.IfFalse);
  }

  int FollowCondition(const Verdict& verdict, int ifFalse) {
    BlockTrue = verdict.True;
    LineNew = verdict.True && verdict.New;
    BlockHasNew |= LineNew;
    if (!BlockTrue) {
      Trace(status::kConditionFalse);
      return PassFalseStatement(ifFalse);
    }
    Fired(Game.ScrLine);
    Trace(LineNew ? status::kConditionNew : status::kConditionOld);
    return Game.ScrLine + 1;
  }

  /// The line that follows a false condition. Nothing happens in a "then" that isn't taken: it is
  /// left behind at once, unless somebody watches, a turn comes, or an "xor" has still to be
  /// decided.
  int PassFalseStatement(int ifFalse) {
    const int passed = ifFalse - 1 - Game.ScrLine;
    if (Breaking || ifFalse == 0 || XorPending != 0 || yieldCount_ + passed >= kLinesPerYield ||
        Tracing())
      return Game.ScrLine + 1;
    yieldCount_ += passed;
    PrevBlockTrue = false;
    BlockHasNew = false;
    BlockStart = ThenLine;
    Game.ScrLine = ifFalse - 1;
    return ifFalse;
  }

  int PlayAction(const ProgramLine& line) {
    if (IsPassedOver(line)) return Game.ScrLine + 1;
    if (line.Code != ReturnAction || !ReturnStack.empty()) Fired(Game.ScrLine);
    switch (line.Code) {
      case GoTo: Trace(status::kActionTaken); return JumpTo(line.JumpTo);
      case Gosub:
        if (ReturnStack.size() >= kMostReturns) throw std::bad_alloc();
        ReturnStack.push_back(Game.ScrLine);
        Trace(status::kActionTaken);
        return JumpTo(line.JumpTo);
      case ReturnAction: return Return();
      default: break;
    }
    const bool tracing = Tracing();  // tracing that this line begins starts at the next one
    PerformAction(Game.ScrLine, program_.Actions[static_cast<std::size_t>(line.Plan)], Actions);
    if (tracing) Trace(status::kActionTaken);
    return Game.ScrLine + 1;
  }

  // --- Jumps ---

  /// A jump passes all lines from the first to the label; without a label it runs off the end.
  int JumpTo(int label) {
    if (label == kNextLine) return Game.ScrLine + 1;  // a jump that names none
    if (!CountLines(label > 0 ? label : count_) || label == 0) return kStop;
    EndWalk();
    Game.ScrLine = walkFrom_ = label;
    Fired(label);
    BlockStart = LabelLine;
    BlockHasNew = false;
    Trace(status::kLabelReached);
    return label + 1;
  }

  int Return() {
    if (ReturnStack.empty()) {
      Trace(status::kReturnIgnored);
      return Game.ScrLine + 1;
    }
    OverallTrue = true;
    // What follows the "Gosub" runs whatever block the subroutine ended in.
    BlockStart = LabelLine;
    Trace(status::kActionTaken);
    if (!CountLines(program_.FirstLine)) return kStop;
    EndWalk();
    Game.ScrLine = ReturnStack.back();
    walkFrom_ = Game.ScrLine + 1;
    ReturnStack.pop_back();
    Trace(status::kReturned);
    return Game.ScrLine + 1;
  }

  // --- Blocks ---

  /// Decides the block that a line of `kind` ends, and starts the next unless all is settled.
  void EndBlock(int kind) {
    if (BlockTrue && !BlockHasNew && NeedsNew(BlockStart)) {
      EndBlockWithoutNews();
    } else if (BlockTrue) {
      EndTrueBlock(kind);
    } else {
      EndFalseBlock();
    }
    if (BlockTrue) Fired(blockLine_);
    XorPending = 0;
    if (PrevBlockTrue && !IsAnd(kind) && !IsXor(kind)) OverallTrue = true;
    if (OverallTrue && kind != ThenLine) {
      said_.clear();
      return;
    }
    ShowEndOfBlock();
    StartBlock(kind);
  }

  void EndBlockWithoutNews() {
    Say(status::kNoneNew);
    BlockTrue = false;
    if (XorPending == XorWhenLine) {
      FollowLeftSide();
    } else {
      PrevBlockTrue = false;
    }
  }

  void EndTrueBlock(int kind) {
    Say(status::kBlockTrue);
    if (XorPending == 0) {
      PrevBlockTrue = true;
    } else if (!IsAnd(kind)) {
      if (PrevBlockTrue) {
        Say(status::kXorBothTrue);
        PrevBlockTrue = false;
      } else {
        Say(status::kXorOnlyThis);
        OverallTrue = true;
      }
    }
  }

  void EndFalseBlock() {
    Say(status::kBlockFalse);
    if (XorPending == 0) {
      PrevBlockTrue = false;
    } else {
      FollowLeftSide();
    }
  }

  /// The right side of an "xor" is false: the statement is what the block before it was.
  void FollowLeftSide() {
    Say(PrevBlockTrue ? status::kXorPreviousTrue : status::kXorBothFalse);
    OverallTrue |= PrevBlockTrue;
  }

  void StartBlock(int kind) {
    BlockStart = kind;
    blockLine_ = Game.ScrLine;
    BlockHasNew = false;
    if (IsXor(kind)) XorPending = kind;
    if (IsStartAction(kind) && IsEntered(kind)) Fired(blockLine_);
    if (Tracing()) Trace(TextOfBlock(kind));
  }

  bool IsEntered(int kind) const { return kind == DoThisLine || OverallTrue == (kind == ThenLine); }

  std::string_view TextOfBlock(int kind) const {
    switch (kind) {
      case AndWhenLine:
      case AndWhileLine:
        if (!BlockTrue) return status::kSkippedBlock;
        return kind == AndWhenLine ? status::kWhenBlock : status::kWhileBlock;
      case WhenLine:
      case OrWhenLine: return status::kWhenBlock;
      case WhileLine:
      case OrWhileLine: return status::kWhileBlock;
      case XorWhenLine: return status::kXorWhenBlock;
      case XorWhileLine: return status::kXorWhileBlock;
      case ThenLine: return OverallTrue ? status::kThenTaken : status::kThenSkipped;
      case ElseLine: return OverallTrue ? status::kElseSkipped : status::kElseTaken;
      default: return status::kDirectBlock;
    }
  }

  // --- Tracing ---

  bool Tracing() const {
    return Game.ShowStepsMode != 0 && Game.AutoBetRunning && !Game.HyperDriveOn && !cancelled_;
  }

  void Say(std::string_view text) {
    if (Tracing()) said_ += text;
  }

  void ShowStep(int line, const std::string& text, const std::string& what) {
    const KeptMessage kept;
    BeforeScreen();
    TheHost.ShowStep(line, text, what);
    AfterScreen();
    // A player who cancels doesn't want the next "Show Steps" of this run either.
    cancelled_ = Game.ShowStepsMode == 0;
    if (!Game.AutoBetRunning) yieldCount_ = kLinesPerYield;  // interrupted: no line comes after
  }

  void Trace(std::string_view text) {
    if (!Tracing()) return;
    ShowStep(Game.ScrLine, Line(Game.ScrLine).LineText, std::string(text));
  }

  void ShowEndOfBlock() {
    if (Tracing() && !said_.empty()) ShowStep(0, "", said_);
    said_.clear();
  }

  const Program& program_ = CurrentProgram();
  const ProgramLine* const lines_ = program_.Lines.data();
  const ConditionPlan* const conditions_ = program_.Conditions.data();
  const int count_ = Game.ScrCount;

  bool OverallTrue = false;    // the statement's conditions, as far as they are decided, hold
  bool BlockTrue = false;      // all lines of the current block held so far
  bool BlockHasNew = false;    // one of them "just now occurred"
  bool LineNew = false;        // the last evaluated line did
  bool PrevBlockTrue = false;  // result of the block before
  int BlockStart = 0;          // kind of the line that governs what follows; a label after a jump
  int XorPending = 0;          // kind of the "xor" whose right side the current block is
  int yieldCount_ = 0;
  std::string said_;
  bool cancelled_ = false;         // tracing, for the rest of the run
  std::int64_t* fired_ = nullptr;  // the counts of the profile: no line comes or goes in a run
  int walkFrom_ = 1;               // the first line since the last jump
  int blockLine_ = 1;              // the line of `BlockStart`
};

template <bool Counting>
void PlayScript() {
  if (CurrentProgram().HasBreakpoints)
    Run<Counting, true>().Play();
  else
    Run<Counting, false>().Play();
}

void ShowStatus(const char* text) {
  if (Game.HyperDriveOn) return;
  Game.AutoBetStatus = text;
  TheHost.RedrawBets();
}

void BeginRun() {
  Game.AutoBetRunning = true;
  if (Game.HotKeyRunning) {
    ShowStatus("Hot-Key");
  } else if (Game.ShowStepsMode == 0) {
    ShowStatus("Auto-Betting");
  }
  Game.AutoBetStartTime = TheHost.Milliseconds();
  Game.MsgAnswer = AnswerOk;
}

/// A pause that leaves the status long enough on the screen to be read.
void WaitOutRun() {
  std::uint32_t passed = TheHost.Milliseconds() - Game.AutoBetStartTime;
  while (passed < kShortestRun) {
    TheHost.Wait(static_cast<int>(kShortestRun - passed));
    passed = TheHost.Milliseconds() - Game.AutoBetStartTime;
  }
}

void EndRun() {
  Game.AutoBetRunning = false;
  if (Game.HyperDriveOn) return;
  FlushOutputFile();
  WaitOutRun();
  ShowStatus("");
}

/// A script is at work. No roll begins while it runs outside of one.
class AtWork {
 public:
  AtWork() { Game.RollInProgress = Game.AutoBetAtWork = true; }
  ~AtWork() {
    Game.RollInProgress = wasInProgress_;
    Game.AutoBetAtWork = false;
  }
  AtWork(const AtWork&) = delete;
  AtWork& operator=(const AtWork&) = delete;

 private:
  bool wasInProgress_ = Game.RollInProgress;
};

}  // namespace

void RunAutoBets() {
  const AtWork atWork;
  try {
    BeginRun();
    if (ProfileCounts())
      PlayScript<true>();
    else
      PlayScript<false>();
    EndRun();
  } catch (const std::exception&) {
    ReportError("Run Auto-Bet");
    Game.AutoBetRunning = false;
    Game.AutoBetStatus.clear();
    if (!Game.HyperDriveOn) TheHost.RedrawBets();
  }
  if (!Game.RollInProgress) ForgetCommands();
}

void InitAutoBets() {
  if (Game.AutoBetActive == 1 && Game.ScrCount > 0 &&
      AskYesNo("Your Auto-Bets have changed or been activated.\n\nYou have an opportunity now to "
               "run your Auto-Bet script for one cycle BEFORE the dice roll in order to check and "
               "set any initial conditions.\n\nWould you like to initialize your Auto-Bets?",
               "Auto-Bet", kTopicScripts)) {
    ClearProfile();
    RunInitializingCycle();
  }
  Game.ScriptChanged = false;
  TheHost.RefreshViews();
}

void RunInitializingCycle() {
  Game.ScriptChanged = true;  // what makes "Initializing Auto-Bet" true
  RunAutoBets();
  Game.BetsAfterRoll = Game.Bets;
  TakeFlagSnapshot();
  Game.ScriptChanged = false;
}
