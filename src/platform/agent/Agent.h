#pragma once

#include "platform/Integer16.h"
#include "platform/Reference.h"

#include <QString>

#include <functional>

// The speaking-character service as the game sees it.
//
// Each character has one window, one balloon and one first-in-first-out queue of requests; the queues of
// different characters run side by side. Play, Speak, MoveTo, GestureAt, Show and Hide return at once with a
// request; the head of an idle queue has begun (Status 4) when the call returns. What depends on the world,
// hidden or not, the direction of a move, is judged when a request becomes the head, never at the call.
//
// One thread; nothing here runs events inside. Events are delivered by the event loop, never inside a call.
namespace platform {

// The numbers that Request::Status gives.
enum RequestStatus : qint16 {
    kRequestDone = 0,
    kRequestFailed = 1,
    kRequestQueued = 2,
    kRequestInterrupted = 3,
    kRequestRunning = 4,
};

// One queued operation. Lives as long as somebody refers to it and keeps its last status after it has left
// the queue: 2, then 4, then once 0, 1 or 3.
class Request {
public:
    virtual ~Request() = default;
    virtual Integer16 Status() const = 0;
    virtual qint32 Number() const = 0;       // what it failed or was interrupted by, else 0
    virtual QString Description() const = 0; // text of Number, empty for 0
};
using RequestReference = Reference<Request>;

// The word balloon of a character.
class Balloon {
public:
    virtual ~Balloon() = default;
    // Not queued. False hides a balloon that is shown and keeps it off for the next Speak only; a second
    // False behind a Speak that is already without balloon and unfinished means nothing more. True takes
    // the mark back.
    virtual void SetVisible(bool visible) = 0;
    virtual bool Visible() const = 0; // whether a balloon is seen now
};

// A character as one client holds it. Every member raises kAgentRefuses when the client's connection has gone
// while the service still has others, kAgentGone when it has none.
class Character {
public:
    virtual ~Character() = default;

    virtual RequestReference Show(bool fast = false) = 0;
    virtual RequestReference Hide(bool fast = false) = 0;
    // `animation` in any letter case. Raises kNoSuchAnimation at the call when the character lacks it.
    virtual RequestReference Play(const QString &animation) = 0;
    // `text` may hold speech tags; the repeat tag says the last line once more, nothing before there was one.
    virtual RequestReference Speak(const QString &text) = 0;
    // Screen position of the frame's upper left corner, on the screen or off. `speed` is the whole flight in
    // milliseconds; 0 jumps without animation.
    virtual RequestReference MoveTo(Integer16 x, Integer16 y, int speed = 1000) = 0;
    virtual RequestReference GestureAt(Integer16 x, Integer16 y) = 0;

    // Halts what runs (status 3) and takes out what waits, except while the character is showing or hiding:
    // then nothing happens.
    virtual void Stop() = 0;
    // Takes out that one request, running or waiting. Raises kStopAcrossCharacters for another character's,
    // kRequestNotInQueue for one that has left, 91 for none.
    virtual void Stop(const RequestReference &request) = 0;
    // Without types: everything, a running Show or Hide too. With a comma-separated list of Get,
    // NonQueuedGet, Move, Play and Speak: what waits of these kinds. Show and Hide are of no kind.
    virtual void StopAll() = 0;
    virtual void StopAll(const QString &types) = 0;

    // The frame in screen units; the present place, not a queued target.
    virtual Integer16 Left() const = 0;
    virtual Integer16 Top() const = 0;
    virtual Integer16 Width() const = 0;
    virtual Integer16 Height() const = 0;
    // At once and for all clients. Raises 5 for a size that is not positive.
    virtual void SetWidth(Integer16 width) = 0;
    virtual void SetHeight(Integer16 height) = 0;

    virtual bool Visible() const = 0;
    virtual Balloon &WordBalloon() = 0;
};
using CharacterReference = Reference<Character>;

// The service's own window, in which the user chooses how characters look, sound and listen. One for all
// clients; what is chosen in it holds for all of them and from run to run. Not queued and not modal.
class PropertySheet {
public:
    virtual ~PropertySheet() = default;
    // True opens the sheet where the user last had it, or brings it to the front; false closes it as Cancel
    // does.
    virtual void SetVisible(bool visible) = 0;
    virtual bool Visible() const = 0;
    // "Speech", "Output" or "Copyright": the page that is in front, or will be when the sheet opens; at first
    // the one that the user last had. Setting takes any letter case and raises 5 for any other name.
    virtual QString Page() const = 0;
    virtual void SetPage(const QString &page) = 0;
    // In screen units; 0 before the sheet was first shown in this run.
    virtual Integer16 Left() const = 0;
    virtual Integer16 Top() const = 0;
    virtual Integer16 Width() const = 0;
    virtual Integer16 Height() const = 0;
};

// What a voice command or a menu brings.
struct UserInput {
    QString name; // the command's name; empty when nothing matched
};

// What a client offers in the menus of its characters.
struct AgentCommand {
    QString name;    // comes back in UserInput
    QString caption; // `&` marks the access key; without caption the command is in no menu
    bool enabled = true;
    bool visible = true;
};

// One client of the service: the Agent1 control of a screen. It connects when it is made and is
// disconnected for good by Disconnect; references to it may live on.
class AgentControl {
public:
    virtual ~AgentControl() = default;

    virtual bool Connected() const = 0;

    // Loads a character hidden, at its designed size unless another client holds it. `file` is looked up in
    // the service's own folder. Raises kAlreadyLoaded for the same id twice on one control,
    // kAgentFileMissing, kNotACharacterFile, kCharacterFileTooOld, kCharacterFileTooNew, kAgentBadData or
    // kBadSoundFile when the file cannot serve; a load that fails leaves its id taken. When disconnected it
    // raises the numbers that Character names.
    virtual void Load(const QString &id, const QString &file) = 0;
    // The loaded character. Raises kAgentRefuses for an id that is not loaded here.
    virtual CharacterReference Character(const QString &id) = 0;

    // The commands that stand in the menus of this client's characters while it gets the user's input, in the
    // order in which they were added. AddCommand raises kCommandNameUsed, RemoveCommand kCommandUnknown, both
    // kAgentGone or kAgentRefuses when disconnected.
    virtual void AddCommand(const AgentCommand &offer) = 0;
    virtual void RemoveCommand(const QString &name) = 0;

    // The property sheet. Its members raise kAgentGone or kAgentRefuses when disconnected, as a character's.
    virtual PropertySheet &Sheet() = 0;

    // Ends the connection, as the unload of the control's screen does. Its requests end with status 3,
    // figures that no other client holds vanish at once; one that has a Hide waiting or running plays it out
    // unattended.
    virtual void Disconnect() = 0;

    // Called by the event loop for each request of this client that has begun, and again when it has ended.
    std::function<void(const RequestReference &)> requestStart;
    std::function<void(const RequestReference &)> requestComplete;
    // Called by the event loop for a command, while this client is the one that gets the user's input.
    std::function<void(const UserInput &)> command;
    // Called by the event loop when the user has changed something on the property sheet.
    std::function<void()> agentPropertyChange;
};
using AgentControlReference = Reference<AgentControl>;

// The service. One per process.
class AgentServer {
public:
    virtual ~AgentServer() = default;
    // A new client, connected.
    virtual AgentControlReference CreateControl() = 0;
};

} // namespace platform
