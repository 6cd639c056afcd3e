// M3U and PLS files: the readers with every quirk of the format rules, the writers byte
// for byte, the relative mode (also after the whole folder moved), ".m3u8", and a
// bounded fuzz of both readers.

#include "InstalledCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/TextCodec.h"
#include "playlist/PlaylistColumns.h"
#include "playlist/modPlaylistFile.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

class TestPlaylistFiles : public QObject {
    Q_OBJECT

    QTemporaryDir tmp;
    QString root; // the temporary folder, standing in for "C:\"

    QString WriteFile(const QString& rel, const QByteArray& bytes) {
        const QString path = root + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            qFatal("cannot write test file");
        return path;
    }
    QByteArray ReadFile(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    // A song of `size` bytes.
    QString Song(const QString& rel, int size = 1000) { return WriteFile(rel, QByteArray(size, 'x')); }
    QByteArray B(const QString& s) { return s.toUtf8(); }
    QString Found() { return Caption(CapStatusFound); }
    QString Missing() { return Caption(CapStatusMissing); }

    // A playlist row taken over from the data list.
    static void AddRow(DataGrid& g, const QString& folder, const QString& name, const QString& seconds,
                       const QString& mark = QString()) {
        QStringList c(PlCol::Count);
        c[PlCol::FTag - 1] = mark;
        c[PlCol::FileName - 1] = name;
        c[PlCol::DurationS - 1] = seconds;
        c[PlCol::PathFile - 1] = folder;
        g.AddRow(c);
    }

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions(kLanguageEnglish));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        root = QDir(tmp.path()).canonicalPath();
    }

    // ---- paths ------------------------------------------------------------------------
    void splitPathAndExtension() {
        QString folder = QStringLiteral("old"), name;
        SplitPath(QStringLiteral("song.mp3"), folder, name);
        QCOMPARE(folder, QString());
        QCOMPARE(name, QStringLiteral("song.mp3"));
        SplitPath(QStringLiteral("/music/a/song.mp3"), folder, name);
        QCOMPARE(folder, QStringLiteral("/music/a"));
        QCOMPARE(name, QStringLiteral("song.mp3"));
        QString base = QStringLiteral("keep"), ext = QStringLiteral("e");
        SplitExtensionKeeping(QStringLiteral("noext"), base, ext);
        QCOMPARE(base, QStringLiteral("keep"));
        QCOMPARE(ext, QStringLiteral("e"));
        SplitExtensionKeeping(QStringLiteral("a.b.mp3"), base, ext);
        QCOMPARE(base, QStringLiteral("a.b"));
        QCOMPARE(ext, QStringLiteral("mp3"));
        QVERIFY(IsM3uPath(QStringLiteral("/x/List.M3U8")));
        QVERIFY(IsM3uPath(QStringLiteral("/x/list.m3u")));
        QVERIFY(IsPlsPath(QStringLiteral("/x/list.PLS")));
        QVERIFY(!IsM3uPath(QStringLiteral("/x/list.m3ux")));
    }

    void linesAndEncodings() {
        QCOMPARE(SplitPlaylistLines(QStringLiteral("a\r\nb\nc")), (QStringList{"a", "b", "c"}));
        QCOMPARE(SplitPlaylistLines(QStringLiteral("a\r\n\r\nb\r\n")), (QStringList{"a", "", "b"}));
        QCOMPARE(DecodeTextFile(QByteArray("\xEF\xBB\xBF"
                                           "B\xC3\xA4r")),
                 QStringLiteral("Bär"));
        QCOMPARE(DecodeTextFile(QByteArray("B\xE4r \x80")), QStringLiteral("Bär €"));
    }

    // ---- M3U reader -------------------------------------------------------------------
    void m3uHeaderAndExtinf() {
        const QString a = Song(QStringLiteral("m1/a.mp3"), 2048);
        const QString pl = WriteFile(QStringLiteral("m1/list.m3u"),
                                     B("#EXTM3U\r\n#EXTINF:214,A title that is never read\r\n" + a + "\r\n"));
        DataGrid g;
        QString title;
        const PlaylistReadResult r = ReadM3u(pl, g, false, &title);
        QVERIFY(r.ok);
        QCOMPARE(g.Rows(), 1);
        QCOMPARE(g.RowCells(1), (QStringList{"", "", Found(), "a.mp3", "", "214", "03:34", "2048", "0,002",
                                             root + "/m1", pl, ""}));
        QCOMPARE(title, Caption(CapPlaylistTitle) + "list.m3u");
        QCOMPARE(g.FooterText(PlCol::FileName), QStringLiteral("1"));
        QCOMPARE(g.FooterText(PlCol::DurationMS), QStringLiteral("03:34"));
        QCOMPARE(g.CurRow(), 1);
    }

    void m3uFirstLineDroppedUnseen() {
        const QString a = Song(QStringLiteral("m2/a.mp3"));
        const QString b = Song(QStringLiteral("m2/b.mp3"));
        const QString pl = WriteFile(QStringLiteral("m2/plain.m3u"), B(a + "\r\n" + b + "\r\n"));
        DataGrid g;
        ReadM3u(pl, g, false);
        QCOMPARE(g.Rows(), 1);
        QCOMPARE(g.CellText(1, PlCol::FileName), QStringLiteral("b.mp3"));
    }

    void m3uExtinfQuirks() {
        const QString pl = WriteFile(QStringLiteral("m3/q.m3u"),
                                     B("#EXTM3U\n"
                                       "#EXTINF:77\n"     // no comma
                                       "a.mp3\n"          //
                                       "#EXTINF:,Title\n" // comma right after the colon
                                       "b.mp3\n"          //
                                       "#EXTINF:10,One\n" // two in a row: the second wins
                                       "#EXTINF:20,Two\n" //
                                       "c.mp3\n"          //
                                       "d.mp3\n"          // no EXTINF before it
                                       "#extinf:5,low\n"  // lower case: a path line
                                       "#EXTINF:3725,x\n" // an hour and more
                                       "e.mp3"));         // last line without a line end
        DataGrid g;
        ReadM3u(pl, g, false);
        QCOMPARE(g.Rows(), 6);
        auto secs = [&](int r) {
            return g.CellText(r, PlCol::DurationS) + u'|' + g.CellText(r, PlCol::DurationMS);
        };
        QCOMPARE(secs(1), QStringLiteral("0|00:00"));
        QCOMPARE(secs(2), QStringLiteral("0|00:00"));
        QCOMPARE(secs(3), QStringLiteral("20|00:20"));
        QCOMPARE(secs(4), QStringLiteral("|"));
        QCOMPARE(g.CellText(5, PlCol::FileName), QStringLiteral("#extinf:5,low"));
        QCOMPARE(g.CellText(5, PlCol::TF), Missing());
        QCOMPARE(secs(6), QStringLiteral("3725|1:02:05"));
        QCOMPARE(g.CellText(6, PlCol::FileName), QStringLiteral("e.mp3"));
    }

    void m3uBlankLineAndRelativeEntry() {
        const QString song = Song(QStringLiteral("L/sub/song.mp3"), 4096);
        const QString pl =
            WriteFile(QStringLiteral("L/rel.m3u"), B("#EXTM3U\r\n\r\nsub/song.mp3\r\nsub/gone.mp3\r\n"));
        DataGrid g;
        ReadM3u(pl, g, false);
        QCOMPARE(g.Rows(), 3);
        // a blank line: empty name, the playlist's folder, missing
        QCOMPARE(g.RowCells(1),
                 (QStringList{"", "", Missing(), "", "", "", "", "", "", root + "/L", pl, ""}));
        // a relative entry: the folder stays relative, the test path is the playlist's folder + entry
        QCOMPARE(g.RowCells(2),
                 (QStringList{"", "", Found(), "song.mp3", "", "", "", "4096", "0,004", "sub", pl, ""}));
        QCOMPARE(g.RowCells(3),
                 (QStringList{"", "", Missing(), "gone.mp3", "", "", "", "", "", "sub", pl, ""}));
        QCOMPARE(g.FooterText(PlCol::FileName), QStringLiteral("3  (2 = 0 Byte)"));
        QCOMPARE(g.FooterText(PlCol::SizeMByte), QStringLiteral("0,00"));
    }

    void m3uWindows1252AndAdd() {
        const QString song = Song(QStringLiteral("W/Bär.mp3"));
        const QString pl = WriteFile(QStringLiteral("W/ansi.m3u"), QByteArray("#EXTM3U\r\nB\xE4r.mp3\r\n"));
        DataGrid g;
        QString title;
        ReadM3u(pl, g, false, &title);
        QCOMPARE(g.CellText(1, PlCol::FileName), QStringLiteral("Bär.mp3"));
        QCOMPARE(g.CellText(1, PlCol::TF), Found());
        // added to the list: the title grows
        ReadM3u(pl, g, true, &title);
        QCOMPARE(g.Rows(), 2);
        QCOMPARE(title, Caption(CapPlaylistTitle) + "ansi.m3u / ansi.m3u");
        QCOMPARE(g.FooterText(PlCol::FileName), QStringLiteral("2"));
    }

    void m3u8ReadAsM3u() {
        const QString song = Song(QStringLiteral("U/Straße.flac"));
        const QString pl =
            WriteFile(QStringLiteral("U/new.m3u8"), B("#EXTM3U\n#EXTINF:61,Straße\n" + song + "\n"));
        DataGrid g;
        ReadM3u(pl, g, false);
        QCOMPARE(g.Rows(), 1);
        QCOMPARE(g.CellText(1, PlCol::FileName), QStringLiteral("Straße.flac"));
        QCOMPARE(g.CellText(1, PlCol::TF), Found());
    }

    void unreadableFile() {
        DataGrid g;
        AddRow(g, QStringLiteral("/x"), QStringLiteral("keep.mp3"), QStringLiteral("1"));
        const PlaylistReadResult r = ReadM3u(root + "/does/not/exist.m3u", g, true);
        QVERIFY(!r.ok);
        QVERIFY(!r.error.isEmpty());
        QCOMPARE(g.Rows(), 1);
    }

    // ---- PLS reader -------------------------------------------------------------------
    void plsReader() {
        const QString a = Song(QStringLiteral("P/a.mp3"), 3000);
        const QString pl = WriteFile(QStringLiteral("P/list.pls"),
                                     B("[Playlist]\r\n"
                                       "File1=" +
                                       a +
                                       "\r\n"
                                       "Title1=sub/ignored.mp3\r\n"
                                       "Length1=214\r\n"
                                       "File2=b.mp3\r\n"       // no Length: no row of its own
                                       "FILE3=sub/c.mp3\r\n"   // relative: existence only, no size
                                       "length3=7\r\n"         //
                                       "Length4=9\r\n"         // completes an empty record
                                       "NumberOfEntries=3\r\n" // reading stops here
                                       "File5=" +
                                       a + "\r\nLength5=1\r\nVersion=2\r\n"));
        Song(QStringLiteral("P/sub/c.mp3"));
        DataGrid g;
        ReadPls(pl, g, false);
        QCOMPARE(g.Rows(), 3);
        QCOMPARE(g.RowCells(1), (QStringList{"", "", Found(), "a.mp3", "", "214", "03:34", "3000", "0,003",
                                             root + "/P", pl, ""}));
        QCOMPARE(g.RowCells(2),
                 (QStringList{"", "", Found(), "c.mp3", "", "7", "00:07", "", "", "sub", pl, ""}));
        QCOMPARE(g.RowCells(3), (QStringList{"", "", "", "", "", "9", "00:09", "", "", "", "", ""}));
    }

    void plsNumberOfEntriesFirst() {
        const QString pl = WriteFile(QStringLiteral("P2/l.pls"),
                                     B("[playlist]\nNumberOfEntries=1\nFile1=/a.mp3\nLength1=3\n"));
        DataGrid g;
        ReadPls(pl, g, false);
        QCOMPARE(g.Rows(), 0);
    }

    void plsFileWithoutEquals() {
        const QString pl = WriteFile(QStringLiteral("P3/l.pls"), B("[playlist]\nFileOne.mp3\nLength1=3\n"));
        DataGrid g;
        ReadPls(pl, g, false);
        QCOMPARE(g.Rows(), 1);
        // the value is the whole line
        QCOMPARE(g.CellText(1, PlCol::FileName), QStringLiteral("FileOne.mp3"));
        QCOMPARE(g.CellText(1, PlCol::PathFile), root + "/P3");
        QCOMPARE(g.CellText(1, PlCol::TF), Missing());
    }

    // ---- M3U writer -------------------------------------------------------------------
    void m3uWriterBytes() {
        const QString song = Song(QStringLiteral("Music/Title of song.mp3"));
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, root + "/Music", QStringLiteral("Title of song.mp3"), QStringLiteral("214"));
        AddRow(g, root + "/Music", QStringLiteral("Missing one.mp3"), QStringLiteral("1.234"));
        g.SetSelected(2, true); // M3U writes every row, highlighted or not
        PlaylistWriteCounts counts;
        const QByteArray bytes = BuildM3u(g, {}, root + "/Lists", counts);
        QCOMPARE(bytes, B("#EXTM3U\r\n#EXTINF:214,Title of song\r\n" + song +
                          "\r\n#EXTINF:1,Missing one\r\n" + root + "/Music/Missing one.mp3\r\n"));
        QCOMPARE(counts.written, 2);
        QCOMPARE(counts.skipped, 1); // the missing song, written all the same
        // the folder goes into DurationS, so that a second save writes 0 seconds
        QCOMPARE(g.CellText(1, PlCol::DurationS), root + "/Lists");
        PlaylistWriteCounts again;
        QVERIFY(BuildM3u(g, {}, root + "/Lists", again).contains("#EXTINF:0,Title of song\r\n"));
    }

    void m3uWriterNameWithoutExtension() {
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, QStringLiteral("/m"), QStringLiteral("first"), QStringLiteral("1"));
        AddRow(g, QStringLiteral("/m"), QStringLiteral("Song.mp3"), QStringLiteral("2"));
        AddRow(g, QStringLiteral("/m"), QStringLiteral("README"), QStringLiteral("3"));
        PlaylistWriteCounts c;
        QCOMPARE(BuildM3u(g, {}, QStringLiteral("/x"), c),
                 QByteArray("#EXTM3U\r\n#EXTINF:1,\r\n/m/first\r\n#EXTINF:2,Song\r\n/m/Song.mp3\r\n"
                            "#EXTINF:3,Song\r\n/m/README\r\n"));
    }

    void m3uWriterMarkFilter() {
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, QStringLiteral("/m"), QStringLiteral("a.mp3"), QStringLiteral("1"), QStringLiteral("x"));
        AddRow(g, QStringLiteral("/m"), QStringLiteral("b.mp3"), QStringLiteral("2"), QStringLiteral("X"));
        PlaylistWriteOptions o;
        o.markFilter = QStringLiteral("x");
        PlaylistWriteCounts c;
        QCOMPARE(BuildM3u(g, o, QStringLiteral("/y"), c),
                 QByteArray("#EXTM3U\r\n#EXTINF:1,a\r\n/m/a.mp3\r\n"));
        QCOMPARE(c.written, 1);
        QCOMPARE(g.CellText(2, PlCol::DurationS), QStringLiteral("2")); // not written, not changed
    }

    void m3uRelativeTextualContainment() {
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, QStringLiteral("/music/sub"), QStringLiteral("a.mp3"), QStringLiteral("1"));
        AddRow(g, QStringLiteral("/music2"), QStringLiteral("b.mp3"), QStringLiteral("2"));
        AddRow(g, QStringLiteral("/other"), QStringLiteral("c.mp3"), QStringLiteral("3"));
        AddRow(g, QStringLiteral("/MUSIC/Up"), QStringLiteral("d.mp3"), QStringLiteral("4"));
        PlaylistWriteOptions o;
        o.relative = true;
        PlaylistWriteCounts c;
        // "/music2" passes the plain text test and loses its first character behind the
        // folder's length; "/other" is left out; the case does not matter.
        QCOMPARE(BuildM3u(g, o, QStringLiteral("/music"), c),
                 QByteArray("#EXTM3U\r\n#EXTINF:1,a\r\nsub/a.mp3\r\n#EXTINF:2,b\r\n/b.mp3\r\n"
                            "#EXTINF:4,d\r\nUp/d.mp3\r\n"));
        QCOMPARE(c.written, 3);
        QCOMPARE(c.skipped, 4); // one left out, three missing on disk
        QCOMPARE(g.CellText(3, PlCol::DurationS), QStringLiteral("3"));
    }

    // ---- PLS writer -------------------------------------------------------------------
    void plsWriterBytes() {
        const QString song = Song(QStringLiteral("Music/Title of song.mp3"));
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, root + "/Music", QStringLiteral("not highlighted.mp3"), QStringLiteral("5"));
        AddRow(g, root + "/Music", QStringLiteral("Title of song.mp3"), QStringLiteral("214"));
        g.SetSelected(2, true);
        PlaylistWriteCounts c;
        QCOMPARE(BuildPls(g, {}, root + "/Lists", c),
                 B("[playlist]\r\nFile1=" + song +
                   "\r\nTitle1=Title of song.mp3\r\nLength1=214\r\nNumberOfEntries=1\r\nVersion=2\r\n"));
        QCOMPARE(c.written, 1);
        QCOMPARE(c.skipped, 0);
        QCOMPARE(g.CellText(2, PlCol::DurationS), QStringLiteral("214"));
    }

    void plsWriterRelativeKeepsFullFile() {
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, QStringLiteral("/music/sub"), QStringLiteral("a.mp3"), QStringLiteral("61"));
        AddRow(g, QStringLiteral("/else"), QStringLiteral("b.mp3"), QStringLiteral("2"));
        g.SelectAll();
        PlaylistWriteOptions o;
        o.relative = true;
        PlaylistWriteCounts c;
        QCOMPARE(BuildPls(g, o, QStringLiteral("/music"), c),
                 QByteArray("[playlist]\r\nFile1=/music/sub/a.mp3\r\nTitle1=sub/a.mp3\r\nLength1=61\r\n"
                            "NumberOfEntries=1\r\nVersion=2\r\n"));
        QCOMPARE(c.written, 1);
        QCOMPARE(c.skipped, 2);
    }

    void writeFileReplacesWhole() {
        const QString path = root + "/wf/out.m3u";
        QDir().mkpath(root + "/wf");
        QVERIFY(WritePlaylistBytes(path, "first\r\n"));
        QVERIFY(WritePlaylistBytes(path, "#EXTM3U\r\n"));
        QCOMPARE(ReadFile(path), QByteArray("#EXTM3U\r\n"));
        QCOMPARE(QDir(root + "/wf").entryList(QDir::Files), QStringList{"out.m3u"}); // no temporary left
        QString error;
        QVERIFY(!WritePlaylistBytes(root + "/no/such/folder/x.m3u", "x", &error));
        QVERIFY(!error.isEmpty());
    }

    // ---- the relative mode keeps working when the whole folder moves ------------------
    void relativeSurvivesMove() {
        const QString before = root + "/Before";
        const QString a = Song(QStringLiteral("Before/Album/01.mp3"), 111);
        const QString b = Song(QStringLiteral("Before/Album/02.mp3"), 222);
        DataGrid g;
        DefinePlaylistColumns(g);
        AddRow(g, before + "/Album", QStringLiteral("01.mp3"), QStringLiteral("60"));
        AddRow(g, before + "/Album", QStringLiteral("02.mp3"), QStringLiteral("70"));
        g.SelectAll();
        PlaylistWriteOptions o;
        o.relative = true;
        PlaylistWriteCounts c1, c2;
        QVERIFY(WritePlaylistBytes(before + "/list.m3u8", BuildM3u(g, o, before, c1)));
        g.SetCellText(1, PlCol::DurationS, QStringLiteral("60"));
        g.SetCellText(2, PlCol::DurationS, QStringLiteral("70"));
        QVERIFY(WritePlaylistBytes(before + "/list.pls", BuildPls(g, o, before, c2)));
        QCOMPARE(c1.skipped, 0);
        QCOMPARE(ReadFile(before + "/list.m3u8"),
                 QByteArray("#EXTM3U\r\n#EXTINF:60,01\r\nAlbum/01.mp3\r\n#EXTINF:70,02\r\nAlbum/02.mp3\r\n"));
        QVERIFY(QDir().rename(before, root + "/After"));
        DataGrid r;
        ReadM3u(root + "/After/list.m3u8", r, false);
        QCOMPARE(r.Rows(), 2);
        for (int i = 1; i <= 2; ++i) {
            QCOMPARE(r.CellText(i, PlCol::TF), Found());
            QCOMPARE(r.CellText(i, PlCol::PathFile), QStringLiteral("Album"));
            QCOMPARE(r.CellText(i, PlCol::PathPlaylist), root + "/After/list.m3u8");
        }
        QCOMPARE(r.CellText(2, PlCol::SizeByte), QStringLiteral("222"));
        // the PLS keeps the full path in its File lines: that one breaks by the move
        DataGrid p;
        ReadPls(root + "/After/list.pls", p, false);
        QCOMPARE(p.Rows(), 2);
        QCOMPARE(p.CellText(1, PlCol::TF), Missing());
    }

    // ---- sums -------------------------------------------------------------------------
    void timeSizeLabel() {
        DataGrid g;
        DefinePlaylistColumns(g);
        QCOMPARE(PlaylistTimeSizeText(g, QString()), QStringLiteral("(0)  00:00 mm:ss / 0,0 Mb"));
        AddRow(g, QStringLiteral("/m"), QStringLiteral("a.mp3"), QStringLiteral("3000"),
               QStringLiteral("Mark"));
        AddRow(g, QStringLiteral("/m"), QStringLiteral("b.mp3"), QStringLiteral("700"));
        g.SetCellText(1, PlCol::SizeByte, QStringLiteral("1048576"));
        g.SelectAll();
        QCOMPARE(PlaylistTimeSizeText(g, QString()), QStringLiteral("(2)  1:01:40 h:mm:ss / 1,00 Mb"));
        QCOMPARE(PlaylistTimeSizeText(g, QStringLiteral("mark")),
                 QStringLiteral("(1)  50:00 mm:ss / 1,00 Mb"));
    }

    // ---- fuzz -------------------------------------------------------------------------
    void fuzzReaders() {
        QRandomGenerator rng(20261123);
        const QList<QByteArray> seeds = {
            "#EXTM3U\r\n#EXTINF:12,a\r\n/x/a.mp3\r\nrel/b.mp3\r\n",
            "[playlist]\r\nFile1=/x/a.mp3\r\nTitle1=a\r\nLength1=3\r\nNumberOfEntries=1\r\nVersion=2\r\n",
            "#EXTINF:\n#EXTINF:,\n\n\r\n=\nfile=\nlength=-99999999999999999999\n"};
        const char pieces[] = "#EXTINF:,=/\\\r\n\x00\xFF\xC3\xA4"
                              "FileLengthNumberOfEntries[playlist]9-.";
        for (int i = 0; i < 1500; ++i) {
            QByteArray b = seeds[int(rng.bounded(seeds.size()))];
            const int edits = int(rng.bounded(12));
            for (int e = 0; e < edits; ++e) {
                const int pos = b.isEmpty() ? 0 : int(rng.bounded(b.size() + 1));
                switch (rng.bounded(3)) {
                case 0:
                    b.insert(pos, pieces[rng.bounded(int(sizeof pieces - 1))]);
                    break;
                case 1:
                    if (!b.isEmpty() && pos < b.size())
                        b.remove(pos, 1 + int(rng.bounded(8)));
                    break;
                default:
                    if (pos < b.size())
                        b[pos] = char(rng.bounded(256));
                }
            }
            if (i % 100 == 0) {
                b = QByteArray(int(rng.bounded(2000)), '\0');
                for (char& ch : b)
                    ch = char(rng.bounded(256));
            }
            DataGrid g;
            DefinePlaylistColumns(g);
            ParseM3u(b, root + "/fuzz/x.m3u", g);
            ParsePls(b, root + "/fuzz/x.pls", g);
            ShowPlaylistSums(g);
            for (int r = 1; r <= g.Rows(); ++r)
                QVERIFY(g.RowCells(r).size() == PlCol::Count);
        }
    }
};

QTEST_GUILESS_MAIN(TestPlaylistFiles)
#include "test_playlist_files.moc"
