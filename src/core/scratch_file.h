// Files that are made beside another one, to take its place when they are whole.
#pragma once

#include <filesystem>
#include <memory>

#include "core/raw_file.h"

/// A new file in a folder under a name that nobody can foresee. It is locked for this program, and
/// is taken away with this unless it has taken a place. Throws std::system_error when it can't be
/// made.
class ScratchFile {
 public:
  ScratchFile(const std::filesystem::path& folder, mode_t mode);
  ~ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  RawFile& File() { return *file_; }

  /// Gives the file the name `target`, in the place of what has it, and keeps it open.
  void TakePlaceOf(const std::filesystem::path& target);

 private:
  std::unique_ptr<RawFile> file_;
  bool named_ = false;
};

/// A name in `folder` for a file that goes by itself if its program is killed.
std::filesystem::path ScratchName(const std::filesystem::path& folder);

/// Takes away what programs that were killed have left in a folder, and nothing that a running one
/// holds. `formerNames`: also what former versions left, which held nothing; only where no other
/// program can be at work. What can't be taken away stays.
void SweepScratchFiles(const std::filesystem::path& folder, bool formerNames);
