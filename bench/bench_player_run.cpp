// A run of the player over ROWS songs of 0.6 s with AutoPlay on libmpv's null output: the
// longest pause of the event loop (a 5 ms timer watches it) and the CPU of the run.
//   bench_player_run [ROWS, default 30]

#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modListColumns.h"
#include "platform/mpv/MpvDevice.h"
#include "player/MediaDevice.h"
#include "player/modPlayer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>
#include <cstdio>

namespace {
bool WriteWav(const QString& path, int ms) {
    const quint32 samples = quint32(8 * ms);
    QByteArray h("RIFF");
    auto le32 = [&h](quint32 v) {
        char b[4];
        qToLittleEndian(v, b);
        h.append(b, 4);
    };
    auto le16 = [&h](quint16 v) {
        char b[2];
        qToLittleEndian(v, b);
        h.append(b, 2);
    };
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
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(h + QByteArray(int(samples), char(128))) > 0;
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(1, atoi(argv[1])) : 30;
    UseMpvMedia();
    SetDefaultAudioOutput(QStringLiteral("null"));
    QTemporaryDir dir;
    DataGrid grid;
    DefineInputColumns(grid);
    for (int i = 1; i <= rows; ++i) {
        const QString name = QStringLiteral("song %1.wav").arg(i);
        if (!WriteWav(dir.filePath(name), 600))
            return 1;
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Path - 1] = dir.path();
        grid.AddRow(cells);
    }
    ScriptedPrompt prompt;
    modPlayer player(grid, prompt);
    player.options = [] {
        PlayerOptions o;
        o.autoPlay = true;
        return o;
    };
    qint64 longest = 0;
    QElapsedTimer gap;
    QTimer watch;
    watch.setInterval(5);
    QObject::connect(&watch, &QTimer::timeout, [&] {
        longest = std::max(longest, gap.nsecsElapsed());
        gap.restart();
    });
    QObject::connect(&player, &modPlayer::stopped, &app, &QCoreApplication::quit);
    grid.SetCurRow(1);
    const double cpu0 = bench::Cpu();
    QElapsedTimer wall;
    wall.start();
    gap.start();
    watch.start();
    QTimer::singleShot(0, &player, &modPlayer::Play);
    app.exec();
    const double secs = double(wall.elapsed()) / 1000.0;
    std::printf("%d songs in %.1f s; longest pause of the event loop %.1f ms (goal under 50 ms, "
                "the 5 ms watch included); CPU %.1f%% of one core (mpv included)\n",
                rows, secs, double(longest) / 1e6, 100.0 * (bench::Cpu() - cpu0) / secs);
    return 0;
}
