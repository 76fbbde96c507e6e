#include "platform/agent/VoiceSpelling.h"
#include "support/FakeMicrophone.h"
#include "support/FakeOptionsStore.h"
#include "support/FakeRecogniser.h"
#include "support/FakeSheet.h"
#include "support/FakeStage.h"
#include "support/FakeTime.h"

#include <QTest>

#include <optional>

using namespace platform;
using namespace std::chrono_literals;

namespace {

class FakeTip : public SpellingTip {
public:
    void Show(const QRect &at, const QString &what, const QStringList &which) override
    {
        frame = at;
        text = what;
        choices = which;
    }
    void Hide() override
    {
        text.clear();
        choices.clear();
    }
    QRect frame;
    QString text; // empty when hidden
    QStringList choices;
};

} // namespace

// Spelling by voice, from the switch on the sheet to the command that a screen gets.
class TestVoiceSpelling : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void offUntilSwitchedOn();
    void theCommandsAreThoseOfTheLetters();
    void aLetterIsSaidOfferedAndTaken();
    void aTapTakesTheFirst();
    void noneOfThemTakesNothing();
    void saidAgainReplacesTheOffer();
    void nothingHeardIsTold();
    void nobodyIsHeardWhileACharacterSpeaks();
    void whoWaitsForSilenceIsToldOfAnObstacle();
    void nobodyIsHeardWhenTheSpeakersScreenGoes();
    void aCharacterThatBeginsEndsTheListening();
    void aCharacterThatBeginsTakesTheOfferAway();
    void withoutAMicrophoneTheGameGoesOn();
    void withoutARecogniserTheGameGoesOn();
    void deadWhenNobodyHears();
    void speakingHasALimit();
    void anOfferGrowsOld();
    void theKeyThatIsLostTakesNothing();
    void switchedOffInTheMiddle();
    void leavesWithItsOrders();

private:
    void SwitchOn(bool on = true)
    {
        ServiceOptions options = m_options->Now();
        options.voiceSpelling = on;
        m_options->Set(options);
    }
    void ShowMerlin()
    {
        m_control->Character("Merlin")->Show(true);
        m_time.Run(0ms);
    }
    // A letter said with the key held.
    void SayLetter()
    {
        m_spelling->KeyDown();
        m_time.Run(500ms);
        m_microphone.HearSpeech(500);
        m_spelling->KeyUp();
        m_time.Run(200ms);
    }

    support::FakeTime m_time;
    support::FakeStage m_stage{ m_time };
    support::FakeSheet m_sheet;
    std::optional<AgentEngine> m_agent;
    support::FakeOptionsStore m_store;
    std::unique_ptr<OptionsKeeper> m_options;
    support::FakeMicrophone m_microphone;
    std::optional<support::FakeRecogniser> m_recogniser;
    FakeTip m_tip;
    std::unique_ptr<VoiceSpelling> m_spelling;
    AgentControlReference m_control;
    QStringList m_commands;
};

void TestVoiceSpelling::init()
{
    m_agent.emplace(m_time, m_stage, m_sheet);
    m_store = support::FakeOptionsStore();
    m_options = std::make_unique<OptionsKeeper>(m_store);
    m_microphone.usable = true;
    m_recogniser.emplace(m_time);
    m_tip = FakeTip();
    m_spelling = std::make_unique<VoiceSpelling>(
        VoiceSpelling::Parts{ m_time, *m_options, *m_agent, m_microphone, *m_recogniser, m_tip });
    m_commands.clear();
    m_control = m_agent->CreateControl();
    m_control->command = [this](const UserInput &input) { m_commands << input.name; };
    m_control->Load("Merlin", "Merlin.acs");
    m_recogniser->answers = { { "b", "d", "e" }, { "m", "n" } };
}

void TestVoiceSpelling::cleanup()
{
    m_spelling.reset();
    m_control->Disconnect();
    m_control = {};
    m_options.reset();
    m_agent.reset();
    QVERIFY(!m_microphone.Listening());
}

