#include "screens/statistics/games_read.h"

#include <filesystem>
#include <utility>

#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/progress.h"
#include "core/record_file.h"

namespace {

/// Changes with every change of the file.
std::string StampOf(const std::string& path) {
  std::error_code none;
  const auto written = std::filesystem::last_write_time(PathOf(path), none);
  const auto time = none ? 0 : written.time_since_epoch().count();
  return std::to_string(FileLength(path)) + " " + std::to_string(time);
}

}  // namespace

bool GamesRead::Follow(const std::string& path, int column) {
  const std::string stamp = StampOf(path);
  if (path == Path && stamp == Stamp && column == Column) return false;
  Path = path;
  Stamp = stamp;
  Column = column;
  Failure.clear();
  GamePopulation games;  // what is shown stands while it is read: views may be painted meanwhile
  try {
    Progress progress("Loading data");
    games = LoadPopulation(path, column, [&progress](double share) { progress.Show(share); });
  } catch (const NotAGamesLog&) {
    Failure = FileText(path, "is no Games Log, or it has been corrupted.");
  } catch (const WorkEnded&) {
    Failure = FileText(path, "hasn't been loaded whole.");
  } catch (const std::exception&) {
    ReportError("Games Log");
    Failure = FileFailureText(path, "read");
  }
  Games = std::move(games);
  return true;
}
