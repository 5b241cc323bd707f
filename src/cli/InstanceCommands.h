#pragma once

class Console;
struct Invocation;

// Commands that the running program of this session carries out; one is started when none runs.
int runPanelCommand(const Invocation &invocation, Console &console);
int runToggleCommand(const Invocation &invocation, Console &console);
