#pragma once

#include "platform/agent/Agent.h"
#include "platform/agent/Figure.h"
#include "platform/system/Events.h"

#include <QStringList>

#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace platform {

class Cast;
class Client;

// The service itself: connections, queues and statuses, over figures that do the moving and talking. The real
// program and the tests run this same engine; they differ in the figures.
class AgentEngine : public AgentServer {
public:
    // All three have to outlive the engine and every object it hands out.
    AgentEngine(Events &events, FigureMaker &figures, PropertySheet &sheet);
    ~AgentEngine() override;

    AgentControlReference CreateControl() override;

    // Brings a command to the client that gets the user's input: of those that have a visible character, the
    // one that showed one last. Nothing when there is none.
    void DeliverCommand(const QString &name);

    // What can be said to the characters: each client, those to come too, has these among its commands, in no
    // menu. Replaces the ones of the last call.
    void SetVoiceCommands(const QStringList &names);
    // Who is spoken to: of the client that gets the user's input, the character that spoke last, or any that
    // is seen. None when that client has no commands or nobody to hear them.
    struct Listener {
        QString name;
        QRect frame;
    };
    std::optional<Listener> ListenerNow() const;
    // Whether a character is speaking, or waits for another one to end.
    bool SomebodySpeaks() const { return !m_voiceQueue.empty(); }
    // Called when that changes, inside the calls that change it: it may look, but ask nothing of a character.
    std::function<void()> voiceChanged;

    // Tells all clients that the user's options have changed.
    void DeliverPropertyChange();

    // What the user has chosen: whether the motions of the characters are heard. At once, for all of them.
    void SetSoundEffects(bool on) { m_figures.SetSoundEffects(on); }

private:
    friend class Cast;
    friend class Client;
    friend class ClientCharacter;

    // Clients.
    bool HasClients() const;
    std::shared_ptr<Cast> CastFor(const QString &id, const QString &file);
    void Leave(Client &client);
    void ShowDeparture(const std::shared_ptr<Cast> &cast);
    // What stands below Hide in the menu of that character.
    std::vector<MenuGroup> MenuOf(const Cast &cast);
    void SetInputClient(const std::shared_ptr<Client> &client);
    std::shared_ptr<Client> InputClient() const;

    // The voice: one at a time, first come, first served.
    bool TakeVoice(const std::shared_ptr<Cast> &cast);
    void GiveVoiceBack(const Cast &cast);

    int NextSequence() { return ++m_sequence; }
    void Post(std::function<void()> work); // dropped when the engine has gone by then

    Events &m_events;
    FigureMaker &m_figures;
    PropertySheet &m_sheet;
    std::vector<std::weak_ptr<Client>> m_clients;
    std::map<QString, std::weak_ptr<Cast>> m_casts; // by id in lower case
    std::vector<std::weak_ptr<Client>> m_shown;     // clients in the order of their last Show
    std::deque<std::weak_ptr<Cast>> m_voiceQueue;   // the first one is talking
    std::weak_ptr<Cast> m_lastSpeaker;
    QStringList m_voiceCommands;
    struct Departure {
        std::shared_ptr<Cast> cast;
        std::unique_ptr<PendingCall> deadline;
    };
    std::vector<std::shared_ptr<Departure>> m_departures;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    int m_sequence = 0;
};

} // namespace platform
