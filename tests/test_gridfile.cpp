// The grid file: round trips of any text, truncated, damaged and hostile files, failed
// and broken-off writes, and a mutation fuzz of the reader.

#include "GridTestUtil.h"
#include "core/DataGrid.h"
#include "platform/PosixFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <random>
#include <sys/resource.h>
#include <unistd.h>

namespace {

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Writes a fresh file: replacing the old one first (rather than truncating it) spares
// the flush that some file systems make when a truncated file is closed.
bool WriteAll(const QString& path, const QByteArray& bytes) {
    QFile::remove(path);
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// Text from pieces that the format has to take care of.
QString RandomText(std::mt19937& rng, int maxPieces) {
    static const char16_t* const kPieces[] = {
        u"a",   u"Z", u" ", u"\t", u"\n", u"\r",     u"\r\n", u"\\",     u"\\t",
        u"\\n", u"ä", u"Ö", u"ß",  u"é",  u"日本語", u"한",   u"😀",      u"🎵x",
        u"\"",  u"'", u",", u";",  u"=",  u"r\t",    u"E\t1", u"\u00a0", u"\ufeff"};
    const int n = int(rng() % std::uint32_t(maxPieces + 1));
    QString s;
    for (int i = 0; i < n; ++i)
        s += QString::fromUtf16(kPieces[rng() % (sizeof(kPieces) / sizeof(kPieces[0]))]);
    return s;
}

void RandomGrid(DataGrid& g, std::mt19937& rng, int maxCols, int maxRows) {
    const int cols = int(rng() % std::uint32_t(maxCols + 1));
    for (int c = 0; c < cols; ++c)
        g.AddColumn(RandomText(rng, 3), RandomText(rng, 4), int(rng() % 9000), Align(rng() % 3),
                    rng() % 2 == 0, SortType(rng() % 3));
    const int rows = int(rng() % std::uint32_t(maxRows + 1));
    g.LockUpdate(true);
    for (int r = 0; r < rows; ++r) {
        QStringList cells;
        const int n = int(rng() % std::uint32_t(cols + 1));
        for (int c = 0; c < n; ++c)
            cells << (rng() % 4 == 0 ? QString() : RandomText(rng, 6));
        g.AddRow(cells, rng() % 3 == 0 ? RandomText(rng, 3) : QString());
        if (g.RowKey(g.Rows()).isEmpty())
            g.SetRowKey(g.Rows(), QStringLiteral("k"));
    }
    g.LockUpdate(false);
}

// A grid whose state can be seen to stay unchanged after a failed load.
void Bystander(DataGrid& g) {
    FillGrid(g, 3, {"keep\tthis", "and\tthat\ttoo"});
    g.SetSelected(2, true);
    g.SetCurRow(2);
}

QByteArray SmallFile(const QString& dir) {
    DataGrid g;
    FillGrid(g, 3, {"Abba\tWaterloo\t1974", "tab\there\\\tline\nbreak", "", "Ärzte\t日本\t🎵"});
    g.SetColumnCaption(2, "Ti\ttel");
    const QString path = dir + "/small.grid";
    if (!g.SaveFile(path))
        return {};
    return ReadAll(path);
}

// Child mode: builds a big grid and saves it over `path`, telling the parent when the
// write begins, so that the parent can kill it part-way.
int ChildSave(const QString& path) {
    DataGrid g;
    for (int c = 1; c <= 20; ++c)
        g.AddColumn(QStringLiteral("c%1").arg(c), QStringLiteral("C%1").arg(c));
    g.LockUpdate(true);
    QStringList cells;
    for (int c = 1; c <= 20; ++c)
        cells << QStringLiteral("a fairly long cell text number %1 äöü").arg(c);
    for (int r = 0; r < 100000; ++r)
        g.AddRow(cells);
    g.LockUpdate(false);
    std::fputs("saving\n", stdout);
    std::fflush(stdout);
    for (;;)
        g.SaveFile(path); // until killed
}

} // namespace

class TestGridFile : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    void roundTripRandom() {
        std::mt19937 rng(12345);
        for (int i = 0; i < 300; ++i) {
            DataGrid g;
            RandomGrid(g, rng, 6, 12);
            const QString path = m_dir.filePath("rt.grid");
            QVERIFY(g.SaveFile(path));
            DataGrid h;
            QVERIFY2(h.LoadFile(path), qPrintable(h.LastFileError()));
            QCOMPARE(DumpGrid(h),
                     DumpGrid(g).replace(QStringLiteral("cur|0"), QStringLiteral("cur|%1").arg(h.CurRow())));
            // the bytes are UTF-8 without raw tabs or line breaks inside a field
            const QByteArray bytes = ReadAll(path);
            QVERIFY(QString::fromUtf8(bytes).toUtf8() == bytes);
            QCOMPARE(bytes.count('\n'), 4 + g.Cols() + g.Rows());
            QVERIFY(!bytes.contains('\r'));
        }
    }

