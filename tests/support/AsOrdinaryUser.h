#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace support {

// Rights bind everybody but the superuser, so the superuser steps down for a while.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() : m_user(geteuid())
    {
        if (m_user == 0 && seteuid(65534) != 0)
            qFatal("cannot step down");
    }
    ~AsOrdinaryUser()
    {
        if (seteuid(m_user) != 0)
            qFatal("cannot step up");
    }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;

private:
    uid_t m_user;
};

} // namespace support
