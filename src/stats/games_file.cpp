#include "stats/games_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

[[noreturn]] void Fail(std::errc reason) { throw std::system_error(std::make_error_code(reason)); }

[[noreturn]] void FailByErrno() { throw std::system_error(errno, std::generic_category()); }

/// Whether there is a file; what is no file at all, such as a folder, is a failure.
bool FileExists(const fs::path& path) {
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::not_found) return false;
  if (failure) throw std::system_error(failure);
  if (fs::is_directory(status)) Fail(std::errc::is_a_directory);
  if (!fs::is_regular_file(status)) Fail(std::errc::not_supported);
  return true;
}

OpenFile Open(const fs::path& path, int how) {
  constexpr mode_t kAnyoneReads = 0666;
  OpenFile file(::open(path.c_str(), how | O_CLOEXEC, kAnyoneReads));
  if (file.Number() < 0) FailByErrno();
  return file;
}

struct stat StatusOf(const OpenFile& file) {
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) FailByErrno();
  return status;
}

std::int64_t LengthOf(const OpenFile& file) { return StatusOf(file).st_size; }

constexpr std::int64_t PositionOf(std::int64_t record) {
  return (record - 1) * static_cast<std::int64_t>(kRecordSize);
}

/// Up to `size` bytes from `position` on; the number that was there.
std::int64_t ReadBytes(const OpenFile& file, std::int64_t position, void* bytes,
                       std::int64_t size) {
  std::int64_t done = 0;
  while (done < size) {
    const ssize_t got = ::pread(file.Number(), static_cast<char*>(bytes) + done,
                                static_cast<std::size_t>(size - done), position + done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) FailByErrno();
    if (got == 0) break;
    done += got;
  }
  return done;
}

void WriteBytes(const OpenFile& file, std::int64_t position, const void* bytes, std::int64_t size) {
  for (std::int64_t done = 0; done < size;) {
    const ssize_t put = ::pwrite(file.Number(), static_cast<const char*>(bytes) + done,
                                 static_cast<std::size_t>(size - done), position + done);
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) FailByErrno();
    done += put;
  }
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
Header ReadHeader(const OpenFile& file) {
  const std::int64_t length = LengthOf(file);
  Header header{FreshHeader(), 0};
  if (length == 0) return header;
  if (ReadBytes(file, 0, &header.Bytes, kRecordSize) < static_cast<std::int64_t>(kRecordSize) ||
      header.Bytes.Text(0, kMarkWidth) != kMark)
    throw NotAGamesLog();
  const std::int64_t whole = length / static_cast<std::int64_t>(kRecordSize) - 1;
  header.Count = std::clamp<std::int64_t>(header.Bytes.Long(kCountOffset), 0, whole);
  return header;
}

