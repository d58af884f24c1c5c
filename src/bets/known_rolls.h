// Known rolls: what a throw does to a layout that it has met before.
//
// What a roll does to the table depends on the layout (which bets stand with which amounts, point,
// working states, rules) and on the throw, and on nothing else while the money isn't short. So a
// roll that was once played in full is known from then on: what it wins, what it decides, and the
// layout that it leaves. It is known by its parts (known_parts.h), whatever stands beside them; and
// as a whole, where the layout comes back. Under Hyper-Drive, while nobody looks, a known roll is a
// look-up and a few sums; amounts, streaks and bet tables are laid out when the stretch of known
// rolls ends.
#pragma once

#include <array>
#include <span>

#include "bets/known_parts.h"
#include "bets/ledger.h"
#include "core/game_state.h"
#include "dice/throw_kinds.h"

/// Whether nothing looks on from roll to roll: under Hyper-Drive with the ledger open, without a
/// script, a log of events, a tape.
bool NobodyLooksOn();

/// Whether a `KnownStretch` may begin: nobody looks on, and the layout on the table is known.
bool KnownRollsMayFollow();

/// Takes notice of the layout before a roll that is played in full, or the first of a run.
/// `changed`: more than the last roll may have changed it, or the rules. Knowledge that was won
/// under other rules is forgotten. `mayLearn`: nothing in the roll can fail.
void BeginLearning(bool changed, bool mayLearn);

/// After each step of a roll's decisions: `betId` is the bet that it decided or moved, `place` the
/// step's place among those of the throw.
void FollowStep(int betId, unsigned place);

/// Learns what the roll since `BeginLearning` did to the bets, and the layout that it left.
void Learn();

/// What is left to be done of a known roll.
struct KnownStep {
  Currency Bankroll;            // after it
  bool TellsOfShooter = false;  // it has steps of the shooter
};

/// For as long as it lives the table stands as the known rolls leave it, and not in the record: of
/// all that a roll decides only the bankroll is kept up, by the caller. At its end the record is
/// brought to where those rolls would have left it, played in full; the roll after it must be
/// played in full.
class KnownStretch {
 public:
  static constexpr std::size_t kMostThrows = 64;

  KnownStretch() = default;
  ~KnownStretch();
  KnownStretch(const KnownStretch&) = delete;
  KnownStretch& operator=(const KnownStretch&) = delete;

  /// Does what throws, up to `kMostThrows`, decide, up to the first of which that isn't known with
  /// the bankroll as it is then, or which breaks the bank or reaches one of the player's limits.
  /// Enters them in the ledger. What comes back is good until the next call; before that it is to
  /// be written to the record, with dice, point and counts.
  std::span<const KnownStep> Play(std::span<const ThrowNumber> throws);

 private:
  /// Where the roll to be played stands.
  struct Place {
    std::int64_t Bankroll = 0;  // before it
    int Roll = 0;               // its number in the game
    unsigned Played = 0;        // the throws before it that are known
  };

  bool MayLeave(Currency bankroll);
  bool Join(int& layout, ThrowNumber thrown);
  bool PlayParts(ThrowNumber thrown, Place at);
  bool PlayLayout(int layout, ThrowNumber thrown, Place at);

  std::array<KnownStep, kMostThrows> steps_;
  std::array<LedgerThrow, kMostThrows> entries_;
  JoinedRoll joined_;
  LedgerProfile profile_;     // of the layout, for rolls that are put together
  bool workingMoved_ = true;  // it may be another
  // Between any two bankrolls that end nothing, none does.
  Currency lowest_ = 1;
  Currency highest_ = 0;
};
