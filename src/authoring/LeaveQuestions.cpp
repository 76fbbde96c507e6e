#include "authoring/LeaveQuestions.h"

#include "platform/Services.h"
#include "platform/forms/Boxes.h"

namespace tumblewick {

using platform::BoxAnswer;

namespace {

BoxAnswer Ask(const QString &question)
{
    return platform::The().boxes.MessageBox(question, platform::BoxButtons::YesNoCancel, platform::kNoTitle);
}

} // namespace

bool MayLeaveNewList(bool listDirty, const std::function<bool()> &saveList)
{
    if (!listDirty)
        return true;
    const BoxAnswer answer = Ask(QStringLiteral("Save list?"));
    return answer == BoxAnswer::No || (answer == BoxAnswer::Yes && saveList());
}

bool MayLeaveEditing(const TypedWork &work)
{
    if (!work.editIsPending() && !work.addIsPending())
        return true;
    const BoxAnswer answer = Ask(QStringLiteral("Save Changes?"));
    if (answer != BoxAnswer::Yes)
        return answer == BoxAnswer::No;
    const bool isSaved = !work.editIsPending() || work.saveEdit();
    const bool isAdded = !work.addIsPending() || work.add();
    return isSaved && isAdded;
}

} // namespace tumblewick
