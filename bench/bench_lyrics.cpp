// The search for lyric entries of the texts area against the folder scan of the data list
// over the same tree; the search on one reader and on all cores against a plain TagLib
// loop over a tree with lyric entries and pictures; and the reading and writing of a text
// of 20,000 lines. Usage:
//   bench_lyrics [COUNT...]      (default 10000; the trees go to qlt_corpus_COUNT and
//                                 qlt_corpus_extras_COUNT in QLT_BENCH_TREES, else /tmp)
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/modScan.h"
#include "make_corpus.h"
#include "platform/SafeFile.h"
#include "search_tree.h"
#include "tag/TagEngine.h"
#include "text/modTexte.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>

namespace {

using bench::Cpu;
using bench::FixtureDir;
using bench::Seconds;

struct Timed {
    double wall = 0, cpu = 0;
    int rows = 0;
};

Timed Scan(const QString& root, TagEngine& engine) {
    DataGrid list;
    EnsureInputColumns(list);
    ScanOptions o;
    o.subFolders = true;
    QElapsedTimer t;
    t.start();
    const double c0 = Cpu();
    ScanFolder(list, root, o, engine);
    return {Seconds(t), Cpu() - c0, list.Rows()};
}

Timed Lyrics(const QString& root, TagEngine& engine, int threads = 0) {
    ScriptedPrompt prompt;
    DataGrid txt, lyrics;
    TexteEnv env(prompt, engine, txt, lyrics);
    env.withSubFolderLyrics = true;
    env.threads = threads;
    QElapsedTimer t;
    t.start();
    const double c0 = Cpu();
    FindLyricsIn(env, root);
    return {Seconds(t), Cpu() - c0, lyrics.Rows()};
}

void RunOne(int count) {
    const QString root = bench::TreeFolder() + QStringLiteral("/qlt_corpus_%1").arg(count);
    if (!corpus::MakeCorpus(FixtureDir(), root, count)) {
        std::printf("could not write the tree %s\n", qPrintable(root));
        return;
    }
    TagEngine engine;
    Lyrics(root, engine); // warms the page cache
    const Timed scan = Scan(root, engine);
    const Timed lyr = Lyrics(root, engine);
    std::printf("\n== %d files in %s\n", count, qPrintable(root));
    std::printf("folder scan (71 cells)  %7.2f s  cpu %6.2f s  (%d rows)   1.00x\n", scan.wall, scan.cpu,
                scan.rows);
    std::printf("lyric search            %7.2f s  cpu %6.2f s  (%d rows)   %.2fx (cpu %.2fx)\n", lyr.wall,
                lyr.cpu, lyr.rows, scan.wall > 0 ? lyr.wall / scan.wall : 0.0,
                scan.cpu > 0 ? lyr.cpu / scan.cpu : 0.0);
}

// The search on one reader and on all cores, over the tree with lyric entries.
void RunReaders(int count) {
    const QString root = bench::SearchTree(count);
    if (root.isEmpty()) {
        std::printf("could not write the tree of %d files\n", count);
        return;
    }
    std::printf("\n== %d files with lyrics and pictures in %s\n", count, qPrintable(root));
    TagEngine engine;
    bench::CompareSearch("lyric search", root,
                         [&](int threads) { return Lyrics(root, engine, threads).rows; });
}

void TextOf20000Lines() {
    QString text;
    for (int i = 1; i <= 20000; ++i)
        text += QStringLiteral("[%1:%2.00]Zeile %3 mit ein paar Wörtern\r\n")
                    .arg(i / 60 % 100, 2, 10, QLatin1Char('0'))
                    .arg(i % 60, 2, 10, QLatin1Char('0'))
                    .arg(i);
    const QString path = QStringLiteral("/tmp/qlt_bench_text.txt");
    QElapsedTimer t;
    t.start();
    const bool written = SafeFile::WriteWholeFile(path, TextFileBytes(text));
    const double write = Seconds(t);
    t.restart();
    QString read;
    const bool ok = ReadTextForBox(path, read);
    const double readTime = Seconds(t);
    std::printf("\ntext of 20,000 lines (%.1f MB): write %.1f ms %s, read %.1f ms %s\n",
                double(TextFileBytes(text).size()) / 1048576.0, write * 1000, written ? "ok" : "FAILED",
                readTime * 1000, ok && read == text ? "ok" : "FAILED");
    QFile::remove(path);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    for (int c : bench::TreeCounts(argc, argv)) {
        RunOne(c);
        RunReaders(c);
    }
    TextOf20000Lines();
    return 0;
}
