#pragma once

#include "platform/Integer16.h"
#include "platform/agent/Agent.h"
#include "platform/forms/Holds.h"
#include "platform/forms/Screen.h"

#include <memory>

namespace Ui {
class frmMenu1;
}

namespace tumblewick {

// The main menu: where the characters are loaded and every path begins and ends. Its instance lives for the
// whole run, and so do its members.
class frmMenu1 : public platform::SharedScreen<frmMenu1> {
public:
    frmMenu1();
    ~frmMenu1() override;

    bool IntroCancelled = false;     // no introduction may start, and one that runs has to stop
    platform::Integer16 IntroStartY; // the line on which the characters stand in an introduction

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;
    void OnResize() override;
    bool FillsDisplay() const override { return true; }

    void cmdPlay_Click();
    void Command3_Click();
    void Command1_Click();

    void BeginSetUp(const QString &gameMode);

    std::unique_ptr<Ui::frmMenu1> m_ui; // valid while loaded
    std::unique_ptr<platform::Resizer> m_resizer;
    platform::AgentControlReference m_agent1;
};

} // namespace tumblewick
