// The folder scan: walk, one row of 71 cells per audio file, checks, progress, abort,
// attach, the re-read of the list.
#include "ProgramFolder.h"
#include "TestPaths.h"
#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modRefresh.h"
#include "list/modScan.h"
#include "platform/FolderWalk.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool CopyFixture(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    return QFile::copy(FixtureDir() + "/" + fixture, target) &&
           QFile::setPermissions(target,
                                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}

void Touch(const QString& path, const QByteArray& data = "text") {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QStringList RowNames(const DataGrid& g) {
    QStringList n;
    for (int r = 1; r <= g.Rows(); ++r)
        n << g.CellText(r, InCol::FileName);
    return n;
}

} // namespace

class TestScan : public QObject {
    Q_OBJECT
    ProgramFolder pf;
    TagEngine engine;
    DataGrid list;

    ScanResult Scan(const QString& dir, ScanOptions o = {}, const ScanHooks& hooks = {}) {
        if (o.numberDigits == 0)
            o.numberDigits = 2;
        return ScanFolder(list, dir, o, engine, hooks);
    }

private slots:
    void initTestCase() {
        QVERIFY(pf.WriteStandard());
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        EnsureInputColumns(list);
        QCOMPARE(list.Cols(), InCol::Count);
    }
    void init() {
        list.Clear();
        State() = AppState();
    }

