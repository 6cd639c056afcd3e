// quillotune: the window program. It reads no command line, apart from --version and
// --help, which print and end at once.
#include "app/EndSignal.h"
#include "app/FrmInput.h"
#include "app/MessageBoxPrompt.h"
#include "app/UiCaptions.h"
#include "core/AppPaths.h"
#include "core/ProgramFolder.h"
#include "platform/SafeFile.h"
#include "platform/mpv/MpvDevice.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QStyleFactory>
#include <cstdio>
#include <cstring>

namespace {

// Answers --version and --help (for the manual page and the package); true when it did.
bool PrintInfo(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") == 0) {
            std::printf("quillotune %s\n", qPrintable(ProgramVersion()));
            return true;
        }
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::printf("Usage: quillotune\n"
                        "Catalogue, tag and maintain a collection of audio files: one table of every\n"
                        "file with its technical data and all its tags; find, filter, mark; rename,\n"
                        "copy, move, delete; batch tag edits; reference lists; playlists; song texts\n"
                        "and time-stamped lyrics; pictures; a pre-listening player; export and print.\n"
                        "\n"
                        "The program reads no further command line: folders and files are chosen in\n"
                        "its window.\n"
                        "\n"
                        "Options:\n"
                        "  --help     show this help and end\n"
                        "  --version  show the version and end\n"
                        "\n"
                        "Files:\n"
                        "  The program keeps its settings (qlt.ini), texts (Caption.qlt), saved lists\n"
                        "  and the rest in its program folder: the folder of the executable when it\n"
                        "  holds qlt.ini and may be written, otherwise $XDG_DATA_HOME/quillotune\n"
                        "  (~/.local/share/quillotune), made on the first start from\n"
                        "  /usr/share/quillotune.\n"
                        "\n"
                        "See also: quillotune-cli(1), the same logic without windows.\n");
            return true;
        }
    }
    return false;
}

QIcon ProgramIcon() {
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString path = AppFile(QStringLiteral("icons/quillotune-%1.png").arg(size));
        if (QFileInfo(path).isFile())
            icon.addFile(path, QSize(size, size));
    }
    return icon;
}

} // namespace

int main(int argc, char** argv) {
    if (PrintInfo(argc, argv))
        return 0;
    QApplication app(argc, argv);
    // A file-size limit makes a write fail (EFBIG) instead of ending the program.
    SafeFile::IgnoreFileSizeSignal();
    QApplication::setOrganizationName(QStringLiteral("Quillotune"));
    QApplication::setApplicationName(QStringLiteral("Quillotune"));
    QApplication::setApplicationVersion(ProgramVersion());
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quillotune.Quillotune"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // An installed program keeps its files per user; the first start makes that folder.
    const ProgramFolderSetup folder = UseProgramFolder();
    if (!folder.ok)
        AppPrompt().Tell(folder.error, Prompt::Icon::Critical);
    QApplication::setWindowIcon(ProgramIcon());
    CloseWindowsOnEndSignals(&app);
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
