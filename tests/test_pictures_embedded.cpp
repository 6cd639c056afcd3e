// Pictures inside songs: the rows of LbxPic_Intern, storing and removing through the
// engine, the command line's pictures verb, all read back by mutagen.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "picture/PictureColumns.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modExternPictures.h"
#include "tag/TagEngine.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

namespace {

struct Result {
    int code = -1;
    QString out, err;
};

Result Cli(const QStringList& args) {
    QProcess p;
    p.start(ProgramDir() + QStringLiteral("/quillotune-cli"), QStringList{QStringLiteral("pictures")} + args);
    Result r;
    if (!p.waitForFinished(60000))
        return r;
    r.code = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

QJsonArray Apic(const QString& song) {
    const QString script =
        QString::fromUtf8(ReadAll(SourceDir() + QStringLiteral("/tests/support/mutagen_apic.py")));
    const QString out = RunPython(script, {song});
    return QJsonDocument::fromJson(out.toUtf8()).array();
}

QString Sha1(const QByteArray& b) {
    return QString::fromLatin1(QCryptographicHash::hash(b, QCryptographicHash::Sha1).toHex());
}

QString Cover() {
    return FixtureDir() + QStringLiteral("/cover.jpg");
}

} // namespace

class TestPicturesEmbedded : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    QString song(const QString& name) { return CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), name); }

    void put(const QString& path, int n) {
        TagEngine e;
        for (int i = 1; i <= n; ++i) {
            QString error;
            QVERIFY2(
                StorePictureInSong(e, path, Cover(), QStringLiteral("Pic %1").arg(i), i, 0, false, &error),
                qPrintable(error));
        }
    }

