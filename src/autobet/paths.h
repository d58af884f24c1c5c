// Names of files in scripts.
#pragma once

#include <filesystem>
#include <string>

/// A name as it is when it is a full path, else in `folder` (with a trailing separator).
inline std::string PathIn(const std::string& folder, const std::string& name) {
  return std::filesystem::path(name).is_absolute() ? name : folder + name;
}
