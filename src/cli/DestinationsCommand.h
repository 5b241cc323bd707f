#pragma once

class Console;
struct Invocation;

// "quaydrop destinations [list | add DIR | remove DIR | rename DIR NAME]": the move picker's
// destinations for scripts, on the same stored list.
int runDestinationsCommand(const Invocation &invocation, Console &console);
