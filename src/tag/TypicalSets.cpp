// The typical sets: the Vorbis comment of FLAC and Ogg files, the ASF attributes of WMA.
#include "tag/EngineData.h"
#include "tag/TagText.h"

#include <QStringList>

#include <taglib/asftag.h>
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

} // namespace qlt_tag
