#pragma once

#include <QStringList>

// Names as people sort them: runs of digits by their value, the rest without regard to case, so
// "img2" comes before "img10".
namespace NaturalOrder {

int compare(const QString &a, const QString &b);
// Whole paths in that order.
QStringList sortArrayInAlphabeticalOrderByFileName(QStringList paths);

} // namespace NaturalOrder
