#include "CropSizeEntry.h"

#include <QRegularExpression>
#include <Qt>

namespace CropSizeEntry {

double valueOf(const QString &text)
{
    static const QRegularExpression leading(QStringLiteral("^\\s*[-+]?(\\d+\\.?\\d*|\\.\\d+)"));
    const auto match = leading.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

QString fixedCropField(const QString &text, int pixelMax)
{
    if (text.isEmpty())
        return QString::number(pixelMax);
    if (valueOf(text) <= pixelMax)
        return text;
    const QString shorter = text.chopped(1);
    return valueOf(shorter) > pixelMax ? QString::number(pixelMax) : shorter;
}

QString fixedBrushField(const QString &text, int sliderMin, int sliderMax)
{
    const double value = valueOf(text);
    if (value < sliderMin)
        return QString::number(sliderMin);
    if (value > sliderMax)
        return QString::number(sliderMax);
    return text;
}

namespace {
QString whole(double value)
{
    return QString::number(qint64(value));
}
} // namespace

std::optional<QString> steppedField(Field field, const QString &text, bool up, const Context &c)
{
    const double value = valueOf(text);
    const double next = up ? value + 1 : value - 1;
    switch (field) {
    case Field::Brush:
        if (up ? next <= c.sliderMax : next >= c.sliderMin)
            return whole(next);
        return std::nullopt;
    case Field::CropWidth:
    case Field::CropHeight: {
        if (!up)
            return next != 0 ? std::optional(whole(next)) : std::nullopt;
        // The limit is pixels over s, not pixels: the field may step past the picture, and the change
        // rule then takes the digit back.
        const int pixels = field == Field::CropWidth ? c.pixelWidth : c.pixelHeight;
        if (c.popoverShown || c.scale <= 0 || pixels / c.scale < next)
            return std::nullopt;
        return whole(next);
    }
    case Field::ResizeWidth:
    case Field::ResizeHeight:
        if (up)
            return text.size() < 5 && c.popoverShown ? std::optional(whole(next)) : std::nullopt;
        return next != 0 ? std::optional(whole(next)) : std::nullopt;
    case Field::None:
        break;
    }
    return std::nullopt;
}

} // namespace CropSizeEntry

namespace EditorKeys {

std::vector<Action> actionsFor(int key, bool ctrl, bool paintMode, bool popoverShown)
{
    std::vector<Action> actions;
    switch (key) {
    case Qt::Key_Left:
        actions.push_back(Action::NudgeLeft);
        break;
    case Qt::Key_Right:
        actions.push_back(Action::NudgeRight);
        break;
    case Qt::Key_Down:
        actions.push_back(Action::NudgeDown);
        break;
    case Qt::Key_Up:
        actions.push_back(Action::NudgeUp);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!paintMode && !popoverShown)
            actions.push_back(Action::CropImage);
        break;
    default:
        break;
    }
    if (!ctrl)
        return actions;
    switch (key) {
    case Qt::Key_Z:
        actions.push_back(Action::Revert);
        break;
    case Qt::Key_Left:
        actions.push_back(Action::RotateLeft);
        break;
    case Qt::Key_Right:
        actions.push_back(Action::RotateRight);
        break;
    case Qt::Key_S:
        if (!popoverShown)
            actions.push_back(Action::Save);
        break;
    case Qt::Key_R:
        actions.push_back(Action::ShowResize);
        break;
    default:
        break;
    }
    return actions;
}

} // namespace EditorKeys
