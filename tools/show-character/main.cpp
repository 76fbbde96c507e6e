// Puts characters on the screen as the game does, lets them act and speak, and measures what that costs.

#include "platform/Error.h"
#include "platform/agent/AgentEngine.h"
#include "platform/agent/CharacterFile.h"
#include "platform/agent/OptionsSheet.h"
#include "platform/agent/PuppetFigureMaker.h"
#include "platform/agent/SettingsStore.h"
#include "platform/agent/Ticker.h"
#include "platform/display/Scale.h"
#include "platform/system/QtEvents.h"
#include "platform/voice/QtAudioOut.h"
#include "platform/voice/QtMicrophone.h"
#include "platform/voice/QtSoundEffects.h"
#include "platform/voice/RecordedVoices.h"
#include "platform/voice/SpeechService.h"
#include "shell/Appearance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <sys/resource.h>
#include <vector>

using namespace platform;

namespace {

constexpr int kRoom = 40;      // between the figures
constexpr int kLargest = 1024; // pixels of a side

int Refuse(const QString &message)
{
    std::fprintf(stderr, "show-character: %s\n", qPrintable(message));
    return 1;
}

double SecondsOfWork()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// The largest that the process has been, in MiB.
double LargestMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

double Percentile(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0
                          : values[std::min(values.size() - 1, std::size_t(part * double(values.size())))];
}

// Of this thread, in milliseconds: on a busy machine it does not count what others do.
double Work()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

// How evenly the figures move, in milliseconds.
struct Pace {
    std::vector<double> gaps;  // from one picture to the next while a figure moves
    std::vector<double> drawn; // how much work a picture was
};

// The usual clock of a figure, with a note of when it struck.
class NotingTicker final : public Ticker {
public:
    explicit NotingTicker(Pace &pace) : m_pace(pace)
    {
        m_ticker.tick = [this] {
            const double now = m_ticker.Now();
            if (m_rate >= kMoving && m_last > 0)
                m_pace.gaps.push_back((now - m_last) * 1000);
            m_last = m_rate >= kMoving ? now : 0;
            const double before = Work();
            tick();
            m_pace.drawn.push_back(Work() - before);
        };
    }
    void SetRate(int callsPerSecond) override
    {
        m_rate = callsPerSecond;
        m_ticker.SetRate(callsPerSecond);
    }
    double Now() const override { return m_ticker.Now(); }

private:
    static constexpr int kMoving = 60; // a figure that only breathes is drawn more seldom
    Pace &m_pace;
    QtTicker m_ticker;
    int m_rate = 0;
    double m_last = 0;
};

bool IsVoice(const QString &id)
{
    return std::any_of(RecordedVoices().begin(), RecordedVoices().end(),
                       [&id](const RecordedVoice &voice) { return voice.id == id; });
}

struct Actor {
    QString id;
    CharacterReference character;
    QStringList motions;
    qsizetype next = 0;
    RequestReference last;
};

} // namespace

