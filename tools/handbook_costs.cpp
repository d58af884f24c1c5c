// Makes the tables of true costs in the handbook's pages anew: kelvanor_handbook_costs FOLDER.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "rules/defaults.h"
#include "rules/handbook_costs.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: kelvanor_handbook_costs FOLDER\n", stderr);
    return 2;
  }
  LayDownDefaults();
  int changed = 0;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    if (entry.path().extension() != ".md") continue;
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(in), {}};
    const std::string made = WithCosts(page);
    if (made == page) continue;
    std::ofstream(entry.path(), std::ios::binary) << made;
    ++changed;
  }
  std::printf("%d pages changed\n", changed);
}
