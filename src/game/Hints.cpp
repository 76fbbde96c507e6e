#include "game/Hints.h"

#include "stage/Letters.h"

namespace tumblewick {

platform::Integer16 NextHintLetters(platform::Integer16 given, const QString &word)
{
    return given < Letters(word).size() ? platform::Integer16(given + 1) : given;
}

} // namespace tumblewick
