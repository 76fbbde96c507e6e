#include "platform/files/DiskFiles.h"
#include "platform/media/ClipReader.h"
#include "platform/media/QtMedia.h"
#include "support/FakeTime.h"
#include "support/FakeVoice.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <sys/stat.h>

using namespace std::chrono_literals;
using namespace support;

namespace {

constexpr QPoint kCorner(272, 56);
constexpr QSize kOwnSize(640, 480);
constexpr auto kPicture = 40ms;
constexpr int kPictures = 50;
constexpr int kGlimpsePictures = 10;

QByteArray Beginning()
{
    QFile file(QStringLiteral(FIREWORKS_BEGINNING));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Counts what it is asked to play, whether it does or not.
class CountingAudioOut : public FakeAudioOut {
public:
    using FakeAudioOut::FakeAudioOut;
    [[nodiscard]] bool Play(std::shared_ptr<const platform::Utterance> utterance,
                            std::function<void(bool)> ended) override
    {
        ++asked;
        return FakeAudioOut::Play(std::move(utterance), std::move(ended));
    }

    int asked = 0;
};

} // namespace

// What the real media players show and sound, by a clock and a device of the test, and how they read clips.
class TestClips : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void liesOverTheFormAtItsCorner_data();
    void liesOverTheFormAtItsCorner();
    void clicksGoThrough();
    void standsBehindOnDemand();
    void damagedClipsEnd_data();
    void damagedClipsEnd();
    void pipesAreNotWaitedFor();
    void soundGoesWithThePictures();

    void withoutSoundItGoesByTheClock();
    void withSoundItGoesByTheSound();
    void aDeviceThatFailsTakesOnlyTheSoundAway();
    void theSecondOfTwoClipsIsHeard();
    void aClipThatTheDeviceRefusesDoesNotHoldTheOther();

    void readsTheWholeClip();
    void thereIsNoEndWhileAPictureIsLeft();

private:
    std::unique_ptr<platform::MediaPlayer> Player() { return m_media->CreatePlayer(*m_form, kCorner); }
    // A clip that plays, with its first picture to be seen and its time begun.
    std::unique_ptr<platform::MediaPlayer> Begun();
    QWidget *Clip(int which = 0) const
    {
        return m_form->findChildren<QWidget *>(QStringLiteral("clip")).value(which);
    }
    // The number of the picture that the clip shows; -1 when it is none of them.
    int Shown(int which = 0) const;
    // Lets time pass, much faster than it does, until `reached`; false when it never is.
    bool Until(const std::function<bool()> &reached);

    static const inline QString m_clip = QStringLiteral(FIREWORKS_BEGINNING);
    static const inline std::atomic<bool> m_goOn{ false };
    QList<QImage> m_pictures;
    platform::DiskFiles m_files;
    // That of the players and that by which their sound is played.
    std::unique_ptr<FakeTime> m_time;
    std::unique_ptr<FakeTime> m_soundTime;
    std::unique_ptr<CountingAudioOut> m_audio;
    std::unique_ptr<platform::QtMedia> m_media;
    std::unique_ptr<QWidget> m_form;
};

