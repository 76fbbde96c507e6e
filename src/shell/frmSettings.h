#pragma once

#include "platform/forms/ResizedScreen.h"

#include <memory>

namespace Ui {
class frmSettings;
}

namespace tumblewick {

// Introductions on or off, the password of the authoring screens, and the way to the characters' own
// properties.
class frmSettings : public platform::ResizedScreen<frmSettings> {
public:
    frmSettings();
    ~frmSettings() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void cmdback_Click();
    void cmdProperties_Click();

    // Whether the settings were written. Raises what the file raises.
    bool SaveSettings();

    std::unique_ptr<Ui::frmSettings> m_ui; // valid while loaded
    bool m_settingsDirty = false;
};

} // namespace tumblewick
