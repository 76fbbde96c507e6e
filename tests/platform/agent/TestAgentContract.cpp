#include "ContractFixture.h"

using namespace platform;

// What the game relies on in the speaking-character service: queues, statuses, moves, hidden figures.
class TestAgentContract : public ContractFixture {
    Q_OBJECT

private slots:
    void initTestCase_data() { ChooseServices(); }
    void init() { Begin(); }
    void cleanup() { End(); }

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
    void loopsRunUntilStopped();
    void startComesBeforeTheEndAndTellsOfTheRunningRequest();
    void aHandlerOfEventsMayReplaceItself();
    void requestsEndInTheirOrder();
    void gestureWhileHiddenFails();
    void aLoopWhileHiddenHoldsNobodyUp();
    void hiddenOrNotIsJudgedAtTheHead();
    void aHiddenFigurePlacedByAMoveComesUpThere();
    void hidingBeginsVisibleAndEndsHidden();
    void theFrameTellsThePresentPlace();
    void sizesCountAtOnce();
    void speedIsTheTimeOfTheWholeFlight();
    void aMoveWaitsForTheUsersHand();
    void aJumpWaitsForTheUsersHandToo();
    void theQueueGoesOnWhileTheUserDrags();
    void aHeldMoveCanBeStopped();
    void anUnknownAnimationLeavesTheQueueAsItIs();
    void anUnknownAnimationRaisesOnAHiddenOneToo();
    void theUsersHideStandsBehindThePresentWork();
    void everyAnimationOfTheScriptsCanBePlayedAndEnds_data();
    void everyAnimationOfTheScriptsCanBePlayedAndEnds();
    void theSleepersSleepUntilTheyAreStopped();
};

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
    QCOMPARE(int(merlin->MoveTo(8, 9, -1)->Status()), int(kRequestDone)); // no less than no time
    QCOMPARE(int(merlin->Left()), 8);
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

void TestAgentContract::startComesBeforeTheEndAndTellsOfTheRunningRequest()
{
    const auto merlin = Visible();
    m_service->Settle();
    QStringList events;
    QMap<const Request *, QString> names;
    const auto write = [&](const char *event) {
        return [&, event](const RequestReference &request) {
            events << names.value(request.operator->()) + QLatin1String(event) +
                          QString::number(request->Status());
        };
    };
    m_control->requestStart = write(" starts ");
    m_control->requestComplete = write(" ends ");
    const auto play = merlin->Play("Pleased");
    const auto move = merlin->MoveTo(200, 100);
    const auto removed = merlin->Play("Wave");
    names = { { play.operator->(), "play" },
              { move.operator->(), "move" },
              { removed.operator->(), "removed" } };
    merlin->Stop(removed);
    QCOMPARE(events, QStringList());
    QVERIFY(Ended(move));
    m_service->Settle();
    QCOMPARE(events, QStringList({ "play starts 4", "removed ends 3", "play ends 0", "move starts 4",
                                   "move ends 0" }));
    m_control->requestStart = nullptr;
    m_control->requestComplete = nullptr;
}

void TestAgentContract::aHandlerOfEventsMayReplaceItself()
{
    const auto merlin = Visible();
    m_service->Settle();
    auto kept = std::make_shared<int>(0);
    m_control->requestComplete = [this, kept](const RequestReference &) {
        const auto counter = kept; // what is captured goes with the handler
        m_control->requestComplete = nullptr;
        ++*counter;
    };
    QVERIFY(Ended(merlin->Play("Pleased")));
    QVERIFY(Ended(merlin->Play("Wave")));
    m_service->Settle();
    QCOMPARE(*kept, 1);
}

