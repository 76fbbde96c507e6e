#include "ContractFixture.h"

using namespace platform;

// Clients: loading, leaving, and what becomes of references, requests, figures and sizes.
class TestAgentConnection : public ContractFixture {
    Q_OBJECT

private slots:
    void initTestCase_data() { ChooseServices(); }
    void init() { Begin(); }
    void cleanup() { End(); }

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
    void aLoadThatFailsRaisesAndLeavesItsIdTaken();
    void idsAreOfAnyCase();
    void aFreshFigureIsHiddenInTheCornerAtItsDesignedSize();
    void loadingWithEachScreenNeverGrowsThem();
    void thePlaceIsForgottenWithTheLastClient();
    void oneQueueForAllClients();
    void everyCallOnALostReferenceRaises_data();
    void everyCallOnALostReferenceRaises();
    void theServiceComesBackWithTheNextClient();
    void aControlThatIsLetGoEndsItsRequests();
    void aControlThatIsLetGoLeavesTheFiguresOfOthersAlone();
    void figuresWithoutAHideVanishAtOnce();
    void aDepartureIsSeenForAWhileAndWithoutVoice();
    void theUsersHideIsPlayedOutToo();
    void nothingCanBeAskedOfADepartingFigure();
    void aDepartureDoesNotMixWithTheNextFigure();
    void theVoiceOfALostClientGoesToTheNext();
    void noEventsComeAfterALostConnection();
    void hidingPassesTheUsersInputOn();
    void showingWhomIsSeenTakesTheUsersInput();
    void thePropertySheetIsOneForAllClients();
    void thePropertySheetOfALostClientRaises();
    void aChangeOfTheUsersOptionsIsToldToAllClients();
};

void TestAgentConnection::sizesAreSharedAndForgottenWithTheLastClient()
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

void TestAgentConnection::sizeBeyondSixteenBitsRaises()
{
    const auto merlin = Loaded();
    merlin->SetHeight(20000);
    QCOMPARE(Raised([&] { merlin->SetHeight(merlin->Height() * 2); }), qint32(kOverflow));
    QCOMPARE(Raised([&] { merlin->SetHeight(0); }), qint32(kInvalidCall));
}

void TestAgentConnection::aReferenceOutlivesItsScreenButRefuses()
{
    const auto merlin = Visible();
    const auto other = m_service->Engine().CreateControl();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { merlin->Hide(); }), qint32(kAgentRefuses));
    QCOMPARE(Raised([&] { merlin->StopAll(); }), qint32(kAgentRefuses));
    QCOMPARE(Raised([&] { merlin->WordBalloon().SetVisible(false); }), qint32(kAgentRefuses));
    other->Disconnect();
}

void TestAgentConnection::theLastClientGoneMakesReferencesDead()
{
    const auto merlin = Visible();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { merlin->Hide(); }), qint32(kAgentGone));
    QCOMPARE(Raised([&] { merlin->Height(); }), qint32(kAgentGone));
    QCOMPARE(Raised([&] { m_control->Load("Genie", "Genie.acs"); }), qint32(kAgentGone));
}

void TestAgentConnection::loadTwiceOnOneControlRaises()
{
    Loaded();
    QCOMPARE(Raised([&] { Loaded(); }), qint32(kAlreadyLoaded));
    QCOMPARE(Raised([&] { m_control->Load("merlin", "Merlin.acs"); }), qint32(kAlreadyLoaded));
}

void TestAgentConnection::aCharacterThatIsNotLoadedIsRefused()
{
    QCOMPARE(Raised([&] { m_control->Character("Merlin"); }), qint32(kAgentRefuses));
}

void TestAgentConnection::aControlIsConnectedUntilItGoes()
{
    QVERIFY(m_control->Connected());
    m_control->Disconnect();
    QVERIFY(!m_control->Connected());
    m_control->Disconnect();
    QVERIFY(!m_control->Connected());
    const AgentControlReference nothing;
    QCOMPARE(Raised([&] { nothing->Connected(); }), qint32(kObjectNotSet));
}

void TestAgentConnection::requestsOfALostClientAreInterrupted()
{
    const auto merlin = Visible();
    const auto running = merlin->Speak("Hello there");
    const auto waiting = merlin->Play("Wave");
    m_control->Disconnect();
    QCOMPARE(int(running->Status()), int(kRequestInterrupted));
    QCOMPARE(int(waiting->Status()), int(kRequestInterrupted));
    QCOMPARE(running->Number(), qint32(kRemovedFromQueue));
}

void TestAgentConnection::figuresOfALostClientAreGone()
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

void TestAgentConnection::aHideUnderWayIsPlayedOutAfterItsClientHasGone()
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

