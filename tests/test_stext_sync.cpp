// How rows follow a song (arm, one row per tick, a row without a time ends the following,
// a seek), the time a click stamps, the time line, and the two searches of the editor
// (kinds of files, subfolders, adding, paths with "system" or "recycler" passed over, only
// songs whose first user frame is "lrc").
#include "TagTestUtil.h"
#include "core/DataGrid.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"
#include "text/modSTextSync.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace SText;

namespace {
void Load(DataGrid& g, const QString& text) {
    DefineSTextColumns(g);
    ReadSTextText(g, text, QString(), 5);
}
} // namespace

class TestSTextSync : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    void armAtFirstStamp() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\n[00:02.00]b\r\n"));
        qint32 next = 0;
        QVERIFY(ArmSync(g, next));
        QCOMPARE(g.CurRow(), 0); // a first stamp at row 1
        QCOMPARE(next, 1000);
        Load(g, QStringLiteral("x\r\ny\r\n"));
        next = 0;
        QVERIFY(!ArmSync(g, next));
        QCOMPARE(next, 0);
    }

    void oneRowPerTick() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\n[00:02.00]b\r\n[00:02.00]c\r\nd\r\n[00:05.00]e\r\n"));
        qint32 next = 0;
        QVERIFY(ArmSync(g, next));
        SyncStep s = SyncTick(g, 900, next);
        QVERIFY(!s.moved && !s.ended);
        QCOMPARE(g.CurRow(), 0);
        s = SyncTick(g, 1000, next);
        QVERIFY(s.moved);
        QCOMPARE(g.CurRow(), 1);
        QCOMPARE(next, 2000);
        s = SyncTick(g, 5000, next); // far ahead: still one row
        QCOMPARE(g.CurRow(), 2);
        QVERIFY(!s.ended);
        s = SyncTick(g, 5000, next); // the same stamp: one tick later
        QCOMPARE(g.CurRow(), 3);
        QVERIFY(s.ended); // row 4 has no time: the following ends here
        QCOMPARE(next, 0);
        s = SyncTick(g, 6000, next);
        QVERIFY(!s.moved);
        QCOMPARE(g.CurRow(), 3);
    }

    void endsAtTheLastRow() {
        DataGrid g;
        DefineSTextColumns(g);
        ReadSTextText(g, QStringLiteral("[00:01.00]a\r\n[00:02.00]b\r\n"), QString(), 0);
        qint32 next = 0;
        QVERIFY(ArmSync(g, next));
        SyncTick(g, 1000, next);
        const SyncStep s = SyncTick(g, 2000, next);
        QCOMPARE(g.CurRow(), 2);
        QVERIFY(s.ended);
    }

    void seek() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\n[00:02.00]b\r\n[00:06.00]c\r\n[00:08.00]d\r\n"));
        qint32 next = 0;
        QVERIFY(SeekSync(g, 5000, next));
        QCOMPARE(next, 6000);
        QCOMPARE(g.CurRow(), 2);
        QVERIFY(SeekSync(g, 0, next)); // back to the start: the first stamp
        QCOMPARE(next, 1000);
        QCOMPARE(g.CurRow(), 0);
        QVERIFY(!SeekSync(g, 9000, next)); // beyond the last stamp
        QCOMPARE(next, 0);
    }

    void clickTimeAndTimeLine() {
        QCOMPARE(ClickStampTime(5000, QString(), QString()), 5000);
        QCOMPARE(ClickStampTime(5000, QStringLiteral("300"), QStringLiteral("100")), 4700); // minus first
        QCOMPARE(ClickStampTime(5000, QString(), QStringLiteral("100")), 5100);
        DataGrid g;
        Load(g, QStringLiteral("a\r\n"));
        StampAt(g, 1, 2500);
        QCOMPARE(g.CellText(1, ColSeconds), QStringLiteral("2")); // half to even
        QCOMPARE(g.CellText(1, ColTimeMSec), QStringLiteral("00002500"));
        StampAt(g, 1, 0);
        QVERIFY(!RowHasTime(g, 1));
        QCOMPARE(STextTimeLine(185000, 62000), QStringLiteral("03:05 / 01:02 - 062 / 02:03"));
        QCOMPARE(STextTimeLineLoaded(185000), QStringLiteral("03:05 / 00:00 - 000 / 00:00"));
        QCOMPARE(STextTimeLineIdle(), QStringLiteral("00:00 / 00:00 / 00:00"));
    }

    void findTextFiles() {
        const QString root = m_dir.filePath(QStringLiteral("texts"));
        for (const char* d : {"sub", "System32", "RECYCLER"})
            QVERIFY(QDir().mkpath(root + QLatin1Char('/') + QLatin1String(d)));
        for (const char* f : {"a.txt", "b.LRC", "c.mp3", "sub/d.lrc", "System32/e.txt", "RECYCLER/f.lrc"})
            QVERIFY(tagtest::WriteAll(root + QLatin1Char('/') + QLatin1String(f), "x"));
        DataGrid g;
        DefineTxtLrcColumns(g, true);
        STextFindOptions o;
        QCOMPARE(FindTxtLrcFiles(g, root, TxtLrcKind::Both, o), 2);
        FinishFindList(g, TxtLrcCol::FileName);
        QCOMPARE(g.CellText(1, TxtLrcCol::FileName), QStringLiteral("a.txt"));
        QCOMPARE(g.CellText(1, TxtLrcCol::Kind), QStringLiteral("txt"));
        QCOMPARE(g.CellText(2, TxtLrcCol::Kind), QStringLiteral("lrc"));
        QCOMPARE(g.FooterText(TxtLrcCol::FileName), QStringLiteral("2"));
        o.subfolders = true;
        QCOMPARE(FindTxtLrcFiles(g, root, TxtLrcKind::Lrc, o),
                 2); // b.LRC and sub/d.lrc; RECYCLER passed over
        QCOMPARE(g.Rows(), 2);
        o.add = true;
        QCOMPARE(FindTxtLrcFiles(g, root, TxtLrcKind::Txt, o), 1); // System32 passed over
        QCOMPARE(g.Rows(), 3);
    }

    void findSongsWithLrc() {
        const QString root = m_dir.filePath(QStringLiteral("songs"));
        QVERIFY(QDir().mkpath(root));
        const QString with =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), root, QStringLiteral("with.mp3"));
        const QString second =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), root, QStringLiteral("second.mp3"));
        tagtest::CopyFixture(QStringLiteral("tone.mp3"), root, QStringLiteral("without.mp3"));
        tagtest::CopyFixture(QStringLiteral("tone.flac"), root, QStringLiteral("other.flac"));
        TagEngine e;
        QCOMPARE(e.OpenFile(with), 1);
        QVERIFY(SetLrcFrame(e, QStringLiteral("[00:01.00]x\r\n")));
        QVERIFY(e.SaveV2(with));
        // an lrc frame behind another user frame (a rating) counts too
        QCOMPARE(e.OpenFile(second), 1);
        e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT3"));
        e.SetUserFrame(0, QStringLiteral("LRC"), QStringLiteral("[00:01.00]y\r\n"));
        QVERIFY(e.SaveV2(second));
        DataGrid g;
        DefineSongWithLrcColumns(g);
        QCOMPARE(FindSongsWithLrc(g, e, root, {}), 2);
        FinishFindList(g, SongLrcCol::FileName);
        QCOMPARE(g.CellText(1, SongLrcCol::FileName), QStringLiteral("second.mp3"));
        QCOMPARE(g.CellText(2, SongLrcCol::FileName), QStringLiteral("with.mp3"));
        QCOMPARE(g.CellText(2, SongLrcCol::Folder), root);
        QCOMPARE(g.CellText(2, SongLrcCol::Mark), QString());
    }
};

QTEST_GUILESS_MAIN(TestSTextSync)
#include "test_stext_sync.moc"
