// Page setup in the settings rows and the page layout of a printed text, on a device
// that records what it is told.
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "output/PrintDevice.h"
#include "output/modPrint.h"

#include <QtTest>

namespace {

struct Recorder : PrintDevice {
    struct Item {
        int page;
        double x, y;
        QString text;
    };
    double width = 0, height = 0;
    bool inch = false, failBegin = false, ended = false;
    QString family;
    double points = 0;
    int page = 1;
    QList<Item> items;

    bool Begin(double w, double h, bool i) override {
        width = w, height = h, inch = i;
        return !failBegin;
    }
    void SetFont(const QString& f, double p) override { family = f, points = p; }
    double TextWidth(const QString& t) override { return t.size() * 2.0; }
    double TextHeight(const QString&) override { return 5.0; }
    void PrintAt(double x, double y, const QString& t) override { items.append({page, x, y, t}); }
    bool NewPage() override { return ++page, true; }
    bool EndDoc() override { return ended = true; }
    QString ErrorText() const override { return QStringLiteral("out of paper"); }
};

void Shape(DataGrid& g) {
    for (int c = 1; c <= Ini::Columns; ++c)
        g.AddColumn(QString::number(c), QString());
    for (int r = 0; r < 30; ++r)
        g.AddRow({});
}

} // namespace

class TestPrint : public QObject {
    Q_OBJECT
private slots:
    void emptySettingsGiveA4PortraitInMillimetres() {
        DataGrid ini;
        Shape(ini);
        const PageSetup s = ReadPageSetup(ini);
        QVERIFY(!s.inch);
        QCOMPARE(s.width, 210.0);
        QCOMPARE(s.height, 297.0);
        QCOMPARE(s.left, 20.0);
        QCOMPARE(s.right, 20.0);
        QCOMPARE(s.top, 20.0);
        QCOMPARE(s.bottom, 20.0);
        QCOMPARE(s.header, 15.0);
        QCOMPARE(s.footer, 15.0);
        QCOMPARE(s.fontSize, 12.0);
        QVERIFY(!s.noPageNo && !s.noPath);
    }

    void writeAndReadBack() {
        DataGrid ini;
        Shape(ini);
        PageSetup s;
        s.inch = true;
        s.left = 0.5;
        s.fontSize = 10;
        s.noPath = true;
        WritePageSetup(ini, s);
        QCOMPARE(ini.CellText(10, 1), QStringLiteral("5"));
        QCOMPARE(ini.CellText(11, 1), QStringLiteral("0.5"));
        QCOMPARE(ini.CellText(1, 1), QStringLiteral("10"));
        QCOMPARE(ini.CellText(19, 1), QStringLiteral("0"));
        QCOMPARE(ini.CellText(20, 1), QStringLiteral("1"));
        const PageSetup r = ReadPageSetup(ini);
        QVERIFY(r.inch && r.noPath && !r.noPageNo);
        QCOMPARE(r.left, 0.5);
        QCOMPARE(r.fontSize, 10.0);
    }

    void unreadableCellsTakeDefaults() {
        DataGrid ini;
        Shape(ini);
        ini.SetCellText(11, 1, QStringLiteral("abc"));
        ini.SetCellText(17, 1, QStringLiteral("-3"));
        ini.SetCellText(1, 1, QStringLiteral("0"));
        const PageSetup s = ReadPageSetup(ini);
        QCOMPARE(s.left, 20.0);
        QCOMPARE(s.height, 297.0);
        QCOMPARE(s.fontSize, 12.0);
    }

    void unitConversion() {
        PageSetup s;
        const PageSetup in = ConvertPageSetup(s, true);
        QVERIFY(in.inch);
        QCOMPARE(FormatLength(in.width), QStringLiteral("8.27"));
        QCOMPARE(FormatLength(in.left), QStringLiteral("0.79"));
        QCOMPARE(in.fontSize, 12.0);
        const PageSetup back = ConvertPageSetup(in, false);
        QVERIFY(qAbs(back.height - 297.0) < 1e-9);
        QCOMPARE(ConvertPageSetup(s, false).width, 210.0); // same unit: unchanged
    }

    void parseLength() {
        double v = 0;
        QVERIFY(ParseLength(QStringLiteral(" 12,5 "), &v));
        QCOMPARE(v, 12.5);
        QVERIFY(!ParseLength(QStringLiteral("12mm"), &v));
        QVERIFY(!ParseLength(QString(), &v));
        QVERIFY(!ParseLength(QStringLiteral("-1"), &v));
        QVERIFY(!ParseLength(QStringLiteral("nan"), &v));
    }

    void pageLine() {
        const QString page = QStringLiteral("Page ");
        QCOMPARE(PageLine("/m/a.txt", page, 3, false, false), QStringLiteral("/m/a.txt  -  Page 03"));
        QCOMPARE(PageLine("/m/a.txt", page, 12, false, true), QStringLiteral("/m/a.txt"));
        QCOMPARE(PageLine("/m/a.txt", page, 1, true, false), QStringLiteral("Page 01"));
        QCOMPARE(PageLine("/m/a.txt", page, 1, true, true), QString());
        QCOMPARE(PageLine(QString(), page, 1, false, false), QStringLiteral("Page 01"));
    }

