#include "platform/voice/LetterRecogniser.h"

namespace platform {

const QStringList &SpokenNames()
{
    static const QStringList names = [] {
        QStringList all;
        for (char letter = 'a'; letter <= 'z'; ++letter)
            all << QString(QLatin1Char(letter));
        return all << QStringLiteral("go");
    }();
    return names;
}

} // namespace platform
