#include "support/FakeStage.h"

#include "platform/Error.h"

#include <algorithm>

namespace support {

namespace {

const QStringList kMotions = {
    "Acknowledge",    "Alert",       "Announce",     "Blink",      "Confused",      "Congratulate",
    "Congratulate_2", "Decline",     "DoMagic1",     "DoMagic2",   "DontRecognize", "Explain",
    "GestureDown",    "GestureLeft", "GestureRight", "GestureUp",  "GetAttention",  "Greet",
    "Hide",           "Idle1_1",     "Idle2_1",      "Idle3_1",    "Idle3_2",       "LookDown",
    "LookLeft",       "LookRight",   "LookUp",       "MoveDown",   "MoveLeft",      "MoveRight",
    "MoveUp",         "Pleased",     "Process",      "Processing", "Read",          "Reading",
    "ReadReturn",     "RestPose",    "Sad",          "Search",     "Show",          "Suggest",
    "Surprised",      "Think",       "Uncertain",    "Wave",       "Write",
};

bool LoopsForEver(const QString &name)
{
    static const QStringList loops = {
        "idle3_2", "processing", "reading", "searching", "thinking", "writing"
    };
    return loops.contains(name.toLower());
}

} // namespace

FakeStage::FakeStage(platform::Events &events) : m_events(events) {}

FakeStage::~FakeStage() = default;

std::unique_ptr<platform::Figure> FakeStage::Make(const QString &id, const QString &file)
{
    if (const qint32 number = m_fileFailures[file]; number != 0)
        throw platform::Error(number);
    return std::make_unique<FakeFigure>(*this, id);
}

void FakeStage::FailNext(const QString &id, const QString &kind, qint32 number)
{
    m_failures[id + QLatin1Char('.') + kind] = number;
}

qint32 FakeStage::TakeFailure(const QString &id, const QString &kind)
{
    if (kind == QLatin1String("Speak") && m_speechFailure != 0)
        return m_speechFailure;
    const auto found = m_failures.find(id + QLatin1Char('.') + kind);
    if (found == m_failures.end())
        return 0;
    const qint32 number = found->second;
    m_failures.erase(found);
    return number;
}

FakeFigure *FakeStage::Of(const QString &id) const
{
    for (auto figure = m_figures.rbegin(); figure != m_figures.rend(); ++figure) {
        if ((*figure)->m_id == id)
            return *figure;
    }
    return nullptr;
}

int FakeStage::Talking() const
{
    return int(std::count_if(m_figures.begin(), m_figures.end(),
                             [](const FakeFigure *figure) { return figure->m_talks; }));
}

int FakeStage::Seen() const
{
    return int(std::count_if(m_figures.begin(), m_figures.end(),
                             [](const FakeFigure *figure) { return figure->m_visible; }));
}

FakeFigure::FakeFigure(FakeStage &stage, QString id) : m_stage(stage), m_id(std::move(id))
{
    m_stage.m_figures.push_back(this);
}

FakeFigure::~FakeFigure()
{
    auto &all = m_stage.m_figures;
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
}

bool FakeFigure::HasMotion(const QString &name) const
{
    if (m_id == QLatin1String("Peedy") &&
        name.compare(QLatin1String("Congratulate_2"), Qt::CaseInsensitive) == 0)
        return false;
    return kMotions.contains(name, Qt::CaseInsensitive) && !m_stage.m_without.contains(name.toLower());
}

void FakeFigure::Write(const QString &what)
{
    m_stage.m_log << m_id + QLatin1Char(' ') + what;
}

void FakeFigure::EndAfter(std::chrono::milliseconds time, qint32 number, Done done,
                          std::function<void()> effect)
{
    if (m_pending)
        Write(QStringLiteral("is asked for two things at once"));
    m_pending = m_stage.m_events.After(number == 0 ? time : std::chrono::milliseconds(0),
                                       [this, number, done = std::move(done), effect = std::move(effect)] {
                                           if (effect)
                                               effect();
                                           const auto finished = std::move(m_pending);
                                           m_talks = false;
                                           done(number);
                                       });
}

void FakeFigure::Appear()
{
    m_visible = true;
    Write(QStringLiteral("appears"));
}

void FakeFigure::Disappear(bool byUser)
{
    if (m_visible)
        Write(byUser ? QStringLiteral("disappears for the user") : QStringLiteral("disappears"));
    m_visible = false;
    m_balloon = false;
}

void FakeFigure::Perform(const QString &name, Done done)
{
    Write(QStringLiteral("performs \"%1\"").arg(name));
    if (LoopsForEver(name))
        return;
    EndAfter(m_stage.motionTime, m_stage.TakeFailure(m_id, QStringLiteral("Perform")), std::move(done));
}

void FakeFigure::Slide(const QPoint &topLeft, std::chrono::milliseconds duration, Done done)
{
    Write(QStringLiteral("slides to %1,%2").arg(topLeft.x()).arg(topLeft.y()));
    const qint32 failure = m_stage.TakeFailure(m_id, QStringLiteral("Slide"));
    EndAfter(duration, failure, std::move(done), [this, topLeft] { m_frame.moveTopLeft(topLeft); });
}

void FakeFigure::Speak(const platform::SpeechText &text, bool balloon, Done done)
{
    const QString spoken = text.Spoken();
    Write(QStringLiteral("says \"") + spoken +
          (balloon ? QStringLiteral("\" showing \"") + text.Shown() + QLatin1Char('"')
                   : QStringLiteral("\" without balloon")));
    const qint32 failure = m_stage.TakeFailure(m_id, QStringLiteral("Speak"));
    m_balloon = balloon && failure == 0;
    m_talks = failure == 0;
    EndAfter(m_stage.timePerLetter * spoken.size(), failure, std::move(done));
}

void FakeFigure::Halt()
{
    if (m_pending)
        Write(QStringLiteral("halts"));
    m_pending.reset();
    m_balloon = false;
    m_talks = false;
}

void FakeFigure::Rest()
{
    Write(QStringLiteral("rests"));
}

void FakeFigure::HideBalloon()
{
    if (m_balloon)
        Write(QStringLiteral("hides the balloon"));
    m_balloon = false;
}

} // namespace support
