#pragma once

#include "platform/agent/Agent.h"
#include "platform/agent/SheetWindow.h"

#include <memory>

namespace platform {

// The property sheet on the screen. Its window is made when it is first shown.
class OptionsSheet final : public PropertySheet {
public:
    explicit OptionsSheet(SheetSources sources);
    ~OptionsSheet() override;

    void SetVisible(bool visible) override;
    bool Visible() const override;
    QString Page() const override;
    void SetPage(const QString &page) override;
    Integer16 Left() const override;
    Integer16 Top() const override;
    Integer16 Width() const override;
    Integer16 Height() const override;

    SheetWindow *Window() { return m_window.get(); } // null before it was first shown

private:
    void MakeWindow();
    void KeepPlace();

    SheetSources m_sources;
    SheetPlace m_place;
    std::unique_ptr<SheetWindow> m_window;
};

} // namespace platform
