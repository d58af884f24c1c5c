// The part of the record that bets, rolls and rules change, put aside while something may fail.
#pragma once

#include <memory>

#include "core/game_state.h"

/// Money, dice, rules, counters and the graph. Scripts, the log and what the screens keep aren't in
/// it.
class KeptRecord {
 public:
  KeptRecord();
  ~KeptRecord();
  KeptRecord(const KeptRecord&) = delete;
  KeptRecord& operator=(const KeptRecord&) = delete;

  /// Takes a copy of the record; its memory is used again.
  void Keep();

  /// Puts the last copy back; false when there is none. A copy is put back once.
  bool PutBack();

  void Forget() { kept_ = false; }

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
  bool kept_ = false;
};
