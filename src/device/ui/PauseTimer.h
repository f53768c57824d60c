// What happens a moment after a pause: typed words are written, the place is remembered.
#pragma once

#include <QTimer>
#include <functional>

namespace inspector::device::ui {

// start() begins the moment anew. A window or box that an action opens lets timers run in the middle of the
// action; while `isBusy` says that there is one, the moment is put off. Every timer of the program that
// touches what is stored is one of these.
class PauseTimer : public QTimer {
public:
  PauseTimer(int milliseconds, std::function<bool()> isBusy, std::function<void()> act) {
    setSingleShot(true);
    setInterval(milliseconds);
    connect(this, &QTimer::timeout, this,
            [this, isBusy = std::move(isBusy), act = std::move(act)] { isBusy() ? start() : act(); });
  }
};

}  // namespace inspector::device::ui
