// Counts every allocation of a benchmark: what runs under Hyper-Drive must not make any.
#pragma once

/// Allocations since the program began.
long Allocations();
