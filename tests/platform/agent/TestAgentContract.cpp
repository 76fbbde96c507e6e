#include "support/AgentService.h"
#include "support/PuppetService.h"

#include <QtTest>

using namespace platform;
using support::AgentService;

// What the game relies on in the speaking-character service: queues, statuses, stops, connections.
class TestAgentContract : public QObject {
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void theHeadOfAnIdleQueueRunsWhenTheCallReturns();
    void aRequestGoesFromQueuedToRunningToDone();
    void statusNeverChangesAfterTheEnd();
    void queuesOfTwoCharactersRunSideBySide();
    void eventsComeFromTheLoopAndOncePerRequest();
    void showOfAVisibleOneIsDoneAtOnce();
    void hideOfAHiddenOneIsDoneAtOnce();
    void fastShowIsDoneAtOnceAndVisible();
    void showMakesVisibleWhenItBegins();
    void playWhileHiddenFails();
    void speakWhileHiddenFails();
    void moveWhileHiddenFailsButMoves();
    void moveWithoutSpeedJumpsWhileHidden();
    void showThenMoveThenSpeakAllSucceed();
    void whatStandsBehindAHideFails();
    void moveEndsAtItsPlace();
    void moveToTheSamePlaceEnds();
    void placesOffTheScreenAreKept();
    void unknownAnimationRaisesAtTheCall();
    void animationNamesAreOfAnyCase();
    void stopInterruptsTheRunningAndRemovesTheWaiting();
    void stopDoesNothingWhileShowing();
    void stopDoesNothingWhileHiding();
    void stopOfOneWaitingRequestLeavesTheOthers();
    void stopOfTheRunningRequestBeginsTheNext();
    void stopAcrossCharactersRaises();
    void stopOfAnEndedRequestRaises();
    void stopAllHaltsAShowAndLeavesItVisible();
    void stopAllHaltsAHideAndLeavesItVisible();
    void typedStopAllSparesWhatHasBegun();
    void typedStopAllNeverRemovesShowOrHide();
    void typedStopAllTakesOnlyItsTypes_data();
    void typedStopAllTakesOnlyItsTypes();
    void loopsRunUntilStopped();
    void voicesNeverOverlapAndNeverFail();
    void aStoppedSpeakerGivesTheVoiceToTheNext();
    void emptySpeechIsDoneAtOnce();
    void sizesAreSharedAndForgottenWithTheLastClient();
    void sizeBeyondSixteenBitsRaises();
    void aReferenceOutlivesItsScreenButRefuses();
    void theLastClientGoneMakesReferencesDead();
    void loadTwiceOnOneControlRaises();
    void aCharacterThatIsNotLoadedIsRefused();
    void aControlIsConnectedUntilItGoes();
    void requestsOfALostClientAreInterrupted();
    void figuresOfALostClientAreGone();
    void aHideUnderWayIsPlayedOutAfterItsClientHasGone();
    void commandsGoToTheClientShownLast();

private:
    CharacterReference Loaded(const QString &id = QStringLiteral("Merlin"))
    {
        m_control->Load(id, id + QStringLiteral(".acs"));
        return m_control->Character(id);
    }
    CharacterReference Visible(const QString &id = QStringLiteral("Merlin"))
    {
        const CharacterReference character = Loaded(id);
        character->Show(true);
        return character;
    }
    bool Ended(const RequestReference &request)
    {
        return m_service->Until(
            [&] { return request->Status() != kRequestQueued && request->Status() != kRequestRunning; });
    }
    static qint32 Raised(const std::function<void()> &call)
    {
        try {
            call();
        } catch (const Error &error) {
            return error.Number();
        }
        return 0;
    }

    std::unique_ptr<AgentService> m_service;
    AgentControlReference m_control;
};

void TestAgentContract::initTestCase_data()
{
    QTest::addColumn<QString>("service");
    QTest::newRow("fake figures") << "fake";
    QTest::newRow("real figures") << "real";
}

void TestAgentContract::init()
{
    QFETCH_GLOBAL(QString, service);
    if (service == "real")
        m_service = std::make_unique<support::PuppetAgentService>(QStringLiteral(CHARACTERS_FOLDER));
    else
        m_service = std::make_unique<support::FakeAgentService>();
    m_control = m_service->Engine().CreateControl();
}

