// Measures the rules and a whole game on fakes and prints a table row for each.

#include "game/QuestionList.h"
#include "platform/system/SystemChance.h"
#include "shell/SharedState.h"
#include "support/Desk.h"

#include <QApplication>
#include <QLineEdit>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace tumblewick;
using Clock = std::chrono::steady_clock;

namespace {

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Row(const char *what, double milliseconds)
{
    std::printf("%-62s %12.3f ms\n", what, milliseconds);
}

void MeasureDraw(support::Desk &desk)
{
    constexpr int kLines = 32767;
    QByteArray content;
    for (int line = 0; line < kLines; ++line)
        content += "word" + QByteArray::number(line) + "\r\n";
    desk.WriteFile(QStringLiteral("Lists/Long"), content);

    QuestionList questions;
    auto start = Clock::now();
    questions.Read(desk.files, desk.folder.path() + QStringLiteral("\\Lists\\Long"));
    Row("read a list of 32,767 lines", MillisecondsSince(start));

    platform::SystemChance chance;
    double slowest = 0;
    start = Clock::now();
    for (int draw = 0; draw < kLines; ++draw) {
        const auto one = Clock::now();
        questions.MarkUsed(questions.Draw(chance));
        slowest = std::max(slowest, MillisecondsSince(one));
    }
    Row("draw all of its 32,767 questions", MillisecondsSince(start));
    Row("the slowest single draw among them", slowest);
}

void MeasureGame(support::Desk &desk)
{
    constexpr int kWords = 2000;
    QStringList words;
    for (int word = 0; word < kWords; ++word)
        words << QStringLiteral("word%1").arg(word);
    const auto start = Clock::now();
    desk.BeginSpelling({ QStringLiteral("Ann") }, words);
    // The word is in the last line that was said, behind the map tag.
    while (desk.States({ QStringLiteral("cmdAgain") }) != QStringLiteral("cmdAgain enabled")) {
        const QString asked = desk.transcript.Said().filter(QStringLiteral("how do you spell")).last();
        desk.transcript.Clear();
        desk.Type(QStringLiteral("txtAnswer"), asked.section(QLatin1Char('"'), 1, 1));
        desk.Press(QStringLiteral("cmdGo"));
    }
    Row("a whole spelling game over 2,000 words, without speech", MillisecondsSince(start));
    if (State().Players.Text(0, Players::kCorrect) != QString::number(kWords))
        std::printf("the game was not played to its end: %s right\n",
                    qPrintable(State().Players.Text(0, Players::kCorrect)));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    support::Desk desk;
    MeasureDraw(desk);
    // Draws of a real generator; the fake one repeats itself and would draw for ever.
    platform::SystemChance chance;
    platform::Services services{ desk.time, desk.time,  chance,       desk.process, desk.files, desk.boxes,
                                 desk.help, desk.agent, desk.display, desk.desktop, desk.media, desk.drives };
    platform::InstallServices(&services);
    MeasureGame(desk);
    return State().Players.Text(0, Players::kCorrect) == QLatin1String("2000") ? 0 : 1;
}
