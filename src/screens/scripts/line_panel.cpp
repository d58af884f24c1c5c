#include "screens/scripts/line_panel.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "core/game_state.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/scripts/flow_layout.h"
#include "screens/scripts/list_popup.h"

namespace {

constexpr int kMargin = 8;
constexpr int kGap = 6;
constexpr int kCorner = 4;
constexpr int kRoundLetters = 20;

/// Undo in a box takes typing back; with nothing typed it belongs to the script.
class UndoFilter : public QObject {
 public:
  explicit UndoFilter(QLineEdit* box) : QObject(box), box_(box) { box->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride) return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    return (key->matches(QKeySequence::Undo) && !box_->isUndoAvailable()) ||
           (key->matches(QKeySequence::Redo) && !box_->isRedoAvailable());
  }

 private:
  QLineEdit* box_;
};

/// The arrow that opens a list at the end of a box.
QIcon ArrowIcon(const QWidget* box) {
  QPixmap picture(32, 32);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(box->palette().color(QPalette::Text), 4));
  painter.drawPolyline(QPolygon({{9, 13}, {16, 20}, {23, 13}}));
  return QIcon(picture);
}

}  // namespace

LinePanel::LinePanel(const char* name, const QString& caption, const char* logName,
                     const QString& tip)
    : lblCaption_(new QLabel(caption)), flow_(new FlowLayout) {
  setObjectName(name);
  QFont bold = lblCaption_->font();
  bold.setBold(true);
  lblCaption_->setFont(bold);
  log_ = New<QPushButton>(logName);
  log_->setAutoDefault(false);
  log_->setToolTip(tip);
  logCaption_ = tr("Log");
  log_->setText(logCaption_);
  connect(log_, &QPushButton::clicked, this, &LinePanel::LogWanted);
  lblSentence_ = New<QLabel>("lblSentence");
  lblSentence_->setTextFormat(Qt::PlainText);
  lblSentence_->setWordWrap(true);
  QHBoxLayout* top = new QHBoxLayout;
  top->addWidget(lblCaption_, 1);
  top->addWidget(log_);
  QVBoxLayout* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kGap, kMargin, kGap);
  column->setSpacing(kGap);
  column->addLayout(top);
  flow_->setSpacing(kGap);
  column->addLayout(flow_);
  column->addWidget(lblSentence_);
}

void LinePanel::AddPart(QWidget* part) { flow_->addWidget(part); }

void LinePanel::HideSentence() { lblSentence_->hide(); }

void LinePanel::SetFirstBox(QWidget* box) { lblCaption_->setBuddy(box); }

QLabel* LinePanel::AddWords(const char* name) { return Add(New<QLabel>(name)); }

QLineEdit* LinePanel::AddBox(const char* name, const QString& title, std::string& typed,
                             int letters) {
  auto* box = New<QLineEdit>(name);
  box->setAccessibleName(title);
  box->setToolTip(title);
  box->setFixedWidth(box->fontMetrics().averageCharWidth() * letters + kRoundLetters);
  new UndoFilter(box);
  connect(box, &QLineEdit::textEdited, this,
          [this, &typed](const QString& text) { Change([&] { typed = text.toStdString(); }); });
  return Add(box);
}

QLineEdit* LinePanel::AddNumber(const char* name, const QString& title, std::string& typed,
                                int letters, int decimals) {
  QLineEdit* box = AddBox(name, title, typed, letters);
  MakeNumericBox(box, decimals, decimals > 0);
  box->setPlaceholderText("0");
  // A paste goes through the numeric entry, letter by letter, and counts as no typing.
  connect(box, &QLineEdit::textChanged, this, [this, &typed](const QString& text) {
    if (typed != text.toStdString()) Change([&] { typed = text.toStdString(); });
  });
  return box;
}

QLineEdit* LinePanel::AddFlag(const char* name, std::string& typed, ListPopup* flags) {
  QLineEdit* box = AddBox(name, tr("Name of the flag"), typed, 22);
  box->setPlaceholderText(tr("Flag"));
  QAction* names = box->addAction(ArrowIcon(box), QLineEdit::TrailingPosition);
  names->setObjectName(QString(name) + "Names");
  names->setToolTip(tr("Flags in use"));
  names->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
  names->setShortcutContext(Qt::WidgetShortcut);
  connect(names, &QAction::triggered, this, [this, box, &typed, flags] {
    QStringList rows;
    for (const Flag& flag : Game.Flags) rows << Text(flag.FlagName);
    flags->Open(box, rows, static_cast<int>(rows.indexOf(box->text())),
                [this, box, &typed, rows](int row) {
                  Change([&] { typed = rows[row].toStdString(); });
                  box->setFocus();
                });
  });
  return box;
}

void LinePanel::SetOrder(const QList<QWidget*>& parts) { flow_->SetOrder(parts); }

void LinePanel::Change(const std::function<void()>& act) {
  act();
  ShowChoice();
  ShowSentence();
  SetTouched(true);
  emit Touched();
}

void LinePanel::Load(const ScriptLine& line) {
  Take(line);
  ShowChoice();
  ShowSentence();
}

void LinePanel::Drop() {
  Reset();
  ShowChoice();
  ShowSentence();
  SetTouched(false);
  SetReplacing(0);
}

void LinePanel::ShowSentence() { lblSentence_->setText(Text(Now().LineText).trimmed()); }

void LinePanel::SetTouched(bool touched) {
  touched_ = touched;
  lblSentence_->setForegroundRole(touched ? QPalette::Link : QPalette::WindowText);
  update();
}

/// The panel at work stands out.
void LinePanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(touched_ ? QPalette::Highlight : QPalette::Mid), 1));
  painter.setBrush(palette().color(touched_ ? QPalette::Base : QPalette::Window));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
}

void LinePanel::SetReplacing(int number) {
  log_->setText(number == 0 ? logCaption_ : tr("Replace line %1").arg(number));
  log_->setMinimumWidth(log_->fontMetrics().horizontalAdvance(log_->text()) + 2 * kRoundLetters);
}

void ShowWords(QLabel* label, std::string_view words) {
  label->setText(Text(words).trimmed());
  label->setVisible(!words.empty());
}

void ShowBox(QLineEdit* box, bool needed, const std::string& text) {
  if (box->text().toStdString() != text) box->setText(Text(text));
  box->setVisible(needed);
}

std::vector<ListItem> RowsOf(std::span<const ListItem> list) { return {list.begin(), list.end()}; }
