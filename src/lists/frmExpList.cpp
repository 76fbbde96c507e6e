#include "lists/frmExpList.h"

#include "ui_frmExpList.h"

#include "authoring/frmList.h"
#include "lists/Transfer.h"
#include "platform/Services.h"
#include "platform/files/Drives.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

frmExpList::frmExpList() : ResizedScreen(QStringLiteral("frmExpList"), QStringLiteral("Lists")) {}

frmExpList::~frmExpList()
{
    State().LetGoOfControl();
}

void frmExpList::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmExpList>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window, m_ui->cmdExport);
    ScaleControls(window);
    m_ui->FileList->SetMenuButton(*m_ui->cmdExport);
    Connect(m_ui->FileList, &platform::FileListBox::Clicked, [this] { FileList_Click(); });
    Connect(m_ui->Drive1, &platform::DriveList::Changed, [this] { Drive1_Change(); });
    Connect(m_ui->cmdExport, &QPushButton::clicked, [this] { cmdExport_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { ShowScreen(frmList::Shared(), *this); });
    Connect(m_ui->cmdExit, &QPushButton::clicked, [this] { ShowScreen(frmMenu1::Shared(), *this); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kTransferTopic); });
}

void frmExpList::OnActivate()
{
    Trapped([this] {
        m_ui->FileList->setFocus();
        m_ui->Drive1->SetDrive(The().drives.Starting());
        m_ui->FileList->SetPath(The().process.ApplicationFolder() + (ListType == kSpellList
                                                                         ? QStringLiteral("\\Lists")
                                                                         : QStringLiteral("\\Qlist")));
    });
}

void frmExpList::OnUnload()
{
    CloseHelp();
    Release();
}

void frmExpList::FileList_Click()
{
    OfferName(*m_ui->FileList, *m_ui->txtName);
}

void frmExpList::Drive1_Change()
{
    FollowDrive(*m_ui->Drive1, *m_ui->Dir1);
}

void frmExpList::cmdExport_Click()
{
    try {
        const QString list = m_ui->FileList->FileName();
        const QString name = m_ui->txtName->text();
        const QString missing = MissingForCopy(
            list, name,
            QStringLiteral("Please select a list to export by clicking on the name of the list. "));
        if (!missing.isEmpty()) {
            The().boxes.MessageBox(missing, platform::BoxButtons::Ok, platform::kNoTitle);
            return;
        }
        const QString target = m_ui->Dir1->Path() + QLatin1Char('\\') + name;
        if (CopyAfterQuestion({ m_ui->FileList->Path() + QLatin1Char('\\') + list, target,
                                QStringLiteral("The file ") + target +
                                    QStringLiteral(" already exists. Do you wish to overwrite it?"),
                                list }))
            The().boxes.MessageBox(QStringLiteral("Export Successful"));
    } catch (const platform::Error &error) {
        // Any other failure is not told: wanted.
        if (error.Number() == platform::kBadFileName)
            TellRefusedName();
    }
}

} // namespace tumblewick
