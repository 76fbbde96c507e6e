#include "platform/voice/Workshop.h"

#include <QMetaObject>

namespace platform {

Workshop::Workshop() : m_thread([this] { Work(); }) {}

Workshop::~Workshop()
{
    {
        const std::scoped_lock lock(m_lock);
        m_closing = true;
        if (m_inWork)
            *m_inWork = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Workshop::AddJob(Job job)
{
    {
        const std::scoped_lock lock(m_lock);
        m_queue.push_back(std::move(job));
    }
    m_changed.notify_all();
}

void Workshop::Work()
{
    std::unique_lock lock(m_lock);
    while (true) {
        m_changed.wait(lock, [this] { return m_closing || !m_queue.empty(); });
        if (m_closing)
            return;
        const Job job = std::move(m_queue.front());
        m_queue.pop_front();
        m_inWork = job.cancelled;
        lock.unlock();
        // What is cancelled while it is made finds nobody to be handed to.
        if (!*job.cancelled)
            QMetaObject::invokeMethod(&m_counter, job.work(*job.cancelled), Qt::QueuedConnection);
        lock.lock();
        m_inWork.reset();
    }
}

} // namespace platform
