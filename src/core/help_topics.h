// The places of the handbook, by number: what F1 and the Help buttons open.
#pragma once

/// A bet's own topic is its id, as is that of a marker and of the stick person.
enum HelpTopic : int {
  kChipStackTopic = 101,
  kDiceRollTopic = 210,
};
