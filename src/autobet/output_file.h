// The text file that a script writes. One at a time; it stays open between runs.
#pragma once

#include <string>

enum class OutputMode { Empty, Append };

/// Opens `path` (relative names lie in `DataPath`) and leaves the full path in `AutoBetOutputFile`,
/// after closing any open file. A file that can't be opened is a run-time fault, and none is open.
void OpenOutputFile(const std::string& path, OutputMode mode);

/// A game names `path` as the file in use, after any open one is closed. It is opened to be
/// appended to when something is first written: opening a game makes and changes no file. What is
/// there and no file isn't used.
void UseOutputFile(const std::string& path);

/// Writes what is pending and closes. Nothing happens with none open.
void CloseOutputFile();

/// Writes a text as it is. With no file open, or when it can't be written, a run-time fault.
void WriteOutput(const std::string& text);

/// Hands what is pending to the system, so that a reader sees it. With none open nothing happens.
void FlushOutputFile();
