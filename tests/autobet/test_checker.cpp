#include "autobet/checker.h"

#include "autobet/script_reader.h"
#include "support/table_fixture.h"

namespace {

/// A fault: its title, what it is about and what is wrong with that.
struct Fault {
  const char* Title;
  const char* About;
  const char* Wrong;
};
constexpr const char* kActionLines = "Missing Action Lines";
constexpr const char* kConditionLines = "Missing Condition Lines";
constexpr Fault kSound = {"", "", ""};
constexpr Fault kTwice = {"Duplicate Label", "Label", "appears more than once in your list."};
constexpr Fault kMissing = {"Missing Label", "\"Go to\" statement",
                            "references a Label that does not appear in your list."};
constexpr Fault kBetween = {"Label Position", "Label", "appears between Condition Lines."};
constexpr Fault kNoStartCondition = {"Missing Start Condition", "Condition line",
                                     "is not associated with a Start Condition."};
constexpr Fault kNoStartAction = {"Missing Start Action", "Action line",
                                  "is not associated with a Start Action."};
constexpr Fault kJoinsNothing = {kConditionLines, "Start Condition line",
                                 "is not preceded by a Condition line."};
constexpr Fault kStrayThen = {kActionLines, "Action block",
                              "is not immediately preceded by a Condition block."};
constexpr Fault kStrayElse = {kActionLines, "\"else\" Start Action line",
                              "must be immediately preceded by a \"then\" block of action lines."};
constexpr Fault kNoActions = {kActionLines, "Start Action line",
                              "is not followed by an Action line."};
constexpr Fault kNoConditions = {kConditionLines, "Start Condition line",
                                 "is not followed by a Condition line."};
constexpr Fault kNoBlock = {kActionLines, "Condition block", "has no Action block to go with it."};

class Checker : public TableTest {
 protected:
  Checker() {
    ClearScript();
    TheHost.ShowScriptLine = [this](int line) { ShownLine = line; };
  }

  /// Checks the script in force.
  void Expect(const Fault& fault, int line = 0) {
    Game.MsgText = "left over";
    ShownLine = 0;
    CheckScript();
    EXPECT_EQ(ShownLine, line);
    const std::vector<ShownMessage> shown = TakeShown();
    if (fault.Title == kSound.Title) {
      EXPECT_TRUE(shown.empty() && Game.MsgText.empty());
      return;
    }
    const std::string text = "The " + std::string(fault.About) +
                             " shown at the top of the screen " + fault.Wrong +
                             "\n\nThis is not allowed and must be resolved before you can run "
                             "this auto-betting script.";
    EXPECT_EQ(shown, (std::vector<ShownMessage>{{text, fault.Title, 640, OkStop}}));
    EXPECT_EQ(Game.MsgText, text);
  }

  void ExpectOf(const std::string& script, const Fault& fault, int line = 0) {
    LoadScript(script);
    SCOPED_TRACE(script);
    Expect(fault, line);
  }

