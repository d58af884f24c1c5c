// The handbook: every topic has its place, every link and picture is there, it is searched and gone
// through, read while a question waits, and its absence is told.
#include <QListWidget>
#include <QTextBrowser>

#include "core/help_topics.h"
#include "screens/frame/frmHandbook.h"
#include "screens/frame/help.h"
#include "screens/screen_driver.h"

namespace {

const QString kDocs = QString(KELVANOR_PROJECT) + "/docs/";

QString TextOfFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) qFatal("no file %s", qPrintable(path));
  return QString::fromUtf8(file.readAll());
}

frmHandbook* Window() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* window = qobject_cast<frmHandbook*>(widget); window && window->isVisible())
      return window;
  return nullptr;
}

}  // namespace

class TestHandbook : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    PlannedMessages.Active = false;
    Game.AppPath = kDocs.toStdString();
  }

  void itsAbsenceIsTold() {
    Game.AppPath = "/nowhere/";
    PlannedMessages.Active = true;
    ShowHelp(kTopicSummary);
    QVERIFY(!Window() && Game.MsgText.find("/nowhere/handbook") != std::string::npos);
  }

  void everyTopicOfTheProgramHasAPlace() {
    const Handbook handbook(HandbookFolder());
    static const QRegularExpression number("^  kTopic\\w+ = (\\d+),");
    std::vector<int> topics;
    for (const QString& line :
         TextOfFile(QString(KELVANOR_PROJECT) + "/src/core/help_topics.h").split('\n'))
      if (const auto is = number.match(line); is.hasMatch())
        topics.push_back(is.captured(1).toInt());
    QVERIFY(topics.size() > 30);
    for (int x = 0; x < 800; x += 2)  // and every spot of the table
      for (int y = 0; y < 600; y += 2) topics.push_back(FindHotSpot(x, y).HelpTopic);
    for (const int id : topics) QVERIFY2(handbook.PlaceOf(id), qPrintable(QString::number(id)));
  }

  void everyLinkAndPictureIsThere() {
    const Handbook handbook(HandbookFolder());
    static const QRegularExpression link("(!?)\\[[^\\]]*\\]\\(([^)]+)\\)");
    for (const HandbookPage& page : handbook.Pages()) {
      QVERIFY2(!page.Headings.isEmpty(), qPrintable(page.File));
      auto links = link.globalMatch(page.Markdown);
      while (links.hasNext()) {
        const auto found = links.next();
        const QString to = found.captured(2);
        const bool there = found.captured(1) == "!"
                               ? QFile::exists(HandbookFolder() + '/' + to)
                               : handbook.PlaceOfLink(page.File, to).has_value();
        QVERIFY2(there, qPrintable(page.File + ": " + to));
      }
    }
  }

  void itIsOpenedByTopicSearchedAndGoneThrough() {
    QTest::keyClick(table_.get(), Qt::Key_F1);
    frmHandbook* window = Window();
    QVERIFY(window);
    ShowHelp(kTopicBetResults);
    QCOMPARE(Window(), window);
    auto* page = Find<QTextBrowser>(window, "txtPage");
    QVERIFY(page->toPlainText().startsWith("Bet "));
    auto* search = Find<QLineEdit>(window, "txtSearch");
    auto* list = Find<QListWidget>(window, "lstPlaces");
    const int pages = list->count();
    QTest::keyClicks(search, "standard deviations");
    QVERIFY(list->count() > 0 && list->count() < pages);
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(page->toPlainText().contains("standard deviations", Qt::CaseInsensitive));
    search->setText("no such words in it");
    QCOMPARE(RowText(list, 0), "Nothing was found.");
    search->clear();
    QCOMPARE(list->count(), pages);
    window->GoTo({kFirstPage, {}});
    const QString first = page->toPlainText();
    emit page->anchorClicked(QUrl("contents.md"));
    QVERIFY(page->toPlainText() != first);
    Find<QAction>(window, "mnuBack")->trigger();
    QCOMPARE(page->toPlainText(), first);
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(!Window());
    // It doesn't outlive the table.
    ShowHelp(kTopicSummary);
    QVERIFY(Window() && CloseScreens() && !Window());
  }

  void itCanBeReadWhileAQuestionWaits() {
    OnNextScreen([](QDialog* asking) {
      QTest::keyClick(asking, Qt::Key_F1);
      frmHandbook* window = Window();
      QVERIFY(window && window->parentWidget() == asking);
      window->close();
      QTest::keyClick(asking, Qt::Key_Escape);
    });
    AskYesNo("Is it read?", "Handbook", kTopicAutoPlay);
  }
};

SCREEN_TEST(TestHandbook)
#include "test_handbook.moc"
