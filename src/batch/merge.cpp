#include "batch/merge.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "batch/details.h"
#include "batch/failure.h"
#include "batch/run_file.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDetailsEnd = ".csv";
constexpr std::size_t kCountOffset = 92;  // of the games that a log's header counts

bool Exists(const std::string& path) {
  std::error_code none;
  return fs::exists(PathOf(path), none);
}

void CheckThere(const std::string& path) {
  if (!Exists(path)) throw BatchFailure(path + ": there is no such file");
}

void CheckTarget(const std::string& target, std::span<const std::string> sources, bool force) {
  for (const std::string& source : sources) {
    std::error_code none;
    if (fs::equivalent(PathOf(source), PathOf(target), none))
      throw BatchFailure(target + " can't be merged into itself");
  }
  if (Exists(target) && !force) throw BatchFailure(target + " exists; --force writes over it");
}

/// A file on its way to its name, gone unless it gets there.
class Scratch {
 public:
  explicit Scratch(const std::string& target) : target_(target), path_(target + ".part") {
    Remove();
  }
  ~Scratch() { Remove(); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::string& Path() const { return path_; }
  void Finish() const { fs::rename(PathOf(path_), PathOf(target_)); }

 private:
  void Remove() const {
    std::error_code none;
    fs::remove(PathOf(path_), none);
  }

  std::string target_;
  std::string path_;
};

void MergeLogs(const std::string& target, std::span<const std::string> sources) {
  const Scratch scratch(target);
  {
    GamesLogWriter log(scratch.Path());
    for (const std::string& source : sources) log.Append(OpenWholeLog(source));
  }
  scratch.Finish();
}

void MergeDetails(const std::string& target, std::span<const std::string> sources) {
  FileReplacement merged(target);
  merged.Write(kDetailsHeading);
  for (const std::string& source : sources) {
    CheckThere(source);
    std::ifstream file(PathOf(source), std::ios::binary);
    std::string line;
    if (!std::getline(file, line) || line + "\n" != kDetailsHeading)
      throw BatchFailure(source + ": no details that kelvanor-batch wrote");
    while (std::getline(file, line)) {
      if (file.eof()) throw BatchFailure(source + ": the last line is cut");
      merged.Write(line + "\n");
    }
  }
  merged.Finish();
}

}  // namespace

GamesLogReader OpenWholeLog(const std::string& path) {
  CheckThere(path);
  if (Exists(RunFileOf(path)))
    throw BatchFailure(path + " belongs to a run that isn't finished: go on with it by --resume");
  try {
    if (FileLength(path) == 0) throw NotAGamesLog();
    GamesLogReader log(path);
    const std::int64_t counted = ReadRecords(path, 1).At(1).Long(kCountOffset);
    if (log.Count() != counted)
      throw BatchFailure(path + " is cut or damaged: its header counts " + std::to_string(counted) +
                         " games, and it holds " + std::to_string(log.Count()));
    return log;
  } catch (const NotAGamesLog&) {
    throw BatchFailure(path +
                       " is either from an older version, has been corrupted, or is not a true "
                       "Kelvanor Games File");
  } catch (const std::system_error& failure) {
    throw BatchFailure(path + ": " + failure.code().message());
  }
}

int MergeFiles(const BatchOptions& options) {
  const std::string& target = options.Files.front();
  const std::span<const std::string> sources = std::span(options.Files).subspan(1);
  CheckTarget(target, sources, options.Force);
  const bool details = target.ends_with(kDetailsEnd);
  for (const std::string& source : sources)
    if (source.ends_with(kDetailsEnd) != details)
      throw BatchFailure(source + ": logs and details can't be merged with each other");
  (details ? MergeDetails : MergeLogs)(target, sources);
  return BatchDone;
}
