// The player's rules on a scripted device: the buttons, the time line, the pieces of a
// song, the end of a song and the marks while playing.

#include "TagTestUtil.h"
#include "WavUtil.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modListColumns.h"
#include "player/FakeMediaDevice.h"
#include "player/modPlayer.h"
#include "player/modRandomSample.h"

#include <QTemporaryDir>
#include <QtTest>

class TestPlayerLogic : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<DataGrid> m_grid;
    ScriptedPrompt m_prompt;
    FakeMediaDevice* m_dev = nullptr;
    std::unique_ptr<modPlayer> m_player;
    PlayerOptions m_opt;
    QString m_timeLine, m_actSong;
    int m_slider = -1, m_sliderMax = -1, m_sliderTick = -1, m_piece = -2;
    bool m_playLamp = false, m_pauseLamp = false;

    void AddSong(const QString& name, double seconds) {
        if (seconds >= 0)
            QVERIFY(WriteWav(m_dir.filePath(name), seconds));
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Path - 1] = m_dir.path();
        m_grid->AddRow(cells);
    }
    void TickAfter(qint32 ms) {
        m_dev->Advance(ms);
        m_player->Tick();
    }
    QString FTag(int row) const { return m_grid->CellText(row, InCol::FTag); }

private slots:
    void init() {
        m_grid = std::make_unique<DataGrid>();
        DefineInputColumns(*m_grid);
        m_prompt.shown.clear();
        m_dev = new FakeMediaDevice(this);
        SetMedia(m_dev);
        m_opt = PlayerOptions();
        m_player = std::make_unique<modPlayer>(*m_grid, m_prompt);
        m_player->options = [this] { return m_opt; };
        m_player->view.timeLine = [this](const QString& t) { m_timeLine = t; };
        m_player->view.sliderRange = [this](int max, int tick) {
            m_sliderMax = max;
            m_sliderTick = tick;
        };
        m_player->view.sliderValue = [this](int v) { m_slider = v; };
        m_player->view.sliderPosition = [this] { return m_slider; };
        m_player->view.lamps = [this](bool play, bool pause) {
            m_playLamp = play;
            m_pauseLamp = pause;
        };
        m_player->view.pieceLamps = [this](int p) { m_piece = p; };
        m_player->view.actSong = [this](const QString& s) { m_actSong = s; };
        m_piece = -2;
    }
    void cleanup() {
        m_player.reset();
        SetMedia(nullptr);
        delete m_dev;
        m_dev = nullptr;
    }

    void formatsTime() {
        QCOMPARE(FormatPlayerTime(0), QStringLiteral("00:00"));
        QCOMPARE(FormatPlayerTime(61999), QStringLiteral("01:01"));
        QCOMPARE(FormatPlayerTime(6000000), QStringLiteral("100:00"));
        QCOMPARE(PlayerTimeLineIdle(), QStringLiteral("00:00 / 00:00 / 00:00"));
        QCOMPARE(PlayerTimeLine(185000, 62500), QStringLiteral("03:05 - 185 / 01:02 - 062 / 02:02"));
    }

    void computesPieces() {
        SequencePositions p = ComputeSequence({5, 10, 8}, 60000);
        QCOMPARE(p.start, 5000);
        QCOMPARE(p.middleFrom, 25000);
        QCOMPARE(p.middleTo, 35000);
        QCOMPARE(p.end, 52000);
        p = ComputeSequence({0, 0, 0}, 60000);
        QCOMPARE(p.start + p.middleFrom + p.middleTo + p.end, 0);
        // A middle piece longer than the song covers all of it.
        p = ComputeSequence({2, 100, 0}, 20000);
        QCOMPARE(p.middleFrom, 0);
        QCOMPARE(p.middleTo, 20000);
        // An end piece longer than the song counts as none.
        p = ComputeSequence({2, 2, 30}, 20000);
        QCOMPARE(p.end, 0);
    }

    void playsTheCurrentRow() {
        AddSong(QStringLiteral("a.wav"), 2);
        AddSong(QStringLiteral("b b ä.wav"), 3);
        m_grid->SetCurRow(2);
        m_player->Play();
        QVERIFY(m_dev->Playing());
        QCOMPARE(m_dev->OpenPath(), m_dir.filePath(QStringLiteral("b b ä.wav")));
        QCOMPARE(m_player->MediaLengthMs, 3000);
        QCOMPARE(m_player->MediaLengthText, QStringLiteral("00:03"));
        QCOMPARE(m_sliderMax, 3);
        QCOMPARE(m_sliderTick, 10);
        QVERIFY(m_playLamp && !m_pauseLamp);
        QCOMPARE(m_actSong, QStringLiteral("b b ä.wav"));
        QVERIFY(m_player->TimerSequenz.isActive());
        TickAfter(1000);
        QCOMPARE(m_timeLine, QStringLiteral("00:03 - 003 / 00:01 - 001 / 00:02"));
        QCOMPARE(m_slider, 1);
    }

    void emptyListOnlyTells() {
        m_player->Play();
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 1);
        QVERIFY(m_dev->log.isEmpty());
    }

    void songUnderOneSecondHasSliderOne() {
        AddSong(QStringLiteral("short.wav"), 0.4);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(m_sliderMax, 1);
    }

    void unplayableFileTellsWithoutAutoPlay() {
        AddSong(QStringLiteral("missing.mp3"), -1);
        m_grid->SetCurRow(1);
        m_player->Play();
        QVERIFY(m_player->PlayerOpenFailed);
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 1);
        QVERIFY(m_prompt.LastText().contains(QStringLiteral("mp3")));
        QVERIFY(!m_player->TimerSequenz.isActive());
        QVERIFY(FTag(1).isEmpty());
    }

    void unplayableFileIsMarkedAndSkippedWithAutoPlay() {
        m_opt.autoPlay = true;
        AddSong(QStringLiteral("missing.mp3"), -1);
        AddSong(QStringLiteral("good.wav"), 2);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(FTag(1), QStringLiteral("_#-/->"));
        QCOMPARE(m_grid->CurRow(), 2);
        QVERIFY(m_dev->Playing());
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 0);
    }

    void nextOnLastRowWithAutoPlayStops() {
        m_opt.autoPlay = true;
        AddSong(QStringLiteral("a.wav"), 2);
        m_grid->SetCurRow(1);
        m_player->Play();
        QVERIFY(m_grid->IsLocked());
        m_player->Next();
        QVERIFY(!m_dev->IsOpen());
        QCOMPARE(m_timeLine, QStringLiteral("00:00 / 00:00 / 00:00"));
        QVERIFY(!m_playLamp && !m_pauseLamp);
        QVERIFY(m_actSong.isEmpty());
        QVERIFY(!m_grid->IsLocked());
        QVERIFY(!m_player->TimerSequenz.isActive());
    }

    void prevOnRowOneRestartsIt() {
        AddSong(QStringLiteral("a.wav"), 2);
        AddSong(QStringLiteral("b.wav"), 2);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_dev->Advance(1000);
        m_player->Prev();
        QCOMPARE(m_grid->CurRow(), 1);
        QCOMPARE(m_dev->Position(), 0);
        QVERIFY(m_dev->Playing());
        m_grid->SetCurRow(2);
        m_player->Prev();
        QCOMPARE(m_grid->CurRow(), 1);
    }

    void autoMarkOnLeavingARow() {
        m_opt.autoSign = true;
        m_opt.autoSignText = QStringLiteral("heard");
        AddSong(QStringLiteral("a.wav"), 2);
        AddSong(QStringLiteral("b.wav"), 2);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->Next();
        QCOMPARE(FTag(1), QStringLiteral("heard"));
        QVERIFY(FTag(2).isEmpty());
        m_opt.autoSignText.clear();
        m_player->Prev();
        QVERIFY(FTag(2).isEmpty());
    }

    void zeroSecondsEndsOnFirstTick() {
        m_opt.autoPlay = true;
        // A fifth of a second rounds to 0 seconds. (A WAV without any samples is no audio
        // file for the engine: it takes the road of a song that can't be played.)
        AddSong(QStringLiteral("empty.wav"), 0.2);
        AddSong(QStringLiteral("b.wav"), 2);
        m_grid->SetCurRow(1);
        m_player->Play();
        QVERIFY(!m_player->PlayerOpenFailed);
        QCOMPARE(m_player->MediaLengthMs, 0);
        m_player->Tick();
        QCOMPARE(m_grid->CurRow(), 2);
        QVERIFY(m_dev->Playing());
    }

    void endWithoutAutoPlayCloses() {
        AddSong(QStringLiteral("a.wav"), 3);
        m_grid->SetCurRow(1);
        m_player->Play();
        TickAfter(1000);
        QVERIFY(m_dev->IsOpen());
        TickAfter(1600); // 2.6 s of 3 s: within the half second before the end
        QVERIFY(!m_dev->IsOpen());
        QCOMPARE(m_timeLine, PlayerTimeLineIdle());
        QVERIFY(!m_player->TimerSequenz.isActive());
    }

    void pauseToggles() {
        AddSong(QStringLiteral("a.wav"), 3);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->Pause();
        QCOMPARE(m_player->MMCTag, QStringLiteral("pause"));
        QVERIFY(!m_playLamp && m_pauseLamp);
        QVERIFY(!m_player->TimerSequenz.isActive());
        QVERIFY(!m_dev->Playing());
        m_player->Pause();
        QVERIFY(m_player->MMCTag.isEmpty());
        QVERIFY(m_playLamp && !m_pauseLamp);
        QVERIFY(m_player->TimerSequenz.isActive());
        QVERIFY(m_dev->Playing());
    }

    void stopResets() {
        AddSong(QStringLiteral("a.wav"), 3);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->Stop();
        QVERIFY(!m_dev->IsOpen());
        QCOMPARE(m_piece, -1);
        QCOMPARE(m_slider, 0);
    }

    void sliderPressPausesReleasePlays() {
        AddSong(QStringLiteral("a.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->SliderPressed();
        QVERIFY(!m_dev->Playing());
        QVERIFY(!m_player->TimerSequenz.isActive());
        m_player->SliderReleased(7);
        QVERIFY(m_dev->Playing());
        QCOMPARE(m_dev->Position(), 7000);
        QVERIFY(m_player->TimerSequenz.isActive());
    }

    void skipsByTheStep() {
        AddSong(QStringLiteral("a.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_opt.skipSec = QStringLiteral("4");
        m_player->SkipPlus();
        QCOMPARE(m_dev->Position(), 4000);
        m_player->HalfStep = true;
        m_player->SkipPlus();
        QCOMPARE(m_dev->Position(), 6000);
        m_opt.skipSec.clear(); // empty: 10 seconds
        m_player->SkipPlus();
        QCOMPARE(m_dev->Position(), 16000);
        m_player->SkipMinus();
        QCOMPARE(m_dev->Position(), 6000);
        m_player->SkipPlus();
        m_player->SkipPlus(); // beyond the end without AutoPlay: stopped
        QVERIFY(!m_dev->IsOpen());
        m_player->SkipPlus(); // not open: nothing
        QVERIFY(!m_dev->IsOpen());
    }

    void skipMinusBelowZeroStops() {
        AddSong(QStringLiteral("a.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_dev->Advance(3000);
        m_player->SkipMinus();
        QVERIFY(!m_dev->IsOpen());
    }

    void piecesJumpInTurn() {
        m_opt.useSequence = true;
        m_opt.seq = {2, 2, 2};
        m_dev->length = 20000;
        AddSong(QStringLiteral("a.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(m_player->SequenceStart, 2000);
        QCOMPARE(m_player->SequenceMiddleFrom, 9000);
        QCOMPARE(m_player->SequenceMiddleTo, 11000);
        QCOMPARE(m_player->SequenceEnd, 18000);
        QCOMPARE(m_dev->Position(), 0);
        TickAfter(1000);
        QCOMPARE(m_piece, 0);
        TickAfter(1000);
        QCOMPARE(m_dev->Position(), 9000);
        QCOMPARE(m_piece, 1);
        TickAfter(1000);
        TickAfter(1000);
        QCOMPARE(m_dev->Position(), 11000); // not above the middle's end yet
        TickAfter(1000);
        QCOMPARE(m_dev->Position(), 18000);
        QCOMPARE(m_piece, 2);
        TickAfter(1000);
        TickAfter(600); // 19.6 s: the end
        QVERIFY(!m_dev->IsOpen());
    }

    void allBoxesZeroPlaysWholeSong() {
        m_opt.useSequence = true;
        m_dev->length = 5000;
        AddSong(QStringLiteral("a.wav"), 5);
        m_grid->SetCurRow(1);
        m_player->Play();
        for (int i = 0; i < 4; ++i)
            TickAfter(1000);
        QCOMPARE(m_dev->Position(), 4000);
        QCOMPARE(m_piece, -2); // no lamp was touched
    }

    void middleLongerThanSongDoesNotJump() {
        m_opt.useSequence = true;
        m_opt.seq = {1, 100, 0};
        m_dev->length = 5000;
        AddSong(QStringLiteral("a.wav"), 5);
        m_grid->SetCurRow(1);
        m_player->Play();
        TickAfter(1000);
        TickAfter(1000);
        QCOMPARE(m_dev->Position(), 2000);
    }

    void endLongerThanSongJumpsToTheEndAfterTheMiddle() {
        m_opt.useSequence = true;
        m_opt.seq = {1, 2, 60};
        m_dev->length = 10000;
        AddSong(QStringLiteral("a.wav"), 10);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(m_player->SequenceEnd, 0);
        TickAfter(1000); // at the start's end: to the middle (4 s)
        QCOMPARE(m_dev->Position(), 4000);
        TickAfter(1000);
        TickAfter(1000);
        // 6.0 s is not above the middle's end; 7.0 s is: to the end of the song, which
        // the end test sees in the same tick.
        TickAfter(1000);
        QVERIFY(!m_dev->IsOpen());
    }

    void startsAtTheEndPieceWithoutStartAndMiddle() {
        m_opt.useSequence = true;
        m_opt.seq = {0, 0, 3};
        AddSong(QStringLiteral("a.wav"), 10);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(m_dev->Position(), 7000);
        QCOMPARE(m_slider, 7);
    }

    void backwardDragStopsTheJumpToTheEnd() {
        m_opt.useSequence = true;
        m_opt.seq = {1, 2, 3};
        m_dev->length = 20000;
        AddSong(QStringLiteral("a.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->SliderPressed();
        m_player->SliderReleased(18); // into the end piece
        QVERIFY(!m_player->PlayerBackwardJump);
        m_player->SliderPressed();
        m_player->SliderReleased(12); // back before the end piece
        QVERIFY(m_player->PlayerBackwardJump);
        TickAfter(1000);
        QCOMPARE(m_dev->Position(), 13000); // no jump to 17 s
        m_player->Stop();
        QVERIFY(!m_player->PlayerBackwardJump);
    }

    void endPieceWithAutoPlayGoesOnAtTheTrueEnd() {
        m_opt.autoPlay = true;
        m_opt.useSequence = true;
        m_opt.seq = {0, 0, 2};
        m_dev->length = 10000;
        AddSong(QStringLiteral("a.wav"), 10);
        AddSong(QStringLiteral("b.wav"), 10);
        m_grid->SetCurRow(1);
        m_player->Play();
        QCOMPARE(m_dev->Position(), 8000);
        TickAfter(1000);
        QCOMPARE(m_grid->CurRow(), 1);
        TickAfter(1000);
        QCOMPARE(m_grid->CurRow(), 2);
        QCOMPARE(m_dev->Position(), 8000);
    }

    void goForwardWalksThePieces() {
        m_opt.useSequence = true;
        m_opt.seq = {3, 2, 2};
        m_dev->length = 20000;
        AddSong(QStringLiteral("a.wav"), 20);
        AddSong(QStringLiteral("b.wav"), 20);
        m_grid->SetCurRow(1);
        m_player->Play();
        m_player->GoFwd(); // slider at 0: nothing
        QCOMPARE(m_dev->Position(), 0);
        TickAfter(1000);
        m_player->GoFwd();
        QCOMPARE(m_dev->Position(), 9000);
        QCOMPARE(m_piece, 1);
        m_player->GoFwd();
        QCOMPARE(m_dev->Position(), 18000);
        m_player->GoFwd();
        QCOMPARE(m_grid->CurRow(), 2);
    }

    void signMarksAndMovesOnWithAutoPlay() {
        m_opt.autoPlay = true;
        for (int i = 0; i < 3; ++i)
            AddSong(QStringLiteral("s%1.wav").arg(i), 3);
        m_grid->SetCurRow(1);
        m_player->Play();
        QVERIFY(m_player->Sign(QStringLiteral("good"), false));
        QCOMPARE(FTag(1), QStringLiteral("good"));
        QCOMPARE(m_grid->CurRow(), 2);
        QVERIFY(!m_player->PlayerAutoSkip);
        QVERIFY(!m_player->Sign(QString(), false));
        QCOMPARE(m_grid->CurRow(), 2);
        QVERIFY(m_player->Sign(QStringLiteral("late"), true));
        QCOMPARE(FTag(1), QStringLiteral("late"));
        QCOMPARE(m_grid->CurRow(), 2);
    }

    // Every type the tag engine reads plays; anything else never reaches the device.
    void mediaTypeIsTheEnginesType() {
        for (const tagtest::FixtureType& f : tagtest::kFixtures) {
            const QString path = tagtest::CopyFixture(QString::fromLatin1(f.file), m_dir.path());
            QCOMPARE(modPlayer::MediaType(path), FileTypeName(f.type));
        }
        QCOMPARE(modPlayer::MediaType(m_dir.filePath(QStringLiteral("none.mp3"))), QStringLiteral("Nothing"));
        QFile text(m_dir.filePath(QStringLiteral("text.mp3")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("this is no song at all\n");
        text.close();
        QCOMPARE(modPlayer::MediaType(text.fileName()), QStringLiteral("Nothing"));

        // The broken file takes the road of a song that can't be played: the device never
        // sees it.
        AddSong(QStringLiteral("text.mp3"), -1);
        m_grid->SetCurRow(1);
        m_player->Play();
        QVERIFY(m_player->PlayerOpenFailed);
        QVERIFY(!m_dev->log.join(u'|').contains(QStringLiteral("open")));
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 1);
    }

    void everyTypePlays() {
        for (const tagtest::FixtureType& f : tagtest::kFixtures) {
            const QString name = QStringLiteral("song ä ") + QString::fromLatin1(f.file);
            tagtest::CopyFixture(QString::fromLatin1(f.file), m_dir.path(), name);
            AddSong(name, -1);
        }
        for (int r = 1; r <= m_grid->Rows(); ++r) {
            m_grid->SetCurRow(r);
            m_player->Play();
            QVERIFY2(m_dev->Playing(), qPrintable(m_grid->CellText(r, InCol::FileName)));
            QVERIFY(!m_player->PlayerOpenFailed);
        }
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 0);
    }

    void randomSampleBoxHasItsTitle() {
        AddSong(QStringLiteral("s.wav"), -1);
        m_prompt.inputs.push_back(QStringLiteral("1"));
        QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 7), 1);
        QCOMPARE(m_prompt.shown.back().kind, QStringLiteral("input"));
        QCOMPARE(m_prompt.shown.back().text, Caption(CapRandomCountPrompt));
        QCOMPARE(m_prompt.shown.back().title, Caption(CapMarkRowsTitle));
    }

    void randomSampleOnEmptyListTells() {
        QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 7), -1);
        QCOMPARE(m_prompt.Count(QStringLiteral("tell")), 1);
        QCOMPARE(m_prompt.Count(QStringLiteral("input")), 0);
    }

    void randomSampleEndsOnNoNumber() {
        for (int i = 1; i <= 4; ++i)
            AddSong(QStringLiteral("s%1.wav").arg(i), -1);
        m_grid->SetCellText(2, InCol::FTag, QStringLiteral("old"));
        for (const char* answer : {"abc", "0", ""}) {
            m_prompt.inputs.push_back(QString::fromLatin1(answer));
            QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 7), -1);
        }
        m_prompt.inputs.push_back(std::nullopt); // Cancel
        QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 7), -1);
        QCOMPARE(FTag(2), QStringLiteral("old"));
    }

    void randomSampleMarksTheCountAndSortsByNumber() {
        for (int i = 1; i <= 10; ++i) {
            AddSong(QStringLiteral("s%1.wav").arg(i), -1);
            m_grid->SetCellText(i, InCol::No, QString::number(11 - i)); // numbers backwards
            m_grid->SetCellText(i, InCol::FTag, QStringLiteral("old"));
        }
        m_prompt.inputs.push_back(QStringLiteral(" 3 "));
        QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 7), 3);
        int marked = 0;
        for (int r = 1; r <= 10; ++r) {
            QVERIFY(FTag(r).isEmpty() || FTag(r) == QStringLiteral("_#-->"));
            marked += !FTag(r).isEmpty();
            QCOMPARE(m_grid->CellText(r, InCol::No), QString::number(r));
        }
        QCOMPARE(marked, 3);
        QCOMPARE(m_grid->SelCount(), 10);
        QCOMPARE(m_grid->CurRow(), 1);
        QVERIFY(!m_grid->IsLocked());
        // A count above the rows marks them all.
        m_prompt.inputs.push_back(QStringLiteral("50"));
        QCOMPARE(MarkRandomSample(*m_grid, m_prompt, 9), 10);
        for (int r = 1; r <= 10; ++r)
            QCOMPARE(FTag(r), QStringLiteral("_#-->"));
    }
};

QTEST_GUILESS_MAIN(TestPlayerLogic)
#include "test_player_logic.moc"
