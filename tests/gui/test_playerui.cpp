// The player tab of the data area, driven as a user would: the button bar, the lamps and
// the time line, a song that can't be played, the switches of a run, the volume image,
// and a mark run with a sign button. The device is libmpv with the null audio output.

#include "GuiProgram.h"
#include "WavUtil.h"
#include "app/DataGridView.h"
#include "app/FrmInput.h"
#include "app/InputDataPage.h"
#include "app/PlayerPanel.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "platform/mpv/MpvDevice.h"
#include "player/MediaDevice.h"
#include "player/modPlayer.h"

#include <QCheckBox>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

class TestPlayerUi : public QObject {
    Q_OBJECT

    QTemporaryDir m_songs;
    std::unique_ptr<GuiProgram> m_prg;

    FrmInput& W() { return *m_prg->window; }
    template <class T> T* Find(const char* name) {
        T* w = W().findChild<T*>(QString::fromLatin1(name));
        if (!w)
            qWarning("no control %s", name);
        return w;
    }
    void Click(const char* name) {
        auto* b = Find<QAbstractButton>(name);
        QVERIFY(b);
        QTest::mouseClick(b, Qt::LeftButton);
    }
    void AddSong(const QString& name, double seconds) {
        if (seconds >= 0)
            QVERIFY(WriteWav(m_songs.filePath(name), seconds));
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Path - 1] = m_songs.path();
        Grids::LbxInput().AddRow(cells);
    }
    bool Lit(const char* lamp) { return Find<QLabel>(lamp)->property("lit").toBool(); }
    void ShowPlayerTab() {
        QVERIFY(InputDataPage::SelectSubTab(W().pageData->TabInput1_Sub2, SubTab::Player));
    }

