// How a report becomes pages; for the report itself and its preview.
#pragma once

#include <functional>
#include <limits>

#include "screens/frame/report.h"

class QPrinter;

inline constexpr int kAllPages = std::numeric_limits<int>::max();

/// Sets a printer up for a report; with a name for a PDF file it writes that.
void PreparePrinter(QPrinter& printer, const Report& report, const QString& pdf);

/// Paints at most `mostPages` of a report. `goOn` is asked now and then, with the row that comes
/// next. A page that can't be printed is a fault.
void PaintReport(QPrinter& printer, const Report& report, int mostPages,
                 const std::function<bool(int row)>& goOn);

/// Prints a report, or writes it to a PDF file when that is named, with its progress shown when it
/// is long. False when the player stopped it.
bool WriteReport(QWidget* parent, const Report& report, const QString& pdf);
