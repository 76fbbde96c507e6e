#include "ContractFixture.h"

using namespace platform;

// One voice for all, and when a balloon is seen.
class TestAgentSpeech : public ContractFixture {
    Q_OBJECT

private slots:
    void initTestCase_data() { ChooseServices(); }
    void init() { Begin(); }
    void cleanup() { End(); }

    void voicesNeverOverlapAndNeverFail();
    void aStoppedSpeakerGivesTheVoiceToTheNext();
    void emptySpeechIsDoneAtOnce();
    void theLastLineIsSaidOnceMore();
    void theVoiceIsFirstComeFirstServed();
    void anUnusableVoiceEndsWithStatusOne_data();
    void anUnusableVoiceEndsWithStatusOne();
    void whoIsHiddenHasNeitherVoiceNorBalloon();
    void aSpeechShowsABalloon();
    void hidingTakesTheBalloonAway();
    void balloonOffIsForTheNextSpeechOnly();
    void balloonOffTwiceRoundALineHidesThatLineOnly();
    void balloonOffBehindAnEndedLineReachesTheNext();
    void balloonOffHidesTheOneThatIsShownAndTheNext();
    void balloonOnTakesTheMarkBack();
    void theMarkIsForOneCharacter();
};

void TestAgentSpeech::voicesNeverOverlapAndNeverFail()
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

void TestAgentSpeech::aStoppedSpeakerGivesTheVoiceToTheNext()
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

void TestAgentSpeech::emptySpeechIsDoneAtOnce()
{
    const auto merlin = Visible();
    QCOMPARE(int(merlin->Speak("")->Status()), int(kRequestDone));
    QCOMPARE(int(merlin->Speak("\\Map=\"\"=\"\"\\")->Status()), int(kRequestDone));
}

void TestAgentSpeech::theLastLineIsSaidOnceMore()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    QCOMPARE(int(merlin->Speak("\\lst\\")->Status()), int(kRequestDone)); // nothing has been said
    QVERIFY(Ended(merlin->Speak("Once upon a time")));
    for (int time = 0; time < 2; ++time) {
        const auto again = merlin->Speak("\\Lst\\");
        COMPARE_STATUS(again, kRequestRunning, 0);
        QVERIFY(m_service->Until([&] { return m_service->Talking() == 1; }));
        QVERIFY(Ended(again));
        COMPARE_STATUS(again, kRequestDone, 0);
    }
    // Everybody repeats what he has said himself.
    QCOMPARE(int(genie->Speak("\\lst\\")->Status()), int(kRequestDone));
}

void TestAgentSpeech::theVoiceIsFirstComeFirstServed()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    const auto peedy = Visible("Peedy");
    merlin->Speak("One");
    const auto early = peedy->Speak("Two");
    const auto late = genie->Speak("Three");
    const auto lateAgain = peedy->Speak("Four");
    COMPARE_STATUS(early, kRequestRunning, 0);
    COMPARE_STATUS(late, kRequestRunning, 0);
    int most = 0;
    QVERIFY(m_service->Until([&] {
        most = std::max(most, m_service->Talking());
        return early->Status() == kRequestDone;
    }));
    QCOMPARE(int(late->Status()), int(kRequestRunning));
    QVERIFY(Ended(late));
    COMPARE_STATUS(lateAgain, kRequestRunning, 0);
    QVERIFY(Ended(lateAgain));
    QCOMPARE(most, 1);
}

void TestAgentSpeech::anUnusableVoiceEndsWithStatusOne_data()
{
    QTest::addColumn<qint32>("number");
    QTest::newRow("no device") << qint32(kAudioDeviceUnusable);
    QTest::newRow("no engine") << qint32(kSpeechEngineUnusable);
}

void TestAgentSpeech::anUnusableVoiceEndsWithStatusOne()
{
    QFETCH(qint32, number);
    const auto merlin = Visible();
    const auto genie = Visible("Genie");
    m_service->BreakVoice(number);
    const auto speak = merlin->Speak("Hello, Merlin is here !");
    const auto waiting = genie->Speak("So is Genie");
    COMPARE_STATUS(speak, kRequestRunning, 0);
    QVERIFY(Ended(waiting));
    COMPARE_STATUS(speak, kRequestFailed, number);
    COMPARE_STATUS(waiting, kRequestFailed, number);
    QVERIFY(!merlin->WordBalloon().Visible());
    QCOMPARE(speak->Description(), StockDescription(number));
    m_service->BreakVoice(0);
    const auto again = merlin->Speak("Hello");
    QVERIFY(Ended(again));
    COMPARE_STATUS(again, kRequestDone, 0);
}

