// Exports read back by independent readers: csv by Python's csv module, xls by xlrd
// (and LibreOffice when installed), xml by QXmlStreamReader, htm by Python's HTML
// parser; plus the choice of format, the folders and the messages of the export command.

#include "InstalledCaptions.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
// GCC 12 reports a false "maybe uninitialized" inside std::optional<QString> of ScriptedPrompt.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include "core/Prompt.h"
#pragma GCC diagnostic pop
#include "output/ExportWriters.h"
#include "output/modExport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>

namespace {

const QString kPython = QStringLiteral("/usr/bin/python3");

// Runs a Python script with arguments; its standard output is JSON.
QJsonDocument RunPython(const QString& script, const QStringList& args, QString* error = nullptr) {
    QProcess p;
    p.start(kPython, QStringList{"-c", script} + args);
    if (!p.waitForFinished(300000) || p.exitCode() != 0) {
        if (error)
            *error = QString::fromUtf8(p.readAllStandardError());
        return {};
    }
    return QJsonDocument::fromJson(p.readAllStandardOutput());
}

bool PythonHas(const QString& module) {
    if (!QFile::exists(kPython))
        return false;
    QProcess p;
    p.start(kPython, {"-c", "import " + module});
    return p.waitForFinished(30000) && p.exitCode() == 0;
}

QStringList ToStrings(const QJsonArray& a) {
    QStringList out;
    for (const auto& v : a)
        out << v.toString();
    return out;
}

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// A list with every kind of awkward content, a hidden column and awkward captions.
void FillGrid(DataGrid& g) {
    g.AddColumn("No", "Nr.");
    g.AddColumn("FTag", "FTag");
    g.AddColumn("FileName", "Datei Name");
    g.AddColumn("Hidden", "Versteckt", 1200, Align::Left, false);
    g.AddColumn("Size", "Größe (MB)", 900, Align::Right);
    g.AddColumn("Year", "1st year");
    g.AddColumn("X", "xml<thing>");
    g.AddColumn("Title", "Titel");
    g.AddColumn("Title2", "Titel");
    g.AddColumn("Empty", "");
    g.AddRow({"1", "_#-->", "semi;colon,comma", "secret", "3,5", "1999", "<b>bold</b> & \"q\" 'a'",
              "Zeile 1\r\nZeile 2", "only\nLF", "tab\there"});
    g.AddRow({"2", "", "Quote \"inside\"", "x", "", "", "ctrl\x01char", "Ünïcödé 日本 🎵", "", ""});
    g.AddRow({"3", "mark", "", "", "12", "2024", "", "", "", "end"});
}

// The cells of the shown columns, as the exports must give them back.
QList<QStringList> Expected(const DataGrid& g, bool header = true) {
    QList<QStringList> out;
    QStringList h;
    for (int c = 1; c <= g.Cols(); ++c)
        if (g.Column(c).visible)
            h << (g.Column(c).caption.isEmpty() ? g.Column(c).key : g.Column(c).caption);
    if (header)
        out << h;
    for (int r = 1; r <= g.Rows(); ++r) {
        QStringList row;
        for (int c = 1; c <= g.Cols(); ++c)
            if (g.Column(c).visible)
                row << g.CellText(r, c);
        out << row;
    }
    return out;
}

QList<QStringList> JsonRows(const QJsonArray& rows) {
    QList<QStringList> out;
    for (const auto& r : rows)
        out << ToStrings(r.toArray());
    return out;
}

const char* kCsvScript = R"(
import csv, json, sys
with open(sys.argv[1], newline='', encoding='utf-8-sig') as f:
    print(json.dumps(list(csv.reader(f, delimiter=sys.argv[2], strict=True))))
)";

const char* kXlsScript = R"(
import json, struct, sys, xlrd
data = open(sys.argv[1], 'rb').read()
try:
    import olefile  # strict check of the compound file, when installed
    ole = olefile.OleFileIO(sys.argv[1], raise_defects=olefile.DEFECT_INCORRECT)
    data = ole.openstream('Workbook').read()
    assert ole.listdir() == [['Workbook']]
except ImportError:
    data = None
