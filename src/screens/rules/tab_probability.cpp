// Loaded dice: the probabilities of the throws, edited in their picture.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUndoStack>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/rules/config_page.h"
#include "screens/rules/probability_commands.h"
#include "screens/rules/probability_picture.h"

namespace {

constexpr int kShareUnits = 1000;  // of a percent
constexpr int kPercentDecimals = 3;
constexpr Currency kMostRolls = 1'000'000'000;

/// A matrix with the way in which it is edited.
struct DiceInHand {
  ProbabilityMatrix Matrix;
  DiceForm Form;
};

using EditOf = std::function<MatrixEdit(const ProbabilityMatrix&)>;

class EditStep : public QUndoCommand {
 public:
  EditStep(const QString& text, DiceInHand before, DiceInHand after, DiceForm& form)
      : QUndoCommand(text), before_(before), after_(after), form_(form) {}

  void undo() override { Take(before_); }
  void redo() override { Take(after_); }

 private:
  void Take(const DiceInHand& dice) const {
    UseMatrix(dice.Matrix);
    form_ = dice.Form;
  }

  DiceInHand before_;
  DiceInHand after_;
  DiceForm& form_;
};

class ProbabilityPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(ProbabilityPage)

 public:
  ProbabilityPage() {
    undo_ = new QUndoStack(this);
    QVBoxLayout* column = new QVBoxLayout(this);
    column->addLayout(MakeSettings());
    picture_ = New<picProbabilityBox>(
        "picProbability",
        PictureCalls{[this](MatrixPlace place, const QString& text) { Type(place, text); },
                     [this](MatrixPlace place, int steps) { Step(place, steps); },
                     [this](MatrixPlace place) { Lock(place); }, [this] { ShowLock(); }});
    column->addWidget(picture_, 1);
    column->addWidget(MakeAxisPanel());
    lblRefusal_ = New<QLabel>("lblRefusal");
    lblRefusal_->setWordWrap(true);
    column->addWidget(lblRefusal_);
  }

  std::vector<TabMenu> MenusOfTab() override {
    const auto possible = [this](bool (QUndoStack::*can)() const) {
      return [this, can] { return (undo_->*can)(); };
    };
    const QString nothing = tr("There is no edit.");
    return {
        {"mnuFile",
         tr("&File"),
         {ProbabilityTab},
         {Command("mnuNewProbability", tr("&New"), [this] { NewProbabilityCommand(window()); })
              .On(QKeySequence::New),
          Command("mnuOpenProbability", tr("&Open..."),
                  [this] { OpenProbabilityCommand(window()); })
              .AtRest()
              .On(QKeySequence::Open),
          Command("mnuSaveProbability", tr("&Save"), [this] { SaveProbabilityCommand(window()); })
              .AtRest()
              .On(QKeySequence::Save),
          Command("mnuSaveProbabilityAs", tr("Save &As..."),
                  [this] { SaveProbabilityAsCommand(window()); })
              .AtRest()}},
        {"mnuOptions",
         tr("&Options"),
         {ProbabilityTab},
         {Command("mnuUndo", tr("&Undo"), [this] { Walk(true); })
              .When(possible(&QUndoStack::canUndo), nothing)
              .On(QKeySequence::Undo),
          Command("mnuRedo", tr("&Redo"), [this] { Walk(false); })
              .When(possible(&QUndoStack::canRedo), nothing)
              .On(QKeySequence::Redo),
          Separator(), Command("mnuAxis", tr("Set &axis..."), [this] { OpenAxis(); })}}};
  }

  QString TitleOfTab() override { return Text(ProbabilityTitle()); }

  void ShowRecord() override {
    if (Game.ProbMatrix != known_) {  // not by an edit of this page
      undo_->clear();
      known_ = Game.ProbMatrix;
      form_ = IsPercentageDice(known_) ? DiceForm::Percentage : DiceForm::Free;
      lblRefusal_->clear();
    }
    lblPercentageDice_->setText(Text(DiceFormCaption(form_)));
    chkPercentageDice_->setChecked(form_ == DiceForm::Percentage);
    ShowLock();
    picture_->update();
  }

  void Leave() override { picture_->TakeOpenBox(); }

 private:
  // ---- Settings ----

