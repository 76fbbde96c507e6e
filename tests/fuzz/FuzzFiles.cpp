// Whole files as the screens read them: lists of both kinds, settings, the introduction that was drawn last.

#include "Fuzz.h"

#include "game/QuestionList.h"
#include "lists/QuizList.h"
#include "lists/SpellingList.h"
#include "shell/LastIntroduction.h"
#include "shell/SettingsFile.h"
#include "support/Desk.h"

#include <QApplication>

#include <initializer_list>

using namespace tumblewick;

namespace {

// The whole game on fakes, made once; its folder is a real one.
support::Desk &TheDesk()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = { name, nullptr };
    static QApplication application(count, arguments);
    static support::Desk desk;
    return desk;
}

// The number that `work` raises, 0 for none.
qint32 Raised(const std::function<void()> &work)
{
    try {
        work();
    } catch (const platform::Error &error) {
        return error.Number();
    }
    return 0;
}

bool IsOneOf(qint32 number, std::initializer_list<qint32> numbers)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

} // namespace

void Try(const QByteArray &bytes)
{
    support::Desk &desk = TheDesk();
    for (const char *path : { "Lists/Any", "Set", "Lintro" })
        desk.WriteFile(QString::fromLatin1(path), bytes);
    const QString list = desk.folder.filePath(QStringLiteral("Lists/Any"));

    QuestionList questions;
    PROMISE(IsOneOf(Raised([&] { questions.Read(desk.files, list); }), { 0, 6 }));

    QStringList words;
    const auto spelling = desk.files.OpenForReading(list);
    ReadSpellingList(*spelling, [&](const SpellingLine &line) { words += line.word; });
    PROMISE(questions.LineCount() >= 32767 || words.size() == questions.LineCount());

    int asked = 0;
    int set = 0;
    const auto quiz = desk.files.OpenForReading(list);
    const qint32 number = Raised([&] {
        ReadQuiz(*quiz, { [&](const QString &) { ++asked; }, [&](int, const QString &) { ++set; } });
    });
    PROMISE(IsOneOf(number, { 0, 5 }));
    PROMISE(number != 0 || set == asked * QuizEntry::kSubItems);

    PROMISE(IsOneOf(Raised([] { ReadSettings(); }), { 0, 62 }));
    PROMISE(IsOneOf(Raised([] { CheckLastIntro(1); }), { 0, 6, 13, 62 }));
}
