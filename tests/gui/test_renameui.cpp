// The tabs "Files" and "Rename" of the data area, driven as a user does: options chosen
// by click, boxes typed into, buttons pressed; real files in a temporary folder.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FrmPreview.h"
#include "app/InputDataPage.h"
#include "app/RenamePanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "file/modRename.h"
#include "list/Marks.h"
#include "list/modListEnv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

namespace {

void Touch(const QString& path) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("x");
}

QStringList Names(const QString& dir) {
    return QDir(dir).entryList(QDir::Files, QDir::Name);
}

// Rows for real files of `dir`, all selected.
void FillFiles(const QString& dir, const QStringList& names) {
    DataGrid& g = Grids::LbxInput();
    g.Clear();
    using C = std::pair<int, QString>;
    for (const QString& n : names) {
        Touch(dir + u'/' + n);
        const QString base = n.left(n.lastIndexOf(u'.'));
        const qsizetype dash = base.indexOf(QStringLiteral(" - "));
        fixture::AddInputRow(g, {C{InCol::FileName, n}, C{InCol::Artist, base.left(dash)},
                                 C{InCol::Title, base.mid(dash + 3)}, C{InCol::Path, dir}});
    }
    g.SelectAll();
}

void Click(QWidget* w) {
    QVERIFY(w);
    QVERIFY(w->isVisible());
    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, QPoint(8, w->height() / 2));
}

} // namespace

class TestRenameUi : public QObject {
    Q_OBJECT

