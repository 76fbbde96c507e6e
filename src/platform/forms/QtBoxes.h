#pragma once

#include "platform/forms/Boxes.h"

class QDialog;

namespace platform {

// Boxes on the display, modal to the screen in front. Needs the application object.
//
// Object names: the box "MessageBox", "InputBox" or "BusyBox", its text "boxText", the field "boxField", the
// buttons "Ok", "Yes", "No" and "Cancel".
class QtBoxes : public Boxes {
public:
    BoxAnswer MessageBox(const QString &text, BoxButtons buttons, const QString &title) override;
    QString InputBox(const QString &prompt) override;
    void WhileBusy(const QString &text, const std::function<void()> &work) override;

private:
    void Run(QDialog &box);

    QDialog *m_open = nullptr; // the innermost box that is open
};

} // namespace platform
