// The table as a screen reader finds it: its bets, buttons, money, calls and last rolls.
#pragma once

#include <QString>
#include <functional>

class QAccessibleEvent;
class picLayoutBox;

/// Puts the table's children into the accessible tree of every `picLayoutBox`. Once is enough.
void InstallTableAccess();

/// Puts `hear` in the screen reader's place; none puts it back.
void HearTable(std::function<void(QAccessibleEvent&)> hear);

/// Reads a call or a notice out, once.
void Announce(const QString& sentence);

/// The table may have changed: tells the amounts, working states and money that have, and calls a
/// roll that has ended.
void TellChanges(picLayoutBox* layout);

/// The keyboard has gone to another bet or button.
void TellFocus(picLayoutBox* layout);

/// How a bet is told: what lies on it ("$20, working", "nothing"), and one sentence on what it is.
QString BetValueText(int betId);
QString BetSentence(int betId);
