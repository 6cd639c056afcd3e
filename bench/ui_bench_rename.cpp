// ui_bench_rename [N]
//
// The rename commands through the buttons of the main window (offscreen) with N (10,000)
// files of one folder in the data list: the preview of "swap artist and title" up to the
// filled FrmPreview, its "Rename" button, and the undo button. Beside them a plain
// rename(2) loop over the same files.

#include "app/FrmInput.h"
#include "app/FrmPreview.h"
#include "app/InputDataPage.h"
#include "app/MessageBoxPrompt.h"
#include "app/RenamePanel.h"
#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/InputColumns.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
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

double Ms(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}
} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int files = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10000;
    QTemporaryDir program, music;
    SetAppPath(program.path());
    QDir(program.path()).mkpath(QStringLiteral("temp"));
    QuietPrompt prompt;
    SetAppPrompt(&prompt);
    EnsureSettingsShape();

    FrmInput window;
    window.pageData->DefineColumns();
    window.ApplySettings();
    window.resize(1240, 760);
    window.show();
    DataGrid& list = Grids::LbxInput();
    list.LockUpdate(true);
    for (int i = 0; i < files; ++i) {
        const QString name = QStringLiteral("Artist %1 - Title %1.mp3").arg(i);
        QFile f(music.filePath(name));
        if (!f.open(QIODevice::WriteOnly))
            return 1;
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Artist - 1] = QStringLiteral("Artist %1").arg(i);
        cells[InCol::Title - 1] = QStringLiteral("Title %1").arg(i);
        cells[InCol::Path - 1] = music.path();
        list.AddRow(cells);
    }
    list.LockUpdate(false);
    list.SelectAll();
    QApplication::processEvents();

    // The baseline: rename(2) there and back.
    QElapsedTimer t;
    t.start();
    for (int back = 0; back < 2; ++back)
        for (int i = 0; i < files; ++i) {
            const QByteArray a =
                QFile::encodeName(music.filePath(QStringLiteral("Artist %1 - Title %1.mp3").arg(i)));
            const QByteArray b =
                QFile::encodeName(music.filePath(QStringLiteral("Title %1 - Artist %1.mp3").arg(i)));
            if (std::rename(back ? b.constData() : a.constData(), back ? a.constData() : b.constData()) != 0)
                return 1;
        }
    const double plain = Ms(t) / 2;

    Get<QCheckBox>(&window, "chbTab1_NoMsg")->setChecked(true);
    Get<QCheckBox>(&window, "chbTab1_RenamePreview")->setChecked(true);
    Get<QRadioButton>(&window, "optTab1_FileChangeArtTit")->setChecked(true);
    t.restart();
    Get<QPushButton>(&window, "btnTab1_Sub2_3_OK")->click();
    QApplication::processEvents();
    const double preview = Ms(t);
    FrmPreview* p = window.renamePanel->Preview();
    const int proposed = p->LbxPreview().Rows();
    t.restart();
    p->btnPreview_Rename->click();
    QApplication::processEvents();
    const double batch = Ms(t);
    t.restart();
    Get<QPushButton>(&window, "btnTab1_Undo")->click();
    QApplication::processEvents();
    const double undo = Ms(t);

    std::printf("%d files in one folder, %d proposed in the preview\n", files, proposed);
    std::printf("  plain rename(2) loop        %8.1f ms  %6.1f us/file\n", plain, plain * 1e3 / files);
    std::printf("  preview (button to window)  %8.1f ms%s\n", preview, preview < 1000 ? "" : "   OVER 1 s");
    std::printf("  rename from the preview     %8.1f ms  %6.1f us/file  %.2fx plain\n", batch,
                batch * 1e3 / files, batch / plain);
    std::printf("  undo button                 %8.1f ms  %6.1f us/file  %.2fx the batch\n", undo,
                undo * 1e3 / files, undo / batch);
    SetAppPrompt(nullptr);
    return 0;
}
