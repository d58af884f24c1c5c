#include "autobet/checker.h"

#include "autobet/language.h"
#include "autobet/script.h"
#include "support/table_fixture.h"

namespace {

constexpr const char* kClosing =
    "\n\nThis is not allowed and must be resolved before you can run this auto-betting script.";

class Checker : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    ClearScript();
    TheHost.ShowScriptLine = [this](int line) { ShownLine = line; };
  }
  void TearDown() override {
    static_cast<ScriptState&>(Game) = ScriptState();
    TableTest::TearDown();
  }

  static ScriptLine Of(int kind, const std::string& name = "", int code = 0) {
    ScriptLine line;
    line.LineKind = kind;
    line.LineName = name;
    line.LineCode = code;
    return line;
  }

  /// Lays lines down as a file with them would, whatever they are.
  static void Lay(const std::vector<ScriptLine>& lines) {
    Game.Script = lines;
    Game.ScrCount = static_cast<int>(lines.size());
    ScriptEdited();
  }

  void ExpectSound(const std::vector<ScriptLine>& lines) {
    Lay(lines);
    Game.MsgText = "left over";
    CheckScript();
    EXPECT_EQ(Game.MsgText, "");
    EXPECT_TRUE(TakeShown().empty());
  }

  void ExpectFault(const std::vector<ScriptLine>& lines, int line, const std::string& title,
                   const std::string& text) {
    Lay(lines);
    ShownLine = 0;
    CheckScript();
    EXPECT_EQ(ShownLine, line);
    EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{text + kClosing, title, 640, OkStop}));
    EXPECT_EQ(Game.MsgText, text + kClosing);
    EXPECT_EQ(Game.MsgTitle, title);
  }

  int ShownLine = 0;
};

/// The faults of the structure by a short name.
struct Fault {
  const char* Title;
  const char* Text;
};
constexpr Fault kSound = {"", ""};
constexpr Fault kNoStartCondition = {
    "Missing Start Condition",
    "The Condition line shown at the top of the screen is not associated with a Start Condition."};
constexpr Fault kNoStartAction = {
    "Missing Start Action",
    "The Action line shown at the top of the screen is not associated with a Start Action."};
constexpr Fault kNotPreceded = {"Missing Condition Lines",
                                "The Start Condition line shown at the top of the screen is not "
                                "preceded by a Condition line."};
constexpr Fault kThenNotPreceded = {"Missing Action Lines",
                                    "The Action block shown at the top of the screen is not "
                                    "immediately preceded by a Condition block."};
constexpr Fault kElseNotPreceded = {"Missing Action Lines",
                                    "The \"else\" Start Action line shown at the top of the screen "
                                    "must be immediately preceded by a \"then\" block of action "
                                    "lines."};
constexpr Fault kNoActions = {"Missing Action Lines",
                              "The Start Action line shown at the top of the screen is not "
                              "followed by an Action line."};
constexpr Fault kNoConditions = {"Missing Condition Lines",
                                 "The Start Condition line shown at the top of the screen is not "
                                 "followed by a Condition line."};
constexpr Fault kNoBlock = {"Missing Action Lines",
                            "The Condition block shown at the top of the screen has no Action "
                            "block to go with it."};

