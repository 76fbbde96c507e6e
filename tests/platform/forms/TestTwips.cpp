#include "platform/forms/Twips.h"

#include <QLabel>
#include <QTest>

// Places and sizes in twips.
class TestTwips : public QObject {
    Q_OBJECT
private slots:
    void twipsAreFifteenToTheUnitWithinTheContainer();
};

void TestTwips::twipsAreFifteenToTheUnitWithinTheContainer()
{
    QWidget window;
    window.move(1000, 1000);
    QWidget frame(&window);
    frame.move(500, 500);
    QLabel label(&frame);
    label.setGeometry(10, -2, 97, 33);
    const platform::TwipsRect twips = platform::Twips(label);
    QCOMPARE(twips.left, 150);
    QCOMPARE(twips.top, -30);
    QCOMPARE(twips.width, 1455);
    QCOMPARE(twips.height, 495);
}

QTEST_MAIN(TestTwips)
#include "TestTwips.moc"
