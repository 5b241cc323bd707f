#pragma once

#include <QByteArray>

// The bash completion of quaydrop, written from the table of commands: the commands, each command's
// options, folders after an option that takes one, the words of a choice, and files or folders for
// the arguments. Plain bash, so it works with or without the bash-completion package's helpers.
namespace BashCompletion {

QByteArray write();

} // namespace BashCompletion
