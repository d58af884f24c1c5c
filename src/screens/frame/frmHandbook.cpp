#include "screens/frame/frmHandbook.h"

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "core/help_topics.h"
#include "screens/frame/controls.h"
#include "screens/frame/help.h"

namespace {

constexpr QSize kSmallest(480, 300);
constexpr QSize kAtStart(980, 680);
constexpr double kListShare = 0.26;  // of the width
constexpr int kPageMargin = 18;
constexpr int kBetweenLines = 4;
constexpr double kLetters = 1.15;  // of those of the window

}  // namespace

frmHandbook::frmHandbook(QWidget* owner, const Handbook& handbook)
    : Screen(owner, "frmHandbook", tr("Handbook"), kTopicTable), handbook_(handbook) {
  txtSearch_ = New<QLineEdit>("txtSearch");
  txtSearch_->setPlaceholderText(tr("Search the handbook"));
  txtSearch_->setClearButtonEnabled(true);
  txtSearch_->setAccessibleName(tr("Search"));
  connect(txtSearch_, &QLineEdit::textChanged, this, [this] { ShowList(); });
  connect(txtSearch_, &QLineEdit::returnPressed, this, [this] {
    if (!shown_.empty()) lstPlaces_->setCurrentRow(0);
    lstPlaces_->setFocus();
  });
  lstPlaces_ = New<QListWidget>("lstPlaces");
  lstPlaces_->setAccessibleName(tr("Pages"));
  lstPlaces_->setWordWrap(true);
  connect(lstPlaces_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) GoTo(shown_[static_cast<std::size_t>(row)]);
  });
  QWidget* side = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(side);
  column->addWidget(txtSearch_);
  column->addWidget(lstPlaces_, 1);
  txtPage_ = New<QTextBrowser>("txtPage");
  txtPage_->setAccessibleName(tr("Page"));
  txtPage_->setOpenLinks(false);
  txtPage_->setSearchPaths({HandbookFolder()});
  txtPage_->setFrameShape(QFrame::NoFrame);
  QFont letters = txtPage_->font();
  letters.setPointSizeF(letters.pointSizeF() * kLetters);
  txtPage_->setFont(letters);
  connect(txtPage_, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& link) { FollowLink(link.toString()); });
  QSplitter* halves = new QSplitter(this);
  halves->addWidget(side);
  halves->addWidget(txtPage_);
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);
  setCentralWidget(halves);
  MakeMenus();
  ShowList();
  SetSizes(kSmallest, kAtStart);
  const int list = static_cast<int>(width() * kListShare);
  halves->setSizes({list, width() - list});
}

void frmHandbook::MakeMenus() {
  MenuBar().Add(
      "mnuGo", tr("&Go"),
      {Command("mnuBack", tr("&Back"), [this] { Step(-1); })
           .On(Qt::ALT | Qt::Key_Left)
           .When([this] { return at_ > 0; }, tr("There is no page before this one.")),
       Command("mnuForward", tr("&Forward"), [this] { Step(1); })
           .On(Qt::ALT | Qt::Key_Right)
           .When([this] { return at_ + 1 < way_.size(); }, tr("There is no page after this one.")),
       Separator(),
       Command("mnuFirstPage", tr("&First steps"),
               [this] {
                 GoTo({kFirstPage, {}});
               }),
       Command("mnuContents", tr("&Contents"),
               [this] {
                 GoTo({kContentsPage, {}});
               })
           .On(Qt::ALT | Qt::Key_Home),
       Separator(), Command("mnuSearch", tr("&Search"), [this] {
                      txtSearch_->setFocus();
                      txtSearch_->selectAll();
                    }).On(QKeySequence::Find)});
}

/// All pages, or the places that the search finds.
void frmHandbook::ShowList() {
  const QSignalBlocker quiet(lstPlaces_);
  lstPlaces_->clear();
  shown_.clear();
  const auto add = [this](const HandbookPlace& place, const QString& text) {
    shown_.push_back(place);
    lstPlaces_->addItem(text);
  };
  if (txtSearch_->text().trimmed().isEmpty()) {
    for (const HandbookPage& page : handbook_.Pages()) add({page.File, {}}, page.Title);
    return;
  }
  for (const HandbookHit& hit : handbook_.Search(txtSearch_->text()))
    add(hit.Place, hit.Line == hit.Title ? hit.Title : hit.Title + ": " + hit.Line);
  if (!shown_.empty()) return;
  lstPlaces_->addItem(tr("Nothing was found."));
  lstPlaces_->item(0)->setFlags(Qt::NoItemFlags);
}

void frmHandbook::GoTo(const HandbookPlace& place) {
  if (way_.empty() || way_[at_] != place) {
    way_.resize(way_.empty() ? 0 : at_ + 1);
    way_.push_back(place);
    at_ = way_.size() - 1;
  }
  ShowPlace();
}

void frmHandbook::Step(int by) {
  at_ = static_cast<std::size_t>(static_cast<int>(at_) + by);
  ShowPlace();
}

void frmHandbook::ShowPlace() {
  MenuBar().Refresh();
  const HandbookPlace& place = way_[at_];
  const HandbookPage* page = handbook_.Page(place.File);
  if (!page) return;
  txtPage_->document()->setMarkdown(page->Markdown, QTextDocument::MarkdownDialectGitHub);
  txtPage_->document()->setDocumentMargin(kPageMargin);
  QTextBlockFormat airy;
  airy.setLineHeight(kBetweenLines, QTextBlockFormat::LineDistanceHeight);
  QTextCursor all(txtPage_->document());
  all.select(QTextCursor::Document);
  all.mergeBlockFormat(airy);
  setWindowTitle(tr("Handbook (%1)").arg(page->Title));
  txtPage_->moveCursor(QTextCursor::Start);
  txtPage_->verticalScrollBar()->setValue(0);
  const QAbstractTextDocumentLayout* layout = txtPage_->document()->documentLayout();
  for (QTextBlock block = txtPage_->document()->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0 || block.text() != place.Heading) continue;
    const bool title = block == txtPage_->document()->begin();
    txtPage_->setTextCursor(QTextCursor(block));
    txtPage_->verticalScrollBar()->setValue(
        title ? 0 : static_cast<int>(layout->blockBoundingRect(block).top()) - kPageMargin / 2);
    break;
  }
}

void frmHandbook::FollowLink(const QString& link) {
  if (const auto place = handbook_.PlaceOfLink(way_[at_].File, link))
    GoTo(*place);
  else if (link.startsWith("http"))
    QDesktopServices::openUrl(QUrl(link));
}
