// A character file.

#include "Fuzz.h"

#include "platform/agent/CharacterFile.h"

void Try(const QByteArray &bytes)
{
    try {
        platform::CharacterFromFile(bytes);
    } catch (const platform::Error &error) {
        PROMISE(error.Number() == platform::kNotACharacterFile || error.Number() == platform::kAgentBadData ||
                error.Number() == platform::kCharacterFileTooOld ||
                error.Number() == platform::kCharacterFileTooNew ||
                error.Number() == platform::kBadSoundFile);
    }
}
