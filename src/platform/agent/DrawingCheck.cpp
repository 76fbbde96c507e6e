#include "platform/agent/DrawingCheck.h"

#include "platform/agent/CharacterReader.h"

#include <QSet>
#include <QXmlStreamReader>

namespace platform {

namespace {

constexpr int kDeepest = 24;
constexpr int kMostElements = 20000;
constexpr qsizetype kLargestDrawing = 4 * 1024 * 1024;
constexpr int kMostDigits = 5; // before the point: far more than any place in the square

[[noreturn]] void Fail(const QString &problem)
{
    throw CharacterFault{ QStringLiteral("the drawing"), QString(), problem };
}

bool IsAllowed(QStringView element)
{
    static const QSet<QString> allowed = {
        "svg",     "g",    "defs",     "title",   "desc",           "path",           "rect", "circle",
        "ellipse", "line", "polyline", "polygon", "linearGradient", "radialGradient", "stop",
    };
    return allowed.contains(element.toString());
}

// Attributes that hold names, colours or words: a run of digits in them is no number.
bool HoldsNumbers(QStringView attribute)
{
    static const QSet<QString> words = { "id",         "fill",           "stroke",          "stop-color",
                                         "fill-rule",  "stroke-linecap", "stroke-linejoin", "gradientUnits",
                                         "baseProfile" };
    return !words.contains(attribute.toString());
}

bool HasHugeNumber(QStringView text)
{
    int digits = 0;
    bool fraction = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar letter = text[at];
        if (letter == QLatin1Char('.')) {
            fraction = true;
            digits = 0;
        } else if (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) {
            if (!fraction && ++digits > kMostDigits)
                return true;
        } else {
            // An exponent may only make it smaller.
            const bool exponent = letter == QLatin1Char('e') || letter == QLatin1Char('E');
            if (exponent && at > 0 && text[at - 1].isDigit() &&
                (at + 1 == text.size() || text[at + 1] != QLatin1Char('-')))
                return true;
            fraction = false;
            digits = 0;
        }
    }
    return false;
}

void CheckAttribute(const QXmlStreamAttribute &attribute)
{
    const QStringView name = attribute.name();
    const QStringView value = attribute.value();
    // A drawing takes its looks from attributes of its own, and nothing from anywhere else.
    if (name == QLatin1String("href") || name == QLatin1String("style") || name == QLatin1String("class") ||
        name == QLatin1String("stroke-dasharray") || name.startsWith(QLatin1String("on")))
        Fail(QStringLiteral("has the attribute %1").arg(name));
    const qsizetype url = value.indexOf(QLatin1String("url"), 0, Qt::CaseInsensitive);
    if (url >= 0 && !value.startsWith(QLatin1String("url(#")))
        Fail(QStringLiteral("refers to something outside"));
    if (HoldsNumbers(name) && HasHugeNumber(value))
        Fail(QStringLiteral("has a huge number in %1").arg(name));
}

void CheckElement(const QXmlStreamReader &text)
{
    if (text.namespaceUri() != QLatin1String("http://www.w3.org/2000/svg") || !IsAllowed(text.name()))
        Fail(QStringLiteral("has the element %1").arg(text.name()));
    for (const QXmlStreamAttribute &attribute : text.attributes())
        CheckAttribute(attribute);
}

} // namespace

void CheckDrawing(const QByteArray &drawing)
{
    if (drawing.size() > kLargestDrawing)
        Fail(QStringLiteral("is too large"));
    QXmlStreamReader text(drawing);
    int depth = 0;
    int elements = 0;
    while (!text.atEnd()) {
        switch (text.readNext()) {
        case QXmlStreamReader::StartElement:
            if ((text.name() == QLatin1String("svg")) != (depth == 0))
                Fail(QStringLiteral("is not one svg"));
            if (++depth > kDeepest)
                Fail(QStringLiteral("is nested too deeply"));
            if (++elements > kMostElements)
                Fail(QStringLiteral("has too many elements"));
            CheckElement(text);
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
        case QXmlStreamReader::ProcessingInstruction:
            Fail(QStringLiteral("has entities or instructions"));
        default:
            break;
        }
    }
    if (text.hasError() || elements == 0)
        Fail(QStringLiteral("is not an SVG"));
}

} // namespace platform
