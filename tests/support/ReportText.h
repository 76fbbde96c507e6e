#pragma once

#include "platform/Error.h"
#include "shell/ErrorBoxes.h"

#include <QString>

namespace support {

// What the full report says of an error with its stock description.
inline QString ReportText(qint32 number)
{
    return QStringLiteral(
               "Tumblewick has detected a problem. Please email %1 \r\n Please quote the following "
               "information %2 %3\r\nWe apologise for this inconvenience")
        .arg(QString::fromLatin1(tumblewick::kSupportAddress), QString::number(number),
             platform::StockDescription(number));
}

// What the platform's own report says of an error that nobody took.
inline QString RunTimeText(qint32 number)
{
    return QStringLiteral("Run-time error '%1':\r\n\r\n%2")
        .arg(QString::number(number), platform::StockDescription(number));
}

} // namespace support
