// The outlines of controls in the colors of our own windows.
#pragma once

#include <QProxyStyle>

/// The style of the desktop. In colors of our own it gives boxes, rings, buttons and fields an
/// outline that can be seen, as styles draw outlines darker than the window, and a dark window has
/// nothing darker.
class ChromeStyle : public QProxyStyle {
  Q_OBJECT

 public:
  using QProxyStyle::QProxyStyle;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
};
