#include "platform/mpv/MpvDevice.h"

#include "platform/PosixFile.h"

#include <QEventLoop>
#include <QTimer>

#include <mpv/client.h>

#include <algorithm>
#include <clocale>

namespace {
// How long an open may take before the song counts as unplayable.
constexpr int kOpenTimeoutMs = 5000;
constexpr const char* kDesktopOutputs = "pipewire,pulse,alsa,jack,null";

void SetOption(mpv_handle* h, const char* name, const char* value) {
    mpv_set_option_string(h, name, value);
}
} // namespace

MpvDevice::MpvDevice(const QString& ao, QObject* parent) : MediaDevice(parent) {
    // libmpv insists on the "C" number format of the C library.
    std::setlocale(LC_NUMERIC, "C");
    m_mpv = mpv_create();
    if (!m_mpv)
        return;
    SetOption(m_mpv, "config", "no");
    SetOption(m_mpv, "terminal", "no");
    SetOption(m_mpv, "video", "no");
    SetOption(m_mpv, "audio-display", "no");
    SetOption(m_mpv, "idle", "yes");
    // At the end of a song the device stays on its last position, so that the player's
    // end test sees the end even when a tick comes late.
    SetOption(m_mpv, "keep-open", "yes");
    SetOption(m_mpv, "input-default-bindings", "no");
    SetOption(m_mpv, "load-scripts", "no");
    SetOption(m_mpv, "ytdl", "no");
    SetOption(m_mpv, "pause", "yes");
    // The desktop's sound server or ALSA; without any of them the null output, so that
    // songs still run (silently) and the player can say once that there is no sound.
    m_silentOnly = ao == u"null";
    SetOption(m_mpv, "ao", ao.isEmpty() ? kDesktopOutputs : ao.toUtf8().constData());
    if (mpv_initialize(m_mpv) < 0) {
        mpv_terminate_destroy(m_mpv);
        m_mpv = nullptr;
        return;
    }
    mpv_observe_property(m_mpv, 1, "eof-reached", MPV_FORMAT_FLAG);
    mpv_observe_property(m_mpv, 2, "current-ao", MPV_FORMAT_STRING);
    mpv_set_wakeup_callback(m_mpv, &MpvDevice::Wakeup, this);
}

MpvDevice::~MpvDevice() {
    if (m_mpv) {
        mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
        mpv_terminate_destroy(m_mpv);
    }
}

void MpvDevice::Wakeup(void* self) {
    // Called on a thread of mpv: only hand the work over to the user-interface thread.
    auto* dev = static_cast<MpvDevice*>(self);
    QMetaObject::invokeMethod(
        dev, [dev] { dev->DrainEvents(); }, Qt::QueuedConnection);
}

void MpvDevice::DrainEvents() {
    if (!m_mpv)
        return;
    for (;;) {
        mpv_event* ev = mpv_wait_event(m_mpv, 0);
        if (!ev || ev->event_id == MPV_EVENT_NONE)
            break;
        switch (ev->event_id) {
        case MPV_EVENT_FILE_LOADED:
            if (m_openState == 0)
                m_openState = 1;
            break;
        case MPV_EVENT_END_FILE: {
            const auto* end = static_cast<mpv_event_end_file*>(ev->data);
            if (end && end->reason == MPV_END_FILE_REASON_ERROR) {
                if (m_openState == 0)
                    m_openState = -1;
                m_open = false;
            }
            break;
        }
        case MPV_EVENT_PROPERTY_CHANGE: {
            const auto* p = static_cast<mpv_event_property*>(ev->data);
            if (p && qstrcmp(p->name, "eof-reached") == 0 && p->format == MPV_FORMAT_FLAG) {
                m_atEnd = *static_cast<int*>(p->data) != 0;
                if (m_atEnd && m_open)
                    emit endReached();
            } else if (p && qstrcmp(p->name, "current-ao") == 0 && p->format == MPV_FORMAT_STRING) {
                const char* name = *static_cast<char**>(p->data);
                if (name && qstrcmp(name, "null") == 0 && !m_silentOnly) {
                    m_hasAudio = false;
                    if (!m_missingTold) {
                        m_missingTold = true;
                        emit audioOutputMissing();
                    }
                }
            }
            break;
        }
        default:
            break;
        }
    }
}

