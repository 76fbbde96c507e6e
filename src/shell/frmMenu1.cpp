#include "shell/frmMenu1.h"

#include "ui_frmMenu1.h"

#include "platform/Services.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Picture.h"
#include "platform/system/Process.h"
#include "setup/frmNumPlayers1.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "stage/Characters.h"

namespace tumblewick {

using platform::The;

frmMenu1::frmMenu1() : SharedScreen(QStringLiteral("frmMenu1"), QStringLiteral("Menu")) {}

frmMenu1::~frmMenu1()
{
    State().AgentControl = nullptr;
    State().CurrentRequest = nullptr;
    State().SecondRequest = nullptr;
}

void frmMenu1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmMenu1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Menu);
    platform::InstallEnterKey(window);
    m_resizer = std::make_unique<platform::Resizer>(window, platform::HoldAllButLeft({ "CommandButton" }));
    m_agent1 = The().agent.CreateControl();
    Connect(m_ui->cmdPlay, &QPushButton::clicked, [this] { cmdPlay_Click(); });
    Connect(m_ui->Command3, &QPushButton::clicked, [this] { Command3_Click(); });
    Connect(m_ui->Command1, &QPushButton::clicked, [this] { Command1_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kIntroductionTopic); });
    // The screens that these three lead to do not exist yet.
    m_ui->cmdCreate->setEnabled(false);
    m_ui->cmdSettings->setEnabled(false);
    m_ui->cmdAbout->setEnabled(false);
}

// Runs each time the menu comes to the front; MenuShown guards what is done once in a run.
void frmMenu1::OnActivate()
{
    IntroStartY = m_ui->Label1->y() - 100;
    m_ui->Image1->setPixmap(
        platform::LoadPicture(The().process.ApplicationFolder() + QStringLiteral("\\TWicon4.bmp")));
    if (!State().MenuShown) {
        State().AgentControl = m_agent1;
        LoadCharacters();
    }
    State().MenuShown = true;
}

void frmMenu1::OnUnload()
{
    CloseHelp();
    m_agent1->Disconnect();
}

void frmMenu1::OnResize()
{
    m_resizer->Apply();
}

void frmMenu1::cmdPlay_Click()
{
    BeginSetUp(kSpellingMode);
}

void frmMenu1::Command3_Click()
{
    BeginSetUp(kQuizMode);
}

void frmMenu1::BeginSetUp(const QString &gameMode)
{
    try {
        IntroCancelled = true;
        State().GameMode = gameMode;
        if (State().AgentControl->Connected()) {
            State().Characters[kGenie]->Hide();
            State().Characters[kPeedy]->Hide();
            State().Characters[kMerlin]->Hide();
        }
    } catch (const platform::Error &error) {
        // Without a control there is nobody to hide, and the game goes on.
        if (error.Number() != platform::kObjectNotSet)
            return ErrorReport(error);
    }
    ShowScreen(frmNumPlayers1::Shared(), *this);
}

void frmMenu1::Command1_Click()
{
    CloseHelp();
    The().process.End();
}

} // namespace tumblewick
