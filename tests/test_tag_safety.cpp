// TagEngine: never damage a file. Read-only files, kept permissions, no temporary files
// left behind, a write that fails half way, hostile tags, and a mutation fuzz of the
// parsers for the tags around the audio and of ADTS.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <tuple>
#include <unistd.h>

using namespace tagtest;

namespace {

// Reads everything the engine offers; must neither crash nor hang.
void ReadEverything(TagEngine& e) {
    for (int i = 0; i < kTagFieldCount; ++i)
        (void)e.Field(static_cast<TagField>(i));
    (void)e.V1GenreCode();
    (void)e.TrackNumberValue();
    (void)e.V2Rating();
    for (int i = 1; i <= e.CommentCount(); ++i)
        (void)e.CommentText(i);
    for (int i = 1; i <= e.LyricCount(); ++i)
        (void)e.LyricText(i);
    for (int i = 1; i <= e.UserFrameCount(); ++i)
        (void)e.UserFrameText(i);
    for (int i = 1; i <= e.PictureCount(); ++i)
        (void)e.PictureMime(i);
    (void)e.DurationSeconds();
}

QStringList Leftovers(const QString& dir) {
    return QDir(dir).entryList({QStringLiteral("*.qlt-*")}, QDir::Files | QDir::Hidden);
}

} // namespace

class TestTagSafety : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    // An MP3 with all four sets, comments and a picture.
    QString Tagged(const QString& name, const QString& fixture = QStringLiteral("tone.mp3")) {
        const QString path = CopyFixture(fixture, m_dir.path(), name);
        TagEngine e;
        const int type = e.OpenFile(path);
        e.SetV1Title(QStringLiteral("Titel"));
        e.SetV2Title(QStringLiteral("Titel ✓"));
        e.SetComment(1, QStringLiteral("eng"), QStringLiteral("d"), QStringLiteral("Kommentar"));
        e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT4"));
        e.AddPicture(FixtureDir() + QStringLiteral("/cover.jpg"), QStringLiteral("cover"), 1, 3);
        e.SetApeArtist(QStringLiteral("Ape ✓"));
        e.SetLyricsLyric(QStringLiteral("la la"));
        e.SetMp4Title(QStringLiteral("Mp4 ✓"));
        e.SetMp4Track(QStringLiteral("2/9"));
        e.SetWavTitle(QStringLiteral("Wav ✓"));
        if (type == 9)
            e.SaveMp4(path);
        if (type == 5)
            e.SaveWav(path);
        if (type == 1 || type == 4 || type == 6 || type == 7)
            e.SaveV1(path);
        e.SaveV2(path);
        if (type == 1 || type == 4 || type == 6 || type == 7)
            e.SaveApe(path);
        if (type == 1 || type == 7)
            e.SaveLyrics(path);
        return path;
    }

