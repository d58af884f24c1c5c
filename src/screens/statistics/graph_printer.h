// The bankroll graph on paper: graphs are collected, and printed six to a page.
#pragma once

class QWidget;

/// The graph as it stands joins the page that is due; a page that is full is printed at once.
void CollectGraph();

/// How many graphs have been collected for the page that is due.
int GraphsDue();

/// Prints what has been collected, if anything. For `parent` the page is shown first; without one
/// it is printed at once, or dropped in silence where there is no printer.
void PrintDueGraphs(QWidget* parent = nullptr);