private slots:
    void initTestCase() {
        UseMpvMedia();
        SetDefaultAudioOutput(QStringLiteral("null"));
    }

    void init() {
        m_prg = std::make_unique<GuiProgram>();
        // Sign 3 is "***" (lbxSign, row 4, column 4).
        QVERIFY(m_prg->Start({{{Ini::SignFirst + 3, Ini::SignCol}, QStringLiteral("***")}}));
        W().show();
        ShowPlayerTab();
    }
    void cleanup() {
        Media().Close();
        m_prg.reset();
    }

    // The loudspeaker pictures are drawn by the build beside the program.
    void volumePicturesBesideTheProgram() {
        for (const char* name : {"/icons/VolOn.ico", "/icons/VolOff.ico"}) {
            QImageReader reader(ProgramDir() + QLatin1String(name));
            const QImage img = reader.read();
            QVERIFY2(!img.isNull(), qPrintable(reader.errorString()));
            QCOMPARE(img.size(), QSize(32, 32));
        }
    }

    void playPauseStop() {
        AddSong(QStringLiteral("one.wav"), 3);
        Grids::LbxInput().SetCurRow(1);
        QCOMPARE(Find<QLabel>("lblTab1_WinampTime")->text(), QStringLiteral("00:00 / 00:00 / 00:00"));
        Click("MMC_Play");
        QVERIFY(Media().IsOpen());
        QVERIFY(Lit("lblTab1_ColorPlay"));
        QVERIFY(!Lit("lblTab1_ColorPause"));
        QCOMPARE(Find<QLabel>("lblTab1_ActSong")->text(), QStringLiteral("one.wav"));
        QCOMPARE(Find<QSlider>("sliderTab1_sldLength")->maximum(), 3);
        QTRY_VERIFY_WITH_TIMEOUT(
            Find<QLabel>("lblTab1_WinampTime")->text().startsWith(u"00:03 - 003 / 00:01"), 2500);
        Click("MMC_Pause");
        QVERIFY(!Lit("lblTab1_ColorPlay"));
        QVERIFY(Lit("lblTab1_ColorPause"));
        Click("MMC_Pause");
        QVERIFY(Lit("lblTab1_ColorPlay"));
        Click("MMC_Stop");
        QVERIFY(!Media().IsOpen());
        QVERIFY(!Lit("lblTab1_ColorPlay"));
        QCOMPARE(Find<QLabel>("lblTab1_WinampTime")->text(), QStringLiteral("00:00 / 00:00 / 00:00"));
        QVERIFY(Find<QLabel>("lblTab1_ActSong")->text().isEmpty());
    }

    void emptyListTellsOnPlay() {
        Click("MMC_Play");
        QCOMPARE(m_prg->prompt.Count(QStringLiteral("tell")), 1);
    }

    void songThatCannotBePlayedTells() {
        AddSong(QStringLiteral("gone.mp3"), -1);
        Grids::LbxInput().SetCurRow(1);
        Click("MMC_Play");
        QCOMPARE(m_prg->prompt.Count(QStringLiteral("tell")), 1);
        QVERIFY(m_prg->prompt.LastText().contains(QStringLiteral("mp3")));
        QVERIFY(!Media().IsOpen());
    }

    void nextAndPrevMoveTheRow() {
        AddSong(QStringLiteral("a.wav"), 2);
        AddSong(QStringLiteral("b.wav"), 2);
        Grids::LbxInput().SetCurRow(1);
        Click("MMC_Prev"); // row 1: plays row 1 again
        QCOMPARE(Grids::LbxInput().CurRow(), 1);
        QVERIFY(Media().IsOpen());
        Click("MMC_Next");
        QCOMPARE(Grids::LbxInput().CurRow(), 2);
        QCOMPARE(Find<QLabel>("lblTab1_ActSong")->text(), QStringLiteral("b.wav"));
        Click("MMC_Next"); // the last row: stopped
        QVERIFY(!Media().IsOpen());
        QCOMPARE(Grids::LbxInput().CurRow(), 2);
    }

    void autoPlayShowsTheRunControls() {
        auto* skip = Find<QPushButton>("btnTab1_SkipPlus");
        QVERIFY(!skip->isVisible());
        auto* withChange = Find<QCheckBox>("chbTab1_PlayWithChange");
        QTest::mouseClick(withChange, Qt::LeftButton);
        QVERIFY(withChange->isChecked());
        QCOMPARE(Setting(Ini::PlayWithChange, Ini::Col1), QStringLiteral("1"));
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        QVERIFY(skip->isVisible());
        QVERIFY(Find<QLineEdit>("txtTab1_SkipSec")->isVisible());
        QVERIFY(!withChange->isChecked());
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        QVERIFY(!skip->isVisible());
    }

    void skipSecondsAndPiecesAreStored() {
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        auto* box = Find<QLineEdit>("txtTab1_SkipSec");
        box->setFocus();
        QTest::keyClicks(box, QStringLiteral("5"));
        QCOMPARE(Setting(Ini::SkipSec, Ini::Col1), QStringLiteral("5"));
        auto* seq = Find<QLineEdit>("txtTab1_Sequenztime(1)");
        QVERIFY(!seq->isEnabled());
        QTest::mouseClick(Find<QCheckBox>("chbTab1_UseSequenztime"), Qt::LeftButton);
        QVERIFY(seq->isEnabled());
        QVERIFY(Find<QPushButton>("btnTab1_GoFwd")->isEnabled());
        QTest::keyClicks(seq, QStringLiteral("12"));
        QCOMPARE(Setting(Ini::SequenceTimeFirst + 1, Ini::Col1), QStringLiteral("12"));
    }

    void playWithChangePlaysTheNewRow() {
        AddSong(QStringLiteral("a.wav"), 2);
        AddSong(QStringLiteral("b.wav"), 2);
        Grids::LbxInput().SetCurRow(1);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_PlayWithChange"), Qt::LeftButton);
        QTableView* table = W().pageData->LbxInput->table();
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Down);
        QCOMPARE(Grids::LbxInput().CurRow(), 2);
        QVERIFY(Media().IsOpen());
        QCOMPARE(Find<QLabel>("lblTab1_ActSong")->text(), QStringLiteral("b.wav"));
    }

    void volumeImageMutes() {
        auto* slider = Find<QSlider>("sliderTab1_WinampVolume");
        auto* img = Find<QToolButton>("imgTab1_WinampVolume");
        slider->setValue(60);
        QCOMPARE(Media().Volume(), 60);
        QTest::mouseClick(img, Qt::LeftButton);
        QCOMPARE(img->property("state").toString(), QStringLiteral("OFF"));
        QCOMPARE(Media().Volume(), 0);
        slider->setValue(30); // while muted the device stays at 0
        QCOMPARE(Media().Volume(), 0);
        QTest::mouseClick(img, Qt::LeftButton);
        QCOMPARE(img->property("state").toString(), QStringLiteral("ON"));
        QCOMPARE(Media().Volume(), 60);
        QCOMPARE(slider->value(), 60);
    }

    void markRunOverFiveRows() {
        for (int i = 1; i <= 5; ++i)
            AddSong(QStringLiteral("song %1.wav").arg(i), 2);
        AddSong(QStringLiteral("gone.mp3"), -1);
        Grids::LbxInput().SetCurRow(1);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        Click("MMC_Play");
        QVERIFY(Media().IsOpen());
        // The sign buttons are on the player tab during the run.
        auto* sign3 = Find<QPushButton>("btnTab1_Sign(3)");
        QVERIFY(Find<QWidget>("pagTab1_Player")->isAncestorOf(sign3));
        QVERIFY(sign3->isVisible());
        QVERIFY(Find<QWidget>("btnTab1_SetFTagActRow")->isVisible());
        for (int i = 1; i <= 5; ++i) {
            QCOMPARE(Grids::LbxInput().CurRow(), i);
            Click("btnTab1_Sign(3)");
        }
        for (int i = 1; i <= 5; ++i)
            QCOMPARE(Grids::LbxInput().CellText(i, InCol::FTag), QStringLiteral("***"));
        // The run went on over the song that can't be played and ended at the last row.
        QCOMPARE(Grids::LbxInput().CellText(6, InCol::FTag), QStringLiteral("_#-/->"));
        QVERIFY(!Media().IsOpen());
        QCOMPARE(m_prg->prompt.Count(QStringLiteral("tell")), 0);
        QVERIFY(!Grids::LbxInput().IsLocked());
        // After the run the sign buttons go back to the marks tab.
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        QVERIFY(Find<QWidget>("pagTab1_Marks")->isAncestorOf(sign3));
        QVERIFY(!Find<QWidget>("pagTab1_Player")->isAncestorOf(sign3));
    }

    // With the mark of the previous row the sign goes to the row above and the song plays on.
    void signToThePreviousRowDuringARun() {
        for (int i = 1; i <= 3; ++i)
            AddSong(QStringLiteral("p%1.wav").arg(i), 3);
        Grids::LbxInput().SetCurRow(2);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        Find<QCheckBox>("chbTab1_SignPreviousRow")->setChecked(true);
        Click("MMC_Play");
        Click("btnTab1_Sign(3)");
        QCOMPARE(Grids::LbxInput().CellText(1, InCol::FTag), QStringLiteral("***"));
        QVERIFY(Grids::LbxInput().CellText(2, InCol::FTag).isEmpty());
        QCOMPARE(Grids::LbxInput().CurRow(), 2);
        QVERIFY(Media().IsOpen());
        Click("MMC_Stop");
        Find<QCheckBox>("chbTab1_SignPreviousRow")->setChecked(false);
    }

    // The keys of the player tab: a step, half a step, back.
    void skipKeysAndTheHalfStep() {
        AddSong(QStringLiteral("long.wav"), 20);
        Grids::LbxInput().SetCurRow(1);
        auto* secs = Find<QLineEdit>("txtTab1_SkipSec");
        secs->clear();
        QTest::keyClicks(secs, QStringLiteral("8"));
        Click("MMC_Play");
        QVERIFY(Media().IsOpen());
        Click("MMC_Pause"); // paused, so that the positions are exact
        QWidget* list = W().pageData->LbxInput->table();
        list->setFocus();
        W().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&W()));
        // Each key moves the position on from where it was (the song plays on after a jump).
        auto step = [&](Qt::Key key, Qt::KeyboardModifiers mods, qint32 by) {
            const qint32 before = Media().Position();
            QTest::keyClick(list, key, mods);
            QTRY_VERIFY2(std::abs(Media().Position() - (before + by)) < 600,
                         qPrintable(QStringLiteral("%1 -> %2").arg(before).arg(Media().Position())));
        };
        step(Qt::Key_Plus, Qt::ControlModifier | Qt::AltModifier, 4000);
        step(Qt::Key_Plus, Qt::ControlModifier, 8000);
        step(Qt::Key_Minus, Qt::ControlModifier | Qt::AltModifier, -4000);
        QTest::keyClick(list, Qt::Key_X, Qt::ControlModifier); // Stop
        QVERIFY(!Media().IsOpen());
    }

    void randomButtonMarksASample() {
        for (int i = 1; i <= 6; ++i)
            AddSong(QStringLiteral("r%1.wav").arg(i), -1);
        m_prg->prompt.inputs.push_back(QStringLiteral("2"));
        Click("btnTab1_Random");
        QCOMPARE(m_prg->prompt.Count(QStringLiteral("input")), 1);
        QCOMPARE(m_prg->prompt.shown.back().title, Caption(CapMarkRowsTitle));
        int marked = 0;
        for (int r = 1; r <= 6; ++r)
            marked += Grids::LbxInput().CellText(r, InCol::FTag) == u"_#-->";
        QCOMPARE(marked, 2);
    }

    void piecesOfATwentySecondSongInRealTime() {
        AddSong(QStringLiteral("twenty.wav"), 20);
        Grids::LbxInput().SetCurRow(1);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_UseSequenztime"), Qt::LeftButton);
        for (int i = 0; i < 3; ++i) {
            auto* box =
                Find<QLineEdit>(QStringLiteral("txtTab1_Sequenztime(%1)").arg(i).toLatin1().constData());
            box->clear();
            QTest::keyClicks(box, QStringLiteral("1"));
        }
        Click("MMC_Play");
        QVERIFY(Media().IsOpen());
        // Start piece 0-1 s, middle piece 9.5-10.5 s, end piece from 19 s.
        QTRY_VERIFY_WITH_TIMEOUT(Lit("lblTab1_Seq(1)"), 3500);
        QVERIFY(Media().Position() >= 9000);
        QTRY_VERIFY_WITH_TIMEOUT(Lit("lblTab1_Seq(2)"), 3500);
        QVERIFY(Media().Position() >= 18500);
        QVERIFY(!Lit("lblTab1_Seq(1)"));
        QTRY_VERIFY_WITH_TIMEOUT(!Media().IsOpen(), 3500); // the end, without AutoPlay: closed
        QCOMPARE(Find<QLabel>("lblTab1_WinampTime")->text(), QStringLiteral("00:00 / 00:00 / 00:00"));
    }

    // The tab during a run fits a 1280x800 screen in both languages, the sign buttons
    // included. With QLT_SHOT_DIR set, a picture of the window is written there.
    void runControlsFitSmallScreen() {
        for (int i = 1; i <= 3; ++i)
            AddSong(QStringLiteral("fit %1.wav").arg(i), -1);
        W().resize(1280, 800);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
        QTest::mouseClick(Find<QCheckBox>("chbTab1_UseSequenztime"), Qt::LeftButton);
        for (int language : {3, kLanguageEnglish}) {
            SetLanguageColumn(language);
            W().LanguageChanged();
            ShowPlayerTab();
            QTest::qWait(50);
            const QString dir = qEnvironmentVariable("QLT_SHOT_DIR");
            if (!dir.isEmpty())
                W().grab().save(QStringLiteral("%1/player_%2.png").arg(dir).arg(language));
            const QSize min = W().minimumSizeHint();
            QVERIFY2(min.width() <= 1280 && min.height() <= 800,
                     qPrintable(QStringLiteral("%1x%2").arg(min.width()).arg(min.height())));
            for (const char* name : {"btnTab1_Sign(0)", "btnTab1_Sign(9)", "btnTab1_SetFTagActRow",
                                     "btnTab1_SkipPlus", "btnTab1_Random"}) {
                auto* w = Find<QWidget>(name);
                QVERIFY2(w->isVisible(), name);
                const QRect r(w->mapTo(&W(), QPoint(0, 0)), w->size());
                QVERIFY2(QRect(QPoint(0, 0), W().size()).contains(r), name);
            }
        }
        QTest::mouseClick(Find<QCheckBox>("chbTab1_AutoPlay"), Qt::LeftButton);
    }

    void closingTheProgramClosesTheDevice() {
        AddSong(QStringLiteral("a.wav"), 2);
        Grids::LbxInput().SetCurRow(1);
        Click("MMC_Play");
        QVERIFY(Media().IsOpen());
        W().ClosePrg();
        QVERIFY(!Media().IsOpen());
    }
};

QTEST_MAIN(TestPlayerUi)
#include "test_playerui.moc"