if data is not None:
    # Every record: length at most 8224; substreams balanced from BOF to EOF; zeros after the last EOF.
    pos, depth, bofs = 0, 0, []
    while pos + 4 <= len(data):
        rtype, rlen = struct.unpack_from('<HH', data, pos)
        if rtype == 0 and depth == 0:
            assert not any(data[pos:]), 'data after the last EOF'
            break
        assert rlen <= 8224, 'record too long'
        if rtype == 0x0809:
            depth += 1; bofs.append(pos)
        elif rtype == 0x000A:
            depth -= 1
        pos += 4 + rlen
    assert depth == 0, 'unbalanced BOF/EOF'
    # The shared strings: every EXTSST entry must point at the start of its string.
    recs, pos = [], 0
    while pos + 4 <= len(data):
        rtype, rlen = struct.unpack_from('<HH', data, pos)
        if rtype == 0:
            break
        recs.append((pos, rtype, rlen))
        pos += 4 + rlen
    k = next(i for i, r in enumerate(recs) if r[1] == 0x00FC)
    chain = [recs[k]] + [r for r in recs[k + 1:k + 1 + len(recs)] if r[1] == 0x003C]
    i, pos = 0, chain[0][0] + 4 + 8
    end = chain[0][0] + 4 + chain[0][2]
    starts = []
    for n in range(struct.unpack_from('<I', data, chain[0][0] + 8)[0]):
        if pos >= end:
            i += 1; pos = chain[i][0] + 4; end = pos + chain[i][2]
        starts.append((pos, pos - chain[i][0]))
        cch, flags = struct.unpack_from('<HB', data, pos)
        pos += 3
        size = 2 if flags & 1 else 1
        while True:
            n = min((end - pos) // size, cch)
            pos += n * size; cch -= n
            if cch == 0:
                break
            i += 1; pos = chain[i][0] + 4; end = pos + chain[i][2]
            size = 2 if data[pos] & 1 else 1
            pos += 1
    ext = next(r for r in recs if r[1] == 0x00FF)
    per = struct.unpack_from('<H', data, ext[0] + 4)[0]
    entries = [struct.unpack_from('<IH', data, ext[0] + 6 + 8 * j) for j in range((ext[2] - 2) // 8)]
    assert entries == starts[::per], 'EXTSST does not match the strings'
book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
out = []
for sh in book.sheets():
    rows = [[sh.cell_value(r, c) for c in range(sh.ncols)] for r in range(sh.nrows)]
    bold = None
    if sh.nrows:
        bold = book.font_list[book.xf_list[sh.cell_xf_index(0, 0)].font_index].bold
    out.append({"name": sh.name, "rows": rows, "headerBold": bold})
print(json.dumps(out))
)";

const char* kHtmlScript = R"(
import json, sys
from html.parser import HTMLParser
class P(HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.rows, self.cell, self.tags = [], None, []
    def handle_starttag(self, tag, attrs):
        self.tags.append(tag)
        if tag == 'tr': self.rows.append([])
        elif tag in ('td', 'th'): self.cell = ''
        elif tag == 'br' and self.cell is not None: self.cell += '\n'
    def handle_endtag(self, tag):
        if tag in ('td', 'th'):
            self.rows[-1].append(self.cell); self.cell = None
    def handle_data(self, data):
        if self.cell is not None: self.cell += data
p = P()
p.feed(open(sys.argv[1], encoding='utf-8').read())
print(json.dumps({"rows": p.rows, "tags": p.tags}))
)";

QString Strip(const QString& s) {
    QString out;
    for (QChar ch : s)
        if (ch.unicode() >= 0x20 || ch == u'\t' || ch == u'\n' || ch == u'\r')
            out += ch;
    return out;
}

void SetCaption(int row, const QString& text) {
    DataGrid& t = CaptionTable();
    while (t.Cols() < kLanguageEnglish)
        t.AddColumn(QString(), QString());
    while (t.Rows() < kCaptionRowCount)
        t.AddRow({});
    t.SetCellText(row, kLanguageGerman, text + " (de)");
    t.SetCellText(row, kLanguageEnglish, text);
}

DataGrid& Settings() {
    static DataGrid ini;
    if (ini.Cols() == 0) {
        for (int c = 0; c < 8; ++c)
            ini.AddColumn(QString(), QString());
        for (int r = 0; r < 1000; ++r)
            ini.AddRow({});
    }
    return ini;
}

} // namespace

class TestExport : public QObject {
    Q_OBJECT
private slots:
    void shownColumnsInTheirDisplayOrder() {
        DataGrid g;
        for (const char* k : {"A", "B", "C", "D"})
            g.AddColumn(k, k);
        g.AddRow({"a", "b", "c", "d"});
        g.SetColumnVisible(2, false);
        g.SetDisplayOrder({4, 2, 1, 3});
        QTemporaryDir dir;
        const QString path = dir.filePath("o.txt");
        QVERIFY(ExportList(g, path, ExportFormat::Txt));
        QCOMPARE(Read(path), QByteArray("D\tA\tC\r\nd\ta\tc\r\n"));
        // All columns (mode other than 2): the grid's own order.
        QVERIFY(ExportList(g, path, ExportFormat::Txt, QString(), 0));
        QCOMPARE(Read(path), QByteArray("A\tB\tC\tD\r\na\tb\tc\td\r\n"));
    }

    void initTestCase() {
        QVERIFY(LoadInstalledCaptions());
        SetCaption(CapExportFilter, "Export file");
        SetCaption(CapListEmpty, "The list is empty.");
        SetCaption(CapListExported, "The export is done.");
    }

    void formatByEnding() {
        QCOMPARE(ExportFormatForPath("/a/b.txt"), int(ExportFormat::Txt));
        QCOMPARE(ExportFormatForPath("/a/b.CSV"), int(ExportFormat::Csv));
        QCOMPARE(ExportFormatForPath("/a/b.Xls"), int(ExportFormat::Xls));
        QCOMPARE(ExportFormatForPath("/a/b.xml"), int(ExportFormat::Xml));
        QCOMPARE(ExportFormatForPath("/a/LIST.HTM"), int(ExportFormat::Htm));
        QCOMPARE(ExportFormatForPath("/a/b.html"), int(ExportFormat::None));
        QCOMPARE(ExportFormatForPath("/a/b.xlsx"), int(ExportFormat::None));
        QCOMPARE(ExportFormatForPath("/a/b"), int(ExportFormat::None));
        QCOMPARE(ExportFormatForPath("/a/b.txt.bak"), int(ExportFormat::None));
    }
    void filters() {
        QCOMPARE(ExportFilters(),
                 (QStringList{"Export file (*.xls)", "Export file (*.txt)", "Export file (*.csv)",
                              "Export file (*.xml)", "Export file (*.htm)"}));
        QCOMPARE(ExportFilterString().count(";;"), 4);
        QCOMPARE(ExportDefaultSuffix(), QString("txt"));
    }
    void xmlNames() {
        QCOMPARE(XmlElementName("Nr."), QString("Nr."));
        QCOMPARE(XmlElementName("Datei Name"), QString("Datei_Name"));
        QCOMPARE(XmlElementName("Größe (MB)"), QString("Größe_MB"));
        QCOMPARE(XmlElementName("1st year"), QString("_1st_year"));
        QCOMPARE(XmlElementName("xml<thing>"), QString("_xml_thing"));
        QCOMPARE(XmlElementName("  "), QString("Column"));
        QCOMPARE(XmlElementName("-"), QString("_-"));
    }

    // ---- txt -----------------------------------------------------------------------
    void txtLayout() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        const QString path = dir.filePath("list.txt");
        QVERIFY(ExportList(g, path, ExportFormat::Txt, "", 2, 1, 0, "", "\t"));
        const QByteArray bytes = Read(path);
        QVERIFY(!bytes.startsWith("\xEF\xBB\xBF"));
        QVERIFY(bytes.endsWith("\r\n"));
        const QString all = QString::fromUtf8(bytes);
        QCOMPARE(all.count(u'\n'), 4);
        QCOMPARE(all.count(QStringLiteral("\r\n")), 4);
        const QStringList lines = all.split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 5);
        const QStringList header = lines[0].split(u'\t');
        QCOMPARE(header, Expected(g)[0]);
        QVERIFY(!header.contains("Versteckt"));
        const QStringList row1 = lines[1].split(u'\t');
        QCOMPARE(row1.size(), header.size());
        QCOMPARE(row1[6], QString("Zeile 1 Zeile 2"));
        QCOMPARE(row1[7], QString("only LF"));
        QCOMPARE(row1[8], QString("tab here"));
        QCOMPARE(lines[2].split(u'\t')[6], QString("Ünïcödé 日本 🎵"));
    }
    void txtOptions() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        g.SetSelected(2, true);
        const QString path = dir.filePath("opt.txt");
        // All columns, no header, selected rows, a title and a closing line, ";" divider.
        QVERIFY(ExportList(g, path, ExportFormat::Txt, "My title", 0, 0, 1, "the end", ";"));
        const QStringList lines = QString::fromUtf8(Read(path)).split("\r\n");
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[0], QString("My title"));
        QCOMPARE(lines[1].split(';').size(), 10);
        QVERIFY(lines[1].startsWith("2;;Quote \"inside\";x;"));
        QCOMPARE(lines[2], QString("the end"));
        QCOMPARE(lines[3], QString());
    }

    // ---- csv -----------------------------------------------------------------------
    void csvReadsBack_data() {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("delimiter");
        QTest::newRow("english") << kLanguageEnglish << ",";
        QTest::newRow("german") << kLanguageGerman << ";";
    }
    void csvReadsBack() {
        QFETCH(int, language);
        QFETCH(QString, delimiter);
        if (!PythonHas("csv"))
            QSKIP("python3 not available");
        SetLanguageColumn(language);
        QCOMPARE(QString(CsvDelimiter()), delimiter);
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        const QString path = dir.filePath("list.csv");
        QVERIFY(ExportList(g, path, ExportFormat::Csv));
        SetLanguageColumn(kLanguageEnglish);
        QVERIFY(Read(path).startsWith("\xEF\xBB\xBF"));
        QString error;
        const QJsonDocument doc = RunPython(kCsvScript, {path, delimiter}, &error);
        QVERIFY2(doc.isArray(), qPrintable(error));
        QCOMPARE(JsonRows(doc.array()), Expected(g));
    }

    // ---- xml -----------------------------------------------------------------------
    void xmlReadsBack() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        const QString path = dir.filePath("list.xml");
        QVERIFY(ExportList(g, path, ExportFormat::Xml));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&f);
        QStringList names, captions;
        QList<QStringList> rows;
        int depth = 0;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement()) {
                ++depth;
                if (depth == 1)
                    QCOMPARE(xml.name().toString(), QString("List"));
                if (xml.name() == u"Column") {
                    names << xml.attributes().value("name").toString();
                    captions << xml.attributes().value("caption").toString();
                } else if (depth == 2 && xml.name() == u"Row") {
                    rows << QStringList();
                } else if (depth == 3 && !rows.isEmpty()) {
                    QCOMPARE(xml.name().toString(), names[rows.last().size()]);
                    rows.last() << xml.readElementText();
                    --depth;
                }
            } else if (xml.isEndElement()) {
                --depth;
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QList<QStringList> expected = Expected(g);
        QCOMPARE(captions, expected.takeFirst());
        QCOMPARE(names, (QStringList{"Nr.", "FTag", "Datei_Name", "Größe_MB", "_1st_year", "_xml_thing",
                                     "Titel", "Titel_2", "Empty"}));
        for (QStringList& r : expected)
            for (QString& cell : r)
                cell = Strip(cell); // characters XML cannot carry are left out
        QCOMPARE(rows, expected);
    }

    // ---- htm -----------------------------------------------------------------------
    void htmlPage() {
        if (!PythonHas("html.parser"))
            QSKIP("python3 not available");
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        const QString path = dir.filePath("Liste & Co.htm");
        QVERIFY(ExportHtml(g, path));
        const QString text = QString::fromUtf8(Read(path));
        QVERIFY(text.startsWith("<!DOCTYPE html>"));
        QVERIFY(text.contains("<meta charset=\"utf-8\">"));
        QVERIFY(text.contains("<title>Liste &amp; Co</title>"));
        QVERIFY(text.contains("&lt;b&gt;bold&lt;/b&gt; &amp; &quot;q&quot; &#39;a&#39;"));
        QVERIFY(!text.contains("<b>"));
        QVERIFY(text.trimmed().endsWith("</html>"));
        QCOMPARE(text.count("<tr>"), g.Rows() + 1);
        QString error;
        const QJsonDocument doc = RunPython(kHtmlScript, {path}, &error);
        QVERIFY2(doc.isObject(), qPrintable(error));
        const QStringList tags = ToStrings(doc.object()["tags"].toArray());
        QCOMPARE(tags.mid(0, 2), (QStringList{"html", "head"}));
        QVERIFY(tags.contains("thead") && tags.contains("tbody") && tags.contains("body"));
        QList<QStringList> expected = Expected(g);
        for (QStringList& r : expected)
            for (QString& cell : r)
                cell = Strip(cell).replace("\r\n", "\n");
        QCOMPARE(JsonRows(doc.object()["rows"].toArray()), expected);
    }

    // ---- xls -----------------------------------------------------------------------
    void xlsReadsBack() {
        if (!PythonHas("xlrd"))
            QSKIP("python3-xlrd not installed (scripts/setup.sh)");
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        // A text longer than a cell can hold is cut at 32,767 characters.
        g.AddRow({"4", "", QString(40000, u'x'), "", "", "", "", "", "", ""});
        const QString path = dir.filePath("Meine Liste.xls");
        QVERIFY(ExportList(g, path, ExportFormat::Xls, "", 2, 1, 0, ""));
        QVERIFY(Read(path).startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
        QString error;
        const QJsonDocument doc = RunPython(kXlsScript, {path}, &error);
        QVERIFY2(doc.isArray(), qPrintable(error));
        QCOMPARE(doc.array().size(), 1);
        const QJsonObject sheet = doc.array()[0].toObject();
        QCOMPARE(sheet["name"].toString(), QString("Meine Liste"));
        QVERIFY(sheet["headerBold"].toInt() == 1 || sheet["headerBold"].toBool());
        QList<QStringList> expected = Expected(g);
        expected.last()[2].truncate(32767);
        QCOMPARE(JsonRows(sheet["rows"].toArray()), expected);
    }
    void xlsEmptyList() {
        if (!PythonHas("xlrd"))
            QSKIP("python3-xlrd not installed (scripts/setup.sh)");
        QTemporaryDir dir;
        DataGrid g;
        g.AddColumn("A", "Alpha");
        const QString path = dir.filePath("empty.xls");
        QVERIFY(ExportList(g, path, ExportFormat::Xls));
        QString error;
        const QJsonDocument doc = RunPython(kXlsScript, {path}, &error);
        QVERIFY2(doc.isArray(), qPrintable(error));
        QCOMPARE(JsonRows(doc.array()[0].toObject()["rows"].toArray()), (QList<QStringList>{{"Alpha"}}));
    }
    void xlsManyRowsGoOnFurtherSheets() {
        if (!PythonHas("xlrd"))
            QSKIP("python3-xlrd not installed (scripts/setup.sh)");
        QTemporaryDir dir;
        DataGrid g;
        g.AddColumn("A", "Name");
        g.AddColumn("B", "Artist");
        g.AddColumn("C", "Nummer");
        const int rows = 150000; // about 10 MB: the allocation table needs more than the header's 109 sectors
        g.LockUpdate(true);
        for (int r = 1; r <= rows; ++r)
            g.AddRow({QStringLiteral("Song %1").arg(r), QStringLiteral("Artist %1").arg(r % 97),
                      QString::number(r)});
        g.LockUpdate(false);
        const QString path = dir.filePath("big.xls");
        QVERIFY(ExportList(g, path, ExportFormat::Xls));
        QVERIFY(QFileInfo(path).size() > 109 * 128 * 512);
        QString error;
        const QJsonDocument doc = RunPython(kXlsScript, {path}, &error);
        QVERIFY2(doc.isArray(), qPrintable(error));
        const QJsonArray sheets = doc.array();
        QCOMPARE(sheets.size(), 3);
        QCOMPARE(sheets[0].toObject()["name"].toString(), QString("big"));
        QCOMPARE(sheets[1].toObject()["name"].toString(), QString("big (2)"));
        int seen = 0;
        for (const auto& s : sheets) {
            const QList<QStringList> got = JsonRows(s.toObject()["rows"].toArray());
            QVERIFY(got.size() <= 65536);
            QCOMPARE(got[0], (QStringList{"Name", "Artist", "Nummer"}));
            for (int i = 1; i < got.size(); ++i) {
                ++seen;
                QCOMPARE(got[i][0], QStringLiteral("Song %1").arg(seen));
                QCOMPARE(got[i][1], QStringLiteral("Artist %1").arg(seen % 97));
            }
        }
        QCOMPARE(seen, rows);
        QCOMPARE(JsonRows(sheets[0].toObject()["rows"].toArray()).size(), 65536);
    }
    void xlsOpensInLibreOffice() {
        const QString office = QStandardPaths::findExecutable("libreoffice").isEmpty()
                                   ? QStandardPaths::findExecutable("soffice")
                                   : QStandardPaths::findExecutable("libreoffice");
        if (office.isEmpty())
            QSKIP("LibreOffice not installed");
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        const QString path = dir.filePath("lo.xls");
        QVERIFY(ExportList(g, path, ExportFormat::Xls));
        QProcess p;
        p.start(office, {"--headless", "-env:UserInstallation=file://" + dir.filePath("profile"),
                         "--convert-to", "csv", "--outdir", dir.filePath("out"), path});
        QVERIFY(p.waitForFinished(180000));
        const QString csv = QString::fromUtf8(Read(dir.filePath("out/lo.csv")));
        QVERIFY2(csv.contains("semi;colon,comma"), qPrintable(csv));
        QVERIFY(csv.contains("Ünïcödé 日本"));
    }

    // ---- the command flow ----------------------------------------------------------
    void emptyListGuard() {
        DataGrid g;
        g.AddColumn("A", "a");
        ScriptedPrompt p;
        QVERIFY(!CheckExportable(g, p));
        QCOMPARE(p.LastText(), QString("The list is empty."));
        g.AddRow({"x"});
        QVERIFY(CheckExportable(g, p));
        QCOMPARE(p.shown.size(), std::size_t(1));
    }
    void upperCaseHtmEndingWritesHtml() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        ScriptedPrompt p;
        const QString path = dir.filePath("LIST.HTM");
        QCOMPARE(ExportDataList(g, path, Settings(), {}, p), ExportOutcome::Written);
        QVERIFY(Read(path).startsWith("<!DOCTYPE html>"));
        QCOMPARE(p.LastText(), QString("The export is done."));
        QCOMPARE(p.shown.back().icon, Prompt::Icon::Information);
    }
    void fiveLetterEndingWritesNothing() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        ScriptedPrompt p;
        Settings().SetCellText(6, 1, "/old/folder");
        for (const char* name : {"list.html", "list.xlsx", "list.docx", "list"}) {
            QCOMPARE(ExportDataList(g, dir.filePath(name), Settings(), {}, p), ExportOutcome::NotWritten);
            QVERIFY(!QFile::exists(dir.filePath(name)));
        }
        QVERIFY(p.shown.empty());
        QCOMPARE(Settings().CellText(6, 1), QString("/old/folder"));
    }
    void noMsgSilencesTheReport() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        ScriptedPrompt p;
        DataListExportOptions o;
        o.noMsg = true;
        QCOMPARE(ExportDataList(g, dir.filePath("quiet.csv"), Settings(), o, p), ExportOutcome::Written);
        QVERIFY(p.shown.empty());
    }
    void presetFolderWins() {
        QTemporaryDir dir;
        DataGrid g;
        FillGrid(g);
        ScriptedPrompt p;
        Settings().SetCellText(6, 1, "/remembered");
        Settings().SetCellText(26, 1, dir.filePath("preset"));
        QCOMPARE(ExportStartFolder(Settings(), dir.filePath("preset"), ExportFolders::DataList),
                 dir.filePath("preset"));
        QCOMPARE(ExportStartFolder(Settings(), "", ExportFolders::DataList), QString("/remembered"));
        // With the preset set, neither the remembered folder nor the preset changes.
        QDir().mkpath(dir.filePath("elsewhere"));
        DataListExportOptions o;
        o.presetFolder = dir.filePath("preset");
        QCOMPARE(ExportDataList(g, dir.filePath("elsewhere/a.txt"), Settings(), o, p),
                 ExportOutcome::Written);
        QCOMPARE(Settings().CellText(6, 1), QString("/remembered"));
        QCOMPARE(Settings().CellText(26, 1), dir.filePath("preset"));
        // Without it, the folder of the chosen file is remembered.
        QCOMPARE(ExportDataList(g, dir.filePath("elsewhere/b.txt"), Settings(), {}, p),
                 ExportOutcome::Written);
        QCOMPARE(Settings().CellText(6, 1), dir.filePath("elsewhere"));
        // The other lists remember their folder even with a preset.
        RememberExportFolder(Settings(), dir.filePath("preset"), "/x/y/ref.csv", ExportFolders::RefList);
        QCOMPARE(Settings().CellText(85, 2), QString("/x/y"));
    }
    void playlistExportTakesUnmarkedRows() {
        DataGrid playlist;
        const char* keys[] = {"No",         "FTag",     "TF",        "FileName", "Type",         "DurationS",
                              "DurationMS", "SizeByte", "SizeMByte", "PathFile", "PathPlaylist", "KeyInput"};
        for (const char* k : keys)
            playlist.AddColumn(k, QStringLiteral("Cap ") + k);
        auto row = [&](const QString& mark, const QString& name) {
            playlist.AddRow(
                {"", mark, "ok", name, "MP3", "200", "03:20", "4000000", "3,815", "/music", "", ""});
        };
        row("x", "a.mp3");
        row("_#-->", "b.mp3");
        DataGrid dummy;
        PreparePlaylistExport(playlist, "party.m3u", dummy);
        QCOMPARE(dummy.Cols(), 5);
        QCOMPARE(dummy.Column(1).key, QString("Path"));
        QCOMPARE(dummy.Column(1).caption, QString("Cap PathFile"));
        QCOMPARE(dummy.Column(2).caption, QString("Cap FileName"));
        QCOMPARE(dummy.Column(5).caption, QString("Cap SizeMByte"));
        // Every row marked: the title row and an empty row only.
        QCOMPARE(dummy.Rows(), 2);
        QCOMPARE(dummy.CellText(1, 1), QString("party.m3u"));
        QCOMPARE(dummy.RowCells(2), QStringList(5, QString()));
        QTemporaryDir dir;
        QVERIFY(ExportList(dummy, dir.filePath("p.txt"), ExportFormat::Txt));
        QCOMPARE(QString::fromUtf8(Read(dir.filePath("p.txt"))),
                 QString("Cap PathFile\tCap FileName\tCap DurationS\tCap DurationMS\tCap SizeMByte\r\n"
                         "party.m3u\t\t\t\t\r\n\t\t\t\t\r\n"));
        // Unmarked rows follow in order; a second run starts afresh.
        row("", "c.mp3");
        PreparePlaylistExport(playlist, "party.m3u", dummy);
        QCOMPARE(dummy.Rows(), 3);
        QCOMPARE(dummy.RowCells(3), (QStringList{"/music", "c.mp3", "200", "03:20", "3,815"}));
    }
    void pictureListExportName() {
        QCOMPARE(PictureListExportName("Bilder im Ordner  (120)"), QString("Export Bilder im Ordner"));
        QCOMPARE(PictureListExportName("Pictures"), QString("Export Pictures"));
    }
    void failedWriteIsReportedAndLeavesOldFile() {
        QTemporaryDir dir;
        DataGrid g;
        g.AddColumn("A", "a");
        g.LockUpdate(true);
        for (int r = 0; r < 20000; ++r)
            g.AddRow({QString(20, u'z')});
        g.LockUpdate(false);
        const QString path = dir.filePath("old.txt");
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("old contents");
        f.close();
        ScriptedPrompt p;
        struct rlimit old;
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &old), 0);
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        struct rlimit lim = old;
        lim.rlim_cur = 64 * 1024;
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &lim), 0);
        const ExportOutcome outcome = ExportDataList(g, path, Settings(), {}, p);
        const ExportOutcome xls = ExportDataList(g, dir.filePath("new.xls"), Settings(), {}, p);
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
        QCOMPARE(outcome, ExportOutcome::Failed);
        QCOMPARE(xls, ExportOutcome::Failed);
        QCOMPARE(Read(path), QByteArray("old contents"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"old.txt"});
        QCOMPARE(p.Count("tell"), 2);
        QCOMPARE(p.shown[0].icon, Prompt::Icon::Critical);
        QVERIFY(p.shown[0].text.contains("could not be written"));
        // A folder that does not exist fails the same way.
        QCOMPARE(ExportDataList(g, dir.filePath("none/x.txt"), Settings(), {}, p), ExportOutcome::Failed);
    }
};

QTEST_GUILESS_MAIN(TestExport)
#include "test_export.moc"
