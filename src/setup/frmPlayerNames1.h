#pragma once

#include "platform/forms/Screen.h"

#include <array>
#include <memory>

class QLabel;
class QLineEdit;

namespace Ui {
class frmPlayerNames1;
}

namespace tumblewick {

// Set-up, second step: the players' names.
class frmPlayerNames1 : public platform::SharedScreen<frmPlayerNames1> {
public:
    frmPlayerNames1();
    ~frmPlayerNames1() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void cmdNext_Click();
    void cmdback_Click();
    void cmdMenu_Click();

    std::unique_ptr<Ui::frmPlayerNames1> m_ui; // valid while loaded
    std::array<QLabel *, 5> lblPlayer{};
    std::array<QLineEdit *, 5> txtPlayer{};
};

} // namespace tumblewick