  int ShownLine = 0;
};

TEST_F(Checker, EveryStateMeetsEveryLine) {
  // The ways into the states, with the last Start line of each: none, condition started and built,
  // then "then", "else" and "Do this", each started and built.
  // clang-format off
  const std::pair<std::vector<int>, int> ways[] = {
      {{}, 0}, {{90, 1}, 2}, {{2, 20, 99, 3, 20, 20}, 4}, {{1, 20, 11}, 3},
      {{1, 20, 11, 30, 30}, 3}, {{1, 20, 11, 30, 12}, 5}, {{1, 20, 11, 30, 12, 30}, 5}, {{13}, 1},
      {{13, 30, 90, 13, 30}, 4}};
  // clang-format on
  // What becomes of a line in each of the states, in their order. The lines that follow it finish
  // what is sound; a Label and a kind unknown to the language end the script.
  const Fault &ok = kSound, &noAct = kNoActions, &noCond = kNoConditions;
  const std::vector<Fault> opens = {ok, noCond, kNoBlock, noAct, ok, noAct, ok, noAct, ok};
  const auto needs = [&](const Fault& fault, bool afterConditions) {
    const Fault built = afterConditions ? ok : fault;
    return std::vector{fault, noCond, built, noAct, fault, noAct, fault, noAct, fault};
  };
  std::vector<Fault> afterThen = needs(kStrayElse, false);
  afterThen[4] = ok;
  std::vector<Fault> afterStart = needs(kNoStartCondition, true);
  afterStart[1] = ok;
  const std::vector<Fault> action = {
      kNoStartAction, noCond, kNoStartAction, ok, ok, ok, ok, ok, ok};
  const std::pair<std::vector<int>, std::vector<Fault>> rows[] = {
      // clang-format off
      {{1, 20, 11, 30}, opens}, {{2, 20, 11, 30}, opens},
      {{3, 20, 11, 30}, needs(kJoinsNothing, true)}, {{8, 20, 11, 30}, needs(kJoinsNothing, true)},
      {{11, 30}, needs(kStrayThen, true)}, {{12, 30}, afterThen}, {{13, 30}, opens},
      {{20, 11, 30}, afterStart}, {{30}, action}, {{90}, opens}, {{-7}, opens}, {{}, opens}};
  // clang-format on
  for (const auto& [kinds, met] : rows)
    for (std::size_t state = 0; state < std::size(ways); ++state) {
      const auto& [way, lastStart] = ways[state];
      std::vector<int> all = way;
      all.insert(all.end(), kinds.begin(), kinds.end());
      SCOPED_TRACE(::testing::PrintToString(all));
      ClearScript();
      for (const int kind : all) {
        ScriptLine line;
        line.LineKind = kind;
        line.LineName = std::to_string(Game.ScrCount);
        InsertLine(Game.ScrCount + 1, line);
      }
      const std::string wrong = met[state].Wrong;
      const bool ofStart = wrong == noAct.Wrong || wrong == noCond.Wrong || wrong == kNoBlock.Wrong;
      const int line = ofStart ? lastStart : static_cast<int>(way.size()) + 1;
      Expect(met[state], wrong.empty() ? 0 : line);
    }
}

TEST_F(Checker, Labels) {
  const std::string jump = "Do this . . .\nGo to \"a\"\n";
  ExpectOf("Label \"Top\"\nLabel \"top\"\nDo this . . .\nGo to \" TOP \"\nGosub \"top\"", kSound);
  // The earlier of two is shown; labels go before structure.
  ExpectOf("Go to \"no\"\nLabel \"a\"\nLabel \"b\"\nLabel \"b\"\nLabel \"a\"", kTwice, 2);
  ExpectOf("Label \"a\"\n" + jump + "Gosub \"b\"\nGo to \"c\"", kMissing, 4);
  ExpectOf("Do this . . .\nGo to \"\"", kMissing, 2);
  // Other actions name no label, and only Label lines are labels.
  ExpectOf("Do this . . .\nSet flag \"b\" to True\n' a remark", kSound);
  ExpectOf(jump + "' a", kMissing, 2);
  for (const char* next : {"and when . . .", "and while . . .", "or when . . .", "or while . . .",
                           "xor when . . .", "xor while . . .", "On each roll"})
    ExpectOf("Do this . . .\nLabel \"a\"\n" + std::string(next), kBetween, 2);
  const std::string block = "When . . .\nOn each roll\nLabel \"b\"\nthen . . .\nReturn\n";
  ExpectOf("Do this . . .\nReturn\nLabel \"a\"\n" + block + "Label \"c\"", kSound);
}

TEST_F(Checker, ThePlayersCommand) {
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage().Text,
            "This feature checks to see that your Auto-Bet script is properly structured, but "
            "presently your script is empty.");
  Expect(kSound);
  LoadScript("Do this . . .\nReturn\nthen . . .");
  Game.ScrCount = 2;  // lines beyond the script don't count
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage(),
            (ShownMessage{"Your script is properly structured.", "Auto-Bet", 640, OkTick}));
  LoadScript("Do this . . .");
  CheckScriptCommand();
  EXPECT_EQ(TakeOnlyMessage().Title, "Missing Action Lines");
}

}  // namespace
