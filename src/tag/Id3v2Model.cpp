// ID3v2: the V2 fields and the multi-valued members between TagLib's frames and ours.
#include "tag/EngineData.h"
#include "tag/TagText.h"

#include <QStringList>

#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/generalencapsulatedobjectframe.h>
#include <taglib/id3v1genres.h>
#include <taglib/id3v2tag.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>

using namespace TagLib;

namespace qlt_tag {

namespace {

struct FrameMap {
    TagField field;
    const char* id;
    bool url;
};

// The year is TDRC inside TagLib; a v2.3 tag is rendered with TYER from it.
constexpr FrameMap kFrames[] = {
    {TagField::V2Genre, "TCON", false},       {TagField::V2Year, "TDRC", false},
    {TagField::V2Track, "TRCK", false},       {TagField::V2Artist, "TPE1", false},
    {TagField::V2Title, "TIT2", false},       {TagField::V2Album, "TALB", false},
    {TagField::V2Composer, "TCOM", false},    {TagField::V2Conductor, "TPE3", false},
    {TagField::V2Orchestra, "TPE2", false},   {TagField::V2OrigArtist, "TOPE", false},
    {TagField::V2Copyright, "TCOP", false},   {TagField::V2EncodedBy, "TENC", false},
    {TagField::V2PublisherUrl, "WPUB", true}, {TagField::V2AudFileUrl, "WOAF", true},
};

QString GenreText(const StringList& values) {
    QStringList out;
    for (const String& v : values) {
        bool isNumber = false;
        const int n = FromTL(v).toInt(&isNumber);
        if (isNumber && n >= 0 && n < 256 && !ID3v1::genre(n).isEmpty())
            out << FromTL(ID3v1::genre(n));
        else if (!v.isEmpty())
            out << FromTL(v);
    }
    out.removeDuplicates();
    return out.join(QStringLiteral(" / "));
}

QString FrameText(const ID3v2::FrameList& frames, bool genre) {
    if (frames.isEmpty())
        return QString();
    if (const auto* f = dynamic_cast<const ID3v2::TextIdentificationFrame*>(frames.front())) {
        const StringList values = f->fieldList();
        if (genre)
            return GenreText(values);
        QStringList out;
        for (const String& v : values)
            out << FromTL(v);
        return out.join(QStringLiteral(" / "));
    }
    if (const auto* u = dynamic_cast<const ID3v2::UrlLinkFrame*>(frames.front()))
        return FromLatin1Field(u->url());
    return FromTL(frames.front()->toString());
}

ByteVector Language(const QString& lang) {
    QByteArray bytes = lang.toLatin1().left(3);
    while (bytes.size() < 3)
        bytes.append(bytes.isEmpty() ? 'X' : ' ');
    return ByteVector(bytes.constData(), 3);
}

QString LanguageText(const ByteVector& v) {
    return QString::fromLatin1(v.data(), static_cast<qsizetype>(v.size()));
}

String::Type EncodingFor(const QStringList& texts, int version) {
    for (const QString& t : texts) {
        if (!IsLatin1(t))
            return version >= 4 ? String::UTF8 : String::UTF16;
    }
    return String::Latin1;
}

QStringList Texts(const StringList& list) {
    QStringList out;
    for (const String& s : list)
        out << FromTL(s);
    return out;
}

} // namespace

void ReadId3v2(const ID3v2::Tag& tag, EngineData& d) {
    const ID3v2::FrameListMap& map = tag.frameListMap();
    for (const FrameMap& m : kFrames) {
        const auto it = map.find(ByteVector(m.id));
        d.F(m.field) = it == map.end() ? QString() : FrameText(it->second, m.field == TagField::V2Genre);
    }
    V2Lists& l = d.v2;
    l = V2Lists();
    for (const ID3v2::Frame* frame : tag.frameList()) {
        if (const auto* c = dynamic_cast<const ID3v2::CommentsFrame*>(frame)) {
            l.comments.push_back({LanguageText(c->language()), FromTL(c->description()), FromTL(c->text())});
        } else if (const auto* u = dynamic_cast<const ID3v2::UnsynchronizedLyricsFrame*>(frame)) {
            l.lyrics.push_back({LanguageText(u->language()), FromTL(u->description()), FromTL(u->text())});
        } else if (const auto* x = dynamic_cast<const ID3v2::UserTextIdentificationFrame*>(frame)) {
            const StringList values = x->fieldList();
            QStringList texts;
            for (unsigned i = 1; i < values.size(); ++i)
                texts << FromTL(values[i]);
            l.userFrames.push_back({FromTL(x->description()), texts.join(QStringLiteral(" / "))});
        } else if (const auto* p = dynamic_cast<const ID3v2::AttachedPictureFrame*>(frame)) {
            const ByteVector data = p->picture();
            l.pictures.push_back({FromTL(p->description()), static_cast<int>(p->type()),
                                  FromLatin1Field(p->mimeType()),
                                  QByteArray(data.data(), static_cast<qsizetype>(data.size()))});
        }
    }
}

void ApplyId3v2(const EngineData& d, ID3v2::Tag& tag, bool all) {
    for (const FrameMap& m : kFrames) {
        if (!all && !d.Dirty(m.field))
            continue;
        const ByteVector id(m.id);
        tag.removeFrames(id);
        const QString& value = d.F(m.field);
        if (value.isEmpty())
            continue;
        if (m.url) {
            auto* f = new ID3v2::UrlLinkFrame(id);
            f->setUrl(ToLatin1Field(value));
            tag.addFrame(f);
        } else {
            auto* f = new ID3v2::TextIdentificationFrame(id, String::Latin1);
            f->setText(ToTL(value));
            tag.addFrame(f);
        }
    }
    const V2Lists& l = d.v2;
    if (all || l.commentsDirty) {
        tag.removeFrames("COMM");
        for (const TextEntry& e : l.comments) {
            auto* f = new ID3v2::CommentsFrame(String::Latin1);
            f->setLanguage(Language(e.language));
            f->setDescription(ToTL(e.description));
            f->setText(ToTL(e.text));
            tag.addFrame(f);
        }
    }
    if (all || l.lyricsDirty) {
        tag.removeFrames("USLT");
        for (const TextEntry& e : l.lyrics) {
            auto* f = new ID3v2::UnsynchronizedLyricsFrame(String::Latin1);
            f->setLanguage(Language(e.language));
            f->setDescription(ToTL(e.description));
            f->setText(ToTL(e.text));
            tag.addFrame(f);
        }
    }
    if (all || l.userFramesDirty) {
        tag.removeFrames("TXXX");
        for (const UserFrame& u : l.userFrames) {
            auto* f = new ID3v2::UserTextIdentificationFrame(String::Latin1);
            f->setDescription(ToTL(u.name));
            f->setText(ToTL(u.text));
            tag.addFrame(f);
        }
    }
    if (all || l.picturesDirty) {
        tag.removeFrames("APIC");
        for (const PictureEntry& p : l.pictures) {
            auto* f = new ID3v2::AttachedPictureFrame();
            f->setTextEncoding(String::Latin1);
            f->setDescription(ToTL(p.description));
            f->setMimeType(ToLatin1Field(p.mime));
            f->setType(static_cast<ID3v2::AttachedPictureFrame::Type>(p.type & 0xFF));
            f->setPicture(ByteVector(p.data.constData(), static_cast<unsigned>(p.data.size())));
            tag.addFrame(f);
        }
    }
}

QByteArray RenderId3v2(ID3v2::Tag& tag, int version) {
    if (tag.frameList().isEmpty())
        return QByteArray();
    const int v = version >= 4 ? 4 : 3;
    for (ID3v2::Frame* frame : tag.frameList()) {
        if (auto* x = dynamic_cast<ID3v2::UserTextIdentificationFrame*>(frame)) {
            x->setTextEncoding(EncodingFor(Texts(x->fieldList()), v));
        } else if (auto* t = dynamic_cast<ID3v2::TextIdentificationFrame*>(frame)) {
            t->setTextEncoding(EncodingFor(Texts(t->fieldList()), v));
        } else if (auto* c = dynamic_cast<ID3v2::CommentsFrame*>(frame)) {
            c->setTextEncoding(EncodingFor({FromTL(c->description()), FromTL(c->text())}, v));
        } else if (auto* u = dynamic_cast<ID3v2::UnsynchronizedLyricsFrame*>(frame)) {
            u->setTextEncoding(EncodingFor({FromTL(u->description()), FromTL(u->text())}, v));
        } else if (auto* p = dynamic_cast<ID3v2::AttachedPictureFrame*>(frame)) {
            p->setTextEncoding(EncodingFor({FromTL(p->description())}, v));
        } else if (auto* s = dynamic_cast<ID3v2::SynchronizedLyricsFrame*>(frame)) {
            QStringList texts{FromTL(s->description())};
            for (const auto& line : s->synchedText())
                texts << FromTL(line.text);
            s->setTextEncoding(EncodingFor(texts, v));
        } else if (auto* g = dynamic_cast<ID3v2::GeneralEncapsulatedObjectFrame*>(frame)) {
            g->setTextEncoding(EncodingFor({FromTL(g->description()), FromTL(g->fileName())}, v));
        }
    }
    const ByteVector data = tag.render(v == 4 ? ID3v2::v4 : ID3v2::v3);
    return QByteArray(data.data(), static_cast<qsizetype>(data.size()));
}

} // namespace qlt_tag
