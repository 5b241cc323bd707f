#pragma once

#include <QtGlobal>

// Limits a helper process puts on itself, so that a hostile file costs one failed item and not the
// machine.
namespace ProcessLimits {

// The address space the process may take; an allocation past it fails.
void limitMemory(qint64 bytes);
// The processor time the process may still use, from now on, before the system ends it.
void limitProcessorSecondsFromNow(int seconds);

} // namespace ProcessLimits
