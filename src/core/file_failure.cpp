#include "core/file_failure.h"

#include <filesystem>
#include <system_error>

#include "core/error_report.h"
#include "core/game_state.h"
#include "core/messages.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

std::string FolderOf(const std::string& path) { return TextOfPath(PathOf(path).parent_path()); }

bool HasFolder(const std::string& path) {
  std::error_code ignored;
  return fs::is_directory(PathOf(FolderOf(path)), ignored);
}

/// The description that `ReportError` left, without its number and place.
std::string Description() {
  return Game.LastErrorText.substr(0, Game.LastErrorText.find(", Error #"));
}

}  // namespace

std::string FaultWords() {
  const std::string fault = Description();
  return fault == "Overflow" ? "an amount is larger than the game can count" : fault;
}

std::string FailureReason(const std::string& path) {
  if (Game.LastSystemError == 0) return Description();
  switch (static_cast<std::errc>(Game.LastSystemError)) {
    case std::errc::no_such_file_or_directory:
      return HasFolder(path) ? "there's no such file" : "there's no such folder";
    case std::errc::not_a_directory: return "there's no such folder";
    case std::errc::permission_denied:
    case std::errc::operation_not_permitted: return "it's protected, or its folder is";
    case std::errc::read_only_file_system: return "its disk is protected against writing";
    case std::errc::no_space_on_device: return "the disk is full";
    case std::errc::is_a_directory: return "it's a folder";
    case std::errc::not_supported: return "it isn't a file";
    case std::errc::filename_too_long: return "its name is too long";
    case std::errc::text_file_busy:
    case std::errc::device_or_resource_busy: return "another program is using it";
    case std::errc::io_error: return "its disk reports a failure";
    default: return std::generic_category().message(Game.LastSystemError);
  }
}

std::string FileText(const std::string& path, std::string_view words) {
  return BareName(path) + "\n" + std::string(words) + "\n\nFolder:  " + FolderOf(path);
}

std::string FileFailureText(const std::string& path, std::string_view done) {
  return FileText(path, "can't be " + std::string(done) + ": " + FailureReason(path) + ".");
}

void FileFailed(const std::string& path, std::string_view done, const std::string& place,
                const std::string& title, int helpTopic) {
  ReportError(place);
  Game.LastFileResult = kSystemFailed;
  ShowMessage(FileFailureText(path, done), title, helpTopic, OkStop);
}
