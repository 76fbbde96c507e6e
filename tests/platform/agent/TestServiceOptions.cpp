#include "platform/agent/ServiceOptions.h"
#include "platform/agent/SettingsStore.h"
#include "platform/voice/SpeechService.h"
#include "support/FakeOptionsStore.h"
#include "support/KeptLog.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace platform;
using support::FakeOptionsStore;

namespace {

ServiceOptions Unusual()
{
    ServiceOptions options;
    options.balloons = false;
    options.balloonTextSize = 28;
    options.voice = false;
    options.speakingRate = -3;
    options.soundEffects = false;
    options.characters = { { "Merlin", { "cmu_us_slt", 2 } }, { "Peedy", { "", -4 } } };
    options.readingVoice = "fr";
    options.voiceSpelling = true;
    options.microphone = "alsa_input.usb, \"best\" = 100%";
    return options;
}

} // namespace

// The user's choices: how they are kept, from where they are read, and who is told.
class TestServiceOptions : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_warnings.emplace("tumblewick.options");
        m_folder = std::make_unique<QTemporaryDir>();
    }
    void cleanup() { m_warnings.reset(); }

    void aFreshStoreGivesTheDefaults()
    {
        SettingsStore store(File());
        const ServiceOptions options = store.ReadOptions();
        QCOMPARE(options, ServiceOptions{});
        QVERIFY(options.balloons && options.voice && options.soundEffects);
        QVERIFY(!options.voiceSpelling);
        QCOMPARE(options.balloonTextSize, 20);
        QCOMPARE(store.ReadSheetPlace(), SheetPlace{});
        QVERIFY(m_warnings->lines.isEmpty());
    }

    void theUsersOwnStoreLiesWhereTheDesktopKeepsSettings()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder->path());
        {
            SettingsStore store;
            store.WriteOptions(Unusual());
        }
        QVERIFY(QFile::exists(m_folder->filePath("Tumblewick/Characters.conf")));
    }

    void whatIsWrittenIsReadInTheNextRun()
    {
        {
            SettingsStore store(File());
            store.WriteOptions(Unusual());
            store.WriteSheetPlace({ "Speech", QPoint(-7, 90) });
        }
        SettingsStore store(File());
        QCOMPARE(store.ReadOptions(), Unusual());
        QCOMPARE(store.ReadSheetPlace(), (SheetPlace{ "Speech", QPoint(-7, 90) }));
        // A character that is to sound as it was made leaves nothing behind.
        store.WriteOptions(ServiceOptions{});
        QCOMPARE(SettingsStore(File()).ReadOptions(), ServiceOptions{});
        QVERIFY(m_warnings->lines.isEmpty());
    }

    void aDamagedStoreGivesDefaultsAndSaysSoOnce_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("told");
        QTest::newRow("no settings at all") << QByteArray("\x01\xff\x00garbage]]\n[[", 14) << true;
        QTest::newRow("words for numbers")
            << QByteArray("[Output]\nBalloonTextSize=large\nSpeakingRate=quick\n") << true;
        QTest::newRow("numbers for switches") << QByteArray("[Output]\nBalloons=7\nVoice=maybe\n") << true;
        QTest::newRow("cut off") << QByteArray("[Output]\nBalloons") << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("keys of a later version") << QByteArray("[Output]\nWhistles=true\n") << false;
    }
    void aDamagedStoreGivesDefaultsAndSaysSoOnce()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, told);
        WriteFile(content);
        SettingsStore store(File());
        QCOMPARE(store.ReadOptions(), ServiceOptions{});
        store.ReadOptions();
        QCOMPARE(m_warnings->lines.size(), qsizetype(told ? 1 : 0));
    }

    void numbersBeyondTheirRangeAreBroughtIn()
    {
        WriteFile("[Output]\nBalloonTextSize=3\nSpeakingRate=900\n[Characters]\nGenie\\Pitch=-77\n");
        SettingsStore store(File());
        const ServiceOptions options = store.ReadOptions();
        QCOMPARE(options.balloonTextSize, ServiceOptions::kSmallestText);
        QCOMPARE(options.speakingRate, ServiceOptions::kMostRate);
        QCOMPARE(options.VoiceOf("Genie").pitch, -ServiceOptions::kMostPitch);
    }

    void aStoreThatCannotBeWrittenSaysSoOnceAndTheOptionsHold()
    {
        // A file stands where the folder ought to be.
        WriteFile("x");
        SettingsStore store(File() + "/options.conf");
        OptionsKeeper keeper(store);
        keeper.Set(Unusual());
        store.WriteSheetPlace({ "Output", QPoint(1, 2) });
        QCOMPARE(keeper.Now(), Unusual());
        QCOMPARE(m_warnings->lines.size(), qsizetype(1));
    }

    void theKeeperTellsEachObserverOnceForEachChange()
    {
        FakeOptionsStore store;
        OptionsKeeper keeper(store);
        QStringList told;
        const auto first =
            keeper.Observe([&] { told << QStringLiteral("first %1").arg(keeper.Now().balloonTextSize); });
        auto second = keeper.Observe([&] { told << "second"; });
        ServiceOptions options = keeper.Now();
        options.balloonTextSize = 24;
        keeper.Set(options);
        QCOMPARE(told, (QStringList{ "first 24", "second" }));
        QCOMPARE(store.writes, 1);
        keeper.Set(options);
        QCOMPARE(told.size(), qsizetype(2));
        QCOMPARE(store.writes, 1);
        second.reset();
        options.balloonTextSize = 1000;
        keeper.Set(options);
        QCOMPARE(told.mid(2), QStringList{ "first 32" });
    }

    void observersMayComeAndGoWhileTheyAreTold()
    {
        FakeOptionsStore store;
        OptionsKeeper keeper(store);
        int calls = 0;
        std::shared_ptr<void> second;
        std::shared_ptr<void> third;
        const auto first = keeper.Observe([&] {
            ++calls;
            second.reset();
            if (!third)
                third = keeper.Observe([&] { calls += 100; });
        });
        second = keeper.Observe([&] { calls += 10; });
        ServiceOptions options;
        options.voice = false;
        keeper.Set(options);
        QCOMPARE(calls, 1);
        options.voice = true;
        keeper.Set(options);
        QCOMPARE(calls, 102);
    }

    void anotherVoiceDoesNotGetWhatWasMadeForTheCharactersOwn()
    {
        VoiceSettings own;
        own.voice = "cmu_us_awb";
        own.stretch = 1.15;
        own.pitch = 0.9;
        own.rate = 0.95;
        own.treble = 10;
        own.speaker = "Merlin";
        const VoiceSettings same = WithVoice(own, {});
        QCOMPARE(same.voice, own.voice);
        QCOMPARE(same.stretch, 1.15);
        QCOMPARE(same.pitch, 0.9);
        QCOMPARE(same.rate, 0.95);
        const VoiceSettings other = WithVoice(own, { "cmu_us_slt", 0 });
        QCOMPARE(other.voice, QStringLiteral("cmu_us_slt"));
        QCOMPARE(other.pitch, 1.0);
        QCOMPARE(other.stretch, 1.0);
        QCOMPARE(other.rate, 1.0);
        QCOMPARE(other.speaker, QStringLiteral("Merlin"));
        QCOMPARE(WithVoice(own, { "cmu_us_awb", 0 }).stretch, 1.15);
    }

    void rateAndPitchReachTheVoicesAndLeaveThemAgain()
    {
        SpeechService voices;
        ServiceOptions options;
        options.speakingRate = 5;
        options.SetVoiceOf("Peedy", { "", -5 });
        options.readingVoice = "of another machine";
        ApplyVoices(options, { "Merlin", "Peedy" }, voices);
        QVERIFY(voices.Rate("") > 1.4 && voices.Rate("") < 1.6);
        QCOMPARE(voices.Pitch("Merlin"), 1.0);
        QVERIFY(voices.Pitch("Peedy") < 0.8 && voices.Pitch("Peedy") > 0.7);
        QCOMPARE(voices.ReadingVoice(), voices.Available().front().id);
        ApplyVoices(ServiceOptions{}, { "Merlin", "Peedy" }, voices);
        QCOMPARE(voices.Rate(""), 1.0);
        QCOMPARE(voices.Pitch("Peedy"), 1.0);
    }

private:
    QString File() const { return m_folder->filePath("options.conf"); }
    void WriteFile(const QByteArray &content)
    {
        QFile file(File());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    std::optional<support::KeptLog> m_warnings;
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestServiceOptions)
#include "TestServiceOptions.moc"
