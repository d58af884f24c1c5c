#include "screens/play/frmMsg.h"

#include <QCursor>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "core/messages.h"
#include "screens/frame/asking_window.h"
#include "screens/frame/help.h"
#include "screens/frame/numeric_entry.h"

MessagePlan PlannedMessages;
NoticeOffer OfferOfNotices;

namespace {

enum MessageButton : int {
  OkButton = 0,
  YesButton = 1,
  NoButton = 2,
  CancelButton = 3,
  HelpButton = 4
};

constexpr std::array<const char*, 5> kButtonCaptions = {"&OK", "&Yes", "&No", "&Cancel", "&Help"};

// The screen is measured in the units of a 640-wide table; a unit grows with the font.
constexpr int kTextWidth = 329;
constexpr int kButtonStep = 65;
constexpr int kButtonWidth = 60;
constexpr int kButtonHeight = 26;
constexpr int kMargin = 16;
constexpr int kPictureSize = 40;
constexpr int kInputWidth = 120;
constexpr int kInputHeight = 24;
constexpr int kGap = 14;
constexpr double kFontHeightOfUnit = 15.0;
constexpr int kInputDecimals = 4;

constexpr double kShareOfScreen = 0.6;  // that a text may take before it scrolls

bool Wants(int flag) { return (Game.MsgFlags & flag) != 0; }

int ClosingButton() {
  if (Wants(ButtonCancel)) return CancelButton;
  if (Wants(ButtonNo)) return NoButton;
  return OkButton;
}

/// What box `i` opens with. A box alone takes the first text that was left for it.
QString OpeningText(int i) {
  const bool alone = !Wants(InputFirst) || !Wants(InputSecond);
  const bool first = alone ? !Game.MsgInput[0].empty() : i == 0;
  return QString::fromStdString(Game.MsgInput[first ? 0 : 1]);
}

/// The text without the line breaks behind it, which would only push the buttons down.
QString TextShown() {
  QString text = QString::fromStdString(Game.MsgText);
  while (text.endsWith('\n')) text.chop(1);
  return text;
}

/// Lets words that are wider than a line, such as paths, break at any letter.
QString Breakable(const QString& text, const QFontMetrics& metrics, int width) {
  constexpr QChar kMayBreak(0x200B);
  QString broken;
  qsizetype wordStart = 0;
  for (qsizetype i = 0; i <= text.size(); ++i) {
    if (i < text.size() && !text[i].isSpace()) continue;
    const QString word = text.mid(wordStart, i - wordStart);
    const bool wide = metrics.horizontalAdvance(word) > width;
    for (const QChar letter : word) {
      broken += letter;
      if (wide && !letter.isHighSurrogate()) broken += kMayBreak;
    }
    if (i < text.size()) broken += text[i];
    wordStart = i + 1;
  }
  return broken;
}

/// The picture beside the text, drawn in a square of 40 by 40.
class MessagePicture : public QWidget {
 public:
  explicit MessagePicture(QWidget* parent) : QWidget(parent) {
    setObjectName(Wants(PictureOk) ? "picOK" : Wants(PictureStop) ? "picStop" : "picQmark");
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width() / 40.0, height() / 40.0);
    if (Wants(PictureOk)) {
      DrawTick(painter);
    } else if (Wants(PictureStop)) {
      DrawStop(painter);
    } else {
      DrawQuestionMark(painter);
    }
  }

 private:
  static void DrawTick(QPainter& painter) {
    DrawDisc(painter, QColor(0x1B, 0x87, 0x4A));
    painter.setPen(QPen(Qt::white, 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{11, 21}, {17.5, 27.5}, {29, 13.5}}));
  }
  static void DrawStop(QPainter& painter) {
    const QPolygonF octagon(
        {{13, 3}, {27, 3}, {37, 13}, {37, 27}, {27, 37}, {13, 37}, {3, 27}, {3, 13}});
    painter.setPen(QPen(QColor(0x7A, 0x10, 0x10), 1.5));
    painter.setBrush(QColor(0xC8, 0x20, 0x20));
    painter.drawPolygon(octagon);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(9, 17, 22, 6), 2, 2);
  }
  static void DrawQuestionMark(QPainter& painter) {
    DrawDisc(painter, QColor(0x1F, 0x5F, 0xAE));
    painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath hook(QPointF(14.5, 15.5));
    hook.cubicTo(14.5, 7.5, 26, 7.5, 26, 15);
    hook.cubicTo(26, 19.5, 20, 19.5, 20, 24.5);
    painter.drawPath(hook);
    painter.drawPoint(QPointF(20, 31));
  }
  static void DrawDisc(QPainter& painter, const QColor& colour) {
    painter.setPen(QPen(colour.darker(150), 1.5));
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(2, 2, 36, 36));
  }
};

}  // namespace

