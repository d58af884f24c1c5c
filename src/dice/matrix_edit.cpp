#include "dice/matrix_edit.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>

#include "core/number_format.h"
#include "core/record_file.h"
#include "core/text.h"

namespace {

constexpr int kFaces = 6;
constexpr int kThrows = kFaces * kFaces;
constexpr int kTotalsColumn = 1;
constexpr int kLastTotalRow = 11;
constexpr int kDie1Row = 12;
constexpr int kDie2Row = 13;
constexpr int kShareStep = 100;
constexpr MatrixPlace kAxisPlaces[2] = {{1, 0}, {2, 0}};

using Matrix = ProbabilityMatrix;

int& At(Matrix& matrix, int layer, MatrixPlace place) {
  return matrix[static_cast<unsigned>(layer)][static_cast<unsigned>(place.Column)]
               [static_cast<unsigned>(place.Row)];
}

int At(const Matrix& matrix, int layer, MatrixPlace place) {
  return matrix[static_cast<unsigned>(layer)][static_cast<unsigned>(place.Column)]
               [static_cast<unsigned>(place.Row)];
}

int ShareAt(const Matrix& matrix, MatrixPlace place) { return At(matrix, kSharesLayer, place); }

MatrixPlace TotalPlace(int total) { return {total - 1, kTotalsColumn}; }
MatrixPlace FacePlace(int dieRow, int face) { return {dieRow, face + 1}; }
int TotalAt(MatrixPlace place) { return place.Row + 1; }
int FaceAt(MatrixPlace place) { return place.Column - 1; }

struct Dice {
  int Die1;
  int Die2;
};

constexpr std::array<Dice, kThrows> kAllDice = [] {
  std::array<Dice, kThrows> all{};
  for (int i = 0; i < kThrows; ++i)
    all[static_cast<unsigned>(i)] = {i / kFaces + 1, i % kFaces + 1};
  return all;
}();

MatrixPlace PlaceOf(Dice dice) { return PlaceOfThrow(dice.Die1, dice.Die2); }

/// True when a throw belongs to a place: to the throw itself, to its total or to a face.
bool Belongs(Dice dice, MatrixPlace place) {
  switch (KindOfPlace(place)) {
    case ShareOf::Throw: return PlaceOf(dice) == place;
    case ShareOf::Total: return dice.Die1 + dice.Die2 == TotalAt(place);
    case ShareOf::Die1Face: return dice.Die1 == FaceAt(place);
    case ShareOf::Die2Face: return dice.Die2 == FaceAt(place);
    default: return false;
  }
}

/// A throw is also locked by its total and its faces.
bool ThrowIsLocked(const Matrix& matrix, Dice dice) {
  return IsLocked(matrix, PlaceOf(dice)) || IsLocked(matrix, TotalPlace(dice.Die1 + dice.Die2)) ||
         IsLocked(matrix, FacePlace(kDie1Row, dice.Die1)) ||
         IsLocked(matrix, FacePlace(kDie2Row, dice.Die2));
}

void SumTotalsAndFaces(Matrix& matrix) {
  for (const MatrixPlace place : EditablePlaces()) {
    if (KindOfPlace(place) == ShareOf::Throw) continue;
    int sum = 0;
    for (const Dice dice : kAllDice)
      if (Belongs(dice, place)) sum += ShareAt(matrix, PlaceOf(dice));
    At(matrix, kSharesLayer, place) = sum;
  }
}

std::string PercentText(int share) { return FormatNumber(share / 1000.0, "0.0##") + " %"; }

MatrixEdit Refuse(const Matrix& matrix, const std::string& sentence) { return {matrix, sentence}; }

/// Spreads `whole` over places in proportion to their shares, evenly if these are all 0.
void Spread(Matrix& matrix, const std::vector<MatrixPlace>& places, int whole) {
  if (places.empty()) return;
  std::vector<std::int64_t> weights;
  for (const MatrixPlace place : places) weights.push_back(ShareAt(matrix, place));
  std::int64_t sum = std::accumulate(weights.begin(), weights.end(), std::int64_t{0});
  if (sum == 0) {
    std::fill(weights.begin(), weights.end(), 1);
    sum = static_cast<std::int64_t>(weights.size());
  }
  std::vector<std::pair<std::int64_t, std::size_t>> remainders;  // largest first, then in order
  std::int64_t left = whole;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::int64_t part = weights[i] * whole / sum;
    At(matrix, kSharesLayer, places[i]) = static_cast<int>(part);
    left -= part;
    remainders.emplace_back(-(weights[i] * whole % sum), i);
  }
  std::sort(remainders.begin(), remainders.end());
  for (std::size_t i = 0; i < static_cast<std::size_t>(left); ++i)
    ++At(matrix, kSharesLayer, places[remainders[i].second]);
}

