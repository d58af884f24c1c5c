// A table under test: defaults laid down, and a host that writes down all that it is asked. Brings
// along what nearly every test of a table uses: bets, rolls, messages, rules and what looks at
// them.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "bets/chips.h"
#include "bets/consistency.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "core/game_state.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "support/scratch_folder.h"

/// A message as the player saw it.
struct ShownMessage {
  std::string Text, Title;
  int HelpTopic = 0, Flags = 0;

  bool operator==(const ShownMessage&) const = default;
};
std::ostream& operator<<(std::ostream& out, const ShownMessage& message);

/// A notice with the hide box of its classes, as the rules of bets show it.
ShownMessage Notice(int classes, const std::string& title, int helpTopic, const std::string& text);

/// What stops the player, with nothing to answer.
ShownMessage Stop(const std::string& title, int helpTopic, const std::string& text);

/// How GoogleTest prints money.
std::ostream& operator<<(std::ostream& out, Currency amount);

/// Gives the chips their values, from the smallest up.
void SetChips(std::initializer_list<Currency> values);

/// The most that may lie on a bet.
Currency MaximumOf(int betId);

/// Seeds the chosen generator.
void SeedDice(int seed);

/// Switches on every kind of line of the Events Log, and the log.
void LogEverything();

/// What the player does with the next message: the button (0 OK, 1 Yes, 2 No, 3 Cancel), the hide
/// box and what the input boxes hold.
struct PlannedAnswer {
  int Button = 0;
  bool Hide = false;
  std::string FirstInput, SecondInput;
};
inline const PlannedAnswer kYes = {1, false, "", ""}, kNo = {2, false, "", ""};

/// Starts each test with the defaults of a fresh program and a recording host, and leaves a fresh
/// program and the old host at its end.
class TableTest : public ::testing::Test {
 protected:
  TableTest();
  void TearDown() override;

  /// Begins anew, as at the start of the test.
  void Begin();

  /// Asks for a change of a bet at its own place, as a click does.
  static void Put(int betId, Currency change);

  /// `Put` with every notice off, for the ground of a test; the amount must stand afterwards.
  static void Given(int betId, Currency amount);

  /// Puts money on a bet past all rules, with its contract: a bet as it was established.
  static void Establish(int betId, Currency amount);

  /// Sets the point as a roll leaves it: with the ratios of the line odds and the working states.
  static void SetPoint(int point);

  static void Roll(int die1, int die2);

  static Currency Bet(int betId) { return Game.Bets[betId]; }

  /// What lies on these bets, on a table whose books balance.
  static void ExpectBets(std::initializer_list<std::pair<int, Currency>> bets,
                         int line = __builtin_LINE());

  /// Bets 1 to 83 and the vig held up front, counted afresh.
  static Currency MoneyOnTable();

  /// Fails when the books of the table don't balance: the total, a bet below 0 or off the Unit.
  static void ExpectBooksBalance();

  /// Takes the messages shown since the last call.
  std::vector<ShownMessage> TakeShown();

  /// The only message shown since the last call; fails when there were none or several.
  ShownMessage TakeOnlyMessage();

  std::vector<ShownMessage> Shown;
  std::deque<PlannedAnswer> Answers;  // used up in order; without one a message is answered by rule

  std::vector<SettleScreen> Settled;  // the settle screens shown
  std::deque<int> SettleButtons;      // used up in order; without one button 0 is pressed

  std::vector<std::string> SoundsPlayed;

 private:
  const Host host_ = TheHost;
};

/// A table whose files and logs lie in a folder of its own.
class FolderTest : public TableTest {
 protected:
  FolderTest();

  const ScratchFolder folder_{"table"};
};
