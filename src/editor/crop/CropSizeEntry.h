#pragma once

#include <QString>

#include <optional>
#include <vector>

// What the editor's number fields do with typing and with the up and down keys, apart from any widget.
namespace CropSizeEntry {

// A field's number as the text begins with it ("12a" is 12, "abc" is 0).
double valueOf(const QString &text);

// A crop size field after a change: empty refills with the picture's pixels on that side; a value above
// them takes its last character back, and if it is still above, becomes the maximum. Unchanged text
// comes back as it is.
QString fixedCropField(const QString &text, int pixelMax);

// The brush size field after a change: held within the slider's range.
QString fixedBrushField(const QString &text, int sliderMin, int sliderMax);

enum class Field { None, Brush, CropWidth, CropHeight, ResizeWidth, ResizeHeight };

struct Context
{
    int sliderMin = 1;
    int sliderMax = 100;
    int pixelWidth = 0;
    int pixelHeight = 0;
    float scale = 1.0f; // the picture's display scale s
    bool popoverShown = false;
};

// The up (+1) or down (-1) key in a field: its new text, or none when the key is not taken there.
std::optional<QString> steppedField(Field field, const QString &text, bool up, const Context &context);

} // namespace CropSizeEntry

// The editor's key table. Ctrl stands where other systems have Command; other modifiers do not matter.
namespace EditorKeys {

enum class Action { NudgeLeft, NudgeRight, NudgeDown, NudgeUp, CropImage, Revert, RotateLeft, RotateRight, Save, ShowResize };

// Every action one key press asks for, in order (an arrow with Ctrl nudges and then turns).
std::vector<Action> actionsFor(int qtKey, bool ctrl, bool paintMode, bool resizePopoverShown);

} // namespace EditorKeys
