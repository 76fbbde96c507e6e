#include "platform/agent/OrderedJson.h"

#include <QCborArray>
#include <QCborMap>

#include <cmath>

namespace platform {

namespace {

constexpr int kDeepest = 32;

class JsonText {
public:
    explicit JsonText(const QByteArray &text) : m_text(text) {}

    QCborValue Read()
    {
        QCborValue value = Value(0);
        SkipBlanks();
        if (m_at != m_text.size())
            Fail(QStringLiteral("there is something behind the end"));
        return value;
    }

private:
    [[noreturn]] void Fail(const QString &problem) const
    {
        throw JsonFault{ 1 + int(m_text.left(m_at).count('\n')), problem };
    }

    char Peek() const { return m_at < m_text.size() ? m_text.at(m_at) : '\0'; }

    void SkipBlanks()
    {
        while (Peek() == ' ' || Peek() == '\t' || Peek() == '\n' || Peek() == '\r')
            ++m_at;
    }

    bool Take(char expected)
    {
        SkipBlanks();
        if (Peek() != expected)
            return false;
        ++m_at;
        return true;
    }

    bool TakeWord(const char *word)
    {
        if (!m_text.mid(m_at).startsWith(word))
            return false;
        m_at += qsizetype(qstrlen(word));
        return true;
    }

    QCborValue Value(int depth)
    {
        if (depth > kDeepest)
            Fail(QStringLiteral("it is nested too deeply"));
        SkipBlanks();
        switch (Peek()) {
        case '{':
            return Object(depth);
        case '[':
            return List(depth);
        case '"':
            return String();
        case 't':
        case 'f':
        case 'n':
            if (TakeWord("true"))
                return true;
            if (TakeWord("false"))
                return false;
            if (TakeWord("null"))
                return QCborValue(nullptr);
            Fail(QStringLiteral("there is an unknown word"));
        default:
            return Number();
        }
    }

    QCborValue Object(int depth)
    {
        ++m_at;
        QCborMap map;
        if (Take('}'))
            return map;
        do {
            SkipBlanks();
            if (Peek() != '"')
                Fail(QStringLiteral("a name in quotes is missing"));
            const QString name = String();
            if (map.contains(name))
                Fail(QStringLiteral("\"%1\" is given twice").arg(name));
            if (!Take(':'))
                Fail(QStringLiteral("the colon behind \"%1\" is missing").arg(name));
            map.insert(name, Value(depth + 1));
        } while (Take(','));
        if (!Take('}'))
            Fail(QStringLiteral("a comma or } is missing"));
        return map;
    }

    QCborValue List(int depth)
    {
        ++m_at;
        QCborArray array;
        if (Take(']'))
            return array;
        do {
            array.append(Value(depth + 1));
        } while (Take(','));
        if (!Take(']'))
            Fail(QStringLiteral("a comma or ] is missing"));
        return array;
    }

    QString String()
    {
        ++m_at;
        QByteArray text;
        while (Peek() != '"') {
            if (m_at >= m_text.size() || uchar(Peek()) < 0x20)
                Fail(QStringLiteral("a text does not end"));
            if (Peek() != '\\') {
                text += m_text.at(m_at++);
                continue;
            }
            ++m_at;
            const qsizetype escape = QByteArray("\"\\/bfnrt").indexOf(Peek());
            if (Peek() == '\0' || escape < 0)
                Fail(QStringLiteral("a text has an unknown escape"));
            text += "\"\\/\b\f\n\r\t"[escape];
            ++m_at;
        }
        ++m_at;
        return QString::fromUtf8(text);
    }

    QCborValue Number()
    {
        qsizetype end = m_at;
        while (end < m_text.size() && QByteArray("+-.0123456789eE").contains(m_text.at(end)))
            ++end;
        bool good = false;
        const double number = m_text.mid(m_at, end - m_at).toDouble(&good);
        if (!good || !std::isfinite(number))
            Fail(QStringLiteral("a value is missing or no number"));
        m_at = end;
        return number;
    }

    const QByteArray &m_text;
    qsizetype m_at = 0;
};

} // namespace

QCborValue ReadOrderedJson(const QByteArray &text)
{
    return JsonText(text).Read();
}

} // namespace platform
