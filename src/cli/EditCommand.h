#pragma once

class Console;
struct Invocation;

// "quaydrop edit FILE": the editor's window on one picture, in this process, until it closes.
int runEditCommand(const Invocation &invocation, Console &console);