TEST_F(Checker, EveryStateMeetsEveryLine) {
  // The ways into the states, with the last Start line of each.
  struct Way {
    std::vector<int> Kinds;
    int LastStart;
  };
  const std::vector<Way> ways = {
      {{}, 0},
      {{90, 1}, 2},                  // Condition started
      {{2, 20, 99, 3, 20, 20}, 4},   // Condition built
      {{1, 20, 11}, 3},              // Then started
      {{1, 20, 11, 30, 30}, 3},      // Then built
      {{1, 20, 11, 30, 12}, 5},      // Else started
      {{1, 20, 11, 30, 12, 30}, 5},  // Else built
      {{13}, 1},                     // Do this started
      {{13, 30, 90, 13, 30}, 4},     // Do this built
  };
  // What a line is met with in each of the states, in their order. What is sound is finished so
  // that the end of the script is sound too.
  struct Row {
    std::vector<int> Kinds;  // the line under test, then those that finish it
    std::vector<Fault> Met;
  };
  const Fault ok = kSound;
  const Fault noAct = kNoActions;
  const Fault noCond = kNoConditions;
  const std::vector<Row> rows = {
      {{1, 20, 11, 30}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},
      {{2, 20, 11, 30}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},
      {{3, 20, 11, 30},
       {kNotPreceded, noCond, ok, noAct, kNotPreceded, noAct, kNotPreceded, noAct, kNotPreceded}},
      {{8, 20, 11, 30},
       {kNotPreceded, noCond, ok, noAct, kNotPreceded, noAct, kNotPreceded, noAct, kNotPreceded}},
      {{11, 30},
       {kThenNotPreceded, noCond, ok, noAct, kThenNotPreceded, noAct, kThenNotPreceded, noAct,
        kThenNotPreceded}},
      {{12, 30},
       {kElseNotPreceded, noCond, kElseNotPreceded, noAct, ok, noAct, kElseNotPreceded, noAct,
        kElseNotPreceded}},
      {{13, 30}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},
      {{20, 11, 30},
       {kNoStartCondition, ok, ok, noAct, kNoStartCondition, noAct, kNoStartCondition, noAct,
        kNoStartCondition}},
      {{30}, {kNoStartAction, noCond, kNoStartAction, ok, ok, ok, ok, ok, ok}},
      {{90}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},  // the script's end
      {{-7}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},  // unknown to the language
      {{}, {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok}},
  };
  const auto showsLastStart = [](const Fault& fault) {
    return fault.Text == kNoActions.Text || fault.Text == kNoConditions.Text ||
           fault.Text == kNoBlock.Text;
  };
  for (const Row& row : rows) {
    for (std::size_t state = 0; state < ways.size(); ++state) {
      SCOPED_TRACE("kind " + std::to_string(row.Kinds.empty() ? 0 : row.Kinds[0]) + " state " +
                   std::to_string(state));
      std::vector<ScriptLine> lines;
      for (const int kind : ways[state].Kinds)
        lines.push_back(Of(kind, std::to_string(lines.size())));
      const int tested = static_cast<int>(lines.size()) + 1;
      for (const int kind : row.Kinds) lines.push_back(Of(kind, std::to_string(lines.size())));
      const Fault& met = row.Met[state];
      if (met.Text == kSound.Text) {
        ExpectSound(lines);
      } else {
        ExpectFault(lines, showsLastStart(met) ? ways[state].LastStart : tested, met.Title,
                    met.Text);
      }
    }
  }
}

TEST_F(Checker, Labels) {
  const std::string twice =
      "The Label shown at the top of the screen appears more than once in your list.";
  const std::string missing =
      "The \"Go to\" statement shown at the top of the screen references a Label that does not "
      "appear in your list.";
  const std::string between =
      "The Label shown at the top of the screen appears between Condition Lines.";
  const ScriptLine start = Of(DoThisLine);
  const auto label = [](const std::string& name) { return Of(LabelLine, name); };
  const auto jump = [](const std::string& name, int code) { return Of(ActionLine, name, code); };

  ExpectSound({label("Loop"), label("loop"), start, jump(" LOOP ", GoTo), jump("loop", Gosub)});
  // The earlier of two is shown; labels go before structure.
  ExpectFault({jump("no", GoTo), label("a"), label("b"), label("b"), label("a")}, 2,
              "Duplicate Label", twice);
  ExpectFault({label("a"), start, jump("a", GoTo), jump("b", Gosub), jump("c", GoTo)}, 4,
              "Missing Label", missing);
  ExpectFault({start, jump("", GoTo)}, 2, "Missing Label", missing);
  // Other actions name no label, and only Label lines are labels.
  ExpectSound({start, jump("b", SetFlag), Of(RemarkLine, "b")});
  for (const int kind : {3, 4, 5, 6, 7, 8, 20})
    ExpectFault({start, label("a"), Of(kind)}, 2, "Label Position", between);
  ExpectSound({Of(1), Of(20), Of(11), Of(30), label("a"), Of(1), Of(20), label("b"), Of(11), Of(30),
               label("c")});
}

TEST_F(Checker, ThePlayersCommand) {
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage().Text,
            "This feature checks to see that your Auto-Bet script is properly structured, but "
            "presently your script is empty.");
  Lay({Of(DoThisLine), Of(ActionLine)});
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage(),
            (ShownMessage{"Your script is properly structured.", "Auto-Bet", 640, OkTick}));
  Lay({Of(DoThisLine)});
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage().Title, "Missing Action Lines");
  ExpectSound({});
}

TEST_F(Checker, LinesBeyondTheScriptDoNotCount) {
  Lay({Of(DoThisLine), Of(ActionLine), Of(ThenLine)});
  Game.ScrCount = 2;
  CheckScript();
  EXPECT_EQ(Game.MsgText, "");
}

}  // namespace
