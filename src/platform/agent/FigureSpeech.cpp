#include "platform/agent/FigureSpeech.h"

#include "platform/Error.h"

#include <QLoggingCategory>

#include <algorithm>

namespace platform {

Q_LOGGING_CATEGORY(mouthLog, "tumblewick.mouth", QtWarningMsg)

namespace {

// How long a balloon is still seen when all has been said.
constexpr std::chrono::milliseconds kBalloonStays{ 1500 };

} // namespace

FigureSpeech::FigureSpeech(const CharacterData &character, SpeechEngine &engine, AudioOut &audio,
                           Events &events)
    : m_character(character), m_engine(engine), m_audio(audio), m_events(events)
{
}

FigureSpeech::~FigureSpeech()
{
    Stop();
}

qint32 FigureSpeech::Obstacle() const
{
    if (!m_engine.Speaks(m_character.voice))
        return kSpeechEngineUnusable;
    return m_audio.Usable() ? 0 : kAudioDeviceUnusable;
}

void FigureSpeech::Begin(const SpeechText &text, bool balloon, std::function<void(qint32)> ended)
{
    Clear();
    // The balloon of the line before stays until this one is heard.
    m_hide.reset();
    m_text = text;
    m_wantsBalloon = balloon;
    m_ended = std::move(ended);
    m_order =
        m_engine.Synthesise(text, m_character.voice, [this](std::shared_ptr<const Utterance> utterance) {
            Made(std::move(utterance));
        });
    // An engine that takes no orders fails like one that makes nothing.
    if (!m_order)
        m_pending = m_events.After(std::chrono::milliseconds(0), [this] { End(kSpeechEngineUnusable); });
}

void FigureSpeech::Made(std::shared_ptr<const Utterance> utterance)
{
    if (!m_ended || m_isMade)
        return;
    m_isMade = true;
    m_utterance = std::move(utterance);
    if (m_mayStart)
        Play();
}

void FigureSpeech::Start()
{
    if (!m_ended || m_mayStart)
        return;
    m_mayStart = true;
    if (m_isMade)
        Play();
}

void FigureSpeech::Play()
{
    const auto endSoon = [this](qint32 number) {
        m_pending = m_events.After(std::chrono::milliseconds(0), [this, number] { End(number); });
    };
    if (!m_utterance)
        return endSoon(kSpeechEngineUnusable);
    if (m_balloon && !m_wantsBalloon)
        m_balloon->Empty();
    if (m_wantsBalloon) {
        if (!m_balloon)
            m_balloon = std::make_unique<BalloonWindow>();
        BalloonText whole = BalloonWindow::EmptyText();
        for (const SpeechUnit &unit : m_text.units)
            whole.Append(unit.shown, unit.joined);
        m_balloon->Begin(whole);
        m_balloon->Follow(m_owner);
    }
    if (m_utterance->samples.isEmpty()) {
        m_isHeard = true;
        return endSoon(0);
    }
    if (!m_audio.Play(m_utterance, [this](bool whole) { End(whole ? 0 : kAudioDeviceUnusable); }))
        return endSoon(kAudioDeviceUnusable);
    m_isHeard = true;
    Follow();
}

void FigureSpeech::Follow()
{
    if (!m_isHeard || !m_utterance)
        return;
    const std::chrono::microseconds heard = m_audio.Heard();
    const auto &mouths = m_utterance->mouths;
    const auto next =
        std::upper_bound(mouths.begin(), mouths.end(), heard,
                         [](std::chrono::microseconds at, const MouthCue &cue) { return at < cue.at; });
    SetMouth(next == mouths.begin() ? Mouth::Rest : std::prev(next)->mouth, heard);

    const auto &units = m_utterance->units;
    std::size_t begun = m_unitsBegun;
    while (begun < units.size() && units[begun].begins <= heard)
        m_stress = units[begun++].stressed || m_stress;
    m_unitsBegun = begun;
    ShowUnits(begun);
}

void FigureSpeech::SetMouth(Mouth mouth, std::chrono::microseconds heard)
{
    if (mouth == m_mouth)
        return;
    m_mouth = mouth;
    qCDebug(mouthLog).noquote() << QStringLiteral("mouth: %1 %2 %3")
                                       .arg(m_character.name, MouthName(mouth))
                                       .arg(heard.count() / 1000);
}

void FigureSpeech::ShowUnits(std::size_t count)
{
    const std::size_t most = std::min(count, m_text.units.size());
    for (; m_unitsShown < most; ++m_unitsShown) {
        const SpeechUnit &unit = m_text.units[m_unitsShown];
        if (m_wantsBalloon && m_balloon)
            m_balloon->Append(unit.shown, unit.joined);
    }
}

bool FigureSpeech::TakeStress()
{
    return std::exchange(m_stress, false);
}

void FigureSpeech::End(qint32 number)
{
    if (!m_ended)
        return;
    if (number == 0)
        ShowUnits(m_text.units.size());
    if (m_mouth && m_utterance)
        SetMouth(Mouth::Rest, m_utterance->Length());
    const auto ended = std::exchange(m_ended, nullptr);
    Clear();
    if (number != 0) {
        HideBalloon();
    } else if (BalloonVisible()) {
        m_hide = m_events.After(kBalloonStays, [this] {
            if (m_balloon)
                m_balloon->Empty();
        });
    }
    ended(number);
}

void FigureSpeech::Stop()
{
    if (!m_ended)
        return;
    if (m_isHeard)
        m_audio.Stop();
    Clear();
    HideBalloon();
}

void FigureSpeech::Clear()
{
    m_ended = nullptr;
    m_order.reset();
    m_pending.reset();
    m_isMade = false;
    m_mayStart = false;
    m_isHeard = false;
    m_utterance.reset();
    m_unitsShown = 0;
    m_unitsBegun = 0;
    m_stress = false;
    m_mouth.reset();
}

void FigureSpeech::MoveBalloon(const BalloonOwner &owner)
{
    m_owner = owner;
    if (m_balloon)
        m_balloon->Follow(owner);
}

void FigureSpeech::HideBalloon()
{
    m_hide.reset();
    m_wantsBalloon = false;
    if (m_balloon)
        m_balloon->Empty();
}

} // namespace platform
