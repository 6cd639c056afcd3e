#include "player/FakeMediaDevice.h"

#include <QFileInfo>

bool FakeMediaDevice::Open(const QString& path) {
    Close();
    log << QStringLiteral("open ") + path;
    if (unplayable.contains(path) || (checkFiles && !QFileInfo(path).isFile()))
        return false;
    m_open = true;
    m_playing = false;
    m_pos = 0;
    m_path = path;
    return true;
}

void FakeMediaDevice::PlayFrom(qint32 ms) {
    log << QStringLiteral("play %1").arg(ms);
    if (!m_open)
        return;
    m_pos = length >= 0 ? std::min(ms, length) : ms;
    m_playing = true;
}

void FakeMediaDevice::Close() {
    if (m_open)
        log << QStringLiteral("close");
    m_open = false;
    m_playing = false;
    m_pos = 0;
    m_path.clear();
}

void FakeMediaDevice::Pause() {
    log << QStringLiteral("pause");
    m_playing = false;
}

void FakeMediaDevice::Resume() {
    log << QStringLiteral("resume");
    if (m_open)
        m_playing = true;
}

void FakeMediaDevice::Advance(qint32 ms) {
    if (!Playing())
        return;
    m_pos += ms;
    if (length >= 0)
        m_pos = std::min(m_pos, length);
}
