#pragma once

#include "platform/agent/AgentEngine.h"
#include "support/FakeStage.h"
#include "support/FakeTime.h"

#include <QElapsedTimer>

#include <memory>

namespace support {

// A running speaking-character service for a contract test: the engine over one kind of figures.
class AgentService {
public:
    virtual ~AgentService() = default;
    virtual platform::Events &Loop() = 0;
    virtual platform::FigureMaker &Figures() = 0;

    // Lets time pass until `reached`; false when it never is.
    virtual bool Until(const std::function<bool()> &reached) = 0;
    // Delivers what is pending now.
    void Settle() { Loop().PumpPending(); }

    platform::AgentEngine &Engine()
    {
        if (!m_engine)
            m_engine = std::make_unique<platform::AgentEngine>(Loop(), Figures());
        return *m_engine;
    }

protected:
    std::unique_ptr<platform::AgentEngine> m_engine;
};

class FakeAgentService : public AgentService {
public:
    ~FakeAgentService() override { m_engine.reset(); }
    platform::Events &Loop() override { return time; }
    platform::FigureMaker &Figures() override { return stage; }
    bool Until(const std::function<bool()> &reached) override
    {
        for (int step = 0; step < 10000 && !reached(); ++step)
            time.Run(std::chrono::milliseconds(20));
        return reached();
    }

    FakeTime time;
    FakeStage stage{ time };
};

} // namespace support
