#pragma once

#include "platform/forms/ResizedScreen.h"

#include <QString>

#include <memory>

namespace Ui {
class frmExpList;
}

namespace tumblewick {

// Copies a list of the program to any folder.
class frmExpList : public platform::ResizedScreen<frmExpList> {
public:
    frmExpList();
    ~frmExpList() override;

    // kSpellList; anything else counts as quiz. Written before the screen is shown.
    QString ListType;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void FileList_Click();
    void Drive1_Change();
    void cmdExport_Click();

    std::unique_ptr<Ui::frmExpList> m_ui; // valid while loaded
};

} // namespace tumblewick
