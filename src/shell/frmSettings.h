#pragma once

#include "platform/forms/Resizer.h"
#include "platform/forms/Screen.h"

#include <memory>

namespace Ui {
class frmSettings;
}

namespace tumblewick {

// Introductions on or off, the password of the authoring screens, and the way to the characters' own
// properties.
class frmSettings : public platform::SharedScreen<frmSettings> {
public:
    frmSettings();
    ~frmSettings() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;
    void OnResize() override;
    bool FillsDisplay() const override { return true; }

    void cmdback_Click();
    void cmdProperties_Click();

    // Whether the settings were written. Raises what the file raises.
    bool SaveSettings();

    std::unique_ptr<Ui::frmSettings> m_ui; // valid while loaded
    std::unique_ptr<platform::Resizer> m_resizer;
    bool m_settingsDirty = false;
};

} // namespace tumblewick
