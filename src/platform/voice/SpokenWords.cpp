#include "platform/voice/SpokenWords.h"

#include "platform/voice/Pronunciations.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

using std::chrono::milliseconds;

// No word is longer; of what somebody types who leans on a key, only the beginning is said.
constexpr qsizetype kLongestWord = 48;
// Longer numbers are read digit by digit, and no further than this.
constexpr qsizetype kLongestNumber = 12;
constexpr qsizetype kMostDigits = 24;

constexpr milliseconds kCommaPause{ 120 };
constexpr milliseconds kDoubledCommaPause{ 300 };
constexpr milliseconds kColonPause{ 220 };
// Letters that are spelled out have to be told apart.
constexpr milliseconds kLetterPause{ 240 };
constexpr milliseconds kDoubledLetterPause{ 360 };

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

bool IsMark(QChar character)
{
    return QStringView(u",;:.!?").contains(character);
}

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

// ASCII and the signs of money; everything else is rewritten or becomes a blank.
QString Plain(const QString &text)
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

// Whether exactly four digits stand at `at`.
bool IsYear(const QString &text, qsizetype at)
{
    const auto digit = [&text](qsizetype index) {
        return index >= 0 && index < text.size() && IsDigit(text[index]);
    };
    return digit(at) && digit(at + 1) && digit(at + 2) && digit(at + 3) && !digit(at - 1) && !digit(at + 4);
}

// Turns signs into words, where they stand for one.
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

// Numbers in the form in which the engine reads them well.
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

bool IsAbbreviation(const QString &word)
{
    static const QSet<QString> table{ "mr", "mrs", "ms", "dr", "st", "prof", "jr", "sr", "vs", "mt", "no" };
    return table.contains(word.toLower());
}

// Gathers the words of a line, unit by unit.
class Gatherer {
public:
    void Add(const SpeechUnit &unit, std::size_t index, const QString &said)
    {
        m_unit = index;
        m_stressed = unit.stressed;
        m_before += milliseconds(unit.pause);
        for (const auto &piece : said.split(u' ', Qt::SkipEmptyParts))
            AddPiece(piece);
    }

    // In whatever language: marks only end words, and a sign is a word.
    void AddAsWritten(const SpeechUnit &unit, std::size_t index)
    {
        m_unit = index;
        m_stressed = unit.stressed;
        m_before += milliseconds(unit.pause);
        for (const auto &piece : unit.spoken.simplified().split(u' ', Qt::SkipEmptyParts))
            AddPieceAsWritten(piece);
    }

    SpokenWords Take(Reading reading)
    {
        if (reading == Reading::English)
            NameLetters();
        else
            NameLettersAsWritten();
        for (std::size_t index = 0; index < m_words.size(); ++index) {
            auto &word = m_words[index];
            const auto marks = m_marks[index];
            const bool letter = word.letter;
            const auto commas = marks.count(u',') + marks.count(u';');
            if (commas > 0)
                word.after = commas > 1 ? (letter ? kDoubledLetterPause : kDoubledCommaPause)
                                        : (letter ? kLetterPause : kCommaPause);
            if (marks.contains(u':'))
                word.after = std::max(word.after, kColonPause);
        }
        return { std::move(m_words), m_before };
    }

private:
    // A run between white space: words with marks between and behind them.
    void AddPiece(const QString &piece)
    {
        QString word;
        for (qsizetype index = 0; index < piece.size(); ++index) {
            const auto character = piece[index];
            if (IsMark(character) && !BelongsToNumber(piece, index)) {
                const bool dotted = character == u'.' && word.size() == 1 && IsLetter(word[0]);
                AddWord(word);
                word.clear();
                // The dots of U.S.A. are not heard, but for the last one.
                if (!dotted || index + 1 == piece.size() || !IsLetter(piece[index + 1]))
                    AddMark(character);
            } else {
                word += character;
            }
        }
        AddWord(word);
    }

    // Keeps apostrophes, hyphens and points inside a word, which mean something in its language.
    void AddPieceAsWritten(const QString &piece)
    {
        const auto sounds = [](QChar character) {
            return character.isLetterOrNumber() || character.isMark() || character.isHighSurrogate() ||
                   character.isLowSurrogate();
        };
        qsizetype begins = 0;
        while (begins < piece.size() && !sounds(piece[begins])) {
            AddMark(MarkOf(piece[begins]));
            ++begins;
        }
        auto ends = piece.size();
        while (ends > begins && !sounds(piece[ends - 1]))
            --ends;
        if (ends > begins) {
            auto word = piece.mid(begins, std::min(ends - begins, kLongestWord));
            // Signs that would switch the engine's voice or way of reading.
            for (const QChar sign : QStringView(u"<>&[]{}\\"))
                word.replace(sign, u' ');
            SpokenWord spoken;
            spoken.text = word.simplified().toUtf8();
            spoken.unit = m_unit;
            spoken.before = std::exchange(m_before, milliseconds(0));
            spoken.stressed = m_stressed;
            m_words.push_back(std::move(spoken));
            m_marks.emplace_back();
        }
        for (auto index = ends; index < piece.size(); ++index)
            AddMark(MarkOf(piece[index]));
    }

    // The mark of English that does the same; null for what is none.
    static QChar MarkOf(QChar mark)
    {
        switch (mark.unicode()) {
        case u'\u3001':
        case u'\uff0c':
        case u'\u060c':
            return u',';
        case u'\u3002':
        case u'\u0964':
            return u'.';
        case u'\uff1f':
        case u'\u061f':
            return u'?';
        case u'\uff01':
            return u'!';
        default:
            return IsMark(mark) ? mark : QChar();
        }
    }

