#include "authoring/frmList.h"

#include "ui_frmList.h"

#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Holds.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

frmList::frmList() : ResizedScreen(QStringLiteral("frmList"), QStringLiteral("Maintenance")) {}

frmList::~frmList()
{
    State().LetGoOfControl();
}

void frmList::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmList>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window, platform::HoldAllButLeft({ "CommandButton" }));
    m_ui->cmdNewSpell->setFocus();
    Connect(m_ui->cmdNewSpell, &QPushButton::clicked, [this] { ShowScreen(frmSpelling1::Shared(), *this); });
    Connect(m_ui->cmdEditSpell, &QPushButton::clicked, [this] { Edit(kSpellList); });
    Connect(m_ui->cdmDeleteSpell, &QPushButton::clicked, [this] { ShowFor<frmDelete>(kSpellList); });
    Connect(m_ui->cmdImportSpell, &QPushButton::clicked, [this] { ShowFor<frmImpList>(kSpellList); });
    Connect(m_ui->cmdExportSpell, &QPushButton::clicked, [this] { ShowFor<frmExpList>(kSpellList); });
    Connect(m_ui->cmdAddQuiz, &QPushButton::clicked, [this] { ShowScreen(frmQuiz1::Shared(), *this); });
    Connect(m_ui->cmdEditQuiz, &QPushButton::clicked, [this] { Edit(kQuizList); });
    Connect(m_ui->cmdDeleteQuiz, &QPushButton::clicked, [this] { ShowFor<frmDelete>(kQuizList); });
    Connect(m_ui->cmdImportQuiz, &QPushButton::clicked, [this] { ShowFor<frmImpList>(kQuizList); });
    Connect(m_ui->cmdExportQuiz, &QPushButton::clicked, [this] { ShowFor<frmExpList>(kQuizList); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { ShowScreen(frmMenu1::Shared(), *this); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kListsTopic); });
}

template <class Target>
void frmList::ShowFor(const QString &listType)
{
    Target::Shared().ListType = listType;
    ShowScreen(Target::Shared(), *this);
}

// The other buttons show first and unload then.
void frmList::Edit(const QString &listType)
{
    Unload();
    frmEdit::Shared().ListType = listType;
    frmEdit::Shared().Show();
}

void frmList::OnUnload()
{
    CloseHelp();
    Release();
}

} // namespace tumblewick
