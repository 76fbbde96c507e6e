#pragma once

#include "platform/forms/Screen.h"

#include <memory>

namespace Ui {
class frmSplash;
}

namespace tumblewick {

class ScreenInfo;

// The first screen of a run: vets the display, pauses, and hands over to the menu. Used once.
class frmSplash : public platform::SharedScreen<frmSplash> {
public:
    frmSplash();
    ~frmSplash() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    bool IsFramed() const override { return false; }

    ScreenInfo &Info();
    // Judges the display by the text of its mode and sets DisplayWidth; ends the program when the display
    // cannot serve. Raises 13 for a text that does not begin with a number.
    void CheckDisplay(const QString &modeText);
    void Pause();

    std::unique_ptr<Ui::frmSplash> m_ui; // valid while loaded
    std::unique_ptr<ScreenInfo> m_info;  // made at first use
};

} // namespace tumblewick
