#pragma once

#include "platform/forms/ResizedScreen.h"

#include <memory>

namespace Ui {
class frmChooseList1;
}

namespace tumblewick {

// Set-up, third step: which list.
class frmChooseList1 : public platform::ResizedScreen<frmChooseList1> {
public:
    frmChooseList1();
    ~frmChooseList1() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void File2_Click();
    void cmdNext_Click();
    void cmdback_Click();
    void cmdMenu_Click();

    std::unique_ptr<Ui::frmChooseList1> m_ui; // valid while loaded
};

} // namespace tumblewick
