#include "support/Transcript.h"

#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>

#include <algorithm>

namespace support {

namespace {

Transcript *g_current = nullptr;
QtMessageHandler g_former = nullptr;

void KeepTrace(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QLatin1String category(context.category);
    if (g_current &&
        (category == QLatin1String("tumblewick.agent") || category == QLatin1String("tumblewick.screen") ||
         category == QLatin1String("tumblewick.media")))
        g_current->Take(text);
    else if (g_former)
        g_former(type, context, text);
}

QString PathOf(const QString &name)
{
    return QStringLiteral(TEST_DATA "/transcripts/") + name + QStringLiteral(".txt");
}

} // namespace

Transcript::Transcript()
{
    g_current = this;
    QLoggingCategory::setFilterRules(QStringLiteral(
        "tumblewick.agent.debug=true\ntumblewick.screen.debug=true\ntumblewick.media.debug=true"));
    g_former = qInstallMessageHandler(KeepTrace);
}

Transcript::~Transcript()
{
    qInstallMessageHandler(g_former);
    QLoggingCategory::setFilterRules(QString());
    g_current = nullptr;
}

void Transcript::Take(const QString &traceLine)
{
    static const QRegularExpression request(
        QStringLiteral(
            "^agent: (\\d+) (\\w+) (\\S+)(.*) -> (queued|running|done|failed|interrupted)( -?\\d+)?$"),
        QRegularExpression::DotMatchesEverythingOption);
    if (traceLine.startsWith(QLatin1String("screen: "))) {
        m_lines << QStringLiteral("screen ") + traceLine.mid(8);
        return;
    }
    if (traceLine.startsWith(QLatin1String("media: "))) {
        m_lines << QStringLiteral("media ") + traceLine.mid(7);
        return;
    }
    const QRegularExpressionMatch match = request.match(traceLine);
    if (!match.hasMatch()) {
        m_lines << traceLine;
        return;
    }
    const QString who = match.captured(2);
    const QString what = match.captured(3);
    const QString status = match.captured(5);
    if (match.captured(1) == QLatin1String("0") || status == QLatin1String("queued"))
        m_lines << who + QLatin1Char(' ') + what + match.captured(4);
    else if (status != QLatin1String("running"))
        m_lines << QStringLiteral(". ") + who + QLatin1Char(' ') + what + QLatin1Char(' ') + status;
}

QStringList Transcript::Asked() const
{
    QStringList asked;
    for (const QString &line : m_lines) {
        if (!line.startsWith(QLatin1Char('.')) && !line.startsWith(QLatin1String("screen ")) &&
            !line.startsWith(QLatin1String("media ")))
            asked << line;
    }
    return asked;
}

QStringList Transcript::Said() const
{
    static const QRegularExpression speak(QStringLiteral("^(\\w+) Speak \"(.*)\"$"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList said;
    for (const QString &line : m_lines) {
        const QRegularExpressionMatch match = speak.match(line);
        if (match.hasMatch())
            said << match.captured(1) + QStringLiteral(": ") + match.captured(2);
    }
    return said;
}

void Transcript::StartAt(const QString &beginning)
{
    while (!m_lines.isEmpty() && !m_lines.first().startsWith(beginning))
        m_lines.removeFirst();
}

void Transcript::Fold(const QString &name, const QString &line)
{
    QFile file(PathOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QStringList folded = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const auto begin = std::search(m_lines.begin(), m_lines.end(), folded.begin(), folded.end());
    if (begin == m_lines.end())
        return;
    *begin = line;
    m_lines.erase(begin + 1, begin + folded.size());
}

QString Transcript::Difference(const QString &name) const
{
    QFile file(PathOf(name));
    const QString present = m_lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    if (qEnvironmentVariableIsSet("UPDATE_TRANSCRIPTS")) {
        if (!file.open(QIODevice::WriteOnly) || file.write(present.toUtf8()) < 0)
            return QStringLiteral("cannot write ") + file.fileName();
        return QString();
    }
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read ") + file.fileName();
    const QStringList expected = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const QStringList lines = present.split(QLatin1Char('\n'));
    for (qsizetype index = 0; index < std::max(expected.size(), lines.size()); ++index) {
        if (expected.value(index) != lines.value(index) || index >= expected.size() ||
            index >= lines.size()) {
            return QStringLiteral("line %1 of %2.txt is «%3», expected «%4»")
                .arg(QString::number(index + 1), name, lines.value(index), expected.value(index));
        }
    }
    return QString();
}

} // namespace support
