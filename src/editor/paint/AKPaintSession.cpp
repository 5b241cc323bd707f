#include "AKPaintSession.h"

AKPaintSession::AKPaintSession(const QVariantList &dataArray)
{
    setDataArray(dataArray);
}

void AKPaintSession::addStep(const AKPaintStep &step)
{
    m_steps.append(step);
}

void AKPaintSession::clear()
{
    m_steps.clear();
    ++m_generation;
}

void AKPaintSession::setDataArray(const QVariantList &dataArray)
{
    clear();
    m_steps.reserve(dataArray.size());
    for (const QVariant &element : dataArray)
        m_steps.append(AKPaintStep(element.toList()));
}

QVariantList AKPaintSession::dataArray() const
{
    QVariantList list;
    list.reserve(m_steps.size());
    for (const AKPaintStep &step : m_steps)
        list.append(QVariant(step.data()));
    return list;
}

void AKPaintSession::refreshWithCropFrame(const QRectF &c, const QSizeF &f)
{
    if (c.width() < 1.0 || c.height() < 1.0 || f.width() < 1.0 || f.height() < 1.0)
        return;
    const auto map = [&](QPointF p) {
        return QPointF(((p.x() + 0.5) * f.width() - c.x()) / c.width() - 0.5,
                       ((p.y() + 0.5) * f.height() - c.y()) / c.height() - 0.5);
    };
    for (AKPaintStep &step : m_steps) {
        step.start = map(step.start);
        step.end = map(step.end);
    }
    refreshStepsSizeWithSx(float(c.width() / f.width()), float(c.height() / f.height()));
}

void AKPaintSession::refreshStepsWithFrameSize(const QSizeF &coming, const QSizeF &f)
{
    if (coming.width() < 1.0 || coming.height() < 1.0 || f.width() < 1.0 || f.height() < 1.0)
        return;
    refreshStepsSizeWithSx(float(f.width() / coming.width()), float(f.height() / coming.height()));
}

void AKPaintSession::refreshStepsSizeWithSx(float sx, float sy)
{
    for (AKPaintStep &step : m_steps)
        step.backingSize = QSizeF(step.backingSize.width() * sx, step.backingSize.height() * sy);
    ++m_generation;
}

void AKPaintSession::rotate90Clockwise(bool clockwise)
{
    const auto turn = [clockwise](QPointF p) { return clockwise ? QPointF(-p.y(), p.x()) : QPointF(p.y(), -p.x()); };
    for (AKPaintStep &step : m_steps) {
        step.start = turn(step.start);
        step.end = turn(step.end);
    }
    ++m_generation;
}
