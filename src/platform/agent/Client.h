#pragma once

#include "platform/agent/Agent.h"
#include "platform/agent/Cast.h"

#include <map>
#include <set>

namespace platform {

class AgentEngine;

// A connection to the engine.
class Client final : public AgentControl, public std::enable_shared_from_this<Client> {
public:
    explicit Client(AgentEngine &engine, std::weak_ptr<bool> engineAlive);
    ~Client() override;

    bool Connected() const override;
    void Load(const QString &id, const QString &file) override;
    CharacterReference Character(const QString &id) override;
    void AddCommand(const AgentCommand &offer) override;
    void RemoveCommand(const QString &name) override;
    const std::vector<AgentCommand> &Commands() const { return m_commands; }
    PropertySheet &Sheet() override { return m_sheet; }
    void Disconnect() override;

    // Raises the number that a call on a lost connection gets.
    void RequireConnection() const;

    void PostStart(const std::shared_ptr<QueuedRequest> &request);
    void PostComplete(const std::shared_ptr<QueuedRequest> &request);
    const std::map<QString, std::shared_ptr<Cast>> &Casts() const { return m_casts; }
    void Forget() { m_casts.clear(); }

private:
    // The sheet as this client reaches it, until it is disconnected.
    class ClientSheet : public PropertySheet {
    public:
        explicit ClientSheet(const Client &owner) : m_owner(owner) {}
        void SetVisible(bool visible) override;
        bool Visible() const override { return Held().Visible(); }
        QString Page() const override { return Held().Page(); }
        void SetPage(const QString &page) override { Held().SetPage(page); }
        Integer16 Left() const override { return Held().Left(); }
        Integer16 Top() const override { return Held().Top(); }
        Integer16 Width() const override { return Held().Width(); }
        Integer16 Height() const override { return Held().Height(); }

    private:
        PropertySheet &Held() const;
        const Client &m_owner;
    };

    using RequestHandler = std::function<void(const RequestReference &)>;
    void PostTo(RequestHandler AgentControl::*handler, const std::shared_ptr<QueuedRequest> &request);

    AgentEngine &m_engine;
    std::weak_ptr<bool> m_engineAlive;
    ClientSheet m_sheet{ *this };
    bool m_connected = true;
    std::vector<AgentCommand> m_commands;
    std::map<QString, std::shared_ptr<Cast>> m_casts; // by id in lower case
    std::set<QString> m_taken;                        // ids of loads that failed among them
};

// A character as one client holds it.
class ClientCharacter : public Character {
public:
    ClientCharacter(std::shared_ptr<Client> client, std::weak_ptr<Cast> cast);

    RequestReference Show(bool fast) override;
    RequestReference Hide(bool fast) override;
    RequestReference Play(const QString &animation) override;
    RequestReference Speak(const QString &text) override;
    RequestReference MoveTo(Integer16 x, Integer16 y, int speed) override;
    RequestReference GestureAt(Integer16 x, Integer16 y) override;
    void Stop() override;
    void Stop(const RequestReference &request) override;
    void StopAll() override;
    void StopAll(const QString &types) override;
    Integer16 Left() const override;
    Integer16 Top() const override;
    Integer16 Width() const override;
    Integer16 Height() const override;
    void SetWidth(Integer16 width) override;
    void SetHeight(Integer16 height) override;
    bool Visible() const override;
    Balloon &WordBalloon() override;

private:
    class CharacterBalloon : public Balloon {
    public:
        explicit CharacterBalloon(ClientCharacter &owner) : m_owner(owner) {}
        void SetVisible(bool visible) override;
        bool Visible() const override;

    private:
        ClientCharacter &m_owner;
    };

    std::shared_ptr<Cast> Held() const; // raises when the connection has gone
    RequestReference Enqueue(std::shared_ptr<QueuedRequest> request);
    void SetSize(const QSize &size);

    std::shared_ptr<Client> m_client;
    std::weak_ptr<Cast> m_cast;
    CharacterBalloon m_balloon{ *this };
};

} // namespace platform
