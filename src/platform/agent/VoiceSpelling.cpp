#include "platform/agent/VoiceSpelling.h"

#include <QCoreApplication>

namespace platform {

namespace {

QString Text(const char *text)
{
    return QCoreApplication::translate("VoiceSpelling", text);
}

// As a name stands on a button.
QString Shown(const QString &name)
{
    return name == QLatin1String("go") ? Text("GO!") : name.toUpper();
}

} // namespace

VoiceSpelling::VoiceSpelling(const Parts &parts) : m_parts(parts)
{
    m_observation = m_parts.options.Observe([this] { ApplyOptions(); });
    m_parts.tip.chosen = [this](int index) { Take(index); };
    m_parts.agent.voiceChanged = [this] { VoiceChanged(); };
    ApplyOptions();
}

VoiceSpelling::~VoiceSpelling()
{
    m_parts.tip.chosen = nullptr;
    m_parts.agent.voiceChanged = nullptr;
    Drop(State::Idle);
}

bool VoiceSpelling::IsOn() const
{
    return m_parts.options.Now().voiceSpelling;
}

void VoiceSpelling::ApplyOptions()
{
    m_parts.agent.SetVoiceCommands(IsOn() ? SpokenNames() : QStringList());
    if (!IsOn())
        Drop(State::Idle);
}

void VoiceSpelling::KeyDown()
{
    m_keyDown = true;
    Answer();
}

// What the key is held down for, as far as it can be had just now.
void VoiceSpelling::Answer()
{
    if (!IsOn() || !m_parts.agent.ListenerNow()) {
        Drop(State::Idle);
        return;
    }
    if (m_parts.agent.SomebodySpeaks()) {
        Drop(State::Held);
        Say(Text("Wait a moment, and keep the key down."));
        return;
    }
    if (const QString obstacle = m_parts.recogniser.Obstacle(); !obstacle.isEmpty()) {
        Notice(obstacle);
        return;
    }
    Listen();
}

// What is offered stays to be seen until the press has turned out to be no tap.
void VoiceSpelling::Listen()
{
    m_order.reset();
    m_timeIsUp.reset();
    m_heard.clear();
    const bool listens = m_parts.microphone.Record(m_parts.options.Now().microphone,
                                                   [this](const QByteArray &samples) { m_heard += samples; });
    if (!listens) {
        Notice(Text("No microphone can be used just now."));
        return;
    }
    m_parts.recogniser.Prepare();
    m_state = State::Listening;
    m_isTap = true;
    m_tapEnds = m_parts.events.After(kTap, [this] {
        m_isTap = false;
        m_offers.clear();
        Say(Text("I am listening. Say one letter, then let go."));
    });
    m_timeIsUp = m_parts.events.After(kLongestSpeech, [this] { Understand(); });
}

void VoiceSpelling::KeyUp()
{
    if (!m_keyDown)
        return;
    m_keyDown = false;
    if (m_state == State::Held)
        Drop(State::Idle);
    if (m_state != State::Listening)
        return;
    if (!m_isTap) {
        Understand();
        return;
    }
    m_parts.microphone.Stop();
    m_tapEnds.reset();
    if (m_offers.isEmpty()) {
        Notice(Text("Hold the key down while you say the letter."));
    } else {
        m_state = State::Asking;
        Take(0);
    }
}

void VoiceSpelling::KeyLost()
{
    m_keyDown = false;
    if (m_state == State::Listening || m_state == State::Held)
        Drop(State::Idle);
}

void VoiceSpelling::Understand()
{
    m_parts.microphone.Stop(); // the last of what was said comes now
    m_tapEnds.reset();
    m_timeIsUp.reset();
    m_state = State::Thinking;
    Say(Text("Let me think."));
    m_order = m_parts.recogniser.Recognise(std::exchange(m_heard, {}),
                                           [this](const QStringList &names) { Offer(names); });
}

void VoiceSpelling::Offer(const QStringList &names)
{
    if (names.isEmpty()) {
        Notice(Text("I heard no letter. Hold the key and say it again."));
        return;
    }
    m_state = State::Asking;
    m_offers = names;
    QStringList choices;
    for (const QString &name : names)
        choices << Shown(name);
    Say(Text("Which one was it?"), choices);
    m_timeIsUp = m_parts.events.After(kOffer, [this] { Drop(State::Idle); });
}

void VoiceSpelling::Take(int index)
{
    if (m_state != State::Asking)
        return;
    const QString name = m_offers.value(index);
    Drop(State::Idle);
    if (!name.isEmpty())
        m_parts.agent.DeliverCommand(name);
}

void VoiceSpelling::VoiceChanged()
{
    if (m_parts.agent.SomebodySpeaks()) {
        // Nobody is heard over a character, and its words have made the question old.
        if (m_state != State::Idle)
            Drop(m_keyDown ? State::Held : State::Idle);
    } else if (m_state == State::Held) {
        Answer();
    }
}

void VoiceSpelling::Notice(const QString &text)
{
    Drop(State::Idle);
    Say(text);
    m_timeIsUp = m_parts.events.After(kNotice, [this] { Drop(State::Idle); });
}

void VoiceSpelling::Say(const QString &text, const QStringList &choices)
{
    if (const auto listener = m_parts.agent.ListenerNow())
        m_parts.tip.Show(listener->frame, text, choices);
    else
        m_parts.tip.Hide();
}

void VoiceSpelling::Drop(State next)
{
    m_state = next;
    m_parts.microphone.Stop();
    m_parts.tip.Hide();
    m_order.reset();
    m_tapEnds.reset();
    m_timeIsUp.reset();
    m_heard.clear();
    m_offers.clear();
}

} // namespace platform
