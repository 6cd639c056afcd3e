// ui_bench_playlist [rows] [--show SECONDS] [--lang de|en] [--find DIR]
//
// The playlist area with many rows, through its buttons (offscreen unless a display is
// given): rows taken over from the data list by optTab1_CopyToPlaylist, highlight all
// with the sums, invert, a block moved up, the shuffle, the removal of missing entries.
// Prints the time of each. With --show the main window stays on the playlist area for
// that many seconds (for a look or a screenshot); --find lists the playlists of DIR.

#include "app/FrmInput.h"
#include "app/FrmPlaylist.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "bench_grid_data.h"
#include "core/AppPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Settings.h"
#include "playlist/modPlaylist.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <cstdio>

namespace {
class QuietPrompt : public Prompt {
public:
    void Tell(const QString&, Icon) override {}
    bool AskYesNo(const QString&, bool, Icon) override { return true; }
    bool AskOkCancel(const QString&, Icon) override { return true; }
    std::optional<QString> InputBox(const QString&, const QString& initial) override { return initial; }
};

template <typename T> T* Get(QWidget* root, const char* name) {
    T* w = root->findChild<T*>(QString::fromLatin1(name));
    if (!w) {
        std::fprintf(stderr, "no control %s\n", name);
        std::exit(1);
    }
    return w;
}

template <typename F> double Ms(F&& f) {
    QElapsedTimer clock;
    clock.start();
    f();
    QApplication::processEvents(); // the repaint belongs to the command
    return double(clock.nsecsElapsed()) / 1e6;
}
} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int rows = 100000;
    double show = 0;
    QString lang = QStringLiteral("de"), findDir;
    const QStringList args = QApplication::arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--show") && i + 1 < args.size())
            show = args[++i].toDouble();
        else if (args[i] == QLatin1String("--lang") && i + 1 < args.size())
            lang = args[++i];
        else if (args[i] == QLatin1String("--find") && i + 1 < args.size())
            findDir = args[++i];
        else
            rows = args[i].toInt();
    }
    // the program folder of the build, with its texts
    SetAppPath(QDir(QApplication::applicationDirPath() + QStringLiteral("/../bin")).canonicalPath());
    LoadSettings();
    EnsureSettingsShape();
    SetLanguageColumn(lang == QLatin1String("en") ? kLanguageEnglish : kLanguageGerman);
    CaptionTable().LoadFile(AppFile(QStringLiteral("Caption.qlt")));
    LoadUiCaptionTables();
    QuietPrompt prompt;
    SetAppPrompt(&prompt);

    FrmInput window;
    window.pageData->DefineColumns();
    window.ApplySettings();
    SetCaptions();
    window.resize(1280, 800);
    window.show();
    DataGrid& input = Grids::LbxInput();
    FillInputRows(input, rows);
    input.SelectAll();
    QApplication::processEvents();
    Get<QCheckBox>(&window, "chbTab1_NoMsg")->setChecked(true);
    FrmPlaylist* page = window.frmPlaylist;

    Get<QRadioButton>(&window, "optTab1_CopyToPlaylist")->setChecked(true);
    for (int i = 0; i < window.TabInput->count(); ++i)
        std::printf("smallest size of area %d (%s): %d x %d\n", i + 1,
                    qPrintable(window.TabInput->widget(i)->objectName()),
                    window.TabInput->widget(i)->minimumSizeHint().width(),
                    window.TabInput->widget(i)->minimumSizeHint().height());
    std::printf("take over %d rows (button)      %9.1f ms\n", rows,
                Ms([&] { Get<QPushButton>(&window, "btnTab1_Sub2_1_OK")->click(); }));
    std::printf("rows in the playlist              %9d\n", page->lbxPlaylist().Rows());
    Get<QCheckBox>(page, "chbPlaylist_TimeSize")->setChecked(true);
    Get<QCheckBox>(page, "chbPlaylist_NoMsg")->setChecked(true);
    std::printf("highlight all + sums              %9.1f ms\n",
                Ms([&] { Get<QPushButton>(page, "btnPlaylist_HighlightAll")->click(); }));
    std::printf("  %s\n", qPrintable(Get<QLabel>(page, "lblPlaylist_TimeSize")->text()));
    std::printf("invert highlight + sums           %9.1f ms\n",
                Ms([&] { Get<QPushButton>(page, "btnPlaylist_InvertHighlight")->click(); }));
    page->lbxPlaylist().SetSelected(rows / 2, true);
    std::printf("move one row up                   %9.1f ms\n",
                Ms([&] { Get<QPushButton>(page, "btnPlaylist_Up")->click(); }));
    std::printf("shuffle                           %9.1f ms\n",
                Ms([&] { Get<QPushButton>(page, "btnPlaylist_Shuffle")->click(); }));
    std::printf("remove missing entries (none)     %9.1f ms\n",
                Ms([&] { Get<QPushButton>(page, "btnPlaylist_EraseF")->click(); }));

    if (show > 0) {
        // The screen this area has to fit; the other areas may ask for more, which is
        // theirs to fix: here they are allowed to shrink, so that this one shows as it will.
        for (int i = 0; i < window.TabInput->count(); ++i)
            window.TabInput->widget(i)->setMinimumSize(100, 100);
        window.TabInput->updateGeometry();
        window.layout()->invalidate();
        window.layout()->activate();
        window.resize(1280, 800);
        std::printf("window %d x %d\n", window.width(), window.height());
        if (!findDir.isEmpty()) {
            page->chooseFolder = [&](const QString&) { return findDir; };
            Get<QPushButton>(page, "btnPlaylist_FindPlaylist")->click();
        }
        page->lbxPlaylist().ClearSelection();
        page->lbxPlaylist().SelectRange(2, 6, true);
        window.TabInput->setCurrentWidget(page);
        QTimer::singleShot(int(show * 1000), &app, &QApplication::quit);
        app.exec();
    }
    SetAppPrompt(nullptr);
    return 0;
}
