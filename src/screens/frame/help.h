// Help by topic.
#pragma once

/// Opens the help file at `topic`. Without a help file beside the program nothing happens.
void ShowHelp(int topic);
