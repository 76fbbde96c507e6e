#pragma once

#include <QString>

namespace tumblewick {

class Players;

// What the characters say in a game where a name, a word or a score goes into it. Texts that hold a word to
// be guessed carry the map tag, which says one thing and shows another. Nothing that a player or a list
// brings is quoted or changed.

QString OpeningLine(const QString &listName);

QString FirstQuestionLine(const QString &name, const QString &pronunciation);
QString QuestionAgainLine(const QString &pronunciation);
QString QuizQuestionLine(const QString &name, const QString &question);

QString PraiseLine(const QString &phrase, const QString &name);
QString SorryLine(const QString &name);
QString TryAgainLine(const QString &name);
QString PassedLine(const QString &name);
QString CorrectAnswerLine(const QString &answer);

QString CorrectSpellingLine(const QString &word);
// The capitals one by one, with a pause behind each.
QString SpelledOut(const QString &word);
QString SpelledOutLine(const QString &word);

// `letters` is how many are given away.
QString HintLine(int letters, const QString &word);

// In the middle of a game and at its end.
QString ScoreReadOutLine(const Players &players, int player);
QString FinalScoreLine(const Players &players, int player);

} // namespace tumblewick
