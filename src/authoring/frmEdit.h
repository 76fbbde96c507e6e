#pragma once

#include "platform/forms/ResizedScreen.h"

#include <QString>

#include <memory>

namespace Ui {
class frmEdit;
}

namespace tumblewick {

// Chooses the list to edit.
class frmEdit : public platform::ResizedScreen<frmEdit> {
public:
    frmEdit();
    ~frmEdit() override;

    // kSpellList or kQuizList; with anything else there is nothing to choose from. Written before the screen
    // is shown.
    QString ListType;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void File1_Click();
    void cmdOK_Click();
    // Goes on to the screen that edits the selected list, or tells `nothingSelected`.
    template <class Target>
    void EditSelected(const QString &nothingSelected);

    std::unique_ptr<Ui::frmEdit> m_ui; // valid while loaded
};

} // namespace tumblewick