void TestAgentContract::requestsEndInTheirOrder()
{
    const auto merlin = Loaded();
    const std::vector<RequestReference> requests = { merlin->Show(),         merlin->Play("Greet"),
                                                     merlin->Speak("Hello"), merlin->MoveTo(90, 30),
                                                     merlin->Play("Read"),   merlin->GestureAt(600, 30),
                                                     merlin->Hide() };
    for (std::size_t index = 0; index < requests.size(); ++index) {
        QVERIFY(Ended(requests[index]));
        COMPARE_STATUS(requests[index], kRequestDone, 0);
        if (index + 1 < requests.size())
            COMPARE_STATUS(requests[index + 1], kRequestRunning, 0);
        if (index + 2 < requests.size())
            COMPARE_STATUS(requests[index + 2], kRequestQueued, 0);
    }
    QVERIFY(!merlin->Visible());
}

void TestAgentContract::gestureWhileHiddenFails()
{
    COMPARE_STATUS(Loaded()->GestureAt(10, 10), kRequestFailed, kCharacterHidden);
}

void TestAgentContract::aLoopWhileHiddenHoldsNobodyUp()
{
    const auto merlin = Loaded();
    COMPARE_STATUS(merlin->Play("Reading"), kRequestFailed, kCharacterHidden);
    COMPARE_STATUS(merlin->Show(true), kRequestDone, 0);
}

void TestAgentContract::hiddenOrNotIsJudgedAtTheHead()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    const auto failed = merlin->Speak("Nobody hears this");
    const auto moved = merlin->MoveTo(140, 60);
    const auto show = merlin->Show();
    const auto play = merlin->Play("Wave");
    QCOMPARE(int(failed->Status()), int(kRequestQueued));
    QVERIFY(Ended(play));
    COMPARE_STATUS(hide, kRequestDone, 0);
    COMPARE_STATUS(failed, kRequestFailed, kCharacterHidden);
    COMPARE_STATUS(moved, kRequestFailed, kCharacterHidden);
    COMPARE_STATUS(show, kRequestDone, 0);
    COMPARE_STATUS(play, kRequestDone, 0);
    QCOMPARE(int(merlin->Left()), 140);
}

void TestAgentContract::aHiddenFigurePlacedByAMoveComesUpThere()
{
    const auto merlin = Loaded();
    merlin->MoveTo(100, 310);
    QVERIFY(Ended(merlin->Show()));
    QCOMPARE(int(merlin->Left()), 100);
    QCOMPARE(int(merlin->Top()), 310);
}

void TestAgentContract::hidingBeginsVisibleAndEndsHidden()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    QCOMPARE(int(hide->Status()), int(kRequestRunning));
    QVERIFY(merlin->Visible());
    QVERIFY(Ended(hide));
    QVERIFY(!merlin->Visible());
    COMPARE_STATUS(merlin->Hide(), kRequestDone, 0); // once more, as the introductions do
}

void TestAgentContract::theFrameTellsThePresentPlace()
{
    const auto merlin = Visible();
    const auto play = merlin->Play("Pleased");
    const auto move = merlin->MoveTo(400, 200);
    QCOMPARE(int(merlin->Left()), 0);
    QVERIFY(m_service->Until([&] { return move->Status() == kRequestRunning; }));
    QCOMPARE(int(merlin->Left()), 0);
    QVERIFY(Ended(move));
    QCOMPARE(int(merlin->Left()), 400);
}

void TestAgentContract::sizesCountAtOnce()
{
    const auto merlin = Visible();
    const auto play = merlin->Play("Pleased");
    const auto behind = merlin->Speak("Hello");
    merlin->SetHeight(200);
    merlin->SetWidth(180);
    QCOMPARE(int(merlin->Height()), 200);
    QCOMPARE(int(merlin->Width()), 180);
    QCOMPARE(int(play->Status()), int(kRequestRunning));
    QVERIFY(Ended(behind));
    COMPARE_STATUS(behind, kRequestDone, 0);
}

