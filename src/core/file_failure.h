// How a file that can't be read or written is told to the player: which one, why, and where.
#pragma once

#include <string>
#include <string_view>

/// A message about a file: its bare name, `words` about it, and below them its folder.
std::string FileText(const std::string& path, std::string_view words);

/// Why the failure that `ReportError` noted last came about, such as "there's no such folder". What
/// the system didn't refuse is told in its own words.
std::string FailureReason(const std::string& path);

/// That failure in words where no file is at fault: an overflow is an amount too large to count.
std::string FaultWords();

/// A message about that failure: "can't be `done`: " and the reason.
std::string FileFailureText(const std::string& path, std::string_view done);

/// Ends a routine of files that has failed; called in its catch clause. The fault is reported under
/// `place`, `LastFileResult` is -1, and the player is told under `title`.
void FileFailed(const std::string& path, std::string_view done, const std::string& place,
                const std::string& title, int helpTopic);
