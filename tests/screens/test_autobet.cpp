// The script editor by clicks and keys: every line of the language, the shipped scripts, and what
// an editor does.

#include "autobet/compose.h"
#include "autobet/line_choice.h"
#include "autobet/read_line.h"
#include "autobet/script_edit.h"
#include "autobet/script_reader.h"
#include "screens/screen_driver.h"
#include "screens/scripts/choice_button.h"
#include "screens/scripts/frmAutoBet.h"
#include "screens/table/screens.h"

namespace {

constexpr int kLinesAtOnce = 100;  // of the walks, before they clear the script

/// A line without what only the editor knows of it.
ScriptLine Plain(ScriptLine line) {
  line.LineSelected = line.Breakpoint = false;
  line.LineMark = PlainMark;
  return line;
}

}  // namespace

class TestAutobet : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuAutoBetScreen", screen_);
    view_ = Get<QTableView>("picLoggedBets");
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
      QCOMPARE(Shows("lblWhat"), !operators.empty());
      if (operators.empty()) operators = {0};
      for (const int op : operators) {
        if (op != 0) Choose("lblWhat", "listWhat", TextOf(OperatorList(subject), op));
        const int second = compared[turn++ % compared.size()];
        const bool compares = Shows("lblCompare");
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
    TypeLabel("Start");
    std::size_t ofTurn = 0, toTurn = 0;
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
        QVERIFY(Shows("lblOf") == !sources.empty() && Shows("lblTo") == !targets.empty());
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
      OpenWholeScript((kExamples + name).toStdString());
      const std::vector<ScriptLine> lines = Game.Script;
      TheHost.RefreshViews();
      Menu("mnuNew");
      QCOMPARE(Game.ScrCount, 0);
      TypeLines(lines);
      QVERIFY(screen_->windowTitle().endsWith('*'));
      Game.AutoBetFile = FilePath(name);
      Menu("mnuSave");
      QCOMPARE(screen_->windowTitle(), "Auto-Bet (" + name + ")");
      QVERIFY2(Read(name) == BytesOf(kExamples + name), qPrintable(name));
    }
    QVERIFY(PlannedMessages.Shown.empty());
  }

  void whatIsMissingOrWrongIsTold() {
    QVERIFY(Shows("lblNoLines") && Game.ScrCount == 0);
    const auto refused = [this](const char* panel, const std::string& text, const char* title) {
      PlannedMessages.Shown.clear();
      Get<QWidget>(panel)->setFocus();
      QTest::keyClick(Get<QWidget>(panel), Qt::Key_Return);
      ExpectMessage(text, title);
      QCOMPARE(Game.ScrCount, 0);
    };
    refused("txtLabel", "You must enter a label name.", "Log Label");
    Choose("lblCondition", "listCondition", "Average bankroll");
    Type("txtConditionStackNum", "40000");
    refused("txtConditionStackNum", "Please enter a number of rolls from 0 to 32767.",
            "Log Condition");
    Choose("lblAction", "listAction", "Go to");
    QCOMPARE(Get<QPushButton>("lblLabel")->text(), "*** No labels in use ***");
    refused("lblAction", "You need to enter a label to go to.", "Log Action");
    QTest::keyClick(Get<QWidget>("lblAction"), Qt::Key_Escape);  // drops the line
    QVERIFY(screen_->isVisible() && !Shows("lblLabel"));
    TypeLabel("Again");
    QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(1));
    Click("cmdLogLabel");  // may keep its name
    QCOMPARE(Lines(), "Label \"Again\"");
    Choose("lblAction", "listAction", "Go to");
    QCOMPARE(Get<QPushButton>("lblLabel")->text(), "Again");
    for (const bool stays : {true, false}) {
      QTest::keyClick(Get<QWidget>("lblAction"), Qt::Key_Escape);
      QCOMPARE(screen_->isVisible(), stays);
    }
  }

  void linesAreSelectedMovedCutPastedAndAllOfItUndone() {
    for (const char* name : {"a", "b", "c", "d", "e"}) TypeLabel(name);
    const QString five = Lines();
    QVERIFY(screen_->windowTitle() == "Auto-Bet *" && five.count('|') == 4);
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(2));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::ShiftModifier, PlaceOf(3));
    QCOMPARE(Label("lblNumLinesSelected"), "2 selected");
    Drag(PlaceOf(2), PlaceOf(5) + QPoint(0, 5));
    QCOMPARE(Names(), "adebc");
    QTest::keyClick(view_, Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Names(), "adbce");
    QTest::keyClick(view_, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(Names(), "ade");
    QCOMPARE(QApplication::clipboard()->text(), " Label \"b\"\n Label \"c\"\n");
    QTest::keyClick(view_, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(view_, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(Names(), "bcade");
    QCOMPARE(SelectedLineCount(), 2);
    QTest::keyClick(view_, Qt::Key_Delete);
    QApplication::clipboard()->setText("Label \"x\"\r\n  then . . .");  // from anywhere
    Menu("mnuPaste");
    QCOMPARE(Lines(), "Label \"x\"|then . . .|Label \"a\"|Label \"d\"|Label \"e\"");
    QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(3));
    Type("txtLabel", "z");
    Click("cmdLogAsNew");
    QCOMPARE(Names(), "xzade");
    const QString done = Lines();
    int steps = 0;
    for (; Get<QAction>("mnuUndo")->isEnabled(); ++steps) Menu("mnuUndo");
    QVERIFY(Game.ScrCount == 0 && steps == 12 && screen_->windowTitle() == "Auto-Bet");
    for (; steps > 0; --steps) QTest::keySequence(view_, QKeySequence::Redo);
    QCOMPARE(Lines(), done);
  }

  void linesAreFoundCheckedMarkedAndCounted() {
    QVERIFY(QFile::copy(kExamples + "martingale.bet", Path("martingale.bet")));
    OpenWholeScript(Game.DataPath + "martingale.bet");
    TheHost.RefreshViews();
    PlannedMessages.Answers = {{AnswerOk, "", "PASS line"}};
    Menu("mnuFind");
    ExpectMessage(
        "Enter the text you'd like to find.\nDon't worry about upper or lower case letters.\nIf "
        "found, the line will appear at the top of the screen.",
        "Find");
    for (const int line : {1, 8, 12, 24, 30}) {
      QCOMPARE(Game.ScriptInsertLine, line);
      QTest::keyClick(view_, Qt::Key_F3);
    }
    ExpectMessage("Text not found.", "Search Results");
    QTest::keyClick(view_, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(Game.ScriptInsertLine, 24);
    QTest::keyClicks(Get<QLineEdit>("txtFind"), "or while");
    QCOMPARE(Game.ScriptInsertLine, 13);
    QTest::keyClick(Get<QLineEdit>("txtFind"), Qt::Key_Return);  // round the end, to itself
    QCOMPARE(Game.ScriptInsertLine, 13);

    QTest::keyClick(view_, Qt::Key_F9);
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, {3, PlaceOf(14).y()});
    QVERIFY(Line(13).Breakpoint && Line(14).Breakpoint && Game.ScriptInsertLine == 13);
    Menu("mnuClearBreakpoints");
    QVERIFY(!Line(13).Breakpoint);
    Menu("mnuShowLineNumbers");
    QCOMPARE(RowText(view_, 12), "13");

    QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(8));
    Menu("mnuDelete");
    QTRY_COMPARE(Label("lblFault"), "Line 7: Missing Condition Lines");
    QCOMPARE(Line(7).LineMark, int(FaultMark));

    Menu("mnuUndo");
    Menu("mnuShowProfile");
    Menu("mnuSave");
    Game.AutoBetActive = 1;
    Game.ScriptChanged = false;
    for (int roll = 0; roll < 3; ++roll) RightClickRolls(*table_, 3, 4);
    QCOMPARE(RowText(view_, 2, 2) + RowText(view_, 2, 3), "33");
    Menu("mnuClearProfile");
    QCOMPARE(RowText(view_, 2, 2), "0");
  }

  void filesAndLeavingAskBeforeAnythingIsLost() {
    TypeLabel("a");
    for (const auto& [answer, count] : {std::pair(AnswerCancel, 1), {AnswerNo, 0}}) {
      PlannedMessages.Answers = {{answer}};
      Menu("mnuNew");
      ExpectMessage("Your current logged bets have not been saved.\nDo you want to save them now?",
                    "Save Auto-Bets?");
      QCOMPARE(Game.ScrCount, count);
    }
    Choose("lblCondition", "listCondition", "Flag");
    Type("txtConditionFlag", "Ready");
    Click("cmdLogCondition");
    Menu("mnuSelectAll");
    InFileScreen("mnuCopyToAutoBetFile", "Copy To Auto-Bet File", "copy.bet");
    InFileScreen("mnuCopyToTextFile", "Copy To Text File", "copy.txt");
    QCOMPARE(Read("copy.txt"), "          Flag \"Ready\" is True\r\n");
    PlannedMessages.Answers = {{AnswerNo}};
    Menu("mnuNew");
    InFileScreen("mnuPasteFrom", "Paste From Auto-Bet File", "copy.bet");
    QVERIFY(Game.ScrCount == 1 && Game.Flags.size() == 1 && Line(1).LineSelected);
    Menu("mnuUndo");
    Menu("mnuRedo");
    QCOMPARE(Game.ScrCount, 1);

    InFileScreen("mnuSaveAs", "Save Auto-Bet File As", "mine.bet");
    QCOMPARE(Label("lblAutoBetFilename"), "mine.bet");
    TypeLabel("b");
    QCOMPARE(frmAutoBet::ScriptReport().Heading[2], "Auto-Bet File:   mine.bet");

    Game.AutoBetAtWork = Game.AutoBetRunning = true;
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
    for (const bool runs : {true, false}) {
      Menu("mnuDelete");
      ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
      QVERIFY(Game.ScrCount == 2 && Game.AutoBetRunning == runs);
    }
    Game.AutoBetAtWork = false;

    Get<QCheckBox>("chkAutoBetsActivated")->click();
    PlannedMessages.Answers = {{AnswerYes}};
    screen_->close();
    QVERIFY(Told().endsWith("return to the game table anyway?"));
    QVERIFY(!screen_->isVisible() && Game.AutoBetActive == 0);
  }

  /// Does what the handbook's first page says, word by word, and finds what it promises.
  void theHandbooksFirstSystemPlaysAsTold() {
    QString page = BytesOf(QString(KELVANOR_PROJECT) + "/docs/handbook/first-system.md");
    const QString script = page.section("```", 1, 1).mid(1);
    static const QRegularExpression steps("\\n\\d+\\. (.*?)(?=\\n\\n|\\n\\d+\\. )",
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList quoted;
    int done = 0;
    PlannedMessages.Answers.clear();
    for (const QRegularExpressionMatch& step : steps.globalMatch(page)) {
      const QString text = step.captured(1).simplified();
      static const QRegularExpression question("\"([^\"]+[.?])\"");
      for (const auto& match : question.globalMatch(text)) quoted << match.captured(1);
      static const QRegularExpression answer("answer \\*\\*(\\w+)");
      for (const auto& match : answer.globalMatch(text))
        PlannedMessages.Answers.push_back({match.captured(1) == "Yes" ? AnswerYes : AnswerOk});
      FollowStep(text);
      ++done;
    }
    QCOMPARE(done, 12);
    QString logged;
    for (const ScriptLine& line : Game.Script) logged += Text(line.LineText) + '\n';
    QCOMPARE(logged, script);
    QVERIFY(Read("default.bet").size() == 6 * 256);
    QCOMPARE(quoted.size(), qsizetype(PlannedMessages.Shown.size()));
    for (qsizetype i = 0; i < quoted.size(); ++i)
      QVERIFY(Text(PlannedMessages.Shown[i].Text).contains(quoted[i]));
    QCOMPARE(Game.RollCount[0], 1'000'000);
    QList<double> told;
    static const QRegularExpression figure("\\*\\*\\$?([\\d,]+)\\*\\*");
    for (const auto& match : figure.globalMatch(page.section("## Read", 1)))
      told << match.captured(1).remove(',').toDouble();
    QCOMPARE(told.size(), 4);
    const double lost = 500 - Bankroll().ToDouble();
    QVERIFY2(std::abs(lost - told[0]) < 3 * (told[2] - told[0]), qPrintable(QString::number(lost)));
    const double bets = Game.BetWagers[Actual][PassLine][StatCount].ToDouble();
    QVERIFY2(std::abs(bets - told[3]) < 3'000, qPrintable(QString::number(bets)));
  }

 private:
  const QString kExamples = QString(KELVANOR_PROJECT) + "/examples/";

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
      if (box->text() != typed) TypeOver(box, typed);
    }
    if (turn % 2 == 0) return;
    for (const char* truth : {"lblConditionTF", "lblActionTF"})
      if (Get<QWidget>(panel)->isAncestorOf(Get<QWidget>(truth)) && Shows(truth)) Click(truth);
  }

  /// Logs what a panel holds, loads the line back by a double click, logs it again, and finds the
  /// same record: one whose text is its composition and can be read back.
  ScriptLine LogAndLogAgain(const char* button) {
    if (Game.ScrCount >= kLinesAtOnce) {
      QTest::keyClick(view_, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(view_, Qt::Key_Delete);
    }
    const int count = Game.ScrCount;
    Click(button);
    const int number = Game.ScriptInsertLine - 1;
    const ScriptLine line = Plain(Line(number));
    const auto* panel = Get<QWidget>(button)->parentWidget();
    Expect(Game.ScrCount == count + 1, line);
    Expect(line.LineText == ComposeLine(line), line);
    Expect(Text(line.LineText).trimmed() == panel->findChild<QLabel*>("lblSentence")->text(), line);
    const auto read = ReadLineText(line.LineText);
    Expect(read && Plain(*read) == line, line);
    QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, PlaceOf(number));
    Click(button);
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

  void TypeLabel(const QString& name) {
    Type("txtLabel", name);
    QTest::keyClick(Get<QLineEdit>("txtLabel"), Qt::Key_Return);
  }

  static QString Lines() {
    QStringList lines;
    for (const ScriptLine& line : Game.Script) lines << Text(line.LineText).trimmed();
    return lines.join('|');
  }

  /// The names of all lines that have one.
  static QString Names() {
    QString names;
    for (const ScriptLine& line : Game.Script) names += Text(line.LineName);
    return names;
  }

  void Drag(QPoint from, QPoint to) {
    QTest::mousePress(view_->viewport(), Qt::LeftButton, {}, from);
    for (const QPoint& place : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, place, view_->viewport()->mapToGlobal(place),
                       Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(view_->viewport(), &move);
    }
    QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, to);
  }

  void InFileScreen(const QString& command, const QString& title, const QString& name) {
    OnNextScreen([=, this](QDialog* dialog) {
      QCOMPARE(dialog->windowTitle(), title);
      Find<QLineEdit>(dialog, "txtFileName")->setText(Path(name));
      ClickButton(dialog, "cmdOK");
    });
    Menu(command);
  }

  // ---- By the words of a page ----

  /// Each bold word with the verb before it.
  void FollowStep(const QString& text) {
    static const QRegularExpression word("(\\w+)\\s+\\*\\*(.+?)\\*\\*");
    QWidget* place = screen_;
    QString menu, typed;
    for (const auto& match : word.globalMatch(text)) {
      const QString verb = match.captured(1).toLower();
      const QString what = match.captured(2);
      if (verb == "menu") {
        menu = what;
      } else if (!menu.isEmpty()) {
        place = GiveCommand(menu, what);
        menu.clear();
      } else if (verb == "under") {
        place = PanelOf(what);
      } else if (verb == "choose" || verb == "and") {
        ChooseAnywhere(place, what);
      } else if (verb == "type" && match.capturedEnd() < text.size() &&
                 text.mid(match.capturedEnd()).startsWith(" into")) {
        typed = what;
      } else if (verb == "type") {
        Type("txtActionAmount", what);
      } else if (verb == "into") {
        auto* box = qobject_cast<QLineEdit*>(LabelOf(place, what)->buddy());
        TypeOver(box, typed);
        QTest::keyClick(box, Qt::Key_Tab);
      } else if (verb == "press" || verb == "check" || verb == "page") {
        ClickAnywhere(place, what);
      } else {
        QCOMPARE(verb, "answer");
      }
    }
  }

  static QString Bare(QString caption) { return caption.remove('&').remove(':').trimmed(); }

  QWidget* GiveCommand(const QString& menuTitle, const QString& caption) {
    for (const QMenu* menu : table_->findChildren<QMenu*>()) {
      if (Bare(menu->title()) != menuTitle) continue;
      for (QAction* action : menu->actions()) {
        if (Bare(action->text()) != Bare(caption)) continue;
        action->trigger();
        QCoreApplication::processEvents();
        for (const ScreenRow& row : AllScreens())
          if (row.Command == action->objectName()) return FindScreen(row.Id);
        return screen_;
      }
    }
    qFatal("no command %s, %s", qPrintable(menuTitle), qPrintable(caption));
  }

  static QLabel* LabelOf(QWidget* place, const QString& caption) {
    for (QLabel* label : place->findChildren<QLabel*>())
      if (Bare(label->text()) == caption) return label;
    qFatal("no caption %s", qPrintable(caption));
  }

  QWidget* PanelOf(const QString& caption) { return LabelOf(screen_, caption)->parentWidget(); }

  /// The first word of a panel whose list has the row.
  void ChooseAnywhere(QWidget* panel, const QString& row) {
    for (auto* button : panel->findChildren<ChoiceButton*>()) {
      if (!button->isVisible()) continue;
      QTest::mouseClick(button, Qt::LeftButton);
      auto* list = button->findChild<QListView*>();
      const bool has = RowsOf(list).split(", ").contains(row);
      list->window()->hide();
      if (has) return TypeChoice(qPrintable(button->objectName()), row.toStdString());
    }
    QFAIL(qPrintable("no row " + row));
  }

  static void ClickAnywhere(QWidget* place, const QString& caption) {
    for (auto* button : place->findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || Bare(button->text()) != caption) continue;
      return QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(12, button->height() / 2));
    }
    QFAIL(qPrintable("no button " + caption));
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
    if (box->isVisible()) TypeOver(box, Text(text));
  }

  void TypeTruth(const char* name, bool truth) {
    auto* button = Get<QPushButton>(name);
    if (button->isVisible() && button->text().endsWith("True") != truth)
      QTest::keyClick(button, Qt::Key_Space);
  }

  /// Labels come first, so that jumps can choose them; then the lines between, from the top.
  void TypeLines(const std::vector<ScriptLine>& lines) {
    for (const ScriptLine& line : lines)
      if (line.LineKind == LabelLine) TypeLine(line);
    auto* box = Get<QLineEdit>("txtLabel");
    for (int up = 0; up < Game.ScrCount; ++up) QTest::keyClick(box, Qt::Key_Up);
    for (const ScriptLine& line : lines) {
      line.LineKind == LabelLine ? QTest::keyClick(box, Qt::Key_Down) : TypeLine(line);
      Expect(Plain(Line(Game.ScriptInsertLine - 1)) == Plain(line), line);
    }
  }

  void TypeLine(const ScriptLine& line) {
    const int kind = line.LineKind;
    const auto start = [this](const char* word, std::string_view text) {
      TypeChoice(word, text);
      QTest::keyClick(Get<QWidget>(word), Qt::Key_Return);
    };
    if (IsStartCondition(kind)) start("lblStartCondition", TextOf(kStartConditionList, kind));
    if (IsStartAction(kind)) start("lblStartAction", TextOf(kStartActionList, kind));
    if (kind == ConditionLine) TypeCondition(line);
    if (kind == ActionLine) TypeAction(line);
    if (kind == LabelLine || kind == RemarkLine) TypeLabel(Text(LabelTextOf(line)));
  }

  void TypeCondition(const ScriptLine& line) {
    const ConditionChoice choice = ConditionChoiceOf(line);
    TypeChoice("lblCondition", TextOf(ConditionList(), choice.Subject));
    if (Shows("lblWhat"))
      TypeChoice("lblWhat", TextOf(OperatorList(choice.Subject), line.LineCode));
    if (Shows("lblCompare")) TypeChoice("lblCompare", TextOf(CompareList(), choice.Compare));
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
    if (Shows("lblLabel")) TypeChoice("lblLabel", choice.Label);
    if (Shows("lblOf")) TypeChoice("lblOf", TextOf(OfList(choice.Action), choice.Of));
    if (Shows("lblTo")) TypeChoice("lblTo", TextOf(ToList(choice.Action), choice.To));
    TypeShown("txtActionFlag", choice.Flag);
    TypeShown("txtActionAmount", choice.Amount);
    TypeShown("txtActionOfStackNum", choice.OfStackNum);
    TypeShown("txtActionName", choice.Name);
    TypeShown("txtActionToStackNum", choice.ToStackNum);
    TypeTruth("lblActionTF", choice.Truth);
    QTest::keyClick(Get<QWidget>("lblAction"), Qt::Key_Return);
  }

  frmAutoBet* screen_ = nullptr;
  QTableView* view_ = nullptr;
};

SCREEN_TEST(TestAutobet)
#include "test_autobet.moc"
