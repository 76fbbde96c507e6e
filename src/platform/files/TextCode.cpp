#include "platform/files/TextCode.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace platform {

namespace {

// What the bytes 0x80 to 0x9F mean in Windows-1252. The five that it leaves open mean themselves.
// clang-format off
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
// clang-format on

bool IsAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<uchar>(byte) < 0x80; });
}

// The text when the bytes are valid UTF-8 with at least one character of several bytes.
std::optional<QString> FromMultiByteUtf8(QByteArrayView bytes)
{
    if (IsAscii(bytes))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

std::optional<QByteArray> ToWindows1252(const QString &line)
{
    QByteArray bytes;
    bytes.reserve(line.size());
    for (const QChar character : line) {
        const char16_t code = character.unicode();
        if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
            bytes += static_cast<char>(code);
            continue;
        }
        const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), code);
        if (found == kUpperControls.end())
            return std::nullopt;
        bytes += static_cast<char>(0x80 + (found - kUpperControls.begin()));
    }
    return bytes;
}

QString FromWindows1252(QByteArrayView bytes)
{
    QString line(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), line.begin(), [](char byte) {
        const auto code = static_cast<uchar>(byte);
        return QChar(code >= 0x80 && code < 0xA0 ? kUpperControls[code - 0x80] : code);
    });
    return line;
}

} // namespace

QByteArray EncodedLine(const QString &line)
{
    const auto bytes = ToWindows1252(line);
    if (bytes && !FromMultiByteUtf8(*bytes))
        return *bytes;
    return line.toUtf8();
}

QString DecodedLine(QByteArrayView bytes)
{
    if (auto text = FromMultiByteUtf8(bytes))
        return *text;
    return FromWindows1252(bytes);
}

} // namespace platform
