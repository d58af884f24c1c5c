#include "autobet/output_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include "autobet/paths.h"
#include "core/game_state.h"

namespace {

namespace fs = std::filesystem;

struct Closing {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
std::unique_ptr<std::FILE, Closing> outputFile;

[[noreturn]] void RaiseNoFile() { throw RunTimeFault(52, "Bad file name or number"); }
[[noreturn]] void RaiseDiskFull() { throw RunTimeFault(61, "Disk full"); }
[[noreturn]] void RaiseNoAccess() { throw RunTimeFault(75, "Path/File access error"); }
[[noreturn]] void RaiseNoFolder() { throw RunTimeFault(76, "Path not found"); }

[[noreturn]] void RaiseNotOpened(const std::string& path) {
  std::error_code failed;
  const fs::path folder = fs::path(path).parent_path();
  if (folder.empty() || fs::is_directory(folder, failed)) RaiseNoAccess();
  RaiseNoFolder();
}

}  // namespace

void OpenOutputFile(const std::string& path, OutputMode mode) {
  CloseOutputFile();
  const std::string full = PathIn(Game.DataPath, path);
  outputFile.reset(std::fopen(full.c_str(), mode == OutputMode::Empty ? "wb" : "ab"));
  if (!outputFile) RaiseNotOpened(full);
  Game.AutoBetOutputFile = full;
}

void CloseOutputFile() {
  Game.AutoBetOutputFile.clear();
  if (outputFile && std::fclose(outputFile.release()) != 0) RaiseDiskFull();
}

void WriteOutput(const std::string& text) {
  if (!outputFile) RaiseNoFile();
  if (std::fwrite(text.data(), 1, text.size(), outputFile.get()) != text.size()) RaiseDiskFull();
}

void FlushOutputFile() {
  if (outputFile && std::fflush(outputFile.get()) != 0) RaiseDiskFull();
}
