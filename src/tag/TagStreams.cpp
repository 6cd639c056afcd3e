#include "tag/TagStreams.h"

#include "platform/SafeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

// Where a seek of either read stream lands; never before the start.
static long long SeekTarget(long offset, TagLib::IOStream::Position p, long long pos, long long length) {
    if (p == TagLib::IOStream::Current)
        pos += offset;
    else if (p == TagLib::IOStream::End)
        pos = length + offset;
    else
        pos = offset;
    return std::max<long long>(0, pos);
}

void RangeStream::seek(long offset, Position p) {
    m_pos = SeekTarget(offset, p, m_pos, m_end - m_start);
}

long RangeStream::tell() const {
    return static_cast<long>(m_pos);
}

long RangeStream::length() {
    return static_cast<long>(m_end - m_start);
}

} // namespace qlt_tag

// ---- ReadStream ----------------------------------------------------------------------------

namespace qlt_tag {

ReadStream::ReadStream(const QByteArray& nativePath, long long length) : m_path(nativePath) {
    // O_NONBLOCK keeps a FIFO from blocking the open; it changes nothing for a plain file.
    m_fd = ::open(m_path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_fd < 0)
        return;
    if (length < 0) {
        struct stat st {};
        length = ::fstat(m_fd, &st) == 0 ? static_cast<long long>(st.st_size) : 0;
    }
    m_length = length;
}

ReadStream::~ReadStream() {
    if (m_fd >= 0)
        ::close(m_fd);
}

TagLib::FileName ReadStream::name() const {
    return m_path.constData();
}

long long ReadStream::PRead(long long pos, char* out, long long count) {
    long long done = 0;
    while (done < count) {
        const ssize_t n = ::pread(m_fd, out + done, static_cast<size_t>(count - done), pos + done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += n;
    }
    return done;
}

const char* ReadStream::Block(long long start, long long& valid) {
    Cached* slot = &m_cache[0];
    for (Cached& c : m_cache) {
        if (c.start == start) {
            c.use = ++m_clock;
            valid = c.valid;
            return c.bytes.constData();
        }
        if (c.use < slot->use)
            slot = &c;
    }
    if (slot->bytes.size() != kBlock)
        slot->bytes.resize(kBlock);
    slot->start = start;
    slot->valid = PRead(start, slot->bytes.data(), kBlock);
    slot->use = ++m_clock;
    valid = slot->valid;
    return slot->bytes.constData();
}

long long ReadStream::ReadAt(long long pos, char* out, long long count) {
    if (count >= 2 * kBlock)
        return PRead(pos, out, count); // a picture or a big tag: straight into the result
    long long done = 0;
    while (done < count) {
        const long long at = pos + done;
        const long long start = at - at % kBlock;
        long long valid = 0;
        const char* block = Block(start, valid);
        const long long from = at - start;
        if (from >= valid)
            break;
        const long long n = std::min(count - done, valid - from);
        std::memcpy(out + done, block + from, static_cast<std::size_t>(n));
        done += n;
        if (valid < kBlock)
            break; // the end of the file
    }
    return done;
}

TagLib::ByteVector ReadStream::readBlock(unsigned long length) {
    if (m_fd < 0 || length == 0 || m_pos >= m_length)
        return TagLib::ByteVector();
    const long long want = std::min<long long>(static_cast<long long>(length), m_length - m_pos);
    TagLib::ByteVector data(static_cast<unsigned int>(want));
    const long long got = ReadAt(m_pos, data.data(), want);
    if (got < want)
        data.resize(static_cast<unsigned int>(got));
    m_pos += got;
    return data;
}

void ReadStream::seek(long offset, Position p) {
    m_pos = SeekTarget(offset, p, m_pos, m_length);
}

long ReadStream::tell() const {
    return static_cast<long>(m_pos);
}

long ReadStream::length() {
    return static_cast<long>(m_length);
}

} // namespace qlt_tag

// ---- CheckedStream -------------------------------------------------------------------------

namespace qlt_tag {

CheckedStream::CheckedStream(const QByteArray& nativePath) : m_path(nativePath) {
    m_fd = ::open(m_path.constData(), O_RDWR | O_CLOEXEC);
    if (m_fd < 0)
        m_error = errno;
}

CheckedStream::~CheckedStream() {
    if (m_fd >= 0)
        ::close(m_fd);
}

void CheckedStream::Note(int err) {
    if (err && !m_error)
        m_error = err;
}

int CheckedStream::Finish() {
    if (m_fd < 0)
        return m_error ? m_error : EBADF;
    Note(SafeFile::Fsync(m_fd));
    Note(SafeFile::Close(m_fd));
    m_fd = -1;
    return m_error;
}

TagLib::FileName CheckedStream::name() const {
    return m_path.constData();
}

TagLib::ByteVector CheckedStream::readBlock(unsigned long length) {
    if (m_fd < 0 || length == 0)
        return TagLib::ByteVector();
    const long long size = this->length();
    const long long want = std::min<long long>(static_cast<long long>(length), std::max(0LL, size - m_pos));
    TagLib::ByteVector data(static_cast<unsigned int>(want), 0);
    long long got = 0;
    while (got < want) {
        const ssize_t n = ::pread(m_fd, data.data() + got, static_cast<size_t>(want - got),
                                  static_cast<off_t>(m_pos + got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        got += n;
    }
    data.resize(static_cast<unsigned int>(got));
    m_pos += got;
    return data;
}

void CheckedStream::writeBlock(const TagLib::ByteVector& data) {
    if (m_fd < 0) {
        Note(EBADF);
        return;
    }
    Note(SafeFile::PWriteAll(m_fd, data.data(), data.size(), m_pos));
    m_pos += data.size();
}

// Moves count bytes from `from` to `to` inside the file (the ranges may overlap).
bool CheckedStream::Move(long long from, long long to, long long count) {
    if (count <= 0 || from == to)
        return true;
    constexpr long long kChunk = 1 << 20;
    QByteArray buf(static_cast<qsizetype>(std::min(kChunk, count)), Qt::Uninitialized);
    auto copy = [&](long long offset, long long n) {
        long long got = 0;
        while (got < n) {
            const ssize_t r = ::pread(m_fd, buf.data() + got, static_cast<size_t>(n - got),
                                      static_cast<off_t>(from + offset + got));
            if (r < 0 && errno == EINTR)
                continue;
            if (r <= 0) {
                Note(r < 0 ? errno : EIO);
                return false;
            }
            got += r;
        }
        const int e = SafeFile::PWriteAll(m_fd, buf.constData(), n, to + offset);
        Note(e);
        return e == 0;
    };
    if (to > from) { // from the end backwards, so that nothing is overwritten before it is read
        for (long long done = 0; done < count;) {
            const long long n = std::min(kChunk, count - done);
            if (!copy(count - done - n, n))
                return false;
            done += n;
        }
    } else {
        for (long long done = 0; done < count;) {
            const long long n = std::min(kChunk, count - done);
            if (!copy(done, n))
                return false;
            done += n;
        }
    }
    return true;
}

void CheckedStream::insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) {
    if (m_fd < 0) {
        Note(EBADF);
        return;
    }
    const long long size = length();
    const long long s = std::min<long long>(static_cast<long long>(start), size);
    const long long oldEnd = std::min<long long>(s + static_cast<long long>(replace), size);
    const long long newEnd = s + data.size();
    if (newEnd != oldEnd) {
        if (!Move(oldEnd, newEnd, size - oldEnd))
            return;
        if (newEnd < oldEnd)
            Note(SafeFile::Truncate(m_fd, size - (oldEnd - newEnd)));
    }
    Note(SafeFile::PWriteAll(m_fd, data.data(), data.size(), s));
    m_pos = newEnd;
}

void CheckedStream::removeBlock(unsigned long start, unsigned long length) {
    insert(TagLib::ByteVector(), start, length);
}

void CheckedStream::seek(long offset, Position p) {
    long long pos = offset;
    if (p == Current)
        pos = m_pos + offset;
    else if (p == End)
        pos = length() + offset;
    m_pos = std::max<long long>(0, pos);
}

long CheckedStream::tell() const {
    return static_cast<long>(m_pos);
}

long CheckedStream::length() {
    struct stat st {};
    if (m_fd < 0 || ::fstat(m_fd, &st) != 0)
        return 0;
    return static_cast<long>(st.st_size);
}

void CheckedStream::truncate(long length) {
    if (m_fd < 0) {
        Note(EBADF);
        return;
    }
    Note(SafeFile::Truncate(m_fd, length));
}

} // namespace qlt_tag
