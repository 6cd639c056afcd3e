// Pictures on disk and their link list: the search, the link commands, the rebuild and
// the clean-up, on real files in a temporary folder.
#include "InstalledCaptions.h"
#include "TagTestUtil.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "picture/PictureColumns.h"
#include "picture/modExternPictures.h"
#include "picture/modLinkList.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace tagtest;

class TestPicturesExtern : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    QString file(const QString& rel, const QByteArray& bytes = "x") {
        const QString path = m_dir.path() + u'/' + rel;
        QDir().mkpath(path.left(path.lastIndexOf(u'/')));
        if (!WriteAll(path, bytes))
            return QString();
        return path;
    }

    static PictureSearch Types() {
        PictureSearch how;
        how.fileTypes = PictureFileTypes(QStringLiteral("jpg;jpeg;png;gif;bmp;tif;tiff;ico"));
        return how;
    }

private slots:
    void initTestCase() {
        QVERIFY(m_dir.isValid());
        QVERIFY(LoadInstalledCaptions());
    }

    void fileTypesOfTheSetting() {
        QCOMPARE(PictureFileTypes(QStringLiteral("JPG; *.png ,gif")),
                 (QStringList{QStringLiteral("jpg"), QStringLiteral("png"), QStringLiteral("gif")}));
    }

    void aPictureInTwoScansShowsItsLinkEachTime() {
        const QString pic = file(QStringLiteral("scan/a.jpg"));
        const QString song = file(QStringLiteral("scan/a.mp3"));
        DataGrid links;
        SetPictureLink(links, pic, LinkCol::Song, song);
        for (int scan = 0; scan < 2; ++scan) {
            DataGrid list;
            DefineExternPictureColumns(list);
            QCOMPARE(SearchPictures(list, links, {pic, song}, Types()), 1);
            QCOMPARE(list.CellText(1, PicCol::Picfile), QStringLiteral("a.jpg"));
            QCOMPARE(list.CellText(1, PicCol::Song), QStringLiteral("a.mp3"));
            QCOMPARE(list.CellText(1, PicCol::HasAudioLink), Caption(CapStatusFound));
            QCOMPARE(list.CellText(1, PicCol::PicType), QStringLiteral("jpg"));
            QCOMPARE(list.RowKey(1), QStringLiteral("1"));
        }
    }

    void aLinkWhoseSongIsGoneKeepsThePicture() {
        const QString pic = file(QStringLiteral("gone/b.png"));
        DataGrid links;
        SetPictureLink(links, pic, LinkCol::Song, m_dir.path() + QStringLiteral("/gone/vanished.mp3"));
        DataGrid list;
        DefineExternPictureColumns(list);
        QCOMPARE(SearchPictures(list, links, {pic}, Types()), 1);
        QCOMPARE(list.CellText(1, PicCol::HasAudioLink), Caption(CapStatusMissing));
        QCOMPARE(list.CellText(1, PicCol::Song), QStringLiteral("vanished.mp3"));
    }

    void skipWordsAndTheProgramFolder() {
        const QString own = file(QStringLiteral("program/icons/NoPicture.jpg"));
        const QString sys = file(QStringLiteral("System Volume/c.jpg"));
        const QString bin = file(QStringLiteral("$RECYCLER/d.jpg"));
        const QString upper = file(QStringLiteral("program/UPPER.JPG"));
        const QString text = file(QStringLiteral("program/readme.txt"));
        DataGrid list;
        DefineExternPictureColumns(list);
        QCOMPARE(SearchPictures(list, DataGrid(), {own, sys, bin, upper, text}, Types()), 2);
        QCOMPARE(list.CellText(1, PicCol::Picfile), QStringLiteral("UPPER.JPG"));
        QCOMPARE(list.CellText(2, PicCol::Picfile), QStringLiteral("NoPicture.jpg"));
    }

    void onlyWithLinkAndProgress() {
        QStringList paths;
        for (int i = 0; i < 201; ++i)
            paths << m_dir.path() + QStringLiteral("/many/p%1.jpg").arg(i, 3, 10, QLatin1Char('0'));
        DataGrid links;
        SetPictureLink(links, paths[7], LinkCol::Text, QStringLiteral("/t.txt"));
        DataGrid list;
        DefineExternPictureColumns(list);
        PictureSearch how = Types();
        how.onlyWithLink = true;
        QStringList shown;
        how.progress = [&](const QString& t) { shown << t; };
        QCOMPARE(SearchPictures(list, links, paths, how), 1);
        QCOMPARE(shown.size(), 4); // 50, 100, 150, 200 of 201
        QCOMPARE(shown.first(), Caption(CapProgressFile) + QStringLiteral("50") + Caption(CapProgressOf) +
                                    QStringLiteral("201"));
        shown.clear();
        SearchPictures(list, links, paths.mid(0, 200), how);
        QCOMPARE(shown.size(), 20); // every 10th of 200
    }

    void aBackslashAloneIsNoText() {
        const QString pic = file(QStringLiteral("bs/e.jpg"));
        DataGrid links;
        EnsureLinkListColumns(links);
        links.AddRow({pic, QString(), QStringLiteral("\\"), QString(), QString()});
        DataGrid list;
        DefineExternPictureColumns(list);
        SearchPictures(list, links, {pic}, Types());
        QVERIFY(list.CellText(1, PicCol::HasTextlink).isEmpty());
        QVERIFY(list.CellText(1, PicCol::Textfile).isEmpty());
    }

    void aLongTextIsCutAt20000Lines() {
        QByteArray text;
        for (int i = 1; i <= 20005; ++i)
            text += "line " + QByteArray::number(i) + "\r\n";
        const QString path = file(QStringLiteral("long.txt"), text);
        const QString read = ReadLinkedText(path);
        const QStringList lines = read.split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 20000);
        QCOMPARE(lines.last(), QStringLiteral("line 20000"));
        QCOMPARE(ReadLinkedText(m_dir.path() + QStringLiteral("/none.txt")), QString());
    }

    void linkCommandsKeepTheLinkList() {
        const QString pic = file(QStringLiteral("cmd/f.jpg"));
        const QString txt = file(QStringLiteral("cmd/f.txt"));
        const QString song = file(QStringLiteral("cmd/f.mp3"));
        DataGrid list, links;
        DefineExternPictureColumns(list);
        SearchPictures(list, links, {pic}, Types());
        ScriptedPrompt p;
        PictureEnv env(p, list, links);
        LinkTextToPicture(env, 1, txt);
        LinkSongToPicture(env, 1, song);
        QCOMPARE(list.Tag, QStringLiteral("changes"));
        QCOMPARE(links.Rows(), 1);
        QCOMPARE(links.CellText(1, LinkCol::Text), txt);
        QCOMPARE(links.CellText(1, LinkCol::Song), song);
        RemovePictureLinks(env, 1, true, false);
        QCOMPARE(links.CellText(1, LinkCol::Text), QString());
        QVERIFY(list.CellText(1, PicCol::Textfile).isEmpty());
        RemovePictureLinks(env, 1, false, true);
        QCOMPARE(links.Rows(), 0); // no link left: the row goes
        // a saved text is written and linked
        QVERIFY(
            SaveLinkedText(env, 1, m_dir.path() + QStringLiteral("/cmd/new.txt"), QStringLiteral("a\r\nb")));
        QCOMPARE(ReadAll(m_dir.path() + QStringLiteral("/cmd/new.txt")), QByteArray("a\r\nb"));
        QCOMPARE(list.CellText(1, PicCol::Textfile), QStringLiteral("new.txt"));
        QVERIFY(DeleteLinkedText(env, 1, true));
        QVERIFY(!QFile::exists(m_dir.path() + QStringLiteral("/cmd/new.txt")));
        QCOMPARE(links.Rows(), 0);
    }

    void showRebuildAndClean() {
        const QString pic = file(QStringLiteral("rb/g.jpg"));
        const QString lost = m_dir.path() + QStringLiteral("/rb/lost.jpg");
        DataGrid list, links;
        DefineExternPictureColumns(list);
        ScriptedPrompt p;
        PictureEnv env(p, list, links);
        QVERIFY(!ShowLinkList(env));
        QCOMPARE(p.shown.back().text, Caption(CapLinkListEmpty));
        SetPictureLink(links, pic, LinkCol::Text, m_dir.path() + QStringLiteral("/rb/missing.txt"));
        SetPictureLink(links, lost, LinkCol::Song, m_dir.path() + QStringLiteral("/rb/s.mp3"));
        p.answers = {true};
        QVERIFY(ShowLinkList(env));
        QCOMPARE(list.Rows(), 2);
        // the link list's text status is shown without looking at the disk
        QCOMPARE(list.CellText(1, PicCol::HasTextlink), Caption(CapStatusFound));
        list.SetCellText(1, PicCol::HasTextlink, Caption(CapStatusMissing));
        p.answers = {true};
        QCOMPARE(RemoveBrokenLinks(env), 1);
        QCOMPARE(list.Rows(), 1);
        QVERIFY(list.CellText(1, PicCol::Textfile).isEmpty());
        QCOMPARE(list.Tag, QStringLiteral("changes"));
        QCOMPARE(p.shown.back().text, Caption(CapEntriesRemoved) + QStringLiteral("1"));
        // the rebuild keeps every picture shown, even without a link
        const QString lnk = m_dir.path() + QStringLiteral("/rb/lnkpic.qlt");
        p.answers = {false};
        QVERIFY(!RebuildLinkList(env, lnk));
        p.answers = {true};
        QVERIFY(RebuildLinkList(env, lnk));
        QCOMPARE(list.Rows(), 0);
        DataGrid back;
        QVERIFY(back.LoadFile(lnk));
        QCOMPARE(back.Rows(), 1);
        QCOMPARE(back.CellText(1, LinkCol::Picture), pic);
        QCOMPARE(p.shown.back().text, Caption(CapLinkListRebuilt));
    }

    void deletePictureRemovesRowAndLink() {
        const QString pic = file(QStringLiteral("del/h.jpg"));
        DataGrid list, links;
        DefineExternPictureColumns(list);
        SetPictureLink(links, pic, LinkCol::Song, QStringLiteral("/x.mp3"));
        SearchPictures(list, links, {pic}, Types());
        ScriptedPrompt p;
        PictureEnv env(p, list, links);
        QVERIFY(DeletePictureFile(env, 1, true));
        QVERIFY(!QFile::exists(pic));
        QCOMPARE(list.Rows(), 0);
        QCOMPARE(links.Rows(), 0);
    }

    void purgeKeepsPresentPictures() {
        const QString pic = file(QStringLiteral("purge/i.jpg"));
        DataGrid links;
        SetPictureLink(links, pic, LinkCol::Song, QStringLiteral("/x.mp3"));
        SetPictureLink(links, m_dir.path() + QStringLiteral("/purge/gone.jpg"), LinkCol::Song,
                       QStringLiteral("/x.mp3"));
        QCOMPARE(PurgeLinkList(links), 1);
        QCOMPARE(links.CellText(1, LinkCol::Picture), pic);
    }
};

QTEST_GUILESS_MAIN(TestPicturesExtern)
#include "test_pictures_extern.moc"
