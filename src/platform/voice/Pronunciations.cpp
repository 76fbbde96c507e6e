#include "platform/voice/Pronunciations.h"

#include "platform/voice/PronunciationTable.h"

#include <QHash>

#include <array>

namespace platform {

namespace {

// clang-format off
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
        for (const auto &line : QByteArray(kPronunciationTable).split('\n')) {
            const auto space = line.indexOf(' ');
            if (space > 0 && !line.startsWith('#'))
                entries.insert(QString::fromLatin1(line.left(space)), line.mid(space + 1).trimmed());
        }
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
