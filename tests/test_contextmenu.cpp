// The entries of the right-click menu of the data list: keys, parents, flags, and the
// choices that follow the state of the list.

#include "list/modContextMenu.h"

#include <QtTest>

namespace {
QString KeyCaption(const QString& key) {
    return QStringLiteral("[") + key + QStringLiteral("]");
}

InputMenuState SomeRows(int highlighted) {
    InputMenuState s;
    s.rows = 6;
    s.highlighted = highlighted;
    s.marks << QStringLiteral("_#-->") << QStringLiteral("A") << QString() << QStringLiteral("C");
    s.presentMarks << QStringLiteral("old") << QStringLiteral("new");
    s.audioTypes << QStringLiteral("MP3") << QStringLiteral("FLAC");
    s.ratings << QStringLiteral("*") << QStringLiteral("**");
    s.moods << QStringLiteral("happy");
    s.patternCaptions << QStringLiteral("short") << QString() << QStringLiteral("wide");
    s.activePattern = 2;
    for (int i = 1; i <= 12; ++i)
        s.programs.push_back({i, QStringLiteral("prg%1").arg(i), QStringLiteral("/bin/p%1").arg(i)});
    return s;
}
} // namespace

class TestContextMenu : public QObject {
    Q_OBJECT
private slots:
    void emptyListGivesNoMenu() {
        InputMenuState s;
        QVERIFY(BuildInputMenu(s, &KeyCaption).Entries().empty());
    }

    void keysInOrderWithTheirParents() {
        const ContextMenuEntries m = BuildInputMenu(SomeRows(2), &KeyCaption);
        const QStringList keys = m.Keys();
        const QStringList start{QStringLiteral("play"), QStringLiteral("play1"), QStringLiteral("play2"),
                                QStringLiteral("play3"), QStringLiteral("album")};
        QCOMPARE(keys.mid(0, 5), start);
        QCOMPARE(m.Find(QStringLiteral("play2"))->parent, QStringLiteral("play"));
        QCOMPARE(m.Find(QStringLiteral("play1"))->caption, QStringLiteral("[play1]"));
        // Keys come in the order of building.
        const QStringList order{
            QStringLiteral("dEditOn"),      QStringLiteral("HighlightAll"), QStringLiteral("Print"),
            QStringLiteral("Mark"),         QStringLiteral("Quality"),      QStringLiteral("Mood"),
            QStringLiteral("RandomChoice"), QStringLiteral("Line2"),        QStringLiteral("optCol"),
            QStringLiteral("Columns"),      QStringLiteral("extPrg"),       QStringLiteral("NameToTag"),
            QStringLiteral("TextToTags"),   QStringLiteral("LinkToTag"),    QStringLiteral("SetAlbum"),
            QStringLiteral("SingleFile")};
        int last = -1;
        for (const QString& k : order) {
            const int at = keys.indexOf(k);
            QVERIFY2(at > last, qPrintable(k));
            last = at;
        }
        QCOMPARE(m.Find(QStringLiteral("AudioType2"))->caption, QStringLiteral("FLAC"));
        QCOMPARE(m.Find(QStringLiteral("AudioType2"))->parent, QStringLiteral("HighlightAudio"));
        QVERIFY(!m.Find(QStringLiteral("AudioType3")));
        QCOMPARE(m.Find(QStringLiteral("PrintFTag"))->parent, QStringLiteral("Print"));
        QCOMPARE(m.Find(QStringLiteral("SetMark"))->parent, QStringLiteral("Mark"));
        QCOMPARE(m.Find(QStringLiteral("RemMarkAll"))->parent, QStringLiteral("RemMark"));
        QCOMPARE(m.Find(QStringLiteral("QIn01"))->caption, QStringLiteral("**"));
        QCOMPARE(m.Find(QStringLiteral("QIn"))->parent, QStringLiteral("Quality"));
        QCOMPARE(m.Find(QStringLiteral("MIn00"))->parent, QStringLiteral("MIn"));
        QCOMPARE(m.Find(QStringLiteral("RemM"))->parent, QStringLiteral("Mood"));
        QCOMPARE(m.Find(QStringLiteral("SingleFile03"))->parent, QStringLiteral("SingleFile"));
        QCOMPARE(m.Find(QStringLiteral("Line3"))->caption, QStringLiteral("-"));
    }

