#pragma once

class Console;
struct Invocation;

// quaydrop zip FILE...: the archive the Zip button makes, its path on stdout, progress on stderr.
int runZipCommand(const Invocation &invocation, Console &console);
