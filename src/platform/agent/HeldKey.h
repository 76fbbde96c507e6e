#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace platform {

// Tells of a key of this program's windows: down and up, each once, and lost when another program is in
// front. The repetitions of a key that is held look like short releases on some desktops; those are not told.
class HeldKey final : public QObject {
public:
    // `key` as in Qt::Key. All three calls have to be set before the key is used; they come from the event
    // loop.
    explicit HeldKey(int key);
    std::function<void()> down;
    std::function<void()> up;
    std::function<void()> lost;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const int m_key;
    bool m_isDown = false;
    QTimer m_released; // runs until the release is certain
};

} // namespace platform
