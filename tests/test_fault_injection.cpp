// Fault injection over every save: the N-th write, fsync, rename, truncate or close of
// a save fails with ENOSPC or EIO, for every N. After each, the file holds exactly its
// old bytes or exactly the new ones, the save reports the failure and no temporary copy
// is left. Covers a tag save of each of the nine file types (MP4 items, the INFO list and
// "id3 " chunk of WAV among them) and the grid files (a saved
// list, qlt.ini, Caption.qlt). Then a child process is killed in the middle of saves at
// many moments: old or new, and the next write into the folder leaves no copy behind.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "TmpfsMount.h"
#include "core/DataGrid.h"
#include "platform/FolderWalk.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "playlist/modPlaylistFile.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tagtest;

namespace {

QStringList Leftovers(const QString& dir) {
    return QDir(dir).entryList({QStringLiteral(".*qlt-tmp-*")}, QDir::Files | QDir::Hidden);
}

// Counts the checked calls; fails the one numbered `failAt` (1-based, 0 = none).
struct Injector {
    int calls = 0;
    int failAt = 0;
    int err = ENOSPC;
    int failed = 0;
    void Install() {
        SafeFile::SetFaultHook([this](SafeFile::Op) {
            ++calls;
            if (calls == failAt) {
                ++failed;
                return err;
            }
            return 0;
        });
    }
    ~Injector() { SafeFile::SetFaultHook({}); }
};

struct TagCase {
    const char* name;
    const char* fixture;
    std::function<void(TagEngine&)> stage;
    std::function<int(TagEngine&, const QString&)> save;
    std::function<void(const QString&)> prepare = {};
};

// Long values, so that every save has to grow its file beyond any padding.
QString Long(const char* what) {
    return QString::fromLatin1(what) + QString(3000, QLatin1Char('x'));
}

QList<TagCase> TagCases() {
    auto v2 = [](TagEngine& e) {
        e.SetV2Title(Long("Titel ä"));
        e.SetV2Artist(QStringLiteral("Künstler"));
    };
    auto saveV2 = [](TagEngine& e, const QString& p) { return e.SaveV2(p); };
    return {
        {"mp3 v2", "tone.mp3", v2, saveV2},
        {"mp3 v1", "tone.mp3", [](TagEngine& e) { e.SetV1Title(QStringLiteral("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveV1(p); }},
        {"mp3 ape", "tone.mp3", [](TagEngine& e) { e.SetApeTitle(Long("Ape")); },
         [](TagEngine& e, const QString& p) { return e.SaveApe(p); }},
        {"mp3 lyrics", "tone.mp3", [](TagEngine& e) { e.SetLyricsLyric(Long("la")); },
         [](TagEngine& e, const QString& p) { return e.SaveLyrics(p); },
         [](const QString& p) {
             // Lyrics need an ID3v1 tag behind them.
             TagEngine e;
             e.OpenFile(p);
             e.SetV1Album(QStringLiteral("  "));
             e.SaveV1(p);
         }},
        {"wma", "tone.wma", [](TagEngine& e) { e.SetWmaTitle(Long("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveWma(p); }},
        {"monkey", "tone.ape", v2, saveV2},
        {"flac", "tone.flac", [](TagEngine& e) { e.SetFlacTitle(Long("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveFlac(p); }},
        {"wav v2", "tone.wav", v2, saveV2},
        {"wav info", "tone.wav", [](TagEngine& e) { e.SetWavTitle(Long("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveWav(p); }},
        {"wav v2 strip", "tone.wav", [](TagEngine&) {},
         [](TagEngine& e, const QString& p) { return e.RemoveV2(p); },
         [](const QString& p) {
             TagEngine e;
             e.OpenFile(p);
             e.SetV2Title(QStringLiteral("weg"));
             e.SaveV2(p);
         }},
        {"ogg", "tone.ogg", [](TagEngine& e) { e.SetOggTitle(Long("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveOgg(p); }},
        {"ogg strip", "tone.ogg", [](TagEngine&) {},
         [](TagEngine& e, const QString& p) { return e.RemoveOgg(p); }},
        {"mpc", "tone.mpc", [](TagEngine& e) { e.SetApeTitle(Long("Ape")); },
         [](TagEngine& e, const QString& p) { return e.SaveApe(p); }},
        {"aac", "tone.aac", v2, saveV2},
        {"mp4", "tone.m4a", [](TagEngine& e) { e.SetMp4Title(Long("Titel")); },
         [](TagEngine& e, const QString& p) { return e.SaveMp4(p); }},
        {"mp4 v2", "tone.m4a", v2, saveV2}, // no ID3v2 on MP4: refused without a write
    };
}

} // namespace

class TestFaultInjection : public QObject {
    Q_OBJECT
private:
    QElapsedTimer m_total;

private slots:
    void initTestCase() { m_total.start(); }
    void cleanupTestCase() {
        qInfo("fault injection took %lld ms", static_cast<long long>(m_total.elapsed()));
    }

    void everyFailingCallOfATagSave_data() {
        QTest::addColumn<int>("index");
        const QList<TagCase> cases = TagCases();
        for (int i = 0; i < cases.size(); ++i)
            QTest::newRow(cases[i].name) << i;
    }
    void everyFailingCallOfATagSave() {
        QFETCH(int, index);
        const TagCase c = TagCases()[index];
        QTemporaryDir dir;
        const QString path = CopyFixture(QString::fromLatin1(c.fixture), dir.path(), QStringLiteral("song"));
        if (c.prepare)
            c.prepare(path);
        const QByteArray before = ReadAll(path);
        // A clean run counts the calls and gives the new bytes.
        int total = 0;
        QByteArray after;
        int cleanResult = 0;
        {
            Injector count;
            count.Install();
            TagEngine e;
            QVERIFY(e.OpenFile(path) != 0);
            c.stage(e);
            cleanResult = c.save(e, path);
            total = count.calls;
            after = ReadAll(path);
        }
        if (cleanResult == 0) {
            QCOMPARE(after, before); // a refused save writes nothing
            QCOMPARE(total, 0);
            return;
        }
        QVERIFY(after != before);
        QVERIFY2(total >= 3, qPrintable(QString::number(total)));
        for (int n = 1; n <= total; ++n) {
            QVERIFY(WriteAll(path, before));
            Injector fail;
            fail.failAt = n;
            fail.err = n % 2 ? ENOSPC : EIO;
            fail.Install();
            TagEngine e;
            QVERIFY(e.OpenFile(path) != 0);
            c.stage(e);
            const int result = c.save(e, path);
            SafeFile::SetFaultHook({});
            const QByteArray now = ReadAll(path);
            const QString where =
                QStringLiteral("%1: call %2 of %3").arg(QLatin1String(c.name)).arg(n).arg(total);
            QVERIFY2(fail.failed == 1, qPrintable(where));
            QVERIFY2(now == before || now == after, qPrintable(where));
            QVERIFY2(result == 0, qPrintable(where));
            QVERIFY2(!e.LastError().isEmpty(), qPrintable(where));
            QVERIFY2(Leftovers(dir.path()).isEmpty(), qPrintable(where));
        }
    }

    void everyFailingCallOfAGridSave_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow(".data") << "Liste.data";
        QTest::newRow("qlt.ini") << "qlt.ini";
        QTest::newRow("Caption.qlt") << "Caption.qlt";
    }
    void everyFailingCallOfAGridSave() {
        QFETCH(QString, name);
        QTemporaryDir dir;
        const QString path = dir.path() + u'/' + name;
        DataGrid g;
        g.AddColumn(QStringLiteral("A"), QStringLiteral("Spalte A"));
        g.AddColumn(QStringLiteral("B"), QStringLiteral("Spalte B"));
        for (int i = 0; i < 50; ++i)
            g.AddItem(QStringLiteral("alt %1\tä ö ü ß").arg(i));
        QVERIFY(g.SaveFile(path));
        const QByteArray before = ReadAll(path);
        // Enough rows for several writes of the writer's buffer.
        for (int i = 0; i < 60000; ++i)
            g.AddItem(QStringLiteral("neu %1\t%2").arg(i).arg(QString(20, QLatin1Char('z'))));
        int total = 0;
        {
            Injector count;
            count.Install();
            QVERIFY(g.SaveFile(path));
            total = count.calls;
        }
        const QByteArray after = ReadAll(path);
        QVERIFY(after != before);
        QVERIFY2(total >= 4, qPrintable(QString::number(total)));
        for (int n = 1; n <= total; ++n) {
            QVERIFY(WriteAll(path, before));
            Injector fail;
            fail.failAt = n;
            fail.err = n % 2 ? EIO : ENOSPC;
            fail.Install();
            const bool saved = g.SaveFile(path);
            SafeFile::SetFaultHook({});
            const QByteArray now = ReadAll(path);
            const QString where = QStringLiteral("%1: call %2 of %3").arg(name).arg(n).arg(total);
            QVERIFY2(!saved, qPrintable(where));
            QVERIFY2(!g.LastFileError().isEmpty(), qPrintable(where));
            QVERIFY2(now == before || now == after, qPrintable(where));
            QVERIFY2(Leftovers(dir.path()).isEmpty(), qPrintable(where));
        }
    }

    // A playlist save, under a name that is no UTF-8 and naming such a song.
    void everyFailingCallOfAPlaylistSave() {
        QTemporaryDir dir;
        const QString path = dir.path() + u'/' + PosixFile::FromNative("Lieder f\xFCr.m3u");
        const QByteArray nativePath = PosixFile::Native(path);
        QByteArray before = "#EXTM3U\r\n";
        for (int i = 0; i < 20; ++i)
            before += "alt " + QByteArray::number(i) + ".mp3\r\n";
        QVERIFY(WritePlaylistBytes(path, before));
        QByteArray after = "#EXTM3U\r\n";
        for (int i = 0; i < 20000; ++i)
            after += "#EXTINF:1,M\xFCller\r\n/music/M\xFCller " + QByteArray::number(i) + ".mp3\r\n";
        int total = 0;
        {
            Injector count;
            count.Install();
            QVERIFY(WritePlaylistBytes(path, after));
            total = count.calls;
        }
        auto readNative = [&] {
            QFile f;
            const int fd = ::open(nativePath.constData(), O_RDONLY);
            if (fd < 0 || !f.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
                return QByteArray();
            return f.readAll();
        };
        QCOMPARE(readNative(), after);
        QVERIFY2(total >= 4, qPrintable(QString::number(total)));
        for (int n = 1; n <= total; ++n) {
            {
                SafeFile::AtomicWriter w(path);
                QVERIFY(w.Open() && w.Write(before.constData(), before.size()) && w.Commit());
            }
            Injector fail;
            fail.failAt = n;
            fail.err = n % 2 ? EIO : ENOSPC;
            fail.Install();
            QString error;
            const bool saved = WritePlaylistBytes(path, after, &error);
            SafeFile::SetFaultHook({});
            const QByteArray now = readNative();
            const QString where = QStringLiteral("playlist: call %1 of %2").arg(n).arg(total);
            QVERIFY2(!saved, qPrintable(where));
            QVERIFY2(!error.isEmpty(), qPrintable(where));
            QVERIFY2(now == before || now == after, qPrintable(where));
            QVERIFY2(Leftovers(dir.path()).isEmpty(), qPrintable(where));
        }
    }

    // A real full disk: the copy of the old file fits, the grown one does not.
    void aFullDiskNeverShortensAFile_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("mp3") << "tone.mp3";
        QTest::newRow("wma") << "tone.wma";
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("ogg") << "tone.ogg";
        QTest::newRow("ape") << "tone.ape";
        QTest::newRow("mpc") << "tone.mpc";
        QTest::newRow("aac") << "tone.aac";
        QTest::newRow("wav") << "tone.wav";
        QTest::newRow("mp4") << "tone.m4a";
    }
    void aFullDiskNeverShortensAFile() {
        QFETCH(QString, fixture);
        const qint64 size = QFileInfo(FixtureDir() + u'/' + fixture).size();
        // Room for the file and one copy, and a little more.
        const QByteArray limit = QByteArray::number((2 * size + 64 * 1024) / 1024 + 8) + "k";
        TmpfsMount disk(limit.constData());
        if (!disk.IsMounted())
            QSKIP("needs root for a tmpfs");
        const QString path = CopyFixture(fixture, disk.Path(), QStringLiteral("song"));
        const QByteArray before = ReadAll(path);
        TagEngine e;
        const int type = e.OpenFile(path);
        QVERIFY(type != 0);
        const QString big(static_cast<int>(size / 2 + 100000), QLatin1Char('g'));
        e.SetV2Copyright(big);
        e.SetV2Title(big);
        e.SetApeComment(big);
        e.SetWmaComment(big);
        e.SetFlacComment(big);
        e.SetOggComment(big);
        e.SetMp4Comment(big);
        e.SetWavComment(big);
        int saved = 0;
        if (type == 9)
            saved = e.SaveMp4(path);
        else if (type == 5)
            saved = e.SaveWav(path);
        else if (type == 2)
            saved = e.SaveWma(path);
        else if (type == 4)
            saved = e.SaveFlac(path);
        else if (type == 6)
            saved = e.SaveOgg(path);
        else if (type == 7)
            saved = e.SaveApe(path);
        else
            saved = e.SaveV2(path);
        QCOMPARE(saved, 0);
        QVERIFY2(!e.LastError().isEmpty(), qPrintable(e.LastError()));
        QCOMPARE(ReadAll(path), before);
        QVERIFY(Leftovers(disk.Path()).isEmpty());
    }

    // ulimit -f: the save fails with EFBIG and the program lives on. Run in a child, whose
    // SIGXFSZ is left as the system sets it, so that the engine has to take care of it.
    void aFileSizeLimitIsAFailedWrite_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("mp3") << "tone.mp3";
        QTest::newRow("wma") << "tone.wma";
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("ogg") << "tone.ogg";
        QTest::newRow("wav") << "tone.wav";
        QTest::newRow("mp4") << "tone.m4a";
    }
    void aFileSizeLimitIsAFailedWrite() {
        QFETCH(QString, fixture);
        QTemporaryDir dir;
        const QString path = CopyFixture(fixture, dir.path(), QStringLiteral("song"));
        const QByteArray before = ReadAll(path);
        const qint64 size = before.size();
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_DFL);
            rlimit small{};
            small.rlim_cur = small.rlim_max = static_cast<rlim_t>(size + 1000);
            ::setrlimit(RLIMIT_FSIZE, &small);
            TagEngine e;
            const int type = e.OpenFile(path);
            const QString big(20000, QLatin1Char('b'));
            e.SetV2Title(big);
            e.SetWmaTitle(big);
            e.SetFlacTitle(big);
            e.SetOggTitle(big);
            e.SetMp4Title(big);
            e.SetWavTitle(big);
            const int saved = type == 9   ? e.SaveMp4(path)
                              : type == 5 ? e.SaveWav(path)
                              : type == 2 ? e.SaveWma(path)
                              : type == 4 ? e.SaveFlac(path)
                              : type == 6 ? e.SaveOgg(path)
                                          : e.SaveV2(path);
            const bool efbig = e.LastError().contains(SafeFile::ErrorText(EFBIG));
            ::_exit(saved == 0 && efbig ? 0 : 3);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY2(WIFEXITED(status), "the child died by a signal");
        QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(ReadAll(path), before);
        QVERIFY(Leftovers(dir.path()).isEmpty());
    }

    // A child saves again and again and is killed at random moments. The file is always
    // one of its states, and the next write into the folder removes the dead child's copy.
    void killedInTheMiddleOfAWrite() {
        QTemporaryDir dir;
        const QString path =
            CopyFixture(QStringLiteral("tone.flac"), dir.path(), QStringLiteral("song.flac"));
        const QString mp3 = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("song.mp3"));
        const QString other =
            CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("other.mp3"));
        const QString m4a = CopyFixture(QStringLiteral("tone.m4a"), dir.path(), QStringLiteral("song.m4a"));
        const QString wav = CopyFixture(QStringLiteral("tone.wav"), dir.path(), QStringLiteral("song.wav"));
        // The states the saves can give, in the order the child makes them: title b, a,
        // b, ... (a tag keeps the room of a longer one before it, so each step counts).
        const QString a = QString(5000, QLatin1Char('a')), b = QStringLiteral("b");
        auto states = [&](const QString& p) {
            QTemporaryDir d;
            const QString copy = d.path() + QStringLiteral("/s.") + p.section(u'.', -1);
            QFile::copy(p, copy);
            QList<QByteArray> all{ReadAll(copy)};
            for (int i = 0; i < 6; ++i) {
                TagEngine e;
                const int type = e.OpenFile(copy);
                e.SetFlacTitle(i % 2 ? a : b);
                e.SetV2Title(i % 2 ? a : b);
                e.SetMp4Title(i % 2 ? a : b);
                e.SetWavTitle(i % 2 ? a : b);
                type == 4   ? e.SaveFlac(copy)
                : type == 9 ? e.SaveMp4(copy)
                : type == 5 ? e.SaveWav(copy)
                            : e.SaveV2(copy);
                all << ReadAll(copy);
            }
            return all;
        };
        const QList<QByteArray> flacStates = states(path);
        const QList<QByteArray> mp3States = states(mp3);
        const QList<QByteArray> m4aStates = states(m4a);
        const QList<QByteArray> wavStates = states(wav);
        QRandomGenerator rng(1234);
        int leftBehind = 0;
        for (int round = 0; round < 150; ++round) {
            const pid_t child = ::fork();
            QVERIFY(child >= 0);
            if (child == 0) {
                TagEngine e;
                for (int i = 0;; ++i) {
                    const QString title = i % 2 ? a : b;
                    e.OpenFile(path);
                    e.SetFlacTitle(title);
                    e.SaveFlac(path);
                    e.OpenFile(mp3);
                    e.SetV2Title(title);
                    e.SaveV2(mp3);
                    e.OpenFile(m4a);
                    e.SetMp4Title(title);
                    e.SaveMp4(m4a);
                    e.OpenFile(wav);
                    e.SetWavTitle(title);
                    e.SaveWav(wav);
                }
            }
            ::usleep(static_cast<useconds_t>(rng.bounded(2000, 30000)));
            ::kill(child, SIGKILL);
            int status = 0;
            ::waitpid(child, &status, 0);
            QVERIFY2(flacStates.contains(ReadAll(path)), qPrintable(QString::number(round)));
            QVERIFY2(mp3States.contains(ReadAll(mp3)), qPrintable(QString::number(round)));
            QVERIFY2(m4aStates.contains(ReadAll(m4a)), qPrintable(QString::number(round)));
            QVERIFY2(wavStates.contains(ReadAll(wav)), qPrintable(QString::number(round)));
            leftBehind += int(Leftovers(dir.path()).size());
            // Every few rounds the next write cleans up; in between copies may pile up.
            if (round % 3 == 2) {
                TagEngine e;
                QCOMPARE(e.OpenFile(other), 1);
                e.SetV1Title(QStringLiteral("aufgeräumt %1").arg(round));
                QVERIFY(e.SaveV1(other));
                QVERIFY2(Leftovers(dir.path()).isEmpty(), qPrintable(Leftovers(dir.path()).join(u' ')));
            }
        }
        qInfo("copies seen after kills: %d", leftBehind);
    }

    // The longest name a folder takes still leaves room for the copy's name.
    void aLongNameCanBeSaved() {
        QTemporaryDir dir;
        const QString name =
            QString(60, QChar(0xE4)) + QString(131, QLatin1Char('n')) + QStringLiteral(".mp3");
        QCOMPARE(name.toUtf8().size(), 255);
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), name);
        QVERIFY(QFileInfo::exists(path));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QStringLiteral("lang"));
        QVERIFY2(e.SaveV2(path), qPrintable(e.LastError()));
        const QString flac =
            CopyFixture(QStringLiteral("tone.flac"), dir.path(), QString(250, QLatin1Char('f')) + ".flac");
        QCOMPARE(e.OpenFile(flac), 4);
        e.SetFlacTitle(QStringLiteral("lang"));
        QVERIFY2(e.SaveFlac(flac), qPrintable(e.LastError()));
        QVERIFY(Leftovers(dir.path()).isEmpty());
    }

    // Only our own copies of dead processes are removed, nothing else.
    void staleCopiesAndNothingElse() {
        QTemporaryDir dir;
        const QString song = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("song.mp3"));
        // A process id that surely is not running: a child that has ended.
        const pid_t dead = ::fork();
        if (dead == 0)
            ::_exit(0);
        ::waitpid(dead, nullptr, 0);
        const QString base = dir.path() + QStringLiteral("/.song.mp3.qlt-tmp-");
        const QStringList stale = {base + QString::number(dead) + QStringLiteral("-abcdef")};
        const QStringList kept = {
            base + QString::number(::getpid()) + QStringLiteral("-abcdef"), // a live process
            base + QString::number(dead) + QStringLiteral("-abc"),          // not our pattern
            dir.path() + QStringLiteral("/.song.mp3.qlt-AbCdEf"),           // the old pattern
            dir.path() + QStringLiteral("/song.mp3.qlt-tmp-") + QString::number(dead) +
                QStringLiteral("-abcdef"),
            dir.path() + QStringLiteral("/.hidden"),
        };
        for (const QString& p : stale + kept)
            QVERIFY(WriteAll(p, "x"));
        const QString staleDir =
            dir.path() + QStringLiteral("/.d.qlt-tmp-") + QString::number(dead) + QStringLiteral("-abcdef");
        QVERIFY(QDir().mkdir(staleDir)); // a folder of that name is not a copy
        TagEngine e;
        QCOMPARE(e.OpenFile(song), 1);
        e.SetV1Title(QStringLiteral("x"));
        QVERIFY(e.SaveV1(song));
        for (const QString& p : stale)
            QVERIFY2(!QFileInfo::exists(p), qPrintable(p));
        for (const QString& p : kept)
            QVERIFY2(QFileInfo::exists(p), qPrintable(p));
        QVERIFY(QFileInfo(staleDir).isDir());

        // A scan that passes the folder removes them as well.
        QVERIFY(WriteAll(stale[0], "x"));
        std::vector<FolderEntry> entries;
        QVERIFY(ListFolder(dir.path(), entries));
        QVERIFY(!QFileInfo::exists(stale[0]));
        for (const QString& p : kept)
            QVERIFY2(QFileInfo::exists(p), qPrintable(p));
        QCOMPARE(int(entries.size()), 2); // song.mp3 and the visible look-alike
    }
};

QTEST_GUILESS_MAIN(TestFaultInjection)
#include "test_fault_injection.moc"
