#include "stage/Waits.h"

#include "platform/Services.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/Screen.h"
#include "platform/system/Events.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"

#include <algorithm>

namespace tumblewick {

using platform::The;

namespace {

// Stops the three characters when the menu is left under an introduction. Merlin's last line is asked for
// before the rest is cleared: it is heard only when the service begins it at once. Wanted.
void StopForSetup()
{
    const auto &characters = State().Characters;
    for (const auto &character : characters)
        character->Stop();
    characters[kMerlin]->Speak(
        QStringLiteral("We'll be back with you after you set up for the next game. I can hardly wait"));
    characters[kMerlin]->Play(QStringLiteral("Pleased"));
    for (const auto &character : characters)
        character->StopAll(QStringLiteral("Move,Speak,Play,Get"));
}

} // namespace

void WaitRequest(const platform::RequestReference &variable)
{
    while (variable->Status() != platform::kRequestDone)
        The().events.Pump();
}

void WaitRequests(std::initializer_list<const platform::RequestReference *> variables)
{
    const auto hasEnded = [](const platform::RequestReference *variable) {
        return (*variable)->Status() == platform::kRequestDone;
    };
    while (!std::all_of(variables.begin(), variables.end(), hasEnded))
        The().events.Pump();
}

bool WaitRequestSound(const platform::RequestReference &variable, platform::Screen &current)
{
    while (variable->Status() != platform::kRequestDone) {
        if (variable->Status() == platform::kRequestFailed) {
            LeaveWithoutSound(current);
            return false;
        }
        The().events.Pump();
    }
    return true;
}

void LeaveWithoutSound(platform::Screen &current)
{
    The().boxes.MessageBox(QStringLiteral(
        "Tumble Wick has detected a problem which is probably related to your soundcard. Please "
        "check that your soundcard is working correctly and the soundcard drivers are installed "
        "properly"));
    ShowScreen(frmMenu1::Shared(), current);
}

void WaitRequestsSkippable(std::initializer_list<const platform::RequestReference *> variables,
                           const bool &cancelled)
{
    const auto has = [](platform::RequestStatus status) {
        return [status](const auto *variable) { return (*variable)->Status() == status; };
    };
    while (!std::all_of(variables.begin(), variables.end(), has(platform::kRequestDone))) {
        if (cancelled) {
            if (std::any_of(variables.begin(), variables.end(), has(platform::kRequestQueued)))
                StopForSetup();
            return;
        }
        The().events.Pump();
    }
}

} // namespace tumblewick
