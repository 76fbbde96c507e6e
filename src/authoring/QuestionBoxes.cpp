#include "authoring/QuestionBoxes.h"

#include "platform/forms/MultiLineBox.h"
#include "platform/forms/SingleLine.h"

#include <QIcon>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

namespace tumblewick {

void QuestionBoxes::SetUp() const
{
    for (QLineEdit *answer : answers)
        platform::KeepSingleLine(*answer);
    platform::KeepSingleLine(*correct);
}

QuizEntry QuestionBoxes::Entry() const
{
    QuizEntry entry;
    entry.question = question->Text();
    std::transform(answers.begin(), answers.end(), entry.answers.begin(),
                   [](const QLineEdit *answer) { return answer->text(); });
    entry.correct = correct->text();
    return entry;
}

void QuestionBoxes::Show(const QuizEntry &entry) const
{
    question->SetText(entry.question);
    for (std::size_t at = 0; at < answers.size(); ++at) {
        answers[at]->setText(entry.answers[at]);
        answers[at]->setCursorPosition(0); // a long answer is seen from its beginning
    }
    correct->setText(entry.correct);
}

void QuestionBoxes::Empty() const
{
    Show({});
}

bool QuestionBoxes::IsAnyFilled() const
{
    const QuizEntry entry = Entry();
    return !entry.question.isEmpty() || !entry.correct.isEmpty() ||
           std::any_of(entry.answers.begin(), entry.answers.end(),
                       [](const QString &answer) { return !answer.isEmpty(); });
}

void DrawAnswerShapes(const std::array<QLabel *, 4> &images)
{
    int number = 0;
    for (QLabel *image : images) {
        const int side = std::min(image->width(), image->height());
        image->setPixmap(QIcon(QStringLiteral(":/answers/%1.svg").arg(++number))
                             .pixmap(QSize(side, side), image->devicePixelRatioF()));
    }
}

} // namespace tumblewick
