#pragma once

#include "platform/forms/Screen.h"
#include "platform/system/Desktop.h"

#include <memory>

namespace Ui {
class frmAbout;
}

namespace tumblewick {

// Title, version and the two ways out of the program's own world. It lies over the menu, which stays live.
class frmAbout : public platform::SharedScreen<frmAbout> {
public:
    frmAbout();
    ~frmAbout() override;

private:
    void OnLoad(QWidget &window) override;
    void OnUnload() override;

    void Label1_Click();

    std::unique_ptr<Ui::frmAbout> m_ui; // valid while loaded
    std::unique_ptr<platform::Browser> m_browser;
};

} // namespace tumblewick
