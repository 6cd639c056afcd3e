// The tag list: loading from the data list, reading one row's file, the tabs of a
// file type, the update option in the settings, the V2 filter and the genre list.

#include "TagUiFixture.h"

#include "core/CaptionRows.h"
#include "core/SettingRows.h"
#include "list/Marks.h"
#include "tag/modTagFilter.h"

#include <QFile>
#include <QtTest>

class TestTagList : public QObject {
    Q_OBJECT

private slots:
    void loadTakesRowsOfTheTypeWithKeys() {
        TagUiFixture f;
        f.AddFile("mp3", "A - One.mp3");
        f.AddFile("flac", "B - Two.flac");
        f.AddFile("mp3", "C - Three.mp3");
        QCOMPARE(f.input.CellText(1, InCol::Type), QStringLiteral("MP3"));
        QCOMPARE(f.LoadAll("mpeg"), LoadTagResult::Loaded);
        QCOMPARE(f.tag.Rows(), 2);
        QCOMPARE(f.tag.Cols(), TagCol::Count);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("A - One.mp3"));
        QCOMPARE(f.tag.CellText(2, TagCol::FileName), QStringLiteral("C - Three.mp3"));
        QCOMPARE(f.tag.CellText(1, TagCol::Type), QString());
        QCOMPARE(f.tag.CellText(1, TagCol::Path), f.work.path());
        QCOMPARE(f.tag.CellText(2, TagCol::KeyInput), f.input.RowKey(3));
        QCOMPARE(f.tag.FooterText(TagCol::FileName), QStringLiteral("2"));
        QCOMPARE(f.tag.CurRow(), 1);
        QVERIFY(!f.tag.Column(TagCol::No).visible);
        QVERIFY(f.tag.Column(TagCol::FTag).visible);
        QVERIFY(!f.tag.Column(TagCol::KeyInput).visible);
        QCOMPARE(f.tag.Column(TagCol::FileName).caption, Caption(3));
        QVERIFY(!Caption(3).isEmpty());
    }

    void loadHonoursTheMarkFilter() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        f.input.SetCellText(2, InCol::FTag, "x");
        f.input.SelectAll();
        LoadTagRequest req{"MP3", "x", {}, {}};
        QCOMPARE(LoadTagList(f.input, f.tag, req, f.prompt), LoadTagResult::Loaded);
        QCOMPARE(f.tag.Rows(), 1);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("B.mp3"));
    }

    void noSelectionAsksForAll() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("flac", "B.flac");
        LoadTagRequest req{"MP3", {}, {}, {}};
        // No, and the current row is not of the type: ends
        f.input.SetCurRow(2);
        f.prompt.answers = {false};
        QCOMPARE(LoadTagList(f.input, f.tag, req, f.prompt), LoadTagResult::Ended);
        QCOMPARE(f.prompt.shown.back().text, Caption(CapTakeAllRowsQuestion));
        QCOMPARE(f.tag.Rows(), 0);
        // No, and the current row is of the type: that row alone
        f.input.SetCurRow(1);
        f.prompt.answers = {false};
        QCOMPARE(LoadTagList(f.input, f.tag, req, f.prompt), LoadTagResult::Loaded);
        QCOMPARE(f.tag.Rows(), 1);
    }

    void noRowOfTheTypeTells() {
        TagUiFixture f;
        f.AddFile("flac", "B.flac");
        QCOMPARE(f.LoadAll("MP3"), LoadTagResult::Ended);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoRowOfType) + "\n" + Caption(CapSelectOneType));
    }

    void secondLoadAnsweredNoKeepsTheOldRows() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("flac", "B.flac");
        QCOMPARE(f.LoadAll("MP3"), LoadTagResult::Loaded);
        f.prompt.answers = {false};
        QCOMPARE(f.LoadAll("FLAC"), LoadTagResult::KeptList);
        QCOMPARE(f.prompt.LastText(), Caption(CapReplaceTagListQuestion));
        QCOMPARE(f.tag.Rows(), 1);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("A.mp3"));
        bool cleared = false;
        f.prompt.answers = {true};
        f.input.SelectAll();
        LoadTagRequest req{"FLAC", {}, {}, [&] { cleared = true; }};
        QCOMPARE(LoadTagList(f.input, f.tag, req, f.prompt), LoadTagResult::Loaded);
        QVERIFY(cleared);
        QCOMPARE(f.tag.Rows(), 1);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("B.flac"));
    }

    void emptyDataListTells() {
        TagUiFixture f;
        QCOMPARE(f.LoadAll("MP3"), LoadTagResult::Ended);
        QCOMPARE(f.prompt.LastText(), Caption(CapListEmpty));
    }

    void genreComboIndex() {
        QCOMPARE(V1GenreComboIndex(255, 192), 0);
        QCOMPARE(V1GenreComboIndex(200, 192), 0);
        QCOMPARE(V1GenreComboIndex(-1, 192), 0);
        QCOMPARE(V1GenreComboIndex(0, 192), 1);
        QCOMPARE(V1GenreComboIndex(17, 192), 18);
    }

    void readRowWithV1Genres() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV1Artist("Art");
        f.engine.SetV1Title("Tit");
        f.engine.SetV1GenreCode(17);
        QVERIFY(f.engine.SaveV1(p));
        TagRowValues v = ReadTagRow(f.engine, p);
        QVERIFY(v.opened);
        QCOMPARE(v.type, 1);
        QCOMPARE(v.v1GenreIndex, 18);
        QCOMPARE(v.v1[3], QStringLiteral("Art"));
        QCOMPARE(v.v1[4], QStringLiteral("Tit"));
        // no genre
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV1GenreCode(255);
        QVERIFY(f.engine.SaveV1(p));
        QCOMPARE(ReadTagRow(f.engine, p).v1GenreIndex, 0);
        // a code the table does not hold: the last byte of the ID3v1 block
        QFile file(p);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(file.size() - 1));
        const char code = char(250);
        file.write(&code, 1);
        file.close();
        QVERIFY(f.engine.GenreCount() < 250);
        QCOMPARE(ReadTagRow(f.engine, p).v1GenreIndex, 0);
    }

    void twoRatingFramesShowTheLast() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Title("T");
        f.engine.SetUserFrame(0, "QLT", "QLT***");
        f.engine.SetUserFrame(2, "MOD", "MOODcalm");
        f.engine.SetUserFrame(3, "QLT", "QLT*****");
        f.engine.SetComment(1, "eng", "d", "hello");
        QVERIFY(f.engine.SaveV2(p));
        const TagRowValues v = ReadTagRow(f.engine, p);
        QCOMPARE(v.v2[13], QStringLiteral("*****"));
        QCOMPARE(v.v2[14], QStringLiteral("calm"));
        QCOMPARE(v.commentCount, 1);
        QCOMPARE(v.commentItem, 1);
        QCOMPARE(v.commentLanguage, QStringLiteral("eng"));
        QCOMPARE(v.commentDescription, QStringLiteral("d"));
        QCOMPARE(v.commentText, QStringLiteral("hello"));
        QVERIFY(v.hasComment);
    }

    void unreadableRowShowsNothing() {
        TagUiFixture f;
        const TagRowValues v = ReadTagRow(f.engine, f.work.filePath("missing.mp3"));
        QVERIFY(!v.opened);
        QCOMPARE(v.v2[3], QString());
        QCOMPARE(v.commentItem, 0);
    }

    void readRowTypicalFlac() {
        TagUiFixture f;
        const QString p = f.AddFile("flac", "A.flac");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetFlacGenre("Jazz");
        f.engine.SetFlacArtist("FA");
        f.engine.SetFlacLocation("Here");
        QVERIFY(f.engine.SaveFlac(p));
        const TagRowValues v = ReadTagRow(f.engine, p);
        QCOMPARE(v.typicalGenre, QStringLiteral("Jazz"));
        QCOMPARE(v.typical[2], QStringLiteral("FA"));
        QCOMPARE(v.typical[12], QStringLiteral("Here"));
    }

    void tabsForType_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("tabs");
        QTest::addColumn<QString>("options");
        QTest::addColumn<bool>("v1Enabled");
        QTest::newRow("mp3") << "MP3"
                             << "11110"
                             << "11110" << true;
        QTest::newRow("mpp") << "MPP"
                             << "11110"
                             << "11110" << true;
        QTest::newRow("wma") << "WMA"
                             << "00001"
                             << "00001" << true;
        QTest::newRow("flac") << "FLAC"
                              << "11101"
                              << "11101" << true;
        QTest::newRow("ogg") << "OGG"
                             << "11101"
                             << "11101" << true;
        QTest::newRow("monkey") << "MONKEY"
                                << "11000"
                                << "11000" << false;
        QTest::newRow("aac") << "AAC"
                             << "11000"
                             << "11000" << false;
    }
    void tabsForType() {
        QFETCH(QString, type);
        QFETCH(QString, tabs);
        QFETCH(QString, options);
        QFETCH(bool, v1Enabled);
        TagUiFixture f;
        const TabsForType t = SetTabsForType(type, "00001");
        QString gotTabs, gotOpts;
        for (int i = 0; i < 5; ++i) {
            gotTabs += t.tabEnabled[size_t(i)] ? '1' : '0';
            gotOpts += t.optionOffered[size_t(i)] ? '1' : '0';
        }
        QCOMPARE(gotTabs, tabs);
        QCOMPARE(gotOpts, options);
        QCOMPARE(t.v1ChecksEnabled, v1Enabled);
        QCOMPARE(t.v1ChecksChecked, !v1Enabled);
        QCOMPARE(t.v1BoxesEmptied, !v1Enabled);
        QCOMPARE(t.optionTypicalSet, options[4] == '1');
        if (type == "WMA")
            QCOMPARE(t.tab4Caption, QStringLiteral("WMA"));
        else if (type == "FLAC" || type == "OGG")
            QCOMPARE(t.tab4Caption, type);
        else
            QCOMPARE(t.tab4Caption, Caption(CapTypicalTab));
    }

    void typicalLabelRows() {
        TagUiFixture f;
        const TabsForType wma = SetTabsForType("WMA", "");
        QCOMPARE(wma.typicalLabelRows[0], 700);
        QCOMPARE(wma.typicalLabelRows[6], 706);
        QCOMPARE(wma.typicalLabelRows[7], 740);
        QCOMPARE(wma.typicalLabelRows[14], 747);
        QCOMPARE(SetTabsForType("FLAC", "").typicalLabelRows[7], 770);
        QCOMPARE(SetTabsForType("OGG", "").typicalLabelRows[7], 760);
        QCOMPARE(SetTabsForType("OGG", "").typicalLabels[0], Caption(700));
        QCOMPARE(SetTabsForType("MP3", "").typicalLabelRows[7], 0);
        QVERIFY(!SetTabsForType("FLAC", "00010").optionTypicalSet);
    }

    void updateOptionSetting() {
        for (int i = 0; i <= 5; ++i) {
            const UpdateSet s = UpdateSet(i);
            QCOMPARE(UpdateOptionFromSetting(UpdateOptionToSetting(s)), s);
        }
        QCOMPARE(UpdateOptionToSetting(UpdateSet::Typical), QStringLiteral("00001"));
        QCOMPARE(UpdateOptionToSetting(UpdateSet::V2), QStringLiteral("01000"));
        QCOMPARE(UpdateOptionFromSetting("3"), UpdateSet::Ape);
        QCOMPARE(UpdateOptionFromSetting(""), UpdateSet::None);
        // what is stored turns the typical option on again
        QVERIFY(SetTabsForType("OGG", UpdateOptionToSetting(UpdateSet::Typical)).optionTypicalSet);
    }

    void filterOnEmptyListTells() {
        TagUiFixture f;
        QVERIFY(!FilterOn(f.tag, f.engine, f.prompt).turnedOn);
        QCOMPARE(f.prompt.LastText(), Caption(CapListEmpty));
        FilterTexts ft;
        ft[0] = "x";
        QCOMPARE(ApplyTagFilter(f.tag, f.engine, f.prompt, ft, false, false), -1);
        QCOMPARE(f.prompt.Count("tell"), 2);
    }

    void filterOnListWithoutV2EmptiesIt() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.AddFile("mp3", "B.mp3");
        f.LoadAll("MP3");
        // No: marks go, an old mark too, nothing else
        f.tag.SetCellText(1, TagCol::FTag, "old");
        f.prompt.answers = {false};
        FilterOnResult r = FilterOn(f.tag, f.engine, f.prompt);
        QVERIFY(!r.turnedOn);
        QCOMPARE(f.tag.Rows(), 2);
        QCOMPARE(f.tag.CellText(1, TagCol::FTag), QString());
        f.prompt.answers = {true};
        r = FilterOn(f.tag, f.engine, f.prompt);
        QVERIFY(r.turnedOn);
        QCOMPARE(r.removed, 2);
        QCOMPARE(f.tag.Rows(), 0);
        QCOMPARE(f.tag.FooterText(TagCol::FileName), QStringLiteral("0"));
        for (const QStringList& l : r.values)
            QCOMPARE(l, QStringList{QString()});
    }

    void filterMarksMatchingRows() {
        TagUiFixture f;
        const QString a = f.AddFile("mp3", "A.mp3");
        const QString b = f.AddFile("mp3", "B.mp3");
        const QString c = f.AddFile("mp3", "C.mp3");
        auto tagIt = [&](const QString& p, const QString& artist, const QString& genre,
                         const QString& rating) {
            QVERIFY(f.engine.OpenFile(p));
            f.engine.SetV2Artist(artist);
            f.engine.SetV2Genre(genre);
            SetTagRatingMood(f.engine, "Rating", rating, "ID3v2");
            QVERIFY(f.engine.SaveV2(p));
        };
        tagIt(a, "The Band", "Rock", "**");
        tagIt(b, "Band", "Pop", "***");
        tagIt(c, "Other", "Rock", "**");
        f.LoadAll("MP3");
        const FilterOnResult r = FilterOn(f.tag, f.engine, f.prompt);
        QVERIFY(r.turnedOn);
        QCOMPARE(r.removed, 0);
        QCOMPARE(r.values[2], (QStringList{"", "Band", "Other", "The Band"}));
        QCOMPARE(r.values[15], (QStringList{"", "Pop", "Rock"}));
        QCOMPARE(r.values[13], (QStringList{"", "**", "***"}));

        FilterTexts ft;
        QCOMPARE(ApplyTagFilter(f.tag, f.engine, f.prompt, ft, false, false), -1);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoFilterValue));
        ft[2] = "band";
        QCOMPARE(ApplyTagFilter(f.tag, f.engine, f.prompt, ft, false, false), 2);
        QCOMPARE(f.tag.CellText(1, TagCol::FTag), Mark::Default);
        QCOMPARE(f.tag.CellText(3, TagCol::FTag), QString());
        QCOMPARE(f.tag.CurRow(), 1);
        QCOMPARE(ApplyTagFilter(f.tag, f.engine, f.prompt, ft, true, false), 0);
        ft[2] = "Band";
        ft[15] = "Pop";
        QCOMPARE(ApplyTagFilter(f.tag, f.engine, f.prompt, ft, true, false), 1);
        QCOMPARE(f.tag.CellText(1, TagCol::FileName), QStringLiteral("B.mp3"));

        // keep the marks of earlier runs
        f.tag.SetCellText(3, TagCol::FTag, "mine");
        ft = {};
        ft[15] = "Rock";
        ApplyTagFilter(f.tag, f.engine, f.prompt, ft, false, true);
        int mine = 0;
        for (int row = 1; row <= 3; ++row)
            mine += f.tag.CellText(row, TagCol::FTag) == "mine";
        QCOMPARE(mine, 0); // a Rock row got the pass mark over it; the other kept its mark
        QCOMPARE(f.tag.CellText(1, TagCol::FTag), Mark::Default);

        // to the data list
        f.prompt.answers = {true};
        QVERIFY(TransferFilterToDatalist(f.tag, f.input, f.prompt, false));
        int marked = 0;
        for (int row = 1; row <= f.input.Rows(); ++row)
            marked += f.input.CellText(row, InCol::FTag) == Mark::TagFilter;
        QCOMPARE(marked, 3);
        QCOMPARE(f.input.CellText(1, InCol::FTag), Mark::TagFilter);
    }

    void transferWithoutHitsTells() {
        TagUiFixture f;
        f.AddFile("mp3", "A.mp3");
        f.LoadAll("MP3");
        QVERIFY(!TransferFilterToDatalist(f.tag, f.input, f.prompt, true));
        QCOMPARE(f.prompt.LastText(), Caption(CapNoFilterHit));
    }

    void genreTransfer() {
        TagUiFixture f;
        SetSetting(1, Ini::GenreCol, "Rock");
        DataGrid genres;
        LoadGenreList(genres);
        QCOMPARE(genres.Rows(), 1);
        QCOMPARE(TransferGenres({"", "  "}, genres, f.prompt), 0);
        QCOMPARE(f.prompt.LastText(), Caption(CapNoGenreToTransfer));
        QCOMPARE(TransferGenres({"rock", "Ambient", "", "Jazz"}, genres, f.prompt), 2);
        QCOMPARE(Setting(1, Ini::GenreCol), QStringLiteral("Ambient"));
        QCOMPARE(Setting(2, Ini::GenreCol), QStringLiteral("Jazz"));
        QCOMPARE(Setting(3, Ini::GenreCol), QStringLiteral("Rock"));
        QCOMPARE(Setting(4, Ini::GenreCol), QString());
    }

    void refreshOfInputRow() {
        TagUiFixture f;
        const QString p = f.AddFile("mp3", "A.mp3");
        QVERIFY(f.engine.OpenFile(p));
        f.engine.SetV2Artist("X");
        f.engine.SetV2Title("Y");
        f.engine.SetComment(1, "eng", "", "c1");
        SetTagRatingMood(f.engine, "Mood", "happy", "ID3v2");
        QVERIFY(f.engine.SaveV2(p));
        QVERIFY(f.engine.OpenFile(p));
        RefreshInputTagCells(f.input, 1, f.engine);
        QCOMPARE(f.input.CellText(1, InCol::TagArtist), QStringLiteral("X"));
        QCOMPARE(f.input.CellText(1, InCol::TagTitle), QStringLiteral("Y"));
        QCOMPARE(f.input.CellText(1, InCol::TagComment), QStringLiteral("c1"));
        QCOMPARE(f.input.CellText(1, InCol::Mood), QStringLiteral("happy"));
        QVERIFY(f.input.CellText(1, InCol::HasTag).startsWith("id3v2"));
        QCOMPARE(f.input.CellText(1, InCol::FileName), QStringLiteral("A.mp3"));
    }
};

QTEST_GUILESS_MAIN(TestTagList)
#include "test_taglist.moc"
