// ui_bench_scrolltext [SECONDS] [SPEED]: the scrolling text window over a 4-minute song
// with a line about every 3.5 s, on a device whose position runs with the wall clock (times
// SPEED). Prints the CPU the process used per second of running (getrusage), against a
// plain baseline of the same event loop with an idle 50 ms timer, and the lag of the
// current row behind the song: how long after its stamp each row became current.
#include "../tests/support/WavUtil.h"
#include "app/FrmSongtext.h"
#include "app/ScrollTextView.h"
#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "core/Settings.h"
#include "player/MediaDevice.h"
#include "text/modSText.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

namespace {
// A device whose position is the wall clock since PlayFrom, times a speed.
class ClockDevice : public MediaDevice {
public:
    double speed = 1.0;
    bool Open(const QString&) override { return m_open = true; }
    void PlayFrom(qint32 ms) override {
        m_from = ms;
        m_clock.start();
    }
    void Close() override { m_open = false; }
    void Pause() override {}
    void Resume() override {}
    qint32 Position() const override { return m_open ? m_from + qint32(m_clock.elapsed() * speed) : 0; }
    bool IsOpen() const override { return m_open; }
    void SetVolume(int) override {}
    int Volume() const override { return 100; }

private:
    bool m_open = false;
    qint32 m_from = 0;
    QElapsedTimer m_clock;
};

double CpuSeconds() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return double(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
           double(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

void RunFor(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}
} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(2, atoi(argv[1])) : 30;
    const double speed = argc > 2 ? std::max(0.1, atof(argv[2])) : 1.0;
    QTemporaryDir dir;
    SetAppPath(dir.path());
    EnsureSettingsShape();
    const QString song = dir.filePath(QStringLiteral("song.wav"));
    WriteWav(song, 240);
    QString lrc;
    for (int ms = 1013; ms < 236000; ms += 3517)
        lrc += QStringLiteral("[%1]Line at %2 seconds of the song, a little longer\r\n")
                   .arg(FormatSTextTime(ms))
                   .arg(ms / 1000);
    DataGrid stext;
    DefineSTextColumns(stext);
    ReadSTextText(stext, lrc, QString(), 0);
    ClockDevice device;
    device.speed = speed;
    SetMedia(&device);

    // baseline: the event loop with an idle timer of the same interval
    {
        QTimer idle;
        idle.start(50);
        QObject::connect(&idle, &QTimer::timeout, [] {});
        const double c0 = CpuSeconds();
        QElapsedTimer wall;
        wall.start();
        RunFor(seconds * 1000);
        std::printf("baseline (idle 50 ms timer): %.2f %% of one core over %.1f s\n",
                    100.0 * (CpuSeconds() - c0) / (wall.elapsed() / 1000.0), wall.elapsed() / 1000.0);
    }

    FrmSongtext w;
    QList<qint32> lags;
    QObject::connect(&w.List(), &DataGrid::currentRowChanged, [&](int row) {
        if (row < 1)
            return;
        const QString t = w.List().CellText(row, Scroll::ColTime);
        if (!t.isEmpty() && w.TimerSongtext_SyncTimer.isActive())
            lags << qint32((device.Position() - t.toInt()) / speed);
    });
    const double c0 = CpuSeconds();
    QElapsedTimer wall;
    wall.start();
    if (!w.StartFromEditor(song, stext, nullptr)) {
        std::fprintf(stderr, "the window did not start\n");
        return 1;
    }
    RunFor(seconds * 1000);
    const double cpu = CpuSeconds() - c0;
    const double secs = wall.elapsed() / 1000.0;
    std::printf("scrolling window (speed %.1fx): %.2f %% of one core over %.1f s, %lld rows stepped\n", speed,
                100.0 * cpu / secs, secs, static_cast<long long>(lags.size()));
    if (!lags.isEmpty()) {
        std::sort(lags.begin(), lags.end());
        std::printf("lag of the current row behind its stamp (wall ms): median %d, 95 %% %d, max %d\n",
                    lags[lags.size() / 2], lags[int(lags.size() * 95 / 100)], lags.back());
    }
    w.close();
    SetMedia(nullptr);
    return 0;
}
