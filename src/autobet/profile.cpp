#include "autobet/profile.h"

#include <algorithm>

namespace {

using Counts = std::vector<LineProfile>;

/// The counts of all lines that have been counted.
Counts Read() {
  const ProfileState& profile = Game.Profile;
  Counts lines(profile.Fired.empty() ? 0 : profile.Fired.size() - 1);
  std::int64_t reached = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    reached += profile.Starts[i + 1];
    lines[i] = {reached, profile.Fired[i + 1]};
  }
  return lines;
}

void Write(const Counts& lines) {
  ProfileState& profile = Game.Profile;
  profile.Starts.assign(lines.size() + 2, 0);
  profile.Fired.assign(lines.size() + 1, 0);
  std::int64_t before = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    profile.Starts[i + 1] = lines[i].Reached - before;
    profile.Fired[i + 1] = lines[i].Fired;
    before = lines[i].Reached;
  }
  profile.Starts.back() = -before;
}

}  // namespace

/// The room for the counts stays: a run may be counting.
void ClearProfile() {
  std::ranges::fill(Game.Profile.Starts, 0);
  std::ranges::fill(Game.Profile.Fired, 0);
}

Counts ScriptProfile() {
  Counts lines = Read();
  lines.resize(static_cast<std::size_t>(Game.ScrCount));
  return lines;
}

void SpliceProfile(int at, int removed, int inserted) {
  Counts lines = Read();
  const auto first = static_cast<std::size_t>(at - 1);
  if (first >= lines.size()) return;
  const std::size_t last = std::min(lines.size(), first + static_cast<std::size_t>(removed));
  const auto begin = lines.begin();
  const auto place = lines.erase(begin + static_cast<std::ptrdiff_t>(first),
                                 begin + static_cast<std::ptrdiff_t>(last));
  lines.insert(place, static_cast<std::size_t>(inserted), LineProfile());
  Write(lines);
}

void ReadyProfile() {
  const auto count = static_cast<std::size_t>(Game.ScrCount);
  if (Game.Profile.Fired.size() > count) return;
  Game.Profile.Fired.resize(count + 1);
  Game.Profile.Starts.resize(count + 2);
}
