#include "ChmWriter.h"

#include <QtEndian>

#include <algorithm>
#include <utility>
#include <vector>

// The container has a header, a directory and the content. The directory is a row of chunks, each of which
// lists paths in alphabetical order, and, when there is more than one, chunks of a tree above them that tell
// where to look.

namespace {

constexpr qsizetype kChunkSize = 0x1000;
constexpr quint32 kEnglishOfBritain = 0x0809;
constexpr int kChunkHeader = 0x14;
constexpr int kTreeChunkHeader = 8;
// Every fifth entry of a chunk is found without reading those before it.
constexpr qsizetype kStride = 5;
constexpr quint32 kNone = 0xffffffff;

template <typename Number>
void Put(QByteArray &bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

void PutIdentifier(QByteArray &bytes, const char *hexadecimal)
{
    bytes += QByteArray::fromHex(hexadecimal);
}

// A number in seven bits a byte, the highest first.
QByteArray Packed(quint64 number)
{
    QByteArray bytes(1, char(number & 0x7f));
    for (number >>= 7; number != 0; number >>= 7)
        bytes.prepend(char((number & 0x7f) | 0x80));
    return bytes;
}

QByteArray PackedName(const QByteArray &name)
{
    return Packed(quint64(name.size())) + name;
}

struct Entry {
    QByteArray name;
    QByteArray row; // as it stands in the directory
};

// One chunk of the directory: what is in it and where its entries begin.
struct Chunk {
    QByteArray firstName;
    QByteArray rows;
    std::vector<quint16> starts;

    bool HasRoomFor(const QByteArray &row, int header) const
    {
        const auto marks = (qsizetype(starts.size()) + 1) / kStride;
        return header + rows.size() + row.size() + 2 * (marks + 1) <= kChunkSize;
    }
    void Add(const QByteArray &name, const QByteArray &row)
    {
        if (starts.empty())
            firstName = name;
        starts.push_back(quint16(rows.size()));
        rows += row;
    }
};

std::vector<Chunk> Divide(const std::vector<Entry> &entries, int header)
{
    std::vector<Chunk> chunks(1);
    for (const Entry &entry : entries) {
        if (!chunks.back().HasRoomFor(entry.row, header))
            chunks.emplace_back();
        chunks.back().Add(entry.name, entry.row);
    }
    return chunks;
}

QByteArray Finish(QByteArray start, const Chunk &chunk)
{
    start += chunk.rows;
    QByteArray end;
    Put(end, quint16(chunk.starts.size()));
    for (std::size_t index = kStride; index < chunk.starts.size(); index += kStride) {
        QByteArray mark;
        Put(mark, chunk.starts[index]);
        end.prepend(mark);
    }
    start += QByteArray(kChunkSize - start.size() - end.size(), '\0');
    return start + end;
}

QByteArray ListChunk(const Chunk &chunk, quint32 before, quint32 behind)
{
    QByteArray bytes("PMGL");
    Put(bytes, quint32(kChunkSize - kChunkHeader - chunk.rows.size()));
    Put(bytes, quint32(0));
    Put(bytes, before);
    Put(bytes, behind);
    return Finish(bytes, chunk);
}

QByteArray TreeChunk(const Chunk &chunk)
{
    QByteArray bytes("PMGI");
    Put(bytes, quint32(kChunkSize - kTreeChunkHeader - chunk.rows.size()));
    return Finish(bytes, chunk);
}

// What readers want to know first: which page to show, and where contents and index lie.
QByteArray SystemFile(const HelpHeader &header)
{
    QByteArray bytes;
    Put(bytes, quint32(3));
    const auto add = [&](quint16 code, const QByteArray &data) {
        Put(bytes, code);
        Put(bytes, quint16(data.size()));
        bytes += data;
    };
    const auto addText = [&](quint16 code, const QString &text) {
        if (!text.isEmpty())
            add(code, text.toUtf8() + '\0');
    };
    add(10, QByteArray(4, '\0')); // the date, which is left out
    addText(9, QStringLiteral("Tumblewick pack-help"));
    QByteArray language;
    Put(language, kEnglishOfBritain);
    add(4, language + QByteArray(32, '\0'));
    addText(2, header.startTopic);
    addText(3, header.title);
    addText(6, header.baseName);
    addText(0, header.contentsFile);
    addText(1, header.indexFile);
    return bytes;
}

// The names of the ways in which content is kept: there is but the plain one.
QByteArray WaysFile()
{
    const QString name = QStringLiteral("Uncompressed");
    QByteArray names;
    Put(names, quint16(name.size()));
    for (const QChar letter : name)
        Put(names, letter.unicode());
    Put(names, quint16(0));
    QByteArray bytes;
    Put(bytes, quint16((names.size() + 4) / 2));
    Put(bytes, quint16(1));
    return bytes + names;
}

// The chunks of the directory and what its header tells of them.
struct Directory {
    QByteArray chunks;
    quint32 count = 0;
    quint32 lists = 0; // of these, the first ones
    quint32 depth = 1;
    quint32 root = kNone; // none above a single list
};

Directory DirectoryOf(const std::vector<Entry> &entries)
{
    Directory directory;
    std::vector<Chunk> below = Divide(entries, kChunkHeader);
    directory.lists = directory.count = quint32(below.size());
    for (quint32 index = 0; index < directory.lists; ++index)
        directory.chunks += ListChunk(below[index], index == 0 ? kNone : index - 1,
                                      index + 1 == directory.lists ? kNone : index + 1);
    // Trees upon trees, until one chunk is above all.
    quint32 firstBelow = 0;
    while (below.size() > 1) {
        std::vector<Entry> rows;
        for (std::size_t index = 0; index < below.size(); ++index)
            rows.push_back(
                { below[index].firstName, PackedName(below[index].firstName) + Packed(firstBelow + index) });
        firstBelow = directory.count;
        below = Divide(rows, kTreeChunkHeader);
        for (const Chunk &chunk : below)
            directory.chunks += TreeChunk(chunk);
        directory.count += quint32(below.size());
        directory.root = directory.count - 1;
        ++directory.depth;
    }
    return directory;
}

// What stands before the chunks: the header of the file, that of its sizes and that of the directory.
QByteArray HeadersOf(const Directory &directory, quint64 contentSize)
{
    constexpr quint64 kHeaderSize = 0x60;
    constexpr quint64 kSizesSize = 0x18;
    constexpr quint64 kDirectoryHeaderSize = 0x54;
    const quint64 directorySize = kDirectoryHeaderSize + quint64(directory.chunks.size());
    const quint64 contentStart = kHeaderSize + kSizesSize + directorySize;

    QByteArray bytes("ITSF");
    Put(bytes, quint32(3));
    Put(bytes, quint32(kHeaderSize));
    Put(bytes, quint32(1));
    Put(bytes, quint32(0)); // the date
    Put(bytes, kEnglishOfBritain);
    PutIdentifier(bytes, "10fd017caa7bd0119e0c00a0c922e6ec");
    PutIdentifier(bytes, "11fd017caa7bd0119e0c00a0c922e6ec");
    Put(bytes, kHeaderSize);
    Put(bytes, kSizesSize);
    Put(bytes, kHeaderSize + kSizesSize);
    Put(bytes, directorySize);
    Put(bytes, contentStart);

    Put(bytes, quint32(0x01fe));
    Put(bytes, quint32(0));
    Put(bytes, contentStart + contentSize);
    Put(bytes, quint64(0));

    bytes += "ITSP";
    Put(bytes, quint32(1));
    Put(bytes, quint32(kDirectoryHeaderSize));
    Put(bytes, quint32(0x0a));
    Put(bytes, quint32(kChunkSize));
    Put(bytes, quint32(2)); // marks stand every two to the power of this, and one, entries
    Put(bytes, directory.depth);
    Put(bytes, directory.root);
    Put(bytes, quint32(0));
    Put(bytes, directory.lists - 1);
    Put(bytes, kNone);
    Put(bytes, directory.count);
    Put(bytes, kEnglishOfBritain);
    PutIdentifier(bytes, "6a92025d2e21d0119df900a0c922e6ec");
    Put(bytes, quint32(kDirectoryHeaderSize));
    for (int unused = 0; unused < 3; ++unused)
        Put(bytes, kNone);
    return bytes;
}

} // namespace

QByteArray WriteChm(const HelpHeader &header, const std::map<QString, QByteArray> &files)
{
    std::vector<std::pair<QByteArray, QByteArray>> all;
    all.emplace_back("/", QByteArray());
    all.emplace_back("/#SYSTEM", SystemFile(header));
    all.emplace_back("::DataSpace/NameList", WaysFile());
    for (const auto &[path, content] : files)
        all.emplace_back('/' + path.toUtf8(), content);
    std::sort(all.begin(), all.end(), [](const auto &one, const auto &other) {
        return std::pair(one.first.toLower(), one.first) < std::pair(other.first.toLower(), other.first);
    });

    QByteArray content;
    std::vector<Entry> entries;
    for (const auto &[name, bytes] : all) {
        const quint64 place = bytes.isEmpty() ? 0 : quint64(content.size());
        entries.push_back(
            { name, PackedName(name) + Packed(0) + Packed(place) + Packed(quint64(bytes.size())) });
        content += bytes;
    }
    const Directory directory = DirectoryOf(entries);
    return HeadersOf(directory, quint64(content.size())) + directory.chunks + content;
}
