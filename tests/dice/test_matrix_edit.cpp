// Edits of the probability matrix: the sums hold whatever is set, locked or undone.
#include "dice/matrix_edit.h"

#include "support/random_rules.h"
#include "support/table_fixture.h"

namespace {

int Share(const ProbabilityMatrix& matrix, MatrixPlace at) { return matrix[1][at.Column][at.Row]; }

constexpr MatrixPlace kSeven = {6, 1};
constexpr MatrixPlace Face(int die, int face) { return {11 + die, face + 1}; }

class MatrixEdits : public TableTest {
 protected:
  static ProbabilityMatrix Fair() { return Game.ProbMatrix; }

  /// An edit that must be taken.
  static ProbabilityMatrix Done(const MatrixEdit& edit) {
    EXPECT_TRUE(edit.Done()) << edit.Refusal;
    return edit.Matrix;
  }

  /// Each throw, total and face by the 36 shares; fails when a sum is off.
  static void ExpectSums(const ProbabilityMatrix& matrix) {
    std::array<int, 13> totals{};
    std::array<std::array<int, 7>, 2> faces{};
    int whole = 0;
    for (int die1 = 1; die1 <= 6; ++die1)
      for (int die2 = 1; die2 <= 6; ++die2) {
        const int share = ShareOfThrow(matrix, die1, die2);
        ASSERT_GE(share, 0);
        whole += share;
        totals[die1 + die2] += share;
        faces[0][die1] += share;
        faces[1][die2] += share;
      }
    ASSERT_EQ(whole, 100'000);
    for (int total = 2; total <= 12; ++total)
      ASSERT_EQ(Share(matrix, {total - 1, 1}), totals[total]) << total;
    for (int face = 1; face <= 6; ++face) {
      ASSERT_EQ(Share(matrix, Face(1, face)), faces[0][face]) << face;
      ASSERT_EQ(Share(matrix, Face(2, face)), faces[1][face]) << face;
    }
  }
};

TEST_F(MatrixEdits, FreeFormScalesWhatIsSetAndSpreadsTheRest) {
  const ProbabilityMatrix set = Done(SetShare(Fair(), PlaceOfThrow(1, 3), 30'000, DiceForm::Free));
  EXPECT_EQ(ShareOfThrow(set, 1, 3), 30'000);
  for (int die2 : {1, 2, 4, 5, 6}) EXPECT_EQ(ShareOfThrow(set, 1, die2), 2'000);
  EXPECT_FALSE(IsPercentageDice(set));
  const ProbabilityMatrix total = Done(SetShare(set, {3, 1}, 68'000, DiceForm::Free));
  EXPECT_EQ(ShareOfThrow(total, 1, 3), 60'000);  // 30 of 34 of the total
  EXPECT_EQ(ShareOfThrow(total, 2, 2), 4'000);
  const ProbabilityMatrix none = Done(SetShare(set, {3, 1}, 0, DiceForm::Free));
  const ProbabilityMatrix even = Done(SetShare(none, {3, 1}, 10'000, DiceForm::Free));
  EXPECT_EQ(ShareOfThrow(even, 1, 3), 3'334);  // what is left over goes to the first
  EXPECT_EQ(ShareOfThrow(even, 3, 1), 3'333);
}

TEST_F(MatrixEdits, PercentageDiceAreTheProductOfTheirFaces) {
  ProbabilityMatrix dice = Done(SetShare(Fair(), Face(1, 6), 50'000, DiceForm::Percentage));
  dice = Done(SetShare(WithLock(dice, Face(2, 1), true), Face(2, 2), 0, DiceForm::Percentage));
  EXPECT_TRUE(IsPercentageDice(dice));
  EXPECT_EQ(std::pair(Share(dice, Face(1, 3)), ShareOfThrow(dice, 6, 2)), std::pair(10'000, 0));
  EXPECT_NEAR(ShareOfThrow(dice, 6, 1), 0.5 * Share(dice, Face(2, 1)), 1);
  const ProbabilityMatrix axis = Done(SetAxis(Fair(), 1, 6, 80'000));
  EXPECT_EQ(std::pair(Share(axis, Face(2, 6)), ShareOfThrow(axis, 2, 5)), std::pair(10'000, 4'000));
  EXPECT_EQ(AxisFaces(Done(SetAxis(axis, 2, 5, 0))), (std::array{2, 5}));
  EXPECT_TRUE(IsPercentageDice(Fair()));
}

TEST_F(MatrixEdits, WhatLocksMakeImpossibleIsRefusedWithAReason) {
  const auto why = [](const ProbabilityMatrix& matrix, MatrixPlace place, int share,
                      DiceForm form = DiceForm::Free) {
    const MatrixEdit edit = SetShare(matrix, place, share, form);
    EXPECT_EQ(edit.Matrix, matrix);
    return edit.Refusal;
  };
  const ProbabilityMatrix seven = WithLock(Fair(), kSeven, true);
  EXPECT_EQ(why(seven, kSeven, 1), "The lock on total 7 keeps its share as it is.");
  EXPECT_EQ(why(seven, PlaceOfThrow(3, 4), 1), "Everything in 3-4 is locked at 2.778 %.");
  EXPECT_EQ(why(seven, {1, 1}, 90'000), "What is locked leaves no more than 83.332 % for total 2.");
  const ProbabilityMatrix one = WithLock(Fair(), PlaceOfThrow(1, 1), true);
  EXPECT_EQ(why(one, Face(1, 2), 20'000, DiceForm::Percentage),
            "Percentage dice would change 1-1, which is locked.");
  EXPECT_EQ(why(one, Face(2, 1), 2'000), "What is locked in face 1 of die 2 holds 2.778 %.");
  ProbabilityMatrix faces = Fair();
  for (int face = 1; face < 6; ++face) faces = WithLock(faces, Face(1, face), true);
  EXPECT_EQ(why(faces, Face(1, 6), 20'000, DiceForm::Percentage),
            "Everything else is locked, so face 6 of die 1 must hold 16.665 %.");
  faces = WithLock(faces, Face(1, 6), true);
  EXPECT_EQ(why(faces, Face(2, 6), 20'000, DiceForm::Percentage),
            "The locked faces of the other die hold 100.002 %, not a whole.");
  EXPECT_EQ(why(Fair(), kSeven, 100'001), "A share lies between 0 and 100 percent.");
  EXPECT_EQ(why(Fair(), {0, 0}, 5), "There is nothing to set here.");
  for (const auto& [face1, face2, on] : {std::tuple{0, 6, 5}, {3, 3, 5}, {1, 7, 5}, {1, 6, -1}})
    EXPECT_FALSE(SetAxis(Fair(), face1, face2, on).Done());
}

TEST_F(MatrixEdits, AViewShowsWhatCanBeTyped) {
  const std::tuple<int, MatrixPlace, const char*> shown[] = {
      {ViewPercent, kSeven, "16.667"}, {ViewPercentLessFair, kSeven, "0.000"},
      {ViewRolls, Face(1, 1), "6.00"}, {ViewPercent, PlaceOfThrow(2, 2), "2.778"},
      {ViewRolls, {2, 1}, "2.00"},     {ViewRollsLessFair, kSeven, "0.00"}};
  for (const auto& [view, place, text] : shown)
    EXPECT_EQ(ViewText(Fair(), place, view, 36), text) << view << NameOfPlace(place);
  // The view, the text, the share of 7.
  // clang-format off
  const std::tuple<int, const char*, int> typed[] = {
      {ViewPercent, "20", 20'000}, {ViewPercent, " 20.5 %", 20'500},
      {ViewPercentLessFair, "+3.333", 20'000}, {ViewPercentLessFair, "-16.667", 0},
      {ViewRolls, "9", 25'000}, {ViewRollsLessFair, "3", 25'000}};
  // clang-format on
  for (const auto& [view, text, share] : typed) {
    const MatrixEdit edit = TypeShare(Fair(), kSeven, text, view, 36, DiceForm::Free);
    EXPECT_EQ(Share(Done(edit), kSeven), share) << text;
  }
  for (const char* never :
       {"", "abc", "1e9", "-1", "101", "999999999999999", "1.2.3", "nan", "--5"})
    EXPECT_FALSE(TypeShare(Fair(), kSeven, never, ViewPercent, 36, DiceForm::Free).Done()) << never;
  EXPECT_FALSE(TypeShare(Fair(), kSeven, "1", ViewRolls, 0, DiceForm::Free).Done());
  EXPECT_EQ(Share(Done(StepShare(Fair(), kSeven, -3, DiceForm::Free)), kSeven), 16'367);
  EXPECT_EQ(Share(Done(StepShare(Fair(), kSeven, -9'000, DiceForm::Free)), kSeven), 0);
}

TEST_F(MatrixEdits, TenThousandEditsHoldTheSums) {
  Chance chance(10);
  const auto below = [&chance](int limit) { return chance.Below(limit); };
  ProbabilityMatrix matrix = Fair();
  int done = 0, refused = 0;
  const auto places = EditablePlaces();
  for (int edits = 0; edits < 10'000; ++edits) {
    const MatrixPlace place = places[static_cast<unsigned>(below(static_cast<int>(places.size())))];
    const DiceForm form = below(2) == 0 ? DiceForm::Free : DiceForm::Percentage;
    if (below(12) == 0) matrix = WithLock(matrix, place, below(3) != 0);
    if (below(60) == 0)
      for (const MatrixPlace each : places) matrix = WithLock(matrix, each, false);
    MatrixEdit edit;
    const int share = std::array{below(101) * 1'000, below(4'000), below(100'001)}[below(3)];
    switch (below(8)) {
      case 0: edit = SetAxis(matrix, 1 + below(6), 1 + below(6), share); break;
      case 1: edit = StepShare(matrix, place, below(41) - 20, form); break;
      default: edit = SetShare(matrix, place, share, form);
    }
    if (!edit.Done()) {
      ++refused;
      ASSERT_EQ(edit.Matrix, matrix);
      continue;
    }
    ++done;
    ASSERT_NO_FATAL_FAILURE(ExpectSums(edit.Matrix)) << edits;
    for (const MatrixPlace each : places)
      ASSERT_TRUE(!IsLocked(matrix, each) || Share(edit.Matrix, each) == Share(matrix, each))
          << NameOfPlace(each);
    matrix = edit.Matrix;
  }
  EXPECT_GT(done, 3'000);
  EXPECT_GT(refused, 500);
}

}  // namespace
