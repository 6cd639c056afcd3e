// The scan in the window: the first press opens the folder pane, the guards, a scan by
// btnTab1_GetFiles, its abort by btnTab1_Abort, the folder tree and the volume list,
// the saved-list chooser.
#include "GuiProgram.h"
#include "app/DataGridView.h"
#include "app/FolderPanel.h"
#include "app/InputDataPage.h"
#include "app/Mnemonics.h"
#include "app/ScanPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/ftcReadPool.h"
#include "list/modRefresh.h"
#include "tag/TagEngine.h"
#include "tag/modTagUpdate.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

namespace {

bool CopyFixture(const QString& fixture, const QString& target) {
    QDir().mkpath(QFileInfo(target).path());
    return QFile::copy(FixtureDir() + "/" + fixture, target);
}

// A copy of the MP3 fixture with the program's rating and mood frames.
bool RatedCopy(const QString& target, const QString& rating, const QString& mood) {
    if (!CopyFixture("tone.mp3", target))
        return false;
    TagEngine e;
    if (e.OpenFile(target) != 1)
        return false;
    SetTagRatingMood(e, "Rating", rating, "ID3v2");
    SetTagRatingMood(e, "Mood", mood, "ID3v2");
    return e.SaveV2(target) != 0;
}

QTreeWidgetItem* NodeOf(QTreeWidget* tree, const QString& path) {
    for (QTreeWidgetItem* i : tree->findItems("*", Qt::MatchWildcard | Qt::MatchRecursive))
        if (i->data(0, Qt::UserRole).toString() == path)
            return i;
    return nullptr;
}

QStringList Items(const QComboBox* box) {
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
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
        p->folders->chbTab1_CloseFolderView->setChecked(true);
        QVERIFY(SettingOn(Ini::CloseFolderView, Ini::Col1));
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QVERIFY(!p->FolderPaneOpen());
        QCOMPARE(list.Rows(), 2);
    }

