// Printed pages.
#pragma once

#include <QSizeF>
#include <QString>
#include <functional>

class QPainter;

/// True when there is something to print on.
bool CanPrint();

/// Where this names a file, what is printed is written to it as PDF, over what it held, instead of
/// going to the printer.
extern QString PrintFile;

/// Prints what `paint` draws: it is given a painter that counts in points inside the margins, the
/// size of the page between them, and a call that goes on to a new page. A page that can't be
/// printed is a fault.
void PrintOnPaper(const QString& name,
                  const std::function<void(QPainter&, QSizeF, std::function<void()>)>& paint);

/// Letters of `size` points for what follows.
void SetPrintFont(QPainter& painter, int size, bool bold);

/// One line of a heading or a list at `y`, in letters of `size` points; returns where the next line
/// begins.
double PrintLine(QPainter& painter, double y, double width, const QString& text, int size,
                 bool bold);
