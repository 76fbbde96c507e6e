#include "ContractFixture.h"

using namespace platform;

// What Stop and StopAll take, what they spare, and how it stands afterwards.
class TestAgentStops : public ContractFixture {
    Q_OBJECT

private slots:
    void initTestCase_data() { ChooseServices(); }
    void init() { Begin(); }
    void cleanup() { End(); }

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
    void stopOfAnIdleOneDoesNothing();
    void stopTakesWaitingShowsAndHidesToo();
    void stopAllTakesWaitingShowsAndHidesToo();
    void stopTakesARunningSpeechAndMove();
    void stopNeverMakesAFailure();
    void stopOfOneWaitingShowOrHideTakesJustThat();
    void stopOfARunningShowLeavesItVisible();
    void stopOfNoRequestRaises();
    void stopOfAForeignEndedRequestRaisesLikeAnUnknownOne();
    void stopAllHaltsALoop();
    void theFarewellFindsHiddenFiguresShown();
    void theLineThatLeadsToTheSetUpIsHeardAndThePleasureIsNotSeen();
    void theLineThatLeadsToTheSetUpIsClearedBehindAShow();
    void typedStopAllSparesASpeakThatWaitsForTheVoice();
};

void TestAgentStops::stopInterruptsTheRunningAndRemovesTheWaiting()
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

void TestAgentStops::stopDoesNothingWhileShowing()
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

void TestAgentStops::stopDoesNothingWhileHiding()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    merlin->Stop();
    QVERIFY(Ended(hide));
    QCOMPARE(int(hide->Status()), int(kRequestDone));
    QVERIFY(!merlin->Visible());
}

void TestAgentStops::stopOfOneWaitingRequestLeavesTheOthers()
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

void TestAgentStops::stopOfTheRunningRequestBeginsTheNext()
{
    const auto merlin = Visible();
    const auto first = merlin->Play("Pleased");
    const auto second = merlin->Play("Wave");
    merlin->Stop(first);
    QCOMPARE(int(first->Status()), int(kRequestInterrupted));
    QCOMPARE(int(second->Status()), int(kRequestRunning));
}

void TestAgentStops::stopAcrossCharactersRaises()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto request = genie->Play("Pleased");
    QCOMPARE(Raised([&] { merlin->Stop(request); }), qint32(kStopAcrossCharacters));
    QCOMPARE(int(request->Status()), int(kRequestRunning));
}

void TestAgentStops::stopOfAnEndedRequestRaises()
{
    const auto merlin = Visible();
    const auto request = merlin->Play("Pleased");
    QVERIFY(Ended(request));
    QCOMPARE(Raised([&] { merlin->Stop(request); }), qint32(kRequestNotInQueue));
}

void TestAgentStops::stopAllHaltsAShowAndLeavesItVisible()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    const auto speak = merlin->Speak("Hello");
    merlin->StopAll();
    QCOMPARE(int(show->Status()), int(kRequestInterrupted));
    QCOMPARE(int(speak->Status()), int(kRequestInterrupted));
    QVERIFY(merlin->Visible());
}

void TestAgentStops::stopAllHaltsAHideAndLeavesItVisible()
{
    const auto merlin = Visible();
    const auto hide = merlin->Hide();
    merlin->StopAll();
    QCOMPARE(int(hide->Status()), int(kRequestInterrupted));
    QVERIFY(merlin->Visible());
    QVERIFY(Ended(merlin->Play("Wave")));
}

void TestAgentStops::typedStopAllSparesWhatHasBegun()
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

void TestAgentStops::typedStopAllNeverRemovesShowOrHide()
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

void TestAgentStops::typedStopAllTakesOnlyItsTypes_data()
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

void TestAgentStops::typedStopAllTakesOnlyItsTypes()
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

void TestAgentStops::stopOfAnIdleOneDoesNothing()
{
    const auto merlin = Visible();
    merlin->Stop();
    merlin->StopAll();
    merlin->StopAll("Move,Speak,Play,Get");
    const auto hidden = Loaded("Genie");
    hidden->Stop();
    hidden->StopAll();
    QVERIFY(merlin->Visible());
    QVERIFY(!hidden->Visible());
    QVERIFY(Ended(merlin->Play("Wave")));
}

void TestAgentStops::stopTakesWaitingShowsAndHidesToo()
{
    const auto merlin = Visible();
    merlin->Play("Pleased");
    const auto hide = merlin->Hide();
    const auto show = merlin->Show();
    merlin->Stop();
    COMPARE_STATUS(hide, kRequestInterrupted, kRemovedFromQueue);
    COMPARE_STATUS(show, kRequestInterrupted, kRemovedFromQueue);
}

void TestAgentStops::stopAllTakesWaitingShowsAndHidesToo()
{
    const auto merlin = Visible();
    const auto play = merlin->Play("Pleased");
    const auto hide = merlin->Hide();
    const auto show = merlin->Show();
    merlin->StopAll();
    COMPARE_STATUS(play, kRequestInterrupted, kInterruptedByProgram);
    COMPARE_STATUS(hide, kRequestInterrupted, kRemovedFromQueue);
    COMPARE_STATUS(show, kRequestInterrupted, kRemovedFromQueue);
    QVERIFY(merlin->Visible());
}

