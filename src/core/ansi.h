// The single-byte strings of files: code page Windows-1252.
#pragma once

#include <string>
#include <string_view>

/// UTF-8 of a text in Windows-1252. The five bytes without a character (81, 8D, 8F, 90, 9D) become
/// the control characters of the same number, so that any byte survives the way there and back.
std::string FromAnsi(std::string_view ansi);

/// Windows-1252 of a text in UTF-8, one byte a character: "?" for a character that has no place
/// there, and for each byte that is no UTF-8.
std::string ToAnsi(std::string_view utf8);
