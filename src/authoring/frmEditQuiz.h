#pragma once

#include "authoring/QuestionBoxes.h"
#include "authoring/QuizColumns.h"
#include "lists/KeptFile.h"
#include "platform/forms/ResizedScreen.h"

#include <memory>
#include <optional>

namespace Ui {
class frmEditQuiz;
}

namespace tumblewick {

// Edits one quiz. Whatever is done goes to the file at once.
class frmEditQuiz : public platform::ResizedScreen<frmEditQuiz> {
public:
    frmEditQuiz();
    ~frmEditQuiz() override;

    QString EditFileName; // the name of the quiz; set before the screen is shown

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;
    void OnResize() override;

    void lvwList_Click();
    void lvwList_DblClick();
    void cmdDelete_Click();
    void cmdback_Click();
    void cmdMenu_Click();

    // Both tell whether it was done, and report what the file raises.
    bool SaveQuestionChanges();
    bool AddQuestion();
    bool MayLeave();

    void LoadQuestions();
    void RewriteFile();

    KeptFileReference m_file;
    // These three outlive the visit; only a double click sets the first two right: wanted.
    bool ItemChosen = false; // a question was double-clicked into the edit boxes
    bool EditDirty = false;
    bool AddDirty = false;

    std::unique_ptr<Ui::frmEditQuiz> m_ui; // valid while loaded
    std::optional<QuizColumns> m_columns;
    QuestionBoxes m_editBoxes;
    QuestionBoxes m_addBoxes;
};

} // namespace tumblewick
