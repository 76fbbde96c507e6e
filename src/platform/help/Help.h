#pragma once

#include <QString>

namespace platform {

// The help window. It belongs to the desktop, not to a screen: screens stay usable beside it.
//
// Called from the thread of the user interface, at any time. No member raises an error, waits, or lets events
// run.
class Help {
public:
    virtual ~Help() = default;
    // Shows `topic` of the compiled help file `file` and brings the window to the front. A window that is
    // open already turns to the topic. What is wrong with a missing or damaged file, or a missing topic, is
    // told in the window itself.
    virtual void ShowTopic(const QString &file, const QString &topic) = 0;
    // Closes what is open, whoever opened it. The next window begins without the pages visited before.
    virtual void CloseAll() = 0;
};

} // namespace platform
