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
        .arg(QString::fromLatin1(kSupportAddress), QString::number(number),
             platform::StockDescription(number));
}

} // namespace support
