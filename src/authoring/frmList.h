#pragma once

#include "platform/forms/ResizedScreen.h"

#include <memory>

namespace Ui {
class frmList;
}

namespace tumblewick {

// The hub of the grown-ups' screens, behind the password lock of the menu.
class frmList : public platform::ResizedScreen<frmList> {
public:
    frmList();
    ~frmList() override;

private:
    void OnLoad(QWidget &window) override;
    void OnUnload() override;

    // Hands the kind of list to the target and goes there.
    template <class Target>
    void ShowFor(const QString &listType);
    void Edit(const QString &listType);

    std::unique_ptr<Ui::frmList> m_ui; // valid while loaded
};

} // namespace tumblewick
