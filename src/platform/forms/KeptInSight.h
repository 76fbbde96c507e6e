#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>

#include <vector>

class QWidget;

namespace platform {

// Keeps a box where the characters, which lie over everything, leave it to be seen: it is placed at once, in
// the middle of the screen it belongs to or as near to it as they leave it free, and goes aside when one of
// them has come to rest on it. It follows nobody on the way, and nobody while a mouse button is held. Where
// the user puts it, it stays until the characters stand otherwise.
//
// The box has to outlive this. For the thread of the windows only.
class KeptInSight : public QObject {
public:
    explicit KeptInSight(QWidget &box);

private:
    void Look();

    QWidget &m_box;
    QTimer m_look;
    std::vector<QRect> m_seen;    // what was hidden at the last look
    std::vector<QRect> m_settled; // what was hidden when the place was last considered
};

} // namespace platform
