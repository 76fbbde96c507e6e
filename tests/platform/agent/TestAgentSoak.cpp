#include "support/PuppetService.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <random>
#include <set>

using namespace platform;

namespace {

constexpr int kRequests = 10000;

const QStringList kIds = { "Merlin", "Genie", "Peedy" };
const QStringList kMotions = {
    "Wave", "read", "RestPose", "Acknowledge", "Blink", "Show", "Hide", "Idle3_2"
};
const QStringList kTexts = { "Well done",
                             "How do you spell: \\map=\"cat\"=\"*****\"\\?",
                             "\\Map=\"\"=\"\"\\",
                             "We'll be back with you after you set up for the next game.",
                             "A",
                             "" };
const QStringList kTypes = { "Get", "NonQueuedGet", "Move", "Play", "Speak" };

// A few pictures a second are enough to look for faults, and the time flies.
class SlowTicker : public Ticker {
public:
    explicit SlowTicker(support::FakeTime &time) : m_time(time) {}
    void SetRate(int callsPerSecond) override
    {
        if ((callsPerSecond > 0) == (m_next != nullptr))
            return;
        m_next.reset();
        if (callsPerSecond > 0)
            Await();
    }
    double Now() const override { return double(m_time.Elapsed().count()) / 1000; }

private:
    void Await()
    {
        m_next = m_time.After(std::chrono::milliseconds(60), [this] {
            Await();
            tick();
        });
    }
    support::FakeTime &m_time;
    std::unique_ptr<PendingCall> m_next;
};

// One request and all that has been seen of it.
struct Watched {
    RequestReference request;
    int status = kRequestQueued;
    qint32 number = 0;
    int starts = 0;
    int ends = 0;
    int client = 0;

    bool HasEnded() const { return status != kRequestQueued && status != kRequestRunning; }
};

struct Screen {
    AgentControlReference control;
    std::vector<CharacterReference> characters;
    int number = 0;
};

} // namespace

// Thousands of requests in the wildest order: nothing is forgotten, nothing changes once it is over.
class TestAgentSoak : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { Close(); }

    void everyRequestEndsOnceWhateverHappens_data();
    void everyRequestEndsOnceWhateverHappens();
    void theSameRequestsGoTheSameWay();

private:
    void Begin(bool real, std::uint32_t seed);
    void Run(int requests);
    void Finish();
    void Close();

    int Draw(int count) { return int(m_random() % std::uint32_t(count)); }
    template <class List>
    auto &Any(List &list)
    {
        return list[std::size_t(Draw(int(list.size())))];
    }
    void Step();
    void Ask(const CharacterReference &character, int client);
    void Disturb();
    void StopSomething(const CharacterReference &character);
    void Connect();
    void Leave();
    void Watch(RequestReference request, int client);
    void Look();

    // The call may find the connection lost, or the request gone.
    void Try(const std::function<void()> &call)
    {
        try {
            call();
        } catch (const Error &error) {
            const std::set<qint32> expected = { kAgentRefuses, kAgentGone, kRequestNotInQueue,
                                                kStopAcrossCharacters };
            if (expected.count(error.Number()) == 0)
                m_faults << QStringLiteral("raised %1").arg(error.Number());
        }
    }

    std::unique_ptr<support::AgentService> m_service;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::mt19937 m_random;
    std::vector<Screen> m_screens;
    std::vector<CharacterReference> m_lost; // references of screens that are gone
    std::map<const Request *, std::size_t> m_index;
    std::vector<Watched> m_watched;
    std::vector<std::size_t> m_open; // those that have not ended
    std::set<int> m_goneClients;
    int m_clients = 0;
    QStringList m_faults;
};

void TestAgentSoak::initTestCase()
{
    // A display without a display complains with each window.
    static QtMessageHandler former;
    former =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &text) {
            if (!text.contains(QLatin1String("This plugin does not support")) &&
                !text.contains(QLatin1String("systemTrayWindowChanged")))
                former(type, context, text);
        });
}

void TestAgentSoak::Begin(bool real, std::uint32_t seed)
{
    m_random.seed(seed);
    m_faults.clear();
    if (real) {
        m_folder = std::make_unique<QTemporaryDir>();
        for (const QString &id : kIds)
            support::WriteSmallCharacter(m_folder->path(), id);
        m_service = std::make_unique<support::PuppetAgentService>(
            m_folder->path(), [](support::FakeTime &clock) { return std::make_unique<SlowTicker>(clock); });
    } else {
        m_service = std::make_unique<support::FakeAgentService>();
    }
    m_clients = 0;
    Connect();
}

