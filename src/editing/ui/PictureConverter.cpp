#include "editing/ui/PictureConverter.h"

#include <future>

namespace inspector::editing::ui {
namespace {

using namespace std::chrono_literals;

constexpr auto kMoment = 200ms;
constexpr auto kBetweenLooks = 20ms;  // at a press of Cancel

}  // namespace

PictureConverter::PictureConverter(device::Prompts& prompts) : m_Prompts(prompts) {
  m_Pool.setMaxThreadCount(1);  // the memory of one picture at a time
}

PictureConverter::~PictureConverter() {
  if (m_Stop) *m_Stop = true;
  m_Pool.waitForDone();
}

std::optional<QByteArray> PictureConverter::Run::Next(const device::Text& name, Work work) {
  if (m_Cancelled) return std::nullopt;
  // What the work uses outlives a cancelled run: it ends by itself, and nobody takes what it made.
  auto made = std::make_shared<std::promise<QByteArray>>();
  auto stop = std::make_shared<std::atomic<bool>>(false);
  m_Converter.m_Stop = stop;
  std::future<QByteArray> result = made->get_future();
  m_Converter.m_Pool.start([made, stop, work = std::move(work)] { made->set_value(work(*stop)); });
  if (m_Window) m_Window->SetStatus(name);
  // Sixty pictures of a tenth of a second are as long as one of six seconds.
  const auto begun = std::chrono::steady_clock::now() - m_Begun;
  auto wait = m_Window || begun >= kMoment
                  ? kBetweenLooks
                  : std::chrono::duration_cast<std::chrono::milliseconds>(kMoment - begun);
  while (result.wait_for(wait) != std::future_status::ready) {
    wait = kBetweenLooks;
    if (!IsCancelled(name)) continue;
    *stop = true;
    return std::nullopt;
  }
  ++m_Done;
  if (m_Window) m_Window->SetPosition(m_Done);
  return result.get();
}

bool PictureConverter::Run::IsCancelled(const device::Text& name) {
  if (!m_Window) {
    m_Window = m_Converter.m_Prompts.OpenProgress(u"Attaching Pictures...", true);
    if (!m_Window) return false;
    m_Window->SetRange(0, m_Pictures);
    m_Window->SetPosition(m_Done);
    m_Window->SetStatus(name);
  }
  m_Cancelled = m_Window->Cancelled();
  return m_Cancelled;
}

}  // namespace inspector::editing::ui
