#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

// The bytes of one line of a text file, without its end: Windows-1252 when that holds the whole line without
// becoming valid multi-byte UTF-8, else UTF-8. DecodedLine gives back every line exactly.
QByteArray EncodedLine(const QString &line);

// The line that some bytes stand for: UTF-8 when they are valid multi-byte UTF-8, else Windows-1252, in which
// every byte means something. So no bytes are refused.
QString DecodedLine(QByteArrayView bytes);

} // namespace platform
