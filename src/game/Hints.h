#pragma once

#include "platform/Integer16.h"

#include <QString>

namespace tumblewick {

// How many letters are given away after one more hint: never more than the word has.
platform::Integer16 NextHintLetters(platform::Integer16 given, const QString &word);

} // namespace tumblewick
