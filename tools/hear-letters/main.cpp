// Measures how well single letters are understood: `hear-letters FOLDER...`. A folder holds a voice, with the
// files a.raw to z.raw and go.raw of 16-bit samples, 16,000 a second; what is missing is left out. For each
// folder it prints how often the right answer was the first one, among the first two and among the three,
// which letters were taken for others, and the time that a second of sound takes.
#include "platform/voice/LetterRecogniser.h"
#include "platform/voice/SphinxRecogniser.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

using namespace platform;

namespace {

void Measure(const QString &folder)
{
    int count = 0;
    int right[3] = { 0, 0, 0 };
    QStringList wrong;
    qint64 milliseconds = 0;
    double seconds = 0;
    for (const QString &name : SpokenNames()) {
        QFile file(QDir(folder).filePath(name + QStringLiteral(".raw")));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray samples = file.readAll();
        QElapsedTimer timer;
        timer.start();
        const QStringList heard = SphinxRecogniser::Understand(SphinxRecogniser::UsualModel(), samples);
        milliseconds += timer.elapsed();
        seconds += double(samples.size()) / 2 / kSpeechRate;
        ++count;
        const auto place = heard.indexOf(name);
        for (int rank = 0; rank < 3; ++rank)
            right[rank] += place >= 0 && place <= rank;
        if (place != 0)
            wrong << name + QLatin1Char('>') + heard.value(0, QStringLiteral("nothing"));
    }
    if (count == 0) {
        std::printf("%-24s no files\n", qPrintable(QDir(folder).dirName()));
        return;
    }
    const auto share = [count](int hits) { return 100.0 * hits / count; };
    std::printf("%-24s %3d %6.1f %6.1f %6.1f  %5.3f  %s\n", qPrintable(QDir(folder).dirName()), count,
                share(right[0]), share(right[1]), share(right[2]), double(milliseconds) / 1000 / seconds,
                qPrintable(wrong.join(QLatin1Char(' '))));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const SphinxRecogniser recogniser;
    if (!recogniser.Obstacle().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(recogniser.Obstacle()));
        return 1;
    }
    std::printf("%-24s %3s %6s %6s %6s  %5s  %s\n", "voice", "n", "first", "two", "three", "time",
                "taken for");
    const QStringList folders = QCoreApplication::arguments().mid(1);
    for (const QString &folder : folders)
        Measure(folder);
    return 0;
}
