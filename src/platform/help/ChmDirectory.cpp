#include "platform/help/ChmDirectory.h"

#include <QFile>
#include <QtEndian>

#include <set>

namespace platform {

namespace {

constexpr qint64 kHeaderSize = 0x60;
constexpr qint64 kDirectoryHeaderSize = 0x54;
constexpr quint32 kListHeader = 0x14;
constexpr quint32 kTreeHeader = 8;
constexpr quint32 kNone = 0xffffffff;
constexpr quint32 kSmallestChunk = 0x200;
constexpr quint32 kLargestChunk = 0x10000;
constexpr quint32 kMostChunks = 4096;
// The library copies names into a buffer that holds a little more than this.
constexpr quint64 kLongestName = 500;
constexpr quint64 kLargestPage = 64 << 20;
// Where the library would look for tables of packed content, which it believes without looking twice.
constexpr char kPackedContent[] = "::DataSpace/Storage/MSCompressed/";
constexpr int kDeepestTree = 8;

[[noreturn]] void Damaged()
{
    throw ChmFault(ChmFault::kDamaged);
}

quint32 Number32(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint32>(bytes.constData() + place);
}

quint64 Number64(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint64>(bytes.constData() + place);
}

// The entries of one chunk, taken from its start to the end of what is used of it.
class Reader {
public:
    Reader(const QByteArray &chunk, quint32 header) : m_chunk(chunk), m_place(header)
    {
        const quint32 unused = Number32(chunk, 4);
        if (unused > chunk.size() - header)
            Damaged();
        m_end = chunk.size() - qsizetype(unused);
    }

    bool AtEnd() const { return m_place >= m_end; }

    // A number in seven bits a byte, the highest first.
    quint64 TakeNumber()
    {
        quint64 number = 0;
        for (int bytes = 0; bytes < 9; ++bytes) {
            if (AtEnd())
                Damaged();
            const auto byte = static_cast<quint8>(m_chunk[m_place++]);
            number = (number << 7) | (byte & 0x7f);
            if ((byte & 0x80) == 0)
                return number;
        }
        Damaged();
    }

    QByteArray TakeName()
    {
        const quint64 length = TakeNumber();
        if (length == 0 || length > kLongestName || qsizetype(length) > m_end - m_place)
            Damaged();
        const QByteArray name = m_chunk.mid(m_place, qsizetype(length));
        if (name.contains('\0'))
            Damaged();
        m_place += qsizetype(length);
        return name;
    }

private:
    const QByteArray &m_chunk;
    qsizetype m_place;
    qsizetype m_end = 0;
};

class Directory {
public:
    explicit Directory(QFile &file) : m_file(file)
    {
        const QByteArray header = Bytes(0, kHeaderSize);
        if (!header.startsWith("ITSF"))
            throw ChmFault(ChmFault::kNotHelp);
        if (header.size() < kHeaderSize)
            Damaged();
        const quint64 start = Number64(header, 0x48);
        m_contentStart = Number64(header, 0x58);
        const quint64 size = quint64(m_file.size());
        if (Number32(header, 4) != 3 || Number32(header, 8) != kHeaderSize || start > size ||
            m_contentStart > size)
            Damaged();

        const QByteArray top = Bytes(qint64(start), kDirectoryHeaderSize);
        if (top.size() < kDirectoryHeaderSize || !top.startsWith("ITSP") ||
            Number32(top, 8) != kDirectoryHeaderSize)
            Damaged();
        m_start = qint64(start) + kDirectoryHeaderSize;
        m_chunkSize = Number32(top, 0x10);
        m_root = Number32(top, 0x1c);
        m_firstList = Number32(top, 0x20);
        m_chunks = Number32(top, 0x2c);
        if (m_chunkSize < kSmallestChunk || m_chunkSize > kLargestChunk || m_chunks == 0 ||
            m_chunks > kMostChunks)
            Damaged();
    }

    std::vector<ChmEntry> Entries()
    {
        std::vector<ChmEntry> entries;
        std::set<quint32> seen;
        for (quint32 index = m_firstList; index != kNone;) {
            if (!seen.insert(index).second)
                Damaged();
            const QByteArray chunk = Chunk(index);
            if (!chunk.startsWith("PMGL"))
                Damaged();
            ReadList(chunk, entries);
            index = Number32(chunk, 0x10);
        }
        std::set<quint32> climbed;
        if (m_root != kNone)
            CheckTree(m_root, climbed, 0);
        return entries;
    }

private:
    QByteArray Bytes(qint64 place, qint64 count) const
    {
        return m_file.seek(place) ? m_file.read(count) : QByteArray();
    }

    QByteArray Chunk(quint32 index) const
    {
        if (index >= m_chunks)
            Damaged();
        const QByteArray bytes = Bytes(m_start + qint64(index) * m_chunkSize, m_chunkSize);
        if (bytes.size() != qsizetype(m_chunkSize))
            Damaged();
        return bytes;
    }

    void ReadList(const QByteArray &chunk, std::vector<ChmEntry> &entries) const
    {
        Reader reader(chunk, kListHeader);
        while (!reader.AtEnd()) {
            ChmEntry entry;
            entry.name = reader.TakeName();
            const quint64 section = reader.TakeNumber();
            const quint64 start = reader.TakeNumber();
            entry.length = reader.TakeNumber();
            if (section != 0 || entry.name.startsWith(kPackedContent))
                throw ChmFault(ChmFault::kUnreadable);
            const quint64 room = quint64(m_file.size()) - m_contentStart;
            if (entry.length > kLargestPage || start > room || entry.length > room - start)
                Damaged();
            entries.push_back(std::move(entry));
        }
    }

    // The tree leads the library from the root down to a list; no chunk may be met twice on the way.
    void CheckTree(quint32 index, std::set<quint32> &climbed, int depth) const
    {
        if (depth > kDeepestTree || !climbed.insert(index).second)
            Damaged();
        const QByteArray chunk = Chunk(index);
        if (chunk.startsWith("PMGL"))
            return;
        if (!chunk.startsWith("PMGI"))
            Damaged();
        Reader reader(chunk, kTreeHeader);
        while (!reader.AtEnd()) {
            reader.TakeName();
            const quint64 below = reader.TakeNumber();
            if (below >= m_chunks)
                Damaged();
            CheckTree(quint32(below), climbed, depth + 1);
        }
    }

    QFile &m_file;
    qint64 m_start = 0;
    quint64 m_contentStart = 0;
    quint32 m_chunkSize = 0;
    quint32 m_root = kNone;
    quint32 m_firstList = 0;
    quint32 m_chunks = 0;
};

} // namespace

std::vector<ChmEntry> ReadChmDirectory(QFile &file)
{
    return Directory(file).Entries();
}

} // namespace platform
