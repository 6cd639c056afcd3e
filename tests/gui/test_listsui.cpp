// The tab "Lists" of the data area: the export of the data list through the save
// dialogue (replaced here), its folder rule, removing rows from the list, the hand-over
// to the tag list, and the options that wait for their lists.

#include "ListWindowFixture.h"
#include "app/DataGridView.h"
#include "app/ExportDialog.h"
#include "app/InputDataPage.h"
#include "app/ListsPanel.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/Marks.h"
#include "output/modExport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>

class TestListsUi : public QObject {
    Q_OBJECT

    static ListsPanel* Panel(GuiProgram& g) { return g.window->findChild<ListsPanel*>(); }
    static void Run(GuiProgram& g, const char* option) {
        Control<QRadioButton>(g.window.get(), QString::fromLatin1(option))->setChecked(true);
        Control<QPushButton>(g.window.get(), "btnTab1_Sub2_1_OK")->click();
    }
    static QByteArray ReadAll(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

private slots:
    void exportCsvAndHtm() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        QTemporaryDir out;
        QString asked;
        int dialogs = 0;
        Panel(g)->chooseExportFile = [&] {
            ++dialogs;
            return asked;
        };
        // Cancelled: nothing is written, no message.
        asked.clear();
        Run(g, "optTab1_FileExport");
        QCOMPARE(dialogs, 1);
        QVERIFY(g.prompt.shown.empty());

        asked = out.filePath(QStringLiteral("list.csv"));
        Run(g, "optTab1_FileExport");
        const QByteArray csv = ReadAll(asked);
        QVERIFY(csv.contains("Beatles - Help.flac"));
        QVERIFY(csv.contains("\r\n"));
        QCOMPARE(g.prompt.LastText(), Caption(CapListExported));
        // Without a preset folder the folder is remembered in row 6.
        QCOMPARE(Setting(Ini::LastExportFormat, Ini::Col1), out.path());

        asked = out.filePath(QStringLiteral("list.HTM"));
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        const std::size_t before = g.prompt.shown.size();
        Run(g, "optTab1_FileExport");
        QVERIFY(ReadAll(asked).contains("<table"));
        QCOMPARE(g.prompt.shown.size(), before); // quiet

        // Another ending: written by nobody.
        asked = out.filePath(QStringLiteral("list.html"));
        Run(g, "optTab1_FileExport");
        QVERIFY(!QFile::exists(asked));
    }

    // A name typed without an ending takes the ending of the chosen type.
    void dialogTakesTheEndingOfTheChosenType() {
        GuiProgram g;
        QVERIFY(g.Start());
        QTemporaryDir out;
        for (const char* ext : {"xls", "csv", "htm", "xml", "txt"}) {
            std::unique_ptr<QFileDialog> d(MakeExportDialog(g.window.get(), out.path()));
            d->open();
            auto* types = d->findChild<QComboBox*>("fileTypeCombo");
            auto* name = d->findChild<QLineEdit*>("fileNameEdit");
            QVERIFY(types && name);
            // The type "txt" is chosen at first.
            QVERIFY(types->currentText().endsWith("(*.txt)"));
            // Chosen by the keyboard, as a user may do it.
            QTest::keyClick(types, Qt::Key_Home);
            for (int k = 0;
                 k < types->count() && !types->currentText().endsWith(QStringLiteral("(*.%1)").arg(ext)); ++k)
                QTest::keyClick(types, Qt::Key_Down);
            QVERIFY(types->currentText().endsWith(QStringLiteral("(*.%1)").arg(ext)));
            name->clear();
            QTest::keyClicks(name, "my list");
            QTest::keyClick(name, Qt::Key_Return);
            QCOMPARE(d->result(), int(QDialog::Accepted));
            QCOMPARE(d->selectedFiles().value(0), out.filePath(QStringLiteral("my list.%1").arg(ext)));
        }
        // A name with its own ending keeps it.
        std::unique_ptr<QFileDialog> d(MakeExportDialog(g.window.get(), out.path()));
        d->open();
        auto* name = d->findChild<QLineEdit*>("fileNameEdit");
        QTest::keyClicks(name, "other.csv");
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(d->selectedFiles().value(0), out.filePath("other.csv"));
        QCOMPARE(ExportSuffixOfFilter("Liste (*.XLS)"), QString("xls"));
        QCOMPARE(ExportSuffixOfFilter("Liste (*.html)"), QString());
    }