  QLayout* MakeSettings() {
    QGridLayout* grid = new QGridLayout;
    lblPercentageDice_ = New<QLabel>("lblPercentageDice");
    QFont bold = font();
    bold.setBold(true);
    lblPercentageDice_->setFont(bold);
    grid->addWidget(lblPercentageDice_, 0, 0);
    grid->addWidget(CheckBox("chkUseSkewedProbability", tr(" &Use these dice in the game"),
                             Game.UseSkewedProbability),
                    0, 1);
    chkPercentageDice_ = New<QCheckBox>("chkPercentageDice", tr(" Set the dice by their faces"));
    chkPercentageDice_->setToolTip(
        tr("Each throw is then the product of its two faces; else a face that is set scales its "
           "throws."));
    connect(chkPercentageDice_, &QCheckBox::clicked, this, [this](bool on) {
      form_ = on ? DiceForm::Percentage : DiceForm::Free;
      ShowRecord();
    });
    grid->addWidget(chkPercentageDice_, 0, 2);
    QComboBox* view = ChoiceList(
        "cmbProbabilityView",
        {tr("Percent"), tr("Percent less fair"), tr("Rolls out of"), tr("Rolls out of, less fair")},
        Game.ProbabilityView);
    grid->addWidget(Caption(tr("S&how:"), view), 1, 0, Qt::AlignRight);
    grid->addWidget(view, 1, 1);
    grid->addLayout(MakeRollsAndLock(), 1, 2);
    grid->setColumnStretch(3, 1);
    return grid;
  }

  QLayout* MakeRollsAndLock() {
    QHBoxLayout* row = new QHBoxLayout;
    QLineEdit* rolls = TextBox("txtRollsOutOf", 10);
    const RecordField<Currency> field([] { return Currency::FromDouble(Game.RollsOutOf); },
                                      [](Currency value) { Game.RollsOutOf = value.ToDouble(); });
    Bind(rolls, RecordField(field).Within(1, kMostRolls), NumberForm());
    cmdLock_ = New<QPushButton>("cmdLock");
    cmdLock_->setToolTip(tr("What is locked keeps its share (L)"));
    connect(cmdLock_, &QPushButton::clicked, this, [this] { Lock(picture_->Chosen()); });
    row->addWidget(Caption(tr("R&olls out of:"), rolls));
    row->addWidget(rolls);
    row->addSpacing(16);
    row->addWidget(cmdLock_);
    return row;
  }

  void ShowLock() {
    const QString name = Text(NameOfPlace(picture_->Chosen()));
    const bool locked = IsLocked(Game.ProbMatrix, picture_->Chosen());
    cmdLock_->setText((locked ? tr("Unloc&k %1") : tr("Loc&k %1")).arg(name));
  }

  // ---- Edits ----

  /// Carries an edit out, so that it can be undone; what locks make impossible is told by `refuse`.
  void Edit(const QString& name, DiceForm form, const EditOf& editOf,
            const std::function<void(const std::string&)>& refuse) {
    ChangeByPlayer([this, name, form, editOf, refuse] {
      const DiceInHand before{Game.ProbMatrix, form_};
      const MatrixEdit edit = editOf(Game.ProbMatrix);
      lblRefusal_->clear();
      if (!edit.Done()) return refuse(edit.Refusal);
      if (edit.Matrix == before.Matrix) return;
      undo_->push(new EditStep(name, before, {edit.Matrix, form}, form_));
      known_ = Game.ProbMatrix;
    });
  }

  void Walk(bool back) {
    ChangeByPlayer([this, back] {
      back ? undo_->undo() : undo_->redo();
      known_ = Game.ProbMatrix;
    });
  }

  /// A throw or a total that is set makes free form dice.
  DiceForm FormFor(MatrixPlace place) const {
    const ShareOf kind = KindOfPlace(place);
    return kind == ShareOf::Throw || kind == ShareOf::Total ? DiceForm::Free : form_;
  }

  static void RefuseAloud(const std::string& sentence) {
    ShowMessage(sentence, "Probabilities", kTopicProbability, OkStop);
  }

  void Type(MatrixPlace place, const QString& text) {
    const DiceForm form = FormFor(place);
    Edit(
        tr("Type"), form,
        [place, form, text = text.toStdString()](const ProbabilityMatrix& matrix) {
          return TypeShare(matrix, place, text, Game.ProbabilityView, Game.RollsOutOf, form);
        },
        RefuseAloud);
  }

