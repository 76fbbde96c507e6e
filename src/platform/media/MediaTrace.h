#pragma once

#include <QLoggingCategory>

namespace platform {

// One line for every call of a media player, such as `media: Play`, and from the real one for the first
// picture and the end of a clip. Category `tumblewick.media`, off by default.
Q_DECLARE_LOGGING_CATEGORY(MediaTrace)

// Writes the line of a call.
void TraceMediaCall(const QString &call);
// The name of a clip as these lines have it: without its folder, in double quotes.
QString TracedName(const QString &path);

} // namespace platform
