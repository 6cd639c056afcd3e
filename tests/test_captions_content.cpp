// Checks the texts that come with a fresh installation: the built Caption.qlt against the
// caption row constants and the control label register, and the built qlt.ini defaults.

#include "TestPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

// Every row that the program's commands name for a message, a question, a title, a
// header, a footer or a menu entry, whether or not its command is built yet: each must
// read well in German and in English.
const int kReferencedRows[] = {
    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,   11,   12,   13,   14,   15,   16,   17,
    18,   19,   20,   21,   22,   23,   24,   25,   26,   27,   28,   29,   30,   31,   32,   33,   34,
    35,   36,   37,   38,   39,   40,   41,   42,   43,   44,   45,   46,   47,   48,   49,   50,   60,
    81,   82,   83,   91,   93,   95,   96,   99,   102,  103,  107,  109,  112,  113,  136,  140,  142,
    146,  147,  148,  149,  152,  153,  156,  161,  164,  166,  167,  168,  169,  171,  172,  180,  190,
    191,  193,  194,  195,  200,  209,  213,  214,  221,  222,  223,  224,  225,  229,  230,  231,  232,
    234,  235,  237,  238,  239,  259,  260,  261,  262,  264,  265,  268,  269,  274,  276,  279,  280,
    281,  287,  288,  289,  296,  297,  298,  309,  314,  316,  317,  323,  326,  327,  329,  332,  339,
    340,  369,  373,  375,  389,  404,  407,  408,  409,  417,  427,  432,  433,  436,  451,  455,  467,
    469,  471,  472,  473,  479,  484,  485,  490,  496,  501,  503,  507,  509,  510,  539,  540,  541,
    549,  550,  551,  558,  570,  572,  573,  584,  585,  586,  587,  588,  589,  590,  591,  594,  595,
    596,  597,  598,  599,  600,  601,  602,  628,  632,  633,  634,  635,  637,  644,  646,  652,  653,
    655,  662,  663,  676,  682,  694,  695,  700,  701,  702,  703,  704,  705,  706,  740,  741,  742,
    743,  744,  745,  746,  747,  760,  761,  762,  763,  764,  765,  766,  767,  770,  771,  772,  773,
    774,  775,  776,  777,  781,  782,  783,  784,  802,  803,  809,  811,  818,  832,  833,  835,  843,
    844,  845,  846,  847,  848,  849,  864,  865,  866,  892,  906,  907,  929,  931,  940,  941,  945,
    948,  949,  950,  977,  985,  1005, 1011, 1014, 1015, 1024, 1032, 1036, 1050, 1055, 1057, 1058, 1060,
    1061, 1066, 1069, 1071, 1075, 1076, 1080, 1086, 1088, 1094, 1096, 1097, 1100, 1103, 1120, 1121, 1122,
    1139, 1151, 1152, 1153, 1154, 1155, 1158, 1160, 1162, 1163, 1165, 1167, 1169, 1170, 1196, 1197, 1198,
    1217, 1222, 1224, 1225, 1228, 1230, 1233, 1234, 1236, 1247, 1257, 1266, 1267, 1270, 1271, 1272, 1279,
    1282, 1285, 1287, 1293, 1294, 1296, 1300, 1324, 1325, 1327, 1329, 1333, 1341, 1350, 1355, 1366, 1372,
    1384,
};

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
    void everyReferencedRowHasBothLanguages() {
        const DataGrid& g = Captions();
        QStringList missing;
        for (int row : kReferencedRows) {
            const bool german = !g.CellText(row, kLanguageGerman).trimmed().isEmpty();
            const bool english = !g.CellText(row, kLanguageEnglish).trimmed().isEmpty();
            if (!german || !english)
                missing << QString::number(row) + (german ? QString() : QStringLiteral(" de")) +
                               (english ? QString() : QStringLiteral(" en"));
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u',')));
    }

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
        QCOMPARE(rows.first().row, CapListNumberHeader); // the file read is the header compiled here
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
        // The pristine folder the build makes for installing: the program folder beside
        // the executables is the developer's own once the program has run there.
        QString file = ProgramDir() + QStringLiteral("/../dist/qlt.ini");
        if (!QFileInfo::exists(file))
            file = ProgramDir() + QStringLiteral("/qlt.ini");
        DataGrid ini;
        QVERIFY(ini.LoadFile(file));
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
