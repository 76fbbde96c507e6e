#pragma once

#include <QString>
#include <QStringList>

namespace tumblewick {

// The letters of a word as a reader sees them: a letter with its accents is one, and so is an emoji.
QStringList Letters(const QString &word);

} // namespace tumblewick
