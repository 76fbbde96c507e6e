#include "platform/display/Scale.h"

#include <QTest>

namespace {

// A variable of the environment with another value, a null one for none, as long as this lives.
class Variable {
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_before(qgetenv(name))
    {
        Set(!value.isNull(), value);
    }
    ~Variable() { Set(m_wasSet, m_before); }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    void Set(bool isSet, const QByteArray &value) const
    {
        if (isSet)
            qputenv(m_name, value);
        else
            qunsetenv(m_name);
    }

    const char *const m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};

} // namespace

// How large the game is drawn on displays of many sizes.
class TestScale : public QObject {
    Q_OBJECT

private slots:
    void theScaleLeavesRoomForTheGame_data()
    {
        QTest::addColumn<QSize>("display");
        QTest::addColumn<double>("scale");
        QTest::newRow("small") << QSize(800, 600) << 1.0;
        QTest::newRow("just enough") << QSize(1024, 768) << 1.0;
        QTest::newRow("wide but low") << QSize(1366, 768) << 1.0;
        QTest::newRow("high but narrow") << QSize(1080, 1920) << 1.0;
        QTest::newRow("one quarter more") << QSize(1280, 960) << 1.25;
        QTest::newRow("full") << QSize(1920, 1080) << 1.25;
        QTest::newRow("1440 lines") << QSize(2560, 1440) << 1.75;
        QTest::newRow("four times full") << QSize(3840, 2160) << 2.75;
        QTest::newRow("nothing") << QSize(0, 0) << 1.0;
    }
    void theScaleLeavesRoomForTheGame()
    {
        QFETCH(QSize, display);
        QTEST(platform::ScaleFor(display), "scale");
    }

    void withoutADisplayNothingIsChosen()
    {
        const Variable display("DISPLAY", {});
        const Variable windowSystem("QT_QPA_PLATFORM", {});
        const platform::DisplayChoice choice;
        QVERIFY(!choice.HasDisplay());
        QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    }

    void theChoiceOfTheUserStays()
    {
        const Variable display("DISPLAY", {});
        const Variable windowSystem("QT_QPA_PLATFORM", "offscreen");
        {
            const platform::DisplayChoice choice;
            QVERIFY(choice.HasDisplay());
            QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
        }
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
    }
};

QTEST_APPLESS_MAIN(TestScale)
#include "TestScale.moc"