void TestVoiceSpelling::offUntilSwitchedOn()
{
    ShowMerlin();
    SayLetter();
    QVERIFY(!m_microphone.Listening());
    QVERIFY(m_recogniser->orders.empty());
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::theCommandsAreThoseOfTheLetters()
{
    m_control->AddCommand({ "Sing", "&Sing" });
    SwitchOn();
    auto later = m_agent->CreateControl();
    for (const AgentControlReference &control : { m_control, later }) {
        for (const QString &name : SpokenNames()) {
            try {
                control->AddCommand({ name, "" });
                QFAIL("there is no such command");
            } catch (const Error &error) {
                QCOMPARE(error.Number(), kCommandNameUsed);
            }
        }
    }
    SwitchOn(false);
    m_control->AddCommand({ "a", "" });
    later->AddCommand({ "go", "" });
    m_control->RemoveCommand("Sing");
}

void TestVoiceSpelling::aLetterIsSaidOfferedAndTaken()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    QVERIFY(m_microphone.Listening());
    QCOMPARE(m_recogniser->prepared, 1);
    m_time.Run(400ms);
    QVERIFY(m_tip.text.contains("listening"));
    QCOMPARE(m_tip.frame, m_stage.Of("Merlin")->Frame());
    m_microphone.HearSpeech(600);
    m_spelling->KeyUp();
    QVERIFY(!m_microphone.Listening());
    QCOMPARE(m_recogniser->orders, std::vector<qsizetype>{ 600 * 32 });
    m_time.Run(200ms);
    QCOMPARE(m_tip.choices, QStringList({ "B", "D", "E" }));
    QCOMPARE(m_commands, QStringList());
    m_tip.chosen(1);
    QCOMPARE(m_tip.text, QString());
    QCOMPARE(m_commands, QStringList()); // the event loop brings it
    m_time.Run(0ms);
    QCOMPARE(m_commands, QStringList{ "d" });
    m_tip.chosen(1); // a late click
    m_time.Run(0ms);
    QCOMPARE(m_commands, QStringList{ "d" });
}

void TestVoiceSpelling::aTapTakesTheFirst()
{
    SwitchOn();
    ShowMerlin();
    SayLetter();
    m_spelling->KeyDown();
    m_time.Run(100ms);
    QCOMPARE(m_tip.choices.size(), 3); // to be seen still
    m_spelling->KeyUp();
    m_time.Run(0ms);
    QCOMPARE(m_commands, QStringList{ "b" });
    QCOMPARE(m_recogniser->orders.size(), std::size_t(1));
    // Without an offer a tap says how it is done.
    m_spelling->KeyDown();
    m_spelling->KeyUp();
    QVERIFY(m_tip.text.contains("Hold"));
    m_time.Run(VoiceSpelling::kNotice);
    QCOMPARE(m_tip.text, QString());
    QCOMPARE(m_commands.size(), 1);
}

void TestVoiceSpelling::noneOfThemTakesNothing()
{
    SwitchOn();
    ShowMerlin();
    SayLetter();
    m_tip.chosen(-1);
    m_time.Run(1s);
    QCOMPARE(m_tip.text, QString());
    QCOMPARE(m_commands, QStringList());
}

void TestVoiceSpelling::saidAgainReplacesTheOffer()
{
    SwitchOn();
    ShowMerlin();
    m_recogniser->answers = { { "b", "d", "e" }, { "go", "o" } };
    SayLetter();
    SayLetter();
    QCOMPARE(m_tip.choices, QStringList({ "GO!", "O" }));
    m_tip.chosen(0);
    m_time.Run(0ms);
    QCOMPARE(m_commands, QStringList{ "go" });
}

