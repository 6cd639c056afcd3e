// The synchronising editor, driven as a user would: a text opened and stamped by clicks in
// time with the song, a stamped text that runs along (a first stamp at row 1, two rows
// with one stamp, a row without a time), a seek by the slider, Ctrl+click, the shift
// buttons, refrain marks, saving to a file and into the song, the searches with the
// sequence of marked songs, the hand-over through synctemp.txt and the one device shared
// with the player of the data list. The device is the scripted FakeMediaDevice.

#include "GuiProgram.h"
#include "TagTestUtil.h"
#include "WavUtil.h"
#include "app/DataGridView.h"
#include "app/FrmSText.h"
#include "app/InputDataPage.h"
#include "app/PlayerPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "player/FakeMediaDevice.h"
#include "player/MediaDevice.h"
#include "player/modPlayer.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"
#include "text/modSText.h"
#include "text/modSTextFind.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

using namespace SText;

class TestFrmSText : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<GuiProgram> m_prg;
    FakeMediaDevice m_fake;
    QString m_nextFile; // what the next open dialog answers

    FrmSText& S() { return *m_prg->window->frmSText; }
    DataGrid& L() { return Grids::LbxSText(); }
    template <class T> T* Find(const char* name) {
        T* w = S().findChild<T*>(QString::fromLatin1(name));
        if (!w)
            qWarning("no control %s", name);
        return w;
    }
    void Click(const char* name) {
        auto* b = Find<QAbstractButton>(name);
        QVERIFY(b);
        QVERIFY(b->isEnabled());
        // a check box takes clicks on its box and its text, not on the space behind them
        if (qobject_cast<QCheckBox*>(b))
            QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
        else
            QTest::mouseClick(b, Qt::LeftButton);
    }
    QString Write(const QString& name, const QByteArray& bytes) {
        const QString path = m_dir.filePath(name);
        tagtest::WriteAll(path, bytes);
        return path;
    }
    // Opens a file with btnSText_OpenTxtLrC.
    void Open(const QString& path) {
        m_nextFile = path;
        Click("btnSText_OpenTxtLrC");
    }
    // Links a song with btnSText_SetLinkToSong.
    void Link(const QString& song) {
        m_nextFile = song;
        Click("btnSText_SetLinkToSong");
        QCOMPARE(Find<QLabel>("lblSText_ActSong")->text(), song);
    }
    QRect CellRect(int row, int col) {
        QTableView* t = S().LbxSText->table();
        t->scrollTo(t->model()->index(row - 1, col - 1));
        return t->visualRect(t->model()->index(row - 1, col - 1));
    }
    void ClickCell(int row, int col, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseClick(S().LbxSText->table()->viewport(), Qt::LeftButton, mods,
                          CellRect(row, col).center());
    }
    QString Song(const QString& name, double seconds) {
        const QString path = m_dir.filePath(name);
        WriteWav(path, seconds);
        return path;
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
        S().chooseFolder = [this](const QString&, const QString&) { return m_nextFile; };
        QVERIFY(QTest::qWaitForWindowExposed(m_prg->window.get()));
    }
    void cleanup() {
        m_fake.Close();
        m_prg.reset();
        SetMedia(nullptr);
    }

    void startsEmptyAndIdle() {
        QCOMPARE(L().Rows() >= BlankRows, true);
        QCOMPARE(S().TimerSText.interval(), 0);
        QCOMPARE(S().TimerSText_SyncTimer.interval(), 0);
        QVERIFY(!S().TimerSText.isActive());
        QCOMPARE(Find<QLabel>("lblSText_Time")->text(), QStringLiteral("00:00 / 00:00 / 00:00"));
        QVERIFY(!Find<QCheckBox>("chbSText_PlaySynchonized")->isEnabled());
        // the scrolling window is not there yet: its switches are off, not dead
        QVERIFY(!Find<QCheckBox>("chbSText_PlayWithScrollList")->isEnabled());
        QVERIFY(S().findChild<QPushButton*>(QStringLiteral("btnSText_PrintText")));
        Click("MMCSText_Play"); // no song
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapNoSongLoaded));
    }

    void stampByClicks() {
        Open(Write(QStringLiteral("plain.txt"), "one\r\ntwo\r\nthree\r\n"));
        QCOMPARE(L().CellText(2, ColText), QStringLiteral("two"));
        Link(Song(QStringLiteral("s.wav"), 20));
        QCOMPARE(L().CellText(1, ColText), m_dir.filePath(QStringLiteral("s.wav")));
        Click("MMCSText_Play");
        QCOMPARE(S().MMCTag, QStringLiteral("playing"));
        QCOMPARE(S().TimerSText.interval(), 1000);
        QVERIFY(S().TimerSText.isActive());
        Click("chbSText_SetTimeStamp");
        QVERIFY(Find<QCheckBox>("chbSText_SetTimeStamp")->isChecked());
        m_fake.Advance(1500);
        ClickCell(2, ColText);
        QCOMPARE(L().CellText(2, ColTimeMSec), QStringLiteral("00001500"));
        QCOMPARE(L().CellText(2, ColSeconds), QStringLiteral("2")); // 1.5 rounds half to even
        QCOMPARE(L().CellText(2, ColMmss), QStringLiteral("00:01.50"));
        QVERIFY(Find<QCheckBox>("chbSText_PlaySynchonized")->isEnabled()); // now it can run along
        // reaction time taken off
        QTest::keyClicks(Find<QLineEdit>("txtSText_TimeShiftM"), QStringLiteral("300"));
        m_fake.Advance(1000);
        ClickCell(3, ColText);
        QCOMPARE(L().CellText(3, ColTimeMSec), QStringLiteral("00002200"));
        QCOMPARE(L().Tag, QStringLiteral("edited"));
        // a click before the song's start clears the row's time
        Click("MMCSText_Stop");
        QCOMPARE(S().TimerSText.interval(), 0);
        ClickCell(3, ColText);
        QCOMPARE(L().CellText(3, ColTimeMSec), QString());
    }

    void runAlong() {
        Open(Write(QStringLiteral("run.lrc"),
                   "[00:01.00]a\r\n[00:02.00]b\r\n[00:02.00]c\r\nd\r\n[00:05.00]e\r\n"));
        QCOMPARE(S().RowOffset, 0);
        Link(Song(QStringLiteral("run.wav"), 20));
        QCOMPARE(L().CellText(1, ColText), m_dir.filePath(QStringLiteral("run.wav")));
        // the link moved the text one row down: the first stamp is now in row 2
        QVERIFY(Find<QCheckBox>("chbSText_PlaySynchonized")->isEnabled());
        Click("chbSText_PlaySynchonized");
        QElapsedTimer clock;
        clock.start();
        QMap<int, qint64> movedAt;
        const QMetaObject::Connection watch = connect(&L(), &DataGrid::currentRowChanged, this,
                                                      [&](int row) { movedAt[row] = clock.elapsed(); });
        const auto unwatch = qScopeGuard([&] { disconnect(watch); });
        Click("MMCSText_Play");
        QCOMPARE(S().TimerSText_SyncTimer.interval(), 100);
        QVERIFY(Find<QCheckBox>("chbSText_SyncMode")->isChecked());
        QCOMPARE(L().CurRow(), 1);
        QCOMPARE(S().NextStamp, 1000);
        m_fake.Advance(1000);
        QTRY_COMPARE_WITH_TIMEOUT(L().CurRow(), 2, 1000);
        m_fake.Advance(1000);
        QTRY_COMPARE_WITH_TIMEOUT(L().CurRow(), 4, 1000);
        // two rows with the same stamp: the second one tick after the first
        QVERIFY(movedAt.contains(3));
        QVERIFY2(movedAt[4] - movedAt[3] >= 80, qPrintable(QString::number(movedAt[4] - movedAt[3])));
        // row 5 has no time: the following ends, the playing goes on
        QTRY_COMPARE_WITH_TIMEOUT(S().TimerSText_SyncTimer.interval(), 0, 1000);
        QVERIFY(!Find<QCheckBox>("chbSText_SyncMode")->isChecked());
        QCOMPARE(L().CurRow(), 4);
        m_fake.Advance(5000);
        QTest::qWait(250);
        QCOMPARE(L().CurRow(), 4);
        QCOMPARE(S().MMCTag, QStringLiteral("playing"));
    }

    void firstStampAtRowOne() {
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("one.mp3"));
        Open(Write(QStringLiteral("first.lrc"), "[00:00.50]a\r\n[00:00.80]b\r\n"));
        m_nextFile = song;
        Click("MMCSText_Eject");
        QCOMPARE(Find<QLabel>("lblSText_ActSong")->text(), song);
        Click("chbSText_PlaySynchonized");
        Click("MMCSText_Play");
        QCOMPARE(L().CurRow(), 0); // until the stamp's time passes
        QTest::qWait(250);
        QCOMPARE(L().CurRow(), 0);
        m_fake.Advance(500);
        QTRY_COMPARE_WITH_TIMEOUT(L().CurRow(), 1, 1000);
    }

    void seekForwardBySlider() {
        Open(Write(QStringLiteral("seek.lrc"),
                   "[00:01.00]a\r\n[00:02.00]b\r\n[00:06.00]c\r\n[00:08.00]d\r\n[00:09.00]e\r\n"));
        Link(Song(QStringLiteral("seek.wav"), 12));
        Click("chbSText_PlaySynchonized");
        Click("MMCSText_Play");
        auto* slider = Find<QSlider>("sliderSText_sldLength");
        QCOMPARE(slider->maximum(), 12);
        // drag the handle to 5 s, as a user would
        QStyleOptionSlider opt;
        opt.initFrom(slider);
        opt.orientation = Qt::Horizontal;
        opt.minimum = slider->minimum();
        opt.maximum = slider->maximum();
        opt.sliderPosition = slider->value();
        opt.sliderValue = slider->value();
        const QRect handle =
            slider->style()->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, slider);
        const QRect groove =
            slider->style()->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, slider);
        const int span = groove.width() - handle.width();
        const int x = groove.left() + handle.width() / 2 + QStyle::sliderPositionFromValue(0, 12, 5, span);
        QTest::mousePress(slider, Qt::LeftButton, {}, handle.center());
        QVERIFY(m_fake.log.contains(QStringLiteral("pause")));
        QCOMPARE(S().TimerSText.interval(), 0);
        QMouseEvent move(QEvent::MouseMove, QPointF(x, handle.center().y()),
                         slider->mapToGlobal(QPointF(x, handle.center().y())), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(slider, &move);
        QCOMPARE(slider->value(), 5);
        QTest::mouseRelease(slider, Qt::LeftButton, {}, QPoint(x, handle.center().y()));
        QCOMPARE(m_fake.log.last(), QStringLiteral("play 5000"));
        QCOMPARE(S().TimerSText.interval(), 1000);
        // the row before the first later stamp (row 4 at 6 s, after the link in row 1)
        QCOMPARE(S().NextStamp, 6000);
        QCOMPARE(L().CurRow(), 3);
        QCOMPARE(S().TimerSText_SyncTimer.interval(), 100);
    }

    void ctrlClickJumpsBack() {
        Open(Write(QStringLiteral("jump.lrc"), "[00:01.00]a\r\n[00:03.00]b\r\n"));
        Link(Song(QStringLiteral("jump.wav"), 10));
        Click("chbSText_PlaySynchonized");
        Click("MMCSText_Play");
        m_fake.log.clear();
        ClickCell(2, ColText, Qt::ControlModifier); // the row at 1000 ms
        QCOMPARE(m_fake.log, QStringList{QStringLiteral("play -1000")});
    }

    void shiftButtons() {
        Open(Write(QStringLiteral("shift.lrc"), "[00:00.50]a\r\nb\r\n[00:03.00]c\r\n"));
        ClickCell(1, ColText);
        Click("btnSText_Shiftm(2)"); // -  1000
        QCOMPARE(RowTime(L(), 1), -500);
        QCOMPARE(L().CellText(1, ColMmss), QStringLiteral("-01:59.50"));
        Click("chbSText_ShiftFromActRow");
        ClickCell(2, ColText);
        Click("btnSText_Shiftp(0)"); // an unstamped row is stamped at 0 ...
        QCOMPARE(L().CellText(2, ColTimeMSec), QStringLiteral("00000000"));
        QCOMPARE(RowTime(L(), 3), 3000); // ... and the rows below stay
        ClickCell(1, ColText);
        QTest::keyClicks(Find<QLineEdit>("txtSText_TimeShiftP"), QStringLiteral("1500"));
        Click("btnSText_Shiftp(3)");
        QCOMPARE(RowTime(L(), 1), 1000);
        QCOMPARE(RowTime(L(), 2), 1500); // a row stamped at 0 is a timed row
        QCOMPARE(RowTime(L(), 3), 4500);
    }

    void refrainMarksAndInsert() {
        QByteArray text;
        for (int i = 1; i <= 17; ++i)
            text += "line " + QByteArray::number(i) + "\r\n";
        Open(Write(QStringLiteral("rf.txt"), text));
        for (int r = 1; r <= 15; ++r)
            ClickCell(r, ColRefrain);
        QCOMPARE(RefrainRows(L()).size(), 15); // the 15th is taken
        const auto before = m_prg->prompt.shown.size();
        ClickCell(16, ColRefrain);
        QCOMPARE(RefrainRows(L()).size(), 15); // the 16th is refused
        QCOMPARE(m_prg->prompt.shown.size(), before + 1);
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapTooManyRefrains));
        Click("btnSText_Remove_Rf");
        QVERIFY(RefrainRows(L()).isEmpty());
        // Insert adds a row after the current one, Ctrl+Insert before it
        ClickCell(2, ColText);
        QTest::keyClick(S().LbxSText->table(), Qt::Key_Insert);
        QCOMPARE(L().CellText(3, ColText), QString());
        QCOMPARE(L().CellText(4, ColText), QStringLiteral("line 3"));
        for (int r = 1; r <= L().Rows(); ++r)
            QCOMPARE(L().RowKey(r), QString::number(r));
    }

    void saveFileAndSong() {
        const QString song =
            tagtest::CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QStringLiteral("save.mp3"));
        Open(Write(QStringLiteral("in.lrc"), "[00:01.00] Hallo \r\nWelt \r\n"));
        const QString out = m_dir.filePath(QStringLiteral("out"));
        bool offeredLrc = false;
        S().chooseSaveFile = [&](const QString&, const QString& name, bool* lrc) {
            offeredLrc = *lrc;
            return name == u"in" ? out : QString();
        };
        Click("btnSText_Save_Txt");
        QVERIFY(offeredLrc); // the text has stamps: LRC is offered first
        QCOMPARE(tagtest::ReadAll(out + QStringLiteral(".lrc")), QByteArray("[00:01.00]Hallo\r\nWelt \r\n"));
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapFileSaved));
        QCOMPARE(Find<QLabel>("lblSText_ActText")->text(), out + QStringLiteral(".lrc"));
        m_nextFile = song;
        Click("btnSText_Save_InSong"); // no song linked: the dialog asks for one
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapLrcSavedInSong));
        TagEngine e;
        QCOMPARE(e.OpenFile(song), 1);
        QVERIFY(LrcFrameText(e).startsWith(QStringLiteral("[00:01.00] Hallo \r\nWelt \r\n\r\n")));
        // found again by the search, read back from the song, removed
        m_nextFile = m_dir.path();
        Find<QTabWidget>("TabSText_Sub")->setCurrentIndex(0);
        Click("btnSText_FindSongWithLrc");
        DataGrid& songs = *S().LbxSongWithLrc->grid();
        QCOMPARE(songs.Rows(), 1);
        QCOMPARE(songs.CellText(1, SongLrcCol::FileName), QStringLiteral("save.mp3"));
        Click("btnSText_LrcToList");
        QCOMPARE(L().CellText(1, ColText), QStringLiteral(" Hallo "));
        QCOMPARE(Find<QLabel>("lblSText_ActSong")->text(), song);
        QCOMPARE(Find<QLabel>("lblSText_ActText")->text(), Caption(CapTextWithoutFile));
        songs.SetCurRow(1);
        m_prg->prompt.answers.push_back(true);
        Click("btnSText_RemoveLrcFromSong");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapLrcRemoved));
        QCOMPARE(e.OpenFile(song), 1);
        QCOMPARE(LrcFrameIndex(e), 0);
        QVERIFY(Find<QLabel>("lblSText_ActText")->text().isEmpty());
    }

    void sequenceOfMarkedSongs() {
        // two songs with LRC, both marked: the end of the first starts the second
        for (const char* name : {"a.mp3", "b.mp3"}) {
            const QString song =
                tagtest::CopyFixture(QStringLiteral("tone.mp3"), m_dir.path(), QLatin1String(name));
            TagEngine e;
            QCOMPARE(e.OpenFile(song), 1);
            SetLrcFrame(e, QStringLiteral("[00:00.10]") + QLatin1String(name) + QStringLiteral("\r\n\r\n"));
            QVERIFY(e.SaveV2(song));
        }
        m_nextFile = m_dir.path();
        Find<QTabWidget>("TabSText_Sub")->setCurrentIndex(0);
        Click("btnSText_FindSongWithLrc");
        DataGrid& songs = *S().LbxSongWithLrc->grid();
        QCOMPARE(songs.Rows(), 2);
        songs.SetCurRow(1);
        QTest::mouseClick(S().LbxSongWithLrc->table()->viewport(), Qt::LeftButton, {},
                          S().LbxSongWithLrc->table()
                              ->visualRect(S().LbxSongWithLrc->table()->model()->index(1, 0))
                              .center());
        QCOMPARE(songs.CellText(2, SongLrcCol::Mark), QStringLiteral("p"));
        Find<QTabWidget>("TabSText_Sub")->setCurrentIndex(2);
        Click("chbSText_PlayLrc2");
        Find<QTabWidget>("TabSText_Sub")->setCurrentIndex(0);
        songs.SetCurRow(1);
        Click("btnSText_LrcToList");
        QCOMPARE(S().MMCTag, QStringLiteral("playing"));
        QCOMPARE(L().CellText(1, ColText), QStringLiteral("a.mp3"));
        QCOMPARE(songs.CurRow(), 0); // no row stays highlighted
        m_fake.length = S().SongLength;
        m_fake.Advance(S().SongLength);
        QTRY_COMPARE_WITH_TIMEOUT(L().CellText(1, ColText), QStringLiteral("b.mp3"), 2500);
        QCOMPARE(songs.CellText(2, SongLrcCol::Mark), QString());
        QCOMPARE(m_fake.OpenPath(), m_dir.filePath(QStringLiteral("b.mp3")));
    }

    void handOverThroughSyncTemp() {
        QVERIFY(tagtest::WriteAll(m_prg->folder.file(QStringLiteral("temp/synctemp.txt")),
                                  "[00:01.00]x\r\ny\r\n"));
        QVERIFY(S().OpenSyncTemp());
        QCOMPARE(L().CellText(1, ColTimeMSec), QStringLiteral("1000"));
        QCOMPARE(Find<QLabel>("lblSText_ActText")->text(), Caption(CapTextWithoutFile));
        QVERIFY(!QFile::exists(m_prg->folder.file(QStringLiteral("temp/synctemp.txt"))));
    }

    void oneDeviceForBothPlayers() {
        Open(Write(QStringLiteral("dev.lrc"), "[00:01.00]a\r\n[00:02.00]b\r\n"));
        Link(Song(QStringLiteral("dev.wav"), 10));
        Click("MMCSText_Play");
        QVERIFY(S().TimerSText.isActive());
        // the player of the data list takes the device: the editor lets go
        const QString other = Song(QStringLiteral("list.wav"), 10);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = QStringLiteral("list.wav");
        cells[InCol::Path - 1] = m_dir.path();
        Grids::LbxInput().AddRow(cells);
        Grids::LbxInput().SetCurRow(1);
        m_prg->window->TabInput->setCurrentIndex(0);
        QVERIFY(InputDataPage::SelectSubTab(m_prg->window->pageData->TabInput1_Sub2, SubTab::Player));
        QTest::mouseClick(m_prg->window->playerPanel->MMC_Play, Qt::LeftButton);
        QCOMPARE(m_fake.OpenPath(), other);
        m_prg->window->TabInput->setCurrentWidget(&S());
        QVERIFY(!S().TimerSText.isActive());
        QVERIFY(S().MMCTag.isEmpty());
        // the editor's Stop does not close the other's song
        Click("MMCSText_Stop");
        QVERIFY(m_fake.IsOpen());
        // and back: the editor plays, the data list's player rests
        Click("MMCSText_Play");
        QCOMPARE(m_fake.OpenPath(), m_dir.filePath(QStringLiteral("dev.wav")));
        QVERIFY(!m_prg->window->playerPanel->Player().TimerSequenz.isActive());
        QVERIFY(!m_prg->window->playerPanel->Player().IsOpen());
    }

    void pauseAndResume() {
        Open(Write(QStringLiteral("pause.lrc"), "[00:01.00]a\r\n[00:02.00]b\r\n[00:03.00]c\r\n"));
        Link(Song(QStringLiteral("pause.wav"), 10));
        Click("chbSText_PlaySynchonized");
        Click("MMCSText_Play");
        auto* pauseLabel = Find<QLabel>("lblSText_ColorPause");
        QVERIFY(pauseLabel->isHidden());
        Click("MMCSText_Pause");
        QCOMPARE(S().MMCTag, QStringLiteral("pause"));
        QVERIFY(!pauseLabel->isHidden());
        QCOMPARE(S().TimerSText_SyncTimer.interval(), 0);
        QCOMPARE(m_fake.log.last(), QStringLiteral("pause"));
        Click("MMCSText_Pause");
        QCOMPARE(S().MMCTag, QStringLiteral("playing"));
        QVERIFY(pauseLabel->isHidden());
        QCOMPARE(m_fake.log.last(), QStringLiteral("resume"));
        QCOMPARE(S().TimerSText_SyncTimer.interval(), 100);
        QCOMPARE(S().NextStamp, 1000); // row 2 (after the link) is at or after the slider's time
        QCOMPARE(L().CurRow(), 1);
    }

    void editWordsWithTranslationMark() {
        Open(Write(QStringLiteral("tr.txt"), "Guten Abend\r\nzweite\r\n"));
        QTableView* t = S().LbxSText->table();
        // the time columns are not edited by hand
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, {}, CellRect(1, ColMmss).center());
        QVERIFY(!qobject_cast<QLineEdit*>(QApplication::focusWidget()));
        Click("chbSText_Translation");
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, {}, CellRect(1, ColText).center());
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("Guten Abend**"));
        QTest::keyClicks(editor, QStringLiteral(" Good evening"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the delegate commits through the event queue
        QCOMPARE(L().CellText(1, ColText), QStringLiteral("Guten Abend** Good evening"));
        QCOMPARE(L().Tag, QStringLiteral("edited"));
        m_prg->prompt.answers.push_back(true);
        Click("btnSText_Translation");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapTranslationQuestion));
        QCOMPARE(L().CellText(1, ColText), QStringLiteral("Good evening"));
        QCOMPARE(L().CellText(2, ColText), QStringLiteral("zweite"));
        Click("btnSText_Translation"); // no mark left
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapNoTranslationMark));
    }

    void volumeKeysOfTheNumberPad() {
        auto* volume = Find<QSlider>("sliderSText_Volume");
        QTest::mouseClick(volume, Qt::LeftButton); // the slider takes the focus ...
        volume->setValue(50);
        S().LbxSText->table()->setFocus();
        QTest::keyClick(S().LbxSText->table(), Qt::Key_Plus,
                        Qt::KeypadModifier); // ... the keys work from the list
        QCOMPARE(volume->value(), 55);
        QCOMPARE(m_fake.Volume(), 55);
        QCOMPARE(Find<QLabel>("lblSText_Volume")->text(), QStringLiteral("55%"));
        volume->setValue(98);
        QTest::keyClick(S().LbxSText->table(), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 100); // clamped at the end
        QTest::keyClick(S().LbxSText->table(), Qt::Key_Minus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 95);
    }

    void clearAndEraseAsk() {
        Open(Write(QStringLiteral("clear.lrc"), "[00:01.00]a\r\n"));
        m_prg->prompt.answers.push_back(false);
        Click("btnSText_EraseTimestamps");
        QCOMPARE(m_prg->prompt.shown.back().text, Caption(CapEraseTimestampsQuestion));
        QCOMPARE(RowTime(L(), 1), 1000);
        m_prg->prompt.answers.push_back(true);
        Click("btnSText_EraseTimestamps");
        QVERIFY(!RowHasTime(L(), 1));
        m_prg->prompt.answers.push_back(true);
        Click("btnSText_ClearText");
        QCOMPARE(L().Rows(), BlankRows);
        QCOMPARE(LastSTextRow(L()), 0);
        QVERIFY(Find<QLabel>("lblSText_ActText")->text().isEmpty());
    }
};

QTEST_MAIN(TestFrmSText)
#include "test_frmstext.moc"
