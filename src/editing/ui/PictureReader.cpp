#include "editing/ui/PictureReader.h"

#include <QCoreApplication>
#include <QPointer>

#include "editing/ui/PictureFile.h"

namespace inspector::editing::ui {

PictureReader::PictureReader(QObject* parent)
    : QObject(parent), m_Generation(std::make_shared<std::atomic<int>>(0)) {
  m_Pool->setMaxThreadCount(1);  // the memory of one picture at a time
}

PictureReader::~PictureReader() {
  Forget();
  // Nobody waits for a picture that nobody wants: the pool goes once it has nothing to read.
  m_Pool->setParent(qApp);
  m_Pool->start([pool = m_Pool] { pool->deleteLater(); });
}

void PictureReader::Read(const std::filesystem::path& file, const QSize& bounds, Receive receive) {
  const int wanted = *m_Generation;
  const QPointer<PictureReader> self(this);
  m_Pool->start([self, wanted, generation = m_Generation, file, bounds, receive = std::move(receive)] {
    if (wanted != *generation) return;
    const QImage picture = ReadPicture(file, bounds);
    // Looked at where the reader lives, which is where it goes.
    QMetaObject::invokeMethod(
        qApp,
        [self, wanted, generation, picture, receive] {
          if (self && wanted == *generation) receive(picture);
        },
        Qt::QueuedConnection);
  });
}

void PictureReader::Forget() {
  ++*m_Generation;
  m_Pool->clear();
}

}  // namespace inspector::editing::ui
