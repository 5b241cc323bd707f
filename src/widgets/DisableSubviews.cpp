#include "DisableSubviews.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

void disableSubviews(QWidget *view, bool disable)
{
    if (!view)
        return;
    const auto children = view->findChildren<QWidget *>();
    for (QWidget *child : children) {
        if (qobject_cast<QAbstractButton *>(child) || qobject_cast<QAbstractSlider *>(child) ||
            qobject_cast<QAbstractSpinBox *>(child) || qobject_cast<QComboBox *>(child) ||
            qobject_cast<QLineEdit *>(child))
            child->setEnabled(!disable);
    }
}
