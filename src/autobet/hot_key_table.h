// The table of Hot-Keys as its screen edits it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/script_state.h"

/// A row as the list shows it: " Ctrl " and the key.
std::string HotKeyCaption(const HotKey& row);

/// A row to be added or put in another's place, its texts trimmed. Nothing, on telling why under
/// "Hot-Key", when it has no file or holds what the table's file can't keep.
std::optional<HotKey> CheckedHotKey(HotKey row);

/// The rows as text for the desktop's clipboard: caption, file and description with tabs between.
std::string TextOfHotKeys(const std::vector<HotKey>& rows);

/// The rows that such a text reads as. Nothing, on telling the first row that is none, for any
/// other text.
std::optional<std::vector<HotKey>> HotKeysToPaste(std::string_view text);

/// Changes of the table, by the places of its rows from 0; each is saved at once.
void InsertHotKeys(std::size_t place, const std::vector<HotKey>& rows);
void ReplaceHotKey(std::size_t place, const HotKey& row);
void DeleteHotKeys(const std::vector<std::size_t>& places);

/// What is wrong with a row when its key is pressed: a row before it has the same key, or its file
/// is gone; empty for nothing.
std::string FaultOfHotKey(std::size_t place);

/// What stands above the table on paper.
std::string HotKeyHeading(const std::string& date);
