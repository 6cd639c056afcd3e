// Checks the texts that come with a fresh installation: the built Caption.qlt against the
// caption row constants and the control label register, and the built qlt.ini defaults.

#include "TestPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

struct NamedRow {
    QString name;
    int row = 0;
    bool joined = false; // the code joins the text directly with a number or a name
};

QList<NamedRow> ReadCaptionRowConstants() {
    QList<NamedRow> out;
    QFile f(SourceDir() + QStringLiteral("/src/core/CaptionRows.h"));
    if (!f.open(QIODevice::ReadOnly))
        return out;
    static const QRegularExpression re(QStringLiteral(R"(constexpr CaptionRow (Cap\w+) = (\d+);(.*))"));
    for (const QString& line : QString::fromUtf8(f.readAll()).split(u'\n')) {
        const auto m = re.match(line);
        if (m.hasMatch())
            out.append({m.captured(1), m.captured(2).toInt(), m.captured(3).contains(u"(joined)")});
    }
    return out;
}

struct ControlLine {
    QString object;
    int row = 0;
    QString kind;
    int lineNo = 0;
};

QList<ControlLine> ReadControlRegister(QString* error) {
    QList<ControlLine> out;
    QFile f(SourceDir() + QStringLiteral("/resources/control_captions.tsv"));
    if (!f.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("control_captions.tsv not readable");
        return out;
    }
    int lineNo = 0;
    for (QString line : QString::fromUtf8(f.readAll()).split(u'\n')) {
        ++lineNo;
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList p = line.split(u'\t');
        if (p.size() != 3) {
            *error = QStringLiteral("line %1 has %2 fields").arg(lineNo).arg(p.size());
            return out;
        }
        bool ok = false;
        const int row = p[1].toInt(&ok);
        out.append({p[0], ok ? row : -1, p[2], lineNo});
    }
    return out;
}

const DataGrid& Captions() {
    static DataGrid grid;
    static bool loaded = grid.LoadFile(ProgramDir() + QStringLiteral("/Caption.qlt"));
    Q_UNUSED(loaded);
    return grid;
}

} // namespace

class TestCaptionsContent : public QObject {
    Q_OBJECT
private slots:
    void tableHasAllRows() {
        const DataGrid& g = Captions();
        QVERIFY2(g.Rows() >= kCaptionRowCount, "Caption.qlt was not built or is short");
        QVERIFY(g.Cols() >= kLanguageEnglish);
        for (int r = 1; r <= kCaptionRowCount; ++r)
            QCOMPARE(g.CellText(r, 1), QString::number(r));
        QVERIFY(!g.CellText(1, kLanguageGerman).isEmpty()); // row 1 tells that a language exists
        QVERIFY(!g.CellText(1, kLanguageEnglish).isEmpty());
        QVERIFY(!g.CellText(533, kLanguageGerman).isEmpty());
        QVERIFY(!g.CellText(533, kLanguageEnglish).isEmpty());
    }

    void constantsHaveBothLanguages() {
        const DataGrid& g = Captions();
        const QList<NamedRow> rows = ReadCaptionRowConstants();
        QVERIFY2(rows.size() > 300, "CaptionRows.h not found or not parsed");
        QCOMPARE(rows.first().row, CapQuitQuestion); // the file read is the header compiled here
        for (const NamedRow& n : rows) {
            QList<int> check;
            if (n.name == u"CapTypicalLabel") {
                for (int i = 0; i <= 6; ++i)
                    check << n.row + i;
            } else if (n.name.endsWith(u"Label")) {
                for (int i = 7; i <= 14; ++i)
                    check << n.row + i;
            } else {
                check << n.row;
            }
            for (int r : check) {
                QVERIFY2(r >= 1 && r <= kCaptionRowCount, qPrintable(n.name));
                QVERIFY2(!g.CellText(r, kLanguageGerman).trimmed().isEmpty(),
                         qPrintable(QStringLiteral("%1 (row %2) has no German text").arg(n.name).arg(r)));
                QVERIFY2(!g.CellText(r, kLanguageEnglish).trimmed().isEmpty(),
                         qPrintable(QStringLiteral("%1 (row %2) has no English text").arg(n.name).arg(r)));
            }
        }
        // constants are sorted by row and unique
        for (int i = 1; i < rows.size(); ++i)
            QVERIFY2(rows[i - 1].row < rows[i].row, qPrintable(rows[i].name));
    }

