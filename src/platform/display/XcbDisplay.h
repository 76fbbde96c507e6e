#pragma once

#include "platform/display/Display.h"

#include <vector>

namespace platform {

// The primary display of the X desktop, with the modes that its RandR extension offers. Where there is none,
// or on another kind of desktop, the one mode that runs. Needs the application object.
//
// Depths are as desktops report them, by the bits that a pixel takes, so 32 for what X calls 24.
class XcbDisplay : public Display {
public:
    std::optional<DisplayMode> Current() const override;
    int DotsPerInchX() const override;
    int DotsPerInchY() const override;
    std::optional<DisplayMode> Mode(int index) const override;
    void EnumerateFonts(const std::function<int(const LogicalFont &, qint32 type)> &take) const override;
    qint32 ChangeMode(const DisplayMode &mode) override;

private:
    mutable std::vector<DisplayMode> m_modes; // as found at the last Mode(0)
};

} // namespace platform
