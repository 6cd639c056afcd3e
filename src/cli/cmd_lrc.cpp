// quillotune-cli lrc: the rows that reading a time-stamped text gives (from a .lrc or .txt
// file or from a song's "lrc" frame), and writing or removing that frame.
#include "cli/CliCommands.h"
#include "cli/CliPrompt.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "tag/TagEngine.h"
#include "text/modSText.h"

namespace {

const char kLrcUsage[] =
    "usage: quillotune-cli lrc FILE.lrc|FILE.txt|SONG.mp3 [--json]\n"
    "       quillotune-cli lrc --into SONG.mp3 FILE.lrc|FILE.txt\n"
    "       quillotune-cli lrc --remove SONG.mp3\n"
    "  The first form prints the rows that reading the text gives, up to the last row with\n"
    "  text: Refrain, Seconds, TimeMSec, mmss and Text divided by TAB (a header line\n"
    "  first), or with --json as an array of objects. A line is stamped when it begins\n"
    "  with \"[mm:ss.nn]\"; a last line without CR LF is not read (LF-only files are read\n"
    "  line by line). --into writes the text as the song's \"lrc\" frame (the text needs a\n"
    "  time stamp); --remove takes the frame out of the song.";

const char* const kKeys[SText::Cols] = {"Refrain", "Seconds", "TimeMSec", "mmss", "Text"};

bool IsTextFile(const QString& path) {
    return path.endsWith(QLatin1String(".lrc"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive);
}

// Reads a file or a song into g; false with a message.
bool ReadInto(DataGrid& g, const QString& path) {
    if (IsTextFile(path)) {
        const STextReadResult r = ReadSTextFile(g, path, 0);
        if (!r.ok)
            Err(QStringLiteral("quillotune-cli: cannot read %1: %2").arg(path, r.error));
        return r.ok;
    }
    TagEngine engine;
    switch (ReadSTextFromSong(g, engine, path, 0)) {
    case SongLrc::Ok:
        return true;
    case SongLrc::NotMp3:
        Err(path + QStringLiteral(": ") + Caption(CapOnlyMp3Lrc));
        return false;
    case SongLrc::NoLrc:
        Err(path + QStringLiteral(": ") + Caption(CapNoLrcText));
        return false;
    }
    return false;
}

int Print(const QString& path, bool json) {
    DataGrid g;
    DefineSTextColumns(g);
    if (!ReadInto(g, path))
        return 1;
    QStringList keys;
    for (const char* k : kKeys)
        keys << QLatin1String(k);
    PrintGridRows(g, keys, LastSTextRow(g), json);
    return 0;
}

int Into(const QString& song, const QString& text) {
    DataGrid g;
    DefineSTextColumns(g);
    const STextReadResult r = ReadSTextFile(g, text, 0);
    if (!r.ok) {
        Err(QStringLiteral("quillotune-cli: cannot read %1: %2").arg(text, r.error));
        return 1;
    }
    // As in the editor, a blank row follows the text, so a stamp on its last line counts.
    g.AddRow(QStringList(SText::Cols, QString()));
    TagEngine engine;
    QString error;
    switch (WriteSTextInSong(g, engine, song, &error)) {
    case SongWrite::Ok:
        Out(Caption(CapLrcSavedInSong));
        return 0;
    case SongWrite::NoStamp:
        Err(text + QStringLiteral(": ") + Caption(CapNoLrcText));
        return 1;
    case SongWrite::NotMp3:
        Err(song + QStringLiteral(": ") + Caption(CapOnlyMp3Lrc));
        return 1;
    case SongWrite::Failed:
        Err(song + QStringLiteral(": ") + error);
        return 1;
    }
    return 1;
}

int Remove(const QString& song) {
    TagEngine engine;
    QString error;
    switch (RemoveLrcFromSong(engine, song, &error)) {
    case SongRemove::Ok:
        Out(Caption(CapLrcRemoved));
        return 0;
    case SongRemove::NoLrc:
        Err(song + QStringLiteral(": ") + Caption(CapNoLrcText));
        return 1;
    case SongRemove::NotMp3:
        Err(song + QStringLiteral(": ") + Caption(CapOnlyMp3Lrc));
        return 1;
    case SongRemove::Failed:
        Err(song + QStringLiteral(": ") + error);
        return 1;
    }
    return 1;
}

} // namespace

int RunLrc(const QStringList& args) {
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        Out(QLatin1String(kLrcUsage));
        return 0;
    }
    LoadProgramTexts();
    if (args.size() == 3 && args[0] == QLatin1String("--into"))
        return Into(args[1], args[2]);
    if (args.size() == 2 && args[0] == QLatin1String("--remove"))
        return Remove(args[1]);
    const bool json = args.contains(QLatin1String("--json"));
    QStringList rest = args;
    rest.removeAll(QStringLiteral("--json"));
    if (rest.size() != 1 || rest[0].startsWith(QLatin1String("--"))) {
        Err(QLatin1String(kLrcUsage));
        return 2;
    }
    return Print(rest[0], json);
}
