#include "platform/forms/Backdrop.h"

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

using platform::Backdrop;

// A drawing of 200 by 100 behind the controls of a widget.
class TestBackdrop : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    // Green back with a red mark in its middle, a blue half on the left that stretches, and black and white
    // marks at the edges, the white one for the spare room.
    QString Drawing()
    {
        const QString path = m_folder.filePath("drawing.svg");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 200 100'>"
                   "<g id='back'><rect width='200' height='100' fill='#00ff00'/>"
                   "<rect x='90' y='40' width='20' height='20' fill='#ff0000'/></g>"
                   "<g id='wide'><rect x='0' y='80' width='100' height='20' fill='#0000ff'/></g>"
                   "<g id='left'><rect x='10' y='0' width='10' height='10' fill='#000000'/></g>"
                   "<g id='spare'><rect x='180' y='0' width='10' height='10' fill='#ffffff'/></g></svg>");
        return path;
    }

    static QImage Grab(QWidget &widget, int width, int height)
    {
        widget.resize(width, height);
        return widget.grab().toImage();
    }

private slots:
    void atItsOwnProportionsItIsPaintedWhole()
    {
        QWidget widget;
        Backdrop::Install(widget, Drawing());
        const QImage image = Grab(widget, 400, 200);
        QCOMPARE(image.pixelColor(5, 100), QColor(Qt::green));
        QCOMPARE(image.pixelColor(200, 100), QColor(Qt::red));
        QCOMPARE(image.pixelColor(190, 180), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(210, 180), QColor(Qt::green));
        QCOMPARE(image.pixelColor(30, 10), QColor(Qt::black));
        QCOMPARE(image.pixelColor(370, 10), QColor(Qt::white));
    }

    void aNarrowWidgetCutsTheBackStretchesTheWideAndHasNothingToSpare()
    {
        QWidget widget;
        Backdrop::Install(widget, Drawing());
        const QImage image = Grab(widget, 200, 200);
        QCOMPARE(image.pixelColor(100, 100), QColor(Qt::red));
        QCOMPARE(image.pixelColor(75, 100), QColor(Qt::green)); // the mark is as wide as it is high
        QCOMPARE(image.pixelColor(95, 180), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(105, 180), QColor(Qt::green));
        QCOMPARE(image.pixelColor(30, 10), QColor(Qt::black));
        QCOMPARE(image.pixelColor(170, 10), QColor(Qt::green));
    }

    void aVeryWideWidgetIsFilled()
    {
        QWidget widget;
        Backdrop::Install(widget, Drawing());
        const QImage image = Grab(widget, 800, 200);
        QCOMPARE(image.pixelColor(2, 100), QColor(Qt::green));
        QCOMPARE(image.pixelColor(797, 100), QColor(Qt::green));
        QCOMPARE(image.pixelColor(365, 100), QColor(Qt::red));
        QCOMPARE(image.pixelColor(770, 10), QColor(Qt::white));
    }

    void itFollowsANewSize()
    {
        QWidget widget;
        Backdrop::Install(widget, Drawing());
        QCOMPARE(Grab(widget, 400, 200).pixelColor(200, 100), QColor(Qt::red));
        const QImage image = Grab(widget, 200, 100);
        QCOMPARE(image.pixelColor(100, 50), QColor(Qt::red));
        QCOMPARE(image.pixelColor(85, 50), QColor(Qt::green));
    }

    void aSecondOneReplacesTheFirst()
    {
        QWidget widget;
        Backdrop::Install(widget, Drawing());
        Backdrop::Install(widget, Drawing());
        QCOMPARE(widget.findChildren<Backdrop *>().size(), 1);
    }

    void aMissingDrawingPaintsNothing()
    {
        QWidget widget;
        widget.setPalette(QPalette(Qt::gray));
        const QImage bare = Grab(widget, 100, 100);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Cannot open file.*"));
        Backdrop::Install(widget, m_folder.filePath("no such drawing"));
        QCOMPARE(Grab(widget, 100, 100), bare);
    }
};

QTEST_MAIN(TestBackdrop)
#include "TestBackdrop.moc"
