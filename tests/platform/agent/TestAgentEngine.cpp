#include "support/AgentService.h"
#include "support/KeptLog.h"

#include <QTest>

using namespace platform;

// What the engine asks of its figures, seen in what the fake ones write down.
class TestAgentEngine : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void movesAndGesturesAreChosenFromTheFiguresOwnSide_data();
    void movesAndGesturesAreChosenFromTheFiguresOwnSide();
    void aMoveIsJudgedWhenItBegins();
    void balloonOffMeansTheNextSpeechOnly();
    void aSecondBalloonOffBehindTheSameLineDoesNotReachTheNext();
    void balloonOffWhileAnOlderLineTalksHidesItAndTheNext();
    void balloonOnTakesTheMarkBack();
    void speechFailuresBecomeStatusOne_data();
    void speechFailuresBecomeStatusOne();
    void aFailedSpeechGivesTheVoiceToTheNext();
    void aDragHoldsAMoveUntilItEnds();
    void hideAskedByTheUserStandsBehindThePresentWork();
    void onlyTheUsersOwnHideLeavesAWayBack();
    void whoSpokeLastIsSpokenTo();
    void menusHoldTheCommandsOfTheClientInFront();
    void aMenuHoldsNoCommandsOfSomebodyElsesClient();
    void menusCallBackWhomTheUserSentAway();
    void theOthersFigureRestsWhenALostClientsWorkIsCutOff();
    void aStateWithoutAnimationFails();
    void aFigureRestsWhenItsQueueRunsEmpty();
    void aFigureRestsWhenItIsStopped_data();
    void aFigureRestsWhenItIsStopped();
    void aRunningHideIsNotBegunAnewWhenItsClientGoes();
    void whoDepartsHasNoMenuAndTakesNoWishes();
    void aWaitingHideIsPlayedWhenItsClientGoes();
    void aDepartureEndsInTimeWhateverTheFigureDoes();
    void withoutAHideFiguresVanishAtOnce();
    void aLoadThatFailsLeavesItsIdTaken();
    void theEngineMayGoBeforeItsControls();
    void traceLinesHaveOneForm();

private:
    CharacterReference Visible(const QString &id)
    {
        m_control->Load(id, id + QStringLiteral(".acs"));
        const CharacterReference character = m_control->Character(id);
        character->Show(true);
        m_service->stage.ClearLog();
        return character;
    }

    std::unique_ptr<support::FakeAgentService> m_service;
    AgentControlReference m_control;
};

void TestAgentEngine::init()
{
    m_service = std::make_unique<support::FakeAgentService>();
    m_control = m_service->Engine().CreateControl();
}

void TestAgentEngine::cleanup()
{
    m_control = nullptr;
    m_service.reset();
}

void TestAgentEngine::movesAndGesturesAreChosenFromTheFiguresOwnSide_data()
{
    QTest::addColumn<QPoint>("target"); // the figure stands at 100,100 and is 128 wide and high
    QTest::addColumn<QString>("move");
    QTest::addColumn<QString>("gesture");
    QTest::newRow("to the right of the screen") << QPoint(400, 110) << "MoveLeft"
                                                << "GestureLeft";
    QTest::newRow("to the left of the screen") << QPoint(-300, 90) << "MoveRight"
                                               << "GestureRight";
    QTest::newRow("up") << QPoint(120, -400) << "MoveUp"
                        << "GestureUp";
    QTest::newRow("down") << QPoint(120, 700) << "MoveDown"
                          << "GestureDown";
    QTest::newRow("as far across as down") << QPoint(363, 363) << "MoveLeft"
                                           << "GestureLeft";
    QTest::newRow("nowhere") << QPoint(100, 100) << "MoveDown"
                             << "GestureDown";
}

void TestAgentEngine::movesAndGesturesAreChosenFromTheFiguresOwnSide()
{
    QFETCH(QPoint, target);
    const auto merlin = Visible("Merlin");
    merlin->MoveTo(100, 100, 0);
    m_service->stage.ClearLog();
    merlin->GestureAt(target.x(), target.y());
    m_service->time.RunUntilIdle();
    merlin->MoveTo(target.x(), target.y());
    m_service->time.RunUntilIdle();
    QTEST(m_service->stage.Log().value(0).section('"', 1, 1), "gesture");
    QTEST(m_service->stage.Log().value(2).section('"', 1, 1), "move");
    QCOMPARE(m_service->stage.Log().value(3),
             QString("Merlin slides to %1,%2").arg(target.x()).arg(target.y()));
}

