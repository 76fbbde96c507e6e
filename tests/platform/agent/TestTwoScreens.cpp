#include "FigureFixture.h"

#include "platform/agent/BalloonWindow.h"
#include "platform/agent/FigureTray.h"
#include "platform/agent/ListeningTip.h"

#include <QScreen>
#include <QTemporaryDir>

using namespace platform;

namespace {

// A small screen, and a larger one to its right that hangs lower.
const QRect kFirst(0, 0, 1024, 768);
const QRect kSecond(1024, 200, 1280, 1024);

// The platform without windows, with these two screens.
bool UseTwoScreens(const QString &folder)
{
    const auto screen = [](const char *name, const QRect &area) {
        return QStringLiteral("{\"name\":\"%1\",\"x\":%2,\"y\":%3,\"width\":%4,\"height\":%5,"
                              "\"logicalDpi\":96,\"logicalBaseDpi\":96,\"dpr\":1}")
            .arg(QLatin1String(name))
            .arg(area.x())
            .arg(area.y())
            .arg(area.width())
            .arg(area.height());
    };
    const QString path = folder + QStringLiteral("/screens.json");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QStringLiteral("{\"screens\":[%1,%2]}")
                   .arg(screen("first", kFirst), screen("second", kSecond))
                   .toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + path.toUtf8());
    return true;
}

} // namespace

// Figures and what belongs to them on a desktop of two screens.
class TestTwoScreens : public FigureFixture {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), qsizetype(2));
        QCOMPARE(screens[0]->geometry(), kFirst);
        QCOMPARE(screens[1]->geometry(), kSecond);
    }
    void init() { MakeFigure(); }
    void cleanup() { DropFigure(); }

    void whatBelongsToAFigureStaysOnItsScreen_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<QRect>("screen");
        QTest::newRow("first") << QPoint(300, 300) << kFirst;
        QTest::newRow("right edge of the first") << QPoint(768, 300) << kFirst;
        QTest::newRow("mostly on the first") << QPoint(890, 300) << kFirst;
        QTest::newRow("mostly on the second") << QPoint(905, 300) << kSecond;
        QTest::newRow("left edge of the second") << QPoint(1024, 300) << kSecond;
        QTest::newRow("upper edge of the second") << QPoint(1500, 200) << kSecond;
        QTest::newRow("lower right corner of the second") << QPoint(2048, 968) << kSecond;
        QTest::newRow("beyond the left edge of all") << QPoint(-200, 300) << kFirst;
        QTest::newRow("beyond the right edge of all") << QPoint(2280, 600) << kSecond;
        QTest::newRow("in the hole above the second") << QPoint(1500, -20) << kSecond;
        QTest::newRow("in the hole below the first") << QPoint(200, 800) << kFirst;
    }
    void whatBelongsToAFigureStaysOnItsScreen()
    {
        QFETCH(QPoint, at);
        QFETCH(QRect, screen);
        const QRect frame(at, QSize(256, 256));
        m_figure->SetFrame(frame);
        m_figure->Appear();
        // Places off the screens are the program's own affair.
        QCOMPARE(m_figure->Frame(), frame);
        m_figure->Speak(SpeechText::Parse("There they are, the sleeping boobies, uh, I mean beauties"), true,
                        End());
        m_time->Run(milliseconds(3000));
        QVERIFY(Balloon());
        QVERIFY2(screen.contains(Balloon()->Bubble()), qPrintable(QDebug::toString(Balloon()->Bubble())));

        ListeningTip tip;
        tip.Show(frame, QStringLiteral("Merlin is listening"), {});
        QVERIFY2(screen.contains(tip.Sign()->geometry()),
                 qPrintable(QDebug::toString(tip.Sign()->geometry())));

        m_figure->Disappear(true);
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && qobject_cast<FaceBadge *>(widget))
                QVERIFY(screen.contains(widget->geometry()));
        }
    }

    void aBalloonChangesScreensWithItsFigure()
    {
        m_figure->SetFrame(QRect(700, 350, 256, 256));
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Take me to the other screen please"), true, End());
        m_time->Run(milliseconds(400));
        QVERIFY(Balloon());
        QVERIFY(kFirst.contains(Balloon()->Bubble()));
        Mouse(QEvent::MouseButtonPress, QPoint(828, 480), Qt::LeftButton);
        for (int x = 828; x <= 1200; x += 12) {
            Mouse(QEvent::MouseMove, QPoint(x, 480), Qt::LeftButton);
            m_time->Run(milliseconds(10));
            QVERIFY(Balloon());
            const QRect bubble = Balloon()->Bubble();
            QVERIFY2(kFirst.contains(bubble) || kSecond.contains(bubble),
                     qPrintable(QDebug::toString(bubble)));
        }
        Mouse(QEvent::MouseButtonRelease, QPoint(1200, 480), Qt::LeftButton);
        QVERIFY(kSecond.contains(Balloon()->Bubble()));
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(700 + 372, 350));
    }

    void aFlightGoesFromScreenToScreen()
    {
        m_figure->SetFrame(QRect(700, 300, 256, 256));
        m_figure->Appear();
        m_figure->Slide(QPoint(1800, 700), milliseconds(1000), End());
        m_time->Run(milliseconds(1200));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(1800, 700));
        QCOMPARE(m_figure->Window().pos(), QPoint(1800, 700));
    }

    void aFigureComesBackWhenItsScreenHasGone()
    {
        // Where a third screen has been.
        m_figure->SetFrame(QRect(2500, 500, 256, 256));
        m_figure->ReturnToScreens();
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(2500, 500)); // nobody sees it
        m_figure->Appear();
        m_figure->ReturnToScreens();
        QCOMPARE(m_figure->Frame(), QRect(kSecond.right() + 1 - 256, 500, 256, 256));
        // Who leans out of a screen is still seen.
        m_figure->SetFrame(QRect(-40, 300, 256, 256));
        m_figure->ReturnToScreens();
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(-40, 300));
    }
};

int main(int argumentCount, char **arguments)
{
    const QTemporaryDir folder;
    if (!folder.isValid() || !UseTwoScreens(folder.path()))
        return 1;
    QApplication application(argumentCount, arguments);
    TestTwoScreens test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "TestTwoScreens.moc"
