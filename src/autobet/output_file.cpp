#include "autobet/output_file.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "autobet/paths.h"
#include "core/game_state.h"
#include "core/raw_file.h"
#include "core/record_file.h"
#include "core/strange_files.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kGathered = 1 << 16;  // bytes written at a time

struct OutputFile {
  std::unique_ptr<RawFile> File;
  std::string Gathered;
};
OutputFile output;

[[noreturn]] void RaiseNoFile() { throw RunTimeFault(52, "Bad file name or number"); }
[[noreturn]] void RaiseDiskFull() { throw RunTimeFault(61, "Disk full"); }
[[noreturn]] void RaiseNoAccess() { throw RunTimeFault(75, "Path/File access error"); }
[[noreturn]] void RaiseNoFolder() { throw RunTimeFault(76, "Path not found"); }

void WriteGathered() {
  try {
    output.File->Append(output.Gathered);
    output.Gathered.clear();
  } catch (const std::system_error&) {
    output.Gathered.clear();
    RaiseDiskFull();
  }
}

[[noreturn]] void RaiseNotOpened(const std::string& path) {
  std::error_code failed;
  const fs::path folder = fs::path(path).parent_path();
  if (folder.empty() || fs::is_directory(folder, failed)) RaiseNoAccess();
  RaiseNoFolder();
}

/// Whether a file can be opened or made there: opening a pipe would wait for its reader.
bool IsFileOrFree(const std::string& path) {
  std::error_code none;
  const fs::file_status status = fs::status(PathOf(path), none);
  return !fs::exists(status) || fs::is_regular_file(status);
}

/// A file that a game has named is opened when it is first written to.
void OpenNamedFile() {
  const std::string named = Game.AutoBetOutputFile;
  if (named.empty()) RaiseNoFile();
  if (IsStrange(named)) RaiseNoAccess();
  OpenOutputFile(named, OutputMode::Append);
}

}  // namespace

void UseOutputFile(const std::string& path) {
  CloseOutputFile();
  if (IsFileOrFree(path)) Game.AutoBetOutputFile = path;
}

void OpenOutputFile(const std::string& path, OutputMode mode) {
  CloseOutputFile();
  const std::string full = PathIn(Game.DataPath, path);
  try {
    output.File = std::make_unique<RawFile>(full, RawFile::Use::Write);
    if (mode == OutputMode::Empty) output.File->Cut(0);
    output.Gathered.reserve(2 * kGathered);
  } catch (const std::system_error&) {
    output.File.reset();
    RaiseNotOpened(full);
  }
  Game.AutoBetOutputFile = full;
}

void CloseOutputFile() {
  Game.AutoBetOutputFile.clear();
  if (!output.File) return;
  const OutputFile closing = std::exchange(output, {});
  try {
    closing.File->Append(closing.Gathered);
    closing.File->Close();
  } catch (const std::system_error&) {
    RaiseDiskFull();
  }
}

void WriteOutput(const std::string& text) {
  if (!output.File) OpenNamedFile();
  output.Gathered += text;
  if (output.Gathered.size() >= kGathered) WriteGathered();
}

void FlushOutputFile() {
  if (output.File) WriteGathered();
}
