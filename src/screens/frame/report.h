// What can be printed or copied: every list, figure and picture of the program.
#pragma once

#include <QPainter>
#include <QStringList>
#include <functional>

#include "core/text_table.h"

class QWidget;

/// A page or more. Rows may be many: they are asked for one by one, as they are printed.
struct Report {
  QString Title{};        // of the print job, and of the window that offers it
  QStringList Heading{};  // lines above the rows; the first is bold

  QStringList Columns{};                         // headings of the columns; none for plain lines
  Qt::Alignment (*Align)(int column) = nullptr;  // left where there is none
  int Rows = 0;
  std::function<QStringList(int row)> Row{};

  /// Draws on the rest of a page below the heading, in points; true when another page follows.
  std::function<bool(QPainter& painter, QSizeF rest, int page)> Picture{};

  int TextSize = 10;  // of the rows, in points
};

/// The lines that head a report of the game: what it is, the game's file, the date, and the script
/// and tape in use.
QStringList GameHeading(const QString& what);

/// Shows a report as it will be printed, and prints it, or writes it as PDF, where the player says
/// so. True when it has been printed.
bool PrintReport(QWidget* parent, const Report& report);

/// Prints a report at once, without a question; without a printer it is dropped in silence.
void PrintAtOnce(const Report& report);

/// Copies headings and rows to the clipboard, with tabs between the columns.
void CopyReport(const Report& report);
QString TextOf(const Report& report);

/// Where this names a file, what is printed is written to it as PDF, over what it held, without a
/// question.
extern QString PrintFile;

/// A table of figures as a report of the game: labels to the left, figures to the right.
Report ReportOf(const TextTable& table);

/// Letters of `size` points for what a picture draws next.
void SetPrintFont(QPainter& painter, int size, bool bold);

/// True when there is a printer, or a file that stands for it.
bool CanPrint();
