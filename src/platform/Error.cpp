#include "platform/Error.h"

#include <array>

namespace platform {

namespace {

struct StockText {
    qint32 number;
    const char *description;
};

// clang-format off
constexpr std::array kStockTexts = {
    StockText{ kInvalidCall,           "Invalid procedure call or argument" },
    StockText{ kOverflow,              "Overflow" },
    StockText{ kSubscriptOutOfRange,   "Subscript out of range" },
    StockText{ kTypeMismatch,          "Type mismatch" },
    StockText{ kBadFileName,           "Bad file name or number" },
    StockText{ kFileNotFound,          "File not found" },
    StockText{ kDeviceError,           "Device I/O error" },
    StockText{ kFileAlreadyExists,     "File already exists" },
    StockText{ kDiskFull,              "Disk full" },
    StockText{ kInputPastEnd,          "Input past end of file" },
    StockText{ kDeviceUnavailable,     "Device unavailable" },
    StockText{ kPermissionDenied,      "Permission denied" },
    StockText{ kPathFileAccess,        "Path/File access error" },
    StockText{ kPathNotFound,          "Path not found" },
    StockText{ kObjectNotSet,          "Object variable or With block variable not set" },
    StockText{ kNoSuchComponent,       "ActiveX component can't create object" },
    StockText{ kInvalidPicture,        "Invalid picture" },
    StockText{ kAgentRefuses,          "The character is not known to the speaking-character service" },
    StockText{ kNoSuchAnimation,       "The character has no animation of that name" },
    StockText{ kStateHasNoAnimation,   "The character has no animation for that state" },
    StockText{ kCommandUnknown,        "There is no command of that name" },
    StockText{ kCommandNameUsed,       "There is a command of that name already" },
    StockText{ kCharacterHidden,       "The character is hidden" },
    StockText{ kAlreadyLoaded,         "The character is already loaded" },
    StockText{ kRequestNotInQueue,     "The request is not in the queue" },
    StockText{ kStopAcrossCharacters,  "A character cannot stop the request of another one" },
    StockText{ kRemovedFromQueue,      "The request was taken out of the queue" },
    StockText{ kInterruptedByProgram,  "The request was interrupted by the program" },
    StockText{ kInterruptedByHiding,   "The request was interrupted because the character was hidden" },
    StockText{ kRepeatTagNotAlone,     "The repeat tag has to stand alone" },
    StockText{ kNotACharacterFile,     "The file is not a character file" },
    StockText{ kCharacterFileTooOld,   "The character file is of a version that is too old" },
    StockText{ kCharacterFileTooNew,   "The character file is of a version that is too new" },
    StockText{ kBadSoundFile,          "The sound cannot be played" },
    StockText{ kAudioDeviceUnusable,   "The audio device cannot be used" },
    StockText{ kSpeechEngineUnusable,  "The speech engine cannot be started" },
    StockText{ kAgentFileMissing,      "The system cannot find the file specified" },
    StockText{ kAgentBadData,          "The data is invalid" },
    StockText{ kAgentGone,             "The speaking-character service is gone" },
};
// clang-format on

} // namespace

QString StockDescription(qint32 number)
{
    for (const StockText &text : kStockTexts) {
        if (text.number == number)
            return QString::fromLatin1(text.description);
    }
    return QStringLiteral("Application-defined or object-defined error");
}

Error::Error(qint32 number) : m_number(number), m_description(StockDescription(number)) {}

Error::Error(qint32 number, QString description) : m_number(number), m_description(std::move(description)) {}

} // namespace platform
