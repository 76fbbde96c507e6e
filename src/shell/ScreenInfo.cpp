#include "shell/ScreenInfo.h"

#include "platform/Services.h"
#include "platform/Subscript.h"
#include "platform/files/TextCode.h"
#include "platform/forms/Boxes.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tumblewick {

using platform::Integer16;
using platform::The;

namespace {

constexpr float kTwipsPerInch = 1440;

float TwipsPerPixel(int dotsPerInch)
{
    return dotsPerInch > 0 ? kTwipsPerInch / static_cast<float>(dotsPerInch) : 0;
}

} // namespace

ScreenInfo::ScreenInfo()
{
    const platform::Display &display = The().display;
    const auto current = display.Current();
    if (!current)
        return;
    m_widthInPixels = current->width;
    m_heightInPixels = current->height;
    m_bitsPerPixel = current->bitsPerPixel;
    m_verticalRefresh = current->frequency;
    m_twipsPerPixelX = TwipsPerPixel(display.DotsPerInchX());
    m_twipsPerPixelY = TwipsPerPixel(display.DotsPerInchY());
    auto gathered = basEnumerateFonts::Enumerate(display);
    m_fontCount = gathered.count;
    m_fonts = std::move(gathered.fonts);
    EnumDisplayModes();
    m_currentMode = FindCurrentMode();
}

void ScreenInfo::EnumDisplayModes()
{
    while (const auto mode = The().display.Mode(static_cast<int>(m_modes.size())))
        m_modes.push_back({ mode->bitsPerPixel, mode->width, mode->height, mode->flags, mode->frequency });
}

Integer16 ScreenInfo::FindCurrentMode() const
{
    const auto found = std::find_if(m_modes.begin(), m_modes.end(), [this](const DisplayModeRecord &mode) {
        return mode.PelsWidth == m_widthInPixels && mode.PelsHeight == m_heightInPixels &&
               mode.BitsPerPel == m_bitsPerPixel && mode.DisplayFrequency == m_verticalRefresh;
    });
    return found == m_modes.end() ? -1 : static_cast<int>(found - m_modes.begin());
}

const DisplayModeRecord &ScreenInfo::ModeAt(Integer16 index) const
{
    return platform::At(m_modes, index);
}

const FontRecord &ScreenInfo::FontAt(Integer16 index) const
{
    return platform::At(m_fonts, index);
}

QString ScreenInfo::DisplayModesText(Integer16 index) const
{
    try {
        const DisplayModeRecord &mode = ModeAt(index);
        QString text = QString::number(mode.PelsWidth) + QStringLiteral(" by ") +
                       QString::number(mode.PelsHeight) + QStringLiteral(" pixels, ");
        // Two blanks come together here: wanted.
        if (mode.BitsPerPel == 32)
            text += QStringLiteral(" True Color, ");
        else
            text += QLatin1Char(' ') + QString::number(std::pow(2.0, mode.BitsPerPel), 'g', 15) +
                    QStringLiteral(" colors, ");
        return text + QString::number(mode.DisplayFrequency) + QStringLiteral("Hz");
    } catch (const platform::Error &error) {
        if (error.Number() != platform::kSubscriptOutOfRange)
            throw;
        return QString();
    }
}

QVariant ScreenInfo::FontInfo(Integer16 font, qint32 selector) const
{
    const FontRecord &record = FontAt(font);
    const platform::LogicalFont &logical = record.font;
    const QVariant fields[] = {
        logical.height,         logical.width,        logical.escapement,    logical.orientation,
        logical.weight,         logical.italic,       logical.underline,     logical.strikeOut,
        logical.charSet,        logical.outPrecision, logical.clipPrecision, logical.quality,
        logical.pitchAndFamily, Fonts(font),          record.type,
    };
    const bool isField = selector >= 0 && selector < static_cast<qint32>(std::size(fields));
    return isField ? fields[selector] : QVariant();
}

QString ScreenInfo::Fonts(Integer16 font) const
{
    const auto &name = FontAt(font).font.faceName;
    const auto end = std::find(name.begin(), name.end(), '\0');
    return platform::DecodedLine(QByteArray(name.data(), static_cast<qsizetype>(end - name.begin())));
}

qint32 ScreenInfo::ChangeDisplayMode(Integer16 index)
{
    const qint32 result = SetDisplayMode(index);
    if (result < 0 && result >= platform::kDisplayBadParameter)
        The().boxes.MessageBox(QStringLiteral("Unable to change to the selected mode."));
    else if (result == platform::kDisplayNeedsRestart)
        The().boxes.MessageBox(
            QStringLiteral("The new display settings won't take effect until you restart Windows."));
    return result;
}

qint32 ScreenInfo::SetDisplayMode(Integer16 index)
{
    const DisplayModeRecord &mode = ModeAt(index);
    return The().display.ChangeMode(
        { mode.BitsPerPel, mode.PelsWidth, mode.PelsHeight, mode.DisplayFlags, mode.DisplayFrequency });
}

} // namespace tumblewick
