#pragma once

class Console;
struct Invocation;

// quaydrop new|gather|rename|trash|reveal|undo: the file actions of the panels, on the same code.
int runNewCommand(const Invocation &invocation, Console &console);
int runGatherCommand(const Invocation &invocation, Console &console);
int runRenameCommand(const Invocation &invocation, Console &console);
int runTrashCommand(const Invocation &invocation, Console &console);
int runRevealCommand(const Invocation &invocation, Console &console);
int runUndoCommand(const Invocation &invocation, Console &console);
