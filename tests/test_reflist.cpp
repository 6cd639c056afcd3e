// The reference list: columns, .ref files, copy from the data list, the path check and
// the compare by file name in both directions.

#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
// GCC 12 reports a false "maybe uninitialized" inside std::optional<QString> of ScriptedPrompt.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include "core/Prompt.h"
#pragma GCC diagnostic pop
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListColumns.h"
#include "list/modListEnv.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefMatch.h"

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

QStringList InputRow(const QString& folder, const QString& name, const QString& mark = QString()) {
    QStringList cells;
    for (int c = 1; c <= InCol::Count; ++c)
        cells << QString();
    cells[InCol::FTag - 1] = mark;
    cells[InCol::FileName - 1] = name;
    cells[InCol::Path - 1] = folder;
    cells[InCol::Type - 1] = QStringLiteral("MP3");
    cells[InCol::DurationS - 1] = QStringLiteral("100");
    cells[InCol::SizeByte - 1] = QStringLiteral("1048576");
    cells[InCol::Rating - 1] = QStringLiteral("***");
    cells[InCol::Mood - 1] = QStringLiteral("calm");
    return cells;
}

void Touch(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
}

QString TfOf(const DataGrid& ref, const QString& name) {
    const int r = ref.FindRow(name, RefCol::FileName);
    return r ? ref.CellText(r, RefCol::TF) : QStringLiteral("<none>");
}

} // namespace

class TestRefList : public QObject {
    Q_OBJECT
    QTemporaryDir m_app;
    QTemporaryDir m_xdg;

    void Fill(DataGrid& input, const QStringList& names, const QString& folder) {
        DefineInputColumns(input);
        for (const QString& n : names)
            input.AddRow(InputRow(folder, n));
    }

private slots:
    void initTestCase() {
        SetAppPath(m_app.path());
        qputenv("XDG_DATA_HOME", m_xdg.path().toUtf8());
        SetLanguageColumn(kLanguageEnglish);
        SetCaption(CapStatusFound, QStringLiteral("yes"));
        SetCaption(CapStatusMissing, QStringLiteral("no"));
        SetCaption(CapAddedToRefList, QStringLiteral("Added: "));
        SetCaption(CapMatchesFound, QStringLiteral("Matches: "));
        SetCaption(CapListEmpty, QStringLiteral("The list is empty."));
        SetCaption(CapRefColFound, QStringLiteral("Found"));
        EnsureSettingsShape();
    }

    void columnsAsDefined() {
        DataGrid ref;
        DefineRefColumns(ref);
        QCOMPARE(ref.Cols(), 16);
        QCOMPARE(ref.Column(RefCol::Remark).key, QStringLiteral("Bewertung"));
        QCOMPARE(ref.Column(RefCol::TF).align, Align::Center);
        QCOMPARE(ref.Column(RefCol::TF).caption, QStringLiteral("Found"));
        QVERIFY(!ref.Column(RefCol::Artist).visible);
        QVERIFY(!ref.Column(RefCol::Title).visible);
        QCOMPARE(ref.Column(RefCol::DurationS).sortType, SortType::Number);
        QCOMPARE(ref.Column(RefCol::SizeByte).sortType, SortType::Number);
        QCOMPARE(ref.Column(RefCol::FileName).width, 6000);
        QCOMPARE(ref.Column(RefCol::Mood).key, QStringLiteral("Mood"));
    }

