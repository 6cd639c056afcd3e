#pragma once
// MpvDevice: the media device on libmpv. mpv runs its own core; its events reach the
// user-interface thread through mpv's wake-up callback, which only queues a call into
// the Qt event loop.

#include "player/MediaDevice.h"

#include <QElapsedTimer>

struct mpv_handle;

class MpvDevice : public MediaDevice {
    Q_OBJECT
public:
    // ao: mpv's audio outputs, a list tried in order ("null" for tests); empty for the
    // desktop's. When only "null" of a longer list works, audioOutputMissing() comes once.
    explicit MpvDevice(const QString& ao = QString(), QObject* parent = nullptr);
    ~MpvDevice() override;

    bool Open(const QString& path) override;
    void PlayFrom(qint32 ms) override;
    void Close() override;
    void Pause() override;
    void Resume() override;
    qint32 Position() const override;
    bool IsOpen() const override { return m_open; }
    bool AtEnd() const override { return m_open && m_atEnd; }
    void SetVolume(int percent) override;
    int Volume() const override;
    bool HasAudioOutput() const override { return m_hasAudio; }
    QString StreamType() const override;

    bool IsValid() const { return m_mpv != nullptr; }

private:
    static void Wakeup(void* self);
    void DrainEvents();
    void SetPause(bool on);

    mpv_handle* m_mpv = nullptr;
    bool m_open = false;
    bool m_atEnd = false;
    bool m_hasAudio = true;
    bool m_missingTold = false;
    bool m_silentOnly = false; // "null" was asked for: no sound is no news
    // Outcome of the open in progress: 0 waiting, 1 loaded, -1 failed.
    int m_openState = 0;
    // mpv moves its position in steps of the audio packets it hands out (85 ms for some
    // files); between two steps the position runs on by the clock, so that a row that
    // follows the song moves when the music gets there, not at the next step.
    bool m_playing = false;
    mutable double m_stepSecs = -1; // the position mpv reported last
    mutable QElapsedTimer m_sinceStep;
    mutable qint32 m_lastMs = 0; // never go back while playing without a seek
    void ResetClock();
};

// Makes the libmpv device the program's shared media device (see SetMediaFactory).
void UseMpvMedia();
