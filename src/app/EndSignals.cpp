#include "app/EndSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace inspector::app {

EndSignals::EndSignals() {
  sigset_t ends;
  sigemptyset(&ends);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&ends, signal);
  pthread_sigmask(SIG_BLOCK, &ends, &m_Before);
  m_Descriptor = signalfd(-1, &ends, SFD_NONBLOCK | SFD_CLOEXEC);
  if (m_Descriptor < 0) pthread_sigmask(SIG_SETMASK, &m_Before, nullptr);
}

EndSignals::~EndSignals() {
  if (m_Descriptor < 0) return;
  close(m_Descriptor);
  pthread_sigmask(SIG_SETMASK, &m_Before, nullptr);
}

void EndSignals::Listen() {
  if (m_Descriptor < 0) return;
  auto* notifier = new QSocketNotifier(m_Descriptor, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this] { Take(); });
}

void EndSignals::Take() {
  signalfd_siginfo signal;
  bool came = false;
  while (read(m_Descriptor, &signal, sizeof signal) == static_cast<ssize_t>(sizeof signal)) came = true;
  if (came && onEnd) onEnd();
}

}  // namespace inspector::app