bool MpvDevice::Open(const QString& path) {
    Close();
    struct stat st {};
    if (!m_mpv || path.isEmpty() || PosixFile::Stat(path, st) != 0 || !S_ISREG(st.st_mode))
        return false;
    DrainEvents(); // what the last song left behind
    m_atEnd = false;
    SetPause(true);
    m_openState = 0;
    // mpv takes the path's bytes as they are: blanks, any script, bytes that are no UTF-8.
    const QByteArray file = PosixFile::Native(path);
    const char* cmd[] = {"loadfile", file.constData(), "replace", nullptr};
    if (mpv_command(m_mpv, cmd) < 0)
        return false;
    // Wait for the outcome with the event queue running; mpv's wake-up ends the wait.
    QEventLoop loop;
    QTimer guard;
    guard.setSingleShot(true);
    guard.start(kOpenTimeoutMs);
    while (m_openState == 0 && guard.isActive())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    if (m_openState != 1) {
        const char* stop[] = {"stop", nullptr};
        mpv_command(m_mpv, stop);
        m_openState = 0;
        return false;
    }
    m_open = true;
    return true;
}

void MpvDevice::ResetClock() {
    m_stepSecs = -1;
    m_lastMs = 0;
}

void MpvDevice::SetPause(bool on) {
    if (!m_mpv)
        return;
    m_playing = !on;
    ResetClock();
    int flag = on ? 1 : 0;
    mpv_set_property(m_mpv, "pause", MPV_FORMAT_FLAG, &flag);
}

void MpvDevice::PlayFrom(qint32 ms) {
    if (!m_mpv || !m_open)
        return;
    const QByteArray secs = QByteArray::number(double(std::max(0, ms)) / 1000.0, 'f', 3);
    const char* cmd[] = {"seek", secs.constData(), "absolute+exact", nullptr};
    mpv_command(m_mpv, cmd);
    m_atEnd = false; // mpv tells anew when the end is reached again
    SetPause(false);
}

void MpvDevice::Close() {
    if (!m_mpv)
        return;
    if (m_open) {
        const char* cmd[] = {"stop", nullptr};
        mpv_command(m_mpv, cmd);
    }
    m_open = false;
    m_playing = false;
    ResetClock();
}

void MpvDevice::Pause() {
    if (m_open)
        SetPause(true);
}

void MpvDevice::Resume() {
    if (m_open)
        SetPause(false);
}

qint32 MpvDevice::Position() const {
    if (!m_mpv || !m_open)
        return 0;
    double secs = 0;
    if (mpv_get_property(m_mpv, "time-pos", MPV_FORMAT_DOUBLE, &secs) < 0 || secs < 0)
        return 0;
    if (!m_playing || m_atEnd)
        return qint32(secs * 1000.0 + 0.5);
    if (secs != m_stepSecs) {
        if (secs < m_stepSecs)
            m_lastMs = 0; // a jump back (a seek that mpv finished only now)
        m_stepSecs = secs;
        m_sinceStep.start();
    }
    // Run on by the clock from the last step, at most one step's worth of time further
    // (a stalled output must not run away), and never back.
    constexpr qint64 kMaxRunOnMs = 150;
    const qint64 runOn = std::min(m_sinceStep.elapsed(), kMaxRunOnMs);
    const qint32 ms = qint32(secs * 1000.0 + 0.5) + qint32(runOn);
    m_lastMs = std::max(m_lastMs, ms);
    return m_lastMs;
}

void MpvDevice::SetVolume(int percent) {
    if (!m_mpv)
        return;
    double v = std::clamp(percent, 0, 100);
    mpv_set_property(m_mpv, "volume", MPV_FORMAT_DOUBLE, &v);
}

int MpvDevice::Volume() const {
    if (!m_mpv)
        return 0;
    double v = 0;
    if (mpv_get_property(m_mpv, "volume", MPV_FORMAT_DOUBLE, &v) < 0)
        return 100;
    return std::clamp(int(v + 0.5), 0, 100);
}

QString MpvDevice::StreamType() const {
    if (!m_mpv || !m_open)
        return {};
    char* fmt = mpv_get_property_string(m_mpv, "file-format");
    const QString out = fmt ? QString::fromUtf8(fmt) : QString();
    mpv_free(fmt);
    return out;
}

void UseMpvMedia() {
    SetMediaFactory([](const QString& ao) { return std::make_unique<MpvDevice>(ao); });
}
