#include "support/FakeHelp.h"

namespace support {

void FakeHelp::ShowTopic(const QString &file, const QString &topic)
{
    m_open.push_back({ file, topic });
    m_calls << QStringLiteral("ShowTopic %1 %2").arg(file, topic);
}

void FakeHelp::CloseAll()
{
    m_open.clear();
    m_calls << QStringLiteral("CloseAll");
}

} // namespace support
