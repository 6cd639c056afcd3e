#pragma once
// The folders the tests of the reading threads run over: the fixtures copied into a few
// folders together with files that are no audio, and generated trees (bench/make_corpus.h).

#include "../../bench/make_corpus.h"
#include "TestPaths.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

namespace readtree {

inline bool CopyFixture(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    return QFile::copy(FixtureDir() + "/" + fixture, target);
}

inline QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Every fixture three times, in `music` and in two sub-folders, named "NN - Artist C -
// Song NN.ext", plus a broken MP3 and an empty folder.
inline bool MakeMusicFolder(const QString& music) {
    const QStringList fixtures = QDir(FixtureDir()).entryList(QDir::Files);
    int n = 0;
    for (const QString& f : fixtures) {
        for (int copy = 0; copy < 3; ++copy, ++n) {
            const QString dir = music + (copy == 0 ? QString() : QStringLiteral("/sub %1").arg(copy));
            if (!CopyFixture(f, dir + QStringLiteral("/%1 - Artist %2 - Song %3.%4")
                                          .arg(n, 2, 10, QChar('0'))
                                          .arg(copy)
                                          .arg(n)
                                          .arg(QFileInfo(f).suffix())))
                return false;
        }
    }
    QFile broken(music + "/broken.mp3");
    if (!broken.open(QIODevice::WriteOnly))
        return false;
    broken.write("ID3\x04\x00\x00\x00\x00\x00\x05not an mp3");
    broken.close();
    return QDir().mkpath(music + "/empty folder");
}

// The size of the generated trees: QLT_TREE_FILES when it asks for at least 300 files.
inline int TreeFiles(int fallback) {
    const int wanted = qEnvironmentVariableIntValue("QLT_TREE_FILES");
    return wanted >= 300 ? wanted : fallback;
}

// The two folders of a test: the fixtures in `base`/music and a generated tree of
// TreeFiles(fallback) files in `base`/tree, its templates given more by `hook`.
struct Folders {
    QString music, tree;
    int treeFiles = 0;
    bool Make(const QString& base, int fallback, const corpus::TemplateHook& hook = {}) {
        music = base + "/music";
        tree = base + "/tree";
        treeFiles = TreeFiles(fallback);
        return MakeMusicFolder(music) && corpus::MakeCorpus(FixtureDir(), tree, treeFiles, hook);
    }
};

} // namespace readtree
