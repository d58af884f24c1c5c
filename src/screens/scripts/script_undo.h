// Undo and redo of what changes the lines of the script.
#pragma once

#include <QUndoStack>
#include <optional>

#include "autobet/script_edit.h"

class ScriptUndo : public QObject {
  Q_OBJECT

 public:
  explicit ScriptUndo(QObject* parent);

  /// Carries out an edit and keeps it under `what` ("Paste"). False when nothing was changed.
  bool Push(std::optional<ScriptEdit> edit, const QString& what);

  /// Keeps an edit that has been carried out already.
  void Keep(std::optional<ScriptEdit> edit, const QString& what);

  /// Takes the last edit back, or carries the next one out again.
  void Step(bool back);

  const QUndoStack& Stack() const { return stack_; }

  /// Follows the record: edits of lines that were replaced since are forgotten, and a script that
  /// has been saved is what undoing comes back to.
  void Follow();

 private:
  void Add(ScriptEdit edit, const QString& what, bool done);

  QUndoStack stack_;
  int loads_ = 0;
};