void TestAgentContract::speedIsTheTimeOfTheWholeFlight()
{
    const auto merlin = Visible();
    const auto timeOf = [&](const RequestReference &move) {
        const auto began = m_service->time.Elapsed();
        m_service->Until([&] { return move->Status() == kRequestDone; });
        return int((m_service->time.Elapsed() - began).count());
    };
    const int near = timeOf(merlin->MoveTo(60, 0));
    const int far = timeOf(merlin->MoveTo(900, 0));
    const int slow = timeOf(merlin->MoveTo(60, 0, 4000));
    QVERIFY2(near >= 1000 && near < 4000, qPrintable(QString::number(near)));
    QVERIFY2(std::abs(far - near) < 1000, qPrintable(QString::number(far)));
    QVERIFY2(slow >= 4000 && slow < 7000, qPrintable(QString::number(slow)));
    COMPARE_STATUS(merlin->MoveTo(500, 50, 0), kRequestDone, 0);
    QCOMPARE(int(merlin->Left()), 500);
}

void TestAgentContract::aMoveWaitsForTheUsersHand()
{
    const auto merlin = Visible();
    m_service->BeginDrag("Merlin");
    Pass(100);
    const auto move = merlin->MoveTo(300, 200);
    const auto play = merlin->Play("Wave");
    Pass(8000);
    COMPARE_STATUS(move, kRequestRunning, 0);
    COMPARE_STATUS(play, kRequestQueued, 0);
    m_service->EndDrag("Merlin");
    QVERIFY(Ended(play));
    COMPARE_STATUS(move, kRequestDone, 0);
    QCOMPARE(int(merlin->Left()), 300);
    QCOMPARE(int(merlin->Top()), 200);
}

void TestAgentContract::aJumpWaitsForTheUsersHandToo()
{
    const auto merlin = Visible();
    m_service->BeginDrag("Merlin");
    Pass(100);
    const auto jump = merlin->MoveTo(300, 200, 0);
    COMPARE_STATUS(jump, kRequestRunning, 0);
    QVERIFY(merlin->Left() != 300);
    m_service->EndDrag("Merlin");
    Pass(100);
    COMPARE_STATUS(jump, kRequestDone, 0);
    QCOMPARE(int(merlin->Left()), 300);
}

void TestAgentContract::theQueueGoesOnWhileTheUserDrags()
{
    const auto merlin = Visible();
    m_service->BeginDrag("Merlin");
    Pass(100);
    const auto speak = merlin->Speak("Put me down");
    const auto play = merlin->Play("Wave");
    QVERIFY(Ended(play));
    COMPARE_STATUS(speak, kRequestDone, 0);
    m_service->EndDrag("Merlin");
}

void TestAgentContract::aHeldMoveCanBeStopped()
{
    const auto merlin = Visible();
    m_service->BeginDrag("Merlin");
    Pass(100);
    const auto move = merlin->MoveTo(300, 200);
    merlin->Stop();
    COMPARE_STATUS(move, kRequestInterrupted, kInterruptedByProgram);
    m_service->EndDrag("Merlin");
    Pass(3000);
    QVERIFY(merlin->Left() != 300);
    QVERIFY(Ended(merlin->MoveTo(300, 200)));
    QCOMPARE(int(merlin->Left()), 300);
}

void TestAgentContract::anUnknownAnimationLeavesTheQueueAsItIs()
{
    const auto merlin = Visible();
    const auto first = merlin->Play("Pleased");
    QCOMPARE(Raised([&] { merlin->Play("Juggle"); }), qint32(kNoSuchAnimation));
    const auto second = merlin->Play("Wave");
    QVERIFY(Ended(second));
    COMPARE_STATUS(first, kRequestDone, 0);
    COMPARE_STATUS(second, kRequestDone, 0);
}

void TestAgentContract::anUnknownAnimationRaisesOnAHiddenOneToo()
{
    QCOMPARE(Raised([&] { Loaded()->Play("Juggle"); }), qint32(kNoSuchAnimation));
}

