#include "screens/table/toasts.h"

#include <QCursor>
#include <QPainter>
#include <algorithm>

#include "core/game_state.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/art/roles.h"
#include "screens/frame/controls.h"
#include "screens/play/frmMsg.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/rail_elements.h"
#include "screens/table/table_access.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_settings.h"

namespace {

constexpr int kShortest = 2400;
constexpr int kPerLetter = 60;
constexpr int kTick = 200;
constexpr int kNear = 24;
constexpr int kWidest = 300;
constexpr int kMargin = 12;
constexpr int kIcon = 26;
constexpr std::size_t kMostToasts = 2;

QFont Letters(QFont font, bool bold) {
  font.setPixelSize(13);
  font.setBold(bold);
  return font;
}

QList<Toast*> ToastsOf(frmCrapTable* table) {
  QList<Toast*> toasts;
  for (QWidget* child : table->Layout()->findChildren<QWidget*>("toast"))
    toasts << static_cast<Toast*>(child);
  return toasts;
}

/// The newest lies at its place, older ones of the same place below it.
void PlaceAll(frmCrapTable* table) {
  QList<Toast*> toasts = ToastsOf(table);
  int below = 0;
  for (auto toast = toasts.rbegin(); toast != toasts.rend(); ++toast) {
    (*toast)->Place(below);
    below += (*toast)->height() + 8;
  }
}

}  // namespace

bool MayBeToast(int flags) {
  constexpr int kAnswers = ButtonYes | ButtonNo | ButtonCancel | ButtonHelp;
  constexpr int kClasses = HideActions | HideLimits | HideCharges;
  return (flags & ButtonOk) && !(flags & (kAnswers | InputFirst | InputSecond | HideAutoBet)) &&
         (flags & kClasses);
}

int BetOfTitle(const std::string& title) {
  int found = 0;
  for (int id = Lay4; id <= LastBet; ++id) {
    const std::string name = BetName(id);
    const bool longer = found == 0 || name.size() > BetName(found).size();
    if (!name.empty() && longer && title.find(name) != std::string::npos) found = id;
  }
  return found;
}

Toast::Toast(frmCrapTable* table, const QString& title, const QString& text, int betId)
    : QWidget(table->Layout()),
      table_(table),
      title_(title),
      text_(text),
      betId_(betId),
      left_(std::max<int>(kShortest, kPerLetter * static_cast<int>(text.size()))) {
  setObjectName("toast");
  setAccessibleName(title + ". " + text);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  const QRect room(0, 0, kWidest - 2 * kMargin - kIcon, 10'000);
  const QRect head =
      QFontMetrics(Letters(font(), true)).boundingRect(room, Qt::TextWordWrap, title);
  const QRect body =
      QFontMetrics(Letters(font(), false)).boundingRect(room, Qt::TextWordWrap, text);
  resize(std::max(head.width(), body.width()) + 2 * kMargin + kIcon + 4,
         head.height() + body.height() + 2 * kMargin + 2);
  connect(&clock_, &QTimer::timeout, this, [this] {
    if (!MouseIsNear()) left_ -= kTick;
    if (left_ > 0) return;
    clock_.stop();
    hide();
    deleteLater();
  });
  clock_.start(kTick);
}

bool Toast::MouseIsNear() const {
  const QPoint mouse = parentWidget()->mapFromGlobal(QCursor::pos());
  return geometry().adjusted(-kNear, -kNear, kNear, kNear).contains(mouse);
}

void Toast::Place(int below) {
  const picLayoutBox* layout = table_->Layout();
  QPoint at;
  if (betId_ != 0) {
    constexpr double kFoot = 13;
    const QPointF foot = ChipPosition(betId_) + QPointF(0, kFoot);
    const QRect place = layout->FromTable(QRectF(foot, QSizeF(1, 1)));
    at = QPoint(place.left() - width() / 2, place.bottom() + 8 + below);
  } else {
    const QRect well = layout->FromTable(kMoneyWell);
    at = QPoint(well.center().x() - width() / 2, well.top() - 8 - height() - below);
  }
  at.setX(std::clamp(at.x(), 4, std::max(4, layout->width() - width() - 4)));
  at.setY(std::clamp(at.y(), 4, std::max(4, layout->height() - height() - 4)));
  move(at);
}

void Toast::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(kAccent, 1));
  painter.setBrush(kPlate);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 7, 7);
  const QPointF eye(kMargin + 9, height() / 2.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kAccent);
  painter.drawEllipse(eye, 9, 9);
  painter.setPen(kOnBrass);
  painter.setFont(Letters(font(), true));
  painter.drawText(QRectF(eye - QPointF(9, 9), QSizeF(18, 18)), Qt::AlignCenter, "i");
  const QRect inner = rect().adjusted(kMargin + kIcon, kMargin, -kMargin + 2, -kMargin);
  QRect used;
  painter.setPen(kInk);
  painter.drawText(inner, Qt::TextWordWrap, title_, &used);
  painter.setFont(Letters(font(), false));
  painter.drawText(inner.adjusted(0, used.height() + 2, 0, 4), Qt::TextWordWrap, text_);
}

void ShowToast(frmCrapTable* table) {
  Game.MsgAnswer = AnswerOk;
  QList<Toast*> toasts = ToastsOf(table);
  const QString title = Text(Game.MsgTitle);
  QString text = Text(Game.MsgText).simplified();
  for (; toasts.size() >= static_cast<qsizetype>(kMostToasts); toasts.removeFirst())
    delete toasts.first();
  Toast* toast = new Toast(table, title, text, BetOfTitle(Game.MsgTitle));
  PlaceAll(table);
  toast->show();
  Announce(toast->accessibleName());
}

void OfferToasts() {
  OfferOfNotices.IsDue = [] {
    return !TheTable.ToastsOffered && TheTable.Notices == NoticesInBox && !IsAsTold() &&
           MayBeToast(Game.MsgFlags);
  };
  OfferOfNotices.Answered = [](bool taken) {
    TheTable.ToastsOffered = true;
    if (taken) TheTable.Notices = NoticesAsToast;
    UseTableSettings();
  };
}

bool PutToastsAway(frmCrapTable* table) {
  const QList<Toast*> toasts = ToastsOf(table);
  qDeleteAll(toasts);
  return !toasts.isEmpty();
}
