#pragma once

#include "platform/agent/CharacterReader.h"

#include <memory>

// Character files, `<Name>.acs`: one CBOR document with the self-description tag, a map of "format",
// "version", "drawing" (the bytes of the SVG), "figure", "motions" (a map by name) and "sounds" (a map from
// names to 16-bit little-endian samples at kSoundRate). All calls are for any thread.
namespace platform {

// Reads a packed character. Raises kAgentFileMissing when there is no such file or it cannot be opened,
// kNotACharacterFile when it is something else, kCharacterFileTooOld or kCharacterFileTooNew for a version
// that is not read, kAgentBadData when the content cannot serve, kBadSoundFile when one of its sounds cannot.
// Any content whatever is safe to open.
std::shared_ptr<const CharacterData> LoadCharacterFile(const QString &path);

// The same for the bytes of a file.
std::shared_ptr<const CharacterData> CharacterFromFile(const QByteArray &file);

// A character as it lies in its folder: one SVG, figure.json and motions/*.json.
struct CharacterSource {
    QByteArray drawing;
    QCborMap figure;
    QCborMap motions;
    QCborMap sounds = {};
};

// Reads the files of a folder without judging what they say. Of `soundFolder`, which holds waves of 16 bits,
// one channel and kSoundRate, it takes those that the motions name; none when it is left out. Throws
// CharacterFault when a file is missing, is no JSON or no such wave. A sound that is missing is left out.
CharacterSource ReadCharacterFolder(const QString &folder, const QString &soundFolder = QString());

// The bytes of the packed file. Does not judge the content either.
QByteArray PackCharacter(const CharacterSource &source);

} // namespace platform
