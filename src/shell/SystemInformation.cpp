#include "shell/SystemInformation.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Files.h"
#include "platform/files/TextCode.h"
#include "platform/forms/Boxes.h"
#include "platform/system/Desktop.h"

namespace tumblewick {

using platform::The;

namespace {

constexpr int kBufferSize = 1024;

// The bytes from the last to the first, each in as many digits as it takes, read as one number. A byte below
// 16 therefore loses its leading zero: wanted.
QString NumberText(const QByteArray &bytes)
{
    QString digits;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        digits += QString::number(static_cast<quint8>(*byte), 16);
    return QString::number(static_cast<qint32>(digits.toUInt(nullptr, 16)));
}

} // namespace

bool GetKeyValue(const QString &key, const QString &name, QString &value)
{
    auto found = The().desktop.LookUp(key, name);
    if (!found || found->data.size() > kBufferSize) {
        value.clear();
        return false;
    }
    if (found->data.endsWith('\0'))
        found->data.chop(1);
    if (found->type == platform::RegistryValue::kText)
        value = platform::DecodedLine(found->data);
    else if (found->type == platform::RegistryValue::kNumber)
        value = NumberText(found->data);
    return true;
}

void StartSysInfo()
{
    try {
        QString tool;
        if (!GetKeyValue(QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), QStringLiteral("PATH"),
                         tool)) {
            const bool isKnown = GetKeyValue(QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                                             QStringLiteral("MSINFO"), tool);
            tool += QStringLiteral("\\MSINFO32.EXE");
            if (!isKnown || !The().files.FileExists(tool))
                throw platform::Error(platform::kFileNotFound);
        }
        The().desktop.Start(tool);
    } catch (const platform::Error &) {
        The().boxes.MessageBox(QStringLiteral("System Information Is Unavailable At This Time"));
    }
}

} // namespace tumblewick
