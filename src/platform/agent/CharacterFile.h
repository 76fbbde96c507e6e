#pragma once

#include "platform/agent/CharacterReader.h"

#include <memory>

// Character files, `<Name>.acs`: one CBOR document with the self-description tag, a map of "format",
// "version", "drawing" (the bytes of the SVG), "figure" and "motions" (a map by name). All calls are for any
// thread.
namespace platform {

// Reads a packed character. Raises kAgentFileMissing when there is no such file or it cannot be opened,
// kNotACharacterFile when it is something else, kCharacterFileTooOld or kCharacterFileTooNew for a version
// that is not read, kAgentBadData when the content cannot serve. Any content whatever is safe to open.
std::shared_ptr<const CharacterData> LoadCharacterFile(const QString &path);

// The same for the bytes of a file.
std::shared_ptr<const CharacterData> CharacterFromFile(const QByteArray &file);

// A character as it lies in its folder: one SVG, figure.json and motions/*.json.
struct CharacterSource {
    QByteArray drawing;
    QCborMap figure;
    QCborMap motions;
};

// Reads the files of a folder without judging what they say. Throws CharacterFault when one is missing or is
// no JSON.
CharacterSource ReadCharacterFolder(const QString &folder);

// The bytes of the packed file. Does not judge the content either.
QByteArray PackCharacter(const CharacterSource &source);

} // namespace platform
