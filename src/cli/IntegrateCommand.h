#pragma once

class Console;
struct Invocation;

// quaydrop integrate nautilus|thunar [--remove]: the per-user "Open in Quaydrop" entry.
int runIntegrateCommand(const Invocation &invocation, Console &console);
