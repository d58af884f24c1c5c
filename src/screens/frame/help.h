// Help by topic: what F1 and every Help button open.
#pragma once

#include <QString>

/// Opens the handbook at a topic of core/help_topics.h; one that it doesn't know opens its
/// contents. It can be read and closed while a question waits. Without the handbook beside the
/// program the player is told where it was looked for.
void ShowHelp(int topic);

/// Opens the handbook at a page: the file's name.
void ShowHandbookPage(const QString& file);

inline constexpr const char* kFirstPage = "start.md";  // leads to the first bet
