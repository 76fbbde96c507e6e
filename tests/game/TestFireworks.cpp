#include "game/EndingDesk.h"
#include "platform/Error.h"

#include <QPushButton>
#include <QTest>

using namespace tumblewick;
using namespace std::chrono_literals;

namespace {

const QStringList kButtons = { "cmdGo",  "cmdReplay", "cmdPass", "cmdHint",
                               "cmdNew", "cmdAgain",  "cmdExit", "cmdHelp" };
const QStringList kStage = { "fmeQuiz", "txtScore", "Shape2", "Shape3", "Shape1", "txtAnswer" };
const QString kSpectacular = QStringLiteral("Peedy: That was spectacular !");

} // namespace

// The fireworks behind a perfect score: the stage is cleared for them and comes back.
class TestFireworks : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theFireworks_data()
    {
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<QString>("transcript");
        QTest::newRow("on a large display") << 0 << "fireworks";
        QTest::newRow("on a display of 800") << 800 << "fireworks-800";
    }
    void theFireworks()
    {
        QFETCH(int, displayWidth);
        QFETCH(QString, transcript);
        State().DisplayWidth = displayWidth;
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        m_desk->End(1);
        m_desk->transcript.StartAt(displayWidth == 800 ? "Merlin MoveTo" : "Peedy MoveTo");
        QCOMPARE(m_desk->transcript.Difference(transcript), QString());
    }

    void aClipThatCannotPlayIsNotNoticed()
    {
        m_desk->media.unplayable << m_desk->folder.path() + "\\fireworks.mpg";
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        m_desk->End(1);
        m_desk->transcript.StartAt("Peedy MoveTo");
        QCOMPARE(m_desk->transcript.Difference("fireworks"), QString());
    }

    void theStageIsClearedAndComesBack_data()
    {
        QTest::addColumn<bool>("spelling");
        QTest::addColumn<QStringList>("players");
        QTest::newRow("spelling of one") << true << QStringList({ "Ann" });
        QTest::newRow("spelling of two") << true << QStringList({ "Ann", "Bob" });
        QTest::newRow("a quiz") << false << QStringList({ "Ann" });
    }
    void theStageIsClearedAndComesBack()
    {
        QFETCH(bool, spelling);
        QFETCH(QStringList, players);
        m_desk->Begin(spelling ? GameKind::Spelling : GameKind::Quiz, players);
        m_desk->Score(QList<QStringList>(players.size(), { "2", "2" }));
        QString before;
        QStringList during;
        m_desk->When("Merlin Speak \"Ann, you scored", [&] { before = Seen(); });
        for (const char *moment : { "Merlin GestureAt 272,56", "Peedy Speak \"That was spectacular !\"",
                                    "Genie Speak \"Sure was." })
            m_desk->When(moment, [&, moment] {
                during << Seen();
                QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew hidden, cmdAgain hidden"));
                QVERIFY(!m_desk->Find<QPushButton>("cmdNew")->isEnabled());
            });
        m_desk->End(1);
        QString plain = spelling ? "txtScore Shape2 Shape3 Shape1 txtAnswer cmdGo cmdReplay cmdPass "
                                 : "fmeQuiz txtScore Shape2 Shape3 Shape1 cmdGo cmdReplay ";
        if (spelling && players.size() == 1)
            plain += "cmdHint ";
        QCOMPARE(before, plain + "cmdNew cmdAgain cmdExit cmdHelp");
        QCOMPARE(during, QStringList(3, ""));
        // All buttons come back, those too that the game had hidden; what is answered with does not.
        QCOMPARE(Seen(), "txtScore Shape2 Shape3 Shape1 " + kButtons.join(" "));

        m_desk->Press("cmdAgain");
        m_desk->Rest();
        QCOMPARE(Seen(), plain + "cmdNew cmdAgain cmdExit cmdHelp");
        QCOMPARE(m_desk->States({ "cmdGo", "cmdReplay", "cmdNew", "cmdAgain" }),
                 QString("cmdGo enabled, cmdReplay enabled, cmdNew disabled, cmdAgain disabled"));
    }

    // What is hidden cannot be pressed by a key either, though a last pass leaves it enabled.
    void noKeyReachesAButtonDuringTheFireworks()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        int tried = 0;
        m_desk->When("Merlin GestureAt 272,56", [&] {
            QWidget *window = frmSpell1::Shared().Window();
            QVERIFY(m_desk->Find<QPushButton>("cmdGo")->isEnabled());
            QTest::keyClick(window, Qt::Key_Return);
            QTest::keyClick(window, Qt::Key_P, Qt::AltModifier);
            ++tried;
        });
        m_desk->End(1);
        QCOMPARE(tried, 1);
        QVERIFY(m_desk->transcript.Said().filter("Sorry").isEmpty());
        QVERIFY(m_desk->transcript.Said().filter("You passed").isEmpty());
    }

    void enterOpensNothingBehindTheFireworks()
    {
        m_desk->Begin(GameKind::Quiz, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        m_desk->End(3);
        QCOMPARE(m_desk->Focus(), QString());
        QTest::keyClick(frmSpell1::Shared().Window(), Qt::Key_Return);
        m_desk->Rest();
        QVERIFY(m_desk->help.Open().empty());
        QVERIFY(frmSpell1::Shared().IsActive());
    }

    void theCastStandsWhereItStoodBefore_data()
    {
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<int>("pick");
        QTest::newRow("large") << 0 << 1;
        QTest::newRow("large, from the perch") << 0 << 4;
        QTest::newRow("800") << 800 << 1;
        QTest::newRow("800, from the perch") << 800 << 4;
    }
    void theCastStandsWhereItStoodBefore()
    {
        QFETCH(int, displayWidth);
        QFETCH(int, pick);
        State().DisplayWidth = displayWidth;
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        const QList<QPoint> before = Places();
        QList<QPoint> during;
        m_desk->When("Merlin GestureAt 272,56", [&] { during = Places(); });
        m_desk->End(pick);
        QCOMPARE(Places(), before);
        QCOMPARE(during.size(), 3);
        // His feet are to meet the turban.
        const QPoint head = during[kPeedy] - during[kGenie];
        QCOMPARE(head.x(), -30);
        QVERIFY2(head.y() <= -190 && head.y() >= -215, qPrintable(QString::number(head.y())));
        if (displayWidth != 800) {
            QCOMPARE(during[kMerlin], before[kMerlin]);
            QCOMPARE(during[kGenie], before[kGenie]);
        }
    }

    void nobodyWaitsForPeedy()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        // His last motion never ends well.
        std::function<void()> watch = [&] {
            if (m_desk->stage.Log().filter("Peedy performs \"Surprised\"").size() < 2)
                return m_desk->After(20ms, watch);
            m_desk->After(1500ms,
                          [&] { m_desk->stage.FailNext("Peedy", "Perform", platform::kAgentBadData); });
        };
        m_desk->After(20ms, watch);
        m_desk->End(1);
        QCOMPARE(m_desk->transcript.Lines().filter("Peedy Play failed").size(), 1);
        QVERIFY(m_desk->transcript.Said().contains(kSpectacular));
    }

private:
    // Which pieces of the stage and which buttons can be seen.
    QString Seen()
    {
        QStringList seen;
        for (const QString &name : kStage + kButtons)
            if (m_desk->Find<QWidget>(name)->isVisible())
                seen << name;
        return seen.join(' ');
    }
    QList<QPoint> Places() const
    {
        QList<QPoint> places;
        for (const auto &character : State().Characters)
            places << QPoint(character->Left(), character->Top());
        return places;
    }

    std::optional<EndingDesk> m_desk;
};

QTEST_MAIN(TestFireworks)
#include "TestFireworks.moc"
