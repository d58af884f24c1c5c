// The places of the handbook, by number: what F1 and the Help buttons open.
#pragma once

#include "core/bets.h"

/// A subject has one number and a number one subject. A bet's own topic is its id, as is that of
/// the dice, of a marker and of the stick person (`TopicOfSpot`).
enum HelpTopic : int {
  kTopicTable = 0,

  // Bets that notices speak of.
  kTopicLayBet = Lay4,
  kTopicPassLine = PassLine,
  kTopicCome = Come,
  kTopicDontPass = DontPass,
  kTopicDontCome = DontCome,

  // Money and chips.
  kTopicChipStacks = 101,
  kTopicLimits = 130,  // the bankroll, the ATM, and the limits of bets, money and rolls

  // Dice.
  kTopicGenerators = 200,
  kTopicDiceRolls = 210,
  kTopicRollPad = 215,

  // How bets are made, changed and decided.
  kTopicBuyBet = 225,
  kTopicContract = 250,
  kTopicWin = 500,
  kTopicLoss = 501,
  kTopicOnOff = 508,
  kTopicPutBets = 510,

  // What is counted.
  kTopicRollTotals = 300,
  kTopicRollFrequencies = 305,
  kTopicBetResults = 310,
  kTopicBetTrends = 315,
  kTopicSummary = 320,
  kTopicGamesLog = 330,
  kTopicBankrollGraph = 335,
  kTopicEventsLog = 340,

  // House rules: the configuration and its tabs in their order.
  kTopicConfiguration = 400,
  kTopicConfigureChecks = 401,
  kTopicConfigureSound = 402,
  kTopicComps = 403,
  kTopicConfigureColors = 404,
  kTopicConfigureMisc = 405,
  kTopicConfigureBankroll = 406,
  kTopicConfigureBets = 407,
  kTopicConfigurePayoffs = 408,
  kTopicProbability = 409,
  kTopicAdvantage = 410,

  // What the table does by itself.
  kTopicAutoPlay = 520,
  kTopicHyperDrive = 540,

  // The program.
  kTopicFiles = 600,
  kTopicAbout = 605,
  kTopicLastError = 610,

  // Scripts.
  kTopicScripts = 640,
  kTopicScriptEditor = 645,
  kTopicTracing = 650,
  kTopicHotKeys = 655,
  kTopicFlags = 660,
};

/// What F1 opens over a spot of the table: the spot's own number, one for all Chip-Stacks.
constexpr int TopicOfSpot(int spot) { return IsChipStack(spot) ? int(kTopicChipStacks) : spot; }
