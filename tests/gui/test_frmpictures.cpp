// The picture window driven as a user drives it: the search for pictures on disk, the
// links to texts and songs and the link list, the picture on show with its zoom, the
// pictures inside songs (show, store, delete, the in-cell description), the thumbnails
// with a broken picture among them. Dialogues are replaced by their hooks, the desktop
// by a scripted shell.

#include "ListWindowFixture.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FrmPictures.h"
#include "app/Mnemonics.h"
#include "app/PictureView.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "picture/PictureColumns.h"
#include "picture/modEmbeddedPictures.h"
#include "picture/modLinkList.h"
#include "platform/Shell.h"
#include "tag/TagEngine.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImageWriter>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

class TestFrmPictures : public QObject {
    Q_OBJECT

    ScriptedShell shell;
    QTemporaryDir dir;

    static FrmPictures* Page(GuiProgram& g) { return g.window->frmPictures; }
    static void Click(QWidget* root, const char* name) {
        auto* b = Control<QAbstractButton>(root, QString::fromLatin1(name));
        QVERIFY2(b && b->isEnabled(), name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    static void ClickRow(DataGridView* view, int row, int col = 3) {
        QTableView* t = view->table();
        const QRect r = t->visualRect(t->model()->index(row - 1, col - 1));
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    }
    static void ClickTab(QWidget* root, const char* strip, int index) {
        auto* tabs = Control<QTabWidget>(root, QString::fromLatin1(strip));
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                          tabs->tabBar()->tabRect(index).center());
    }
    static QString Picture(const QString& path, int w, int h, QColor c) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QImage img(w, h, QImage::Format_RGB32);
        img.fill(c);
        QImageWriter(path).write(img);
        return path;
    }
    static void Open(GuiProgram& g) {
        QTest::mouseClick(
            g.window->findChild<QTabWidget*>(QStringLiteral("TabInput"))->tabBar(), Qt::LeftButton,
            Qt::NoModifier,
            g.window->findChild<QTabWidget*>(QStringLiteral("TabInput"))->tabBar()->tabRect(4).center());
        QVERIFY(Page(g)->isVisible());
    }
    bool StartWithIcons(GuiProgram& g) {
        if (!g.Start())
            return false;
        QDir().mkpath(g.folder.file(QStringLiteral("icons")));
        return QFile::copy(ProgramDir() + QStringLiteral("/icons/NoPicture.jpg"),
                           g.folder.file(QStringLiteral("icons/NoPicture.jpg")));
    }

private slots:
    void init() {
        shell = ScriptedShell();
        SetShell(&shell);
    }
    void cleanup() { SetShell(nullptr); }

