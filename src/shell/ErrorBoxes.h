#pragma once

#include "platform/Error.h"

#include <functional>

namespace tumblewick {

// The two boxes that a handler with a trap shows for an error that it does not know. Neither ends the
// program.

// Where a player's grown-ups can write to.
inline constexpr char kSupportAddress[] = "support@tumblewick.example";

// The full report, with the support address, the number and the description.
void ErrorReport(const platform::Error &error);

// Does `work`, and reports the error that ends it.
void Trapped(const std::function<void()> &work);

// The description and the number alone.
void ShortErrorBox(const platform::Error &error);

} // namespace tumblewick
