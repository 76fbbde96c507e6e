#include "authoring/frmDelete.h"

#include "ui_frmDelete.h"

#include "authoring/frmList.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
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

frmDelete::frmDelete() : ResizedScreen(QStringLiteral("frmDelete"), QStringLiteral("Delete a List")) {}

frmDelete::~frmDelete()
{
    State().LetGoOfControl();
}

void frmDelete::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmDelete>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window);
    m_ui->File1->SetDeleteButton(*m_ui->cmdDel);
    Connect(m_ui->cmdDel, &QPushButton::clicked, [this] { cmdDel_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { ShowScreen(frmList::Shared(), *this); });
    Connect(m_ui->cmdExit, &QPushButton::clicked, [this] { ShowScreen(frmMenu1::Shared(), *this); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kListsTopic); });
}

void frmDelete::OnActivate()
{
    Trapped([this] {
        m_ui->File1->setFocus();
        m_ui->File1->SetPath(Folder());
    });
}

void frmDelete::OnUnload()
{
    CloseHelp();
}

QString frmDelete::Folder() const
{
    const bool isSpelling = ListType == kSpellList;
    return The().process.ApplicationFolder() +
           (isSpelling ? QStringLiteral("\\Lists") : QStringLiteral("\\Qlist"));
}

// With nothing selected it asks all the same, and a Yes then fails on the folder: wanted.
void frmDelete::cmdDel_Click()
{
    Trapped([this] {
        const QString name = m_ui->File1->FileName();
        if (The().boxes.MessageBox(
                QStringLiteral("Are you sure you want to delete ") + name + QLatin1Char('?'),
                platform::BoxButtons::YesNo, QStringLiteral("Confirm Delete")) != platform::BoxAnswer::Yes)
            return;
        The().files.Kill(Folder() + QLatin1Char('\\') + name);
        m_ui->File1->Refresh();
    });
}

} // namespace tumblewick
