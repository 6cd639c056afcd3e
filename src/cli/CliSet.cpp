// quillotune-cli set FILE NAME=VALUE...: stages fields by their names and saves every
// tag set that was touched.
#include "cli/CliCommands.h"

#include "tag/TagEngine.h"

#include <QRegularExpression>
#include <set>

namespace {

const char* kSetHelp =
    "usage: quillotune-cli set FILE NAME=VALUE...\n"
    "Writes tag fields into FILE. NAME is a field of the tag engine as 'tags' prints it\n"
    "(V1Title, V2Artist, ApeYear, LyricsLyric, WmaExtra3, FlacGenre, OggTitle, Mp4Album,\n"
    "WavArtist, ...; case does not matter); an empty VALUE clears the field. The MP4 track and\n"
    "disc take a number or a pair such as 3/12. Also:\n"
    "  V1GenreCode=N                       genre number of the ID3v1 table (255 none)\n"
    "  V2Rating=TEXT, V2Mood=TEXT          the program's rating and mood frames\n"
    "  Comment[I]=LANG|DESCRIPTION|TEXT    comment I (count + 1 adds one; empty removes)\n"
    "  Lyric[I]=LANG|DESCRIPTION|TEXT      lyric text I\n"
    "  UserFrame[I]=NAME|TEXT              user text frame I\n"
    "  Picture[I]=PATH|DESCRIPTION|TYPE|MIME  picture I from a file (empty removes)\n"
    "  ClearComments=, ClearLyrics=, ClearPictures=\n"
    "  Remove=SET                          strip a set: V1, V2, Ape, Lyrics, Ogg\n"
    "Every set touched is saved; the exit code is 1 with the engine's message when a save\n"
    "fails, 2 for bad arguments.";

// Replaces the last user frame whose text starts with prefix, or adds one.
void SetOwnFrame(TagEngine& e, const QString& name, const QString& prefix, const QString& value) {
    int index = e.UserFrameCount() + 1;
    for (int i = 1; i <= e.UserFrameCount(); ++i) {
        if (e.UserFrameText(i).startsWith(prefix))
            index = i;
    }
    e.SetUserFrame(index, name, prefix + value);
}

int RemoveSet(TagEngine& e, const QString& name, const QString& path, bool* known) {
    for (TagSet set : {TagSet::V1, TagSet::V2, TagSet::Ape, TagSet::Lyrics, TagSet::Ogg}) {
        if (name.compare(TagSetName(set), Qt::CaseInsensitive) == 0) {
            *known = true;
            return e.Remove(set, path);
        }
    }
    *known = false;
    return 0;
}

} // namespace

