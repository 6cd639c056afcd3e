// File names that are no valid UTF-8 (Latin-1 names from old FAT or Windows disks):
// kept byte for byte from the folder walk to the open call, listed, read, written, and
// shown readably with a mark.
#include "ProgramFolder.h"
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "platform/FolderWalk.h"
#include "platform/PosixFile.h"
#include "tag/TagEngine.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tagtest;

namespace {

// The names in a folder as raw bytes.
QList<QByteArray> RawNames(const QString& folder) {
    QList<QByteArray> names;
    DIR* d = ::opendir(QFile::encodeName(folder).constData());
    while (dirent* e = d ? ::readdir(d) : nullptr) {
        if (e->d_name[0] != '.')
            names << QByteArray(e->d_name);
    }
    if (d)
        ::closedir(d);
    std::sort(names.begin(), names.end());
    return names;
}

bool WriteRaw(const QByteArray& path, const QByteArray& data) {
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0)
        return false;
    const bool ok = ::write(fd, data.constData(), size_t(data.size())) == data.size();
    return ::close(fd) == 0 && ok;
}

} // namespace

class TestRawNames : public QObject {
    Q_OBJECT
    ProgramFolder pf;

private slots:
    void initTestCase() { QVERIFY(pf.WriteStandard()); }

    void namesRoundTripByteForByte() {
        QRandomGenerator rng(99);
        for (int round = 0; round < 5000; ++round) {
            QByteArray name;
            const int len = 1 + int(rng.bounded(24));
            for (int i = 0; i < len; ++i) {
                char c = char(rng.bounded(1, 256));
                if (c == '/')
                    c = 'x';
                name += c;
            }
            if (round % 3 == 0)
                name = QStringLiteral("Grüße ✓ 日本").toUtf8() + name;
            const QString text = PosixFile::FromNative(name);
            QCOMPARE(PosixFile::Native(text), name);
            QCOMPARE(PosixFile::HasEscapedBytes(text), QString::fromUtf8(name).toUtf8() != name);
        }
        // Valid UTF-8 is the plain text; an overlong or a surrogate in UTF-8 is escaped.
        QCOMPARE(PosixFile::FromNative("Grüße.mp3"), QStringLiteral("Grüße.mp3"));
        QVERIFY(PosixFile::HasEscapedBytes(PosixFile::FromNative("\xC0\xAF")));
        QVERIFY(PosixFile::HasEscapedBytes(PosixFile::FromNative("\xED\xA0\x80")));
        QCOMPARE(PosixFile::DisplayName(PosixFile::FromNative("Caf\xE9 \x80.mp3")),
                 QStringLiteral("Café €.mp3 (≠UTF-8)"));
        QCOMPARE(PosixFile::DisplayName(QStringLiteral("Café.mp3")), QStringLiteral("Café.mp3"));
    }

    void aLatin1NameIsListedReadWrittenAndKept() {
        QTemporaryDir dir;
        const QByteArray folder = QFile::encodeName(dir.path());
        const QByteArray raw = "M\xFCller - Caf\xE9.mp3";
        QVERIFY(WriteRaw(folder + '/' + raw, ReadAll(FixtureDir() + QStringLiteral("/tone.mp3"))));
        std::vector<FolderEntry> entries;
        QVERIFY(ListFolder(dir.path(), entries));
        QCOMPARE(int(entries.size()), 1);
        QCOMPARE(PosixFile::Native(entries[0].name), raw);

        // The scan lists it.
        DataGrid list;
        EnsureInputColumns(list);
        TagEngine engine;
        ScanOptions o;
        o.numberDigits = 2;
        ScanFolder(list, dir.path(), o, engine);
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, InCol::Type), QStringLiteral("MP3"));
        const QString path = list.CellText(1, InCol::Path) + u'/' + list.CellText(1, InCol::FileName);
        QCOMPARE(PosixFile::Native(path), folder + '/' + raw);
        QVERIFY(
            PosixFile::DisplayName(list.CellText(1, InCol::FileName)).startsWith(QStringLiteral("Müller")));

        // A saved list keeps the name's bytes.
        QVERIFY(list.SaveFile(dir.path() + QStringLiteral("/../raw-names-list.data")));
        DataGrid back;
        QVERIFY(back.LoadFile(dir.path() + QStringLiteral("/../raw-names-list.data")));
        QFile::remove(dir.path() + QStringLiteral("/../raw-names-list.data"));
        QCOMPARE(PosixFile::Native(back.CellText(1, InCol::FileName)), raw);

        // Read and written through the name as the list holds it.
        QCOMPARE(engine.OpenFile(path), 1);
        engine.SetV2Title(QStringLiteral("Titel"));
        QVERIFY2(engine.SaveV2(path), qPrintable(engine.LastError()));
        engine.SetFlacTitle(QStringLiteral("x"));
        engine.SetV1Title(QStringLiteral("v1"));
        QVERIFY(engine.SaveV1(path));
        QCOMPARE(engine.OpenFile(path), 1);
        QCOMPARE(engine.V2Title(), QStringLiteral("Titel"));
        QCOMPARE(engine.V1Title(), QStringLiteral("v1"));
        QCOMPARE(RawNames(dir.path()), QList<QByteArray>{raw});

        // Typical sets go through a temporary copy whose name carries the bytes as well.
        const QByteArray flacRaw = "Stra\xDF"
                                   "e.flac";
        QVERIFY(WriteRaw(folder + '/' + flacRaw, ReadAll(FixtureDir() + QStringLiteral("/tone.flac"))));
        const QString flac = dir.path() + u'/' + PosixFile::FromNative(flacRaw);
        QCOMPARE(engine.OpenFile(flac), 4);
        engine.SetFlacTitle(QString(3000, QLatin1Char('f')));
        QVERIFY2(engine.SaveFlac(flac), qPrintable(engine.LastError()));
        QCOMPARE(engine.OpenFile(flac), 4);
        QCOMPARE(engine.FlacTitle(), QString(3000, QLatin1Char('f')));
        QCOMPARE(RawNames(dir.path()), (QList<QByteArray>{raw, flacRaw}));
        // The command-line tool takes the name from its arguments byte for byte.
        const QByteArray cli = QFile::encodeName(ProgramDir() + QStringLiteral("/quillotune-cli"));
        const QByteArray target = folder + '/' + raw;
        const QByteArray field = "V2Album=Album \xC3\xBC";
        char* argv[] = {const_cast<char*>(cli.constData()), const_cast<char*>("set"),
                        const_cast<char*>(target.constData()), const_cast<char*>(field.constData()), nullptr};
        pid_t child = 0;
        QCOMPARE(::posix_spawn(&child, cli.constData(), nullptr, nullptr, argv, environ), 0);
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(engine.OpenFile(path), 1);
        QCOMPARE(engine.V2Album(), QStringLiteral("Album ü"));
        QCOMPARE(engine.V2Title(), QStringLiteral("Titel"));

        // QTemporaryDir can't spell these names: they go by their bytes.
        for (const QByteArray& n : RawNames(dir.path()))
            ::unlink((folder + '/' + n).constData());
    }
};

QTEST_GUILESS_MAIN(TestRawNames)
#include "test_raw_names.moc"