void TestAgentContract::cleanup()
{
    m_control = nullptr;
    m_service.reset();
}

void TestAgentContract::theHeadOfAnIdleQueueRunsWhenTheCallReturns()
{
    const auto merlin = Visible();
    QCOMPARE(int(merlin->Play("Pleased")->Status()), int(kRequestRunning));
}

void TestAgentContract::aRequestGoesFromQueuedToRunningToDone()
{
    const auto merlin = Visible();
    const auto first = merlin->Play("Pleased");
    const auto second = merlin->Play("Wave");
    QCOMPARE(int(second->Status()), int(kRequestQueued));
    QVERIFY(m_service->Until([&] { return second->Status() == kRequestRunning; }));
    QCOMPARE(int(first->Status()), int(kRequestDone));
    QVERIFY(Ended(second));
    QCOMPARE(int(second->Status()), int(kRequestDone));
    QCOMPARE(second->Number(), 0);
    QCOMPARE(second->Description(), QString());
}

void TestAgentContract::statusNeverChangesAfterTheEnd()
{
    const auto merlin = Visible();
    const auto done = merlin->Play("Pleased");
    QVERIFY(Ended(done));
    const auto running = merlin->Play("Wave");
    merlin->StopAll();
    QCOMPARE(int(done->Status()), int(kRequestDone));
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
    QVERIFY(Ended(merlin->Play("Alert")));
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
}

void TestAgentContract::queuesOfTwoCharactersRunSideBySide()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto first = merlin->Play("Pleased");
    const auto second = genie->Play("Pleased");
    QCOMPARE(int(first->Status()), int(kRequestRunning));
    QCOMPARE(int(second->Status()), int(kRequestRunning));
    QVERIFY(Ended(first));
    QVERIFY(Ended(second));
}

void TestAgentContract::eventsComeFromTheLoopAndOncePerRequest()
{
    const auto merlin = Visible();
    m_service->Settle();
    int starts = 0;
    int ends = 0;
    m_control->requestStart = [&](const RequestReference &) { ++starts; };
    m_control->requestComplete = [&](const RequestReference &request) {
        ++ends;
        QCOMPARE(int(request->Status()), int(kRequestDone));
    };
    const auto request = merlin->Play("Pleased");
    QCOMPARE(starts, 0);
    QVERIFY(Ended(request));
    m_service->Settle();
    QCOMPARE(starts, 1);
    QCOMPARE(ends, 1);
    m_control->requestStart = nullptr;
    m_control->requestComplete = nullptr;
}

void TestAgentContract::showOfAVisibleOneIsDoneAtOnce()
{
    QCOMPARE(int(Visible()->Show()->Status()), int(kRequestDone));
}

void TestAgentContract::hideOfAHiddenOneIsDoneAtOnce()
{
    QCOMPARE(int(Loaded()->Hide()->Status()), int(kRequestDone));
}

void TestAgentContract::fastShowIsDoneAtOnceAndVisible()
{
    const auto merlin = Loaded();
    QVERIFY(!merlin->Visible());
    QCOMPARE(int(merlin->Show(true)->Status()), int(kRequestDone));
    QVERIFY(merlin->Visible());
}

void TestAgentContract::showMakesVisibleWhenItBegins()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    QCOMPARE(int(show->Status()), int(kRequestRunning));
    QVERIFY(merlin->Visible());
    QVERIFY(Ended(show));
    QCOMPARE(int(show->Status()), int(kRequestDone));
}

void TestAgentContract::playWhileHiddenFails()
{
    const auto request = Loaded()->Play("Wave");
    QCOMPARE(int(request->Status()), int(kRequestFailed));
    QCOMPARE(request->Number(), qint32(kCharacterHidden));
    QVERIFY(!request->Description().isEmpty());
}

void TestAgentContract::speakWhileHiddenFails()
{
    const auto request = Loaded()->Speak("Hello");
    QCOMPARE(int(request->Status()), int(kRequestFailed));
    QCOMPARE(request->Number(), qint32(kCharacterHidden));
}

