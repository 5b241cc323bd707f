#pragma once

#include <QStringList>

// Refuses a lone volume and nothing else: several items pass, one item of the user's own passes at
// once, and anything else passes unless it is a mount point.
namespace SingleItemDropGate {
bool passes(const QStringList &paths);
}