    // The rating and mood boxes of the filter take their values from every scan, update
    // and load; the value chosen stays chosen.
    void scanFillsRatingAndMoodFilters() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        QTemporaryDir tmp;
        QVERIFY(RatedCopy(tmp.path() + "/Abba - One.mp3", "***", "happy"));
        QVERIFY(RatedCopy(tmp.path() + "/Beatles - Two.mp3", "*", "sad"));
        QVERIFY(RatedCopy(tmp.path() + "/Cream - Three.mp3", "***", "happy"));
        ScanPanel* p = g.window->scanPanel;
        auto* rating = g.window->findChild<QComboBox*>("cmbTab1_Filter(2)");
        auto* mood = g.window->findChild<QComboBox*>("cmbTab1_Filter(3)");
        auto* column = g.window->findChild<QComboBox*>("cmbTab1_Filter(0)");
        auto* value = g.window->findChild<QComboBox*>("cmbTab1_Filter(1)");
        QVERIFY(rating && mood && column && value);
        QCOMPARE(rating->count(), 0);
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton); // opens the pane
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        column->setCurrentIndex(3);
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QCOMPARE(Grids::LbxInput().Rows(), 3);
        QCOMPARE(Items(rating), QStringList({"", "*", "***"}));
        QCOMPARE(Items(mood), QStringList({"", "happy", "sad"}));
        // The main filter box stands on its first entry, the artists, with their values.
        QCOMPARE(column->currentIndex(), 0);
        QCOMPARE(Items(value), QStringList({"", "Abba", "Beatles", "Cream"}));

        // A choice survives the update of the list.
        rating->setCurrentIndex(2);
        mood->setCurrentIndex(1);
        QVERIFY(RatedCopy(tmp.path() + "/Doors - Four.mp3", "**", "calm"));
        QFile::remove(tmp.path() + "/Beatles - Two.mp3");
        QVERIFY(RatedCopy(tmp.path() + "/Beatles - Two.mp3", "*****", "sad"));
        QTest::mouseClick(p->btnTab1_UpdateData, Qt::LeftButton);
        QCOMPARE(Items(rating), QStringList({"", "***", "*****"}));
        QCOMPARE(rating->currentText(), QString("***"));
        QCOMPARE(mood->currentText(), QString("happy"));

        // A load of a saved list builds them from its rows.
        const QString data = tmp.path() + "/saved.data";
        p->chooseListFile = [&](int) { return data; };
        g.window->pageData->chbTab1_NoMsg->setChecked(true);
        emit p->btnTab1_HandleFileInput->activated(0);
        QVERIFY(QFile::exists(data));
        Grids::LbxInput().Clear();
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QCOMPARE(Grids::LbxInput().Rows(), 4);
        QCOMPARE(Items(rating), QStringList({"", "**", "***", "*****"}));
        Grids::LbxInput().Clear();
        emit p->btnTab1_HandleFileInput->activated(1);
        QCOMPARE(Grids::LbxInput().Rows(), 3);
        QCOMPARE(Items(rating), QStringList({"", "***", "*****"}));
        QCOMPARE(Items(mood), QStringList({"", "happy", "sad"}));
        QCOMPARE(rating->currentText(), QString("***"));
    }

    // One very long name does not make the name column wider than a third of the view.
    void fittedColumnIsCapped() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->resize(1280, 800);
        g.window->show();
        QTemporaryDir tmp;
        const QString longName = QString(200, QChar('x')) + " - Song.mp3";
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/" + longName));
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        ScanPanel* p = g.window->scanPanel;
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QCOMPARE(Grids::LbxInput().Rows(), 2);
        auto* table = g.window->pageData->LbxInput->table();
        const int width = table->horizontalHeader()->sectionSize(InCol::FileName - 1);
        QVERIFY2(width <= std::max(table->viewport()->width(), 900) / 3 + 12,
                 qPrintable(QString::number(width)));
        QVERIFY(width >= 200);
        // The user can still widen it by hand.
        table->horizontalHeader()->resizeSection(InCol::FileName - 1, 1500);
        QCOMPARE(Grids::LbxInput().Column(InCol::FileName).width, 1500 * 15);
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

    // The refresh reads only what changed and keeps the marks; the preference of one
    // reader makes the scan read on this thread alone.
    void refreshByButton() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/a.mp3"));
        QVERIFY(CopyFixture("tone.flac", tmp.path() + "/b.flac"));
        QVERIFY(CopyFixture("tone.ogg", tmp.path() + "/c.ogg"));
        ScanPanel* p = g.window->scanPanel;
        QVERIFY(p->btnTab1_RefreshData->isVisible());
        p->OpenFolderPane();
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        DataGrid& list = Grids::LbxInput();
        QCOMPARE(list.Rows(), 3);
        for (int r = 1; r <= 3; ++r)
            list.SetCellText(r, InCol::FTag, QStringLiteral("keep"));
        QFile grow(tmp.path() + "/a.mp3");
        QVERIFY(grow.open(QIODevice::Append));
        grow.write(QByteArray(512, '\0'));
        grow.close();
        QVERIFY(QFile::remove(tmp.path() + "/c.ogg"));
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/new.mp3"));
        QTest::mouseClick(p->btnTab1_RefreshData, Qt::LeftButton);
        QCOMPARE(list.Rows(), 3);
        const int a = list.FindRow("a.mp3", InCol::FileName);
        QCOMPARE(list.CellText(a, InCol::SizeByte), QString::number(QFileInfo(tmp.path() + "/a.mp3").size()));
        QCOMPARE(list.CellText(a, InCol::FTag), QStringLiteral("keep"));
        QCOMPARE(list.CellText(list.FindRow("b.flac", InCol::FileName), InCol::FTag), QStringLiteral("keep"));
        QCOMPARE(list.CellText(list.FindRow("c.ogg", InCol::FileName), InCol::FTag),
                 QStringLiteral("_#-/-> keep"));
        QCOMPARE(int(g.prompt.shown.size()), 1); // the missing file is told
        QCOMPARE(g.prompt.shown.back().icon, Prompt::Icon::Warning);
        QVERIFY(g.prompt.LastText().contains(Caption(CapRefreshReread) + "1"));
        QVERIFY(g.prompt.LastText().contains(Caption(CapMissingFiles) + "1"));
        QVERIFY(!State().ScanRunning);
        QVERIFY(!list.IsLocked());
        QVERIFY(p->btnTab1_RefreshData->isEnabled());

        SetSettingOn(Ini::ScanOneThread, Ini::Col1, true);
        QCOMPARE(ScanReadThreads(), 1);
        SetSettingOn(Ini::ScanOneThread, Ini::Col1, false);
        QVERIFY(ScanReadThreads() >= 1);
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

    // Without a stored folder the tree opens at the user's home, chosen and open; "/" is
    // never what it opens at.
    void treeOpensAtHome() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        ScanPanel* p = g.window->scanPanel;
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QTreeWidget* tree = p->folders->Folderview;
        QTreeWidgetItem* home = NodeOf(tree, QDir::homePath());
        QVERIFY(home);
        QVERIFY(tree->viewport()->rect().intersects(tree->visualItemRect(home)));
        QCOMPARE(p->folders->SelectedFolder(), QDir::homePath());
        QVERIFY(home->isExpanded());
        QVERIFY(g.prompt.shown.empty());
    }

    // The folder of the last session is chosen again; one that is gone is told, and
    // the preset volume is forgotten.
    void treeOpensAtTheStoredFolder() {
        QTemporaryDir tmp;
        QDir(tmp.path()).mkpath("music");
        {
            GuiProgram g;
            QVERIFY(g.Start({{{Ini::TreeFolder, Ini::Col2}, tmp.path() + "/music"}}));
            g.window->show();
            ScanPanel* p = g.window->scanPanel;
            QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
            QCOMPARE(p->folders->SelectedFolder(), tmp.path() + "/music");
            QCOMPARE(p->folders->Folderview->currentItem()->text(0), QString("music"));
            QVERIFY(g.prompt.shown.empty());
        }
        GuiProgram g;
        const QString gone = tmp.path() + "/gone";
        QVERIFY(g.Start({{{Ini::TreeFolder, Ini::Col2}, gone}, {{Ini::DrivePreset, Ini::Col1}, "/"}}));
        QCOMPARE(int(g.prompt.shown.size()), 1);
        QCOMPARE(g.prompt.shown[0].text, Caption(CapTreeFolderMissing) + gone);
        QCOMPARE(g.prompt.shown[0].icon, Prompt::Icon::Critical);
        QVERIFY(Setting(Ini::DrivePreset, Ini::Col1).isEmpty());
        QCOMPARE(g.window->scanPanel->folders->SelectedFolder(), QDir::homePath()); // home instead
    }

    // One click on a folder, then the read command: that folder is read.
    void oneClickThenRead() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->resize(1280, 800);
        g.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(g.window.get()));
        QTemporaryDir tmp;
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/one/a.mp3"));
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/two/b.mp3"));
        ScanPanel* p = g.window->scanPanel;
        QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
        QTreeWidget* tree = p->folders->Folderview;
        QVERIFY(p->folders->ShowFolder(tmp.path()));
        tree->currentItem()->setExpanded(true);
        for (const char* name : {"two", "one"}) {
            QTreeWidgetItem* node = NodeOf(tree, tmp.path() + "/" + name);
            QVERIFY(node);
            tree->scrollToItem(node);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
            QCOMPARE(p->folders->SelectedFolder(), tmp.path() + "/" + name);
            QTest::mouseClick(p->btnTab1_GetFiles, Qt::LeftButton);
            QCOMPARE(Grids::LbxInput().Rows(), 1);
            QCOMPARE(Grids::LbxInput().CellText(1, InCol::Path), tmp.path() + "/" + name);
        }
        // The chosen folder is kept for the next start.
        QCOMPARE(Setting(Ini::TreeFolder, Ini::Col2), tmp.path() + "/one");
    }

    // Folders made while the program runs show on the next expansion and by the
    // refresh entry of the tree's menu.
    void treeShowsNewFolders() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir tmp;
        QDir(tmp.path()).mkpath("b/inner");
        FolderPanel* f = g.window->scanPanel->folders;
        f->FillDrives();
        QVERIFY(f->ShowFolder(tmp.path()));
        QTreeWidgetItem* node = f->Folderview->currentItem();
        node->setExpanded(true);
        node->child(0)->setExpanded(true);
        QCOMPARE(node->childCount(), 1);
        QDir(tmp.path()).mkpath("a");
        QDir(tmp.path()).mkpath("c");
        node->setExpanded(false);
        node->setExpanded(true);
        QCOMPARE(node->childCount(), 3);
        QCOMPARE(node->child(0)->text(0), QString("a"));
        QCOMPARE(node->child(1)->text(0), QString("b"));
        QVERIFY(node->child(1)->isExpanded()); // an open branch stays open
        QCOMPARE(node->child(1)->childCount(), 1);
        // The refresh entry of the menu.
        QDir(tmp.path()).rmdir("a");
        QDir(tmp.path()).mkpath("b/second");
        f->RunMenuKey(QStringLiteral("UpdateFolders"), node);
        QCOMPARE(node->childCount(), 2);
        QCOMPARE(node->child(0)->text(0), QString("b"));
        QCOMPARE(node->child(0)->childCount(), 2);
        // "Read folder" of the menu reads it at once.
        QVERIFY(CopyFixture("tone.mp3", tmp.path() + "/c/x.mp3"));
        g.window->scanPanel->OpenFolderPane();
        f->RunMenuKey(QStringLiteral("DirUpdate"), node->child(1));
        QCOMPARE(Grids::LbxInput().Rows(), 1);
    }

    // The option boxes of the data tab that the settings keep.
    void optionBoxesAreKept() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::PresetSubfolder, Ini::Col1}, "1"}}));
        g.window->show();
        ScanPanel* p = g.window->scanPanel;
        QVERIFY(p->chbTab1_SubFolders->isChecked());
        QTest::mouseClick(p->chbTab1_SubFolders, Qt::LeftButton);
        QVERIFY(!SettingOn(Ini::PresetSubfolder, Ini::Col1));
        QTest::mouseClick(p->chbTab1_SubFolders, Qt::LeftButton);
        QVERIFY(SettingOn(Ini::PresetSubfolder, Ini::Col1));
        QCheckBox* noMsg = g.window->pageData->chbTab1_NoMsg;
        QTest::mouseClick(noMsg, Qt::LeftButton);
        QCOMPARE(SettingOn(Ini::NoMsg, Ini::Col1), noMsg->isChecked());
        QCheckBox* sums = g.window->pageData->chbTab1_TimeSizeData;
        QTest::mouseClick(sums, Qt::LeftButton);
        QCOMPARE(Setting(Ini::TimeSizeData, Ini::Col2), QString(sums->isChecked() ? "1" : "0"));
    }

    // The dialogue that deletes a saved list says so on its button.
    void deleteListDialogSaysDelete() {
        GuiProgram g;
        QVERIFY(g.Start());
        ScanPanel* p = g.window->scanPanel;
        QString accept;
        QTimer::singleShot(0, this, [&] {
            if (auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                if (auto* box = d->findChild<QDialogButtonBox*>())
                    for (QAbstractButton* b : box->buttons())
                        if (box->buttonRole(b) == QDialogButtonBox::AcceptRole)
                            accept = b->text();
                d->reject();
            }
        });
        emit p->btnTab1_HandleFileInput->activated(2);
        QCOMPARE(accept, Caption(CapDeleteButton));
        QVERIFY(g.prompt.shown.empty());
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
