#pragma once

#include "platform/system/Process.h"

#include <utility>

namespace platform {

// The running program. Needs the application object.
class QtProcess : public Process {
public:
    explicit QtProcess(QString applicationFolder) : m_applicationFolder(std::move(applicationFolder)) {}
    // Flushes the standard streams and leaves without running any destructor.
    [[noreturn]] void End(int exitCode = 0) override;
    QString ApplicationFolder() const override { return m_applicationFolder; }
    QString Title() const override;

private:
    QString m_applicationFolder;
};

} // namespace platform
