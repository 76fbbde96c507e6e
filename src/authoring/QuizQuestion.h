#pragma once

#include "lists/QuizList.h"
#include "platform/forms/ListItems.h"

namespace tumblewick {

// What is wrong with a question as typed: a sentence for each fault with a blank behind it, in the order of
// the boxes; empty when nothing is. Nothing is trimmed, and all four answers may be the same.
QString FaultsOfQuestion(const QuizEntry &entry);

// The question as an entry of a list: the question itself is its text, the rest are its sub-items.
void ShowIn(const platform::ListItemReference &item, const QuizEntry &entry);
QuizEntry QuestionIn(const platform::ListItemReference &item);

} // namespace tumblewick
