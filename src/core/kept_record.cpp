#include "core/kept_record.h"

#include <utility>

namespace {

template <class... Part>
struct PartsOfGame : Part... {
  void operator=(const GameState& game) { (..., (static_cast<Part&>(*this) = game)); }
  void CopyTo(GameState& game) const { (..., (static_cast<Part&>(game) = *this)); }
};

}  // namespace

struct KeptRecord::Parts : PartsOfGame<TableState, Settings, AutoPlaySettings, DiceState, Tallies,
                                       FinishedGames, GraphState> {
  using PartsOfGame::operator=;
};

KeptRecord::KeptRecord() = default;
KeptRecord::~KeptRecord() = default;

void KeptRecord::Keep() {
  if (!parts_) parts_ = std::make_unique<Parts>();
  kept_ = false;
  *parts_ = Game;
  kept_ = true;
}

bool KeptRecord::PutBack() {
  if (!std::exchange(kept_, false)) return false;
  parts_->CopyTo(Game);
  return true;
}
