#pragma once

#include "lists/QuizList.h"

#include <array>

class QLabel;
class QLineEdit;

namespace platform {
class MultiLineBox;
}

namespace tumblewick {

// The six boxes that a question is typed into. They belong to their screen.
struct QuestionBoxes {
    platform::MultiLineBox *question = nullptr;
    std::array<QLineEdit *, 4> answers{};
    QLineEdit *correct = nullptr;

    // Keeps answers and number to a line of a file.
    void SetUp() const;
    QuizEntry Entry() const;
    void Show(const QuizEntry &entry) const;
    void Empty() const;
    bool IsAnyFilled() const;
};

// Draws the shapes that go with the answers 1 to 4 in the game, as large as the labels are now.
void DrawAnswerShapes(const std::array<QLabel *, 4> &images);

} // namespace tumblewick
