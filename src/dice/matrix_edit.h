// Editing the probability matrix: free form and percentage dice, locks, the axis, and the views in
// which shares are shown and typed. An edit is a value, made of the old matrix and giving a new
// one, so that it can be undone.
#pragma once

#include <string>
#include <vector>

#include "dice/matrix.h"

/// What a place of the matrix holds the share of.
enum class ShareOf { Nothing, Throw, Total, Die1Face, Die2Face };

ShareOf KindOfPlace(MatrixPlace place);

/// The 36 throws, the 11 totals and the faces of both dice.
const std::vector<MatrixPlace>& EditablePlaces();

/// A place in words: "1-3", "total 7", "face 6 of die 1".
std::string NameOfPlace(MatrixPlace place);

/// How the rest of the matrix follows an edit. Free form: what is set takes its share, and the
/// other throws give or take in proportion. Percentage dice: the dice know nothing of each other,
/// and each throw is the product of its faces.
enum class DiceForm { Free, Percentage };

/// True when every throw is the product of its faces, within the rounding.
bool IsPercentageDice(const ProbabilityMatrix& matrix);

/// The caption that tells the form of the dice.
std::string_view DiceFormCaption(DiceForm form);

/// What became of an edit: a new matrix, or the old one with a sentence that says why it stands.
struct MatrixEdit {
  ProbabilityMatrix Matrix{};
  std::string Refusal;

  bool Done() const { return Refusal.empty(); }
};

/// Gives a place a share, in thousandths of a percent. Of the new matrix the 36 throws sum to
/// 100,000, totals and faces are the sums of their throws, nothing is below 0, and what is locked
/// has kept its share: a locked total or face locks its throws. Fractions go by largest remainders.
/// A total or a face in free form scales its throws; a throw or a total is always free form.
MatrixEdit SetShare(const ProbabilityMatrix& matrix, MatrixPlace place, int share, DiceForm form);

/// `SetShare` with the share that stands there, moved by steps of a tenth of a percent and held
/// between 0 and 100 %.
MatrixEdit StepShare(const ProbabilityMatrix& matrix, MatrixPlace place, int steps, DiceForm form);

/// Percentage dice that turn about an axis through two faces: `onAxis` thousandths of a percent of
/// their throws show one of the other four, evenly, and the faces on the axis share the rest. The
/// faces are kept with the matrix.
MatrixEdit SetAxis(const ProbabilityMatrix& matrix, int face1, int face2, int onAxis);

/// The faces on the axis, as they were given last.
std::array<int, 2> AxisFaces(const ProbabilityMatrix& matrix);

bool IsLocked(const ProbabilityMatrix& matrix, MatrixPlace place);
ProbabilityMatrix WithLock(const ProbabilityMatrix& matrix, MatrixPlace place, bool locked);

/// Puts a matrix into the game; it counts as changed.
void UseMatrix(const ProbabilityMatrix& matrix);

/// The fair matrix of a new file, without a name.
void NewProbabilities();

/// The name of the matrix's file for a title, with a star when there is something to save.
std::string ProbabilityTitle();

// --- Views ---

/// What the numbers of the grid are, the values of `ProbabilityView`.
enum ProbabilityViewKind : int {
  ViewPercent = 0,
  ViewPercentLessFair = 1,
  ViewRolls = 2,  // out of `RollsOutOf`
  ViewRollsLessFair = 3,
  kProbabilityViews = 4,
};

/// A share at a place as a view shows it.
double ViewValue(MatrixPlace place, int share, int view, double rollsOutOf);
std::string ViewText(const ProbabilityMatrix& matrix, MatrixPlace place, int view,
                     double rollsOutOf);

/// `SetShare` with a number typed in a view.
MatrixEdit TypeShare(const ProbabilityMatrix& matrix, MatrixPlace place, const std::string& text,
                     int view, double rollsOutOf, DiceForm form);
