#pragma once

#include "platform/agent/Agent.h"
#include "platform/agent/Figure.h"

#include <deque>
#include <memory>
#include <vector>

namespace platform {

class AgentEngine;
class Client;

enum class Operation { Show, Hide, Play, Speak, MoveTo, GestureAt };

// A request with what its operation needs.
class QueuedRequest : public Request {
public:
    explicit QueuedRequest(Operation kind) : operation(kind) {}

    Integer16 Status() const override { return m_status; }
    qint32 Number() const override { return m_number; }
    QString Description() const override;

    const Operation operation;
    bool fast = false; // Show and Hide
    QString name;      // Play
    SpeechText text;   // Speak
    QString tagged;    // Speak, as passed
    bool noBalloon = false;
    QPoint point;                  // MoveTo and GestureAt
    int speed = 0;                 // MoveTo, milliseconds
    const Client *owner = nullptr; // null for what the user asked for; only compared
    std::weak_ptr<Client> client;  // gets the events
    int sequence = 0;

    bool HasEnded() const { return m_status != kRequestQueued && m_status != kRequestRunning; }
    bool IsRunning() const { return m_status == kRequestRunning; }
    void Begin() { m_status = kRequestRunning; }
    void End(RequestStatus status, qint32 number);

private:
    RequestStatus m_status = kRequestQueued;
    qint32 m_number = 0;
};

// One character on the service's side: its figure and its queue, shared by all clients that loaded it.
class Cast : public std::enable_shared_from_this<Cast> {
public:
    Cast(AgentEngine &engine, std::weak_ptr<bool> engineAlive, QString id, std::unique_ptr<Figure> figure);
    ~Cast();
    // Takes the figure's calls; to be called once the object is held by a shared pointer.
    void Connect();

    using RequestPointer = std::shared_ptr<QueuedRequest>;

    RequestPointer Enqueue(RequestPointer request);
    void Stop();
    // Raises kRequestNotInQueue for one that this character does not hold.
    void Stop(const Request *request);
    void StopAll();
    void StopAll(const QString &types);
    // Whether that request is running or waiting here.
    bool Holds(const Request *request) const;
    // Whether a Hide is running or waiting.
    bool HasHide() const;
    // Ends the requests of `client`, which may be on its way out.
    void RemoveRequestsOf(const Client &client);
    // Ends all requests, whoever made them; nothing comes after them.
    void RemoveAllRequests();
    // Ends all requests and plays a Hide out, the one that runs or a new one; then `gone` is called. Nobody
    // can ask for anything any more.
    void Depart(std::function<void()> gone);

    // What the user asks for in a menu stands behind the present work like any other request.
    void AskByUser(bool hide);
    // Whether the character is hidden because the user wanted it.
    bool HiddenByUser() const { return m_hiddenByUser; }

    void SetBalloonVisible(bool visible);
    // The voice is free for this character's waiting Speak.
    void VoiceIsFree();

    const QString &Id() const { return m_id; }
    bool Visible() const { return m_visible; }
    Figure &Body() { return *m_figure; }
    const Figure &Body() const { return *m_figure; }

    int holders = 0; // clients that have loaded this character

private:
    void Advance();
    void BeginHead();
    void BeginMove(const RequestPointer &request);
    void BeginGesture(const RequestPointer &request);
    void BeginSpeech(const RequestPointer &request);
    void Perform(const RequestPointer &request, const QString &motion, std::function<void()> then = {});
    Figure::Done Completion(const RequestPointer &request, std::function<void()> then = {});
    void EndHead(RequestStatus status, qint32 number);
    void Conclude(const RequestPointer &request, RequestStatus status, qint32 number);
    void Interrupt(qint32 number);
    void EndAll(qint32 number);
    void RestIfIdle();
    void RemoveWaiting(const std::function<bool(const QueuedRequest &)> &which);
    bool IsHiding() const;
    void Trace(const QueuedRequest &request) const;
    void TraceCall(const QString &call) const;

    AgentEngine &m_engine;
    const QString m_id;
    std::unique_ptr<Figure> m_figure;
    std::deque<RequestPointer> m_queue; // the first one runs
    std::weak_ptr<QueuedRequest> m_latestSpeech;
    SpeechText m_lastLine;       // of the last Speak that began
    RequestPointer m_heldByDrag; // a move that has become head while the user drags
    bool m_visible = false;
    bool m_hiddenByUser = false;
    bool m_dragging = false;
    bool m_balloonOffNext = false;
    bool m_advancing = false;
    bool m_departing = false;
    std::function<void()> m_departed;
    std::weak_ptr<bool> m_engineAlive;
};

} // namespace platform
