// The searches of the picture area and of the synchronising editor that open every file
// of a folder: the embedded-picture search (`SearchEmbeddedPictures`) and the search for
// songs with an "lrc" frame (`FindSongsWithLrc`), each on one reader and on all cores,
// against a plain TagLib loop that reads the same frames. Usage:
//   bench_picsearch [COUNT...]   (default 10000; the trees go to
//                                 QLT_BENCH_TREES/qlt_corpus_extras_COUNT, else /tmp)
#include "core/DataGrid.h"
#include "picture/modEmbeddedPictures.h"
#include "search_tree.h"
#include "tag/TagEngine.h"
#include "text/modSTextFind.h"

#include <QCoreApplication>
#include <cstdio>

namespace {

int Pictures(const QString& root, TagEngine& engine, int threads) {
    DataGrid list;
    EmbeddedSearch how;
    how.withPicturesOnly = false;
    how.threads = threads;
    bench::SearchPicturesBelow(list, engine, root, how);
    return list.Rows();
}

int SongsWithLrc(const QString& root, TagEngine& engine, int threads) {
    DataGrid list;
    DefineSongWithLrcColumns(list);
    STextFindOptions o;
    o.subfolders = true;
    o.threads = threads;
    return FindSongsWithLrc(list, engine, root, o);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    for (int c : bench::TreeCounts(argc, argv)) {
        const QString root = bench::SearchTree(c);
        if (root.isEmpty())
            continue;
        std::printf("\n== %d files with lyrics and pictures in %s\n", c, qPrintable(root));
        TagEngine engine;
        bench::CompareSearch("picture search", root, [&](int t) { return Pictures(root, engine, t); });
        bench::CompareSearch("songs with lrc", root, [&](int t) { return SongsWithLrc(root, engine, t); });
    }
    return 0;
}
