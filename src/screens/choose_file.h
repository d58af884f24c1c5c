// Choosing a file.
#pragma once

#include <QString>
#include <functional>

class QWidget;

/// What a file is chosen for.
struct FileQuestion {
  QString Title;
  QString Kind;     // what the files are, in the list of patterns: "Auto-Bet files"
  QString Pattern;  // "*.bet"
  QString Start;    // a folder, or a path whose name stands in the box at first
  bool ForSaving = false;
};

/// Lets the player choose a file; empty when the player doesn't. A file chosen for saving may exist
/// already: whoever asked asks on about it. Replaceable, for driving the screens without a person.
extern std::function<QString(QWidget* parent, const FileQuestion& question)> ChooseFile;
