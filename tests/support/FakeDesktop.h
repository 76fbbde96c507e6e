#pragma once

#include "platform/Error.h"
#include "platform/system/Desktop.h"

#include <QStringList>

#include <map>

namespace support {

// A desktop for tests: a register that the test fills, and a record of what was started.
class FakeDesktop : public platform::Desktop {
public:
    // By key, a bar and the name of the value.
    std::map<QString, platform::RegistryValue> registered;
    // Raised by the next start or by browsers; 0 for none.
    qint32 startFailure = 0, browserFailure = 0;
    QStringList started;
    // What browsers were told: `new`, `visible`, the addresses.
    QStringList browsing;

    std::optional<platform::RegistryValue> LookUp(const QString &key, const QString &name) const override
    {
        const auto found = registered.find(key + QLatin1Char('|') + name);
        return found == registered.end() ? std::nullopt : std::optional(found->second);
    }
    void Start(const QString &program) override
    {
        if (startFailure != 0)
            throw platform::Error(startFailure);
        started << program;
    }
    std::unique_ptr<platform::Browser> NewBrowser() override
    {
        if (browserFailure != 0)
            throw platform::Error(browserFailure);
        browsing << QStringLiteral("new");
        return std::make_unique<FakeBrowser>(*this);
    }

private:
    class FakeBrowser : public platform::Browser {
    public:
        explicit FakeBrowser(FakeDesktop &desktop) : m_desktop(desktop) {}
        void SetVisible(bool visible) override
        {
            m_desktop.browsing << (visible ? QStringLiteral("visible") : QStringLiteral("hidden"));
        }
        void Navigate(const QString &address) override { m_desktop.browsing << address; }

    private:
        FakeDesktop &m_desktop;
    };
};

} // namespace support
