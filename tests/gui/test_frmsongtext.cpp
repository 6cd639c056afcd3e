// The scrolling text window, driven as a user would: started from the editor by Play with
// the scroll box ticked, rows stepping with the song, a click on a row, pause by the pause
// field, the end of a song (a plain list, or the window closing), the menu entries, a new
// skin, Escape; each of the five modes drawn offscreen and its row colours compared with
// the skin's tables. The device is the scripted FakeMediaDevice.

#include "GuiProgram.h"
#include "TagTestUtil.h"
#include "WavUtil.h"
#include "app/FrmSText.h"
#include "app/FrmScrollSettings.h"
#include "app/FrmSongtext.h"
#include "app/ScrollTextView.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "player/FakeMediaDevice.h"
#include "player/MediaDevice.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"
#include "text/modScrollText.h"

#include "app/DataGridView.h"
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

using namespace Scroll;

class TestFrmSongtext : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<GuiProgram> m_prg;
    FakeMediaDevice m_fake;
    QString m_nextFile;

    FrmSText& S() { return *m_prg->window->frmSText; }
    FrmSongtext& W() { return *m_prg->window->frmSongtext; }
    void Click(QWidget* root, const char* name) {
        auto* b = root->findChild<QAbstractButton*>(QString::fromLatin1(name));
        QVERIFY2(b, name);
        QVERIFY2(b->isEnabled(), name);
        // boxes and options take clicks on the box and the text, not the space behind
        if (qobject_cast<QCheckBox*>(b) || qobject_cast<QRadioButton*>(b))
            QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
        else
            QTest::mouseClick(b, Qt::LeftButton);
    }
    QAction* Menu(const char* name) {
        auto* a = W().mnuSongtext->findChild<QAction*>(QString::fromLatin1(name));
        if (!a)
            qWarning("no menu entry %s", name);
        return a;
    }
    QString Write(const QString& name, const QByteArray& bytes) {
        const QString path = m_dir.filePath(name);
        tagtest::WriteAll(path, bytes);
        return path;
    }
    // Opens an LRC in the editor, links a song and plays it in the scrolling window.
    void StartWindow(const QByteArray& lrc, double seconds = 20) {
        m_nextFile = Write(QStringLiteral("t.lrc"), lrc);
        Click(&S(), "btnSText_OpenTxtLrC");
        m_nextFile = m_dir.filePath(QStringLiteral("song.wav"));
        WriteWav(m_nextFile, seconds);
        Click(&S(), "btnSText_SetLinkToSong");
        Click(&S(), "chbSText_PlayWithScrollList");
        QVERIFY(S().chbSText_PlaySynchonized->isChecked());
        Click(&S(), "MMCSText_Play");
        QVERIFY(W().isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&W()));
    }
    static ScrollSkin Skin(int mode) {
        ScrollSkin k = DefaultScrollSkin();
        k.Mode = mode;
        k.FontName = QStringLiteral("DejaVu Sans");
        k.FontSize = 14;
        k.WindowBack = 0x202020;
        k.ListBack = 0x402010;
        k.ListFore = 0xE0E0E0;
        k.ActBack = 0x30A0F0;
        k.ActFore = 0x000000;
        for (int i = 0; i < TableSize; ++i) {
            k.BackTable[size_t(i)] = 0x100000 * (i + 1) + 0x40 + i * 8;
            k.ForeTable[size_t(i)] = 0xFFFFFF - 0x000A0A * i;
        }
        return k;
    }