private slots:
    void readOnlyFileIsNotTouched() {
        const QString path = Tagged(QStringLiteral("ro.mp3"));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        const QByteArray before = ReadAll(path);
        const QDateTime mtime = QFileInfo(path).lastModified();
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Titel ✓"));
        e.SetV1Title(QStringLiteral("x"));
        e.SetV2Title(QStringLiteral("x"));
        e.SetApeTitle(QStringLiteral("x"));
        e.SetLyricsTitle(QStringLiteral("x"));
        QCOMPARE(e.SaveV1(path), 0);
        QVERIFY2(e.LastError().contains(QStringLiteral("write-protected")), qPrintable(e.LastError()));
        QCOMPARE(e.SaveV2(path), 0);
        QCOMPARE(e.SaveApe(path), 0);
        QCOMPARE(e.SaveLyrics(path), 0);
        QCOMPARE(e.RemoveV1(path), 0);
        QCOMPARE(e.RemoveV2(path), 0);
        QCOMPARE(e.RemoveApe(path), 0);
        QCOMPARE(e.RemoveLyrics(path), 0);
        QCOMPARE(ReadAll(path), before);
        QCOMPARE(QFileInfo(path).lastModified(), mtime);
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    }

    void readOnlyTypicalSets_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("wma") << "tone.wma";
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("ogg") << "tone.ogg";
    }
    void readOnlyTypicalSets() {
        QFETCH(QString, fixture);
        const QString path = CopyFixture(fixture, m_dir.path(), QStringLiteral("ro-") + fixture);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup);
        const QByteArray before = ReadAll(path);
        TagEngine e;
        QVERIFY(e.OpenFile(path) != 0);
        e.SetWmaTitle(QStringLiteral("x"));
        e.SetFlacTitle(QStringLiteral("x"));
        e.SetOggTitle(QStringLiteral("x"));
        QCOMPARE(e.SaveWma(path), 0);
        QCOMPARE(e.SaveFlac(path), 0);
        QCOMPARE(e.SaveOgg(path), 0);
        QCOMPARE(e.RemoveOgg(path), 0);
        QVERIFY(!e.LastError().isEmpty());
        QCOMPARE(ReadAll(path), before);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    }

    void permissionsAreKept() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("perm.mp3"));
        const auto perms = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser |
                           QFile::ReadGroup | QFile::ReadOther;
        QFile::setPermissions(path,
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QStringLiteral("p"));
        QVERIFY(e.SaveV2(path));
        QCOMPARE(QFileInfo(path).permissions() & ~(QFile::ExeOwner | QFile::ExeUser), perms);
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }

    void ownerGroupAttributesAndAclAreKept() {
        const QString path =
            CopyFixture(QStringLiteral("tone.flac"), m_dir.path(), QStringLiteral("meta.flac"));
        const QByteArray native = QFile::encodeName(path);
        QVERIFY(::chmod(native.constData(), 0640) == 0);
        const bool root = ::geteuid() == 0;
        if (root)
            QVERIFY(::chown(native.constData(), 65534, 65534) == 0);
        const bool xattr = ::setxattr(native.constData(), "user.quelle", "CD 3", 4, 0) == 0;
        // An ACL that gives user 65534 read access: version 2, then (tag, perm, id) entries.
        QByteArray acl;
        auto put = [&acl](quint32 v, int bytes) {
            for (int i = 0; i < bytes; ++i)
                acl.append(char((v >> (8 * i)) & 0xFF));
        };
        put(2, 4);
        for (const auto& [tag, perm, id] : {std::tuple<quint32, quint32, quint32>{0x01, 6, 0xFFFFFFFF},
                                            {0x02, 4, 65534},
                                            {0x04, 4, 0xFFFFFFFF},
                                            {0x10, 4, 0xFFFFFFFF},
                                            {0x20, 0, 0xFFFFFFFF}}) {
            put(tag, 2);
            put(perm, 2);
            put(id, 4);
        }
        const bool hasAcl = ::setxattr(native.constData(), "system.posix_acl_access", acl.constData(),
                                       size_t(acl.size()), 0) == 0;
        struct stat before {};
        QVERIFY(::stat(native.constData(), &before) == 0);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 4);
        e.SetFlacTitle(QString(5000, QLatin1Char('m')));
        QVERIFY(e.SaveFlac(path));
        e.SetV2Title(QStringLiteral("v2"));
        QVERIFY(e.SaveV2(path));
        struct stat after {};
        QVERIFY(::stat(native.constData(), &after) == 0);
        QCOMPARE(after.st_mode & 07777, before.st_mode & 07777);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
        if (xattr) {
            char value[16] = {};
            QCOMPARE(::getxattr(native.constData(), "user.quelle", value, sizeof value), ssize_t(4));
            QCOMPARE(QByteArray(value, 4), QByteArray("CD 3"));
        }
        if (hasAcl) {
            QByteArray back(256, '\0');
            const ssize_t n = ::getxattr(native.constData(), "system.posix_acl_access", back.data(), 256);
            QVERIFY(n > 0);
            QCOMPARE(back.left(n), acl);
        }
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }

    void theGroupIsKeptForAnOrdinaryUser() {
        if (::geteuid() != 0)
            QSKIP("needs root to prepare a file of another owner");
        // The file belongs to root, group 65534; the writer is user 65533 in group 65534.
        QTemporaryDir dir;
        QVERIFY(::chmod(QFile::encodeName(dir.path()).constData(), 0777) == 0);
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("g.mp3"));
        const QByteArray native = QFile::encodeName(path);
        QVERIFY(::chown(native.constData(), 0, 65534) == 0);
        QVERIFY(::chmod(native.constData(), 0664) == 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const gid_t groups[] = {65534};
            if (::setgroups(1, groups) != 0 || ::setgid(65533) != 0 || ::setuid(65533) != 0)
                ::_exit(99);
            TagEngine e;
            if (e.OpenFile(path) != 1)
                ::_exit(98);
            e.SetV2Title(QStringLiteral("Gruppe"));
            ::_exit(e.SaveV2(path) ? 0 : 97);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        struct stat st {};
        QVERIFY(::stat(native.constData(), &st) == 0);
        QCOMPARE(st.st_uid, uid_t(65533)); // the full owner only root may give away
        QCOMPARE(st.st_gid, gid_t(65534));
        QCOMPARE(st.st_mode & 07777, mode_t(0664));
    }

    void aSymbolicLinkStaysALink() {
        const QString path =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("real.mp3"));
        const QString link = m_dir.path() + QStringLiteral("/link.mp3");
        QVERIFY(QFile::link(path, link));
        TagEngine e;
        QCOMPARE(e.OpenFile(link), 1);
        e.SetV2Title(QStringLiteral("durch den Link"));
        QVERIFY(e.SaveV2(link));
        e.SetV1Title(QStringLiteral("v1"));
        QVERIFY(e.SaveV1(link));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("durch den Link"));
        QCOMPARE(e.V1Title(), QStringLiteral("v1"));
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }

    void readOnlyFolderAsOrdinaryUser() {
        if (::geteuid() == 0)
            QSKIP("root may write into any folder");
        QTemporaryDir dir;
        const QString path = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("f.mp3"));
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QStringLiteral("x"));
        QCOMPARE(e.SaveV2(path), 0);
        QVERIFY(e.LastError().contains(QStringLiteral("folder")));
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void aWriteThatFailsHalfWayLeavesTheOldFile() {
        // A file size limit makes the temporary copy fail like a full disk would.
        const QString path = Tagged(QStringLiteral("full.mp3"));
        const QByteArray before = ReadAll(path);
        const QString flacPath = Tagged(QStringLiteral("full.flac"), QStringLiteral("tone.flac"));
        const QByteArray flacBefore = ReadAll(flacPath);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetV2Title(QString(20000, QLatin1Char('y')));
        e.SetV1Title(QStringLiteral("z"));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit old{};
        getrlimit(RLIMIT_FSIZE, &old);
        rlimit small = old;
        small.rlim_cur = static_cast<rlim_t>(before.size() / 2);
        setrlimit(RLIMIT_FSIZE, &small);
        const int v2 = e.SaveV2(path);
        const int v1 = e.SaveV1(path);
        TagEngine f;
        QCOMPARE(f.OpenFile(flacPath), 4);
        f.SetFlacTitle(QStringLiteral("never written"));
        const int flac = f.SaveFlac(flacPath);
        setrlimit(RLIMIT_FSIZE, &old);
        QCOMPARE(v2, 0);
        QCOMPARE(v1, 0);
        QCOMPARE(flac, 0);
        QCOMPARE(ReadAll(flacPath), flacBefore);
        QVERIFY(e.LastError().contains(QStringLiteral("Can't write")));
        QCOMPARE(ReadAll(path), before);
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Titel ✓"));
    }

    void hostileTags() {
        const QByteArray audio = ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        struct Case {
            const char* name;
            QByteArray data;
        };
        QByteArray v1(128, '\xE9');
        v1.replace(0, 3, "TAG");
        QByteArray apeFooter("APETAGEX", 8);
        apeFooter += QByteArray("\xD0\x07\0\0", 4) + QByteArray("\x00\x01\0\0", 4) +
                     QByteArray("\xFF\xFF\xFF\x0F", 4) + QByteArray(4, '\0') + QByteArray(8, '\0');
        QByteArray apeItems = QByteArray("\xFF\xFF\xFF\x7F\0\0\0\0Title\0", 14) + QByteArray(200, 'a');
        const QList<Case> cases = {
            {"huge id3v2 size", QByteArray("ID3\x03\x00\x00\x7F\x7F\x7F\x7F", 10) + audio},
            {"id3v2 frame longer than tag", QByteArray("ID3\x03\x00\x00\x00\x00\x00\x20", 10) +
                                                QByteArray("TIT2\x7F\xFF\xFF\xFF\0\0\x01\xFF\xFE", 13) +
                                                QByteArray(19, 'x') + audio},
            {"id3v1 in windows-1252", audio + v1},
            {"ape with wrong sizes", audio + apeItems + apeFooter},
            {"lyrics3 with letters for digits", audio + "LYRICSBEGINLYR0000xabcdeABCDEFLYRICS200" + v1},
            {"lyrics3 size beyond the file", audio + "LYRICSBEGININD000021"
                                                     "999999LYRICS200"},
            {"lyrics3 field beyond its tag", audio + "LYRICSBEGINLYR99999short000024LYRICS200"},
            {"only markers", QByteArray("LYRICS200APETAGEXTAG")},
        };
        TagEngine e;
        for (const Case& c : cases) {
            const QString path = m_dir.path() + QStringLiteral("/hostile.mp3");
            WriteAll(path, c.data);
            QElapsedTimer t;
            t.start();
            e.OpenFile(path);
            ReadEverything(e);
            QVERIFY2(t.elapsed() < 2000, c.name);
        }
        WriteAll(m_dir.path() + QStringLiteral("/v1.mp3"), audio + v1);
        QCOMPARE(e.OpenFile(m_dir.path() + QStringLiteral("/v1.mp3")), 1);
        QCOMPARE(e.V1Title(), QString(30, QChar(0xE9)));
        WriteAll(m_dir.path() + QStringLiteral("/field.mp3"),
                 audio + "LYRICSBEGINLYR99999short000024LYRICS200");
        QCOMPARE(e.OpenFile(m_dir.path() + QStringLiteral("/field.mp3")), 1);
        QCOMPARE(e.LyricsLyric(), QStringLiteral("short"));
    }

    // A forged footer that claims a huge tag: no write reads it into memory, and none
    // drops the bytes it would cover. The file is sparse, so it takes no real space.
    void aHugeForgedTrailerIsNeverReadWhole() {
        const QByteArray audio = ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        const QString path = m_dir.path() + QStringLiteral("/huge.mp3");
        const qint64 total = 200LL * 1024 * 1024;
        QByteArray footer("APETAGEX", 8);
        auto le32 = [](quint32 v) {
            QByteArray b;
            for (int i = 0; i < 4; ++i)
                b.append(char((v >> (8 * i)) & 0xFF));
            return b;
        };
        footer +=
            le32(2000) + le32(quint32(total - audio.size() - 10)) + le32(1) + le32(0) + QByteArray(8, '\0');
        {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(audio);
            QVERIFY(f.resize(total - footer.size()));
            QVERIFY(f.seek(total - footer.size()));
            f.write(footer);
        }
        QCOMPARE(QFileInfo(path).size(), total);
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QVERIFY(e.HasApe() == false || e.ApeTitle().isEmpty());
        e.SetV1Title(QStringLiteral("v1"));
        e.SetApeTitle(QStringLiteral("ape"));
        e.SetLyricsLyric(QStringLiteral("la"));
        QElapsedTimer t;
        t.start();
        QCOMPARE(e.SaveV1(path), 0);
        QVERIFY2(e.LastError().contains(QStringLiteral("64 MB")), qPrintable(e.LastError()));
        QCOMPARE(e.RemoveV1(path), 1); // there is no ID3v1 tag to remove: nothing is written
        QCOMPARE(e.SaveApe(path), 0);
        QCOMPARE(e.RemoveApe(path), 0);
        QCOMPARE(e.SaveLyrics(path), 0);
        QVERIFY2(t.elapsed() < 5000, qPrintable(QString::number(t.elapsed())));
        QCOMPARE(QFileInfo(path).size(), total);
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }

    // An APE footer whose size reaches into the audio: the tag is not replaced or
    // removed (that would cut the audio), and a write of another set keeps every byte.
    void anApeFooterReachingIntoTheAudio() {
        const QByteArray audio = ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        const QString seed = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("ape.mp3"));
        {
            TagEngine e;
            QCOMPARE(e.OpenFile(seed), 1);
            e.SetApeTitle(QStringLiteral("Titel"));
            QVERIFY(e.SaveApe(seed));
        }
        QByteArray file = ReadAll(seed);
        QVERIFY(file.startsWith(audio));
        QByteArray ape = file.mid(audio.size());
        // Footer size + 300: the tag now seems to begin inside the audio; no header flag.
        const qsizetype footerAt = ape.size() - 32;
        auto setLe32 = [&ape](qsizetype at, quint32 v) {
            for (int i = 0; i < 4; ++i)
                ape[at + i] = char((v >> (8 * i)) & 0xFF);
        };
        const quint32 size = quint32(ape.size() - 32) + 300;
        setLe32(footerAt + 12, size);
        setLe32(footerAt + 20, 0);
        const QByteArray forged = audio + ape;
        const QString path = m_dir.path() + QStringLiteral("/reach.mp3");
        QVERIFY(WriteAll(path, forged));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        e.SetApeTitle(QStringLiteral("neu"));
        QCOMPARE(e.SaveApe(path), 0);
        QVERIFY(!e.LastError().isEmpty());
        QCOMPARE(e.RemoveApe(path), 0);
        QCOMPARE(ReadAll(path), forged);
        e.SetV1Title(QStringLiteral("v1"));
        QVERIFY(e.SaveV1(path));
        QVERIFY(ReadAll(path).startsWith(forged));
        QCOMPARE(ReadAll(path).size(), forged.size() + 128);
        e.OpenFile(path);
        QVERIFY(e.RemoveV1(path));
        QCOMPARE(ReadAll(path), forged);
        e.SetV2Title(QStringLiteral("v2"));
        QVERIFY(e.SaveV2(path));
        QVERIFY(ReadAll(path).endsWith(ape));
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }

    // An APE tag of version 1 holds text in the old code page; the upgrade to version 2
    // that a save makes turns the items it did not touch into UTF-8 as well.
    void apeVersionOneItemsAreReencoded() {
        const QByteArray audio = ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"));
        auto le32 = [](quint32 v) {
            QByteArray b;
            for (int i = 0; i < 4; ++i)
                b.append(char((v >> (8 * i)) & 0xFF));
            return b;
        };
        const QByteArray value("Caf\xE9 M\xFCller", 12);
        const QByteArray item = le32(quint32(value.size())) + le32(0) + QByteArray("Artist", 7) + value;
        const QByteArray footer = QByteArray("APETAGEX") + le32(1000) + le32(quint32(item.size() + 32)) +
                                  le32(1) + le32(0) + QByteArray(8, '\0');
        const QString path = m_dir.path() + QStringLiteral("/apev1.mp3");
        QVERIFY(WriteAll(path, audio + item + footer));
        TagEngine e;
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.ApeVersion(), QStringLiteral("1.0"));
        QCOMPARE(e.ApeArtist(), QStringLiteral("Café Müller"));
        e.SetApeTitle(QStringLiteral("Titel"));
        QVERIFY(e.SaveApe(path));
        QCOMPARE(e.OpenFile(path), 1);
        QCOMPARE(e.ApeVersion(), QStringLiteral("2.0"));
        QCOMPARE(e.ApeArtist(), QStringLiteral("Café Müller"));
        QVERIFY(ReadAll(path).contains(QStringLiteral("Café Müller").toUtf8()));
    }

    void fuzzTheTagParsers_data() {
        QTest::addColumn<QString>("fixture");
        QTest::newRow("mp3") << "tone.mp3";
        QTest::newRow("mpc") << "tone.mpc";
        QTest::newRow("aac") << "tone.aac";
        QTest::newRow("ogg") << "tone.ogg";
        QTest::newRow("flac") << "tone.flac";
        QTest::newRow("mp4") << "tone.m4a";
        QTest::newRow("wav") << "tone.wav";
    }
    void fuzzTheTagParsers() {
        QFETCH(QString, fixture);
        const QByteArray seed = ReadAll(Tagged(QStringLiteral("seed-") + fixture, fixture));
        QVERIFY(!seed.isEmpty());
        QRandomGenerator rng(4711);
        const QByteArray markers[] = {"APETAGEX", "LYRICS200", "LYRICSBEGIN", "LYRICSEND", "TAG",  "ID3\x04",
                                      "999999",   "\xFF\xF1",  "\xFF\xFB",    "OggS",      "fLaC", "moov",
                                      "ilst",     "trkn",      "RIFF",        "LIST",      "INFO", "id3 "};
        const QString path = m_dir.path() + QStringLiteral("/fuzz-") + fixture;
        TagEngine e;
        QElapsedTimer total;
        total.start();
        int rounds = 0;
        for (; rounds < 1000 && total.elapsed() < 60000; ++rounds) {
            QByteArray data = seed;
            const int edits = 1 + static_cast<int>(rng.bounded(8));
            for (int k = 0; k < edits; ++k) {
                // Most edits hit the first or last 600 bytes, where the tags are.
                const qsizetype n = data.size();
                if (n == 0)
                    break;
                qsizetype at = rng.bounded(2)
                                   ? static_cast<qsizetype>(
                                         rng.bounded(static_cast<quint32>(std::min<qsizetype>(n, 600))))
                                   : n - 1 -
                                         static_cast<qsizetype>(
                                             rng.bounded(static_cast<quint32>(std::min<qsizetype>(n, 600))));
                switch (rng.bounded(5)) {
                case 0:
                    data[at] = static_cast<char>(rng.bounded(256));
                    break;
                case 1: {
                    const QByteArray& m = markers[rng.bounded(static_cast<quint32>(std::size(markers)))];
                    data.replace(at, std::min<qsizetype>(m.size(), n - at), m);
                    break;
                }
                case 2:
                    data.truncate(at);
                    break;
                case 3:
                    data.insert(at, QByteArray(static_cast<qsizetype>(rng.bounded(40)),
                                               static_cast<char>(rng.bounded(256))));
                    break;
                default:
                    data.remove(at, static_cast<qsizetype>(rng.bounded(40)));
                    break;
                }
            }
            WriteAll(path, data);
            const int type = e.OpenFile(path);
            ReadEverything(e);
            if (type != 0 && rounds % 10 == 0) {
                // Writing into a broken file must still give a readable file or fail cleanly.
                e.SetV2Title(QStringLiteral("fuzz"));
                e.SetMp4Title(QStringLiteral("fuzz"));
                e.SetWavTitle(QStringLiteral("fuzz"));
                if (e.SaveV2(path))
                    QVERIFY(e.OpenFile(path) != 0);
                if (type == 9 && e.SaveMp4(path))
                    QVERIFY(e.OpenFile(path) == 9);
                if (type == 5 && e.SaveWav(path))
                    QVERIFY(e.OpenFile(path) == 5);
            }
        }
        qInfo("%d mutated files in %lld ms", rounds, static_cast<long long>(total.elapsed()));
        QVERIFY(rounds >= 100);
        QVERIFY(Leftovers(m_dir.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestTagSafety)
#include "test_tag_safety.moc"