    void marksSkipEmptySignsAndListPresentMarks() {
        const ContextMenuEntries m = BuildInputMenu(SomeRows(2), &KeyCaption);
        QCOMPARE(m.Find(QStringLiteral("Mark00"))->caption, QStringLiteral("_#-->"));
        QCOMPARE(m.Find(QStringLiteral("Mark01"))->parent, QStringLiteral("SetMark"));
        QVERIFY(!m.Find(QStringLiteral("Mark02"))); // an empty sign
        QCOMPARE(m.Find(QStringLiteral("Mark03"))->caption, QStringLiteral("C"));
        QCOMPARE(m.Find(QStringLiteral("RemMark01"))->caption, QStringLiteral("new"));
        QCOMPARE(m.Find(QStringLiteral("RemMark01"))->parent, QStringLiteral("RemMark"));
        QVERIFY(!m.Find(QStringLiteral("RemMark02")));
    }

    void patternsAreCheckedWhenActive() {
        const ContextMenuEntries m = BuildInputMenu(SomeRows(1), &KeyCaption);
        QVERIFY(!m.Find(QStringLiteral("Cols00"))->checked);
        QVERIFY(!m.Find(QStringLiteral("Cols01")));
        QVERIFY(m.Find(QStringLiteral("Cols02"))->checked);
        QCOMPARE(m.Find(QStringLiteral("Cols02"))->caption, QStringLiteral("wide"));
    }

    void tenExternalProgramsAtMost() {
        const ContextMenuEntries m = BuildInputMenu(SomeRows(1), &KeyCaption);
        QCOMPARE(m.Find(QStringLiteral("extPrg01"))->caption, QStringLiteral("prg1"));
        QCOMPARE(m.Find(QStringLiteral("extPrg10"))->parent, QStringLiteral("extPrg"));
        QVERIFY(!m.Find(QStringLiteral("extPrg11")));
    }

    void selectionDecidesTheEntries() {
        // One highlighted row: the single play entry without the group.
        ContextMenuEntries one = BuildInputMenu(SomeRows(1), &KeyCaption);
        QVERIFY(one.Find(QStringLiteral("play")));
        QVERIFY(!one.Find(QStringLiteral("play1")));
        // No highlighted row: nothing that works on highlighted rows.
        ContextMenuEntries none = BuildInputMenu(SomeRows(0), &KeyCaption);
        for (const char* k :
             {"play", "play1", "PrintHighlighted", "Mark", "Quality", "Mood", "extPrg", "SingleFile"})
            QVERIFY2(!none.Find(QLatin1String(k)), k);
        QVERIFY(none.Find(QStringLiteral("HighlightAll")));
        QVERIFY(none.Find(QStringLiteral("PrintAll")));
    }

