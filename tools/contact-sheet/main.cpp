// Shows what a character can do: every motion as a strip of frames, and the mouths, as pictures.

#include "Sheet.h"
#include "platform/agent/CharacterFile.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

using namespace platform;

namespace {

struct Refusal {
    QString text;
};

int WholeNumber(const QCommandLineParser &parser, const QCommandLineOption &option, int otherwise, int most)
{
    if (!parser.isSet(option))
        return otherwise;
    const int number = parser.value(option).toInt();
    if (number < 1 || number > most)
        throw Refusal{ QStringLiteral("--%1 is to be 1 to %2").arg(option.names().constFirst()).arg(most) };
    return number;
}

QImage Below(const QImage &upper, const QImage &lower)
{
    QImage both(qMax(upper.width(), lower.width()), upper.height() + lower.height(), QImage::Format_RGB32);
    both.fill(upper.pixelColor(0, 0));
    QPainter painter(&both);
    painter.drawImage(0, 0, upper);
    painter.drawImage(0, upper.height(), lower);
    return both;
}

} // namespace

int main(int argumentCount, char **arguments)
{
    // A picture needs no display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argumentCount, arguments);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws the motions and the mouths of a character."));
    parser.addHelpOption();
    const auto option = [](const char *name, const char *text, const char *value = nullptr) {
        return QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value));
    };
    const QCommandLineOption motionOption =
        option("motion", "Only this motion, larger; may be given several times.", "name");
    const QCommandLineOption thenOption =
        option("then", "Not the motions but the way from the end of each into this one, ten frames a second.",
               "name");
    const QCommandLineOption accentsOption =
        option("accents", "Not the motions but the accents of speech laid over the end of each.");
    const QCommandLineOption sizeOption = option("size", "Pixels of one frame.", "pixels");
    const QCommandLineOption framesOption = option("frames", "Frames of a strip; 8 if left out.", "number");
    const QCommandLineOption columnsOption = option("columns", "Strips side by side.", "number");
    const QCommandLineOption stripsOption =
        option("strips", "At most so many strips on one picture; the names get -1, -2 and so on.", "number");
    const QCommandLineOption blackOption = option("black", "Silhouettes.");
    const QCommandLineOption smallOption = option("small", "256 colours, for a smaller file.");
    parser.addOptions({ motionOption, thenOption, accentsOption, sizeOption, framesOption, columnsOption,
                        stripsOption, blackOption, smallOption });
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QStringLiteral("The character, such as characters/merlin."));
    parser.addPositionalArgument(QStringLiteral("picture"),
                                 QStringLiteral("The PNG to write; <folder name>.png if left out."),
                                 QStringLiteral("[picture]"));
    parser.process(application);
    const QStringList places = parser.positionalArguments();
    if (places.isEmpty() || places.size() > 2)
        parser.showHelp(1);

    try {
        const CharacterSource source = ReadCharacterFolder(places.front());
        const auto character = std::make_shared<const CharacterData>(
            ReadCharacter(source.drawing, source.figure, source.motions));
        const auto motionNamed = [&](const QString &name) -> const Motion & {
            if (const Motion *motion = character->FindMotion(name))
                return *motion;
            throw Refusal{ QStringLiteral("%1 has no motion %2").arg(character->name, name) };
        };
        const bool chosen = parser.isSet(motionOption);
        SheetStyle style;
        style.cell = WholeNumber(parser, sizeOption, chosen ? 256 : 160, 1024);
        style.frames = WholeNumber(parser, framesOption, style.frames, 60);
        style.columns = WholeNumber(parser, columnsOption, 1, 8);
        style.black = parser.isSet(blackOption);
        const int stripsOfAPicture = WholeNumber(parser, stripsOption, 1000, 1000);
        Sheet sheet(character, style);

        std::vector<const Motion *> motions;
        for (const QString &name : parser.values(motionOption))
            motions.push_back(&motionNamed(name));
        if (!chosen) {
            for (const auto &[name, motion] : character->motions)
                motions.push_back(&motion);
        }
        std::vector<Strip> strips;
        if (parser.isSet(accentsOption)) {
            if (!chosen)
                motions = { nullptr };
            for (const Motion *motion : motions) {
                const std::vector<Strip> more = sheet.Accents(motion);
                strips.insert(strips.end(), more.begin(), more.end());
            }
        } else if (parser.isSet(thenOption)) {
            for (const Motion *motion : motions)
                strips.push_back(sheet.Into(*motion, motionNamed(parser.value(thenOption))));
        } else {
            for (const Motion *motion : motions)
                strips.push_back(sheet.Single(*motion));
        }

        const QString path =
            places.size() == 2 ? places.at(1) : character->name.toLower() + QStringLiteral(".png");
        const int pictures = (int(strips.size()) + stripsOfAPicture - 1) / stripsOfAPicture;
        for (int picture = 0; picture < pictures; ++picture) {
            const auto begin = strips.begin() + picture * stripsOfAPicture;
            const auto end = strips.begin() + qMin(int(strips.size()), (picture + 1) * stripsOfAPicture);
            QImage image = sheet.Strips({ begin, end });
            const bool all = !chosen && !parser.isSet(thenOption) && !parser.isSet(accentsOption);
            if (all && picture == 0)
                image = Below(sheet.Mouths(), image);
            if (parser.isSet(smallOption))
                image = InFewColours(image);
            QString name = path;
            if (pictures > 1) {
                const QFileInfo file(path);
                name =
                    QStringLiteral("%1/%2-%3.png").arg(file.path(), file.completeBaseName()).arg(picture + 1);
            }
            if (!image.save(name, "PNG", 0))
                throw Refusal{ QStringLiteral("%1 cannot be written").arg(name) };
        }
    } catch (const CharacterFault &fault) {
        std::fprintf(stderr, "contact-sheet: %s: %s\n", qPrintable(places.front()), qPrintable(fault.Text()));
        return 1;
    } catch (const Refusal &refusal) {
        std::fprintf(stderr, "contact-sheet: %s\n", qPrintable(refusal.text));
        return 1;
    }
    return 0;
}
