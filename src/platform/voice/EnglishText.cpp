#include "platform/voice/EnglishText.h"

#include <QHash>

#include <algorithm>

namespace platform {

namespace {

// What one character outside ASCII is said as.
const QHash<QChar, QString> &SpecialCharacters()
{
    static const QHash<QChar, QString> table{
        { u'æ', "ae" },
        { u'Æ', "Ae" },
        { u'œ', "oe" },
        { u'Œ', "Oe" },
        { u'ø', "o" },
        { u'Ø', "O" },
        { u'ß', "ss" },
        { u'đ', "d" },
        { u'Đ', "D" },
        { u'ł', "l" },
        { u'Ł', "L" },
        { u'þ', "th" },
        { u'Þ', "Th" },
        { u'ð', "th" },
        { u'Ð', "Th" },
        { u'ı', "i" },
        { u'\u2018', "'" },
        { u'\u2019', "'" },
        { u'\u02bc', "'" },
        { u'\u00b4', "'" },
        { u'\u2013', "-" },
        { u'\u2014', " - " },
        { u'\u2212', "-" },
        { u'\u2010', "-" },
        { u'\u2011', "-" },
        { u'×', " times " },
        { u'÷', " divided by " },
        { u'½', " one half " },
        { u'¼', " one quarter " },
        { u'¾', " three quarters " },
        { u'²', " squared " },
        { u'³', " cubed " },
        { u'°', " degrees " },
        { u'¢', " cents " },
        { u'™', " " },
        { u'ª', " " },
        { u'º', " " },
    };
    return table;
}

// Whether exactly four digits stand at `at`.
bool IsYear(const QString &text, qsizetype at)
{
    const auto digit = [&text](qsizetype index) {
        return index >= 0 && index < text.size() && IsDigit(text[index]);
    };
    return digit(at) && digit(at + 1) && digit(at + 2) && digit(at + 3) && !digit(at - 1) && !digit(at + 4);
}

} // namespace

bool IsLetter(QChar character)
{
    return character.unicode() < 128 && character.isLetter();
}

bool IsDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool IsNumber(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), IsDigit);
}

QString PlainEnglish(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (const QChar character : text) {
        if (character.unicode() < 128) {
            plain += character.isPrint() ? character : QChar(u' ');
        } else if (const auto special = SpecialCharacters().constFind(character);
                   special != SpecialCharacters().cend()) {
            plain += *special;
        } else if (character == u'£' || character == u'€') {
            plain += character;
        } else if (character.isMark() || character.category() == QChar::Other_Format) {
            // An accent written apart, or a mark that is not seen.
        } else {
            bool sayable = false;
            for (const QChar part : QString(character).normalized(QString::NormalizationForm_KD)) {
                if (part.unicode() < 128) {
                    plain += part;
                    sayable = true;
                }
            }
            if (!sayable)
                plain += u' ';
        }
    }
    return plain;
}

QString WithSignsSaid(const QString &text)
{
    QString said;
    said.reserve(text.size());
    const auto at = [&text](qsizetype index) {
        return index >= 0 && index < text.size() ? text[index] : QChar(u' ');
    };
    const auto nextSolid = [&](qsizetype index, int step) {
        // Signs of arithmetic stand among few blanks.
        for (int tries = 0; tries < 3 && at(index).isSpace(); ++tries)
            index += step;
        return at(index);
    };
    for (qsizetype index = 0; index < text.size(); ++index) {
        const auto character = text[index];
        const auto before = at(index - 1);
        const auto after = at(index + 1);
        const bool alone = before.isSpace() && after.isSpace();
        const bool amongNumbers = IsDigit(nextSolid(index - 1, -1)) && IsDigit(nextSolid(index + 1, 1));
        const auto say = [&said](const char *word) { said += u' ' + QString::fromLatin1(word) + u' '; };
        switch (character.unicode()) {
        case u'&':
            say("and");
            break;
        case u'@':
            say("at");
            break;
        case u'+':
            say("plus");
            break;
        case u'=':
            say("equals");
            break;
        case u'%':
            say("percent");
            break;
        case u'$':
        case u'£':
        case u'€':
            // Signs of money begin a word of their own, and only with a number behind them.
            said += u' ';
            if (IsDigit(after))
                said += character;
            break;
        case u'#':
            say(IsDigit(after) ? "number" : "");
            break;
        case u'*':
            say(amongNumbers ? "times" : "");
            break;
        case u'<':
            say(alone || amongNumbers ? "less than" : "");
            break;
        case u'>':
            say(alone || amongNumbers ? "greater than" : "");
            break;
        case u'x':
        case u'X':
            if (amongNumbers && (alone || (IsDigit(before) && IsDigit(after))))
                say("times");
            else
                said += character;
            break;
        case u'/':
            say(amongNumbers ? "over" : "");
            break;
        case u'-':
            if (IsYear(text, index - 4) && IsYear(text, index + 1))
                say("to");
            else if (amongNumbers && (alone || (IsDigit(before) && IsDigit(after))))
                say("minus");
            else if (IsDigit(after) && before.isSpace())
                say("minus");
            else if (IsLetter(before) || IsDigit(before) || IsLetter(after))
                said += u' ';
            else
                said += QStringLiteral(" , ");
            break;
        case u'(':
        case u')':
            said += QStringLiteral(" , ");
            break;
        case u'"':
        case u'_':
        case u'\\':
        case u'^':
        case u'~':
        case u'|':
        case u'`':
        case u'[':
        case u']':
        case u'{':
        case u'}':
            said += u' ';
            break;
        default:
            said += character;
        }
    }
    return said;
}

QStringList NumberWords(const QString &digits)
{
    if (digits.size() > kLongestNumber)
        return digits.left(kMostDigits).split(QString(), Qt::SkipEmptyParts);
    if (digits.size() == 4) {
        const auto century = digits.left(2);
        const auto year = digits.right(2);
        const bool isYear = (digits >= QStringLiteral("1100") && digits <= QStringLiteral("1999")) ||
                            (digits >= QStringLiteral("2010") && digits <= QStringLiteral("2099"));
        if (!isYear)
            return { digits };
        if (year == u"00")
            return { century, QStringLiteral("hundred") };
        if (year[0] == u'0')
            return { century, QStringLiteral("oh"), year.right(1) };
        return { century, year };
    }
    if (digits.size() <= 4 || digits[0] == u'0')
        return { digits };
    QString grouped = digits;
    for (auto comma = digits.size() - 3; comma > 0; comma -= 3)
        grouped.insert(comma, u',');
    return { grouped };
}

} // namespace platform
