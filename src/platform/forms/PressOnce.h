#pragma once

#include <QObject>

class QKeyEvent;

namespace platform {

// Keeps a key that is held from pressing again and again: Enter, and letters with Alt. A child who leans on
// Enter would answer some thirty times a second, and be told so each time. Where Enter is text, it repeats.
// As long as it lives it holds for all windows; the application object has to be there before it.
class PressOnce : public QObject {
public:
    PressOnce();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool IsRepetition(const QKeyEvent &press) const;

    int m_releasedKey = 0;
    quint64 m_releasedAt = 0; // by the display's clock
};

} // namespace platform
