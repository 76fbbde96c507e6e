#include "platform/help/SiteMap.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kMostLines = 5000;
constexpr int kDeepest = 12;
constexpr qsizetype kLongest = 300;

QRegularExpression AttributePattern(const QString &name)
{
    return QRegularExpression(QStringLiteral("\\b%1\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s>]+))").arg(name),
                              QRegularExpression::CaseInsensitiveOption);
}

QString Attribute(const QString &tag, const QRegularExpression &pattern)
{
    const QRegularExpressionMatch match = pattern.match(tag);
    QString value = match.captured(1) + match.captured(2) + match.captured(3);
    value.truncate(kLongest);
    if (value.contains('&'))
        value = QTextDocumentFragment::fromHtml(value).toPlainText();
    return value;
}

} // namespace

std::vector<SiteMapLine> ReadSiteMap(const QString &text)
{
    static const QRegularExpression kTag(QStringLiteral("<(/?)(ul|object|param)\\b([^>]*)>"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression kName = AttributePattern(QStringLiteral("name"));
    static const QRegularExpression kValue = AttributePattern(QStringLiteral("value"));
    std::vector<SiteMapLine> lines;
    SiteMapLine line;
    bool inLine = false;
    int level = 0;
    auto tags = kTag.globalMatch(text);
    while (tags.hasNext() && lines.size() < kMostLines) {
        const QRegularExpressionMatch tag = tags.next();
        const bool ends = !tag.captured(1).isEmpty();
        const QString name = tag.captured(2).toLower();
        if (name == QLatin1String("ul")) {
            level = std::max(0, level + (ends ? -1 : 1));
        } else if (name == QLatin1String("param")) {
            const QString what = Attribute(tag.captured(3), kName).toLower();
            const QString value = Attribute(tag.captured(3), kValue);
            if (what == QLatin1String("name") && line.title.isEmpty())
                line.title = value;
            else if (what == QLatin1String("local") && line.page.isEmpty())
                line.page = value;
        } else if (!ends) {
            line = {};
            inLine = true;
        } else if (inLine && !line.title.isEmpty()) {
            const int deepest = lines.empty() ? 0 : std::min(lines.back().depth + 1, kDeepest);
            line.depth = std::clamp(level - 1, 0, deepest);
            lines.push_back(line);
            inLine = false;
        }
    }
    return lines;
}

} // namespace platform
