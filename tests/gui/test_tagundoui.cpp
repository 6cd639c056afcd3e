// The undo of a tag batch from the windows: a batch by btnTab2_UpdateTag in the tag
// window, then btnTab1_Undo in the data tab, as a user presses them.

#include "GuiProgram.h"
#include "TagUiFixture.h"

#include "app/FrmInput.h"
#include "app/FrmTag.h"
#include "app/InputDataPage.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "list/modListEnv.h"
#include "tag/modTagJournal.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A click on the button as the mouse does it when the button is on the screen.
void Press(QAbstractButton* b) {
    QVERIFY(b);
    QVERIFY(b->isEnabled());
    if (b->isVisible())
        QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, QPoint(4, b->height() / 2));
    else
        b->click();
}

} // namespace

class TestTagUndoUi : public QObject {
    Q_OBJECT

private slots:
    void updateTagThenUndo() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        QTemporaryDir dir;
        DataGrid& input = Grids::LbxInput();
        TagEngine engine;
        for (const QString& name : {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}) {
            const QString path = dir.filePath(name);
            QVERIFY(QFile::copy(TagUiFixture::Sample(QStringLiteral("mp3")), path));
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
            QVERIFY(engine.OpenFile(path) != 0);
            engine.SetV2Artist(QStringLiteral("Old ") + name);
            engine.SetComment(1, QStringLiteral("eng"), QString(), QStringLiteral("keep me"));
            QVERIFY(engine.SaveV2(path) != 0);
            QStringList cells(InCol::Count);
            cells[InCol::FileName - 1] = name;
            cells[InCol::Type - 1] = FileTypeName(1);
            cells[InCol::Path - 1] = dir.path();
            input.AddRow(cells);
        }
        input.SelectAll();
        FrmTag* tag = g.window->frmTag;
        QVERIFY(tag);
        Press(tag->findChild<QPushButton*>("btnTab2_TakeFromDataList"));
        QCOMPARE(tag->lbxTag().Rows(), 2);
        Press(tag->findChild<QRadioButton*>("OptTab2_UpdateV2"));
        tag->findChild<QCheckBox*>("chbTab2_V2(2)")->setChecked(true);
        tag->findChild<QLineEdit*>("txtTab2_V2(2)")->setText("New");
        tag->lbxTag().SelectAll();
        g.prompt.answers = {true};
        Press(tag->findChild<QPushButton*>("btnTab2_UpdateTag"));
        QVERIFY(engine.OpenFile(dir.filePath("a.mp3")) != 0);
        QCOMPARE(engine.V2Artist(), QStringLiteral("New"));
        QVERIFY(QFile::exists(TagJournalPath()));

        // the data list is re-sorted; the undo finds its rows by folder and name
        input.DoSort(InCol::FileName, 2);
        QVERIFY(InputDataPage::SelectSubTab(g.window->pageData->TabInput1_Sub2, SubTab::Rename));
        g.prompt.answers = {true};
        Press(g.window->findChild<QPushButton*>("btnTab1_Undo"));
        QCOMPARE(g.prompt.LastText(), CountText(CapTagUndoDone, 2));
        for (const QString& name : {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}) {
            QVERIFY(engine.OpenFile(dir.filePath(name)) != 0);
            QCOMPARE(engine.V2Artist(), QStringLiteral("Old ") + name);
            QCOMPARE(engine.CommentText(1), QStringLiteral("keep me"));
        }
        for (int row = 1; row <= input.Rows(); ++row)
            QCOMPARE(input.CellText(row, InCol::TagArtist),
                     QStringLiteral("Old ") + input.CellText(row, InCol::FileName));
        QVERIFY(!QFile::exists(TagJournalPath()));
        Press(g.window->findChild<QPushButton*>("btnTab1_Undo"));
        QCOMPARE(g.prompt.LastText(), Caption(CapUndoNothing));
        input.Clear();
    }
};

QTEST_MAIN(TestTagUndoUi)
#include "test_tagundoui.moc"
