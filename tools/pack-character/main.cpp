// Packs the folder of a character into the file that the program loads.

#include "platform/agent/CharacterFile.h"
#include "platform/voice/RecordedVoices.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>

using namespace platform;

namespace {

int Refuse(const QString &message)
{
    std::fprintf(stderr, "pack-character: %s\n", qPrintable(message));
    return 1;
}

} // namespace

int main(int argumentCount, char **arguments)
{
    QCoreApplication application(argumentCount, arguments);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Packs the folder of a character into one file."));
    parser.addHelpOption();
    const QCommandLineOption soundsOption(QStringLiteral("sounds"),
                                          QStringLiteral("The waves that the motions cue."),
                                          QStringLiteral("folder"));
    parser.addOption(soundsOption);
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QStringLiteral("The character, such as characters/merlin."));
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("The file to write, such as Merlin.acs."));
    parser.process(application);
    if (parser.positionalArguments().size() != 2)
        parser.showHelp(1);

    const QString folder = parser.positionalArguments().at(0);
    const QString path = parser.positionalArguments().at(1);
    try {
        const CharacterSource source = ReadCharacterFolder(folder, parser.value(soundsOption));
        const CharacterData data =
            ReadCharacter(source.drawing, source.figure, source.motions, &source.sounds);
        // The program would take it and be silent.
        if (std::none_of(RecordedVoices().begin(), RecordedVoices().end(),
                         [&data](const RecordedVoice &voice) { return voice.id == data.voice.voice; }))
            return Refuse(QStringLiteral("%1: there is no voice %2").arg(folder, data.voice.voice));
        QSaveFile file(path);
        const QByteArray bytes = PackCharacter(source);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            return Refuse(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    } catch (const CharacterFault &fault) {
        const QString hint =
            fault.Text().contains(QLatin1String("unknown sound")) && !parser.isSet(soundsOption)
                ? QStringLiteral("; the folder of the sounds is given by --sounds")
                : QString();
        return Refuse(folder + QStringLiteral(": ") + fault.Text() + hint);
    }
    return 0;
}
