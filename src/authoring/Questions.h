#pragma once

#include <QString>

#include <functional>

namespace tumblewick {

// The questions that the authoring screens ask.

// Whether something may go that would be lost: a box without a title, answered with Yes.
[[nodiscard]] bool IsConfirmed(const QString &question);

// Whether a new list may be written to `path`: asks when there is one already, which the user knows as
// `name`.
[[nodiscard]] bool MayReplaceList(const QString &path, const QString &name);

// What is asked before a screen is left with work undone. Both give whether it may be left; on false it stays
// as it is.

// For a new list: `saveList` tells whether the list was written.
[[nodiscard]] bool MayLeaveNewList(bool listDirty, const std::function<bool()> &saveList);

// What has been typed on an edit screen and not put into the list.
struct TypedWork {
    std::function<bool()> editIsPending;
    std::function<bool()> saveEdit; // whether it could be done
    std::function<bool()> addIsPending;
    std::function<bool()> add; // whether it could be done
};

// For a list that is being edited. The edit is saved before the add boxes are looked at, since adding throws
// an edit away; adding is tried even when saving has failed.
[[nodiscard]] bool MayLeaveEditing(const TypedWork &work);

} // namespace tumblewick
