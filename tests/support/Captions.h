#pragma once

#include "support/Desk.h"

#include <QTest>

namespace support {

// The caption of each control named, on the screen in front: of a label, a button or a frame.
inline void CheckCaptions(Desk &desk, const QList<QPair<QString, QString>> &captions)
{
    for (const auto &[name, caption] : captions) {
        const auto *control = desk.Find<QWidget>(name);
        QVERIFY(control);
        const QVariant text = control->property("text");
        const QString seen = (text.isValid() ? text : control->property("title")).toString();
        QCOMPARE(name + QStringLiteral(": ") + seen, name + QStringLiteral(": ") + caption);
    }
}

} // namespace support
