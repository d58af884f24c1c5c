#include "persistence/kept_path.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/ansi.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

/// A name as the field keeps it.
std::string AsKept(const std::string& name) {
  Record record;
  record.PutText(0, kKeptPathWidth, name);
  return record.Text(0, kKeptPathWidth);
}

bool IsThere(const fs::path& path) {
  std::error_code none;
  return fs::exists(path, none);
}

/// The only entry of a folder whose kept name is `name`, or begins with it; empty when there is
/// none or more than one.
fs::path FindEntry(const fs::path& folder, const std::string& name, bool isCut) {
  fs::path found;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string kept = AsKept(TextOfPath(entry->path().filename()));
    if (!(isCut ? kept.starts_with(name) : kept == name)) continue;
    if (!found.empty()) return {};
    found = entry->path();
  }
  return failure ? fs::path() : found;
}

/// Follows a path from its root, through whatever each part of it may stand for.
std::string FindOnDisk(const std::string& kept) {
  const bool isCut = ToAnsi(kept).size() >= kKeptPathWidth;
  const fs::path path = PathOf(kept);
  fs::path found = path.root_path();
  const fs::path parts = path.relative_path();
  for (auto part = parts.begin(); part != parts.end(); ++part) {
    const fs::path plain = found / *part;
    const bool isLast = std::next(part) == parts.end();
    found = IsThere(plain) ? plain : FindEntry(found, TextOfPath(*part), isCut && isLast);
    if (found.empty()) return kept;
  }
  std::error_code none;
  return fs::is_regular_file(found, none) ? TextOfPath(found) : kept;
}

}  // namespace

std::string WholePath(const std::string& kept, const std::vector<std::string>& known) {
  if (kept.empty()) return kept;
  const auto name = std::find_if(known.begin(), known.end(), [&kept](const std::string& path) {
    return !path.empty() && AsKept(path) == kept;
  });
  if (name != known.end()) return *name;
  const bool mayBeWhole =
      kept.find('?') == std::string::npos && ToAnsi(kept).size() < kKeptPathWidth;
  const fs::path path = PathOf(kept);
  if (mayBeWhole || !path.is_absolute() || IsThere(path)) return kept;
  return FindOnDisk(kept);
}
