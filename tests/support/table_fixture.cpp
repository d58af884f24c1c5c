#include "support/table_fixture.h"

#include "bets/change_bet.h"
#include "bets/headless_host.h"
#include "bets/settle.h"
#include "bets/vig.h"
#include "dice/generators.h"
#include "play/start_up.h"

std::ostream& operator<<(std::ostream& out, const ShownMessage& message) {
  return out << "[" << message.Title << " | " << message.Text << " | topic " << message.HelpTopic
             << " | flags " << message.Flags << "]";
}

ShownMessage Notice(int classes, const std::string& title, int helpTopic, const std::string& text) {
  int flags = classes & NoticeCharges ? OkTick : OkStop;
  if (classes & NoticeActions) flags |= HideActions;
  if (classes & NoticeLimits) flags |= HideLimits;
  if (classes & NoticeCharges) flags |= HideCharges;
  return {text, title, helpTopic, flags};
}

ShownMessage Stop(const std::string& title, int helpTopic, const std::string& text) {
  return {text, title, helpTopic, OkStop};
}

std::ostream& operator<<(std::ostream& out, Currency amount) { return out << MoneyText(amount); }

void SetChips(std::initializer_list<Currency> values) {
  std::ranges::copy(values, Game.Bets.begin() + SmallestChip);
}

Currency MaximumOf(int betId) {
  FigureMaxBet(betId);
  return Game.MaxHere;
}

void SeedDice(int seed) {
  Game.ChangeRequest = seed;
  SeedRng(SeedInChangeRequest);
}

void LogEverything() {
  Game.EventsLogActive = Game.LogRolls = Game.LogBetChanges = true;
  Game.LogBetsWon = Game.LogBetsLost = Game.LogChipStackChanges = true;
  Game.LogPassesMisses = Game.LogShooterChanges = Game.LogBankrollChanges = true;
}

TableTest::TableTest() { Begin(); }

void TableTest::Begin() {
  StartAfresh();
  LayDownDefaults();
  Game.GamesLogFile.clear();  // tests that want a log name one
  TheHost = HeadlessHost();
  const auto answerByRule = TheHost.ShowMessage;
  TheHost.ShowMessage = [this, answerByRule](bool modal) {
    Shown.push_back({Game.MsgText, Game.MsgTitle, Game.MsgCtx, Game.MsgFlags});
    if (Answers.empty()) return answerByRule(modal);
    const PlannedAnswer answer = Answers.front();
    Answers.pop_front();
    PressMessageButton(answer.Button, answer.Hide, answer.FirstInput, answer.SecondInput);
  };
  TheHost.ShowSettleScreen = [this] {
    Settled.push_back(Game.Settle);
    int button = 0;
    if (!SettleButtons.empty()) {
      button = SettleButtons.front();
      SettleButtons.pop_front();
    }
    PressSettleButton(button);
  };
  TheHost.PlaySound = [this](const std::string& path, SoundMode) { SoundsPlayed.push_back(path); };
}

void TableTest::TearDown() {
  StartAfresh();
  TheHost = host_;
}

FolderTest::FolderTest() {
  Game.DataPath = Game.AppPath = folder_ / "";
  Game.GamesLogFile = folder_ / "default.glg";
  Game.EventsLogFile = folder_ / "Events Log.txt";
}

void TableTest::Put(int betId, Currency change) {
  Game.ChangeRequest = change;
  MakeBet(betId);
}

void TableTest::Given(int betId, Currency amount) {
  const int notify = Game.Notify;
  Game.Notify = 0;
  Put(betId, amount - Game.Bets[betId]);
  Game.Notify = notify;
  ASSERT_EQ(Game.Bets[betId], amount) << BetName(betId);
}

void TableTest::Establish(int betId, Currency amount) {
  Game.Bets[betId] = amount;
  if (betId < kContractSlots) Game.ContractBets[betId] = amount;
  RefigureHeldVig();
}

void TableTest::SetPoint(int point) {
  Game.Point = point;
  Game.PrevPoint = point;
  if (point != 0) Game.RollTotal = point;
  UpdateWorkingStates();
  if (point != 0) CopyPointOddsPayoffs();
}

void TableTest::Roll(int die1, int die2) { RollNamedDice(die1, die2); }

void TableTest::ExpectBets(std::initializer_list<std::pair<int, Currency>> bets, int line) {
  for (const auto& [id, sum] : bets) EXPECT_EQ(Bet(id), sum) << BetName(id) << " in line " << line;
  ExpectBooksBalance();
}

Currency TableTest::MoneyOnTable() {
  Currency sum;
  for (int id = Lay4; id <= LastBet; ++id) {
    sum += Game.Bets[id];
    if (VigIsUpFront(id)) sum += VigHeld(id);
  }
  return sum;
}

void TableTest::ExpectBooksBalance() {
  EXPECT_EQ(Game.TotalOnTable, MoneyOnTable());
  for (int id = Lay4; id <= LastBet; ++id) {
    EXPECT_GE(Game.Bets[id], Currency(0)) << BetName(id);
    EXPECT_TRUE(IsWhole(Game.Bets[id] / Unit())) << BetName(id) << " " << Game.Bets[id];
  }
}

std::vector<ShownMessage> TableTest::TakeShown() {
  std::vector<ShownMessage> shown;
  shown.swap(Shown);
  return shown;
}

ShownMessage TableTest::TakeOnlyMessage() {
  const std::vector<ShownMessage> shown = TakeShown();
  EXPECT_EQ(shown.size(), 1U) << "messages shown";
  return shown.empty() ? ShownMessage() : shown.back();
}
