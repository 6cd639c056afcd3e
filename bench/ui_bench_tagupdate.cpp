// The tag window's batch over 1,000 files: the progress bar moves, the event loop keeps
// turning (the longest pause between two timer ticks is printed) and every file is written.

#include "app/FrmTag.h"
#include "app/FrmTagSetPanel.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // the texts built beside the program, when they are there
    SetAppPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin"));
    LoadCaptionTable();
    LoadUiCaptionTables();
    EnsureSettingsShape();
    const int files = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 1000;
    const QString sample =
        QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../tests/fixtures/tone.mp3");
    QTemporaryDir dir;
    DataGrid input;
    for (const auto& c : kInputColumns)
        input.AddColumn(QString::fromLatin1(c.key), QString(), c.widthTwips, c.align, true, c.sortType);
    for (int i = 0; i < files; ++i) {
        const QString name = QStringLiteral("%1 - Song.mp3").arg(i, 4, 10, QLatin1Char('0'));
        if (!QFile::copy(sample, dir.filePath(name)))
            return 1;
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Type - 1] = QStringLiteral("MP3");
        cells[InCol::Path - 1] = dir.path();
        input.AddRow(cells);
    }
    ScriptedPrompt prompt;
    FrmTag w(&input, &prompt);
    w.resize(1200, 800);
    w.show();
    input.SelectAll();
    if (!w.LoadTagList(QStringLiteral("MP3")))
        return 1;
    w.lbxTag().SelectAll();
    w.findChild<QRadioButton*>(QStringLiteral("OptTab2_UpdateV2"))->setChecked(true);
    w.findChild<QCheckBox*>(QStringLiteral("chbTab2_V2(4)"))->setChecked(true);
    w.findChild<QLineEdit*>(QStringLiteral("txtTab2_V2(4)"))->setText(QStringLiteral("Bench Album"));
    w.findChild<QCheckBox*>(QStringLiteral("chbTab2_NoMsg"))->setChecked(true);
    // QLT_GRAB=<file.png> keeps a picture of the window as the batch starts
    if (qEnvironmentVariableIsSet("QLT_GRAB"))
        w.grab().save(qEnvironmentVariable("QLT_GRAB"));

    // a timer that ticks every 10 ms measures how long the event loop is held up
    QElapsedTimer sinceTick;
    qint64 longestPause = 0;
    int ticks = 0, progressSteps = 0, lastValue = -1;
    auto* bar = w.findChild<QProgressBar*>(QStringLiteral("prgTag"));
    QTimer tick;
    tick.setInterval(10);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        longestPause = std::max(longestPause, sinceTick.elapsed());
        sinceTick.restart();
        ++ticks;
        if (bar->value() != lastValue) {
            lastValue = bar->value();
            ++progressSteps;
        }
    });
    QElapsedTimer total;
    total.start();
    sinceTick.start();
    tick.start();
    w.findChild<QPushButton*>(QStringLiteral("btnTab2_UpdateTag"))->click();
    tick.stop();
    const qint64 ms = total.elapsed();

    TagEngine engine;
    int written = 0;
    for (int r = 1; r <= w.lbxTag().Rows(); ++r) {
        engine.OpenFile(dir.path() + QLatin1Char('/') + w.lbxTag().CellText(r, 2 + 1));
        written += engine.V2Album() == QStringLiteral("Bench Album");
    }
    std::printf("files: %d, written: %d, messages: %d\n", files, written, int(prompt.shown.size()));
    std::printf("batch: %lld ms (%.2f ms/file); event loop turned %d times, longest pause %lld ms; "
                "progress bar seen at %d values\n",
                ms, double(ms) / files, ticks, longestPause, progressSteps);
    return written == files ? 0 : 2;
}
