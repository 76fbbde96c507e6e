#pragma once

#include "authoring/PronunciationTest.h"
#include "authoring/WordBoxes.h"
#include "platform/forms/ResizedScreen.h"

#include <memory>

namespace Ui {
class frmSpelling1;
}

namespace tumblewick {

// Makes a new spelling list. The words stand on the screen alone until they are saved.
class frmSpelling1 : public platform::ResizedScreen<frmSpelling1> {
public:
    frmSpelling1();
    ~frmSpelling1() override;

private:
    void OnLoad(QWidget &window) override;
    void OnUnload() override;
    void OnResize() override;

    void cmdTestit_Click();
    void cmdTest_Click();
    void Command1_Click();
    void Command2_Click();
    void cmdback_Click();
    void Command4_Click();

    // Whether the list was written. Raises what the file raises.
    bool SaveList();
    bool MayLeave();

    bool ListDirty = false; // a word was added since the last save; deleting one changes nothing

    std::unique_ptr<Ui::frmSpelling1> m_ui; // valid while loaded
    WordBoxes m_boxes;
    platform::AgentControlReference m_agent1;
    PronunciationTester m_tester;
};

} // namespace tumblewick
