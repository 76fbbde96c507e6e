#include "support/FakeProcess.h"

#include "support/FakeTime.h"

namespace support {

FakeProcess::FakeProcess(FakeTime &time) : m_time(time) {}

void FakeProcess::End(int exitCode)
{
    if (!m_exitCode)
        m_exitCode = exitCode;
    m_time.SetEnded();
    throw platform::ProgramEnded{};
}

QString FakeProcess::Title() const
{
    return QStringLiteral("Tumblewick");
}

} // namespace support
