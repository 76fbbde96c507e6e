#include "platform/Error.h"
#include "setup/frmNumPlayers1.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "stage/Introductions.h"
#include "stage/Waits.h"
#include "support/Desk.h"

#include <QTest>

using namespace tumblewick;
using support::Desk;
using namespace std::chrono_literals;

namespace {

const QString kTrouble = QStringLiteral(
    "Tumble Wick has detected a problem which is probably related to your soundcard. Please check that your "
    "soundcard is working correctly and the soundcard drivers are installed properly");
const QString kBackSoon =
    QStringLiteral("We'll be back with you after you set up for the next game. I can hardly wait");

} // namespace

// The two comedies over the menu: what is asked and waited for, step by step, and how they are left.
class TestIntroductions : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void aComedyRunsToItsEnd_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<QString>("transcript");
        QTest::newRow("one") << 1 << 0 << "introduction-one";
        QTest::newRow("two") << 0 << 0 << "introduction-two";
        QTest::newRow("two on a display of 800") << 0 << 800 << "introduction-two-800";
        QTest::newRow("two on a display of 1024") << 0 << 1024 << "introduction-two";
    }
    void aComedyRunsToItsEnd()
    {
        QFETCH(int, choice);
        QFETCH(int, displayWidth);
        QFETCH(QString, transcript);
        State().DisplayWidth = displayWidth;
        Open(choice);
        m_desk->transcript.Clear();
        State().MenuShown = false;
        m_desk->Rest();
        QCOMPARE(bool(State().MenuShown), choice == 1); // the first one tells that the menu has been seen
        QCOMPARE(m_desk->transcript.Difference(transcript), QString());
        QVERIFY(!m_desk->process.Ended());
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString());
        // The host stays; the second comedy sends its guests away.
        QVERIFY(State().Characters[kMerlin]->Visible());
        QCOMPARE(State().Characters[kPeedy]->Visible(), choice == 1);
    }

    void itPlaysOnceInARun()
    {
        Open(1);
        m_desk->Rest();
        m_desk->Press("cmdPlay");
        m_desk->transcript.Clear();
        m_desk->chance.QueueDraw(0, 2);
        m_desk->Press("cmdback");
        m_desk->Rest();
        QVERIFY(m_desk->transcript.Said().isEmpty());
    }

    void aPressBeforeItBeginsLeavesNothingOfIt()
    {
        Open(1);
        m_desk->time.Run(3900ms);
        m_desk->transcript.Clear();
        m_desk->Press("cmdPlay");
        m_desk->Rest();
        QVERIFY(m_desk->transcript.Said().isEmpty());
        QVERIFY(frmNumPlayers1::Shared().IsActive());
    }

    // Whenever the player goes on, the screens answer at once and the program works on.
    void itIsLeftAtAnyMoment_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<int>("second");
        for (int choice = 0; choice < 2; ++choice)
            for (int second = 4; second < 150; second += 3)
                QTest::addRow("%s after %d s", choice == 1 ? "one" : "two", second) << choice << second;
    }
    void itIsLeftAtAnyMoment()
    {
        QFETCH(int, choice);
        QFETCH(int, second);
        Open(choice);
        int presses = 0;
        const auto press = [this, &presses](std::chrono::seconds when, const char *button,
                                            const platform::Screen &from) {
            m_desk->After(when, [this, &presses, button, &from] {
                QVERIFY(from.IsActive());
                m_desk->Press(button);
                ++presses;
            });
        };
        // The first press comes while the comedy waits, or behind its end. A plain wait may then turn for the
        // rest of the run; the screens do not care.
        press(std::chrono::seconds(second), "cmdPlay", frmMenu1::Shared());
        press(std::chrono::seconds(second + 20), "cmdback", frmNumPlayers1::Shared());
        press(std::chrono::seconds(second + 21), "Command3", frmMenu1::Shared());
        press(std::chrono::seconds(second + 22), "cmdback", frmNumPlayers1::Shared());
        m_desk->time.Run(300s);
        QCOMPARE(presses, 4);
        QVERIFY(m_desk->time.Hung() || frmMenu1::Shared().IsActive());
    }

    // The menu is still there, as behind a wrong password.
    void aCancelledSkippableWaitStopsAllThree()
    {
        Open(1);
        WhenAsked("Peedy Speak \"What was that terrible noise!\"", [this] {
            m_desk->transcript.Clear();
            frmMenu1::Shared().IntroCancelled = true;
        });
        m_desk->time.Run(300s);
        const QStringList asked = m_desk->transcript.Asked();
        const auto stop = asked.indexOf("Merlin Stop");
        QVERIFY2(stop >= 0, qPrintable(asked.join('\n')));
        QCOMPARE(asked.mid(stop, 8),
                 QStringList(
                     { "Merlin Stop", "Genie Stop", "Peedy Stop", "Merlin Speak \"" + kBackSoon + "\"",
                       "Merlin Play \"Pleased\"", "Merlin StopAll \"Move,Speak,Play,Get\"",
                       "Genie StopAll \"Move,Speak,Play,Get\"", "Peedy StopAll \"Move,Speak,Play,Get\"" }));
    }

    void aFailedFirstSentenceTellsOfTheSoundCardAndClosesTheMenu_data()
    {
        QTest::addColumn<int>("choice");
        QTest::newRow("one") << 1;
        QTest::newRow("two") << 0;
    }
    void aFailedFirstSentenceTellsOfTheSoundCardAndClosesTheMenu()
    {
        QFETCH(int, choice);
        m_desk->stage.SetSpeechFailure(platform::kAudioDeviceUnusable);
        m_desk->boxes.Expect(kTrouble);
        Open(choice);
        m_desk->transcript.Clear();
        m_desk->Rest();
        QCOMPARE(m_desk->transcript.Said().size(), 1);
        // No screen is left open, and with the last one the program goes.
        QVERIFY(m_desk->process.Ended());
    }

    void aLaterFailureIsNotNoticed()
    {
        Open(1);
        WhenAsked("Merlin Speak \"Welcome to Tumble Wick\"",
                  [this] { m_desk->stage.FailNext("Merlin", "Speak", platform::kAudioDeviceUnusable); });
        m_desk->time.Run(300s);
        QVERIFY(m_desk->transcript.Lines().filter("Merlin Speak failed").size() == 1);
        QVERIFY(m_desk->transcript.Said().contains("Genie: To play a Quiz, press. You guessed it. Play a "
                                                   "Quiz!!. Go ahead Press a button."));
    }

    void anErrorEndsItSilently()
    {
        Open(1);
        WhenAsked("Merlin Play \"DoMagic2\"", [this] {
            State().Characters[kGenie] = nullptr;
            m_desk->transcript.Clear();
        });
        m_desk->Rest();
        QVERIFY(m_desk->transcript.Asked().isEmpty());
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString());
        m_desk->Press("cmdHelp");
        QVERIFY(!m_desk->help.Open().empty());
    }

    void aSkippableWaitGoesByTheStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("stops");
        QTest::newRow("done") << 0 << false;
        QTest::newRow("failed") << 1 << false;
        QTest::newRow("queued") << 2 << true;
        QTest::newRow("interrupted") << 3 << false;
        QTest::newRow("running") << 4 << false;
    }
    void aSkippableWaitGoesByTheStatus()
    {
        QFETCH(int, status);
        QFETCH(bool, stops);
        Open(1);
        const platform::RequestReference request = RequestWith(status);
        QCOMPARE(int(request->Status()), status);
        m_desk->transcript.Clear();
        WaitRequestsSkippable({ &request }, true);
        QCOMPARE(m_desk->transcript.Asked().contains("Merlin Stop"), stops);
    }

    // One that has not begun is enough.
    void aSkippableWaitOnTwoGoesByBoth_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<bool>("stops");
        QTest::newRow("both done") << 0 << 0 << false;
        QTest::newRow("done and queued") << 0 << 2 << true;
        QTest::newRow("queued and done") << 2 << 0 << true;
        QTest::newRow("both queued") << 2 << 2 << true;
        QTest::newRow("running and queued") << 4 << 2 << true;
        QTest::newRow("queued and running") << 2 << 4 << true;
        QTest::newRow("queued and failed") << 2 << 1 << true;
        QTest::newRow("done and running") << 0 << 4 << false;
        QTest::newRow("failed and interrupted") << 1 << 3 << false;
    }
    void aSkippableWaitOnTwoGoesByBoth()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(bool, stops);
        Open(1);
        const bool genieFirst = second == platform::kRequestDone; // it takes its time
        const auto genie = genieFirst ? RequestWith(second, kGenie) : nullptr;
        const platform::RequestReference one = RequestWith(first);
        const platform::RequestReference other = genieFirst ? genie : RequestWith(second, kGenie);
        QCOMPARE(int(one->Status()), first);
        QCOMPARE(int(other->Status()), second);
        m_desk->transcript.Clear();
        WaitRequestsSkippable({ &one, &other }, true);
        QCOMPARE(m_desk->transcript.Asked().contains("Merlin Stop"), stops);
    }

    void aSkippableWaitLastsAsLongAsTheLongerOfTwo()
    {
        Open(1);
        for (const bool longerFirst : { true, false }) {
            const platform::RequestReference shorter = RequestWith(platform::kRequestDone);
            const platform::RequestReference longer = RequestWith(platform::kRequestRunning, kGenie);
            m_desk->transcript.Clear();
            if (longerFirst)
                WaitRequestsSkippable({ &longer, &shorter }, false);
            else
                WaitRequestsSkippable({ &shorter, &longer }, false);
            QCOMPARE(longer->Status(), platform::kRequestDone);
            QVERIFY(!m_desk->transcript.Asked().contains("Merlin Stop"));
        }
    }

    void theFlagIsReadWhileItWaits()
    {
        Open(1);
        bool cancelled = false;
        const platform::RequestReference request = RequestWith(platform::kRequestQueued);
        m_desk->After(100ms, [&cancelled] { cancelled = true; });
        m_desk->transcript.Clear();
        WaitRequestsSkippable({ &request }, cancelled);
        QVERIFY(m_desk->transcript.Asked().contains("Merlin Stop"));
    }

private:
    void Open(int choice)
    {
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        m_desk->WriteFile("Lintro", "7");
        m_desk->chance.QueueDraw(choice, 2);
        frmMenu1::Shared().Show();
        m_desk->Settle();
    }

    // Calls `work` from the event loop when `line` has been asked, while somebody waits.
    void WhenAsked(const QString &line, std::function<void()> work)
    {
        m_desk->After(50ms, [this, line, work] {
            if (m_desk->transcript.Asked().contains(line))
                work();
            else
                WhenAsked(line, work);
        });
    }

    platform::RequestReference RequestWith(int status, CharacterIndex who = kMerlin)
    {
        const auto &character = State().Characters[who];
        if (status == platform::kRequestFailed) {
            const auto request = character->Play("Wave");
            m_desk->Settle();
            return request;
        }
        character->Show(true);
        const auto first = character->Play("Wave");
        switch (status) {
        case platform::kRequestRunning:
            return first;
        case platform::kRequestQueued:
            return character->Play("Pleased");
        case platform::kRequestInterrupted:
            character->Stop();
            return first;
        default:
            m_desk->time.Run(3s);
            return first;
        }
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestIntroductions)
#include "TestIntroductions.moc"
