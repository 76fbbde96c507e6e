#include "authoring/frmEditSpell.h"

#include "ui_frmEditSpell.h"

#include "authoring/Questions.h"
#include "authoring/SpellingEntry.h"
#include "authoring/frmEdit.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/Twips.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/ErrorBoxes.h"
#include "shell/HelpTopics.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

namespace {

const QString kNoSpelling = QStringLiteral("You have not entered the spelling for the word. ");
const QString kNoPronunciation = QStringLiteral("You have not entered the pronunciation for the word. ");
const QString kTagEnd = QStringLiteral("\\.");

// Four buttons that do the same, but Merlin does not come to each in the same way: wanted.
const PronunciationTest kTestOfNewWord{ kNoSpelling, kTagEnd, Arrival::Shown };
const PronunciationTest kTestOfNewPronunciation{ kNoPronunciation, kTagEnd, Arrival::Shown };
const PronunciationTest kTestOfWord{ kNoSpelling, kTagEnd, Arrival::PlacedWithLongTip };
const PronunciationTest kTestOfPronunciation{ kNoPronunciation, kTagEnd, Arrival::PlacedLowWithShortTip };

} // namespace

frmEditSpell::frmEditSpell()
    : ResizedScreen(QStringLiteral("frmEditSpell"), QStringLiteral("Edit Spelling List")),
      m_tester(*this, [this](Standing standing) {
          return PlaceBeforeList(platform::Twips(*m_ui->List), State().Characters[kMerlin]->Height(),
                                 standing);
      })
{
}

frmEditSpell::~frmEditSpell()
{
    State().LetGoOfControl();
}

void frmEditSpell::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmEditSpell>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window);
    m_agent1 = The().agent.CreateControl();
    m_tester.SetControl(m_agent1);
    m_editBoxes = { m_ui->txtESpell, m_ui->txtEPronounce };
    m_addBoxes = { m_ui->txtASpell, m_ui->txtAPronounce };
    m_editBoxes.SetUp();
    m_addBoxes.SetUp();
    m_ui->List->SetColumns({ QStringLiteral("Spell this way"), QStringLiteral("Say it this way") });
    m_ui->List->SetDeleteButton(*m_ui->cmdDelete);
    m_ui->List->SetDoubleClickCaption(QStringLiteral("&Edit"));

    Connect(m_ui->List, &platform::ListView::Clicked, [this] { List_Click(); });
    Connect(m_ui->List, &platform::ListView::DoubleClicked, [this] { List_DblClick(); });
    for (QLineEdit *box : { m_ui->txtESpell, m_ui->txtEPronounce })
        Connect(box, &QLineEdit::textChanged, [this] { EditDirty = true; });
    for (QLineEdit *box : { m_ui->txtASpell, m_ui->txtAPronounce })
        Connect(box, &QLineEdit::textChanged, [this] { AddDirty = true; });
    Connect(m_ui->cmdETest, &QPushButton::clicked, [this] { Test(kTestOfWord, *m_ui->txtESpell); });
    Connect(m_ui->cmdETest2, &QPushButton::clicked,
            [this] { Test(kTestOfPronunciation, *m_ui->txtEPronounce); });
    Connect(m_ui->cmdATest, &QPushButton::clicked, [this] { Test(kTestOfNewWord, *m_ui->txtASpell); });
    Connect(m_ui->cmdATest2, &QPushButton::clicked,
            [this] { Test(kTestOfNewPronunciation, *m_ui->txtAPronounce); });
    Connect(m_ui->cmdSave, &QPushButton::clicked, [this] { SaveWordChanges(); });
    Connect(m_ui->cmdAdd, &QPushButton::clicked, [this] { AddWord(); });
    Connect(m_ui->cmdDelete, &QPushButton::clicked, [this] { cmdDelete_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { cmdMenu_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kEditSpellingListTopic); });
    Connect(m_ui->cmdTips, &QPushButton::clicked, [] { ShowHelpTopic(kPronunciationTopic); });
    m_ui->List->setFocus();
}

