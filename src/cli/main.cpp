// quillotune-cli: the program's logic without windows. One command per call:
//   quillotune-cli COMMAND ARGUMENTS...
#include "cli/CliCommands.h"
#include "core/ProgramFolder.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

struct Command {
    const char* name;
    const char* usage;
    const char* summary;
    int (*run)(const QStringList& args);
};

const Command kCommands[] = {
    {"tags", "tags FILE... [--json]", "print type, audio data and every tag field of each file", RunTags},
    {"set", "set FILE NAME=VALUE...", "write tag fields (names as printed by 'tags') into FILE", RunSet},
    {"scan", "scan DIR [--subfolders] [--save FILE.data] [--export FILE]", "scan a folder into the data list",
     RunScan},
    {"load", "load FILE.data [--act] [--export FILE]", "load a saved data list and check its files", RunLoad},
    {"refresh", "refresh FILE.data [--threads N]",
     "read again the files of a saved data list that changed since, mark missing ones, save", RunRefresh},
    {"playlist", "playlist FILE.m3u|FILE.pls [--json] | playlist --write OUT [--relative] FILE...",
     "print the rows of a playlist, or write songs as a playlist", RunPlaylist},
    {"rename", "rename FILE|DIR... --do COMMAND [--subfolders] [--dry-run] [--json]",
     "rename files by the rules of the data list's rename commands", RunRename},
    {"undo", "undo [--json]", "put back the names of the last rename batch of this tool", RunUndo},
    {"ref", "ref FILE.ref [--json|--check|--match FILE.data] | ref --from FILE.data --save FILE.ref",
     "print, build, check or match a reference list", RunRef},
    {"lyrics", "lyrics SONG [--json]",
     "list the lyric entries of a song (index, language, description, text)", RunLyrics},
    {"lrc", "lrc FILE.lrc|FILE.txt|SONG.mp3 [--json] | lrc --into SONG.mp3 FILE.lrc | lrc --remove SONG.mp3",
     "print the rows of a time-stamped text, or write or remove a song's \"lrc\" frame", RunLrc},
    {"pictures", "pictures SONG... [--json|--export DIR] | pictures --add SONG PICTURE | --remove SONG N|all",
     "list, export, add or remove the pictures inside songs", RunPictures},
    {"skin", "skin FILE.scs [--json] | skin --write FILE.scs [--from FILE.scs] [NAME=VALUE...]",
     "print the 33 values of a scrolling text skin, or write a skin from values", RunSkin},
    {"programs", "programs | programs --start N FILE...",
     "list the external programs of the preferences, or start one with files as its arguments", RunPrograms},
};

void PrintHelp() {
    Out(QStringLiteral("usage: quillotune-cli COMMAND ARGUMENTS..."));
    Out(QString());
    Out(QStringLiteral("commands:"));
    for (const Command& c : kCommands)
        Out(QStringLiteral("  %1\n      %2").arg(QLatin1String(c.usage), QLatin1String(c.summary)));
    Out(QString());
    Out(QStringLiteral("'quillotune-cli COMMAND --help' shows the help of one command."));
    Out(QString());
    Out(QStringLiteral("options:"));
    Out(QStringLiteral("  --help      show this help and end"));
    Out(QStringLiteral("  --version   show the version and end"));
    Out(QString());
    Out(QStringLiteral("The tool uses the program folder of the window program (settings, texts,"));
    Out(QStringLiteral("saved lists): the folder of the executable when it holds qlt.ini and may be"));
    Out(QStringLiteral("written, otherwise $XDG_DATA_HOME/quillotune (~/.local/share/quillotune)."));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // A file-size limit makes a write fail (EFBIG) instead of ending the program.
    SafeFile::IgnoreFileSizeSignal();
    // The arguments as the system gave them: a file name that is no valid UTF-8 keeps
    // its bytes (QCoreApplication::arguments would replace them).
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << PosixFile::FromNative(argv[i]);
    if (args.isEmpty() || args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h") ||
        args.first() == QLatin1String("help")) {
        PrintHelp();
        return args.isEmpty() ? 2 : 0;
    }
    if (args.first() == QLatin1String("--version")) {
        Out(QStringLiteral("quillotune-cli ") + ProgramVersion());
        return 0;
    }
    // An installed tool works in the user's program folder, as the window program does.
    const ProgramFolderSetup folder = UseProgramFolder();
    if (!folder.ok)
        Err(folder.error);
    const QString name = args.takeFirst();
    for (const Command& c : kCommands) {
        if (name == QLatin1String(c.name))
            return c.run(args);
    }
    Err(QStringLiteral("quillotune-cli: unknown command '%1'").arg(name));
    PrintHelp();
    return 2;
}