frmMsg::frmMsg(QWidget* parent) : QDialog(parent) {
  setObjectName("frmMsg");
  setWindowTitle(QString::fromStdString(Game.MsgTitle));
  scale_ = std::max(1.0, QFontMetrics(font()).height() / kFontHeightOfUnit);
  if (Wants(PictureOk | PictureStop | PictureQuestion)) picture_ = new MessagePicture(this);
  MakeText();
  MakeInputs();
  MakeHideBox();
  MakeOfferBox();
  MakeButtons();
  Arrange();
}

int frmMsg::Units(double count) const { return qRound(count * scale_); }

void frmMsg::MakeText() {
  lblMsg_ = new QLabel(TextShown(), this);
  lblMsg_->setObjectName("lblMsg");
  lblMsg_->setTextFormat(Qt::PlainText);
  lblMsg_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lblMsg_->setFocusPolicy(Qt::NoFocus);
  lblMsg_->adjustSize();
  if (const int limit = Units(kTextWidth); lblMsg_->width() > limit) {
    lblMsg_->setText(Breakable(lblMsg_->text(), lblMsg_->fontMetrics(), limit));
    lblMsg_->setWordWrap(true);
    lblMsg_->resize(limit, lblMsg_->heightForWidth(limit));
  }
  ScrollTallText();
}

void frmMsg::ScrollTallText() {
  const int tallest = static_cast<int>(screen()->availableSize().height() * kShareOfScreen);
  if (lblMsg_->height() <= tallest) return;
  scrMsg_ = new QScrollArea(this);
  scrMsg_->setObjectName("scrMsg");
  scrMsg_->setFrameShape(QFrame::NoFrame);
  scrMsg_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scrMsg_->setFocusPolicy(Qt::NoFocus);
  const QSize text = lblMsg_->size();
  scrMsg_->setWidget(lblMsg_);
  lblMsg_->resize(text);
  scrMsg_->resize(std::max(text.width() + Units(kGap), Units(kTextWidth)) +
                      scrMsg_->verticalScrollBar()->sizeHint().width(),
                  tallest);
}

void frmMsg::MakeInputs() {
  for (int i = 0; i < 2; ++i) {
    if (!Wants(i == 0 ? InputFirst : InputSecond)) continue;
    QLineEdit* box = new QLineEdit(this);
    box->setObjectName(QString("txtInput_%1").arg(i));
    box->setAccessibleName(tr("Amount"));
    MakeNumericBox(box, kInputDecimals, true);
    box->setText(OpeningText(i));
    box->selectAll();
    txtInput_[static_cast<unsigned>(i)] = box;
  }
}

void frmMsg::MakeHideBox() {
  if (!Wants(AnyHideBox)) return;
  chkHide_ = new QCheckBox(tr("Don't show &messages like this again"), this);
  chkHide_->setObjectName("chkHide");
  chkHide_->adjustSize();
}

void frmMsg::MakeOfferBox() {
  if (!OfferOfNotices.IsDue || !OfferOfNotices.IsDue()) return;
  chkOnTable_ = new QCheckBox(tr("From now on show &notices on the table, for a while"), this);
  chkOnTable_->setObjectName("chkOnTable");
  chkOnTable_->setToolTip(tr("Play goes on without a click. View, Table, Notices changes it."));
  chkOnTable_->adjustSize();
}

void frmMsg::MakeButtons() {
  for (int i = 0; i < kButtons; ++i) {
    if (!Wants(1 << i)) continue;
    QPushButton* button = new QPushButton(tr(kButtonCaptions[static_cast<unsigned>(i)]), this);
    button->setObjectName(QString("cmdButton_%1").arg(i));
    connect(button, &QPushButton::clicked, this, [this, i] { Press(i); });
    cmdButton_[static_cast<unsigned>(i)] = button;
  }
  // Answers come before Help in the tab order; the first button is the one that Enter presses.
  for (QPushButton* button : cmdButton_) {
    if (!button) continue;
    button->setDefault(true);
    button->setFocus();
    break;
  }
  for (QLineEdit* box : txtInput_) {
    if (!box) continue;
    box->setFocus();
    break;
  }
}

