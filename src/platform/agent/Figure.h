#pragma once

#include "platform/voice/SpeechText.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

// One entry of a figure's menu.
struct MenuEntry {
    QString caption;
    bool enabled = true;
    std::function<void()> chosen; // may be called when the menu has gone
};
using MenuGroup = std::vector<MenuEntry>;

// The body and voice of one character, as the queues drive it: one activity at a time, begun by Perform,
// Slide or Speak. `done` is called once from the event loop when the activity has ended, with 0 or the number
// it failed with; never inside the call, and not at all after Halt or the destruction of the figure.
class Figure {
public:
    using Done = std::function<void(qint32 number)>;
    virtual ~Figure() = default;

    virtual bool HasMotion(const QString &name) const = 0; // in any letter case

    // The frame in screen units; during a Slide or a drag the place where it is now.
    virtual QRect Frame() const = 0;
    virtual void SetFrame(const QRect &frame) = 0; // at once

    // Makes the frame visible in the rest pose, topmost.
    virtual void Appear() = 0;
    // Takes the frame from the screen with its balloon. With `byUser` it was the user's own wish: there is a
    // way then to bring the figure back.
    virtual void Disappear(bool byUser) = 0;

    // Comes back from the last motion, then plays `name`, which the figure has, and holds its last pose. A
    // motion that loops for ever never ends, any other has ended when its sound is over too. "Show" begins
    // unseen, whatever pose the figure was in; a Move motion ends in the flying pose. With "Hide" the balloon
    // goes at once, and until it is halted or the figure appears again clicks go through to what lies below.
    virtual void Perform(const QString &name, Done done) = 0;
    // Moves the frame to `topLeft` in `duration`, keeping the flying pose alive.
    virtual void Slide(const QPoint &topLeft, std::chrono::milliseconds duration, Done done) = 0;
    // Says `text` and, with `balloon`, shows it word by word. Fails with kSpeechEngineUnusable or
    // kAudioDeviceUnusable when it cannot be heard; then there is no balloon either. It waits for the sound
    // of the figure's own motions to be over.
    virtual void Speak(const SpeechText &text, bool balloon, Done done) = 0;
    // Cuts off the present activity at once. The frame stays where it is, sound ends, a balloon goes.
    virtual void Halt() = 0;

    // Told when the queue has run empty, so that the figure may return to rest and idle by itself.
    virtual void Rest() = 0;

    virtual void HideBalloon() = 0;
    virtual bool BalloonVisible() const = 0;

    // Called by the event loop. `dragged` tells that a drag by the user begins (true) or ends (false).
    std::function<void(bool begins)> dragged;
    // Asked once whenever the user opens the figure's menu: what stands in it below Hide, in groups.
    std::function<std::vector<MenuGroup>()> menuAsked;
    // The user asked in the figure's own menu to hide it or to bring it back.
    std::function<void(bool hide)> hideAsked;
};

// Makes figures from character files.
class FigureMaker {
public:
    virtual ~FigureMaker() = default;
    // Opens `file` from the service's folder. The figure is not visible yet, and stands at the upper left
    // corner of the screen in its designed size. Raises kAgentFileMissing, kNotACharacterFile,
    // kCharacterFileTooOld, kCharacterFileTooNew, kAgentBadData or kBadSoundFile.
    virtual std::unique_ptr<Figure> Make(const QString &id, const QString &file) = 0;
    // Whether the motions of all figures, old and new ones, are heard; at first they are. What is heard when
    // this turns false fades out.
    virtual void SetSoundEffects(bool on) { Q_UNUSED(on); }
};

} // namespace platform
