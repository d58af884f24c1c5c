// The folder of saved state.
#pragma once

#include <QString>

/// The folder of what ships with the program, such as sounds and the handbook: the shared folder of
/// an installed program, else where the program itself lies.
QString ProgramFolder();

/// Beside the program where that may be written; else, and for a program that was built and not
/// installed, the user's data folder of the desktop, which is made where there is none.
QString DataFolder(const QString& programFolder);