    void linesAndPageBreaks() {
        Recorder dev;
        PageSetup s; // 297 high, margins 20: (297-20-20)/5 = 51 lines a page
        QStringList lines;
        for (int i = 1; i <= 120; ++i)
            lines.append(QStringLiteral("line %1").arg(i));
        QString error;
        QVERIFY(PrintText(dev, s, QStringLiteral("/m/a.txt"), QStringLiteral("Page "), lines.join("\r\n"),
                          &error));
        QVERIFY(dev.ended);
        QCOMPARE(dev.family, QStringLiteral("Arial"));
        QCOMPARE(dev.points, 12.0);
        QCOMPARE(dev.width, 210.0);
        QCOMPARE(dev.page, 3);
        QList<Recorder::Item> body, foot;
        for (const auto& it : dev.items)
            (it.text.startsWith(QStringLiteral("line")) ? body : foot).append(it);
        QCOMPARE(body.size(), 120);
        QCOMPARE(body[0].y, 20.0);
        QCOMPARE(body[0].x, 20.0);
        QCOMPARE(body[1].y, 25.0);
        QCOMPARE(body[50].page, 1);
        QVERIFY(body[50].y + 5 <= 277);
        QCOMPARE(body[51].page, 2);
        QCOMPARE(body[51].y, 20.0);
        QCOMPARE(body[102].page, 3);
        QCOMPARE(foot.size(), 3);
        const QString last = QStringLiteral("/m/a.txt  -  Page 03");
        QCOMPARE(foot[2].text, last);
        QCOMPARE(foot[2].page, 3);
        QCOMPARE(foot[2].y, 297.0 - 15 - 5);
        QCOMPARE(foot[2].x, 210.0 - 20 - last.size() * 2.0); // against the right margin
    }

    void lfLinesAndLongLines() {
        Recorder dev;
        const QString wide(500, QLatin1Char('w'));
        QVERIFY(PrintText(dev, PageSetup(), QString(), QStringLiteral("Page "), "a\n" + wide + "\r\nc\r\n",
                          nullptr));
        QCOMPARE(dev.items.size(), 4);     // three lines and the page line
        QCOMPARE(dev.items[1].text, wide); // runs off the page, never wrapped
        QCOMPARE(dev.items[3].text, QStringLiteral("Page 01"));
    }

    void noPageLineWhenBothBoxesSet() {
        Recorder dev;
        PageSetup s;
        s.noPageNo = s.noPath = true;
        QVERIFY(
            PrintText(dev, s, QStringLiteral("/x"), QStringLiteral("Page "), QStringLiteral("one"), nullptr));
        QCOMPARE(dev.items.size(), 1);
    }

    void printerErrorGivesItsText() {
        Recorder dev;
        dev.failBegin = true;
        QString error;
        QVERIFY(!PrintText(dev, PageSetup(), QString(), QString(), QStringLiteral("x"), &error));
        QCOMPARE(error, QStringLiteral("out of paper"));
        QVERIFY(dev.items.isEmpty());
    }

    void rowChoice() {
        DataGrid g;
        g.AddColumn("a", "Name");
        g.AddColumn("m", "Mark");
        g.AddColumn("h", "Hidden", 1200, Align::Left, false);
        g.AddRow({"one", "x", "h1"});
        g.AddRow({"two", "", "h2"});
        g.AddRow({"three", "x", "h3"});
        g.SetSelected(2, true);
        QCOMPARE(PrintRows(g, PrintRowChoice::All, QString()), (QList<int>{1, 2, 3}));
        QCOMPARE(PrintRows(g, PrintRowChoice::Highlighted, QString()), (QList<int>{2}));
        QCOMPARE(PrintRows(g, PrintRowChoice::Marked, "x"), (QList<int>{1, 3}));
        QVERIFY(PrintRows(g, PrintRowChoice::Marked, QString()).isEmpty());
        QCOMPARE(GridRowsText(g, {1, 3}), QStringLiteral("Name   Mark\r\none   x\r\nthree   x"));
    }

    void fuzzSettings() {
        // random cell contents never break reading or printing
        QRandomGenerator rng(7);
        for (int round = 0; round < 300; ++round) {
            DataGrid ini;
            Shape(ini);
            for (int r = 1; r <= 20; ++r) {
                QString t;
                const int n = rng.bounded(6);
                for (int i = 0; i < n; ++i)
                    t += QChar(u"0123456789.,-e x"[rng.bounded(16)]);
                ini.SetCellText(r, 1, t);
            }
            const PageSetup s = ReadPageSetup(ini);
            Recorder dev;
            PrintText(dev, s, QStringLiteral("/p"), QStringLiteral("P "), QStringLiteral("a\r\nb\r\nc"),
                      nullptr);
            QVERIFY(dev.ended);
        }
    }
};

QTEST_GUILESS_MAIN(TestPrint)
#include "test_print.moc"
