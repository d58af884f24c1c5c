#include "stats/games_file.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/game_state.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = "Kelvanor Games File, Data Format 5.0";
constexpr std::size_t kMarkWidth = 92;
constexpr std::size_t kCountOffset = 92;
constexpr std::size_t kMoneyWidth = 8;

constexpr std::int64_t kRecordsAtOnce = 4096;
constexpr std::size_t kMostWaiting = 100'000;  // games

constexpr std::array<std::string_view, FirstStackColumn> kColumnNames = {
    "# Rolls",
    "# Bets Decided",
    "# Bets Won",
    "# Bets Lost",
    "# Bets Won/Lost (Net)",
    "$ Bets Decided (Handle)",
    "$ Bets Won",
    "$ Bets Lost",
    "$ Bets Won/Lost (Net)",
    "% Won or Lost (HA)",
    "Invested bankroll",
    "Ending bankroll",
};

constexpr std::int64_t PositionOf(std::int64_t record) {
  return (record - 1) * static_cast<std::int64_t>(kRecordSize);
}

std::span<char> BytesOf(std::span<Record> records) {
  return {reinterpret_cast<char*>(records.data()), records.size_bytes()};
}

std::span<const char> BytesOf(std::span<const Record> records) {
  return {reinterpret_cast<const char*>(records.data()), records.size_bytes()};
}

Record FreshHeader() {
  Record header;
  header.PutText(0, kMarkWidth, kMark);
  header.PutLong(kCountOffset, 0);
  return header;
}

struct Header {
  Record Bytes;
  std::int64_t Count = 0;
};

/// The header of an open log, and the games that count.
Header ReadHeader(const RawFile& file) {
  const std::int64_t length = file.Length();
  Header header{FreshHeader(), 0};
  if (length == 0) return header;
  if (file.ReadSome(0, BytesOf(std::span(&header.Bytes, 1))) < kRecordSize ||
      header.Bytes.Text(0, kMarkWidth) != kMark)
    throw NotAGamesLog();
  const std::int64_t whole = length / static_cast<std::int64_t>(kRecordSize) - 1;
  header.Count = std::clamp<std::int64_t>(header.Bytes.Long(kCountOffset), 0, whole);
  return header;
}

/// The records `first` (from 1, the header) and on, as many as there are up to the size of `block`.
std::span<const Record> ReadRecordsAt(const RawFile& file, std::int64_t first,
                                      std::span<Record> block) {
  return block.first(file.ReadSome(PositionOf(first), BytesOf(block)) / kRecordSize);
}

GameRecord GameOf(const Record& record) {
  GameRecord game;
  for (std::size_t column = 0; column < game.size(); ++column)
    game[column] = record.Money(column * kMoneyWidth);
  return game;
}

Record RecordOf(const GameRecord& game) {
  Record record;
  for (std::size_t column = 0; column < game.size(); ++column)
    record.PutMoney(column * kMoneyWidth, game[column]);
  return record;
}

void ShowDone(const ShowShare& show, std::int64_t done, std::int64_t all) {
  if (show) show(static_cast<double>(done) / static_cast<double>(std::max<std::int64_t>(all, 1)));
}

/// Opens a log that nobody else writes, and keeps it so while it is open. While it was waited for,
/// another may have taken its place.
std::unique_ptr<RawFile> OpenLocked(const std::string& path) {
  for (;;) {
    auto file = std::make_unique<RawFile>(path, RawFile::Use::Write);
    if (!file->TryLock()) FailFor(std::errc::text_file_busy);
    if (file->HasName()) return file;
  }
}

/// Copies the bytes from `from` up to `end` of an open file.
void CopyBytes(const RawFile& file, std::int64_t from, std::int64_t end, FileReplacement& to,
               const ShowShare& show, std::int64_t all) {
  std::string block(static_cast<std::size_t>(kRecordsAtOnce) * kRecordSize, '\0');
  while (from < end) {
    const auto wanted = std::min(end - from, static_cast<std::int64_t>(block.size()));
    const auto piece = std::span(block).first(static_cast<std::size_t>(wanted));
    file.ReadAll(from, piece);
    to.Write({piece.data(), piece.size()});
    from += wanted;
    ShowDone(show, from, all);
  }
}

/// A log that can't be read is kept under another name before anything takes its place.
void KeepDamaged(const fs::path& path) {
  fs::path kept = path;
  kept.replace_extension(".bad");
  RenameFile(path, kept);
}

