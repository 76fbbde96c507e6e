#pragma once

#include "platform/Integer16.h"
#include "platform/agent/Agent.h"
#include "shell/Players.h"

#include <QString>
#include <QStringList>

#include <array>

namespace tumblewick {

// The index of each character in Characters.
enum CharacterIndex { kMerlin = 0, kGenie = 1, kPeedy = 2 };
inline constexpr int kCharacterCount = 3;

// What the screens share. All of it starts empty, zero or false; what lives longer than a run is in files.
struct SharedState {
    QString GameMode; // "Spelling" or "Quiz"; only the exact word "Spelling" means spelling
    platform::Integer16 NumPlayers;
    tumblewick::Players Players;
    QString ListPath;
    QString ListName;

    // The control that owns the characters. Screens let go of it on purpose; whoever needs it asks first
    // whether it is there and connected.
    platform::AgentControlReference AgentControl;
    std::array<platform::CharacterReference, kCharacterCount> Characters;
    platform::RequestReference CurrentRequest;
    platform::RequestReference SecondRequest;

    QStringList PraisePhrases;
    bool MenuShown = false;
    bool PlayIntro = false;
    QString AuthoringPassword;
    platform::Integer16 DisplayWidth; // 800 on a display of exactly that width, else 0

    void Reset() { *this = SharedState(); }

    // What most screens do in their final release.
    void LetGoOfControl()
    {
        AgentControl = nullptr;
        CurrentRequest = nullptr;
    }
};

// The one shared state of the running program.
SharedState &State();

inline const QString kSpellingMode = QStringLiteral("Spelling");
inline const QString kQuizMode = QStringLiteral("Quiz");

} // namespace tumblewick
