#pragma once

#include <QString>

namespace platform {

// Help windows. They belong to the desktop, not to a screen. No member raises an error.
class Help {
public:
    virtual ~Help() = default;
    // Opens `topic` of the compiled help file `file`; a missing file or topic is told in the help window
    // itself.
    virtual void ShowTopic(const QString &file, const QString &topic) = 0;
    virtual void CloseAll() = 0;
};

} // namespace platform
