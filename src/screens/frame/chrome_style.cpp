#include "screens/frame/chrome_style.h"

#include <QPainter>
#include <QStyleOption>

#include "screens/frame/chrome.h"

namespace {

/// What has the focus keeps the outline that tells so.
bool WantsOutline(const QStyleOption& option) {
  return HasOwnChrome() && !(option.state & QStyle::State_HasFocus);
}

void DrawOutline(QPainter& painter, const QRect& rect, double radius) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ColorsOfWindows().Border, 1));
  painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter.restore();
}

constexpr double kCorner = 2;

}  // namespace

void ChromeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!HasOwnChrome()) return;
  switch (element) {
    case PE_IndicatorRadioButton:
      DrawOutline(*painter, option->rect, option->rect.width() / 2.0);
      break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck: DrawOutline(*painter, option->rect, kCorner); break;
    case PE_Frame:
    case PE_FrameGroupBox:
    case PE_PanelButtonCommand:
    case PE_FrameLineEdit:
      if (WantsOutline(*option)) DrawOutline(*painter, option->rect, kCorner);
      break;
    default: break;
  }
}

void ChromeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if ((control == CC_ComboBox || control == CC_SpinBox) && WantsOutline(*option))
    DrawOutline(*painter, option->rect, kCorner);
}
