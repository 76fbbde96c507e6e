#pragma once

#include "platform/Error.h"
#include "platform/agent/Agent.h"

namespace support {

// A property sheet that nobody sees: it keeps what is set, and has no place.
class FakeSheet : public platform::PropertySheet {
public:
    void SetVisible(bool visible) override { m_visible = visible; }
    bool Visible() const override { return m_visible; }
    QString Page() const override { return m_page; }
    void SetPage(const QString &page) override
    {
        for (const char *name : { "Speech", "Output", "Copyright" }) {
            if (page.compare(QLatin1String(name), Qt::CaseInsensitive) != 0)
                continue;
            m_page = QLatin1String(name);
            return;
        }
        throw platform::Error(platform::kInvalidCall);
    }
    platform::Integer16 Left() const override { return 0; }
    platform::Integer16 Top() const override { return 0; }
    platform::Integer16 Width() const override { return 0; }
    platform::Integer16 Height() const override { return 0; }

private:
    bool m_visible = false;
    QString m_page = QStringLiteral("Output");
};

} // namespace support
