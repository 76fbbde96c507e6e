#pragma once

#include "platform/agent/CharacterFile.h"
#include "platform/agent/PuppetFigure.h"
#include "support/AgentService.h"
#include "support/FakeVoice.h"
#include "support/SmallCharacter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace support {

// The service with the real figures and the shipped characters; only voice and time are fakes.
class PuppetAgentService : public AgentService {
public:
    // `characters` is the folder that holds the characters' own folders.
    explicit PuppetAgentService(const QString &characters)
        : m_engineOfVoices(time), m_audio(time, time),
          m_maker(Packed(characters), m_engineOfVoices, m_audio, time,
                  [this] { return std::make_unique<FakeTicker>(time); })
    {
    }
    ~PuppetAgentService() override { m_engine.reset(); }

    platform::Events &Loop() override { return time; }
    platform::FigureMaker &Figures() override { return m_maker; }
    bool Until(const std::function<bool()> &reached) override
    {
        for (int step = 0; step < 10000 && !reached(); ++step)
            time.Run(std::chrono::milliseconds(20));
        return reached();
    }

    FakeTime time;

private:
    // Packing all three takes longer than a test, so it is done once for the process.
    static QString Packed(const QString &characters)
    {
        static QTemporaryDir folder;
        if (!QDir(folder.path()).isEmpty())
            return folder.path();
        const QDir from(characters);
        for (const QString &name : from.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const platform::CharacterSource source = platform::ReadCharacterFolder(from.filePath(name));
            const QString file =
                source.figure.value(QStringLiteral("name")).toString() + QStringLiteral(".acs");
            QFile packed(QDir(folder.path()).filePath(file));
            if (!packed.open(QIODevice::WriteOnly))
                qFatal("No room for %s.", qPrintable(file));
            packed.write(platform::PackCharacter(source));
        }
        return folder.path();
    }

    FakeSpeechEngine m_engineOfVoices;
    FakeAudioOut m_audio;
    platform::PuppetFigureMaker m_maker;
};

} // namespace support
