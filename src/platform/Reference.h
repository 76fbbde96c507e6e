#pragma once

#include "platform/Error.h"

#include <memory>

namespace platform {

// A reference that may be null and is read on purpose: the arrow of a null one raises
// kObjectNotSet (91). Shares ownership of what it refers to.
template <class T>
class Reference {
public:
    Reference() = default;
    Reference(std::nullptr_t) {}
    Reference(std::shared_ptr<T> target) : m_target(std::move(target)) {}

    T *operator->() const
    {
        if (!m_target)
            throw Error(kObjectNotSet);
        return m_target.get();
    }

    bool IsNothing() const { return m_target == nullptr; }
    friend bool operator==(const Reference &left, const Reference &right)
    {
        return left.m_target == right.m_target;
    }

private:
    std::shared_ptr<T> m_target;
};

} // namespace platform