    void roundTripPlainAndLong() {
        // Plain ASCII rows take the fast paths of writer and reader: cells of every length
        // around their 8- and 16-character steps, and lines much longer than that.
        std::mt19937 rng(5);
        DataGrid g;
        for (int c = 1; c <= 71; ++c)
            g.AddColumn(QStringLiteral("c%1").arg(c), QString());
        auto word = [&](int len) {
            QString s;
            for (int i = 0; i < len; ++i) {
                const char ch = char('!' + rng() % 90);
                s += QLatin1Char(ch == '\\' ? 'x' : ch);
            }
            return s;
        };
        g.LockUpdate(true);
        for (int r = 0; r < 2500; ++r) { // some 4 MB: lines cross the reader's 1 MB pieces
            QStringList cells;
            for (int c = 0; c < 71; ++c)
                cells << word(int(rng() % 41));
            if (r % 7 == 0)
                cells[int(rng() % 71)] = QStringLiteral("Ärger über Groß 😀 ") + word(30);
            if (r % 11 == 0)
                cells[int(rng() % 71)] = word(20) + QStringLiteral("\\tab\there") + word(20);
            g.AddRow(cells, word(int(rng() % 20)));
        }
        g.LockUpdate(false);
        const QString path = m_dir.filePath("plain.grid");
        QVERIFY(g.SaveFile(path));
        DataGrid h;
        QVERIFY(h.LoadFile(path));
        QCOMPARE(DumpGrid(h), DumpGrid(g).replace(QStringLiteral("cur|0"), QStringLiteral("cur|1")));
    }

    void brokenUtf8() {
        // Bytes that are no UTF-8 read as U+DC00 + byte, one unit for each (the escape of file
        // names that are no UTF-8), and never overrun the row.
        const QString path = m_dir.filePath("broken.grid");
        QList<QByteArray> cells = {QByteArray(100, '\x80'), "\xC3\x41\x80",   QByteArray(40, '\xBF') + "ab",
                                   "\xF0\x9F\x98",          "\xED\xA0\x80",   "\xC0\xAF",
                                   QByteArray(33, '\xFF'),  "ok \xE2\x82\xAC"};
        QByteArray file = "QLTGRID\t1\nC\t8\n";
        for (int c = 0; c < 8; ++c)
            file += "c\tk\tc\t100\t0\t1\t0\n";
        file += "R\t1\nr\t\x80\x80key";
        for (const QByteArray& c : cells)
            file += '\t' + c;
        file += "\nE\t1\n";
        QVERIFY(WriteAll(path, file));
        DataGrid g;
        QVERIFY(g.LoadFile(path));
        const QChar e80(0xDC80), eBF(0xDCBF), eC3(0xDCC3), eFF(0xDCFF);
        QCOMPARE(g.CellText(1, 1), QString(100, e80));
        QCOMPARE(g.CellText(1, 2), QString(eC3) + "A" + e80);
        QCOMPARE(g.CellText(1, 3), QString(40, eBF) + "ab");
        QCOMPARE(g.CellText(1, 7), QString(33, eFF));
        QCOMPARE(g.CellText(1, 8), QString::fromUtf8("ok €"));
        QCOMPARE(g.RowKey(1), QString(2, e80) + "key");
        for (int c = 4; c <= 6; ++c)
            QCOMPARE(PosixFile::Native(g.CellText(1, c)), cells[c - 1]);
        // Saved again, every cell keeps its bytes.
        QVERIFY(g.SaveFile(path));
        DataGrid back;
        QVERIFY(back.LoadFile(path));
        for (int c = 1; c <= 8; ++c)
            QCOMPARE(PosixFile::Native(back.CellText(1, c)), cells[c - 1]);
    }

