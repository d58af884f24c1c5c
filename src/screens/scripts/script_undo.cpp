#include "screens/scripts/script_undo.h"

#include <QUndoCommand>
#include <utility>

#include "core/game_state.h"

namespace {

class EditCommand : public QUndoCommand {
 public:
  EditCommand(ScriptEdit edit, const QString& what, bool done)
      : QUndoCommand(what), edit_(std::move(edit)), done_(done) {}

  void redo() override {
    if (!std::exchange(done_, false)) setObsolete(!ApplyEdit(edit_));
  }
  void undo() override { setObsolete(!RevertEdit(edit_)); }

 private:
  ScriptEdit edit_;
  bool done_;  // before it came to the stack
};

}  // namespace

ScriptUndo::ScriptUndo(QObject* parent) : QObject(parent), loads_(Game.ScriptLoads) {}

bool ScriptUndo::Push(std::optional<ScriptEdit> edit, const QString& what) {
  Follow();
  if (!edit) return false;
  Add(*std::move(edit), what, false);
  return true;
}

void ScriptUndo::Keep(std::optional<ScriptEdit> edit, const QString& what) {
  Follow();
  if (edit) Add(*std::move(edit), what, true);
}

void ScriptUndo::Add(ScriptEdit edit, const QString& what, bool done) {
  stack_.push(new EditCommand(std::move(edit), what, done));
}

void ScriptUndo::Step(bool back) {
  Follow();
  if (back)
    stack_.undo();
  else
    stack_.redo();
  if (stack_.isClean()) Game.ScriptUnsaved = false;
}

void ScriptUndo::Follow() {
  if (loads_ != Game.ScriptLoads) {
    loads_ = Game.ScriptLoads;
    stack_.clear();
    if (Game.ScriptUnsaved) stack_.resetClean();
  }
  if (!Game.ScriptUnsaved && !stack_.isClean()) stack_.setClean();
}
