// quaydrop-worker: decodes and encodes images and renders PDF pages for Quaydrop, in a process of its
// own, so that a decoder that crashes or runs away on a hostile file costs one failed item and never
// the program. Quaydrop starts it on first need and talks to it over its standard input and output.

#include "WorkerMain.h"

int main(int argc, char **argv) { return WorkerMain::run(argc, argv); }
