#pragma once

#include "platform/system/Desktop.h"

namespace platform {

// The desktop that the user works on. Its register names one thing, the system information tool: the first
// known one that is installed.
class QtDesktop : public Desktop {
public:
    std::optional<RegistryValue> LookUp(const QString &key, const QString &name) const override;
    void Start(const QString &program) override;
    std::unique_ptr<Browser> NewBrowser() override;
};

} // namespace platform