void TestAgentContract::moveWhileHiddenFailsButMoves()
{
    const auto merlin = Loaded();
    const auto request = merlin->MoveTo(120, 80);
    QCOMPARE(int(request->Status()), int(kRequestFailed));
    QCOMPARE(int(merlin->Left()), 120);
    QCOMPARE(int(merlin->Top()), 80);
}

void TestAgentContract::moveWithoutSpeedJumpsWhileHidden()
{
    const auto merlin = Loaded();
    QCOMPARE(int(merlin->MoveTo(7, 9, 0)->Status()), int(kRequestDone));
    QCOMPARE(int(merlin->Left()), 7);
}

void TestAgentContract::showThenMoveThenSpeakAllSucceed()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    const auto move = merlin->MoveTo(60, 40);
    const auto speak = merlin->Speak("Hello");
    QCOMPARE(int(move->Status()), int(kRequestQueued));
    QVERIFY(Ended(speak));
    QCOMPARE(int(show->Status()), int(kRequestDone));
    QCOMPARE(int(move->Status()), int(kRequestDone));
    QCOMPARE(int(speak->Status()), int(kRequestDone));
}

void TestAgentContract::whatStandsBehindAHideFails()
{
    const auto merlin = Visible();
    merlin->Hide();
    const auto play = merlin->Play("Wave");
    QVERIFY(Ended(play));
    QCOMPARE(int(play->Status()), int(kRequestFailed));
    QVERIFY(!merlin->Visible());
}

void TestAgentContract::moveEndsAtItsPlace()
{
    const auto merlin = Visible();
    const auto move = merlin->MoveTo(300, 200);
    QVERIFY(Ended(move));
    QCOMPARE(int(merlin->Left()), 300);
    QCOMPARE(int(merlin->Top()), 200);
}

void TestAgentContract::moveToTheSamePlaceEnds()
{
    const auto merlin = Visible();
    merlin->MoveTo(30, 20, 0);
    const auto move = merlin->MoveTo(30, 20);
    QVERIFY(Ended(move));
    QCOMPARE(int(move->Status()), int(kRequestDone));
}

void TestAgentContract::placesOffTheScreenAreKept()
{
    const auto merlin = Visible();
    QVERIFY(Ended(merlin->MoveTo(-40, -60)));
    QCOMPARE(int(merlin->Left()), -40);
    QCOMPARE(int(merlin->Top()), -60);
}

void TestAgentContract::unknownAnimationRaisesAtTheCall()
{
    const auto peedy = Visible("Peedy");
    QCOMPARE(Raised([&] { peedy->Play("Congratulate_2"); }), qint32(kNoSuchAnimation));
    QCOMPARE(Raised([&] { peedy->Play("Juggle"); }), qint32(kNoSuchAnimation));
    QCOMPARE(int(peedy->Play("Wave")->Status()), int(kRequestRunning));
}

void TestAgentContract::animationNamesAreOfAnyCase()
{
    QCOMPARE(int(Visible()->Play("gETattention")->Status()), int(kRequestRunning));
}

void TestAgentContract::stopInterruptsTheRunningAndRemovesTheWaiting()
{
    const auto merlin = Visible();
    const auto running = merlin->Play("Pleased");
    const auto waiting = merlin->Speak("Never heard");
    const auto hide = merlin->Hide();
    merlin->Stop();
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
    QCOMPARE(running->Number(), qint32(kInterruptedByProgram));
    QCOMPARE(int(waiting->Status()), int(kRequestInterrupted));
    QCOMPARE(waiting->Number(), qint32(kRemovedFromQueue));
    QCOMPARE(int(hide->Status()), int(kRequestInterrupted));
    QVERIFY(merlin->Visible());
}

void TestAgentContract::stopDoesNothingWhileShowing()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    const auto hide = merlin->Hide();
    merlin->Stop();
    QCOMPARE(int(show->Status()), int(kRequestRunning));
    QVERIFY(Ended(hide));
    QCOMPARE(int(show->Status()), int(kRequestDone));
    QCOMPARE(int(hide->Status()), int(kRequestDone));
}

void TestAgentContract::stopDoesNothingWhileHiding()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    merlin->Stop();
    QVERIFY(Ended(hide));
    QCOMPARE(int(hide->Status()), int(kRequestDone));
    QVERIFY(!merlin->Visible());
}