  void Step(MatrixPlace place, int steps) {
    const DiceForm form = FormFor(place);
    Edit(
        tr("Step"), form,
        [place, form, steps](const ProbabilityMatrix& matrix) {
          return StepShare(matrix, place, steps, form);
        },
        [this](const std::string& sentence) { lblRefusal_->setText(Text(sentence)); });
  }

  void Lock(MatrixPlace place) {
    Edit(
        tr("Lock"), form_,
        [place](const ProbabilityMatrix& matrix) {
          return MatrixEdit{WithLock(matrix, place, !IsLocked(matrix, place)), {}};
        },
        RefuseAloud);
  }

  // ---- The axis ----

  QWidget* MakeAxisPanel() {
    picAxis_ = New<QFrame>("picAxis");
    picAxis_->setFrameShape(QFrame::StyledPanel);
    QHBoxLayout* row = new QHBoxLayout(picAxis_);
    row->addWidget(new QLabel(tr("Faces on the axis:")));
    for (unsigned i = 0; i < txtAxisFace_.size(); ++i) {
      txtAxisFace_[i] = AxisBox(QString("txtAxisFace_%1").arg(i), 1, 0);
      txtAxisFace_[i]->setAccessibleName(tr("Face on the axis"));
      row->addWidget(txtAxisFace_[i]);
    }
    txtAxisShare_ = AxisBox("txtAxisShare", 7, kPercentDecimals);
    row->addWidget(Caption(tr("Percent of throws that stay on it:"), txtAxisShare_));
    row->addWidget(txtAxisShare_);
    auto* ok = New<QPushButton>("cmdAxisOK", tr("OK"));
    connect(ok, &QPushButton::clicked, this, [this] { TakeAxis(); });
    auto* cancel = New<QPushButton>("cmdAxisCancel", tr("Cancel"));
    connect(cancel, &QPushButton::clicked, picAxis_, &QWidget::hide);
    row->addWidget(ok);
    row->addWidget(cancel);
    row->addStretch(1);
    picAxis_->hide();
    return picAxis_;
  }

  QLineEdit* AxisBox(const QString& name, int length, int decimals) {
    QLineEdit* box = TextBox(name, length);
    MakeNumericBox(box, decimals, false);
    connect(box, &QLineEdit::returnPressed, this, [this] { TakeAxis(); });
    return box;
  }

  /// The faces that were given last, and the share that these dice have now.
  void OpenAxis() {
    const std::array<int, 2> faces = AxisFaces(Game.ProbMatrix);
    int onAxis = 0;
    for (int face = 1; face <= 6; ++face) {
      for (unsigned i = 0; i < 2; ++i) txtAxisFace_[i]->setText(QString::number(faces[i]));
      if (face == faces[0] || face == faces[1]) continue;
      onAxis += Game.ProbMatrix[kSharesLayer][static_cast<unsigned>(face + 1)][kDie1Row];
    }
    txtAxisShare_->setText(QString::number(double(onAxis) / kShareUnits, 'f', kPercentDecimals));
    picAxis_->show();
    txtAxisShare_->setFocus();
    txtAxisShare_->selectAll();
  }

  void TakeAxis() {
    const int face1 = txtAxisFace_[0]->text().toInt();
    const int face2 = txtAxisFace_[1]->text().toInt();
    const int onAxis = qRound(txtAxisShare_->text().toDouble() * kShareUnits);
    picAxis_->hide();
    Edit(
        tr("Axis"), DiceForm::Percentage,
        [=](const ProbabilityMatrix& matrix) { return SetAxis(matrix, face1, face2, onAxis); },
        [this](const std::string& sentence) {
          picAxis_->show();
          RefuseAloud(sentence);
        });
  }

  static constexpr unsigned kDie1Row = 12;

  QUndoStack* undo_ = nullptr;
  picProbabilityBox* picture_ = nullptr;
  QLabel* lblPercentageDice_ = nullptr;
  QLabel* lblRefusal_ = nullptr;
  QCheckBox* chkPercentageDice_ = nullptr;
  QPushButton* cmdLock_ = nullptr;
  QFrame* picAxis_ = nullptr;
  std::array<QLineEdit*, 2> txtAxisFace_{};
  QLineEdit* txtAxisShare_ = nullptr;
  ProbabilityMatrix known_{};
  DiceForm form_ = DiceForm::Free;
};

}  // namespace

ConfigPage* MakeProbabilityPage() { return new ProbabilityPage; }