    // A tagged MP3, FLAC and WMA, a WAV, a text file: every cell of every row.
    void fixtureFolderCellByCell() {
        QTemporaryDir tmp;
        const QString d = tmp.path();
        const QString mp3 = d + "/01 - Artist - Song.mp3";
        QVERIFY(CopyFixture("tone.mp3", mp3));
        QCOMPARE(engine.OpenFile(mp3), 1);
        engine.SetV1Title("T1");
        engine.SetV1Artist("A1");
        engine.SetV1Album("Al1");
        engine.SetV1Year("1999");
        engine.SetV1Comment("C1");
        engine.SetV1Track("3");
        engine.SetV1Genre("Rock");
        QVERIFY(engine.SaveV1(mp3));
        QCOMPARE(engine.OpenFile(mp3), 1);
        engine.SetV2Title("Titel ü");
        engine.SetV2Artist("Künstler");
        engine.SetV2Album("Album2");
        engine.SetV2Year("2001");
        engine.SetV2Track("4");
        engine.SetV2Genre("Pop");
        engine.SetV2Composer("Comp");
        engine.SetV2Conductor("Cond");
        engine.SetV2Orchestra("Orch");
        engine.SetV2OrigArtist("Orig");
        engine.SetV2Copyright("Copy");
        engine.SetV2EncodedBy("Enc");
        engine.SetV2PublisherUrl("http://pub");
        engine.SetV2AudFileUrl("http://aud");
        engine.SetComment(1, "eng", "", "Kommentar");
        engine.SetLyric(1, "eng", "lrc", "[00:01.00]la");
        engine.SetLyric(2, "eng", "", "two");
        engine.SetLyric(3, "deu", "", "three");
        engine.SetUserFrame(0, "QLT", "QLT****");
        engine.SetUserFrame(2, "MOD", "MOODhappy");
        QVERIFY(engine.AddPicture(FixtureDir() + "/cover.jpg", "front", 1));
        QVERIFY(engine.SaveV2(mp3));
        QCOMPARE(engine.OpenFile(mp3), 1);
        engine.SetApeTitle("ApeT");
        engine.SetApeArtist("ApeA");
        engine.SetApeAlbum("ApeAl");
        engine.SetApeYear("2002");
        engine.SetApeTrack("5");
        engine.SetApeGenre("Jazz");
        engine.SetApeComment("ApeC");
        engine.SetApeCopyright("ApeCopy");
        QVERIFY(engine.SaveApe(mp3));
        QCOMPARE(engine.OpenFile(mp3), 1);
        engine.SetLyricsTitle("LyT");
        engine.SetLyricsArtist("LyA");
        engine.SetLyricsAlbum("LyAl");
        engine.SetLyricsGenre("LyG");
        engine.SetLyricsInfo("LyI");
        engine.SetLyricsAuthor("LyAu");
        engine.SetLyricsLink("LyL");
        engine.SetLyricsLyric("LyLy");
        QVERIFY(engine.SaveLyrics(mp3));

        const QString flac = d + "/Band-Tune.flac";
        QVERIFY(CopyFixture("tone.flac", flac));
        QCOMPARE(engine.OpenFile(flac), 4);
        const QStringList flacValues = {"FG", "2003", "6",  "FA",  "FT",  "FAl", "FC",
                                        "FD", "FP",   "FV", "FCo", "FCt", "FL",  "FLo"};
        engine.SetFlacGenre(flacValues[0]);
        engine.SetFlacYear(flacValues[1]);
        engine.SetFlacTrack(flacValues[2]);
        engine.SetFlacArtist(flacValues[3]);
        engine.SetFlacTitle(flacValues[4]);
        engine.SetFlacAlbum(flacValues[5]);
        engine.SetFlacComment(flacValues[6]);
        engine.SetFlacDescription(flacValues[7]);
        engine.SetFlacPerformer(flacValues[8]);
        engine.SetFlacVendor(flacValues[9]);
        engine.SetFlacCopyright(flacValues[10]);
        engine.SetFlacContact(flacValues[11]);
        engine.SetFlacLicense(flacValues[12]);
        engine.SetFlacLocation(flacValues[13]);
        QVERIFY(engine.SaveFlac(flac));
        QCOMPARE(engine.OpenFile(flac), 4);
        const QStringList flacRead = {engine.FlacGenre(),   engine.FlacYear(),        engine.FlacTrack(),
                                      engine.FlacArtist(),  engine.FlacTitle(),       engine.FlacAlbum(),
                                      engine.FlacComment(), engine.FlacDescription(), engine.FlacPerformer(),
                                      engine.FlacVendor(),  engine.FlacCopyright(),   engine.FlacContact(),
                                      engine.FlacLicense(), engine.FlacLocation()};

        const QString wma = d + "/Song.wma";
        QVERIFY(CopyFixture("tone.wma", wma));
        QCOMPARE(engine.OpenFile(wma), 2);
        engine.SetWmaYear("2004");
        engine.SetWmaGenre("WG");
        engine.SetWmaTitle("WT");
        engine.SetWmaRating("***");
        engine.SetWmaMood("calm");
        QVERIFY(engine.SaveWma(wma));

        QVERIFY(CopyFixture("tone.wav", d + "/sub/x.wav"));
        Touch(d + "/readme.txt");

        ScanOptions o;
        o.subFolders = true;
        const ScanResult res = Scan(d, o);
        QCOMPARE(res.entries, 5);
        QCOMPARE(res.rowsAdded, 4);
        QCOMPARE(res.failures, 1);
        QVERIFY(!res.aborted);
        // Order "7,3": folder, then name.
        QCOMPARE(RowNames(list),
                 QStringList({"01 - Artist - Song.mp3", "Band-Tune.flac", "Song.wma", "x.wav"}));
        QCOMPARE(list.CurRow(), 1);

        const QLocale loc;
        auto expectCommon = [&](int row, const QString& path, const QString& type) {
            QVERIFY(engine.OpenFile(path) > 0);
            const QFileInfo fi(path);
            QCOMPARE(list.CellText(row, InCol::FTag), QString());
            QCOMPARE(list.CellText(row, InCol::FileName), fi.fileName());
            QCOMPARE(list.CellText(row, InCol::Type), type);
            QCOMPARE(list.CellText(row, InCol::Path), fi.path());
            const qint64 secs = qRound64(engine.DurationSeconds());
            QCOMPARE(list.CellText(row, InCol::DurationS), loc.toString(secs));
            QCOMPARE(list.CellText(row, InCol::DurationMS), QString("00:%1").arg(secs, 2, 10, QChar('0')));
            QCOMPARE(list.CellText(row, InCol::SizeByte), QString::number(fi.size()));
            QCOMPARE(list.CellText(row, InCol::SizeMByte), loc.toString(fi.size() / 1024.0 / 1024.0, 'f', 3));
            QCOMPARE(list.CellText(row, InCol::Bitrate), QString::number(engine.Bitrate()));
            QCOMPARE(list.CellText(row, InCol::Frequency), QString::number(engine.Frequency()));
            QCOMPARE(list.CellText(row, InCol::DateTime), fi.lastModified().toString("dd.MM.yyyy"));
        };

        // MP3 with every set.
        expectCommon(1, mp3, "MP3");
        QCOMPARE(list.CellText(1, InCol::Artist), QString("Artist"));
        QCOMPARE(list.CellText(1, InCol::Title), QString("Song"));
        QCOMPARE(list.CellText(1, InCol::HasTag), QString("id3v%1, id3v%2, ape%3, lyrics%4")
                                                      .arg(engine.V1Version(), engine.V2Version(),
                                                           engine.ApeVersion(), engine.LyricsVersion()));
        QVERIFY(list.CellText(1, InCol::HasTag).startsWith("id3v1.1, id3v2."));
        const QStringList v1 = {"Rock", "1999", "3", "A1", "T1", "Al1", "C1"};
        for (int i = 0; i < 7; ++i)
            QCOMPARE(list.CellText(1, InCol::V1First + i), v1[i]);
        const QStringList v2 = {"Pop",       "2001",       "4",          "Künstler", "Titel ü", "Album2",
                                "Kommentar", "Comp",       "Cond",       "Orch",     "Orig",    "Copy",
                                "Enc",       "http://pub", "http://aud", "3 [Lrc]",  "1"};
        for (int i = 0; i < v2.size(); ++i)
            QCOMPARE(list.CellText(1, InCol::V2First + i), v2[i]);
        const QStringList ape = {"Jazz", "2002", "5", "ApeA", "ApeT", "ApeAl", "ApeC", "ApeCopy"};
        for (int i = 0; i < 8; ++i)
            QCOMPARE(list.CellText(1, InCol::ApeFirst + i), ape[i]);
        const QStringList ly = {"LyG", "LyA", "LyT", "LyAl", "LyI", "LyAu", "LyL", "LyLy"};
        for (int i = 0; i < 8; ++i)
            QCOMPARE(list.CellText(1, InCol::LyricsFirst + i), ly[i]);
        for (int c = InCol::TypFirst; c <= InCol::TypLast; ++c)
            QCOMPARE(list.CellText(1, c), QString());
        QCOMPARE(list.CellText(1, InCol::Rating), QString("****"));
        QCOMPARE(list.CellText(1, InCol::Mood), QString("happy"));
        QCOMPARE(list.CellText(1, InCol::No), QString("1"));

        // FLAC: typical set in 55 to 68.
        expectCommon(2, flac, "FLAC");
        QCOMPARE(list.CellText(2, InCol::Artist), QString("Band"));
        QCOMPARE(list.CellText(2, InCol::Title), QString("Tune"));
        for (int i = 0; i < 14; ++i)
            QCOMPARE(list.CellText(2, InCol::TypFirst + i), flacRead[i]);
        for (int c = InCol::V2First; c <= InCol::LyricsLast; ++c)
            QCOMPARE(list.CellText(2, c), QString());

        // WMA: year and genre crossed, rating and mood from the WMA set.
        expectCommon(3, wma, "WMA");
        QCOMPARE(list.CellText(3, InCol::Artist), QString("Song"));
        QCOMPARE(list.CellText(3, InCol::Title), QString());
        QCOMPARE(list.CellText(3, InCol::TagTypGenre), QString("2004"));
        QCOMPARE(list.CellText(3, InCol::TagTypYear), QString("WG"));
        QCOMPARE(list.CellText(3, InCol::TagTypTitle), QString("WT"));
        QCOMPARE(list.CellText(3, InCol::Rating), QString("***"));
        QCOMPARE(list.CellText(3, InCol::Mood), QString("calm"));
        QCOMPARE(list.CellText(3, InCol::HasTag), QString());

        expectCommon(4, d + "/sub/x.wav", "WAV");
        QCOMPARE(list.CellText(4, InCol::Path), d + "/sub");
        // The fixture's INFO list names the encoding program; nothing else is tagged.
        QCOMPARE(list.CellText(4, InCol::HasTag), QString("riff info"));
        QCOMPARE(list.CellText(4, InCol::TagTypVendor), QString("Lavf59.27.100"));
        for (int c = InCol::HasTag + 1; c <= InCol::Mood; ++c)
            QCOMPARE(list.CellText(4, c), c == InCol::TagTypVendor ? QString("Lavf59.27.100") : QString());

        // Totals in the footers and the value lists.
        QCOMPARE(list.FooterText(InCol::FileName), QString("4"));
        QCOMPARE(list.FooterText(InCol::TagAnzLyrics), QString("3 [1]"));
        QCOMPARE(res.ratings, QStringList({"***", "****"}));
        QCOMPARE(res.moods, QStringList({"calm", "happy"}));
    }

