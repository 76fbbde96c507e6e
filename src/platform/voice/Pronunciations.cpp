#include "platform/voice/Pronunciations.h"

#include <QHash>

#include <array>

namespace platform {

namespace {

struct Entry {
    const char *word;
    const char *phones;
};

// clang-format off
constexpr Entry kEntries[] = {
    // The people and the name of the game.
    { "peedy",       "p iy1 d iy0" },
    { "genie",       "jh iy1 n iy0" },
    { "merlin",      "m er1 l ax0 n" },
    { "tumblewick",  "t ah1 m b ax0 l w ih1 k" },
    // Contractions, which the engine reads without their apostrophe.
    { "couldn't",    "k uh1 d ax0 n t" },
    { "doesn't",     "d ah1 z ax0 n t" },
    { "hadn't",      "hh ae1 d ax0 n t" },
    { "hasn't",      "hh ae1 z ax0 n t" },
    { "haven't",     "hh ae1 v ax0 n t" },
    { "isn't",       "ih1 z ax0 n t" },
    { "mustn't",     "m ah1 s ax0 n t" },
    { "needn't",     "n iy1 d ax0 n t" },
    { "shouldn't",   "sh uh1 d ax0 n t" },
    { "they're",     "dh eh1 r" },
    { "wasn't",      "w aa1 z ax0 n t" },
    { "wouldn't",    "w uh1 d ax0 n t" },
    { "rock'n'roll", "r aa1 k ax0 n r ow1 l" },
    // Words of lists and lines.
    { "hmm",           "hh m" },
    { "practise",      "p r ae1 k t ih0 s" },
    { "realise",       "r iy1 ax0 l ay0 z" },
    { "triceratops",   "t r ay0 s eh1 r ax0 t aa0 p s" },
    { "tyrannosaurus", "t ih0 r ae1 n ax0 s ao1 r ax0 s" },
    { "wammy",         "w ae1 m iy0" },
};

constexpr const char *kLetterNames[] = {
    "ey1", "b iy1", "s iy1", "d iy1", "iy1", "eh1 f", "jh iy1", "ey1 ch", "ay1", "jh ey1", "k ey1", "eh1 l", "eh1 m",
    "eh1 n", "ow1", "p iy1", "k y uw1", "aa1 r", "eh1 s", "t iy1", "y uw1", "v iy1", "d ah1 b ax0 l y uw0", "eh1 k s",
    "w ay1", "z iy1",
};
// clang-format on

QByteArray WithPossessive(const QByteArray &phones)
{
    const auto last = phones.mid(phones.lastIndexOf(' ') + 1);
    for (const char *hissing : { "s", "z", "sh", "zh", "ch", "jh" })
        if (last == hissing)
            return phones + " ih0 z";
    for (const char *voiceless : { "p", "t", "k", "f", "th" })
        if (last == voiceless)
            return phones + " s";
    return phones + " z";
}

} // namespace

QByteArray PronunciationOf(const QString &word)
{
    static const auto table = [] {
        QHash<QString, QByteArray> entries;
        for (const auto &entry : kEntries)
            entries.insert(QString::fromLatin1(entry.word), entry.phones);
        return entries;
    }();
    const auto lower = word.toLower();
    if (const auto found = table.constFind(lower); found != table.cend())
        return *found;
    if (lower.endsWith(QStringLiteral("'s")))
        if (const auto found = table.constFind(lower.chopped(2)); found != table.cend())
            return WithPossessive(*found);
    return {};
}

QByteArray LetterName(QChar letter)
{
    const auto lower = letter.toLower().unicode();
    return lower >= u'a' && lower <= u'z' ? QByteArray(kLetterNames[lower - u'a']) : QByteArray();
}

} // namespace platform
