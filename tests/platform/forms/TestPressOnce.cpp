#include "platform/forms/EnterKey.h"
#include "platform/forms/MultiLineBox.h"
#include "platform/forms/PressOnce.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <QWindow>
#include <memory>

using platform::MultiLineBox;
using platform::PressOnce;

class TestPressOnce : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_line = new QLineEdit(m_window.get());
        m_lines = new MultiLineBox(m_window.get());
        auto *button = new QPushButton("&Go", m_window.get());
        connect(button, &QPushButton::clicked, this, [this] { ++m_clicks; });
        platform::InstallEnterKey(*m_window, button);
        m_clicks = 0;
        m_moment = 1000;
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_line->setFocus();
    }
    void cleanup() { m_window.reset(); }

    void aHeldEnterPressesOnce_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("beside the letters") << Qt::Key_Return;
        QTest::newRow("beside the numbers") << Qt::Key_Enter;
    }
    void aHeldEnterPressesOnce()
    {
        QFETCH(Qt::Key, key);
        const PressOnce once;
        Send(QEvent::KeyPress, key, "\r", false);
        QCOMPARE(m_clicks, 1);
        for (int time = 0; time < 5; ++time)
            Send(QEvent::KeyPress, key, "\r", true);
        QCOMPARE(m_clicks, 1);
        // Let go and pressed again.
        Send(QEvent::KeyPress, key, "\r", false);
        QCOMPARE(m_clicks, 2);
    }

    // As a display tells it that is slow to send the second half.
    void aPressInTheMomentOfTheReleaseIsARepetition()
    {
        const PressOnce once;
        Send(QEvent::KeyPress, Qt::Key_Return, "\r", false);
        for (int time = 0; time < 5; ++time) {
            m_moment += 40;
            Send(QEvent::KeyRelease, Qt::Key_Return, "\r", false);
            Send(QEvent::KeyPress, Qt::Key_Return, "\r", false);
        }
        QCOMPARE(m_clicks, 1);
        Send(QEvent::KeyRelease, Qt::Key_Return, "\r", false);
        ++m_moment;
        Send(QEvent::KeyPress, Qt::Key_Return, "\r", false);
        QCOMPARE(m_clicks, 2);
        Send(QEvent::KeyRelease, Qt::Key_Return, "\r", false);
        Send(QEvent::KeyPress, Qt::Key_Enter, "\r", false); // another key
        QCOMPARE(m_clicks, 3);
    }

    // Who does without it meets what it is for.
    void withoutItEnterGoesOn()
    {
        for (int time = 0; time < 5; ++time)
            Send(QEvent::KeyPress, Qt::Key_Return, "\r", true);
        QCOMPARE(m_clicks, 5);
    }

    void aHeldLetterWithAltIsNeitherAShortcutNorText()
    {
        const PressOnce once;
        QVERIFY(!Send(QEvent::ShortcutOverride, Qt::Key_G, "g", false, Qt::AltModifier));
        QVERIFY(Send(QEvent::ShortcutOverride, Qt::Key_G, "g", true, Qt::AltModifier));
        Send(QEvent::KeyPress, Qt::Key_G, "g", true, Qt::AltModifier);
        QCOMPARE(m_line->text(), QString());
    }

    void whatIsTypedRepeats()
    {
        const PressOnce once;
        for (const bool again : { false, true, true })
            Send(QEvent::KeyPress, Qt::Key_O, "o", again);
        QCOMPARE(m_line->text(), QString("ooo"));
        m_lines->setFocus();
        for (const bool again : { false, true, true })
            Send(QEvent::KeyPress, Qt::Key_Return, "\r", again);
        QCOMPARE(m_lines->Text(), QString("\r\n\r\n\r\n"));
        QCOMPARE(m_clicks, 0);
    }

private:
    // As the display sends it. Whether it was taken.
    bool Send(QEvent::Type type, Qt::Key key, const char *text, bool again,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(type, key, modifiers, QString::fromLatin1(text), again);
        event.setAccepted(type == QEvent::KeyPress);
        event.setTimestamp(m_moment);
        QCoreApplication::sendEvent(m_window->windowHandle(), &event);
        return event.isAccepted();
    }

    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_line = nullptr;
    MultiLineBox *m_lines = nullptr;
    int m_clicks = 0;
    quint64 m_moment = 0;
};

QTEST_MAIN(TestPressOnce)
#include "TestPressOnce.moc"
