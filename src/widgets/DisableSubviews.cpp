#include "DisableSubviews.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QWidget>

namespace {

// The widgets that take input: what "answers setEnabled:" means here.
bool isControl(QWidget *w)
{
    return qobject_cast<QAbstractButton *>(w) || qobject_cast<QAbstractSlider *>(w) ||
           qobject_cast<QAbstractSpinBox *>(w) || qobject_cast<QComboBox *>(w) || qobject_cast<QLineEdit *>(w) ||
           qobject_cast<QKeySequenceEdit *>(w);
}

void walk(QWidget *view, bool disable, const std::function<bool(QWidget *)> &filter)
{
    for (QObject *child : view->children()) {
        auto *w = qobject_cast<QWidget *>(child);
        if (!w || w->isWindow())
            continue;
        walk(w, disable, filter);
        if (isControl(w) && (!filter || filter(w)))
            w->setEnabled(!disable);
    }
}

bool tagBetween(QWidget *w, qint64 start, qint64 end)
{
    const QVariant tag = w->property("tag");
    return tag.isValid() && tag.toLongLong() >= start && tag.toLongLong() <= end;
}

bool tagIn(QWidget *w, const QList<qint64> &tags)
{
    const QVariant tag = w->property("tag");
    return tag.isValid() && tags.contains(tag.toLongLong());
}

} // namespace

void disableSubviews(QWidget *view, bool disable, const std::function<bool(QWidget *)> &filter)
{
    if (view)
        walk(view, disable, filter);
}

void disableSubviews(QWidget *view, bool disable) { disableSubviews(view, disable, nullptr); }

void disableSubviewsOfType(QWidget *view, bool disable, const QMetaObject &type)
{
    disableSubviews(view, disable, [&type](QWidget *w) { return w->metaObject()->inherits(&type); });
}

void disableSubviewsInTagRange(QWidget *view, bool disable, qint64 startTag, qint64 endTag)
{
    disableSubviews(view, disable, [=](QWidget *w) { return tagBetween(w, startTag, endTag); });
}

void disableSubviewsWithTags(QWidget *view, bool disable, const QList<qint64> &tags)
{
    disableSubviews(view, disable, [&tags](QWidget *w) { return tagIn(w, tags); });
}

void disableSubviewsOfTypeInTagRange(QWidget *view, bool disable, const QMetaObject &type, qint64 startTag, qint64 endTag)
{
    disableSubviews(view, disable,
                    [&](QWidget *w) { return w->metaObject()->inherits(&type) && tagBetween(w, startTag, endTag); });
}

void disableSubviewsOfTypeWithTags(QWidget *view, bool disable, const QMetaObject &type, const QList<qint64> &tags)
{
    disableSubviews(view, disable, [&](QWidget *w) { return w->metaObject()->inherits(&type) && tagIn(w, tags); });
}
