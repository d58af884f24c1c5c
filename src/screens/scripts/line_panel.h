// What the panels of the script editor have in common: a line is built in each of them.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "autobet/language.h"
#include "core/script_state.h"

class FlowLayout;
class ListPopup;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// A panel: its caption and log button above, its boxes below, and the line as it will read.
class LinePanel : public QWidget {
  Q_OBJECT

 public:
  /// Whether the panel builds lines of this kind.
  virtual bool Builds(int kind) const = 0;

  /// Takes a logged line back into the boxes.
  void Load(const ScriptLine& line);

  /// Puts the boxes back as they were at first.
  void Drop();

  /// The line to be logged, in place of line `replaced` or, where that is 0, as a new one; nothing
  /// once the player has been told what is missing.
  virtual std::optional<ScriptLine> Log(int replaced) = 0;

  /// The player has changed something since the last line was logged, loaded or dropped.
  bool IsTouched() const { return touched_; }
  void SetTouched(bool touched);

  /// Logging puts the line in the place of line `number`; 0: before the current line.
  void SetReplacing(int number);

  /// The box to begin with.
  virtual QWidget* FirstBox() const = 0;

 signals:
  void LogWanted();
  void Touched();

 protected:
  /// `logName` is the name of the log button.
  LinePanel(const char* name, const QString& caption, const char* logName, const QString& tip);

  /// A line of one choice reads as the choice does.
  void HideSentence();

  /// The mnemonic of the caption leads to the first box.
  void SetFirstBox(QWidget* box);

  /// A box or a word of the line, in the order of the calls.
  template <class Part>
  Part* Add(Part* part) {
    AddPart(part);
    return part;
  }
  QLabel* AddWords(const char* name);
  QLineEdit* AddBox(const char* name, const QString& title, std::string& typed, int letters);
  QLineEdit* AddNumber(const char* name, const QString& title, std::string& typed, int letters,
                       int decimals);
  QLineEdit* AddFlag(const char* name, std::string& typed, ListPopup* flags);
  void SetOrder(const QList<QWidget*>& parts);

  /// What the player did with a box: shows the panel anew.
  void Change(const std::function<void()>& act);

  /// Shows the choice in the boxes, of which only the needed ones can be seen.
  virtual void ShowChoice() = 0;
  virtual void Take(const ScriptLine& line) = 0;
  virtual void Reset() = 0;
  /// The line as it stands.
  virtual ScriptLine Now() const = 0;

  void paintEvent(QPaintEvent* event) override;

 private:
  void AddPart(QWidget* part);
  void ShowSentence();

  QLabel* lblCaption_;
  QLabel* lblSentence_;
  QPushButton* log_;
  QString logCaption_;
  FlowLayout* flow_;
  bool touched_ = false;
};

/// A word that isn't chosen, or nothing.
void ShowWords(QLabel* label, std::string_view words);

/// A box with what it holds, seen where it is needed.
void ShowBox(QLineEdit* box, bool needed, const std::string& text);

/// The rows of a list of the language.
std::vector<ListItem> RowsOf(std::span<const ListItem> list);
