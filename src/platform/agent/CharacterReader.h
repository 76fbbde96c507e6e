#pragma once

#include "platform/Error.h"
#include "platform/agent/CharacterData.h"

#include <QCborMap>

namespace platform {

// What is wrong with the description of a character, for the person who wrote it.
struct CharacterFault {
    QString file;                  // "merlin.svg", "figure.json" or "motions/Wave.json"; may be empty
    QString key;                   // such as "parts[3].pivot"; may be empty
    QString problem;               // a clause such as "is not a number"
    qint32 number = kAgentBadData; // kBadSoundFile for a sound that cannot be played
    QString Text() const;
};

// Reads a description. `motions` is a map from the name of a motion to its content, `sounds` one from the
// name of a sound to its samples; without it the character is silent, whatever its motions cue. Throws
// CharacterFault for anything that is missing, unknown, not finite, out of bounds or contradictory, so that
// hostile data is as safe as good data. Pure.
CharacterData ReadCharacter(const QByteArray &drawing, const QCborMap &figure, const QCborMap &motions,
                            const QCborMap *sounds = nullptr);

} // namespace platform