void TestAgentConnection::commandsGoToTheClientShownLast()
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

void TestAgentConnection::aLoadThatFailsRaisesAndLeavesItsIdTaken()
{
    if (auto *fake = dynamic_cast<support::FakeAgentService *>(m_service.get()))
        fake->stage.SetFileFailure("Nobody.acs", kAgentFileMissing);
    QCOMPARE(Raised([&] { m_control->Load("Nobody", "Nobody.acs"); }), qint32(kAgentFileMissing));
    QCOMPARE(Raised([&] { m_control->Character("Nobody"); }), qint32(kAgentRefuses));
    QCOMPARE(Raised([&] { m_control->Load("Nobody", "Merlin.acs"); }), qint32(kAlreadyLoaded));
    QVERIFY(Loaded()->Height() > 0);
}

void TestAgentConnection::idsAreOfAnyCase()
{
    m_control->Load("mERLIN", "Merlin.acs");
    QCOMPARE(int(m_control->Character("Merlin")->Height()), 128);
}

void TestAgentConnection::aFreshFigureIsHiddenInTheCornerAtItsDesignedSize()
{
    const auto peedy = Loaded("Peedy");
    QVERIFY(!peedy->Visible());
    QCOMPARE(int(peedy->Left()), 0);
    QCOMPARE(int(peedy->Top()), 0);
    QCOMPARE(int(peedy->Width()), 128);
    QCOMPARE(int(peedy->Height()), 128);
}

void TestAgentConnection::loadingWithEachScreenNeverGrowsThem()
{
    for (int visit = 0; visit < 12; ++visit) {
        const auto screen = m_service->Engine().CreateControl();
        screen->Load("Merlin", "Merlin.acs");
        const auto merlin = screen->Character("Merlin");
        merlin->SetHeight(merlin->Height() * 2);
        merlin->SetWidth(merlin->Width() * 2);
        QCOMPARE(int(merlin->Height()), 256);
        QCOMPARE(int(merlin->Width()), 256);
        merlin->Show();
        merlin->Hide(); // his departure is still seen when the next screen comes
        screen->Disconnect();
    }
}

void TestAgentConnection::thePlaceIsForgottenWithTheLastClient()
{
    QVERIFY(Ended(Visible()->MoveTo(300, 200)));
    m_control->Disconnect();
    const auto next = m_service->Engine().CreateControl();
    next->Load("Merlin", "Merlin.acs");
    QCOMPARE(int(next->Character("Merlin")->Left()), 0);
}

void TestAgentConnection::oneQueueForAllClients()
{
    const auto ours = Visible();
    const auto other = m_service->Engine().CreateControl();
    other->Load("Merlin", "Merlin.acs");
    const auto theirs = other->Character("Merlin");
    const auto first = ours->Play("Pleased");
    const auto second = theirs->Play("Wave");
    const auto third = ours->Play("Alert");
    COMPARE_STATUS(second, kRequestQueued, 0);
    m_control->Disconnect();
    COMPARE_STATUS(first, kRequestInterrupted, kRemovedFromQueue);
    COMPARE_STATUS(second, kRequestRunning, 0);
    COMPARE_STATUS(third, kRequestInterrupted, kRemovedFromQueue);
    QVERIFY(Ended(second));
    COMPARE_STATUS(second, kRequestDone, 0);
}

void TestAgentConnection::everyCallOnALostReferenceRaises_data()
{
    QTest::addColumn<bool>("othersAreServed");
    QTest::newRow("others are served") << true;
    QTest::newRow("nobody is served") << false;
}

void TestAgentConnection::everyCallOnALostReferenceRaises()
{
    QFETCH(bool, othersAreServed);
    const auto merlin = Visible();
    auto &balloon = merlin->WordBalloon();
    const auto request = merlin->Play("Pleased");
    auto other = m_service->Engine().CreateControl();
    m_control->Disconnect();
    if (!othersAreServed)
        other = nullptr;
    const std::vector<std::function<void()>> calls = {
        [&] { merlin->Show(); },
        [&] { merlin->Hide(); },
        [&] { merlin->Play("Wave"); },
        [&] { merlin->Play("Juggle"); },
        [&] { merlin->Speak("Hello"); },
        [&] { merlin->MoveTo(1, 1); },
        [&] { merlin->GestureAt(1, 1); },
        [&] { merlin->Stop(); },
        [&] { merlin->Stop(request); },
        [&] { merlin->StopAll(); },
        [&] { merlin->StopAll("Play"); },
        [&] { merlin->Left(); },
        [&] { merlin->Top(); },
        [&] { merlin->Width(); },
        [&] { merlin->Height(); },
        [&] { merlin->SetWidth(10); },
        [&] { merlin->SetHeight(10); },
        [&] { merlin->Visible(); },
        [&] { merlin->WordBalloon(); },
        [&] { balloon.SetVisible(false); },
        [&] { balloon.Visible(); },
        [&] { m_control->Load("Genie", "Genie.acs"); },
        [&] { m_control->Character("Merlin"); },
    };
    for (const auto &call : calls)
        QCOMPARE(Raised(call), qint32(othersAreServed ? kAgentRefuses : kAgentGone));
    QVERIFY(!m_control->Connected());
}

