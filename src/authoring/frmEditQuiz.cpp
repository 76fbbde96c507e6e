#include "authoring/frmEditQuiz.h"

#include "ui_frmEditQuiz.h"

#include "authoring/Questions.h"
#include "authoring/QuizQuestion.h"
#include "authoring/frmEdit.h"
#include "platform/Services.h"
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

frmEditQuiz::frmEditQuiz() : ResizedScreen(QStringLiteral("frmEditQuiz"), QStringLiteral("Edit Quiz")) {}

frmEditQuiz::~frmEditQuiz()
{
    State().LetGoOfControl();
}

void frmEditQuiz::OnLoad(QWidget &window)
{
    m_ui = std::make_unique<Ui::frmEditQuiz>();
    m_ui->setupUi(&window);
    DressWindow(window, Room::Study);
    platform::InstallEnterKey(window);
    ScaleControls(window);
    m_columns.emplace(*m_ui->lvwList);
    m_editBoxes = { m_ui->txtEQuestion,
                    { m_ui->txtEAnsw_0, m_ui->txtEAnsw_1, m_ui->txtEAnsw_2, m_ui->txtEAnsw_3 },
                    m_ui->txtECorrect };
    m_addBoxes = { m_ui->txtAQuestion,
                   { m_ui->txtAAnsw_0, m_ui->txtAAnsw_1, m_ui->txtAAnsw_2, m_ui->txtAAnsw_3 },
                   m_ui->txtACorrect };
    m_editBoxes.SetUp();
    m_addBoxes.SetUp();
    m_ui->lvwList->SetDeleteButton(*m_ui->cmdDelete);
    m_ui->lvwList->SetDoubleClickCaption(QStringLiteral("&Edit Question"));

    Connect(m_ui->lvwList, &platform::ListView::Clicked, [this] { lvwList_Click(); });
    Connect(m_ui->lvwList, &platform::ListView::DoubleClicked, [this] { lvwList_DblClick(); });
    Connect(m_ui->cmdSave, &QPushButton::clicked, [this] { SaveQuestionChanges(); });
    Connect(m_ui->cmdAdd, &QPushButton::clicked, [this] { AddQuestion(); });
    Connect(m_ui->cmdDelete, &QPushButton::clicked, [this] { cmdDelete_Click(); });
    Connect(m_ui->cmdback, &QPushButton::clicked, [this] { cmdback_Click(); });
    Connect(m_ui->cmdMenu, &QPushButton::clicked, [this] { cmdMenu_Click(); });
    Connect(m_ui->cmdHelp, &QPushButton::clicked, [] { ShowHelpTopic(kEditQuizTopic); });
    const auto connectChanges = [this](const QuestionBoxes &boxes, const std::function<void()> &handler) {
        Connect(boxes.question, &platform::MultiLineBox::textChanged, handler);
        for (QLineEdit *answer : boxes.answers)
            Connect(answer, &QLineEdit::textChanged, handler);
        Connect(boxes.correct, &QLineEdit::textChanged, handler);
    };
    connectChanges(m_editBoxes, [this] { EditDirty = true; });
    connectChanges(m_addBoxes, [this] { AddDirty = true; });
    m_ui->lvwList->setFocus();
}

void frmEditQuiz::OnActivate()
{
    Trapped([this] {
        m_columns->Share();
        m_file = std::make_shared<KeptFile>(The().files, The().process.ApplicationFolder() +
                                                             QStringLiteral("\\QList\\") + EditFileName);
        LoadQuestions();
    });
}

void frmEditQuiz::LoadQuestions()
{
    m_ui->lvwList->Refill([this] {
        platform::ListItemReference last;
        ReadQuiz(*m_file->OpenForReading(),
                 { [&](const QString &question) { last = m_ui->lvwList->Add(question); },
                   [&](int number, const QString &text) { last->SetSubItem(number, text); } });
    });
}

void frmEditQuiz::OnUnload()
{
    CloseHelp();
    m_file = nullptr;
}

