#include "tag/TagStreams.h"

#include <algorithm>

namespace qlt_tag {

RangeStream::RangeStream(TagLib::IOStream* base, long long start, long long end)
    : m_base(base), m_start(start), m_end(std::max(start, end)) {}

TagLib::FileName RangeStream::name() const {
    return m_base->name();
}

bool RangeStream::isOpen() const {
    return m_base->isOpen();
}

TagLib::ByteVector RangeStream::readBlock(unsigned long length) {
    const long long left = m_end - m_start - m_pos;
    if (left <= 0 || length == 0)
        return TagLib::ByteVector();
    const auto want = static_cast<unsigned long>(std::min<long long>(left, static_cast<long long>(length)));
    m_base->seek(static_cast<long>(m_start + m_pos));
    TagLib::ByteVector data = m_base->readBlock(want);
    m_pos += data.size();
    return data;
}

void RangeStream::seek(long offset, Position p) {
    long long pos = offset;
    if (p == Current)
        pos = m_pos + offset;
    else if (p == End)
        pos = (m_end - m_start) + offset;
    m_pos = std::max<long long>(0, pos);
}

long RangeStream::tell() const {
    return static_cast<long>(m_pos);
}

long RangeStream::length() {
    return static_cast<long>(m_end - m_start);
}

} // namespace qlt_tag
