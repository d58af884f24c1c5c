#include "core/progress.h"

#include <algorithm>
#include <utility>

#include "core/host.h"

namespace {

constexpr std::uint32_t kBetween = 100;  // milliseconds

}  // namespace

Progress::Progress(std::string what) : what_(std::move(what)), shownAt_(TheHost.Milliseconds()) {}

Progress::~Progress() {
  if (shown_) TheHost.ShowProgress(what_, 1);
}

void Progress::Show(double share) {
  ShowOnly(share);
  if (ended_) throw WorkEnded();
}

void Progress::ShowOnly(double share) {
  const std::uint32_t now = TheHost.Milliseconds();
  if (now - shownAt_ < kBetween) return;
  shown_ = true;
  if (!TheHost.ShowProgress(what_, std::clamp(share, 0.0, 0.999))) ended_ = true;
  shownAt_ = TheHost.Milliseconds();
}