void frmEditQuiz::OnResize()
{
    ResizedScreen::OnResize();
    m_columns->FollowList();
    DrawAnswerShapes({ m_ui->Image1, m_ui->Image2, m_ui->Image3, m_ui->Image4 });
    DrawAnswerShapes({ m_ui->Image5, m_ui->Image6, m_ui->Image7, m_ui->Image8 });
}

// Comes before each double click too.
void frmEditQuiz::lvwList_Click()
{
    m_editBoxes.Empty();
    ItemChosen = false;
}

void frmEditQuiz::lvwList_DblClick()
{
    Trapped([this] {
        m_editBoxes.Show(QuestionIn(m_ui->lvwList->SelectedItem()));
        ItemChosen = true;
        // Last, since filling the boxes has set it.
        EditDirty = false;
    });
}

bool frmEditQuiz::SaveQuestionChanges()
{
    bool isDone = false;
    Trapped([&] {
        if (!ItemChosen) {
            The().boxes.MessageBox(QStringLiteral(
                "You need to double click on a question from the list before you can edit it. "));
            return;
        }
        const QuizEntry entry = m_editBoxes.Entry();
        const QString faults = FaultsOfQuestion(entry);
        if (!faults.isEmpty()) {
            The().boxes.MessageBox(faults);
            return;
        }
        ShowIn(m_ui->lvwList->SelectedItem(), entry);
        RewriteFile();
        m_editBoxes.Empty();
        ItemChosen = false;
        EditDirty = false;
        isDone = true;
    });
    return isDone;
}

bool frmEditQuiz::AddQuestion()
{
    bool isDone = false;
    Trapped([&] {
        // First, so that also an add that is refused throws an edit away.
        ItemChosen = false;
        m_editBoxes.Empty();
        const QuizEntry entry = m_addBoxes.Entry();
        const QString faults = FaultsOfQuestion(entry);
        if (!faults.isEmpty()) {
            The().boxes.MessageBox(faults);
            return;
        }
        const auto writer = m_file->OpenForAppending();
        writer->WriteLine(entry.Line());
        const platform::ListItemReference item = m_ui->lvwList->Add(entry.question);
        ShowIn(item, entry);
        m_ui->lvwList->Reveal(item->Index());
        m_addBoxes.Empty();
        writer->Close();
        AddDirty = false;
        isDone = true;
    });
    return isDone;
}

void frmEditQuiz::cmdDelete_Click()
{
    Trapped([this] {
        if (!IsConfirmed(QStringLiteral("Are you sure you want to delete the question '") +
                         m_ui->lvwList->SelectedItem()->Text() + QStringLiteral("' from the list?")))
            return;
        m_ui->lvwList->Remove(m_ui->lvwList->SelectedItem()->Index());
        RewriteFile();
        m_editBoxes.Empty();
        ItemChosen = false;
    });
}

void frmEditQuiz::RewriteFile()
{
    const auto writer = m_file->OpenForWriting();
    WriteQuiz(*writer, m_ui->lvwList->Count(),
              [this](int index) { return QuestionIn(m_ui->lvwList->Item(index)); });
    writer->Close();
}

bool frmEditQuiz::MayLeave()
{
    return MayLeaveEditing(
        { [this] { return EditDirty && m_editBoxes.IsAnyFilled(); }, [this] { return SaveQuestionChanges(); },
          [this] { return AddDirty && m_addBoxes.IsAnyFilled(); }, [this] { return AddQuestion(); } });
}

void frmEditQuiz::cmdback_Click()
{
    Trapped([this] {
        if (!MayLeave())
            return;
        frmEdit::Shared().ListType = kQuizList;
        ShowScreen(frmEdit::Shared(), *this);
    });
}

void frmEditQuiz::cmdMenu_Click()
{
    Trapped([this] {
        if (MayLeave())
            ShowScreen(frmMenu1::Shared(), *this);
    });
}

} // namespace tumblewick
