// Copy, move and delete of the data list's rows on real files: collisions in the target
// folder, the failed move that keeps its row, the mark filter, the messages, the linked
// files of the extended copy and the sweep rule.

#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/modFileCommands.h"
#include "file/modRename.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void Touch(const QString& path, const QByteArray& data = QByteArrayLiteral("x")) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList Names(const QString& dir) {
    return QDir(dir).entryList(QDir::Files, QDir::Name);
}

void Fill(DataGrid& list, const QString& dir, const QStringList& names) {
    EnsureInputColumns(list);
    list.Clear();
    for (const QString& n : names) {
        if (!QFile::exists(dir + u'/' + n))
            Touch(dir + u'/' + n);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = n;
        cells[InCol::Path - 1] = dir;
        list.AddRow(cells);
    }
    list.SelectAll();
}

} // namespace

class TestFileCommands : public QObject {
    Q_OBJECT

    ProgramFolder program;
    DataGrid list;
    ScriptedPrompt prompt;

    FileCommandOptions Options(const QString& target) {
        FileCommandOptions o;
        o.paperbin = true; // the tests delete for good, not into the desktop's trash
        o.tempFolder = program.file(QStringLiteral("temp"));
        o.chooseFolder = [target](int, const QString&) { return target; };
        o.journalPath = program.file(QStringLiteral("temp/move.journal"));
        return o;
    }

private slots:
    void initTestCase() { QVERIFY(LoadInstalledCaptions()); }

