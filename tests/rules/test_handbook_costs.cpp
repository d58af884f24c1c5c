// The handbook tells what the bets cost: every one, and as the program reckons it now.
#include "rules/handbook_costs.h"

#include <numeric>

#include "support/table_fixture.h"

namespace {

TEST(HandbookCosts, HoldForEveryBetUnderTheDefaultRules) {
  LayDownDefaults();
  std::vector<int> told;
  for (const auto& entry : fs::directory_iterator(KELVANOR_PROJECT "/docs/handbook")) {
    if (entry.path().extension() != ".md") continue;
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(in), {}};
    EXPECT_EQ(WithCosts(page), page) << "run kelvanor_handbook_costs docs/handbook";
    for (std::size_t at = 0; (at = page.find("<!-- costs:", at)) != page.npos;) {
      at += 11;
      std::istringstream ids(page.substr(at, page.find("-->", at) - at));
      for (int id = 0; ids >> id;) told.push_back(id);
    }
  }
  std::vector<int> all(LastBet);
  std::iota(all.begin(), all.end(), 1);
  EXPECT_THAT(told, testing::UnorderedElementsAreArray(all));
}

}  // namespace
