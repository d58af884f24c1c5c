#include "batch/jobs.h"

#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

#include "batch/failure.h"

namespace {

constexpr double kBlockSeconds = 0.02;  // of one process
constexpr std::int64_t kMostPerBlock = 4096;
constexpr std::size_t kBlocksAhead = 2;     // given to a process at a time
constexpr std::size_t kBlocksKept = 16;     // a process, waiting for an earlier one
constexpr int kLookUpEvery = 200;           // milliseconds
constexpr std::size_t kAtOnce = 64 * 1024;  // bytes

/// What stands before the records and texts of a block on its way.
struct BlockHead {
  std::int64_t First = 0;
  std::int64_t Count = 0;
  std::int64_t Games = 0;
  std::int64_t DetailsSize = 0;
  std::int64_t Faults = 0;
  std::int64_t FaultSize = 0;
  double Seconds = 0;  // that the process played

  std::size_t Size() const {
    return sizeof(BlockHead) + static_cast<std::size_t>(Games) * sizeof(GameRecord) +
           static_cast<std::size_t>(DetailsSize + FaultSize);
  }
};

struct Stretch {
  std::int64_t First = 0;
  std::int64_t Count = 0;
};

double Now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

bool SendAll(int socket, const void* bytes, std::size_t size) {
  const char* at = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t sent = ::send(socket, at, size, MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    at += sent;
    size -= static_cast<std::size_t>(sent);
  }
  return true;
}

bool ReceiveAll(int socket, void* bytes, std::size_t size) {
  char* at = static_cast<char*>(bytes);
  while (size > 0) {
    const ssize_t got = ::recv(socket, at, size, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    at += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

std::string Packed(const GameBlock& block, double seconds) {
  const BlockHead head = {block.First,
                          block.Count,
                          std::ssize(block.Games),
                          std::ssize(block.Details),
                          block.Faults,
                          std::ssize(block.FirstFault),
                          seconds};
  std::string bytes;
  bytes.reserve(head.Size());
  bytes.append(reinterpret_cast<const char*>(&head), sizeof(head));
  bytes.append(reinterpret_cast<const char*>(block.Games.data()),
               block.Games.size() * sizeof(GameRecord));
  return bytes + block.Details + block.FirstFault;
}

GameBlock Unpacked(const BlockHead& head, const char* bytes) {
  GameBlock block = {head.First, head.Count, {}, {}, head.Faults, {}};
  block.Games.resize(static_cast<std::size_t>(head.Games));
  const std::size_t recordBytes = block.Games.size() * sizeof(GameRecord);
  if (recordBytes > 0) std::memcpy(block.Games.data(), bytes, recordBytes);
  block.Details.assign(bytes + recordBytes, static_cast<std::size_t>(head.DetailsSize));
  block.FirstFault.assign(bytes + recordBytes + block.Details.size(),
                          static_cast<std::size_t>(head.FaultSize));
  return block;
}

/// A worker's life: it ends when nobody talks to it any more.
[[noreturn]] void Work(int socket, const Workers::PlayBlock& play) {
  Stretch stretch;
  while (ReceiveAll(socket, &stretch, sizeof(stretch))) {
    const double start = Now();
    const GameBlock block = play(stretch.First, stretch.Count);
    const std::string bytes = Packed(block, Now() - start);
    if (!SendAll(socket, bytes.data(), bytes.size())) break;
  }
  ::_exit(0);
}

std::string HowItDied(pid_t process) {
  int status = 0;
  if (::waitpid(process, &status, 0) == process && WIFSIGNALED(status))
    return "by signal " + std::to_string(WTERMSIG(status));
  return "by itself";
}

}  // namespace

int AvailableCores() {
  cpu_set_t cores;
  if (::sched_getaffinity(0, sizeof(cores), &cores) == 0) return CPU_COUNT(&cores);
  return static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
}

Workers::Workers(int jobs, const PlayBlock& play) {
  for (int job = 0; job < jobs; ++job) Start(play);
}

Workers::~Workers() {
  for (const Worker& worker : workers_) {
    ::close(worker.Socket);
    if (worker.Process == 0) continue;
    ::kill(worker.Process, SIGKILL);  // it may be in the middle of a game that takes long
    ::waitpid(worker.Process, nullptr, 0);
  }
}

void Workers::Start(const PlayBlock& play) {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
    throw std::system_error(errno, std::generic_category());
  const pid_t process = ::fork();
  if (process < 0) {
    const int failure = errno;
    ::close(ends[0]);
    ::close(ends[1]);
    throw std::system_error(failure, std::generic_category());
  }
  if (process == 0) {
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
    // An end kept here would hide from an earlier one that this program is gone.
    for (const Worker& earlier : workers_) ::close(earlier.Socket);
    ::close(ends[0]);
    Work(ends[1], play);
  }
  ::close(ends[1]);
  workers_.push_back({process, ends[0], {}, {}});
}

/// Gives stretches to all that have room for one, as long as not too much waits for an early one.
void Workers::DealOut(std::int64_t end) {
  for (std::size_t ahead = 1; ahead <= kBlocksAhead; ++ahead) {
    for (Worker& worker : workers_) {
      if (next_ >= end || done_.size() > kBlocksKept * workers_.size()) return;
      if (worker.Started.size() >= ahead) continue;
      // Towards the end the rest is shared out evenly.
      const std::int64_t share = (end - next_) / std::ssize(workers_) + 1;
      const Stretch stretch = {next_, std::min({perBlock_, share, end - next_})};
      worker.Started.push_back(stretch.First);
      next_ += stretch.Count;
      // A worker that has died is found out when its block is waited for.
      SendAll(worker.Socket, &stretch, sizeof(stretch));
    }
  }
}

/// Takes what has come in; false when the other end is gone.
bool Workers::ReceiveFrom(Worker& worker) {
  std::array<char, kAtOnce> bytes;
  for (;;) {
    const ssize_t got = ::recv(worker.Socket, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno == EAGAIN || errno == EWOULDBLOCK;
    if (got == 0) return false;
    worker.Received.append(bytes.data(), static_cast<std::size_t>(got));
    TakeReceived(worker);
  }
}

void Workers::TakeReceived(Worker& worker) {
  BlockHead head;
  while (worker.Received.size() >= sizeof(head)) {
    std::memcpy(&head, worker.Received.data(), sizeof(head));
    if (worker.Received.size() < head.Size()) return;
    done_[head.First] = Unpacked(head, worker.Received.data() + sizeof(head));
    worker.Received.erase(0, head.Size());
    worker.Started.pop_front();
    // By steps, as the first games of a process are no measure.
    const double games =
        static_cast<double>(head.Count) * kBlockSeconds / std::max(head.Seconds, 1e-6);
    const std::int64_t most = std::min(kMostPerBlock, 2 * perBlock_);
    perBlock_ = std::clamp(static_cast<std::int64_t>(games), std::int64_t{1}, most);
  }
}

/// Waits for a while; false when time has passed without anything coming in.
bool Workers::WaitForBlocks() {
  std::vector<pollfd> ends;
  for (const Worker& worker : workers_) ends.push_back({worker.Socket, POLLIN, 0});
  if (::poll(ends.data(), ends.size(), kLookUpEvery) <= 0) return false;
  for (std::size_t i = 0; i < ends.size(); ++i) {
    Worker& worker = workers_[i];
    if (ends[i].revents == 0 || ReceiveFrom(worker)) continue;
    const std::int64_t first = worker.Started.empty() ? next_ : worker.Started.front();
    throw BatchFailure("the process that played game " + std::to_string(first) + " was ended " +
                       HowItDied(std::exchange(worker.Process, 0)) +
                       "; what is finished is kept, --resume goes on with it");
  }
  return true;
}

void Workers::Play(std::int64_t first, std::int64_t end, const TakeBlock& take,
                   const LookUp& lookUp) {
  next_ = first;
  double lookedUp = Now();
  while (first < end) {
    DealOut(end);
    WaitForBlocks();
    for (auto block = done_.begin(); block != done_.end() && block->first == first;
         block = done_.erase(block)) {
      first = block->second.End();
      if (!take(block->second)) return;
    }
    if (Now() - lookedUp < kLookUpEvery / 1000.0) continue;
    lookedUp = Now();
    if (!lookUp()) return;
  }
}
