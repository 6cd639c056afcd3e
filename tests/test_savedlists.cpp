// Saved lists: save, load with the missing-file check, the refresh hook, delete to the trash.

#include "core/AppPaths.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
// GCC 12 reports a false "maybe uninitialized" inside std::optional<QString> of ScriptedPrompt.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include "core/Prompt.h"
#pragma GCC diagnostic pop
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modSavedLists.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void SetCaption(int row, const QString& text) {
    DataGrid& t = CaptionTable();
    while (t.Cols() < kLanguageEnglish)
        t.AddColumn(QString(), QString());
    while (t.Rows() < kCaptionRowCount)
        t.AddRow({});
    t.SetCellText(row, kLanguageEnglish, text);
}

void DefineColumns(DataGrid& g, int count = InCol::Count) {
    for (int i = 0; i < count; ++i) {
        const InputColumnDef& d = kInputColumns[std::size_t(i)];
        g.AddColumn(QString::fromLatin1(d.key), QStringLiteral("Caption %1").arg(i + 1), d.widthTwips,
                    d.align, true, d.sortType);
    }
}

// A row of all 71 cells for the file folder/name.
QStringList RowFor(const QString& folder, const QString& name, const QString& mark) {
    QStringList cells;
    for (int c = 1; c <= InCol::Count; ++c)
        cells << QStringLiteral("cell %1").arg(c);
    cells[InCol::FTag - 1] = mark;
    cells[InCol::FileName - 1] = name;
    cells[InCol::Path - 1] = folder;
    return cells;
}

void Touch(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
}

QByteArray Hash(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1);
}

} // namespace

class TestSavedLists : public QObject {
    Q_OBJECT
    QTemporaryDir m_app;
    QTemporaryDir m_xdg;

private slots:
    void initTestCase() {
        SetAppPath(m_app.path());
        qputenv("XDG_DATA_HOME", m_xdg.path().toUtf8());
        SetLanguageColumn(kLanguageEnglish);
        SetCaption(CapListLoading, "Loading ...");
        SetCaption(CapListSaving, "Saving ...");
        SetCaption(CapListSaved, "The list has been saved.");
        SetCaption(CapDeleteFailed, "The file could not be deleted.");
        SetCaption(CapListSaveFailed, "The list could not be saved.");
        SetCaption(CapListLoadFailed, "The list could not be loaded.");
        SetCaption(CapSavedListFilter, "Saved lists");
        SetCaption(CapListLoaded, "The list has been loaded.");
        SetCaption(CapListFilesMissing, "Files not found:");
    }
    void cleanupTestCase() { qunsetenv("XDG_DATA_HOME"); }

