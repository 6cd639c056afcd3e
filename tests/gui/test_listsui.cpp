// The tab "Lists" of the data area: the export of the data list through the save
// dialogue (replaced here), its folder rule, removing rows from the list, the hand-over
// to the tag list, and the options that wait for their lists.

#include "ListWindowFixture.h"
#include "app/ListsPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/Marks.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
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

    void listsThatDoNotExistYetCannotBeChosen() {
        GuiProgram g;
        QVERIFY(g.Start());
        QVERIFY(Control<QRadioButton>(g.window.get(), "optTab1_CopyToPlaylist")->isEnabled());
        QVERIFY(!Control<QRadioButton>(g.window.get(), "optTab1_CopyToReflist")->isEnabled());
        QCOMPARE(Control<QRadioButton>(g.window.get(), "optTab1_FileExport")->text(), Caption(241));
        QCOMPARE(Control<QPushButton>(g.window.get(), "btnTab1_Sub2_1_OK")->text(), Caption(236));
    }
};

QTEST_MAIN(TestListsUi)
#include "test_listsui.moc"
