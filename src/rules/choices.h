// Choices of the configuration screen: styles, notices, percentages.
#pragma once

#include <array>
#include <string_view>

#include "core/currency.h"

/// A rate of vig is kept as a fraction and shown as a percentage.
Currency FractionOfPercent(Currency percent);
Currency PercentOfFraction(Currency fraction);

/// A style `by` places on, round both ends of 1 to `count`.
int StepStyle(int style, int by, int count);

/// A dice style outside its list becomes the first.
void CorrectDiceStyle();

inline constexpr int kNoticeBoxes = 5;
std::array<bool, kNoticeBoxes> NoticeBoxes();
void StoreNoticeBoxes(const std::array<bool, kNoticeBoxes>& boxes);

/// The caption of the net of the game.
std::string_view WonLostCaption(Currency net);
