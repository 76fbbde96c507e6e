#pragma once

#include "platform/forms/Resizer.h"
#include "platform/forms/Screen.h"

#include <QString>

#include <memory>

namespace Ui {
class frmImpList;
}

namespace tumblewick {

// Copies a file of any folder to the lists of the program.
class frmImpList : public platform::SharedScreen<frmImpList> {
public:
    frmImpList();
    ~frmImpList() override;

    // kSpellList or kQuizList; with anything else nothing is imported. Written before the screen is shown.
    QString ListType;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;
    void OnResize() override;
    bool FillsDisplay() const override { return true; }

    void Drive1_Change();
    void Dir1_Change();
    void cmdImport_Click();

    std::unique_ptr<Ui::frmImpList> m_ui; // valid while loaded
    std::unique_ptr<platform::Resizer> m_resizer;
};

} // namespace tumblewick
