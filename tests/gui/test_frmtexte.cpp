// The texts area driven as a user drives it: the searches for text files and for songs
// with lyric entries, opening into the two boxes with their active flag and colours, one
// box or two, saving a typed text as lyric entry, the hand-over to the synchronising
// editor, playing the song of a row, the links in a text, clearing a box and the direct
// edit of a language. Dialogues are replaced by their hooks.

#include "ListWindowFixture.h"
#include "TagTestUtil.h"
#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "app/FrmTexte.h"
#include "app/Mnemonics.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "platform/Shell.h"
#include "platform/mpv/MpvDevice.h"
#include "player/MediaDevice.h"
#include "tag/TagEngine.h"
#include "text/TexteColumns.h"
#include "text/modSText.h"
#include "text/modTexte.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

class TestFrmTexte : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

    static FrmTexte* Page(GuiProgram& g) {
        g.window->TabInput->setCurrentWidget(g.window->frmTexte);
        return g.window->frmTexte;
    }
    static void Click(QWidget* root, const char* name) {
        auto* b = Control<QAbstractButton>(root, QString::fromLatin1(name));
        QVERIFY2(b && b->isEnabled(), name);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    static void ClickRow(DataGridView* view, int row, int col = 2) {
        QTableView* t = view->table();
        const QRect r = t->visualRect(t->model()->index(row - 1, col - 1));
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    }
    static QPlainTextEdit* Box(FrmTexte* p, int i) {
        return Control<QPlainTextEdit>(p, QStringLiteral("txtTexte_Txt%1").arg(i));
    }
    QString Write(const QString& rel, const QByteArray& bytes) {
        const QString path = dir.path() + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        tagtest::WriteAll(path, bytes);
        return path;
    }
    QString Song(const QString& rel) {
        const QString path = dir.path() + u'/' + rel;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile::copy(FixtureDir() + "/tone.mp3", path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        return path;
    }

private slots:
    void initTestCase() {
        UseMpvMedia();
        SetDefaultAudioOutput(QStringLiteral("null"));
    }

    void everyControlIsThere() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        for (const char* n : {"LbxTxt",
                              "LbxLyrics",
                              "txtTexte_Txt1",
                              "txtTexte_Txt2",
                              "lblTexte_Color1",
                              "lblTexte_Color2",
                              "lblTexte_Splitter",
                              "cmbTexte_Links",
                              "lblTexte_LinksSum",
                              "btnTexte_FindTxt",
                              "btnTexte_FindLyrics",
                              "btnTexte_CancelFindLyrics",
                              "btnTexte_OpenTxt",
                              "btnTexte_OpenLyrics",
                              "btnTexte_SaveLyric",
                              "btnTexte_SaveAsTxt",
                              "btnTexte_DeleteTxt",
                              "btnTexte_DeleteLyrics",
                              "btnTexte_LinkToTxt",
                              "btnTexte_FillCmbWithLinks",
                              "btnTexte_OpenLink",
                              "btnTexte_LinksOK",
                              "optTexte_LinkInTextbox",
                              "optTexte_CopyLinks",
                              "optTexte_MoveLinks",
                              "BtnTexte_PlaySong",
                              "btnTexte_TxtToSync",
                              "btnTexte_ClearLbxTxt",
                              "btnTexte_ClearLbxLyrics",
                              "btnTexte_ClearTxt1",
                              "btnTexte_ClearTxt2",
                              "btnTexte_SwitchTextbox",
                              "chbTexte_DirectEditLyrics",
                              "chbTexte_DirectEditTxt",
                              "chbTexte_NewFile",
                              "chbTexte_SaveNew",
                              "chbTexte_DeleteAllLyrics",
                              "chbTexte_AttachTxt",
                              "chbTexte_AttachLyrics",
                              "chbTexte_WithSubFolderTxt",
                              "chbTexte_WithSubFolderLyrics",
                              "chbTexte_WithLyricsOnly",
                              "chbTexte_OpenPlayTxt",
                              "chbTexte_OpenPlaySong",
                              "chbTexte_NoMsg",
                              "chbTexte_OpenTxtWithClick",
                              "chbTexte_OpenLyricWithClick",
                              "chbTexte_Txt1Only"})
            QVERIFY2(p->findChildren<QWidget*>(QString::fromLatin1(n)).size() == 1, n);
        QVERIFY(Control<QPushButton>(p, "btnTexte_PrintTextbox")->isEnabled());
        QVERIFY(!Control<QPushButton>(p, "btnTexte_CancelFindLyrics")->isEnabled());
        QVERIFY(!Control<QCheckBox>(p, "chbTexte_DirectEditLyrics")->isEnabled());
        QCOMPARE(WithoutMnemonic(Control<QPushButton>(p, "btnTexte_FindTxt")->text()),
                 QStringLiteral("Textdateien suchen"));
    }

    void settingRowsAtStart() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::TexteNoMsg, Ini::Col1}, QStringLiteral("1")},
                         {{Ini::TexteOpenTxtWithClick, Ini::Col1}, QStringLiteral("1")},
                         {{Ini::TexteOpenLyricWithClick, Ini::Col1}, QStringLiteral("1")},
                         {{Ini::TexteTxt1Only, Ini::Col1}, QStringLiteral("1")},
                         {{Ini::TexteWithLyricsOnly, Ini::Col1}, QStringLiteral("1")}}));
        FrmTexte* p = Page(g);
        for (const char* n : {"chbTexte_NoMsg", "chbTexte_OpenTxtWithClick", "chbTexte_OpenLyricWithClick",
                              "chbTexte_Txt1Only", "chbTexte_WithLyricsOnly"})
            QVERIFY2(Control<QCheckBox>(p, QString::fromLatin1(n))->isChecked(), n);
        QVERIFY(!Box(p, 2)->isVisibleTo(p));
        Click(p, "chbTexte_NoMsg");
        QCOMPARE(Setting(Ini::TexteNoMsg, Ini::Col1), QStringLiteral("0"));
        Click(p, "chbTexte_WithLyricsOnly");
        QCOMPARE(Setting(Ini::TexteWithLyricsOnly, Ini::Col1), QStringLiteral("0"));
    }

    void findOpenAndTheTwoBoxes() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        Write("t/a.txt", "erste\r\nZeile\r\n");
        Write("t/b.txt", "second\r\n");
        Write("t/c.lrc", "x");
        p->chooseFolder = [&](const QString&) { return dir.path() + "/t"; };
        Click(p, "btnTexte_FindTxt");
        QCOMPARE(p->LbxTxt().Rows(), 2);
        QCOMPARE(p->LbxTxt().FooterText(TxtCol::FileName), QStringLiteral("2"));
        QCOMPARE(Setting(Ini::PathTexte, Ini::Col2), dir.path() + "/t");
        auto* view = Control<DataGridView>(p, "LbxTxt");
        Click(p, "btnTexte_OpenTxt");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoRowSelected));
        ClickRow(view, 1, 1);
        Click(p, "btnTexte_OpenTxt");
        QCOMPARE(Box(p, 1)->toPlainText(), QStringLiteral("erste\nZeile\n"));
        ClickRow(view, 2, 1);
        Click(p, "btnTexte_OpenTxt");
        QCOMPARE(Box(p, 2)->toPlainText(), QStringLiteral("second\n"));
        // box 2 is active now: black text, the marker coloured; box 1 grey
        QCOMPARE(Box(p, 2)->property("activeFlag").toInt(), 1);
        QCOMPARE(Box(p, 1)->property("activeFlag").toInt(), 0);
        QCOMPARE(Box(p, 1)->palette().color(QPalette::Text), QColor(0x74, 0x74, 0x74));
        QCOMPARE(Box(p, 2)->palette().color(QPalette::Text), QColor(0, 0, 0));
        QCOMPARE(Control<QLabel>(p, "lblTexte_Color2")->palette().color(QPalette::Window),
                 QColor(0xD5, 0xD9, 0xF4));
        // a click into box 1 makes it the active one
        QTest::mouseClick(Box(p, 1)->viewport(), Qt::LeftButton);
        QCOMPARE(Box(p, 1)->property("activeFlag").toInt(), 1);
        // one box only: box 2 and the splitter go, the setting follows
        Click(p, "chbTexte_Txt1Only");
        QVERIFY(Box(p, 2)->isHidden() || !Box(p, 2)->isVisibleTo(p));
        QVERIFY(Control<QLabel>(p, "lblTexte_Splitter")->isHidden());
        QCOMPARE(Setting(Ini::TexteTxt1Only, Ini::Col1), QStringLiteral("1"));
        Click(p, "chbTexte_Txt1Only");
        QVERIFY(Box(p, 2)->isVisibleTo(p));
        Click(p, "btnTexte_SwitchTextbox");
        QVERIFY(!Box(p, 2)->isVisibleTo(p));
        Click(p, "btnTexte_SwitchTextbox");
        QVERIFY(Box(p, 2)->isVisibleTo(p));
        // clearing a box asks first
        g.prompt.answers = {false};
        Click(p, "btnTexte_ClearTxt2");
        QCOMPARE(Box(p, 2)->toPlainText(), QStringLiteral("second\n"));
        g.prompt.answers = {true};
        Click(p, "btnTexte_ClearTxt2");
        QVERIFY(Box(p, 2)->toPlainText().isEmpty());
        Click(p, "btnTexte_ClearLbxTxt");
        QCOMPARE(p->LbxTxt().Rows(), 0);
    }

    void lyricsSearchSaveAndPlay() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        const QString a = Song("s/a.mp3");
        const QString b = Song("s/b.mp3");
        TagEngine e;
        QCOMPARE(e.OpenFile(a), 1);
        e.SetLyric(1, "ENG", "words", "la la\r\nlu lu");
        QVERIFY(e.SaveV2(a));
        QStringList played;
        p->playSong = [&](const QString& path) { played << path; };
        p->chooseFolder = [&](const QString&) { return dir.path() + "/s"; };
        Click(p, "btnTexte_FindLyrics");
        QCOMPARE(p->LbxLyrics().Rows(), 2);
        QCOMPARE(p->LbxLyrics().FooterText(LyrCol::FileName), QStringLiteral("2"));
        QVERIFY(Control<QCheckBox>(p, "chbTexte_DirectEditLyrics")->isEnabled());
        QVERIFY(!Control<QPushButton>(p, "btnTexte_CancelFindLyrics")->isEnabled());
        auto* view = Control<DataGridView>(p, "LbxLyrics");
        // header clicks: the language alone, then the number with the name second, downwards
        QHeaderView* header = view->table()->horizontalHeader();
        auto clickHeader = [&](int col) {
            const int x = header->sectionViewportPosition(col - 1) + header->sectionSize(col - 1) / 2;
            QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                              QPoint(x, header->height() / 2));
            QCoreApplication::processEvents();
        };
        clickHeader(LyrCol::Language);
        QCOMPARE(p->LbxLyrics().CellText(1, LyrCol::FileName), QStringLiteral("b.mp3"));
        clickHeader(LyrCol::Index);
        clickHeader(LyrCol::Index);
        QCOMPARE(p->LbxLyrics().CellText(1, LyrCol::FileName), QStringLiteral("a.mp3"));
        QCOMPARE(p->LbxLyrics().CellText(1, LyrCol::Index), QStringLiteral("1"));
        ClickRow(view, 1);
        Click(p, "btnTexte_OpenLyrics");
        QCOMPARE(Box(p, 1)->toPlainText(), QStringLiteral("la la\nlu lu"));
        Click(p, "BtnTexte_PlaySong");
        QCOMPARE(played, QStringList{a});
        // a typed text into the song without an entry: the language is asked first
        ClickRow(view, 2);
        QTest::mouseClick(Box(p, 2)->viewport(), Qt::LeftButton);
        QTest::keyClicks(Box(p, 2), "neue Zeile");
        g.prompt.answers = {true};
        Click(p, "btnTexte_SaveLyric");
        QCOMPARE(e.OpenFile(b), 1);
        QCOMPARE(e.LyricCount(), 1);
        QCOMPARE(e.LyricText(1), QStringLiteral("neue Zeile"));
        QCOMPARE(e.LyricLanguage(1), Caption(CapDefaultLanguage));
        QCOMPARE(p->LbxLyrics().CellText(2, LyrCol::Index), QStringLiteral("1"));
        // the direct edit of a language; the editable headers turn red
        Click(p, "chbTexte_DirectEditLyrics");
        QCOMPARE(p->LbxLyrics().Column(LyrCol::Language).headerColor, BgrColor(255));
        QCOMPARE(p->LbxLyrics().Column(LyrCol::Description).headerColor, BgrColor(255));
        QCOMPARE(p->LbxLyrics().Column(LyrCol::FileName).headerColor, kNoColor);
        QTableView* t = view->table();
        const QModelIndex cell = t->model()->index(0, LyrCol::Language - 1);
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, t->visualRect(cell).center());
        QLineEdit* editor = t->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, "FRA");
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(e.OpenFile(a), 1);
        QCOMPARE(e.LyricLanguage(1), QStringLiteral("FRA"));
        QCOMPARE(e.LyricText(1), QStringLiteral("la la\r\nlu lu"));
    }

    void playSongOnTheMainPlayer() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        Song("play/a.mp3");
        p->chooseFolder = [&](const QString&) { return dir.path() + "/play"; };
        Click(p, "btnTexte_FindLyrics");
        QCOMPARE(p->LbxLyrics().Rows(), 1);
        Click(p, "BtnTexte_PlaySong");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoRowSelected));
        ClickRow(Control<DataGridView>(p, "LbxLyrics"), 1);
        Click(p, "BtnTexte_PlaySong");
        QVERIFY(Media().IsOpen());
        QCOMPARE(Control<QLabel>(g.window.get(), "lblTab1_ActSong")->text(), QStringLiteral("a.mp3"));
        Media().Close();
    }

    void fileCommandsAndSwitches() {
        GuiProgram g;
        QVERIFY(g.Start({{{Ini::Paperbin, Ini::Col2}, QStringLiteral("1")}}));
        FrmTexte* p = Page(g);
        const QString song = Song("f/song.mp3");
        Write("f/gone.txt", "/f/no/such/song.mp3\r\nwords\r\n");
        Write("f/keep.txt", "keep\r\n");
        p->chooseFolder = [&](const QString&) { return dir.path() + "/f"; };
        Click(p, "btnTexte_FindTxt");
        QCOMPARE(p->LbxTxt().Rows(), 2);
        auto* view = Control<DataGridView>(p, "LbxTxt");
        // open with a click: the row's text at once, a missing song marked
        Click(p, "chbTexte_OpenTxtWithClick");
        QCOMPARE(Setting(Ini::TexteOpenTxtWithClick, Ini::Col1), QStringLiteral("1"));
        ClickRow(view, 1, 1);
        QCOMPARE(Box(p, 1)->toPlainText(), QStringLiteral("/f/no/such/song.mp3_#-/->\nwords\n"));
        Click(p, "chbTexte_OpenTxtWithClick");
        // link the text to a song: the first empty link field takes its path
        p->chooseSongFile = [&](const QString&) { return song; };
        Click(p, "btnTexte_LinkToTxt");
        QCOMPARE(g.prompt.LastText(), Caption(CapLinkSaved));
        TagEngine e;
        QCOMPARE(e.OpenFile(song), 1);
        QCOMPARE(e.V2AudFileUrl(), dir.path() + "/f/gone.txt");
        // save the box as a text file
        p->chooseTextSave = [&](const QString&) { return dir.path() + "/f/saved.txt"; };
        QTest::mouseClick(Box(p, 1)->viewport(), Qt::LeftButton);
        Click(p, "btnTexte_SaveAsTxt");
        QCOMPARE(tagtest::ReadAll(dir.path() + "/f/saved.txt"),
                 QByteArray("/f/no/such/song.mp3_#-/->\r\nwords\r\n"));
        QCOMPARE(g.prompt.LastText(), Caption(CapTextSaved));
        // rename in the list
        Click(p, "chbTexte_DirectEditTxt");
        QTableView* t = view->table();
        const QModelIndex cell = t->model()->index(1, TxtCol::FileName - 1);
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, t->visualRect(cell).center());
        QLineEdit* editor = t->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, "kept.txt");
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QVERIFY(QFile::exists(dir.path() + "/f/kept.txt"));
        QCOMPARE(p->LbxTxt().CellText(2, TxtCol::FileName), QStringLiteral("kept.txt"));
        Click(p, "chbTexte_DirectEditTxt");
        // delete the file of the selected row, after the question
        ClickRow(view, 2, 1);
        g.prompt.answers = {true};
        Click(p, "btnTexte_DeleteTxt");
        QVERIFY(!QFile::exists(dir.path() + "/f/kept.txt"));
        QCOMPARE(p->LbxTxt().Rows(), 1);
        QCOMPARE(p->LbxTxt().FooterText(TxtCol::FileName), QStringLiteral("1"));
    }

    void deleteAllLyricsAndCancel() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        const QString a = Song("d/a.mp3");
        TagEngine e;
        QCOMPARE(e.OpenFile(a), 1);
        e.SetLyric(1, "GER", "eins", "eins");
        e.SetLyric(2, "ENG", "two", "two");
        QVERIFY(e.SaveV2(a));
        p->chooseFolder = [&](const QString&) { return dir.path() + "/d"; };
        Click(p, "btnTexte_FindLyrics");
        QCOMPARE(p->LbxLyrics().Rows(), 2);
        ClickRow(Control<DataGridView>(p, "LbxLyrics"), 2);
        Click(p, "chbTexte_DeleteAllLyrics");
        g.prompt.answers = {true};
        Click(p, "btnTexte_DeleteLyrics");
        QCOMPARE(e.OpenFile(a), 1);
        QCOMPARE(e.LyricCount(), 0);
        QCOMPARE(p->LbxLyrics().CellText(1, LyrCol::Index), QString());
        QCOMPARE(p->LbxLyrics().CellText(2, LyrCol::Language), QString());
        // a long search stops at the cancel button
        for (int i = 0; i < 400; ++i)
            Song(QStringLiteral("many/s%1.mp3").arg(i, 3, 10, QLatin1Char('0')));
        p->chooseFolder = [&](const QString&) { return dir.path() + "/many"; };
        auto* cancel = Control<QPushButton>(p, "btnTexte_CancelFindLyrics");
        bool wasEnabled = false;
        QTimer::singleShot(0, cancel, [&] {
            wasEnabled = cancel->isEnabled();
            QTest::mouseClick(cancel, Qt::LeftButton);
        });
        Click(p, "btnTexte_FindLyrics");
        QVERIFY(wasEnabled);
        QVERIFY(!cancel->isEnabled());
        const int rows = p->LbxLyrics().Rows();
        QVERIFY2(rows > 0 && rows < 400, qPrintable(QString::number(rows)));
        QCOMPARE(p->LbxLyrics().FooterText(LyrCol::FileName), QString::number(rows));
    }

    // The real road from the texts area into the editor: the text arrives there and the
    // editor's page comes forward.
    void handOverReachesTheEditor() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        QTest::mouseClick(Box(p, 1)->viewport(), Qt::LeftButton);
        QTest::keyClicks(Box(p, 1), "first line");
        QTest::keyClick(Box(p, 1), Qt::Key_Return);
        QTest::keyClicks(Box(p, 1), "second line");
        Click(p, "btnTexte_TxtToSync");
        QCOMPARE(g.window->TabInput->currentWidget(), static_cast<QWidget*>(g.window->frmSText));
        const DataGrid& lines = Grids::LbxSText();
        QCOMPARE(lines.CellText(1, SText::ColText), QStringLiteral("first line"));
        QCOMPARE(lines.CellText(2, SText::ColText), QStringLiteral("second line"));
        QVERIFY(!QFile::exists(SyncTempPath()));
    }

    void handOverAndLinks() {
        GuiProgram g;
        QVERIFY(g.Start());
        FrmTexte* p = Page(g);
        const QString a = Song("l/a.mp3");
        QByteArray seen;
        p->openSyncEditor = [&](const QString& path) { seen = tagtest::ReadAll(path); };
        Click(p, "btnTexte_TxtToSync");
        QCOMPARE(g.prompt.LastText(), Caption(CapNoTextToSave));
        QTest::mouseClick(Box(p, 1)->viewport(), Qt::LeftButton);
        QTest::keyClicks(Box(p, 1), a);
        QTest::keyClick(Box(p, 1), Qt::Key_Return);
        QTest::keyClicks(Box(p, 1), "Gr");
        // keys beyond ASCII, as a German keyboard sends them
        QTest::sendKeyEvent(QTest::Click, Box(p, 1), Qt::Key_Udiaeresis, QStringLiteral("ü"), Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Click, Box(p, 1), Qt::Key_ssharp, QStringLiteral("ß"), Qt::NoModifier);
        QTest::keyClicks(Box(p, 1), "e");
        Click(p, "btnTexte_TxtToSync");
        QCOMPARE(seen, (a + "\r\nGrüße\r\n").toUtf8());
        QVERIFY(!QFile::exists(SyncTempPath()));
        Click(p, "btnTexte_FillCmbWithLinks");
        QCOMPARE(Control<QComboBox>(p, "cmbTexte_Links")->count(), 1);
        QCOMPARE(Control<QLabel>(p, "lblTexte_LinksSum")->text(), QStringLiteral("1"));
        ScriptedShell shell;
        SetShell(&shell);
        Click(p, "btnTexte_OpenLink");
        SetShell(nullptr);
        QCOMPARE(shell.opened, QStringList{a});
        p->chooseTargetDir = [&](const QString&) { return dir.path() + "/copy"; };
        Click(p, "optTexte_CopyLinks");
        Click(p, "btnTexte_LinksOK");
        QVERIFY(QFile::exists(dir.path() + "/copy/a.mp3"));
        QCOMPARE(g.prompt.LastText(), Caption(CapFilesCopied) + "1");
    }
};

QTEST_MAIN(TestFrmTexte)
#include "test_frmtexte.moc"
