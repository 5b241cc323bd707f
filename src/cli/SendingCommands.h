#pragma once

class Console;
struct Invocation;

// quaydrop mail FILE...: a new message of the default mail program with the files attached.
int runMailCommand(const Invocation &invocation, Console &console);
// quaydrop share --list FILE / --to TARGET FILE...: the share targets this machine has, and sharing.
int runShareCommand(const Invocation &invocation, Console &console);
// quaydrop print FILE...: each document to a printer, as the Print button sends it.
int runPrintCommand(const Invocation &invocation, Console &console);
