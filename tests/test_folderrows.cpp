// The folder view's commands on folders: the favourites in the settings, and the rows of
// the data list that lie in one folder, removed from the list or read again from disk.

#include "InputGridFixture.h"
#include "TestPaths.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/modFolderRows.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void MakeSettingsGrid(DataGrid& g) {
    for (int c = 1; c <= Ini::Columns; ++c)
        g.AddColumn(QStringLiteral("C%1").arg(c), QString());
    for (int r = 1; r <= 200; ++r)
        g.AddRow({});
}

} // namespace

class TestFolderRows : public QObject {
    Q_OBJECT
private slots:
    void favoritesKeepTheirOrderAndTen() {
        DataGrid ini;
        MakeSettingsGrid(ini);
        QVERIFY(FavoriteFolders(ini).isEmpty());
        QVERIFY(AddFavoriteFolder(ini, QStringLiteral("/m/a")));
        QVERIFY(AddFavoriteFolder(ini, QStringLiteral("/m/b")));
        QVERIFY(!AddFavoriteFolder(ini, QStringLiteral("/m/a"))); // there already
        QVERIFY(!AddFavoriteFolder(ini, QString()));
        QCOMPARE(FavoriteFolders(ini), QStringList({QStringLiteral("/m/a"), QStringLiteral("/m/b")}));
        QCOMPARE(ini.CellText(Ini::FavoriteFirst + 1, Ini::FavoriteCol), QStringLiteral("/m/b"));
        QVERIFY(IsFavoriteFolder(ini, QStringLiteral("/m/b")));
        QVERIFY(RemoveFavoriteFolder(ini, QStringLiteral("/m/a")));
        QVERIFY(!RemoveFavoriteFolder(ini, QStringLiteral("/m/a")));
        // The ones behind move up.
        QCOMPARE(ini.CellText(Ini::FavoriteFirst, Ini::FavoriteCol), QStringLiteral("/m/b"));
        QVERIFY(ini.CellText(Ini::FavoriteFirst + 1, Ini::FavoriteCol).isEmpty());
        for (int i = 0; i < 9; ++i)
            QVERIFY(AddFavoriteFolder(ini, QStringLiteral("/f%1").arg(i)));
        QVERIFY(!AddFavoriteFolder(ini, QStringLiteral("/eleventh")));
        QCOMPARE(FavoriteFolders(ini).size(), kMaxFavoriteFolders);
        // Nothing is written behind the last place.
        QVERIFY(ini.CellText(Ini::FavoriteLast + 1, Ini::FavoriteCol).isEmpty());
    }

    void rowsOfAFolderWithAndWithoutSubfolders() {
        DataGrid list;
        EnsureInputColumns(list);
        using C = std::pair<int, QString>;
        fixture::AddInputRow(list, {C{InCol::FileName, "1.mp3"}, C{InCol::Path, "/m/a"}});
        fixture::AddInputRow(list, {C{InCol::FileName, "2.mp3"}, C{InCol::Path, "/m/ab"}});
        fixture::AddInputRow(list, {C{InCol::FileName, "3.mp3"}, C{InCol::Path, "/m/a/in"}});
        fixture::AddInputRow(list, {C{InCol::FileName, "4.mp3"}, C{InCol::Path, "/m/a"}});
        QCOMPARE(RowsOfFolder(list, QStringLiteral("/m/a"), false), std::vector<int>({1, 4}));
        QCOMPARE(RowsOfFolder(list, QStringLiteral("/m/a"), true), std::vector<int>({1, 3, 4}));
        QCOMPARE(RowsOfFolder(list, QStringLiteral("/"), true).size(), size_t(4));
        QVERIFY(RowsOfFolder(list, QStringLiteral("/m"), false).empty());
        QVERIFY(RowsOfFolder(list, QString(), true).empty());
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        int totals = 0;
        env.showTotals = [&totals] { ++totals; };
        QCOMPARE(RemoveRowsOfFolder(list, QStringLiteral("/m/a"), true, env), 3);
        QCOMPARE(list.Rows(), 1);
        QCOMPARE(list.CellText(1, InCol::FileName), QStringLiteral("2.mp3"));
        QCOMPARE(totals, 1);
        QCOMPARE(RemoveRowsOfFolder(list, QStringLiteral("/m/a"), true, env), 0);
        QVERIFY(prompt.shown.empty()); // the list only: no question, no file touched
    }

    // Reading a folder's rows again: cells follow the file, number and mark stay; a file
    // that is gone keeps its row with the failure mark.
    void rereadFollowsTheFiles() {
        QTemporaryDir dir;
        const QString a = dir.filePath(QStringLiteral("Abba - SOS.mp3"));
        const QString b = dir.filePath(QStringLiteral("Beatles - Help.mp3"));
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"), a));
        QVERIFY(QFile::copy(FixtureDir() + QStringLiteral("/tone.mp3"), b));
        QFile::setPermissions(a, QFile::ReadOwner | QFile::WriteOwner);
        DataGrid list;
        EnsureInputColumns(list);
        const RowContext context;
        TagEngine& e = TagEngine::Shared();
        using C = std::pair<int, QString>;
        fixture::AddInputRow(list, {C{InCol::FileName, "other.mp3"}, C{InCol::Path, "/elsewhere"}});
        QVERIFY(AddFileRow(list, e, a, context));
        QVERIFY(AddFileRow(list, e, b, context));
        list.SetCellText(2, InCol::FTag, QStringLiteral("keep"));
        list.SetCellText(2, InCol::No, QStringLiteral("7"));
        QVERIFY(list.CellText(2, InCol::TagAlbum).isEmpty());
        QVERIFY(e.OpenFile(a) != 0);
        e.SetV2Album(QStringLiteral("Arrival"));
        QVERIFY(e.SaveV2(a) > 0);
        QFile::remove(b);
        ScriptedPrompt prompt;
        ListEnv env(prompt);
        const RereadResult r = RereadRowsOfFolder(list, dir.path(), false, e, 2, env);
        QCOMPARE(r.reread, 1);
        QCOMPARE(r.failed, 1);
        QCOMPARE(list.CellText(2, InCol::TagAlbum), QStringLiteral("Arrival"));
        QCOMPARE(list.CellText(2, InCol::FTag), QStringLiteral("keep"));
        QCOMPARE(list.CellText(2, InCol::No), QStringLiteral("7"));
        QCOMPARE(list.CellText(2, InCol::Artist), QStringLiteral("Abba"));
        QCOMPARE(list.CellText(3, InCol::FTag), Mark::Failed);
        QCOMPARE(list.CellText(3, InCol::FileName), QStringLiteral("Beatles - Help.mp3"));
        QVERIFY(list.CellText(1, InCol::FTag).isEmpty()); // another folder: untouched
    }
};

QTEST_GUILESS_MAIN(TestFolderRows)
#include "test_folderrows.moc"