// --- Room between locks ---

/// Places that share a whole: what the locked ones hold, and the open ones.
struct Room {
  int Locked = 0;
  std::vector<MatrixPlace> Open;

  void Add(const Matrix& matrix, MatrixPlace place, bool locked) {
    if (locked)
      Locked += ShareAt(matrix, place);
    else
      Open.push_back(place);
  }
  bool Fits(int whole) const { return Open.empty() ? whole == Locked : whole >= Locked; }
};

/// Why the places beside `name` can't take what a share of it leaves them.
std::string WhyOthersCannot(const Room& others, const std::string& name) {
  const std::string left = PercentText(kWholeShare - others.Locked);
  return others.Open.empty() ? "Everything else is locked, so " + name + " must hold " + left + "."
                             : "What is locked leaves no more than " + left + " for " + name + ".";
}

std::string WhyPlaceCannot(const Room& own, const std::string& name) {
  return own.Open.empty()
             ? "Everything in " + name + " is locked at " + PercentText(own.Locked) + "."
             : "What is locked in " + name + " holds " + PercentText(own.Locked) + ".";
}

// --- Free form ---

MatrixEdit SetFreely(const Matrix& matrix, MatrixPlace place, int share) {
  Room own;
  Room others;
  for (const Dice dice : kAllDice)
    (Belongs(dice, place) ? own : others).Add(matrix, PlaceOf(dice), ThrowIsLocked(matrix, dice));
  const std::string name = NameOfPlace(place);
  if (!own.Fits(share)) return Refuse(matrix, WhyPlaceCannot(own, name));
  if (!others.Fits(kWholeShare - share)) return Refuse(matrix, WhyOthersCannot(others, name));
  MatrixEdit edit{matrix, {}};
  Spread(edit.Matrix, own.Open, share - own.Locked);
  Spread(edit.Matrix, others.Open, kWholeShare - share - others.Locked);
  SumTotalsAndFaces(edit.Matrix);
  return edit;
}

// --- Percentage dice ---

/// Rounds the products of the faces to whole shares so that every face is exactly the sum of its
/// throws: of all such roundings, the one whose throws that go up have the largest remainders.
class ProductRounding {
 public:
  explicit ProductRounding(const Matrix& matrix) {
    for (int face = 0; face < kFaces; ++face) {
      need1_[face] = ShareAt(matrix, FacePlace(kDie1Row, face + 1));
      need2_[face] = ShareAt(matrix, FacePlace(kDie2Row, face + 1));
    }
    const auto faces1 = need1_, faces2 = need2_;
    for (unsigned i = 0; i < kFaces; ++i) {
      for (unsigned j = 0; j < kFaces; ++j) {
        const std::int64_t product = std::int64_t{faces1[i]} * faces2[j];
        const int part = static_cast<int>(product / kWholeShare);
        share_[i][j] = part;
        remainder_[i][j] = product % kWholeShare;
        need1_[i] -= part;
        need2_[j] -= part;
      }
    }
    while (RaiseOne()) {
    }
  }

  void Store(Matrix& matrix) const {
    for (const Dice dice : kAllDice) {
      const auto i = static_cast<unsigned>(dice.Die1 - 1), j = static_cast<unsigned>(dice.Die2 - 1);
      At(matrix, kSharesLayer, PlaceOf(dice)) = share_[i][j] + (raised_[i][j] ? 1 : 0);
    }
  }

 private:
  static constexpr std::int64_t kUnreached = INT64_MIN / 2;

