#pragma once

#include <QByteArray>
#include <QCborValue>
#include <QString>

namespace platform {

// What is wrong with a JSON text.
struct JsonFault {
    int line = 1;
    QString problem;
};

// Reads a JSON text. Unlike a sorted reader it keeps the members of an object in their written order, which
// tells what is seen at rest, and refuses a member that is given twice. Throws JsonFault. Pure.
QCborValue ReadOrderedJson(const QByteArray &text);

} // namespace platform
