// The script editor by clicks and keys: every line of the language, the shipped scripts, and what
// an editor does.
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QRegularExpression>
#include <QTableView>
#include <QTemporaryDir>

#include "autobet/compose.h"
#include "autobet/editor.h"
#include "autobet/line_choice.h"
#include "autobet/read_line.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "screens/frame/report.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmAutoBet.h"

namespace {

constexpr int kLinesAtOnce = 100;  // of the walks, before they clear the script

/// A line without what only the editor knows of it.
ScriptLine Plain(ScriptLine line) {
  line.LineSelected = line.Breakpoint = false;
  line.LineMark = PlainMark;
  return line;
}

std::vector<int> CodesOf(std::span<const ListItem> list) {
  std::vector<int> codes;
  for (const ListItem& item : list)
    if (item.Text != kSeparatorText) codes.push_back(item.Code);
  return codes;
}

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

class TestAutobet : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    static_cast<ScriptState&>(Game) = ScriptState();
    folder_ = std::make_unique<QTemporaryDir>();
    table_ = std::make_unique<frmCrapTable>();
    OpenScreen(*table_, "mnuAutoBetScreen", screen_);
    Game.DataPath = folder_->path().toStdString() + "/";
    view_ = Find<QTableView>(screen_, "picLoggedBets");
  }
  void cleanup() {
    table_.reset();
    static_cast<ScriptState&>(Game) = ScriptState();
    ScriptEdited();
  }

  /// Each subject with each of its operators; second subjects in turn.
  void everyConditionIsBuiltByChoosing() {
    screen_->setUpdatesEnabled(false);  // drawing takes most of the time
    const std::vector<int> compared = CodesOf(CompareList());
    std::size_t turn = 0;
    int lines = 0;
    for (const int subject : CodesOf(ConditionList())) {
      Choose("lblCondition", "listCondition", TextOf(ConditionList(), subject));
      std::vector<int> operators = CodesOf(OperatorList(subject));
      QCOMPARE(Shown("lblWhat"), !operators.empty());
      if (operators.empty()) operators = {0};
      for (const int op : operators) {
        if (op != 0) Choose("lblWhat", "listWhat", TextOf(OperatorList(subject), op));
        const int second = compared[turn++ % compared.size()];
        const bool compares = Shown("lblCompare");
        if (compares) Choose("lblCompare", "listCompare", TextOf(CompareList(), second));
        FillBoxes("picCondition", static_cast<int>(turn));
        const ScriptLine line = LogAndLogAgain("cmdLogCondition");
        QVERIFY(line.LineKind == ConditionLine && line.OfSubject == subject && line.LineCode == op);
        QCOMPARE(line.ToSubject, compares ? second : 0);
        QCOMPARE(compares, OperatorComparesSubjects(op));
        ++lines;
      }
    }
    QVERIFY2(lines > 2'000 && turn > 2 * compared.size(), qPrintable(QString::number(lines)));
  }

  /// Each action with sources and targets in turn, each source and each target twice or more.
  void everyActionIsBuiltByChoosing() {
    screen_->setUpdatesEnabled(false);
    ChooseLabelFirst("Start");
    std::size_t ofTurn = 0;
    std::size_t toTurn = 0;
    int lines = 0;
    for (const int action : CodesOf(ActionList())) {
      Choose("lblAction", "listAction", TextOf(ActionList(), action));
      const std::vector<int> sources = CodesOf(OfList(action));
      const std::vector<int> targets = CodesOf(ToList(action));
      const bool whole = action == 11 || action == ResetRolls || action == SetWinningBets ||
                         action == SetLosingBets || action == CallOff;
      const std::size_t many = std::max(sources.size(), targets.size());
      for (std::size_t i = 0; i < (whole ? 2 * many : 3); ++i) {
        const int of = sources.empty() ? 0 : sources[ofTurn++ % sources.size()];
        const int to = targets.empty() ? 0 : targets[toTurn++ % targets.size()];
        QVERIFY(Shown("lblOf") == !sources.empty() && Shown("lblTo") == !targets.empty());
        if (!sources.empty()) Choose("lblOf", "listOf", TextOf(OfList(action), of));
        if (!targets.empty()) Choose("lblTo", "listTo", TextOf(ToList(action), to));
        FillBoxes("picAction", static_cast<int>(i));
        const ScriptLine line = LogAndLogAgain("cmdLogAction");
        QVERIFY(line.LineKind == ActionLine && line.LineCode == action);
        QVERIFY(line.OfSubject == of && line.ToSubject == to);
        ++lines;
      }
    }
    QVERIFY2(lines >= 900, qPrintable(QString::number(lines)));
  }

  void theShippedScriptsAreRebuiltByKeysAlone() {
    const QStringList names = QDir(kExamples).entryList({"*.bet"});
    QCOMPARE(names.size(), 8);
    for (const QString& name : names) {
      OpenWholeScript(QString(kExamples + name).toStdString());
      const std::vector<ScriptLine> lines = Game.Script;
      Game.Script.clear();
      Command(*screen_, "mnuNew");
      TypeLines(lines);
      QVERIFY(screen_->windowTitle().endsWith('*'));
      Game.AutoBetFile = Game.DataPath + name.toStdString();
      Command(*screen_, "mnuSave");
      QCOMPARE(screen_->windowTitle(), "Auto-Bet (" + name + ")");
      QVERIFY2(BytesOf(folder_->filePath(name)) == BytesOf(kExamples + name), qPrintable(name));
    }
    QVERIFY(PlannedMessages.Shown.empty());
  }

 private:
  const QString kExamples = QString(KELVANOR_PROJECT) + "/examples/";

  template <class Control>
  Control* Get(const QString& name) {
    return Find<Control>(screen_, name);
  }
  bool Shown(const QString& name) { return Get<QWidget>(name)->isVisible(); }

  /// Opens a list by a click on its word and clicks a row.
  void Choose(const QString& word, const QString& listName, std::string_view text) {
    QTest::mouseClick(Get<QWidget>(word), Qt::LeftButton);
    auto* list = Get<QListView>(listName);
    QVERIFY(list->isVisible());
    const QString wanted = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    const QModelIndexList rows = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole,
                                                      wanted, 1, Qt::MatchExactly);
    QVERIFY2(!rows.empty(), qPrintable(wanted));
    list->scrollTo(rows[0]);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(rows[0]).center());
    QVERIFY(!list->isVisible());
  }

  /// Types something into each box that can be seen, and turns the truth round.
  void FillBoxes(const QString& panel, int turn) {
    for (QLineEdit* box : Get<QWidget>(panel)->findChildren<QLineEdit*>()) {
      if (!box->isVisible() || box->objectName() == "txtFilter") continue;
      const QString name = box->objectName();
      const bool number = name.contains("Amount") || name.contains("StackNum");
      const QString typed = name.contains("StackNum") ? QString::number(turn % 100)
                            : number                  ? QString::number(turn % 7) + ".25"
                                                      : "Name " + QString::number(turn % 9);
      if (box->text() != typed) Type(box, typed);
    }
    if (turn % 2 == 0) return;
    for (const char* truth : {"lblConditionTF", "lblActionTF"}) {
      if (Get<QWidget>(panel)->isAncestorOf(Get<QWidget>(truth)) && Shown(truth))
        ClickButton(screen_, truth);
    }
  }

  static void Type(QLineEdit* box, const QString& text) {
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, text);
  }

  /// Logs what a panel holds, loads the line back by a double click, logs it again, and finds the
  /// same record: one whose text is its composition and can be read back.
  ScriptLine LogAndLogAgain(const char* button) {
    if (Game.ScrCount >= kLinesAtOnce) {
      QTest::keyClick(view_, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(view_, Qt::Key_Delete);
    }
    const int count = Game.ScrCount;
    ClickButton(screen_, button);
    const int number = Game.ScriptInsertLine - 1;
    const ScriptLine line = Plain(Line(number));
    const auto* panel = Get<QWidget>(button)->parentWidget();
    Expect(Game.ScrCount == count + 1, line);
    Expect(line.LineText == ComposeLine(line), line);
    Expect(Text(line.LineText).trimmed() == panel->findChild<QLabel*>("lblSentence")->text(), line);
    const auto read = ReadLineText(line.LineText);
    Expect(read && Plain(*read) == line, line);
    QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(number));
    ClickButton(screen_, button);
    Expect(Game.ScrCount == count + 1 && Plain(Line(number)) == line, line);
    return line;
  }

  static QString Text(const std::string& text) { return QString::fromStdString(text); }

  static void Expect(bool holds, const ScriptLine& line) { QVERIFY2(holds, line.LineText.c_str()); }

  QPoint PlaceOf(int number) {
    const QModelIndex index = view_->model()->index(number - 1, 1);
    view_->scrollTo(view_->model()->index(number - 1, 0));
    return QPoint(view_->visualRect(index).x() + 60, view_->visualRect(index).center().y());
  }

  void ChooseLabelFirst(const QString& name) {
    Type(Get<QLineEdit>("txtLabel"), name);
    QTest::keyClick(Get<QLineEdit>("txtLabel"), Qt::Key_Return);
  }

  // ---- By keys alone ----

  /// Chooses from a word's list by typing.
  void TypeChoice(const char* word, std::string_view text) {
    auto* button = Get<QWidget>(word);
    QTest::keyClick(button, Qt::Key_Space);
    auto* filter = button->findChild<QLineEdit*>("txtFilter");
    QTest::keyClicks(filter, Text(std::string(text)));
    QTest::keyClick(filter, Qt::Key_Return);
  }

  void TypeShown(const char* name, const std::string& text) {
    auto* box = Get<QLineEdit>(name);
    if (box->isVisible()) Type(box, Text(text));
  }

  void TypeTruth(const char* name, bool truth) {
    auto* button = Get<QPushButton>(name);
    if (button->isVisible() && button->text().endsWith("True") != truth)
      QTest::keyClick(button, Qt::Key_Space);
  }

  /// Labels come first, so that jumps can choose them; then the lines between, from the top.
  void TypeLines(const std::vector<ScriptLine>& lines) {
    int labels = 0;
    for (const ScriptLine& line : lines) {
      if (line.LineKind != LabelLine) continue;
      TypeLine(line);
      ++labels;
    }
    auto* box = Get<QLineEdit>("txtLabel");
    while (labels-- > 0) QTest::keyClick(box, Qt::Key_Up);
    for (const ScriptLine& line : lines) {
      if (line.LineKind == LabelLine) {
        QTest::keyClick(box, Qt::Key_Down);
      } else {
        TypeLine(line);
      }
      Expect(Plain(Line(Game.ScriptInsertLine - 1)) == Plain(line), line);
    }
  }

  void TypeLine(const ScriptLine& line) {
    if (IsStartCondition(line.LineKind)) {
      TypeChoice("lblStartCondition", TextOf(kStartConditionList, line.LineKind));
      QTest::keyClick(Get<QWidget>("lblStartCondition"), Qt::Key_Return);
    } else if (IsStartAction(line.LineKind)) {
      TypeChoice("lblStartAction", TextOf(kStartActionList, line.LineKind));
      QTest::keyClick(Get<QWidget>("lblStartAction"), Qt::Key_Return);
    } else if (line.LineKind == ConditionLine) {
      TypeCondition(line);
    } else if (line.LineKind == ActionLine) {
      TypeAction(line);
    } else {
      Type(Get<QLineEdit>("txtLabel"), Text(LabelTextOf(line)));
      QTest::keyClick(Get<QLineEdit>("txtLabel"), Qt::Key_Return);
    }
  }

  void TypeCondition(const ScriptLine& line) {
    const ConditionChoice choice = ConditionChoiceOf(line);
    TypeChoice("lblCondition", TextOf(ConditionList(), choice.Subject));
    if (Shown("lblWhat"))
      TypeChoice("lblWhat", TextOf(OperatorList(choice.Subject), line.LineCode));
    if (Shown("lblCompare")) TypeChoice("lblCompare", TextOf(CompareList(), choice.Compare));
    TypeShown("txtConditionStackNum", choice.StackNum);
    TypeShown("txtConditionFlag", choice.Flag);
    TypeShown("txtConditionName", choice.Name);
    TypeShown("txtConditionAmount", choice.Amount);
    TypeShown("txtCompareStackNum", choice.CompareStackNum);
    TypeTruth("lblConditionTF", choice.Truth);
    QTest::keyClick(Get<QWidget>("lblCondition"), Qt::Key_Return);
  }

  void TypeAction(const ScriptLine& line) {
    const ActionChoice choice = ActionChoiceOf(line);
    TypeChoice("lblAction", TextOf(ActionList(), choice.Action));
    if (Shown("lblLabel")) TypeChoice("lblLabel", choice.Label);
    if (Shown("lblOf")) TypeChoice("lblOf", TextOf(OfList(choice.Action), choice.Of));
    if (Shown("lblTo")) TypeChoice("lblTo", TextOf(ToList(choice.Action), choice.To));
    TypeShown("txtActionFlag", choice.Flag);
    TypeShown("txtActionAmount", choice.Amount);
    TypeShown("txtActionOfStackNum", choice.OfStackNum);
    TypeShown("txtActionName", choice.Name);
    TypeShown("txtActionToStackNum", choice.ToStackNum);
    TypeTruth("lblActionTF", choice.Truth);
    QTest::keyClick(Get<QWidget>("lblAction"), Qt::Key_Return);
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<frmCrapTable> table_;
  frmAutoBet* screen_ = nullptr;
  QTableView* view_ = nullptr;
};

SCREEN_TEST(TestAutobet)
#include "test_autobet.moc"
