#pragma once

#include "authoring/PronunciationTest.h"
#include "authoring/WordBoxes.h"
#include "lists/KeptFile.h"
#include "lists/SpellingList.h"
#include "platform/forms/ResizedScreen.h"

#include <memory>

class QLineEdit;

namespace Ui {
class frmEditSpell;
}

namespace tumblewick {

// Edits one spelling list. Whatever is done goes to the file at once.
class frmEditSpell : public platform::ResizedScreen<frmEditSpell> {
public:
    frmEditSpell();
    ~frmEditSpell() override;

    QString EditFileName; // the name of the list; set before the screen is shown

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void List_Click();
    void List_DblClick();
    void cmdDelete_Click();
    void cmdback_Click();
    void cmdMenu_Click();

    // Both tell whether it was done, and report what the file raises.
    bool SaveWordChanges();
    bool AddWord();
    bool MayLeave();

    void RewriteFile(SpellingWriting how);
    void Test(const PronunciationTest &test, const QLineEdit &box);

    KeptFileReference m_file;
    bool ItemChosen = false; // an entry was double-clicked into the edit boxes
    bool EditDirty = false;
    bool AddDirty = false;

    std::unique_ptr<Ui::frmEditSpell> m_ui; // valid while loaded
    WordBoxes m_editBoxes;
    WordBoxes m_addBoxes;
    platform::AgentControlReference m_agent1;
    PronunciationTester m_tester;
};

} // namespace tumblewick