int RunSet(const QStringList& args) {
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        Out(QString::fromLatin1(kSetHelp));
        return 0;
    }
    if (args.size() < 2) {
        Err(QStringLiteral("quillotune-cli set: give a file and at least one NAME=VALUE\n") +
            QString::fromLatin1(kSetHelp));
        return 2;
    }
    const QString path = args.first();
    TagEngine e;
    if (e.OpenFile(path) == 0) {
        Err(QStringLiteral("quillotune-cli set: %1").arg(e.LastError()));
        return 1;
    }
    static const QRegularExpression indexed(QStringLiteral("^(\\w+)\\[(\\d+)\\]$"));
    std::set<int> touched;
    QStringList removals;
    for (int a = 1; a < args.size(); ++a) {
        const QString arg = args.at(a);
        const qsizetype eq = arg.indexOf(QLatin1Char('='));
        if (eq <= 0) {
            Err(QStringLiteral("quillotune-cli set: '%1' is not NAME=VALUE").arg(arg));
            return 2;
        }
        const QString name = arg.left(eq);
        const QString value = arg.mid(eq + 1);
        const QStringList parts = value.split(QLatin1Char('|'));
        const QRegularExpressionMatch m = indexed.match(name);
        const QString base = (m.hasMatch() ? m.captured(1) : name).toLower();
        const int index = m.hasMatch() ? m.captured(2).toInt() : 0;
        bool ok = false;
        const TagField field = TagFieldFromName(name, &ok);
        if (ok) {
            e.SetField(field, value);
            touched.insert(static_cast<int>(TagFieldSet(field)));
        } else if (base == QLatin1String("v1genrecode")) {
            bool num = false;
            const int code = value.toInt(&num);
            if (!num) {
                Err(QStringLiteral("quillotune-cli set: V1GenreCode needs a number, not '%1'").arg(value));
                return 2;
            }
            e.SetV1GenreCode(code);
            touched.insert(static_cast<int>(TagSet::V1));
        } else if (base == QLatin1String("v2rating") || base == QLatin1String("v2mood")) {
            const bool rating = base == QLatin1String("v2rating");
            SetOwnFrame(e, rating ? QStringLiteral("QLT") : QStringLiteral("MOD"),
                        rating ? QStringLiteral("QLT") : QStringLiteral("MOOD"), value);
            touched.insert(static_cast<int>(TagSet::V2));
        } else if (m.hasMatch() && (base == QLatin1String("comment") || base == QLatin1String("lyric"))) {
            if (!value.isEmpty() && parts.size() != 3) {
                Err(QStringLiteral("quillotune-cli set: %1 needs LANG|DESCRIPTION|TEXT").arg(name));
                return 2;
            }
            const QString lang = parts.value(0), desc = parts.value(1), text = parts.value(2);
            const int r = base == QLatin1String("comment") ? e.SetComment(index, lang, desc, text)
                                                           : e.SetLyric(index, lang, desc, text);
            if (!r) {
                Err(QStringLiteral("quillotune-cli set: %1").arg(e.LastError()));
                return 1;
            }
            touched.insert(static_cast<int>(TagSet::V2));
        } else if (m.hasMatch() && base == QLatin1String("userframe")) {
            if (!value.isEmpty() && parts.size() != 2) {
                Err(QStringLiteral("quillotune-cli set: %1 needs NAME|TEXT").arg(name));
                return 2;
            }
            if (!e.SetUserFrame(index, parts.value(0), parts.value(1))) {
                Err(QStringLiteral("quillotune-cli set: %1").arg(e.LastError()));
                return 1;
            }
            touched.insert(static_cast<int>(TagSet::V2));
        } else if (m.hasMatch() && base == QLatin1String("picture")) {
            const int r = value.isEmpty()
                              ? e.RemovePicture(index)
                              : e.AddPicture(parts.value(0), parts.value(1), index,
                                             parts.size() > 2 ? parts.at(2).toInt() : 3, parts.value(3));
            if (!r) {
                Err(QStringLiteral("quillotune-cli set: %1").arg(e.LastError()));
                return 1;
            }
            touched.insert(static_cast<int>(TagSet::V2));
        } else if (base == QLatin1String("clearcomments") || base == QLatin1String("clearlyrics") ||
                   base == QLatin1String("clearpictures")) {
            if (base == QLatin1String("clearcomments"))
                e.ClearComments();
            else if (base == QLatin1String("clearlyrics"))
                e.ClearLyrics();
            else
                e.ClearPictures();
            touched.insert(static_cast<int>(TagSet::V2));
        } else if (base == QLatin1String("remove")) {
            removals << value;
        } else {
            Err(QStringLiteral("quillotune-cli set: unknown field '%1' (see quillotune-cli set --help)")
                    .arg(name));
            return 2;
        }
    }
    for (int s : touched) {
        const auto set = static_cast<TagSet>(s);
        if (!e.Save(set, path)) {
            Err(QStringLiteral("quillotune-cli set: %1 not saved: %2").arg(TagSetName(set), e.LastError()));
            return 1;
        }
    }
    for (const QString& r : removals) {
        bool known = false;
        if (!RemoveSet(e, r, path, &known)) {
            if (!known) {
                Err(QStringLiteral("quillotune-cli set: Remove needs V1, V2, Ape, Lyrics or Ogg, not '%1'")
                        .arg(r));
                return 2;
            }
            Err(QStringLiteral("quillotune-cli set: %1 not removed: %2").arg(r, e.LastError()));
            return 1;
        }
    }
    return 0;
}