    void plainCopyAsksOnCollision() {
        QTemporaryDir src, dst;
        Fill(list, src.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")});
        Touch(dst.filePath(QStringLiteral("a.mp3")), "old");
        ListEnv env(prompt);
        prompt.shown.clear();
        prompt.answers = {false}; // keep the file in the target
        const FileCommandResult r = CopyRows(list, Options(dst.path()), env, nullptr);
        QCOMPARE(r.done, 1);
        QCOMPARE(Read(dst.filePath(QStringLiteral("a.mp3"))), QByteArray("old"));
        QCOMPARE(prompt.shown.front().kind, QStringLiteral("yesno"));
        QCOMPARE(prompt.shown.back().text, Caption(CapOneFileCopied));
        QCOMPARE(Setting(Ini::PathCopyTarget, Ini::Col2), dst.path()); // the folder is kept
        prompt.answers = {true};
        QCOMPARE(CopyRows(list, Options(dst.path()), env, nullptr).done, 2);
        QCOMPARE(Read(dst.filePath(QStringLiteral("a.mp3"))), QByteArray("x"));
        QCOMPARE(prompt.shown.back().text, CountText(CapFilesCopied, 2));
        // A cancelled picker does nothing.
        FileCommandOptions none = Options(QString());
        QVERIFY(!CopyRows(list, none, env, nullptr).ran);
    }

    void extendedCopyTakesFreeNameAndLinks() {
        QTemporaryDir src, dst, links;
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"),
                            src.filePath(QStringLiteral("song.mp3"))));
        QFile::setPermissions(src.filePath(QStringLiteral("song.mp3")), QFile::ReadOwner | QFile::WriteOwner);
        Touch(links.filePath(QStringLiteral("score.pdf")), "score");
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(src.filePath(QStringLiteral("song.mp3"))) != 0);
        e.SetV2Composer(links.filePath(QStringLiteral("score.pdf")));
        e.SetV2Title(QStringLiteral("Song"));
        QVERIFY(e.SaveV2(src.filePath(QStringLiteral("song.mp3"))) > 0);
        Touch(dst.filePath(QStringLiteral("song.mp3")), "other");
        Fill(list, src.path(), {QStringLiteral("song.mp3")});
        FileCommandOptions o = Options(dst.path());
        o.copyLinkedFiles = true;
        o.eraseTagsByCopy = true;
        o.noMsg = true;
        ListEnv env(prompt);
        prompt.shown.clear();
        const FileCommandResult r = CopyRows(list, o, env, &e);
        QCOMPARE(r.done, 1);
        QVERIFY(prompt.shown.empty()); // quiet, and no question on the collision
        QCOMPARE(Names(dst.path()), (QStringList{QStringLiteral("score.pdf"), QStringLiteral("song (2).mp3"),
                                                 QStringLiteral("song.mp3")}));
        QCOMPARE(Read(dst.filePath(QStringLiteral("song.mp3"))), QByteArray("other"));
        // The copy has no link left, the source keeps its own.
        QVERIFY(e.OpenFile(dst.filePath(QStringLiteral("song (2).mp3"))) != 0);
        QVERIFY(e.V2Composer().isEmpty());
        QCOMPARE(e.V2Title(), QStringLiteral("Song"));
        QVERIFY(e.OpenFile(src.filePath(QStringLiteral("song.mp3"))) != 0);
        QCOMPARE(e.V2Composer(), links.filePath(QStringLiteral("score.pdf")));
        // no picture export is left behind; only the journal of the batch (for the undo) stays
        QCOMPARE(QDir(program.file(QStringLiteral("temp"))).entryList(QDir::Files),
                 QStringList{QStringLiteral("move.journal")});
    }

    void copyIsUndoneUnlessTheCopyChanged() {
        QTemporaryDir src, dst;
        Fill(list, src.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")});
        FileCommandOptions o = Options(dst.path());
        o.noMsg = true;
        o.eraseTagsByCopy = false;
        ListEnv env(prompt);
        QCOMPARE(CopyRows(list, o, env, nullptr).done, 2);
        QCOMPARE(Names(dst.path()), (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}));
        // the copy of b is written to after the batch: it stays
        QTest::qWait(5);
        Touch(dst.filePath(QStringLiteral("b.mp3")), "changed");
        const QString journal = program.file(QStringLiteral("temp/move.journal"));
        UndoOutcome u = UndoLastBatch(&list, journal);
        QCOMPARE(u.done, 1);
        QCOMPARE(u.failed, 1);
        QCOMPARE(u.changedSince, 1);
        QVERIFY(u.failures.front().contains(Caption(CapUndoChangedLeft)));
        QCOMPARE(Names(dst.path()), QStringList{QStringLiteral("b.mp3")});
        QCOMPARE(Names(src.path()), (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}));
        QVERIFY(QFile::exists(journal)); // what was left stays for a later try
        QFile::remove(journal);
    }

    void deleteIntoTheTrashIsUndone() {
        QTemporaryDir data, src;
        qputenv("XDG_DATA_HOME", data.path().toUtf8());
        Fill(list, src.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3")});
        FileCommandOptions o = Options(QString());
        o.paperbin = false;
        o.noMsg = true;
        ListEnv env(prompt);
        const FileCommandResult r = DeleteRows(list, o, env, true);
        qunsetenv("XDG_DATA_HOME");
        QCOMPARE(r.done, 2);
        QVERIFY(Names(src.path()).isEmpty());
        if (QDir(data.filePath(QStringLiteral("Trash/files"))).entryList(QDir::Files).size() != 2)
            QSKIP("the home trash is not on the file system of the test folder");
        const UndoOutcome u = UndoLastBatch(&list, program.file(QStringLiteral("temp/move.journal")));
        QCOMPARE(u.done, 2);
        QCOMPARE(Names(src.path()), (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b.mp3")}));
        QVERIFY(QDir(data.filePath(QStringLiteral("Trash/files"))).entryList(QDir::Files).isEmpty());
        QVERIFY(QDir(data.filePath(QStringLiteral("Trash/info"))).entryList(QDir::Files).isEmpty());
    }

    void deleteForGoodCannotBeUndone() {
        QTemporaryDir src;
        Fill(list, src.path(), {QStringLiteral("a.mp3")});
        FileCommandOptions o = Options(QString());
        o.noMsg = true;
        ListEnv env(prompt);
        QCOMPARE(DeleteRows(list, o, env, true).done, 1);
        const QString journal = program.file(QStringLiteral("temp/move.journal"));
        const UndoOutcome u = UndoLastBatch(&list, journal);
        QVERIFY(u.hadJournal);
        QCOMPARE(u.done, 0);
        QCOMPARE(u.failed, 1);
        QVERIFY(u.failures.front().contains(Caption(CapUndoDeletedForGood)));
        QVERIFY(!QFile::exists(journal));
    }

    // A bounded mutation test of the journal's reader.
    void journalReaderSurvivesMutations() {
        JournalEntry e{QStringLiteral("/m"), QStringLiteral("a.mp3"), QStringLiteral("b.mp3"),
                       QStringLiteral("A"), QStringLiteral("T")};
        e.size = 10;
        e.mtimeNs = 20;
        JournalEntry c = e;
        c.newFolder = QStringLiteral("/n");
        c.kind = QStringLiteral("copy");
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("j"));
        QVERIFY(WriteJournal(path, {e, c}));
        std::vector<JournalEntry> back;
        QVERIFY(ReadJournal(path, back));
        QCOMPARE(back.size(), size_t(2));
        QCOMPARE(back[1].kind, QStringLiteral("copy"));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray good = f.readAll();
        QRandomGenerator rng(1234);
        for (int round = 0; round < 3000; ++round) {
            QByteArray bytes = good;
            for (int k = 0; k < 1 + int(rng.bounded(6)) && !bytes.isEmpty(); ++k) {
                const int at = int(rng.bounded(int(bytes.size())));
                switch (rng.bounded(3)) {
                case 0:
                    bytes[at] = "\t\n%x9\x01"[rng.bounded(6)];
                    break;
                case 1:
                    bytes.remove(at, 1 + int(rng.bounded(4)));
                    break;
                default:
                    bytes.insert(at, char(rng.bounded(256)));
                }
            }
            std::vector<JournalEntry> out;
            if (!ReadJournalBytes(bytes, out))
                continue;
            for (const JournalEntry& x : out) {
                QVERIFY(!x.folder.isEmpty() && !x.oldName.isEmpty() && !x.newName.isEmpty());
                QVERIFY(x.kind.isEmpty() || x.kind == u"copy" || x.kind == u"trash" || x.kind == u"gone");
            }
        }
    }

    void moveCollisionAndFailure() {
        QTemporaryDir src, dst;
        Fill(list, src.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")});
        Touch(dst.filePath(QStringLiteral("a.mp3")), "old");
        list.SetSelected(3, false);
        ListEnv env(prompt);
        FileCommandResult r = MoveRows(list, Options(dst.path()), env);
        QCOMPARE(r.done, 2);
        QCOMPARE(list.Rows(), 1); // the moved rows left the list
        QCOMPARE(Names(dst.path()), (QStringList{QStringLiteral("a (2).mp3"), QStringLiteral("a.mp3"),
                                                 QStringLiteral("b.mp3")}));
        QCOMPARE(prompt.shown.back().text, CountText(CapFilesMoved, 2));
        // The undo brings both files back to their folder and names.
        const UndoOutcome u = UndoLastBatch(&list, program.file(QStringLiteral("temp/move.journal")));
        QCOMPARE(u.done, 2);
        QCOMPARE(Names(src.path()),
                 (QStringList{QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")}));
        QCOMPARE(Names(dst.path()), QStringList{QStringLiteral("a.mp3")});
        // A target that cannot be a folder: the row stays, marked and selected.
        Touch(dst.filePath(QStringLiteral("plain")));
        list.SelectAll();
        r = MoveRows(list, Options(dst.filePath(QStringLiteral("plain"))), env);
        QCOMPARE(r.failed, 1);
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, InCol::FTag), Mark::Failed);
        QVERIFY(list.IsSelected(1));
        QCOMPARE(prompt.shown.back().text, CountText(CapFailedFiles, 1));
        QVERIFY(QFile::exists(src.filePath(QStringLiteral("c.mp3"))));
    }

    void markFilterMatchingNothingReportsZero() {
        QTemporaryDir src, dst;
        Fill(list, src.path(), {QStringLiteral("a.mp3")});
        FileCommandOptions o = Options(dst.path());
        o.markFilter = QStringLiteral("none");
        ListEnv env(prompt);
        const FileCommandResult r = MoveRows(list, o, env);
        QCOMPARE(r.done, 0);
        QCOMPARE(prompt.shown.back().text, CountText(CapFilesMoved, 0));
        QCOMPARE(Names(src.path()), QStringList{QStringLiteral("a.mp3")});
    }

    void deleteRows() {
        QTemporaryDir src;
        Fill(list, src.path(), {QStringLiteral("a.mp3"), QStringLiteral("b.mp3"), QStringLiteral("c.mp3")});
        ListEnv env(prompt);
        prompt.shown.clear();
        prompt.answers = {false};
        QVERIFY(!DeleteRows(list, Options(QString()), env).ran);
        QCOMPARE(prompt.shown.back().text, Caption(CapDeleteFilesQuestion));
        QCOMPARE(Names(src.path()).size(), 3);
        // With a mark: every row with it, selected or not.
        list.ClearSelection();
        list.SetCellText(2, InCol::FTag, QStringLiteral("go"));
        FileCommandOptions o = Options(QString());
        o.markFilter = QStringLiteral("go");
        prompt.answers = {true};
        FileCommandResult r = DeleteRows(list, o, env);
        QCOMPARE(r.done, 1);
        QCOMPARE(prompt.shown[prompt.shown.size() - 2].text,
                 Caption(CapDeleteMarkedBefore) + QStringLiteral("go") + Caption(CapDeleteMarkedAfter));
        QCOMPARE(prompt.shown.back().text, Caption(CapOneFileDeleted));
        QCOMPARE(Names(src.path()), (QStringList{QStringLiteral("a.mp3"), QStringLiteral("c.mp3")}));
        QCOMPARE(list.Rows(), 2);
        // Nothing selected: the current row alone.
        list.ClearSelection();
        list.SetCurRow(1);
        prompt.answers = {true};
        QCOMPARE(DeleteRows(list, Options(QString()), env).done, 1);
        QCOMPARE(Names(src.path()), QStringList{QStringLiteral("c.mp3")});
        QCOMPARE(list.Rows(), 1);
        // A file that is gone already fails and keeps its row.
        QFile::remove(src.filePath(QStringLiteral("c.mp3")));
        list.SelectAll();
        prompt.answers = {true};
        r = DeleteRows(list, Options(QString()), env);
        QCOMPARE(r.failed, 1);
        QCOMPARE(list.CellText(1, InCol::FTag), Mark::Failed);
        QCOMPARE(prompt.shown.back().text, CountText(CapFilesNotDeleted, 1));
    }

    void sweepRule() {
        QVERIFY(SweepSkips(QStringLiteral("/mnt/c/RECYCLER/x.mp3")));
        QVERIFY(SweepSkips(QStringLiteral("/mnt/c/System Volume Information")));
        QVERIFY(!SweepSkips(QStringLiteral("/music/Abba")));
    }
};

QTEST_GUILESS_MAIN(TestFileCommands)
#include "test_filecommands.moc"
