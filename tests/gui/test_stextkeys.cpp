// The keys of the synchronising editor, each row of its tables sent as a user presses it:
// to the text LbxSText, to the two search lists, to a box of the editor, and from the
// scrolling window, which hands its keys to the editor.

#include "STextFixture.h"
#include "app/PlayerPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"

#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QToolButton>

using namespace SText;

namespace {
constexpr auto kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
} // namespace

class TestSTextKeys : public QObject {
    Q_OBJECT

    STextFixture f;

    QTableView* Text() { return f.S().LbxSText->table(); }
    // A stamped text with the current row 2 and the focus on the list.
    void StampedText() {
        f.Open(f.Write(QStringLiteral("k.lrc"), "[00:01.00]a\r\n[00:02.00]b\r\n[00:03.00]c\r\n"));
        f.ClickCell(2, ColText);
        Text()->setFocus();
    }
    // Sends the key to the list and returns the times of rows 1 to 3.
    QList<int> After(Qt::Key key, Qt::KeyboardModifiers mods, QWidget* to = nullptr) {
        QTest::keyClick(to ? to : Text(), key, mods);
        return {RowTime(f.L(), 1), RowTime(f.L(), 2), RowTime(f.L(), 3)};
    }
    // A song with stamps in the editor, ready to play.
    QString SongInEditor() {
        const QString song = f.Song(QStringLiteral("k.mp3"), QString());
        f.Open(f.Write(QStringLiteral("k.lrc"), QStringLiteral("%1\r\n[00:01.00]x\r\n").arg(song).toUtf8()));
        Text()->setFocus();
        return song;
    }

private slots:
    void init() { QVERIFY(f.Start()); }
    void cleanup() { f.Stop(); }

    void ctrlDigitsShiftForward() {
        StampedText();
        QCOMPARE(After(Qt::Key_1, Qt::ControlModifier), QList<int>({1000, 2200, 3000}));
        QCOMPARE(After(Qt::Key_2, Qt::ControlModifier), QList<int>({1000, 2700, 3000}));
        QCOMPARE(After(Qt::Key_3, Qt::ControlModifier), QList<int>({1000, 3700, 3000}));
        f.S().txtSText_TimeShiftP->setText(QStringLiteral("300"));
        QCOMPARE(After(Qt::Key_4, Qt::ControlModifier), QList<int>({1000, 4000, 3000}));
        QCOMPARE(f.prg->window->focusWidget(), Text());
    }

    void ctrlShiftDigitsShiftBack() {
        StampedText();
        f.S().chbSText_ShiftFromActRow->setChecked(true); // the rows below go along
        QCOMPARE(After(Qt::Key_1, kCtrlShift), QList<int>({1000, 1800, 2800}));
        QCOMPARE(After(Qt::Key_2, kCtrlShift), QList<int>({1000, 1300, 2300}));
        QCOMPARE(After(Qt::Key_3, kCtrlShift), QList<int>({1000, 300, 1300}));
        f.S().txtSText_TimeShiftM->setText(QStringLiteral("100"));
        QCOMPARE(After(Qt::Key_4, kCtrlShift), QList<int>({1000, 200, 1200}));
        // the characters of shifted digits on the keyboard count as the digits
        // a shift that ends at 0 leaves the rows below
        QCOMPARE(After(Qt::Key_Exclam, kCtrlShift), QList<int>({1000, 0, 1200}));
    }

    void keysFromABoxOfTheEditor() {
        StampedText();
        QCOMPARE(After(Qt::Key_1, Qt::ControlModifier, f.S().txtSText_TimeShiftP),
                 QList<int>({1000, 2200, 3000}));
    }

