#pragma once

#include "CommandTable.h"

#include <QString>

class ConsoleStream;

// "quaydrop --help" and "quaydrop COMMAND --help", written from the table of commands.
namespace HelpText {

// "resize [--width W] [--height H] [--dest DIR] FILE...", and the same after "quaydrop ".
QString call(const Cli::Command &command);
QString synopsis(const Cli::Command &command);
// "--width W", "--help, -h"
QString optionCall(const Cli::Option &option);
void printOverview(ConsoleStream &out);
void printCommand(const Cli::Command &command, ConsoleStream &out);
QString versionLine();

// Paragraphs that --help and the manual page share.
extern const char *const kIntro;
extern const char *const kExitStatus;
extern const char *const kDoubleDash;

} // namespace HelpText