void frmMsg::Arrange() {
  const int margin = Units(kMargin);
  int left = margin;
  int top = margin;
  QWidget* text = scrMsg_ ? static_cast<QWidget*>(scrMsg_) : lblMsg_;
  int width = text->width() + 2 * margin;
  if (picture_) {
    picture_->setGeometry(margin, margin, Units(kPictureSize), Units(kPictureSize));
    left += Units(kPictureSize) + margin;
    width += Units(kPictureSize) + margin;
  }
  const int buttons = static_cast<int>(
      std::count_if(cmdButton_.begin(), cmdButton_.end(), [](QPushButton* b) { return b; }));
  const int boxes = static_cast<int>(
      std::count_if(txtInput_.begin(), txtInput_.end(), [](QLineEdit* box) { return box; }));
  const int boxesWidth = boxes * Units(kInputWidth) + std::max(0, boxes - 1) * Units(kGap);
  width = std::max({width, Units(buttons * kButtonStep) + 2 * margin, boxesWidth + 2 * margin,
                    QFontMetrics(font()).horizontalAdvance(windowTitle()) + Units(110)});
  int widest = 0;
  for (const QCheckBox* box : {chkHide_, chkOnTable_})
    if (box) widest = std::max(widest, box->width());
  width = std::max(width, widest + 2 * margin);

  int textHeight = text->height();
  if (picture_) textHeight = std::max(textHeight, picture_->height());
  text->move(left, top + (textHeight - text->height()) / 2);
  top += textHeight + Units(kGap);

  int boxLeft = (width - boxesWidth) / 2;
  for (QLineEdit* box : txtInput_) {
    if (!box) continue;
    box->setGeometry(boxLeft, top, Units(kInputWidth), Units(kInputHeight));
    boxLeft += Units(kInputWidth) + Units(kGap);
  }
  if (boxes > 0) top += Units(kInputHeight) + Units(kGap);
  for (QCheckBox* box : {chkHide_, chkOnTable_}) {
    if (!box) continue;
    box->move((width - widest) / 2, top);
    top += box->height() + Units(box == chkHide_ && chkOnTable_ ? kGap / 2 : kGap);
  }
  setFixedSize(width, top + Units(kButtonHeight) + margin);
  ArrangeButtons(top);
}

void frmMsg::ArrangeButtons(int top) {
  std::vector<QPushButton*> row;
  std::copy_if(cmdButton_.begin(), cmdButton_.end(), std::back_inserter(row),
               [](QPushButton* button) { return button; });
  const int rowWidth =
      Units(kButtonStep) * (static_cast<int>(row.size()) - 1) + Units(kButtonWidth);
  int left = (width() - rowWidth) / 2;
  for (QPushButton* button : row) {
    button->setGeometry(left, top, Units(kButtonWidth), Units(kButtonHeight));
    left += Units(kButtonStep);
  }
}

void frmMsg::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!Game.SnapMouse) return;
  // Only once the screen has its place is it known where the button lies.
  QTimer::singleShot(0, this, [this] {
    const QWidget* button = qobject_cast<QPushButton*>(focusWidget());
    for (const QPushButton* other : cmdButton_) {
      if (!button && other && other->isDefault()) button = other;
    }
    if (button && isVisible()) QCursor::setPos(button->mapToGlobal(button->rect().center()));
  });
}

void frmMsg::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    ShowHelp(Game.MsgCtx);
    return;
  }
  if (scrMsg_ && (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_PageUp)) {
    scrMsg_->verticalScrollBar()->triggerAction(event->key() == Qt::Key_PageDown
                                                    ? QAbstractSlider::SliderPageStepAdd
                                                    : QAbstractSlider::SliderPageStepSub);
    return;
  }
  QDialog::keyPressEvent(event);
}

void frmMsg::reject() { Press(ClosingButton()); }

void frmMsg::Press(int button) {
  if (button == HelpButton) {
    ShowHelp(Game.MsgCtx);
    return;
  }
  const auto text = [](const QLineEdit* box) { return box ? box->text().toStdString() : ""; };
  PressMessageButton(button, chkHide_ && chkHide_->isChecked(), text(txtInput_[0]),
                     text(txtInput_[1]));
  if (chkOnTable_) OfferOfNotices.Answered(chkOnTable_->isChecked());
  done(QDialog::Accepted);
}

static void GivePlannedAnswer() {
  PlannedMessages.Shown.push_back({Game.MsgText, Game.MsgTitle, Game.MsgFlags});
  if (PlannedMessages.Answers.empty()) {
    PressMessageButton(ClosingButton(), false, Game.MsgInput[0], Game.MsgInput[1]);
    return;
  }
  const PlannedAnswer answer = PlannedMessages.Answers.front();
  PlannedMessages.Answers.pop_front();
  const int button = answer.Answer == AnswerYes      ? YesButton
                     : answer.Answer == AnswerNo     ? NoButton
                     : answer.Answer == AnswerCancel ? CancelButton
                                                     : OkButton;
  PressMessageButton(button, false, answer.FirstInput, answer.SecondInput);
}

void ShowMessageScreen(QWidget* parent, bool modal) {
  if (PlannedMessages.Active) {
    GivePlannedAnswer();
    return;
  }
  // A status box that still stands gives way to what comes next.
  static QPointer<frmMsg> statusBox;
  if (statusBox) {
    statusBox->hide();
    statusBox->deleteLater();
  }
  QWidget* const asker = AskingWindow(parent);
  if (modal) {
    frmMsg(asker).exec();
    return;
  }
  statusBox = new frmMsg(asker);
  statusBox->setAttribute(Qt::WA_DeleteOnClose);
  statusBox->show();
}