void TestAgentEngine::aMoveIsJudgedWhenItBegins()
{
    const auto merlin = Visible("Merlin");
    merlin->MoveTo(500, 0);
    merlin->MoveTo(400, 0); // to the right of where he is asked, to the left of where he will be
    m_service->time.RunUntilIdle();
    QVERIFY(m_service->stage.Log().contains("Merlin performs \"MoveRight\""));
}

void TestAgentEngine::balloonOffMeansTheNextSpeechOnly()
{
    const auto merlin = Visible("Merlin");
    merlin->WordBalloon().SetVisible(false);
    merlin->Speak("secret");
    merlin->Speak("open");
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log().value(0), QString("Merlin says \"secret\" without balloon"));
    QVERIFY(m_service->stage.Log().value(1).contains("showing"));
}

void TestAgentEngine::aSecondBalloonOffBehindTheSameLineDoesNotReachTheNext()
{
    const auto merlin = Visible("Merlin");
    merlin->Play("Read");
    merlin->WordBalloon().SetVisible(false);
    merlin->Speak("secret");
    merlin->WordBalloon().SetVisible(false);
    merlin->Speak("praise");
    m_service->time.RunUntilIdle();
    QVERIFY(m_service->stage.Log().contains("Merlin says \"secret\" without balloon"));
    QVERIFY(m_service->stage.Log().contains("Merlin says \"praise\" showing \"praise\""));
}

void TestAgentEngine::balloonOffWhileAnOlderLineTalksHidesItAndTheNext()
{
    const auto merlin = Visible("Merlin");
    merlin->Speak("old");
    merlin->WordBalloon().SetVisible(false);
    merlin->Speak("secret");
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log().value(1), QString("Merlin hides the balloon"));
    QCOMPARE(m_service->stage.Log().value(2), QString("Merlin says \"secret\" without balloon"));
}

void TestAgentEngine::balloonOnTakesTheMarkBack()
{
    const auto merlin = Visible("Merlin");
    merlin->WordBalloon().SetVisible(false);
    merlin->WordBalloon().SetVisible(true);
    merlin->Speak("open");
    QVERIFY(merlin->WordBalloon().Visible());
}

void TestAgentEngine::speechFailuresBecomeStatusOne_data()
{
    QTest::addColumn<qint32>("number");
    QTest::newRow("no device") << qint32(kAudioDeviceUnusable);
    QTest::newRow("no engine") << qint32(kSpeechEngineUnusable);
}

void TestAgentEngine::speechFailuresBecomeStatusOne()
{
    QFETCH(qint32, number);
    const auto merlin = Visible("Merlin");
    m_service->stage.SetSpeechFailure(number);
    const auto speak = merlin->Speak("Hello");
    QCOMPARE(int(speak->Status()), int(kRequestRunning));
    m_service->time.RunUntilIdle();
    QCOMPARE(int(speak->Status()), int(kRequestFailed));
    QCOMPARE(speak->Number(), number);
    QCOMPARE(speak->Description(), StockDescription(number));
}

void TestAgentEngine::aFailedSpeechGivesTheVoiceToTheNext()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    m_service->stage.FailNext("Merlin", "Speak", kAudioDeviceUnusable);
    merlin->Speak("One");
    const auto second = genie->Speak("Two");
    m_service->time.RunUntilIdle();
    QCOMPARE(int(second->Status()), int(kRequestDone));
}

void TestAgentEngine::aDragHoldsAMoveUntilItEnds()
{
    const auto merlin = Visible("Merlin");
    m_service->stage.Of("Merlin")->dragged(true);
    const auto move = merlin->MoveTo(300, 300);
    m_service->time.RunUntilIdle();
    QCOMPARE(int(move->Status()), int(kRequestRunning));
    m_service->stage.Of("Merlin")->dragged(false);
    m_service->time.RunUntilIdle();
    QCOMPARE(int(move->Status()), int(kRequestDone));
    QCOMPARE(int(merlin->Left()), 300);
}

void TestAgentEngine::hideAskedByTheUserStandsBehindThePresentWork()
{
    const auto merlin = Visible("Merlin");
    const auto speak = merlin->Speak("Hello");
    m_service->stage.Of("Merlin")->hideAsked(true);
    QVERIFY(merlin->Visible());
    m_service->time.RunUntilIdle();
    QCOMPARE(int(speak->Status()), int(kRequestDone));
    QVERIFY(!merlin->Visible());
    m_service->stage.Of("Merlin")->hideAsked(false);
    m_service->time.RunUntilIdle();
    QVERIFY(merlin->Visible());
}

