// The reference list in the main window: shown and hidden beside the data list, filled
// from the data list, saved and loaded through the file box, checked against the disk
// and compared with the data list, all by the controls a user presses.

#include "ListWindowFixture.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FrmShowColumnRef.h"
#include "app/InputDataPage.h"
#include "app/RefPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/Marks.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QSettings>
#include <QTableView>
#include <QTimer>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>

class TestRefUi : public QObject {
    Q_OBJECT

    static void Click(GuiProgram& g, const char* name) {
        QAbstractButton* b = Control<QAbstractButton>(g.window.get(), QString::fromLatin1(name));
        QVERIFY(b);
        if (!b->isVisible())
            b->click(); // a button on a tab not shown: as the keyboard would press it
        else
            QTest::mouseClick(b, Qt::LeftButton);
    }
    static void CopyToRef(GuiProgram& g) {
        Control<QRadioButton>(g.window.get(), "optTab1_CopyToReflist")->setChecked(true);
        Click(g, "btnTab1_Sub2_1_OK");
    }
    // The sample rows, quiet, all of them copied to the reference list.
    static bool StartWithRefList(GuiProgram& g) {
        if (!g.Start())
            return false;
        FillSampleRows();
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        Grids::LbxInput().SelectAll();
        CopyToRef(g);
        return true;
    }
    static void FileAction(GuiProgram& g, int item) {
        auto* box = Control<QComboBox>(g.window.get(), "btnTab1_HandleFileInput");
        QVERIFY(box);
        emit box->activated(item); // the user picks an entry of the box
    }

private slots:
    void toggleCopyAndFooters() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        auto* frame = Control<QWidget>(g.window.get(), "fraTab1_Ref");
        QVERIFY(frame->isHidden());
        Click(g, "btnTab1_ToggleRef");
        QVERIFY(!frame->isHidden());
        Click(g, "btnTab1_ToggleRef");
        QVERIFY(frame->isHidden());

        DataGrid& ref = Grids::LbxRef();
        QCOMPARE(ref.Cols(), 16);
        Grids::LbxInput().SelectAll();
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        CopyToRef(g);
        QVERIFY(!frame->isHidden()); // shown by the copy
        const int rows = ref.Rows();
        QCOMPARE(rows, 5); // the two rows of one name (different case) are one
        QCOMPARE(ref.CellText(1, RefCol::TF), Caption(CapStatusFound));
        QCOMPARE(ref.FooterText(RefCol::FileName), QString::number(rows));
        CopyToRef(g);
        QCOMPARE(ref.Rows(), rows); // nothing twice
        Control<QCheckBox>(g.window.get(), "chbTab1_RefD")->setChecked(true);
        CopyToRef(g);
        QCOMPARE(ref.Rows(), rows + Grids::LbxInput().Rows());
        QCOMPARE(ref.FooterText(RefCol::FileName), QString::number(ref.Rows()));
        // A deleted row brings the footers up to date.
        ref.DeleteRow(1);
        QCOMPARE(ref.FooterText(RefCol::FileName), QString::number(ref.Rows()));

