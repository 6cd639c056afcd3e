#include "tag/Id3v2Keep.h"

#include "tag/EngineData.h"
#include "tag/TagLayout.h"

#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/tfile.h>

#include <algorithm>
#include <vector>

using namespace TagLib;

namespace qlt_tag {

namespace {

// The parameter type of FrameFactory::updateFrame (TagLib keeps the frame header class
// out of reach by name).
template <typename M> struct FirstArg;
template <typename C, typename R, typename A> struct FirstArg<R (C::*)(A) const> { using Type = A; };

class KeepingFactory : public ID3v2::FrameFactory {
    using HeaderPtr = FirstArg<decltype(&KeepingFactory::updateFrame)>::Type;

public:
    KeepingFactory() = default;

protected:
    bool updateFrame(HeaderPtr header) const override {
        if (header->version() == 3) {
            const ByteVector id = header->frameID();
            for (const char* kept : {"TDAT", "TIME", "TRDA", "TSIZ", "RVAD", "EQUA"}) {
                if (id == kept)
                    return true; // taken as it is, not converted and not dropped
            }
        }
        return ID3v2::FrameFactory::updateFrame(header);
    }
};

quint32 SyncSafe(const char* p) {
    const auto* u = reinterpret_cast<const unsigned char*>(p);
    return (quint32(u[0] & 0x7F) << 21) | (quint32(u[1] & 0x7F) << 14) | (quint32(u[2] & 0x7F) << 7) |
           quint32(u[3] & 0x7F);
}

quint32 Be32(const char* p) {
    const auto* u = reinterpret_cast<const unsigned char*>(p);
    return (quint32(u[0]) << 24) | (quint32(u[1]) << 16) | (quint32(u[2]) << 8) | quint32(u[3]);
}

QByteArray SyncSafeBytes(quint32 v) {
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[3 - i] = char((v >> (7 * i)) & 0x7F);
    return b;
}

// The frames of a tag body, each with its header, in file order.
std::vector<QByteArray> RawFrames(const QByteArray& tag, qsizetype start, qsizetype end, int version) {
    std::vector<QByteArray> frames;
    qsizetype pos = start;
    while (pos + 10 <= end) {
        if (tag[pos] == '\0')
            break; // padding
        const quint32 size =
            version == 4 ? SyncSafe(tag.constData() + pos + 4) : Be32(tag.constData() + pos + 4);
        if (qint64(size) > qint64(end - pos - 10))
            break;
        frames.push_back(tag.mid(pos, 10 + qsizetype(size)));
        pos += 10 + qsizetype(size);
    }
    return frames;
}

// Whether b can be taken over into a, where it is missing: a text frame only when a
// lacks its kind, any other frame when a holds no frame of the same contents.
bool Missing(ID3v2::Tag& a, ID3v2::Frame* f) {
    const ByteVector id = f->frameID();
    const ID3v2::FrameList same = a.frameList(id);
    if (same.isEmpty())
        return true;
    if (id.startsWith("T") && id != "TXXX")
        return false;
    const ByteVector rendered = f->render();
    for (ID3v2::Frame* g : same) {
        if (g->render() == rendered)
            return false;
    }
    return true;
}

long long TagSizeAt(File* file, long long offset) {
    file->seek(static_cast<long>(offset));
    const ByteVector h = file->readBlock(10);
    if (h.size() < 10 || !h.startsWith("ID3"))
        return 0;
    long long size = 10 + SyncSafe(h.data() + 6);
    if (h[3] == 4 && (h[5] & 0x10))
        size += 10;
    return size;
}

} // namespace

long long TagSizeAt(IOStream* stream, long long offset) {
    const QByteArray h = ReadAt(stream, offset, 10);
    if (h.size() < 10 || !h.startsWith("ID3"))
        return 0;
    long long size = 10 + SyncSafe(h.constData() + 6);
    if (h[3] == 4 && (h[5] & 0x10))
        size += 10;
    return size;
}

const ID3v2::FrameFactory* KeepingFrameFactory() {
    static KeepingFactory factory;
    return &factory;
}

std::unique_ptr<ID3v2::Tag> ReadHeadTags(File* file, long long headEnd) {
    auto tag = std::make_unique<ID3v2::Tag>(file, 0, KeepingFrameFactory());
    // TagLib takes the tags behind the first as room of the first one; their frames are
    // read here, each tag on its own.
    long long offset = TagSizeAt(file, 0);
    for (int n = 1; n < 8 && offset > 0 && offset + 10 <= headEnd; ++n) {
        const long long size = TagSizeAt(file, offset);
        if (size <= 10)
            break;
        ID3v2::Tag next(file, static_cast<long>(offset), KeepingFrameFactory());
        const std::vector<ID3v2::Frame*> frames(next.frameList().begin(), next.frameList().end());
        for (ID3v2::Frame* f : frames) {
            if (Missing(*tag, f)) {
                next.removeFrame(f, false);
                tag->addFrame(f);
            }
        }
        offset += size;
    }
    return tag;
}

bool HeadTagsFit(IOStream* stream, long long fileSize) {
    long long pos = 0;
    for (int n = 0; n < 8 && pos + 10 <= fileSize; ++n) {
        const QByteArray h = ReadAt(stream, pos, 10);
        if (h.size() < 10 || !h.startsWith("ID3"))
            break;
        const auto* u = reinterpret_cast<const unsigned char*>(h.constData());
        if (u[3] < 2 || u[3] > 4 || u[4] == 0xFF || (u[6] | u[7] | u[8] | u[9]) & 0x80)
            break;
        long long size = 10 + SyncSafe(h.constData() + 6);
        if (u[3] == 4 && (u[5] & 0x10))
            size += 10;
        if (pos + size > fileSize)
            return false;
        pos += size;
    }
    return true;
}

QByteArray RenderKeeping(ID3v2::Tag& tag, const QByteArray& original, int version) {
    // Bytes are kept only from a plain tag of the same version: no unsynchronisation, no
    // extended header, no footer.
    if (original.size() < 10 || !original.startsWith("ID3") || original[3] != char(version) ||
        (original[5] & 0xD0) != 0)
        return RenderId3v2(tag, version);
    const qsizetype end =
        std::min<qsizetype>(original.size(), 10 + qsizetype(SyncSafe(original.constData() + 6)));
    const ID3v2::Header header(ByteVector(original.constData(), 10));
    struct Raw {
        QByteArray bytes;
        ByteVector canonical; // how TagLib renders the frame as read
        bool used = false;
    };
    std::vector<Raw> raws;
    for (QByteArray& bytes : RawFrames(original, 10, end, version)) {
        Raw raw;
        raw.bytes = std::move(bytes);
        if (ID3v2::Frame* f = KeepingFrameFactory()->createFrame(
                ByteVector(raw.bytes.constData(), static_cast<unsigned>(raw.bytes.size())), &header)) {
            raw.canonical = f->render();
            delete f;
        }
        raws.push_back(std::move(raw));
    }
    // Frames that are as they were read go out with their own bytes; the rest is
    // rendered by TagLib (with the conversions that the version needs). A frame read
    // from the tag renders with the tag's version, as its twin made from the raw bytes.
    // (A plain copy of the pointers: a copy of TagLib's list would share its ownership.)
    const std::vector<ID3v2::Frame*> frames(tag.frameList().begin(), tag.frameList().end());
    std::vector<int> match(frames.size(), -1);
    std::vector<ByteVector> changedKinds; // frame ids with a new or changed frame
    for (size_t i = 0; i < frames.size(); ++i) {
        const ByteVector rendered = frames[i]->render();
        for (size_t r = 0; r < raws.size(); ++r) {
            if (!raws[r].used && !raws[r].canonical.isEmpty() && raws[r].canonical == rendered) {
                raws[r].used = true;
                match[i] = int(r);
                break;
            }
        }
        if (match[i] < 0)
            changedKinds.push_back(frames[i]->frameID());
    }
    // Where one frame of a kind is new or changed, all frames of that kind are rendered
    // afresh: their order (the numbers of comments, lyrics, pictures) must stay as set.
    for (size_t i = 0; i < frames.size(); ++i) {
        if (match[i] < 0)
            continue;
        if (std::find(changedKinds.begin(), changedKinds.end(), frames[i]->frameID()) != changedKinds.end()) {
            raws[size_t(match[i])].used = false;
            continue;
        }
        tag.removeFrame(frames[i], true);
    }
    std::vector<QByteArray> freshFrames;
    const QByteArray fresh = RenderId3v2(tag, version);
    if (fresh.size() >= 10) {
        const qsizetype freshEnd =
            std::min<qsizetype>(fresh.size(), 10 + qsizetype(SyncSafe(fresh.constData() + 6)));
        freshFrames = RawFrames(fresh, 10, freshEnd, version);
    }
    // A text frame that the render makes anew (a full date gives TDAT and TIME) replaces
    // a kept one of its kind: a text frame stands once in a tag.
    auto madeAnew = [&](const QByteArray& raw) {
        const QByteArray id = raw.left(4);
        if (!id.startsWith('T') || id == "TXXX")
            return false;
        for (const QByteArray& f : freshFrames) {
            if (f.startsWith(id))
                return true;
        }
        return false;
    };
    QByteArray body;
    for (const Raw& raw : raws) {
        if (raw.used && !madeAnew(raw.bytes))
            body += raw.bytes;
    }
    for (const QByteArray& f : freshFrames)
        body += f;
    if (body.isEmpty())
        return QByteArray();
    // The old room when the frames fit in it, else some room for the next edit.
    const qsizetype room = end - 10;
    const qsizetype padding = body.size() <= room ? room - body.size() : 1024;
    QByteArray out("ID3");
    out += char(version);
    out += '\0';
    out += '\0';
    out += SyncSafeBytes(quint32(body.size() + padding));
    out += body;
    out += QByteArray(padding, '\0');
    return out;
}

} // namespace qlt_tag
