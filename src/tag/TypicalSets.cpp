// The typical sets: the Vorbis comment of FLAC and Ogg files, the ASF attributes of WMA,
// the item list of MP4 files and the RIFF INFO list of WAV files.
#include "tag/EngineData.h"
#include "tag/TagText.h"

#include <QStringDecoder>
#include <QStringList>

#include <taglib/asftag.h>
#include <taglib/infotag.h>
#include <taglib/mp4tag.h>
#include <taglib/xiphcomment.h>

using namespace TagLib;

namespace qlt_tag {

namespace {

// The fourteen Vorbis comment names, in the order of the Flac and Ogg fields.
constexpr const char* kXiphNames[14] = {"GENRE",     "DATE",    "TRACKNUMBER", "ARTIST",    "TITLE",
                                        "ALBUM",     "COMMENT", "DESCRIPTION", "PERFORMER", "VENDOR",
                                        "COPYRIGHT", "CONTACT", "LICENSE",     "LOCATION"};

TagField XiphFirst(TagSet set) {
    return set == TagSet::Flac ? TagField::FlacGenre : TagField::OggGenre;
}

TagField Nth(TagField first, int i) {
    return static_cast<TagField>(static_cast<int>(first) + i);
}

struct AsfMap {
    TagField field;
    const char* attribute; // nullptr: a field of the content description object
};

// WmaTitle, WmaArtist, WmaComment and WmaExtra7 (copyright) live in the content
// description object; the rest are attributes of the extended content description.
constexpr AsfMap kAsf[] = {
    {TagField::WmaGenre, "WM/Genre"},        {TagField::WmaYear, "WM/Year"},
    {TagField::WmaTrack, "WM/TrackNumber"},  {TagField::WmaArtist, nullptr},
    {TagField::WmaTitle, nullptr},           {TagField::WmaAlbum, "WM/AlbumTitle"},
    {TagField::WmaComment, nullptr},         {TagField::WmaExtra1, "WM/SubTitleDescription"},
    {TagField::WmaExtra2, "WM/AlbumArtist"}, {TagField::WmaExtra3, "WM/AudioSourceURL"},
    {TagField::WmaExtra4, "WM/AuthorURL"},   {TagField::WmaExtra5, "WM/Publisher"},
    {TagField::WmaExtra6, "CopyrightURL"},   {TagField::WmaExtra7, nullptr},
    {TagField::WmaExtra8, "WM/Composer"},    {TagField::WmaRating, "Quillotune/Rating"},
    {TagField::WmaMood, "WM/Mood"},
};

QString AsfValue(const ASF::Attribute& a) {
    switch (a.type()) {
    case ASF::Attribute::UnicodeType:
        return FromTL(a.toString());
    case ASF::Attribute::DWordType:
        return QString::number(a.toUInt());
    case ASF::Attribute::QWordType:
        return QString::number(a.toULongLong());
    case ASF::Attribute::WordType:
        return QString::number(a.toUShort());
    case ASF::Attribute::BoolType:
        return a.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return QString();
    }
}

} // namespace

void ReadXiph(const Ogg::XiphComment& tag, EngineData& d, TagSet set) {
    const Ogg::FieldListMap& map = tag.fieldListMap();
    const TagField first = XiphFirst(set);
    for (int i = 0; i < 14; ++i) {
        const auto it = map.find(kXiphNames[i]);
        QStringList values;
        if (it != map.end()) {
            for (const String& s : it->second)
                values << FromTL(s);
        }
        d.F(Nth(first, i)) = values.join(QStringLiteral("; "));
    }
}

void ApplyXiph(const EngineData& d, Ogg::XiphComment& tag, TagSet set, bool all) {
    const TagField first = XiphFirst(set);
    for (int i = 0; i < 14; ++i) {
        const TagField f = Nth(first, i);
        if (!all && !d.Dirty(f))
            continue;
        tag.removeFields(kXiphNames[i]);
        if (!d.F(f).isEmpty())
            tag.addField(kXiphNames[i], ToTL(d.F(f)), true);
    }
}

void ReadAsf(const ASF::Tag& tag, EngineData& d) {
    auto& t = const_cast<ASF::Tag&>(tag); // attributeListMap() is not const in TagLib 1.13
    const ASF::AttributeListMap& map = t.attributeListMap();
    for (const AsfMap& m : kAsf) {
        QString value;
        if (m.attribute == nullptr) {
            if (m.field == TagField::WmaArtist)
                value = FromTL(tag.artist());
            else if (m.field == TagField::WmaTitle)
                value = FromTL(tag.title());
            else if (m.field == TagField::WmaComment)
                value = FromTL(tag.comment());
            else
                value = FromTL(tag.copyright());
        } else {
            auto it = map.find(m.attribute);
            if (it == map.end() && m.field == TagField::WmaTrack)
                it = map.find("WM/Track");
            if (it != map.end() && !it->second.isEmpty()) {
                QStringList values;
                for (const ASF::Attribute& a : it->second)
                    values << AsfValue(a);
                value = values.join(QStringLiteral("; "));
                if (m.field == TagField::WmaTrack && it->first == "WM/Track")
                    value = QString::number(value.toInt() + 1); // zero-based in that old attribute
            }
        }
        d.F(m.field) = value;
    }
}

void ApplyAsf(const EngineData& d, ASF::Tag& tag, bool all) {
    const ASF::AttributeListMap& map = tag.attributeListMap();
    // Some tools keep artist and comment a second time as the attributes "Author" and
    // "Description"; such a copy follows the new value, so that no reader shows the old.
    auto followCopy = [&](const char* name, const String& value) {
        if (map.find(name) == map.end())
            return;
        tag.removeItem(name);
        if (!value.isEmpty())
            tag.setAttribute(name, ASF::Attribute(value));
    };
    for (const AsfMap& m : kAsf) {
        if (!all && !d.Dirty(m.field))
            continue;
        const String value = ToTL(d.F(m.field));
        if (m.attribute == nullptr) {
            if (m.field == TagField::WmaArtist) {
                tag.setArtist(value);
                followCopy("Author", value);
            } else if (m.field == TagField::WmaTitle) {
                tag.setTitle(value);
                followCopy("Title", value);
            } else if (m.field == TagField::WmaComment) {
                tag.setComment(value);
                followCopy("Description", value);
            } else {
                tag.setCopyright(value);
                followCopy("Copyright", value);
            }
            continue;
        }
        if (m.field == TagField::WmaTrack && map.find("WM/Track") != map.end()) {
            // The old zero-based attribute stays beside the new one, with the same track.
            tag.removeItem("WM/Track");
            bool number = false;
            const unsigned track = d.F(m.field).trimmed().toUInt(&number);
            if (number && track > 0)
                tag.setAttribute("WM/Track", ASF::Attribute(track - 1));
        }
        tag.removeItem(m.attribute);
        if (!value.isEmpty())
            tag.setAttribute(m.attribute, ASF::Attribute(value));
    }
}

// ---- MP4 -----------------------------------------------------------------------------

namespace {

// The fourteen MP4 fields, in the order of the typical columns. Track and disc are the
// number pairs "trkn" and "disk", shown as "3" or "3/12"; the rest are text items.
constexpr const char* kMp4Keys[kTypicalFieldCount] = {"\251gen", "\251day", "trkn",    "\251ART", "\251nam",
                                                      "\251alb", "\251cmt", "desc",    "aART",    "\251too",
                                                      "cprt",    "\251wrt", "\251grp", "disk"};

bool IsPair(int i) {
    return i == 2 || i == 13;
}

// "3", "3/12" or "/12" into a number pair; false for anything else.
bool ParsePair(const QString& text, int* number, int* total) {
    const QString t = text.trimmed();
    const int slash = t.indexOf(QLatin1Char('/'));
    const QString a = slash < 0 ? t : t.left(slash).trimmed();
    const QString b = slash < 0 ? QString() : t.mid(slash + 1).trimmed();
    bool okA = a.isEmpty(), okB = b.isEmpty();
    *number = a.isEmpty() ? 0 : a.toInt(&okA);
    *total = b.isEmpty() ? 0 : b.toInt(&okB);
    return okA && okB && *number >= 0 && *number <= 65535 && *total >= 0 && *total <= 65535 &&
           (*number > 0 || *total > 0);
}

} // namespace

void ReadMp4(const MP4::Tag& tag, EngineData& d) {
    const TagField* fields = TypicalFields(TagSet::Mp4);
    for (int i = 0; i < kTypicalFieldCount; ++i) {
        QString value;
        if (tag.contains(kMp4Keys[i])) {
            const MP4::Item item = tag.item(kMp4Keys[i]);
            if (IsPair(i)) {
                const MP4::Item::IntPair p = item.toIntPair();
                if (p.first > 0 || p.second > 0)
                    value = p.second > 0 ? QStringLiteral("%1/%2").arg(p.first).arg(p.second)
                                         : QString::number(p.first);
            } else {
                QStringList values;
                for (const String& s : item.toStringList())
                    values << FromTL(s);
                value = values.join(QStringLiteral("; "));
            }
        }
        d.F(fields[i]) = value;
    }
}

bool Mp4NumbersValid(const EngineData& d, QString* error) {
    const TagField* fields = TypicalFields(TagSet::Mp4);
    for (int i = 0; i < kTypicalFieldCount; ++i) {
        int number = 0, total = 0;
        const QString& text = d.F(fields[i]);
        if (IsPair(i) && !text.trimmed().isEmpty() && !ParsePair(text, &number, &total)) {
            *error = QStringLiteral("The %1 of an MP4 file is a number or a number pair such as 3/12, not "
                                    "\"%2\"; the file is left as it is.")
                         .arg(i == 2 ? QStringLiteral("track") : QStringLiteral("disc"), text);
            return false;
        }
    }
    return true;
}

void ApplyMp4(const EngineData& d, MP4::Tag& tag, bool all) {
    const TagField* fields = TypicalFields(TagSet::Mp4);
    for (int i = 0; i < kTypicalFieldCount; ++i) {
        if (!all && !d.Dirty(fields[i]))
            continue;
        const QString& text = d.F(fields[i]);
        int number = 0, total = 0;
        if (text.trimmed().isEmpty() || (IsPair(i) && !ParsePair(text, &number, &total))) {
            tag.removeItem(kMp4Keys[i]);
            if (i == 0)
                tag.removeItem("gnre"); // the numbered genre of older files goes with the text
        } else if (IsPair(i)) {
            tag.setItem(kMp4Keys[i], MP4::Item(number, total));
        } else {
            if (i == 0)
                tag.removeItem("gnre");
            tag.setItem(kMp4Keys[i], MP4::Item(StringList(ToTL(text))));
        }
    }
}

// ---- RIFF INFO -----------------------------------------------------------------------

namespace {

// The fourteen INFO fields, in the order of the typical columns. The track is "IPRT";
// some programs write "ITRK" instead, which is read when there is no "IPRT".
constexpr const char* kInfoIds[kTypicalFieldCount] = {"IGNR", "ICRD", "IPRT", "IART", "INAM", "IPRD", "ICMT",
                                                      "ISBJ", "IENG", "ISFT", "ICOP", "ICMS", "IKEY", "IARL"};

class InfoCodec : public RIFF::Info::StringHandler {
public:
    String parse(const ByteVector& data) const override {
        QByteArray bytes(data.data(), static_cast<qsizetype>(data.size()));
        while (bytes.endsWith('\0'))
            bytes.chop(1);
        QStringDecoder utf8(QStringDecoder::Utf8);
        const QString text = utf8(bytes);
        return ToTL(utf8.hasError() ? DecodeLegacy(bytes) : text);
    }
    ByteVector render(const String& s) const override { return s.data(String::UTF8); }
};

} // namespace

void UseInfoTextCodec() {
    static const InfoCodec codec;
    static const bool installed = [] {
        RIFF::Info::Tag::setStringHandler(&codec);
        return true;
    }();
    (void)installed;
}

void ReadInfo(const RIFF::Info::Tag& tag, EngineData& d) {
    const TagField* fields = TypicalFields(TagSet::Wav);
    for (int i = 0; i < kTypicalFieldCount; ++i) {
        String value = tag.fieldText(kInfoIds[i]);
        if (i == 2 && value.isEmpty())
            value = tag.fieldText("ITRK");
        d.F(fields[i]) = FromTL(value);
    }
}

void ApplyInfo(const EngineData& d, RIFF::Info::Tag& tag, bool all) {
    const TagField* fields = TypicalFields(TagSet::Wav);
    for (int i = 0; i < kTypicalFieldCount; ++i) {
        if (!all && !d.Dirty(fields[i]))
            continue;
        const String value = ToTL(d.F(fields[i]));
        if (i == 2 && !tag.fieldText("ITRK").isEmpty()) {
            // A second track field of another program follows the new value.
            tag.removeField("ITRK");
            if (!value.isEmpty())
                tag.setFieldText("ITRK", value);
        }
        tag.removeField(kInfoIds[i]);
        if (!value.isEmpty())
            tag.setFieldText(kInfoIds[i], value);
    }
}

} // namespace qlt_tag