void frmEditSpell::OnActivate()
{
    Trapped([this] {
        const int half = platform::Twips(*m_ui->List).width / 2 - 100;
        m_ui->List->SetColumnTwips(1, half);
        m_ui->List->SetColumnTwips(2, half);
        m_file = std::make_shared<KeptFile>(The().files, The().process.ApplicationFolder() +
                                                             QStringLiteral("\\Lists\\") + EditFileName);
        m_ui->List->Refill([this] {
            ReadSpellingList(*m_file->OpenForReading(),
                             [this](const SpellingLine &line) { ShowIn(m_ui->List->Add(line.word), line); });
        });
    });
}

void frmEditSpell::OnUnload()
{
    CloseHelp();
    m_file = nullptr;
    m_agent1->Disconnect();
    Release();
}

// Comes before each double click too.
void frmEditSpell::List_Click()
{
    m_editBoxes.Empty();
    ItemChosen = false;
}

void frmEditSpell::List_DblClick()
{
    Trapped([this] {
        m_editBoxes.Show(WordIn(m_ui->List->SelectedItem()));
        ItemChosen = true;
        // Last, since filling the boxes has set it.
        EditDirty = false;
    });
}

void frmEditSpell::Test(const PronunciationTest &test, const QLineEdit &box)
{
    m_tester.TestSpeech(test, box.text(), box.text());
}

bool frmEditSpell::SaveWordChanges()
{
    bool isDone = false;
    Trapped([&] {
        if (!ItemChosen) {
            The().boxes.MessageBox(
                QStringLiteral("You need to double click on a word from the list before you can edit it. "));
            return;
        }
        const SpellingLine entry = m_editBoxes.Entry();
        const QString faults = FaultsOfEntry(entry, kNewWordMissing);
        if (!faults.isEmpty()) {
            The().boxes.MessageBox(faults);
            return;
        }
        ShowIn(m_ui->List->SelectedItem(), entry);
        RewriteFile(SpellingWriting::Plain);
        ItemChosen = false;
        EditDirty = false;
        m_editBoxes.Empty();
        isDone = true;
    });
    return isDone;
}

bool frmEditSpell::AddWord()
{
    bool isDone = false;
    Trapped([&] {
        // First, so that also an add that is refused throws an edit away.
        ItemChosen = false;
        m_editBoxes.Empty();
        const SpellingLine entry = m_addBoxes.Entry();
        const QString faults = FaultsOfEntry(entry, kNewWordMissing);
        if (!faults.isEmpty()) {
            The().boxes.MessageBox(faults);
            return;
        }
        const auto writer = m_file->OpenForAppending();
        writer->WriteLine(entry.Line());
        const platform::ListItemReference item = m_ui->List->Add(entry.word);
        ShowIn(item, entry);
        m_ui->List->Reveal(item->Index());
        writer->Close();
        m_addBoxes.Empty();
        AddDirty = false;
        isDone = true;
    });
    return isDone;
}

void frmEditSpell::cmdDelete_Click()
{
    Trapped([this] {
        if (!IsConfirmed(QStringLiteral("Are you sure you want to delete ") +
                         m_ui->List->SelectedItem()->Text() + QStringLiteral(" from the list?")))
            return;
        m_ui->List->Remove(m_ui->List->SelectedItem()->Index());
        RewriteFile(SpellingWriting::AlwaysUnderscored);
        m_editBoxes.Empty();
        ItemChosen = false;
    });
}

void frmEditSpell::RewriteFile(SpellingWriting how)
{
    const auto writer = m_file->OpenForWriting();
    WriteSpellingList(
        *writer, m_ui->List->Count(), [this](int index) { return WordIn(m_ui->List->Item(index)); }, how);
    writer->Close();
}

bool frmEditSpell::MayLeave()
{
    return MayLeaveEditing(
        { [this] { return EditDirty && m_editBoxes.IsAnyFilled(); }, [this] { return SaveWordChanges(); },
          [this] { return AddDirty && m_addBoxes.IsAnyFilled(); }, [this] { return AddWord(); } });
}

void frmEditSpell::cmdback_Click()
{
    Trapped([this] {
        if (!MayLeave())
            return;
        frmEdit::Shared().ListType = kSpellList;
        ShowScreen(frmEdit::Shared(), *this);
    });
}

void frmEditSpell::cmdMenu_Click()
{
    Trapped([this] {
        if (MayLeave())
            ShowScreen(frmMenu1::Shared(), *this);
    });
}

} // namespace tumblewick