std::string_view BytesOf(const Record& record) {
  return {reinterpret_cast<const char*>(record.Bytes()), kRecordSize};
}

// --- Games that wait ---

struct WaitingGames {
  std::string Path;
  std::vector<GameRecord> Games;
  std::string Failure;  // why they still wait
};
WaitingGames waiting;

/// Games that nobody can write don't fill the memory.
void DropOldest() {
  if (waiting.Games.size() <= kMostWaiting) return;
  waiting.Games.erase(waiting.Games.begin(),
                      waiting.Games.end() - static_cast<std::ptrdiff_t>(kMostWaiting / 2));
}

}  // namespace

std::string GameColumnName(int column) {
  if (column < FirstStackColumn) return std::string(kColumnNames[static_cast<unsigned>(column)]);
  return "Chip-Stack #" + std::to_string(column - FirstStackColumn);
}

bool IsGamesLog(const std::string& path) {
  if (!FileExists(PathOf(path))) return false;
  const RawFile file(path, RawFile::Use::Read);
  try {
    return file.Length() > 0 && ReadHeader(file).Count >= 0;
  } catch (const NotAGamesLog&) {
    return false;
  }
}

// --- Reading ---

GamesLogReader::GamesLogReader(const std::string& path) {
  if (!FileExists(PathOf(path))) return;
  file_ = std::make_unique<RawFile>(path, RawFile::Use::Read);
  count_ = ReadHeader(*file_).Count;
}

std::vector<GameRecord> GamesLogReader::Read(std::int64_t first, std::int64_t count) const {
  if (first < 1 || file_ == nullptr) return {};
  count = std::clamp<std::int64_t>(count, 0, std::max<std::int64_t>(count_ - first + 1, 0));
  std::vector<Record> block(static_cast<std::size_t>(count));
  std::vector<GameRecord> games;
  games.reserve(block.size());
  for (const Record& record : ReadRecordsAt(*file_, first + 1, block))
    games.push_back(GameOf(record));
  return games;
}

void GamesLogReader::ReadAll(const std::function<void(std::span<const Record> games)>& take) const {
  std::vector<Record> block(static_cast<std::size_t>(std::min(kRecordsAtOnce, count_)));
  for (std::int64_t first = 1; first <= count_; first += kRecordsAtOnce) {
    const auto wanted = static_cast<std::size_t>(std::min(kRecordsAtOnce, count_ - first + 1));
    const auto games = ReadRecordsAt(*file_, first + 1, std::span(block).first(wanted));
    if (games.size() < wanted) FailFor(std::errc::io_error);  // cut off while it is read
    take(games);
  }
}

std::int64_t CountGames(const std::string& path) { return GamesLogReader(path).Count(); }

std::vector<std::vector<Currency>> ReadGameColumns(const std::string& path,
                                                   std::span<const int> columns,
                                                   const ShowShare& show) {
  const GamesLogReader log(path);
  std::vector<std::vector<Currency>> values(columns.size());
  for (auto& column : values) column.reserve(static_cast<std::size_t>(log.Count()));
  std::int64_t done = 0;
  log.ReadAll([&](std::span<const Record> games) {
    for (std::size_t i = 0; i < columns.size(); ++i)
      for (const Record& game : games)
        values[i].push_back(game.Money(static_cast<std::size_t>(columns[i]) * kMoneyWidth));
    done += static_cast<std::int64_t>(games.size());
    ShowDone(show, done, log.Count());
  });
  return values;
}

// --- Writing ---

GamesLogWriter::GamesLogWriter(const std::string& path) : file_(OpenLocked(path)) {
  const Header header = ReadHeader(*file_);
  header_ = header.Bytes;
  count_ = header.Count;
  if (file_->Length() > 0) return;
  try {
    WriteHeader(0, Durability::System);
  } catch (...) {
    PutBack(0);
    throw;
  }
}

void GamesLogWriter::WriteRecords(std::int64_t first, std::span<const Record> records) const {
  file_->Write(PositionOf(first), BytesOf(records));
}

void GamesLogWriter::PutBack(std::int64_t length) noexcept {
  try {
    if (length > 0) WriteRecords(1, {&header_, 1});
    file_->Cut(length);
  } catch (...) {  // the disk fails: the failure that led here is told
  }
}