void TestAgentEngine::whoSpokeLastIsSpokenTo()
{
    AgentEngine &engine = m_service->Engine();
    const auto listener = [&engine] {
        const auto found = engine.ListenerNow();
        return found ? found->name : QString();
    };
    m_control->AddCommand({ "a", "" });
    const auto genie = Visible("Genie");
    const auto merlin = Visible("Merlin");
    Visible("Peedy");
    QCOMPARE(listener(), QString()); // nobody takes commands
    m_control->command = [](const UserInput &) {};
    QVERIFY(!listener().isEmpty());
    for (const auto &[speaker, name] : { std::pair(merlin, "Merlin"), std::pair(genie, "Genie") }) {
        speaker->Speak("Now you");
        m_service->time.RunUntilIdle();
        QCOMPARE(listener(), QString(name));
    }
    merlin->MoveTo(70, 30, 0);
    merlin->Speak("And now you");
    m_service->time.RunUntilIdle();
    QCOMPARE(engine.ListenerNow()->frame.topLeft(), QPoint(70, 30));
    merlin->Hide(true);
    m_service->time.RunUntilIdle();
    QVERIFY(!listener().isEmpty() && listener() != "Merlin");
    m_control->command = nullptr;
}

void TestAgentEngine::menusHoldTheCommandsOfTheClientInFront()
{
    QStringList commands;
    m_control->command = [&](const UserInput &input) { commands << input.name; };
    m_control->AddCommand({ "dance", "&Dance" });
    m_control->AddCommand({ "secret", "" });
    m_control->AddCommand({ "away", "Away", true, false });
    m_control->AddCommand({ "later", "Later", false });
    const auto raised = [](const std::function<void()> &call) {
        try {
            call();
        } catch (const Error &error) {
            return error.Number();
        }
        return qint32(0);
    };
    QCOMPARE(raised([&] { m_control->AddCommand({ "dance", "Again" }); }), qint32(kCommandNameUsed));
    QCOMPARE(raised([&] { m_control->RemoveCommand("sing"); }), qint32(kCommandUnknown));
    Visible("Merlin");
    const auto menu = m_service->stage.Of("Merlin")->menuAsked();
    QCOMPARE(menu.size(), std::size_t(2));
    QCOMPARE(menu[0].size(), std::size_t(2));
    QCOMPARE(menu[0][0].caption, QString("&Dance"));
    QVERIFY(menu[0][0].enabled);
    QCOMPARE(menu[0][1].caption, QString("Later"));
    QVERIFY(!menu[0][1].enabled);
    QVERIFY(menu[1].empty());
    menu[0][0].chosen();
    QVERIFY(commands.isEmpty());
    m_service->Settle();
    QCOMPARE(commands, QStringList{ "dance" });
    m_control->RemoveCommand("dance");
    QCOMPARE(m_service->stage.Of("Merlin")->menuAsked()[0].size(), std::size_t(1));
    // An entry of a menu that is still open when the service has gone does nothing.
    m_control->Disconnect();
    menu[0][0].chosen();
    m_service->Settle();
    QCOMPARE(commands.size(), qsizetype(1));
}

void TestAgentEngine::aMenuHoldsNoCommandsOfSomebodyElsesClient()
{
    m_control->AddCommand({ "dance", "&Dance" });
    Visible("Merlin");
    const auto other = m_service->Engine().CreateControl();
    other->AddCommand({ "sing", "&Sing" });
    other->Load("Genie", "Genie.acs");
    other->Character("Genie")->Show(true); // and has the user's input from now on
    QVERIFY(m_service->stage.Of("Merlin")->menuAsked()[0].empty());
    const auto menu = m_service->stage.Of("Genie")->menuAsked();
    QCOMPARE(menu[0].size(), std::size_t(1));
    QCOMPARE(menu[0][0].caption, QString("&Sing"));
}

