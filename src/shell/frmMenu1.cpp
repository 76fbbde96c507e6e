#include "shell/frmMenu1.h"

#include "ui_frmMenu1.h"

#include "authoring/frmList.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Holds.h"
#include "platform/forms/Picture.h"
#include "platform/system/Chance.h"
#include "platform/system/Process.h"
#include "setup/frmNumPlayers1.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/LastIntroduction.h"
#include "shell/SettingsFile.h"
#include "shell/SharedState.h"
#include "shell/frmAbout.h"
#include "shell/frmSettings.h"
#include "stage/Characters.h"
#include "stage/Introductions.h"

namespace tumblewick {

using platform::The;

namespace {

constexpr int kIntroductionDelay = 4000; // milliseconds

// Whether the service refuses or has gone. Then there is nobody to send off, and the way is free.
bool IsWithoutService(const platform::Error &error)
{
    return error.Number() == platform::kAgentRefuses || error.Number() == platform::kAgentGone;
}

} // namespace

frmMenu1::frmMenu1() : ResizedScreen(QStringLiteral("frmMenu1"), QStringLiteral("Menu")) {}

frmMenu1::~frmMenu1()
{
    State().LetGoOfControl();
    State().SecondRequest = nullptr;
}

void frmMenu1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmMenu1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Menu);
    platform::InstallEnterKey(window);
    ScaleControls(window, platform::HoldAllButLeft({ "CommandButton" }));
    m_timer1.emplace(Guarded([this] { Timer1_Timer(); }));
    m_agent1 = The().agent.CreateControl();
    m_ui->cmdPlay->setFocus();
    Connect(m_ui->cmdPlay, &QPushButton::clicked, [this] { cmdPlay_Click(); });
    Connect(m_ui->Command3, &QPushButton::clicked, [this] { Command3_Click(); });
    Connect(m_ui->Command1, &QPushButton::clicked, [this] { Command1_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kIntroductionTopic); });
    Connect(m_ui->cmdCreate, &QPushButton::clicked, [this] { cmdCreate_Click(); });
    Connect(m_ui->cmdSettings, &QPushButton::clicked, [this] { cmdSettings_Click(); });
    Connect(m_ui->cmdAbout, &QPushButton::clicked, [] { frmAbout::Shared().Show(); });
}

// Runs each time the menu comes to the front; MenuShown guards what is done once in a run.
void frmMenu1::OnActivate()
{
    IntroStartY = m_ui->Label1->y() - 100;
    m_ui->Image1->setPixmap(
        platform::LoadPicture(The().process.ApplicationFolder() + QStringLiteral("\\TWicon4.bmp")));
    if (!State().MenuShown) {
        const Settings settings = ReadSettings();
        State().PlayIntro = settings.playIntro;
        if (!settings.playIntro)
            IntroCancelled = true;
        State().AuthoringPassword = settings.authoringPassword;
        State().AgentControl = m_agent1;
        LoadCharacters();
    }
    if (State().PlayIntro)
        DrawIntroduction();
    State().MenuShown = true;
}

// Draws until the pick is not the introduction recorded last, so that the two take turns. That happens at
// each return to the menu, though only the first one plays what was drawn: wanted.
void frmMenu1::DrawIntroduction()
{
    int choice = 0;
    do {
        The().chance.Randomize();
        choice = platform::Drawn(The().chance, 2);
    } while (CheckLastIntro(choice));
    if (State().MenuShown)
        return;
    PendingIntro = choice == 1 ? QStringLiteral("IntroOne") : QStringLiteral("IntroTwo");
    m_timer1->SetInterval(kIntroductionDelay);
}

void frmMenu1::Timer1_Timer()
{
    if (!IntroCancelled) {
        if (PendingIntro == QLatin1String("IntroOne"))
            IntroOneScript(*this);
        else if (PendingIntro == QLatin1String("IntroTwo"))
            IntroTwoScript(*this);
    }
    PendingIntro.clear();
    if (m_timer1)
        m_timer1->SetInterval(0);
}

void frmMenu1::OnUnload()
{
    CloseHelp();
    m_timer1.reset();
    m_agent1->Disconnect();
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

void frmMenu1::cmdSettings_Click()
{
    if (SendCharactersOff())
        ShowScreen(frmSettings::Shared(), *this);
}

void frmMenu1::cmdCreate_Click()
{
    if (SendCharactersOff())
        PassLock();
}

bool frmMenu1::SendCharactersOff()
{
    const auto &characters = State().Characters;
    try {
        for (const auto &character : characters)
            character->StopAll();
        IntroCancelled = true;
        characters[kMerlin]->Play(QStringLiteral("Pleased"));
        for (const auto &character : characters)
            character->Hide();
    } catch (const platform::Error &error) {
        if (!IsWithoutService(error)) {
            ShortErrorBox(error);
            return false;
        }
    }
    return true;
}

// The password guards this one door, and there is no limit to how often one may try.
void frmMenu1::PassLock()
{
    const QString &password = State().AuthoringPassword;
    if (!password.isEmpty()) {
        const QString reply = The().boxes.InputBox(QStringLiteral("Enter Password"));
        if (reply != password) {
            if (!reply.isEmpty())
                The().boxes.MessageBox(QStringLiteral("Incorrect password"));
            return;
        }
    }
    ShowScreen(frmList::Shared(), *this);
}

void frmMenu1::Command1_Click()
{
    CloseHelp();
    The().process.End();
}

} // namespace tumblewick