    void everyControlIsThere() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmPictures* p = Page(g);
        for (const char* n : {"SSTabPic_Files",
                              "SSTabPic_Pictures",
                              "LbxPic_Extern",
                              "LbxPic_Intern",
                              "ListViewPic",
                              "FramePic_Linklist",
                              "btnpic_FindPic",
                              "btnPic_ShowLinkedPic",
                              "btnPic_WriteLinklist",
                              "btnPic_RemoveBrokenLinks",
                              "btnPic_LinkToTxt",
                              "btnPic_LinkToAudio",
                              "btnPic_LinkInTxt",
                              "btnPic_SaveTxt",
                              "btnPic_DeleteTxt",
                              "btnPic_RemoveLink",
                              "chbPic_RemoveLinkTxt",
                              "chbPic_RemoveLinkSong",
                              "btnPic_PlayLinkedSong",
                              "chbPic_UseLinkedSong",
                              "btnPic_OpenLink",
                              "btnPic_DeletePic",
                              "btnPic_CopyPic",
                              "btnPic_OpenPicInApp",
                              "btnPic_ExportLbxExtern",
                              "btnPic_NextPic",
                              "btnPic_PreviousPic",
                              "btnPic_AutoPic",
                              "HScrollPic_Delay",
                              "chbPic_OnlyWithLink",
                              "chbPic_AttachPic",
                              "chbPic_WithSubFolderPic",
                              "btnPic_CancelPic",
                              "btnPic_FindiPic",
                              "btnPic_OpenSinglePicIntern",
                              "btnPic_OpeniPic",
                              "btnPic_SaveiPic",
                              "btnPic_DeleteiPic",
                              "chbPic_DeleteAlliPic",
                              "btnPic_SaveExternAsiPic",
                              "chbPic_iPicAsLink",
                              "btnPic_CanceliPic",
                              "chbPic_AttachiPic",
                              "chbPic_WithSubFolderiPic",
                              "chbPic_WithiPicOnly",
                              "chbPic_SaveiPicAsNew",
                              "chbPic_SaveiPicAsLink",
                              "chbPic_DirectEditIntern",
                              "cmbPic_iPicType",
                              "cmbPic_Pictype",
                              "btnPic_ClearCmbiPicType",
                              "btnPic_ClearCmbPicType",
                              "txtPic_Description",
                              "txtPic_iPicDescription",
                              "txtPic_TextToSizedPic",
                              "imgPic_SizedPic",
                              "HScrollPic_Left",
                              "VScrollPic_Up",
                              "HScrollPic_Zoom",
                              "btnPic_SavePicAsBMP",
                              "btnPic_ZoomIncrease",
                              "btnPic_ZoomDecrease",
                              "btnPic_Zoom_0",
                              "optPic_cm",
                              "optPic_Inch",
                              "btnPic_ShowThumbnail",
                              "chbPic_ShowThumbnailAll",
                              "sliderPic_ThumbnailWidth",
                              "sliderPic_ThumbnailHeight",
                              "btnPic_TnWidthUp",
                              "btnPic_TnWidthDown",
                              "btnPic_TnHeightUp",
                              "btnPic_TnHeightDown",
                              "mnuPictures_Extern",
                              "mnuPic_PlayTitel",
                              "mnuPic_MakeBmp",
                              "mnuPic_LaunchPicture",
                              "mnuPic_MakeLinkToSong",
                              "mnuPic_MakeLinkToTxt",
                              "mnuPic_RemoveLinkToSong",
                              "mnuPic_RemoveLinkToTxt",
                              "mnuPic_RemoveLinkToSongAndTxt",
                              "mnuPic_SaveShownPicInSongAsPic",
                              "mnuPic_SaveShownPicInSongAsLink",
                              "mnuPic_CopyPictureTo",
                              "mnuiPic_playTitle",
                              "mnuiPic_makeBMP",
                              "mnuiPic_LaunchPicture",
                              "mnuPictures_Zoom",
                              "mnuZoom_0",
                              "mnuZoom_P10",
                              "mnuZoom_M10",
                              "mnuZoom_LeftCorner",
                              "mnuZoom_ImgSet"})
            QVERIFY2(p->findChild<QObject*>(QString::fromLatin1(n)), n);
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(p, "btnpic_FindPic")->text()), Caption(497));
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(p, "btnPic_AutoPic")->text()),
                 Caption(CapSlideShowStart));
        QCOMPARE(p->lbxExtern().Column(PicCol::Picfile).caption, Caption(CapHeaderPictureFile));
        // the type list follows the published ID3v2 list: 21 names
        QCOMPARE(Control<QComboBox>(p, "cmbPic_iPicType")->count(), 21);
    }

    void searchShowZoomAndLinks() {
        GuiProgram g;
        QVERIFY(StartWithIcons(g));
        Open(g);
        FrmPictures* p = Page(g);
        const QString folder = dir.path() + QStringLiteral("/search");
        Picture(folder + QStringLiteral("/b.png"), 200, 100, Qt::red);
        Picture(folder + QStringLiteral("/A.JPG"), 300, 150, Qt::blue);
        tagtest::WriteAll(folder + QStringLiteral("/broken.jpg"), "text named like a picture");
        tagtest::WriteAll(folder + QStringLiteral("/notes.txt"), "a note");
        p->chooseFolder = [&](const QString&) { return folder; };
        Click(p, "btnpic_FindPic");
        DataGrid& list = p->lbxExtern();
        QCOMPARE(list.Rows(), 3);
        QCOMPARE(list.CellText(1, PicCol::Picfile), QStringLiteral("A.JPG"));
        QCOMPARE(Setting(Ini::PathPictures1, Ini::Col2), folder);
        QVERIFY(p->listTitle().startsWith(folder));
        QVERIFY(p->listTitle().endsWith(QStringLiteral("(3)")));
        // the first row is on show
        QCOMPARE(p->pictureView()->path(), folder + QStringLiteral("/A.JPG"));
        QCOMPARE(p->pictureView()->fullSize(), QSize(300, 150));
        // zoom
        Click(p, "btnPic_ZoomIncrease");
        QCOMPARE(Control<QLabel>(p, "lblPic_Zoom")->text(), QStringLiteral("Zoom 10%"));
        QCOMPARE(Control<QLabel>(p, "imgPic_SizedPic")->size(), QSize(330, 165));
        Click(p, "btnPic_ZoomDecrease");
        Click(p, "btnPic_ZoomDecrease");
        QCOMPARE(Control<QLabel>(p, "lblPic_Zoom")->text(), QStringLiteral("Zoom -10%"));
        Click(p, "btnPic_Zoom_0");
        QCOMPARE(Control<QLabel>(p, "lblPic_Zoom")->text(), QStringLiteral("Zoom 0%"));
        // the shown picture saved in another format, by the ending chosen
        const QString saved = dir.path() + QStringLiteral("/saved.bmp");
        p->chooseSaveFile = [&](const QString&, const QString&, const QString&) { return saved; };
        Click(p, "btnPic_SavePicAsBMP");
        QCOMPARE(QImage(saved).size(), QSize(300, 150));
        QVERIFY(tagtest::ReadAll(saved).startsWith("BM"));
        // the broken picture gives the failure text and the placeholder
        ClickRow(p->findChild<DataGridView*>(QStringLiteral("LbxPic_Extern")), 3);
        QCOMPARE(list.CurRow(), 3);
        QVERIFY(Control<QLabel>(p, "lblPic_Status")
                    ->text()
                    .startsWith(QStringLiteral("Laden des Bildes scheitert")));
        QVERIFY(!p->pictureView()->image().isNull()); // NoPicture.jpg
        Click(p, "btnPic_PreviousPic");
        QCOMPARE(list.CurRow(), 2);
        QCOMPARE(p->pictureView()->path(), folder + QStringLiteral("/b.png"));
        // a song linked to the picture: the link list and the "changes" mark
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), folder, QStringLiteral("song.mp3"));
        p->chooseOpenFile = [&](const QString&, const QString&, const QString&) { return song; };
        Click(p, "btnPic_LinkToAudio");
        QCOMPARE(list.CellText(2, PicCol::Song), QStringLiteral("song.mp3"));
        QCOMPARE(list.CellText(2, PicCol::HasAudioLink), Caption(CapStatusFound));
        QCOMPARE(list.Tag, QStringLiteral("changes"));
        const DataGrid& links = Grids::LbxPic_LinkToPic();
        QCOMPARE(FindLinkRow(links, folder + QStringLiteral("/b.png")), 1);
        Click(p, "btnPic_PlayLinkedSong");
        QCOMPARE(shell.opened, QStringList{song});
        // removing the song link through the menu
        p->findChild<QAction*>(QStringLiteral("mnuPic_RemoveLinkToSong"))->trigger();
        QCOMPARE(links.Rows(), 0);
        QVERIFY(list.CellText(2, PicCol::Song).isEmpty());
        // the shown picture into a song, as a link: the frame and the link list's song
        QTest::mouseClick(Control<QCheckBox>(p, "chbPic_iPicAsLink"), Qt::LeftButton);
        QTest::keyClicks(Control<QLineEdit>(p, "txtPic_Description"), QStringLiteral("Sleeve"));
        Click(p, "btnPic_SaveExternAsiPic");
        TagEngine e;
        QVERIFY(e.OpenFile(song) != 0);
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.PictureMime(1), QStringLiteral("-->") + folder + QStringLiteral("/b.png"));
        QCOMPARE(e.PictureDescription(1), QStringLiteral("Sleeve"));
        QCOMPARE(e.PictureType(1), 3);
        QCOMPARE(links.CellText(1, LinkCol::Song), song);
        // the export of the list, named after its title
        QString offered;
        const QString exported = dir.path() + QStringLiteral("/pictures.txt");
        p->chooseSaveFile = [&](const QString&, const QString& start, const QString&) {
            offered = start;
            return exported;
        };
        Click(p, "btnPic_ExportLbxExtern");
        QVERIFY2(offered.endsWith(QStringLiteral("Export search")), qPrintable(offered));
        QVERIFY(tagtest::ReadAll(exported).contains("A.JPG"));
        // the closing asks about the unsaved links
        g.prompt.answers = {true, false};
        int asked = 0;
        QVERIFY(!QuitProgram(asked, 0, g.prompt));
        QCOMPARE(g.prompt.shown.back().text,
                 Caption(CapPicLinksUnsaved) + QStringLiteral("\n\n") + Caption(CapQuitAnywayQuestion));
        list.Tag.clear();
    }

    void slideShowRunsToTheEnd() {
        GuiProgram g;
        QVERIFY(StartWithIcons(g));
        Open(g);
        FrmPictures* p = Page(g);
        const QString folder = dir.path() + QStringLiteral("/slides");
        for (int i = 0; i < 3; ++i)
            Picture(folder + QStringLiteral("/s%1.png").arg(i), 40, 40, Qt::green);
        p->chooseFolder = [&](const QString&) { return folder; };
        Click(p, "btnpic_FindPic");
        auto* delay = Control<QScrollBar>(p, "HScrollPic_Delay");
        delay->setValue(1);
        QCOMPARE(Setting(Ini::PicAutoPic, Ini::Col1), QStringLiteral("1"));
        Click(p, "btnPic_AutoPic");
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(p, "btnPic_AutoPic")->text()),
                 Caption(CapSlideShowStop));
        QTRY_COMPARE_WITH_TIMEOUT(p->lbxExtern().CurRow(), 3, 5000);
        QTRY_COMPARE_WITH_TIMEOUT(WithoutMnemonic(Control<QPushButton>(p, "btnPic_AutoPic")->text()),
                                  Caption(CapSlideShowStart), 3000);
        QCOMPARE(p->pictureView()->path(), folder + QStringLiteral("/s2.png"));
    }

    void picturesInSongs() {
        GuiProgram g;
        QVERIFY(StartWithIcons(g));
        Open(g);
        FrmPictures* p = Page(g);
        const QString folder = dir.path() + QStringLiteral("/songs");
        QDir().mkpath(folder);
        const QString a = tagtest::CopyFixture(QStringLiteral("tone.mp3"), folder, QStringLiteral("a.mp3"));
        tagtest::CopyFixture(QStringLiteral("tone.mp3"), folder, QStringLiteral("b.mp3"));
        const QString red = Picture(dir.path() + QStringLiteral("/red.jpg"), 64, 32, Qt::red);
        const QString blue = Picture(dir.path() + QStringLiteral("/blue.jpg"), 32, 64, Qt::blue);
        TagEngine e;
        QString error;
        QVERIFY(StorePictureInSong(e, a, red, QStringLiteral("Red"), 3, 0, false, &error));
        QVERIFY(StorePictureInSong(e, a, blue, QStringLiteral("Blue"), 4, 0, false, &error));
        QVERIFY(StorePictureInSong(e, a, QStringLiteral("/gone/x.jpg"), QStringLiteral("Gone"), 0, 0, true,
                                   &error));
        ClickTab(p, "SSTabPic_Files", 1);
        p->chooseFolder = [&](const QString&) { return folder; };
        auto* only = Control<QCheckBox>(p, "chbPic_WithiPicOnly");
        if (only->isChecked())
            QTest::mouseClick(only, Qt::LeftButton);
        Click(p, "btnPic_FindiPic");
        DataGrid& list = p->lbxIntern();
        QCOMPARE(list.Rows(), 4); // three pictures of a.mp3 and the empty row of b.mp3
        QCOMPARE(list.CellText(1, IPicCol::HasPic), QStringLiteral("01"));
        QCOMPARE(list.CellText(3, IPicCol::HasPicLink), QStringLiteral("03"));
        QCOMPARE(list.CellText(3, IPicCol::Mime_Link), QStringLiteral("/gone/x.jpg"));
        QCOMPARE(list.CellText(1, IPicCol::PicType), PictureTypeName(3));
        auto* internView = p->findChild<DataGridView*>(QStringLiteral("LbxPic_Intern"));
        // show the first: exported to the temporary file, type 3 selects the fourth entry
        ClickRow(internView, 1);
        Click(p, "btnPic_OpeniPic");
        const QString temp = g.folder.file(QStringLiteral("temp/iPicTmp.jpeg"));
        QCOMPARE(p->pictureView()->path(), temp);
        QCOMPARE(p->pictureView()->fullSize(), QSize(64, 32));
        QCOMPARE(Control<QComboBox>(p, "cmbPic_iPicType")->currentIndex(), 3);
        QCOMPARE(Control<QLineEdit>(p, "txtPic_iPicDescription")->text(), QStringLiteral("Red"));
        // the second of the same kind takes the same temporary name
        ClickRow(internView, 2);
        Click(p, "btnPic_OpeniPic");
        QCOMPARE(p->pictureView()->path(), temp);
        QCOMPARE(p->pictureView()->fullSize(), QSize(32, 64));
        // a link whose file is gone shows the placeholder, without a message
        const int messages = int(g.prompt.shown.size());
        ClickRow(internView, 3);
        Click(p, "btnPic_OpeniPic");
        QVERIFY(p->pictureView()->path().isEmpty());
        QCOMPARE(int(g.prompt.shown.size()), messages);
        // a new picture into b.mp3
        ClickRow(internView, 4);
        p->chooseOpenFile = [&](const QString&, const QString&, const QString&) { return blue; };
        Click(p, "btnPic_SaveiPic"); // no picture in the row, not as new: the message
        QCOMPARE(g.prompt.shown.back().text, Caption(CapNoPictureRow));
        QTest::mouseClick(Control<QCheckBox>(p, "chbPic_SaveiPicAsNew"), Qt::LeftButton);
        auto* desc = Control<QLineEdit>(p, "txtPic_iPicDescription");
        desc->clear();
        QTest::keyClicks(desc, QStringLiteral("Neu"));
        Click(p, "btnPic_SaveiPic");
        QVERIFY(e.OpenFile(folder + QStringLiteral("/b.mp3")) != 0);
        QCOMPARE(e.PictureCount(), 1);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("Neu"));
        QCOMPARE(list.Rows(), 4);
        QCOMPARE(list.CellText(4, IPicCol::HasPic), QStringLiteral("01"));
        // in-cell edit of a description
        QTest::mouseClick(Control<QCheckBox>(p, "chbPic_DirectEditIntern"), Qt::LeftButton);
        QTableView* t = internView->table();
        const QRect cell = t->visualRect(t->model()->index(0, IPicCol::Description - 1));
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QLineEdit* editor = t->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("Rot"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the delegate commits through the event queue
        QCOMPARE(list.CellText(1, IPicCol::Description), QStringLiteral("Rot"));
        QVERIFY(e.OpenFile(a) != 0);
        QCOMPARE(e.PictureDescription(1), QStringLiteral("Rot"));
        QCOMPARE(e.PictureData(1), tagtest::ReadAll(red));
        // delete all pictures of a.mp3
        ClickRow(internView, 1);
        QTest::mouseClick(Control<QCheckBox>(p, "chbPic_DeleteAlliPic"), Qt::LeftButton);
        Click(p, "btnPic_DeleteiPic");
        QVERIFY(e.OpenFile(a) != 0);
        QCOMPARE(e.PictureCount(), 0);
        QCOMPARE(list.Rows(), 2); // a.mp3 stays as an empty row
    }

    void thumbnailsFillWithoutBlocking() {
        GuiProgram g;
        QVERIFY(StartWithIcons(g));
        Open(g);
        FrmPictures* p = Page(g);
        const QString folder = dir.path() + QStringLiteral("/thumbs");
        for (int i = 0; i < 6; ++i)
            Picture(folder + QStringLiteral("/t%1.jpg").arg(i), 800, 600, QColor::fromHsv(i * 50, 200, 200));
        tagtest::WriteAll(folder + QStringLiteral("/zero.jpg"), QByteArray());
        p->chooseFolder = [&](const QString&) { return folder; };
        Click(p, "btnpic_FindPic");
        ClickTab(p, "SSTabPic_Files", 2);
        QListWidget* lv = p->thumbnails();
        QCOMPARE(lv->count(), 7);
        QCOMPARE(lv->item(0)->text(), QStringLiteral("(1) t0.jpg"));
        QTRY_VERIFY_WITH_TIMEOUT(!p->thumbnailsBusy(), 10000);
        QCOMPARE(lv->iconSize(), QSize(120, 90));
        QVERIFY(lv->item(6)->toolTip().contains(QStringLiteral("Laden des Bildes scheitert")));
        QVERIFY(lv->item(0)->toolTip().isEmpty());
        // a wider box by the step button
        Click(p, "btnPic_TnWidthUp");
        QCOMPARE(Setting(Ini::ThumbnailWidth, Ini::Col1), QStringLiteral("130"));
        QTRY_COMPARE_WITH_TIMEOUT(lv->iconSize(), QSize(130, 90), 3000);
        // a click on a thumbnail shows its picture
        lv->setCurrentRow(2);
        QCOMPARE(p->pictureView()->path(), folder + QStringLiteral("/t2.jpg"));
    }
};

QTEST_MAIN(TestFrmPictures)
#include "test_frmpictures.moc"
