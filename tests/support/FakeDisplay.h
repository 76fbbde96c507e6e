#pragma once

#include "platform/display/Display.h"

#include <vector>

namespace support {

// A display for tests: 1024 x 768 in 32 bits, one of two modes, with two fonts.
class FakeDisplay : public platform::Display {
public:
    std::optional<platform::DisplayMode> current = platform::DisplayMode{ 32, 1024, 768, 0, 60 };
    std::vector<platform::DisplayMode> modes = { { 16, 800, 600, 0, 60 }, { 32, 1024, 768, 0, 60 } };
    std::vector<std::pair<platform::LogicalFont, qint32>> fonts;
    int dotsPerInchX = 96, dotsPerInchY = 96;
    // What a change of mode gives, and the modes that were asked for.
    qint32 answer = platform::kDisplayChanged;
    std::vector<platform::DisplayMode> changes;

    // Makes `mode` the one that runs, and the only one.
    void Run(const platform::DisplayMode &mode)
    {
        current = mode;
        modes = { mode };
    }

    std::optional<platform::DisplayMode> Current() const override { return current; }
    int DotsPerInchX() const override { return dotsPerInchX; }
    int DotsPerInchY() const override { return dotsPerInchY; }
    std::optional<platform::DisplayMode> Mode(int index) const override
    {
        if (index < 0 || index >= static_cast<int>(modes.size()))
            return std::nullopt;
        return modes[static_cast<std::size_t>(index)];
    }
    void
    EnumerateFonts(const std::function<int(const platform::LogicalFont &, qint32 type)> &take) const override
    {
        for (const auto &[font, type] : fonts)
            if (take(font, type) == 0)
                return;
    }
    qint32 ChangeMode(const platform::DisplayMode &mode) override
    {
        changes.push_back(mode);
        return answer;
    }
};

} // namespace support
