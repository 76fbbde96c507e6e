#pragma once

#include "platform/forms/ResizedScreen.h"

#include <QString>

#include <memory>

namespace Ui {
class frmImpList;
}

namespace tumblewick {

// Copies a file of any folder to the lists of the program.
class frmImpList : public platform::ResizedScreen<frmImpList> {
public:
    frmImpList();
    ~frmImpList() override;

    // kSpellList or kQuizList; with anything else nothing is imported. Written before the screen is shown.
    QString ListType;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void FileList_Click();
    void Drive1_Change();
    void Dir1_Change();
    void cmdImport_Click();

    std::unique_ptr<Ui::frmImpList> m_ui; // valid while loaded
};

} // namespace tumblewick