void TestAgentContract::theUsersHideStandsBehindThePresentWork()
{
    const auto merlin = Visible();
    const auto speak = merlin->Speak("I am not done yet");
    const auto play = merlin->Play("Wave");
    m_service->HideByMenu("Merlin");
    QVERIFY(Ended(play));
    COMPARE_STATUS(speak, kRequestDone, 0);
    COMPARE_STATUS(play, kRequestDone, 0);
    QVERIFY(m_service->Until([&] { return !merlin->Visible(); }));
    COMPARE_STATUS(merlin->Speak("Nobody sees me"), kRequestFailed, kCharacterHidden);
    const auto show = merlin->Show();
    QVERIFY(Ended(show));
    QVERIFY(merlin->Visible());
}

void TestAgentContract::everyAnimationOfTheScriptsCanBePlayedAndEnds_data()
{
    QTest::addColumn<QString>("who");
    QTest::addColumn<QString>("name");
    const std::pair<const char *, const char *> played[] = {
        { "Genie", "Acknowledge" },
        { "Merlin Genie Peedy", "Alert" },
        { "Merlin", "alert" },
        { "Merlin", "Announce" },
        { "Genie Peedy", "Confused" },
        { "Merlin Genie Peedy", "Congratulate" },
        { "Merlin Genie", "Congratulate_2" },
        { "Merlin Genie", "Decline" },
        { "Merlin Peedy", "Domagic1" },
        { "Merlin", "DoMagic2" },
        { "Genie", "Domagic2" },
        { "Merlin Genie", "Explain" },
        { "Merlin Genie", "Gesturedown" },
        { "Peedy", "gestureleft" },
        { "Genie", "GestureLeft" },
        { "Merlin", "Gestureleft" },
        { "Merlin Genie", "Getattention" },
        { "Merlin", "Greet" },
        { "Merlin", "Idle2_1" },
        { "Genie", "LookDown" },
        { "Merlin Genie Peedy", "Lookleft" },
        { "Genie Peedy", "LookLeft" },
        { "Peedy", "Lookright" },
        { "Merlin", "LookUp" },
        { "Genie", "lookup" },
        { "Merlin Genie Peedy", "Pleased" },
        { "Genie Peedy", "Process" },
        { "Merlin Genie Peedy", "Read" },
        { "Genie", "Sad" },
        { "Merlin", "Search" },
        { "Merlin Genie", "Suggest" },
        { "Merlin Genie Peedy", "Surprised" },
        { "Merlin", "think" },
        { "Merlin Genie", "Uncertain" },
        { "Merlin Genie Peedy", "Wave" },
    };
    for (const auto &[who, name] : played)
        QTest::addRow("%s: %s", who, name) << who << name;
}

void TestAgentContract::everyAnimationOfTheScriptsCanBePlayedAndEnds()
{
    QFETCH(QString, who);
    QFETCH(QString, name);
    for (const QString &id : who.split(' ')) {
        const auto request = Visible(id)->Play(name);
        const auto began = m_service->time.Elapsed();
        QVERIFY(Ended(request));
        COMPARE_STATUS(request, kRequestDone, 0);
        QVERIFY((m_service->time.Elapsed() - began).count() <= 6500);
    }
}

void TestAgentContract::theSleepersSleepUntilTheyAreStopped()
{
    const auto genie = Visible("Genie");
    const auto peedy = Visible("Peedy");
    const auto first = genie->Play("idle3_2");
    const auto second = peedy->Play("idle3_2");
    const auto hide = peedy->Hide();
    Pass(20000);
    COMPARE_STATUS(first, kRequestRunning, 0);
    COMPARE_STATUS(second, kRequestRunning, 0);
    COMPARE_STATUS(hide, kRequestQueued, 0);
    genie->Stop();
    peedy->StopAll("Move,Speak,Play,Get"); // what has begun stays
    COMPARE_STATUS(first, kRequestInterrupted, kInterruptedByProgram);
    COMPARE_STATUS(second, kRequestRunning, 0);
    COMPARE_STATUS(hide, kRequestQueued, 0);
}

QTEST_MAIN(TestAgentContract)
#include "TestAgentContract.moc"
