#include "stage/SpeechLines.h"

#include "platform/Text.h"
#include "shell/Players.h"
#include "stage/Letters.h"

namespace tumblewick {

namespace {

const QString kStars = QStringLiteral("*****");

// Says one text and shows another. The tag is left open before its closing backslash, which the texts behind
// it begin with.
QString Mapped(const QString &spoken, const QString &shown)
{
    const QLatin1Char quote('"');
    return QStringLiteral("\\map=") + quote + spoken + quote + QLatin1Char('=') + quote + shown + quote;
}

QString ScoreLine(const Players &players, int player, const QString &words)
{
    return players.Text(player, Players::kName) + words + players.Text(player, Players::kCorrect) +
           QStringLiteral(" out of ") + players.Text(player, Players::kAsked) + QStringLiteral(". ");
}

} // namespace

QString OpeningLine(const QString &listName)
{
    return QStringLiteral("Here we go. Get ready to play ") + listName + QLatin1Char('.');
}

QString FirstQuestionLine(const QString &name, const QString &pronunciation)
{
    return name + QStringLiteral(", ") + QStringLiteral("how do you spell: ") +
           Mapped(pronunciation, kStars) + QStringLiteral("\\?");
}

QString QuestionAgainLine(const QString &pronunciation)
{
    return QStringLiteral("How do you spell: ") + Mapped(pronunciation, kStars) + QStringLiteral("\\?");
}

QString QuizQuestionLine(const QString &name, const QString &question)
{
    return name + QStringLiteral(", ") + question;
}

QString PraiseLine(const QString &phrase, const QString &name)
{
    return phrase + QLatin1Char(' ') + name + QLatin1Char('.');
}

QString SorryLine(const QString &name)
{
    return QStringLiteral("Sorry ") + name + QLatin1Char('.');
}

QString TryAgainLine(const QString &name)
{
    return QStringLiteral("Sorry ") + name + QStringLiteral(". Try again");
}

QString PassedLine(const QString &name)
{
    return QStringLiteral("You passed on that one ") + name;
}

QString CorrectAnswerLine(const QString &answer)
{
    return QStringLiteral("The correct answer was ") + answer + QLatin1Char('.');
}

QString CorrectSpellingLine(const QString &word)
{
    return QStringLiteral("The correct spelling for ") + word + QStringLiteral(" is");
}

QString SpelledOut(const QString &word)
{
    QString letters;
    for (const QString &letter : Letters(word))
        letters += letter + QStringLiteral(", ,");
    return letters.toUpper();
}

QString SpelledOutLine(const QString &word)
{
    return Mapped(SpelledOut(word), word) + QLatin1Char('\\');
}

QString HintLine(int letters, const QString &word)
{
    const QStringList all = Letters(word);
    if (letters == 1) {
        return QStringLiteral("The first letter of ") + Mapped(word, kStars) + QStringLiteral("\\ is: ") +
               all.value(0).toUpper() + QLatin1Char('.');
    }
    QString line = QStringLiteral("The first ") + QString::number(letters) + QStringLiteral(" letters of ") +
                   Mapped(word, kStars) + QStringLiteral("\\ are: ");
    for (int index = 0; index < letters; ++index)
        line += all.value(index).toUpper() + QLatin1Char(',');
    // Takes off the last comma or, for an empty word, the blank.
    return platform::Left(line, static_cast<int>(line.size()) - 1) + QLatin1Char('.');
}

QString ScoreReadOutLine(const Players &players, int player)
{
    return ScoreLine(players, player, QStringLiteral(", your score is "));
}

QString FinalScoreLine(const Players &players, int player)
{
    return ScoreLine(players, player, QStringLiteral(", you scored "));
}

} // namespace tumblewick
