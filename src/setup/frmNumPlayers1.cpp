#include "setup/frmNumPlayers1.h"

#include "ui_frmNumPlayers1.h"

#include "platform/forms/EnterKey.h"
#include "platform/forms/OptionKeys.h"
#include "setup/frmPlayerNames1.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

#include <array>

namespace tumblewick {

frmNumPlayers1::frmNumPlayers1()
    : SharedScreen(QStringLiteral("frmNumPlayers1"), QStringLiteral("Number of Players"))
{
}

frmNumPlayers1::~frmNumPlayers1()
{
    State().LetGoOfControl();
}

void frmNumPlayers1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmNumPlayers1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::SetUp);
    platform::InstallEnterKey(window, m_ui->cmdNext);
    platform::InstallOptionKeys(window);
    Connect(m_ui->cmdNext, &QPushButton::clicked, [this] { cmdNext_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kPlayingTopic); });
}

void frmNumPlayers1::OnActivate()
{
    m_ui->opt1->setChecked(true);
    m_ui->opt1->setFocus();
}

void frmNumPlayers1::OnUnload()
{
    CloseHelp();
}

void frmNumPlayers1::cmdNext_Click()
{
    const std::array options = { m_ui->opt1, m_ui->opt2, m_ui->opt3, m_ui->opt4, m_ui->opt5 };
    for (std::size_t index = 0; index < options.size(); ++index) {
        if (options[index]->isChecked()) {
            State().NumPlayers = static_cast<int>(index) + 1;
            break;
        }
    }
    ShowScreen(frmPlayerNames1::Shared(), *this);
}

void frmNumPlayers1::cmdback_Click()
{
    ShowScreen(frmMenu1::Shared(), *this);
}

} // namespace tumblewick
