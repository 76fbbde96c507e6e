#pragma once

#include <QObject>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

// A thread on which things are made one after the other, in the order in which they were asked for. To be
// made and used by the program's one thread; its destruction cancels everything that is still to come and
// waits for the work in hand, which should look at `cancelled` often.
class Workshop {
public:
    using Cancelled = std::atomic<bool>;

    Workshop();
    ~Workshop();
    Workshop(const Workshop &) = delete;
    Workshop &operator=(const Workshop &) = delete;

    // Calls `make` on the thread, with a Cancelled, and `ready` with what it gave, once, from the event loop.
    // Destroying the result, an `Order` as services have it, cancels: `ready` is then not called. It may be
    // destroyed by `ready` itself.
    template <typename Order, typename Make, typename Ready>
    [[nodiscard]] std::unique_ptr<Order> Add(Make make, Ready ready)
    {
        const auto cancelled = std::make_shared<Cancelled>(false);
        // What the asker gave is called and destroyed on his own thread alone.
        const auto kept = std::make_shared<Ready>(std::move(ready));
        auto work = [make = std::move(make),
                     weak = std::weak_ptr<Ready>(kept)](const Cancelled &stop) -> std::function<void()> {
            return [weak, made = make(stop)] {
                if (const auto held = weak.lock())
                    (*held)(made);
            };
        };
        AddJob({ std::move(work), cancelled });
        return std::make_unique<Held<Order, Ready>>(cancelled, kept);
    }

private:
    // Does the work and gives what is to be called in the event loop.
    struct Job {
        std::function<std::function<void()>(const Cancelled &)> work;
        std::shared_ptr<Cancelled> cancelled;
    };

    template <typename Order, typename Ready>
    class Held final : public Order {
    public:
        Held(std::shared_ptr<Cancelled> cancelled, std::shared_ptr<Ready> ready)
            : m_cancelled(std::move(cancelled)), m_ready(std::move(ready))
        {
        }
        ~Held() override { *m_cancelled = true; }

    private:
        const std::shared_ptr<Cancelled> m_cancelled;
        const std::shared_ptr<Ready> m_ready;
    };

    void AddJob(Job job);
    void Work();

    QObject m_counter; // things are handed over in the event loop of its thread
    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<Job> m_queue;
    std::shared_ptr<Cancelled> m_inWork;
    bool m_closing = false;
    std::thread m_thread; // the last, so that it finds all the others
};

} // namespace platform
