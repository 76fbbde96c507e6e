#include "platform/voice/RecordedVoices.h"

namespace platform {

const std::vector<RecordedVoice> &RecordedVoices()
{
    static const std::vector<RecordedVoice> voices{
        { QStringLiteral("cmu_us_awb"), QStringLiteral("Scottish man") },
        { QStringLiteral("cmu_us_rms"), QStringLiteral("American man"), false },
        { QStringLiteral("cmu_us_slt"), QStringLiteral("American woman") },
    };
    return voices;
}

QStringList VoiceCredits()
{
    return {
        QStringLiteral("The characters speak with three voices from the Arctic recordings of Carnegie Mellon "
                       "University, known as awb, rms and slt."),
        QStringLiteral("The sound is made by Flite, copyright Language Technologies Institute, Carnegie "
                       "Mellon University, under a licence in the manner of BSD."),
        QStringLiteral(
            "Lists in other languages are read by eSpeak NG, under the GNU General Public License, "
            "version 3 or later."),
        QStringLiteral("Spoken letters are understood by PocketSphinx, copyright Carnegie Mellon University, "
                       "under a licence in the manner of BSD."),
    };
}

} // namespace platform