  /// One more throw goes up, and others may change for it along the way: the chain from a face of
  /// die 1 to a face of die 2 that gains the largest remainders.
  bool RaiseOne() {
    std::array<std::int64_t, kFaces> gain1{}, gain2{};
    for (unsigned i = 0; i < kFaces; ++i) gain1[i] = need1_[i] > 0 ? 0 : kUnreached;
    gain2.fill(kUnreached);
    from1_.fill(kFaces);
    for (int sweep = 0; sweep < 2 * kFaces; ++sweep) Sweep(gain1, gain2);
    unsigned end = kFaces;
    for (unsigned j = 0; j < kFaces; ++j) {
      if (need2_[j] > 0 && gain2[j] > kUnreached / 2 && (end == kFaces || gain2[j] > gain2[end]))
        end = j;
    }
    if (end == kFaces) return false;
    --need2_[end];
    Flip(end);
    return true;
  }

  void Sweep(std::array<std::int64_t, kFaces>& gain1, std::array<std::int64_t, kFaces>& gain2) {
    for (unsigned i = 0; i < kFaces; ++i) {
      for (unsigned j = 0; j < kFaces; ++j) {
        const std::int64_t remainder = remainder_[i][j];
        if (remainder == 0) continue;
        if (!raised_[i][j] && gain1[i] > kUnreached / 2 && gain1[i] + remainder > gain2[j]) {
          gain2[j] = gain1[i] + remainder;
          from2_[j] = i;
        } else if (raised_[i][j] && gain2[j] > kUnreached / 2 && gain2[j] - remainder > gain1[i]) {
          gain1[i] = gain2[j] - remainder;
          from1_[i] = j;
        }
      }
    }
  }

  void Flip(unsigned end) {
    while (true) {
      const unsigned i = from2_[end];
      raised_[i][end] = true;
      if (from1_[i] == kFaces) {
        --need1_[i];
        return;
      }
      end = from1_[i];
      raised_[i][end] = false;
    }
  }

  std::array<int, kFaces> need1_{}, need2_{};  // shares that the throws of a face still lack
  std::array<std::array<int, kFaces>, kFaces> share_{};
  std::array<std::array<std::int64_t, kFaces>, kFaces> remainder_{};
  std::array<std::array<bool, kFaces>, kFaces> raised_{};
  std::array<unsigned, kFaces> from1_{}, from2_{};
};

/// The places of a die's faces beside `but`.
Room FacesOf(const Matrix& matrix, int dieRow, int but) {
  Room room;
  for (int face = 1; face <= kFaces; ++face) {
    const MatrixPlace place = FacePlace(dieRow, face);
    if (face != but) room.Add(matrix, place, IsLocked(matrix, place));
  }
  return room;
}

/// A lock that a new matrix breaks, in words.
std::optional<std::string> BrokenLock(const Matrix& before, const Matrix& after) {
  for (const MatrixPlace place : EditablePlaces())
    if (IsLocked(before, place) && ShareAt(before, place) != ShareAt(after, place))
      return NameOfPlace(place);
  return {};
}

/// Lays the throws down from the faces.
MatrixEdit FromFaces(const Matrix& before, Matrix after) {
  ProductRounding(after).Store(after);
  SumTotalsAndFaces(after);
  if (const auto broken = BrokenLock(before, after))
    return Refuse(before, "Percentage dice would change " + *broken + ", which is locked.");
  return {after, {}};
}

MatrixEdit SetFace(const Matrix& matrix, MatrixPlace place, int share) {
  const Room others = FacesOf(matrix, place.Row, FaceAt(place));
  if (!others.Fits(kWholeShare - share))
    return Refuse(matrix, WhyOthersCannot(others, NameOfPlace(place)));
  Matrix after = matrix;
  At(after, kSharesLayer, place) = share;
  Spread(after, others.Open, kWholeShare - share - others.Locked);
  // The other die may have come from a matrix whose faces don't make a whole.
  const int otherRow = place.Row == kDie1Row ? kDie2Row : kDie1Row;
  const Room otherDie = FacesOf(matrix, otherRow, 0);
  if (!otherDie.Fits(kWholeShare)) {
    return Refuse(matrix, "The locked faces of the other die hold " + PercentText(otherDie.Locked) +
                              ", not a whole.");
  }
  Spread(after, otherDie.Open, kWholeShare - otherDie.Locked);
  return FromFaces(matrix, after);
}

// --- Views ---

int FairThrows(MatrixPlace place) {
  switch (KindOfPlace(place)) {
    case ShareOf::Throw: return 1;
    case ShareOf::Total: return kFaces - std::abs(place.Row - kFaces);
    case ShareOf::Nothing: return 0;
    default: return kFaces;
  }
}

