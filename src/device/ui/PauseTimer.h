// What happens a moment after something was typed: it is written, the place is remembered.
#pragma once

#include <QTimer>
#include <functional>

#include "device/FaultLog.h"

namespace inspector::device::ui {

// A window or box that an action opens lets timers run in the middle of the action; while `isBusy` says that
// there is one, the moment is put off. What `act` could not do (false) is tried again. No box comes out of
// it: the person is typing. Every timer that stores what was typed is one of these.
class PauseTimer : public QTimer {
public:
  PauseTimer(int milliseconds, FaultLog& faults, std::function<bool()> isBusy, std::function<bool()> act)
      : m_Moment(milliseconds) {
    setSingleShot(true);
    connect(this, &QTimer::timeout, this, [this, &faults, isBusy = std::move(isBusy), act = std::move(act)] {
      const FaultLog::Unattended unattended(faults);
      if (isBusy())
        start(m_Moment);
      else if (!act())
        start(kTryAgainAfter);
    });
  }

  // Counted from the first call since it last acted: who types without a pause is not left waiting.
  void Begin() {
    if (!isActive()) start(m_Moment);
  }

private:
  static constexpr int kTryAgainAfter = 2000;  // milliseconds

  int m_Moment;
};

}  // namespace inspector::device::ui
