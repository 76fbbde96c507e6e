#include "lists/QuizLine.h"
#include "lists/SpellingLine.h"
#include "platform/files/DiskFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <algorithm>
#include <array>

using namespace tumblewick;

namespace {

const QDir kSpellingLists(QStringLiteral(DATA_FOLDER "/Lists"));
const QDir kQuizzes(QStringLiteral(DATA_FOLDER "/QList"));

// The longest answer that one line of the answer list holds.
constexpr int kLongestAnswer = 30;

QStringList Lines(const QString &path)
{
    platform::DiskFiles files;
    const auto reader = files.OpenForReading(path);
    QStringList lines;
    while (!reader->AtEnd())
        lines << reader->ReadLine();
    return lines;
}

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A row for each file of the folder.
void AddRows(const QDir &folder)
{
    QTest::addColumn<QString>("path");
    for (const QFileInfo &file : folder.entryInfoList(QDir::Files | QDir::Hidden))
        QTest::newRow(qPrintable(file.fileName())) << file.filePath();
}

bool IsOneWord(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

} // namespace

// The lists as they are shipped: whatever is wrong in one would be said aloud to a child.
class TestShippedLists : public QObject {
    Q_OBJECT

private slots:
    void thereIsAChoice()
    {
        QVERIFY(kSpellingLists.entryList(QDir::Files).size() >= 10);
        QVERIFY(kQuizzes.entryList(QDir::Files).size() >= 7);
    }

    // What a child hears and sees as the name, and what travels to any system.
    void namesAreWords_data() { addAllLists(); }
    void namesAreWords()
    {
        QFETCH(QString, path);
        const QString name = QFileInfo(path).fileName();
        static const QRegularExpression words(QStringLiteral("^[A-Z][A-Za-z']*( [A-Z]?[a-z']*)*$"));
        QVERIFY2(words.match(name).hasMatch(), qPrintable(name));
    }

    void linesAreWrittenAsTheGameWritesThem_data() { addAllLists(); }
    void linesAreWrittenAsTheGameWritesThem()
    {
        QFETCH(QString, path);
        const QByteArray content = Content(path);
        QVERIFY(content.endsWith("\r\n"));
        QCOMPARE(content.count('\r'), content.count("\r\n"));
        QCOMPARE(content.count('\n'), content.count("\r\n"));
        // Plain letters look the same on every system.
        QVERIFY(std::all_of(content.begin(), content.end(), [](char c) { return c > 0 && c < 127; }));
        QVERIFY(!content.contains('\t') && !content.contains("  ") && !content.contains('"'));
        QVERIFY(!content.contains('\\'));
    }

    void wordsCanBeSpelled_data() { AddRows(kSpellingLists); }
    void wordsCanBeSpelled()
    {
        QFETCH(QString, path);
        const QStringList lines = Lines(path);
        QVERIFY2(lines.size() >= 12 && lines.size() <= 25, qPrintable(QString::number(lines.size())));
        QSet<QString> seen;
        for (const QString &line : lines) {
            QVERIFY2(line.count('_') <= 1, qPrintable(line));
            const SpellingLine split = SpellingLine::ForPlay(line);
            QVERIFY2(IsOneWord(split.word), qPrintable(line));
            QVERIFY2(!split.pronunciation.isEmpty() && split.pronunciation == split.pronunciation.trimmed(),
                     qPrintable(line));
            QVERIFY2(!line.contains('_') || split.pronunciation != split.word, qPrintable(line));
            QVERIFY2(!seen.contains(split.word.toLower()), qPrintable(line));
            seen.insert(split.word.toLower());
        }
    }

    void questionsCanBeAnswered_data() { AddRows(kQuizzes); }
    void questionsCanBeAnswered()
    {
        QFETCH(QString, path);
        const QStringList lines = Lines(path);
        QVERIFY2(lines.size() >= 10 && lines.size() <= 20, qPrintable(QString::number(lines.size())));
        QSet<QString> seen;
        for (const QString &line : lines) {
            QVERIFY2(line.count('_') == 6 && line.endsWith('_'), qPrintable(line));
            const QuizLine quiz = QuizLine::ForPlay(line);
            QVERIFY2(quiz.question.endsWith('?') && quiz.question[0].isUpper(), qPrintable(line));
            QVERIFY2(!seen.contains(quiz.question), qPrintable(line));
            seen.insert(quiz.question);
            QVERIFY2(quiz.correct >= 1 && quiz.correct <= 4, qPrintable(line));
            QSet<QString> answers;
            for (const QString &answer : quiz.answers) {
                QVERIFY2(!answer.isEmpty() && answer == answer.trimmed(), qPrintable(line));
                QVERIFY2(answer.size() <= kLongestAnswer, qPrintable(answer));
                answers.insert(answer.toLower());
            }
            QVERIFY2(answers.size() == 4, qPrintable(line));
        }
    }

    // Nobody is to win by clicking on the same place.
    void rightAnswersAreSpread_data() { AddRows(kQuizzes); }
    void rightAnswersAreSpread()
    {
        QFETCH(QString, path);
        std::array<int, 5> count = {};
        const QStringList lines = Lines(path);
        for (const QString &line : lines)
            ++count[static_cast<std::size_t>(int(QuizLine::ForPlay(line).correct))];
        for (std::size_t number = 1; number <= 4; ++number) {
            QVERIFY2(count[number] * 8 >= lines.size() && count[number] * 5 <= lines.size() * 2,
                     qPrintable(QString::number(number)));
        }
    }

private:
    static void addAllLists()
    {
        AddRows(kSpellingLists);
        for (const QFileInfo &file : kQuizzes.entryInfoList(QDir::Files | QDir::Hidden))
            QTest::newRow(qPrintable("quiz " + file.fileName())) << file.filePath();
    }
};

QTEST_APPLESS_MAIN(TestShippedLists)
#include "TestShippedLists.moc"
