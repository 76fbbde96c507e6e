#include "setup/frmPlayerNames1.h"

#include "ui_frmPlayerNames1.h"

#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/SingleLine.h"
#include "setup/frmChooseList1.h"
#include "setup/frmNumPlayers1.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

frmPlayerNames1::frmPlayerNames1()
    : SharedScreen(QStringLiteral("frmPlayerNames1"), QStringLiteral("Players"))
{
}

frmPlayerNames1::~frmPlayerNames1()
{
    State().LetGoOfControl();
}

void frmPlayerNames1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmPlayerNames1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::SetUp);
    platform::InstallEnterKey(window, m_ui->cmdNext);
    lblPlayer = { m_ui->lblPlayer_0, m_ui->lblPlayer_1, m_ui->lblPlayer_2, m_ui->lblPlayer_3,
                  m_ui->lblPlayer_4 };
    txtPlayer = { m_ui->txtPlayer_0, m_ui->txtPlayer_1, m_ui->txtPlayer_2, m_ui->txtPlayer_3,
                  m_ui->txtPlayer_4 };
    for (QLineEdit *box : txtPlayer)
        platform::KeepSingleLine(*box);
    Connect(m_ui->cmdNext, &QPushButton::clicked, [this] { cmdNext_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { cmdMenu_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kPlayingTopic); });
}

void frmPlayerNames1::OnActivate()
{
    for (std::size_t index = static_cast<std::size_t>(int(State().NumPlayers)); index < txtPlayer.size();
         ++index) {
        lblPlayer[index]->setVisible(false);
        txtPlayer[index]->setVisible(false);
    }
    if (State().NumPlayers == 1) {
        lblPlayer[0]->setText(QStringLiteral("Enter your name"));
        txtPlayer[0]->setAccessibleName(lblPlayer[0]->text());
    }
    txtPlayer[0]->setFocus();
}

void frmPlayerNames1::OnUnload()
{
    CloseHelp();
}

void frmPlayerNames1::cmdNext_Click()
{
    QStringList names;
    for (int player = 0; player < State().NumPlayers; ++player) {
        // Nothing is trimmed: a blank is a name.
        const QString name = txtPlayer[static_cast<std::size_t>(player)]->text();
        if (name.isEmpty()) {
            platform::The().boxes.MessageBox(
                QStringLiteral("You haven't entered names for all of the players. If you have less than ") +
                QString::number(State().NumPlayers) +
                QStringLiteral(
                    " players, click Back and change the number of players. Otherwise enter a name for "
                    "each player."));
            return;
        }
        names << name;
    }
    State().Players = Players(names);
    ShowScreen(frmChooseList1::Shared(), *this);
}

void frmPlayerNames1::cmdback_Click()
{
    ShowScreen(frmNumPlayers1::Shared(), *this);
}

void frmPlayerNames1::cmdMenu_Click()
{
    ShowScreen(frmMenu1::Shared(), *this);
}

} // namespace tumblewick
