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

constexpr int kVersion = 1;
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
        return std::make_shared<CharacterData>(ReadCharacter(map.value(kDrawingKey).toByteArray(),
                                                             map.value(kFigureKey).toMap(),
                                                             map.value(kMotionsKey).toMap()));
    } catch (const CharacterFault &problem) {
        qCWarning(characterLog).noquote() << problem.Text();
        throw Error(kAgentBadData);
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
    return CharacterFromFile(file.readAll());
}

CharacterSource ReadCharacterFolder(const QString &folder)
{
    const QDir directory(folder);
    const QStringList drawings = directory.entryList({ QStringLiteral("*.svg") }, QDir::Files, QDir::Name);
    if (drawings.size() != 1) {
        const QString problem =
            drawings.isEmpty() ? QStringLiteral("holds no SVG") : QStringLiteral("holds several SVGs");
        throw CharacterFault{ folder, QString(), problem };
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
    return QCborValue(QCborKnownTags::Signature, map).toCbor();
}

} // namespace platform