    void durationFormats() {
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        Scan(tmp.path());
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(list.Rows(), 1);
        QVERIFY(list.CellText(1, InCol::SizeMByte).contains(','));
        QCOMPARE(list.CellText(1, InCol::SizeMByte), QString("0,004"));
    }

    void walkFindsFoldersAndMasks() {
        QTemporaryDir tmp;
        const QString d = tmp.path();
        Touch(d + "/a.MP3");
        Touch(d + "/b.ogg");
        Touch(d + "/sub/c.mp3");
        Touch(d + "/System Volume/d.mp3");
        Touch(d + "/RECYCLER/e.mp3");
        Touch(d + "/mysystemfile.mp3");
        Touch(d + "/.hidden/f.mp3");
        QStringList l;
        int count = 0;
        QCOMPARE(FindFiles(d, "*", l, false, count), 3);
        QCOMPARE(count, 3);
        QCOMPARE(l, QStringList({d + "/a.MP3", d + "/b.ogg", ">>" + d + "/sub"}));
        l.clear();
        count = 5;
        QCOMPARE(FindFiles(d + "/", ".mp3", l, true, count), 2);
        QCOMPARE(count, 7);
        QCOMPARE(l, QStringList({d + "/a.MP3", d + "/sub/c.mp3"}));
    }

