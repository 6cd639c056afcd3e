// Printing as a user starts it: the page setup opened from the preferences (defaults,
// unit conversion, refusal of a field without a number, cancel), and texts printed from
// the texts area and the synchronising editor into a PDF, read back with pdftotext.

#include "ListWindowFixture.h"
#include "app/FrmPageMargins.h"
#include "app/FrmPreferences.h"
#include "app/FrmSText.h"
#include "app/FrmTexte.h"
#include "app/PrintUi.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "text/modSText.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

class TestPrintUi : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

    static void Click(QWidget* root, const char* name) {
        auto* b = Control<QAbstractButton>(root, QString::fromLatin1(name));
        QVERIFY2(b && b->isEnabled() && b->isVisible(), name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    static FrmPageMargins* OpenSetup(GuiProgram& g) {
        g.window->TabInput->setCurrentWidget(g.window->frmPreferences);
        Click(g.window->frmPreferences, "btnPref_PageMargins");
        for (FrmPageMargins* f : g.window->frmPreferences->findChildren<FrmPageMargins*>())
            if (f->isVisible())
                return f;
        return nullptr;
    }
    static QLineEdit* Field(QWidget* w, const char* name) {
        return Control<QLineEdit>(w, QString::fromLatin1(name));
    }
    static void Type(QLineEdit* e, const QString& text) {
        e->selectAll();
        QTest::keyClick(e, Qt::Key_Delete);
        QTest::keyClicks(e, text);
    }
    // The pages of a PDF as pdftotext -layout reads them.
    static QStringList Pages(const QString& pdf) {
        QProcess p;
        p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        if (!p.waitForFinished(30000))
            return {};
        const QString all = QString::fromUtf8(p.readAllStandardOutput());
        if (qEnvironmentVariableIsSet("QLT_SHOW_PDF"))
            qInfo().noquote() << all;
        QStringList pages = all.split(QLatin1Char('\f'));
        if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
            pages.removeLast();
        return pages;
    }
    // The top of the first word `word` on each page, in millimetres from the paper's top.
    static QList<double> WordTops(const QString& pdf, const QString& word) {
        QProcess p;
        p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
        if (!p.waitForFinished(30000))
            return {};
        QList<double> tops;
        const QString html = QString::fromUtf8(p.readAllStandardOutput());
        const QStringList pages = html.split(QStringLiteral("<page "));
        static const QRegularExpression re(
            QStringLiteral("<word xMin=\"[0-9.]+\" yMin=\"([0-9.]+)\"[^>]*>([^<]*)</word>"));
        for (int i = 1; i < pages.size(); ++i) {
            double top = -1;
            for (auto it = re.globalMatch(pages[i]); it.hasNext();) {
                const auto m = it.next();
                if (m.captured(2) == word) {
                    top = m.captured(1).toDouble() * kMmPerInch / 72.0;
                    break;
                }
            }
            tops.append(top);
        }
        return tops;
    }
    static int LineOf(const QString& page, const QString& text) {
        const QStringList lines = page.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i)
            if (lines[i].contains(text))
                return i;
        return -1;
    }

private slots:
    void initTestCase() {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
    }
    void cleanup() { SetPrintToPdf(QString()); }

    void setupShowsDefaultsOfEmptySettings() {
        GuiProgram g;
        QVERIFY(g.Start());
        for (int r : {1, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20})
            SetSetting(r, Ini::Col1, QString());
        FrmPageMargins* f = OpenSetup(g);
        QVERIFY(f && f->isVisible());
        QVERIFY(Control<QRadioButton>(f, "optPrint_mm")->isChecked());
        QCOMPARE(Field(f, "txtPrint_Width")->text(), QStringLiteral("210"));
        QCOMPARE(Field(f, "txtPrint_Height")->text(), QStringLiteral("297"));
        QCOMPARE(Field(f, "txtPrint_Left")->text(), QStringLiteral("20"));
        QCOMPARE(Field(f, "txtPrint_Bottom")->text(), QStringLiteral("20"));
        QCOMPARE(Field(f, "txtPrint_Header")->text(), QStringLiteral("15"));
        QCOMPARE(Field(f, "txtPrint_Footer")->text(), QStringLiteral("15"));
        QCOMPARE(Field(f, "txtPrint_Fontsize")->text(), QStringLiteral("12"));
        Click(f, "btnPrint_Get");
        QVERIFY(!f->isVisible());
        QCOMPARE(Setting(10, Ini::Col1), QStringLiteral("6"));
        QCOMPARE(Setting(18, Ini::Col1), QStringLiteral("210"));
        QCOMPARE(Setting(15, Ini::Col1), QStringLiteral("15"));
    }

    void unitChangeCancelledStoresNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        SetSetting(11, Ini::Col1, QStringLiteral("25.4"));
        FrmPageMargins* f = OpenSetup(g);
        QVERIFY(f);
        Click(f, "optPrint_Inch");
        QCOMPARE(Field(f, "txtPrint_Left")->text(), QStringLiteral("1"));
        QCOMPARE(Field(f, "txtPrint_Width")->text(), QStringLiteral("8.27"));
        QCOMPARE(Field(f, "txtPrint_Fontsize")->text(), QStringLiteral("12"));
        Click(f, "btnPrint_Cancel");
        QCOMPARE(Setting(11, Ini::Col1), QStringLiteral("25.4"));
        QVERIFY(Setting(10, Ini::Col1) != QStringLiteral("5"));
    }

    void unitChangeStoredWithOk() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPageMargins* f = OpenSetup(g);
        Click(f, "optPrint_Inch");
        Click(f, "btnPrint_Get");
        QCOMPARE(Setting(10, Ini::Col1), QStringLiteral("5"));
        QCOMPARE(Setting(18, Ini::Col1), QStringLiteral("8.27"));
        f = OpenSetup(g);
        QVERIFY(Control<QRadioButton>(f, "optPrint_Inch")->isChecked());
        Click(f, "optPrint_mm");
        QCOMPARE(Field(f, "txtPrint_Width")->text(), QStringLiteral("210.06")); // 8.27 inches
    }

    void fieldWithoutNumberIsRefused() {
        GuiProgram g;
        QVERIFY(g.Start());
        SetSetting(12, Ini::Col1, QStringLiteral("18"));
        FrmPageMargins* f = OpenSetup(g);
        Type(Field(f, "txtPrint_Right"), QStringLiteral("wide"));
        Click(f, "btnPrint_Get");
        QVERIFY(f->isVisible());
        QCOMPARE(g.prompt.shown.back().text, Caption(CapPageSetupNotNumber));
        QCOMPARE(Setting(12, Ini::Col1), QStringLiteral("18"));
        Type(Field(f, "txtPrint_Right"), QStringLiteral("30"));
        Click(f, "btnPrint_Get");
        QVERIFY(!f->isVisible());
        QCOMPARE(Setting(12, Ini::Col1), QStringLiteral("30"));
    }

    void textsAreaPrintsTheActiveBox() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QString pdf = dir.filePath(QStringLiteral("texte.pdf"));
        SetPrintToPdf(pdf);
        FrmTexte* t = g.window->frmTexte;
        g.window->TabInput->setCurrentWidget(t);
        Click(t, "btnTexte_PrintTextbox");
        QCOMPARE(g.prompt.shown.back().text, Caption(CapTextBoxEmpty));
        QVERIFY(!QFileInfo::exists(pdf));

        QStringList lines;
        for (int i = 1; i <= 80; ++i)
            lines.append(QStringLiteral("Zeile %1").arg(i));
        auto* box = Control<QPlainTextEdit>(t, QStringLiteral("txtTexte_Txt1"));
        box->setFocus();
        box->setPlainText(lines.join(u'\n'));
        Click(t, "btnTexte_PrintTextbox");
        QCOMPARE(g.prompt.shown.back().text, Caption(CapPrintDone));
        const QStringList pages = Pages(pdf);
        // 12 point lines on 257 mm: a page holds about 50 of them
        QCOMPARE(pages.size(), 2);
        QVERIFY(LineOf(pages[0], QStringLiteral("Zeile 1 ")) >= 0 ||
                pages[0].contains(QStringLiteral("Zeile 1\n")));
        QVERIFY(pages[0].contains(QStringLiteral("Zeile 45")));
        QVERIFY(!pages[0].contains(QStringLiteral("Zeile 80")));
        QVERIFY(pages[1].contains(QStringLiteral("Zeile 80")));
        QVERIFY(pages[0].contains(Caption(CapPage) + QStringLiteral("01")));
        QVERIFY(pages[1].contains(Caption(CapPage) + QStringLiteral("02")));
        // the first line starts at the top margin of 20 mm, the page line ends at the
        // footer distance of 15 mm from the bottom edge
        const QList<double> first = WordTops(pdf, QStringLiteral("Zeile"));
        QCOMPARE(first.size(), 2);
        QVERIFY2(first[0] > 20 && first[0] < 22, qPrintable(QString::number(first[0])));
        QVERIFY2(first[1] > 20 && first[1] < 22, qPrintable(QString::number(first[1])));
        const QList<double> foot = WordTops(pdf, Caption(CapPage).trimmed());
        QVERIFY2(foot[0] > 297 - 15 - 6 && foot[0] < 297 - 15, qPrintable(QString::number(foot[0])));
        // the page line stands below the last text line
        QVERIFY(LineOf(pages[1], Caption(CapPage) + QStringLiteral("02")) >
                LineOf(pages[1], QStringLiteral("Zeile 80")));
    }

    void pageLineWithPathAndBoxes() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QString pdf = dir.filePath(QStringLiteral("rows.pdf"));
        SetPrintToPdf(pdf);
        DataGrid grid;
        grid.AddColumn(QStringLiteral("n"), QStringLiteral("Name"));
        grid.AddColumn(QStringLiteral("m"), QStringLiteral("Mark"));
        grid.AddRow({QStringLiteral("first song"), QStringLiteral("x")});
        grid.AddRow({QStringLiteral("second song"), QString()});
        PrintGridCommand(g.window.get(), g.prompt, grid, PrintRowChoice::Marked, QStringLiteral("x"),
                         QStringLiteral("/music/list"));
        QStringList pages = Pages(pdf);
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains(QStringLiteral("first song")));
        QVERIFY(!pages[0].contains(QStringLiteral("second song")));
        QVERIFY(
            pages[0].contains(QStringLiteral("/music/list - ") + Caption(CapPage) + QStringLiteral("01")));

        SetSetting(19, Ini::Col1, QStringLiteral("1")); // no page number
        PrintGridCommand(g.window.get(), g.prompt, grid, PrintRowChoice::All, QString(),
                         QStringLiteral("/music/list"));
        pages = Pages(pdf);
        QVERIFY(pages[0].contains(QStringLiteral("second song")));
        QVERIFY(pages[0].contains(QStringLiteral("/music/list")));
        QVERIFY(!pages[0].contains(Caption(CapPage) + QStringLiteral("01")));
    }

    void editorPrintsWithAndWithoutTimes() {
        GuiProgram g;
        QVERIFY(g.Start());
        const QString pdf = dir.filePath(QStringLiteral("stext.pdf"));
        SetPrintToPdf(pdf);
        FrmSText* s = g.window->frmSText;
        g.window->TabInput->setCurrentWidget(s);
        DataGrid& list = Grids::LbxSText();
        list.Clear();
        list.AddRow({QString(), QStringLiteral("12"), QStringLiteral("12340"), QStringLiteral("00:12.34"),
                     QStringLiteral("first words")});
        list.AddRow({QString(), QString(), QString(), QString(), QStringLiteral("untimed words")});
        list.AddRow({QString(), QString(), QString(), QString(), QString()});
        Click(s, "btnSText_PrintText");
        QStringList pages = Pages(pdf);
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains(QStringLiteral("first words")));
        QVERIFY(!pages[0].contains(QStringLiteral("00:12.34")));
        Click(s, "chbSText_PrintWithTime");
        Click(s, "btnSText_PrintText");
        pages = Pages(pdf);
        QVERIFY(pages[0].contains(QStringLiteral("12 - 00:12.34 - first words")));
        QVERIFY(pages[0].contains(QStringLiteral("untimed words")));
    }

    void printerErrorShowsCriticalBox() {
        GuiProgram g;
        QVERIFY(g.Start());
        SetPrintToPdf(dir.filePath(QStringLiteral("no/such/folder/x.pdf")));
        QVERIFY(!PrintTextCommand(g.prompt, QStringLiteral("/a"), QStringLiteral("text")));
        QCOMPARE(g.prompt.shown.back().icon, Prompt::Icon::Critical);
        QVERIFY(g.prompt.shown.back().text.startsWith(Caption(CapPrintFailed)));
        QVERIFY(g.prompt.shown.back().text.size() > Caption(CapPrintFailed).size());
    }
};

QTEST_MAIN(TestPrintUi)
#include "test_print.moc"
