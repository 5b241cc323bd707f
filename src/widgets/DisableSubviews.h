#pragma once

#include <QList>
#include <functional>

class QMetaObject;
class QWidget;

// Disables (or enables again) every control below a view, depth first, leaving the view itself as it
// is. The filtered forms touch only the controls the filter accepts; a control's tag is its "tag"
// property.
void disableSubviews(QWidget *view, bool disable);
void disableSubviews(QWidget *view, bool disable, const std::function<bool(QWidget *)> &filter);
void disableSubviewsOfType(QWidget *view, bool disable, const QMetaObject &type);
void disableSubviewsInTagRange(QWidget *view, bool disable, qint64 startTag, qint64 endTag);
void disableSubviewsWithTags(QWidget *view, bool disable, const QList<qint64> &tags);
void disableSubviewsOfTypeInTagRange(QWidget *view, bool disable, const QMetaObject &type, qint64 startTag,
                                     qint64 endTag);
void disableSubviewsOfTypeWithTags(QWidget *view, bool disable, const QMetaObject &type, const QList<qint64> &tags);
