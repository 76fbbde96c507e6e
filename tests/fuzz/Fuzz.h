#pragma once

#include "platform/Error.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

// A fuzzer is a file with Try in it: called with bytes of any kind, it does with them what the program does
// with a file from anywhere, and aborts when a promise is broken.
void Try(const QByteArray &bytes);

// Stops the run, with the bytes kept, when a promise is broken.
#define PROMISE(truth) (Q_LIKELY(truth) ? void(0) : qFatal("broken: %s", #truth))

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Try(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