    void copyTwiceAddsNothingWithoutDoubles() {
        DataGrid input, ref;
        Fill(input, {"a.mp3", "b.mp3", "c.mp3"}, "/music");
        input.SetCellText(2, InCol::FTag, QStringLiteral("x"));
        input.SelectAll();
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        CopyToRefOptions o;
        QCOMPARE(CopyToReflist(input, ref, o, env), 3);
        QCOMPARE(ref.Rows(), 3);
        QCOMPARE(ref.CellText(1, RefCol::TF), QStringLiteral("yes"));
        QCOMPARE(ref.CellText(2, RefCol::FTag), QString()); // no mark without chbTab1_RefD
        QCOMPARE(ref.CellText(1, RefCol::Path), QStringLiteral("/music"));
        QCOMPARE(ref.CellText(1, RefCol::Rating), QStringLiteral("***"));
        QCOMPARE(ref.CellText(1, RefCol::Mood), QStringLiteral("calm"));
        QCOMPARE(ref.FooterText(RefCol::FileName), QStringLiteral("3"));
        QCOMPARE(ref.FooterText(RefCol::DurationS), QStringLiteral("05:00"));
        QCOMPARE(prompt.shown.back().text, QStringLiteral("Added: 3"));

        QCOMPARE(CopyToReflist(input, ref, o, env), 0);
        QCOMPARE(ref.Rows(), 3);
        // The compare of names ignores case, as FindRow does.
        input.SetCellText(1, InCol::FileName, QStringLiteral("A.MP3"));
        QCOMPARE(CopyToReflist(input, ref, o, env), 0);

        o.keepDoubles = true;
        QCOMPARE(CopyToReflist(input, ref, o, env), 3);
        QCOMPARE(ref.Rows(), 6);
        QCOMPARE(ref.CellText(5, RefCol::FTag), QStringLiteral("x")); // the mark travels with chbTab1_RefD
    }

    void copyHonoursFilterAndGuards() {
        DataGrid input, ref;
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        CopyToRefOptions o;
        o.noMsg = true;
        DefineInputColumns(input);
        QCOMPARE(CopyToReflist(input, ref, o, env), -1); // empty list
        Fill(input, {"a.mp3", "b.mp3", "a.mp3"}, "/m");
        QCOMPARE(CopyToReflist(input, ref, o, env), -1); // nothing selected
        input.SelectAll();
        // The same name twice in one selection is added once.
        QCOMPARE(CopyToReflist(input, ref, o, env), 2);
        ref.Clear();
        input.SetCellText(2, InCol::FTag, QStringLiteral("keep"));
        o.markFilter = QStringLiteral("keep");
        QCOMPARE(CopyToReflist(input, ref, o, env), 1);
        QCOMPARE(ref.CellText(1, RefCol::FileName), QStringLiteral("b.mp3"));
    }

    void saveLoadDeleteRoundTrip() {
        DataGrid input, ref;
        Fill(input, {"ä ö.mp3", "tab\u00e9.flac"}, "/nowhere/at all");
        input.SelectAll();
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        CopyToRefOptions o;
        o.noMsg = true;
        CopyToReflist(input, ref, o, env);
        ref.SetCellText(1, RefCol::Remark, QStringLiteral("wanted"));

        // Empty list: the guard message, no file.
        DataGrid empty;
        DefineRefColumns(empty);
        QVERIFY(!SaveRefList(empty, RefListFolder() + "/none", true, prompt));
        QCOMPARE(prompt.shown.back().text, QStringLiteral("The list is empty."));

        QVERIFY(EnsureRefListFolder());
        QString written;
        QVERIFY(SaveRefList(ref, RefListFolder() + "/mine", true, prompt, &written));
        QCOMPARE(written, RefListFolder() + "/mine.ref");
        QCOMPARE(ref.Tag, written);
        QVERIFY(QFile::exists(written));
        // An ending in any case is kept.
        QCOMPARE(RefListPath("/x/A.REF"), QStringLiteral("/x/A.REF"));
        QCOMPARE(RefListPath("/x/a.ref.old"), QStringLiteral("/x/a.ref.old.ref"));

        // Paths that don't exist load whole; only the check tells.
        DataGrid back;
        QVERIFY(LoadRefList(back, written, prompt));
        QCOMPARE(back.Rows(), 2);
        QCOMPARE(back.Cols(), 16);
        QCOMPARE(back.CurRow(), 1);
        QCOMPARE(back.Tag, written);
        for (int r = 1; r <= 2; ++r)
            for (int c = 1; c <= 16; ++c)
                QCOMPARE(back.CellText(r, c), ref.CellText(r, c));
        QCOMPARE(back.FooterText(RefCol::FileName), QStringLiteral("2"));
        QCOMPARE(back.CellText(1, RefCol::TF), QStringLiteral("yes"));
        const RefCheckResult check = RefCheckPath(back);
        QCOMPARE(check.found, 0);
        QCOMPARE(check.missing, 2);
        QCOMPARE(back.CellText(2, RefCol::TF), QStringLiteral("no"));
        QCOMPARE(back.CellText(1, RefCol::Remark), QStringLiteral("wanted")); // nothing else changes

        // A failed load leaves the list as it was.
        QVERIFY(!LoadRefList(back, RefListFolder() + "/missing.ref", prompt));
        QCOMPARE(back.Rows(), 2);
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);

