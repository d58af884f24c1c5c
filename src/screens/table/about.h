// What the program is, and whose.
#pragma once

/// Shows version, authors and licence.
void ShowAbout();