void TestAgentStops::stopTakesARunningSpeechAndMove()
{
    const auto merlin = Visible();
    const auto speak = merlin->Speak("This will not be heard to its end");
    Pass(300);
    merlin->Stop();
    COMPARE_STATUS(speak, kRequestInterrupted, kInterruptedByProgram);
    QCOMPARE(m_service->Talking(), 0);
    const auto move = merlin->MoveTo(800, 100, 5000);
    Pass(2500);
    merlin->Stop();
    COMPARE_STATUS(move, kRequestInterrupted, kInterruptedByProgram);
    const int left = merlin->Left();
    QVERIFY(left < 800);
    Pass(3000);
    QCOMPARE(int(merlin->Left()), left); // where he was stopped
}

void TestAgentStops::stopNeverMakesAFailure()
{
    // A wait for the sound would take Status 1 for a broken device.
    const auto merlin = Visible();
    const auto genie = Visible("Genie");
    const std::vector<RequestReference> requests = { merlin->Speak("One"), merlin->Speak("Two"),
                                                     genie->Speak("Three") };
    Pass(100);
    genie->StopAll();
    merlin->StopAll();
    Pass(3000);
    for (const auto &request : requests)
        QCOMPARE(int(request->Status()), int(kRequestInterrupted));
}

void TestAgentStops::stopOfOneWaitingShowOrHideTakesJustThat()
{
    const auto merlin = Visible();
    merlin->Play("Pleased");
    const auto hide = merlin->Hide();
    const auto last = merlin->Play("Wave");
    merlin->Stop(hide);
    COMPARE_STATUS(hide, kRequestInterrupted, kRemovedFromQueue);
    QVERIFY(Ended(last));
    COMPARE_STATUS(last, kRequestDone, 0);
}

void TestAgentStops::stopOfARunningShowLeavesItVisible()
{
    const auto merlin = Loaded();
    const auto show = merlin->Show();
    const auto speak = merlin->Speak("Here I am");
    merlin->Stop(show);
    COMPARE_STATUS(show, kRequestInterrupted, kInterruptedByProgram);
    COMPARE_STATUS(speak, kRequestRunning, 0);
    QVERIFY(merlin->Visible());
    QVERIFY(Ended(speak));
    COMPARE_STATUS(speak, kRequestDone, 0);
}

void TestAgentStops::stopOfNoRequestRaises()
{
    const auto merlin = Visible();
    QCOMPARE(Raised([&] { merlin->Stop(RequestReference()); }), qint32(kObjectNotSet));
}

void TestAgentStops::stopOfAForeignEndedRequestRaisesLikeAnUnknownOne()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto request = genie->Play("Pleased");
    QVERIFY(Ended(request));
    QCOMPARE(Raised([&] { merlin->Stop(request); }), qint32(kRequestNotInQueue));
}

void TestAgentStops::stopAllHaltsALoop()
{
    const auto peedy = Visible("Peedy");
    const auto loop = peedy->Play("idle3_2");
    Pass(4000);
    peedy->StopAll();
    COMPARE_STATUS(loop, kRequestInterrupted, kInterruptedByProgram);
    QVERIFY(Ended(peedy->Play("Wave")));
}

void TestAgentStops::theFarewellFindsHiddenFiguresShown()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Loaded("Genie");
    const auto peedy = Visible("Peedy");
    m_service->HideByMenu("Peedy");
    QVERIFY(m_service->Until([&] { return !peedy->Visible(); }));
    genie->Show();
    peedy->Show();
    merlin->StopAll();
    genie->StopAll();
    peedy->StopAll();
    const auto speak = merlin->Speak("Sorry you have to go. Bye now.");
    QVERIFY(Ended(speak));
    COMPARE_STATUS(speak, kRequestDone, 0);
    merlin->Play("Wave");
    genie->Play("Wave");
    const auto wave = peedy->Play("Wave");
    QVERIFY(Ended(wave));
    COMPARE_STATUS(wave, kRequestDone, 0);
}

void TestAgentStops::theLineThatLeadsToTheSetUpIsHeardAndThePleasureIsNotSeen()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    merlin->Speak("A long story");
    merlin->Play("Explain");
    genie->Speak("A longer story");
    merlin->Stop();
    genie->Stop();
    const auto speak = merlin->Speak("We'll be back with you");
    const auto play = merlin->Play("Pleased");
    merlin->StopAll("Move,Speak,Play,Get");
    genie->StopAll("Move,Speak,Play,Get");
    COMPARE_STATUS(play, kRequestInterrupted, kRemovedFromQueue);
    QVERIFY(Ended(speak));
    COMPARE_STATUS(speak, kRequestDone, 0);
}

void TestAgentStops::theLineThatLeadsToTheSetUpIsClearedBehindAShow()
{
    const auto merlin = Loaded("Merlin");
    const auto show = merlin->Show();
    merlin->Stop(); // a Show goes on
    const auto speak = merlin->Speak("We'll be back with you");
    const auto play = merlin->Play("Pleased");
    merlin->StopAll("Move,Speak,Play,Get");
    COMPARE_STATUS(speak, kRequestInterrupted, kRemovedFromQueue);
    COMPARE_STATUS(play, kRequestInterrupted, kRemovedFromQueue);
    QVERIFY(Ended(show));
    COMPARE_STATUS(show, kRequestDone, 0);
}

void TestAgentStops::typedStopAllSparesASpeakThatWaitsForTheVoice()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    merlin->Speak("First");
    const auto waiting = genie->Speak("Second");
    COMPARE_STATUS(waiting, kRequestRunning, 0);
    genie->StopAll("Speak");
    QVERIFY(Ended(waiting));
    COMPARE_STATUS(waiting, kRequestDone, 0);
}

QTEST_MAIN(TestAgentStops)
#include "TestAgentStops.moc"