private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        QVERIFY(QFileInfo::exists(Cover()));
    }

    void threePicturesGiveRows01To03() {
        const QString path = song(QStringLiteral("three.mp3"));
        put(path, 3);
        TagEngine e;
        QVERIFY(e.OpenFile(path) != 0);
        DataGrid list;
        DefineEmbeddedPictureColumns(list);
        QCOMPARE(AddEmbeddedPictureRows(list, e, m_dir.path(), QStringLiteral("three.mp3"), true), 3);
        QCOMPARE(list.CellText(1, IPicCol::HasPic), QStringLiteral("01"));
        QCOMPARE(list.CellText(2, IPicCol::HasPic), QStringLiteral("02"));
        QCOMPARE(list.CellText(3, IPicCol::HasPic), QStringLiteral("03"));
        QCOMPARE(list.CellText(2, IPicCol::Description), QStringLiteral("Pic 2"));
        QCOMPARE(list.CellText(2, IPicCol::Mime_Link), QStringLiteral("image/jpeg"));
        QVERIFY(list.CellText(1, IPicCol::HasPicLink).isEmpty());
        QCOMPARE(EmbeddedPictureIndex(list, 3), 3);
        // mutagen sees the same three frames, with type, mime, description and bytes
        const QJsonArray apic = Apic(path);
        QCOMPARE(apic.size(), 3);
        const QString sha = Sha1(ReadAll(Cover()));
        for (int i = 0; i < 3; ++i) {
            const QJsonObject o = apic.at(i).toObject();
            QCOMPARE(o.value(QStringLiteral("type")).toInt(), i + 1);
            QCOMPARE(o.value(QStringLiteral("mime")).toString(), QStringLiteral("image/jpeg"));
            QCOMPARE(o.value(QStringLiteral("desc")).toString(), QStringLiteral("Pic %1").arg(i + 1));
            QCOMPARE(o.value(QStringLiteral("sha1")).toString(), sha);
        }
    }

    void aLinkMimeIsALinkRow() {
        const QString path = song(QStringLiteral("link.mp3"));
        TagEngine e;
        QString error;
        QVERIFY(StorePictureInSong(e, path, QStringLiteral("/pictures/Front Cover.jpg"),
                                   QStringLiteral("Link"), 3, 0, true, &error));
        QVERIFY(e.OpenFile(path) != 0);
        QCOMPARE(e.PictureMime(1), QStringLiteral("-->/pictures/Front Cover.jpg"));
        DataGrid list;
        DefineEmbeddedPictureColumns(list);
        AddEmbeddedPictureRows(list, e, m_dir.path(), QStringLiteral("link.mp3"), true);
        QCOMPARE(list.Rows(), 1);
        QVERIFY(list.CellText(1, IPicCol::HasPic).isEmpty());
        QCOMPARE(list.CellText(1, IPicCol::HasPicLink), QStringLiteral("01"));
        QCOMPARE(list.CellText(1, IPicCol::Mime_Link), QStringLiteral("/pictures/Front Cover.jpg"));
        // the convention survives another program's reading: mutagen keeps the mime
        const QJsonArray apic = Apic(path);
        QCOMPARE(apic.at(0).toObject().value(QStringLiteral("mime")).toString(),
                 QStringLiteral("-->/pictures/Front Cover.jpg"));
        QCOMPARE(apic.at(0).toObject().value(QStringLiteral("size")).toInt(), 0);
    }

    void withPicturesOnlyOffListsEveryAudioFile() {
        QTemporaryDir dir;
        const QString with = CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("a.mp3"));
        CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("b.mp3"));
        QVERIFY(WriteAll(dir.path() + QStringLiteral("/notes.txt"), "no song"));
        TagEngine e;
        QString error;
        QVERIFY(StorePictureInSong(e, with, Cover(), QString(), 3, 0, false, &error));
        const QStringList paths = {with, dir.path() + QStringLiteral("/b.mp3"),
                                   dir.path() + QStringLiteral("/notes.txt"),
                                   QStringLiteral(">>") + dir.path() + QStringLiteral("/b.mp3")};
        DataGrid all;
        DefineEmbeddedPictureColumns(all);
        EmbeddedSearch how;
        how.withPicturesOnly = false;
        SearchEmbeddedPictures(all, e, paths.mid(0, 3), how);
        QCOMPARE(all.Rows(), 2);
        QCOMPARE(all.CellText(2, IPicCol::Filename), QStringLiteral("b.mp3"));
        QVERIFY(all.CellText(2, IPicCol::HasPic).isEmpty());
        QCOMPARE(all.CellText(2, IPicCol::Path), dir.path());
        DataGrid only;
        DefineEmbeddedPictureColumns(only);
        how.withPicturesOnly = true;
        SearchEmbeddedPictures(only, e, paths, how);
        QCOMPARE(only.Rows(), 1);
        QCOMPARE(only.CellText(1, IPicCol::Filename), QStringLiteral("a.mp3"));
    }

    void aSearchCanBeCancelled() {
        QTemporaryDir dir;
        QStringList paths;
        for (int i = 0; i < 5; ++i)
            paths << CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QStringLiteral("s%1.mp3").arg(i));
        DataGrid list;
        DefineEmbeddedPictureColumns(list);
        TagEngine e;
        int seen = 0;
        EmbeddedSearch how;
        how.withPicturesOnly = false;
        how.pump = [&] { ++seen; };
        how.aborted = [&] { return seen > 2; };
        QCOMPARE(SearchEmbeddedPictures(list, e, paths, how), 2);
    }

    void typeThreeSelectsRowFour() {
        // the type names are rows 41 + type of the settings: type 3 is the fourth row
        Settings().Clear();
        while (Settings().Cols() < Ini::Columns)
            Settings().AddColumn(QStringLiteral("C%1").arg(Settings().Cols() + 1), QString());
        for (int r = 0; r < 70; ++r)
            Settings().AddRow({});
        SetSetting(Ini::PictureTypeFirst + 3, Ini::PictureTypeCol, QStringLiteral("Vorderseite"));
        QCOMPARE(PictureTypeName(3), QStringLiteral("Vorderseite"));
        QCOMPARE(Ini::PictureTypeFirst + 3 - Ini::PictureTypeFirst + 1, 4);
        // an empty list falls back to the published names
        QCOMPARE(PictureTypeName(4), QStringLiteral("Cover (back)"));
        QCOMPARE(PictureTypeName(21), QString());
        QCOMPARE(PictureTypeCount(), 21);
        Settings().Clear();
    }

    void progressEveryTenthUpTo200AndEveryFiftiethFrom201() {
        // embedded search: the first file always
        QVERIFY(ProgressDue(1, 200));
        QVERIFY(ProgressDue(10, 200));
        QVERIFY(!ProgressDue(15, 200));
        QVERIFY(!ProgressDue(10, 201));
        QVERIFY(ProgressDue(50, 201));
        QVERIFY(ProgressDue(1, 201));
        // picture search on disk
        QVERIFY(PictureSearchProgressDue(10, 200));
        QVERIFY(PictureSearchProgressDue(200, 200));
        QVERIFY(!PictureSearchProgressDue(10, 201));
        QVERIFY(PictureSearchProgressDue(50, 201));
        QVERIFY(!PictureSearchProgressDue(1, 200));
    }

    void mimeAndNames() {
        QCOMPARE(PictureMimeForFile(QStringLiteral("/a/COVER.JPG")), QStringLiteral("image/jpeg"));
        QCOMPARE(PictureMimeForFile(QStringLiteral("/a/b.png")), QStringLiteral("image/png"));
        QCOMPARE(PictureExtensionOfMime(QStringLiteral("image/png")), QStringLiteral("png"));
        QCOMPARE(EmbeddedPictureFileName(QStringLiteral("Song"), 1, QString(), QStringLiteral("image/jpeg")),
                 QStringLiteral("Song_01.jpg"));
        QCOMPARE(EmbeddedPictureFileName(QStringLiteral("Song"), 12, QStringLiteral("cover/png"),
                                         QStringLiteral("image/jpeg")),
                 QStringLiteral("Song_12.png"));
        QCOMPARE(EmbeddedPictureFileName(QStringLiteral("S"), 2, QStringLiteral("a/b/c"), QString()),
                 QStringLiteral("S_02.jpg"));
    }

    void replaceAndRemove() {
        const QString path = song(QStringLiteral("replace.mp3"));
        put(path, 2);
        TagEngine e;
        QString error;
        // replacing index 1 keeps the count, and the new description arrives
        QVERIFY(StorePictureInSong(e, path, Cover(), QStringLiteral("New"), 4, 1, false, &error));
        QVERIFY(e.OpenFile(path) != 0);
        QCOMPARE(e.PictureCount(), 2);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("New"));
        QCOMPARE(e.PictureType(1), 4);
        QVERIFY(RemoveSongPictures(e, path, 1, &error));
        QCOMPARE(Apic(path).size(), 1);
        QCOMPARE(Apic(path).at(0).toObject().value(QStringLiteral("desc")).toString(),
                 QStringLiteral("Pic 2"));
        QVERIFY(RemoveSongPictures(e, path, 0, &error));
        QCOMPARE(Apic(path).size(), 0);
        // the rows of the song follow: one empty row when songs without pictures show
        DataGrid list;
        DefineEmbeddedPictureColumns(list);
        QCOMPARE(RefreshSongRows(list, e, m_dir.path(), QStringLiteral("replace.mp3"), false), 1);
        QVERIFY(list.CellText(1, IPicCol::HasPic).isEmpty());
        QCOMPARE(RefreshSongRows(list, e, m_dir.path(), QStringLiteral("replace.mp3"), true), 0);
        QCOMPARE(list.Rows(), 0);
        // a picture that can't be read fails with the engine's text, the song unchanged
        const QByteArray before = ReadAll(path);
        QVERIFY(!StorePictureInSong(e, path, m_dir.path() + QStringLiteral("/none.jpg"), QString(), 3, 0,
                                    false, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(ReadAll(path), before);
    }

    void commandLineListsAddsExportsAndRemoves() {
        const QString path = song(QStringLiteral("cli.mp3"));
        Result r = Cli({QStringLiteral("--add"), path, Cover(), QStringLiteral("--type"), QStringLiteral("4"),
                        QStringLiteral("--description"), QStringLiteral("Rückseite")});
        QCOMPARE(r.code, 0);
        r = Cli(
            {QStringLiteral("--add"), path, QStringLiteral("/elsewhere/x.png"), QStringLiteral("--link")});
        QCOMPARE(r.code, 0);
        const QJsonArray apic = Apic(path);
        QCOMPARE(apic.size(), 2);
        QCOMPARE(apic.at(0).toObject().value(QStringLiteral("type")).toInt(), 4);
        QCOMPARE(apic.at(0).toObject().value(QStringLiteral("desc")).toString(), QStringLiteral("Rückseite"));
        QCOMPARE(apic.at(0).toObject().value(QStringLiteral("sha1")).toString(), Sha1(ReadAll(Cover())));
        QCOMPARE(apic.at(1).toObject().value(QStringLiteral("mime")).toString(),
                 QStringLiteral("-->/elsewhere/x.png"));
        QCOMPARE(apic.at(1).toObject().value(QStringLiteral("type")).toInt(), 3);

        r = Cli({path, QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonArray pics = QJsonDocument::fromJson(r.out.toUtf8())
                                    .array()
                                    .at(0)
                                    .toObject()
                                    .value(QStringLiteral("pictures"))
                                    .toArray();
        QCOMPARE(pics.size(), 2);
        const QJsonObject first = pics.at(0).toObject();
        QCOMPARE(first.value(QStringLiteral("index")).toInt(), 1);
        QCOMPARE(first.value(QStringLiteral("type")).toInt(), 4);
        QCOMPARE(first.value(QStringLiteral("mime")).toString(), QStringLiteral("image/jpeg"));
        QCOMPARE(first.value(QStringLiteral("size")).toInt(), int(ReadAll(Cover()).size()));
        QVERIFY(first.value(QStringLiteral("dimensions")).toString().contains(u'x'));
        QCOMPARE(pics.at(1).toObject().value(QStringLiteral("link")).toString(),
                 QStringLiteral("/elsewhere/x.png"));

        QTemporaryDir out;
        r = Cli({path, QStringLiteral("--export"), out.path()});
        QCOMPARE(r.code, 0);
        QCOMPARE(QDir(out.path()).entryList(QDir::Files), QStringList{QStringLiteral("cli_01.jpg")});
        QCOMPARE(ReadAll(out.path() + QStringLiteral("/cli_01.jpg")), ReadAll(Cover()));

        r = Cli({QStringLiteral("--remove"), path, QStringLiteral("3")});
        QCOMPARE(r.code, 1);
        r = Cli({QStringLiteral("--remove"), path, QStringLiteral("1")});
        QCOMPARE(r.code, 0);
        QCOMPARE(Apic(path).size(), 1);
        r = Cli({QStringLiteral("--remove"), path, QStringLiteral("all")});
        QCOMPARE(r.code, 0);
        QCOMPARE(Apic(path).size(), 0);
        // a text under a picture's name is refused
        QVERIFY(WriteAll(m_dir.path() + QStringLiteral("/fake.jpg"), "just text"));
        r = Cli({QStringLiteral("--add"), path, m_dir.path() + QStringLiteral("/fake.jpg")});
        QCOMPARE(r.code, 1);
        QCOMPARE(Apic(path).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestPicturesEmbedded)
#include "test_pictures_embedded.moc"