int main(int argumentCount, char **arguments)
{
    const DisplayChoice choice;
    if (!choice.HasDisplay())
        return Refuse(QStringLiteral("there is no display"));
    QApplication application(argumentCount, arguments);
    tumblewick::ApplyAppearance(application);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows characters that act and speak; the first one does the talking."));
    parser.addHelpOption();
    const QCommandLineOption motionOption(
        QStringLiteral("motion"),
        QStringLiteral(
            "A motion to play, again and again; may be given several times. All of them if left out."),
        QStringLiteral("name"));
    const QCommandLineOption sayOption(
        QStringLiteral("say"), QStringLiteral("A line to say, again and again."), QStringLiteral("text"));
    const QCommandLineOption stillOption(QStringLiteral("still"), QStringLiteral("Play nothing."));
    const QCommandLineOption sizeOption(QStringLiteral("size"), QStringLiteral("The side of a figure."),
                                        QStringLiteral("pixels"), QStringLiteral("256"));
    const QCommandLineOption secondsOption(
        QStringLiteral("seconds"),
        QStringLiteral("End then, and tell how much of one processor core was used."),
        QStringLiteral("seconds"));
    const QCommandLineOption topOption(QStringLiteral("top"), QStringLiteral("Where the figures stand."),
                                       QStringLiteral("pixels"));
    const QCommandLineOption sheetOption(QStringLiteral("sheet"),
                                         QStringLiteral("Open the property sheet on a page instead."),
                                         QStringLiteral("Output|Speech|Copyright"));
    const QCommandLineOption soundsOption(QStringLiteral("sounds"),
                                          QStringLiteral("The waves that the motions cue."),
                                          QStringLiteral("folder"), QStringLiteral(SOUNDS_FOLDER));
    parser.addOptions({ motionOption, sayOption, stillOption, sizeOption, secondsOption, topOption,
                        sheetOption, soundsOption });
    parser.addPositionalArgument(QStringLiteral("folders"),
                                 QStringLiteral("Characters, such as characters/merlin."),
                                 QStringLiteral("folder..."));
    parser.process(application);
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(1);
    const int size = parser.value(sizeOption).toInt();
    if (size < 1 || size > kLargest)
        return Refuse(QStringLiteral("--size is to be 1 to %1").arg(kLargest));

    QTemporaryDir folder;
    QtEvents events;
    SpeechService voices;
    QtAudioOut audio;
    QtSoundEffects effects;
    SettingsStore store;
    OptionsKeeper options(store);
    Pace pace;
    PuppetFigureMaker maker(
        folder.path(), voices, audio, events, options,
        [&pace] { return std::make_unique<NotingTicker>(pace); }, &effects);
    QtAudioOut attempts;
    QtMicrophone microphone;
    OptionsSheet sheet({ options, voices, voices, attempts, microphone, [&maker] { return maker.All(); } });
    AgentEngine engine(events, maker, sheet);
    ApplyVoices(options.Now(), {}, voices);
    engine.SetSoundEffects(options.Now().soundEffects);
    const auto optionsObservation = options.Observe([&] {
        ApplyVoices(options.Now(), maker.Names(), voices);
        engine.SetSoundEffects(options.Now().soundEffects);
    });
    AgentControlReference control = engine.CreateControl();

    std::vector<Actor> actors;
    QStringList unknown = parser.values(motionOption);
    QString reading;
    try {
        for (const QString &place : parser.positionalArguments()) {
            reading = place;
            const CharacterSource source = ReadCharacterFolder(place, parser.value(soundsOption));
            const CharacterData data =
                ReadCharacter(source.drawing, source.figure, source.motions, &source.sounds);
            if (!IsVoice(data.voice.voice))
                return Refuse(QStringLiteral("%1: there is no voice %2").arg(place, data.voice.voice));
            unknown.removeIf([&data](const QString &name) { return data.FindMotion(name) != nullptr; });
            QFile file(QDir(folder.path()).filePath(data.name + QStringLiteral(".acs")));
            if (!file.open(QIODevice::WriteOnly) || file.write(PackCharacter(source)) < 0)
                return Refuse(QStringLiteral("no room for a temporary file"));
            file.close();
            control->Load(data.name, data.name + QStringLiteral(".acs"));
            Actor actor{ data.name, control->Character(data.name), parser.values(motionOption), 0, {} };
            if (actor.motions.isEmpty()) {
                for (const auto &[key, motion] : data.motions) {
                    if (!motion.loop && motion.name != QLatin1String("Show") &&
                        motion.name != QLatin1String("Hide"))
                        actor.motions << motion.name;
                }
            }
            actors.push_back(actor);
        }
    } catch (const CharacterFault &fault) {
        return Refuse(reading + QStringLiteral(": ") + fault.Text());
    } catch (const Error &error) {
        return Refuse(error.Description());
    }
    if (!unknown.isEmpty())
        return Refuse(QStringLiteral("nobody has the motion %1").arg(unknown.front()));

    const QRect screen = application.primaryScreen()->geometry();
    const int top =
        parser.isSet(topOption) ? parser.value(topOption).toInt() : screen.height() - size - kRoom;
    int left = kRoom;
    for (Actor &actor : actors) {
        actor.character->SetWidth(Integer16(size));
        actor.character->SetHeight(Integer16(size));
        actor.character->MoveTo(Integer16(left), Integer16(top), 0);
        if (!parser.isSet(sheetOption))
            actor.character->Show();
        left += size + kRoom;
    }

    if (parser.isSet(sheetOption)) {
        sheet.SetPage(parser.value(sheetOption));
        sheet.SetVisible(true);
    }

    // Whoever has nothing to do gets the next thing to do.
    QTimer director;
    QObject::connect(&director, &QTimer::timeout, &director, [&] {
        for (Actor &actor : actors) {
            const bool busy = !actor.last.IsNothing() && (actor.last->Status() == kRequestRunning ||
                                                          actor.last->Status() == kRequestQueued);
            if (busy || parser.isSet(stillOption) || parser.isSet(sheetOption))
                continue;
            const QString motion = actor.motions[actor.next++ % actor.motions.size()];
            try {
                actor.last = actor.character->Play(motion);
            } catch (const Error &) {
                continue; // the others may have it
            }
            if (parser.isSet(sayOption) && &actor == &actors.front())
                actor.last = actor.character->Speak(parser.value(sayOption));
        }
    });
    director.start(100);

    double workBefore = 0;
    QElapsedTimer elapsed;
    if (parser.isSet(secondsOption)) {
        // The entrance is not counted.
        QTimer::singleShot(3000, &application, [&] {
            pace = {};
            workBefore = SecondsOfWork();
            elapsed.start();
            QTimer::singleShot(parser.value(secondsOption).toInt() * 1000, &application, &QApplication::quit);
        });
    }
    application.exec();
    if (elapsed.isValid()) {
        const double share = (SecondsOfWork() - workBefore) / (double(elapsed.nsecsElapsed()) / 1e9);
        std::printf("%d figures of %d pixels: %.1f %% of one core, at most %.0f MiB\n", int(actors.size()),
                    size, share * 100, LargestMemory());
        std::printf(
            "while they move: a picture every %.1f ms in the middle, 99 %% within %.1f ms, the slowest "
            "after %.0f ms\n"
            "work for a picture: in the middle %.2f ms, 99 %% within %.2f ms, at most %.1f ms (%zu "
            "pictures)\n",
            Percentile(pace.gaps, 0.5), Percentile(pace.gaps, 0.99), Percentile(pace.gaps, 1),
            Percentile(pace.drawn, 0.5), Percentile(pace.drawn, 0.99), Percentile(pace.drawn, 1),
            pace.drawn.size());
    }
    control->Disconnect();
    return 0;
}