    void emptyGrids() {
        const QString path = m_dir.filePath("empty.grid");
        DataGrid none; // no columns, no rows
        QVERIFY(none.SaveFile(path));
        DataGrid h;
        Bystander(h);
        QVERIFY(h.LoadFile(path, true));
        QCOMPARE(h.Rows(), 0);
        QCOMPARE(h.Cols(), 3); // the grid's own columns stay
        QCOMPARE(h.CurRow(), 0);
        QCOMPARE(h.SelCount(), 0);
        DataGrid cols;
        cols.AddColumn("a", "A");
        cols.AddColumn("b", "B");
        QVERIFY(cols.SaveFile(path));
        DataGrid e;
        QVERIFY(e.LoadFile(path));
        QCOMPARE(e.Cols(), 2);
        QCOMPARE(e.Rows(), 0);
        QCOMPARE(e.Column(2).caption, QString("B"));
    }

    void rowsWithoutColumns() {
        // Rows exist but no column does: nothing of the rows can be kept but their number.
        DataGrid g;
        g.AddItem("x\ty");
        g.AddItem("");
        const QString path = m_dir.filePath("nocols.grid");
        QVERIFY(g.SaveFile(path));
        DataGrid h;
        QVERIFY(h.LoadFile(path));
        QCOMPARE(h.Rows(), 2);
        QCOMPARE(h.RowKey(2), QString("2k"));
    }

    void loadReplacesEverything() {
        DataGrid a;
        FillGrid(a, 2, {"1\t2"});
        const QString path = m_dir.filePath("one.grid");
        QVERIFY(a.SaveFile(path));
        DataGrid b;
        FillGrid(b, 2, {"x", "y", "z"});
        b.SelectAll();
        b.Tag = "edited";
        QSignalSpy rows(&b, &DataGrid::rowsReset);
        QSignalSpy cur(&b, &DataGrid::currentRowChanged);
        QVERIFY(b.LoadFile(path, true));
        QCOMPARE(b.Rows(), 1);
        QCOMPARE(b.SelCount(), 0);
        QCOMPARE(b.CurRow(), 1);
        QCOMPARE(b.Tag, QString("edited"));
        QCOMPARE(rows.size(), 1);
        QCOMPARE(cur.size(), 1);
        // locked: the signals wait for the release
        b.LockUpdate(true);
        QVERIFY(b.LoadFile(path, true));
        QCOMPARE(rows.size(), 1);
        b.LockUpdate(false);
        QCOMPARE(rows.size(), 2);
    }

    void fewerColumnsInTheFile() {
        // A list saved when the program had fewer columns: the missing cells are empty.
        DataGrid old;
        FillGrid(old, 3, {"a\tb\tc", "d\te\tf"});
        const QString path = m_dir.filePath("old.grid");
        QVERIFY(old.SaveFile(path));
        DataGrid g;
        FillGrid(g, 5, {"1\t2\t3\t4\t5"});
        g.Column(5).headerColor = 0xFF0000;
        QVERIFY(g.LoadFile(path, true));
        QCOMPARE(g.Cols(), 5);
        QCOMPARE(g.RowCells(2), QStringList({"d", "e", "f", "", ""}));
        // taking the file's columns never drops the program's extra columns either
        DataGrid h;
        FillGrid(h, 5, {});
        h.Column(2).headerColor = 0x00FF00;
        h.Column(2).minWidth = 777;
        QVERIFY(h.LoadFile(path, false));
        QCOMPARE(h.Cols(), 5);
        QCOMPARE(h.Column(2).caption, QString("Column 2"));
        QCOMPARE(h.Column(2).headerColor, BgrColor(0x00FF00));
        QCOMPARE(h.Column(2).minWidth, 777);
        QCOMPARE(h.Column(5).key, QString("K5"));
        QCOMPARE(h.RowCells(1), QStringList({"a", "b", "c", "", ""}));
        QCOMPARE(h.CellText(1, 5), QString());
    }