void GamesLogWriter::WriteHeader(std::int64_t count, Durability durability) {
  Record header = header_;
  header.PutText(0, kMarkWidth, kMark);
  header.PutLong(kCountOffset, static_cast<std::int32_t>(count));
  const auto sync = [&] {
    if (durability == Durability::Disk) file_->Sync();
  };
  sync();  // the records, before a header counts them
  WriteRecords(1, {&header, 1});
  sync();
  header_ = header;
  count_ = count;
}

template <class Work>
void GamesLogWriter::Append(std::int64_t games, Durability durability, Work writeRecords) {
  if (games == 0) return;
  if (count_ + games > kMostGames) FailFor(std::errc::file_too_large);
  const std::int64_t length = file_->Length();
  try {
    writeRecords();
    WriteHeader(count_ + games, durability);
  } catch (...) {
    PutBack(length);
    throw;
  }
}

void GamesLogWriter::Append(std::span<const GameRecord> games, Durability durability) {
  Append(static_cast<std::int64_t>(games.size()), durability, [&] {
    std::vector<Record> block;
    block.reserve(std::min<std::size_t>(games.size(), kRecordsAtOnce));
    std::int64_t at = count_ + 2;
    for (const GameRecord& game : games) {
      block.push_back(RecordOf(game));
      if (block.size() < block.capacity() && &game != &games.back()) continue;
      WriteRecords(at, block);
      at += static_cast<std::int64_t>(block.size());
      block.clear();
    }
  });
}

void GamesLogWriter::Append(const GamesLogReader& source, const ShowShare& show) {
  Append(source.Count(), Durability::Disk, [&] {
    std::int64_t done = 0;
    source.ReadAll([&](std::span<const Record> games) {
      WriteRecords(count_ + 2 + done, games);
      done += static_cast<std::int64_t>(games.size());
      ShowDone(show, done, source.Count());
    });
  });
}

void GamesLogWriter::Shorten(std::int64_t count) {
  WriteHeader(std::clamp<std::int64_t>(count, 0, count_), Durability::Disk);
}

bool DeleteGames(const std::string& path, std::int64_t first, std::int64_t last,
                 const ShowShare& show) {
  if (!FileExists(PathOf(path))) return false;
  GamesLogWriter log(path);
  if (first < 1 || last < first || last > log.Count()) return false;
  if (last == log.Count()) {
    log.Shorten(first - 1);
    return true;
  }
  const RawFile old(path, RawFile::Use::Read);
  Record header = ReadHeader(old).Bytes;
  const std::int64_t left = log.Count() - (last - first + 1);
  header.PutLong(kCountOffset, static_cast<std::int32_t>(left));
  const std::int64_t length = old.Length();
  FileReplacement file(path);
  file.Write(BytesOf(header));
  // Game n is record n + 1.
  CopyBytes(old, PositionOf(2), PositionOf(first + 1), file, show, length);
  CopyBytes(old, PositionOf(last + 2), PositionOf(log.Count() + 2), file, show, length);
  CopyBytes(old, PositionOf(left + 2), length, file, show, length);
  file.Finish();
  return true;
}

void WriteEmptyGamesLog(const std::string& path) {
  const auto lock = OpenLocked(path);
  if (lock->Length() > 0 && !IsGamesLog(path)) KeepDamaged(PathOf(path));
  FileReplacement file(path);
  file.Write(BytesOf(FreshHeader()));
  file.Finish();
}

void CopyGamesLog(const std::string& from, const std::string& to) {
  const RawFile file(from, RawFile::Use::Read);
  const std::int64_t length = file.Length();
  FileReplacement copy(to);
  CopyBytes(file, 0, length, copy, {}, length);
  copy.Finish();
}

// --- Games that are gathered ---

void GatherGameRecord(const std::string& path, const GameRecord& game) {
  if (path != waiting.Path) {
    FlushGamesLog();
    waiting = {path, {}, {}};
  }
  waiting.Games.push_back(game);
  DropOldest();
  if (!Game.HyperDriveOn || !Game.RollInProgress) FlushGamesLog();
}

void FlushGamesLog() {
  if (waiting.Games.empty()) return;
  try {
    GamesLogWriter(waiting.Path)
        .Append(waiting.Games, Game.HyperDriveOn ? Durability::System : Durability::Disk);
    waiting.Games.clear();
    waiting.Failure.clear();
  } catch (...) {
    ReportError("Append Game Record");
    waiting.Failure = FailureReason(waiting.Path);
  }
}

std::string GamesWriteFailure(const std::string& path) {
  return path == waiting.Path && !waiting.Games.empty() ? waiting.Failure : std::string();
}
