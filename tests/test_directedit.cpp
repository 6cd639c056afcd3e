// Direct edit of the data list: the checks of a typed file name, the rename, the field
// map of WriteCellToTag with its offset from column 37 on, the locked columns, the
// dead-link question and Esc.

#include "InstalledCaptions.h"
#include "TestPaths.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"
#include "tag/modDirectEdit.h"
#include "tag/modTagJournal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestDirectEdit : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    DataGrid list;
    ScriptedPrompt prompt;

    // One row for a copy of the MP3 fixture named `name`.
    void Row(const QString& name) {
        EnsureInputColumns(list);
        list.Clear();
        for (const QString& n : Names())
            QFile::remove(dir.filePath(n));
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"), dir.filePath(name)));
        QFile::setPermissions(dir.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Path - 1] = dir.path();
        list.AddRow(cells);
        prompt.shown.clear();
        prompt.answers.clear();
    }
    QStringList Names() const { return QDir(dir.path()).entryList(QDir::Files, QDir::Name); }

private slots:
    void initTestCase() { QVERIFY(LoadInstalledCaptions()); }

    void hyphenRules() {
        Row(QStringLiteral("old.mp3"));
        QString text = QStringLiteral("Artist-Title.mp3");
        bool changed = false;
        QVERIFY(DirectEditCell(list, 1, InCol::FileName, text, false, TagEngine::Shared(), prompt, &changed));
        QVERIFY(changed);
        QCOMPARE(text, QStringLiteral("Artist - Title.mp3"));
        QCOMPARE(Names(), QStringList{QStringLiteral("Artist - Title.mp3")});
        QCOMPARE(list.CellText(1, InCol::Artist), QStringLiteral("Artist"));
        QCOMPARE(list.CellText(1, InCol::Title), QStringLiteral("Title"));
        list.SetCellText(1, InCol::FileName, text);

        text = QStringLiteral("Artist- Title.mp3");
        QVERIFY(DirectEditCell(list, 1, InCol::FileName, text, false, TagEngine::Shared(), prompt));
        QCOMPARE(text, QStringLiteral("Artist -  Title.mp3"));
        QCOMPARE(Names(), QStringList{QStringLiteral("Artist -  Title.mp3")});
        list.SetCellText(1, InCol::FileName, text);

        text = QStringLiteral("Artist -Title.mp3");
        QVERIFY(CheckEditedFileName(text, prompt));
        QCOMPARE(text, QStringLiteral("Artist - Title.mp3"));
    }

    void refusedNames() {
        Row(QStringLiteral("a - b.mp3"));
        QString text = QStringLiteral("Artist - Title");
        QVERIFY(!DirectEditCell(list, 1, InCol::FileName, text, false, TagEngine::Shared(), prompt));
        QCOMPARE(prompt.shown.back().text, Caption(CapNameNeedsExtension));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
        // No hyphen: the question, and No keeps everything.
        text = QStringLiteral("Title.mp3");
        prompt.answers = {false};
        QVERIFY(!DirectEditCell(list, 1, InCol::FileName, text, false, TagEngine::Shared(), prompt));
        QCOMPARE(prompt.shown.back().text,
                 Caption(CapNameWithoutHyphen) + u'\n' + Caption(CapContinueQuestion));
        // Esc writes nothing.
        text = QStringLiteral("X - Y.mp3");
        QVERIFY(!DirectEditCell(list, 1, InCol::FileName, text, true, TagEngine::Shared(), prompt));
        QCOMPARE(Names(), QStringList{QStringLiteral("a - b.mp3")});
    }

    void apeGenreWritesApeTrack() {
        Row(QStringLiteral("song.mp3"));
        QString text = QStringLiteral("7");
        QVERIFY(DirectEditCell(list, 1, InCol::TagApeGenre, text, false, TagEngine::Shared(), prompt));
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("song.mp3"))) != 0);
        QCOMPARE(e.Field(TagField::ApeTrack), QStringLiteral("7"));
        QVERIFY(e.Field(TagField::ApeGenre).isEmpty());
        // Column 22 is V2Genre, 19 V1Title.
        text = QStringLiteral("Pop");
        QVERIFY(DirectEditCell(list, 1, InCol::TagGenre, text, false, e, prompt));
        text = QStringLiteral("Hello");
        QVERIFY(DirectEditCell(list, 1, InCol::Tg1Title, text, false, e, prompt));
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("song.mp3"))) != 0);
        QCOMPARE(e.Field(TagField::V2Genre), QStringLiteral("Pop"));
        QCOMPARE(e.Field(TagField::V1Title), QStringLiteral("Hello"));
    }

    void aDirectEditIsUndone() {
        Row(QStringLiteral("song.mp3"));
        const QString path = dir.filePath(QStringLiteral("song.mp3"));
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(path) != 0);
        const TagSnapshot before = TakeTagSnapshot(e, path);
        const QString journal = dir.filePath(QStringLiteral("tag.journal"));
        QString text = QStringLiteral("Edited Title");
        QVERIFY(DirectEditCell(list, 1, InCol::TagTitle, text, false, e, prompt, nullptr, journal));
        QVERIFY(e.OpenFile(path) != 0);
        QCOMPARE(e.V2Title(), QStringLiteral("Edited Title"));
        // an edit left by Esc writes nothing and keeps the undo of the last one
        text = QStringLiteral("x");
        QVERIFY(!DirectEditCell(list, 1, InCol::TagTitle, text, true, e, prompt, nullptr, journal));
        QVERIFY(QFile::exists(journal));
        QCOMPARE(UndoTagBatch(&list, nullptr, journal, e, {}).done, 1);
        QVERIFY(e.OpenFile(path) != 0);
        const TagSnapshot after = TakeTagSnapshot(e, path);
        QCOMPARE(after.sets, before.sets);
        QVERIFY(after.fields == before.fields);
        QVERIFY(!QFile::exists(journal));
    }

    void lockedColumnsAndLinks() {
        QVERIFY(!DirectEditColumn(InCol::TagComment));
        QVERIFY(!DirectEditColumn(InCol::TagAnzLyrics));
        QVERIFY(!DirectEditColumn(InCol::TagAnzPic));
        QVERIFY(!DirectEditColumn(InCol::Path));
        QVERIFY(DirectEditColumn(InCol::FileName));
        QVERIFY(DirectEditColumn(InCol::TagTypGenre));
        QVERIFY(!DirectEditColumn(InCol::TagTypLocation));
        Row(QStringLiteral("song.mp3"));
        QString text = QStringLiteral("/nowhere/score.pdf");
        prompt.answers = {false};
        QVERIFY(!DirectEditCell(list, 1, InCol::TagComposer, text, false, TagEngine::Shared(), prompt));
        QCOMPARE(prompt.shown.back().kind, QStringLiteral("yesno"));
        prompt.answers = {true};
        QVERIFY(DirectEditCell(list, 1, InCol::TagComposer, text, false, TagEngine::Shared(), prompt));
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("song.mp3"))) != 0);
        QCOMPARE(e.V2Composer(), text);
        // A cell outside the tag columns stays as typed, no file changes.
        text = QStringLiteral("free text");
        QVERIFY(DirectEditCell(list, 1, InCol::Artist, text, false, e, prompt));
        // A file that is gone: the write fails and the edit is cancelled.
        QFile::remove(dir.filePath(QStringLiteral("song.mp3")));
        text = QStringLiteral("x");
        QVERIFY(!DirectEditCell(list, 1, InCol::TagTitle, text, false, e, prompt));
        QCOMPARE(prompt.shown.back().text, Caption(CapTagWriteFailed));
    }

    void linkToTag() {
        Row(QStringLiteral("song.mp3"));
        QVERIFY(LinkToTag(list, 1, QStringLiteral("www.example.org"), TagEngine::Shared(), prompt));
        QCOMPARE(list.CellText(1, InCol::TagAudFileUrl), QStringLiteral("www.example.org"));
        QVERIFY(TagEngine::Shared().OpenFile(dir.filePath(QStringLiteral("song.mp3"))) != 0);
        QCOMPARE(TagEngine::Shared().V2AudFileUrl(), QStringLiteral("www.example.org"));
    }
};

QTEST_GUILESS_MAIN(TestDirectEdit)
#include "test_directedit.moc"
