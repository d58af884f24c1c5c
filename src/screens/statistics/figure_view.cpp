#include "screens/statistics/figure_view.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <array>

#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"

QColor PaletteInk(int color) {
  static constexpr std::array<QRgb, 16> kColors = {0xFF000000, 0xFF000080, 0xFF008000, 0xFF008080,
                                                   0xFF800000, 0xFF800080, 0xFF808000, 0xFFC0C0C0,
                                                   0xFF808080, 0xFF0000FF, 0xFF00FF00, 0xFF00FFFF,
                                                   0xFFFF0000, 0xFFFF00FF, 0xFFFFFF00, 0xFFFFFFFF};
  return QColor::fromRgb(kColors[static_cast<unsigned>(color) % kColors.size()]);
}

QColor FigureInk(int color) { return InkOnPaper(PaletteInk(color)); }

void PutOnPaper(QWidget* panel) {
  FollowChrome(panel, [panel] {
    for (QHeaderView* header : panel->findChildren<QHeaderView*>())
      header->setPalette(QApplication::palette());
    const QColor ink = InkOnPaper(Qt::black);
    QPalette palette = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      palette.setColor(group, QPalette::Window, PaperColor());
      palette.setColor(group, QPalette::Base, PaperColor());
      palette.setColor(group, QPalette::AlternateBase,
                       HasOwnChrome() ? ColorsOfWindows().Window : QColor(0xF4, 0xF6, 0xF8));
      for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(group, role, ink);
    }
    panel->setPalette(palette);
  });
  panel->setAutoFillBackground(true);
}

void ShowFigure(QLabel* label, const std::string& text, int color) {
  if (const QString shown = Text(text); label->text() != shown) label->setText(shown);
  const QColor ink = FigureInk(color);
  if (label->palette().color(QPalette::WindowText) == ink) return;
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, ink);
  label->setPalette(palette);
}

QLabel* NewFigureLabel(const QString& name, const QString& widest) {
  QLabel* label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest));
  return label;
}

std::vector<MenuRow> ReportRows(QWidget* window, std::function<Report()> report) {
  return {Command("mnuPrint", QObject::tr("&Print"),
                  [window, report] { PrintReport(window, report()); })
              .On(QKeySequence::Print),
          Command("mnuCopy", QObject::tr("&Copy as Text"), [report] { CopyReport(report()); })
              .On(QKeySequence::Copy)
              .Told(QObject::tr("Copies all figures, with tabs between the columns"))};
}