        // Row 101 keeps the folder.
        RememberRefListFolder(written);
        QCOMPARE(Setting(Ini::RefListFile, 2), RefListFolder());
        QCOMPARE(RefListStartFolder(), RefListFolder());
        SetSetting(Ini::RefListFile, 2, QStringLiteral("/no/such/folder"));
        QCOMPARE(RefListStartFolder(), RefListFolder());

        prompt.answers = {true};
        QVERIFY(DeleteRefList(written, true, prompt));
        QVERIFY(!QFile::exists(written));
    }

    void pathCheckFindsFiles() {
        QTemporaryDir music;
        Touch(music.path() + "/here.mp3");
        DataGrid input, ref;
        Fill(input, {"here.mp3", "gone.mp3"}, music.path());
        input.SelectAll();
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        CopyToRefOptions o;
        o.noMsg = true;
        CopyToReflist(input, ref, o, env);
        const RefCheckResult r = RefCheckPath(ref);
        QCOMPARE(r.found, 1);
        QCOMPARE(r.missing, 1);
        QCOMPARE(TfOf(ref, "here.mp3"), QStringLiteral("yes"));
        QCOMPARE(TfOf(ref, "gone.mp3"), QStringLiteral("no"));
        QCOMPARE(ref.FooterText(RefCol::FileName), QStringLiteral("2"));
        // The words are those of the language in use.
        SetCaption(CapStatusMissing, QStringLiteral("missing"));
        RefCheckPath(ref);
        QCOMPARE(TfOf(ref, "gone.mp3"), QStringLiteral("missing"));
        SetCaption(CapStatusMissing, QStringLiteral("no"));
    }

    void matchRefToDataMarksFirstHitOnly() {
        DataGrid input, ref;
        Fill(input, {"dup.mp3", "other.mp3", "DUP.mp3"}, "/d");
        input.SetCellText(1, InCol::Path, QStringLiteral("/first"));
        input.SetCellText(3, InCol::Path, QStringLiteral("/second"));
        input.SetCellText(2, InCol::FTag, QStringLiteral("old mark"));
        DefineRefColumns(ref);
        ref.AddRow({"", "stale", "yes", "dup.mp3", "", "", "", "/r"});
        ref.AddRow({"", "", "yes", "lost.mp3", "", "", "", "/r"});
        ref.SelectAll();
        ScriptedPrompt prompt;
        MatchOptions o;
        const MatchResult m = MarkMatches(input, ref, o, prompt, true);
        QCOMPARE(m.matches, 1);
        QCOMPARE(int(m.pairs.size()), 1);
        QCOMPARE(m.pairs[0].dataPath, QStringLiteral("/first/dup.mp3"));
        QCOMPARE(m.pairs[0].refPath, QStringLiteral("/r/dup.mp3"));
        // Only the first of the two same names is marked; all old marks are gone.
        int marked = 0;
        for (int r = 1; r <= input.Rows(); ++r) {
            if (input.CellText(r, InCol::FTag) == Mark::Default) {
                ++marked;
                QCOMPARE(input.CellText(r, InCol::Path), QStringLiteral("/first"));
            } else {
                QCOMPARE(input.CellText(r, InCol::FTag), QString());
            }
        }
        QCOMPARE(marked, 1);
        // Sorted by "2,3", row 1 current: the unmarked rows come first.
        QCOMPARE(input.CurRow(), 1);
        QCOMPARE(ref.CurRow(), 1);
        QCOMPARE(ref.CellText(1, RefCol::FileName), QStringLiteral("lost.mp3"));
        QCOMPARE(ref.CellText(2, RefCol::FTag), Mark::Default);
        QCOMPARE(prompt.shown.back().text, QStringLiteral("Matches: 1"));
    }

    void matchDataToRefAndFilters() {
        DataGrid input, ref;
        Fill(input, {"a.mp3", "b.mp3", "a.mp3"}, "/d");
        DefineRefColumns(ref);
        ref.AddRow({"", "", "yes", "A.MP3", "", "", "", "/r1"});
        ref.AddRow({"", "", "yes", "a.mp3", "", "", "", "/r2"});
        input.SelectAll();
        ScriptedPrompt prompt;
        MatchOptions o;
        o.direction = MatchDirection::DataToRef;
        o.noMsg = true;
        MatchResult m = MarkMatches(input, ref, o, prompt, true);
        // Both data rows named a.mp3 find the first reference row.
        QCOMPARE(m.matches, 2);
        QCOMPARE(m.pairs[0].refPath, QStringLiteral("/r1/A.MP3"));
        QCOMPARE(m.pairs[1].refPath, QStringLiteral("/r1/A.MP3"));
        QVERIFY(prompt.shown.empty());

        // Only selected rows that carry the mark take part (marks read before clearing).
        input.ClearSelection();
        for (int r = 1; r <= input.Rows(); ++r) {
            input.SetCellText(r, InCol::FTag, input.CellText(r, InCol::FileName) == "b.mp3" ? "k" : "");
            input.SetSelected(r, true);
        }
        o.dataMarkFilter = QStringLiteral("k");
        m = MarkMatches(input, ref, o, prompt);
        QCOMPARE(m.matches, 0);
        for (int r = 1; r <= input.Rows(); ++r)
            QCOMPARE(input.CellText(r, InCol::FTag), QString());
    }

    void remarksRowsAndClear() {
        DataGrid ref;
        DefineRefColumns(ref);
        ScriptedPrompt prompt;
        QVERIFY(!ClearReflist(ref, prompt)); // empty: the guard
        for (int i = 0; i < 4; ++i)
            ref.AddRow(
                {QStringLiteral("r%1").arg(i), i % 2 ? "m" : "", "yes", QStringLiteral("%1.mp3").arg(i)});
        ref.Tag = QStringLiteral("/x.ref");

        prompt.answers = {false};
        QVERIFY(!RefRemoveRemarks(ref, prompt));
        QCOMPARE(ref.CellText(1, RefCol::Remark), QStringLiteral("r0"));
        prompt.answers = {true};
        QVERIFY(RefRemoveRemarks(ref, prompt));
        QCOMPARE(ref.CellText(4, RefCol::Remark), QString());

        // By mark: the rows with the mark; by selection when the box is empty.
        prompt.answers = {true};
        QCOMPARE(DeleteRefRows(ref, QStringLiteral("m"), prompt), 2);
        QCOMPARE(ref.Rows(), 2);
        QCOMPARE(ref.FooterText(RefCol::FileName), QStringLiteral("2"));
        QCOMPARE(DeleteRefRows(ref, QString(), prompt), 0); // nothing selected
        ref.SetSelected(1, true);
        prompt.answers = {false};
        QCOMPARE(DeleteRefRows(ref, QString(), prompt), 0);
        prompt.answers = {true};
        QCOMPARE(DeleteRefRows(ref, QString(), prompt), 1);
        QCOMPARE(ref.CellText(1, RefCol::FileName), QStringLiteral("2.mp3"));

        // Clearing asks twice; a No to the second keeps the list.
        prompt.answers = {true, false};
        QVERIFY(!ClearReflist(ref, prompt));
        QCOMPARE(ref.Rows(), 1);
        prompt.answers = {true, true};
        QVERIFY(ClearReflist(ref, prompt));
        QCOMPARE(ref.Rows(), 0);
        QCOMPARE(ref.Cols(), 16);
        QVERIFY(ref.Tag.isEmpty());
    }

    void matchLargeListsQuickly() {
        // The lookup goes through a hash index: 20,000 x 20,000 rows in well under the
        // time a row-by-row search would take (timed in bench/, here only the result).
        DataGrid input, ref;
        DefineInputColumns(input);
        DefineRefColumns(ref);
        input.LockUpdate(true);
        ref.LockUpdate(true);
        for (int i = 0; i < 20000; ++i) {
            input.AddRow(InputRow("/d", QStringLiteral("song %1.mp3").arg(i)));
            ref.AddRow({"", "", "yes", QStringLiteral("song %1.mp3").arg(i * 2), "", "", "", "/r"});
        }
        input.LockUpdate(false);
        ref.LockUpdate(false);
        ref.SelectAll();
        ScriptedPrompt prompt;
        MatchOptions o;
        o.noMsg = true;
        QCOMPARE(MarkMatches(input, ref, o, prompt).matches, 10000);
    }
};

QTEST_GUILESS_MAIN(TestRefList)
#include "test_reflist.moc"