bool IsRollsView(int view) { return view == ViewRolls || view == ViewRollsLessFair; }
bool IsLessFair(int view) { return view == ViewPercentLessFair || view == ViewRollsLessFair; }

/// What 100 % is in a view.
double WholeOf(int view, double rollsOutOf) { return IsRollsView(view) ? rollsOutOf : 100; }

/// A whole text as a number; none for letters, exponents and what is too long to be meant.
std::optional<double> TypedNumber(std::string text) {
  std::erase_if(text, [](char letter) { return letter == ',' || letter == ' ' || letter == '%'; });
  if (text.starts_with('+')) text.erase(0, 1);
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  if (read.ec != std::errc() || read.ptr != end || !std::isfinite(value)) return {};
  return value;
}

}  // namespace

ShareOf KindOfPlace(MatrixPlace place) {
  const auto [row, column] = place;
  if (column == kTotalsColumn && row >= 1 && row <= kLastTotalRow) return ShareOf::Total;
  if (column < 2 || column >= kMatrixColumns) return ShareOf::Nothing;
  if (row == kDie1Row) return ShareOf::Die1Face;
  if (row == kDie2Row) return ShareOf::Die2Face;
  return row >= column - 1 && row <= 13 - column ? ShareOf::Throw : ShareOf::Nothing;
}

const std::vector<MatrixPlace>& EditablePlaces() {
  static const std::vector<MatrixPlace> places = [] {
    std::vector<MatrixPlace> all;
    for (int column = 0; column < kMatrixColumns; ++column)
      for (int row = 0; row < kMatrixRows; ++row)
        if (KindOfPlace({row, column}) != ShareOf::Nothing) all.push_back({row, column});
    return all;
  }();
  return places;
}

std::string NameOfPlace(MatrixPlace place) {
  switch (KindOfPlace(place)) {
    case ShareOf::Throw: break;
    case ShareOf::Total: return "total " + std::to_string(TotalAt(place));
    case ShareOf::Die1Face: return "face " + std::to_string(FaceAt(place)) + " of die 1";
    case ShareOf::Die2Face: return "face " + std::to_string(FaceAt(place)) + " of die 2";
    default: return {};
  }
  const auto dice = std::find_if(kAllDice.begin(), kAllDice.end(),
                                 [place](Dice each) { return PlaceOf(each) == place; });
  return std::to_string(dice->Die1) + "-" + std::to_string(dice->Die2);
}

bool IsPercentageDice(const ProbabilityMatrix& matrix) {
  return std::all_of(kAllDice.begin(), kAllDice.end(), [&matrix](Dice dice) {
    const std::int64_t product = std::int64_t{ShareAt(matrix, FacePlace(kDie1Row, dice.Die1))} *
                                 ShareAt(matrix, FacePlace(kDie2Row, dice.Die2));
    const std::int64_t held = std::int64_t{ShareAt(matrix, PlaceOf(dice))} * kWholeShare;
    return std::abs(product - held) < kWholeShare;
  });
}

std::string_view DiceFormCaption(DiceForm form) {
  return form == DiceForm::Percentage ? "Percentage Dice" : "Free Form Dice";
}

MatrixEdit SetShare(const ProbabilityMatrix& matrix, MatrixPlace place, int share, DiceForm form) {
  const ShareOf kind = KindOfPlace(place);
  if (kind == ShareOf::Nothing) return Refuse(matrix, "There is nothing to set here.");
  if (share < 0 || share > kWholeShare)
    return Refuse(matrix, "A share lies between 0 and 100 percent.");
  if (IsLocked(matrix, place))
    return Refuse(matrix, "The lock on " + NameOfPlace(place) + " keeps its share as it is.");
  const bool face = kind == ShareOf::Die1Face || kind == ShareOf::Die2Face;
  return face && form == DiceForm::Percentage ? SetFace(matrix, place, share)
                                              : SetFreely(matrix, place, share);
}

MatrixEdit StepShare(const ProbabilityMatrix& matrix, MatrixPlace place, int steps, DiceForm form) {
  const std::int64_t share = ShareAt(matrix, place) + std::int64_t{steps} * kShareStep;
  return SetShare(matrix, place, static_cast<int>(std::clamp<std::int64_t>(share, 0, kWholeShare)),
                  form);
}