void TestVoiceSpelling::nothingHeardIsTold()
{
    SwitchOn();
    ShowMerlin();
    m_recogniser->answers.clear();
    SayLetter();
    QVERIFY(m_tip.text.contains("no letter"));
    QVERIFY(m_tip.choices.isEmpty());
    m_time.Run(VoiceSpelling::kNotice);
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::nobodyIsHeardWhileACharacterSpeaks()
{
    SwitchOn();
    ShowMerlin();
    m_control->Character("Merlin")->Speak("How do you spell it?");
    m_time.Run(100ms);
    QVERIFY(m_agent->SomebodySpeaks());
    m_spelling->KeyDown();
    m_time.Run(400ms);
    QVERIFY(!m_microphone.Listening());
    QVERIFY(m_tip.text.contains("Wait"));
    // As soon as he is silent, if the key is still down.
    m_time.Run(20s);
    QVERIFY(!m_agent->SomebodySpeaks());
    QCOMPARE(m_recogniser->orders.size(), std::size_t(1)); // and its time was up
    m_spelling->KeyUp();
    m_control->Character("Merlin")->Speak("And now?");
    m_time.Run(100ms);
    m_spelling->KeyDown();
    m_spelling->KeyUp();
    m_time.Run(20s);
    QVERIFY(!m_microphone.Listening());
    QCOMPARE(m_recogniser->orders.size(), std::size_t(1));
}

void TestVoiceSpelling::whoWaitsForSilenceIsToldOfAnObstacle()
{
    SwitchOn();
    ShowMerlin();
    m_recogniser->obstacle = "There is no recogniser.";
    m_control->Character("Merlin")->Speak("How do you spell it?");
    m_time.Run(100ms);
    m_spelling->KeyDown();
    QVERIFY(m_tip.text.contains("Wait"));
    while (m_agent->SomebodySpeaks())
        m_time.Run(20ms);
    QCOMPARE(m_tip.text, QString("There is no recogniser."));
    QVERIFY(!m_microphone.Listening());
}

void TestVoiceSpelling::nobodyIsHeardWhenTheSpeakersScreenGoes()
{
    SwitchOn();
    ShowMerlin();
    m_control->Character("Merlin")->Speak("How do you spell it?");
    m_time.Run(100ms);
    m_spelling->KeyDown();
    QVERIFY(m_tip.text.contains("Wait"));
    m_control->Disconnect();
    QVERIFY(!m_agent->SomebodySpeaks());
    QVERIFY(!m_microphone.Listening());
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::aCharacterThatBeginsEndsTheListening()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    m_time.Run(400ms);
    m_microphone.HearSpeech(100);
    m_control->Character("Merlin")->Speak("Well done!");
    QVERIFY(!m_microphone.Listening());
    m_spelling->KeyUp();
    m_time.Run(20s);
    QVERIFY(m_recogniser->orders.empty());
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::aCharacterThatBeginsTakesTheOfferAway()
{
    SwitchOn();
    ShowMerlin();
    SayLetter();
    m_control->Character("Merlin")->Speak("The next word");
    QCOMPARE(m_tip.text, QString());
    m_tip.chosen(0);
    m_time.Run(20s);
    QCOMPARE(m_commands, QStringList());
}

void TestVoiceSpelling::withoutAMicrophoneTheGameGoesOn()
{
    SwitchOn();
    ShowMerlin();
    m_microphone.usable = false;
    SayLetter();
    QVERIFY(m_tip.text.contains("microphone"));
    QVERIFY(m_recogniser->orders.empty());
    m_time.Run(VoiceSpelling::kNotice);
    QCOMPARE(m_tip.text, QString());
    m_microphone.usable = true;
    SayLetter();
    QCOMPARE(m_tip.choices.size(), 3);
}

void TestVoiceSpelling::withoutARecogniserTheGameGoesOn()
{
    SwitchOn();
    ShowMerlin();
    m_recogniser->obstacle = "There is no recogniser.";
    m_spelling->KeyDown();
    QCOMPARE(m_tip.text, QString("There is no recogniser."));
    QVERIFY(!m_microphone.Listening());
    m_spelling->KeyUp();
    m_time.Run(VoiceSpelling::kNotice);
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::deadWhenNobodyHears()
{
    SwitchOn();
    SayLetter(); // nobody is seen
    QVERIFY(m_recogniser->orders.empty());
    ShowMerlin();
    m_control->command = nullptr; // a screen that takes no commands
    SayLetter();
    QVERIFY(m_recogniser->orders.empty());
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::speakingHasALimit()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    m_time.Run(400ms);
    m_microphone.HearSpeech(100);
    m_time.Run(VoiceSpelling::kLongestSpeech);
    QVERIFY(!m_microphone.Listening());
    QCOMPARE(m_tip.choices.size(), 3);
    m_spelling->KeyUp();
    QCOMPARE(m_tip.choices.size(), 3);
    QCOMPARE(m_recogniser->orders.size(), std::size_t(1));
}

void TestVoiceSpelling::anOfferGrowsOld()
{
    SwitchOn();
    ShowMerlin();
    SayLetter();
    m_time.Run(VoiceSpelling::kOffer);
    QCOMPARE(m_tip.text, QString());
    m_spelling->KeyDown();
    m_spelling->KeyUp();
    m_time.Run(0ms);
    QCOMPARE(m_commands, QStringList());
}

void TestVoiceSpelling::theKeyThatIsLostTakesNothing()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    m_time.Run(400ms);
    m_microphone.HearSpeech(100);
    m_spelling->KeyLost();
    m_time.Run(1s);
    QVERIFY(!m_microphone.Listening());
    QVERIFY(m_recogniser->orders.empty());
    QCOMPARE(m_tip.text, QString());
}

void TestVoiceSpelling::switchedOffInTheMiddle()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    m_time.Run(400ms);
    SwitchOn(false);
    QVERIFY(!m_microphone.Listening());
    QCOMPARE(m_tip.text, QString());
    m_spelling->KeyUp();
    m_time.Run(1s);
    QVERIFY(m_recogniser->orders.empty());
}

void TestVoiceSpelling::leavesWithItsOrders()
{
    SwitchOn();
    ShowMerlin();
    m_spelling->KeyDown();
    m_time.Run(400ms);
    m_microphone.HearSpeech(100);
    m_spelling->KeyUp();
    m_spelling.reset();
    m_time.Run(1s);
    QCOMPARE(m_tip.text, QString());
    m_control->Character("Merlin")->Speak("Nobody listens.");
    m_time.Run(20s);
}

QTEST_GUILESS_MAIN(TestVoiceSpelling)
#include "TestVoiceSpelling.moc"
