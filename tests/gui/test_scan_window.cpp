// The scan in the window: the first press opens the folder pane, the guards, a scan by
// btnTab1_GetFiles, its abort by btnTab1_Abort, the folder tree and the volume list,
// the saved-list chooser.
#include "GuiProgram.h"
#include "app/DataGridView.h"
#include "app/FolderPanel.h"
#include "app/InputDataPage.h"
#include "app/ScanPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

namespace {

bool CopyFixture(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    return QFile::copy(FixtureDir() + "/" + fixture, target);
}

} // namespace

class TestScanWindow : public QObject {
    Q_OBJECT
private slots:
    void firstPressOpensTheFolderPane() {
        GuiProgram g;
        QVERIFY(g.Start());
        ScanPanel* p = g.window->scanPanel;
        QVERIFY(p);
        QVERIFY(!p->FolderPaneOpen());
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QVERIFY(p->folders->isVisibleTo(g.window.get()));
        QVERIFY(g.prompt.shown.empty());
        QVERIFY(p->folders->Drive1->count() >= 1);
        QVERIFY(p->folders->Drive1->itemText(0).contains(" ("));
        QCOMPARE(p->folders->Folderview->topLevelItemCount(), 1);
    }

    void guards() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        ScanPanel* p = g.window->scanPanel;
        p->OpenFolderPane();
        p->folders->Folderview->setCurrentItem(nullptr);
        // No folder chosen.
        p->btnTab1_GetFiles_Click();
        QCOMPARE(int(g.prompt.shown.size()), 1);
        QCOMPARE(g.prompt.shown.back().text, Caption(CapNoFolderChosen));