    // A letter that stands by itself with a mark behind it is spelled; without one it is a word of the
    // language, unless it is all there is.
    void NameLettersAsWritten()
    {
        for (auto &word : m_words) {
            const auto text = QString::fromUtf8(word.text);
            const bool single = text.size() == 1 && text[0].isLetter();
            word.letter = single && (!word.punctuation.isEmpty() || m_words.size() == 1);
        }
    }

    static bool BelongsToNumber(const QString &piece, qsizetype index)
    {
        const auto digit = [&piece](qsizetype at) {
            return at >= 0 && at < piece.size() && IsDigit(piece[at]);
        };
        if (!digit(index + 1))
            return false;
        switch (piece[index].unicode()) {
        case u'.':
            return digit(index - 1) || index == 0;
        case u':':
            return digit(index - 1) && digit(index + 2) && !digit(index + 3);
        case u',':
            return digit(index - 1) && digit(index + 2) && digit(index + 3) && !digit(index + 4);
        default:
            return false;
        }
    }

    void AddMark(QChar mark)
    {
        if (m_words.empty() || mark.isNull())
            return;
        m_marks.back() += mark;
        auto &word = m_words.back();
        const bool ends =
            mark == u'!' || mark == u'?' || (mark == u'.' && !IsAbbreviation(QString::fromLatin1(word.text)));
        word.endsSentence = word.endsSentence || ends;
        // The strongest mark makes the melody; of two equal ones the first.
        static const QByteArray strength = ",;:.!?";
        const char sign = mark.toLatin1();
        if (word.punctuation.isEmpty() || strength.indexOf(sign) > strength.indexOf(word.punctuation[0]))
            word.punctuation = QByteArray(1, sign);
    }

    void AddWord(QString word)
    {
        const auto quote = [](QChar character) { return character == u'\''; };
        while (!word.isEmpty() && quote(word.front()))
            word.remove(0, 1);
        while (!word.isEmpty() && quote(word.back()))
            word.chop(1);
        while (word.contains(QStringLiteral("''")))
            word.replace(QStringLiteral("''"), QStringLiteral("'"));
        if (word.isEmpty())
            return;
        if (word[0] == u'£' || word[0] == u'€') {
            const auto unit = word[0] == u'£' ? QStringLiteral("pounds") : QStringLiteral("euros");
            AddWord(word.mid(1));
            Append(unit);
        } else if (word[0] == u'.') {
            Append(QStringLiteral("0") + word.left(kMostDigits));
        } else if (IsNumber(word)) {
            for (const auto &part : NumberWords(word))
                Append(part);
        } else {
            // A number of this length is no number any more, and the engine would count on for minutes.
            const auto digits = std::count_if(word.cbegin(), word.cend(), IsDigit);
            Append(word.left(digits > kLongestNumber ? kLongestNumber : kLongestWord));
        }
    }

    void Append(const QString &text)
    {
        SpokenWord word;
        word.text = text.toLatin1();
        word.phones = PronunciationOf(text);
        word.unit = m_unit;
        word.before = std::exchange(m_before, milliseconds(0));
        word.stressed = m_stressed;
        m_words.push_back(std::move(word));
        m_marks.emplace_back();
    }

    // Single letters are said by their names, but for the article and the person.
    void NameLetters()
    {
        const auto single = [this](std::size_t index) {
            return index < m_words.size() && m_words[index].text.size() == 1 &&
                   IsLetter(QLatin1Char(m_words[index].text[0]));
        };
        const auto sureLetter = [&](std::size_t index) {
            return single(index) && !QByteArray("aAiI").contains(m_words[index].text[0]);
        };
        for (std::size_t index = 0; index < m_words.size(); ++index) {
            if (!single(index))
                continue;
            auto &word = m_words[index];
            const auto letter = word.text.toLower()[0];
            if (letter == 'a' || letter == 'i') {
                const bool first = index == 0 || m_words[index - 1].endsSentence;
                const bool capitalInside = word.text == "A" && !first;
                const bool amongLetters = (index > 0 && sureLetter(index - 1)) || sureLetter(index + 1);
                if (!capitalInside && !amongLetters && word.punctuation.isEmpty() && m_words.size() > 1)
                    continue;
            }
            word.letter = true;
            word.phones = LetterName(QLatin1Char(word.text[0]));
        }
    }

    std::vector<SpokenWord> m_words;
    std::vector<QString> m_marks; // of each word, all marks behind it
    milliseconds m_before{ 0 };
    std::size_t m_unit = 0;
    bool m_stressed = false;
};

} // namespace

SpokenWords SpokenWords::Of(const SpeechText &text, Reading reading)
{
    Gatherer gatherer;
    if (reading == Reading::AsWritten) {
        for (std::size_t index = 0; index < text.units.size(); ++index)
            gatherer.AddAsWritten(text.units[index], index);
        return gatherer.Take(reading);
    }
    // A sign is read by what stands round it, so the line is taken whole, with a line feed between units.
    QString plain;
    for (const auto &unit : text.units)
        plain += Plain(unit.spoken) + u'\n';
    const auto said = WithSignsSaid(plain).split(u'\n');
    for (std::size_t index = 0; index < text.units.size(); ++index)
        gatherer.Add(text.units[index], index, said[static_cast<qsizetype>(index)]);
    return gatherer.Take(reading);
}

} // namespace platform
