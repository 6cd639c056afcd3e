// quillotune-cli lyrics SONG [--json]: the lyric entries of a song as the texts area lists
// them: index, language, description and text of each.
#include "cli/CliCommands.h"
#include "tag/TagEngine.h"
#include "text/modTexte.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char kLyricsUsage[] =
    "usage: quillotune-cli lyrics SONG [--json]\n"
    "  Prints the lyric entries kept in the song's tag. Each entry is a line\n"
    "  \"INDEX<TAB>LANGUAGE<TAB>DESCRIPTION\" followed by its text, each line of the text\n"
    "  indented by a TAB, and an empty line; with --json an array of objects with index,\n"
    "  language, description and text. A song of a type without lyric entries (WMA, WAV,\n"
    "  MP4) lists none. Exit code 1 when the file can't be read.";

} // namespace

int RunLyrics(const QStringList& args) {
    QString path;
    bool json = false;
    for (const QString& a : args) {
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kLyricsUsage));
            return 0;
        }
        if (a == QLatin1String("--json")) {
            json = true;
        } else if (a.startsWith(QLatin1String("--")) || !path.isEmpty()) {
            Err(QLatin1String(kLyricsUsage));
            return 2;
        } else {
            path = a;
        }
    }
    if (path.isEmpty()) {
        Err(QLatin1String(kLyricsUsage));
        return 2;
    }
    TagEngine& e = TagEngine::Shared();
    const int type = e.OpenFile(path);
    if (type == 0) {
        Err(QStringLiteral("quillotune-cli: %1: %2").arg(path, e.LastError()));
        return 1;
    }
    const int n = TypeWithoutLyrics(type) ? 0 : e.LyricCount();
    if (json) {
        QJsonArray a;
        for (int i = 1; i <= n; ++i)
            a.append(QJsonObject{{QStringLiteral("index"), i},
                                 {QStringLiteral("language"), e.LyricLanguage(i)},
                                 {QStringLiteral("description"), e.LyricDescription(i)},
                                 {QStringLiteral("text"), e.LyricText(i)}});
        Out(QString::fromUtf8(QJsonDocument(a).toJson(QJsonDocument::Indented)).trimmed());
        return 0;
    }
    for (int i = 1; i <= n; ++i) {
        Out(QStringLiteral("%1\t%2\t%3").arg(i).arg(e.LyricLanguage(i), e.LyricDescription(i)));
        for (const QString& line : SplitTextLines(e.LyricText(i)))
            Out(u'\t' + line);
        Out(QString());
    }
    return 0;
}