    // The export writes the shown columns in the order the user dragged them into.
    void exportFollowsTheShownOrder() {
        GuiProgram g;
        QVERIFY(g.Start());
        g.window->show();
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        for (int c = 1; c <= list.Cols(); ++c)
            list.SetColumnVisible(c, c == InCol::FileName || c == InCol::Artist || c == InCol::Title);
        QHeaderView* h = g.window->pageData->LbxInput->table()->horizontalHeader();
        // The user drags "Title" in front of "File name".
        h->moveSection(h->visualIndex(InCol::Title - 1), h->visualIndex(InCol::FileName - 1));
        QTemporaryDir out;
        const QString path = out.filePath("order.txt");
        Panel(g)->chooseExportFile = [&] { return path; };
        Control<QCheckBox>(g.window.get(), "chbTab1_NoMsg")->setChecked(true);
        Run(g, "optTab1_FileExport");
        const QList<QByteArray> lines = ReadAll(path).split('\n');
        QVERIFY(lines.size() > 2);
        const QList<QByteArray> header = lines[0].trimmed().split('\t');
        QCOMPARE(header.size(), 3);
        QCOMPARE(QString::fromUtf8(header[0]), list.Column(InCol::Title).caption);
        QCOMPARE(QString::fromUtf8(header[1]), list.Column(InCol::FileName).caption);
        QCOMPARE(QString::fromUtf8(header[2]), list.Column(InCol::Artist).caption);
        QVERIFY(lines[1].startsWith("Waterloo\tAbba - Waterloo.mp3\tAbba"));
        QCOMPARE(list.DisplayOrder()[std::size_t(InCol::FileName - 1)], InCol::Title);
    }

    void presetFolderWins() {
        QTemporaryDir preset;
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::PresetPathExport, Ini::Col1}, preset.path()},
                         {{Ini::LastExportFormat, Ini::Col1}, QStringLiteral("/old")}}));
        FillSampleRows();
        QTemporaryDir out;
        Panel(g)->chooseExportFile = [&] { return out.filePath(QStringLiteral("a.txt")); };
        Run(g, "optTab1_FileExport");
        QVERIFY(QFile::exists(out.filePath(QStringLiteral("a.txt"))));
        QCOMPARE(Setting(Ini::LastExportFormat, Ini::Col1), QStringLiteral("/old")); // never overwritten
    }

    void emptyListIsNotExported() {
        GuiProgram g;
        QVERIFY(g.Start());
        int dialogs = 0;
        Panel(g)->chooseExportFile = [&] {
            ++dialogs;
            return QString();
        };
        Run(g, "optTab1_FileExport");
        QCOMPARE(dialogs, 0);
        QCOMPARE(g.prompt.LastText(), Caption(CapListEmpty));
    }

    void removeEntriesLeavesTheFiles() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        DataGrid& list = Grids::LbxInput();
        Run(g, "optTab1_RemoveEntry");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoRowSelected));
        list.SetSelected(RowOfFile("Cream - Crossroads.ogg"), true);
        list.SetSelected(RowOfFile("Doors - Helpless.mp3"), true);
        Run(g, "optTab1_RemoveEntry");
        QCOMPARE(list.Rows(), 4);
        QCOMPARE(RowOfFile("Cream - Crossroads.ogg"), 0);
        QCOMPARE(RowOfFile("Doors - Helpless.mp3"), 0);
        QCOMPARE(RowsWithMark(Mark::DDelete), 0);
        QCOMPARE(list.FooterText(InCol::FileName), QStringLiteral("4"));
        QVERIFY(Control<QLabel>(g.window.get(), "lblTab1_TimeSizeMarkedData")->text().startsWith("(0)"));
    }

    void copyToTaglistHandsOverTheType() {
        GuiProgram g;
        QVERIFY(g.Start());
        FillSampleRows();
        QSignalSpy spy(Panel(g), &ListsPanel::copyToTaglistRequested);
        Run(g, "optTab1_CopyToTaglist");
        QCOMPARE(spy.count(), 0); // nothing selected
        DataGrid& list = Grids::LbxInput();
        list.SetSelected(3, true);
        list.SetCurRow(3);
        Run(g, "optTab1_CopyToTaglist");
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), list.CellText(3, InCol::Type));
    }

    void everyListCanBeChosen() {
        GuiProgram g;
        QVERIFY(g.Start());
        QVERIFY(Control<QRadioButton>(g.window.get(), "optTab1_CopyToPlaylist")->isEnabled());
        QVERIFY(Control<QRadioButton>(g.window.get(), "optTab1_CopyToReflist")->isEnabled());
        QCOMPARE(WithoutMnemonic(Control<QRadioButton>(g.window.get(), "optTab1_FileExport")->text()),
                 Caption(241));
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(g.window.get(), "btnTab1_Sub2_1_OK")->text()),
                 Caption(236));
    }
};

QTEST_MAIN(TestListsUi)
#include "test_listsui.moc"
