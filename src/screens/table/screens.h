// The table of screens.
#pragma once

#include <span>

#include "screens/frame/screen_table.h"

/// Every modeless screen of the program. A new screen is a row here, and a unit of its own.
std::span<const ScreenRow> AllScreens();
