#pragma once

#include "platform/Integer16.h"
#include "platform/display/Display.h"
#include "shell/basEnumerateFonts.h"

#include <QString>
#include <QVariant>

#include <vector>

namespace tumblewick {

// A mode of the display as it is kept here, fields in the order of the display's own.
struct DisplayModeRecord {
    qint32 BitsPerPel = 0;
    qint32 PelsWidth = 0;
    qint32 PelsHeight = 0;
    qint32 DisplayFlags = 0;
    qint32 DisplayFrequency = 0;
};

// Takes stock of the display and the installed fonts when it is made; with no display everything stays 0.
// Numbers are 16 bits wide where the type says so and raise 6 beyond that.
class ScreenInfo {
public:
    ScreenInfo();

    platform::Integer16 BitsPerPixel() const { return m_bitsPerPixel; }
    platform::Integer16 VerticalRefresh() const { return m_verticalRefresh; }
    platform::Integer16 DisplayModesCount() const { return static_cast<qint32>(m_modes.size()); }
    platform::Integer16 FontCount() const { return m_fontCount; }
    // Such as "800 by 600 pixels,  65536 colors, 60Hz"; empty for an index beyond the list.
    QString DisplayModesText(platform::Integer16 index) const;
    // One field of a font: 0 to 4 the five numbers, 5 to 12 the eight bytes, 13 the face, 14 the type; an
    // invalid value for any larger selector. Raises 9 for a font beyond the list.
    QVariant FontInfo(platform::Integer16 font, qint32 selector) const;
    // The face of a font. Raises 9 for one beyond the list.
    QString Fonts(platform::Integer16 font) const;
    float Height() const { return static_cast<float>(m_heightInPixels) * m_twipsPerPixelY; } // twips
    float Width() const { return static_cast<float>(m_widthInPixels) * m_twipsPerPixelX; }
    qint32 HeightInPixels() const { return m_heightInPixels; }
    qint32 WidthInPixels() const { return m_widthInPixels; }
    float TwipsPerPixelX() const { return m_twipsPerPixelX; } // 0 when the display reports no inch
    float TwipsPerPixelY() const { return m_twipsPerPixelY; }
    // Index of the mode that runs, -1 when it is not in the list.
    platform::Integer16 CurrentDisplayMode() const { return m_currentMode; }

    // Changes to a mode and stores it; a platform::DisplayChange. ChangeDisplayMode tells the user of a
    // failure, SetDisplayMode is silent. Raise 9 for a mode beyond the list.
    qint32 ChangeDisplayMode(platform::Integer16 index);
    qint32 SetDisplayMode(platform::Integer16 index);

private:
    void EnumDisplayModes();
    platform::Integer16 FindCurrentMode() const;
    const DisplayModeRecord &ModeAt(platform::Integer16 index) const;
    const FontRecord &FontAt(platform::Integer16 index) const;

    platform::Integer16 m_currentMode;
    std::vector<DisplayModeRecord> m_modes;
    platform::Integer16 m_fontCount;
    std::vector<FontRecord> m_fonts;
    float m_twipsPerPixelX = 0, m_twipsPerPixelY = 0;
    platform::Integer16 m_heightInPixels, m_widthInPixels;
    platform::Integer16 m_bitsPerPixel;
    platform::Integer16 m_verticalRefresh;
};

} // namespace tumblewick
