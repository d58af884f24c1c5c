// A table of texts as a report.
#pragma once

#include "rules/advantage_table.h"
#include "screens/frame/report.h"

/// For paper and the clipboard: labels to the left, figures to the right.
Report ReportOf(TextTable table);
