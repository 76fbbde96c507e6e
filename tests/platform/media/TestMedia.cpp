#include "platform/files/DiskFiles.h"
#include "platform/media/ClipFile.h"
#include "platform/media/QtMedia.h"
#include "platform/voice/QtAudioOut.h"
#include "support/FakeMedia.h"
#include "support/FakeVoice.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QThread>
#include <QWidget>
#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace std::chrono_literals;
using namespace support;

namespace {

constexpr QPoint kCorner(272, 56);

QByteArray Beginning()
{
    QFile file(QStringLiteral(FIREWORKS_BEGINNING));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

double ProcessSeconds()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// Media on which a contract test plays clips of about two seconds.
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
    platform::QtMedia m_media{ m_files, m_audio };
};

class FakeService : public MediaService {
public:
    FakeService() { m_media.length = 2s; }
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

// Media players: the contract of the real ones and of the fake ones, and what only the real ones have.
class TestMedia : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
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
    void liesOverTheFormAtItsCorner_data();
    void liesOverTheFormAtItsCorner();
    void clicksGoThrough();
    void standsBehindOnDemand();
    void damagedClipsEnd_data();
    void damagedClipsEnd();
    void pipesAreNotWaitedFor();
    void restCostsNothing();
    void endingInTheMiddleIsQuick();
    void soundGoesWithThePictures();
    void aDeviceThatFailsTakesOnlyTheSoundAway();
    void readsTheWholeClip();

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
    const QString m_clip = QStringLiteral(FIREWORKS_BEGINNING);
};

void TestMedia::initTestCase()
{
    QVERIFY2(Beginning().size() > 100'000, FIREWORKS_BEGINNING);
}

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

void TestMedia::liesOverTheFormAtItsCorner_data()
{
    QTest::addColumn<QSize>("form");
    QTest::addColumn<QSize>("clip");
    QTest::newRow("small display") << QSize(800, 600) << QSize(512, 384);
    QTest::newRow("usual display") << QSize(1024, 768) << QSize(736, 552);
    QTest::newRow("wide display") << QSize(1536, 864) << QSize(1056, 792);
    QTest::newRow("hardly any room") << QSize(280, 60) << QSize(16, 16);
}

void TestMedia::liesOverTheFormAtItsCorner()
{
    QFETCH(QSize, form);
    QFETCH(QSize, clip);
    m_form->resize(form);
    QWidget button(m_form.get());
    button.setGeometry(m_form->rect());
    button.show();
    const auto player = Player();
    player->SetFileName(m_clip);
    player->ZOrder(0);
    player->Play();
    QVERIFY(m_service->Until([&] { return ClipIsSeen(); }));
    QCOMPARE(Clip()->geometry(), QRect(kCorner, clip));
    if (clip.width() > 16) {
        // The gilt edge of the frame comes through to the form's own picture.
        const QImage seen = m_form->grab().toImage();
        const QColor gold = seen.pixelColor(kCorner + QPoint(clip.width() / 2, clip.width() * 10 / 640));
        QVERIFY2(gold.red() > 180 && gold.green() > 120 && gold.blue() < 130, qPrintable(gold.name()));
    }
    m_form->resize(form + QSize(64, 48));
    QCOMPARE(Clip()->pos(), kCorner);
    QVERIFY(Clip()->width() > clip.width());
}

void TestMedia::clicksGoThrough()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    QVERIFY(m_service->Until([&] { return ClipIsSeen(); }));
    QCOMPARE(m_form->childAt(kCorner + QPoint(50, 50)), nullptr);
    QVERIFY(!Clip()->hasFocus());
}

void TestMedia::standsBehindOnDemand()
{
    QWidget button(m_form.get());
    const auto player = Player();
    player->SetFileName(m_clip);
    player->ZOrder(1);
    player->Play();
    QVERIFY(m_service->Until([&] { return ClipIsSeen(); }));
    const auto order = [&] { return m_form->children().indexOf(Clip()); };
    QCOMPARE(order(), 0);
    player->ZOrder(0);
    QCOMPARE(order(), m_form->children().size() - 1);
}

void TestMedia::damagedClipsEnd_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray whole = Beginning();
    QTest::newRow("cut in the middle") << whole.left(whole.size() / 2);
    QTest::newRow("only the first kilobyte") << whole.left(1024);
    QTest::newRow("without its beginning") << whole.mid(whole.size() / 3);
    const auto damaged = [&](quint32 seed, int every) {
        QByteArray content = whole;
        QRandomGenerator random(seed);
        for (qsizetype at = 0; at < content.size(); at += 1 + random.bounded(every))
            content[at] = static_cast<char>(random.bounded(256));
        return content;
    };
    for (quint32 seed = 1; seed <= 3; ++seed) {
        QTest::addRow("a fault here and there %u", seed) << damaged(seed, 4000);
        QTest::addRow("more faults than clip %u", seed) << damaged(seed, 60);
    }
    QTest::newRow("noise") << damaged(9, 1);
    QTest::newRow("nothing but its beginning again and again") << whole.left(3000).repeated(40);
}

