// Conversion of scripts of an older program, whose bet table had eight numbers a family.
#pragma once

#include <string>

/// Offers to convert the file; on Yes writes the converted script beside it, leaves its path in
/// `path` and `LastFileResult` 1. `LastFileResult` is 0 when the player declines and -1 when the
/// system failed. The file itself is never touched.
void ConvertForeignScript(std::string& path);