void TestAgentConnection::theServiceComesBackWithTheNextClient()
{
    const auto stale = Visible();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { stale->Hide(); }), qint32(kAgentGone));
    const auto next = m_service->Engine().CreateControl();
    QVERIFY(next->Connected());
    next->Load("Merlin", "Merlin.acs");
    next->Character("Merlin")->Show(true);
    QCOMPARE(Raised([&] { stale->Hide(); }), qint32(kAgentRefuses)); // never the new figure
    QVERIFY(next->Character("Merlin")->Visible());
}

void TestAgentConnection::aControlThatIsLetGoEndsItsRequests()
{
    auto control = m_service->Engine().CreateControl();
    control->Load("Merlin", "Merlin.acs");
    auto merlin = control->Character("Merlin");
    merlin->Show(true);
    const auto running = merlin->Speak("Nobody holds me any more");
    const auto waiting = merlin->Play("Wave");
    Pass(200);
    merlin = nullptr;
    control = nullptr;
    COMPARE_STATUS(running, kRequestInterrupted, kRemovedFromQueue);
    COMPARE_STATUS(waiting, kRequestInterrupted, kRemovedFromQueue);
    QCOMPARE(m_service->Talking(), 0);
    QCOMPARE(m_service->Seen(), 0);
}

void TestAgentConnection::aControlThatIsLetGoLeavesTheFiguresOfOthersAlone()
{
    const auto ours = Visible();
    const auto speak = ours->Speak("I go on");
    {
        const auto other = m_service->Engine().CreateControl();
        other->Load("Merlin", "Merlin.acs");
        other->Character("Merlin")->Play("Wave");
    }
    COMPARE_STATUS(speak, kRequestRunning, 0);
    const auto behind = ours->Play("Pleased");
    QVERIFY(Ended(behind));
    COMPARE_STATUS(behind, kRequestDone, 0);
}

void TestAgentConnection::figuresWithoutAHideVanishAtOnce()
{
    const auto merlin = Visible();
    merlin->Speak("I have more to say");
    QVERIFY(m_service->Until([&] { return m_service->Talking() == 1; }));
    m_control->Disconnect();
    QCOMPARE(m_service->Seen(), 0);
    QCOMPARE(m_service->Talking(), 0);
}

void TestAgentConnection::aDepartureIsSeenForAWhileAndWithoutVoice()
{
    const auto merlin = Visible();
    const auto genie = Visible("Genie");
    merlin->Speak("I have more to say");
    merlin->Hide();
    genie->Play("idle3_2");
    genie->Hide();
    const auto peedy = Visible("Peedy");
    m_control->Disconnect();
    QCOMPARE(m_service->Seen(), 2); // Peedy was not asked to hide
    QCOMPARE(m_service->Talking(), 0);
    Pass(1520);
    QCOMPARE(m_service->Seen(), 0);
}

void TestAgentConnection::theUsersHideIsPlayedOutToo()
{
    const auto merlin = Visible();
    merlin->Play("Pleased");
    m_service->HideByMenu("Merlin");
    Pass(40);
    m_control->Disconnect();
    QCOMPARE(m_service->Seen(), 1);
    Pass(1520);
    QCOMPARE(m_service->Seen(), 0);
}

void TestAgentConnection::nothingCanBeAskedOfADepartingFigure()
{
    const auto merlin = Visible();
    merlin->Hide();
    m_control->Disconnect();
    QCOMPARE(m_service->Seen(), 1);
    m_service->HideByMenu("Merlin");
    m_service->BeginDrag("Merlin");
    Pass(1520);
    QCOMPARE(m_service->Seen(), 0);
}

void TestAgentConnection::aDepartureDoesNotMixWithTheNextFigure()
{
    const auto merlin = Visible();
    merlin->Hide();
    m_control->Disconnect();
    const auto next = m_service->Engine().CreateControl();
    next->Load("Merlin", "Merlin.acs");
    const auto fresh = next->Character("Merlin");
    const auto play = fresh->Play("Wave");
    COMPARE_STATUS(play, kRequestFailed, kCharacterHidden);
    fresh->Show(true);
    QCOMPARE(m_service->Seen(), 2);
    Pass(1520);
    QCOMPARE(m_service->Seen(), 1);
    QVERIFY(fresh->Visible());
}

