#pragma once

#include "platform/voice/Microphone.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace platform {

// Understands single letters that somebody says, without any other computer. To be used by the program's one
// thread; the work is done on another.
class LetterRecogniser {
public:
    virtual ~LetterRecogniser() = default;

    // Why nothing can be understood on this machine, in a sentence for the user; empty when it can.
    virtual QString Obstacle() const = 0;

    // Gets ready for an order that will come soon, so that it need not wait; takes no time here.
    virtual void Prepare() = 0;

    // An order on its way. Destroying it cancels: nothing is called then.
    class Order {
    public:
        virtual ~Order() = default;
    };
    // The names of what may have been said, the likeliest first: "a" to "z", and "go" for the words "go
    // ahead". At most three; none when nothing was said, or nothing can be understood.
    using Ready = std::function<void(const QStringList &names)>;
    // Calls `ready` once from the event loop, never inside the call. `samples` are 16-bit signed, one
    // channel, at kSpeechRate.
    [[nodiscard]] virtual std::unique_ptr<Order> Recognise(QByteArray samples, Ready ready) = 0;
};

// The names of all that can be said, in the order of the alphabet and "go" behind.
const QStringList &SpokenNames();

} // namespace platform
