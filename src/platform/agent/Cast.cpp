#include "platform/agent/Cast.h"

#include "platform/agent/AgentEngine.h"
#include "platform/agent/Client.h"

#include <QLoggingCategory>
#include <QStringList>

#include <algorithm>

namespace platform {

Q_LOGGING_CATEGORY(agentLog, "tumblewick.agent", QtWarningMsg)

namespace {

QString OperationText(const QueuedRequest &request)
{
    switch (request.operation) {
    case Operation::Show:
        return request.fast ? QStringLiteral("Show fast") : QStringLiteral("Show");
    case Operation::Hide:
        return request.fast ? QStringLiteral("Hide fast") : QStringLiteral("Hide");
    case Operation::Play:
        return QStringLiteral("Play \"%1\"").arg(request.name);
    case Operation::Speak:
        return QStringLiteral("Speak \"") + request.tagged + QLatin1Char('"');
    case Operation::MoveTo:
        return QStringLiteral("MoveTo %1,%2").arg(request.point.x()).arg(request.point.y());
    case Operation::GestureAt:
        return QStringLiteral("GestureAt %1,%2").arg(request.point.x()).arg(request.point.y());
    }
    return QString();
}

QString StatusText(const QueuedRequest &request)
{
    switch (static_cast<RequestStatus>(int(request.Status()))) {
    case kRequestDone:
        return QStringLiteral("done");
    case kRequestFailed:
        return QStringLiteral("failed");
    case kRequestQueued:
        return QStringLiteral("queued");
    case kRequestInterrupted:
        return QStringLiteral("interrupted");
    case kRequestRunning:
        return QStringLiteral("running");
    }
    return QString();
}

// The figure faces the child: its left is the right of the screen.
QString DirectionOf(const QPoint &way)
{
    if (std::abs(way.x()) >= std::abs(way.y()) && way.x() != 0)
        return way.x() > 0 ? QStringLiteral("Left") : QStringLiteral("Right");
    return way.y() < 0 ? QStringLiteral("Up") : QStringLiteral("Down");
}

} // namespace

QString QueuedRequest::Description() const
{
    return m_number == 0 ? QString() : StockDescription(m_number);
}

void QueuedRequest::End(RequestStatus status, qint32 number)
{
    if (HasEnded())
        return;
    m_status = status;
    m_number = number;
}

Cast::Cast(AgentEngine &engine, std::weak_ptr<bool> engineAlive, QString id, std::unique_ptr<Figure> figure)
    : m_engine(engine), m_id(std::move(id)), m_figure(std::move(figure)),
      m_engineAlive(std::move(engineAlive))
{
}

Cast::~Cast()
{
    if (!m_engineAlive.expired())
        m_engine.GiveVoiceBack(*this);
}

void Cast::Connect()
{
    m_figure->dragged = [weak = weak_from_this()](bool begins) {
        const auto self = weak.lock();
        if (!self)
            return;
        self->m_dragging = begins;
        if (!begins && self->m_heldByDrag) {
            const RequestPointer held = std::exchange(self->m_heldByDrag, nullptr);
            if (held->IsRunning())
                self->BeginMove(held);
        }
    };
    m_figure->hideAsked = [weak = weak_from_this()](bool hide) {
        if (const auto self = weak.lock())
            self->AskByUser(hide);
    };
    m_figure->menuAsked = [weak = weak_from_this()] {
        const auto self = weak.lock();
        const bool served = self && !self->m_departing && !self->m_engineAlive.expired();
        return served ? self->m_engine.MenuOf(*self) : std::vector<MenuGroup>{};
    };
}

void Cast::AskByUser(bool hide)
{
    if (m_departing || m_engineAlive.expired())
        return;
    Enqueue(std::make_shared<QueuedRequest>(hide ? Operation::Hide : Operation::Show));
}

Cast::RequestPointer Cast::Enqueue(RequestPointer request)
{
    request->sequence = m_engine.NextSequence();
    if (request->operation == Operation::Speak) {
        request->noBalloon = std::exchange(m_balloonOffNext, false);
        m_latestSpeech = request;
    }
    m_queue.push_back(request);
    Trace(*request);
    Advance();
    return request;
}

// Begins the head as long as it ends at once. Not entered again by what a request sets off.
void Cast::Advance()
{
    if (m_advancing)
        return;
    m_advancing = true;
    const auto self = shared_from_this();
    while (!m_queue.empty() && !m_queue.front()->IsRunning())
        BeginHead();
    m_advancing = false;
}

void Cast::BeginHead()
{
    const RequestPointer request = m_queue.front();
    request->Begin();
    Trace(*request);
    if (const auto client = request->client.lock())
        client->PostStart(request);

    switch (request->operation) {
    case Operation::Show:
        if (const auto client = request->client.lock())
            m_engine.SetInputClient(client);
        if (m_visible)
            return EndHead(kRequestDone, 0);
        m_visible = true;
        m_hiddenByUser = false;
        m_figure->Appear();
        if (request->fast)
            return EndHead(kRequestDone, 0);
        return Perform(request, QStringLiteral("Show"));
    case Operation::Hide: {
        if (!m_visible)
            return EndHead(kRequestDone, 0);
        const auto vanish = [this, byUser = request->owner == nullptr] {
            m_visible = false;
            m_hiddenByUser = byUser;
            m_figure->Disappear(byUser);
            EndHead(kRequestDone, 0);
        };
        if (request->fast)
            return vanish();
        return Perform(request, QStringLiteral("Hide"), vanish);
    }
    case Operation::Play:
        if (!m_visible)
            return EndHead(kRequestFailed, kCharacterHidden);
        return Perform(request, request->name);
    case Operation::Speak:
        if (!m_visible)
            return EndHead(kRequestFailed, kCharacterHidden);
        if (IsRepeatTag(request->tagged))
            request->text = m_lastLine;
        else
            m_lastLine = request->text;
        if (request->text.Spoken().isEmpty())
            return EndHead(kRequestDone, 0);
        if (m_engine.TakeVoice(shared_from_this()))
            BeginSpeech(request);
        return;
    case Operation::MoveTo:
        if (!m_visible) {
            // A hidden figure is placed all the same; only the flight cannot be had.
            m_figure->SetFrame(QRect(request->point, m_figure->Frame().size()));
            const bool failed = request->speed != 0;
            return EndHead(failed ? kRequestFailed : kRequestDone, failed ? kCharacterHidden : 0);
        }
        if (m_dragging) {
            m_heldByDrag = request;
            return;
        }
        return BeginMove(request);
    case Operation::GestureAt:
        if (!m_visible)
            return EndHead(kRequestFailed, kCharacterHidden);
        return BeginGesture(request);
    }
}

void Cast::BeginMove(const RequestPointer &request)
{
    if (request->speed == 0) {
        m_figure->SetFrame(QRect(request->point, m_figure->Frame().size()));
        return EndHead(kRequestDone, 0);
    }
    const QPoint way = request->point - m_figure->Frame().topLeft();
    Perform(request, QStringLiteral("Move") + DirectionOf(way), [this, request] {
        m_figure->Slide(request->point, std::chrono::milliseconds(request->speed), Completion(request));
    });
}

void Cast::BeginGesture(const RequestPointer &request)
{
    const QRect frame = m_figure->Frame();
    const QPoint way = frame.contains(request->point) ? QPoint(0, 1) : request->point - frame.center();
    Perform(request, QStringLiteral("Gesture") + DirectionOf(way));
}

void Cast::BeginSpeech(const RequestPointer &request)
{
    m_figure->Speak(request->text, !request->noBalloon, Completion(request));
}

void Cast::VoiceIsFree()
{
    if (m_queue.empty())
        return;
    const RequestPointer request = m_queue.front();
    if (request->operation == Operation::Speak && request->IsRunning())
        BeginSpeech(request);
}

void Cast::Perform(const RequestPointer &request, const QString &motion, std::function<void()> then)
{
    if (!m_figure->HasMotion(motion))
        return EndHead(kRequestFailed, kStateHasNoAnimation);
    m_figure->Perform(motion, Completion(request, std::move(then)));
}

Figure::Done Cast::Completion(const RequestPointer &request, std::function<void()> then)
{
    return [weak = weak_from_this(), request, then = std::move(then)](qint32 number) {
        const auto self = weak.lock();
        if (self && self->m_departed)
            return std::exchange(self->m_departed, nullptr)();
        if (!self || !request->IsRunning() || self->m_queue.empty() || self->m_queue.front() != request)
            return;
        if (number != 0)
            self->EndHead(kRequestFailed, number);
        else if (then)
            then();
        else
            self->EndHead(kRequestDone, 0);
    };
}

void Cast::EndHead(RequestStatus status, qint32 number)
{
    const auto self = shared_from_this();
    const RequestPointer request = m_queue.front();
    m_queue.pop_front();
    Conclude(request, status, number);
    if (request->operation == Operation::Speak)
        m_engine.GiveVoiceBack(*this);
    Advance();
    RestIfIdle();
}

void Cast::RestIfIdle()
{
    if (m_queue.empty() && m_visible)
        m_figure->Rest();
}

void Cast::Conclude(const RequestPointer &request, RequestStatus status, qint32 number)
{
    request->End(status, number);
    Trace(*request);
    if (const auto client = request->client.lock())
        client->PostComplete(request);
}

// Cuts off the running head, without beginning the next.
void Cast::Interrupt(qint32 number)
{
    if (m_queue.empty() || !m_queue.front()->IsRunning())
        return;
    const RequestPointer request = m_queue.front();
    m_queue.pop_front();
    m_heldByDrag = nullptr;
    m_figure->Halt();
    Conclude(request, kRequestInterrupted, number);
    if (request->operation == Operation::Speak)
        m_engine.GiveVoiceBack(*this);
}

void Cast::RemoveWaiting(const std::function<bool(const QueuedRequest &)> &which)
{
    std::deque<RequestPointer> kept;
    std::vector<RequestPointer> removed;
    for (const RequestPointer &request : m_queue) {
        if (!request->IsRunning() && which(*request))
            removed.push_back(request);
        else
            kept.push_back(request);
    }
    m_queue.swap(kept);
    for (const RequestPointer &request : removed)
        Conclude(request, kRequestInterrupted, kRemovedFromQueue);
}

// What runs ends with `number`.
void Cast::EndAll(qint32 number)
{
    RemoveWaiting([](const QueuedRequest &) { return true; });
    Interrupt(number);
}

bool Cast::IsHiding() const
{
    return !m_queue.empty() && m_queue.front()->IsRunning() && m_queue.front()->operation == Operation::Hide;
}

void Cast::Stop()
{
    TraceCall(QStringLiteral("Stop"));
    const bool comingOrGoing = !m_queue.empty() && m_queue.front()->IsRunning() &&
                               (m_queue.front()->operation == Operation::Show || IsHiding());
    if (comingOrGoing)
        return;
    EndAll(kInterruptedByProgram);
    RestIfIdle();
}

void Cast::Stop(const Request *request)
{
    if (!Holds(request))
        throw Error(kRequestNotInQueue);
    TraceCall(QStringLiteral("Stop"));
    if (m_queue.front().get() == request) {
        Interrupt(kInterruptedByProgram);
        Advance();
        RestIfIdle();
    } else {
        RemoveWaiting([request](const QueuedRequest &queued) { return &queued == request; });
    }
}

void Cast::StopAll()
{
    TraceCall(QStringLiteral("StopAll"));
    EndAll(kInterruptedByProgram);
    RestIfIdle();
}

void Cast::StopAll(const QString &types)
{
    TraceCall(QStringLiteral("StopAll \"%1\"").arg(types));
    bool move = false;
    bool play = false;
    bool speak = false;
    for (const QString &type : types.split(QLatin1Char(','))) {
        const QString name = type.trimmed();
        move = move || name.compare(QLatin1String("Move"), Qt::CaseInsensitive) == 0;
        play = play || name.compare(QLatin1String("Play"), Qt::CaseInsensitive) == 0;
        speak = speak || name.compare(QLatin1String("Speak"), Qt::CaseInsensitive) == 0;
    }
    // Only what has not begun; Show and Hide are of no kind.
    RemoveWaiting([=](const QueuedRequest &request) {
        switch (request.operation) {
        case Operation::MoveTo:
            return move;
        case Operation::Play:
        case Operation::GestureAt:
            return play;
        case Operation::Speak:
            return speak;
        case Operation::Show:
        case Operation::Hide:
            return false;
        }
        return false;
    });
}

bool Cast::Holds(const Request *request) const
{
    return std::any_of(m_queue.begin(), m_queue.end(),
                       [request](const RequestPointer &queued) { return queued.get() == request; });
}

bool Cast::HasHide() const
{
    return std::any_of(m_queue.begin(), m_queue.end(),
                       [](const RequestPointer &request) { return request->operation == Operation::Hide; });
}

void Cast::RemoveRequestsOf(const Client &client)
{
    const auto isOurs = [&client](const QueuedRequest &request) { return request.owner == &client; };
    RemoveWaiting(isOurs);
    if (!m_queue.empty() && isOurs(*m_queue.front())) {
        Interrupt(kRemovedFromQueue);
        Advance();
        RestIfIdle();
    }
}

void Cast::RemoveAllRequests()
{
    EndAll(kRemovedFromQueue);
}

void Cast::Depart(std::function<void()> gone)
{
    RemoveWaiting([](const QueuedRequest &) { return true; });
    m_departing = true;
    m_departed = std::move(gone);
    if (IsHiding()) {
        const RequestPointer request = m_queue.front();
        m_queue.pop_front();
        Conclude(request, kRequestInterrupted, kRemovedFromQueue);
        return;
    }
    Interrupt(kRemovedFromQueue);
    m_figure->Perform(QStringLiteral("Hide"), [weak = weak_from_this()](qint32) {
        if (const auto self = weak.lock(); self && self->m_departed)
            std::exchange(self->m_departed, nullptr)();
    });
}

void Cast::SetBalloonVisible(bool visible)
{
    TraceCall(visible ? QStringLiteral("Balloon.Visible True") : QStringLiteral("Balloon.Visible False"));
    if (visible) {
        m_balloonOffNext = false;
        return;
    }
    m_figure->HideBalloon();
    const auto latest = m_latestSpeech.lock();
    // A second False behind a line that is already without balloon must not swallow the balloon of the next
    // one.
    if (latest && !latest->HasEnded() && latest->noBalloon)
        return;
    m_balloonOffNext = true;
}

void Cast::Trace(const QueuedRequest &request) const
{
    if (!agentLog().isDebugEnabled())
        return;
    QString line = QStringLiteral("agent: %1 ").arg(request.sequence);
    line += m_id + QLatin1Char(' ') + OperationText(request) + QStringLiteral(" -> ") + StatusText(request);
    if (request.Number() != 0)
        line += QStringLiteral(" %1").arg(request.Number());
    qCDebug(agentLog).noquote() << line;
}

void Cast::TraceCall(const QString &call) const
{
    qCDebug(agentLog).noquote() << QStringLiteral("agent: 0 ") + m_id + QLatin1Char(' ') + call +
                                       QStringLiteral(" -> done");
}

} // namespace platform
