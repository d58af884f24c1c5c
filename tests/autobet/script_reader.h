// Reads scripts from the text that the program itself shows for their lines, so that a test can
// write its script as a player sees it:
//
//   # a comment, passed over like blank lines
//   ' a remark of the script
//   When . . .
//     Next roll is a come-out roll
//     Pass Line is equal to $ 0
//   then . . .
//     Bet $ 10 on Pass Line
//     Set flag "Hot" to False
//     Go to "End"
//   Label "End"
//
// One line of text for each line of the script; blanks in front and behind don't matter, blanks and
// capitals within do. Words are those of the language tables, and names stand in double quotes (a
// ";" that ends a message or output text stands behind them). An amount of 0 stays away from "has
// won" and the like.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/script_file.h"

/// The line of a text, complete with `LineText`; throws std::runtime_error with the text when it
/// can't be read.
ScriptLine ReadLine(const std::string& text);

/// The lines of a whole script.
std::vector<ScriptLine> ReadScript(const std::string& text);

/// Makes lines the script of the game as they are.
void LoadLines(const std::vector<ScriptLine>& lines);

/// Makes the lines of `text` the script of the game, with its labels and flags registered.
void LoadScript(const std::string& text);

/// The codes of a list, without its separators.
std::vector<int> CodesOf(std::span<const ListItem> list);
