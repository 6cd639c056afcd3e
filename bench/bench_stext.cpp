// The time-stamped text: reading and writing an LRC file of 20,000 lines against a plain
// read-and-split and a plain write of the same bytes; and the lag of the editor's
// following against the song's position on libmpv with the null audio output (the row
// moves on a 100 ms timer, as in the editor), idle and with both cores kept busy.
//   bench_stext [lines, default 20000]

#include "../tests/support/WavUtil.h"
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/TextCodec.h"
#include "platform/SafeFile.h"
#include "platform/mpv/MpvDevice.h"
#include "text/modSText.h"
#include "text/modSTextSync.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

double Ms(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

// Best of n runs, in ms.
template <typename F> double Best(int n, F f) {
    double best = 1e18;
    for (int i = 0; i < n; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        best = std::min(best, Ms(t));
    }
    return best;
}

struct Lag {
    std::vector<double> ms;
    double Max() const { return ms.empty() ? 0 : *std::max_element(ms.begin(), ms.end()); }
    double Mean() const {
        double s = 0;
        for (double v : ms)
            s += v;
        return ms.empty() ? 0 : s / double(ms.size());
    }
};

// Plays the song and lets the rows follow stamps every 250 ms for `seconds`; the lag of a
// row is the song's position when the row moved, less its stamp.
Lag Follow(MpvDevice& dev, const QString& song, int seconds) {
    DataGrid g;
    DefineSTextColumns(g);
    QString text;
    for (int ms = 250; ms < seconds * 1000; ms += 250)
        text += QLatin1Char('[') + FormatSTextTime(ms) + QStringLiteral("]row\r\n");
    ReadSTextText(g, text, QString(), 0);
    g.AddRow(QStringList(SText::Cols, QString()));
    Lag lag;
    qint32 next = 0;
    if (!dev.Open(song) || !ArmSync(g, next))
        return lag;
    QEventLoop loop;
    QTimer tick;
    tick.setInterval(100);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        const qint32 pos = dev.Position();
        const qint32 stamp = next;
        const SyncStep s = SyncTick(g, pos, next);
        if (s.moved)
            lag.ms.push_back(double(pos - stamp));
        if (s.ended)
            loop.quit();
    });
    dev.PlayFrom(0);
    tick.start();
    QTimer::singleShot(seconds * 1000 + 2000, &loop, &QEventLoop::quit);
    loop.exec();
    dev.Close();
    return lag;
}

// A click stamps the position it reads. The lag of a stamp is the song's time by the wall
// clock (from the first position the device reported) less the stamp: how far the device's
// position trails the music when the user clicks.
Lag Clicks(MpvDevice& dev, const QString& song, int count) {
    DataGrid g;
    DefineSTextColumns(g);
    ClearSTextList(g);
    Lag lag;
    if (!dev.Open(song))
        return lag;
    dev.PlayFrom(0);
    QElapsedTimer wall;
    wall.start();
    qint32 p0 = 0;
    qint64 w0 = -1;
    QEventLoop loop;
    QTimer click;
    click.setInterval(137);
    int row = 1;
    QObject::connect(&click, &QTimer::timeout, [&] {
        const qint32 pos = dev.Position();
        if (w0 < 0) {
            if (pos > 0) {
                p0 = pos;
                w0 = wall.elapsed();
            }
            return;
        }
        StampAt(g, row, ClickStampTime(pos, QString(), QString()));
        lag.ms.push_back(double(p0 + (wall.elapsed() - w0) - RowTime(g, row)));
        if (++row > count)
            loop.quit();
    });
    click.start();
    loop.exec();
    dev.Close();
    return lag;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int lines = argc > 1 ? std::max(1, atoi(argv[1])) : 20000;
    QTemporaryDir dir;
    QByteArray bytes;
    for (int i = 0; i < lines; ++i)
        bytes += '[' + FormatSTextTime(i * 150).toUtf8() + "]Zeile " + QByteArray::number(i) +
                 " mit etwas Text\r\n";
    const QString path = dir.filePath(QStringLiteral("big.lrc"));
    SafeFile::WriteWholeFile(path, bytes);

    DataGrid g;
    DefineSTextColumns(g);
    const double plainRead = Best(5, [&] {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        const QStringList l = DecodeTextFile(f.readAll()).split(QStringLiteral("\r\n"));
        (void)l;
    });
    const double read = Best(5, [&] { ReadSTextFile(g, path, 30); });
    const QString out = dir.filePath(QStringLiteral("out.lrc"));
    const double plainWrite = Best(5, [&] { SafeFile::WriteWholeFile(out, bytes); });
    const double write = Best(5, [&] { WriteSTextFile(g, out, true, nullptr); });
    std::printf("LRC of %d lines (%.1f MB), best of 5:\n", lines, double(bytes.size()) / 1e6);
    std::printf("  read:  plain read+split %7.1f ms   ReadSTextFile  %7.1f ms   %.2fx\n", plainRead, read,
                read / plainRead);
    std::printf("  write: plain safe write %7.1f ms   WriteSTextFile %7.1f ms   %.2fx\n", plainWrite, write,
                write / plainWrite);

    MpvDevice dev(QStringLiteral("null"));
    if (!dev.IsValid()) {
        std::printf("libmpv could not be started: no lag figures\n");
        return 0;
    }
    // The song: a WAV of 8 bit at 48 kHz; its position moves in steps of its 4 KB packets
    // (about 85 ms), which the lag below includes.
    const QString song = dir.filePath(QStringLiteral("song.wav"));
    WriteWav(song, 12, 48000);
    const Lag clicks = Clicks(dev, song, 40);
    std::printf(
        "stamp by click (40 clicks): stamp behind the music (wall clock) by mean %.1f ms, max %.1f ms\n",
        clicks.Mean(), clicks.Max());
    const Lag idle = Follow(dev, song, 10);
    std::printf("following, idle machine (%zu rows): lag mean %.1f ms, max %.1f ms (one tick = 100 ms)\n",
                idle.ms.size(), idle.Mean(), idle.Max());
    if (qEnvironmentVariableIsSet("QLT_BENCH_DETAIL"))
        for (double v : idle.ms)
            std::printf("  %.0f", v);
    std::atomic<bool> busy{true};
    std::vector<std::thread> burners;
    for (unsigned i = 0; i < std::max(2u, std::thread::hardware_concurrency()); ++i)
        burners.emplace_back([&busy] {
            volatile double x = 0;
            while (busy.load(std::memory_order_relaxed))
                x = x + 1.0;
        });
    const Lag loaded = Follow(dev, song, 10);
    busy = false;
    for (std::thread& t : burners)
        t.join();
    std::printf("following, all cores busy (%zu rows): lag mean %.1f ms, max %.1f ms\n", loaded.ms.size(),
                loaded.Mean(), loaded.Max());
    return 0;
}
