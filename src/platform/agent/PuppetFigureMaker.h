#pragma once

#include "platform/agent/CharacterData.h"
#include "platform/agent/Figure.h"
#include "platform/agent/ServiceOptions.h"
#include "platform/agent/Ticker.h"
#include "platform/system/Events.h"
#include "platform/voice/SoundEffects.h"
#include "platform/voice/Voice.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace platform {

// Makes figures from the files of one folder. A file is read once.
class PuppetFigureMaker final : public FigureMaker {
public:
    using MakeTicker = std::function<std::unique_ptr<Ticker>()>;

    // Engine, devices, events and options must outlive all figures. Without `makeTicker` the figures follow
    // Qt's own clock, without `effects` their motions are silent.
    PuppetFigureMaker(QString folder, SpeechEngine &engine, AudioOut &audio, Events &events,
                      OptionsKeeper &options, MakeTicker makeTicker = {}, SoundEffects *effects = nullptr);

    std::unique_ptr<Figure> Make(const QString &id, const QString &file) override;
    void SetSoundEffects(bool on) override;

    // The characters of all files in the folder that can be used, by name.
    std::vector<std::shared_ptr<const CharacterData>> All();
    QStringList Names();

private:
    QString PathOf(const QString &file) const;

    const QString m_folder;
    SpeechEngine &m_engine;
    AudioOut &m_audio;
    Events &m_events;
    OptionsKeeper &m_options;
    const MakeTicker m_makeTicker;
    SoundEffects *const m_effects;
    std::map<QString, std::shared_ptr<const CharacterData>> m_characters;
};

} // namespace platform
