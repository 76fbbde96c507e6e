#include "platform/voice/SpeechWorkshop.h"

#include <QMetaObject>
#include <QObject>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

namespace {

// What the thread needs of an order.
struct Job {
    SpeechWorkshop::Make make;
    std::atomic<bool> cancelled = false;
    std::function<void(std::shared_ptr<const Utterance>)> deliver; // called on the thread
};

// An order as the asker holds it. `ready` stays on his thread.
class PendingOrder final : public SpeechEngine::Order {
public:
    PendingOrder(std::shared_ptr<Job> job, std::shared_ptr<SpeechEngine::Ready> ready)
        : m_job(std::move(job)), m_ready(std::move(ready))
    {
    }
    ~PendingOrder() override { m_job->cancelled = true; }

private:
    std::shared_ptr<Job> m_job;
    std::shared_ptr<SpeechEngine::Ready> m_ready;
};

} // namespace

// The thread, its queue, and the place on the asker's thread where lines are handed over.
class SpeechWorkshop::Thread {
public:
    Thread() : m_thread([this] { Work(); }) {}

    ~Thread()
    {
        {
            const std::scoped_lock lock(m_lock);
            m_closing = true;
            if (m_inWork)
                m_inWork->cancelled = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }

    std::unique_ptr<SpeechEngine::Order> Add(Make make, SpeechEngine::Ready ready)
    {
        auto shared = std::make_shared<SpeechEngine::Ready>(std::move(ready));
        auto job = std::make_shared<Job>();
        job->make = std::move(make);
        job->deliver = [this, weak = std::weak_ptr<SpeechEngine::Ready>(shared)](
                           std::shared_ptr<const Utterance> utterance) {
            QMetaObject::invokeMethod(
                &m_counter,
                [weak, utterance = std::move(utterance)] {
                    // The asker may let go of the order in here; what he gave is called to the end all the
                    // same.
                    if (const auto held = weak.lock())
                        if (const auto call = std::exchange(*held, nullptr))
                            call(utterance);
                },
                Qt::QueuedConnection);
        };
        {
            const std::scoped_lock lock(m_lock);
            m_queue.push_back(job);
        }
        m_changed.notify_all();
        return std::make_unique<PendingOrder>(std::move(job), std::move(shared));
    }

private:
    void Work()
    {
        std::unique_lock lock(m_lock);
        while (!m_closing) {
            if (m_queue.empty()) {
                m_changed.wait(lock);
                continue;
            }
            m_inWork = std::move(m_queue.front());
            m_queue.pop_front();
            const auto job = m_inWork;
            lock.unlock();
            if (!job->cancelled)
                Deliver(*job);
            lock.lock();
            m_inWork.reset();
        }
    }

    static void Deliver(const Job &job)
    {
        const auto utterance = job.make(job.cancelled);
        if (!job.cancelled)
            job.deliver(utterance);
    }

    QObject m_counter; // lines are handed over in the event loop of its thread
    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<std::shared_ptr<Job>> m_queue;
    std::shared_ptr<Job> m_inWork;
    bool m_closing = false;
    std::thread m_thread;
};

SpeechWorkshop::SpeechWorkshop() : m_thread(std::make_unique<Thread>()) {}

SpeechWorkshop::~SpeechWorkshop() = default;

std::unique_ptr<SpeechEngine::Order> SpeechWorkshop::Add(Make make, SpeechEngine::Ready ready)
{
    return m_thread->Add(std::move(make), std::move(ready));
}

} // namespace platform
