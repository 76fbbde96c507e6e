#include "authoring/frmQuiz1.h"

#include "ui_frmQuiz1.h"

#include "authoring/Questions.h"
#include "authoring/QuizQuestion.h"
#include "authoring/frmList.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/EnterKey.h"
#include "platform/forms/SingleLine.h"
#include "platform/system/Process.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/frmMenu1.h"

namespace tumblewick {

using platform::The;

frmQuiz1::frmQuiz1() : ResizedScreen(QStringLiteral("frmQuiz1"), QStringLiteral("Create a Quiz")) {}

frmQuiz1::~frmQuiz1() = default;

void frmQuiz1::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmQuiz1>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window);
    m_columns.emplace(*m_ui->lvwList);
    m_boxes = { m_ui->txtQuest,
                { m_ui->txtAnsw_0, m_ui->txtAnsw_1, m_ui->txtAnsw_2, m_ui->txtAnsw_3 },
                m_ui->txtCorrect };
    m_boxes.SetUp();
    platform::KeepSingleLine(*m_ui->txtName);
    m_ui->lvwList->SetDeleteButton(*m_ui->cmdDel);
    Connect(m_ui->cmdAdd, &QPushButton::clicked, [this] { cmdAdd_Click(); });
    Connect(m_ui->cmdDel, &QPushButton::clicked, [this] { cmdDel_Click(); });
    Connect(m_ui->cmdSave, &QPushButton::clicked, [this] { SaveQuiz(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->Command2, &QPushButton::clicked, [this] { Command2_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kNewQuizTopic); });
    m_ui->txtName->setFocus();
}

void frmQuiz1::OnActivate()
{
    m_columns->Share();
    // Also when the screen comes to the front again with questions that are not saved: wanted.
    ListDirty = false;
}

void frmQuiz1::OnUnload()
{
    CloseHelp();
    Release();
}

void frmQuiz1::OnResize()
{
    ResizedScreen::OnResize();
    m_columns->FollowList();
    DrawAnswerShapes({ m_ui->Image1, m_ui->Image2, m_ui->Image3, m_ui->Image4 });
}

void frmQuiz1::cmdAdd_Click()
{
    const QuizEntry entry = m_boxes.Entry();
    const QString faults = FaultsOfQuestion(entry);
    if (!faults.isEmpty()) {
        The().boxes.MessageBox(faults, platform::BoxButtons::Ok, platform::kNoTitle);
        return;
    }
    const platform::ListItemReference item = m_ui->lvwList->Add(entry.question);
    ShowIn(item, entry);
    m_ui->lvwList->Reveal(item->Index());
    m_boxes.Empty();
    ListDirty = true;
    m_ui->txtQuest->setFocus();
}

void frmQuiz1::cmdDel_Click()
{
    if (IsConfirmed(QStringLiteral("Are you sure you want to delete the question '") +
                    m_ui->lvwList->SelectedItem()->Text() + QStringLiteral("' from the quiz?")))
        m_ui->lvwList->Remove(m_ui->lvwList->SelectedItem()->Index());
}

bool frmQuiz1::SaveQuiz()
{
    const QString name = m_ui->txtName->text();
    if (name.isEmpty()) {
        The().boxes.MessageBox(QStringLiteral("Please enter a name for this Quiz."));
        m_ui->txtName->setFocus();
        return false;
    }
    const QString folder = The().process.ApplicationFolder();
    if (!MayReplaceList(folder + QStringLiteral("\\Qlist\\") + name, name))
        return false;
    const auto writer = The().files.OpenForWriting(folder + QStringLiteral("\\QList\\") + name,
                                                   platform::FileWriting::Replace, true);
    WriteQuiz(*writer, m_ui->lvwList->Count(),
              [this](int index) { return QuestionIn(m_ui->lvwList->Item(index)); });
    ListDirty = false;
    // The file is closed behind the message: wanted.
    The().boxes.MessageBox(QStringLiteral("Your quiz has been saved."));
    writer->Close();
    return true;
}

bool frmQuiz1::MayLeave()
{
    return MayLeaveNewList(ListDirty, [this] { return SaveQuiz(); });
}

void frmQuiz1::cmdback_Click()
{
    if (MayLeave())
        ShowScreen(frmList::Shared(), *this);
}

void frmQuiz1::Command2_Click()
{
    if (MayLeave())
        ShowScreen(frmMenu1::Shared(), *this);
}

} // namespace tumblewick
