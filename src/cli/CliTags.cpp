// quillotune-cli tags FILE... [--json]: everything the tag engine reads from each file.
#include "cli/CliCommands.h"

#include "core/AppState.h"
#include "tag/TagEngine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const TagSet kSets[] = {TagSet::V1,   TagSet::V2,  TagSet::Ape, TagSet::Lyrics, TagSet::Wma,
                        TagSet::Flac, TagSet::Ogg, TagSet::Mp4, TagSet::Wav};

bool SetPresent(const TagEngine& e, TagSet set) {
    switch (set) {
    case TagSet::V1:
        return e.HasV1();
    case TagSet::V2:
        return e.HasV2();
    case TagSet::Ape:
        return e.HasApe();
    case TagSet::Lyrics:
        return e.HasLyrics();
    case TagSet::Wma:
        return e.FileType() == 2;
    case TagSet::Flac:
        return e.FileType() == 4;
    case TagSet::Ogg:
        return e.FileType() == 6;
    case TagSet::Mp4:
        return e.FileType() == 9;
    case TagSet::Wav:
        return e.FileType() == 5;
    default:
        return false;
    }
}

QString SetVersion(const TagEngine& e, TagSet set) {
    switch (set) {
    case TagSet::V1:
        return e.V1Version();
    case TagSet::V2:
        return e.V2Version();
    case TagSet::Ape:
        return e.ApeVersion();
    case TagSet::Lyrics:
        return e.LyricsVersion();
    default:
        return QString();
    }
}

QJsonObject SetObject(const TagEngine& e, TagSet set) {
    QJsonObject o;
    const QString version = SetVersion(e, set);
    if (!version.isEmpty())
        o.insert(QStringLiteral("Version"), version);
    for (int i = 0; i < kTagFieldCount; ++i) {
        const auto f = static_cast<TagField>(i);
        if (TagFieldSet(f) == set)
            o.insert(TagFieldName(f), e.Field(f));
    }
    if (set == TagSet::V1)
        o.insert(QStringLiteral("V1GenreCode"), e.V1GenreCode());
    if (set != TagSet::V2)
        return o;
    o.insert(QStringLiteral("V2Rating"), e.V2Rating());
    o.insert(QStringLiteral("V2Mood"), e.V2Mood());
    QJsonArray comments, lyrics, frames, pictures;
    for (int i = 1; i <= e.CommentCount(); ++i)
        comments.append(QJsonObject{{QStringLiteral("language"), e.CommentLanguage(i)},
                                    {QStringLiteral("description"), e.CommentDescription(i)},
                                    {QStringLiteral("text"), e.CommentText(i)}});
    for (int i = 1; i <= e.LyricCount(); ++i)
        lyrics.append(QJsonObject{{QStringLiteral("language"), e.LyricLanguage(i)},
                                  {QStringLiteral("description"), e.LyricDescription(i)},
                                  {QStringLiteral("text"), e.LyricText(i)}});
    for (int i = 1; i <= e.UserFrameCount(); ++i)
        frames.append(QJsonObject{{QStringLiteral("name"), e.UserFrameName(i)},
                                  {QStringLiteral("text"), e.UserFrameText(i)}});
    for (int i = 1; i <= e.PictureCount(); ++i)
        pictures.append(QJsonObject{{QStringLiteral("description"), e.PictureDescription(i)},
                                    {QStringLiteral("type"), e.PictureType(i)},
                                    {QStringLiteral("mime"), e.PictureMime(i)},
                                    {QStringLiteral("size"), static_cast<double>(e.PictureSize(i))}});
    o.insert(QStringLiteral("Comments"), comments);
    o.insert(QStringLiteral("Lyrics"), lyrics);
    o.insert(QStringLiteral("UserFrames"), frames);
    o.insert(QStringLiteral("Pictures"), pictures);
    return o;
}

QJsonObject FileObject(TagEngine& e, const QString& path) {
    QJsonObject o;
    const int type = e.OpenFile(path);
    o.insert(QStringLiteral("Path"), path);
    o.insert(QStringLiteral("Type"), type);
    o.insert(QStringLiteral("TypeName"), FileTypeName(type));
    if (type == 0) {
        o.insert(QStringLiteral("Error"), e.LastError());
        return o;
    }
    o.insert(QStringLiteral("DurationSeconds"), static_cast<double>(e.DurationSeconds()));
    o.insert(QStringLiteral("FileSizeBytes"), static_cast<double>(e.FileSizeBytes()));
    o.insert(QStringLiteral("Bitrate"), e.Bitrate());
    o.insert(QStringLiteral("Frequency"), e.Frequency());
    o.insert(QStringLiteral("TrackNumberValue"), e.TrackNumberValue());
    o.insert(QStringLiteral("HasTag"), HasTagText(e));
    QJsonObject sets;
    for (TagSet set : kSets) {
        if (SetPresent(e, set))
            sets.insert(TagSetName(set), SetObject(e, set));
    }
    o.insert(QStringLiteral("Sets"), sets);
    return o;
}

