#include "support/FakeTime.h"

#include "platform/system/Process.h"

#include <QCoreApplication>

#include <cmath>

namespace support {

class FakeTime::Handle : public platform::PendingCall {
public:
    explicit Handle(std::shared_ptr<std::function<void()>> work) : m_work(std::move(work)) {}

private:
    std::shared_ptr<std::function<void()>> m_work;
};

FakeTime::FakeTime() = default;
FakeTime::~FakeTime() = default;

void FakeTime::Pump()
{
    if (m_ended)
        throw platform::ProgramEnded{};
    if (DeliverPending() || DeliverNext(std::chrono::milliseconds::max())) {
        m_idlePolls = 0;
    } else {
        ++m_idlePolls;
        auto [first, last] = m_idleWork.equal_range(m_idlePolls);
        std::vector<std::function<void()>> work;
        for (auto entry = first; entry != last; ++entry)
            work.push_back(entry->second);
        m_idleWork.erase(first, last);
        for (auto &item : work)
            item();
        if (m_idlePolls >= kIdlePolls && m_idleWork.empty()) {
            m_hung = true;
            m_ended = true;
        }
    }
    if (m_ended)
        throw platform::ProgramEnded{};
}

void FakeTime::PumpPending()
{
    if (m_ended)
        throw platform::ProgramEnded{};
    DeliverPending();
    if (m_ended)
        throw platform::ProgramEnded{};
}

void FakeTime::Post(std::function<void()> work)
{
    m_posted.push_back(std::move(work));
}

std::unique_ptr<platform::PendingCall> FakeTime::After(std::chrono::milliseconds delay,
                                                       std::function<void()> work)
{
    auto shared = std::make_shared<std::function<void()>>(std::move(work));
    m_due.emplace(m_now + std::max(delay, std::chrono::milliseconds(0)), Due{ shared });
    return std::make_unique<Handle>(std::move(shared));
}

double FakeTime::SecondsSinceMidnight() const
{
    return std::fmod(m_start + static_cast<double>(m_now.count()) / 1000.0, 24 * 3600.0);
}

void FakeTime::AfterIdlePolls(int polls, std::function<void()> work)
{
    m_idlePolls = 0;
    m_idleWork.emplace(polls, std::move(work));
}

void FakeTime::Run(std::chrono::milliseconds span)
{
    const auto end = m_now + span;
    while (!m_ended && (DeliverPending() || DeliverNext(end))) {
    }
    m_now = std::max(m_now, end);
}

bool FakeTime::RunUntilIdle(std::chrono::milliseconds limit)
{
    const auto end = m_now + limit;
    while (!m_ended && (DeliverPending() || DeliverNext(end))) {
    }
    std::erase_if(m_due, [](const auto &due) { return due.second.work.expired(); }); // cancelled
    return m_posted.empty() && (m_ended || m_due.empty());
}

bool FakeTime::DeliverPending()
{
    bool delivered = false;
    if (QCoreApplication::instance())
        QCoreApplication::sendPostedEvents();
    // What is posted meanwhile waits for the next pass, as in the real loop.
    for (auto left = m_posted.size(); left > 0 && !m_posted.empty(); --left) {
        auto work = std::move(m_posted.front());
        m_posted.pop_front();
        work();
        delivered = true;
    }
    return delivered;
}

bool FakeTime::DeliverNext(std::chrono::milliseconds until)
{
    while (!m_due.empty()) {
        const auto next = m_due.begin();
        if (next->first > until)
            return false;
        const auto work = next->second.work.lock();
        if (work)
            m_now = std::max(m_now, next->first);
        m_due.erase(next);
        if (work) {
            (*work)();
            return true;
        }
    }
    return false;
}

} // namespace support
