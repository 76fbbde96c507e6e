#include "platform/files/DiskFiles.h"
#include "platform/media/QtMedia.h"
#include "platform/system/SystemClock.h"
#include "platform/voice/QtAudioOut.h"
#include "support/FakeMedia.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <sys/resource.h>

using namespace std::chrono_literals;
using namespace support;

namespace {

constexpr QPoint kCorner(272, 56);

constexpr auto kLength = 400ms;

double ProcessSeconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// Media on which a contract test plays clips of kLength.
class MediaService {
public:
    virtual ~MediaService() = default;
    virtual platform::Media &Media() = 0;
    // Lets time pass until `reached`; false when it never is.
    virtual bool Until(const std::function<bool()> &reached) = 0;
    // A path of something that is no clip, with such content.
    virtual QString Unplayable(const QByteArray &content) = 0;
};

class RealService : public MediaService {
public:
    platform::Media &Media() override { return m_media; }
    bool Until(const std::function<bool()> &reached) override { return QTest::qWaitFor(reached, 8000); }
    QString Unplayable(const QByteArray &content) override
    {
        const QString path = m_folder.filePath(QStringLiteral("clip%1.mpg").arg(++m_count));
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? path : QString();
    }

private:
    QTemporaryDir m_folder;
    int m_count = 0;
    platform::DiskFiles m_files;
    platform::QtAudioOut m_audio;
    platform::SystemClock m_clock;
    platform::QtMedia m_media{ m_files, m_audio, m_clock };
};

class FakeService : public MediaService {
public:
    FakeService() { m_media.length = kLength; }
    platform::Media &Media() override { return m_media; }
    bool Until(const std::function<bool()> &reached) override
    {
        for (int step = 0; step < 800 && !reached(); ++step)
            m_time.Run(10ms);
        return reached();
    }
    QString Unplayable(const QByteArray &) override
    {
        m_media.unplayable << QStringLiteral("/clips/%1").arg(m_media.unplayable.size());
        return m_media.unplayable.last();
    }

private:
    FakeTime m_time;
    FakeMedia m_media{ m_time };
};

} // namespace

// Media players: the contract of the real ones and of the fake ones, and how quick the real ones are.
class TestMedia : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void keepsWhatItIsTold_data() { Both(); }
    void keepsWhatItIsTold();
    void playsToItsOwnEndWhateverVisibleSays_data() { Both(); }
    void playsToItsOwnEndWhateverVisibleSays();
    void aNameEndsWhatPlays_data() { Both(); }
    void aNameEndsWhatPlays();
    void playBeginsAnew_data() { Both(); }
    void playBeginsAnew();
    void whatIsNoClipIsNotNoticed_data() { Both(); }
    void whatIsNoClipIsNotNoticed();
    void leavingTheDisplayEndsIt_data() { Both(); }
    void leavingTheDisplayEndsIt();
    void aFormThatIsNotSeenPlaysNothing_data() { Both(); }
    void aFormThatIsNotSeenPlaysNothing();
    void outlivesItsForm_data() { Both(); }
    void outlivesItsForm();
    void playersAreApart_data() { Both(); }
    void playersAreApart();

    void firstPictureIsThereSoon();
    void takesItsOwnTime();
    void restCostsNothing();
    void endingInTheMiddleIsQuick();

private:
    void Both();
    QWidget *Clip() const { return m_form ? m_form->findChild<QWidget *>(QStringLiteral("clip")) : nullptr; }
    bool ClipIsSeen() const { return Clip() && Clip()->isVisible(); }
    std::unique_ptr<platform::MediaPlayer> Player()
    {
        return m_service->Media().CreatePlayer(*m_form, kCorner);
    }

    std::unique_ptr<MediaService> m_service;
    std::unique_ptr<QWidget> m_form;
    const QString m_clip = QStringLiteral(FIREWORKS_GLIMPSE);
};

void TestMedia::Both()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("real") << true;
    QTest::newRow("fake") << false;
}

void TestMedia::init()
{
    // What has no rows is about the real one.
    const bool fake =
        QTest::currentDataTag() && QLatin1String(QTest::currentDataTag()) == QLatin1String("fake");
    if (fake)
        m_service = std::make_unique<FakeService>();
    else
        m_service = std::make_unique<RealService>();
    m_form = std::make_unique<QWidget>();
    m_form->resize(1024, 768);
    m_form->show();
}

void TestMedia::cleanup()
{
    m_form.reset();
    m_service.reset();
}

