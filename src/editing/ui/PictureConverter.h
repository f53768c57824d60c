// Makes the copies of attached pictures beside the work.
#pragma once

#include <QByteArray>
#include <QThreadPool>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "device/Prompts.h"

namespace inspector::editing::ui {

// What takes longer than a moment has a progress window with Cancel, which stays for the pictures that
// follow; as long as one is there the other windows take no input.
class PictureConverter {
public:
  using Work = std::function<QByteArray(const std::atomic<bool>& stop)>;

  explicit PictureConverter(device::Prompts& prompts);
  ~PictureConverter();  // waits for the picture that is being read

  // For so many pictures; closes the window when it ends.
  class Run {
  public:
    Run(PictureConverter& converter, int pictures) : m_Converter(converter), m_Pictures(pictures) {}
    // The JPEG of the next one, empty when there is none; nothing once the person cancelled.
    std::optional<QByteArray> Next(const device::Text& name, Work work);

  private:
    bool IsCancelled(const device::Text& name);

    PictureConverter& m_Converter;
    int m_Pictures;
    int m_Done = 0;
    const std::chrono::steady_clock::time_point m_Begun = std::chrono::steady_clock::now();
    bool m_Cancelled = false;
    std::unique_ptr<device::ProgressWindow> m_Window;
  };

private:
  device::Prompts& m_Prompts;
  QThreadPool m_Pool;
  std::shared_ptr<std::atomic<bool>> m_Stop;  // of the work that runs
};

}  // namespace inspector::editing::ui