void TestAgentContract::stopOfOneWaitingRequestLeavesTheOthers()
{
    const auto merlin = Visible();
    const auto first = merlin->Play("Pleased");
    const auto second = merlin->Play("Wave");
    const auto third = merlin->Play("Alert");
    merlin->Stop(second);
    QCOMPARE(int(second->Status()), int(kRequestInterrupted));
    QVERIFY(Ended(third));
    QCOMPARE(int(first->Status()), int(kRequestDone));
    QCOMPARE(int(third->Status()), int(kRequestDone));
}

void TestAgentContract::stopOfTheRunningRequestBeginsTheNext()
{
    const auto merlin = Visible();
    const auto first = merlin->Play("Pleased");
    const auto second = merlin->Play("Wave");
    merlin->Stop(first);
    QCOMPARE(int(first->Status()), int(kRequestInterrupted));
    QCOMPARE(int(second->Status()), int(kRequestRunning));
}

void TestAgentContract::stopAcrossCharactersRaises()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto request = genie->Play("Pleased");
    QCOMPARE(Raised([&] { merlin->Stop(request); }), qint32(kStopAcrossCharacters));
    QCOMPARE(int(request->Status()), int(kRequestRunning));
}

void TestAgentContract::stopOfAnEndedRequestRaises()
{
    const auto merlin = Visible();
    const auto request = merlin->Play("Pleased");
    QVERIFY(Ended(request));
    QCOMPARE(Raised([&] { merlin->Stop(request); }), qint32(kRequestNotInQueue));
}

void TestAgentContract::stopAllHaltsAShowAndLeavesItVisible()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    const auto speak = merlin->Speak("Hello");
    merlin->StopAll();
    QCOMPARE(int(show->Status()), int(kRequestInterrupted));
    QCOMPARE(int(speak->Status()), int(kRequestInterrupted));
    QVERIFY(merlin->Visible());
}

void TestAgentContract::stopAllHaltsAHideAndLeavesItVisible()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    merlin->StopAll();
    QCOMPARE(int(hide->Status()), int(kRequestInterrupted));
    QVERIFY(merlin->Visible());
    QVERIFY(Ended(merlin->Play("Wave")));
}

void TestAgentContract::typedStopAllSparesWhatHasBegun()
{
    const auto merlin = Visible();
    const auto speak = merlin->Speak("I can hardly wait");
    const auto play = merlin->Play("Pleased");
    merlin->StopAll("Move,Speak,Play,Get");
    QCOMPARE(int(speak->Status()), int(kRequestRunning));
    QCOMPARE(int(play->Status()), int(kRequestInterrupted));
    QVERIFY(Ended(speak));
    QCOMPARE(int(speak->Status()), int(kRequestDone));
}

void TestAgentContract::typedStopAllNeverRemovesShowOrHide()
{
    const auto merlin = Visible();
    merlin->Play("Pleased");
    const auto hide = merlin->Hide();
    const auto show = merlin->Show();
    merlin->StopAll("Move,Speak,Play,Get");
    QVERIFY(Ended(show));
    QCOMPARE(int(hide->Status()), int(kRequestDone));
    QCOMPARE(int(show->Status()), int(kRequestDone));
}

void TestAgentContract::typedStopAllTakesOnlyItsTypes_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("removed"); // of play, speak, move, gesture
    QTest::newRow("play takes gestures too") << "Play"
                                             << "play gesture";
    QTest::newRow("speak") << "Speak"
                           << "speak";
    QTest::newRow("move") << "Move"
                          << "move";
    QTest::newRow("any case and blanks") << " sPEAK , MOVE "
                                         << "speak move";
    QTest::newRow("get alone") << "Get"
                               << "";
    QTest::newRow("nonsense") << "Juggle"
                              << "";
}

