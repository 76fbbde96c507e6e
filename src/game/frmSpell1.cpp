#include "game/frmSpell1.h"

#include "ui_frmSpell1.h"

#include "game/ScorePanel.h"
#include "platform/Services.h"
#include "platform/Subscript.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Holds.h"
#include "platform/forms/SelectionKeys.h"
#include "platform/media/MediaPlayer.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "stage/Fireworks.h"

namespace tumblewick {

using platform::The;

frmSpell1::frmSpell1() : ResizedScreen(QStringLiteral("frmSpell1"), QStringLiteral("The Game")) {}

frmSpell1::~frmSpell1() = default;

void frmSpell1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmSpell1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Game);
    // Buttons keep their size but move up and down with the rest.
    ScaleControls(window, platform::HoldSize({ "CommandButton" }));
    platform::InstallEnterKey(window, m_ui->cmdGo);
    platform::InstallSelectionKeys(*m_ui->lvwAnswer);
    MediaPlayer1 = The().media.CreatePlayer(window, QPoint(kClipLeft, kClipTop));
    m_agent1 = The().agent.CreateControl();
    m_agent1->command = [this](const platform::UserInput &input) {
        Guarded([this, input] { Agent1_Command(input); })();
    };
    m_agent1->requestComplete = [this](const platform::RequestReference &) { ++RequestEvents; };
    Timer1 = std::make_unique<platform::Timer>(Guarded([this] { Timer1_Timer(); }));

    Connect(m_ui->cmdGo, &QPushButton::clicked, [this] { cmdGo_Click(); });
    Connect(m_ui->cmdPass, &QPushButton::clicked, [this] { cmdPass_Click(); });
    Connect(m_ui->cmdHint, &QPushButton::clicked, [this] { cmdHint_Click(); });
    Connect(m_ui->cmdReplay, &QPushButton::clicked, [this] { cmdReplay_Click(); });
    Connect(m_ui->cmdNew, &QPushButton::clicked, [this] { cmdNew_Click(); });
    Connect(m_ui->cmdAgain, &QPushButton::clicked, [this] { cmdAgain_Click(); });
    Connect(m_ui->cmdExit, &QPushButton::clicked, [this] { cmdExit_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kPlayingTopic); });
    Connect(m_ui->txtAnswer, &QLineEdit::textChanged, [this] { txtAnswer_Change(); });

    // As the screen is designed: nothing to answer with before the first question.
    m_ui->txtAnswer->setVisible(false);
    m_ui->fmeQuiz->setVisible(false);
    EnableAnswering(false);
    m_ui->cmdAgain->setEnabled(false);
}

void frmSpell1::OnUnload()
{
    CloseHelp();
    // Timer1 stays: a script that runs on behind the unload may still arm it, and it does not tick any more.
    m_agent1->Disconnect();
}

void frmSpell1::Timer1_Timer()
{
    m_ui->lvwAnswer->setVisible(true);
    Timer1->SetInterval(0);
}

// A command of the voice spells a letter or presses the button.
void frmSpell1::Agent1_Command(const platform::UserInput &input)
{
    const QString name = input.name.toLower();
    if (name == QLatin1String("go")) {
        cmdGo_Click();
    } else if (name.size() == 1 && name[0] >= QLatin1Char('a') && name[0] <= QLatin1Char('z')) {
        // The letter e writes a c: wanted.
        const QString letter = name == QLatin1String("e") ? QStringLiteral("c") : name;
        m_ui->txtAnswer->setText(m_ui->txtAnswer->text() + letter);
    }
}

// The word stands large in the panel while it is typed, until the scores replace it.
void frmSpell1::txtAnswer_Change()
{
    const QString text = m_ui->txtAnswer->text();
    if (!text.isEmpty())
        ShowInPanel(*m_ui->txtScore, text, kTypedWordSize);
}

bool frmSpell1::IsSpelling() const
{
    return State().GameMode == kSpellingMode;
}

bool frmSpell1::IsQuiz() const
{
    return State().GameMode == kQuizMode;
}

GameKind frmSpell1::Kind() const
{
    return IsSpelling() ? GameKind::Spelling : GameKind::Quiz;
}

QString frmSpell1::PlayerName() const
{
    return State().Players.Text(m_turns.CurrentPlayer, Players::kName);
}

int frmSpell1::PlayerAtRank(int rank) const
{
    return State().NumPlayers > 1 ? int(platform::At(m_rankOrder, rank).player) : 0;
}

platform::CharacterReference frmSpell1::Speaker() const
{
    // Before the first question there is none; the voice can press the button even then.
    return platform::At(State().Characters, m_turns.SpeakerIndex);
}

} // namespace tumblewick
