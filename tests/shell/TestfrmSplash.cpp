#include "platform/Error.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "shell/frmSplash.h"
#include "support/Desk.h"

#include <QLabel>
#include <QTest>

using namespace tumblewick;
using support::Desk;
using namespace std::chrono_literals;

namespace {

const QString kUnusable = QStringLiteral(
    "Your current display settings \r\n cannot be used by a graphical interface such as this program.\r\n"
    "SOLUTION\r\nAdjust display options in control panel to either of the following settings. \r\n"
    "Optimum setting: 1024 by 768 True Color\r\nMin Settings: 800 by 600 256 Color");
const QString kTooFewColours = QStringLiteral(
    "The number of colors in your display settings \r\n cannot be used by a graphical interface such as this "
    "program.\r\nSOLUTION\r\nAdjust display options in control panel to either of the following settings. "
    "\r\n"
    "Optimum setting: 1024 by 768 True Color\r\nMin Settings: 800 by 600 256 Colors");
const QString kNote = QStringLiteral(
    "NOTE: Consider changing your display mode to 1024 X 768. The program will  perform better "
    "and certainly look better");

// The desk with a service behind the characters that cannot be had.
class DeskWithoutAgent {
public:
    DeskWithoutAgent(Desk &desk, qint32 number) : m_desk(desk), m_agent(number)
    {
        platform::InstallServices(&m_services);
    }
    ~DeskWithoutAgent() { platform::InstallServices(&m_desk.services); }
    DeskWithoutAgent(const DeskWithoutAgent &) = delete;
    DeskWithoutAgent &operator=(const DeskWithoutAgent &) = delete;

private:
    struct NoAgent : platform::AgentServer {
        explicit NoAgent(qint32 raised) : number(raised) {}
        platform::AgentControlReference CreateControl() override { throw platform::Error(number); }
        const qint32 number;
    };

    Desk &m_desk;
    NoAgent m_agent;
    platform::Services m_services{ m_desk.time,    m_desk.time,    m_desk.chance, m_desk.process,
                                   m_desk.files,   m_desk.boxes,   m_desk.help,   m_agent,
                                   m_desk.display, m_desk.desktop, m_desk.media,  m_desk.drives };
};

} // namespace