void TestAgentEngine::menusCallBackWhomTheUserSentAway()
{
    const auto merlin = Visible("Merlin");
    const auto genie = Visible("Genie");
    genie->Hide(true);
    m_service->time.RunUntilIdle();
    QVERIFY(m_service->stage.Of("Merlin")->menuAsked()[1].empty());
    genie->Show(true);
    m_service->stage.Of("Genie")->hideAsked(true);
    m_service->time.RunUntilIdle();
    QVERIFY(!genie->Visible());
    const auto menu = m_service->stage.Of("Merlin")->menuAsked();
    QCOMPARE(menu[1].size(), std::size_t(1));
    QCOMPARE(menu[1][0].caption, QString("&Show Genie"));
    menu[1][0].chosen();
    m_service->time.RunUntilIdle();
    QVERIFY(genie->Visible());
    QVERIFY(m_service->stage.Of("Merlin")->menuAsked()[1].empty());
}

void TestAgentEngine::onlyTheUsersOwnHideLeavesAWayBack()
{
    const auto merlin = Visible("Merlin");
    merlin->Speak("Hello");
    m_service->stage.Of("Merlin")->hideAsked(true);
    merlin->Stop(); // takes the user's wish with the rest
    merlin->Hide();
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log().last(), QString("Merlin disappears"));
    merlin->Show(true);
    m_service->stage.Of("Merlin")->hideAsked(true);
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log().last(), QString("Merlin disappears for the user"));
}

void TestAgentEngine::theOthersFigureRestsWhenALostClientsWorkIsCutOff()
{
    Visible("Merlin");
    const auto other = m_service->Engine().CreateControl();
    other->Load("Merlin", "Merlin.acs");
    other->Character("Merlin")->Play("Read");
    m_service->time.Run(std::chrono::milliseconds(100));
    m_service->stage.ClearLog();
    other->Disconnect();
    QCOMPARE(m_service->stage.Log(), QStringList({ "Merlin halts", "Merlin rests" }));
}

void TestAgentEngine::aStateWithoutAnimationFails()
{
    const auto merlin = Visible("Merlin");
    m_service->stage.TakeMotionAway("GestureLeft");
    m_service->stage.TakeMotionAway("MoveLeft");
    for (const auto &request : { merlin->GestureAt(900, 60), merlin->MoveTo(900, 0) }) {
        QCOMPARE(int(request->Status()), int(kRequestFailed));
        QCOMPARE(request->Number(), qint32(kStateHasNoAnimation));
    }
    QCOMPARE(int(merlin->Left()), 0);
    QCOMPARE(int(merlin->Play("Wave")->Status()), int(kRequestRunning));
}

void TestAgentEngine::aFigureRestsWhenItsQueueRunsEmpty()
{
    const auto merlin = Visible("Merlin");
    merlin->Play("Read");
    merlin->Speak("Hello");
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log(),
             QStringList(
                 { "Merlin performs \"Read\"", "Merlin says \"Hello\" showing \"Hello\"", "Merlin rests" }));
}

void TestAgentEngine::aFigureRestsWhenItIsStopped_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : { "Stop", "Stop of the request", "StopAll" })
        QTest::newRow(way) << way;
}

void TestAgentEngine::aFigureRestsWhenItIsStopped()
{
    QFETCH(QString, way);
    const auto merlin = Visible("Merlin");
    const auto play = merlin->Play("Wave");
    if (way == "Stop")
        merlin->Stop();
    else if (way == "StopAll")
        merlin->StopAll();
    else
        merlin->Stop(play);
    QCOMPARE(m_service->stage.Log(),
             QStringList({ "Merlin performs \"Wave\"", "Merlin halts", "Merlin rests" }));
}

void TestAgentEngine::aRunningHideIsNotBegunAnewWhenItsClientGoes()
{
    const auto merlin = Visible("Merlin");
    merlin->Hide();
    m_service->time.Run(std::chrono::milliseconds(600));
    m_control->Disconnect();
    QCOMPARE(m_service->stage.Log(), QStringList({ "Merlin performs \"Hide\"" }));
    m_service->time.Run(std::chrono::milliseconds(500));
    QCOMPARE(m_service->stage.Log(), QStringList({ "Merlin performs \"Hide\"", "Merlin disappears" }));
    QCOMPARE(m_service->stage.Of("Merlin"), nullptr);
}

void TestAgentEngine::whoDepartsHasNoMenuAndTakesNoWishes()
{
    const auto merlin = Visible("Merlin");
    merlin->Hide();
    m_control->Disconnect();
    auto *figure = m_service->stage.Of("Merlin");
    QVERIFY(figure);
    QVERIFY(figure->menuAsked().empty());
    figure->hideAsked(true);
    figure->hideAsked(false);
    QCOMPARE(m_service->stage.Log(), QStringList({ "Merlin performs \"Hide\"" }));
}

