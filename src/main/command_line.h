// What is said on the command line.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// The file to be opened, empty for none; nothing when the program should end at once with
/// `exitCode`, on having printed its version, its usage, or what it doesn't understand.
std::optional<QString> ReadCommandLine(const QStringList& arguments, int& exitCode);