    void folderAndFilter() {
        QCOMPARE(SavedListFolder(), m_app.path() + "/data");
        QVERIFY(EnsureSavedListFolder());
        QVERIFY(QFileInfo(m_app.path() + "/data").isDir());
        QCOMPARE(SavedListFilter(), QString("Saved lists (*.data)"));
    }
    void extensionRules() {
        QCOMPARE(SavedListPath("/x/list"), QString("/x/list.data"));
        QCOMPARE(SavedListPath("/x/my.data.old"), QString("/x/my.data.old"));
        QCOMPARE(SavedListPath("/x/list.data"), QString("/x/list.data"));
        QCOMPARE(SavedListPath("/x/LIST.DATA"), QString("/x/LIST.DATA"));
        // Only the file name counts, not its folder.
        QCOMPARE(SavedListPath("/x.data/list"), QString("/x.data/list.data"));
    }
    void saveAddsExtensionAndReports() {
        DataGrid g;
        DefineColumns(g);
        g.AddRow(RowFor("/music", "a.mp3", ""));
        ScriptedPrompt p;
        QString written;
        QVERIFY(SaveList(g, SavedListFolder() + "/mine", {}, p, &written));
        QCOMPARE(written, SavedListFolder() + "/mine.data");
        QVERIFY(QFile::exists(written));
        QCOMPARE(g.FooterText(InCol::FileName), QString("1"));
        QCOMPARE(p.LastText(), QString("The list has been saved."));
        ScriptedPrompt quiet;
        SavedListOptions o;
        o.noMsg = true;
        QVERIFY(SaveList(g, SavedListFolder() + "/my.data.old", o, quiet, &written));
        QCOMPARE(written, SavedListFolder() + "/my.data.old");
        QVERIFY(quiet.shown.empty());
    }
    void saveFailureIsCritical() {
        DataGrid g;
        DefineColumns(g);
        ScriptedPrompt p;
        SavedListOptions o;
        o.noMsg = true; // a failure is shown all the same
        QVERIFY(!SaveList(g, m_app.path() + "/no/such/folder/list", o, p));
        QCOMPARE(p.Count("tell"), 1);
        QCOMPARE(p.shown[0].icon, Prompt::Icon::Critical);
        QVERIFY(p.shown[0].text.startsWith("The list could not be saved."));
        QVERIFY(!QFile::exists(m_app.path() + "/no"));
    }
    void emptyListRoundTrip() {
        DataGrid g;
        DefineColumns(g);
        ScriptedPrompt p;
        QString written;
        QVERIFY(SaveList(g, SavedListFolder() + "/empty", {}, p, &written));
        DataGrid h;
        DefineColumns(h);
        h.AddRow(RowFor("/x", "y.mp3", ""));
        ScriptedPrompt q;
        const LoadListResult r = LoadList(h, written, {}, {}, q);
        QVERIFY(r.loaded);
        QCOMPARE(r.missing, 0);
        QCOMPARE(h.Rows(), 0);
        QCOMPARE(h.FooterText(InCol::FileName), QString("0"));
        QCOMPARE(q.LastText(), QString("The list has been loaded."));
    }
    void loadReplacesAllRowsAndMarksVanishedFiles() {
        QTemporaryDir music;
        Touch(music.filePath("here.mp3"));
        Touch(music.filePath("sub/also here.flac"));
        Touch(music.filePath("gone.mp3"));
        Touch(music.filePath("gone too.ogg"));
        DataGrid g;
        DefineColumns(g);
        g.AddRow(RowFor(music.path(), "here.mp3", "keep"));
        g.AddRow(RowFor(music.path(), "gone.mp3", "oldmark"));
        g.AddRow(RowFor(music.filePath("sub"), "also here.flac", ""));
        g.AddRow(RowFor(music.path(), "gone too.ogg", ""));
        ScriptedPrompt p;
        QString written;
        QVERIFY(SaveList(g, SavedListFolder() + "/vanish", {}, p, &written));
        QFile::remove(music.filePath("gone.mp3"));
        QFile::remove(music.filePath("gone too.ogg"));
        const QByteArray before = Hash(written);

        DataGrid list;
        DefineColumns(list);
        for (int i = 0; i < 7; ++i)
            list.AddRow(RowFor("/old", QStringLiteral("old%1.mp3").arg(i), ""));
        ScriptedPrompt q;
        SavedListOptions o;
        o.noMsg = true; // the count of missing files is shown anyway
        int totals = 0, valueLists = 0;
        SavedListHooks hooks;
        hooks.showTotals = [&] { ++totals; };
        hooks.rebuildValueLists = [&] { ++valueLists; };
        const LoadListResult r = LoadList(list, written, o, hooks, q);
        QVERIFY(r.loaded);
        QCOMPARE(r.missing, 2);
        QCOMPARE(list.Rows(), 4);
        QCOMPARE(list.CellText(1, InCol::FTag), QString("keep"));
        QCOMPARE(list.CellText(2, InCol::FTag), QString("_#-/-> oldmark"));
        QCOMPARE(list.CellText(3, InCol::FTag), QString());
        QCOMPARE(list.CellText(4, InCol::FTag), Mark::FailedPrefix);
        // A vanished file's row keeps all its other cells.
        QStringList expected = RowFor(music.path(), "gone.mp3", "_#-/-> oldmark");
        QCOMPARE(list.RowCells(2), expected);
        QCOMPARE(q.Count("tell"), 1);
        QCOMPARE(q.LastText(), QString("Files not found: 2"));
        QCOMPARE(totals, 1);
        QCOMPARE(valueLists, 1);
        QVERIFY(!list.IsLocked());
        QVERIFY(!State().ListBusy);
        QCOMPARE(list.FooterText(InCol::FileName), QString("4"));
        // Nothing is written by a load.
        QCOMPARE(Hash(written), before);
    }
    void programColumnsStay() {
        // A list saved by an older version with fewer columns and other captions.
        DataGrid old;
        DefineColumns(old, 60);
        for (int c = 1; c <= 60; ++c)
            old.SetColumnCaption(c, "old caption");
        QStringList cells = RowFor("/nowhere", "x.mp3", "m").mid(0, 60);
        old.AddRow(cells, "7k");
        const QString path = SavedListFolder() + "/older.data";
        QVERIFY(old.SaveFile(path));
        DataGrid list;
        DefineColumns(list);
        ScriptedPrompt p;
        const LoadListResult r = LoadList(list, path, {}, {}, p);
        QVERIFY(r.loaded);
        QCOMPARE(list.Cols(), InCol::Count);
        QCOMPARE(list.Column(5).caption, QString("Caption 5"));
        QCOMPARE(list.CellText(1, 60), QString("cell 60"));
        QCOMPARE(list.CellText(1, 61), QString());
        QCOMPARE(list.CellText(1, InCol::FTag), QString("_#-/-> m"));
        QCOMPARE(list.RowKey(1), QString("7k"));
    }
    void brokenFileLeavesListAsItWas() {
        const QString path = SavedListFolder() + "/broken.data";
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("this is no list\n");
        f.close();
        DataGrid list;
        DefineColumns(list);
        list.AddRow(RowFor("/a", "b.mp3", "x"));
        ScriptedPrompt p;
        SavedListOptions o;
        o.noMsg = true;
        const LoadListResult r = LoadList(list, path, o, {}, p);
        QVERIFY(!r.loaded);
        QCOMPARE(p.Count("tell"), 1);
        QCOMPARE(p.LastText(), QString("The list could not be loaded."));
        QCOMPARE(p.shown[0].icon, Prompt::Icon::Critical);
        QVERIFY(!list.IsLocked());
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, InCol::FTag), QString("x"));
        // A missing file the same.
        QVERIFY(!LoadList(list, SavedListFolder() + "/none.data", o, {}, p).loaded);
    }
    void refreshFromFilesRunsUpdateList() {
        DataGrid g;
        DefineColumns(g);
        g.AddRow(RowFor("/surely/not/there", "a.mp3", "mark"));
        ScriptedPrompt p;
        QString written;
        QVERIFY(SaveList(g, SavedListFolder() + "/act", {}, p, &written));
        DataGrid list;
        DefineColumns(list);
        SavedListOptions o;
        o.refreshFromFiles = true;
        bool busyDuringUpdate = false;
        int updates = 0;
        SavedListHooks hooks;
        hooks.updateList = [&] {
            ++updates;
            busyDuringUpdate = State().ListBusy;
        };
        ScriptedPrompt q;
        const LoadListResult r = LoadList(list, written, o, hooks, q);
        QVERIFY(r.loaded);
        QCOMPARE(updates, 1);
        QVERIFY(busyDuringUpdate);
        QCOMPARE(r.missing, 0);
        QCOMPARE(list.CellText(1, InCol::FTag), QString("mark"));
        QCOMPARE(q.LastText(), QString("The list has been loaded."));
    }
    void deleteGoesToTrash() {
        DataGrid g;
        DefineColumns(g);
        ScriptedPrompt p;
        QString written;
        QVERIFY(SaveList(g, SavedListFolder() + "/todelete", {}, p, &written));
        ScriptedPrompt no;
        no.answers = {false};
        QVERIFY(!DeleteList(written, no));
        QCOMPARE(no.Count("yesno"), 1);
        QCOMPARE(no.Count("tell"), 0);
        QVERIFY(QFile::exists(written));
        ScriptedPrompt yes;
        QVERIFY(DeleteList(written, yes));
        QVERIFY(!QFile::exists(written));
        QVERIFY(QFile::exists(m_xdg.filePath("Trash/files/todelete.data")));
        QVERIFY(QFile::exists(m_xdg.filePath("Trash/info/todelete.data.trashinfo")));
        ScriptedPrompt fail;
        QVERIFY(!DeleteList(written, fail));
        QCOMPARE(fail.LastText(), QString("The file could not be deleted."));
        QCOMPARE(fail.shown.back().icon, Prompt::Icon::Critical);
    }
};

QTEST_GUILESS_MAIN(TestSavedLists)
#include "test_savedlists.moc"