    void directEditShowsOneOfTwo() {
        InputMenuState s = SomeRows(1);
        QVERIFY(BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("dEditOn")));
        QVERIFY(!BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("dEditOff")));
        s.directEdit = true;
        const ContextMenuEntries m = BuildInputMenu(s, &KeyCaption);
        QVERIFY(!m.Find(QStringLiteral("dEditOn")));
        QVERIFY(m.Find(QStringLiteral("dEditOff"))->checked);
    }

    void syncTextGroupOnlyWithAText() {
        InputMenuState s = SomeRows(1);
        QVERIFY(!BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("sText")));
        s.hasSyncText = true;
        QCOMPARE(BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("sTextShow"))->parent,
                 QStringLiteral("sText"));
    }

    void disabledKeys() {
        ContextMenuEntries m = BuildInputMenu(SomeRows(1), &KeyCaption);
        m.DisableKeys({QStringLiteral("album")});
        QVERIFY(!m.Find(QStringLiteral("album"))->enabled);
        QVERIFY(m.Find(QStringLiteral("HighlightAll"))->enabled);
    }

    void refMenuKeysInOrder() {
        RefMenuState s;
        QVERIFY(BuildRefMenu(s, &KeyCaption).Entries().empty());
        s.rows = 3;
        s.highlighted = 2;
        s.marks << QStringLiteral("_#-->");
        s.presentMarks << QStringLiteral("x");
        const ContextMenuEntries m = BuildRefMenu(s, &KeyCaption);
        QStringList named;
        for (const MenuEntry& e : m.Entries())
            if (!e.key.isEmpty())
                named << e.key;
        const QStringList expected{
            QStringLiteral("play"),      QStringLiteral("play1"),      QStringLiteral("play2"),
            QStringLiteral("play3"),     QStringLiteral("dEditOn"),    QStringLiteral("HighlightAll"),
            QStringLiteral("Print"),     QStringLiteral("PrintAll"),   QStringLiteral("PrintHighlighted"),
            QStringLiteral("PrintFTag"), QStringLiteral("Mark"),       QStringLiteral("SetMark"),
            QStringLiteral("RemMark"),   QStringLiteral("RemMarkAll"), QStringLiteral("Mark00"),
            QStringLiteral("Line1"),     QStringLiteral("RemMark00"),  QStringLiteral("Columns"),
            QStringLiteral("optCol"),    QStringLiteral("ColsAll"),    QStringLiteral("ColsPreset"),
            QStringLiteral("ColsFrm"),   QStringLiteral("Rem_F"),      QStringLiteral("CMD"),
            QStringLiteral("Copy"),      QStringLiteral("Move"),       QStringLiteral("Delete")};
        QCOMPARE(named, expected);
        QCOMPARE(m.Find(QStringLiteral("ColsPreset"))->parent, QStringLiteral("Columns"));
        // Without highlighted rows: no play, marks or file commands.
        s.highlighted = 0;
        const ContextMenuEntries none = BuildRefMenu(s, &KeyCaption);
        for (const char* k : {"play", "Mark", "CMD", "Copy", "Move", "Delete", "PrintHighlighted"})
            QVERIFY2(!none.Find(QLatin1String(k)), k);
        QVERIFY(none.Find(QStringLiteral("Rem_F")));
    }

    // An entry is enabled only when its command can run.
    void enabledFollowsWhatCanRun() {
        InputMenuState s = SomeRows(2);
        ContextMenuEntries m = BuildInputMenu(s, &KeyCaption);
        for (const char* k : {"album", "RemQ", "RemM", "LinkToTag"})
            QVERIFY2(!m.Find(QLatin1String(k))->enabled, k);
        for (const char* k : {"QIn00", "MIn00", "RandomChoice", "ColsFrm", "NameToTag", "TextToTags",
                              "SetAlbum", "SingleFile01", "SingleFile02", "SingleFile03"})
            QVERIFY2(m.Find(QLatin1String(k))->enabled, k);
        s.currentHasAlbum = true;
        s.anyRating = true;
        s.anyMood = true;
        s.hasCurrentRow = true;
        m = BuildInputMenu(s, &KeyCaption);
        for (const char* k : {"album", "RemQ", "RemM", "LinkToTag"})
            QVERIFY2(m.Find(QLatin1String(k))->enabled, k);
        // "As in the column window" needs a pattern in use.
        s.activePattern = 1; // a free slot
        QVERIFY(!BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("ColsFrm"))->enabled);
        s.activePattern = -1;
        QVERIFY(!BuildInputMenu(s, &KeyCaption).Find(QStringLiteral("ColsFrm"))->enabled);

        RefMenuState r;
        r.rows = 2;
        r.highlighted = 1;
        ContextMenuEntries ref = BuildRefMenu(r, &KeyCaption);
        for (const char* k : {"Rem_F", "ColsPreset", "CMD"})
            QVERIFY2(!ref.Find(QLatin1String(k))->enabled, k);
        for (const char* k : {"ColsAll", "ColsFrm", "optCol", "Copy", "Move", "Delete", "dEditOn"})
            QVERIFY2(ref.Find(QLatin1String(k))->enabled, k);
        r.anyFound = r.hasPreset = r.hasCurrentRow = true;
        ref = BuildRefMenu(r, &KeyCaption);
        for (const char* k : {"Rem_F", "ColsPreset", "CMD"})
            QVERIFY2(ref.Find(QLatin1String(k))->enabled, k);
    }

    void folderMenu() {
        FolderMenuState s;
        ContextMenuEntries m = BuildFolderMenu(s, &KeyCaption);
        const QStringList keys{
            QStringLiteral("UpdateDrivelist"), QStringLiteral("UpdateFolders"),   QStringLiteral("Line"),
            QStringLiteral("AddToFavorite"),   QStringLiteral("RemFromFavorite"), QStringLiteral("Line1"),
            QStringLiteral("DirUpdate"),       QStringLiteral("DirRem"),          QStringLiteral("DirUpd")};
        QCOMPARE(m.Keys(), keys);
        QCOMPARE(m.Find(QStringLiteral("Line"))->caption, QStringLiteral("-"));
        // No folder under the mouse: only the refreshes.
        for (const char* k : {"AddToFavorite", "RemFromFavorite", "DirUpdate", "DirRem", "DirUpd"})
            QVERIFY2(!m.Find(QLatin1String(k))->enabled, k);
        QVERIFY(m.Find(QStringLiteral("UpdateDrivelist"))->enabled);
        s.folder = QStringLiteral("/m/a");
        m = BuildFolderMenu(s, &KeyCaption);
        QVERIFY(m.Find(QStringLiteral("AddToFavorite"))->enabled);
        QVERIFY(!m.Find(QStringLiteral("RemFromFavorite"))->enabled);
        QVERIFY(m.Find(QStringLiteral("DirUpdate"))->enabled);
        QVERIFY(!m.Find(QStringLiteral("DirRem"))->enabled); // no rows of the folder
        s.favorite = true;
        s.rowsOfFolder = 2;
        m = BuildFolderMenu(s, &KeyCaption);
        QVERIFY(!m.Find(QStringLiteral("AddToFavorite"))->enabled);
        QVERIFY(m.Find(QStringLiteral("RemFromFavorite"))->enabled);
        QVERIFY(m.Find(QStringLiteral("DirRem"))->enabled);
        QVERIFY(m.Find(QStringLiteral("DirUpd"))->enabled);
        s.favorite = false;
        s.favoritesFull = true;
        QVERIFY(!BuildFolderMenu(s, &KeyCaption).Find(QStringLiteral("AddToFavorite"))->enabled);
    }

    void keyNumbers() {
        QCOMPARE(MenuKeyNumber(QStringLiteral("Mark07"), QStringLiteral("Mark")), 7);
        QCOMPARE(MenuKeyNumber(QStringLiteral("Mark"), QStringLiteral("Mark")), -1);
        QCOMPARE(MenuKeyNumber(QStringLiteral("ColsAll"), QStringLiteral("Cols")), -1);
        QCOMPARE(MenuKeyNumber(QStringLiteral("RemMark15"), QStringLiteral("RemMark")), 15);
        QCOMPARE(MenuKeyNumber(QStringLiteral("RemMark15"), QStringLiteral("Mark")), -1);
    }
};

QTEST_GUILESS_MAIN(TestContextMenu)
#include "test_contextmenu.moc"
