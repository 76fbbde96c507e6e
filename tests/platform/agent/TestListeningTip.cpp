#include "platform/agent/HeldKey.h"
#include "platform/agent/ListeningTip.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

using namespace platform;

// The sign under the character, and the key that is held.
class TestListeningTip : public QObject {
    Q_OBJECT
private slots:
    void offersItsChoices();
    void standsBelowTheFigureOnTheScreen_data();
    void standsBelowTheFigureOnTheScreen();
    void whatIsOfferedTakesItsRoomAtOnceAndGivesItBack();
    void isReadInAnyStyle();
    void takesNoFocus();
    void theKeyIsToldOnce();
};

void TestListeningTip::offersItsChoices()
{
    ListeningTip tip;
    QList<int> chosen;
    tip.chosen = [&](int index) { chosen << index; };
    tip.Hide();
    tip.Show(QRect(200, 100, 256, 256), "Which one was it?", { "B", "D", "E" });
    QVERIFY(tip.Sign()->isVisible());
    QCOMPARE(tip.Sign()->accessibleName(), QString("Which one was it?"));
    const auto buttons = tip.Sign()->findChildren<QPushButton *>();
    QCOMPARE(buttons.size(), 4);
    for (QPushButton *button : buttons) {
        QVERIFY(button->width() >= 48 && button->height() >= 44);
        QVERIFY(tip.Sign()->rect().contains(button->geometry()));
    }
    QTest::mouseClick(tip.Sign()->findChild<QPushButton *>("choice1"), Qt::LeftButton);
    QTest::mouseClick(tip.Sign()->findChild<QPushButton *>("choice-1"), Qt::LeftButton);
    QCOMPARE(chosen, QList<int>({ 1, -1 }));
    // What was offered before is gone.
    tip.Show(QRect(200, 100, 256, 256), "I heard no letter.", {});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(tip.Sign()->findChildren<QPushButton *>().isEmpty());
    tip.Hide();
    QVERIFY(!tip.Sign()->isVisible());
}

void TestListeningTip::standsBelowTheFigureOnTheScreen_data()
{
    QTest::addColumn<QRect>("figure");
    QTest::addColumn<bool>("below");
    const QSize screen = QGuiApplication::primaryScreen()->size();
    QTest::newRow("in the middle") << QRect(200, 100, 256, 256) << true;
    QTest::newRow("half off the left edge") << QRect(-40, 100, 256, 256) << true;
    QTest::newRow("at the right edge") << QRect(screen.width() - 100, 100, 256, 256) << true;
    QTest::newRow("at the lower edge") << QRect(200, screen.height() - 256, 256, 256) << false;
    QTest::newRow("below the lower edge") << QRect(200, screen.height() - 100, 256, 256) << false;
}

void TestListeningTip::standsBelowTheFigureOnTheScreen()
{
    QFETCH(QRect, figure);
    QFETCH(bool, below);
    ListeningTip tip;
    tip.Show(figure, "Which one was it?", { "B", "D", "E" });
    const QRect sign = tip.Sign()->geometry();
    QVERIFY(QGuiApplication::primaryScreen()->geometry().contains(sign));
    QCOMPARE(sign.top() > figure.bottom(), below);
}

void TestListeningTip::whatIsOfferedTakesItsRoomAtOnceAndGivesItBack()
{
    const QRect figure(200, QGuiApplication::primaryScreen()->size().height() - 256, 256, 256);
    ListeningTip fresh;
    fresh.Show(figure, "Let me think.", {});
    ListeningTip tip;
    tip.Show(figure, "Which one was it?", { "B", "D", "E" });
    const QRect offer = tip.Sign()->geometry();
    tip.Show(figure, "Which one was it?", { "P", "T", "G" });
    QCOMPARE(tip.Sign()->geometry(), offer);
    tip.Show(figure, "Let me think.", {});
    QCOMPARE(tip.Sign()->geometry(), fresh.Sign()->geometry());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCOMPARE(tip.Sign()->geometry(), fresh.Sign()->geometry());
    tip.Show(figure, "Which one was it?", { "M", "N" });
    const QRect two = tip.Sign()->geometry();
    QCoreApplication::processEvents();
    QCOMPARE(tip.Sign()->geometry(), two);
    QVERIFY(QGuiApplication::primaryScreen()->geometry().contains(two));
    for (const QPushButton *button : tip.Sign()->findChildren<QPushButton *>())
        QVERIFY(tip.Sign()->rect().contains(button->geometry()));
}

void TestListeningTip::isReadInAnyStyle()
{
    qApp->setStyleSheet("QLabel { color: white; font-size: 9px; }");
    ListeningTip tip;
    tip.Show(QRect(200, 100, 256, 256), "I am listening.", {});
    auto *text = tip.Sign()->findChild<QLabel *>();
    const QImage seen = tip.Sign()->grab().toImage();
    int dark = 0;
    for (int y = text->y(); y < text->geometry().bottom(); ++y) {
        for (int x = text->x(); x < text->geometry().right(); ++x)
            dark += seen.pixelColor(x, y).lightness() < 90;
    }
    qApp->setStyleSheet(QString());
    QVERIFY2(dark > 150, qPrintable(QString::number(dark)));
}

void TestListeningTip::takesNoFocus()
{
    QLineEdit answer;
    answer.show();
    answer.activateWindow();
    answer.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&answer));
    ListeningTip tip;
    tip.Show(QRect(200, 100, 256, 256), "Which one was it?", { "B" });
    QTest::mouseClick(tip.Sign()->findChild<QPushButton *>("choice0"), Qt::LeftButton);
    QVERIFY(answer.hasFocus());
}

void TestListeningTip::theKeyIsToldOnce()
{
    QLineEdit answer;
    answer.show();
    QVERIFY(QTest::qWaitForWindowActive(&answer));
    HeldKey key(Qt::Key_ScrollLock);
    QStringList told;
    key.down = [&] { told << "down"; };
    key.up = [&] { told << "up"; };
    key.lost = [&] { told << "lost"; };
    QWindow *window = answer.windowHandle();
    QTest::keyPress(window, Qt::Key_ScrollLock);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_ScrollLock, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&answer, &repeated);
    QTest::keyPress(window, Qt::Key_B);
    QTest::keyRelease(window, Qt::Key_B);
    // A repetition that does not say so.
    for (int repetition = 0; repetition < 3; ++repetition) {
        QTest::keyRelease(window, Qt::Key_ScrollLock);
        QTest::keyPress(window, Qt::Key_ScrollLock);
    }
    QCOMPARE(told, QStringList{ "down" });
    QTest::keyRelease(window, Qt::Key_ScrollLock);
    QTRY_COMPARE(told, QStringList({ "down", "up" }));
    QCOMPARE(answer.text(), QString("b"));
    told.clear();
    QTest::keyPress(window, Qt::Key_ScrollLock);
    emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    QTest::keyRelease(window, Qt::Key_ScrollLock);
    QCOMPARE(told, QStringList({ "down", "lost" }));
    bool later = false;
    QTimer::singleShot(150, [&] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(told, QStringList({ "down", "lost" }));
}

QTEST_MAIN(TestListeningTip)
#include "TestListeningTip.moc"
