// Names of files as the headings of a game file keep them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

inline constexpr std::size_t kKeptPathWidth = 100;

/// The path that a heading keeps as `kept`: the field cuts long paths, and has a question mark for
/// most letters. One of the `known` names that would be kept so comes first, then `kept` itself if
/// there is such a file, then the one file on disk that would be kept so. `kept` when there is none
/// or more than one.
std::string WholePath(const std::string& kept, const std::vector<std::string>& known);