MatrixEdit SetAxis(const ProbabilityMatrix& matrix, int face1, int face2, int onAxis) {
  const auto isFace = [](int face) { return face >= 1 && face <= kFaces; };
  if (!isFace(face1) || !isFace(face2) || face1 == face2)
    return Refuse(matrix, "An axis runs through two different faces, from 1 to 6.");
  if (onAxis < 0 || onAxis > kWholeShare)
    return Refuse(matrix, "The share of throws on the axis lies between 0 and 100 percent.");
  Matrix after = matrix;
  At(after, kLocksLayer, kAxisPlaces[0]) = face1;
  At(after, kLocksLayer, kAxisPlaces[1]) = face2;
  for (const int row : {kDie1Row, kDie2Row}) {
    std::vector<MatrixPlace> axis, others;
    for (int face = 1; face <= kFaces; ++face) {
      const MatrixPlace place = FacePlace(row, face);
      At(after, kSharesLayer, place) = 1;
      (face == face1 || face == face2 ? axis : others).push_back(place);
    }
    Spread(after, axis, kWholeShare - onAxis);
    Spread(after, others, onAxis);
  }
  return FromFaces(matrix, after);
}

std::array<int, 2> AxisFaces(const ProbabilityMatrix& matrix) {
  return {At(matrix, kLocksLayer, kAxisPlaces[0]), At(matrix, kLocksLayer, kAxisPlaces[1])};
}

bool IsLocked(const ProbabilityMatrix& matrix, MatrixPlace place) {
  return KindOfPlace(place) != ShareOf::Nothing && At(matrix, kLocksLayer, place) > 0;
}

ProbabilityMatrix WithLock(const ProbabilityMatrix& matrix, MatrixPlace place, bool locked) {
  Matrix after = matrix;
  if (KindOfPlace(place) != ShareOf::Nothing) At(after, kLocksLayer, place) = locked ? 1 : 0;
  return after;
}

void UseMatrix(const ProbabilityMatrix& matrix) {
  if (Game.ProbMatrix == matrix) return;
  Game.ProbMatrix = matrix;
  Game.ProbabilityChanged = true;
}

void NewProbabilities() {
  SetFairMatrix();
  Game.PrbFileName.clear();
  Game.ProbabilityChanged = false;
}

std::string ProbabilityTitle() {
  const std::string name = Game.PrbFileName.empty() ? "Untitled" : BareName(Game.PrbFileName);
  return Game.ProbabilityChanged ? name + " *" : name;
}

double ViewValue(MatrixPlace place, int share, int view, double rollsOutOf) {
  const double whole = WholeOf(view, rollsOutOf);
  const double fair = IsLessFair(view) ? FairThrows(place) * whole / kThrows : 0;
  return share * whole / kWholeShare - fair;
}

std::string ViewText(const ProbabilityMatrix& matrix, MatrixPlace place, int view,
                     double rollsOutOf) {
  // What shows as 0 has no sign.
  const double value =
      std::round(ViewValue(place, ShareAt(matrix, place), view, rollsOutOf) * 1000) / 1000;
  const bool lessFair = IsLessFair(view);
  if (IsRollsView(view))
    return FormatNumber(value, lessFair ? "+#,0.00#;-#,0.00#;0.00" : "#,0.00#;-#,0.00#;0.00");
  return FormatNumber(value, lessFair ? "+0.000;-0.000;0.000" : "0.000;-0.000;0.000");
}

MatrixEdit TypeShare(const ProbabilityMatrix& matrix, MatrixPlace place, const std::string& text,
                     int view, double rollsOutOf, DiceForm form) {
  const std::optional<double> typed = TypedNumber(text);
  const double whole = WholeOf(view, rollsOutOf);
  if (!typed) return Refuse(matrix, Quoted(text) + " is no number.");
  if (!(whole > 0)) return Refuse(matrix, "The number of rolls must be above 0.");
  const double fair = IsLessFair(view) ? FairThrows(place) * whole / kThrows : 0;
  const double share = std::round((*typed + fair) * kWholeShare / whole);
  const bool inRange = share >= 0 && share <= kWholeShare;
  return SetShare(matrix, place, inRange ? static_cast<int>(share) : -1, form);
}
