#include "platform/Services.h"
#include "platform/agent/AgentEngine.h"
#include "platform/agent/HeldKey.h"
#include "platform/agent/ListeningTip.h"
#include "platform/agent/OptionsSheet.h"
#include "platform/agent/PuppetFigureMaker.h"
#include "platform/agent/SettingsStore.h"
#include "platform/agent/VoiceSpelling.h"
#include "platform/display/Scale.h"
#include "platform/display/XcbDisplay.h"
#include "platform/files/ApplicationFolder.h"
#include "platform/files/DiskFiles.h"
#include "platform/files/MountedDrives.h"
#include "platform/forms/PressOnce.h"
#include "platform/forms/QtBoxes.h"
#include "platform/forms/Screen.h"
#include "platform/help/QtHelp.h"
#include "platform/media/QtMedia.h"
#include "platform/system/QtDesktop.h"
#include "platform/system/QtEvents.h"
#include "platform/system/QtProcess.h"
#include "platform/system/SystemChance.h"
#include "platform/system/SystemClock.h"
#include "platform/voice/QtAudioOut.h"
#include "platform/voice/QtMicrophone.h"
#include "platform/voice/QtSoundEffects.h"
#include "platform/voice/SpeechService.h"
#include "platform/voice/SphinxRecogniser.h"
#include "shell/Appearance.h"
#include "shell/frmSplash.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <optional>

int main(int argc, char *argv[])
{
    std::optional<platform::DisplayChoice> choice(std::in_place);
    if (!choice->HasDisplay()) {
        std::fputs("Tumblewick needs a graphical display.\n", stderr);
        return 1;
    }
    QApplication application(argc, argv);
    choice.reset();
    QApplication::setApplicationName(QStringLiteral("Tumblewick"));
    // Characters are windows too; the screens themselves know when the last of them has gone.
    QApplication::setQuitOnLastWindowClosed(false);
    tumblewick::ApplyAppearance(application);
    const platform::PressOnce pressOnce;

    platform::QtEvents events;
    platform::SystemClock clock;
    platform::SystemChance chance;
    platform::QtProcess process(
        platform::ApplicationFolder(QCoreApplication::applicationFilePath(),
                                    QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
    platform::DiskFiles files;
    platform::MountedDrives drives(QDir::homePath());
    platform::QtBoxes boxes;
    platform::QtHelp help(files);
    platform::SpeechService speech;
    platform::QtAudioOut audio;
    platform::QtSoundEffects effects;
    platform::SettingsStore store;
    platform::OptionsKeeper options(store);
    platform::PuppetFigureMaker figures(process.ApplicationFolder() + QStringLiteral("/characters"), speech,
                                        audio, events, options, {}, &effects);
    // Voices are tried beside what the characters say.
    platform::QtAudioOut attempts;
    platform::QtMicrophone microphone;
    platform::SphinxRecogniser recogniser;
    platform::OptionsSheet sheet(
        { options, speech, speech, attempts, microphone, [&figures] { return figures.All(); }, &recogniser });
    platform::AgentEngine agent(events, figures, sheet);
    platform::ApplyVoices(options.Now(), {}, speech);
    agent.SetSoundEffects(options.Now().soundEffects);
    const auto optionsObservation = options.Observe([&] {
        platform::ApplyVoices(options.Now(), figures.Names(), speech);
        agent.SetSoundEffects(options.Now().soundEffects);
        agent.DeliverPropertyChange();
    });
    platform::QtMicrophone ear;
    platform::ListeningTip tip;
    platform::VoiceSpelling spelling({ events, options, agent, ear, recogniser, tip });
    platform::HeldKey talkKey(Qt::Key_ScrollLock);
    talkKey.down = [&spelling] { spelling.KeyDown(); };
    talkKey.up = [&spelling] { spelling.KeyUp(); };
    talkKey.lost = [&spelling] { spelling.KeyLost(); };
    platform::XcbDisplay display;
    platform::QtDesktop desktop;
    platform::QtAudioOut clipAudio;
    platform::QtMedia media(files, clipAudio, clock);
    platform::Services services{ events, clock, chance,  process, files, boxes,
                                 help,   agent, display, desktop, media, drives };
    platform::InstallServices(&services);

    platform::ThroughTheDoor([] { tumblewick::frmSplash::Shared().Show(); });
    return application.exec();
}
