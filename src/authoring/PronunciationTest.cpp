#include "authoring/PronunciationTest.h"

#include "platform/Retry.h"
#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/Screen.h"
#include "platform/system/Events.h"
#include "shell/ErrorBoxes.h"
#include "shell/SharedState.h"
#include "stage/Characters.h"
#include "stage/Waits.h"

namespace tumblewick {

using platform::Integer16;
using platform::The;

namespace {

const QString kLongTip = QStringLiteral(
    "If I'm in your way just click on me, hold the mouse button down and drag me out of the way.");
const QString kShortTip = QStringLiteral("If I'm in your way just click on me and drag me.");

Integer16 Pixels(int twips)
{
    return Integer16::FromReal(static_cast<double>(twips) / platform::kTwipsPerPixel);
}

} // namespace

TesterPlace PlaceBesideBoxes(const platform::TwipsRect &txtNew, const platform::TwipsRect &frame1,
                             int displayWidth)
{
    const int x = txtNew.left + txtNew.width - frame1.left;
    if (displayWidth == 800)
        return { Pixels(x - 800), 0 };
    return { Pixels(x - 250), Pixels(frame1.top) };
}

TesterPlace PlaceBeforeList(const platform::TwipsRect &list, int height, Standing standing)
{
    const int raise = standing == Standing::Raised ? 2600 : 0;
    return { Pixels(list.left + 500), Pixels(list.top + list.height - height - raise) };
}

QString TestSpeechText(const QString &text, const QString &tagEnd)
{
    return QStringLiteral("\\Map=\"") + text + QStringLiteral("\"=\"") + text + QLatin1Char('"') + tagEnd;
}

PronunciationTester::PronunciationTester(platform::Screen &screen, std::function<TesterPlace(Standing)> place)
    : m_screen(screen), m_place(std::move(place))
{
}

void PronunciationTester::TestSpeech(const PronunciationTest &test, const QString &checked,
                                     const QString &spoken)
{
    try {
        if (checked.isEmpty()) {
            The().boxes.MessageBox(test.nothingEntered, platform::BoxButtons::Ok, platform::kNoTitle);
            return;
        }
        bool isConnected = true;
        Do([&] { isConnected = State().AgentControl->Connected(); });
        if (!isConnected)
            Arrive(test.arrival);
        Do([&] {
            State().CurrentRequest = State()
                                         .AgentControl->Character(QStringLiteral("Merlin"))
                                         ->Speak(TestSpeechText(spoken, test.tagEnd));
        });
        Do([this] { WaitUntilSaid(); });
    } catch (const platform::Error &error) {
        ErrorReport(error);
    }
}

// Runs one statement. A control that was let go of shows itself as 91: then Merlin is called on stage from
// this screen's own control and the statement is run again.
void PronunciationTester::Do(const std::function<void()> &statement)
{
    platform::Retry(platform::kObjectNotSet, statement, [this] { Reconnect(); });
}

void PronunciationTester::Reconnect()
{
    ConnectCharacters(m_agent1);
    State().Characters[kMerlin]->Show();
    PlaceTester(Standing::Raised);
    State().Characters[kMerlin]->Speak(kLongTip);
}

void PronunciationTester::Arrive(Arrival arrival)
{
    Do([this] { State().AgentControl = m_agent1; });
    Do([] { LoadCharacters(); });
    Do([] { State().Characters[kMerlin]->Show(); });
    if (arrival == Arrival::Shown)
        return;
    const bool isLow = arrival == Arrival::PlacedLowWithShortTip;
    Do([&] { PlaceTester(isLow ? Standing::Lowered : Standing::Raised); });
    if (arrival != Arrival::Placed)
        Do([&] { State().Characters[kMerlin]->Speak(isLow ? kShortTip : kLongTip); });
}

void PronunciationTester::PlaceTester(Standing standing)
{
    const TesterPlace place = m_place(standing);
    State().Characters[kMerlin]->MoveTo(place.x, place.y);
}

// A second test meanwhile puts its own request into the variable, and this wait goes on with that one. It
// ends with its screen: whoever leaves cuts Merlin off, and nobody would ever tell of the end of what he
// said.
void PronunciationTester::WaitUntilSaid()
{
    while (m_screen.IsLoaded() && State().CurrentRequest->Status() != platform::kRequestDone) {
        if (State().CurrentRequest->Status() == platform::kRequestFailed) {
            LeaveWithoutSound(m_screen);
            return;
        }
        The().events.Pump();
    }
}

} // namespace tumblewick
