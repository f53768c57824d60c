// The system's wish that the program ends: SIGTERM, SIGINT (Ctrl+C where it was started), SIGHUP.
#pragma once

#include <QObject>
#include <csignal>
#include <functional>

namespace inspector::app {

// While this lives the signals end nothing by themselves; they come as a call, between events. To be made
// before any other thread, Qt's included, because a thread that does not hold them back would take them.
class EndSignals : public QObject {
public:
  EndSignals();
  ~EndSignals() override;

  // Once there is an application. Called for each signal; at first nothing is.
  void Listen();
  std::function<void()> onEnd;

private:
  void Take();

  sigset_t m_Before;
  int m_Descriptor;  // -1 when the system gives none; then the signals end the program as ever
};

}  // namespace inspector::app
