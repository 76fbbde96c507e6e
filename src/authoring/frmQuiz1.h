#pragma once

#include "authoring/QuestionBoxes.h"
#include "authoring/QuizColumns.h"
#include "platform/forms/ResizedScreen.h"

#include <memory>
#include <optional>

namespace Ui {
class frmQuiz1;
}

namespace tumblewick {

// Makes a new quiz. No file is touched until it is saved.
class frmQuiz1 : public platform::ResizedScreen<frmQuiz1> {
public:
    frmQuiz1();
    ~frmQuiz1() override;

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;
    void OnResize() override;

    void cmdAdd_Click();
    void cmdDel_Click();
    void cmdback_Click();
    void Command2_Click();

    // Whether the quiz was written. Raises what the file raises.
    bool SaveQuiz();
    bool MayLeave();

    // A question was added since the last save; taking one away does not count: wanted.
    bool ListDirty = false;

    std::unique_ptr<Ui::frmQuiz1> m_ui; // valid while loaded
    std::optional<QuizColumns> m_columns;
    QuestionBoxes m_boxes;
};

} // namespace tumblewick