        QTemporaryDir tmp;
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        QCOMPARE(p->folders->SelectedFolder(), tmp.path());
        // Text check without a search text.
        p->chbTab1_CheckCharacters->setChecked(true);
        p->btnTab1_GetFiles_Click();
        QCOMPARE(int(g.prompt.shown.size()), 2);
        QCOMPARE(g.prompt.shown.back().text, Caption(CapNoSearchText));
        // Check list without a first row.
        p->chbTab1_UseChecklist->setChecked(true);
        p->btnTab1_GetFiles_Click();
        QCOMPARE(int(g.prompt.shown.size()), 3);
        QCOMPARE(g.prompt.shown.back().text, Caption(CapCheckListEmpty));
        // With a row in the settings the scan runs.
        SetSetting(Ini::FindChrFirst, Ini::FindChrCol1, "x");
        p->btnTab1_GetFiles_Click();
        QCOMPARE(int(g.prompt.shown.size()), 3);
    }

    void scanByButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/01 - Artist - Song.mp3"));
        QVERIFY(CopyFixture("tone.flac", tmp.path() + "/sub/b.flac"));
        ScanPanel* p = g.window->scanPanel;
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton); // opens the pane
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        p->chbTab1_SubFolders->setChecked(true);
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        DataGrid& list = Grids::LbxInput();
        QCOMPARE(list.Rows(), 2);
        QCOMPARE(list.CellText(1, InCol::Artist), QString("Artist"));
        QCOMPARE(list.CellText(2, InCol::FileName), QString("b.flac"));
        QCOMPARE(list.FooterText(InCol::FileName), QString("2"));
        QVERIFY(!p->prgBar->isVisible());
        QVERIFY(!p->btnTab1_Abort->isVisible());
        QVERIFY(!State().ScanRunning);
        QVERIFY(!list.IsLocked());
        QVERIFY(g.window->pageData->TabInput1_Sub1->isEnabled());
        QVERIFY(g.prompt.shown.empty());

        // The pane closes after the scan when the preference says so.
        p->folders->chbPref_CloseFolderView->setChecked(true);
        QVERIFY(SettingOn(Ini::CloseFolderView, Ini::Col1));
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QVERIFY(!p->FolderPaneOpen());
        QCOMPARE(list.Rows(), 2);
    }

    void abortByButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        QTemporaryDir tmp;
        for (int i = 0; i < 800; ++i)
            QVERIFY(CopyFixture(i % 2 ? "tone.mp3" : "tone.ogg",
                                tmp.path() +
                                    QString("/f%1.%2").arg(i, 3, 10, QChar('0')).arg(i % 2 ? "mp3" : "ogg")));
        ScanPanel* p = g.window->scanPanel;
        p->OpenFolderPane();
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        bool sawBar = false;
        int valueAtAbort = -1;
        // Press cancel while the scan runs: the pump of the scan delivers the click.
        QTimer poll;
        poll.setInterval(0);
        connect(&poll, &QTimer::timeout, this, [&] {
            if (p->prgBar->isVisible() && Grids::LbxInput().Rows() >= 20 && valueAtAbort < 0) {
                sawBar = p->btnTab1_Abort->isVisible();
                valueAtAbort = Grids::LbxInput().Rows();
                QTest::mouseClick(p->btnTab1_Abort, Qt::LeftButton);
            }
        });
        poll.start();
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        poll.stop();
        DataGrid& list = Grids::LbxInput();
        QVERIFY(sawBar);
        QVERIFY(valueAtAbort >= 20);
        QVERIFY2(list.Rows() >= 20 && list.Rows() < 800, qPrintable(QString::number(list.Rows())));
        QVERIFY(p->lastResult.aborted);
        for (int c = 1; c <= list.Cols(); ++c)
            QVERIFY(list.FooterText(c).isEmpty());
        QVERIFY(!State().AbortRequested);
        QVERIFY(!State().ScanRunning);
        QVERIFY(!p->prgBar->isVisible());
        QVERIFY(!list.IsLocked());
        QVERIFY(p->btnTab1_GetFiles->isEnabled());
    }

    void treeIsLazyAndSorted() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir tmp;
        QDir(tmp.path()).mkpath("beta/inner");
        QDir(tmp.path()).mkpath("Alpha");
        QDir(tmp.path()).mkpath("gamma");
        FolderPanel* f = g.window->scanPanel->folders;
        f->FillDrives();
        QVERIFY(f->ShowFolder(tmp.path()));
        QTreeWidgetItem* node = f->Folderview->currentItem();
        QVERIFY(node);
        QCOMPARE(node->childCount(), 0); // not read before it is expanded
        node->setExpanded(true);
        QCOMPARE(node->childCount(), 3);
        QCOMPARE(node->child(0)->text(0), QString("Alpha"));
        QCOMPARE(node->child(1)->text(0), QString("beta"));
        QCOMPARE(node->child(2)->text(0), QString("gamma"));
        QCOMPARE(node->child(1)->childCount(), 0);
        node->child(0)->setExpanded(true);
        QCOMPARE(node->child(0)->childIndicatorPolicy(), QTreeWidgetItem::DontShowIndicator);
        QCOMPARE(FolderPanel::DriveText("/media/usb", "STICK"), QString("/media/usb (STICK)"));
        // The chosen folder is kept for the next start.
        QCOMPARE(Setting(Ini::TreeFolder, 2), tmp.path());
    }

    void savedListsByChooser() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        ScanPanel* p = g.window->scanPanel;
        p->OpenFolderPane();
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        p->btnTab1_GetFiles_Click();
        DataGrid& list = Grids::LbxInput();
        QCOMPARE(list.Rows(), 1);
        const QString data = tmp.path() + "/saved";
        p->chooseListFile = [&](int) { return data; };
        g.window->pageData->chbTab1_NoMsg->setChecked(true);
        p->btnTab1_HandleFileInput_Click(0);
        QVERIFY(QFile::exists(data + ".data"));
        list.Clear();
        p->chooseListFile = [&](int) { return data + ".data"; };
        p->chbTab1_Act->setChecked(true);
        list.AddRow({}); // replaced by the load
        p->btnTab1_HandleFileInput_Click(1);
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, InCol::FileName), QString("a.mp3"));
        QVERIFY(!p->prgBar->isVisible());
        p->chooseListFile = [&](int) { return QString(); }; // cancelled
        p->btnTab1_HandleFileInput_Click(2);
        QVERIFY(QFile::exists(data + ".data"));
    }
};

QTEST_MAIN(TestScanWindow)
#include "test_scan_window.moc"
