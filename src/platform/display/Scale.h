#pragma once

#include <QByteArray>
#include <QSize>

#include <vector>

namespace platform {

// How much larger everything is drawn on a display of that many pixels: the largest quarter step that leaves
// at least 1024 x 768 units, never less than 1.
double ScaleFor(const QSize &display);

// The window system and the scale that the application object is to be made with, chosen by the display and
// told to it by Qt's own variables. They stand in the environment as long as this object lives, which is
// until the application object is there: programs that are started later would take them over. What the user
// has set is left as it is.
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
    std::vector<const char *> m_set; // the variables that have to go again
};

} // namespace platform
