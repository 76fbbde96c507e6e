#include "shell/frmSettings.h"

#include "ui_frmSettings.h"

#include "game/frmSpell1.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/MousePress.h"
#include "platform/forms/OptionKeys.h"
#include "platform/forms/SingleLine.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/SettingsFile.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::BoxAnswer;
using platform::The;

namespace {

// Stands in the boxes for a password that is set; left there it means the same password as before.
const QString kMask = QStringLiteral("****");

} // namespace

frmSettings::frmSettings() : ResizedScreen(QStringLiteral("frmSettings"), QStringLiteral("Settings")) {}

frmSettings::~frmSettings()
{
    State().LetGoOfControl();
}

void frmSettings::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmSettings>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    platform::InstallOptionKeys(window);
    ScaleControls(window);
    for (QLineEdit *box : { m_ui->txtPassword, m_ui->txtpassword2 })
        platform::KeepSingleLine(*box);
    const auto markDirty = [this] { m_settingsDirty = true; };
    // The mouse alone marks this one, not the keyboard: wanted.
    platform::OnMousePress(*m_ui->optIntro, Guarded(markDirty));
    // A click marks it even where it is chosen already, and a key that chooses it is a click.
    Connect(m_ui->optNoIntro, &QRadioButton::clicked, markDirty);
    Connect(m_ui->txtPassword, &QLineEdit::textChanged, markDirty);
    Connect(m_ui->txtpassword2, &QLineEdit::textChanged, markDirty);
    Connect(m_ui->cmdSave, &QPushButton::clicked, [this] { SaveSettings(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdProperties, &QPushButton::clicked, [this] { cmdProperties_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kSettingsTopic); });
}

void frmSettings::OnActivate()
{
    QRadioButton *choice = State().PlayIntro ? m_ui->optIntro : m_ui->optNoIntro;
    choice->setChecked(true);
    choice->setFocus();
    if (!State().AuthoringPassword.isEmpty()) {
        m_ui->txtPassword->setText(kMask);
        m_ui->txtpassword2->setText(kMask);
    }
    // Last, since filling the controls marks the settings as changed.
    m_settingsDirty = false;
}

void frmSettings::OnUnload()
{
    CloseHelp();
    Release();
}

void frmSettings::cmdback_Click()
{
    if (m_settingsDirty) {
        const BoxAnswer answer =
            The().boxes.MessageBox(QStringLiteral("Save changes?"), platform::BoxButtons::YesNoCancel);
        if (answer == BoxAnswer::Cancel || (answer == BoxAnswer::Yes && !SaveSettings()))
            return;
    }
    ShowScreen(frmMenu1::Shared(), *this);
}

// The service's own window; what the user does there is not told to the game. It hangs on the game screen's
// control, which loads that screen without showing it.
void frmSettings::cmdProperties_Click()
{
    frmSpell1::Shared().Load();
    frmSpell1::Shared().Agent1()->Sheet().SetVisible(true);
}

bool frmSettings::SaveSettings()
{
    const QString password = m_ui->txtPassword->text();
    if (password != m_ui->txtpassword2->text()) {
        The().boxes.MessageBox(
            QStringLiteral("The 2 passwords are different. Please check your passwords and try again. "));
        return false;
    }
    const bool isKept = password == kMask;
    WriteSettings({ m_ui->optIntro->isChecked(), isKept ? State().AuthoringPassword : password });
    if (!isKept)
        State().AuthoringPassword = password;
    m_settingsDirty = false;
    The().boxes.MessageBox(QStringLiteral("Save successful"));
    return true;
}

} // namespace tumblewick