private slots:
    void init() {
        m_fake.log.clear();
        m_fake.length = -1;
        SetMedia(&m_fake);
        m_prg = std::make_unique<GuiProgram>();
        QVERIFY(m_prg->Start());
        m_prg->window->resize(1280, 800);
        m_prg->window->show();
        m_prg->window->TabInput->setCurrentWidget(&S());
        S().chooseOpenFile = [this](const QString&, const QString&, const QString&) { return m_nextFile; };
        QVERIFY(QTest::qWaitForWindowExposed(m_prg->window.get()));
    }
    void cleanup() {
        W().close();
        m_fake.Close();
        m_prg.reset();
        SetMedia(nullptr);
    }

    void runsWithTheSong() {
        StartWindow("[00:01.00]one\r\nno stamp\r\n[00:02.00]two\r\n[00:03.00]three\r\n");
        QVERIFY(W().windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(W().TimerSongtext_SyncTimer.interval(), 50);
        QVERIFY(W().TimerSongtext_SyncTimer.isActive());
        // only stamped lines, from row 6 on
        QCOMPARE(W().List().CellText(6, ColText), QStringLiteral("one"));
        QCOMPARE(W().List().CellText(7, ColText), QStringLiteral("two"));
        QCOMPARE(W().CurRow(), 6); // from the editor: the first row with a time
        QCOMPARE(W().lblSongtext_Pause->property("bgr").toInt(), PlayingColor);
        // the editor's timers stay at rest while the window runs
        QVERIFY(!S().TimerSText.isActive() && !S().TimerSText_SyncTimer.isActive());
        m_fake.Advance(2000);
        QTRY_COMPARE_WITH_TIMEOUT(W().CurRow(), 7, 1000);
        QVERIFY(!S().TimerSText.isActive() && !S().TimerSText_SyncTimer.isActive());
        QCOMPARE(W().View()->TopRow(), 2); // mode 3: act - 5
        // a click on a row with a time plays from there
        const int h = W().View()->RowHeight();
        QTest::mouseClick(W().View(), Qt::LeftButton, {},
                          QPoint(W().View()->width() / 2, (8 - 2) * h + h / 2));
        QCOMPARE(W().CurRow(), 8);
        QCOMPARE(m_fake.log.back(), QStringLiteral("play 3000"));
        // a click on a blank row does nothing
        QTest::mouseClick(W().View(), Qt::LeftButton, {}, QPoint(W().View()->width() / 2, h / 2));
        QCOMPARE(W().CurRow(), 8);
        // pause by the pause field, and back
        QTest::mouseClick(W().lblSongtext_Pause, Qt::LeftButton);
        QVERIFY(W().Paused);
        QCOMPARE(W().lblSongtext_Pause->property("bgr").toInt(), PausedColor);
        QVERIFY(S().lblSText_ColorPause->isVisible());
        QVERIFY(!m_fake.Playing());
        QTest::mouseClick(W().lblSongtext_Pause, Qt::LeftButton);
        QVERIFY(!W().Paused && m_fake.Playing());
        // Ctrl+U pauses as the pause field does, number pad plus raises the editor's volume
        QTest::keyClick(&W(), Qt::Key_U, Qt::ControlModifier);
        QVERIFY(W().Paused);
        QTest::keyClick(&W(), Qt::Key_U, Qt::ControlModifier);
        QVERIFY(!W().Paused);
        S().sliderSText_Volume->setValue(50);
        QTest::keyClick(&W(), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(S().sliderSText_Volume->value(), 55);
        // Escape closes the window and stops the song
        QTest::keyClick(&W(), Qt::Key_Escape);
        QVERIFY(!W().isVisible());
        QVERIFY(!m_fake.IsOpen());
        QVERIFY(!Setting(Ini::SongtextLeft, Ini::Col2).isEmpty());
        QCOMPARE(Setting(Ini::SongtextHeight, Ini::Col2).toInt(), W().height());
    }

    void endTurnsIntoPlainList() {
        SetSettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1, false);
        StartWindow("[00:01.00]one\r\n[00:02.00]two\r\n[00:08.00]late\r\n", 10);
        m_fake.Advance(2100);
        QTRY_COMPARE_WITH_TIMEOUT(W().CurRow(), 7, 1000);
        // within a second of the end with a row left: the song ends, the row isn't shown
        m_fake.Advance(1000);
        W().SongTotal = 4000;
        QTRY_COMPARE_WITH_TIMEOUT(W().Tag, QString::fromLatin1(StaticTag), 1000);
        QVERIFY(W().isVisible());
        QVERIFY(W().View()->IsStatic());
        QVERIFY(!W().TimerSongtext_SyncTimer.isActive());
        QCOMPARE(W().CurRow(), 6);
        // in the plain list a click does nothing
        m_fake.log.clear();
        const int h = W().View()->RowHeight();
        QTest::mouseClick(W().View(), Qt::LeftButton, {}, QPoint(20, (7 - W().View()->TopRow()) * h + h / 2));
        QCOMPARE(W().CurRow(), 6);
        QVERIFY(m_fake.log.isEmpty());
        W().Popup_ManageSongtext();
        QVERIFY(!Menu("mnuSongtext_EditLrc")->isEnabled());
    }

    void closesWhenFinished() {
        SetSettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1, true);
        StartWindow("[00:01.00]one\r\n");
        m_fake.Close(); // the song stopped: position 0
        QTRY_VERIFY_WITH_TIMEOUT(!W().isVisible(), 1000);
    }

    void menuEntries() {
        StartWindow("[00:01.00]one\r\n[00:02.00]two\r\n");
        W().Popup_ManageSongtext();
        for (const char* name :
             {"mnuSongtext_Pause", "mnuSongtext_NextSong", "mnuSongtext_EditLrc", "mnuSongtext_AlwaysOnTop",
              "mnuSongtext_ShowTitle", "mnuSongtext_CloseWhenFinished", "mnuSongtext_NewDesign",
              "mnuSongtext_Exit"}) {
            QVERIFY2(Menu(name), name);
            QVERIFY2(!Menu(name)->text().isEmpty(), name);
        }
        // show title
        const bool title = SettingOn(Ini::SongtextShowTitle, Ini::Col1);
        Menu("mnuSongtext_ShowTitle")->trigger();
        QCOMPARE(SettingOn(Ini::SongtextShowTitle, Ini::Col1), !title);
        QCOMPARE(W().lblSongtext_Title->text().isEmpty(), title);
        // always on top
        const bool top = SettingOn(Ini::SongtextAlwaysOnTop, Ini::Col1);
        Menu("mnuSongtext_AlwaysOnTop")->trigger();
        QCOMPARE(bool(W().windowFlags() & Qt::WindowStaysOnTopHint), !top);
        // close when finished
        const bool fin = SettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1);
        Menu("mnuSongtext_CloseWhenFinished")->trigger();
        QCOMPARE(SettingOn(Ini::SongtextCloseWhenFinished, Ini::Col1), !fin);
        // no next song
        Menu("mnuSongtext_NextSong")->trigger();
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapNoNextSong));
        // a new design from the skin folder
        const QString skin = m_dir.filePath(QStringLiteral("x.scs"));
        ScrollSkin k = Skin(1);
        QVERIFY(SaveScrollSkin(skin, k, nullptr));
        W().chooseSkin = [skin](const QString&) { return skin; };
        Menu("mnuSongtext_NewDesign")->trigger();
        QCOMPARE(Setting(Ini::ScrollSkin, Ini::Col2), skin);
        QCOMPARE(W().View()->Skin().Mode, 1);
        QCOMPARE(W().View()->VisibleRows(), 3);
        // pause from the menu
        Menu("mnuSongtext_Pause")->trigger();
        QVERIFY(W().Paused);
        // edit: the rows go back to the editor, the window closes
        Menu("mnuSongtext_EditLrc")->trigger();
        QVERIFY(!W().isVisible());
        QCOMPARE(m_prg->window->TabInput->currentWidget(), &S());
        QCOMPARE(Grids::LbxSText().CellText(3, SText::ColText), QStringLiteral("one"));
        QCOMPARE(Grids::LbxSText().CellText(4, SText::ColMmss), QStringLiteral("00:02.00"));
    }

    void titleContrast() {
        StartWindow("[00:01.00]one\r\n");
        ScrollSkin k = Skin(3);
        k.WindowBack = 0xFFFFFF;
        W().ApplySkin(k);
        QCOMPARE(W().lblSongtext_Title->palette().color(QPalette::WindowText), QColor(Qt::black));
        k.WindowBack = 0x400000;
        W().ApplySkin(k);
        QCOMPARE(W().lblSongtext_Title->palette().color(QPalette::WindowText), QColor(Qt::white));
        // alignment 0 left, 2 centred, anything else keeps what the rows had
        k.Alignment = 0;
        W().ApplySkin(k);
        QVERIFY(W().View()->LeftAligned());
        k.Alignment = 5;
        W().ApplySkin(k);
        QVERIFY(W().View()->LeftAligned());
        k.Alignment = 2;
        W().ApplySkin(k);
        QVERIFY(!W().View()->LeftAligned());
    }

    // Each mode drawn to an image: every row's back colour is the one of the skin's table,
    // and a row whose words can be read has pixels in its text colour.
    void fiveModesDrawn_data() {
        QTest::addColumn<int>("mode");
        for (int m = 0; m < Modes; ++m)
            QTest::addRow("mode %d", m) << m;
        QTest::addRow("mode 7, unknown: rows unformatted") << 7;
    }
    void fiveModesDrawn() {
        QFETCH(int, mode);
        QString lrc;
        for (int i = 0; i < 30; ++i)
            lrc += QStringLiteral("[00:%1.00]Wordy line number %2\r\n")
                       .arg(i + 1, 2, 10, QLatin1Char('0'))
                       .arg(i);
        StartWindow(lrc.toUtf8(), 60);
        m_fake.Pause();
        const ScrollSkin k = Skin(mode);
        W().ApplySkin(k);
        const int act = 16;
        W().View()->SetAct(act);
        QCOMPARE(W().View()->VisibleRows(), ScrollVisibleRows(mode));
        const QImage img = W().View()->grab().toImage();
        const int h = W().View()->RowHeight();
        const int top = W().View()->TopRow();
        QCOMPARE(top, ScrollTopRow(mode, act));
        for (int i = 0; i < ScrollVisibleRows(mode); ++i) {
            const int row = top + i;
            const ScrollRowLook look = ScrollRowStyle(k, act, row);
            const int y = i * h + 1;
            QCOMPARE(img.pixelColor(1, y).rgb(), SkinColor(look.back).rgb());
            const QRgb fore = SkinColor(look.fore).rgb(), back = SkinColor(look.back).rgb();
            bool found = false, onlyBack = true;
            for (int yy = i * h; yy < (i + 1) * h; ++yy)
                for (int x = 0; x < img.width(); ++x) {
                    found = found || img.pixel(x, yy) == fore;
                    onlyBack = onlyBack && img.pixel(x, yy) == back;
                }
            if (look.fore == look.back)
                QVERIFY2(onlyBack, qPrintable(QStringLiteral("hidden row %1").arg(row)));
            else
                QVERIFY2(found, qPrintable(QStringLiteral("row %1").arg(row)));
        }
    }

    // A song with its LRC in the tag, from the main list; at its end the next marked song
    // of the data list follows; a song without LRC doesn't start the window.
    void fromSongInTheMainList() {
        QStringList songs;
        for (const char* name : {"a.mp3", "b.mp3"}) {
            const QString song =
                tagtest::CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QLatin1String(name));
            TagEngine e;
            QCOMPARE(e.OpenFile(song), 1);
            SetLrcFrame(e, QStringLiteral("[00:00.10]") + QLatin1String(name) +
                               QStringLiteral("\r\nplain\r\n[00:00.50]second\r\n"));
            QVERIFY(e.SaveV2(song));
            songs << song;
        }
        DataGrid& input = Grids::LbxInput();
        const int row = input.AddRow({});
        input.SetCellText(row, 1, QStringLiteral("p"));
        input.SetCellText(row, InCol::FileName, QStringLiteral("b.mp3"));
        input.SetCellText(row, InCol::Path, m_dir.path());
        m_prg->window->TabInput->setCurrentIndex(0);
        QVERIFY(W().StartFromSong(songs[0]));
        QVERIFY(W().isVisible());
        QVERIFY(!QFile::exists(AppFile(QStringLiteral("temp/LrcTmp.lrc"))));
        QCOMPARE(W().CurRow(), LeadRows);
        QCOMPARE(W().List().CellText(6, ColText), QStringLiteral("a.mp3"));
        QCOMPARE(W().List().CellText(7, ColText), QStringLiteral("second")); // "plain" had no stamp
        QCOMPARE(m_fake.OpenPath(), songs[0]);
        m_fake.Advance(200);
        QTRY_COMPARE_WITH_TIMEOUT(W().CurRow(), 6, 1000);
        m_fake.Close(); // the song stopped
        QTRY_COMPARE_WITH_TIMEOUT(m_fake.OpenPath(), songs[1], 1000);
        QCOMPARE(W().List().CellText(6, ColText), QStringLiteral("b.mp3"));
        QVERIFY(input.CellText(row, 1).isEmpty());
        QVERIFY(W().TimerSongtext_SyncTimer.isActive());
        // Escape in the main window closes it
        m_prg->window->activateWindow();
        QTest::keyClick(m_prg->window.get(), Qt::Key_Escape);
        QVERIFY(!W().isVisible());
        // no LRC in the tag
        const QString plain =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("c.mp3"));
        QVERIFY(!W().StartFromSong(plain));
        QVERIFY(W().AbortFlag);
        QVERIFY(!W().isVisible());
    }

    // The editor's song list with "In the scrolling window" and "Play after loading":
    // loading a song with LRC starts the window.
    void fromTheEditorsSongList() {
        QTemporaryDir own; // a folder with this one song
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), own.path(), QStringLiteral("s.mp3"));
        TagEngine e;
        QCOMPARE(e.OpenFile(song), 1);
        SetLrcFrame(e, QStringLiteral("[00:00.10]first\r\n[00:00.30]second\r\n\r\n"));
        QVERIFY(e.SaveV2(song));
        S().chooseFolder = [&own](const QString&, const QString&) { return own.path(); };
        S().TabSText_Sub->setCurrentIndex(2);
        Click(&S(), "chbSText_PlayLrc2");
        Click(&S(), "optSText_PlayInWindow");
        S().TabSText_Sub->setCurrentIndex(0);
        Click(&S(), "btnSText_FindSongWithLrc");
        DataGrid& songs = *S().LbxSongWithLrc->grid();
        QCOMPARE(songs.Rows(), 1);
        songs.SetCurRow(1);
        Click(&S(), "btnSText_LrcToList");
        QVERIFY(W().isVisible());
        QCOMPARE(m_fake.OpenPath(), song);
        QCOMPARE(W().List().CellText(6, ColText), QStringLiteral("first"));
        QVERIFY(!S().TimerSText.isActive() && !S().TimerSText_SyncTimer.isActive());
    }

    // The skin editor: mode, rows coloured through the boxes, font, alignment, bold boxes,
    // save (a name needed, ".scs" added once), open and delete; the file reads back equal.
    void skinEditor() {
        FrmScrollSettings f(nullptr, &m_prg->prompt);
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QCOMPARE(f.cmbScrollPrev_Feature->currentIndex(), 3);
        // mode 4 chosen by the keyboard
        f.cmbScrollPrev_Feature->setFocus();
        QTest::keyClick(f.cmbScrollPrev_Feature, Qt::Key_Down);
        QCOMPARE(f.Skin().Mode, 4);
        QVERIFY(!f.chbScrollTextPrev_RowTop1Bold->isEnabled());
        QTest::keyClick(f.cmbScrollPrev_Feature, Qt::Key_Up);
        QCOMPARE(f.Skin().Mode, 3);
        QVERIFY(f.chbScrollTextPrev_RowTop1Bold->isEnabled());
        // no box ticked
        QColor next(10, 20, 30);
        f.chooseColor = [&next](const QColor&) { return next; };
        Click(&f, "btnScrollPrev_ColorFloatingRow");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapNothingChosen));
        // rows 7 and 12 (table entries 2 and 6) get a text colour
        Click(&f, "chbScrollPrev_ColorRow(1)");
        Click(&f, "chbScrollPrev_ColorRow(6)");
        Click(&f, "optScrollPrev_RowForeColor");
        Click(&f, "btnScrollPrev_ColorFloatingRow");
        QCOMPARE(f.Skin().ForeTable[1], 0x1E140A);
        QCOMPARE(f.Skin().ForeTable[5], 0x1E140A);
        QCOMPARE(f.Skin().ForeTable[0], DefaultScrollSkin().ForeTable[0]);
        // the current row (box 5 in mode 3) gets a back colour
        Click(&f, "chbScrollPrev_ColorRow(1)");
        Click(&f, "chbScrollPrev_ColorRow(6)");
        Click(&f, "chbScrollPrev_ColorRow(5)");
        Click(&f, "optScrollPrev_RowBackColor");
        next = QColor(1, 2, 3);
        Click(&f, "btnScrollPrev_ColorFloatingRow");
        QCOMPARE(f.Skin().ActBack, 0x030201);
        // window back
        Click(&f, "optScrollPrev_Uf");
        next = QColor(0, 0, 255);
        Click(&f, "btnScrollPrev_Color");
        QCOMPARE(f.Skin().WindowBack, 0xFF0000);
        // a cancelled colour changes nothing
        next = QColor();
        Click(&f, "btnScrollPrev_Color");
        QCOMPARE(f.Skin().WindowBack, 0xFF0000);
        // font
        f.chooseFont = [](QFont& font) {
            font = QFont(QStringLiteral("Odd|Name"), 17);
            font.setItalic(true);
            return true;
        };
        Click(&f, "btnScrollPrev_Font");
        QCOMPARE(f.Skin().FontSize, 17);
        QCOMPARE(f.SliderScrollPrev_Fontsize->value(), 17);
        QVERIFY(f.Skin().FontItalic);
        f.chooseFont = [](QFont& font) {
            font = QFont(QStringLiteral("DejaVu Serif"), 18);
            return true;
        };
        Click(&f, "btnScrollPrev_Font");
        Click(&f, "optScrollPrev_Left");
        QCOMPARE(f.Skin().Alignment, 0);
        Click(&f, "chbScrollTextPrev_RowTop1Bold");
        QVERIFY(f.Skin().Top1Bold);
        Click(&f, "chbScrollTextPrev_RowActBold");
        QVERIFY(!f.Skin().ActBold);
        // save: a name is needed
        Click(&f, "btnScrollPrev_Save");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapNoSkinName));
        QTest::keyClicks(f.txtScrollPrev_Save, QStringLiteral("Mine"));
        Click(&f, "btnScrollPrev_Save");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapSkinSaved));
        const QString path = ScrollSkinFolder() + QStringLiteral("/Mine.scs");
        QVERIFY(LoadScrollSkin(path) == f.Skin());
        f.txtScrollPrev_Save->clear();
        QTest::keyClicks(f.txtScrollPrev_Save, QStringLiteral("Mine.SCS"));
        Click(&f, "btnScrollPrev_Save");
        QCOMPARE(QDir(ScrollSkinFolder()).entryList(QDir::Files).size(), 1);
        // open puts a skin into every control
        ScrollSkin other = Skin(2);
        QVERIFY(SaveScrollSkin(ScrollSkinFolder() + QStringLiteral("/Two.scs"), other, nullptr));
        QString pick = ScrollSkinFolder() + QStringLiteral("/Two.scs");
        f.chooseSkinFile = [&pick](const QString&, const QString&) { return pick; };
        Click(&f, "btnScrollPrev_OpenScs");
        QCOMPARE(f.cmbScrollPrev_Feature->currentIndex(), 2);
        QCOMPARE(f.Skin().BackTable[0], other.BackTable[0]);
        QVERIFY(!f.chbScrollTextPrev_RowTop1Bold->isEnabled());
        QVERIFY(f.chbScrollPrev_ColorRow[1]->isEnabled() && !f.chbScrollPrev_ColorRow[2]->isEnabled());
        // an unreadable file leaves the preview as it is
        pick = ScrollSkinFolder();
        Click(&f, "btnScrollPrev_OpenScs");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapReadFailed));
        QCOMPARE(f.Skin().Mode, 2);
        // delete, no question
        pick = ScrollSkinFolder() + QStringLiteral("/Two.scs");
        Click(&f, "btnScrollPrev_Delete");
        QVERIFY(!QFile::exists(pick));
        Click(&f, "btnScrollPrev_Close");
        QVERIFY(!f.isVisible());
    }

    // Pictures of the window in every mode with each skin of $QLT_SHOT_SKINS, and of the
    // skin editor, in German and English, into $QLT_SHOT_DIR (only when it is set).
    void pictures() {
        const QString out = qEnvironmentVariable("QLT_SHOT_DIR");
        if (out.isEmpty())
            QSKIP("QLT_SHOT_DIR not set");
        QStringList skins{QString()};
        const QDir skinDir(qEnvironmentVariable("QLT_SHOT_SKINS"));
        for (const QString& f : skinDir.entryList({QStringLiteral("*.scs")}, QDir::Files))
            skins << skinDir.filePath(f);
        QString lrc;
        for (int i = 0; i < 12; ++i)
            lrc += QStringLiteral("[00:%1.00]%2\r\n")
                       .arg(i * 2 + 1, 2, 10, QLatin1Char('0'))
                       .arg(Caption(CaptionRow(CapScrollSample + 3 + i)));
        StartWindow(lrc.toUtf8(), 60);
        m_fake.Pause();
        for (const int language : {3, 4}) {
            SetLanguageColumn(language);
            SetCaptions();
            for (const QString& skin : skins) {
                ScrollSkin k = skin.isEmpty() ? DefaultScrollSkin() : LoadScrollSkin(skin);
                const QString name = skin.isEmpty() ? QStringLiteral("builtin") : QFileInfo(skin).baseName();
                for (int mode = 0; mode < Modes; ++mode) {
                    k.Mode = mode;
                    W().ApplySkin(k);
                    W().View()->SetAct(11);
                    QApplication::processEvents();
                    W().grab().save(
                        QStringLiteral("%1/win_%2_m%3_%4.png").arg(out, name).arg(mode).arg(language));
                }
                FrmScrollSettings settings;
                settings.SetSkin(skin.isEmpty() ? DefaultScrollSkin() : LoadScrollSkin(skin));
                settings.show();
                QVERIFY(QTest::qWaitForWindowExposed(&settings));
                settings.grab().save(QStringLiteral("%1/set_%2_%3.png").arg(out, name).arg(language));
            }
        }
    }
};

QTEST_MAIN(TestFrmSongtext)
#include "test_frmsongtext.moc"