void TestAgentSpeech::whoIsHiddenHasNeitherVoiceNorBalloon()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Loaded("Genie");
    COMPARE_STATUS(genie->Speak("Nobody hears this"), kRequestFailed, kCharacterHidden);
    COMPARE_STATUS(genie->Speak(""), kRequestFailed, kCharacterHidden);
    QVERIFY(!genie->WordBalloon().Visible());
    const auto speak = merlin->Speak("The voice is free");
    QVERIFY(m_service->Until([&] { return m_service->Talking() == 1; }));
    QVERIFY(Ended(speak));
}

void TestAgentSpeech::aSpeechShowsABalloon()
{
    const auto merlin = Visible();
    const auto speak = merlin->Speak("Welcome to Tumble Wick");
    QVERIFY(m_service->Until([&] { return merlin->WordBalloon().Visible(); }));
    COMPARE_STATUS(speak, kRequestRunning, 0);
    merlin->StopAll();
    QVERIFY(!merlin->WordBalloon().Visible());
}

void TestAgentSpeech::hidingTakesTheBalloonAway()
{
    const auto merlin = Visible();
    QVERIFY(Ended(merlin->Speak("Good bye")));
    QVERIFY(Ended(merlin->Hide()));
    QVERIFY(!merlin->WordBalloon().Visible());
}

void TestAgentSpeech::balloonOffIsForTheNextSpeechOnly()
{
    const auto merlin = Visible();
    merlin->WordBalloon().SetVisible(false);
    const auto secret = merlin->Speak("The secret word is said");
    const auto open = merlin->Speak("This may be read");
    bool seen = false;
    QVERIFY(m_service->Until([&] {
        seen = seen || (secret->Status() == kRequestRunning && merlin->WordBalloon().Visible());
        return secret->Status() == kRequestDone;
    }));
    QVERIFY(!seen);
    QVERIFY(m_service->Until([&] { return merlin->WordBalloon().Visible(); }));
    COMPARE_STATUS(open, kRequestRunning, 0);
}

void TestAgentSpeech::balloonOffTwiceRoundALineHidesThatLineOnly()
{
    // The question is asked with the balloon off before and behind it; the praise that follows has one.
    const auto merlin = Visible();
    merlin->Play("Read");
    merlin->WordBalloon().SetVisible(false);
    const auto question = merlin->Speak("Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?");
    merlin->WordBalloon().SetVisible(false);
    bool seen = false;
    QVERIFY(m_service->Until([&] {
        seen = seen || merlin->WordBalloon().Visible();
        return question->Status() == kRequestDone;
    }));
    QVERIFY(!seen);
    merlin->Speak("Well done");
    QVERIFY(m_service->Until([&] { return merlin->WordBalloon().Visible(); }));
}

void TestAgentSpeech::balloonOffBehindAnEndedLineReachesTheNext()
{
    const auto merlin = Visible();
    merlin->WordBalloon().SetVisible(false);
    const auto first = merlin->Speak("One"); // somebody keeps it, as the game does
    QVERIFY(Ended(first));
    merlin->WordBalloon().SetVisible(false);
    const auto second = merlin->Speak("Two is without balloon too");
    bool seen = false;
    QVERIFY(m_service->Until([&] {
        seen = seen || merlin->WordBalloon().Visible();
        return second->Status() == kRequestDone;
    }));
    QVERIFY(!seen);
}

void TestAgentSpeech::balloonOffHidesTheOneThatIsShownAndTheNext()
{
    const auto merlin = Visible();
    const auto old = merlin->Speak("An older line that is still being said by him");
    QVERIFY(m_service->Until([&] { return merlin->WordBalloon().Visible(); }));
    merlin->WordBalloon().SetVisible(false);
    QVERIFY(!merlin->WordBalloon().Visible());
    const auto secret = merlin->Speak("The secret word");
    bool seen = false;
    QVERIFY(m_service->Until([&] {
        seen = seen || merlin->WordBalloon().Visible();
        return secret->Status() == kRequestDone;
    }));
    QVERIFY(!seen);
    COMPARE_STATUS(old, kRequestDone, 0);
}

void TestAgentSpeech::balloonOnTakesTheMarkBack()
{
    const auto merlin = Visible();
    merlin->WordBalloon().SetVisible(false);
    merlin->WordBalloon().SetVisible(true);
    merlin->Speak("This may be read");
    QVERIFY(m_service->Until([&] { return merlin->WordBalloon().Visible(); }));
}

void TestAgentSpeech::theMarkIsForOneCharacter()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    merlin->WordBalloon().SetVisible(false);
    genie->Speak("This may be read");
    QVERIFY(m_service->Until([&] { return genie->WordBalloon().Visible(); }));
}

QTEST_MAIN(TestAgentSpeech)
#include "TestAgentSpeech.moc"
