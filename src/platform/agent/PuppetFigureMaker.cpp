#include "platform/agent/PuppetFigureMaker.h"

#include "platform/Error.h"
#include "platform/agent/CharacterFile.h"
#include "platform/agent/PuppetFigure.h"

#include <QDir>

#include <random>

namespace platform {

PuppetFigureMaker::PuppetFigureMaker(QString folder, SpeechEngine &engine, AudioOut &audio, Events &events,
                                     OptionsKeeper &options, MakeTicker makeTicker, SoundEffects *effects)
    : m_folder(std::move(folder)), m_engine(engine), m_audio(audio), m_events(events), m_options(options),
      m_makeTicker(makeTicker ? std::move(makeTicker) : [] { return std::make_unique<QtTicker>(); }),
      m_effects(effects)
{
}

// Names are those of files in the folder and never lead out of it; their letter case does not matter.
QString PuppetFigureMaker::PathOf(const QString &file) const
{
    const QDir folder(m_folder);
    for (const QString &entry : folder.entryList(QDir::Files)) {
        if (entry.compare(file, Qt::CaseInsensitive) == 0)
            return folder.filePath(entry);
    }
    return QString();
}

std::vector<std::shared_ptr<const CharacterData>> PuppetFigureMaker::All()
{
    std::vector<std::shared_ptr<const CharacterData>> all;
    const QDir folder(m_folder);
    for (const QString &entry : folder.entryList({ QStringLiteral("*.acs") }, QDir::Files, QDir::Name)) {
        try {
            std::shared_ptr<const CharacterData> &character = m_characters[entry.toLower()];
            if (!character)
                character = LoadCharacterFile(folder.filePath(entry));
            all.push_back(character);
        } catch (const Error &) {
            continue; // whoever loads it is told
        }
    }
    return all;
}

QStringList PuppetFigureMaker::Names()
{
    QStringList names;
    for (const auto &character : All())
        names << character->name;
    return names;
}

std::unique_ptr<Figure> PuppetFigureMaker::Make(const QString &, const QString &file)
{
    std::shared_ptr<const CharacterData> &character = m_characters[file.toLower()];
    if (!character)
        character = LoadCharacterFile(PathOf(file));
    return std::make_unique<PuppetFigure>(character, m_engine, m_audio, m_events, m_options, m_makeTicker(),
                                          std::random_device()(), m_effects);
}

void PuppetFigureMaker::SetSoundEffects(bool on)
{
    if (m_effects)
        m_effects->SetOn(on);
}

} // namespace platform