void TestMedia::keepsWhatItIsTold()
{
    const auto player = Player();
    QCOMPARE(player->FileName(), QString());
    QVERIFY(player->Visible());
    QVERIFY(!player->Playing());
    player->SetFileName(m_clip);
    player->SetVisible(false);
    QCOMPARE(player->FileName(), m_clip);
    QVERIFY(!player->Visible());
    player->SetVisible(true);
    QVERIFY(player->Visible());
    QVERIFY(!player->Playing());
}

void TestMedia::playsToItsOwnEndWhateverVisibleSays()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->SetVisible(false);
    player->ZOrder(0);
    player->SetVisible(true);
    player->Play();
    player->SetVisible(false);
    QVERIFY(player->Playing());
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
    QVERIFY(!player->Visible());
    QVERIFY(!Clip());
    // And again, as in a second game.
    player->Play();
    QVERIFY(player->Playing());
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
}

void TestMedia::aNameEndsWhatPlays()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    player->SetFileName(m_clip);
    QVERIFY(!player->Playing());
    QVERIFY(!Clip());
}

void TestMedia::playBeginsAnew()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    player->Play();
    QVERIFY(player->Playing());
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
}

void TestMedia::whatIsNoClipIsNotNoticed()
{
    const auto player = Player();
    const QString missing = m_service->Unplayable({});
    QFile::remove(missing);
    for (const QString &path : { QString(), missing, m_service->Unplayable({}), QStringLiteral("/"),
                                 m_service->Unplayable("Merlin, Genie and Peedy\r\n") }) {
        if (path == QLatin1String("/") && dynamic_cast<FakeService *>(m_service.get()))
            continue;
        player->SetFileName(path);
        player->Play();
        QVERIFY2(m_service->Until([&] { return !player->Playing(); }), qPrintable(path));
        QVERIFY(!Clip());
    }
    player->SetFileName(m_clip); // nothing of it stays behind
    player->Play();
    QVERIFY(player->Playing());
}

void TestMedia::leavingTheDisplayEndsIt()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    m_form->hide();
    QVERIFY(!player->Playing());
    m_form->show();
    QVERIFY(!player->Playing());
}

void TestMedia::aFormThatIsNotSeenPlaysNothing()
{
    m_form->hide();
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    QVERIFY(!player->Playing());
}

void TestMedia::outlivesItsForm()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    m_form.reset();
    QVERIFY(!player->Playing());
    player->ZOrder(0);
    player->SetVisible(true);
    player->Play();
    QVERIFY(!player->Playing());
    QCOMPARE(player->FileName(), m_clip);
}

void TestMedia::playersAreApart()
{
    const auto one = Player();
    auto other = Player();
    one->SetFileName(m_clip);
    other->SetFileName(m_clip);
    one->Play();
    other->Play();
    QVERIFY(one->Playing());
    QVERIFY(other->Playing());
    other->SetFileName(QString());
    QVERIFY(one->Playing());
    other.reset();
    QVERIFY(m_service->Until([&] { return !one->Playing(); }));
}

void TestMedia::firstPictureIsThereSoon()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    QElapsedTimer timer;
    timer.start();
    player->Play();
    QVERIFY2(timer.elapsed() < 50, "Play waits");
    QVERIFY(m_service->Until([&] { return ClipIsSeen(); }));
    QVERIFY2(timer.elapsed() < 300, qPrintable(QString::number(timer.elapsed())));
}

void TestMedia::takesItsOwnTime()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    QElapsedTimer timer;
    timer.start();
    player->Play();
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
    QVERIFY2(timer.elapsed() >= kLength.count(), qPrintable(QString::number(timer.elapsed())));
}

void TestMedia::restCostsNothing()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    const double before = ProcessSeconds();
    QElapsedTimer timer;
    timer.start();
    m_service->Until([&] { return timer.elapsed() > 500; }); // polls by itself, every 10 ms
    QVERIFY2(ProcessSeconds() - before < 0.05, qPrintable(QString::number(ProcessSeconds() - before)));
    QVERIFY(!Clip());
}

void TestMedia::endingInTheMiddleIsQuick()
{
    for (const int wait : { 0, 3, 40, 200 }) {
        auto player = Player();
        player->SetFileName(m_clip);
        player->Play();
        QElapsedTimer timer;
        timer.start();
        m_service->Until([&] { return timer.elapsed() >= wait; });
        timer.restart();
        player.reset();
        QVERIFY2(timer.elapsed() < 200, qPrintable(QStringLiteral("%1 ms").arg(timer.elapsed())));
        QVERIFY(!Clip());
    }
}

QTEST_MAIN(TestMedia)
#include "TestMedia.moc"
