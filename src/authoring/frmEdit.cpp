#include "authoring/frmEdit.h"

#include "ui_frmEdit.h"

#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Holds.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

frmEdit::frmEdit() : ResizedScreen(QStringLiteral("frmEdit"), QStringLiteral("Select a List")) {}

frmEdit::~frmEdit()
{
    State().LetGoOfControl();
}

void frmEdit::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmEdit>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window, m_ui->cmdOK);
    ScaleControls(window, platform::HoldAllButLeft({ "CommandButton", "Label" }));
    m_ui->File1->SetDoubleClickButton(*m_ui->cmdOK);
    Connect(m_ui->File1, &platform::FileListBox::Clicked, [this] { File1_Click(); });
    Connect(m_ui->cmdOK, &QPushButton::clicked, [this] { cmdOK_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { ShowScreen(frmList::Shared(), *this); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { ShowScreen(frmMenu1::Shared(), *this); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kListsTopic); });
}

void frmEdit::OnActivate()
{
    Trapped([this] {
        m_ui->File1->setFocus();
        const QString folder = The().process.ApplicationFolder();
        if (ListType == kSpellList)
            m_ui->File1->SetPath(folder + QStringLiteral("\\Lists"));
        else if (ListType == kQuizList)
            m_ui->File1->SetPath(folder + QStringLiteral("\\QList"));
    });
}

void frmEdit::OnUnload()
{
    CloseHelp();
}

void frmEdit::File1_Click()
{
    m_ui->lblmsg->setText(QStringLiteral("You have selected ") + m_ui->File1->FileName() +
                          QStringLiteral(". Click OK to continue."));
}

void frmEdit::cmdOK_Click()
{
    Trapped([this] {
        if (ListType == kSpellList)
            EditSelected<frmEditSpell>(
                QStringLiteral("Select a spelling list by clicking on the name of the list."));
        else if (ListType == kQuizList)
            EditSelected<frmEditQuiz>(QStringLiteral("Select a quiz by clicking on the name of the list."));
    });
}

template <class Target>
void frmEdit::EditSelected(const QString &nothingSelected)
{
    if (m_ui->File1->FileName().isEmpty()) {
        The().boxes.MessageBox(nothingSelected);
        return;
    }
    Target::Shared().EditFileName = m_ui->File1->FileName();
    ShowScreen(Target::Shared(), *this);
}

} // namespace tumblewick