    void moreColumnsInTheFile() {
        DataGrid wide;
        FillGrid(wide, 4, {"a\tb\tc\td"});
        wide.SetColumnCaption(4, "Vier");
        const QString path = m_dir.filePath("wide.grid");
        QVERIFY(wide.SaveFile(path));
        DataGrid g;
        FillGrid(g, 2, {});
        QVERIFY(g.LoadFile(path, true));
        QCOMPARE(g.Cols(), 2);
        QCOMPARE(g.RowCells(1), QStringList({"a", "b"}));
        QVERIFY(g.SaveFile(path)); // the dropped cells do not come back
        DataGrid h;
        QVERIFY(h.LoadFile(path));
        QCOMPARE(h.Cols(), 2);
        QCOMPARE(h.RowCells(1), QStringList({"a", "b"}));
        DataGrid t; // taking the file's columns takes the captions, too
        FillGrid(t, 2, {});
        QVERIFY(t.LoadFile(m_dir.filePath("wide.grid")) || true);
        QVERIFY(wide.SaveFile(path));
        QVERIFY(t.LoadFile(path));
        QCOMPARE(t.Cols(), 4);
        QCOMPARE(t.Column(4).caption, QString("Vier"));
        QCOMPARE(t.CellText(1, 4), QString("d"));
    }

    void truncatedAtEveryOffset() {
        const QByteArray full = SmallFile(m_dir.path());
        QVERIFY(full.size() > 100);
        const QString path = m_dir.filePath("trunc.grid");
        DataGrid g;
        Bystander(g);
        const QString before = DumpGrid(g);
        QSignalSpy rows(&g, &DataGrid::rowsReset);
        for (qsizetype n = 0; n < full.size(); ++n) {
            QVERIFY(WriteAll(path, full.left(n)));
            QVERIFY2(!g.LoadFile(path), qPrintable(QString::number(n)));
            QVERIFY(!g.LastFileError().isEmpty());
            QCOMPARE(DumpGrid(g), before);
        }
        QCOMPARE(rows.size(), 0);
        QVERIFY(WriteAll(path, full));
        QVERIFY(g.LoadFile(path));
        QCOMPARE(g.Rows(), 4);
        QCOMPARE(g.CellText(2, 2), QString("here\\"));
        QCOMPARE(g.CellText(2, 3), QString("line\nbreak"));
        QCOMPARE(g.CellText(2, 1), QString("tab"));
        QCOMPARE(g.Column(2).caption, QString("Ti\ttel"));
    }

    void lineEndsAndMarks() {
        const QByteArray full = SmallFile(m_dir.path());
        const QString path = m_dir.filePath("crlf.grid");
        DataGrid a;
        QVERIFY(a.LoadFile(m_dir.filePath("small.grid")));
        QByteArray crlf = full;
        crlf.replace("\n", "\r\n");
        QVERIFY(WriteAll(path, crlf));
        DataGrid b;
        QVERIFY(b.LoadFile(path));
        QCOMPARE(DumpGrid(b), DumpGrid(a));
        QVERIFY(WriteAll(path, "\xEF\xBB\xBF" + full));
        DataGrid c;
        QVERIFY(c.LoadFile(path));
        QCOMPARE(DumpGrid(c), DumpGrid(a));
    }

    void damagedFiles() {
        const QByteArray full = SmallFile(m_dir.path());
        const QString path = m_dir.filePath("bad.grid");
        QList<QByteArray> bad;
        bad << QByteArray() << "QLTGRID\t2\nC\t0\nR\t0\nE\t0\n"      // unknown version
            << "QLTGRID\t1\nC\t0\nR\t0\nE\t0\nextra\n"               // data behind the end
            << "QLTGRID\t1\nC\t0\nR\t0\nE\t1\n"                      // end does not match
            << "QLTGRID\t1\nC\t0\nR\t1\nr\tk\\x\nE\t1\n"             // bad escape
            << "QLTGRID\t1\nC\t0\nR\t1\nr\tk\ta\\\nE\t1\n"           // escape at the end
            << "QLTGRID\t1\nC\t1\nc\tk\tc\t1\t9\t1\t0\nR\t0\nE\t0\n" // align 9
            << "QLTGRID\t1\nC\t1\nc\tk\tc\t1\t0\t1\nR\t0\nE\t0\n"    // a field short
            << "QLTGRID\t1\nC\t-1\nR\t0\nE\t0\n"
            << "QLTGRID\t1\nC\tx\nR\t0\nE\t0\n"
            << "QLTGRID\t1\nC\t0\nR\t0\nR\t0\nE\t0\n"
            << "QLTGRID\t1\nC\t0\nR\t1\nx\tk\nE\t1\n"
            << "QLTGRID 1\nC\t0\nR\t0\nE\t0\n"
            << "\0\0\0\0"
            << "QLTGRID\t1\n"
            << "QLTGRID\t1\nC\t0\nR\t0\nE\t0" << QByteArray(5000, '\n') << QByteArray(5000, '\xff');
        for (const QByteArray& b : bad) {
            DataGrid g;
            Bystander(g);
            const QString before = DumpGrid(g);
            QVERIFY(WriteAll(path, b));
            QVERIFY2(!g.LoadFile(path), b.constData());
            QCOMPARE(DumpGrid(g), before);
        }
        // later versions may put more fields on a column line
        QVERIFY(
            WriteAll(path, "QLTGRID\t1\nC\t1\nc\tk\tCap\t1500\t1\t1\t0\tmore\t0\nR\t1\nr\t1k\tv\nE\t1\n"));
        DataGrid g;
        QVERIFY(g.LoadFile(path));
        QCOMPARE(g.Column(1).caption, QString("Cap"));
        QCOMPARE(g.CellText(1, 1), QString("v"));
        // not found
        QVERIFY(!g.LoadFile(m_dir.filePath("none.grid")));
        QVERIFY(!g.LastFileError().isEmpty());
        QVERIFY(!g.LoadFile(m_dir.path()));
    }

