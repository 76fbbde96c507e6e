#pragma once

#include <QString>

namespace platform {

// The numbers that services raise or screens test for. An Error may carry any other, too.
enum ErrorNumber : qint32 {
    kInvalidCall = 5,
    kOverflow = 6,
    kSubscriptOutOfRange = 9,
    kTypeMismatch = 13,
    kBadFileName = 52,
    kFileNotFound = 53,
    kDeviceError = 57,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kInputPastEnd = 62,
    kDeviceUnavailable = 68,
    kPermissionDenied = 70,
    kPathFileAccess = 75,
    kPathNotFound = 76,
    kObjectNotSet = 91,
    kNoSuchComponent = 429,
    kInvalidPicture = 481,
    // The speaking-character service.
    kAgentRefuses = static_cast<qint32>(0x80042002),
    kNoSuchAnimation = static_cast<qint32>(0x80042003),
    kStateHasNoAnimation = static_cast<qint32>(0x80042004),
    kCharacterHidden = static_cast<qint32>(0x8004200A),
    kAlreadyLoaded = static_cast<qint32>(0x8004200B),
    kCommandUnknown = static_cast<qint32>(0x80042006),
    kCommandNameUsed = static_cast<qint32>(0x80042007),
    kRequestNotInQueue = static_cast<qint32>(0x80042101),
    kStopAcrossCharacters = static_cast<qint32>(0x80042103),
    kRemovedFromQueue = static_cast<qint32>(0x80042108),
    kInterruptedByProgram = static_cast<qint32>(0x8004210C),
    kInterruptedByHiding = static_cast<qint32>(0x8004210D),
    kRepeatTagNotAlone = static_cast<qint32>(0x8004210E),
    kNotACharacterFile = static_cast<qint32>(0x80042204),
    kCharacterFileTooOld = static_cast<qint32>(0x80042202),
    kCharacterFileTooNew = static_cast<qint32>(0x80042203),
    kBadSoundFile = static_cast<qint32>(0x80042206),
    kAudioDeviceUnusable = static_cast<qint32>(0x80042401),
    kSpeechEngineUnusable = static_cast<qint32>(0x80042402),
    kAgentFileMissing = static_cast<qint32>(0x80070002),
    kAgentBadData = static_cast<qint32>(0x8007000D),
    kAgentGone = static_cast<qint32>(0x80010012),
};

// The stock description of a number; for a number that has none, "Application-defined or object-defined
// error".
QString StockDescription(qint32 number);

// A failure raised by the platform. Thrown by value, caught by const reference, never used
// for ordinary answers ("no such file" is false from FileExists).
class Error final {
public:
    explicit Error(qint32 number); // with the stock description of the number
    Error(qint32 number, QString description);
    qint32 Number() const noexcept { return m_number; }
    const QString &Description() const noexcept { return m_description; }

private:
    qint32 m_number;
    QString m_description;
};

} // namespace platform
