#include "platform/forms/GuardedCall.h"

#include "platform/forms/Screen.h"
#include "platform/forms/ScreenStack.h"

namespace platform {

GuardedCall::GuardedCall(std::weak_ptr<Screen> screen, QObject *window, std::function<void()> handler)
    : m_screen(std::move(screen)), m_window(window),
      m_handler(std::make_shared<const std::function<void()>>(std::move(handler)))
{
}

void GuardedCall::operator()() const
{
    auto screen = m_screen.lock();
    if (!screen || !IsAlive())
        return;
    const auto handler = m_handler; // the handler may do away with this call
    ScreenStack::Instance().Run(std::move(screen), *handler);
}

} // namespace platform
