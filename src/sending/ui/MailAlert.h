#pragma once

#include "platform/Platform.h"

class QMessageBox;

// Why files did not reach a mail program: "MailAppNOTDefault" names the default program that takes no
// attachments and offers to open it; with no mail program at all, or a message too long for one
// command, a plain alert says so. Shown without a nested event loop.
QMessageBox *showMailRefusedAlert(const MailClient &client, const Error &why);
