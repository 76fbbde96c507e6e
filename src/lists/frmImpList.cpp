#include "lists/frmImpList.h"

#include "ui_frmImpList.h"

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

frmImpList::frmImpList() : ResizedScreen(QStringLiteral("frmImpList"), QStringLiteral("Import List")) {}

frmImpList::~frmImpList()
{
    State().LetGoOfControl();
}

void frmImpList::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmImpList>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window, m_ui->cmdImport);
    ScaleControls(window);
    m_ui->FileList->SetMenuButton(*m_ui->cmdImport);
    Connect(m_ui->Drive1, &platform::DriveList::Changed, [this] { Drive1_Change(); });
    m_ui->FileList->LeaveOutHidden();
    Connect(m_ui->Dir1, &platform::FolderList::Changed, [this] { Dir1_Change(); });
    Connect(m_ui->FileList, &platform::FileListBox::Clicked, [this] { FileList_Click(); });
    Connect(m_ui->cmdImport, &QPushButton::clicked, [this] { cmdImport_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { ShowScreen(frmList::Shared(), *this); });
    Connect(m_ui->cmdExit, &QPushButton::clicked, [this] { ShowScreen(frmMenu1::Shared(), *this); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kTransferTopic); });
}

void frmImpList::OnActivate()
{
    Trapped([this] {
        m_ui->Dir1->setFocus();
        m_ui->Drive1->SetDrive(The().drives.Starting());
    });
}

void frmImpList::OnUnload()
{
    CloseHelp();
    Release();
}

void frmImpList::FileList_Click()
{
    OfferName(*m_ui->FileList, *m_ui->txtName);
}

void frmImpList::Drive1_Change()
{
    FollowDrive(*m_ui->Drive1, *m_ui->Dir1);
}

void frmImpList::Dir1_Change()
{
    Trapped([this] { m_ui->FileList->SetPath(m_ui->Dir1->Path()); });
}

void frmImpList::cmdImport_Click()
{
    try {
        const QString file = m_ui->FileList->FileName();
        const QString name = m_ui->txtName->text();
        const QString missing =
            MissingForCopy(file, name, QStringLiteral("Please select a list to import. "));
        if (!missing.isEmpty()) {
            The().boxes.MessageBox(missing);
            return;
        }
        QString folder;
        if (ListType == kSpellList)
            folder = QStringLiteral("\\Lists\\");
        else if (ListType == kQuizList)
            folder = QStringLiteral("\\qList\\");
        else
            return;
        // The question gives the bare name, unlike that of the export: wanted.
        if (CopyAfterQuestion({ m_ui->FileList->Path() + QLatin1Char('\\') + file,
                                The().process.ApplicationFolder() + folder + name,
                                QStringLiteral("The file ") + name +
                                    QStringLiteral(" already exists. Do you wish to overwrite it?"),
                                file }))
            The().boxes.MessageBox(QStringLiteral("Import Successful"));
    } catch (const platform::Error &error) {
        if (error.Number() == platform::kBadFileName)
            TellRefusedName();
        else
            ErrorReport(error);
    }
}

} // namespace tumblewick
