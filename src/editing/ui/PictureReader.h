// Reads pictures on a thread of its own, one after the other, so that typing and moving on never wait for
// one.
#pragma once

#include <QImage>
#include <QObject>
#include <QThreadPool>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>

namespace inspector::editing::ui {

class PictureReader : public QObject {
public:
  using Receive = std::function<void(const QImage& picture)>;

  explicit PictureReader(QObject* parent);
  ~PictureReader() override;

  // `receive` is called on the thread of the screens, where this object lives; with a null image for what
  // cannot be read.
  void Read(const std::filesystem::path& file, const QSize& bounds, Receive receive);
  // What was asked for is not wanted any more: nothing of it is received.
  void Forget();

private:
  QThreadPool* m_Pool = new QThreadPool(this);
  std::shared_ptr<std::atomic<int>> m_Generation;  // outlives the reader with the work that looks at it
};

}  // namespace inspector::editing::ui