    void hugeCountsAllocateNothing() {
        const QString path = m_dir.filePath("huge.grid");
        const QList<QByteArray> lies = {"QLTGRID\t1\nC\t0\nR\t2147483647\nr\tk\nE\t1\n",
                                        "QLTGRID\t1\nC\t100000\nc\tk\tc\t1\t0\t1\t0\nR\t0\nE\t0\n",
                                        "QLTGRID\t1\nC\t2147483647\nR\t0\nE\t0\n",
                                        "QLTGRID\t1\nC\t0\nR\t99999999999999999999\nE\t0\n",
                                        "QLTGRID\t1\nC\t0\nR\t-5\nE\t-5\n"};
        QElapsedTimer t;
        t.start();
        for (const QByteArray& b : lies) {
            QVERIFY(WriteAll(path, b));
            DataGrid g;
            QVERIFY(!g.LoadFile(path));
        }
        QVERIFY(t.elapsed() < 1000);
        // a cell with a four-million-byte text is fine, it is really there
        QByteArray big =
            "QLTGRID\t1\nC\t1\nc\tk\tc\t1\t0\t1\t0\nR\t1\nr\tk\t" + QByteArray(4000000, 'x') + "\nE\t1\n";
        QVERIFY(WriteAll(path, big));
        DataGrid g;
        QVERIFY(g.LoadFile(path));
        QCOMPARE(g.CellView(1, 1).size(), 4000000);
    }