    static void ShowTab(GuiProgram& g, int place) {
        g.window->show();
        QVERIFY(InputDataPage::SelectSubTab(g.window->pageData->TabInput1_Sub2, place));
    }

private slots:
    void swapByButtonAndUndo() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Cream - Crossroads.ogg")});
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        Click(Control<QRadioButton>(w, "optTab1_FileChangeArtTit"));
        QVERIFY(Control<QRadioButton>(w, "optTab1_FileChangeArtTit")->isChecked());
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Crossroads - Cream.ogg"), QStringLiteral("SOS - Abba.mp3")}));
        QCOMPARE(g.prompt.shown.front().text, Caption(CapSwapArtistTitleQuestion));
        QCOMPARE(g.prompt.LastText(), CountText(CapSwappedCount, 2));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::FileName), QStringLiteral("Crossroads - Cream.ogg"));

        // The list is re-sorted; the undo finds its rows all the same.
        Grids::LbxInput().DoSort(InCol::FileName, 2);
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_Undo"));
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Cream - Crossroads.ogg")}));
        QCOMPARE(g.prompt.LastText(), CountText(CapUndoDone, 2));
        Click(Control<QPushButton>(w, "btnTab1_Undo"));
        QCOMPARE(g.prompt.LastText(), Caption(CapUndoNothing));
    }

    void noOptionWarns() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("Abba - SOS.mp3")});
        ShowTab(g, SubTab::Rename);
        Click(Control<QPushButton>(g.window.get(), "btnTab1_Sub2_3_OK"));
        QCOMPARE(g.prompt.LastText(), Caption(CapNoActionChosen));
    }

    void cutWithMessageTouchesNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("Abba - SOS.mp3")});
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        Click(Control<QRadioButton>(w, "optTab1_FileCut"));
        QLineEdit* a = Control<QLineEdit>(w, "txtTab1_FileCut(0)");
        QLineEdit* b = Control<QLineEdit>(w, "txtTab1_FileCut(1)");
        a->selectAll();
        QTest::keyClicks(a, QStringLiteral("3"));
        b->selectAll();
        QTest::keyClicks(b, QStringLiteral("2"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        QCOMPARE(g.prompt.LastText(), Caption(CapCutPositionsOrder));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.mp3")});
        // A = 1, B = 6 cuts "Abba "; the question is answered Yes.
        a->selectAll();
        QTest::keyClicks(a, QStringLiteral("1"));
        b->selectAll();
        QTest::keyClicks(b, QStringLiteral("6"));
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("- SOS.mp3")});
    }

    void cutHelperMarksThePlace() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("01_Abba - SOS.mp3")});
        Grids::LbxInput().SetCurRow(1);
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        // No "@" first: Retry, then the place before "Abba".
        g.prompt.inputs = {QStringLiteral("01_Abba - SOS"), QStringLiteral("01_@Abba - SOS")};
        g.prompt.answers = {true, false}; // retry; then No to the result
        Click(Control<QPushButton>(w, "btnTab1_FileCut"));
        QCOMPARE(Control<QLineEdit>(w, "txtTab1_FileCut(0)")->text(), QStringLiteral("4"));
        QCOMPARE(Control<QLineEdit>(w, "txtTab1_FileCut(1)")->text(), QStringLiteral("0"));
        QVERIFY(Control<QRadioButton>(w, "optTab1_FileCut")->isChecked());
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("01_Abba - SOS.mp3")});
        // Two "@" cut the range, and Yes runs the cut at once.
        g.prompt.inputs = {QStringLiteral("@01_@Abba - SOS")};
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_FileCut"));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.mp3")});
    }

    void textIntoTagByButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {});
        QVERIFY(
            QFile::copy(QStringLiteral(QLT_FIXTURE_DIR "/tone.mp3"), dir.filePath(QStringLiteral("a.mp3"))));
        QFile::setPermissions(dir.filePath(QStringLiteral("a.mp3")), QFile::ReadOwner | QFile::WriteOwner);
        using C = std::pair<int, QString>;
        fixture::AddInputRow(Grids::LbxInput(), {C{InCol::FileName, "a.mp3"}, C{InCol::Path, dir.path()}});
        Grids::LbxInput().SelectAll();
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        Click(Control<QRadioButton>(w, "optTab1_SetTextInTag"));
        QComboBox* columns = Control<QComboBox>(w, "cmbTab1_TextInTag");
        columns->setCurrentIndex(columns->findData(InCol::TagAlbum));
        g.prompt.inputs = {QStringLiteral("Arrival")};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        QCOMPARE(g.prompt.LastText(), CountText(CapFilesChanged, 1));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::TagAlbum), QStringLiteral("Arrival"));
    }

    void previewThenRename() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NumberDigits, Ini::Col1}, QStringLiteral("2")}}));
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("1 - Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")});
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        Click(Control<QCheckBox>(w, "chbTab1_RenamePreview"));
        Click(Control<QRadioButton>(w, "optTab1_Num_Ext"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        FrmPreview* p = g.window->renamePanel->Preview();
        QVERIFY(p->isVisible());
        QCOMPARE(p->LbxPreview().Rows(), 1);
        QCOMPARE(p->LbxPreview().CellText(1, 1), QStringLiteral("01_Abba - SOS.mp3"));
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("1 - Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")}));
        Click(p->btnPreview_Rename);
        QVERIFY(!p->isVisible());
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("01_Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")}));
        // Close without action.
        Click(Control<QRadioButton>(w, "optTab1_FileChangeArtTit"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_3_OK"));
        QVERIFY(p->isVisible());
        Click(p->btnPreview_Close);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("01_Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")}));
    }

    void replaceArtistNeedsEnter() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::NumberDigits, Ini::Col1}, QStringLiteral("2")}}));
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("07_Abba - SOS.mp3")});
        ShowTab(g, SubTab::Files);
        QWidget* w = g.window.get();
        Click(Control<QRadioButton>(w, "optTab1_FileRename"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QVERIFY(g.prompt.LastText().startsWith(Caption(CapReplaceNothingChosen)));
        Click(Control<QCheckBox>(w, "chbTab1_FileReplaceArtist"));
        QLineEdit* box = Control<QLineEdit>(w, "txtTab1_ArtistFind");
        QTest::keyClicks(box, QStringLiteral("ABBA"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QCOMPARE(g.prompt.LastText(), Caption(CapConfirmBoxText));
        QTest::keyClick(box, Qt::Key_Return);
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("07_ABBA - SOS.mp3")});
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::Artist), QStringLiteral("ABBA"));
    }

    void directEditRenamesAndEscWritesNothing() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir dir;
        FillFiles(dir.path(), {QStringLiteral("Abba - SOS.mp3")});
        ShowTab(g, SubTab::Rename);
        QWidget* w = g.window.get();
        QTableView* table = g.window->pageData->LbxInput->table();
        const QModelIndex cell = table->model()->index(0, InCol::FileName - 1);
        // Off: a double click edits nothing.
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                           table->visualRect(cell).center());
        QVERIFY(!table->findChild<QLineEdit*>());
        Click(Control<QCheckBox>(w, "chbTab1_DirectEdit"));
        auto edit = [&](const QString& typed, int key) {
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                               table->visualRect(cell).center());
            QLineEdit* editor = table->viewport()->findChild<QLineEdit*>();
            QVERIFY(editor);
            editor->selectAll();
            QTest::keyClicks(editor, typed);
            QTest::keyClick(editor, Qt::Key(key));
            QCoreApplication::processEvents(); // the delegate commits and closes through the event queue
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the closed editor goes
        };
        edit(QStringLiteral("Cream-Crossroads.mp3"), Qt::Key_Escape);
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.mp3")});
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::FileName), QStringLiteral("Abba - SOS.mp3"));
        edit(QStringLiteral("Cream-Crossroads.mp3"), Qt::Key_Return);
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Cream - Crossroads.mp3")});
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::FileName), QStringLiteral("Cream - Crossroads.mp3"));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::Title), QStringLiteral("Crossroads"));
        // A name without an extension is refused; the cell keeps its text.
        edit(QStringLiteral("Cream - Crossroads"), Qt::Key_Return);
        QCOMPARE(g.prompt.LastText(), Caption(CapNameNeedsExtension));
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::FileName), QStringLiteral("Cream - Crossroads.mp3"));
    }

    void moveAndDelete() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::Paperbin, Ini::Col2}, QStringLiteral("1")}})); // deletes skip the trash
        QTemporaryDir dir, target;
        FillFiles(dir.path(), {QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Cream - Crossroads.ogg")});
        Touch(target.filePath(QStringLiteral("Abba - SOS.mp3"))); // same name in the target
        ShowTab(g, SubTab::Files);
        QWidget* w = g.window.get();
        int asked = 0;
        g.window->filesPanel->chooseFolder = [&](int titleRow, const QString&) {
            ++asked;
            return titleRow == CapMoveTargetTitle ? target.path() : QString();
        };
        Click(Control<QRadioButton>(w, "optTab1_FileMove"));
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QCOMPARE(asked, 1);
        QCOMPARE(Grids::LbxInput().Rows(), 0);
        QCOMPARE(Names(target.path()),
                 (QStringList{QStringLiteral("Abba - SOS (2).mp3"), QStringLiteral("Abba - SOS.mp3"),
                              QStringLiteral("Cream - Crossroads.ogg")}));
        QCOMPARE(g.prompt.LastText(), CountText(CapFilesMoved, 2));

        FillFiles(dir.path(), {QStringLiteral("Doors - Helpless.mp3")});
        Click(Control<QRadioButton>(w, "optTab1_FileDelete"));
        g.prompt.answers = {false};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Doors - Helpless.mp3")});
        g.prompt.answers = {true};
        Click(Control<QPushButton>(w, "btnTab1_Sub2_2_OK"));
        QVERIFY(Names(dir.path()).isEmpty());
        QCOMPARE(Grids::LbxInput().Rows(), 0);
        QCOMPARE(g.prompt.LastText(), Caption(CapOneFileDeleted));
    }
};

QTEST_MAIN(TestRenameUi)
#include "test_renameui.moc"
