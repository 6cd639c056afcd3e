// The keys of the data list: each row of its key table, sent to LbxInput as a user
// presses it, with the focus back on the list afterwards.

#include "ListWindowFixture.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FilesPanel.h"
#include "app/FrmInput.h"
#include "app/FrmSongtext.h"
#include "app/InputDataPage.h"
#include "app/ListsPanel.h"
#include "app/PlayerPanel.h"
#include "app/RefPanel.h"
#include "app/RenamePanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "list/Marks.h"
#include "list/modScan.h"
#include "list/modShortcuts.h"
#include "platform/Shell.h"
#include "ref/RefColumns.h"
#include "tag/TagEngine.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

namespace {

QMap<QPair<int, int>, QString> SignIni() {
    QMap<QPair<int, int>, QString> ini;
    ini[{Ini::SignFirst, Ini::SignCol}] = QStringLiteral("one");
    ini[{Ini::SignFirst + 1, Ini::SignCol}] = QStringLiteral("two");
    ini[{Ini::SignLast, Ini::SignCol}] = QStringLiteral("ten");
    return ini;
}

constexpr auto kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
constexpr auto kCtrlAltShift = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;

QTableView* Table(GuiProgram& g) {
    return g.window->pageData->LbxInput->table();
}

bool Told(GuiProgram& g, CaptionRow row) {
    for (const auto& s : g.prompt.shown)
        if (s.text.contains(Caption(row)))
            return true;
    return false;
}

int SubTabIndex(QTabWidget* strip) {
    return strip->currentWidget()->property("subTabIndex").toInt();
}

// Shows the reference list with three rows and puts the focus on it.
QTableView* FillRefList(GuiProgram& g) {
    QTest::mouseClick(Control<QPushButton>(g.window.get(), "btnTab1_ToggleRef"), Qt::LeftButton);
    DataGrid& ref = Grids::LbxRef();
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) {
        QStringList row(ref.Cols(), QString());
        row[RefCol::FileName - 1] = QLatin1String(name);
        row[RefCol::Path - 1] = QStringLiteral("/m/r");
        ref.AddRow(row);
    }
    QTableView* table = Control<DataGridView>(g.window.get(), "LbxRef")->table();
    table->setFocus();
    return table;
}

} // namespace

class TestShortcuts : public QObject {
    Q_OBJECT

    std::unique_ptr<GuiProgram> m_g;

    GuiProgram& Start() {
        m_g = std::make_unique<GuiProgram>();
        if (!m_g->Start(SignIni()))
            qFatal("start failed");
        m_g->window->show();
        FillSampleRows();
        Table(*m_g)->setFocus();
        return *m_g;
    }

private slots:
    void cleanup() { m_g.reset(); }