        // Remove the marked rows, then clear the list (asked twice).
        InputDataPage::SelectSubTab(Control<QTabWidget>(g.window.get(), "TabInput1_Sub1"), SubTab::Compare);
        const int before = ref.Rows();
        ref.SetCellText(1, RefCol::FTag, QStringLiteral("gone"));
        QTest::keyClicks(Control<QLineEdit>(g.window.get(), "txtTab1_FTagRef"), QStringLiteral("gone"));
        g.prompt.answers = {true};
        Click(g, "btnTab1_DeleteRefRows");
        QCOMPARE(ref.Rows(), before - 1);
        g.prompt.answers = {true, true};
        Click(g, "btnTab1_ClearReflist");
        QCOMPARE(ref.Rows(), 0);
        QCOMPARE(ref.FooterText(RefCol::FileName), QStringLiteral("0"));
    }

    void saveLoadCheckAndMatch() {
        GuiProgram g;
        QVERIFY(StartWithRefList(g));
        DataGrid& ref = Grids::LbxRef();
        auto* panel = g.window->findChild<RefPanel*>();
        QTemporaryDir dir;
        QString chosen = dir.filePath(QStringLiteral("wanted"));
        panel->chooseFile = [&](int) { return chosen; };
        FileAction(g, 3);
        QVERIFY(QFile::exists(chosen + ".ref"));
        QCOMPARE(ref.Tag, chosen + ".ref");

        ref.Clear();
        chosen += QStringLiteral(".ref");
        FileAction(g, 4);
        QCOMPARE(ref.Rows(), 5);
        QCOMPARE(ref.CurRow(), 1);

        // The sample paths don't exist: the check says so in column 3.
        Click(g, "btnTab1_RefCheckPath");
        for (int r = 1; r <= ref.Rows(); ++r)
            QCOMPARE(ref.CellText(r, RefCol::TF), Caption(CapStatusMissing));

        // Mark matches from the reference list: the data list's first row of a name only.
        ref.SelectAll();
        Click(g, "btnTab1_MarkMatches");
        DataGrid& input = Grids::LbxInput();
        int marked = 0;
        for (int r = 1; r <= input.Rows(); ++r)
            marked += input.CellText(r, InCol::FTag) == Mark::Default;
        QCOMPARE(marked, input.Rows() - 1);
        QCOMPARE(input.CurRow(), 1);

        // Delete the file through the box (the question is answered Yes).
        g.prompt.answers = {true};
        FileAction(g, 5);
        QVERIFY(!QFile::exists(chosen));
    }

    // The file of the current data row replaces the reference row's file and back, by
    // the button and its options.
    void replaceByTheButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        const QString data = dir.filePath(QStringLiteral("data")),
                      refs = dir.filePath(QStringLiteral("refs"));
        QDir().mkpath(data);
        QDir().mkpath(refs);
        const QString newSong =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), data, QStringLiteral("new.mp3"));
        const QString oldSong =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), refs, QStringLiteral("old.mp3"));
        {
            TagEngine e;
            QVERIFY(e.OpenFile(oldSong) == 1);
            e.SetV2Title(QStringLiteral("Old title"));
            QVERIFY(e.SaveV2(oldSong));
        }
        DataGrid& input = Grids::LbxInput();
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = QStringLiteral("new.mp3");
        cells[InCol::Path - 1] = data;
        cells[InCol::Type - 1] = QStringLiteral("MP3");
        cells[InCol::DurationS - 1] = QStringLiteral("3");
        input.AddRow(cells);
        DataGrid& ref = Grids::LbxRef();
        ref.AddRow({QString(), QString(), Caption(CapStatusMissing), QStringLiteral("old.mp3"), QString(),
                    QString(), QStringLiteral("OGG"), refs, QStringLiteral("9"), QString(), QString(),
                    QString(), QString(), QString(), QString(), QString()});
        Click(g, "btnTab1_ToggleRef");
        InputDataPage::SelectSubTab(Control<QTabWidget>(g.window.get(), "TabInput1_Sub1"), SubTab::Compare);

        // No current rows yet: the guard.
        input.SetCurRow(0);
        ref.SetCurRow(0);
        Click(g, "btnTab1_RefOK");
        QCOMPARE(g.prompt.LastText(), Caption(CapRefNeedsBothRows));

        input.SetCurRow(1);
        ref.SetCurRow(1);
        Click(g, "optTab1_D_R");
        Click(g, "chbTab1_KeepFilename");
        Click(g, "chbTab1_KeepTags");
        Click(g, "btnTab1_RefOK");
        QCOMPARE(g.prompt.LastText(), Caption(CapOneFileCopied));
        TagEngine e;
        QCOMPARE(e.OpenFile(oldSong), 1);
        QCOMPARE(e.V2Title(), QStringLiteral("Old title"));
        QCOMPARE(ref.CellText(1, RefCol::TF), Caption(CapStatusFound));
        QCOMPARE(ref.CellText(1, RefCol::Type), QStringLiteral("MP3"));
        QCOMPARE(ref.CellText(1, RefCol::FileName), QStringLiteral("old.mp3"));

        // And back: the reference's file into the data list's place, under its own name.
        Click(g, "optTab1_R_D");
        Click(g, "chbTab1_KeepFilename");
        Click(g, "chbTab1_KeepTags");
        Click(g, "btnTab1_RefOK");
        QCOMPARE(g.prompt.LastText(), Caption(CapOneFileCopied));
        QVERIFY(!QFile::exists(newSong));
        QVERIFY(QFile::exists(data + QStringLiteral("/old.mp3")));
        QCOMPARE(input.CellText(1, InCol::FileName), QStringLiteral("old.mp3"));

        // The same file on both sides now? No: each side has its own. Two rows selected in
        // one list are refused.
        input.AddRow(cells);
        input.SelectAll();
        Click(g, "btnTab1_RefOK");
        QVERIFY(g.prompt.LastText().contains(Caption(CapRefOneRowOnly)));
    }

    // Marks, found rows, the mark column and the export of the reference list.
    void marksFoundAndExport() {
        GuiProgram g;
        QVERIFY(StartWithRefList(g));
        DataGrid& ref = Grids::LbxRef();
        QCOMPARE(ref.Rows(), 5);
        ref.SetCellText(2, RefCol::TF, Caption(CapStatusMissing));
        ref.SetCellText(4, RefCol::TF, Caption(CapStatusMissing));
        InputDataPage::SelectSubTab(Control<QTabWidget>(g.window.get(), "TabInput1_Sub1"), SubTab::Compare);

        Click(g, "btnTab1_RefHighlight_T");
        QCOMPARE(ref.SelectedRows(), (std::vector<int>{1, 3, 5}));
        // The sums of the selection under the list.
        auto* sum = Control<QLabel>(g.window.get(), "lblTab1_TimeSizeMarkedRef");
        QVERIFY2(sum->text().contains(u'3'), qPrintable(sum->text()));

        ref.SetCellText(2, RefCol::FTag, QStringLiteral("x"));
        ref.SetCellText(4, RefCol::FTag, QStringLiteral("x"));
        QTest::keyClicks(Control<QLineEdit>(g.window.get(), "txtTab1_FTagRef"), QStringLiteral("x"));
        Click(g, "btnTab1_RefFTagBlue");
        QCOMPARE(ref.SelectedRows(), (std::vector<int>{2, 4}));
        g.prompt.answers = {true};
        Click(g, "btnTab1_RemoveRefFtag");
        QVERIFY(ref.CellText(2, RefCol::FTag).isEmpty());
        QVERIFY(ref.CellText(4, RefCol::FTag).isEmpty());

        auto* markColumn = Control<QCheckBox>(g.window.get(), "chbTab1_RefFTag");
        QVERIFY(markColumn->isChecked());
        Click(g, "chbTab1_RefFTag");
        QVERIFY(!ref.Column(RefCol::FTag).visible);
        Click(g, "chbTab1_RefFTag");
        QVERIFY(ref.Column(RefCol::FTag).visible);

        auto* panel = g.window->findChild<RefPanel*>();
        QTemporaryDir dir;
        QString startSeen;
        for (const char* ext : {"xls", "txt", "csv", "xml", "htm"}) {
            const QString path = dir.filePath(QStringLiteral("ref.") + QLatin1String(ext));
            panel->chooseExportFile = [&startSeen, path](const QString& start) {
                startSeen = start;
                return path;
            };
            Click(g, "btnTab1_RefExport");
            QVERIFY2(QFileInfo(path).size() > 0, ext);
        }
        QCOMPARE(Setting(Ini::PathRefExport, 2), dir.path());
        // The next export starts in the remembered folder.
        Click(g, "btnTab1_RefExport");
        QCOMPARE(startSeen, dir.path());
        // An empty list is not exported.
        ref.Clear();
        g.prompt.shown.clear();
        Click(g, "btnTab1_RefExport");
        QCOMPARE(g.prompt.LastText(), Caption(CapListEmpty));
    }

    // Find with chbTab1_Find(2) searches the reference list and leaves the data list alone.
    void findInTheReferenceList() {
        GuiProgram g;
        QVERIFY(StartWithRefList(g));
        auto* inRef = Control<QCheckBox>(g.window.get(), "chbTab1_Find(2)");
        QVERIFY(inRef->isEnabled());
        inRef->click();
        auto* box = Control<QComboBox>(g.window.get(), "cmbTab1_Find");
        box->setCurrentText(QString());
        QTest::keyClicks(box->lineEdit(), QStringLiteral("help"));
        Control<QPushButton>(g.window.get(), "btnTab1_M_Find")->click();
        DataGrid& ref = Grids::LbxRef();
        int marked = 0;
        for (int r = 1; r <= ref.Rows(); ++r)
            marked += !ref.CellText(r, RefCol::FTag).isEmpty();
        QCOMPARE(marked, 2); // Help and Helpless
        QCOMPARE(RowsWithMark(Mark::Found), 0);
    }

    // The column window from the list's menu; the saved choice comes back at the next start.
    void columnWindowAndStartPattern() {
        {
            GuiProgram g;
            QVERIFY(g.Start());
            Click(g, "btnTab1_ToggleRef");
            g.window->resize(1280, 800);
            g.window->show();
            QVERIFY(QTest::qWaitForWindowExposed(g.window.get()));
            auto* table = Control<DataGridView>(g.window.get(), "LbxRef")->table();
            // The menu opens only over a list with rows.
            QStringList row(Grids::LbxRef().Cols(), QString());
            row[RefCol::FileName - 1] = QStringLiteral("a.mp3");
            Grids::LbxRef().AddRow(row);
            bool chosen = false;
            QTimer::singleShot(100, [&] {
                if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                    // "Columns" is a sub-menu of the list's menu.
                    if (auto* a = menu->findChild<QAction*>(QStringLiteral("ColsFrm"))) {
                        chosen = true;
                        a->trigger();
                    }
                }
            });
            const QPoint at = table->viewport()->rect().center();
            QContextMenuEvent event(QContextMenuEvent::Mouse, at, table->viewport()->mapToGlobal(at));
            QApplication::sendEvent(table->viewport(), &event);
            QVERIFY(chosen);
            auto* w = g.window->findChild<FrmShowColumnRef*>();
            QVERIFY(w && w->isVisible());
            auto* box = Control<QCheckBox>(w, "chbColRef(0)");
            QVERIFY(box->isChecked());
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(5, box->height() / 2));
            QVERIFY(!Grids::LbxRef().Column(RefCol::Remark).visible);
            QTest::mouseClick(Control<QPushButton>(w, "btnShowColRef_Save"), Qt::LeftButton);
            QCOMPARE(Setting(Ini::ShowColumnRefPattern, 1).left(4), QStringLiteral("0111"));
        }
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::ShowColumnRefPattern, 1}, QStringLiteral("1011111111111111")}}));
        QVERIFY(Grids::LbxRef().Column(RefCol::Remark).visible);
        QVERIFY(!Grids::LbxRef().Column(RefCol::FTag).visible);
        // The box of the mark column follows the pattern.
        QVERIFY(!Control<QCheckBox>(g.window.get(), "chbTab1_RefFTag")->isChecked());
    }

    // The widths the user gave the columns of LbxRef come back at the next start.
    void columnWidthsPerUser() {
        int width = 0;
        {
            GuiProgram g;
            QVERIFY(g.Start());
            auto* header = Control<DataGridView>(g.window.get(), "LbxRef")->table()->horizontalHeader();
            header->resizeSection(RefCol::FileName - 1, 333);
            width = header->sectionSize(RefCol::FileName - 1);
            g.window->findChild<RefPanel*>()->SaveColumnWidths();
        }
        GuiProgram g;
        QVERIFY(g.Start());
        auto* header = Control<DataGridView>(g.window.get(), "LbxRef")->table()->horizontalHeader();
        QCOMPARE(header->sectionSize(RefCol::FileName - 1), width);
        QSettings(QStringLiteral("Quillotune"), QStringLiteral("Quillotune"))
            .remove(QStringLiteral("LbxRef"));
    }

    // Both lists shown: the window still fits a 1280x800 screen, in both languages.
    // With QLT_SHOT_DIR set, a picture of the window is written there for each language.
    void bothListsFitSmallScreen() {
        GuiProgram g;
        QVERIFY(StartWithRefList(g));
        g.window->resize(1280, 800);
        g.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(g.window.get()));
        auto* tabs = Control<QTabWidget>(g.window.get(), "TabInput1_Sub1");
        for (int language : {3, kLanguageEnglish}) {
            SetLanguageColumn(language);
            g.window->LanguageChanged();
            InputDataPage::SelectSubTab(tabs, SubTab::Compare);
            QTest::qWait(50);
            const QString dir = qEnvironmentVariable("QLT_SHOT_DIR");
            if (!dir.isEmpty())
                g.window->grab().save(QStringLiteral("%1/ref_%2.png").arg(dir).arg(language));
            const QSize min = g.window->minimumSizeHint();
            QVERIFY2(min.width() <= 1280 && min.height() <= 800,
                     qPrintable(QStringLiteral("%1x%2").arg(min.width()).arg(min.height())));
            QCOMPARE(g.window->size(), QSize(1280, 800));
            QVERIFY(Control<QWidget>(g.window.get(), "LbxRef")->isVisible());
            QVERIFY(Control<QWidget>(g.window.get(), "LbxInput")->width() > 300);
            QVERIFY(Control<QWidget>(g.window.get(), "LbxRef")->width() > 200);
        }
    }
};

QTEST_MAIN(TestRefUi)
#include "test_refui.moc"
