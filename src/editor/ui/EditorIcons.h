#pragma once

#include <QIcon>

class QPalette;

// The editor's tool icons, drawn in the palette's text colour so they follow light and dark themes.
namespace EditorIcons {

enum class Kind { RotateLeft, RotateRight, Resize, Revert, FullSize, Undo, Redo, Share, Brush, Eraser,
                  AlignCentre, AlignBottomLeft, AlignBottomRight, AlignTopLeft, AlignTopRight };

QIcon icon(Kind kind, const QPalette &palette, int side = 20);
// A round swatch of a colour, for the colour well.
QIcon swatch(const QColor &color, int side = 20);

} // namespace EditorIcons
