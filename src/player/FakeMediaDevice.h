#pragma once
// FakeMediaDevice: a scripted media device for tests of the player's logic. Time does not
// run by itself: a test moves the position with Advance() and reads what was sent.

#include "player/MediaDevice.h"

#include <QSet>
#include <QStringList>

class FakeMediaDevice : public MediaDevice {
    Q_OBJECT
public:
    using MediaDevice::MediaDevice;

    QSet<QString> unplayable; // paths whose open fails (besides missing files)
    bool checkFiles = true;   // a path that is not a file fails to open
    QStringList log;          // "open <path>", "play <ms>", "pause", "resume", "close"

    bool Open(const QString& path) override;
    void PlayFrom(qint32 ms) override;
    void Close() override;
    void Pause() override;
    void Resume() override;
    qint32 Position() const override { return m_open ? m_pos : 0; }
    bool IsOpen() const override { return m_open; }
    void SetVolume(int percent) override { m_volume = percent; }
    int Volume() const override { return m_volume; }

    // Moves the position on by ms while playing, not past `length` when it is set.
    void Advance(qint32 ms);
    qint32 length = -1;
    bool Playing() const { return m_open && m_playing; }
    QString OpenPath() const { return m_path; }

private:
    bool m_open = false;
    bool m_playing = false;
    qint32 m_pos = 0;
    int m_volume = 100;
    QString m_path;
};
