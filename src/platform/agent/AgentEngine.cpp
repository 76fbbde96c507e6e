#include "platform/agent/AgentEngine.h"

#include "platform/agent/Cast.h"
#include "platform/agent/Client.h"

#include <algorithm>

namespace platform {

namespace {

// The longest that a figure whose client has gone is still seen leaving.
constexpr std::chrono::milliseconds kDepartureLimit{ 1500 };

} // namespace

AgentEngine::AgentEngine(Events &events, FigureMaker &figures, PropertySheet &sheet)
    : m_events(events), m_figures(figures), m_sheet(sheet)
{
}

AgentEngine::~AgentEngine()
{
    // Each departure takes its client out of the list.
    const auto clients = m_clients;
    for (const auto &weak : clients) {
        if (const auto client = weak.lock())
            client->Disconnect();
    }
    m_departures.clear();
}

AgentControlReference AgentEngine::CreateControl()
{
    auto client = std::make_shared<Client>(*this, m_alive);
    m_clients.push_back(client);
    for (const QString &name : m_voiceCommands)
        client->AddCommand({ name, QString() });
    return AgentControlReference(std::move(client));
}

bool AgentEngine::HasClients() const
{
    return std::any_of(m_clients.begin(), m_clients.end(), [](const std::weak_ptr<Client> &weak) {
        const auto client = weak.lock();
        return client && client->Connected();
    });
}

void AgentEngine::SetInputClient(const std::shared_ptr<Client> &client)
{
    std::erase_if(m_shown, [&client](const std::weak_ptr<Client> &weak) {
        const auto other = weak.lock();
        return !other || other == client;
    });
    m_shown.push_back(client);
}

std::shared_ptr<Client> AgentEngine::InputClient() const
{
    for (auto weak = m_shown.rbegin(); weak != m_shown.rend(); ++weak) {
        auto client = weak->lock();
        if (!client || !client->Connected())
            continue;
        const bool seen = std::any_of(client->Casts().begin(), client->Casts().end(),
                                      [](const auto &entry) { return entry.second->Visible(); });
        if (seen)
            return client;
    }
    return nullptr;
}

void AgentEngine::DeliverCommand(const QString &name)
{
    Post([this, name] {
        const auto client = InputClient();
        if (!client)
            return;
        if (const auto handler = client->command)
            handler(UserInput{ name });
    });
}

std::vector<MenuGroup> AgentEngine::MenuOf(const Cast &cast)
{
    MenuGroup commands;
    const auto client = InputClient();
    const bool isTheirs =
        client && std::any_of(client->Casts().begin(), client->Casts().end(),
                              [&cast](const auto &entry) { return entry.second.get() == &cast; });
    if (isTheirs) {
        for (const AgentCommand &command : client->Commands()) {
            if (!command.visible || command.caption.isEmpty())
                continue;
            commands.push_back({ command.caption, command.enabled,
                                 [this, alive = std::weak_ptr<bool>(m_alive), name = command.name] {
                                     if (!alive.expired())
                                         DeliverCommand(name);
                                 } });
        }
    }
    // Not every desktop has a tray, so whoever was sent away can be called back by the others.
    MenuGroup absent;
    for (const auto &[key, weak] : m_casts) {
        const auto other = weak.lock();
        if (!other || !other->HiddenByUser())
            continue;
        absent.push_back(
            { QStringLiteral("&Show %1").arg(other->Id()), true, [weak = std::weak_ptr<Cast>(other)] {
                 if (const auto called = weak.lock())
                     called->AskByUser(false);
             } });
    }
    return { std::move(commands), std::move(absent) };
}

void AgentEngine::SetVoiceCommands(const QStringList &names)
{
    for (const auto &weak : m_clients) {
        const auto client = weak.lock();
        if (!client || !client->Connected())
            continue;
        for (const QString &name : m_voiceCommands)
            client->RemoveCommand(name);
        for (const QString &name : names)
            client->AddCommand({ name, QString() });
    }
    m_voiceCommands = names;
}

std::optional<AgentEngine::Listener> AgentEngine::ListenerNow() const
{
    const auto client = InputClient();
    if (!client || !client->command || client->Commands().empty())
        return std::nullopt;
    const auto lastSpeaker = m_lastSpeaker.lock();
    std::shared_ptr<Cast> listener;
    for (const auto &[key, cast] : client->Casts()) {
        if (cast->Visible() && (!listener || cast == lastSpeaker))
            listener = cast;
    }
    return listener ? std::optional(Listener{ listener->Id(), listener->Body().Frame() }) : std::nullopt;
}

void AgentEngine::DeliverPropertyChange()
{
    for (const auto &weak : m_clients) {
        Post([weak] {
            const auto client = weak.lock();
            if (!client || !client->Connected())
                return;
            if (const auto handler = client->agentPropertyChange)
                handler();
        });
    }
}

std::shared_ptr<Cast> AgentEngine::CastFor(const QString &id, const QString &file)
{
    std::weak_ptr<Cast> &slot = m_casts[id.toLower()];
    if (auto present = slot.lock())
        return present;
    auto made = std::make_shared<Cast>(*this, m_alive, id, m_figures.Make(id, file));
    made->Connect();
    slot = made;
    return made;
}

void AgentEngine::Leave(Client &client)
{
    std::erase_if(m_clients, [&client](const std::weak_ptr<Client> &weak) {
        const auto other = weak.lock();
        return !other || other.get() == &client;
    });
    for (const auto &[key, cast] : client.Casts()) {
        if (--cast->holders > 0) {
            cast->RemoveRequestsOf(client);
            continue;
        }
        m_casts.erase(key);
        const bool departs = cast->Visible() && cast->HasHide();
        if (departs && cast->Body().HasMotion(QStringLiteral("Hide"))) {
            ShowDeparture(cast);
        } else {
            cast->RemoveAllRequests();
            cast->Body().Disappear(false);
        }
    }
    client.Forget();
}

// Nobody is to wait for this figure any more; it only plays its leaving to the end.
void AgentEngine::ShowDeparture(const std::shared_ptr<Cast> &cast)
{
    auto departure = std::make_shared<Departure>();
    departure->cast = cast;
    m_departures.push_back(departure);
    const auto end = [this, alive = std::weak_ptr<bool>(m_alive),
                      weak = std::weak_ptr<Departure>(departure)] {
        const auto gone = weak.lock();
        if (alive.expired() || !gone)
            return;
        gone->cast->Body().Halt();
        gone->cast->Body().Disappear(false);
        std::erase(m_departures, gone);
        // The figure may be on the stack, so the event loop destroys it.
        m_events.Post([gone] {});
    };
    departure->deadline = m_events.After(kDepartureLimit, end);
    cast->Depart(end);
}

bool AgentEngine::TakeVoice(const std::shared_ptr<Cast> &cast)
{
    m_voiceQueue.push_back(cast);
    m_lastSpeaker = cast;
    const bool isFirst = m_voiceQueue.size() == 1;
    if (isFirst && voiceChanged)
        voiceChanged();
    return isFirst;
}

void AgentEngine::GiveVoiceBack(const Cast &cast)
{
    if (m_voiceQueue.empty())
        return;
    const auto before = m_voiceQueue.front().lock();
    std::erase_if(m_voiceQueue, [&cast](const std::weak_ptr<Cast> &weak) {
        const auto other = weak.lock();
        return !other || other.get() == &cast;
    });
    if (m_voiceQueue.empty()) {
        if (voiceChanged)
            voiceChanged();
        return;
    }
    const auto next = m_voiceQueue.front().lock();
    if (next && next != before)
        next->VoiceIsFree();
}

void AgentEngine::Post(std::function<void()> work)
{
    m_events.Post([alive = std::weak_ptr<bool>(m_alive), work = std::move(work)] {
        if (!alive.expired())
            work();
    });
}

} // namespace platform
