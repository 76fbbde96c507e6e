#include "platform/voice/SphinxModel.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace platform {

namespace {

constexpr qint32 kByteOrder = 0x11223344;
constexpr int kLongestText = 1000;
constexpr qint64 kMostFeatures = 1000;
constexpr qint64 kMostWeights = 1 << 24; // in a row, and rows

// Reads the head of a file, which has numbers and texts. Whatever is not there, or is not possible, makes it
// bad for good.
class Head {
public:
    explicit Head(const QString &path) : m_file(path)
    {
        m_good = QFileInfo(path).isFile() && m_file.open(QIODevice::ReadOnly);
    }

    qint32 Number()
    {
        const QByteArray bytes = Bytes(4);
        return m_good ? qFromLittleEndian<qint32>(bytes.constData()) : 0;
    }
    // Of things in the file, each of which takes some room there.
    qint64 Count()
    {
        const qint64 count = Number();
        return count >= 0 && count <= m_file.size() ? count : Bad();
    }
    // Up to that letter, which is left out.
    QByteArray TextUntil(char end)
    {
        QByteArray text;
        char letter = 0;
        while (m_good && text.size() < kLongestText && m_file.getChar(&letter)) {
            if (letter == end)
                return text;
            text += letter;
        }
        Bad();
        return text;
    }
    QByteArray Bytes(qint64 length)
    {
        const QByteArray text = m_good && length <= kLongestText ? m_file.read(length) : QByteArray();
        if (text.size() < length)
            Bad();
        return text;
    }
    void Skip(qint64 bytes)
    {
        if (!Has(bytes))
            Bad();
        else
            m_file.seek(m_file.pos() + bytes);
    }

    qint64 Position() const { return m_file.pos(); }
    bool IsGood() const { return m_good; }
    // Whether so much follows.
    bool Has(qint64 bytes) const { return m_good && bytes >= 0 && bytes <= m_file.size() - m_file.pos(); }

private:
    qint32 Bad()
    {
        m_good = false;
        return 0;
    }

    QFile m_file;
    bool m_good = false;
};

// Lines of text, a mark, the measures of a field of numbers, how many they are, the numbers, and often a sum.
bool FieldIsWhole(const QString &path, bool ofVectors)
{
    Head head(path);
    bool hasSum = false;
    for (QByteArray line; head.IsGood() && !line.startsWith("endhdr"); line = head.TextUntil('\n').trimmed())
        hasSum = hasSum || line.startsWith("chksum0");
    if (head.Number() != kByteOrder)
        return false;
    head.Count();
    const qint64 second = head.Count();
    head.Count();
    // The lengths of the vectors.
    if (ofVectors)
        head.Skip(second * 4);
    return head.Has(head.Count() * 4 + (hasSum ? 4 : 0));
}

// The sounds, and which of them stand beside which.
bool SoundsAreWhole(const QString &path)
{
    Head head(path);
    if (head.Bytes(4) != "BMDF")
        return false;
    head.Number(); // the version
    head.Skip(head.Count());
    const qint64 names = head.Count();
    const qint64 sounds = head.Count();
    const bool sameStates = head.Number() != 0;
    head.Skip(3 * 4);
    const qint64 sequences = head.Count();
    head.Number();
    const qint64 branches = head.Count();
    head.Number();
    const qint64 began = head.Position();
    for (qint64 name = 0; name < names && head.IsGood(); ++name)
        head.TextUntil('\0');
    head.Skip((4 - (head.Position() - began) % 4) % 4);
    head.Skip(branches * 8);
    head.Skip(sounds * 12);
    return head.Has(head.Count() * 2 + (sameStates ? 0 : sequences));
}

// Texts, each behind its length, the last of them empty, and a byte, or half of one, for each of many
// weights.
bool WeightsAreWhole(const QString &path)
{
    Head head(path);
    qint64 features = 1, rows = 0, columns = 0, clusters = 0, bits = 8;
    while (const qint64 length = head.Count()) {
        const QByteArray text = head.Bytes(length);
        const auto told = [&text](const char *what, qint64 &number) {
            if (text.startsWith(what))
                number = text.mid(qstrlen(what)).replace('\0', "").trimmed().toInt();
        };
        told("feature_count ", features);
        told("mixture_count ", rows);
        told("model_count ", columns);
        told("cluster_count ", clusters);
        told("cluster_bits ", bits);
    }
    rows = rows ? rows : head.Count();
    columns = columns ? columns : head.Count();
    const qint64 inRow = bits == 4 ? (columns + 1) / 2 : columns;
    const auto isPossible = [](qint64 number, qint64 most) { return number > 0 && number <= most; };
    return isPossible(features, kMostFeatures) && isPossible(rows, kMostWeights) &&
           isPossible(columns, kMostWeights) && clusters >= 0 && head.Has(clusters + features * rows * inRow);
}

} // namespace

bool IsWholeSphinxModel(const QString &folder)
{
    const auto path = [&folder](const char *name) { return folder + QLatin1Char('/') + QLatin1String(name); };
    return SoundsAreWhole(path("mdef")) && FieldIsWhole(path("means"), true) &&
           FieldIsWhole(path("variances"), true) && FieldIsWhole(path("transition_matrices"), false) &&
           (QFile::exists(path("sendump")) ? WeightsAreWhole(path("sendump"))
                                           : FieldIsWhole(path("mixture_weights"), false));
}

} // namespace platform
