#pragma once

#include <QByteArray>
#include <QSize>

#include <utility>
#include <vector>

namespace platform {

// How much larger everything is drawn on a display of that many pixels: the largest quarter step that leaves
// at least 1024 x 768 units, never less than 1.
double ScaleFor(const QSize &display);

// The window system and the scale that the application object is to be made with, told to it by Qt's own
// variables. The primary display alone decides on the scale, not how many dots to the inch the desktop counts
// on, nor what lies beside the display. The variables stand in the environment as long as this object lives,
// which is until the application object is there: programs that are started later would take them over. A
// window system or a scale that the user has set is left as it is.
class DisplayChoice {
public:
    DisplayChoice();
    ~DisplayChoice();
    DisplayChoice(const DisplayChoice &) = delete;
    DisplayChoice &operator=(const DisplayChoice &) = delete;

    // False when there is no display at all; nothing is chosen then.
    bool HasDisplay() const { return m_hasDisplay; }

private:
    void Set(const char *variable, const QByteArray &value);

    bool m_hasDisplay = true;
    std::vector<std::pair<const char *, QByteArray>> m_before; // of the variables; null where there was none
};

} // namespace platform
