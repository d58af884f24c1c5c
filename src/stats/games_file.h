// The Games Log on disk: a header and one record for each finished game.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/currency.h"
#include "core/raw_file.h"
#include "core/record_file.h"

/// The columns of a game's record, in the order of the file.
enum GameColumn : int {
  RollsColumn = 0,
  BetsDecidedColumn = 1,
  BetsWonColumn = 2,
  BetsLostColumn = 3,
  BetsNetColumn = 4,
  HandleColumn = 5,
  DollarsWonColumn = 6,
  DollarsLostColumn = 7,
  DollarsNetColumn = 8,
  AdvantageColumn = 9,
  InvestedColumn = 10,
  EndingBankrollColumn = 11,
  FirstStackColumn = 12,  // Chip-Stack #0, and 19 more
  kGameColumns = 32,
};

/// The results of one finished game, by column.
using GameRecord = std::array<Currency, kGameColumns>;

/// The name of a column, such as "# Bets Won/Lost (Net)".
std::string GameColumnName(int column);

/// The most games that a header can count.
inline constexpr std::int64_t kMostGames = INT32_MAX;

/// A file that is there, and is no Games Log.
struct NotAGamesLog : std::runtime_error {
  NotAGamesLog() : std::runtime_error("it isn't a Games Log") {}
};

/// Whether a file begins as a Games Log does. A missing one doesn't. Throws std::system_error when
/// there is something that can't be read, a folder or device among them.
bool IsGamesLog(const std::string& path);

/// Shows how far a long piece of work has come, from 0 to 1; what it throws ends the work.
using ShowShare = std::function<void(double share)>;

/// A log that is open for reading: what it held when it was opened, whatever is appended meanwhile.
/// A missing or empty file reads as a log without games. All routines throw std::system_error when
/// the file can't be read.
class GamesLogReader {
 public:
  /// Throws NotAGamesLog for any other file.
  explicit GamesLogReader(const std::string& path);

  /// The games that count: those of the header, as far as they lie whole in the file. What stands
  /// behind them is dead.
  std::int64_t Count() const { return count_; }

  /// Up to `count` games from `first` (from 1) on.
  std::vector<GameRecord> Read(std::int64_t first, std::int64_t count) const;

  /// Hands over the records of all games in their order, some thousand at a time.
  void ReadAll(const std::function<void(std::span<const Record> games)>& take) const;

 private:
  std::unique_ptr<RawFile> file_;  // none where there is no file
  std::int64_t count_ = 0;
};

/// The number of games in a log; throws as `GamesLogReader` does.
std::int64_t CountGames(const std::string& path);

/// The values of some columns of all games of a log, column by column in the order of `columns`:
/// the file is read once. Throws as `GamesLogReader` does, and what `show` throws.
std::vector<std::vector<Currency>> ReadGameColumns(const std::string& path,
                                                   std::span<const int> columns,
                                                   const ShowShare& show = {});

/// A log that is open for writing, and locked: while it lives nobody else writes this log. A log
/// that doesn't exist is made. Records are written first and the header that counts them last, so
/// that a kill or a full disk costs the games of one call at most. All routines throw
/// std::system_error when they fail, and the log holds the games it held before.
class GamesLogWriter {
 public:
  /// Throws NotAGamesLog for a file that is none and isn't empty, and std::system_error with
  /// `text_file_busy` while another program writes the log.
  explicit GamesLogWriter(const std::string& path);

  std::int64_t Count() const { return count_; }

  /// Appends games, over dead records where there are any. Forced to disk unless told otherwise.
  void Append(std::span<const GameRecord> games, Durability durability = Durability::Disk);

  /// Appends all games of another log; nothing is appended when `show` throws.
  void Append(const GamesLogReader& source, const ShowShare& show = {});

  /// Lets only the first `count` games count; the others stay as dead records.
  void Shorten(std::int64_t count);

 private:
  void WriteRecords(std::int64_t first, std::span<const Record> records) const;
  void WriteHeader(std::int64_t count, Durability durability);
  void PutBack(std::int64_t length) noexcept;
  template <class Work>
  void Append(std::int64_t games, Durability durability, Work writeRecords);

  std::unique_ptr<RawFile> file_;
  Record header_;
  std::int64_t count_ = 0;
};

/// Removes games `first` to `last` of a log: later ones move down over the gap. The file doesn't
/// shrink: what lay behind stays as dead bytes. False when there are no such games. Throws as
/// `GamesLogWriter` does, and what `show` throws; the log is as before then.
bool DeleteGames(const std::string& path, std::int64_t first, std::int64_t last,
                 const ShowShare& show = {});

/// Puts a log without games in the place of whatever log is there; a file that is no log is kept as
/// ".bad". Throws std::system_error as `GamesLogWriter` does.
void WriteEmptyGamesLog(const std::string& path);

/// Copies a log, dead records and all, to another file in the safe way of `FileReplacement`.
void CopyGamesLog(const std::string& from, const std::string& to);

/// Writes a game to a log. During a run under Hyper-Drive games are gathered and written by
/// `FlushGamesLog`. Games that can't be written are kept and tried again each time, the newest
/// hundred thousand of them; `LastErrorText` has the reason.
void GatherGameRecord(const std::string& path, const GameRecord& game);

/// Writes the games that were gathered, if any, with one opening of the log. Called before the
/// event loop gets a turn, at the end of a run, and before anything looks at the log.
void FlushGamesLog();

/// Why games of a log are still waiting to be written, such as "the disk is full"; empty when none
/// are.
std::string GamesWriteFailure(const std::string& path);
