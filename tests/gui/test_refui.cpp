// The reference list in the main window: shown and hidden beside the data list, filled
// from the data list, saved and loaded through the file box, checked against the disk
// and compared with the data list, all by the controls a user presses.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/InputDataPage.h"
#include "app/RefPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "list/Marks.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"

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
        QVERIFY(g.Start());
        FillSampleRows();
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        Grids::LbxInput().SelectAll();
        CopyToRef(g);
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

    // Both lists shown: the window still fits a 1280x800 screen, in both languages.
    // With QLT_SHOT_DIR set, a picture of the window is written there for each language.
    void bothListsFitSmallScreen() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        Grids::LbxInput().SelectAll();
        CopyToRef(g);
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
