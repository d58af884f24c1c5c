// Which columns of a Games Log are exported.
#pragma once

#include <QWidget>
#include <vector>

/// Asks for the columns to export, with those of last time, or the results of the game, checked;
/// empty when the player cancels.
std::vector<int> AskForColumns(QWidget* parent, const std::vector<int>& last);