    void registerIsWellFormed() {
        QString error;
        const QList<ControlLine> lines = ReadControlRegister(&error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QVERIFY(lines.size() > 500);
        static const QRegularExpression kindRe(QStringLiteral(R"(^(text|tooltip|title|tab:\d+|item:\d+)$)"));
        static const QRegularExpression nameRe(QStringLiteral(R"(^[A-Za-z][A-Za-z0-9_]*(\(\d+\))?$)"));
        QSet<QString> seen;
        for (const ControlLine& c : lines) {
            const QString where = QStringLiteral("line %1: %2").arg(c.lineNo).arg(c.object);
            QVERIFY2(c.row >= 1 && c.row <= kCaptionRowCount, qPrintable(where));
            QVERIFY2(kindRe.match(c.kind).hasMatch(), qPrintable(where + u' ' + c.kind));
            QVERIFY2(nameRe.match(c.object).hasMatch(), qPrintable(where));
            const QString key = c.object + u'\t' + c.kind;
            QVERIFY2(!seen.contains(key), qPrintable(QStringLiteral("duplicate ") + where + u' ' + c.kind));
            seen.insert(key);
        }
    }

    void registeredRowsHaveBothLanguages() {
        const DataGrid& g = Captions();
        QString error;
        const QList<ControlLine> lines = ReadControlRegister(&error);
        for (const ControlLine& c : lines) {
            const QString where = QStringLiteral("%1 %2 (row %3)").arg(c.object, c.kind).arg(c.row);
            QVERIFY2(!g.CellText(c.row, kLanguageGerman).trimmed().isEmpty(), qPrintable(where + " German"));
            QVERIFY2(!g.CellText(c.row, kLanguageEnglish).trimmed().isEmpty(),
                     qPrintable(where + " English"));
        }
    }

    void textsAreClean() {
        const DataGrid& g = Captions();
        QSet<int> joined;
        for (const NamedRow& n : ReadCaptionRowConstants())
            if (n.joined)
                joined.insert(n.row);
        for (int r = 1; r <= kCaptionRowCount; ++r) {
            for (int col : {kLanguageGerman, kLanguageEnglish}) {
                const QString t = g.CellText(r, col);
                const QString where = QStringLiteral("row %1 column %2: '%3'").arg(r).arg(col).arg(t);
                QVERIFY2(!t.contains(u'\t') && !t.contains(u'\n') && !t.contains(u'\r'), qPrintable(where));
                if (!joined.contains(r))
                    QVERIFY2(t == t.trimmed(), qPrintable(where));
                QVERIFY2(!t.contains(QStringLiteral("  ")) || t.startsWith(u'+') || t.startsWith(u'-'),
                         qPrintable(where)); // double blanks only in the shift buttons "+  200"
            }
            // a row is filled in both languages or in neither
            QCOMPARE(g.CellText(r, kLanguageGerman).isEmpty(), g.CellText(r, kLanguageEnglish).isEmpty());
        }
    }

    void messagesThatAreJoinedReadWell() {
        const DataGrid& g = Captions();
        // the closing questions are joined by an empty line
        QVERIFY(g.CellText(CapQuitAnywayQuestion, kLanguageEnglish).endsWith(u'?'));
        QVERIFY(g.CellText(CapSyncTextUnsaved, kLanguageGerman).endsWith(u'.'));
        // a count follows these texts directly
        for (CaptionRow r : {CapFilesUpdated, CapFilesFailed, CapMissingFiles, CapProgressOf})
            QVERIFY(g.CellText(r, kLanguageEnglish).endsWith(u' '));
        // the status words of lists are compared as strings and must differ
        QVERIFY(g.CellText(CapStatusFound, kLanguageGerman) != g.CellText(CapStatusMissing, kLanguageGerman));
        QVERIFY(g.CellText(CapStatusFound, kLanguageEnglish) !=
                g.CellText(CapStatusMissing, kLanguageEnglish));
    }

    void freshSettingsHaveDefaults() {
        DataGrid ini;
        QVERIFY(ini.LoadFile(ProgramDir() + QStringLiteral("/qlt.ini")));
        QVERIFY(ini.Rows() >= 1000);
        QCOMPARE(ini.Cols(), 8);
        QCOMPARE(ini.CellText(27, 1), QStringLiteral("2"));
        QCOMPARE(ini.CellText(43, 1), QStringLiteral("3"));
        QCOMPARE(ini.CellText(49, 1), QStringLiteral("1"));
        for (int i = 0; i < 6; ++i)
            QCOMPARE(ini.CellText(61 + i, 3), QString(i + 1, u'*'));
        for (int r = 1; r <= 10; ++r) {
            QVERIFY(!ini.CellText(r, 4).isEmpty());      // the ten marks
            QVERIFY(!ini.CellText(50 + r, 3).isEmpty()); // the ten moods
        }
        for (int t = 0; t < 21; ++t)
            QVERIFY(!ini.CellText(41 + t, 2).isEmpty()); // picture types 0 to 20
        QCOMPARE(ini.CellText(41 + 3, 2), QStringLiteral("Cover (front)"));
        // the genre list is sorted and holds the classic list
        QStringList genres;
        for (int r = 1; r <= 256 && !ini.CellText(r, 5).isEmpty(); ++r)
            genres << ini.CellText(r, 5);
        QVERIFY(genres.size() >= 148);
        QVERIFY(genres.contains(QStringLiteral("Blues")));
        QVERIFY(genres.contains(QStringLiteral("Synthpop")));
        for (int i = 1; i < genres.size(); ++i)
            QVERIFY2(genres[i - 1].compare(genres[i], Qt::CaseInsensitive) < 0, qPrintable(genres[i]));
        QVERIFY(!ini.CellText(11, 2).isEmpty()); // the check list has a first row
        QVERIFY(!ini.CellText(1, 8).isEmpty());  // the negative list has a first word
    }
};

QTEST_GUILESS_MAIN(TestCaptionsContent)
#include "test_captions_content.moc"
