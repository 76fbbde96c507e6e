#pragma once

#include <QString>

namespace tumblewick {

inline const QString kProductName = QStringLiteral("Tumblewick");

// "Version " and major, minor and revision number of this program.
QString VersionText();

} // namespace tumblewick
