#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace platform {

// A voice that a character can be given, with what a user calls it.
struct RecordedVoice {
    QString id; // what VoiceSettings::voice holds
    QString name;
    bool pitched = true; // false for one with a melody of its own, whose pitch cannot be set
};

// All there are, whether or not the engine could be started; never empty.
const std::vector<RecordedVoice> &RecordedVoices();

// Whom the voices are owed to, a paragraph each.
QStringList VoiceCredits();

} // namespace platform
