#pragma once

#include "platform/forms/Screen.h"

#include <memory>

namespace Ui {
class frmNumPlayers1;
}

namespace tumblewick {

// Set-up, first step: how many players.
class frmNumPlayers1 : public platform::SharedScreen<frmNumPlayers1> {
public:
    frmNumPlayers1();
    ~frmNumPlayers1() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void cmdNext_Click();
    void cmdback_Click();

    std::unique_ptr<Ui::frmNumPlayers1> m_ui; // valid while loaded
};

} // namespace tumblewick
