#pragma once

#include "WorkerServer.h"

namespace WorkerMain {

// Reads the limits from the command line (--memory BYTES, --processor-seconds N, --idle-seconds N),
// puts them on the process, and serves standard input until the program leaves.
int run(int argc, char **argv, WorkerServer::BeforeJob beforeJob = {});

} // namespace WorkerMain
