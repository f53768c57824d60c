#include "editing/ui/PictureReader.h"

#include "editing/ui/PictureFile.h"

namespace inspector::editing::ui {

PictureReader::PictureReader(QObject* parent) : QObject(parent) {
  m_Pool.setMaxThreadCount(1);  // the memory of one picture at a time
}

PictureReader::~PictureReader() {
  Forget();
  m_Pool.waitForDone();
}

void PictureReader::Read(const std::filesystem::path& file, const QSize& bounds, Receive receive) {
  m_Pool.start([this, generation = m_Generation.load(), file, bounds, receive = std::move(receive)] {
    if (generation != m_Generation) return;
    const QImage picture = ReadPicture(file, bounds);
    QMetaObject::invokeMethod(
        this,
        [this, generation, picture, receive] {
          if (generation == m_Generation) receive(picture);
        },
        Qt::QueuedConnection);
  });
}

void PictureReader::Forget() {
  ++m_Generation;
  m_Pool.clear();
}

}  // namespace inspector::editing::ui
