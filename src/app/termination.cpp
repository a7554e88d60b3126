#include "app/termination.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <QSocketNotifier>
#include <csignal>

namespace sorvan::app {

namespace {

// A handler may only write; the event loop reads the other end.
int writeEnd = -1;

void noteSignal(int) {
  const char mark = 1;
  [[maybe_unused]] const ssize_t written = ::write(writeEnd, &mark, sizeof mark);
}

}  // namespace

Termination::Termination(QObject* parent) : QObject(parent) {
  int ends[2] = {-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) return;
  writeEnd = ends[0];
  notifier_ = std::make_unique<QSocketNotifier>(ends[1], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this, end = ends[1]] {
    char mark = 0;
    while (::read(end, &mark, sizeof mark) > 0) {
    }
    Q_EMIT requested();
  });
  struct sigaction action = {};
  action.sa_handler = noteSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(number, &action, nullptr);
}

Termination::~Termination() = default;

}  // namespace sorvan::app
