// Failures that fixed behaviour passes over still reach a person: a box once for each action, a line in the
// log each time, and a count that makes the command line end with 1.
#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "device/Calendar.h"
#include "device/Prompts.h"
#include "device/Text.h"

namespace inspector::device {

class FaultLog {
public:
  // Appends to `file` (made with its folder when the first fault comes). A log that cannot be written is
  // passed over: the box still shows.
  FaultLog(Prompts& prompts, Clock& clock, std::filesystem::path file);

  // May be called from any thread. `text` says what failed, on which file, and what to do. The same text is
  // logged each time and shown once until the next action; from a worker thread it is shown by the next
  // ShowPending.
  void Report(const Text& text);
  // A person begins something new: what goes wrong with it is told even if the same went wrong before.
  void BeginAction();
  // What was reported last; empty when nothing was.
  Text Latest() const;
  // To be called on the thread that owns the prompts, which is the one that made this object. Shows nothing
  // during a Silence or while nobody attends.
  void ShowPending();
  // What waits is shown in another way.
  void DropPending();

  int Count() const;

  // While one lives, boxes wait: nobody may be left reading while a database is locked.
  class Silence {
  public:
    explicit Silence(FaultLog& log) : m_Log(log) { ++m_Log.m_Silences; }
    ~Silence() {
      if (--m_Log.m_Silences == 0 && std::this_thread::get_id() == m_Log.m_Owner) m_Log.ShowPending();
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

  private:
    FaultLog& m_Log;
  };

  // While one lives on the thread of the prompts, no box comes: a timer works, and a box would take the keys
  // of a person who is typing. What failed is to be shown in another way, from Latest.
  class Unattended {
  public:
    // Hurried: a person is typing meanwhile, so that nothing may wait for long.
    explicit Unattended(FaultLog& log, bool isHurried = true) : m_Log(log), m_IsHurried(isHurried) {
      ++m_Log.m_Unattended;
      m_Log.m_Hurried += m_IsHurried;
    }
    ~Unattended() {
      --m_Log.m_Unattended;
      m_Log.m_Hurried -= m_IsHurried;
    }
    Unattended(const Unattended&) = delete;
    Unattended& operator=(const Unattended&) = delete;

  private:
    FaultLog& m_Log;
    const int m_IsHurried;
  };
  bool IsHurried() const { return m_Hurried > 0 && std::this_thread::get_id() == m_Owner; }
  bool IsUnattended() const { return m_Unattended > 0 && std::this_thread::get_id() == m_Owner; }

private:
  void Append(const Text& text);

  Prompts& m_Prompts;
  Clock& m_Clock;
  std::filesystem::path m_File;
  std::thread::id m_Owner;
  mutable std::mutex m_Mutex;
  std::set<Text> m_Seen;  // in this action
  Text m_Latest;
  std::vector<Text> m_Pending;
  int m_Count = 0;
  std::atomic<int> m_Unattended = 0;
  std::atomic<int> m_Hurried = 0;
  std::atomic<int> m_Silences = 0;  // of all threads: a worker's transaction locks the same database
};

// What stands beside typed text for as long as it cannot be stored: with the latest fault.
Text NotStored(const FaultLog& faults);

}  // namespace inspector::device
