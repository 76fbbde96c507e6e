#pragma once

#include <QByteArray>

namespace platform {

// Reads a drawing as text before anything draws it: it has to be a well-formed SVG of plain shapes that needs
// nothing from outside. Throws CharacterFault for anything else, such as other elements than shapes and
// gradients, an entity, a reference to a file, nesting without end or a number beyond all measure, so that
// the library that draws never sees them. Pure.
void CheckDrawing(const QByteArray &drawing);

} // namespace platform
