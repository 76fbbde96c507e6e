#pragma once

#include "platform/forms/ResizedScreen.h"

#include <QString>

#include <memory>

namespace Ui {
class frmDelete;
}

namespace tumblewick {

// Deletes lists of one kind.
class frmDelete : public platform::ResizedScreen<frmDelete> {
public:
    frmDelete();
    ~frmDelete() override;

    // kSpellList; anything else counts as quiz. Written before the screen is shown.
    QString ListType;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    QString Folder() const; // of the lists, ends without a separator
    void cmdDel_Click();

    std::unique_ptr<Ui::frmDelete> m_ui; // valid while loaded
};

} // namespace tumblewick
