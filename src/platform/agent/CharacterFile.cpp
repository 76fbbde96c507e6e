#include "platform/agent/CharacterFile.h"

#include "platform/Error.h"
#include "platform/agent/OrderedJson.h"

#include <QCborArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace platform {

Q_LOGGING_CATEGORY(characterLog, "tumblewick.character", QtWarningMsg)

namespace {

constexpr int kVersion = 2;
constexpr qint64 kLargestFile = 16 * 1024 * 1024;
// The document's first three bytes, which say that it is CBOR.
constexpr char kSignature[] = "\xd9\xd9\xf7";
constexpr qsizetype kSignatureSize = 3;

const QString kFormatKey = QStringLiteral("format");
const QString kFormat = QStringLiteral("tumblewick-character");
const QString kVersionKey = QStringLiteral("version");
const QString kDrawingKey = QStringLiteral("drawing");
const QString kFigureKey = QStringLiteral("figure");
const QString kMotionsKey = QStringLiteral("motions");
const QString kSoundsKey = QStringLiteral("sounds");

QByteArray ReadSourceFile(const QString &path, const QString &shown)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw CharacterFault{ shown, QString(), QStringLiteral("cannot be read") };
    if (file.size() > kLargestFile)
        throw CharacterFault{ shown, QString(), QStringLiteral("is too large") };
    return file.readAll();
}

QCborMap ReadJsonObject(const QString &path, const QString &shown)
{
    try {
        const QCborValue value = ReadOrderedJson(ReadSourceFile(path, shown));
        if (!value.isMap())
            throw CharacterFault{ shown, QString(), QStringLiteral("is not a JSON object") };
        return value.toMap();
    } catch (const JsonFault &fault) {
        throw CharacterFault{ shown, QStringLiteral("line %1").arg(fault.line),
                              QStringLiteral("is no JSON: ") + fault.problem };
    }
}

// The samples of a wave. Chunks that say other things about it are passed over.
QByteArray ReadWave(const QString &path, const QString &shown)
{
    const QByteArray wave = ReadSourceFile(path, shown);
    const auto number = [&wave](qsizetype at, int size) {
        quint32 value = 0;
        for (int byte = size - 1; byte >= 0; --byte)
            value = value << 8 | quint8(wave.at(at + byte));
        return value;
    };
    bool fits = false;
    if (wave.startsWith("RIFF") && wave.mid(8, 4) == "WAVE") {
        for (qsizetype at = 12; at + 8 <= wave.size();) {
            const QByteArray kind = wave.mid(at, 4);
            const qsizetype size = number(at + 4, 4);
            at += 8;
            if (size > wave.size() - at)
                break;
            // Plain samples, one channel, so many a second, of so many bits.
            if (kind == "fmt " && size >= 16)
                fits = number(at, 2) == 1 && number(at + 2, 2) == 1 && number(at + 4, 4) == kSoundRate &&
                       number(at + 14, 2) == 16;
            if (kind == "data" && fits)
                return wave.mid(at, size);
            at += size + size % 2;
        }
    }
    throw CharacterFault{ shown, QString(),
                          QStringLiteral("is no wave of 16 bits, one channel and %1 Hz").arg(kSoundRate),
                          kBadSoundFile };
}

QCborMap ReadSounds(const QDir &folder, const QCborMap &motions)
{
    QCborMap sounds;
    for (const auto &[name, motion] : motions) {
        for (const QCborValue cue : motion.toMap().value(kSoundsKey).toArray()) {
            const QString sound = cue.toArray().at(1).toString();
            const QString file = sound + QStringLiteral(".wav");
            // A name never leads out of the folder.
            if (sounds.contains(sound) || sound.contains(QLatin1Char('/')) || !folder.exists(file))
                continue;
            sounds.insert(sound, ReadWave(folder.filePath(file), QStringLiteral("sounds/") + file));
        }
    }
    return sounds;
}

} // namespace

std::shared_ptr<const CharacterData> CharacterFromFile(const QByteArray &file)
{
    if (!file.startsWith(QByteArray(kSignature, kSignatureSize)))
        throw Error(kNotACharacterFile);
    QCborParserError fault;
    const QCborValue document = QCborValue::fromCbor(file, &fault);
    if (fault.error != QCborError::NoError)
        throw Error(kAgentBadData);
    const QCborMap map = document.taggedValue().toMap();
    if (!document.isTag() || map.value(kFormatKey).toString() != kFormat)
        throw Error(kNotACharacterFile);
    const QCborValue version = map.value(kVersionKey);
    if (!version.isInteger())
        throw Error(kAgentBadData);
    if (version.toInteger() != kVersion)
        throw Error(version.toInteger() < kVersion ? kCharacterFileTooOld : kCharacterFileTooNew);
    try {
        const QCborMap sounds = map.value(kSoundsKey).toMap();
        return std::make_shared<CharacterData>(ReadCharacter(map.value(kDrawingKey).toByteArray(),
                                                             map.value(kFigureKey).toMap(),
                                                             map.value(kMotionsKey).toMap(), &sounds));
    } catch (const CharacterFault &problem) {
        qCWarning(characterLog).noquote() << problem.Text();
        throw Error(problem.number);
    }
}

std::shared_ptr<const CharacterData> LoadCharacterFile(const QString &path)
{
    QFile file(path);
    // A folder, a pipe or a device is no file that could be read to its end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        throw Error(kAgentFileMissing);
    // Far above anything that the tool packs.
    if (file.size() > kLargestFile)
        throw Error(kAgentBadData);
    const QByteArray bytes = file.readAll();
    // What a disk no longer gives is not what another kind of file would be.
    if (file.error() != QFileDevice::NoError)
        throw Error(kAgentBadData);
    return CharacterFromFile(bytes);
}

CharacterSource ReadCharacterFolder(const QString &folder, const QString &soundFolder)
{
    const QDir directory(folder);
    const QStringList drawings = directory.entryList({ QStringLiteral("*.svg") }, QDir::Files, QDir::Name);
    if (drawings.size() != 1) {
        const QString problem =
            drawings.isEmpty() ? QStringLiteral("holds no SVG") : QStringLiteral("holds several SVGs");
        throw CharacterFault{ QStringLiteral("the folder"), QString(), problem };
    }
    CharacterSource source;
    source.drawing = ReadSourceFile(directory.filePath(drawings.front()), drawings.front());
    const QString figure = QStringLiteral("figure.json");
    source.figure = ReadJsonObject(directory.filePath(figure), figure);
    const QDir motions(directory.filePath(QStringLiteral("motions")));
    for (const QString &name : motions.entryList({ QStringLiteral("*.json") }, QDir::Files, QDir::Name)) {
        const QString shown = QStringLiteral("motions/") + name;
        source.motions.insert(name.chopped(5), ReadJsonObject(motions.filePath(name), shown));
    }
    if (!soundFolder.isEmpty())
        source.sounds = ReadSounds(QDir(soundFolder), source.motions);
    return source;
}

QByteArray PackCharacter(const CharacterSource &source)
{
    QCborMap map;
    map.insert(kFormatKey, kFormat);
    map.insert(kVersionKey, kVersion);
    map.insert(kDrawingKey, source.drawing);
    map.insert(kFigureKey, source.figure);
    map.insert(kMotionsKey, source.motions);
    map.insert(kSoundsKey, source.sounds);
    return QCborValue(QCborKnownTags::Signature, map).toCbor();
}

} // namespace platform
