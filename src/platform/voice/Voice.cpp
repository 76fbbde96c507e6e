#include "platform/voice/Voice.h"

#include <array>

namespace platform {

QString MouthName(Mouth mouth)
{
    static const std::array names{ QStringLiteral("Rest"), QStringLiteral("MBP"),  QStringLiteral("FV"),
                                   QStringLiteral("ThL"),  QStringLiteral("Cons"), QStringLiteral("AA"),
                                   QStringLiteral("EH"),   QStringLiteral("EE"),   QStringLiteral("OH"),
                                   QStringLiteral("OO") };
    return names.at(static_cast<std::size_t>(mouth));
}

std::chrono::microseconds Utterance::Length() const
{
    const auto frames = samples.size() / (channels * static_cast<qsizetype>(sizeof(qint16)));
    return std::chrono::microseconds(frames * 1'000'000 / sampleRate);
}

} // namespace platform
