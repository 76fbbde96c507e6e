#include "platform/voice/SoundShaping.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace platform;

// Tone, level and rate of what is heard.
class TestSoundShaping : public QObject {
    Q_OBJECT
private slots:
    void trebleIsLifted_data();
    void trebleIsLifted();
    void levelIsThatOfSpeechAlone();
    void levelIsSet_data();
    void levelIsSet();
    void loudSoundsAreBent();
    void silenceStaysSilent();
    void rateChangesAndTimeStays_data();
    void rateChangesAndTimeStays();
    void longSoundsAreKeptWhole();
};

static constexpr int kRate = 16000;

static std::vector<float> Tone(double frequency, double seconds, double size)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * kRate));
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = static_cast<float>(
            size * std::sin(2 * std::numbers::pi * frequency * static_cast<double>(index) / kRate));
    return samples;
}

static bool Near(double value, double wanted, double most)
{
    return std::abs(value - wanted) <= most;
}

void TestSoundShaping::trebleIsLifted_data()
{
    QTest::addColumn<double>("frequency");
    QTest::addColumn<double>("lift");
    QTest::addColumn<double>("gain");
    QTest::newRow("deep") << 100.0 << 10.0 << 0.0;
    QTest::newRow("middle") << 2000.0 << 10.0 << 5.0;
    QTest::newRow("high") << 7500.0 << 10.0 << 10.0;
    QTest::newRow("not lifted") << 5000.0 << 0.0 << 0.0;
    QTest::newRow("lowered") << 7500.0 << -6.0 << -6.0;
}

void TestSoundShaping::trebleIsLifted()
{
    QFETCH(double, frequency);
    QFETCH(double, lift);
    QFETCH(double, gain);
    auto samples = Tone(frequency, 1, 0.1);
    const auto before = ActiveLevel(samples, kRate);
    LiftTreble(samples, kRate, lift);
    QVERIFY2(Near(ActiveLevel(samples, kRate) - before, gain, 0.5),
             qPrintable(QString::number(ActiveLevel(samples, kRate) - before)));
}

void TestSoundShaping::levelIsThatOfSpeechAlone()
{
    auto samples = Tone(440, 1, 0.1);
    const auto alone = ActiveLevel(samples, kRate);
    QVERIFY2(Near(alone, -23.01, 0.05), qPrintable(QString::number(alone)));
    samples.resize(samples.size() * 5);
    QVERIFY(Near(ActiveLevel(samples, kRate), alone, 0.05));
}

void TestSoundShaping::levelIsSet_data()
{
    QTest::addColumn<double>("size");
    QTest::newRow("faint") << 0.001;
    QTest::newRow("middle") << 0.2;
    QTest::newRow("loud") << 1.0;
}

void TestSoundShaping::levelIsSet()
{
    QFETCH(double, size);
    auto samples = Tone(440, 1, size);
    SetLevel(samples, kRate, -20);
    QVERIFY(Near(ActiveLevel(samples, kRate), -20, 0.05));
}

void TestSoundShaping::loudSoundsAreBent()
{
    auto samples = Tone(440, 1, 0.02);
    samples[8000] = 1.0F;
    samples[8001] = -1.0F;
    SetLevel(samples, kRate, -20);
    const auto [least, most] = std::minmax_element(samples.begin(), samples.end());
    QVERIFY(*most > 0.7F && *most <= 1.0F);
    QVERIFY(*least < -0.7F && *least >= -1.0F);
}

void TestSoundShaping::silenceStaysSilent()
{
    std::vector<float> samples(1000);
    QCOMPARE(ActiveLevel(samples, kRate), -100.0);
    LiftTreble(samples, kRate, 10);
    SetLevel(samples, kRate, -20);
    QVERIFY(std::all_of(samples.begin(), samples.end(), [](float sample) { return sample == 0.0F; }));
    std::vector<float> none;
    SetLevel(none, kRate, -20);
    QCOMPARE(ActiveLevel(none, kRate), -100.0);
    QVERIFY(Resampled(none, kRate, 48000).isEmpty());
    QVERIFY(Resampled(samples, 0, 48000).isEmpty());
}

void TestSoundShaping::rateChangesAndTimeStays_data()
{
    QTest::addColumn<int>("from");
    QTest::newRow("plain") << 16000;
    QTest::newRow("deeper") << 15200;
    QTest::newRow("higher") << 16800;
}

void TestSoundShaping::rateChangesAndTimeStays()
{
    QFETCH(int, from);
    std::vector<float> samples(static_cast<std::size_t>(from));
    // Three short bursts, one of them at the very end.
    for (const int at : { from / 10, from / 2, from - 60 })
        for (int index = 0; index < 40; ++index)
            samples[static_cast<std::size_t>(at + index)] = index % 8 < 4 ? 0.5F : -0.5F;
    const auto converted = Resampled(samples, from, 48000);
    QCOMPARE(converted.size(), 48000 * 2);
    const auto *out = reinterpret_cast<const qint16 *>(converted.constData());
    for (const int at : { from / 10, from / 2, from - 60 }) {
        const auto middle = (at + 20.0) / from;
        double weight = 0;
        double sum = 0;
        for (int index = static_cast<int>((middle - 0.003) * 48000);
             index < std::min(48000, static_cast<int>((middle + 0.003) * 48000)); ++index) {
            const double power = static_cast<double>(out[index]) * out[index];
            weight += power;
            sum += power * index / 48000;
        }
        QVERIFY(weight > 0);
        QVERIFY2(Near(sum / weight, middle, 0.0003), qPrintable(QString::number(sum / weight - middle)));
    }
}

void TestSoundShaping::longSoundsAreKeptWhole()
{
    auto samples = Tone(440, 90, 0.3);
    const auto converted = Resampled(samples, kRate, 48000);
    QCOMPARE(converted.size(), 90 * 48000 * 2);
    const auto *out = reinterpret_cast<const qint16 *>(converted.constData());
    double last = 0;
    for (int index = 89 * 48000; index < 90 * 48000; ++index)
        last += std::abs(static_cast<double>(out[index])) / 48000;
    QVERIFY(Near(last, 0.3 * 32768 * 2 / std::numbers::pi, 200));
}

QTEST_APPLESS_MAIN(TestSoundShaping)
#include "TestSoundShaping.moc"
