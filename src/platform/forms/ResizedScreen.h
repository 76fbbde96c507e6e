#pragma once

#include "platform/forms/Resizer.h"
#include "platform/forms/Screen.h"

#include <memory>

namespace platform {

// A screen with a shared instance that fills the display and scales its controls with its window.
template <class T>
class ResizedScreen : public SharedScreen<T> {
protected:
    using SharedScreen<T>::SharedScreen;

    // Called once by OnLoad, when the window has its controls and its look, since those are the design from
    // then on. `hook` as for Resizer.
    void ScaleControls(QWidget &window, Resizer::Hook hook = {})
    {
        m_resizer = std::make_unique<Resizer>(window, std::move(hook));
    }
    // What is done besides stands behind a call of this.
    void OnResize() override { m_resizer->Apply(); }
    bool FillsDisplay() const override { return true; }

private:
    std::unique_ptr<Resizer> m_resizer; // of the window that is loaded
};

} // namespace platform
