#include "platform/voice/SpokenWords.h"

#include "platform/voice/EnglishText.h"
#include "platform/voice/Pronunciations.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

using std::chrono::milliseconds;

// No word is longer; of what somebody types who leans on a key, only the beginning is said.
constexpr qsizetype kLongestWord = 48;

constexpr milliseconds kCommaPause{ 120 };
constexpr milliseconds kDoubledCommaPause{ 300 };
constexpr milliseconds kColonPause{ 220 };
// Letters that are spelled out have to be told apart.
constexpr milliseconds kLetterPause{ 240 };
constexpr milliseconds kDoubledLetterPause{ 360 };

bool IsMark(QChar character)
{
    return QStringView(u",;:.!?").contains(character);
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
        plain += PlainEnglish(unit.spoken) + u'\n';
    const auto said = WithSignsSaid(plain).split(u'\n');
    for (std::size_t index = 0; index < text.units.size(); ++index)
        gatherer.Add(text.units[index], index, said[static_cast<qsizetype>(index)]);
    return gatherer.Take(reading);
}

} // namespace platform
