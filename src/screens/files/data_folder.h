// The folder of saved state.
#pragma once

#include <QString>

/// Beside the program where that may be written; else, and for a program that was built and not
/// installed, the user's data folder of the desktop, which is made where there is none.
QString DataFolder(const QString& programFolder);