// The start: the display is vetted, and after a pause the menu comes.
class TestfrmSplash : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void nameAndVersionAreShown()
    {
        frmSplash::Shared().Show();
        QCOMPARE(Text("lblVersion"), QString("Version 1.0.9"));
        QCOMPARE(Text("lblProductName"), QString("Tumblewick"));
        QCOMPARE(Text("Label1"), QString());
    }

    void aDisplayIsJudged_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("displayWidth");
        QTest::newRow("640, 32 bits") << 640 << 480 << 32 << kUnusable << 0;
        QTest::newRow("640, 4 bits") << 640 << 480 << 4 << kUnusable << 0;
        QTest::newRow("799") << 799 << 600 << 32 << kUnusable << 0;
        QTest::newRow("800, 32 bits") << 800 << 600 << 32 << QString() << 800;
        QTest::newRow("800, 8 bits") << 800 << 600 << 8 << QString() << 800;
        QTest::newRow("800, 7 bits") << 800 << 600 << 7 << kTooFewColours << 0;
        QTest::newRow("800, 4 bits") << 800 << 600 << 4 << kTooFewColours << 0;
        QTest::newRow("801, 4 bits") << 801 << 600 << 4 << QString() << 0;
        QTest::newRow("1024, 4 bits") << 1024 << 768 << 4 << QString() << 0;
        QTest::newRow("1920") << 1920 << 1080 << 32 << QString() << 0;
        // The first four digits are 8000.
        QTest::newRow("five digits") << 8000 << 600 << 4 << QString() << 0;
        QTest::newRow("five digits below") << 10240 << 600 << 32 << QString() << 0;
    }
    void aDisplayIsJudged()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, depth);
        QFETCH(QString, box);
        QFETCH(int, displayWidth);
        m_desk->display.Run({ depth, width, height, 0, 60 });
        if (!box.isEmpty()) {
            m_desk->boxes.Expect(box);
            m_desk->boxes.Expect("The program must close now");
        }
        Open();
        QCOMPARE(m_desk->process.Ended(), !box.isEmpty());
        QCOMPARE(int(State().DisplayWidth), displayWidth);
        if (box.isEmpty())
            QVERIFY(frmMenu1::Shared().IsActive());
    }

    void theNoteStandsOnADisplayOf800DuringThePause()
    {
        m_desk->display.Run({ 32, 800, 600, 0, 60 });
        frmSplash::Shared().Show();
        QCOMPARE(Text("Label1"), kNote);
    }

    void aModeThatIsNotInTheListIsReportedAndTheStartGoesOn()
    {
        m_desk->display.current->frequency = 61;
        m_desk->boxes.Expect(
            "Tumblewick has detected a problem. Please email support "
            "support@tumblewick.example and quote\r\n following information  13 Type mismatch "
            "We apologise for this inconvenience");
        Open();
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(int(State().DisplayWidth), 0);
    }

    void aDisplayTooWideToCountIsReportedAndTheStartGoesOn()
    {
        m_desk->display.Run({ 32, 32768, 600, 0, 60 });
        m_desk->boxes.Expect("Tumblewick has detected a problem. Please email support "
                             "support@tumblewick.example and quote\r\n following information  6 Overflow "
                             "We apologise for this inconvenience");
        Open();
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(int(State().DisplayWidth), 0);
    }

    void aMenuThatDoesNotComeIsReportedAndTheSplashStays_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("box");
        QTest::newRow("5") << int(platform::kInvalidCall)
                           << "There is a problem with the program. If you have two installations of "
                              "Tumblewick on your machine\r\n You need to uninstall the second "
                              "Installation. If this is not the case then contact support and\r\n "
                              "Quote the following information5 Invalid procedure call or argument";
        QTest::newRow("another") << int(platform::kNoSuchComponent)
                                 << "Tumblewick has detected a problem. Please email support "
                                    "support@tumblewick.example and quote\r\n following information  "
                                    "429 ActiveX component can't create object "
                                    "We apologise for this inconvenience";
    }
    void aMenuThatDoesNotComeIsReportedAndTheSplashStays()
    {
        QFETCH(int, number);
        QFETCH(QString, box);
        const DeskWithoutAgent without(*m_desk, number);
        m_desk->boxes.Expect(box);
        Open();
        QVERIFY(m_desk->boxes.AllAnswered());
        QVERIFY(frmSplash::Shared().IsActive());
        QVERIFY(!frmMenu1::Shared().IsLoaded());
        QVERIFY(!m_desk->process.Ended());
    }

    void theMenuComesBehindThePause_data()
    {
        QTest::addColumn<double>("clock");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("a whole second") << 3600.0 << 2000;
        QTest::newRow("rounded down") << 3600.4 << 1600;
        QTest::newRow("rounded up") << 3600.6 << 2400;
        QTest::newRow("half to even, down") << 3600.5 << 1500;
        QTest::newRow("half to even, up") << 3601.5 << 2500;
    }
    void theMenuComesBehindThePause()
    {
        QFETCH(double, clock);
        QFETCH(int, milliseconds);
        m_desk->time.SetStartOfClock(clock);
        bool early = true, late = false;
        m_desk->After(std::chrono::milliseconds(milliseconds - 20),
                      [&early] { early = frmMenu1::Shared().IsLoaded(); });
        m_desk->After(std::chrono::milliseconds(milliseconds + 20),
                      [&late] { late = frmMenu1::Shared().IsLoaded(); });
        frmSplash::Shared().Show();
        m_desk->time.Run(3s);
        QVERIFY(!early);
        QVERIFY(late);
        QVERIFY(!frmSplash::Shared().IsLoaded());
    }

    void aStartJustBeforeMidnightGoesOnPausing()
    {
        m_desk->time.SetStartOfClock(86399);
        bool loaded = true, answered = false;
        m_desk->After(3600s, [&] {
            loaded = frmMenu1::Shared().IsLoaded();
            answered = true;
            m_desk->process.End();
        });
        frmSplash::Shared().Show();
        m_desk->time.Run(3601s);
        QVERIFY(answered);
        QVERIFY(!loaded);
    }

    void theMenuIsUpBeforeTheSplashGoes()
    {
        Open();
        QCOMPARE(m_desk->transcript.Lines().filter("screen "),
                 QStringList({ "screen frmSplash load", "screen frmSplash activate", "screen frmMenu1 load",
                               "screen frmMenu1 activate", "screen frmSplash unload" }));
    }

private:
    void Open()
    {
        platform::ThroughTheDoor([] { frmSplash::Shared().Show(); });
        m_desk->time.Run(3s);
    }
    static QString Text(const char *label)
    {
        return frmSplash::Shared().Window()->findChild<QLabel *>(label)->text();
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmSplash)
#include "TestfrmSplash.moc"
