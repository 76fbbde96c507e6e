#include "platform/forms/Holds.h"

namespace platform {

Resizer::Hook HoldSize(const QStringList &types)
{
    return [types](const QString &type, Resizer::Planned &planned, QWidget &control) {
        if (!types.contains(type))
            return;
        const Resizer::Planned present = Resizer::Present(control);
        planned.width = present.width;
        planned.height = present.height;
        planned.fontSize = present.fontSize;
    };
}

Resizer::Hook HoldAllButLeft(const QStringList &types)
{
    return [types, holdSize = HoldSize(types)](const QString &type, Resizer::Planned &planned,
                                               QWidget &control) {
        if (!types.contains(type))
            return;
        holdSize(type, planned, control);
        planned.top = Resizer::Present(control).top;
    };
}

} // namespace platform
