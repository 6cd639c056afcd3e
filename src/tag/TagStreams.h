#pragma once
// Stream adapters between our file layout and TagLib.
//
// RangeStream shows TagLib one byte range of an open stream (the audio part of a file
// without the ID3v2 tag in front and the APE, Lyrics3 and ID3v1 tags behind it), read
// only. StreamFile lets the ID3v2 reader of TagLib work on any stream.

#include <QByteArray>
#include <taglib/tfile.h>
#include <taglib/tiostream.h>

namespace qlt_tag {

class RangeStream : public TagLib::IOStream {
public:
    RangeStream(TagLib::IOStream* base, long long start, long long end);
    TagLib::FileName name() const override;
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override;
    void seek(long offset, Position p = Beginning) override;
    long tell() const override;
    long length() override;
    void truncate(long) override {}

private:
    TagLib::IOStream* m_base;
    long long m_start;
    long long m_end;
    long long m_pos = 0;
};

// CheckedStream is the read-write stream that TagLib edits a temporary copy through:
// straight POSIX calls, and every failed write, truncate or move is remembered (TagLib
// itself does not look at the results). After TagLib's save, Error() tells whether each
// byte reached the copy.
class CheckedStream : public TagLib::IOStream {
public:
    explicit CheckedStream(const QByteArray& nativePath);
    ~CheckedStream() override;
    CheckedStream(const CheckedStream&) = delete;
    CheckedStream& operator=(const CheckedStream&) = delete;

    TagLib::FileName name() const override;
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, unsigned long start = 0, unsigned long replace = 0) override;
    void removeBlock(unsigned long start = 0, unsigned long length = 0) override;
    bool readOnly() const override { return false; }
    bool isOpen() const override { return m_fd >= 0; }
    void seek(long offset, Position p = Beginning) override;
    long tell() const override;
    long length() override;
    void truncate(long length) override;

    int Error() const { return m_error; } // errno of the first failure, 0 when none
    // Flushes and closes; returns Error() or the failure of the flush or close.
    int Finish();

private:
    void Note(int err);
    bool Move(long long from, long long to, long long count);
    QByteArray m_path;
    int m_fd = -1;
    long long m_pos = 0;
    int m_error = 0;
};

// ReadStream reads a file for the tag readers with few system calls: seek and tell only
// move a position, and small reads are served from a few cached blocks filled by pread.
// TagLib's own FileStream asks the kernel for the length on every read and reads through
// stdio, which costs about 30 calls per file; this one needs one open, a few preads and
// the close. Read only; the file may change underneath, then reads see what pread sees.
class ReadStream : public TagLib::IOStream {
public:
    // `length` is the file's size as just found by stat; a negative value asks fstat.
    ReadStream(const QByteArray& nativePath, long long length = -1);
    ~ReadStream() override;
    ReadStream(const ReadStream&) = delete;
    ReadStream& operator=(const ReadStream&) = delete;

    TagLib::FileName name() const override;
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return m_fd >= 0; }
    void seek(long offset, Position p = Beginning) override;
    long tell() const override;
    long length() override;
    void truncate(long) override {}

    static constexpr long long kBlock = 16384; // bytes per cached block
    static constexpr int kBlocks = 4;          // blocks kept (the head, the tail, the walk)

private:
    // Copies up to `count` bytes at `pos` into `out` and returns how many came.
    long long ReadAt(long long pos, char* out, long long count);
    const char* Block(long long start, long long& valid);
    long long PRead(long long pos, char* out, long long count);

    struct Cached {
        long long start = -1; // offset of the block, -1: empty
        long long valid = 0;  // bytes read into it (short at the end of the file)
        unsigned use = 0;     // for replacing the least recently used
        QByteArray bytes;
    };
    QByteArray m_path;
    int m_fd = -1;
    long long m_length = 0;
    long long m_pos = 0;
    unsigned m_clock = 0;
    Cached m_cache[kBlocks];
};

class StreamFile : public TagLib::File {
public:
    explicit StreamFile(TagLib::IOStream* stream) : TagLib::File(stream) {}
    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }
};

} // namespace qlt_tag