void TestMedia::damagedClipsEnd()
{
    QFETCH(QByteArray, content);
    const auto player = Player();
    player->SetFileName(m_service->Unplayable(content));
    player->Play();
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
    QVERIFY(!Clip());
}

void TestMedia::pipesAreNotWaitedFor()
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("fireworks.mpg"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto player = Player();
    player->SetFileName(pipe);
    player->Play();
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
}

void TestMedia::restCostsNothing()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    const double before = ProcessSeconds();
    QElapsedTimer timer;
    timer.start();
    m_service->Until([&] { return timer.elapsed() > 1000; }); // polls by itself, every 10 ms
    QVERIFY2(ProcessSeconds() - before < 0.1, qPrintable(QString::number(ProcessSeconds() - before)));
    QVERIFY(!Clip());
}

void TestMedia::endingInTheMiddleIsQuick()
{
    for (const int wait : { 0, 3, 40, 400 }) {
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

namespace {

// Real time for a fake device.
class WallClock : public platform::Clock {
public:
    WallClock() { m_timer.start(); }
    double SecondsSinceMidnight() const override { return 0; }
    std::chrono::milliseconds Elapsed() const override
    {
        return std::chrono::milliseconds(m_timer.elapsed());
    }

private:
    QElapsedTimer m_timer;
};

} // namespace

void TestMedia::soundGoesWithThePictures()
{
    FakeTime events;
    WallClock clock;
    FakeAudioOut audio(events, clock);
    platform::DiskFiles files;
    platform::QtMedia media(files, audio);
    const auto player = media.CreatePlayer(*m_form, kCorner);
    player->SetFileName(m_clip);
    player->Play();
    QVERIFY(m_service->Until([&] { return !player->Playing(); }));
    QCOMPARE(audio.Played().size(), std::size_t(1));
    QVERIFY(!audio.Playing());
    const auto &sound = *audio.Played().front();
    QCOMPARE(sound.channels, 2);
    QCOMPARE(sound.sampleRate, 48000);
    QVERIFY(sound.Length() > 1900ms && sound.Length() < 2100ms);
    // The first bang comes from over the lake, so much behind its light at 1.15 s, and nothing as loud
    // before.
    const auto *samples = reinterpret_cast<const qint16 *>(sound.samples.constData());
    const auto loudest = [&](double from, double to) {
        int most = 0;
        for (auto at = qsizetype(from * 48000) * 2; at < qsizetype(to * 48000) * 2; ++at)
            most = std::max(most, std::abs(int(samples[at])));
        return most;
    };
    const int bang = loudest(1.3, 1.36);
    QVERIFY2(bang > 6000, qPrintable(QString::number(bang)));
    QVERIFY2(loudest(0.2, 1.29) * 2 < bang, qPrintable(QString::number(loudest(0.2, 1.29))));
}

void TestMedia::aDeviceThatFailsTakesOnlyTheSoundAway()
{
    FakeTime events;
    WallClock clock;
    FakeAudioOut audio(events, clock);
    audio.FailAfter(300ms);
    platform::DiskFiles files;
    platform::QtMedia media(files, audio);
    const auto player = media.CreatePlayer(*m_form, kCorner);
    player->SetFileName(m_clip);
    QElapsedTimer timer;
    timer.start();
    player->Play();
    QVERIFY(m_service->Until([&] {
        events.Run(std::max(0ms, clock.Elapsed() - events.Elapsed()));
        return !player->Playing();
    }));
    QVERIFY(!audio.Usable());
    QVERIFY2(timer.elapsed() > 1900 && timer.elapsed() < 3500, qPrintable(QString::number(timer.elapsed())));
}

void TestMedia::readsTheWholeClip()
{
    const std::atomic<bool> stop{ false };
    const auto clip = platform::ClipFile::Open(m_clip, stop);
    QVERIFY(clip);
    QCOMPARE(clip->FrameLength(), std::chrono::microseconds(40000));
    int count = 0;
    while (const auto frame = clip->NextFrame([](QSize own) { return own; })) {
        QCOMPARE(frame->image.size(), QSize(640, 480));
        QCOMPARE(frame->at / 40000us, std::chrono::microseconds::rep(count));
        ++count;
    }
    QCOMPARE(count, 50);
}

QTEST_MAIN(TestMedia)
#include "TestMedia.moc"
