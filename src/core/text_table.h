// A table of texts: what a screen of figures prints and copies.
#pragma once

#include <string>
#include <vector>

struct TextTable {
  std::string Title;
  std::vector<std::string> Headings;
  std::vector<std::vector<std::string>> Rows;
  std::string Note{};  // over the columns; may be empty
};