void TestAgentContract::typedStopAllTakesOnlyItsTypes()
{
    QFETCH(QString, types);
    QFETCH(QString, removed);
    const auto merlin = Visible();
    merlin->Play("Alert");
    const auto play = merlin->Play("Pleased");
    const auto speak = merlin->Speak("Hello");
    const auto move = merlin->MoveTo(10, 10);
    const auto gesture = merlin->GestureAt(500, 10);
    merlin->StopAll(types);
    QStringList gone;
    if (play->Status() == kRequestInterrupted)
        gone << "play";
    if (speak->Status() == kRequestInterrupted)
        gone << "speak";
    if (move->Status() == kRequestInterrupted)
        gone << "move";
    if (gesture->Status() == kRequestInterrupted)
        gone << "gesture";
    QCOMPARE(gone.join(' '), removed);
}

void TestAgentContract::loopsRunUntilStopped()
{
    const auto merlin = Visible();
    const auto loop = merlin->Play("Reading");
    const auto behind = merlin->Play("Wave");
    const auto genie = Visible("Genie");
    QVERIFY(Ended(genie->Play("Wave")));
    QVERIFY(Ended(genie->Play("Alert")));
    QCOMPARE(int(loop->Status()), int(kRequestRunning));
    QCOMPARE(int(behind->Status()), int(kRequestQueued));
    merlin->Stop(loop);
    QVERIFY(Ended(behind));
}

void TestAgentContract::voicesNeverOverlapAndNeverFail()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto peedy = Visible("Peedy");
    const auto first = merlin->Speak("One");
    const auto second = genie->Speak("Two");
    const auto third = peedy->Speak("Three");
    QCOMPARE(int(second->Status()), int(kRequestRunning));
    QVERIFY(Ended(first));
    QCOMPARE(int(second->Status()), int(kRequestRunning));
    QVERIFY(Ended(second));
    QCOMPARE(int(third->Status()), int(kRequestRunning));
    QVERIFY(Ended(third));
    QCOMPARE(int(first->Status()), int(kRequestDone));
    QCOMPARE(int(second->Status()), int(kRequestDone));
    QCOMPARE(int(third->Status()), int(kRequestDone));
}

void TestAgentContract::aStoppedSpeakerGivesTheVoiceToTheNext()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto peedy = Visible("Peedy");
    merlin->Speak("A long line that is cut off in the middle of its many words");
    const auto waiting = genie->Speak("Two");
    const auto last = peedy->Speak("Three");
    genie->StopAll();
    QCOMPARE(int(waiting->Status()), int(kRequestInterrupted));
    merlin->StopAll();
    QVERIFY(Ended(last));
    QCOMPARE(int(last->Status()), int(kRequestDone));
}

void TestAgentContract::emptySpeechIsDoneAtOnce()
{
    const auto merlin = Visible();
    QCOMPARE(int(merlin->Speak("")->Status()), int(kRequestDone));
    QCOMPARE(int(merlin->Speak("\\Map=\"\"=\"\"\\")->Status()), int(kRequestDone));
}

void TestAgentContract::sizesAreSharedAndForgottenWithTheLastClient()
{
    const auto merlin = Loaded();
    QCOMPARE(int(merlin->Height()), 128);
    merlin->SetHeight(256);
    merlin->SetWidth(200);
    const auto other = m_service->Engine().CreateControl();
    other->Load("Merlin", "Merlin.acs");
    QCOMPARE(int(other->Character("Merlin")->Height()), 256);
    m_control->Disconnect();
    QCOMPARE(int(other->Character("Merlin")->Width()), 200);
    other->Disconnect();
    const auto third = m_service->Engine().CreateControl();
    third->Load("Merlin", "Merlin.acs");
    QCOMPARE(int(third->Character("Merlin")->Height()), 128);
}

void TestAgentContract::sizeBeyondSixteenBitsRaises()
{
    const auto merlin = Loaded();
    merlin->SetHeight(20000);
    QCOMPARE(Raised([&] { merlin->SetHeight(merlin->Height() * 2); }), qint32(kOverflow));
    QCOMPARE(Raised([&] { merlin->SetHeight(0); }), qint32(kInvalidCall));
}

void TestAgentContract::aReferenceOutlivesItsScreenButRefuses()
{
    const auto merlin = Visible();
    const auto other = m_service->Engine().CreateControl();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { merlin->Hide(); }), qint32(kAgentRefuses));
    QCOMPARE(Raised([&] { merlin->StopAll(); }), qint32(kAgentRefuses));
    QCOMPARE(Raised([&] { merlin->WordBalloon().SetVisible(false); }), qint32(kAgentRefuses));
    other->Disconnect();
}

