#pragma once

// Where Quaydrop's programs are. `quaydrop` (the command line, light to start) is in bin/; the full
// program (windows, tray, image commands) and the image worker are installed in libexec/quaydrop/.
// In the build tree all three sit in one folder.

#include <QString>

namespace ProgramPaths {

// The running program's own file, by /proc/self/exe.
QString self();
// A helper program of this name: beside this one, else in ../libexec/quaydrop/ from it (as seen
// from bin/), else beside this one all the same, so that an error names where it was looked for.
QString helper(const QString &name);
// The command-line program `quaydrop` that users and autostart entries call: beside this one, else
// in ../../bin/ (as seen from libexec/quaydrop/).
QString front();

} // namespace ProgramPaths
