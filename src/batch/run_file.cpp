#include "batch/run_file.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "batch/details.h"
#include "batch/failure.h"
#include "core/raw_file.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kNext = "next ";
constexpr const char* kGames = "games written ";
constexpr const char* kDetailsBytes = "bytes of details ";

bool Exists(const std::string& path) {
  std::error_code none;
  return fs::exists(PathOf(path), none);
}

void Remove(const std::string& path) {
  std::error_code none;
  fs::remove(PathOf(path), none);
}

std::vector<std::string> LinesOf(const std::string& path) {
  std::vector<std::string> lines;
  std::ifstream file(PathOf(path));
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

bool IsDetails(const std::string& path) {
  std::ifstream file(PathOf(path));
  std::string line;
  return std::getline(file, line) && line + "\n" == kDetailsHeading;
}

/// Writes text at a place of a file, which ends behind it, and forces it to disk.
void WriteTextAt(const std::string& path, std::int64_t at, const std::string& text) {
  RawFile file(path, RawFile::Use::Write);
  file.Write(at, text);
  file.Cut(at + static_cast<std::int64_t>(text.size()));
  file.Sync();
}

}  // namespace

void RefuseExisting(const RunPaths& paths) {
  if (Exists(RunFileOf(paths.Log)))
    throw BatchFailure(paths.Log +
                       " belongs to a run that isn't finished: --resume goes on with it, --force "
                       "plays it anew");
  for (const std::string* path : {&paths.Log, &paths.Details})
    if (!path->empty() && Exists(*path))
      throw BatchFailure(*path + " exists; --force writes over it");
}

std::string RunFileOf(const std::string& log) { return log + ".run"; }

RunOutput::RunOutput(const RunPaths& paths, std::vector<std::string> command, std::int64_t first,
                     ExistingOutput existing)
    : paths_(paths), command_(std::move(command)), next_(first) {
  const bool unfinished = Exists(RunFileOf(paths_.Log));
  if (existing == ExistingOutput::Resume && unfinished) {
    GoOn();
    return;
  }
  complete_ = existing == ExistingOutput::Resume && Exists(paths_.Log);
  if (complete_) {
    saved_ = CountGames(paths_.Log);
    return;
  }
  if (existing == ExistingOutput::Refuse) RefuseExisting(paths_);
  StartAnew();
}

void RunOutput::StartAnew() {
  // What isn't a log is no earlier outcome of this program.
  if (FileLength(paths_.Log) > 0 && !IsGamesLog(paths_.Log))
    throw BatchFailure(paths_.Log + " exists, and isn't a Games Log");
  if (!paths_.Details.empty() && FileLength(paths_.Details) > 0 && !IsDetails(paths_.Details))
    throw BatchFailure(paths_.Details + " exists, and holds no details");
  // Somebody else's run is left alone.
  if (Exists(paths_.Log)) GamesLogWriter{paths_.Log};
  // From here on a log that is there counts as finished only without a run file.
  WriteRunFile();
  Begin();
}

void RunOutput::Begin() {
  WriteEmptyGamesLog(paths_.Log);
  log_ = std::make_unique<GamesLogWriter>(paths_.Log);
  waitingDetails_ = kDetailsHeading;
}

/// Goes on behind what the run file says is on disk.
void RunOutput::GoOn() {
  ReadProgress(LinesOf(RunFileOf(paths_.Log)));
  if (saved_ == 0) return Begin();
  log_ = std::make_unique<GamesLogWriter>(paths_.Log);
  const bool detailsThere = paths_.Details.empty() ||
                            static_cast<std::int64_t>(FileLength(paths_.Details)) >= detailsLength_;
  if (log_->Count() < saved_ || !detailsThere)
    throw BatchFailure(paths_.Log + " or its details lack games that were written: --force plays " +
                       "them anew");
  log_->Shorten(saved_);
  if (!paths_.Details.empty()) WriteTextAt(paths_.Details, detailsLength_, "");
}

void RunOutput::ReadProgress(const std::vector<std::string>& lines) {
  const auto number = [&lines](const std::string& name) -> std::int64_t {
    for (const std::string& line : lines) {
      if (!line.starts_with(name)) continue;
      std::int64_t value = 0;
      const char* end = line.data() + line.size();
      if (std::from_chars(line.data() + name.size(), end, value).ec == std::errc()) return value;
    }
    return -1;
  };
  for (const std::string& line : command_)
    if (std::find(lines.begin(), lines.end(), line) == lines.end())
      throw BatchFailure(paths_.Log + " belongs to another command: there it isn't \"" + line +
                         "\" (see " + RunFileOf(paths_.Log) + ")");
  const std::int64_t next = number(kNext);
  saved_ = number(kGames);
  detailsLength_ = number(kDetailsBytes);
  if (next < next_ || saved_ < 0 || detailsLength_ < 0)
    throw BatchFailure(RunFileOf(paths_.Log) + " is damaged: --force plays the games anew");
  next_ = next;
}

void RunOutput::WriteRunFile() const {
  std::string text;
  for (const std::string& line : command_) text += line + "\n";
  text += kNext + std::to_string(next_) + "\n" + kGames + std::to_string(saved_) + "\n" +
          kDetailsBytes + std::to_string(detailsLength_) + "\n";
  FileReplacement file(RunFileOf(paths_.Log));
  file.Write(text);
  file.Finish();
}

std::int64_t RunOutput::Games() const { return saved_ + std::ssize(waiting_); }

void RunOutput::Add(const GameBlock& block) {
  waiting_.insert(waiting_.end(), block.Games.begin(), block.Games.end());
  if (!paths_.Details.empty()) waitingDetails_ += block.Details;
  next_ = block.End();
}

void RunOutput::SaveGames() {
  if (!paths_.Details.empty()) {
    WriteTextAt(paths_.Details, detailsLength_, waitingDetails_);
    detailsLength_ += std::ssize(waitingDetails_);
    waitingDetails_.clear();
  }
  log_->Append(waiting_);
  saved_ += std::ssize(waiting_);
  waiting_.clear();
}

void RunOutput::Save() {
  if (next_ == savedNext_) return;
  SaveGames();
  savedNext_ = next_;
  WriteRunFile();
}

void RunOutput::Complete() {
  SaveGames();
  Remove(RunFileOf(paths_.Log));
}
