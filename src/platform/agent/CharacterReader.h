#pragma once

#include "platform/agent/CharacterData.h"

#include <QCborMap>

namespace platform {

// What is wrong with the description of a character, for the person who wrote it.
struct CharacterFault {
    QString file;    // "merlin.svg", "figure.json" or "motions/Wave.json"; may be empty
    QString key;     // such as "parts[3].pivot"; may be empty
    QString problem; // a clause such as "is not a number"
    QString Text() const;
};

// Reads a description. `motions` is a map from the name of a motion to its content. Throws CharacterFault for
// anything that is missing, unknown, not finite, out of bounds or contradictory, so that hostile data is as
// safe as good data. Pure.
CharacterData ReadCharacter(const QByteArray &drawing, const QCborMap &figure, const QCborMap &motions);

} // namespace platform
