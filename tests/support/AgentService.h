#pragma once

#include "platform/Error.h"
#include "platform/agent/AgentEngine.h"
#include "support/FakeSheet.h"
#include "support/FakeStage.h"
#include "support/FakeTime.h"

#include <memory>

namespace support {

// A running speaking-character service for a contract test: the engine over one kind of figures, in a time
// that the test lets pass.
class AgentService {
public:
    virtual ~AgentService() = default;
    virtual platform::FigureMaker &Figures() = 0;

    // What the user does with the visible figure of that character; nothing when there is none.
    virtual void BeginDrag(const QString &id) = 0;
    virtual void EndDrag(const QString &id) = 0;
    virtual void HideByMenu(const QString &id) = 0;

    // Every Speak fails with that number, of the audio device or of the speech engine; 0 mends it.
    virtual void BreakVoice(qint32 number) = 0;
    // How many figures are talking now, and how many are there to be seen.
    virtual int Talking() const = 0;
    virtual int Seen() const = 0;

    // Lets time pass until `reached`; false when it never is.
    bool Until(const std::function<bool()> &reached)
    {
        for (int step = 0; step < 10000 && !reached(); ++step)
            time.Run(std::chrono::milliseconds(20));
        return reached();
    }
    void Pass(std::chrono::milliseconds span) { time.Run(span); }
    // Delivers what is pending now.
    void Settle() { time.PumpPending(); }

    platform::AgentEngine &Engine()
    {
        if (!m_engine)
            m_engine = std::make_unique<platform::AgentEngine>(time, Figures(), sheet);
        return *m_engine;
    }

    FakeTime time;
    FakeSheet sheet;

protected:
    std::unique_ptr<platform::AgentEngine> m_engine;
};

class FakeAgentService : public AgentService {
public:
    ~FakeAgentService() override { m_engine.reset(); }
    platform::FigureMaker &Figures() override { return stage; }

    void BeginDrag(const QString &id) override { Drag(id, true); }
    void EndDrag(const QString &id) override { Drag(id, false); }
    void HideByMenu(const QString &id) override
    {
        time.Post([this, id] {
            if (FakeFigure *figure = stage.Of(id); figure && figure->Visible())
                figure->hideAsked(true);
        });
    }
    void BreakVoice(qint32 number) override { stage.SetSpeechFailure(number); }
    int Talking() const override { return stage.Talking(); }
    int Seen() const override { return stage.Seen(); }

    FakeStage stage{ time };

private:
    void Drag(const QString &id, bool begins)
    {
        time.Post([this, id, begins] {
            if (FakeFigure *figure = stage.Of(id); figure && (figure->Visible() || !begins))
                figure->dragged(begins);
        });
    }
};

} // namespace support
