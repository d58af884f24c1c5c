#include "screens/frame/help.h"

#include <QApplication>
#include <QPointer>

#include "core/help_topics.h"
#include "core/messages.h"
#include "screens/frame/frmHandbook.h"

namespace {

QPointer<frmHandbook> Window;

/// The pages, read at the first question.
const Handbook& TheHandbook() {
  static Handbook handbook;
  if (handbook.Pages().empty()) handbook = Handbook(HandbookFolder());
  return handbook;
}

/// The window beside whatever is in use: while a window waits for an answer, only its own children
/// can be used.
frmHandbook* OpenWindow() {
  QWidget* asking = QApplication::activeModalWidget();
  if (Window && (!asking || Window->parentWidget() == asking)) return Window;
  delete Window;
  QWidget* owner = asking ? asking : QApplication::activeWindow();
  while (owner && !asking && owner->parentWidget()) owner = owner->parentWidget()->window();
  Window = new frmHandbook(owner, TheHandbook());
  Window->setAttribute(Qt::WA_DeleteOnClose);
  return Window;
}

void Show(const HandbookPlace& place) {
  if (TheHandbook().Pages().empty()) {
    ShowMessage(QObject::tr("The handbook isn't there. It is looked for in the folder\n\n%1\n\n"
                            "Install the program again, or put the folder back.")
                    .arg(HandbookFolder())
                    .toStdString(),
                "Handbook", kTopicTable, OkStop);
    return;
  }
  frmHandbook* window = OpenWindow();
  window->GoTo(place);
  window->Present();
}

}  // namespace

void ShowHelp(int topic) {
  Show(TheHandbook().PlaceOf(topic).value_or(HandbookPlace{kContentsPage, {}}));
}

void ShowHandbookPage(const QString& file) { Show({file, {}}); }
