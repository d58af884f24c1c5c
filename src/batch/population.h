// A population: the games of one script, one set of house rules and one seed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch/details.h"
#include "core/game_state.h"
#include "core/host.h"
#include "stats/games_file.h"

/// What all games of a population have in common.
struct PopulationPlan {
  std::string Script;
  std::string GameFile;  // empty for the house rules of a fresh program
  int Rolls = 0;         // the most of a game
  std::uint64_t Seed = 0;
  int Rng = 0;  // 1 to 8, 0 for the game file's
};

struct PlayedGame {
  GameRecord Record;
  GameDetails Details;
  std::string Fault;  // a run-time fault of the game; empty for none
};

/// Plays games on the record, one at a time. Each begins as a new game of the game file, with the
/// script on, its flags false, and its initializing cycle run; nothing of an earlier game reaches
/// it. Nobody is asked and nothing is written: a question ends the game with the answer No, and
/// lines of the script that would reach outside (seeding and choosing the dice, writing an output
/// file) are passed over. Logs, tape and graph printing of the game file are off.
class Population {
 public:
  /// Takes the record and the host. Throws `BatchFailure` for a script or game that can't be used.
  explicit Population(const PopulationPlan& plan);
  ~Population();
  Population(const Population&) = delete;
  Population& operator=(const Population&) = delete;

  /// Plays game `index`. Nothing for a game that ended before its first roll.
  std::optional<PlayedGame> Play(std::int64_t index);

  /// Plays game `index` and records its throws to a tape, which is made; the number of rolls.
  std::int64_t Record(std::int64_t index, const std::string& tape);

  /// What the one who gave the command should know, a line each.
  const std::vector<std::string>& Notes() const { return notes_; }

  /// A number that tells the contents of script, game and dice from others.
  std::uint64_t Fingerprint() const { return fingerprint_; }

  /// Called now and then while a game is played.
  std::function<void()> OnTurn;

 private:
  void OpenGameFile();
  void OpenScriptFile();
  void PassOverLines();
  void LayDown();
  void BeginGame(std::int64_t index);
  void PlayOut();
  void TakeResult(EndReason ended);
  EndReason ReasonOfEnd() const;

  PopulationPlan plan_;
  Host formerHost_;
  std::unique_ptr<GameState> beginning_;
  std::vector<std::string> notes_;
  std::uint64_t fingerprint_ = 0;

  std::string told_;  // the first message of the engine since it was cleared
  bool asked_ = false;
  std::int64_t index_ = 0;
  std::optional<PlayedGame> played_;
};
