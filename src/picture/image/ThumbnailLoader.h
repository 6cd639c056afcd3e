#pragma once
// Thumbnails of many pictures without blocking the user interface: one worker thread
// decodes the pictures reduced (the decoder itself scales, see LoadPictureScaled) and
// hands each result to the thread that owns the loader, which shows it. Only the small
// pictures are kept; a new start or a cancel drops what is still waiting.

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <atomic>
#include <thread>
#include <vector>

class ThumbnailLoader : public QObject {
    Q_OBJECT
public:
    explicit ThumbnailLoader(QObject* parent = nullptr);
    ~ThumbnailLoader() override;

    // Starts on `paths` (item i is reported as i), fitting each into `box`. A job still
    // running is cancelled first.
    void Start(const QStringList& paths, const QSize& box);
    void Cancel();
    bool Busy() const { return m_running.load(); }

signals:
    // A thumbnail (null with the failure text when the picture can't be shown).
    void thumbnailReady(int index, const QImage& image, const QString& error);
    void finished();

private:
    void Deliver(unsigned generation, int index, const QImage& image, const QString& error);
    void Done(unsigned generation);

    std::thread m_worker;
    std::atomic<bool> m_cancel{false};
    std::atomic<bool> m_running{false};
    std::atomic<unsigned> m_generation{0};
};
