#include "platform/agent/Client.h"

#include "platform/agent/AgentEngine.h"
#include "platform/voice/SpeechText.h"

#include <QLoggingCategory>

#include <algorithm>

namespace platform {

Q_DECLARE_LOGGING_CATEGORY(agentLog)

Client::Client(AgentEngine &engine, std::weak_ptr<bool> engineAlive)
    : m_engine(engine), m_engineAlive(std::move(engineAlive))
{
}

Client::~Client()
{
    Disconnect();
}

bool Client::Connected() const
{
    return m_connected && !m_engineAlive.expired();
}

void Client::RequireConnection() const
{
    if (Connected())
        return;
    const bool othersAreServed = !m_engineAlive.expired() && m_engine.HasClients();
    throw Error(othersAreServed ? kAgentRefuses : kAgentGone);
}

void Client::Load(const QString &id, const QString &file)
{
    RequireConnection();
    // A load that fails leaves its id taken.
    const QString key = id.toLower();
    if (!m_taken.insert(key).second)
        throw Error(kAlreadyLoaded);
    std::shared_ptr<Cast> cast = m_engine.CastFor(id, file);
    qCDebug(agentLog).noquote() << QStringLiteral("agent: 0 ") + id + QStringLiteral(" Load \"") + file +
                                       QStringLiteral("\" -> done");
    ++cast->holders;
    m_casts[key] = std::move(cast);
}

CharacterReference Client::Character(const QString &id)
{
    RequireConnection();
    const auto found = m_casts.find(id.toLower());
    if (found == m_casts.end())
        throw Error(kAgentRefuses);
    return CharacterReference(std::make_shared<ClientCharacter>(shared_from_this(), found->second));
}

void Client::AddCommand(const AgentCommand &offer)
{
    RequireConnection();
    const auto same = [&offer](const AgentCommand &other) { return other.name == offer.name; };
    if (std::any_of(m_commands.begin(), m_commands.end(), same))
        throw Error(kCommandNameUsed);
    m_commands.push_back(offer);
}

void Client::RemoveCommand(const QString &name)
{
    RequireConnection();
    if (std::erase_if(m_commands, [&name](const AgentCommand &offer) { return offer.name == name; }) == 0)
        throw Error(kCommandUnknown);
}

PropertySheet &Client::ClientSheet::Held() const
{
    m_owner.RequireConnection();
    return m_owner.m_engine.m_sheet;
}

void Client::ClientSheet::SetVisible(bool visible)
{
    Held().SetVisible(visible);
    qCDebug(agentLog).noquote() << QStringLiteral("agent: 0 PropertySheet.Visible %1 -> done")
                                       .arg(visible ? QStringLiteral("True") : QStringLiteral("False"));
}

void Client::Disconnect()
{
    if (!m_connected)
        return;
    m_connected = false;
    if (!m_engineAlive.expired())
        m_engine.Leave(*this);
    else
        Forget();
}

void Client::PostStart(const std::shared_ptr<QueuedRequest> &request)
{
    PostTo(&AgentControl::requestStart, request);
}

void Client::PostComplete(const std::shared_ptr<QueuedRequest> &request)
{
    PostTo(&AgentControl::requestComplete, request);
}

void Client::PostTo(RequestHandler AgentControl::*handler, const std::shared_ptr<QueuedRequest> &request)
{
    m_engine.Post([weak = weak_from_this(), handler, request] {
        const auto self = weak.lock();
        if (!self || !self->m_connected)
            return;
        // The handler may replace itself.
        if (const RequestHandler call = (*self).*handler)
            call(RequestReference(request));
    });
}

ClientCharacter::ClientCharacter(std::shared_ptr<Client> client, std::weak_ptr<Cast> cast)
    : m_client(std::move(client)), m_cast(std::move(cast))
{
}

std::shared_ptr<Cast> ClientCharacter::Held() const
{
    m_client->RequireConnection();
    auto cast = m_cast.lock();
    if (!cast)
        throw Error(kAgentRefuses);
    return cast;
}

RequestReference ClientCharacter::Enqueue(std::shared_ptr<QueuedRequest> request)
{
    const auto cast = Held();
    request->owner = m_client.get();
    request->client = m_client;
    return RequestReference(cast->Enqueue(std::move(request)));
}

RequestReference ClientCharacter::Show(bool fast)
{
    auto request = std::make_shared<QueuedRequest>(Operation::Show);
    request->fast = fast;
    return Enqueue(std::move(request));
}

RequestReference ClientCharacter::Hide(bool fast)
{
    auto request = std::make_shared<QueuedRequest>(Operation::Hide);
    request->fast = fast;
    return Enqueue(std::move(request));
}

RequestReference ClientCharacter::Play(const QString &animation)
{
    if (!Held()->Body().HasMotion(animation))
        throw Error(kNoSuchAnimation);
    auto request = std::make_shared<QueuedRequest>(Operation::Play);
    request->name = animation;
    return Enqueue(std::move(request));
}

RequestReference ClientCharacter::Speak(const QString &text)
{
    auto request = std::make_shared<QueuedRequest>(Operation::Speak);
    request->tagged = text;
    request->text = SpeechText::Parse(text);
    return Enqueue(std::move(request));
}

RequestReference ClientCharacter::MoveTo(Integer16 x, Integer16 y, int speed)
{
    auto request = std::make_shared<QueuedRequest>(Operation::MoveTo);
    request->point = QPoint(x, y);
    request->speed = std::max(speed, 0);
    return Enqueue(std::move(request));
}

RequestReference ClientCharacter::GestureAt(Integer16 x, Integer16 y)
{
    auto request = std::make_shared<QueuedRequest>(Operation::GestureAt);
    request->point = QPoint(x, y);
    return Enqueue(std::move(request));
}

void ClientCharacter::Stop()
{
    Held()->Stop();
}

void ClientCharacter::Stop(const RequestReference &request)
{
    const auto cast = Held();
    const Request *wanted = request.operator->();
    for (const auto &[id, other] : m_client->Casts()) {
        if (other != cast && other->Holds(wanted))
            throw Error(kStopAcrossCharacters);
    }
    cast->Stop(wanted);
}

void ClientCharacter::StopAll()
{
    Held()->StopAll();
}

void ClientCharacter::StopAll(const QString &types)
{
    Held()->StopAll(types);
}

Integer16 ClientCharacter::Left() const
{
    return Held()->Body().Frame().left();
}

Integer16 ClientCharacter::Top() const
{
    return Held()->Body().Frame().top();
}

Integer16 ClientCharacter::Width() const
{
    return Held()->Body().Frame().width();
}

Integer16 ClientCharacter::Height() const
{
    return Held()->Body().Frame().height();
}

void ClientCharacter::SetSize(const QSize &size)
{
    if (size.width() <= 0 || size.height() <= 0)
        throw Error(kInvalidCall);
    Figure &body = Held()->Body();
    body.SetFrame(QRect(body.Frame().topLeft(), size));
}

void ClientCharacter::SetWidth(Integer16 width)
{
    SetSize(QSize(width, Height()));
}

void ClientCharacter::SetHeight(Integer16 height)
{
    SetSize(QSize(Width(), height));
}

bool ClientCharacter::Visible() const
{
    return Held()->Visible();
}

Balloon &ClientCharacter::WordBalloon()
{
    Held();
    return m_balloon;
}

void ClientCharacter::CharacterBalloon::SetVisible(bool visible)
{
    m_owner.Held()->SetBalloonVisible(visible);
}

bool ClientCharacter::CharacterBalloon::Visible() const
{
    return m_owner.Held()->Body().BalloonVisible();
}

} // namespace platform
