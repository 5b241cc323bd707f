#pragma once

class Console;
struct Invocation;

int runTypeCommand(const Invocation &invocation, Console &console);
int runSizeCommand(const Invocation &invocation, Console &console);
int runLedgerCommand(const Invocation &invocation, Console &console);