void TestAgentEngine::aWaitingHideIsPlayedWhenItsClientGoes()
{
    const auto merlin = Visible("Merlin");
    merlin->Speak("I shall not finish this sentence");
    merlin->Hide();
    m_control->Disconnect();
    m_service->time.RunUntilIdle();
    QCOMPARE(m_service->stage.Log().mid(1),
             QStringList({ "Merlin halts", "Merlin performs \"Hide\"", "Merlin disappears" }));
    QCOMPARE(m_service->stage.Of("Merlin"), nullptr);
}

void TestAgentEngine::aDepartureEndsInTimeWhateverTheFigureDoes()
{
    m_service->stage.motionTime = std::chrono::seconds(30);
    const auto merlin = Visible("Merlin");
    merlin->Hide();
    m_control->Disconnect();
    m_service->time.Run(std::chrono::milliseconds(1400));
    QVERIFY(m_service->stage.Of("Merlin"));
    m_service->time.Run(std::chrono::milliseconds(200));
    QCOMPARE(m_service->stage.Of("Merlin"), nullptr);
}

void TestAgentEngine::withoutAHideFiguresVanishAtOnce()
{
    const auto merlin = Visible("Merlin");
    merlin->Speak("Hello");
    m_control->Disconnect();
    QCOMPARE(m_service->stage.Of("Merlin"), nullptr);
    QCOMPARE(m_service->stage.Log().mid(1), QStringList({ "Merlin halts", "Merlin disappears" }));
}

void TestAgentEngine::aLoadThatFailsLeavesItsIdTaken()
{
    m_service->stage.SetFileFailure("Merlin.acs", kAgentFileMissing);
    const auto load = [&] { m_control->Load("Merlin", "Merlin.acs"); };
    QVERIFY_EXCEPTION_THROWN(load(), Error);
    m_service->stage.SetFileFailure("Merlin.acs", 0);
    try {
        load();
        QFAIL("the id was free");
    } catch (const Error &error) {
        QCOMPARE(error.Number(), qint32(kAlreadyLoaded));
    }
    const auto other = m_service->Engine().CreateControl();
    other->Load("Merlin", "Merlin.acs");
}

void TestAgentEngine::theEngineMayGoBeforeItsControls()
{
    const auto merlin = Visible("Merlin");
    const auto speak = merlin->Speak("Hello");
    const AgentControlReference control = m_control;
    m_service.reset();
    QVERIFY(!control->Connected());
    QCOMPARE(int(speak->Status()), int(kRequestInterrupted));
    try {
        merlin->Hide();
        QFAIL("the service has gone");
    } catch (const Error &error) {
        QCOMPARE(error.Number(), qint32(kAgentGone));
    }
    m_control = nullptr;
}

void TestAgentEngine::traceLinesHaveOneForm()
{
    const support::KeptLog trace("tumblewick.agent", support::KeptLog::Of::Traces);
    m_control->Load("Merlin", "Merlin.acs");
    const auto merlin = m_control->Character("Merlin");
    merlin->Show(true);
    merlin->Speak("Say \"hi\"");
    merlin->MoveTo(-40, 30);
    merlin->WordBalloon().SetVisible(false);
    merlin->StopAll("Move,Speak,Play,Get");
    merlin->Stop();
    const QStringList expected = {
        "agent: 0 Merlin Load \"Merlin.acs\" -> done",
        "agent: 1 Merlin Show fast -> queued",
        "agent: 1 Merlin Show fast -> running",
        "agent: 1 Merlin Show fast -> done",
        "agent: 2 Merlin Speak \"Say \"hi\"\" -> queued",
        "agent: 2 Merlin Speak \"Say \"hi\"\" -> running",
        "agent: 3 Merlin MoveTo -40,30 -> queued",
        "agent: 0 Merlin Balloon.Visible False -> done",
        "agent: 0 Merlin StopAll \"Move,Speak,Play,Get\" -> done",
        QString("agent: 3 Merlin MoveTo -40,30 -> interrupted %1").arg(qint32(kRemovedFromQueue)),
        "agent: 0 Merlin Stop -> done",
        QString("agent: 2 Merlin Speak \"Say \"hi\"\" -> interrupted %1").arg(qint32(kInterruptedByProgram)),
    };
    QCOMPARE(trace.lines, expected);
}

QTEST_MAIN(TestAgentEngine)
#include "TestAgentEngine.moc"
