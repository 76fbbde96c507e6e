#pragma once

#include "platform/agent/VoiceSpelling.h"

class QWidget;

namespace platform {

// The tip on the screen: a small sign below the figure, or above it where the screen ends.
class ListeningTip final : public SpellingTip {
public:
    ListeningTip();
    ~ListeningTip() override;

    void Show(const QRect &frame, const QString &text, const QStringList &choices) override;
    void Hide() override;

    QWidget *Sign() const; // null before it was first shown

private:
    class Window;
    std::unique_ptr<Window> m_window;
};

} // namespace platform
