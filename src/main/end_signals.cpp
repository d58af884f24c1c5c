#include "main/end_signals.h"

#if __has_include(<sys/socket.h>)
#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>
#include <utility>

namespace {

/// A handler may do next to nothing: it writes a byte here, and the event loop reads it there.
int Sockets[2] = {-1, -1};

void NoteSignal(int) {
  const char byte = 1;
  static_cast<void>(!write(Sockets[0], &byte, sizeof(byte)));
}

}  // namespace

EndSignals::EndSignals(std::function<void()> end) {
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, Sockets) != 0) return;
  auto* notifier = new QSocketNotifier(Sockets[1], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [end = std::move(end)] {
    char bytes[16];
    static_cast<void>(!read(Sockets[1], bytes, sizeof(bytes)));
    end();
  });
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) sigaction(signal, &action, nullptr);
}
#else
EndSignals::EndSignals(std::function<void()>) {}
#endif
