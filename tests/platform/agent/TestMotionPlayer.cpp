#include "platform/agent/MotionPlayer.h"
#include "support/SmallCharacter.h"

#include <QTest>

using namespace platform;

namespace {

constexpr double kFrame = 1.0 / 60;

int PartNamed(const CharacterData &character, const char *name)
{
    for (std::size_t index = 0; index < character.parts.size(); ++index) {
        if (character.parts[index].name == QLatin1String(name))
            return int(index);
    }
    qFatal("no such part");
}

} // namespace

class TestMotionPlayer : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_character = support::SmallCharacter();
        m_player = std::make_unique<MotionPlayer>(m_character);
        m_arm = PartNamed(*m_character, "arm");
        m_head = PartNamed(*m_character, "head");
        m_mouth = PartNamed(*m_character, "mouth");
        m_lids = PartNamed(*m_character, "lids");
        m_tip = PartNamed(*m_character, "tip");
        m_body = PartNamed(*m_character, "body");
    }

    void easesBeginAtNothingAndEndAtAll_data()
    {
        QTest::addColumn<int>("ease");
        QTest::addColumn<double>("half");
        QTest::addColumn<bool>("overshoots");
        QTest::newRow("inout") << int(Ease::InOut) << 0.5 << false;
        QTest::newRow("linear") << int(Ease::Linear) << 0.5 << false;
        QTest::newRow("in") << int(Ease::In) << 0.25 << false;
        QTest::newRow("out") << int(Ease::Out) << 0.75 << false;
        QTest::newRow("back") << int(Ease::Back) << 1.0877 << true;
        QTest::newRow("bounce") << int(Ease::Bounce) << 0.7656 << false;
        QTest::newRow("step") << int(Ease::Step) << 0.0 << false;
    }
    void easesBeginAtNothingAndEndAtAll()
    {
        QFETCH(int, ease);
        QFETCH(double, half);
        QFETCH(bool, overshoots);
        const auto kind = static_cast<Ease>(ease);
        QVERIFY(std::abs(Eased(kind, 0)) < 1e-9);
        QVERIFY(std::abs(Eased(kind, 1) - 1) < 1e-9);
        QVERIFY(std::abs(Eased(kind, 0.5) - half) < 0.001);
        double most = 0;
        for (double passed = 0; passed <= 1; passed += 0.01)
            most = std::max(most, Eased(kind, passed));
        QCOMPARE(most > 1.01, overshoots);
    }

    void aCurveStandsStillOutsideItsKeys()
    {
        const Curve curve{ 0,
                           Change::X,
                           { { 1, 10, Ease::InOut }, { 2, 20, Ease::Linear }, { 2, 30, Ease::Linear } } };
        QCOMPARE(ValueAt(curve, 0), 10.0);
        QCOMPARE(ValueAt(curve, 1.5), 15.0);
        QCOMPARE(ValueAt(curve, 2), 30.0); // two keys at one time are a jump
        QCOMPARE(ValueAt(curve, 9), 30.0);
    }

    void aMotionHoldsItsLastPose()
    {
        Play("Wave");
        Run(0.6);
        QVERIFY(!m_player->HasEnded());
        Run(1.0);
        QVERIFY(m_player->HasEnded());
        QCOMPARE(Arm(), -90.0);
        QCOMPARE(m_player->Shown().swaps[std::size_t(m_arm)], std::int16_t(1));
        QVERIFY(!m_player->IsMoving());
        Run(5);
        QCOMPARE(Arm(), -90.0);
    }

    void nothingPopsFromAnyPoseIntoTheNextMotion()
    {
        // Cut into a movement at every twentieth of a second, and see that no frame jumps.
        for (double cut = 0.05; cut < 1.3; cut += 0.05) {
            m_player->Reset();
            Play("Wave");
            Run(cut);
            double before = Arm();
            Play("Nod");
            double largest = 0;
            for (int frame = 0; frame < 30; ++frame) {
                m_player->Advance(kFrame);
                largest = std::max(largest, std::abs(Arm() - before));
                before = Arm();
            }
            QVERIFY2(largest < 22, qPrintable(QStringLiteral("%1 degrees after %2 s").arg(largest).arg(cut)));
            QVERIFY(std::abs(Arm()) < 0.001);
        }
    }

    void aMotionThatBeginsAtOnceDoesNotBlend()
    {
        Play("Wave");
        Run(1.5);
        m_player->PlayAtOnce(*m_character->FindMotion("Show"));
        QCOMPARE(Arm(), 0.0);
        for (const PartFrame &frame : m_player->Frames())
            QCOMPARE(frame.opacity, 0.0);
        Run(1.1);
        QVERIFY(m_player->HasEnded());
        QCOMPARE(m_player->Frames()[std::size_t(m_body)].opacity, 1.0);
    }

    void settlingComesToRest()
    {
        Play("Wave");
        Run(1.5);
        m_player->Settle();
        QVERIFY(!m_player->Current());
        Run(0.3);
        QVERIFY(!m_player->HasEnded());
        Run(0.1);
        QVERIFY(m_player->HasEnded());
        QCOMPARE(Arm(), 0.0);
        QCOMPARE(m_player->Shown().swaps[std::size_t(m_arm)], Pose::kAtRest);
    }

    void aPartThatFacesTheOtherWayTurnsOverWithoutBecomingALine()
    {
        Motion mirrored;
        mirrored.length = 1;
        mirrored.curves = { Curve{ m_head, Change::ScaleX, { { 0, -2, Ease::Linear } } },
                            Curve{ m_arm, Change::ScaleX, { { 0, -1, Ease::Linear } } } };
        m_player->PlayAtOnce(mirrored);
        m_player->Settle();
        int turns = 0;
        double before = -1, narrowest = 1;
        for (int frame = 0; frame < 24; ++frame) {
            m_player->Advance(kFrame);
            const double width = 1 + m_player->Shown().At(m_head, Change::ScaleX);
            turns += width * before < 0;
            narrowest = std::min(narrowest, std::abs(width));
            before = width;
        }
        QCOMPARE(turns, 1);
        QCOMPARE(before, 1.0);
        QVERIFY2(narrowest > 0.4 && narrowest < 0.6, qPrintable(QString::number(narrowest)));
        // What was not to be seen grows from nothing as ever.
        m_player->PlayAtOnce(mirrored);
        m_player->Settle();
        m_player->Advance(kFrame);
        QVERIFY(1 + m_player->Shown().At(m_arm, Change::ScaleX) < 0.05);
    }

    void aLoopNeverEndsAndStaysInItsStretch()
    {
        Play("Doze");
        Run(1.2);
        for (int frame = 0; frame < 60 * 20; ++frame) {
            m_player->Advance(kFrame);
            QVERIFY(!m_player->HasEnded());
            const double turn = m_player->Shown().At(m_head, Change::Turn);
            QVERIFY(turn >= 20 - 1e-6 && turn <= 26 + 1e-6);
        }
        QVERIFY(m_player->IsMoving());
        m_player->Advance(100.3); // as after a long sleep of the computer
        QVERIFY(m_player->Shown().At(m_head, Change::Turn) >= 20 - 1e-6);
    }

    void aFlightEndsInTheAirAndGoesOn()
    {
        Play("MoveLeft");
        Run(0.3);
        QVERIFY(!m_player->HasEnded());
        Run(0.15);
        QVERIFY(m_player->HasEnded());
        double least = 100, most = -100;
        for (int frame = 0; frame < 120; ++frame) {
            m_player->Advance(kFrame);
            const double turn = m_player->Shown().At(m_body, Change::Turn);
            least = std::min(least, turn);
            most = std::max(most, turn);
            QVERIFY(m_player->HasEnded());
        }
        QVERIFY(least >= 15 - 1e-6 && most > 17.5);
        QVERIFY(m_player->IsMoving());
    }

    void aHeldMotionStandsStill()
    {
        Play("Wave");
        Run(0.3);
        m_player->Hold();
        Run(0.5);
        const double held = Arm();
        Run(2);
        QCOMPARE(Arm(), held);
        QVERIFY(!m_player->HasEnded());
        QVERIFY(!m_player->IsMoving());
    }

    void everyMouthIsShownAndLetGo_data()
    {
        QTest::addColumn<int>("mouth");
        for (int mouth = 0; mouth < int(kMouths); ++mouth)
            QTest::newRow(qPrintable(MouthName(static_cast<Mouth>(mouth)))) << mouth;
    }
    void everyMouthIsShownAndLetGo()
    {
        QFETCH(int, mouth);
        m_player->ShowMouth(static_cast<Mouth>(mouth));
        Run(0.1);
        QCOMPARE(int(m_player->Shown().swaps[std::size_t(m_mouth)]), mouth);
        const bool open = static_cast<Mouth>(mouth) == Mouth::AA;
        QCOMPARE(m_player->Shown().At(m_head, Change::Y), open ? 3.0 : 0.0);
        QVERIFY(m_player->IsMoving());
        m_player->ShowMouth(std::nullopt);
        Run(0.1);
        QCOMPARE(m_player->Shown().swaps[std::size_t(m_mouth)], Pose::kAtRest);
        QCOMPARE(m_player->Shown().At(m_head, Change::Y), 0.0);
        QVERIFY(!m_player->IsMoving());
    }

    void aMouthOpensWithinATwentiethOfASecond()
    {
        m_player->ShowMouth(Mouth::AA);
        m_player->Advance(0.025);
        const double half = m_player->Shown().At(m_head, Change::Y);
        QVERIFY(half > 1 && half < 2);
        m_player->Advance(0.026);
        QCOMPARE(m_player->Shown().At(m_head, Change::Y), 3.0);
    }

    void aMouthIsLaidOverTheBody()
    {
        Play("Acknowledge");
        Run(1);
        m_player->ShowMouth(Mouth::AA);
        Run(0.2);
        QCOMPARE(m_player->Shown().At(m_head, Change::Y), 4.0 + 3.0);
    }

    void eyesBlinkButThoseShutStayShut()
    {
        m_player->Blink();
        Run(0.05);
        QCOMPARE(m_player->Shown().swaps[std::size_t(m_lids)], std::int16_t(1));
        Run(0.2);
        QCOMPARE(m_player->Shown().swaps[std::size_t(m_lids)], Pose::kAtRest);
        Play("Doze");
        Run(1);
        m_player->Blink();
        for (int frame = 0; frame < 20; ++frame) {
            m_player->Advance(kFrame);
            QCOMPARE(m_player->Shown().swaps[std::size_t(m_lids)], std::int16_t(1));
        }
    }

    void breathNeverStops()
    {
        double least = 1, most = -1;
        for (int frame = 0; frame < 60 * 8; ++frame) {
            m_player->Advance(kFrame);
            least = std::min(least, m_player->Shown().At(m_body, Change::ScaleY));
            most = std::max(most, m_player->Shown().At(m_body, Change::ScaleY));
        }
        QVERIFY(least < 0.001 && most > 0.019);
        QVERIFY(!m_player->IsMoving());
    }

    void noMoreThanTwoAccentsAtOnce()
    {
        for (int count = 0; count < 5; ++count)
            m_player->Accent(0);
        m_player->Accent(99); // there is none
        m_player->Advance(0.1);
        QCOMPARE(m_player->Shown().At(m_head, Change::Turn), 8.0);
        Run(0.5);
        QCOMPARE(m_player->Shown().At(m_head, Change::Turn), 0.0);
    }

    void accentsLeaveAloneWhatIsToBeStill()
    {
        CharacterData data = m_player->Character();
        data.motions.at("wave").still = { m_head };
        const auto character = std::make_shared<const CharacterData>(std::move(data));
        MotionPlayer player(character);
        player.PlayAtOnce(*character->FindMotion("Wave"));
        player.Accent(0);
        player.Advance(0.1);
        QCOMPARE(player.Shown().At(m_head, Change::Turn), 0.0);
        player.PlayAtOnce(*character->FindMotion("Read"));
        player.Accent(0);
        player.Advance(0.1);
        QCOMPARE(player.Shown().At(m_head, Change::Turn), 4.0);
    }

    void springsTrailAndComeBack()
    {
        Play("Doze"); // the head turns by 20 degrees in a second
        double most = 0;
        for (int frame = 0; frame < 60; ++frame) {
            m_player->Advance(kFrame);
            most = std::min(most, TipLag());
        }
        QVERIFY2(most < -1, qPrintable(QString::number(most))); // behind the head
        m_player->Reset();
        QCOMPARE(TipLag(), 0.0);
        Run(0.1);
        m_player->Advance(0.05, QPointF(30, 0));
        m_player->Advance(0.05, QPointF(60, 0));
        m_player->Advance(0.05, QPointF(90, 0));
        QVERIFY(std::abs(TipLag()) > 1);
        for (int frame = 0; frame < 300; ++frame)
            m_player->Advance(kFrame, QPointF(90, 0));
        QVERIFY(std::abs(TipLag()) < 0.5);
    }

    void aJumpThrowsNothing()
    {
        Run(0.2);
        m_player->ForgetPlace();
        m_player->Advance(kFrame, QPointF(500, 300));
        m_player->Advance(kFrame, QPointF(500, 300));
        m_player->Advance(kFrame, QPointF(500, 300));
        QVERIFY(std::abs(TipLag()) < 0.5);
    }

    void springsAreBoundedAtAnyStep_data()
    {
        QTest::addColumn<double>("step");
        QTest::newRow("1 ms") << 0.001;
        QTest::newRow("a frame") << kFrame;
        QTest::newRow("200 ms") << 0.2;
        QTest::newRow("5 s") << 5.0;
    }
    void springsAreBoundedAtAnyStep()
    {
        QFETCH(double, step);
        const char *names[] = { "Wave", "Doze", "MoveLeft", "Nod", "Read" };
        QPointF carried;
        int count = 0;
        for (double time = 0; time < 12 || count < 50; time += step, ++count) {
            if (count % std::max(1, int(0.35 / step)) == 0)
                Play(names[count % 5]);
            carried += QPointF(count % 3 ? 40 : -70, count % 2 ? 25 : -20);
            m_player->Advance(step, carried);
            for (const PartFrame &frame : m_player->Frames()) {
                const Affine &place = frame.place;
                for (const double number :
                     { place.a, place.b, place.c, place.d, place.e, place.f, frame.opacity })
                    QVERIFY(std::isfinite(number) && std::abs(number) < 5000);
            }
            QVERIFY(std::abs(TipLag()) <= 31); // the breath slants the picture a little
        }
        for (int frame = 0; frame < 600; ++frame)
            m_player->Advance(kFrame, carried);
        QVERIFY(std::isfinite(TipLag()));
    }

    void springsSwingAlikeAtAnyStep()
    {
        const auto swung = [this](double step) {
            m_player->Reset();
            m_player->Advance(kFrame);
            m_player->Advance(kFrame);
            m_player->Advance(kFrame, QPointF(20, 0)); // a push
            m_player->Advance(kFrame, QPointF(40, 0));
            m_player->Advance(kFrame, QPointF(40, 0)); // and the stop
            QVector<double> lags;
            for (int fifth = 0; fifth < 5; ++fifth) {
                for (double time = 0; time < 0.2 - 1e-9; time += step)
                    m_player->Advance(step, QPointF(40, 0));
                lags << TipLag();
            }
            return lags;
        };
        const QVector<double> fine = swung(0.001);
        QVERIFY(std::abs(fine[0]) > 1);
        const QVector<double> coarse = swung(0.2);
        for (int fifth = 0; fifth < 5; ++fifth)
            QVERIFY2(std::abs(fine[fifth] - coarse[fifth]) < 2,
                     qPrintable(QStringLiteral("%1 and %2").arg(fine[fifth]).arg(coarse[fifth])));
    }

    void noTimeChangesNothing()
    {
        Play("Wave");
        Run(0.3);
        const double arm = Arm();
        m_player->Advance(0);
        QCOMPARE(Arm(), arm);
        Play("Nod");
        m_player->Advance(0);
        QCOMPARE(Arm(), arm);
    }

private:
    void Play(const char *name) { m_player->Play(*m_character->FindMotion(QLatin1String(name))); }
    void Run(double seconds)
    {
        for (double time = 0; time < seconds - 1e-9; time += kFrame)
            m_player->Advance(std::min(kFrame, seconds - time));
    }
    double Arm() const { return m_player->Shown().At(m_arm, Change::Turn); }
    // What the spring adds: the turn of the part as drawn against that of its carrier.
    double TipLag() const
    {
        const auto angle = [this](int part) {
            const Affine &place = m_player->Frames()[std::size_t(part)].place;
            return std::atan2(place.b, place.a) * 180 / M_PI;
        };
        return std::remainder(angle(m_tip) - angle(m_head), 360);
    }

    std::shared_ptr<const CharacterData> m_character;
    std::unique_ptr<MotionPlayer> m_player;
    int m_arm = 0, m_head = 0, m_mouth = 0, m_lids = 0, m_tip = 0, m_body = 0;
};

QTEST_GUILESS_MAIN(TestMotionPlayer)
#include "TestMotionPlayer.moc"
