// The bankroll graph on paper: graphs are collected, and printed six to a page.
#pragma once

#include <QString>

/// The graph as it stands joins the page that is due; a page that is full is printed at once.
void CollectGraph();

/// How many graphs have been collected for the page that is due.
int GraphsDue();

/// Prints what has been collected, if anything. Without a printer it is dropped in silence.
void PrintDueGraphs();

/// True when there is something to print on.
bool CanPrintGraphs();

/// Where this names a file, each page is written to it as PDF, over the page before it, instead of
/// going to the printer.
extern QString GraphPrintFile;