void TestAgentConnection::theVoiceOfALostClientGoesToTheNext()
{
    const auto other = m_service->Engine().CreateControl();
    other->Load("Genie", "Genie.acs");
    const auto genie = other->Character("Genie");
    genie->Show(true);
    const auto merlin = Visible();
    merlin->Speak("A line that is cut off in the middle of it all");
    const auto waiting = genie->Speak("Now me");
    m_control->Disconnect();
    QVERIFY(Ended(waiting));
    COMPARE_STATUS(waiting, kRequestDone, 0);
}

void TestAgentConnection::noEventsComeAfterALostConnection()
{
    int events = 0;
    m_control->requestStart = [&](const RequestReference &) { ++events; };
    m_control->requestComplete = [&](const RequestReference &) { ++events; };
    m_control->command = [&](const UserInput &) { ++events; };
    const auto merlin = Visible();
    merlin->Speak("Hello");
    m_service->Engine().DeliverCommand("a");
    m_control->Disconnect();
    Pass(3000);
    QCOMPARE(events, 0);
}

void TestAgentConnection::hidingPassesTheUsersInputOn()
{
    QStringList heard;
    const auto other = m_service->Engine().CreateControl();
    m_control->command = [&](const UserInput &input) { heard << "first " + input.name; };
    other->command = [&](const UserInput &input) { heard << "second " + input.name; };
    Visible("Merlin");
    other->Load("Genie", "Genie.acs");
    const auto genie = other->Character("Genie");
    genie->Show(true);
    QVERIFY(Ended(genie->Hide()));
    m_service->Engine().DeliverCommand("a");
    m_service->Settle();
    genie->Show(true);
    other->Disconnect();
    m_service->Engine().DeliverCommand("b");
    m_service->Settle();
    QCOMPARE(heard, QStringList({ "first a", "first b" }));
    m_control->command = nullptr;
}

void TestAgentConnection::showingWhomIsSeenTakesTheUsersInput()
{
    QStringList heard;
    const auto other = m_service->Engine().CreateControl();
    m_control->command = [&](const UserInput &input) { heard << "first " + input.name; };
    other->command = [&](const UserInput &input) { heard << "second " + input.name; };
    const auto merlin = Visible("Merlin");
    other->Load("Genie", "Genie.acs");
    other->Character("Genie")->Show(true);
    merlin->Show();
    m_service->Engine().DeliverCommand("a");
    m_service->Settle();
    QCOMPARE(heard, QStringList({ "first a" }));
    m_control->command = nullptr;
    other->command = nullptr;
}

void TestAgentConnection::thePropertySheetIsOneForAllClients()
{
    const auto other = m_service->Engine().CreateControl();
    QVERIFY(!m_control->Sheet().Visible());
    QCOMPARE(int(m_control->Sheet().Width()), 0);
    m_control->Sheet().SetPage("copyRIGHT");
    m_control->Sheet().SetVisible(true);
    QVERIFY(other->Sheet().Visible());
    QCOMPARE(other->Sheet().Page(), QString("Copyright"));
    QCOMPARE(Raised([&] { other->Sheet().SetPage("Weather"); }), qint32(kInvalidCall));
    // It stays open when the screen that opened it goes.
    m_control->Disconnect();
    QVERIFY(other->Sheet().Visible());
    other->Sheet().SetVisible(false);
    QVERIFY(!other->Sheet().Visible());
}

void TestAgentConnection::thePropertySheetOfALostClientRaises()
{
    const auto other = m_service->Engine().CreateControl();
    m_control->Disconnect();
    QCOMPARE(Raised([&] { m_control->Sheet().SetVisible(true); }), qint32(kAgentRefuses));
    QVERIFY(!other->Sheet().Visible());
    other->Disconnect();
    QCOMPARE(Raised([&] { other->Sheet().Visible(); }), qint32(kAgentGone));
}

void TestAgentConnection::aChangeOfTheUsersOptionsIsToldToAllClients()
{
    const auto other = m_service->Engine().CreateControl();
    const auto lost = m_service->Engine().CreateControl();
    QStringList told;
    m_control->agentPropertyChange = [&] { told << "first"; };
    other->agentPropertyChange = [&] { told << "second"; };
    lost->agentPropertyChange = [&] { told << "lost"; };
    m_service->Engine().DeliverPropertyChange();
    QVERIFY(told.isEmpty());
    lost->Disconnect();
    m_service->Settle();
    QCOMPARE(told, (QStringList{ "first", "second" }));
}

QTEST_MAIN(TestAgentConnection)
#include "TestAgentConnection.moc"
