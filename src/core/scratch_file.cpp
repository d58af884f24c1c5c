#include "core/scratch_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFront = "kelvanor-";
constexpr std::string_view kFormerFront = "kelvanor";
constexpr std::string_view kEnd = ".tmp";
constexpr std::size_t kDigits = 16;
constexpr std::size_t kFormerDigits = 3;

/// What stands in a name between `front` and the extension; empty in another name.
std::string_view MiddleOf(std::string_view name, std::string_view front) {
  if (!name.starts_with(front) || !name.ends_with(kEnd)) return {};
  if (name.size() <= front.size() + kEnd.size()) return {};
  return name.substr(front.size(), name.size() - front.size() - kEnd.size());
}

bool IsScratchName(std::string_view name, bool formerNames) {
  const std::string_view digits = MiddleOf(name, kFront);
  if (digits.size() == kDigits)
    return digits.find_first_not_of("0123456789abcdef") == std::string_view::npos;
  const std::string_view number = MiddleOf(name, kFormerFront);
  return formerNames && !number.empty() && number.size() <= kFormerDigits &&
         number.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Takes a file away that no program has locked.
void Sweep(const fs::path& path) {
  try {
    if (!fs::is_regular_file(fs::symlink_status(path))) return;
    RawFile file(path, RawFile::Use::Change);
    if (file.TryLock()) RemoveFile(path);
  } catch (const std::exception&) {
    // It is another's, or gone by now.
  }
}

}  // namespace

fs::path ScratchName(const fs::path& folder) {
  std::random_device chance;
  std::array<char, kDigits + 1> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x%08x", chance(), chance());
  return folder / (std::string(kFront) + digits.data() + std::string(kEnd));
}

ScratchFile::ScratchFile(const fs::path& folder, mode_t mode) {
  // A sweep by another program may be quicker than the lock.
  do {
    file_ = std::make_unique<RawFile>(ScratchName(folder), RawFile::Use::Create, mode);
    file_->Lock();
  } while (!file_->HasName());
}

ScratchFile::~ScratchFile() {
  if (named_) return;
  try {
    RemoveFile(file_->Path());
  } catch (const std::exception&) {
    // It stays for the next sweep.
  }
}

void ScratchFile::TakePlaceOf(const fs::path& target) {
  RenameFile(file_->Path(), target);
  named_ = true;
}

void SweepScratchFiles(const fs::path& folder, bool formerNames) {
  std::vector<fs::path> found;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure))
    if (IsScratchName(entry->path().filename().string(), formerNames))
      found.push_back(entry->path());
  std::for_each(found.begin(), found.end(), Sweep);
}