    void insertAndCtrlInsert() {
        f.Open(f.Write(QStringLiteral("i.txt"), "a\r\nb\r\nc\r\n"));
        f.ClickCell(2, ColText);
        QTest::keyClick(Text(), Qt::Key_Insert);
        QCOMPARE(f.L().CellText(3, ColText), QString());
        QCOMPARE(f.L().CellText(4, ColText), QStringLiteral("c"));
        QCOMPARE(f.L().CurRow(), 3);
        QTest::keyClick(Text(), Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(f.L().CellText(3, ColText), QString());
        QCOMPARE(f.L().CellText(4, ColText), QString());
        QCOMPARE(f.L().CellText(2, ColText), QStringLiteral("b"));
        QCOMPARE(f.L().CurRow(), 4);
        QTest::keyClick(Text(), Qt::Key_Insert, Qt::ShiftModifier); // not in the table
        QCOMPARE(f.L().CellText(5, ColText), QStringLiteral("c"));
        QCOMPARE(f.prg->window->focusWidget(), Text());
    }

    void numberPadVolume() {
        StampedText();
        QSlider* volume = f.S().sliderSText_Volume;
        volume->setValue(50);
        QTest::keyClick(Text(), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 55);
        QCOMPARE(f.fake.Volume(), 55);
        QTest::keyClick(Text(), Qt::Key_Minus, Qt::KeypadModifier);
        QTest::keyClick(Text(), Qt::Key_Minus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 45);
        volume->setValue(2);
        QTest::keyClick(Text(), Qt::Key_Minus, Qt::KeypadModifier);
        QCOMPARE(volume->value(), 0);          // clamped at the end
        QTest::keyClick(Text(), Qt::Key_Plus); // the plus of the main keys is not the pad's
        QCOMPARE(volume->value(), 0);
    }

    void shiftF1AndF2ChooseTheSubTab() {
        StampedText();
        f.Sub()->setCurrentIndex(2);
        QTest::keyClick(Text(), Qt::Key_F1, Qt::ShiftModifier);
        QCOMPARE(f.Sub()->currentIndex(), 0);
        QTest::keyClick(Text(), Qt::Key_F2, Qt::ShiftModifier);
        QCOMPARE(f.Sub()->currentIndex(), 1);
        QTest::keyClick(Text(), Qt::Key_F3, Qt::ShiftModifier); // not in the table
        QCOMPARE(f.Sub()->currentIndex(), 1);
    }

    void ctrlPUXRunThePlayerBar() {
        const QString song = SongInEditor();
        QCOMPARE(f.S().lblSText_ActSong->text(), song);
        QTest::keyClick(Text(), Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(f.S().MMCTag, QStringLiteral("playing"));
        QCOMPARE(f.fake.OpenPath(), song);
        QTest::keyClick(Text(), Qt::Key_U, Qt::ControlModifier);
        QCOMPARE(f.S().MMCTag, QStringLiteral("pause"));
        QVERIFY(f.S().lblSText_ColorPause->isVisible());
        QTest::keyClick(Text(), Qt::Key_U, Qt::ControlModifier);
        QCOMPARE(f.S().MMCTag, QStringLiteral("playing"));
        QTest::keyClick(Text(), Qt::Key_X, Qt::ControlModifier);
        QVERIFY(f.S().MMCTag.isEmpty());
        QVERIFY(!f.fake.IsOpen());
    }

    void ctrlEEjects() {
        SongInEditor();
        const QString other = f.Song(QStringLiteral("e.mp3"), QString());
        f.nextFile = other;
        QTest::keyClick(Text(), Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(f.fake.OpenPath(), other);
        QVERIFY(!f.S().lblSText_Time->text().startsWith(QStringLiteral("00:00 / 00:00 / 00:00")));
    }

    void escClosesTheScrollingWindow() {
        const QString song = f.Song(QStringLiteral("w.mp3"), QStringLiteral("[00:00.10]w\r\n\r\n"));
        QVERIFY(f.W().StartFromSong(song));
        QVERIFY(f.W().isVisible());
        f.prg->window->activateWindow();
        Text()->setFocus();
        QTest::keyClick(Text(), Qt::Key_Escape);
        QVERIFY(!f.W().isVisible());
    }

    void enterInTheSearchListsLoads() {
        f.Song(QStringLiteral("s.mp3"), QStringLiteral("[00:00.10]from the song\r\n\r\n"));
        f.FindSongs();
        f.Songs().SetCurRow(1);
        QTableView* songs = f.S().LbxSongWithLrc->table();
        songs->setFocus();
        QTest::keyClick(songs, Qt::Key_Return);
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("from the song"));
        QCOMPARE(f.prg->window->focusWidget(), Text());
        f.Write(QStringLiteral("t.lrc"), "[00:01.00]from the file\r\n");
        f.FindFiles();
        f.Files().SetCurRow(f.Files().FindRow(QStringLiteral("t.lrc"), TxtLrcCol::FileName));
        QTableView* files = f.S().LbxTxtLrc->table();
        files->setFocus();
        QTest::keyClick(files, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(f.L().CellText(1, ColText), QStringLiteral("from the file"));
        QCOMPARE(f.prg->window->focusWidget(), Text());
    }

    void scrollingWindowHandsItsKeysOn() {
        const QString song =
            f.Song(QStringLiteral("w.mp3"), QStringLiteral("[00:00.10]w\r\n[00:09.00]z\r\n"));
        QVERIFY(f.W().StartFromSong(song));
        // the editor is shown: the volume keys are its own
        f.S().sliderSText_Volume->setValue(40);
        QTest::keyClick(&f.W(), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(f.S().sliderSText_Volume->value(), 45);
        QTest::keyClick(&f.W(), Qt::Key_U, Qt::ControlModifier);
        QVERIFY(f.W().Paused);
        QTest::keyClick(&f.W(), Qt::Key_U, Qt::ControlModifier);
        QVERIFY(!f.W().Paused);
        // Ctrl+X stops: the window closes and the song with it
        QTest::keyClick(&f.W(), Qt::Key_X, Qt::ControlModifier);
        QVERIFY(!f.W().isVisible());
        QVERIFY(!f.fake.IsOpen());
        // the data list in front: the volume keys go to the data list's table (player tab)
        QVERIFY(f.W().StartFromSong(song));
        f.prg->window->TabInput->setCurrentIndex(0);
        PlayerPanel* player = f.prg->window->findChild<PlayerPanel*>();
        QVERIFY(player);
        f.S().sliderSText_Volume->setValue(40);
        QTest::keyClick(&f.W(), Qt::Key_Plus, Qt::KeypadModifier);
        QCOMPARE(f.S().sliderSText_Volume->value(), 40);
        f.W().close();
    }
};

QTEST_MAIN(TestSTextKeys)
#include "test_stextkeys.moc"
