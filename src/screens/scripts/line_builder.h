// Where a line is built: the panels of the kinds of lines, one below the other.
#pragma once

#include <QWidget>
#include <array>

#include "core/script_state.h"

class ActionPanel;
class LinePanel;
class ListPopup;
class QLabel;

class LineBuilder : public QWidget {
  Q_OBJECT

 public:
  explicit LineBuilder(QWidget* parent = nullptr);

  /// Takes the current script's line `number` back into its panel; logging it there replaces it.
  void Load(int number);

  /// Drops the line under construction; false when there is none.
  bool Drop();

  /// Logs the line of the panel that has the focus; false when none has.
  bool LogFocused();

  /// The script's names have changed.
  void ShowNamesInUse();

  /// The boxes go back to plain: the line has been logged.
  void Logged();

  /// The line that logging would replace; 0 for none.
  int Replacing() const { return replacing_; }
  void SetReplacing(int number, LinePanel* panel);

 signals:
  /// A line is to be put in the place of line `replaced`, or, where that is 0, before the current
  /// one.
  void LineLogged(const ScriptLine& line, int replaced);

 private:
  void Log(LinePanel* panel, bool asNew);

  ListPopup* flags_;
  ActionPanel* action_;
  std::array<LinePanel*, 5> panels_{};
  QWidget* picReplacing_;
  QLabel* lblReplacing_;
  LinePanel* logging_ = nullptr;
  LinePanel* replacingOn_ = nullptr;
  int replacing_ = 0;
};
