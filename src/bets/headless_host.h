// The host that nobody watches.
#pragma once

#include "core/host.h"

/// Answers by rule: a question with No is answered No, any other message OK, an input box with what
/// it opened with, the settle screen with its first button. Draws and sounds nothing. Time stands
/// still but for `Wait`. It is in force until another one is put in place.
Host HeadlessHost();
