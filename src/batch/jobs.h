// Games played by several processes, and handed over in their order.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "stats/games_file.h"

/// What a stretch of games came to. Games without rolls are counted and not among the records.
struct GameBlock {
  std::int64_t First = 0;
  std::int64_t Count = 0;
  std::vector<GameRecord> Games;
  std::string Details;  // a line for each record, where details are wanted
  std::int64_t Faults = 0;
  std::string FirstFault;

  std::int64_t End() const { return First + Count; }
};

/// Processes that wait for stretches of games. Each is a copy of this one, as it stands when they
/// are made, and does nothing but call `play`: what it needs must be laid down before, and files
/// that only this process may hold are opened after. Signals that end a program go by them: this
/// process ends them, and they end by themselves when it is gone.
class Workers {
 public:
  using PlayBlock = std::function<GameBlock(std::int64_t first, std::int64_t count)>;
  /// Takes the next block; false when no more are wanted.
  using TakeBlock = std::function<bool(GameBlock& block)>;
  /// Looks up now and then, several times a second; false to leave all that isn't handed over yet.
  using LookUp = std::function<bool()>;

  /// Throws std::system_error when the system has no more processes to give.
  Workers(int jobs, const PlayBlock& play);
  ~Workers();
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  /// Plays games `first` to `end` - 1 and hands them over from the first on, without a gap: how
  /// they were dealt out can't be told from it. Throws `BatchFailure` when a process has died.
  void Play(std::int64_t first, std::int64_t end, const TakeBlock& take, const LookUp& lookUp);

 private:
  struct Worker {
    pid_t Process = 0;
    int Socket = -1;
    std::deque<std::int64_t> Started;  // first games of the blocks that it has been given
    std::string Received;              // of the block that is coming in
  };

  void Start(const PlayBlock& play);
  void DealOut(std::int64_t end);
  bool ReceiveFrom(Worker& worker);
  void TakeReceived(Worker& worker);
  bool WaitForBlocks();

  std::vector<Worker> workers_;
  std::map<std::int64_t, GameBlock> done_;  // by first game
  std::int64_t next_ = 0;                   // to be dealt out
  std::int64_t perBlock_ = 1;
};

/// The cores that this process may use.
int AvailableCores();
