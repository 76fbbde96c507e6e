#pragma once

#include "platform/agent/BalloonWindow.h"
#include "platform/agent/CharacterData.h"
#include "platform/agent/ServiceOptions.h"
#include "platform/system/Events.h"
#include "platform/voice/Voice.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

// One line of a figure on its way from text to sound: it is made while the body still comes back to rest,
// then heard, while mouth and balloon follow what has been heard. Also keeps the balloon, which outlives the
// line. A line that the user does not want to hear is only shown, at about the pace of reading.
class FigureSpeech {
public:
    FigureSpeech(const CharacterData &character, SpeechEngine &engine, AudioOut &audio, Events &events,
                 OptionsKeeper &options);
    ~FigureSpeech();

    // Why nothing can be said now, else 0.
    qint32 Obstacle() const;
    // Has the line made. `ended` is called once when it has been heard or has failed, but not after Stop; not
    // from within Begin or Start.
    void Begin(const SpeechText &text, bool balloon, std::function<void(qint32 number)> ended);
    // The body is ready: the line may be heard as soon as it is made.
    void Start();
    // Cuts the line off; the balloon goes.
    void Stop();

    // Whether a line is on its way, heard or not.
    bool IsBusy() const { return m_ended != nullptr; }
    // Brings balloon and mouth up to what has been heard.
    void Follow();
    // The mouth now, while somebody is heard.
    std::optional<Mouth> MouthNow() const { return m_mouth; }
    // Whether a stressed word has begun since the last question.
    bool TakeStress();

    void MoveBalloon(const BalloonOwner &owner);
    // At once, and for the rest of this line.
    void HideBalloon();
    bool BalloonVisible() const { return m_balloon && m_balloon->isVisible(); }

private:
    void Made(std::shared_ptr<const Utterance> utterance);
    void Play();
    void SetMouth(Mouth mouth, std::chrono::microseconds heard);
    void ShowUnits(std::size_t count);
    void ShowBalloon();
    void GoOnSilently();
    void OptionsChanged();
    void End(qint32 number);
    void Clear();

    const CharacterData &m_character;
    SpeechEngine &m_engine;
    AudioOut &m_audio;
    Events &m_events;
    OptionsKeeper &m_options;
    std::shared_ptr<void> m_observation;

    SpeechText m_text;
    bool m_wantsBalloon = false;
    std::function<void(qint32)> m_ended; // null when no line is on its way
    std::unique_ptr<SpeechEngine::Order> m_order;
    std::unique_ptr<PendingCall> m_pending;
    bool m_isMade = false;
    bool m_mayStart = false;
    bool m_isHeard = false;
    bool m_isSilent = false; // shown, but not heard
    std::shared_ptr<const Utterance> m_utterance;
    std::size_t m_unitsShown = 0;
    std::size_t m_unitsBegun = 0;
    bool m_stress = false;
    std::optional<Mouth> m_mouth;

    BalloonOwner m_owner;
    std::unique_ptr<BalloonWindow> m_balloon;
    std::unique_ptr<PendingCall> m_hide;
};

} // namespace platform
