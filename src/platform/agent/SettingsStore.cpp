#include "platform/agent/SettingsStore.h"

#include <QLockFile>
#include <QLoggingCategory>

namespace platform {

Q_LOGGING_CATEGORY(optionsLog, "tumblewick.options", QtWarningMsg)

namespace {

const QString kCharacters = QStringLiteral("Characters");

} // namespace

SettingsStore::SettingsStore() : m_settings(QStringLiteral("Tumblewick"), QStringLiteral("Characters")) {}

SettingsStore::SettingsStore(const QString &fileName) : m_settings(fileName, QSettings::IniFormat) {}

// Once is enough: whoever reads the log knows then.
void SettingsStore::Complain(const QString &what)
{
    if (!m_hasComplained)
        qCWarning(optionsLog).noquote() << what << m_settings.fileName();
    m_hasComplained = true;
}

bool SettingsStore::Bool(const QString &key, bool usual)
{
    const QString text = Text(key);
    if (text.isEmpty() || text == QLatin1String("true") || text == QLatin1String("false"))
        return text.isEmpty() ? usual : text == QLatin1String("true");
    Complain(QStringLiteral("An option is neither on nor off in"));
    return usual;
}

int SettingsStore::Number(const QString &key, int usual)
{
    const QString text = Text(key);
    bool good = false;
    const int number = text.toInt(&good);
    if (good || text.isEmpty())
        return good ? number : usual;
    Complain(QStringLiteral("An option is no number in"));
    return usual;
}

QString SettingsStore::Text(const QString &key)
{
    return m_settings.value(key).toString();
}

ServiceOptions SettingsStore::ReadOptions()
{
    ServiceOptions options;
    Sync();
    if (m_settings.status() != QSettings::NoError)
        Complain(QStringLiteral("The options cannot be read from"));
    options.balloons = Bool(QStringLiteral("Output/Balloons"), options.balloons);
    options.balloonTextSize = Number(QStringLiteral("Output/BalloonTextSize"), options.balloonTextSize);
    options.voice = Bool(QStringLiteral("Output/Voice"), options.voice);
    options.speakingRate = Number(QStringLiteral("Output/SpeakingRate"), options.speakingRate);
    options.soundEffects = Bool(QStringLiteral("Output/SoundEffects"), options.soundEffects);
    options.readingVoice = Text(QStringLiteral("Output/ReadingVoice"));
    options.voiceSpelling = Bool(QStringLiteral("Speech/VoiceSpelling"), options.voiceSpelling);
    options.microphone = Text(QStringLiteral("Speech/Microphone"));
    m_settings.beginGroup(kCharacters);
    const QStringList names = m_settings.childGroups();
    m_settings.endGroup();
    for (const QString &name : names) {
        const QString prefix = kCharacters + QLatin1Char('/') + name;
        options.SetVoiceOf(
            name, { Text(prefix + QStringLiteral("/Voice")), Number(prefix + QStringLiteral("/Pitch"), 0) });
    }
    options.Limit();
    return options;
}

void SettingsStore::WriteOptions(const ServiceOptions &options)
{
    m_settings.setValue(QStringLiteral("Output/Balloons"), options.balloons);
    m_settings.setValue(QStringLiteral("Output/BalloonTextSize"), options.balloonTextSize);
    m_settings.setValue(QStringLiteral("Output/Voice"), options.voice);
    m_settings.setValue(QStringLiteral("Output/SpeakingRate"), options.speakingRate);
    m_settings.setValue(QStringLiteral("Output/SoundEffects"), options.soundEffects);
    m_settings.setValue(QStringLiteral("Output/ReadingVoice"), options.readingVoice);
    m_settings.setValue(QStringLiteral("Speech/VoiceSpelling"), options.voiceSpelling);
    m_settings.setValue(QStringLiteral("Speech/Microphone"), options.microphone);
    m_settings.remove(kCharacters);
    for (const auto &[name, chosen] : options.characters) {
        const QString prefix = kCharacters + QLatin1Char('/') + name;
        m_settings.setValue(prefix + QStringLiteral("/Voice"), chosen.voice);
        m_settings.setValue(prefix + QStringLiteral("/Pitch"), chosen.pitch);
    }
    Written();
}

SheetPlace SettingsStore::ReadSheetPlace()
{
    SheetPlace place;
    place.page = Text(QStringLiteral("Sheet/Page"));
    if (m_settings.contains(QStringLiteral("Sheet/Left")) && m_settings.contains(QStringLiteral("Sheet/Top")))
        place.place = QPoint(Number(QStringLiteral("Sheet/Left"), 0), Number(QStringLiteral("Sheet/Top"), 0));
    return place;
}

void SettingsStore::WriteSheetPlace(const SheetPlace &place)
{
    m_settings.setValue(QStringLiteral("Sheet/Page"), place.page);
    if (place.place) {
        m_settings.setValue(QStringLiteral("Sheet/Left"), place.place->x());
        m_settings.setValue(QStringLiteral("Sheet/Top"), place.place->y());
    }
    Written();
}

// A disk that failed may have kept the lock of the time before, for which this very program would wait half a
// minute. A lock that somebody holds is not taken away.
void SettingsStore::Sync()
{
    QLockFile(m_settings.fileName() + QStringLiteral(".lock")).removeStaleLockFile();
    m_settings.sync();
}

void SettingsStore::Written()
{
    Sync();
    if (m_settings.status() != QSettings::NoError)
        Complain(QStringLiteral("The options cannot be kept in"));
}

} // namespace platform
