#include "authoring/frmSpelling1.h"

#include "ui_frmSpelling1.h"

#include "authoring/Questions.h"
#include "authoring/SpellingEntry.h"
#include "authoring/frmList.h"
#include "lists/SpellingList.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/SingleLine.h"
#include "platform/forms/Twips.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

namespace {

const PronunciationTest kTestOfWord{ QStringLiteral("You have not entered the spelling for the word. "),
                                     QStringLiteral("\\."), Arrival::Placed };
const PronunciationTest kTestOfPronunciation{ QStringLiteral("You have not entered a pronunciation to test."),
                                              QStringLiteral("\\"), Arrival::Placed };

} // namespace

frmSpelling1::frmSpelling1()
    : ResizedScreen(QStringLiteral("frmSpelling1"), QStringLiteral("Create a Spell List")),
      m_tester(*this, [this](Standing) {
          return PlaceBesideBoxes(platform::Twips(*m_ui->txtNew), platform::Twips(*m_ui->Frame1),
                                  State().DisplayWidth);
      })
{
}

frmSpelling1::~frmSpelling1() = default;

void frmSpelling1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmSpelling1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window);
    m_agent1 = The().agent.CreateControl();
    m_tester.SetControl(m_agent1);
    platform::KeepSingleLine(*m_ui->txtName);
    m_boxes = { m_ui->txtNew, m_ui->txtPronounce };
    m_boxes.SetUp();
    m_ui->List1->SetColumns({ QStringLiteral("Spell this way"), QStringLiteral("Say it this way") });
    m_ui->List1->SetDeleteButton(*m_ui->Command2);

    Connect(m_ui->cmdTestit, &QPushButton::clicked, [this] { cmdTestit_Click(); });
    Connect(m_ui->cmdTest, &QPushButton::clicked, [this] { cmdTest_Click(); });
    Connect(m_ui->Command1, &QPushButton::clicked, [this] { Command1_Click(); });
    Connect(m_ui->Command2, &QPushButton::clicked, [this] { Command2_Click(); });
    Connect(m_ui->Command3, &QPushButton::clicked, [this] { SaveList(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->Command4, &QPushButton::clicked, [this] { Command4_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kNewSpellingListTopic); });
    Connect(m_ui->Command5, &QPushButton::clicked, [] { ShowHelpTopic(kPronunciationTopic); });
    m_ui->txtName->setFocus();
}

void frmSpelling1::OnUnload()
{
    CloseHelp();
    m_agent1->Disconnect();
    Release();
}

void frmSpelling1::OnResize()
{
    ResizedScreen::OnResize();
    const int half = platform::Twips(*m_ui->List1).width / 2;
    m_ui->List1->SetColumnTwips(1, half);
    m_ui->List1->SetColumnTwips(2, half);
}

void frmSpelling1::cmdTestit_Click()
{
    m_tester.TestSpeech(kTestOfWord, m_ui->txtNew->text(), m_ui->txtNew->text());
}

// Asks for a pronunciation and then says the word: wanted.
void frmSpelling1::cmdTest_Click()
{
    m_tester.TestSpeech(kTestOfPronunciation, m_ui->txtPronounce->text(), m_ui->txtNew->text());
}

void frmSpelling1::Command1_Click()
{
    const SpellingLine entry = m_boxes.Entry();
    const QString faults = FaultsOfEntry(entry, kWordMissing);
    if (!faults.isEmpty()) {
        The().boxes.MessageBox(faults, platform::BoxButtons::Ok, platform::kNoTitle);
        return;
    }
    ListDirty = true;
    const platform::ListItemReference item = m_ui->List1->Add(entry.word);
    ShowIn(item, entry);
    m_ui->List1->Reveal(item->Index());
    m_boxes.Empty();
    m_ui->txtNew->setFocus();
}

// ListDirty is left as it is, so that a list of which only words were deleted is not offered for saving.
void frmSpelling1::Command2_Click()
{
    if (IsConfirmed(QStringLiteral("Are you sure you want to delete ") + m_ui->List1->SelectedItem()->Text() +
                    QStringLiteral(" from the list?")))
        m_ui->List1->Remove(m_ui->List1->SelectedItem()->Index());
}

bool frmSpelling1::SaveList()
{
    const QString name = m_ui->txtName->text();
    if (name.isEmpty()) {
        // It says quiz here too.
        The().boxes.MessageBox(QStringLiteral("Please enter a name for this Quiz list"));
        m_ui->txtName->setFocus();
        return false;
    }
    const QString folder = The().process.ApplicationFolder();
    if (!MayReplaceList(folder + QStringLiteral("\\lists\\") + name, name))
        return false;
    const auto writer = The().files.OpenForWriting(folder + QStringLiteral("\\Lists\\") + name,
                                                   platform::FileWriting::Replace, true);
    WriteSpellingList(
        *writer, m_ui->List1->Count(), [this](int index) { return WordIn(m_ui->List1->Item(index)); },
        SpellingWriting::Plain);
    writer->Close();
    ListDirty = false;
    The().boxes.MessageBox(QStringLiteral("Your list has been saved."));
    return true;
}

bool frmSpelling1::MayLeave()
{
    return MayLeaveNewList(ListDirty, [this] { return SaveList(); });
}

void frmSpelling1::cmdback_Click()
{
    if (MayLeave())
        ShowScreen(frmList::Shared(), *this);
}

void frmSpelling1::Command4_Click()
{
    if (MayLeave())
        ShowScreen(frmMenu1::Shared(), *this);
}

} // namespace tumblewick
