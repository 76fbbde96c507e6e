#pragma once

namespace platform {

class Boxes;
class Chance;
class Clock;
class Desktop;
class Display;
class Drives;
class Events;
class Files;
class Help;
class Media;
class Process;
class AgentServer;

// What the game stands on, one of each. main makes the real ones, a test makes fakes.
struct Services {
    Events &events;
    Clock &clock;
    Chance &chance;
    Process &process;
    Files &files;
    Boxes &boxes;
    Help &help;
    AgentServer &agent;
    Display &display;
    Desktop &desktop;
    Media &media;
    Drives &drives;
};

// Makes `services` the ones that The() gives, until the next call. Not owned; null takes them away.
void InstallServices(Services *services);

// The installed services. There must be some.
Services &The();

} // namespace platform