void TestAgentContract::theLastClientGoneMakesReferencesDead()
{
    const auto merlin = Visible();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { merlin->Hide(); }), qint32(kAgentGone));
    QCOMPARE(Raised([&] { merlin->Height(); }), qint32(kAgentGone));
    QCOMPARE(Raised([&] { m_control->Load("Genie", "Genie.acs"); }), qint32(kAgentGone));
}

void TestAgentContract::loadTwiceOnOneControlRaises()
{
    Loaded();
    QCOMPARE(Raised([&] { Loaded(); }), qint32(kAlreadyLoaded));
    QCOMPARE(Raised([&] { m_control->Load("merlin", "Merlin.acs"); }), qint32(kAlreadyLoaded));
}

void TestAgentContract::aCharacterThatIsNotLoadedIsRefused()
{
    QCOMPARE(Raised([&] { m_control->Character("Merlin"); }), qint32(kAgentRefuses));
}

void TestAgentContract::aControlIsConnectedUntilItGoes()
{
    QVERIFY(m_control->Connected());
    m_control->Disconnect();
    QVERIFY(!m_control->Connected());
    m_control->Disconnect();
    QVERIFY(!m_control->Connected());
    const AgentControlReference nothing;
    QCOMPARE(Raised([&] { nothing->Connected(); }), qint32(kObjectNotSet));
}

void TestAgentContract::requestsOfALostClientAreInterrupted()
{
    const auto merlin = Visible();
    const auto running = merlin->Speak("Hello there");
    const auto waiting = merlin->Play("Wave");
    m_control->Disconnect();
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
    QCOMPARE(int(waiting->Status()), int(kRequestInterrupted));
    QCOMPARE(running->Number(), qint32(kRemovedFromQueue));
}

void TestAgentContract::figuresOfALostClientAreGone()
{
    const auto other = m_service->Engine().CreateControl();
    other->Load("Merlin", "Merlin.acs");
    const auto theirs = other->Character("Merlin");
    const auto ours = Visible();
    QVERIFY(theirs->Visible());
    m_control->Disconnect();
    QVERIFY(theirs->Visible());
    QVERIFY(Ended(theirs->Play("Wave")));
    other->Disconnect();
    const auto third = m_service->Engine().CreateControl();
    third->Load("Merlin", "Merlin.acs");
    QVERIFY(!third->Character("Merlin")->Visible());
}

void TestAgentContract::aHideUnderWayIsPlayedOutAfterItsClientHasGone()
{
    const auto merlin = Visible();
    const auto genie = Visible("Genie");
    genie->Play("Wave");
    const auto running = merlin->Hide();
    const auto waiting = genie->Hide();
    m_control->Disconnect();
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
    QCOMPARE(int(waiting->Status()), int(kRequestInterrupted));
    // Meanwhile the next screen loads figures of its own.
    const auto next = m_service->Engine().CreateControl();
    next->Load("Merlin", "Merlin.acs");
    const auto fresh = next->Character("Merlin");
    QVERIFY(!fresh->Visible());
    QVERIFY(Ended(fresh->Show()));
    QVERIFY(Ended(fresh->Play("Wave")));
    QVERIFY(fresh->Visible());
}

void TestAgentContract::commandsGoToTheClientShownLast()
{
    QStringList heard;
    const auto other = m_service->Engine().CreateControl();
    m_control->command = [&](const UserInput &input) { heard << "first " + input.name; };
    other->command = [&](const UserInput &input) { heard << "second " + input.name; };
    m_service->Engine().DeliverCommand("a");
    m_service->Settle();
    QCOMPARE(heard, QStringList());
    Visible("Merlin");
    other->Load("Genie", "Genie.acs");
    m_service->Engine().DeliverCommand("b");
    m_service->Settle();
    other->Character("Genie")->Show(true);
    m_service->Engine().DeliverCommand("go");
    m_service->Settle();
    QCOMPARE(heard, QStringList({ "first b", "second go" }));
    m_control->command = nullptr;
    other->command = nullptr;
}

QTEST_MAIN(TestAgentContract)
#include "TestAgentContract.moc"
