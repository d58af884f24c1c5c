// The signals by which a system tells a program to end, as calls from the event loop.
#pragma once

#include <QObject>
#include <functional>

/// While it lives, SIGTERM, SIGHUP and SIGINT call `end` instead of ending the program at once.
/// Where there are no such signals nothing happens.
class EndSignals : public QObject {
 public:
  explicit EndSignals(std::function<void()> end);
};
