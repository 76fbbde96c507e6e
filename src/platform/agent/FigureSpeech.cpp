#include "platform/agent/FigureSpeech.h"

#include "platform/Error.h"

#include <QLoggingCategory>

#include <algorithm>

namespace platform {

Q_LOGGING_CATEGORY(mouthLog, "tumblewick.mouth", QtWarningMsg)

namespace {

// How long a balloon is still seen when all has been said.
constexpr std::chrono::milliseconds kBalloonStays{ 1500 };

// How long a piece of a line takes that is read and not heard: about as long as it would be spoken, so that
// children who read along keep up.
std::chrono::milliseconds ReadingTime(const SpeechUnit &unit, int speakingRate)
{
    constexpr int kWord = 220;
    constexpr int kLetter = 55;
    const auto letters = std::max(unit.shown.size(), unit.spoken.size());
    return std::chrono::milliseconds(unit.pause +
                                     qRound(double(kWord + kLetter * letters) / RateFactor(speakingRate)));
}

} // namespace

FigureSpeech::FigureSpeech(const CharacterData &character, SpeechEngine &engine, AudioOut &audio,
                           Events &events, OptionsKeeper &options)
    : m_character(character), m_engine(engine), m_audio(audio), m_events(events), m_options(options),
      m_observation(options.Observe([this] { OptionsChanged(); }))
{
}

FigureSpeech::~FigureSpeech()
{
    Stop();
}

qint32 FigureSpeech::Obstacle() const
{
    if (!m_options.Now().voice)
        return 0; // nothing has to be heard
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
    const ServiceOptions &options = m_options.Now();
    m_isSilent = !options.voice;
    if (m_isSilent) {
        m_isMade = true;
        return;
    }
    VoiceSettings settings = WithVoice(m_character.voice, options.VoiceOf(m_character.name));
    // A voice that has gone from this machine since it was chosen makes nobody dumb.
    if (!m_engine.Speaks(settings))
        settings = m_character.voice;
    m_order = m_engine.Synthesise(
        text, settings, [this](std::shared_ptr<const Utterance> utterance) { Made(std::move(utterance)); });
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
    if (!m_utterance && !m_isSilent)
        return endSoon(kSpeechEngineUnusable);
    ShowBalloon();
    if (m_isSilent)
        return GoOnSilently();
    if (m_utterance->samples.isEmpty()) {
        m_isHeard = true;
        return endSoon(0);
    }
    if (!m_audio.Play(m_utterance, [this](bool whole) { End(whole ? 0 : kAudioDeviceUnusable); }))
        return endSoon(kAudioDeviceUnusable);
    m_isHeard = true;
    Follow();
}

void FigureSpeech::ShowBalloon()
{
    m_wantsBalloon = m_wantsBalloon && m_options.Now().balloons;
    if (m_balloon && !m_wantsBalloon)
        m_balloon->Empty();
    if (!m_wantsBalloon)
        return;
    if (!m_balloon)
        m_balloon = std::make_unique<BalloonWindow>();
    m_balloon->SetTypeSize(m_options.Now().balloonTextSize);
    m_balloon->Begin(m_text.Shown());
    m_balloon->Follow(m_owner);
}

// Shows the next piece and leaves time to read it.
void FigureSpeech::GoOnSilently()
{
    std::chrono::milliseconds time(0);
    const bool over = m_unitsShown >= m_text.units.size();
    if (!over) {
        time = ReadingTime(m_text.units[m_unitsShown], m_options.Now().speakingRate);
        ShowUnits(m_unitsShown + 1);
    }
    m_pending = m_events.After(time, [this, over] {
        if (over)
            End(0);
        else
            GoOnSilently();
    });
}

// The user's choices hold for the line that is on its way, too, as far as it has not been heard yet.
void FigureSpeech::OptionsChanged()
{
    const ServiceOptions &options = m_options.Now();
    if (m_balloon)
        m_balloon->SetTypeSize(options.balloonTextSize);
    if (!options.balloons)
        HideBalloon();
    if (options.voice || !m_ended || m_isSilent)
        return;
    m_isSilent = true;
    if (m_isHeard) {
        SetMouth(Mouth::Rest, m_audio.Heard());
        m_audio.Stop();
        m_isHeard = false;
        m_mouth.reset();
        GoOnSilently();
        return;
    }
    m_order.reset();
    m_pending.reset();
    m_isMade = true;
    if (m_mayStart)
        Play();
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
        m_balloon->GiveWay();
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
    m_isSilent = false;
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