void TestAgentSoak::Connect()
{
    Screen screen{ m_service->Engine().CreateControl(), {}, m_clients++ };
    const auto count = [this](int Watched::*events) {
        return [this, events](const RequestReference &request) {
            const auto found = m_index.find(request.operator->());
            if (found == m_index.end())
                return void(m_faults << "an event of an unknown request");
            Watched &watched = m_watched[found->second];
            if (++(watched.*events) != 1)
                m_faults << "an event came twice";
            if (events == &Watched::starts && watched.ends > 0)
                m_faults << "a request began after its end";
        };
    };
    screen.control->requestStart = count(&Watched::starts);
    screen.control->requestComplete = count(&Watched::ends);
    for (const QString &id : kIds) {
        screen.control->Load(id, id + QStringLiteral(".acs"));
        screen.characters.push_back(screen.control->Character(id));
        screen.characters.back()->SetHeight(48);
        screen.characters.back()->SetWidth(48);
    }
    m_screens.push_back(std::move(screen));
}

// A screen goes: by its unload, or because nobody holds its control any more.
void TestAgentSoak::Leave()
{
    if (m_screens.empty())
        return;
    const auto at = m_screens.begin() + Draw(int(m_screens.size()));
    Screen screen = std::move(*at);
    m_screens.erase(at);
    m_goneClients.insert(screen.number);
    if (Draw(3) == 0) {
        screen.control->requestStart = nullptr;
        screen.control->requestComplete = nullptr;
        return;
    }
    screen.control->Disconnect();
    m_lost.insert(m_lost.end(), screen.characters.begin(), screen.characters.end());
    if (m_lost.size() > 12)
        m_lost.erase(m_lost.begin(), m_lost.begin() + 6);
}

void TestAgentSoak::Watch(RequestReference request, int client)
{
    Watched watched;
    watched.client = client;
    watched.request = request;
    m_index[request.operator->()] = m_watched.size();
    m_open.push_back(m_watched.size());
    m_watched.push_back(std::move(watched));
}

void TestAgentSoak::Ask(const CharacterReference &character, int client)
{
    RequestReference request;
    switch (Draw(12)) {
    case 0:
    case 1:
    case 2:
        request = character->Show(Draw(2) == 0);
        break;
    case 3:
        request = character->Hide(Draw(2) == 0);
        break;
    case 4:
    case 5:
    case 6:
        request = character->Play(Any(kMotions));
        break;
    case 7:
    case 8:
        request = character->Speak(Any(kTexts));
        break;
    case 9:
    case 10:
        request = character->MoveTo(Draw(900) - 100, Draw(700) - 100, Draw(4) * 300);
        break;
    default:
        // No small character points to the left of the screen.
        request = character->GestureAt(Draw(900), Draw(700));
    }
    Watch(request, client);
}

void TestAgentSoak::StopSomething(const CharacterReference &character)
{
    switch (Draw(5)) {
    case 0:
        return character->Stop();
    case 1:
        return character->StopAll();
    case 2: {
        QStringList types;
        for (const QString &type : kTypes) {
            if (Draw(2) == 0)
                types << type;
        }
        return character->StopAll(types.join(Draw(2) == 0 ? "," : " , "));
    }
    default:
        if (!m_open.empty())
            character->Stop(m_watched[Any(m_open)].request);
    }
}

void TestAgentSoak::Disturb()
{
    const QString id = Any(kIds);
    switch (Draw(7)) {
    case 0:
        return m_service->BeginDrag(id);
    case 1:
    case 2:
        return m_service->EndDrag(id);
    case 3:
        return m_service->HideByMenu(id);
    case 4:
        return m_service->BreakVoice(Draw(3) == 0 ? kAudioDeviceUnusable : 0);
    case 5:
        if (m_screens.size() < 3)
            Connect();
        return;
    default:
        return Leave();
    }
}

void TestAgentSoak::Step()
{
    const int what = Draw(100);
    if (what < 4) {
        Disturb();
    } else if (what < 5 && !m_lost.empty()) {
        Try([this] { Any(m_lost)->Show(); });
        Try([this] { Any(m_lost)->StopAll(); });
    } else if (what < 40) {
        m_service->Pass(std::chrono::milliseconds(Draw(5) == 0 ? Draw(3000) : Draw(120)));
    } else if (m_screens.empty()) {
        Connect();
    } else {
        const Screen &screen = Any(m_screens);
        const CharacterReference character = Any(screen.characters);
        if (what < 85) {
            Ask(character, screen.number);
        } else if (what < 94) {
            Try([&] { StopSomething(character); });
        } else if (what < 97) {
            character->WordBalloon().SetVisible(Draw(3) == 0);
        } else {
            const int size = 16 + Draw(80);
            character->SetWidth(size);
            character->SetHeight(size);
        }
    }
}

