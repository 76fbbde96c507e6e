#include "shell/frmAbout.h"

#include "ui_frmAbout.h"

#include "platform/Services.h"
#include "platform/forms/EnterKey.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/SystemInformation.h"
#include "shell/Version.h"

#include <QShortcut>

namespace tumblewick {

namespace {

const QString kWebAddress = QStringLiteral("https://www.tumblewick.example/");

} // namespace

frmAbout::frmAbout() : SharedScreen(QStringLiteral("frmAbout"), QStringLiteral("About ") + kProductName) {}

frmAbout::~frmAbout() = default;

void frmAbout::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmAbout>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window, m_ui->cmdOK);
    m_ui->lblVersion->setText(VersionText());
    m_ui->lblTitle->setText(kProductName);
    m_ui->cmdOK->setFocus();
    Connect(m_ui->cmdOK, &QPushButton::clicked, [this] { Unload(); });
    Connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, [this] { Unload(); });
    Connect(m_ui->Command1, &QPushButton::clicked, [] { StartSysInfo(); });
    Connect(m_ui->Label1, &QPushButton::clicked, [this] { Label1_Click(); });
}

void frmAbout::OnUnload()
{
    Release();
}

void frmAbout::Label1_Click()
{
    try {
        m_browser = platform::The().desktop.NewBrowser();
        m_browser->SetVisible(true);
        m_browser->Navigate(kWebAddress);
    } catch (const platform::Error &error) {
        ShortErrorBox(error);
    }
}

} // namespace tumblewick