    void nonRecursiveFolderEntriesAreSkipped() {
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/sub/b.mp3"));
        const ScanResult r = Scan(tmp.path());
        QCOMPARE(r.entries, 2);
        QCOMPARE(r.folders, 1);
        QCOMPARE(r.rowsAdded, 1);
        QCOMPARE(r.failures, 0);
        QCOMPARE(RowNames(list), QStringList({"a.mp3"}));
    }

    void symlinkLoopEnds() {
        QTemporaryDir tmp;
        const QString d = tmp.path();
        QVERIFY(CopyFixture("tone.mp3", d + "/a/b/song.mp3"));
        QVERIFY(QFile::link(d + "/a", d + "/a/b/loop"));
        QVERIFY(QFile::link(d + "/a/b", d + "/a/again"));
        QVERIFY(QFile::link(d + "/nowhere", d + "/a/dangling.mp3"));
        QStringList l;
        int count = 0;
        FindFiles(d, "*", l, true, count);
        QCOMPARE(l.filter("song.mp3").size(), 1);
        ScanOptions o;
        o.subFolders = true;
        const ScanResult r = Scan(d, o);
        QCOMPARE(r.rowsAdded, 1);
        QCOMPARE(r.failures, 1); // the dangling link
    }

    void unreadableFolderGivesNothing() {
        QTemporaryDir tmp;
        const QString d = tmp.path();
        QStringList l;
        int count = 0;
        QCOMPARE(FindFiles(d + "/does-not-exist", "*", l, true, count), 0);
        QVERIFY(l.isEmpty());
        // With attach the list stays as it was.
        QVERIFY(CopyFixture("tone.mp3", d + "/ok/a.mp3"));
        Scan(d + "/ok");
        ScanOptions o;
        o.attach = true;
        Scan(d + "/does-not-exist", o);
        QCOMPARE(list.Rows(), 1);
        // A folder that can't be read: the walk goes on around it.
        Touch(d + "/open/a.mp3");
        Touch(d + "/closed/b.mp3");
        QVERIFY(QFile::setPermissions(d, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                             QFile::ReadOther | QFile::ExeOther));
        QVERIFY(QFile::setPermissions(d + "/open", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                                       QFile::ReadOther | QFile::ExeOther));
        QVERIFY(QFile::setPermissions(d + "/closed", QFileDevice::Permissions()));
        int found = -1;
        if (::geteuid() == 0) {
            // Root reads every folder: walk in a child that has given up root.
            const pid_t pid = ::fork();
            if (pid == 0) {
                if (::setgid(65534) != 0 || ::setuid(65534) != 0)
                    ::_exit(99);
                QStringList cl;
                int cc = 0;
                FindFiles(d, "*", cl, true, cc);
                ::_exit(cl.filter("/open/a.mp3").size() == 1 ? cc : 98);
            }
            int status = 0;
            ::waitpid(pid, &status, 0);
            found = WIFEXITED(status) ? WEXITSTATUS(status) : -2;
        } else {
            QStringList cl;
            int cc = 0;
            FindFiles(d, "*", cl, true, cc);
            found = cl.filter("/open/a.mp3").size() == 1 ? cc : 98;
        }
        QFile::setPermissions(d + "/closed", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(found, 2); // ok/a.mp3 and open/a.mp3; nothing of closed
    }

    void withoutAttachOldRowsVanish() {
        QTemporaryDir tmp, empty;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        Scan(tmp.path());
        QCOMPARE(list.Rows(), 1);
        const ScanResult r = Scan(empty.path());
        QCOMPARE(r.entries, 0);
        QCOMPARE(list.Rows(), 0);
    }

    void attachMakesDoubles() {
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        Scan(tmp.path());
        ScanOptions o;
        o.attach = true;
        Scan(tmp.path(), o);
        QCOMPARE(RowNames(list), QStringList({"a.mp3", "a.mp3"}));
        QCOMPARE(list.FooterText(InCol::FileName), QString("2"));
    }

    void abortLeavesRowsUnsorted() {
        QTemporaryDir tmp;
        // Walk order (bytes): "B2.mp3", "b.mp3", "c.mp3"; the order "7,3" puts "b.mp3" first.
        for (const char* n : {"b.mp3", "B2.mp3", "c.mp3"})
            QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/" + n));
        Scan(tmp.path());
        QCOMPARE(RowNames(list), QStringList({"b.mp3", "B2.mp3", "c.mp3"}));

        int pumps = 0;
        bool hidden = false;
        ScanHooks h;
        h.pump = [&] { ++pumps; };
        h.setProgress = [&](int i) {
            if (i == 1)
                State().AbortRequested = true; // pressed while the second file is read
        };
        h.hideProgress = [&] { hidden = true; };
        const ScanResult r = Scan(tmp.path(), {}, h);
        QVERIFY(r.aborted);
        QCOMPARE(r.rowsAdded, 2);
        QCOMPARE(RowNames(list), QStringList({"B2.mp3", "b.mp3"}));
        for (int c = 1; c <= list.Cols(); ++c)
            QVERIFY(list.FooterText(c).isEmpty());
        QVERIFY(!State().AbortRequested);
        QVERIFY(!State().ScanRunning);
        QVERIFY(!list.IsLocked());
        QVERIFY(hidden);
        QVERIFY(pumps >= 3);
    }

    void progressTextRates() {
        QVERIFY(ProgressTextDue(0, 5));
        QVERIFY(ProgressTextDue(4, 5));
        QVERIFY(ProgressTextDue(0, 5000));
        QVERIFY(!ProgressTextDue(50, 5000));
        QVERIFY(ProgressTextDue(100, 5000));
        QVERIFY(ProgressTextDue(4050, 5000));
        QVERIFY(!ProgressTextDue(4051, 5000));
        QVERIFY(!ProgressTextDue(4989, 5000));
        QVERIFY(ProgressTextDue(4990, 5000));
        QVERIFY(ProgressTextDue(4999, 5000));

        QTemporaryDir tmp;
        for (int i = 0; i < 3; ++i)
            QVERIFY(CopyFixture("tone.mp3", tmp.path() + QString("/%1.mp3").arg(i)));
        QStringList texts;
        int shownMax = -1;
        ScanHooks h;
        h.showProgress = [&](int max) { shownMax = max; };
        h.progressText = [&](const QString& t) { texts << t; };
        Scan(tmp.path(), {}, h);
        QCOMPARE(shownMax, 3);
        QCOMPARE(texts,
                 QStringList({ScanProgressText(0, 3), ScanProgressText(1, 3), ScanProgressText(2, 3)}));
    }

    void textCheckWithSearchBoxes() {
        QTemporaryDir tmp;
        for (const char* n : {"Abba - Waterloo.mp3", "Queen - Bohemian.mp3", "Abba - Chiquitita.mp3"})
            QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/" + n));
        ScanOptions o;
        o.checkCharacters = true;
        o.artistSearch = "  ABBA ";
        const ScanResult r = Scan(tmp.path(), o);
        QCOMPARE(r.rowsAdded, 2);
        QCOMPARE(r.filtered, 1);
        o.titleSearch = "loo";
        Scan(tmp.path(), o);
        QCOMPARE(RowNames(list), QStringList({"Abba - Waterloo.mp3"}));
        // The re-read takes every file.
        State().UpdateRun = true;
        Scan(tmp.path(), o);
        State().UpdateRun = false;
        QCOMPARE(list.Rows(), 3);
    }

    void checklistAndOrRows() {
        DataGrid chk;
        chk.AddColumn("Find1", "");
        chk.AddColumn("AND", "");
        chk.AddColumn("Find2", "");
        chk.AddRow({"live", "AND", "1999"});
        QVERIFY(PassesChecklist("Band - Live 1999.mp3", chk));
        QVERIFY(!PassesChecklist("Band - Live.mp3", chk));
        chk.Clear();
        chk.AddRow({"live", "OR", "demo"});
        QVERIFY(PassesChecklist("Band - DEMO.mp3", chk));
        QVERIFY(PassesChecklist("Band - live.mp3", chk));
        QVERIFY(!PassesChecklist("Band - Studio.mp3", chk));
        chk.Clear();
        chk.AddRow({"studio", "", ""});
        chk.AddRow({"", "", ""});
        chk.AddRow({"demo", "", ""}); // behind the first empty row: not looked at
        QVERIFY(PassesChecklist("x studio.mp3", chk));
        QVERIFY(!PassesChecklist("x demo.mp3", chk));

        QTemporaryDir tmp;
        for (const char* n : {"a studio.mp3", "b demo.mp3", "c.mp3"})
            QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/" + n));
        ScanOptions o;
        o.checkCharacters = true;
        o.useChecklist = true;
        o.checklist = &chk;
        Scan(tmp.path(), o);
        QCOMPARE(RowNames(list), QStringList({"a studio.mp3"}));
    }

    void updateListRereadsAndDropsMarks() {
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/b.mp3"));
        QVERIFY(CopyFixture("tone.ogg", tmp.path() + "/a.ogg"));
        Scan(tmp.path());
        QCOMPARE(list.Rows(), 2);
        list.SetCellText(1, InCol::FTag, "_#-->");
        QCOMPARE(engine.OpenFile(tmp.path() + "/b.mp3"), 1);
        engine.SetV2Title("New");
        QVERIFY(engine.SaveV2(tmp.path() + "/b.mp3"));
        QFile::remove(tmp.path() + "/a.ogg");
        ScriptedPrompt prompt;
        const ScanResult r = btnTab1_UpdateData(list, engine, prompt);
        QVERIFY(!State().UpdateRun);
        QCOMPARE(r.rowsAdded, 2);
        QCOMPARE(list.Rows(), 2);
        QCOMPARE(list.CellText(1, InCol::FTag), QString());
        QCOMPARE(list.CellText(1, InCol::FileName), QString("a.ogg")); // gone: its row stays, empty data
        QCOMPARE(list.CellText(1, InCol::Type), QString("Datei"));
        QCOMPARE(list.CellText(2, InCol::TagTitle), QString("New"));
        QVERIFY(prompt.shown.empty());

        list.Clear();
        btnTab1_UpdateData(list, engine, prompt);
        QCOMPARE(int(prompt.shown.size()), 1); // the list is empty
    }

    void updateListAbortKeepsTheRowsNotYetRead() {
        QTemporaryDir tmp;
        for (const char* n : {"a.mp3", "b.mp3", "c.mp3", "d.mp3"})
            QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/" + n));
        Scan(tmp.path());
        QCOMPARE(RowNames(list), QStringList({"a.mp3", "b.mp3", "c.mp3", "d.mp3"}));
        for (int r = 1; r <= 4; ++r)
            list.SetCellText(r, InCol::FTag, QStringLiteral("mark %1").arg(r));
        // The first file gets a new title; the abort comes while the third is due.
        QCOMPARE(engine.OpenFile(tmp.path() + "/a.mp3"), 1);
        engine.SetV2Title("Neu");
        QVERIFY(engine.SaveV2(tmp.path() + "/a.mp3"));
        ScanHooks h;
        // Pressed while the second file is read (the pump may also run while a reader
        // thread is still busy with it, so the bar is the moment to count on).
        h.setProgress = [&](int v) {
            if (v == 1)
                State().AbortRequested = true;
        };
        ScriptedPrompt prompt;
        const ScanResult r = btnTab1_UpdateData(list, engine, prompt, h);
        QVERIFY(r.aborted);
        QCOMPARE(r.processed, 2);
        QCOMPARE(list.Rows(), 4);
        // c and d as they were, then a and b read again.
        QCOMPARE(RowNames(list), QStringList({"c.mp3", "d.mp3", "a.mp3", "b.mp3"}));
        QCOMPARE(list.CellText(1, InCol::FTag), QStringLiteral("mark 3"));
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("mark 4"));
        QCOMPARE(list.CellText(3, InCol::FTag), QString());
        QCOMPARE(list.CellText(3, InCol::TagTitle), QStringLiteral("Neu"));
        for (int row = 1; row <= 4; ++row)
            QCOMPARE(list.CellText(row, InCol::No), QString::number(row));
        QVERIFY(!State().AbortRequested);
        QVERIFY(!list.IsLocked());

        // Without an abort the list is that of a fresh read, in the standard order, with
        // the keys a fresh read gives (in reading order, before the sort; behind "|" each
        // key records the file's size and time).
        btnTab1_UpdateData(list, engine, prompt);
        QCOMPARE(RowNames(list), QStringList({"a.mp3", "b.mp3", "c.mp3", "d.mp3"}));
        const QStringList keys = {"3k", "4k", "1k", "2k"};
        for (int row = 1; row <= 4; ++row) {
            QCOMPARE(list.CellText(row, InCol::FTag), QString());
            QCOMPARE(KeyIdentity(list.RowKey(row)), QStringView(keys[row - 1]));
            QVERIFY(!KeyStamp(list.RowKey(row)).isEmpty());
        }
    }

    void valueLists() {
        DataGrid g;
        EnsureInputColumns(g);
        for (const char* v : {"b", "", "a", "b"}) {
            QStringList c(InCol::Count);
            c[InCol::Rating - 1] = v;
            c[InCol::Mood - 1] = QString(v).toUpper();
            g.AddRow(c);
        }
        QStringList r, m;
        RebuildValueLists(g, r, m);
        QCOMPARE(r, QStringList({"a", "b"}));
        QCOMPARE(m, QStringList({"A", "B"}));
    }

    void folderTreeListing() {
        QTemporaryDir tmp;
        const QString d = tmp.path();
        QDir(d).mkpath("beta");
        QDir(d).mkpath("Alpha/x");
        QDir(d).mkpath("gamma");
        Touch(d + "/file.mp3");
        QCOMPARE(ListSubfolders(d), std::vector<QString>({"Alpha", "beta", "gamma"}));
        QVERIFY(HasSubfolder(d + "/Alpha"));
        QVERIFY(!HasSubfolder(d + "/beta"));
        QVERIFY(FileDateText(d + "/file.mp3").contains(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4}$")));
        QVERIFY(FileDateText(d + "/none").isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"
