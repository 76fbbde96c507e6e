#pragma once

#include "platform/agent/Agent.h"
#include "platform/forms/Twips.h"

#include <functional>

namespace platform {
class Screen;
}

namespace tumblewick {

// Where Merlin is sent, in screen units.
struct TesterPlace {
    platform::Integer16 x, y;
};

// Beside the boxes of the screen that makes a list. `displayWidth` is DisplayWidth of the shared state.
TesterPlace PlaceBesideBoxes(const platform::TwipsRect &txtNew, const platform::TwipsRect &frame1,
                             int displayWidth);

enum class Standing { Raised, Lowered };
// Before the list of the screen that edits one. His height is in pixels among twips, and lowered he stands
// half below the list; both are wanted.
TesterPlace PlaceBeforeList(const platform::TwipsRect &list, int height, Standing standing);

// What else Merlin does when he is called on stage by a control that is there but not connected.
enum class Arrival { Shown, Placed, PlacedWithLongTip, PlacedLowWithShortTip };

// One test button.
struct PronunciationTest {
    QString nothingEntered; // the message for an empty box
    QString tagEnd;         // what closes the speech text
    Arrival arrival;
};

// Has Merlin say what was typed, so that an author hears whether it is said rightly.
class PronunciationTester {
public:
    // `place` tells where Merlin stands on the screen; it is called when he has been loaded. `screen` has to
    // outlive this.
    PronunciationTester(platform::Screen &screen, std::function<TesterPlace(Standing)> place);

    // The screen's own control.
    void SetControl(const platform::AgentControlReference &agent1) { m_agent1 = agent1; }

    // Says `spoken` when `checked` is not empty, and waits until it has been said; other handlers run
    // meanwhile. Calls Merlin on stage when he is not there. Errors are told by ErrorReport.
    void TestSpeech(const PronunciationTest &test, const QString &checked, const QString &spoken);

private:
    void Do(const std::function<void()> &statement);
    void Reconnect();
    void Arrive(Arrival arrival);
    void PlaceTester(Standing standing);
    void WaitUntilSaid();

    platform::Screen &m_screen;
    std::function<TesterPlace(Standing)> m_place;
    platform::AgentControlReference m_agent1;
};

// The tagged text that says `text` and shows it.
QString TestSpeechText(const QString &text, const QString &tagEnd);

} // namespace tumblewick
