#pragma once

#include "platform/agent/AgentEngine.h"
#include "platform/agent/ServiceOptions.h"
#include "platform/voice/LetterRecogniser.h"
#include "platform/voice/Microphone.h"

#include <QRect>
#include <QStringList>

#include <functional>
#include <memory>

namespace platform {

// What is shown under a character while it is spoken to.
class SpellingTip {
public:
    virtual ~SpellingTip() = default;
    // Shows the text, and a button for each choice, by the figure that stands at `frame`. Takes no focus.
    virtual void Show(const QRect &frame, const QString &text, const QStringList &choices) = 0;
    virtual void Hide() = 0;
    // Called by the event loop with the index of the choice that the user took, -1 for none of them.
    std::function<void(int)> chosen;
};

// Spelling by voice: while the user holds a key down, what is said is listened to, and what it may have been
// is offered under the character that is spoken to; the letter that is taken comes as the command of that
// name. Off unless the user has switched it on. Nothing is listened to while a character speaks, without the
// key, or when there is nobody to hear it; then the key does nothing. What cannot be done, for want of a
// microphone or a recogniser, is told under the character, and the game goes on.
class VoiceSpelling {
public:
    struct Parts {
        Events &events;
        OptionsKeeper &options;
        AgentEngine &agent;
        Microphone &microphone; // for this alone
        LetterRecogniser &recogniser;
        SpellingTip &tip;
    };
    // The parts have to outlive it. It takes the tip's and the engine's calls.
    explicit VoiceSpelling(const Parts &parts);
    ~VoiceSpelling();
    VoiceSpelling(const VoiceSpelling &) = delete;
    VoiceSpelling &operator=(const VoiceSpelling &) = delete;

    // The key goes down and up; each is told once. KeyLost: nobody can tell any more.
    void KeyDown();
    void KeyUp();
    void KeyLost();

    // A shorter press is a tap, which takes what is offered first.
    static constexpr std::chrono::milliseconds kTap{ 300 };
    // How long one may speak, and how long an offer and a notice stand.
    static constexpr std::chrono::milliseconds kLongestSpeech{ 6000 };
    static constexpr std::chrono::milliseconds kOffer{ 12000 };
    static constexpr std::chrono::milliseconds kNotice{ 3000 };

private:
    enum class State {
        Idle,      // nothing, or a notice that goes by itself
        Held,      // the key is down and somebody speaks, or the time is up
        Listening, // the key is down
        Thinking,
        Asking,
    };

    bool IsOn() const;
    void ApplyOptions();
    void VoiceChanged();
    void Answer();
    void Listen();
    void Understand();
    void Offer(const QStringList &names);
    void Take(int index);
    void Notice(const QString &text);
    void Say(const QString &text, const QStringList &choices = {});
    void Drop(State next);

    Parts m_parts;
    std::shared_ptr<void> m_observation;
    State m_state = State::Idle;
    bool m_keyDown = false;
    bool m_isTap = false; // the key went down just now
    QByteArray m_heard;
    QStringList m_offers;
    std::unique_ptr<LetterRecogniser::Order> m_order;
    std::unique_ptr<PendingCall> m_tapEnds;
    std::unique_ptr<PendingCall> m_timeIsUp;
};

} // namespace platform
