#pragma once

#include <QString>

namespace tumblewick {

// Reads the value `name` of `key` from what the desktop registers for the whole machine: a text as it is, a
// number in decimal. False with an empty `value` when there is none that fits into 1,024 bytes; a value of
// any other type is true and leaves `value` as it was.
bool GetKeyValue(const QString &key, const QString &name, QString &value);

// Starts the desktop's own system information tool, or tells that there is none.
void StartSysInfo();

} // namespace tumblewick