    void failedWritesLeaveTheOldFile() {
        DataGrid g;
        FillGrid(g, 2, {"new\tcontent"});
        // a folder that does not exist
        QVERIFY(!g.SaveFile(m_dir.filePath("no/such/folder/x.grid")));
        QVERIFY(!g.LastFileError().isEmpty());
        // a path that is a folder
        QDir(m_dir.path()).mkpath("adir/inner");
        QVERIFY(!g.SaveFile(m_dir.filePath("adir")));
        QVERIFY(QFileInfo(m_dir.filePath("adir/inner")).isDir());
        // a read-only file system
        QVERIFY(!g.SaveFile("/proc/qlt-test.grid"));
        // a read-only folder (root may write anyway: then only the folder test above counts)
        const QString ro = m_dir.filePath("ro");
        QDir(m_dir.path()).mkdir("ro");
        const QByteArray old = SmallFile(ro);
        QFile::setPermissions(ro, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        if (geteuid() != 0) {
            QVERIFY(!g.SaveFile(ro + "/small.grid"));
            QCOMPARE(ReadAll(ro + "/small.grid"), old);
        }
        QFile::setPermissions(ro, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        // a full disk: the size limit makes every write beyond 64 KiB fail, even for root
        const QString target = m_dir.filePath("full.grid");
        QVERIFY(WriteAll(target, old));
        DataGrid big;
        FillGrid(big, 1, {});
        big.LockUpdate(true);
        for (int i = 0; i < 20000; ++i)
            big.AddItem(QStringLiteral("row %1 with some text to fill the disk").arg(i));
        big.LockUpdate(false);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit saved{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &saved), 0);
        rlimit small = saved;
        small.rlim_cur = 64 * 1024;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        const bool ok = big.SaveFile(target);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &saved), 0);
        QVERIFY(!ok);
        QCOMPARE(ReadAll(target), old);
        QCOMPARE(QDir(m_dir.path()).entryList({"full.grid*"}, QDir::Files), QStringList({"full.grid"}));
    }

    void killedWhileSaving() {
        // An older list lies on disk; a second process saves a big grid over it and is
        // killed part-way. The old file must still load whole.
        const QString path = m_dir.filePath("killed.grid");
        const QByteArray old = SmallFile(m_dir.path());
        QVERIFY(WriteAll(path, old));
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {"--child-save", path});
        QVERIFY(child.waitForStarted());
        QVERIFY(child.waitForReadyRead(60000));
        QCOMPARE(child.readLine().trimmed(), QByteArray("saving"));
        // Wait until the child has written a good part of the new file. The save file may
        // have no name while it is written, so the child's write count tells.
        const QString io = QStringLiteral("/proc/%1/io").arg(child.processId());
        QElapsedTimer t;
        t.start();
        qint64 partial = 0;
        while (t.elapsed() < 30000 && partial < 4000000) {
            for (const QByteArray& l : ReadAll(io).split('\n'))
                if (l.startsWith("wchar:"))
                    partial = l.mid(6).trimmed().toLongLong();
            QThread::msleep(1);
        }
        child.kill();
        child.waitForFinished();
        QVERIFY2(partial >= 4000000, "the child never got to write");
        QCOMPARE(ReadAll(path), old);
        DataGrid g;
        QVERIFY(g.LoadFile(path));
        QCOMPARE(g.Rows(), 4);
        QCOMPARE(g.CellText(4, 2), QString("日本"));
    }

    void fuzz() {
        const QByteArray seed = SmallFile(m_dir.path());
        const QString path = m_dir.filePath("fuzz.grid");
        std::mt19937 rng(99);
        int loaded = 0;
        for (int i = 0; i < 4000; ++i) {
            QByteArray b = seed;
            const int edits = 1 + int(rng() % 4);
            for (int e = 0; e < edits && !b.isEmpty(); ++e) {
                const qsizetype at = qsizetype(rng() % std::uint32_t(b.size()));
                switch (rng() % 7) {
                case 0: // flip a bit
                    b[at] = char(b[at] ^ char(1 << (rng() % 8)));
                    break;
                case 1: // a random byte
                    b[at] = char(rng());
                    break;
                case 2: // drop a piece
                    b.remove(at, 1 + rng() % 8);
                    break;
                case 3: // repeat a piece
                    b.insert(at, b.mid(at, 1 + rng() % 30));
                    break;
                case 4: // an interesting byte
                {
                    static const char kBytes[] = {'\t', '\n', '\r', '\\', '0', '9', '-', 'r', 'c', 'E', '\0'};
                    b.insert(at, kBytes[rng() % sizeof(kBytes)]);
                    break;
                }
                case 5: // a big number where a digit was
                    if (b[at] >= '0' && b[at] <= '9')
                        b.insert(at, QByteArray::number(quint64(rng()) * rng()));
                    break;
                default: // cut
                    b.truncate(at);
                }
            }
            QVERIFY(WriteAll(path, b));
            DataGrid g;
            Bystander(g);
            const QString before = DumpGrid(g);
            if (g.LoadFile(path)) {
                ++loaded;
                // whatever was taken reads back, and now and then saves again (a save
                // waits for the disk, so not every time)
                const QString dump = DumpGrid(g);
                if (loaded % 25 == 1) {
                    QVERIFY(g.SaveFile(m_dir.filePath("fuzz2.grid")));
                    DataGrid h;
                    QVERIFY(h.LoadFile(m_dir.filePath("fuzz2.grid")));
                    QCOMPARE(DumpGrid(h), dump);
                }
            } else {
                QCOMPARE(DumpGrid(g), before);
            }
        }
        qInfo("fuzz: %d of 4000 mutated files were still valid", loaded);
    }
};

int main(int argc, char** argv) {
    if (argc == 3 && qstrcmp(argv[1], "--child-save") == 0) {
        QCoreApplication app(argc, argv);
        return ChildSave(QString::fromLocal8Bit(argv[2]));
    }
    QCoreApplication app(argc, argv);
    TestGridFile t;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&t, argc, argv);
}

#include "test_gridfile.moc"
