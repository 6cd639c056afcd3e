// The media device on libmpv with the null audio output: for every fixture type the time
// from open to the open's answer and from Play to the first position change, and the CPU
// this process uses while a song plays (mpv's own threads included, so the figure is an
// upper bound of what the player adds).
//   bench_player [seconds of playing for the CPU figure, default 3]

#include "bench_clock.h"
#include "platform/mpv/MpvDevice.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

namespace {
// Runs the event loop for ms without spinning.
void Pump(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int playSecs = argc > 1 ? std::max(1, atoi(argv[1])) : 3;
    const QString fixtures = bench::FixtureDir();
    MpvDevice dev(QStringLiteral("null"));
    if (!dev.IsValid()) {
        std::printf("libmpv could not be started\n");
        return 1;
    }
    std::printf("%-16s %10s %16s\n", "file", "open ms", "play->pos ms");
    double worst = 0;
    for (const char* f : {"tone.mp3", "tone.flac", "tone.ogg", "tone-opus.oga", "tone.wav", "tone.aac",
                          "tone.m4a", "tone.wma", "tone.ape", "tone.mpc"}) {
        const QString path = fixtures + QLatin1Char('/') + QString::fromLatin1(f);
        QElapsedTimer t;
        t.start();
        const bool ok = dev.Open(path);
        const double openMs = double(t.nsecsElapsed()) / 1e6;
        if (!ok) {
            std::printf("%-16s %10.1f %16s\n", f, openMs, "not playable");
            continue;
        }
        t.restart();
        dev.PlayFrom(0);
        double firstMs = -1;
        while (t.elapsed() < 2000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            if (dev.Position() > 0) {
                firstMs = double(t.nsecsElapsed()) / 1e6;
                break;
            }
        }
        worst = std::max(worst, firstMs);
        std::printf("%-16s %10.1f %16.1f%s\n", f, openMs, firstMs,
                    dev.IsOpen() && !dev.AtEnd() ? "" : "  (ended at once)");
        dev.Close();
    }
    std::printf("worst play->first position change: %.1f ms (goal under 150 ms)\n", worst);

    // CPU while playing a longer song.
    QTemporaryDir dir;
    const QString song = dir.filePath(QStringLiteral("long.wav"));
    {
        QFile out(song);
        if (!out.open(QIODevice::WriteOnly))
            return 1;
        const quint32 samples = quint32(8000 * (playSecs + 2));
        QByteArray h("RIFF");
        auto le32 = [&h](quint32 v) { h.append(reinterpret_cast<const char*>(&v), 4); };
        auto le16 = [&h](quint16 v) { h.append(reinterpret_cast<const char*>(&v), 2); };
        le32(36 + samples);
        h.append("WAVEfmt ");
        le32(16);
        le16(1);
        le16(1);
        le32(8000);
        le32(8000);
        le16(1);
        le16(8);
        h.append("data");
        le32(samples);
        out.write(h);
        out.write(QByteArray(int(samples), char(128)));
    }
    if (!dev.Open(song))
        return 1;
    dev.PlayFrom(0);
    const double cpu0 = bench::Cpu();
    QElapsedTimer wall;
    wall.start();
    Pump(playSecs * 1000);
    const double cpu = bench::Cpu() - cpu0;
    std::printf("CPU while playing %d s: %.1f%% of one core (process, mpv included)\n", playSecs,
                100.0 * cpu / (double(wall.elapsed()) / 1000.0));
    dev.Close();
    return 0;
}
