// The time-stamped text model: reading the LRC form with its position-bound rules, the time
// forms, the writers for files and for the "lrc" frame of a song (read back with the engine
// and with mutagen), and the commands that change times and rows.
#include "TagTestUtil.h"
#include "TestPaths.h"
#include "core/DataGrid.h"
#include "core/TextCodec.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;
using namespace SText;

namespace {

struct Row {
    QString sec, ms, mmss, text;
};

Row At(const DataGrid& g, int row) {
    return {g.CellText(row, ColSeconds), g.CellText(row, ColTimeMSec), g.CellText(row, ColMmss),
            g.CellText(row, ColText)};
}

void Grid(DataGrid& g) {
    DefineSTextColumns(g);
}

void Load(DataGrid& g, const QString& text, int visible = 0) {
    Grid(g);
    ReadSTextText(g, text, QString(), visible);
}

// Reads the TXXX frames of an MP3 with mutagen: "desc<TAB>text" per frame, text with
// line ends shown as \r and \n.
const char kTxxxScript[] = "import sys\n"
                           "from mutagen.id3 import ID3\n"
                           "t = ID3(sys.argv[1])\n"
                           "for f in t.getall('TXXX'):\n"
                           "    print(f.desc + '\\t' + repr(f.text[0]))\n";

} // namespace

class TestSText : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    QString WriteFile(const QString& name, const QByteArray& bytes) {
        const QString path = m_dir.path() + QLatin1Char('/') + name;
        WriteAll(path, bytes);
        return path;
    }

