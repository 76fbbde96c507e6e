#pragma once

#include <functional>

namespace tumblewick {

// The questions that the authoring screens ask before they are left with work undone. Each gives whether the
// screen may be left; on false it stays as it is.

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
// an edit away; the one is tried also when the other has failed.
[[nodiscard]] bool MayLeaveEditing(const TypedWork &work);

} // namespace tumblewick
