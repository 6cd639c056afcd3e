#include "picture/image/ThumbnailLoader.h"

#include "picture/image/ftcPictureFile.h"

#include <QMetaObject>

ThumbnailLoader::ThumbnailLoader(QObject* parent) : QObject(parent) {}

ThumbnailLoader::~ThumbnailLoader() {
    Cancel();
}

void ThumbnailLoader::Cancel() {
    m_cancel = true;
    ++m_generation; // results already on their way are dropped
    if (m_worker.joinable())
        m_worker.join();
    m_running = false;
}

void ThumbnailLoader::Start(const QStringList& paths, const QSize& box) {
    Cancel();
    m_cancel = false;
    m_running = true;
    const unsigned generation = m_generation.load();
    m_worker = std::thread([this, paths, box, generation] {
        for (int i = 0; i < paths.size() && !m_cancel.load(); ++i) {
            LoadedPicture p = LoadPictureScaled(paths[i], box);
            QImage image = std::move(p.image);
            const QString error = p.error;
            QMetaObject::invokeMethod(
                this, [this, generation, i, image, error] { Deliver(generation, i, image, error); },
                Qt::QueuedConnection);
        }
        QMetaObject::invokeMethod(
            this, [this, generation] { Done(generation); }, Qt::QueuedConnection);
    });
}

void ThumbnailLoader::Deliver(unsigned generation, int index, const QImage& image, const QString& error) {
    if (generation == m_generation.load())
        emit thumbnailReady(index, image, error);
}

void ThumbnailLoader::Done(unsigned generation) {
    if (generation != m_generation.load())
        return;
    if (m_worker.joinable())
        m_worker.join();
    m_running = false;
    emit finished();
}
