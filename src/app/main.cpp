// quillotune: the window program. It reads no command line.
#include "app/FrmInput.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "platform/SafeFile.h"
#include "platform/mpv/MpvDevice.h"

#include <QApplication>
#include <QStyleFactory>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // A file-size limit makes a write fail (EFBIG) instead of ending the program.
    SafeFile::IgnoreFileSizeSignal();
    QApplication::setOrganizationName(QStringLiteral("Quillotune"));
    QApplication::setApplicationName(QStringLiteral("Quillotune"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    LoadUiCaptionTables();
    UseMpvMedia(); // the player plays through libmpv

    // The main window is built hidden; it appears only when the start-up gets through
    // its file checks.
    auto* main = new FrmInput;
    if (main->FormLoad(AppPrompt()) != StartCheck::Ok) {
        delete main;
        return 1;
    }
    const int rc = app.exec();
    delete main;
    return rc;
}
