#include "setup/frmChooseList1.h"

#include "ui_frmChooseList1.h"

#include "game/frmSpell1.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Holds.h"
#include "platform/system/Process.h"
#include "setup/frmPlayerNames1.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

frmChooseList1::frmChooseList1()
    : ResizedScreen(QStringLiteral("frmChooseList1"), QStringLiteral("Choose a List"))
{
}

frmChooseList1::~frmChooseList1()
{
    State().LetGoOfControl();
}

void frmChooseList1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmChooseList1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::SetUp);
    platform::InstallEnterKey(window, m_ui->cmdNext);
    ScaleControls(window, platform::HoldAllButLeft({ "CommandButton", "Label" }));
    m_ui->File2->SetDoubleClickButton(*m_ui->cmdNext);
    Connect(m_ui->File2, &platform::FileListBox::Clicked, [this] { File2_Click(); });
    Connect(m_ui->cmdNext, &QPushButton::clicked, [this] { cmdNext_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { cmdMenu_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kPlayingTopic); });
}

void frmChooseList1::OnActivate()
{
    Trapped([this] {
        m_ui->lblmsg->setText(QString());
        const QString folder = The().process.ApplicationFolder();
        if (State().GameMode == kSpellingMode) {
            m_ui->File2->SetPath(folder + QStringLiteral("\\Lists"));
        } else {
            m_ui->File2->SetPath(folder + QStringLiteral("\\QList"));
            m_ui->Label1->setText(QStringLiteral("Select a Quiz"));
        }
        m_ui->File2->setAccessibleName(m_ui->Label1->text());
        m_ui->File2->setFocus();
    });
}

void frmChooseList1::OnUnload()
{
    CloseHelp();
}

void frmChooseList1::File2_Click()
{
    m_ui->lblmsg->setText(QStringLiteral("You have selected ") + m_ui->File2->FileName() +
                          QStringLiteral(". Click Next to play."));
}

void frmChooseList1::cmdNext_Click()
{
    Trapped([this] {
        if (m_ui->File2->FileName().isEmpty()) {
            // The same words serve for a quiz.
            The().boxes.MessageBox(QStringLiteral("Please choose a spelling list"));
            return;
        }
        State().ListPath = m_ui->File2->Path() + QLatin1Char('\\') + m_ui->File2->FileName();
        State().ListName = m_ui->File2->FileName();
        frmSpell1::Shared().Show();
        // By name, which may be another object than this one.
        frmChooseList1::Shared().Unload();
    });
}

// The list stays loaded behind the names, and Next there brings it to the front as it was left.
void frmChooseList1::cmdback_Click()
{
    frmPlayerNames1::Shared().Show();
}

void frmChooseList1::cmdMenu_Click()
{
    ShowScreen(frmMenu1::Shared(), *this);
}

} // namespace tumblewick
