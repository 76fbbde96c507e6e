#pragma once

#include <QString>

namespace tumblewick {

// The two settings that live longer than a run, kept in the text file `Set` beside the program, a line each.
// The file is never made here: reading and writing raise 53 when it is missing.
struct Settings {
    bool playIntro = false;    // first line: exactly "Intro" means on
    QString authoringPassword; // second line, as typed; empty means none
};

// Raises 62 when a line is missing, and whatever the file raises.
Settings ReadSettings();
void WriteSettings(const Settings &settings);

} // namespace tumblewick
