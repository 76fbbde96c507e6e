#pragma once

#include "platform/agent/StageWindow.h"
#include "platform/agent/VoiceSpelling.h"

#include <QTimer>

namespace platform {

// The tip on the screen: a small sign below the figure, or above it where the screen ends.
class ListeningTip final : public SpellingTip {
public:
    ListeningTip();
    ~ListeningTip() override;

    void Show(const QRect &frame, const QString &text, const QStringList &choices) override;
    void Hide() override;

    class Window;
    QWidget *Sign() const; // null before it was first shown

private:
    std::unique_ptr<Window> m_window;
};

// Tells of a key of this program's windows: down and up, each once, and lost when another program is in
// front. The repetitions of a key that is held look like short releases on some desktops; those are not told.
class HeldKey final : public QObject {
public:
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