private slots:
    // ---- reading ---------------------------------------------------------------------
    void stampedLine() {
        DataGrid g;
        Load(g, QStringLiteral("[01:02.34]abc\r\n"));
        QCOMPARE(At(g, 1).ms, QStringLiteral("62340"));
        QCOMPARE(At(g, 1).sec, QStringLiteral("62"));
        QCOMPARE(At(g, 1).mmss, QStringLiteral("01:02.34"));
        QCOMPARE(At(g, 1).text, QStringLiteral("abc"));
        QCOMPARE(g.CellText(1, ColRefrain), QString());
    }

    void blankBehindBracketStaysUntilFileWrite() {
        DataGrid g;
        Load(g, QStringLiteral("[01:02.34] abc\r\n"));
        QCOMPARE(At(g, 1).text, QStringLiteral(" abc"));
        QCOMPARE(BuildSTextLrc(g), QStringLiteral("[01:02.34]abc\r\n"));
        QCOMPARE(BuildSTextTxt(g), QStringLiteral("abc\r\n"));
        // the song's frame takes the text untrimmed
        QVERIFY(BuildSTextFrame(g).startsWith(QStringLiteral("[01:02.34] abc\r\n")));
    }

    void twoStampsInALine() {
        DataGrid g;
        Load(g, QStringLiteral("[01:02.34][01:10.00]abc\r\n"));
        QCOMPARE(At(g, 1).ms, QStringLiteral("62340"));
        QCOMPARE(At(g, 1).text, QStringLiteral("[01:10.00]abc"));
    }

    void oneDigitMinuteIsPlain() {
        DataGrid g;
        Load(g, QStringLiteral("[1:02.34]abc\r\n"));
        QCOMPARE(At(g, 1).ms, QString());
        QCOMPARE(At(g, 1).mmss, QString());
        QCOMPARE(At(g, 1).text, QStringLiteral("[1:02.34]abc"));
    }

    void shortStampGivesMinusOne() {
        DataGrid g;
        Load(g, QStringLiteral("[01:02.3\r\n"));
        QCOMPARE(At(g, 1).ms, QStringLiteral("-1"));
        QCOMPARE(At(g, 1).sec, QStringLiteral("0"));
        QCOMPARE(At(g, 1).mmss, QStringLiteral("01:02.3"));
        QCOMPARE(At(g, 1).text, QString());
    }

    void tagsAreTextAndCharacterTenIsSkipped() {
        DataGrid g;
        Load(g, QStringLiteral("[ti:Title]\r\n[offset:500]\r\n[00:01.00]xyz\r\n[00:02.00"
                               "Xabc\r\n[aa:bb.cc]t\r\n"));
        QCOMPARE(At(g, 1).text, QStringLiteral("[ti:Title]"));
        QCOMPARE(At(g, 1).ms, QString());
        QCOMPARE(At(g, 2).text, QStringLiteral("[offset:500]"));
        QCOMPARE(At(g, 3).ms, QStringLiteral("1000")); // no offset applied
        QCOMPARE(At(g, 4).ms, QStringLiteral("2000"));
        QCOMPARE(At(g, 4).text, QStringLiteral("abc")); // character 10 is not looked at
        QCOMPARE(At(g, 5).ms, QStringLiteral("-1"));    // digits that are none: a parse failure
    }

    void lastLineWithoutCrLfIsLost() {
        DataGrid g;
        Load(g, QStringLiteral("a\r\nb"));
        QCOMPARE(At(g, 1).text, QStringLiteral("a"));
        QCOMPARE(LastSTextRow(g), 1);
    }

    void lfOnlyGoesThroughTheLineReader() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\nb\n[00:03.50]c"));
        QCOMPARE(LastSTextRow(g), 3);
        QCOMPARE(At(g, 1).ms, QStringLiteral("1000"));
        QCOMPARE(At(g, 2).text, QStringLiteral("b"));
        QCOMPARE(At(g, 3).text, QStringLiteral("c")); // the line reader keeps the last line
        QCOMPARE(SplitSTextLines(QStringLiteral("x")), QStringList{QStringLiteral("x")});
        QCOMPARE(SplitSTextLines(QString()), QStringList());
        QCOMPARE(SplitSTextLines(QStringLiteral("a\rb\r\nc")), QStringList{QStringLiteral("a\rb")});
        QCOMPARE(SplitSTextLines(QStringLiteral("a\rb\n")),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    }

    void rowsKeepFileOrder() {
        DataGrid g;
        Load(g, QStringLiteral("[00:05.00]late\r\n[00:01.00]early\r\n"));
        QCOMPARE(At(g, 1).text, QStringLiteral("late"));
        QCOMPARE(At(g, 2).text, QStringLiteral("early"));
    }

    void paddingAndKeys() {
        DataGrid g;
        Grid(g);
        ClearSTextList(g);
        QCOMPARE(g.Rows(), 100);
        QCOMPARE(LastSTextRow(g), 0);
        Load(g, QStringLiteral("a\r\nb\r\nc\r\n"), 20);
        QCOMPARE(g.Rows(), 21);
        for (int r = 1; r <= g.Rows(); ++r)
            QCOMPARE(g.RowKey(r), QString::number(r));
        Load(g, QStringLiteral("a\r\nb\r\nc\r\n"), 2); // enough rows: no padding
        QCOMPARE(g.Rows(), 3);
    }

    void fileUtf8AndWindows1252() {
        DataGrid g;
        Grid(g);
        const QString u = WriteFile(QStringLiteral("u.lrc"), "\xEF\xBB\xBF[00:01.00]Gr\xC3\xBC\xC3\x9F"
                                                             "e\r\n");
        STextReadResult r = ReadSTextFile(g, u, 5);
        QVERIFY(r.ok);
        QVERIFY(r.anyTimed);
        QCOMPARE(At(g, 1).text, QStringLiteral("Grüße"));
        QCOMPARE(g.Tag, u);
        const QString w = WriteFile(QStringLiteral("w.txt"), "Gr\xFC\xDF"
                                                             "e \x80\r\n");
        r = ReadSTextFile(g, w, 5);
        QVERIFY(r.ok);
        QVERIFY(!r.anyTimed);
        QCOMPARE(At(g, 1).text, QStringLiteral("Grüße €"));
    }

    void unreadableFileKeepsTheList() {
        DataGrid g;
        Load(g, QStringLiteral("keep\r\n"));
        const STextReadResult r = ReadSTextFile(g, m_dir.path() + QStringLiteral("/none.lrc"), 5);
        QVERIFY(!r.ok);
        QVERIFY(!r.error.isEmpty());
        QCOMPARE(At(g, 1).text, QStringLiteral("keep"));
    }

    void twentyThousandAndTwoLines() {
        QByteArray bytes;
        for (int i = 0; i < 20002; ++i)
            bytes += "line " + QByteArray::number(i) + "\r\n";
        DataGrid g;
        Grid(g);
        QVERIFY(ReadSTextFile(g, WriteFile(QStringLiteral("big.txt"), bytes), 30).ok);
        QCOMPARE(LastSTextRow(g), 20002); // the editor keeps every line of a text
        QCOMPARE(At(g, 20002).text, QStringLiteral("line 20001"));
    }

    void songLink() {
        const QString song =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("linked.mp3"));
        DataGrid g;
        Grid(g);
        STextReadResult r = ReadSTextText(g, song + QStringLiteral("\r\n[00:01.00]a\r\n"), QString(), 5);
        QCOMPARE(r.song, song);
        QVERIFY(!r.songMissing);
        QCOMPARE(At(g, 1).text, song);
        const QString gone = m_dir.path() + QStringLiteral("/gone.MP3");
        r = ReadSTextText(g, gone + QStringLiteral("\r\nx\r\n"), QString(), 5);
        QVERIFY(r.songMissing);
        QCOMPARE(At(g, 1).text, gone + QStringLiteral("_#-/->"));
        r = ReadSTextText(g, QStringLiteral("song.mp3\r\n"), QString(), 5); // not a path
        QVERIFY(r.song.isEmpty());
        QVERIFY(!IsSongLink(QStringLiteral("/a/b.ogg")));
    }

    // ---- time forms ------------------------------------------------------------------
    void timeForms() {
        QCOMPARE(ParseSTextTime(QStringLiteral("01:02.34")), 62340);
        QCOMPARE(ParseSTextTime(QStringLiteral("1:02.34")), -1);
        QCOMPARE(ParseSTextTime(QStringLiteral("01:02.345")), -1);
        QCOMPARE(ParseSTextTime(QStringLiteral("0a:02.34")), -1);
        QCOMPARE(FormatSTextTime(62340), QStringLiteral("01:02.34"));
        QCOMPARE(FormatSTextTime(0), QStringLiteral("00:00.00"));
        QCOMPARE(FormatSTextTime(59999), QStringLiteral("01:00.00")); // never "00:60.00"
        QCOMPARE(FormatSTextTime(1234), QStringLiteral("00:01.23"));
        QCOMPARE(FormatSTextTime(1235), QStringLiteral("00:01.24"));
        QCOMPARE(FormatSTextTime(-500), QStringLiteral("-01:59.50"));
        QCOMPARE(FormatSTextTime(6000000), QStringLiteral("100:00.00")); // too long to read back
        QCOMPARE(ParseSTextTime(FormatSTextTime(6000000)), -1);
        // seconds: banker's rounding on stamps, the integer quotient on load
        QCOMPARE(StampSeconds(62500), 62);
        QCOMPARE(StampSeconds(63500), 64);
        QCOMPARE(StampSeconds(62501), 63);
        DataGrid g;
        Load(g, QStringLiteral("[01:02.99]a\r\n"));
        QCOMPARE(At(g, 1).sec, QStringLiteral("62"));
        g.SetCurRow(1);
        ShiftSTextRows(g, 0, false);
        QCOMPARE(At(g, 1).sec, QStringLiteral("63"));
        QCOMPARE(At(g, 1).ms, QStringLiteral("00062990"));
    }

    // ---- writing ---------------------------------------------------------------------
    void filesAreUtf8WithCrLf() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]  Grüße  \r\nplain  \r\n\r\n[00:02.00]end\r\n"), 10);
        const QString lrc = m_dir.path() + QStringLiteral("/out.lrc");
        QString err;
        g.Tag = QStringLiteral("edited");
        QVERIFY(WriteSTextFile(g, lrc, true, &err));
        QCOMPARE(g.Tag, QString());
        QCOMPARE(ReadAll(lrc), QByteArray("[00:01.00]Gr\xC3\xBC\xC3\x9F"
                                          "e\r\nplain  \r\n\r\n[00:02.00]end\r\n"));
        const QString txt = m_dir.path() + QStringLiteral("/out.txt");
        QVERIFY(WriteSTextFile(g, txt, false, &err));
        QCOMPARE(ReadAll(txt), QByteArray("Gr\xC3\xBC\xC3\x9F"
                                          "e\r\nplain\r\n\r\nend\r\n"));
        QVERIFY(!WriteSTextFile(g, m_dir.path() + QStringLiteral("/no/such/dir.lrc"), true, &err));
        QVERIFY(!err.isEmpty());
        QCOMPARE(STextFileName(QStringLiteral("a"), true), QStringLiteral("a.lrc"));
        QCOMPARE(STextFileName(QStringLiteral("a.LRC"), true), QStringLiteral("a.LRC"));
        QCOMPARE(STextFileName(QStringLiteral("a.lrc"), false), QStringLiteral("a.lrc.txt"));
    }

    void roundTripThroughFile() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\nb\r\n[01:59.99]c\r\n"), 10);
        const QString path = m_dir.path() + QStringLiteral("/rt.lrc");
        QVERIFY(WriteSTextFile(g, path, true, nullptr));
        DataGrid h;
        Grid(h);
        QVERIFY(ReadSTextFile(h, path, 10).ok);
        for (int r = 1; r <= 3; ++r) {
            QCOMPARE(At(h, r).ms, At(g, r).ms);
            QCOMPARE(At(h, r).text, At(g, r).text);
        }
    }

    void songFrameWithEngineAndMutagen() {
        const QString song =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("frame.mp3"));
        {
            TagEngine e;
            QCOMPARE(e.OpenFile(song), 1);
            e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT5")); // a rating frame first
            QVERIFY(e.SaveV2(song));
        }
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00] Grüße\r\nplain\r\n"), 3);
        QCOMPARE(g.Rows(), 4);
        TagEngine e;
        QString err;
        QCOMPARE(WriteSTextInSong(g, e, song, &err), SongWrite::Ok);
        const QString expected = QStringLiteral("[00:01.00] Grüße\r\nplain\r\n\r\n\r\n");
        TagEngine back;
        QCOMPARE(back.OpenFile(song), 1);
        QCOMPARE(back.UserFrameCount(), 2);
        QCOMPARE(back.UserFrameName(1), QStringLiteral("lrc")); // put before the rating
        QCOMPARE(back.UserFrameText(1), expected);
        QCOMPARE(back.UserFrameText(2), QStringLiteral("QLT5"));
        QVERIFY(AudioUnchanged(song, QStringLiteral("tone.mp3"), 1));
        if (!MutagenPython().isEmpty()) {
            const QString out = RunPython(QLatin1String(kTxxxScript), {song});
            QVERIFY2(out.contains(QStringLiteral("lrc\t'[00:01.00] Grüße\\r\\nplain\\r\\n\\r\\n\\r\\n'")),
                     qPrintable(out));
            QVERIFY(out.contains(QStringLiteral("QLT\t'QLT5'")));
        }
        // read back into the list
        DataGrid h;
        Grid(h);
        STextReadResult r;
        QCOMPARE(ReadSTextFromSong(h, back, song, 3, &r), SongLrc::Ok);
        QVERIFY(r.anyTimed);
        QCOMPARE(At(h, 1).ms, QStringLiteral("1000"));
        QCOMPARE(At(h, 1).text, QStringLiteral(" Grüße"));
        QCOMPARE(At(h, 2).text, QStringLiteral("plain"));
        // a second write replaces the frame
        QCOMPARE(WriteSTextInSong(h, e, song, &err), SongWrite::Ok);
        QCOMPARE(back.OpenFile(song), 1);
        QCOMPARE(back.UserFrameCount(), 2);
        // removal keeps the rating
        QCOMPARE(RemoveLrcFromSong(e, song, &err), SongRemove::Ok);
        QCOMPARE(back.OpenFile(song), 1);
        QCOMPARE(back.UserFrameCount(), 1);
        QCOMPARE(back.UserFrameName(1), QStringLiteral("QLT"));
        QCOMPARE(ReadSTextFromSong(h, back, song, 3), SongLrc::NoLrc);
        QCOMPARE(RemoveLrcFromSong(e, song, &err), SongRemove::NoLrc);
        if (!MutagenPython().isEmpty())
            QVERIFY(!RunPython(QLatin1String(kTxxxScript), {song}).contains(QStringLiteral("lrc\t")));
    }

    void frameWrittenByMutagenIsRead() {
        if (MutagenPython().isEmpty())
            QSKIP("python3-mutagen is not installed");
        const QString song = CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("mut.mp3"));
        const QString out = RunPython(
            QStringLiteral("import sys\nfrom mutagen.id3 import ID3, TXXX\n"
                           "from mutagen.id3 import ID3NoHeaderError\n"
                           "try:\n    t = ID3(sys.argv[1])\n"
                           "except ID3NoHeaderError:\n    t = ID3()\n"
                           "t.add(TXXX(encoding=3, desc='LRC', text=['[00:02.50]x\\r\\ny\\r\\n']))\n"
                           "t.save(sys.argv[1])\n"),
            {song});
        QVERIFY2(!out.startsWith(QLatin1String("ERROR")), qPrintable(out));
        DataGrid g;
        Grid(g);
        TagEngine e;
        QCOMPARE(ReadSTextFromSong(g, e, song, 0), SongLrc::Ok);
        QCOMPARE(At(g, 1).ms, QStringLiteral("2500"));
        QCOMPARE(At(g, 2).text, QStringLiteral("y"));
    }

    void songRefusals() {
        DataGrid g;
        Load(g, QStringLiteral("a\r\nb\r\n[00:01.00]last\r\n")); // a stamp on the last row alone
        TagEngine e;
        const QString song =
            CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("refuse.mp3"));
        QCOMPARE(WriteSTextInSong(g, e, song, nullptr), SongWrite::NoStamp);
        Load(g, QStringLiteral("[00:01.00]a\r\nb\r\n"));
        const QString flac =
            CopyFixture(QStringLiteral("tone.flac"), m_dir.path(), QStringLiteral("refuse.flac"));
        QCOMPARE(WriteSTextInSong(g, e, flac, nullptr), SongWrite::NotMp3);
        QCOMPARE(ReadSTextFromSong(g, e, flac, 0), SongLrc::NotMp3);
        QCOMPARE(ReadSTextFromSong(g, e, song, 0), SongLrc::NoLrc);
        QCOMPARE(At(g, 1).text, QStringLiteral("a")); // the list stays
        QCOMPARE(RemoveLrcFromSong(e, flac, nullptr), SongRemove::NotMp3);
    }

    // ---- commands --------------------------------------------------------------------
    void shiftUnstampedRowStampsAtZero() {
        DataGrid g;
        Load(g, QStringLiteral("a\r\n[00:02.00]b\r\n"));
        g.SetCurRow(1);
        ShiftSTextRows(g, 500, true);
        QCOMPARE(At(g, 1).ms, QStringLiteral("00000000"));
        QCOMPARE(At(g, 1).sec, QStringLiteral("0"));
        QCOMPARE(At(g, 1).mmss, QStringLiteral("00:00.00"));
        QCOMPARE(At(g, 2).ms, QStringLiteral("2000")); // ms 0: the rows below stay
    }

    void shiftBelowZero() {
        DataGrid g;
        Load(g, QStringLiteral("[00:00.50]a\r\n"));
        g.SetCurRow(1);
        ShiftSTextRows(g, -1000, false);
        QCOMPARE(RowTime(g, 1), -500);
        QCOMPARE(At(g, 1).ms, QStringLiteral("-00000500"));
        QCOMPARE(At(g, 1).sec, QStringLiteral("0"));
        QCOMPARE(At(g, 1).mmss, QStringLiteral("-01:59.50"));
    }

    void shiftFromCurrentRow() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\n[00:02.00]b\r\nc\r\n[00:04.00]d\r\n"));
        g.SetCurRow(2);
        ShiftSTextRows(g, 200, true);
        QCOMPARE(RowTime(g, 1), 1000);
        QCOMPARE(RowTime(g, 2), 2200);
        QVERIFY(!RowHasTime(g, 3)); // passed over
        QCOMPARE(RowTime(g, 4), 4200);
        QCOMPARE(At(g, 4).mmss, QStringLiteral("00:04.20"));
        ShiftSTextRows(g, -200, false);
        QCOMPARE(RowTime(g, 2), 2000);
        QCOMPARE(RowTime(g, 4), 4200);
    }

    void insertRows() {
        DataGrid g;
        Load(g, QStringLiteral("a\r\nb\r\nc\r\n"));
        g.SetCurRow(2);
        InsertSTextRow(g, true);
        QCOMPARE(At(g, 2).text, QString());
        QCOMPARE(At(g, 3).text, QStringLiteral("b"));
        QCOMPARE(g.CurRow(), 3);
        InsertSTextRow(g, false);
        QCOMPARE(At(g, 4).text, QString());
        QCOMPARE(At(g, 5).text, QStringLiteral("c"));
        QCOMPARE(g.CurRow(), 4);
        for (int r = 1; r <= g.Rows(); ++r)
            QCOMPARE(g.RowKey(r), QString::number(r));
        g.SetCurRow(g.Rows());
        const int rows = g.Rows();
        InsertSTextRow(g, false);
        QCOMPARE(g.Rows(), rows + 1);
        QCOMPARE(g.CurRow(), rows + 1);
    }

    void eraseAndLineBreaks() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]a\r\n"), 5);
        g.SetCellText(2, ColText, QStringLiteral("x\r\ny\rz\nw"));
        RemoveLineBreaks(g);
        QCOMPARE(At(g, 2).text, QStringLiteral("xyzw"));
        EraseAllTimestamps(g);
        QVERIFY(!RowHasTime(g, 1));
        QCOMPARE(At(g, 1).mmss, QString());
    }

    void removeTimeInText() {
        QCOMPARE(RemoveTimeInLine(QStringLiteral("[00:01.00]a [00:02.00] b")), QStringLiteral("a b"));
        QCOMPARE(RemoveTimeInLine(QStringLiteral("[00:01.00][00:02.00]abc")), QStringLiteral("abc"));
        QCOMPARE(RemoveTimeInLine(QStringLiteral("x [y")), QStringLiteral("x [y")); // no "]": left alone
        QCOMPARE(RemoveTimeInLine(QStringLiteral("a [b] c [d")), QStringLiteral("a c [d"));
        QCOMPARE(RemoveTimeInLine(QStringLiteral("]x[y")), QStringLiteral("]x[y"));
        DataGrid g;
        Load(g, QStringLiteral("[01:02.34][01:10.00]abc\r\n"));
        RemoveTimeInText(g);
        QCOMPARE(At(g, 1).text, QStringLiteral("abc"));
    }

    void refrains() {
        DataGrid g;
        QString text;
        for (int i = 1; i <= 17; ++i)
            text += QStringLiteral("line %1\r\n").arg(i);
        Load(g, text);
        QCOMPARE(ToggleRefrain(g, 18), Refrain::NoText);
        for (int i = 1; i <= 15; ++i)
            QCOMPARE(ToggleRefrain(g, i), Refrain::Marked); // the 15th is accepted
        QCOMPARE(ToggleRefrain(g, 16), Refrain::Refused);   // the 16th is refused
        QCOMPARE(g.CellText(16, ColRefrain), QString());
        QCOMPARE(ToggleRefrain(g, 15), Refrain::Unmarked);
        QCOMPARE(ToggleRefrain(g, 16), Refrain::Marked);
        QCOMPARE(g.CellText(16, ColRefrain), QStringLiteral("->"));
        RemoveRefrainMarks(g);
        QVERIFY(RefrainRows(g).isEmpty());
    }

    void insertRefrainTexts() {
        DataGrid g;
        Load(g, QStringLiteral("[00:01.00]chorus\r\nverse\r\n[00:03.00]bridge\r\nend\r\n"), 10);
        ToggleRefrain(g, 1);
        ToggleRefrain(g, 3);
        g.SetCurRow(4);
        InsertRefrain(g, 1);
        QCOMPARE(At(g, 4).text, QStringLiteral("chorus"));
        QCOMPARE(At(g, 4).ms, QString()); // times are not copied
        QCOMPARE(At(g, 5).text, QStringLiteral("end"));
        QCOMPARE(g.CurRow(), 5);
        InsertAllRefrains(g);
        QCOMPARE(At(g, 5).text, QStringLiteral("chorus"));
        QCOMPARE(At(g, 6).text, QStringLiteral("bridge"));
        QCOMPARE(At(g, 7).text, QStringLiteral("end"));
    }

    void translation() {
        DataGrid g;
        Load(g, QStringLiteral("Hallo ** Hello\r\nohne\r\n"));
        QVERIFY(HasTranslation(g));
        ApplyTranslation(g);
        QCOMPARE(At(g, 1).text, QStringLiteral("Hello"));
        QCOMPARE(At(g, 2).text, QStringLiteral("ohne"));
        QVERIFY(!HasTranslation(g));
        QCOMPARE(WithTranslationMark(QStringLiteral("a")), QStringLiteral("a**"));
        QCOMPARE(WithTranslationMark(QStringLiteral("a**b")), QStringLiteral("a**b"));
    }

    // ---- robustness ------------------------------------------------------------------
    void fuzzReader() {
        const QByteArray seed = "[ti:x]\r\n[00:01.00]a\r\n[01:02.34][01:10.00]b\r\n[1:02.34]c\r\n[00:0\r\n"
                                "\xC3\xBC[99:59.99] d\n\r\n\xFF\xFE[00:02.00";
        QRandomGenerator rng(15);
        DataGrid g;
        Grid(g);
        for (int round = 0; round < 3000; ++round) {
            QByteArray b = seed.left(qsizetype(rng.bounded(seed.size() + 1)));
            const int edits = rng.bounded(6);
            for (int i = 0; i < edits && !b.isEmpty(); ++i) {
                const int pos = rng.bounded(int(b.size()));
                switch (rng.bounded(3)) {
                case 0:
                    b[pos] = char(rng.bounded(256));
                    break;
                case 1:
                    b.insert(pos, "[]:.\r\n"[rng.bounded(6)]);
                    break;
                default:
                    b.remove(pos, 1);
                    break;
                }
            }
            const STextReadResult r = ReadSTextText(g, DecodeTextFile(b), QString(), 10);
            QVERIFY(r.ok);
            for (int row = 1; row <= g.Rows(); ++row) {
                if (RowHasTime(g, row)) {
                    const qint32 ms = RowTime(g, row);
                    QVERIFY(ms == -1 || (ms >= 0 && ms <= 99 * 60000 + 99 * 1000 + 990));
                }
            }
            // what is written reads back to the same times and trimmed texts
            const QString lrc = BuildSTextLrc(g);
            DataGrid h;
            Grid(h);
            ReadSTextText(h, lrc, QString(), 0);
            for (int row = 1; row <= LastSTextRow(g); ++row)
                if (RowHasTime(g, row) && ParseSTextTime(g.CellText(row, ColMmss)) >= 0)
                    QCOMPARE(RowTime(h, row), RowTime(g, row));
        }
    }
};

QTEST_GUILESS_MAIN(TestSText)
#include "test_stext.moc"
