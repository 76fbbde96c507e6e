#include "shell/frmSplash.h"

#include "ui_frmSplash.h"

#include "platform/Services.h"
#include "platform/Text.h"
#include "platform/forms/Boxes.h"
#include "platform/system/Clock.h"
#include "platform/system/Events.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/ScreenInfo.h"
#include "shell/SharedState.h"
#include "shell/Version.h"
#include "shell/frmMenu1.h"

#include <QIcon>

#include <chrono>
#include <cmath>

namespace tumblewick {

using platform::The;

namespace {

constexpr int kLeastWidth = 800;
constexpr int kLeastDepth = 8;
constexpr double kPauseSeconds = 2;

// The boxes of this screen differ from those of the others.
void SplashErrorBox(const platform::Error &error)
{
    const QString facts = QString::number(error.Number()) + QLatin1Char(' ') + error.Description();
    if (error.Number() == platform::kInvalidCall)
        The().boxes.MessageBox(
            QStringLiteral("There is a problem with the program. If you have two installations of "
                           "Tumblewick on your machine\r\n You need to uninstall the second Installation. If "
                           "this is not the case then contact support and\r\n Quote the following "
                           "information") +
            facts);
    else
        The().boxes.MessageBox(QStringLiteral("Tumblewick has detected a problem. Please email support ") +
                               QLatin1String(kSupportAddress) +
                               QStringLiteral(" and quote\r\n following information  ") + facts +
                               QStringLiteral(" We apologise for this inconvenience"));
}

void TellUnusable(const QString &what, const QString &least)
{
    The().boxes.MessageBox(
        what +
        QStringLiteral("\r\n cannot be used by a graphical interface such as this program.\r\n"
                       "SOLUTION\r\n"
                       "Adjust display options in control panel to either of the following settings. "
                       "\r\nOptimum setting: 1024 by 768 True Color\r\n") +
        least);
    The().boxes.MessageBox(QStringLiteral("The program must close now"));
}

} // namespace

frmSplash::frmSplash() : SharedScreen(QStringLiteral("frmSplash"), QString()) {}

frmSplash::~frmSplash() = default;

ScreenInfo &frmSplash::Info()
{
    if (!m_info)
        m_info = std::make_unique<ScreenInfo>();
    return *m_info;
}

void frmSplash::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmSplash>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::SetUp);
    m_ui->imgLogo->setPixmap(QIcon(QStringLiteral(":/icon.svg")).pixmap(m_ui->imgLogo->size()));
    try {
        m_ui->lblVersion->setText(VersionText());
        m_ui->lblProductName->setText(kProductName);
        CheckDisplay(Info().DisplayModesText(Info().CurrentDisplayMode()));
    } catch (const platform::Error &error) {
        SplashErrorBox(error);
    }
}

void frmSplash::OnActivate()
{
    try {
        Pause();
        frmMenu1::Shared().Show();
        The().events.PumpPending();
        Unload();
    } catch (const platform::Error &error) {
        SplashErrorBox(error);
    }
}

// The clock starts again at midnight, and a pause that begins just before goes on through the next day:
// wanted.
void frmSplash::Pause()
{
    const double end = std::nearbyint(The().clock.SecondsSinceMidnight()) + kPauseSeconds;
    for (double now = The().clock.SecondsSinceMidnight(); now < end;
         now = The().clock.SecondsSinceMidnight()) {
        const std::chrono::milliseconds left(static_cast<int>(std::ceil((end - now) * 1000)));
        const auto wake = The().events.After(left, [] {});
        The().events.Pump();
    }
}

void frmSplash::CheckDisplay(const QString &modeText)
{
    const int width = static_cast<int>(std::floor(platform::ToReal(platform::Left(modeText, 4))));
    bool mustEnd = false;
    if (width < kLeastWidth) {
        TellUnusable(QStringLiteral("Your current display settings "),
                     QStringLiteral("Min Settings: 800 by 600 256 Color"));
        mustEnd = true;
    }
    // The depth matters at this width alone: wanted.
    if (width == kLeastWidth && Info().BitsPerPixel() >= kLeastDepth) {
        State().DisplayWidth = kLeastWidth;
        m_ui->Label1->setText(
            QStringLiteral("NOTE: Consider changing your display mode to 1024 X 768. The program will "
                           " perform better and certainly look better"));
    }
    if (width == kLeastWidth && Info().BitsPerPixel() < kLeastDepth) {
        TellUnusable(QStringLiteral("The number of colors in your display settings "),
                     QStringLiteral("Min Settings: 800 by 600 256 Colors"));
        mustEnd = true;
    }
    if (mustEnd)
        The().process.End();
}

} // namespace tumblewick