/// The records `first` (from 1, the header) and on, as many as there are up to the size of `block`.
std::span<const Record> ReadRecordsAt(const OpenFile& file, std::int64_t first,
                                      std::span<Record> block) {
  const std::int64_t got = ReadBytes(file, PositionOf(first), block.data(),
                                     static_cast<std::int64_t>(block.size_bytes()));
  return block.first(static_cast<std::size_t>(got) / kRecordSize);
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

/// Whether the path still names the open file: while it was waited for, another may have taken its
/// place.
bool IsStillAt(const OpenFile& file, const fs::path& path) {
  struct stat named {};
  const struct stat opened = StatusOf(file);
  return ::stat(path.c_str(), &named) == 0 && named.st_ino == opened.st_ino &&
         named.st_dev == opened.st_dev;
}

/// Opens a log that nobody else writes, and keeps it so while it is open.
OpenFile OpenLocked(const fs::path& path) {
  if (FileExists(path) && IsReadOnly(path)) Fail(std::errc::permission_denied);
  for (;;) {
    OpenFile file = Open(path, O_RDWR | O_CREAT);
    // A disk without locks is written all the same.
    if (::flock(file.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
      Fail(std::errc::text_file_busy);
    if (IsStillAt(file, path)) return file;
  }
}

/// Copies the bytes from `from` up to `end` of an open file.
void CopyBytes(const OpenFile& file, std::int64_t from, std::int64_t end, FileReplacement& to,
               const ShowShare& show, std::int64_t all) {
  std::string block(static_cast<std::size_t>(kRecordsAtOnce) * kRecordSize, '\0');
  while (from < end) {
    const std::int64_t got = ReadBytes(
        file, from, block.data(), std::min(end - from, static_cast<std::int64_t>(block.size())));
    if (got == 0) Fail(std::errc::io_error);
    to.Write(std::string_view(block).substr(0, static_cast<std::size_t>(got)));
    from += got;
    ShowDone(show, from, all);
  }
}

/// A log that can't be read is kept under another name before anything takes its place.
void KeepDamaged(const fs::path& path) {
  fs::path kept = path;
  kept.replace_extension(".bad");
  fs::rename(path, kept);
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

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

OpenFile::~OpenFile() {
  if (number_ >= 0) ::close(number_);
}

bool IsGamesLog(const std::string& path) {
  if (!FileExists(PathOf(path))) return false;
  const OpenFile file = Open(PathOf(path), O_RDONLY);
  try {
    return LengthOf(file) > 0 && ReadHeader(file).Count >= 0;
  } catch (const NotAGamesLog&) {
    return false;
  }
}

// --- Reading ---

GamesLogReader::GamesLogReader(const std::string& path) {
  if (!FileExists(PathOf(path))) return;
  file_ = Open(PathOf(path), O_RDONLY);
  count_ = ReadHeader(file_).Count;
}

std::vector<GameRecord> GamesLogReader::Read(std::int64_t first, std::int64_t count) const {
  if (first < 1) return {};
  count = std::clamp<std::int64_t>(count, 0, std::max<std::int64_t>(count_ - first + 1, 0));
  std::vector<Record> block(static_cast<std::size_t>(count));
  std::vector<GameRecord> games;
  games.reserve(block.size());
  for (const Record& record : ReadRecordsAt(file_, first + 1, block))
    games.push_back(GameOf(record));
  return games;
}

void GamesLogReader::ReadAll(const std::function<void(std::span<const Record> games)>& take) const {
  std::vector<Record> block(static_cast<std::size_t>(std::min(kRecordsAtOnce, count_)));
  for (std::int64_t first = 1; first <= count_; first += kRecordsAtOnce) {
    const auto wanted = static_cast<std::size_t>(std::min(kRecordsAtOnce, count_ - first + 1));
    const auto games = ReadRecordsAt(file_, first + 1, std::span(block).first(wanted));
    if (games.size() < wanted) Fail(std::errc::io_error);  // cut off while it is read
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

GamesLogWriter::GamesLogWriter(const std::string& path) : file_(OpenLocked(PathOf(path))) {
  const Header header = ReadHeader(file_);
  header_ = header.Bytes;
  count_ = header.Count;
  if (LengthOf(file_) > 0) return;
  try {
    WriteHeader(0, Durability::System);
  } catch (...) {
    static_cast<void>(::ftruncate(file_.Number(), 0));
    throw;
  }
}

void GamesLogWriter::WriteRecords(std::int64_t first, std::span<const Record> records) const {
  WriteBytes(file_, PositionOf(first), records.data(),
             static_cast<std::int64_t>(records.size_bytes()));
}

void GamesLogWriter::WriteHeader(std::int64_t count, Durability durability) {
  Record header = header_;
  header.PutText(0, kMarkWidth, kMark);
  header.PutLong(kCountOffset, static_cast<std::int32_t>(count));
  const auto sync = [&] {
    if (durability == Durability::Disk && ::fdatasync(file_.Number()) != 0) FailByErrno();
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
  if (count_ + games > kMostGames) Fail(std::errc::file_too_large);
  const std::int64_t length = LengthOf(file_);
  try {
    writeRecords();
    WriteHeader(count_ + games, durability);
  } catch (...) {
    static_cast<void>(::pwrite(file_.Number(), header_.Bytes(), kRecordSize, 0));
    static_cast<void>(::ftruncate(file_.Number(), length));
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
  const OpenFile old = Open(PathOf(path), O_RDONLY);
  Record header = ReadHeader(old).Bytes;
  const std::int64_t left = log.Count() - (last - first + 1);
  header.PutLong(kCountOffset, static_cast<std::int32_t>(left));
  const std::int64_t length = LengthOf(old);
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
  const OpenFile lock = OpenLocked(PathOf(path));
  if (LengthOf(lock) > 0 && !IsGamesLog(path)) KeepDamaged(PathOf(path));
  FileReplacement file(path);
  file.Write(BytesOf(FreshHeader()));
  file.Finish();
}

void CopyGamesLog(const std::string& from, const std::string& to) {
  const OpenFile file = Open(PathOf(from), O_RDONLY);
  const std::int64_t length = LengthOf(file);
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
