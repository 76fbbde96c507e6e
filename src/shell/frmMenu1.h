#pragma once

#include "platform/Integer16.h"
#include "platform/agent/Agent.h"
#include "platform/forms/ResizedScreen.h"
#include "platform/forms/Timer.h"

#include <QString>

#include <memory>
#include <optional>

namespace Ui {
class frmMenu1;
}

namespace tumblewick {

// The main menu: where the characters are loaded and every path begins and ends. Its instance lives for the
// whole run, and so do its members.
class frmMenu1 : public platform::ResizedScreen<frmMenu1> {
public:
    frmMenu1();
    ~frmMenu1() override;

    bool IntroCancelled = false;     // no introduction may start, and one that runs waits no more
    platform::Integer16 IntroStartY; // the line on which the characters stand in an introduction
    QString PendingIntro;            // "IntroOne", "IntroTwo" or empty: what Timer1 is to start

private:
    void OnLoad(QWidget &window) override;
    void OnActivate() override;
    void OnUnload() override;

    void DrawIntroduction();
    void Timer1_Timer();
    void cmdPlay_Click();
    void Command3_Click();
    void Command1_Click();
    void cmdCreate_Click();
    void cmdSettings_Click();

    void BeginSetUp(const QString &gameMode);
    // Whether the way is free; if not, the user has been told why.
    [[nodiscard]] bool SendCharactersOff();
    void PassLock();

    std::unique_ptr<Ui::frmMenu1> m_ui; // valid while loaded
    std::optional<platform::Timer> m_timer1;
    platform::AgentControlReference m_agent1;
};

} // namespace tumblewick