// What has changed since the last look, and whether it might.
void TestAgentSoak::Look()
{
    if (m_service->Talking() > 1)
        m_faults << "two talk at once";
    std::vector<std::size_t> open;
    for (const std::size_t index : m_open) {
        Watched &watched = m_watched[index];
        const int status = watched.request->Status();
        const bool goesBack = watched.status == kRequestRunning && status == kRequestQueued;
        if (goesBack || (status != kRequestQueued && status != kRequestRunning && status != kRequestDone &&
                         status != kRequestFailed && status != kRequestInterrupted))
            m_faults
                << QStringLiteral("request %1 went from %2 to %3").arg(index).arg(watched.status).arg(status);
        watched.status = status;
        watched.number = watched.request->Number();
        if ((watched.number == 0) != (status == kRequestDone || !watched.HasEnded()))
            m_faults << QStringLiteral("request %1 has number %2").arg(index).arg(watched.number);
        if (!watched.HasEnded())
            open.push_back(index);
    }
    m_open.swap(open);
}

void TestAgentSoak::Run(int requests)
{
    while (int(m_watched.size()) < requests && m_faults.isEmpty()) {
        Step();
        Look();
    }
}

void TestAgentSoak::Finish()
{
    m_service->BreakVoice(0);
    for (const QString &id : kIds)
        m_service->EndDrag(id);
    for (const Screen &screen : m_screens) {
        for (const CharacterReference &character : screen.characters)
            character->StopAll();
    }
    m_service->Pass(std::chrono::seconds(30));
    Look();
}

void TestAgentSoak::Close()
{
    m_screens.clear();
    m_lost.clear();
    m_watched.clear();
    m_index.clear();
    m_open.clear();
    m_goneClients.clear();
    m_service.reset();
    m_folder.reset();
}

void TestAgentSoak::everyRequestEndsOnceWhateverHappens_data()
{
    QTest::addColumn<bool>("real");
    QTest::addColumn<std::uint32_t>("seed");
    for (std::uint32_t seed = 1; seed <= 3; ++seed) {
        QTest::addRow("fake figures, seed %u", seed) << false << seed;
        QTest::addRow("real figures, seed %u", seed) << true << seed;
    }
}

void TestAgentSoak::everyRequestEndsOnceWhateverHappens()
{
    QFETCH(bool, real);
    QFETCH(std::uint32_t, seed);
    QElapsedTimer taken;
    taken.start();
    Begin(real, seed);
    Run(kRequests);
    Finish();
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.value(0)));
    QCOMPARE(int(m_open.size()), 0);

    int ended[5] = {};
    for (const Watched &watched : m_watched) {
        // As they were when they ended.
        QCOMPARE(int(watched.request->Status()), watched.status);
        QCOMPARE(watched.request->Number(), watched.number);
        ++ended[watched.status];
        if (m_goneClients.count(watched.client) > 0)
            continue;
        QCOMPARE(watched.ends, 1);
        const bool begun = watched.number != kRemovedFromQueue;
        QCOMPARE(watched.starts, begun ? 1 : 0);
    }
    QCOMPARE(m_service->Talking(), 0);
    // Nobody is stuck: the next thing begins at once and ends.
    if (m_screens.empty())
        Connect();
    for (const CharacterReference &character : m_screens.front().characters) {
        character->Show(true);
        QVERIFY(!character->WordBalloon().Visible());
        Watch(character->Play("Acknowledge"), m_screens.front().number);
        QCOMPARE(int(m_watched.back().request->Status()), int(kRequestRunning));
        Watch(character->Speak("All is well"), m_screens.front().number);
    }
    m_service->Pass(std::chrono::seconds(30));
    Look();
    QCOMPARE(int(m_open.size()), 0);
    QCOMPARE(int(m_watched.back().request->Status()), int(kRequestDone));
    while (!m_screens.empty())
        Leave();
    m_service->Pass(std::chrono::seconds(2));
    QCOMPARE(m_service->Seen(), 0);
    if (auto *fake = dynamic_cast<support::FakeAgentService *>(m_service.get())) {
        QVERIFY(fake->stage.Log().filter("two things").isEmpty());
        for (const QString &id : kIds)
            QCOMPARE(fake->stage.Of(id), nullptr);
    }
    // Each kind of end has been there in good number.
    QVERIFY(ended[kRequestDone] > 500 && ended[kRequestFailed] > 500 && ended[kRequestInterrupted] > 500);
    qInfo("%d done, %d failed, %d interrupted, %d clients, %.0f minutes in %.1f s", ended[kRequestDone],
          ended[kRequestFailed], ended[kRequestInterrupted], m_clients,
          double(m_service->time.Elapsed().count()) / 60000, double(taken.elapsed()) / 1000);
}

// What the figures do of their own will, which is drawn by lot, changes nothing for those who wait for them.
void TestAgentSoak::theSameRequestsGoTheSameWay()
{
    std::vector<std::pair<int, qint32>> ends[2];
    for (auto &run : ends) {
        Begin(true, 4);
        Run(600);
        Finish();
        QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.value(0)));
        for (const Watched &watched : m_watched)
            run.emplace_back(watched.status, watched.number);
        Close();
    }
    QVERIFY(ends[0] == ends[1]);
}

QTEST_MAIN(TestAgentSoak)
#include "TestAgentSoak.moc"
