#pragma once

// The commands of "quaydrop COMMAND" as plain data: each command's arguments, its options with the
// kind of value each takes, and one line of help. The parser, --help, the tests and the generators of
// the manual page and the shell completion all read this one table; a new command is one row here and
// a handler in a file of its own.

#include <QStringList>

#include <vector>

class Console;
struct Invocation;

namespace Cli {

// What an option's value must be; the parser refuses anything else as a usage error.
enum class ValueKind {
    None,    // a flag, no value
    Pixels,  // a whole number of pixels, 1 or more
    Percent, // a number from 0 to 100
    Dpi,     // a number of dots per inch from 30 to 1000
    Folder,  // the path of a folder
    Text,    // any text
    Turns,   // quarter turns clockwise: 1, 2 or 3
    Rectangle, // "X,Y,W,H" in whole pixels from the top left, W and H 1 or more
    Count,   // a whole number from 1 to 999 (copies)
    Pages,   // page numbers and ranges from 1: "2", "1-3", "1-3,7"
};

struct Option
{
    const char *name;      // "--width"
    ValueKind kind;
    const char *valueName; // "W" in "--width W"; empty for a flag
    const char *help;
    const char *shortName = ""; // "-h"
};

// What a positional argument names, for help and completion.
enum class ArgumentKind { Path, File, Folder, Choice, Text };

struct Argument
{
    const char *name; // "FILE"
    ArgumentKind kind;
    bool repeated = false;   // "FILE...": one or more
    QStringList choices = {}; // for a Choice: the words it takes
    bool optional = false;   // "[NAME]": may be left out, as may every argument after it
};

using Handler = int (*)(const Invocation &invocation, Console &console);

struct Command
{
    const char *name;
    std::vector<Argument> arguments;
    std::vector<Option> options;
    const char *summary; // one line
    const char *details; // more lines for "quaydrop COMMAND --help"; may be empty
    Handler run;
    bool needsDisplay = false; // opens a window: the program starts with a display
    // Asks the desktop's services on the bus (the drives behind the volumes, the file manager): the
    // full program runs it, the light command line links no bus library.
    bool needsDesktopServices = false;
    // Reads and prints, and nothing more (no event loop, no child process, no settings written): it
    // runs without the application object, whose set-up is a third of such a command's time.
    bool startsBare = false;
};

const std::vector<Command> &commands();
const Command *find(const QString &name);
// The options every command takes, and that stand alone: --help, --version.
const std::vector<Option> &commonOptions();

// Exit codes, as the help states them.
inline constexpr int kFailed = 1;
inline constexpr int kUsageError = 2;
inline constexpr int kCancelled = 130; // as a shell reports Ctrl+C

} // namespace Cli
