// Tests don't wait for the disk: those of what survives the end of the power set their own calls.
#include <gtest/gtest.h>

#include "core/file_calls.h"

namespace {

class QuickDisk : public ::testing::Environment {
 public:
  void SetUp() override {
    TheFileCalls.Sync = [](int) { return 0; };
  }
};

[[maybe_unused]] const auto* const quickDisk = ::testing::AddGlobalTestEnvironment(new QuickDisk);

}  // namespace
