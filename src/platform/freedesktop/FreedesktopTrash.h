#pragma once

#include "platform/Platform.h"

// The desktop's trash (~/.local/share/Trash, or .Trash-UID on other mounts).
class FreedesktopTrash : public TrashService
{
public:
    Result<QString> moveToTrash(const QString &path) override;
};
