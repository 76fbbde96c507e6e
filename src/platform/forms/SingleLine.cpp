#include "platform/forms/SingleLine.h"

#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <limits>

namespace platform {

namespace {

constexpr QChar kMark(0xfeff);

class SingleLineValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString &text, int &cursor) const override
    {
        text.replace(QLatin1String("\r\n"), QLatin1String(" "));
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        text.replace(QLatin1Char('\r'), QLatin1Char(' '));
        text.remove(kMark);
        cursor = std::min(cursor, static_cast<int>(text.size()));
        return Acceptable;
    }
};

} // namespace

void KeepSingleLine(QLineEdit &box)
{
    box.setMaxLength(std::numeric_limits<int>::max());
    box.setValidator(new SingleLineValidator(&box));
}

} // namespace platform
