#include "platform/media/MediaTrace.h"

#include <QRegularExpression>

namespace platform {

Q_LOGGING_CATEGORY(MediaTrace, "tumblewick.media", QtInfoMsg)

void TraceMediaCall(const QString &call)
{
    qCDebug(MediaTrace).noquote() << QStringLiteral("media: ") + call;
}

QString TracedName(const QString &path)
{
    static const QRegularExpression separator(QStringLiteral("[/\\\\]"));
    return QLatin1Char('"') + path.section(separator, -1) + QLatin1Char('"');
}

} // namespace platform
