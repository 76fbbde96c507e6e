#include "platform/Services.h"

#include <QtGlobal>

namespace platform {

namespace {
Services *g_services = nullptr;
}

void InstallServices(Services *services)
{
    g_services = services;
}

Services &The()
{
    Q_ASSERT_X(g_services, "platform::The", "no services are installed");
    return *g_services;
}

} // namespace platform