void TestClips::initTestCase()
{
    QVERIFY2(Beginning().size() > 100'000, FIREWORKS_BEGINNING);
    const auto clip = platform::ClipFile::Open(m_clip, m_goOn);
    QVERIFY(clip);
    while (const auto frame = clip->NextFrame([](QSize own) { return own; })) {
        QVERIFY2(!m_pictures.contains(frame->image), "two pictures are alike");
        m_pictures << frame->image;
    }
    QCOMPARE(m_pictures.size(), kPictures);
}

void TestClips::init()
{
    m_form.reset();
    m_media.reset();
    m_audio.reset();
    m_time = std::make_unique<FakeTime>();
    m_soundTime = std::make_unique<FakeTime>();
    m_audio = std::make_unique<CountingAudioOut>(*m_soundTime, *m_soundTime);
    m_media = std::make_unique<platform::QtMedia>(m_files, *m_audio, *m_time);
    m_form = std::make_unique<QWidget>();
    // The clip has its own size on it.
    m_form->resize(QSize(kCorner.x() + 16, kCorner.y() + 16) + kOwnSize);
    m_form->show();
}

std::unique_ptr<platform::MediaPlayer> TestClips::Begun()
{
    const int clips = m_form->findChildren<QWidget *>(QStringLiteral("clip")).size();
    const int asked = m_audio->asked;
    auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    // The sound is known behind the first picture, and with it the clip's time begins.
    const auto ready = [&] { return Shown(clips) == 0 && m_audio->asked > asked; };
    return QTest::qWaitFor(ready) ? std::move(player) : nullptr;
}

int TestClips::Shown(int which) const
{
    if (!Clip(which) || !Clip(which)->isVisible())
        return -1;
    return int(m_pictures.indexOf(Clip(which)->grab().toImage().convertToFormat(QImage::Format_RGB32)));
}

bool TestClips::Until(const std::function<bool()> &reached)
{
    for (int step = 0; step < 800; ++step) {
        if (QTest::qWaitFor(reached, 15))
            return true;
        m_time->Run(2 * kPicture);
        m_soundTime->Run(2 * kPicture);
    }
    return reached();
}

void TestClips::liesOverTheFormAtItsCorner_data()
{
    QTest::addColumn<QSize>("form");
    QTest::addColumn<QSize>("clip");
    QTest::newRow("small display") << QSize(800, 600) << QSize(512, 384);
    QTest::newRow("usual display") << QSize(1024, 768) << QSize(736, 552);
    QTest::newRow("wide display") << QSize(1536, 864) << QSize(1056, 792);
    QTest::newRow("hardly any room") << QSize(280, 60) << QSize(16, 16);
}

void TestClips::liesOverTheFormAtItsCorner()
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
    QVERIFY(Until([&] { return Clip() && Clip()->isVisible(); }));
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

void TestClips::clicksGoThrough()
{
    const auto player = Player();
    player->SetFileName(m_clip);
    player->Play();
    QVERIFY(Until([&] { return Clip() && Clip()->isVisible(); }));
    QCOMPARE(m_form->childAt(kCorner + QPoint(50, 50)), nullptr);
    QVERIFY(!Clip()->hasFocus());
}

void TestClips::standsBehindOnDemand()
{
    QWidget button(m_form.get());
    const auto player = Player();
    player->SetFileName(m_clip);
    player->ZOrder(1);
    player->Play();
    QVERIFY(Until([&] { return Clip() && Clip()->isVisible(); }));
    const auto order = [&] { return m_form->children().indexOf(Clip()); };
    QCOMPARE(order(), 0);
    player->ZOrder(0);
    QCOMPARE(order(), m_form->children().size() - 1);
}

void TestClips::damagedClipsEnd_data()
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

void TestClips::damagedClipsEnd()
{
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("fireworks.mpg"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    const auto player = Player();
    player->SetFileName(path);
    player->Play();
    QVERIFY(Until([&] { return !player->Playing(); }));
    QVERIFY(!Clip());
}

void TestClips::pipesAreNotWaitedFor()
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("fireworks.mpg"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto player = Player();
    player->SetFileName(pipe);
    player->Play();
    QVERIFY(Until([&] { return !player->Playing(); }));
}

void TestClips::soundGoesWithThePictures()
{
    const auto player = Begun();
    QVERIFY(player);
    QVERIFY(Until([&] { return !player->Playing(); }));
    QCOMPARE(m_audio->Played().size(), std::size_t(1));
    QVERIFY(!m_audio->Playing());
    const auto &sound = *m_audio->Played().front();
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

void TestClips::withoutSoundItGoesByTheClock()
{
    m_audio->SetUsable(false);
    const auto player = Begun();
    QVERIFY(player);
    m_time->Run(10 * kPicture - 1ms);
    QTRY_COMPARE(Shown(), 9);
    m_time->Run(1ms);
    QTRY_COMPARE(Shown(), 10);
    // As when the program was held up for a while.
    m_time->Run(39 * kPicture);
    QTRY_COMPARE(Shown(), kPictures - 1);
    // The last one too is seen for its time.
    m_time->Run(kPicture - 1ms);
    QTest::qWait(50);
    QVERIFY(player->Playing());
    QCOMPARE(Shown(), kPictures - 1);
    m_time->Run(1ms);
    QTRY_VERIFY(!player->Playing());
    QVERIFY(!Clip());
}

void TestClips::withSoundItGoesByTheSound()
{
    const auto player = Begun();
    QVERIFY(player);
    m_time->Run(5s);
    m_soundTime->Run(10 * kPicture);
    QTRY_COMPARE(Shown(), 10);
    // It ends a little earlier than the pictures do.
    m_time->Run(5s);
    m_soundTime->Run(39 * kPicture);
    QTRY_COMPARE(Shown(), kPictures - 1);
    m_soundTime->Run(10s);
    QVERIFY(!m_audio->Playing());
    QTest::qWait(50);
    QVERIFY(player->Playing());
    m_time->Run(kPicture);
    QTRY_VERIFY(!player->Playing());
}

void TestClips::aDeviceThatFailsTakesOnlyTheSoundAway()
{
    const auto player = Begun();
    QVERIFY(player);
    m_soundTime->Run(30 * kPicture);
    QTRY_COMPARE(Shown(), 30);
    m_audio->FailAfter(8 * kPicture);
    player->Play(); // what has been heard before no longer counts
    QTRY_COMPARE(m_audio->asked, 2);
    m_soundTime->Run(7 * kPicture);
    QTRY_COMPARE(Shown(), 7);
    m_time->Run(5s);
    m_soundTime->Run(kPicture);
    QVERIFY(!m_audio->Usable());
    // It goes on from where it was, by the clock.
    QTest::qWait(50);
    QCOMPARE(Shown(), 7);
    m_time->Run(3 * kPicture);
    QTRY_COMPARE(Shown(), 10);
    m_time->Run(39 * kPicture);
    QTRY_COMPARE(Shown(), kPictures - 1);
    QVERIFY(player->Playing());
    m_time->Run(kPicture);
    QTRY_VERIFY(!player->Playing());

    // The next time it has no sound from the beginning, and begins there.
    player->Play();
    QTRY_COMPARE(m_audio->asked, 3);
    QTRY_COMPARE(Shown(), 0);
    m_time->Run(5 * kPicture);
    QTRY_COMPARE(Shown(), 5);
}

void TestClips::theSecondOfTwoClipsIsHeard()
{
    const auto one = Begun();
    QVERIFY(one);
    m_soundTime->Run(5 * kPicture);
    QTRY_COMPARE(Shown(0), 5);
    const auto other = Begun();
    QVERIFY(other);
    QCOMPARE(m_audio->Played().size(), std::size_t(2));
    m_soundTime->Run(10 * kPicture);
    QTRY_COMPARE(Shown(1), 10);
    QCOMPARE(Shown(0), 5);
    m_time->Run(2 * kPicture);
    QTRY_COMPARE(Shown(0), 7);
    QCOMPARE(Shown(1), 10);

    one->SetFileName(QString());
    QVERIFY(m_audio->Playing());
    other->SetFileName(QString());
    QVERIFY(!m_audio->Playing());
}

void TestClips::aClipThatTheDeviceRefusesDoesNotHoldTheOther()
{
    const auto one = Begun();
    QVERIFY(one);
    m_soundTime->Run(5 * kPicture);
    QTRY_COMPARE(Shown(0), 5);
    m_audio->SetUsable(false);
    const auto other = Begun();
    QVERIFY(other);
    QTRY_VERIFY(!m_audio->Playing());
    m_time->Run(2 * kPicture);
    QTRY_COMPARE(Shown(0), 7);
    QTRY_COMPARE(Shown(1), 2);
}

void TestClips::readsTheWholeClip()
{
    const auto clip = platform::ClipFile::Open(m_clip, m_goOn);
    QVERIFY(clip);
    QCOMPARE(clip->FrameLength(), std::chrono::microseconds(kPicture));
    int count = 0;
    while (const auto frame = clip->NextFrame([](QSize own) { return own; })) {
        QCOMPARE(frame->image.size(), kOwnSize);
        QCOMPARE(frame->at, std::chrono::microseconds(count * kPicture));
        ++count;
    }
    QCOMPARE(count, kPictures);
}

// The reader may have come to the end of the file long before its last pictures are due.
void TestClips::thereIsNoEndWhileAPictureIsLeft()
{
    platform::ClipReader reader(QStringLiteral(FIREWORKS_GLIMPSE), [](QSize own) { return own; });
    for (int count = 1; count <= kGlimpsePictures; ++count) {
        // The last ones are all read by now.
        if (count > kGlimpsePictures - 3)
            QTest::qWait(30);
        QVERIFY(!reader.End());
        QVERIFY(QTest::qWaitFor([&] { return reader.TakeDue(1h).has_value(); }));
    }
    QTRY_VERIFY(reader.End());
    QCOMPARE(*reader.End(), std::chrono::microseconds(kGlimpsePictures * kPicture));
    QVERIFY(!reader.TakeDue(1h));
}

QTEST_MAIN(TestClips)
#include "TestClips.moc"