    void keyNumbers() {
        QCOMPARE(ShortcutKeyCode(Qt::Key_0, false, false), 48);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Z, false, false), 90);
        QCOMPARE(ShortcutKeyCode(Qt::Key_F8, false, false), 119);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Plus, true, false), 107);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Minus, true, false), 109);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Plus, false, false), 0); // the main plus is not the pad's
        QCOMPARE(ShortcutKeyCode(Qt::Key_Exclam, false, true), 49);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Slash, false, false), 0);
        QCOMPARE(ShortcutKeyCode(Qt::Key_Escape, false, false), 27);
        QCOMPARE(ShortcutMask(int(Qt::ControlModifier | Qt::ShiftModifier)), 3);
        QCOMPARE(ShortcutMask(int(Qt::ControlModifier | Qt::AltModifier)), 6);
        QCOMPARE(DigitRow(48), 10);
        QCOMPARE(DigitRow(51), 3);
        QCOMPARE(DigitRow(65), 0);
        QCOMPARE(ToggledMark(QStringLiteral("a"), QStringLiteral("a")), QString());
        QCOMPARE(ToggledMark(QStringLiteral("b"), QStringLiteral("a")), QStringLiteral("a"));
    }

    void digitWritesSignToHighlightedRows() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(2, true);
        list.SetSelected(3, true);
        QTest::keyClick(Table(g), Qt::Key_2);
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("two"));
        QCOMPARE(list.CellText(3, InCol::FTag), QStringLiteral("two"));
        QCOMPARE(list.CellText(1, InCol::FTag), QString());
        QTest::keyClick(Table(g), Qt::Key_0); // digit 0 is row 10
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("ten"));
        QTest::keyClick(Table(g), Qt::Key_5); // an empty sign sets nothing
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("ten"));
        QCOMPARE(g.window->focusWidget(), Table(g));
    }

    void directEditRefusesKeys() {
        GuiProgram& g = Start();
        Control<QCheckBox>(g.window.get(), "chbTab1_DirectEdit")->setChecked(true);
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_1);
        QCOMPARE(list.CellText(1, InCol::FTag), QString());
        QVERIFY(Told(g, CapDirectEditKeysOff));
    }

    void shiftDigitWithoutProgramTells() {
        GuiProgram& g = Start();
        Grids::LbxInput().SetCurRow(1);
        QTest::keyClick(Table(g), Qt::Key_3, Qt::ShiftModifier);
        QVERIFY(Told(g, CapNoExternalProgram));
    }

    void shiftFunctionKeysChooseSubTabs() {
        GuiProgram& g = Start();
        QTest::keyClick(Table(g), Qt::Key_F2, Qt::ShiftModifier);
        QCOMPARE(SubTabIndex(g.window->pageData->TabInput1_Sub1), 1);
        QTest::keyClick(Table(g), Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(SubTabIndex(g.window->pageData->TabInput1_Sub1), 2);
        QTest::keyClick(Table(g), Qt::Key_F5, Qt::ShiftModifier);
        QCOMPARE(SubTabIndex(g.window->pageData->TabInput1_Sub2), 1);
        QTest::keyClick(Table(g), Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(SubTabIndex(g.window->pageData->TabInput1_Sub2), 4);
        QCOMPARE(g.window->focusWidget(), Table(g));
        QCOMPARE(g.window->TabInput->currentIndex(), 0); // the plain F keys' areas stay put
    }

    void ctrlShiftMHighlightsByMark() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetCellText(4, InCol::FTag, QStringLiteral("gold"));
        g.window->pageData->txtTab1_FTag->setText(QStringLiteral("gold"));
        g.window->pageData->chbTab1_NoMsg->setChecked(true);
        QTest::keyClick(Table(g), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
        const std::vector<int> sel = list.SelectedRows();
        QCOMPARE(int(sel.size()), 1);
        QCOMPARE(sel[0], 4);
    }

    void ctrlShiftRRemovesMarks() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetCellText(2, InCol::FTag, QStringLiteral("x"));
        list.SetSelected(2, true);
        g.prompt.answers.push_back(true);
        QTest::keyClick(Table(g), Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(list.CellText(2, InCol::FTag), QString());
    }

    void ctrlDigitTogglesTheMarkBox() {
        GuiProgram& g = Start();
        QLineEdit* box = g.window->pageData->txtTab1_FTag;
        QTest::keyClick(Table(g), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(box->text(), QStringLiteral("one"));
        QTest::keyClick(Table(g), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(box->text(), QString());
        QCOMPARE(g.window->focusWidget(), Table(g));
    }

    void ctrlDigitOnThePlayerTabFillsItsBox() {
        GuiProgram& g = Start();
        QTest::keyClick(Table(g), Qt::Key_F8, Qt::ShiftModifier);
        QTest::keyClick(Table(g), Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(g.window->playerPanel->txtTab1_FTag4->text(), QStringLiteral("two"));
        QCOMPARE(g.window->pageData->txtTab1_FTag->text(), QString());
    }

    void ctrlAHighlightsAllAndCtrlIInverts() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        QTest::keyClick(Table(g), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(int(list.SelectedRows().size()), list.Rows());
        QTest::keyClick(Table(g), Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(int(list.SelectedRows().size()), 0);
    }

    void ctrlMMarksHighlightedRows() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(5, true);
        g.window->pageData->txtTab1_FTag->setText(QStringLiteral("blue"));
        QTest::keyClick(Table(g), Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(list.CellText(5, InCol::FTag), QStringLiteral("blue"));
        g.window->pageData->txtTab1_FTag->clear();
        list.SetSelected(6, true);
        QTest::keyClick(Table(g), Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(list.CellText(6, InCol::FTag), Mark::Default);
    }

    void ctrlZTakesTheMarkOfTheCurrentRow() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetCellText(3, InCol::FTag, QStringLiteral("red"));
        list.SetCurRow(3);
        QTest::keyClick(Table(g), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(g.window->pageData->txtTab1_FTag->text(), QStringLiteral("red"));
    }

    void numberPadPlusAndMinusSetTheVolumeOnThePlayerTab() {
        GuiProgram& g = Start();
        QSlider* volume = g.window->playerPanel->sliderTab1_WinampVolume;
        volume->setValue(50);
        QTest::keyClick(Table(g), Qt::Key_Plus, Qt::KeypadModifier); // not on the player tab: nothing
        QCOMPARE(volume->value(), 50);
        QTest::keyClick(Table(g), Qt::Key_F8, Qt::ShiftModifier);
        QTest::keyClick(Table(g), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 55);
        QTest::keyClick(Table(g), Qt::Key_Minus, Qt::KeypadModifier);
        QTest::keyClick(Table(g), Qt::Key_Minus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 45);
        QTest::keyClick(Table(g), Qt::Key_Plus); // the plus of the main keys is not the pad's
        QCOMPARE(volume->value(), 45);
    }

    void escClosesTheScrollingText() {
        GuiProgram& g = Start();
        g.window->frmSongtext->show();
        QVERIFY(g.window->frmSongtext->isVisible());
        Table(g)->activateWindow();
        Table(g)->setFocus();
        QTest::keyClick(Table(g), Qt::Key_Escape);
        QVERIFY(!g.window->frmSongtext->isVisible());
        QTest::keyClick(Table(g), Qt::Key_Escape); // nothing to close: nothing happens
        QVERIFY(g.prompt.shown.empty());
    }

    void ctrlDeleteRemovesHighlightedEntries() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        const int rows = list.Rows();
        const QString third = list.CellText(4, InCol::FileName);
        list.SetSelected(2, true);
        list.SetSelected(3, true);
        QTest::keyClick(Table(g), Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(list.Rows(), rows - 2);
        QCOMPARE(list.CellText(2, InCol::FileName), third);
        QVERIFY(g.window->listsPanel->optTab1_RemoveEntry->isChecked());
        // In direct edit the key belongs to the cell.
        Control<QCheckBox>(g.window.get(), "chbTab1_DirectEdit")->setChecked(true);
        list.SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(list.Rows(), rows - 2);
        QVERIFY(Told(g, CapDirectEditKeysOff));
    }

    void ctrlCCopiesTheFiles() {
        GuiProgram& g = Start();
        QList<int> asked;
        g.window->filesPanel->chooseFolder = [&asked](int titleRow, const QString&) {
            asked << titleRow;
            return QString(); // cancelled
        };
        Grids::LbxInput().SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_C, Qt::ControlModifier);
        QVERIFY(g.window->filesPanel->optTab1_FileCopy->isChecked());
        QCOMPARE(asked.size(), 1);
        // An empty list: the option is chosen, nothing runs.
        g.window->filesPanel->optTab1_FileMove->setChecked(true);
        Grids::LbxInput().Clear();
        QTest::keyClick(Table(g), Qt::Key_C, Qt::ControlModifier);
        QVERIFY(g.window->filesPanel->optTab1_FileCopy->isChecked());
        QCOMPARE(asked.size(), 1);
        QVERIFY(g.prompt.shown.empty());
    }

    void ctrlEExportsTheList() {
        GuiProgram& g = Start();
        int asked = 0;
        g.window->listsPanel->chooseExportFile = [&asked] {
            ++asked;
            return QString();
        };
        QTest::keyClick(Table(g), Qt::Key_E, Qt::ControlModifier);
        QVERIFY(g.window->listsPanel->optTab1_FileExport->isChecked());
        QCOMPARE(asked, 1);
    }

    void ctrlPRTCopyToTheOtherLists() {
        GuiProgram& g = Start();
        ListsPanel* lists = g.window->listsPanel;
        QSignalSpy toPlaylist(lists, &ListsPanel::copyToPlaylistRequested);
        QSignalSpy toReflist(lists, &ListsPanel::copyToReflistRequested);
        QSignalSpy toTaglist(lists, &ListsPanel::copyToTaglistRequested);
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(3, true);
        list.SetCurRow(3);
        QTest::keyClick(Table(g), Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(toPlaylist.count(), 1);
        QVERIFY(lists->optTab1_CopyToPlaylist->isChecked());
        g.prompt.answers = {true, true, true};
        QTest::keyClick(Table(g), Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(toReflist.count(), 1);
        QVERIFY(lists->optTab1_CopyToReflist->isChecked());
        QTest::keyClick(Table(g), Qt::Key_T, Qt::ControlModifier);
        QCOMPARE(toTaglist.count(), 1);
        QVERIFY(lists->optTab1_CopyToTaglist->isChecked());
        QCOMPARE(toTaglist.at(0).at(0).toString(), list.CellText(3, InCol::Type));
        QCOMPARE(toPlaylist.count(), 1);
        QCOMPARE(toReflist.count(), 1);
    }

    void ctrlShiftCChoosesAndRunsTheCut() {
        GuiProgram& g = Start();
        RenamePanel* rename = g.window->renamePanel;
        rename->txtTab1_FileCut[0]->clear();
        rename->txtTab1_FileCut[1]->clear();
        Grids::LbxInput().SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_C, kCtrlShift);
        QCOMPARE(SubTabIndex(g.window->pageData->TabInput1_Sub2), 2);
        QVERIFY(rename->optTab1_FileCut->isChecked());
        QVERIFY(g.prompt.shown.empty()); // no position given: nothing runs
        rename->txtTab1_FileCut[0]->setText(QStringLiteral("3"));
        rename->txtTab1_FileCut[1]->setText(QStringLiteral("2"));
        QTest::keyClick(Table(g), Qt::Key_C, kCtrlShift);
        QVERIFY(Told(g, CapCutPositionsOrder)); // the cut ran and checked its positions
        QCOMPARE(g.window->focusWidget(), Table(g));
    }

    void ctrlShiftPlusGoesForwardOnThePlayerTab() {
        GuiProgram& g = Start();
        Control<QCheckBox>(g.window.get(), "chbTab1_UseSequenztime")
            ->setChecked(true); // the pieces of a song
        QSignalSpy forward(g.window->playerPanel->btnTab1_GoFwd, &QPushButton::clicked);
        QTest::keyClick(Table(g), Qt::Key_Plus, kCtrlShift | Qt::KeypadModifier);
        QCOMPARE(forward.count(), 0); // not on the player tab
        QTest::keyClick(Table(g), Qt::Key_F8, Qt::ShiftModifier);
        QTest::keyClick(Table(g), Qt::Key_Plus, kCtrlShift | Qt::KeypadModifier);
        QCOMPARE(forward.count(), 1);
    }

    void ctrlAltShiftRunsTheFileCommands() {
        GuiProgram& g = Start();
        FilesPanel* files = g.window->filesPanel;
        int asked = 0;
        files->chooseFolder = [&asked](int, const QString&) {
            ++asked;
            return QString();
        };
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_M, kCtrlAltShift);
        QVERIFY(files->optTab1_FileMove->isChecked());
        QCOMPARE(asked, 1);
        QTest::keyClick(Table(g), Qt::Key_C, kCtrlAltShift);
        QVERIFY(files->optTab1_FileCopy->isChecked());
        QCOMPARE(asked, 2);
        const int rows = list.Rows();
        g.prompt.answers = {false, false, false};
        QTest::keyClick(Table(g), Qt::Key_Delete, kCtrlAltShift);
        QVERIFY(files->optTab1_FileDelete->isChecked());
        QVERIFY(Told(g, CapDeleteFilesQuestion)); // answered No: nothing goes
        QCOMPARE(list.Rows(), rows);
    }

    void refDeleteRemovesEntries() {
        GuiProgram& g = Start();
        QTableView* table = FillRefList(g);
        DataGrid& ref = Grids::LbxRef();
        const int inputRows = Grids::LbxInput().Rows();
        Grids::LbxInput().SetSelected(1, true);
        ref.SetSelected(2, true);
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(ref.Rows(), 2);
        QCOMPARE(ref.CellText(2, RefCol::FileName), QStringLiteral("c.mp3"));
        QCOMPARE(Grids::LbxInput().Rows(), inputRows); // the data list stays
        ref.SetSelected(1, true);
        QTest::keyClick(table, Qt::Key_Delete, kCtrlShift);
        QCOMPARE(ref.Rows(), 1);
        QCOMPARE(ref.CellText(1, RefCol::FileName), QStringLiteral("c.mp3"));
        QCOMPARE(g.window->focusWidget(), table);
    }

    void refCtrlEnterOpensTheFile() {
        GuiProgram& g = Start();
        ScriptedShell shell;
        SetShell(&shell);
        QTableView* table = FillRefList(g);
        Grids::LbxRef().SetCurRow(2);
        QTest::keyClick(table, Qt::Key_Return, Qt::ControlModifier);
        SetShell(nullptr);
        QCOMPARE(shell.opened, QStringList{QStringLiteral("/m/r/b.mp3")});
    }

    void refListKeys() {
        GuiProgram& g = Start();
        QTableView* table = FillRefList(g);
        DataGrid& ref = Grids::LbxRef();
        ref.SetSelected(2, true);
        QTest::keyClick(table, Qt::Key_1); // digit: the sign into the highlighted rows
        QCOMPARE(ref.CellText(2, RefCol::FTag), QStringLiteral("one"));
        QCOMPARE(Grids::LbxInput().CellText(2, InCol::FTag), QString()); // the data list stays
        QTest::keyClick(table, Qt::Key_2, Qt::ControlModifier);          // Ctrl+digit: the list's mark box
        auto* box = Control<QLineEdit>(g.window.get(), "txtTab1_FTagRef");
        QCOMPARE(box->text(), QStringLiteral("two"));
        QTest::keyClick(table, Qt::Key_M, Qt::ControlModifier); // Ctrl+M: the box into the rows
        QCOMPARE(ref.CellText(2, RefCol::FTag), QStringLiteral("two"));
        QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(int(ref.SelectedRows().size()), 3);
        QTest::keyClick(table, Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(int(ref.SelectedRows().size()), 0);
        QTest::keyClick(table, Qt::Key_F, Qt::ControlModifier); // Ctrl+F: every mark goes
        QCOMPARE(ref.CellText(2, RefCol::FTag), QString());
        QCOMPARE(g.window->focusWidget(), table);
        // In direct edit only Delete is refused.
        Control<QCheckBox>(g.window.get(), "chbTab1_DirectEdit")->setChecked(true);
        QTest::keyClick(table, Qt::Key_Delete);
        QVERIFY(Told(g, CapDirectEditKeysOff));
        QCOMPARE(ref.Rows(), 3);
    }

    // Ctrl+Shift+digit: the rating of lbxRating row d; Ctrl+Alt+digit: the mood of
    // lbxMood row d (digit 0 row 10), into the files of the highlighted rows.
    void ratingAndMoodKeys() {
        if (tagtest::MutagenPython().isEmpty())
            QSKIP("python3-mutagen is missing");
        m_g = std::make_unique<GuiProgram>();
        QVERIFY(m_g->Start({{{Ini::RatingFirst + 1, Ini::RatingCol}, "**"},
                            {{Ini::MoodFirst, Ini::MoodCol}, "calm"},
                            {{Ini::MoodLast, Ini::MoodCol}, "wild"},
                            {{Ini::NoMsg, Ini::Col1}, "1"}}));
        GuiProgram& g = *m_g;
        g.window->show();
        QTemporaryDir dir;
        DataGrid& list = Grids::LbxInput();
        list.Clear();
        for (const char* name : {"a.mp3", "b.mp3"}) {
            const QString path =
                tagtest::CopyFixture(QStringLiteral("tone.mp3"), dir.path(), QLatin1String(name));
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
            AddFileRow(list, TagEngine::Shared(), path, RowContext());
        }
        list.Refresh();
        list.SetSelected(1, true);
        Table(g)->setFocus();
        const QString script =
            QStringLiteral("import sys\nfrom mutagen.id3 import ID3\n"
                           "print(' '.join(f.text[0] for f in ID3(sys.argv[1]).getall('TXXX')))");
        QTest::keyClick(Table(g), Qt::Key_2, kCtrlShift);
        QCOMPARE(list.CellText(1, InCol::Rating), QStringLiteral("**"));
        QVERIFY(tagtest::RunPython(script, {dir.filePath("a.mp3")}).contains(QStringLiteral("QLT**")));
        QVERIFY(!tagtest::RunPython(script, {dir.filePath("b.mp3")}).contains(QStringLiteral("QLT")));
        QTest::keyClick(Table(g), Qt::Key_1, Qt::ControlModifier | Qt::AltModifier);
        QVERIFY(tagtest::RunPython(script, {dir.filePath("a.mp3")}).contains(QStringLiteral("MOODcalm")));
        QTest::keyClick(Table(g), Qt::Key_0, Qt::ControlModifier | Qt::AltModifier); // digit 0: row 10
        QCOMPARE(list.CellText(1, InCol::Mood), QStringLiteral("wild"));
        // An empty row of the list and a seventh rating change nothing.
        QTest::keyClick(Table(g), Qt::Key_3, kCtrlShift);
        QTest::keyClick(Table(g), Qt::Key_7, kCtrlShift);
        QCOMPARE(list.CellText(1, InCol::Rating), QStringLiteral("**"));
        QCOMPARE(g.window->focusWidget(), Table(g));
    }

    void ctrlOFitsTheColumns() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetColumnWidth(InCol::FileName, 150);
        list.SetColumnWidth(InCol::Artist, 150);
        QTest::keyClick(Table(g), Qt::Key_O, Qt::ControlModifier);
        QVERIFY(list.Column(InCol::FileName).width > 150);
        QVERIFY(list.Column(InCol::Artist).width > 150);
        // The reference list fits its own columns.
        QTableView* table = FillRefList(g);
        DataGrid& ref = Grids::LbxRef();
        ref.SetColumnWidth(RefCol::FileName, 150);
        QTest::keyClick(table, Qt::Key_O, Qt::ControlModifier);
        QVERIFY(ref.Column(RefCol::FileName).width > 150);
        QCOMPARE(g.window->focusWidget(), table);
    }

    void refCtrlEExportsTheReferenceList() {
        GuiProgram& g = Start();
        QTableView* table = FillRefList(g);
        QTemporaryDir dir;
        const QString out = dir.filePath(QStringLiteral("ref.txt"));
        g.window->refPanel->chooseExportFile = [&](const QString&) { return out; };
        QTest::keyClick(table, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(QFile::exists(out));
        QFile f(out);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().contains("b.mp3"));
        QCOMPARE(g.window->focusWidget(), table);
    }

    void keyOutsideTheTablesDoesNothing() {
        GuiProgram& g = Start();
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(1, true);
        QTest::keyClick(Table(g), Qt::Key_Q);
        QTest::keyClick(Table(g), Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(list.CellText(1, InCol::FTag), QString());
        QVERIFY(g.prompt.shown.empty());
    }
};

QTEST_MAIN(TestShortcuts)
#include "test_shortcuts.moc"
