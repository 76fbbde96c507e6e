#pragma once

#include "platform/agent/CharacterFile.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/PuppetFigureMaker.h"
#include "support/AgentService.h"
#include "support/FakeOptionsStore.h"
#include "support/FakeVoice.h"
#include "support/SmallCharacter.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>

namespace support {

// The service with the real figures and the shipped characters; only voice and time are fakes.
class PuppetAgentService : public AgentService {
public:
    using MakeTicker = std::function<std::unique_ptr<platform::Ticker>(FakeTime &)>;

    // `characters` is the folder that holds the characters' own folders, `sounds` that of their sounds.
    PuppetAgentService(const QString &characters, const QString &sounds)
        : PuppetAgentService(Packed(characters, sounds),
                             [](FakeTime &clock) { return std::make_unique<FakeTicker>(clock); })
    {
    }
    // `packed` is a folder of character files.
    PuppetAgentService(const QString &packed, MakeTicker makeTicker)
        : m_engineOfVoices(time), m_audio(time, time),
          m_maker(packed, m_engineOfVoices, m_audio, time, m_options,
                  [this, makeTicker = std::move(makeTicker)] { return makeTicker(time); })
    {
    }
    ~PuppetAgentService() override { m_engine.reset(); }

    platform::FigureMaker &Figures() override { return m_maker; }

    void BeginDrag(const QString &id) override
    {
        if (platform::CharacterWindow *window = WindowOf(id)) {
            const QPoint at = window->pos() + window->rect().center();
            Mouse(*window, QEvent::MouseButtonPress, at, Qt::LeftButton);
            Mouse(*window, QEvent::MouseMove, at + QPoint(30, 10), Qt::LeftButton);
        }
    }
    void EndDrag(const QString &id) override
    {
        if (platform::CharacterWindow *window = WindowOf(id))
            Mouse(*window, QEvent::MouseButtonRelease, window->pos(), Qt::NoButton);
    }
    void HideByMenu(const QString &id) override
    {
        if (platform::CharacterWindow *window = WindowOf(id))
            window->hideChosen();
    }
    void BreakVoice(qint32 number) override
    {
        m_engineOfVoices.SetUsable(number != platform::kSpeechEngineUnusable);
        m_audio.SetUsable(number != platform::kAudioDeviceUnusable);
    }
    int Talking() const override { return m_audio.Playing() ? 1 : 0; }
    int Seen() const override
    {
        int seen = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets())
            seen += qobject_cast<const platform::CharacterWindow *>(widget) && widget->isVisible();
        return seen;
    }

private:
    // Packing all three takes longer than a test, so it is done once for the process.
    static QString Packed(const QString &characters, const QString &sounds)
    {
        static QTemporaryDir folder;
        if (!QDir(folder.path()).isEmpty())
            return folder.path();
        const QDir from(characters);
        for (const QString &name : from.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const platform::CharacterSource source =
                platform::ReadCharacterFolder(from.filePath(name), sounds);
            const QString file =
                source.figure.value(QStringLiteral("name")).toString() + QStringLiteral(".acs");
            QFile packed(QDir(folder.path()).filePath(file));
            if (!packed.open(QIODevice::WriteOnly))
                qFatal("No room for %s.", qPrintable(file));
            packed.write(platform::PackCharacter(source));
        }
        return folder.path();
    }

    static platform::CharacterWindow *WindowOf(const QString &id)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *window = qobject_cast<platform::CharacterWindow *>(widget);
            if (window && window->isVisible() && window->windowTitle() == id)
                return window;
        }
        return nullptr;
    }
    static void Mouse(QWidget &window, QEvent::Type type, QPoint at, Qt::MouseButtons held)
    {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, QPointF(at - window.pos()), QPointF(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }

    FakeSpeechEngine m_engineOfVoices;
    FakeAudioOut m_audio;
    FakeOptionsStore m_store;
    platform::OptionsKeeper m_options{ m_store };
    platform::PuppetFigureMaker m_maker;
};

} // namespace support
