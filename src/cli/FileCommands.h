#pragma once

class Console;
struct Invocation;

int runCopyCommand(const Invocation &invocation, Console &console);
int runMoveCommand(const Invocation &invocation, Console &console);