QString Quoted(const QString& s) {
    QString t = s;
    t.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    t.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return t;
}

void PrintText(const QJsonObject& file) {
    Out(QStringLiteral("%1").arg(file.value(QStringLiteral("Path")).toString()));
    Out(QStringLiteral("  Type: %1 %2")
            .arg(file.value(QStringLiteral("Type")).toInt())
            .arg(file.value(QStringLiteral("TypeName")).toString()));
    if (file.contains(QStringLiteral("Error"))) {
        Out(QStringLiteral("  Error: %1").arg(file.value(QStringLiteral("Error")).toString()));
        return;
    }
    for (const char* key :
         {"DurationSeconds", "FileSizeBytes", "Bitrate", "Frequency", "TrackNumberValue", "HasTag"}) {
        const QJsonValue v = file.value(QLatin1String(key));
        Out(QStringLiteral("  %1: %2")
                .arg(QLatin1String(key), v.isString() ? v.toString() : QString::number(v.toDouble())));
    }
    const QJsonObject sets = file.value(QStringLiteral("Sets")).toObject();
    for (TagSet set : kSets) {
        const QString name = TagSetName(set);
        if (!sets.contains(name))
            continue;
        const QJsonObject o = sets.value(name).toObject();
        Out(QStringLiteral("  [%1]").arg(name));
        // The fields in the order of the set, then what the set has besides.
        QStringList keys{QStringLiteral("Version")};
        for (int i = 0; i < kTagFieldCount; ++i) {
            const auto f = static_cast<TagField>(i);
            if (TagFieldSet(f) == set)
                keys << TagFieldName(f);
            if (f == TagField::V1Genre)
                keys << QStringLiteral("V1GenreCode");
        }
        for (auto it = o.begin(); it != o.end(); ++it) {
            if (!keys.contains(it.key()))
                keys << it.key();
        }
        for (const QString& key : keys) {
            if (!o.contains(key))
                continue;
            const QJsonValue value = o.value(key);
            if (value.isArray()) {
                const QJsonArray a = value.toArray();
                for (int i = 0; i < a.size(); ++i) {
                    QStringList parts;
                    const QJsonObject item = a.at(i).toObject();
                    for (auto jt = item.begin(); jt != item.end(); ++jt)
                        parts << QStringLiteral("%1=%2").arg(
                            jt.key(), jt.value().isString() ? Quoted(jt.value().toString())
                                                            : QString::number(jt.value().toDouble()));
                    Out(QStringLiteral("    %1(%2): %3")
                            .arg(key)
                            .arg(i + 1)
                            .arg(parts.join(QStringLiteral("; "))));
                }
            } else {
                const QString v =
                    value.isString() ? Quoted(value.toString()) : QString::number(value.toDouble());
                Out(QStringLiteral("    %1: %2").arg(key, v));
            }
        }
    }
}

} // namespace

int RunTags(const QStringList& args) {
    bool json = false;
    QStringList files;
    for (const QString& a : args) {
        if (a == QLatin1String("--json"))
            json = true;
        else if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QStringLiteral("usage: quillotune-cli tags FILE... [--json]\n"
                               "Prints for each file its type, audio data and every field of every tag set\n"
                               "present, by the field names of the tag engine. Exit code 1 when a file\n"
                               "can't be read."));
            return 0;
        } else if (a.startsWith(QLatin1String("--"))) {
            Err(QStringLiteral("quillotune-cli tags: unknown option '%1'").arg(a));
            return 2;
        } else
            files << a;
    }
    if (files.isEmpty()) {
        Err(QStringLiteral(
            "quillotune-cli tags: no file given (usage: quillotune-cli tags FILE... [--json])"));
        return 2;
    }
    TagEngine engine;
    QJsonArray all;
    int failed = 0;
    for (const QString& f : files) {
        const QJsonObject o = FileObject(engine, f);
        if (o.value(QStringLiteral("Type")).toInt() == 0)
            ++failed;
        if (json)
            all.append(o);
        else
            PrintText(o);
    }
    if (json)
        Out(QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Indented)).trimmed());
    return failed ? 1 : 0;
}
