#pragma once

// How each mail program takes a new message with attachments on its command line, as its own
// documentation says. Files come as file URIs.

#include "DesktopEntries.h"
#include "platform/posix/Spawn.h"

#include <optional>

namespace MailClients {

enum class Form {
    None,               // takes no attachments from outside: the portal or the user's own hands
    ThunderbirdCompose, // -compose "attachment='URI,URI'"
    MailtoAttach,       // "mailto:?attach=URI&attach=URI" (Evolution, Geary)
    KMailAttach,        // --composer --attach URI --attach URI
    AttachList,         // --attach URI URI ... (Claws Mail, Sylpheed)
};

Form formOf(const DesktopApplication &app);

// Thunderbird's compose field: "attachment='file:///a,file:///b'". Commas and quotes inside a URI are
// percent-encoded, as they would end the list.
QString thunderbirdAttachment(const QStringList &fileUris);
// "mailto:?attach=...&attach=...": each URI escaped whole as a query value, so that the client's one
// decoding gives back the file URI itself.
QString mailtoAttaching(const QStringList &fileUris);

// The command that opens a new message of `app` with the files attached; nothing for Form::None or
// an Exec line that cannot be read.
std::optional<Spawn::Argv> composeCommand(const DesktopApplication &app, const QStringList &fileUris);

} // namespace MailClients
