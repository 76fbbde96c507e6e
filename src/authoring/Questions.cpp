#include "authoring/Questions.h"

#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/forms/Boxes.h"

namespace tumblewick {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::The;

namespace {

BoxAnswer AskOnLeaving(const QString &question)
{
    return The().boxes.MessageBox(question, BoxButtons::YesNoCancel, platform::kNoTitle);
}

} // namespace

bool IsConfirmed(const QString &question)
{
    return The().boxes.MessageBox(question, BoxButtons::YesNo, platform::kNoTitle) == BoxAnswer::Yes;
}

bool MayReplaceList(const QString &path, const QString &name)
{
    if (!The().files.FileExists(path))
        return true;
    const QString question = QStringLiteral("There is already a list called ") + name +
                             QStringLiteral(". Do you want to overwrite it with this list?");
    return The().boxes.MessageBox(question, BoxButtons::YesNo, QStringLiteral("List Already Exists")) ==
           BoxAnswer::Yes;
}

bool MayLeaveNewList(bool listDirty, const std::function<bool()> &saveList)
{
    if (!listDirty)
        return true;
    const BoxAnswer answer = AskOnLeaving(QStringLiteral("Save list?"));
    return answer == BoxAnswer::No || (answer == BoxAnswer::Yes && saveList());
}

bool MayLeaveEditing(const TypedWork &work)
{
    if (!work.editIsPending() && !work.addIsPending())
        return true;
    const BoxAnswer answer = AskOnLeaving(QStringLiteral("Save Changes?"));
    if (answer != BoxAnswer::Yes)
        return answer == BoxAnswer::No;
    const bool isSaved = !work.editIsPending() || work.saveEdit();
    const bool isAdded = !work.addIsPending() || work.add();
    return isSaved && isAdded;
}

} // namespace tumblewick
