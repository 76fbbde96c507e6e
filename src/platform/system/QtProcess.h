#pragma once

#include "platform/system/Process.h"

namespace platform {

// The running program. Needs the application object.
class QtProcess : public Process {
public:
    // Flushes the standard streams and leaves without running any destructor.
    [[noreturn]] void End(int exitCode = 0) override;
    QString ApplicationFolder() const override; // the folder of the running program
    QString Title() const override;
};

} // namespace platform
