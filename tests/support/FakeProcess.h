#pragma once

#include "platform/system/Process.h"

#include <optional>

namespace support {

class FakeTime;

// A program that does not really end: End notes the code and unwinds to the door of the screens, and from
// then on every pump of the fake time unwinds too, so that suspended waits let go one after the other.
class FakeProcess : public platform::Process {
public:
    explicit FakeProcess(FakeTime &time);

    [[noreturn]] void End(int exitCode = 0) override;
    QString ApplicationFolder() const override { return m_folder; }
    QString Title() const override;

    bool Ended() const { return m_exitCode.has_value(); }
    // The code that the first End gave; none while the program runs.
    std::optional<int> ExitCode() const { return m_exitCode; }

    void SetApplicationFolder(const QString &folder) { m_folder = folder; }

private:
    FakeTime &m_time;
    std::optional<int> m_exitCode;
    QString m_folder;
};

} // namespace support
