#pragma once

#include <QString>

namespace platform {

// Thrown by Process::End where a process cannot really end, as in tests. It unwinds to the door of the
// screens; nobody else catches it.
struct ProgramEnded {};

// The running program.
class Process {
public:
    virtual ~Process() = default;

    // Ends the program at once, from any depth: no unload and no release step runs.
    [[noreturn]] virtual void End(int exitCode = 0) = 0;

    // The folder that holds the program, its lists, settings and media. No separator at the end.
    virtual QString ApplicationFolder() const = 0;

    // The application's title, as message boxes carry it.
    virtual QString Title() const = 0;
};

} // namespace platform
