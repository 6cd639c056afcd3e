// bench_playlist [entries] [rows]: reading an M3U and a PLS of `entries` songs from real
// files on disk (default 10,000; each entry asks only stat for its size), writing
// `entries` rows as M3U and PLS, and taking `rows` rows over from the data list
// (default 100,000). Each figure comes with a plain baseline in the same run: reading
// the file's lines and calling stat for each entry; writing the same bytes with one
// buffered write; copying the cells of the rows into a second grid.

#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylist.h"
#include "playlist/modPlaylistFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <sys/stat.h>

namespace {

QString g_root;

// Songs under g_root/songs/NNN/, 100 per folder: tiny real files.
void MakeSongs(int n) {
    for (int i = 0; i < n; ++i) {
        const QString dir = QStringLiteral("%1/songs/%2").arg(g_root).arg(i / 100, 3, 10, QLatin1Char('0'));
        if (i % 100 == 0)
            QDir().mkpath(dir);
        const QString path = dir + QStringLiteral("/%1 - Artist - Title.mp3").arg(i, 5, 10, QLatin1Char('0'));
        if (QFile::exists(path))
            continue;
        QFile f(path);
        if (f.open(QIODevice::WriteOnly))
            f.write(QByteArray(100 + i % 50, 'x'));
    }
}

QString SongPath(int i) {
    return QStringLiteral("%1/songs/%2/%3 - Artist - Title.mp3")
        .arg(g_root)
        .arg(i / 100, 3, 10, QLatin1Char('0'))
        .arg(i, 5, 10, QLatin1Char('0'));
}

double Baseline(const QString& path) {
    QElapsedTimer t;
    t.start();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = f.readAll().split('\n');
    qint64 total = 0;
    for (const QByteArray& l : lines) {
        const qsizetype slash = l.indexOf('/');
        if (slash < 0 || l.startsWith('#') || l.startsWith("Title"))
            continue;
        struct stat st {};
        if (::stat(l.mid(slash).trimmed().constData(), &st) == 0)
            total += st.st_size;
    }
    (void)total;
    return bench::Seconds(t);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int entries = argc > 1 ? std::atoi(argv[1]) : 10000;
    const int rows = argc > 2 ? std::atoi(argv[2]) : 100000;
    g_root = QStringLiteral("/tmp/qlt_playlist_bench");
    MakeSongs(entries);

    // the playlists on disk
    QByteArray m3u = "#EXTM3U\r\n", pls = "[playlist]\r\n";
    for (int i = 0; i < entries; ++i) {
        const QByteArray p = SongPath(i).toUtf8();
        m3u += "#EXTINF:" + QByteArray::number(120 + i % 200) + ",Title\r\n" + p + "\r\n";
        const QByteArray n = QByteArray::number(i + 1);
        pls += "File" + n + "=" + p + "\r\nTitle" + n + "=t\r\nLength" + n + "=" + QByteArray::number(100) +
               "\r\n";
    }
    pls += "NumberOfEntries=" + QByteArray::number(entries) + "\r\nVersion=2\r\n";
    WritePlaylistBytes(g_root + "/big.m3u", m3u);
    WritePlaylistBytes(g_root + "/big.pls", pls);

    DataGrid g;
    QElapsedTimer t;
    const double baseM3u = Baseline(g_root + "/big.m3u");
    t.start();
    double cpu = bench::Cpu();
    ReadM3u(g_root + "/big.m3u", g, false);
    const double readM3u = bench::Seconds(t), readM3uCpu = bench::Cpu() - cpu;
    const int m3uRows = g.Rows();
    const double basePls = Baseline(g_root + "/big.pls");
    t.restart();
    cpu = bench::Cpu();
    ReadPls(g_root + "/big.pls", g, false);
    const double readPls = bench::Seconds(t), readPlsCpu = bench::Cpu() - cpu;
    std::printf("read  %d entries: M3U %.3f s (cpu %.3f, %.2fx the plain lines+stat loop %.3f s), rows %d\n",
                entries, readM3u, readM3uCpu, readM3u / baseM3u, baseM3u, m3uRows);
    std::printf("read  %d entries: PLS %.3f s (cpu %.3f, %.2fx the plain lines+stat loop %.3f s), rows %d\n",
                entries, readPls, readPlsCpu, readPls / basePls, basePls, g.Rows());

    // writing: all rows (M3U) and all highlighted (PLS), then onto the disk
    g.SelectAll();
    PlaylistWriteCounts c1, c2;
    t.restart();
    cpu = bench::Cpu();
    const QByteArray outM3u = BuildM3u(g, {}, g_root, c1);
    const double buildM3u = bench::Seconds(t), buildM3uCpu = bench::Cpu() - cpu;
    WritePlaylistBytes(g_root + "/out.m3u", outM3u);
    const double writeM3u = bench::Seconds(t);
    t.restart();
    cpu = bench::Cpu();
    const QByteArray outPls = BuildPls(g, {}, g_root, c2);
    const double buildPls = bench::Seconds(t), buildPlsCpu = bench::Cpu() - cpu;
    WritePlaylistBytes(g_root + "/out.pls", outPls);
    const double writePls = bench::Seconds(t);
    t.restart();
    {
        QFile f(g_root + "/plain.m3u");
        if (f.open(QIODevice::WriteOnly))
            f.write(outM3u);
    }
    const double plainWrite = bench::Seconds(t);
    std::printf(
        "write %d rows: M3U %.3f s, PLS %.3f s in all (plain unsynced write of the same bytes %.3f s)\n",
        g.Rows(), writeM3u, writePls, plainWrite);
    std::printf(
        "  of which the rows to bytes: M3U %.3f s (cpu %.3f), PLS %.3f s (cpu %.3f); the rest is the\n"
        "  safe replace (temporary file, fsync, rename)\n",
        buildM3u, buildM3uCpu, buildPls, buildPlsCpu);

    // taking rows over from the data list
    DataGrid input;
    EnsureInputColumns(input);
    input.LockUpdate(true);
    QStringList cells(InCol::Count);
    for (int r = 1; r <= rows; ++r) {
        cells[InCol::FileName - 1] = QStringLiteral("%1 - Artist - Title.mp3").arg(r);
        cells[InCol::Type - 1] = QStringLiteral("MP3");
        cells[InCol::Path - 1] = QStringLiteral("/music/folder/%1").arg(r / 100);
        cells[InCol::DurationS - 1] = QString::number(120 + r % 300);
        cells[InCol::DurationMS - 1] = QStringLiteral("03:20");
        cells[InCol::SizeByte - 1] = QString::number(3000000 + r);
        cells[InCol::SizeMByte - 1] = QStringLiteral("2,86");
        input.AddRow(cells);
    }
    input.LockUpdate(false);
    input.SelectAll();
    ScriptedPrompt prompt;
    DataGrid playlist, files;
    PlaylistEnv env(prompt, playlist, files);
    env.tab1NoMsg = true;
    t.restart();
    cpu = bench::Cpu();
    CopyRowsToPlaylist(env, input, QString());
    const double take = bench::Seconds(t), takeCpu = bench::Cpu() - cpu;
    DataGrid plain;
    for (int c = 1; c <= PlCol::Count; ++c)
        plain.AddColumn(QStringLiteral("c%1").arg(c), QString());
    t.restart();
    plain.LockUpdate(true);
    for (int r = 1; r <= rows; ++r)
        plain.AddRow({QString(), QString(), QString(), input.CellText(r, InCol::FileName),
                      input.CellText(r, InCol::Type), input.CellText(r, InCol::DurationS),
                      input.CellText(r, InCol::DurationMS), input.CellText(r, InCol::SizeByte),
                      input.CellText(r, InCol::SizeMByte), input.CellText(r, InCol::Path), QString(),
                      QString()});
    plain.LockUpdate(false);
    const double plainCopy = bench::Seconds(t);
    std::printf(
        "take over %d rows from the data list: %.3f s (cpu %.3f, %.2fx a plain copy of the cells %.3f s)\n",
        playlist.Rows(), take, takeCpu, take / plainCopy, plainCopy);
    std::printf("files stay in %s (delete with rm -rf)\n", qPrintable(g_root));
    return 0;
}
